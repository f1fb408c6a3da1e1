// Sums of floats, and of their squares, in the order and precision that the contracts of sums and deviations state.
// SPDX-License-Identifier: MIT
#ifndef KVRS_STATS_FLOAT_SUMS_INL_H
#define KVRS_STATS_FLOAT_SUMS_INL_H

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "frame/reduce.h"
#include "frame/simd.h"
#include "frame/unaligned.h"

namespace kvrs {

// Of real elements (one part) or complex ones (two): the sum of each part and, where asked for, of squares.
template <class S>
struct Sums {
  S sum[2] = {};
  S squares = 0;
};

struct SumBlocks {
  template <class V>
  KVRS_INLINE void operator()(V& sum, V x) const {
    sum = hn::Add(sum, x);
  }
};

template <class V>
struct SumAndSquares {
  V sum, squares;
};
struct SumBlocksAndSquares {
  template <class V>
  KVRS_INLINE void operator()(SumAndSquares<V>& acc, V x) const {
    acc.sum = hn::Add(acc.sum, x);
    acc.squares = hn::Add(acc.squares, hn::Mul(x, x));
  }
};

// Adds up `len` numbers in kLaneCount lanes by position, and their squares if there are lanes for them. Every addition to a
// lane waits for the one before: on processors that add 64 bytes in three to four cycles, 32 bytes take two to three.
template <size_t kLaneCount, bool kSquares, class T>
KVRS_INLINE void sumInLanes(const T* src, size_t len, T* sum, [[maybe_unused]] T* squares) {
  constexpr size_t N = (kVectorBytes < 32 ? kVectorBytes : 32) / sizeof(T);
  constexpr int k = kLaneCount / N;
  using D = Lanes<T, N>;
  using V = hn::Vec<D>;
  constexpr D d;
  if constexpr (kSquares) {
    SumAndSquares<V> acc[k];
    unroll<k>([&](auto j) KVRS_UNROLLED { acc[j].sum = acc[j].squares = hn::Zero(d); });
    accumulateBlocks<N>(SumBlocksAndSquares(), acc, len, src);
    unroll<k>([&](auto j) KVRS_UNROLLED {
      hn::Store(acc[j].sum, d, sum + j * N);
      hn::Store(acc[j].squares, d, squares + j * N);
    });
  } else {
    V acc[k];
    unroll<k>([&](auto j) KVRS_UNROLLED { acc[j] = hn::Zero(d); });
    accumulateBlocks<N>(SumBlocks(), acc, len, src);
    unroll<k>([&](auto j) KVRS_UNROLLED { hn::Store(acc[j], d, sum + j * N); });
  }
}

// The fast sums of single precision: blocks of 32,768 elements in 16 lanes by position, each lane an element; the lanes
// l, l + 8, l + 4, l + 12 joined as (l, l + 8) + (l + 4, l + 12), which leaves four; to these what is behind the last
// 16 elements, four, two and one at a time; then the upper two lanes to the lower two, and these to the total. Elements
// ahead of a 16-byte boundary go straight to the total. The total has extended precision.
template <int kParts, bool kSquares>
Sums<long double> fastSums(const Kvr32f* src, size_t len) {
  constexpr size_t kBlockElements = 32768, p = kParts;
  Sums<long double> total;
  const auto takeOne = [&](const Kvr32f* element) {
    for (size_t part = 0; part < p; ++part) {
      const long double x = unaligned::get(element + part);
      total.sum[part] += x;
      if (kSquares) total.squares += x * x;
    }
  };
  // Of an array that is not aligned to its elements no element is.
  const size_t misfit = reinterpret_cast<uintptr_t>(src) & 15, bytes = p * sizeof(Kvr32f);
  size_t ahead = misfit % bytes == 0 ? (16 - misfit) % 16 / bytes : 0;
  if (ahead > len) ahead = len;
  for (size_t i = 0; i < ahead; ++i) takeOne(src + i * p);
  src += ahead * p;
  len -= ahead;

  if (len == 0) return total;
  forPieces(len, kBlockElements, [&](size_t begin, size_t count) KVRS_UNROLLED {
    const Kvr32f* block = src + begin * p;
    alignas(64) Kvr32f lanes[2][16 * p];
    sumInLanes<16 * p, kSquares>(block, (count & ~size_t{15}) * p, lanes[0], lanes[1]);
    for (int s = 0; s <= int{kSquares}; ++s) {
      Kvr32f four[4 * p];
      for (size_t l = 0; l < 4 * p; ++l) {
        const Kvr32f* const lane = lanes[s] + l;
        four[l] = (lane[0] + lane[8 * p]) + (lane[4 * p] + lane[12 * p]);
      }
      const Kvr32f* rest = block + (count & ~size_t{15}) * p;
      const auto take = [&](size_t elements) KVRS_UNROLLED {
        for (size_t l = 0; l < elements * p; ++l) {
          const Kvr32f x = unaligned::get(rest + l);
          four[l] += s == 0 ? x : x * x;
        }
        rest += elements * p;
      };
      for (size_t fours = (count & 15) / 4; fours > 0; --fours) take(4);
      if ((count & 2) != 0) take(2);
      if ((count & 1) != 0) take(1);
      for (size_t l = 0; l < 2 * p; ++l) four[l] += four[2 * p + l];
      for (size_t l = 0; l < 2 * p; ++l) (s == 0 ? total.sum[l % p] : total.squares) += four[l];
    }
  });
  return total;
}

// Eight sums in extended precision, element i in sum i mod 8, of every kStride-th number or its square; what is left
// behind the last eight goes into the first. Four at a time: the processor has eight registers of this precision.
template <int kStride, bool kSquares>
[[gnu::noinline]] long double extendedSum(const Kvr32f* src, size_t len) {
  constexpr size_t kPieceElements = 2048;
  const auto at = [&](size_t i) KVRS_UNROLLED {
    const long double x = unaligned::get(src + i * kStride);
    return kSquares ? x * x : x;
  };
  long double sum[8] = {};
  const size_t whole = len & ~size_t{7};
  for (size_t begin = 0; begin < whole; begin += kPieceElements) {
    const size_t end = whole - begin < kPieceElements ? whole : begin + kPieceElements;
    for (size_t l = 0; l < 8; l += 4) {
      long double s0 = sum[l], s1 = sum[l + 1], s2 = sum[l + 2], s3 = sum[l + 3];
      for (size_t i = begin + l; i < end; i += 8) {
        s0 += at(i);
        s1 += at(i + 1);
        s2 += at(i + 2);
        s3 += at(i + 3);
      }
      sum[l] = s0, sum[l + 1] = s1, sum[l + 2] = s2, sum[l + 3] = s3;
    }
  }
  for (size_t i = whole; i < len; ++i) sum[0] += at(i);
  return ((sum[0] + sum[1]) + (sum[2] + sum[3])) + ((sum[4] + sum[5]) + (sum[6] + sum[7]));
}

template <int kParts, bool kSquares>
Sums<long double> accurateSums(const Kvr32f* src, size_t len) {
  Sums<long double> total;
  for (int part = 0; part < kParts; ++part) total.sum[part] = extendedSum<kParts, false>(src + part, len);
  if (kSquares) total.squares = extendedSum<kParts, true>(src, len);
  return total;
}

// The accurate sums take the processor's oldest unit several cycles an element. Vectors of doubles do it in a fraction of
// that, not with the same sums, but with a bound on how far apart the two can be: if all numbers within the bound lead to
// one result in single precision, it is the result. (Ziv: Fast evaluation of elementary mathematical functions with
// correctly rounded last bit, 1991.)
//
// With M for the sum of all magnitudes, an addition errs by at most 2^-52 M in double and 2^-63 M in extended precision, in
// any rounding mode. Every one of the eight extended sums takes len / 8 elements, a share of M that adds up to M over all
// eight, and at most seven more; three additions join them. A lane of doubles takes its part of a piece likewise. Where
// there are squares, whose sum is B, M is not computed: it is at most sqrt(n B).
template <int kParts, bool kSquares>
struct Estimate {
  Sums<long double> sums;
  long double error, errorOfSquares;
};

// Shorter vectors are as fast the other way.
inline constexpr size_t kEstimatedFrom = 32;

// Sums, and those of the squares or of the magnitudes.
template <class V>
struct SumAndSize {
  V sum, size;
};
template <bool kSquares>
struct SumWithSize {
  template <class V, class X>
  KVRS_INLINE void operator()(SumAndSize<V>& acc, X single) const {
    const V x = hn::PromoteTo(hn::DFromV<V>(), single);
    acc.sum = hn::Add(acc.sum, x);
    // The product is exact, fused or not.
    acc.size = kSquares ? hn::MulAdd(x, x, acc.size) : hn::Add(acc.size, hn::Abs(x));
  }
  template <class V>
  KVRS_INLINE void join(SumAndSize<V>& a, const SumAndSize<V>& b) const {
    a.sum = hn::Add(a.sum, b.sum);
    a.size = hn::Add(a.size, b.size);
  }
};

template <int kParts, bool kSquares>
[[gnu::noinline]] Estimate<kParts, kSquares> estimateSums(const Kvr32f* src, size_t len) {
  constexpr size_t kPieceNumbers = 4096, N = kLanes<double>;
  constexpr int k = kSquares && kVectorRegisters < 16 ? 2 : kFewAccumulators;
  using D = Lanes<double, N>;
  const auto zero = hn::Zero(D());
  Estimate<kParts, kSquares> e{};
  long double size = 0;
  forPieces(len * kParts, kPieceNumbers, [&](size_t begin, size_t count) KVRS_UNROLLED {
    const SumAndSize<hn::Vec<D>> start{zero, zero};
    const auto acc = reduce<double, k>(SumWithSize<kSquares>(), start, count, src + begin);
    if constexpr (kParts == 1) {
      e.sums.sum[0] += sumLanes(acc.sum);
    } else {
      alignas(64) double lanes[N];
      hn::Store(acc.sum, D(), lanes);
      for (size_t l = 0; l < N; ++l) e.sums.sum[l % 2] += lanes[l];
    }
    size += sumLanes(acc.size);
  });
  // Additions to an element of a lane, of the lanes and of the pieces; and what the bound itself has lost.
  const long double n = static_cast<long double>(len);
  if constexpr (kSquares) {
    e.sums.squares = size;
    size = std::sqrt(n * kParts * size);
  }
  constexpr long double kInDouble = (kPieceNumbers / (k * N) + 16) * 0x1p-52L;
  const long double relative = 1.001L * (kInDouble + (n / 8 + n / 1024 + 64) * 0x1p-63L);
  e.error = relative * size;
  e.errorOfSquares = relative * e.sums.squares;
  return e;
}

// result(sum) of the sum that is stated, result being monotonous and in single precision, if the estimate decides it. A
// result of 0 has a sign, and is left undecided.
template <class Result>
KVRS_INLINE bool decided(long double sum, long double error, Result result, Kvr32f* to) {
  const Kvr32f lowest = result(sum - error), highest = result(sum + error);
  *to = lowest;
  return lowest == highest && lowest != 0;
}

// Sums of double precision in eight lanes by position. The first number of an array that is not aligned to 16 bytes is
// ahead of them and goes into the first lane at the end. Lanes are joined as ((0 2) (4 6)) and ((1 3) (5 7)), which are
// the two parts of complex elements.
template <bool kSquares>
Sums<Kvr64f> doubleSums(const Kvr64f* src, size_t len, bool aheadOfBoundary) {
  Kvr64f first = 0;
  const bool ahead = aheadOfBoundary && (reinterpret_cast<uintptr_t>(src) & 15) != 0;
  if (ahead) first = unaligned::get(src), ++src, --len;
  alignas(64) Kvr64f lanes[2][8];
  sumInLanes<8, kSquares>(src, len, lanes[0], lanes[1]);
  lanes[0][0] += first;
  Sums<Kvr64f> total;
  const auto join = [](const Kvr64f* l) { return (l[0] + l[2]) + (l[4] + l[6]); };
  total.sum[0] = join(lanes[0]);
  total.sum[1] = join(lanes[0] + 1);
  if (kSquares) {
    lanes[1][0] += first * first;
    total.squares = join(lanes[1]) + join(lanes[1] + 1);
  }
  return total;
}

}  // namespace kvrs

#endif
