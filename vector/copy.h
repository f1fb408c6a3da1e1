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

// Vectors of so many bytes at the most are copied in the export itself, all of them read before any is written.
inline constexpr size_t kShortBytes = kVectorBytes > 32 ? 256 : 128;

// Those of so many and more are left to the C library, which moves main memory at its best and, where our vectors
// have 16 bytes, may have wider ones for the processor at hand.
inline constexpr size_t kLibraryBytes = kVectorBytes > 16 ? size_t{1} << 19 : kShortBytes + 16;

// K pieces of N bytes from each end, which may lie over each other.
template <size_t N, size_t K>
KVRS_INLINE void copyEnds(const Kvr8u* src, Kvr8u* dst, size_t bytes) {
  const Lanes<uint8_t, N> d;
  decltype(hn::Zero(d)) first[K], last[K];
  for (size_t k = 0; k < K; ++k) {
    first[k] = hn::LoadU(d, src + N * k);
    last[k] = hn::LoadU(d, src + bytes - N * (k + 1));
  }
  for (size_t k = 0; k < K; ++k) {
    hn::StoreU(first[k], d, dst + N * k);
    hn::StoreU(last[k], d, dst + bytes - N * (k + 1));
  }
}

// N to kShortBytes bytes by the narrowest vectors of at least N that reach.
template <size_t N>
KVRS_INLINE void copyVectors(const Kvr8u* src, Kvr8u* dst, size_t bytes) {
  if (bytes <= 2 * N) return copyEnds<N, 1>(src, dst, bytes);
  if constexpr (2 * N <= kVectorBytes) {
    copyVectors<2 * N>(src, dst, bytes);
  } else {
    if (bytes <= 4 * N) return copyEnds<N, 2>(src, dst, bytes);
    if constexpr (4 * N < kShortBytes) copyEnds<N, kShortBytes / (2 * N)>(src, dst, bytes);
  }
}

// 1 to kShortBytes bytes.
KVRS_INLINE void copyShort(const Kvr8u* src, Kvr8u* dst, size_t bytes) {
  if (bytes >= 16) return copyVectors<16>(src, dst, bytes);
  if (bytes >= 8) return copyEnds<8, 1>(src, dst, bytes);
  if (bytes >= 4) return copyEnds<4, 1>(src, dst, bytes);
  if (bytes >= 2) return copyEnds<2, 1>(src, dst, bytes);
  *dst = *src;
}

}  // namespace kvrs

#endif
