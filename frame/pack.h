// Lanes of twice the width and back, within blocks of 16 bytes: what a full vector of narrow lanes takes, where
// hn::PromoteTo and hn::DemoteTo work on halves and have to cross blocks.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_PACK_H
#define KVRS_FRAME_PACK_H

#include <cstdint>
#include <type_traits>

#include "frame/interleave.h"
#include "frame/simd.h"

namespace kvrs {

// The lanes of v times 2^(their width), which needs no operation to extend their sign.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE auto widenedUp(D d, V v) {
  const hn::RepartitionToWide<D> dw;
  const V zero = hn::Zero(d);
  return Both<hn::Vec<decltype(dw)>>{hn::BitCast(dw, hn::InterleaveLower(d, zero, v)),
                                     hn::BitCast(dw, hn::InterleaveUpper(d, zero, v))};
}

// Unsigned lanes as signed ones of twice their width.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE auto widened(D d, V v) {
  const hn::RebindToSigned<hn::RepartitionToWide<D>> dw;
  const V zero = hn::Zero(d);
  return Both<hn::Vec<decltype(dw)>>{hn::BitCast(dw, hn::InterleaveLower(d, v, zero)),
                                     hn::BitCast(dw, hn::InterleaveUpper(d, v, zero))};
}

// The other way: signed lanes saturated to lanes of D; to 16u from -2^31 + 2^15 on.
template <class D, class V>
KVRS_INLINE hn::Vec<D> narrowed(D d, Both<V> v) {
  using T = hn::TFromD<D>;
  if constexpr (std::is_same_v<T, uint8_t>) {
    if constexpr (sizeof(v.first.raw) == 64) {
      return {_mm512_packus_epi16(v.first.raw, v.second.raw)};
    } else if constexpr (sizeof(v.first.raw) == 32) {
      return {_mm256_packus_epi16(v.first.raw, v.second.raw)};
    } else {
      return {_mm_packus_epi16(v.first.raw, v.second.raw)};
    }
  } else if constexpr (std::is_same_v<T, uint16_t>) {
    // As signed lanes about the middle of the range: s8 has no such instruction for unsigned ones.
    const hn::RebindToSigned<D> di;
    const auto middle = hn::Set(hn::DFromV<V>(), 32768);
    const auto packed = hn::ReorderDemote2To(di, hn::Sub(v.first, middle), hn::Sub(v.second, middle));
    return hn::Xor(hn::BitCast(d, packed), hn::Set(d, uint16_t{0x8000}));
  } else {
    return hn::ReorderDemote2To(d, v.first, v.second);
  }
}

}  // namespace kvrs

#endif
