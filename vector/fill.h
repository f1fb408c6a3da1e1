// The kernel of Set and Zero.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_FILL_H
#define KVRS_VECTOR_FILL_H

#include "frame/check.h"
#include "frame/loop.h"
#include "vector/copy.h"

namespace kvrs {

template <class Word>
struct Fill {
  Word val;
  template <class D>
  KVRS_INLINE auto operator()(D d) const {
    return hn::Set(d, val);
  }
};

template <class Part>
struct Fill<Pair<Part>> {
  Pair<Part> val;
  template <class D>
  KVRS_INLINE auto operator()(D d) const {
    return hn::OddEven(hn::Set(d, val.im), hn::Set(d, val.re));
  }
};

// v in one of the registers 16 to 31 where there are any, see fitsMask.
template <class V>
KVRS_INLINE V inHighRegister(V v) {
  if constexpr (kVectorRegisters > 16) {
    register auto high asm("zmm16") = v.raw;
    asm("" : "+v"(high));
    return V{high};
  }
  return v;
}

// Vectors of so many bytes at the most are filled in the export itself.
inline constexpr size_t kShortFill = 8 * kVectorBytes;

// Zeros and bytes of so many bytes and more are left to the C library: measured, its stores of strings fill the second
// level cache up to twice as fast as vectors do, as they need not read the lines first.
inline constexpr size_t kLibraryFill = kVectorBytes > 16 ? size_t{1} << 14 : 2 * kShortFill;

// Bytes to kShortFill bytes by the narrowest vectors of at least so many that reach with eight.
template <size_t Bytes, class Word, class Op>
KVRS_INLINE void fillVectors(const Op& op, Word* dst, size_t len) {
  constexpr size_t N = Bytes / sizeof(Word);
  const ElementLanes<Word, N> d;
  const auto piece = inHighRegister(op(d));
  const auto putEnds = [&](size_t k) {
    Element<Word>::store(piece, d, dst + k * N);
    Element<Word>::store(piece, d, dst + len - (k + 1) * N);
  };
  if constexpr (2 * Bytes <= kVectorBytes) {
    if (len > 2 * N) return fillVectors<2 * Bytes>(op, dst, len);
    putEnds(0);
  } else {
    putEnds(0);
    if (len <= 2 * N) return;
    putEnds(1);
    if (len <= 4 * N) return;
    putEnds(2);
    putEnds(3);
  }
}

template <class Word, class Op>
KVRS_INLINE void fillShort(const Op& op, Word* dst, size_t len) {
  if constexpr (kMaskRegisters) return fillVectors<kVectorBytes>(op, dst, len);
  constexpr size_t N = 16 / sizeof(Word);
  if (len >= N) return fillVectors<16>(op, dst, len);
  const ElementLanes<Word, N> d;
  if constexpr (N > 1) Element<Word>::storeFirst(len, op(d), d, dst);
}

// Fills under a mask; false if there is none or the vector does not fit one.
template <class Word, class Op, class T>
KVRS_INLINE bool fillMasked(const Op& op, T* dst, int len) {
  if constexpr (kMaskRegisters) {
    if (!fitsMask<Word>(len, dst)) return false;
    const auto val = inHighRegister(op(ElementLanes<Word, kVectorBytes / sizeof(Word)>()));
    asm volatile("vmovdqu8 %0, (%1)%{%2%}" : : "v"(val.raw), "r"(dst), "Yk"(maskOf<Word>(len)) : "memory");
    return true;
  }
  return false;
}

// More elements than fit a mask.
template <class Word, class Op>
KVRS_INLINE KvrStatus fillElements(const Op& op, Word* dst, size_t len) {
  if (__builtin_expect(len > kShortFill / sizeof(Word), false)) return mapElements(op, dst, len);
  fillShort(op, dst, len);
  return kvrStatusOk;
}

}  // namespace kvrs

#endif
