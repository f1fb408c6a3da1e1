// The kernel of Copy, and of Move where nothing is overwritten before it is read.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_COPY_H
#define KVRS_VECTOR_COPY_H

#include <cstdint>
#include <cstring>

#include "frame/loop.h"

namespace kvrs {

// Vectors of so many bytes at the most are copied in the export itself, all of them read before any is written.
inline constexpr size_t kShortBytes = kVectorBytes > 32 ? 256 : 128;

// Those of so many and more are left to the C library, which moves main memory at its best and, where our vectors
// have 16 bytes, may have wider ones for the processor at hand.
inline constexpr size_t kLibraryBytes = kVectorBytes > 16 ? size_t{1} << 14 : kShortBytes + 16;

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

// Whether vectors are there and have at most as many bytes as a register: the way out of a short call where there are
// masks, ahead of the checks and with one question for both bounds of the length. The instructions that take it have one
// of the registers 16 to 31, which want no VZEROUPPER before the return; it would take as long as all the rest.
template <class Word, class... T>
KVRS_INLINE bool fitsMask(int len, const T*... p) {
  constexpr unsigned kMost = kVectorBytes / sizeof(Word);
  return static_cast<unsigned>(len) - 1 < kMost && __builtin_expect(((p != nullptr) && ...), true);
}

// The mask of the first elements' bytes; there are 1 to 64.
template <class Word>
KVRS_INLINE uint64_t maskOf(int len) {
  return ~uint64_t{0} >> (-(static_cast<unsigned>(len) * sizeof(Word)) & 63);
}

// Copies under a mask; false if there is none or the vectors do not fit one.
template <class Word, class T>
KVRS_INLINE bool copyMasked(const T* src, T* dst, int len) {
  if constexpr (kMaskRegisters) {
    if (!fitsMask<Word>(len, src, dst)) return false;
    asm volatile("vmovdqu8 (%0), %%zmm16%{%2%}%{z%}\n\tvmovdqu8 %%zmm16, (%1)%{%2%}"
                 :
                 : "r"(src), "r"(dst), "Yk"(maskOf<Word>(len))
                 : "memory", "xmm16");
    return true;
  }
  return false;
}

// 1 to kShortBytes bytes that do not fit a mask.
KVRS_INLINE void copyShort(const Kvr8u* src, Kvr8u* dst, size_t bytes) {
  if constexpr (kMaskRegisters) return copyVectors<kVectorBytes>(src, dst, bytes);
  if (bytes >= 16) return copyVectors<16>(src, dst, bytes);
  if (bytes >= 8) return copyEnds<8, 1>(src, dst, bytes);
  if (bytes >= 4) return copyEnds<4, 1>(src, dst, bytes);
  if (bytes >= 2) return copyEnds<2, 1>(src, dst, bytes);
  *dst = *src;
}

}  // namespace kvrs

#endif
