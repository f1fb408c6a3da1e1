// Norms of vectors and of differences of vectors: the same reductions of one source or two.
// SPDX-License-Identifier: MIT
#ifndef KVRS_STATS_NORM_INL_H
#define KVRS_STATS_NORM_INL_H

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "frame/check.h"
#include "frame/reduce.h"
#include "stats/extremes-inl.h"
#include "stats/integer_sums-inl.h"
#include "stats/scaled_result.h"
#include "stats/widened-inl.h"

namespace kvrs {

// What a norm does with an element x, as real lanes or as complex parts. Zeros behind the end change nothing.
struct InfNorm {
  template <class V>
  KVRS_INLINE void take(V& most, V x) const {
    most = hn::Max(hn::Abs(x), most);
  }
  // Of squares: their order is that of the magnitudes.
  template <class V>
  KVRS_INLINE void take(V& most, Complex<V> x) const {
    most = hn::Max(squaredMagnitude(x), most);
  }
  template <class V>
  KVRS_INLINE void join(V& a, V b) const {
    a = hn::Max(b, a);
  }
  template <class V>
  KVRS_INLINE hn::TFromV<V> fold(V most) const {
    return foldLanes(most, Largest());
  }
};
struct SumNorm {
  template <class V>
  KVRS_INLINE void join(V& a, V b) const {
    a = hn::Add(a, b);
  }
  template <class V>
  KVRS_INLINE hn::TFromV<V> fold(V sum) const {
    return sumLanes(sum);
  }
};
struct L1Norm : SumNorm {
  template <class V>
  KVRS_INLINE void take(V& sum, V x) const {
    sum = hn::Add(sum, hn::Abs(x));
  }
  template <class V>
  KVRS_INLINE void take(V& sum, Complex<V> x) const {
    sum = hn::Add(sum, hn::Sqrt(squaredMagnitude(x)));
  }
};
struct L2Norm : SumNorm {
  template <class V>
  KVRS_INLINE void take(V& sum, V x) const {
    sum = hn::MulAdd(x, x, sum);
  }
};

// One source, or the difference of two, in the precision of the accumulator.
template <class Norm>
struct OfElements : Norm {
  template <class V, class X>
  KVRS_INLINE void operator()(V& acc, X x) const {
    this->take(acc, widened<V>(x));
  }
  template <class V, class X>
  KVRS_INLINE void operator()(V& acc, X a, X b) const {
    this->take(acc, difference(widened<V>(a), widened<V>(b)));
  }

