// Lookups in tables of 16 bytes, which are held in a register.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_BYTE_TABLE_H
#define KVRS_FRAME_BYTE_TABLE_H

#include <cstdint>

#include "frame/simd.h"

namespace kvrs {

struct alignas(16) ByteTable {
  uint8_t at[16];
};

// table.at[i] for each byte i below 16 of `from`, and 0 for bytes from 128 on. Lanes may be of any width.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V lookUp(D d, const ByteTable& table, V from) {
  const hn::Repartition<uint8_t, D> bytes;
  if constexpr (hn::MaxLanes(bytes) < 16) {
    const auto entries = hn::Load(Lanes<uint8_t, 16>(), table.at);
    return hn::BitCast(d, hn::TableLookupBytesOr0(entries, hn::BitCast(bytes, from)));
  } else {
    return hn::BitCast(d, hn::TableLookupBytesOr0(hn::LoadDup128(bytes, table.at), hn::BitCast(bytes, from)));
  }
}

}  // namespace kvrs

#endif
