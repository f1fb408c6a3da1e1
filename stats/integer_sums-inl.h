// Exact sums of 16-bit and 32-bit integers.
// SPDX-License-Identifier: MIT
#ifndef KVRS_STATS_INTEGER_SUMS_INL_H
#define KVRS_STATS_INTEGER_SUMS_INL_H

#include <cstddef>
#include <cstdint>

#include "frame/reduce.h"
#include "frame/widen.h"

namespace kvrs {

using Words = Lanes<Kvr16s, kLanes<Kvr16s>>;
using DoubleWords = Lanes<Kvr32s, kLanes<Kvr32s>>;

// Blocks of 16-bit elements whose neighbours' sums a signed 32-bit lane holds, all accumulators joined: at most 2^16 each.
inline constexpr size_t kPairBlocks = 1 << 14;

// Neighbours times constants, which are 1 or 0, summed in lanes of 32 bits.
struct SumNeighbours {
  Kvr32s both;  // the two factors in the halves of a lane

  template <class V32, class V16>
  KVRS_INLINE void operator()(V32& sum, V16 x) const {
    const hn::DFromV<V32> d;
    const auto factors = hn::BitCast(hn::DFromV<V16>(), hn::Set(d, both));
    sum = hn::Add(sum, mulAddNeighbours(d, x, factors));
  }
  template <class V32>
  KVRS_INLINE void join(V32& a, V32 b) const {
    a = hn::Add(a, b);
  }
};

// The sum of signed lanes, exact.
template <class V32>
KVRS_INLINE int64_t signedTotal(V32 v) {
  const hn::DFromV<V32> d;
  const auto shifted = hn::Xor(v, hn::Set(d, INT32_MIN));
  return static_cast<int64_t>(wideTotal(shifted)) - (int64_t{kLanes<Kvr32s>} << 31);
}

KVRS_INLINE int64_t sumOf(const Kvr16s* src, size_t len) {
  int64_t total = 0;
  forPieces(len, kPairBlocks * kLanes<Kvr16s>, [&](size_t begin, size_t count) KVRS_UNROLLED {
    total += signedTotal(reduce<Kvr16s, kFewAccumulators>(SumNeighbours{0x00010001}, hn::Zero(DoubleWords()),
                                                          count, src + begin));
  });
  return total;
}

struct SumParts {
  template <class V32>
  struct Both {
    V32 re, im;
  };
  template <class V32, class V16>
  KVRS_INLINE void operator()(Both<V32>& sum, V16 x) const {
    SumNeighbours{0x00000001}(sum.re, x);
    SumNeighbours{0x00010000}(sum.im, x);
  }
  template <class V32>
  KVRS_INLINE void join(Both<V32>& a, Both<V32> b) const {
    a.re = hn::Add(a.re, b.re);
    a.im = hn::Add(a.im, b.im);
  }
};

KVRS_INLINE Kvr64sc sumOf(const Kvr16sc* src, size_t len) {
  using V32 = hn::Vec<DoubleWords>;
  const V32 zero = hn::Zero(DoubleWords());
  Kvr64sc total = {0, 0};
  forPieces(len, kPairBlocks * kLanes<Kvr16s> / 2, [&](size_t begin, size_t count) KVRS_UNROLLED {
    const auto sums =
        reduce<Kvr16s, 2>(SumParts(), SumParts::Both<V32>{zero, zero}, count, asPairs<Kvr16s>(src + begin));
    total.re += signedTotal(sums.re);
    total.im += signedTotal(sums.im);
  });
  return total;
}

// 32-bit elements as unsigned numbers: each is 2^31 more, zeros behind the end too.
struct SumShifted {
  template <class V32>
  KVRS_INLINE void operator()(WideSum& sum, V32 x) const {
    sum.add(hn::Xor(x, hn::Set(hn::DFromV<V32>(), INT32_MIN)));
  }
  KVRS_INLINE void join(WideSum& a, const WideSum& b) const { a.add(b); }
};

KVRS_INLINE int64_t sumOf(const Kvr32s* src, size_t len) {
  const uint64_t sum = reduce<Kvr32s, 2>(SumShifted(), WideSum(), len, src).total();
  constexpr size_t N = kLanes<Kvr32s>;
  return static_cast<int64_t>(sum - ((uint64_t{len} + N - 1) / N * N << 31));
}

}  // namespace kvrs

#endif