 private:
  template <class V>
  static KVRS_INLINE V difference(V a, V b) {
    return hn::Sub(a, b);
  }
  template <class V>
  static KVRS_INLINE Complex<V> difference(Complex<V> a, Complex<V> b) {
    return {hn::Sub(a.re, b.re), hn::Sub(a.im, b.im)};
  }
};

// In accumulators of A.
template <class Norm, class A, class... S>
KVRS_INLINE A floatNorm(size_t len, const S*... src) {
  const OfElements<Norm> op;
  return op.fold(reduce<A, kFewAccumulators>(op, hn::Zero(Lanes<A, kLanes<A>>()), len, src...));
}

// 16-bit elements: the magnitude of one, that of the lowest being 32,768, or of a difference, up to 65,535.
using Magnitudes = Lanes<Kvr16u, kLanes<Kvr16u>>;
template <class V>
KVRS_INLINE hn::Vec<Magnitudes> magnitude(V x) {
  return hn::BitCast(Magnitudes(), hn::Abs(x));
}
template <class V>
KVRS_INLINE hn::Vec<Magnitudes> magnitude(V x, V y) {
  const Magnitudes d;
  const auto sign = hn::Set(d, 0x8000);  // the same order without signs
  const auto a = hn::Xor(hn::BitCast(d, x), sign), b = hn::Xor(hn::BitCast(d, y), sign);
  return hn::Or(hn::SaturatedSub(a, b), hn::SaturatedSub(b, a));
}

// Sums of unsigned 16-bit lanes in 32 bits, which hold kPairBlocks of them and more.
template <class V32>
KVRS_INLINE V32 addWords(V32 sum, hn::Vec<Magnitudes> x) {
  const auto pairs = hn::BitCast(hn::DFromV<V32>(), x);
  const auto low = hn::And(pairs, hn::Set(hn::DFromV<V32>(), 0xFFFF));
  return hn::Add(sum, hn::Add(low, hn::ShiftRight<16>(pairs)));
}

struct WordsInf {
  template <class... V>
  KVRS_INLINE void operator()(hn::Vec<Magnitudes>& most, V... x) const {
    most = hn::Max(most, magnitude(x...));
  }
  KVRS_INLINE void join(hn::Vec<Magnitudes>& a, hn::Vec<Magnitudes> b) const { a = hn::Max(a, b); }
};
struct WordsL1 {
  template <class V32, class... V>
  KVRS_INLINE void operator()(V32& sum, V... x) const {
    sum = addWords(sum, magnitude(x...));
  }
  template <class V32>
  KVRS_INLINE void join(V32& a, V32 b) const {
    a = hn::Add(a, b);
  }
};
struct WordsL2 {
  template <class V>
  KVRS_INLINE void operator()(WideSum& sum, V x) const {
    sum.add(mulAddNeighbours(DoubleWords(), x, x));
  }
  KVRS_INLINE void join(WideSum& a, const WideSum& b) const { a.add(b); }
};
// Squares of 16 bits without a sign, by the halves of the products.
struct WordsL2Diff {
  using V32 = hn::Vec<Lanes<Kvr32u, kLanes<Kvr32u>>>;
  struct Halves {
    V32 low, high;
  };
  template <class V>
  KVRS_INLINE void operator()(Halves& sum, V x, V y) const {
    const auto m = magnitude(x, y);
    sum.low = addWords(sum.low, hn::Mul(m, m));
    sum.high = addWords(sum.high, hn::MulHigh(m, m));
  }
  KVRS_INLINE void join(Halves& a, Halves b) const {
    a.low = hn::Add(a.low, b.low);
    a.high = hn::Add(a.high, b.high);
  }
};

inline constexpr size_t kWordsAPiece = kPairBlocks * kLanes<Kvr16s>;

template <class... S>
KVRS_INLINE uint64_t wordsInf(size_t len, const S*... src) {
  return foldLanes(reduce<Kvr16s, kFewAccumulators>(WordsInf(), hn::Zero(Magnitudes()), len, src...),
                   Largest());
}
template <class... S>
KVRS_INLINE uint64_t wordsL1(size_t len, const S*... src) {
  uint64_t total = 0;
  forPieces(len, kWordsAPiece, [&](size_t begin, size_t count) KVRS_UNROLLED {
    const auto zero = hn::Zero(Lanes<Kvr32u, kLanes<Kvr32u>>());
    total += wideTotal(reduce<Kvr16s, kFewAccumulators>(WordsL1(), zero, count, (src + begin)...));
  });
  return total;
}
KVRS_INLINE uint64_t wordsL2(size_t len, const Kvr16s* src) {
  return reduce<Kvr16s, 2>(WordsL2(), WideSum(), len, src).total();
}
KVRS_INLINE uint64_t wordsL2(size_t len, const Kvr16s* src1, const Kvr16s* src2) {
  uint64_t total = 0;
  forPieces(len, kWordsAPiece, [&](size_t begin, size_t count) KVRS_UNROLLED {
    const auto zero = hn::Zero(Lanes<Kvr32u, kLanes<Kvr32u>>());
    const auto sums =
        reduce<Kvr16s, 2>(WordsL2Diff(), WordsL2Diff::Halves{zero, zero}, count, src1 + begin, src2 + begin);
    total += wideTotal(sums.low) + (wideTotal(sums.high) << 16);
  });
  return total;
}

// Scaled without rounding. To the right, and where the factor is 0, the low bits are what is left.
KVRS_INLINE Kvr32s shifted32(uint64_t norm, int scaleFactor) {
  constexpr uint64_t most = INT32_MAX;
  if (scaleFactor >= 0) {
    return static_cast<Kvr32s>(static_cast<uint32_t>(scaleFactor > 63 ? 0 : norm >> scaleFactor));
  }
  if (norm > most) return INT32_MAX;
  const uint64_t left = norm << (scaleFactor < -32 ? 32 : -scaleFactor);
  return static_cast<Kvr32s>(left < most ? left : most);
}
KVRS_INLINE Kvr64s shifted64(uint64_t norm, int scaleFactor) {
  if (scaleFactor >= 0) return static_cast<Kvr64s>(scaleFactor > 63 ? 0 : norm >> scaleFactor);
  const int count = scaleFactor < -63 ? 63 : -scaleFactor;
  if (norm == 0) return 0;
  return std::bit_width(norm) + count < 64 ? static_cast<Kvr64s>(norm << count) : INT64_MAX;
}
// Of a square root: only the low five bits of the factor's magnitude count.
KVRS_INLINE Kvr32s scaledRoot(uint64_t squares, int scaleFactor) {
  const unsigned magnitudeOfFactor =
      scaleFactor < 0 ? 0u - static_cast<unsigned>(scaleFactor) : static_cast<unsigned>(scaleFactor);
  const int count = static_cast<int>(magnitudeOfFactor & 31);
  const double root = std::sqrt(static_cast<double>(squares));
  return nearestInteger<Kvr32s>(root * powerOfTwo<double>(scaleFactor < 0 ? count : -count));
}

}  // namespace kvrs

#endif
