// Floats to integers: scaled by a power of two, rounded, saturated.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <limits>
#include <type_traits>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/packed24.h"
#include "frame/rounding.h"
#include "frame/scale.h"
#include "frame/to_integer.h"
#include "frame/unaligned.h"
#include "kvrs/convert.h"

namespace kvrs {
namespace {

// The bounds of a destination, as numbers of its lanes.
template <class D>
struct Range {
  static constexpr D lowest = std::numeric_limits<D>::lowest();
  static constexpr D highest = std::numeric_limits<D>::max();
};
template <>
struct Range<Packed24s> {
  static constexpr int32_t lowest = Packed24s::kLowest, highest = Packed24s::kHighest;
};
template <>
struct Range<Packed24u> {
  static constexpr int32_t lowest = Packed24u::kLowest, highest = Packed24u::kHighest;
};

// The float before 0.5. Adding 0.5 itself would take that float to 1; with this one added, everything below a
// half stays below the next integer, and the sum of a half rounds up to it.
template <class F>
inline constexpr F kBelowHalf = F(0.5) - std::numeric_limits<F>::epsilon() / 4;

// 2^(-scaleFactor), but 0 where it would be subnormal.
template <class F>
F normalScaleOf(int scaleFactor) {
  const F scale = scaleOfAny<F>(scaleFactor);
  return scale < std::numeric_limits<F>::min() ? 0 : scale;
}

template <bool financial, class V>
KVRS_INLINE V addBelowHalf(V v) {
  if constexpr (financial) {
    return awayFromZero(v, kBelowHalf<hn::TFromV<V>>);
  } else {
    return v;
  }
}

template <class D, class F, KvrRoundMode mode>
struct ToInteger {
  F scale;
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    const V scaled = hn::Mul(v, hn::Set(hn::DFromV<V>(), scale));
    const V biased = addBelowHalf<mode == kvrRoundFinancial>(scaled);
    return toInteger<mode != kvrRoundNear>(dt, biased, Range<D>::lowest, Range<D>::highest);
  }
};

template <class D, class F>
KvrStatus toNearest(const F* src, D* dst, int len, int scaleFactor) {
  const ToInteger<D, F, kvrRoundNear> op{normalScaleOf<F>(scaleFactor)};
  return underRounding(Rounding::nearest,
                       [=] { return mapElements(op, dst, static_cast<size_t>(len), src); });
}

template <class D, class F>
KvrStatus truncated(const F* src, D* dst, int len, int scaleFactor) {
  return mapElements(ToInteger<D, F, kvrRoundZero>{normalScaleOf<F>(scaleFactor)}, dst,
                     static_cast<size_t>(len), src);
}

template <class D, class F>
KvrStatus toNearestTiesAway(const F* src, D* dst, int len, int scaleFactor) {
  const ToInteger<D, F, kvrRoundFinancial> op{scaleOfAny<F>(scaleFactor)};
  return underRounding(Rounding::nearest,
                       [=] { return mapElements(op, dst, static_cast<size_t>(len), src); });
}

template <class D, class F>
KvrStatus convert(const F* src, D* dst, int len, KvrRoundMode rndMode, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  switch (rndMode) {
    case kvrRoundZero:
      return truncated(src, dst, len, scaleFactor);
    case kvrRoundNear:
      return toNearest(src, dst, len, scaleFactor);
    default:  // financial rounding, whatever the value
      return toNearestTiesAway(src, dst, len, scaleFactor);
  }
}

template <class P>
KvrStatus convertPacked(const Kvr32f* src, Kvr8u* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return toNearest(src, asPacked<P>(dst), len, scaleFactor);
}

// Doubles to 64-bit integers. The scale may leave the range of a double while the product does not, so that
// it is applied in two steps, each exact: a product that has underflowed counts as less than any fraction,
// one that has overflowed saturates, and 0 stays 0.
constexpr int kMostStep = 1000;

template <KvrRoundMode mode>
struct ToInt64 {
  Kvr64f scale, scaleAgain;
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    const hn::DFromV<V> df;
    const V scaled = hn::Mul(hn::Mul(v, hn::Set(df, scale)), hn::Set(df, scaleAgain));
    const V biased = addBelowHalf<mode == kvrRoundFinancial>(scaled);
    return toInteger<mode != kvrRoundNear>(dt, biased, Range<Kvr64s>::lowest, Range<Kvr64s>::highest);
  }
};

template <KvrRoundMode mode>
KvrStatus vectorsToInt64(const Kvr64f* src, Kvr64s* dst, int len, int step, int rest) {
  return mapElements(ToInt64<mode>{powerOfTwo<Kvr64f>(-step), powerOfTwo<Kvr64f>(-rest)}, dst,
                     static_cast<size_t>(len), src);
}

