// Counts of elements and of crossings.
// SPDX-License-Identifier: MIT
#include "kvrs/count.h"

#include "frame/check.h"
#include "frame/reduce.h"

namespace kvrs {
namespace {

struct Counted {
  template <class V>
  KVRS_INLINE void join(V& a, V b) const {
    a = hn::Add(a, b);
  }
};

// One more in the lanes that the mask has.
template <class V, class M>
KVRS_INLINE V countWhere(V count, M mask) {
  const hn::DFromV<V> d;
  if constexpr (kMaskRegisters) {
    return hn::IfThenElse(mask, hn::Add(count, hn::Set(d, 1)), count);
  } else {
    return hn::Sub(count, hn::VecFromMask(d, mask));
  }
}
template <class M>
KVRS_INLINE M both(M a, M b) {
  if constexpr (kMaskRegisters) {
    return bothMasks(a, b);
  } else {
    return hn::And(a, b);
  }
}

struct Within : Counted {
  Kvr32s lower, upper;

  Within(Kvr32s l, Kvr32s u) : lower(l), upper(u) {}
  Kvr32s rest() const { return lower; }
  template <class V>
  KVRS_INLINE void operator()(V& count, V x) const {
    const hn::DFromV<V> d;
    count = countWhere(count, both(hn::Gt(x, hn::Set(d, lower)), hn::Lt(x, hn::Set(d, upper))));
  }
};

// -1, 0 or 1.
template <class V>
KVRS_INLINE V sign(V x) {
  using T = hn::TFromV<V>;
  const hn::DFromV<V> d;
  return hn::Min(hn::Max(x, hn::Set(d, T{-1})), hn::Set(d, T{1}));
}
template <class V, class Vf>
KVRS_INLINE V signOfFloat(Vf x) {
  const hn::DFromV<V> d;
  const hn::DFromV<Vf> df;
  const auto positive = hn::VecFromMask(d, hn::RebindMask(d, hn::Gt(x, hn::Zero(df))));
  const auto negative = hn::VecFromMask(d, hn::RebindMask(d, hn::Lt(x, hn::Zero(df))));
  return hn::Sub(negative, positive);
}

// What a pair counts, by flag: crossings in halves with flag 2. Zeros behind the end count nothing.
template <int flag>
struct Crossing : Counted {
  template <class V>
  KVRS_INLINE void operator()(V& count, V a, V b) const {
    if constexpr (flag == 0) {
      count = hn::Sub(count, hn::BroadcastSignBit(hn::MulHigh(a, b)));
    } else if constexpr (flag == 1) {
      count = hn::Sub(count, hn::BroadcastSignBit(hn::Xor(a, b)));
    } else {
      count = hn::Add(count, hn::Abs(hn::Sub(sign(a), sign(b))));
    }
  }
  template <class V, class Vf>
  KVRS_INLINE void operator()(V& count, Vf a, Vf b) const {
    const hn::DFromV<V> d;
    if constexpr (flag == 1) {
      count = hn::Sub(count, hn::BroadcastSignBit(hn::Xor(hn::BitCast(d, a), hn::BitCast(d, b))));
    } else if constexpr (flag == 0) {
      // With a NaN both extremes are b.
      const auto zero = hn::Zero(hn::DFromV<Vf>());
      const auto crosses = both(hn::Lt(hn::Min(a, b), zero), hn::Gt(hn::Max(a, b), zero));
      count = countWhere(count, hn::RebindMask(d, crosses));
    } else {
      count = hn::Add(count, hn::Abs(hn::Sub(signOfFloat<V>(a), signOfFloat<V>(b))));
    }
  }
};

// Lanes count up to 2 a block.
template <int flag>
int64_t crossings(const Kvr16s* src, size_t pairs) {
  const Lanes<Kvr16s, kLanes<Kvr16s>> d;
  const Lanes<Kvr32s, kLanes<Kvr32s>> d32;
  int64_t total = 0;
  forPieces(pairs, (1 << 14) * kLanes<Kvr16s> - kLanes<Kvr16s>,
            [&](size_t begin, size_t count) KVRS_UNROLLED {
              const auto counted =
                  reduce<Kvr16s, 2>(Crossing<flag>(), hn::Zero(d), count, src + begin, src + begin + 1);
              const auto bits = hn::BitCast(d32, counted);
              const auto both = hn::Add(hn::And(bits, hn::Set(d32, 0xFFFF)), hn::ShiftRight<16>(bits));
              total += sumLanes(both);
            });
  return total;
}
template <int flag>
int64_t crossings(const Kvr32f* src, size_t pairs) {
  const Lanes<Kvr32s, kLanes<Kvr32s>> d;
  return static_cast<int64_t>(
      wideTotal(reduce<Kvr32f, 2>(Crossing<flag>(), hn::Zero(d), pairs, src, src + 1)));
}

template <class T>
KvrStatus zeroCrossing(const T* src, int len, Kvr32f* valZC, int flag) {
  KVRS_CHECK(pointers(src, valZC), require(len != 0, kvrStatusBadLength),
             require(flag >= 0 && flag <= 2, kvrStatusBadFlag));
  const size_t pairs = len < 2 ? 0 : static_cast<size_t>(len) - 1;
  const int64_t count = pairs == 0  ? 0
                        : flag == 0 ? crossings<0>(src, pairs)
                        : flag == 1 ? crossings<1>(src, pairs)
                                    : crossings<2>(src, pairs);
  *valZC = static_cast<Kvr32f>(static_cast<double>(count) * (flag == 2 ? 0.5 : 1.0));
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsCountInRange_32s(const Kvr32s* src, int len, int* counts, Kvr32s lowerBound,
                               Kvr32s upperBound) noexcept {
  KVRS_CHECK(pointers(src, counts), lengthOf<Kvr32s>(len));
  const Lanes<Kvr32s, kLanes<Kvr32s>> d;
  *counts = sumLanes(reduce<Kvr32s, kFewAccumulators>(Within(lowerBound, upperBound), hn::Zero(d),
                                                      static_cast<size_t>(len), src));
  return kvrStatusOk;
}
KvrStatus kvrsZeroCrossing_16s32f(const Kvr16s* src, int len, Kvr32f* valZC, int flag) noexcept {
  return zeroCrossing(src, len, valZC, flag);
}
KvrStatus kvrsZeroCrossing_32f(const Kvr32f* src, int len, Kvr32f* valZC, int flag) noexcept {
  return zeroCrossing(src, len, valZC, flag);
}
