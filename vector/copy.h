// The kernel of Copy, and of Move where nothing is overwritten before it is read.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_COPY_H
#define KVRS_VECTOR_COPY_H

#include <cstring>

#include "frame/loop.h"

namespace kvrs {

struct Same {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a) const {
    return a;
  }
};

// Vectors of so many bytes at the most are copied in the export itself, by pieces of at most 16 bytes.
inline constexpr size_t kShortBytes = 64;

// Those of so many and more are left to the C library, which moves main memory at its best and, where our vectors
// have 16 bytes, may have wider ones for the processor at hand.
inline constexpr size_t kLibraryBytes = kVectorBytes > 16 ? size_t{1} << 19 : kShortBytes + 16;

// Two pieces of N bytes, at the begin and at the end, which may lie over each other.
template <size_t N>
KVRS_INLINE void copyEnds(const Kvr8u* src, Kvr8u* dst, size_t bytes) {
  const Lanes<uint8_t, N> d;
  const auto first = hn::LoadU(d, src);
  const auto last = hn::LoadU(d, src + bytes - N);
  hn::StoreU(first, d, dst);
  hn::StoreU(last, d, dst + bytes - N);
}

// K pieces of 16 bytes from each end.
template <size_t K>
KVRS_INLINE void copyVectors(const Kvr8u* src, Kvr8u* dst, size_t bytes) {
  const Lanes<uint8_t, 16> d;
  decltype(hn::Zero(d)) first[K], last[K];
  for (size_t k = 0; k < K; ++k) {
    first[k] = hn::LoadU(d, src + 16 * k);
    last[k] = hn::LoadU(d, src + bytes - 16 * (k + 1));
  }
  for (size_t k = 0; k < K; ++k) {
    hn::StoreU(first[k], d, dst + 16 * k);
    hn::StoreU(last[k], d, dst + bytes - 16 * (k + 1));
  }
}

// 1 to kShortBytes bytes, all of them read before any is written.
KVRS_INLINE void copyShort(const Kvr8u* src, Kvr8u* dst, size_t bytes) {
  if (bytes >= 16) {
    if (bytes <= 32) return copyVectors<1>(src, dst, bytes);
    return copyVectors<2>(src, dst, bytes);
  }
  if (bytes >= 8) return copyEnds<8>(src, dst, bytes);
  if (bytes >= 4) return copyEnds<4>(src, dst, bytes);
  if (bytes >= 2) return copyEnds<2>(src, dst, bytes);
  *dst = *src;
}

}  // namespace kvrs

#endif