// Where no vector instruction converts to 64 bits: in extended precision, which holds every scaled double and
// its sum with a half exactly. The conversion makes its lowest value of NaN and of all that is too low.
template <bool financial>
void extendedToInt64(const Kvr64f* src, Kvr64s* dst, int len, long double scale) {
  for (int i = 0; i < len; ++i) {
    long double scaled = static_cast<long double>(unaligned::get(src + i)) * scale;
    if constexpr (financial) scaled += scaled < 0 ? -0.5L : 0.5L;
    unaligned::put(scaled >= 0x1p63L ? Range<Kvr64s>::highest : Kvr64s{__builtin_llrintl(scaled)}, dst + i);
  }
}

// Only the value 2 is financial rounding here; an unknown mode rounds to even. A template, so that a module
// has one of the two bodies.
template <class D>
KvrStatus toInt64(const Kvr64f* src, D* dst, int len, KvrRoundMode rndMode, int scaleFactor) {
  const int step = std::clamp(scaleFactor, -kMostStep, kMostStep);
  const int rest = std::clamp(scaleFactor - step, -kMostStep, kMostStep);
  if constexpr (kInt64Conversions) {
    if (rndMode == kvrRoundZero) return vectorsToInt64<kvrRoundZero>(src, dst, len, step, rest);
    return underRounding(Rounding::nearest, [=] {
      return rndMode == kvrRoundFinancial ? vectorsToInt64<kvrRoundFinancial>(src, dst, len, step, rest)
                                          : vectorsToInt64<kvrRoundNear>(src, dst, len, step, rest);
    });
  } else {
    KVRS_CHECK(length(len, src, dst));
    const bool cuts = rndMode == kvrRoundFinancial || rndMode == kvrRoundZero;
    underExtendedRounding(cuts ? Rounding::zero : Rounding::nearest, [=] {
      const long double scale =
          static_cast<long double>(powerOfTwo<Kvr64f>(-step)) * powerOfTwo<Kvr64f>(-rest);
      if (rndMode == kvrRoundFinancial) {
        extendedToInt64<true>(src, dst, len, scale);
      } else {
        extendedToInt64<false>(src, dst, len, scale);
      }
    });
    return kvrStatusOk;
  }
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsConvert_32f8u_Sfs(const Kvr32f* src, Kvr8u* dst, int len, KvrRoundMode rndMode,
                                int scaleFactor) noexcept {
  return convert(src, dst, len, rndMode, scaleFactor);
}
KvrStatus kvrsConvert_32f8s_Sfs(const Kvr32f* src, Kvr8s* dst, int len, KvrRoundMode rndMode,
                                int scaleFactor) noexcept {
  return convert(src, dst, len, rndMode, scaleFactor);
}
KvrStatus kvrsConvert_32f16u_Sfs(const Kvr32f* src, Kvr16u* dst, int len, KvrRoundMode rndMode,
                                 int scaleFactor) noexcept {
  return convert(src, dst, len, rndMode, scaleFactor);
}
KvrStatus kvrsConvert_32f16s_Sfs(const Kvr32f* src, Kvr16s* dst, int len, KvrRoundMode rndMode,
                                 int scaleFactor) noexcept {
  return convert(src, dst, len, rndMode, scaleFactor);
}
KvrStatus kvrsConvert_32f32s_Sfs(const Kvr32f* src, Kvr32s* dst, int len, KvrRoundMode rndMode,
                                 int scaleFactor) noexcept {
  return convert(src, dst, len, rndMode, scaleFactor);
}
KvrStatus kvrsConvert_64f16s_Sfs(const Kvr64f* src, Kvr16s* dst, int len, KvrRoundMode rndMode,
                                 int scaleFactor) noexcept {
  return convert(src, dst, len, rndMode, scaleFactor);
}
KvrStatus kvrsConvert_64f32s_Sfs(const Kvr64f* src, Kvr32s* dst, int len, KvrRoundMode rndMode,
                                 int scaleFactor) noexcept {
  return convert(src, dst, len, rndMode, scaleFactor);
}

KvrStatus kvrsConvert_64f64s_Sfs(const Kvr64f* src, Kvr64s* dst, int len, KvrRoundMode rndMode,
                                 int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return toInt64(src, dst, len, rndMode, scaleFactor);
}

KvrStatus kvrsConvert_32f24s_Sfs(const Kvr32f* src, Kvr8u* dst, int len, int scaleFactor) noexcept {
  return convertPacked<Packed24s>(src, dst, len, scaleFactor);
}
KvrStatus kvrsConvert_32f24u_Sfs(const Kvr32f* src, Kvr8u* dst, int len, int scaleFactor) noexcept {
  return convertPacked<Packed24u>(src, dst, len, scaleFactor);
}
