// Ramps, each sample from its index, and slopes, by four running sums.
// SPDX-License-Identifier: MIT
#include <limits>
#include <type_traits>

#include "frame/check.h"
#include "frame/generate.h"
#include "frame/rounding.h"
#include "frame/to_integer.h"
#include "kvrs/test_vectors.h"
#include "synth/sample_formats.h"
#include "vector/fill.h"

namespace kvrs {
namespace {

// --- Ramps

struct Ramp {
  float offset, slope;

  // n are 32-bit integers.
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V n) const {
    using T = hn::TFromD<D>;
    const hn::Rebind<float, D> df;
    const auto v = hn::Add(hn::Mul(hn::ConvertTo(df, n), hn::Set(df, slope)), hn::Set(df, offset));
    if constexpr (std::is_same_v<T, float>) {
      return v;
    } else {
      const hn::Rebind<double, D> dd;
      const auto wide = hn::PromoteTo(dd, v);
      if constexpr (std::is_same_v<T, double>) {
        return wide;
      } else {
        return truncated(d, awayByHalf(dd, wide));
      }
    }
  }

 private:
  template <class D, class V>
  static KVRS_INLINE hn::Vec<D> truncated(D d, V v) {
    using T = hn::TFromD<D>;
    constexpr double kLowest = std::numeric_limits<T>::lowest(), kHighest = std::numeric_limits<T>::max();
    const hn::DFromV<V> dd;
    const hn::Rebind<int32_t, D> di;
    const V inRange = bound(dd, v, kLowest, kHighest);
    if constexpr (std::is_same_v<T, uint32_t>) {
      // The upper half of the range less 2^31, and then its sign bit.
      const auto isUpper = hn::Ge(inRange, hn::Set(dd, 0x1p31));
      const V lower = hn::Sub(inRange, hn::IfThenElseZero(isUpper, hn::Set(dd, 0x1p31)));
      const auto one = truncateInt32(di, hn::IfThenElseZero(isUpper, hn::Set(dd, 1.0)));
      return hn::BitCast(d, hn::Xor(truncateInt32(di, lower), hn::ShiftLeft<31>(one)));
    } else if constexpr (sizeof(T) == 4) {
      return truncateInt32(di, inRange);
    } else {
      return hn::DemoteTo(d, truncateInt32(di, inRange));
    }
  }
};

template <class T>
KvrStatus ramp(T* dst, int len, float offset, float slope) {
  KVRS_CHECK(pointers(dst), lengthOf<T>(len));
  // As many elements a block as doubles are in a vector, where these are in between or stored.
  constexpr size_t N = std::is_same_v<T, float> ? kLanes<float> : kLanes<double>;
  const Ramp op{offset, slope};
  // Kept as a vector: one that is made of each block's first index the compiler puts together number by number.
  const Lanes<int32_t, N> di;
  auto index = hn::Iota(di, 0);
  generateBlocks<N>(dst, static_cast<size_t>(len), [&](auto d) {
    const auto v = op(d, index);
    index = hn::Add(index, hn::Set(di, static_cast<int32_t>(N)));
    return v;
  });
  return kvrStatusOk;
}

// --- Slopes

// Four sums from 0, s, 2s and 3s on, on top of a base.
template <class F>
class FourSums {
 public:
  FourSums(F base, F slope) : base_(hn::Set(D(), base)), step_(hn::Set(D(), 4 * slope)) {
    for (size_t k = 0; k < kVectors; ++k) {
      sum_[k] = hn::Mul(hn::Iota(D(), static_cast<F>(k * N)), hn::Set(D(), slope));
    }
  }

  void operator()(F* tile, size_t count) {
    for (size_t i = 0; i < count; i += 4) {
      for (size_t k = 0; k < kVectors; ++k) {
        hn::StoreU(hn::Add(base_, sum_[k]), D(), tile + i + k * N);
        sum_[k] = hn::Add(sum_[k], step_);
      }
    }
  }

 private:
  using D = Lanes<F, 4>;
  using V = hn::Vec<D>;
  static constexpr size_t N = hn::MaxLanes(D()), kVectors = 4 / N;
  V base_, step_, sum_[kVectors];
};

// To nearest, ties to even, and saturated; the rounding mode is to nearest.
struct Nearest {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V v) const {
    using T = hn::TFromD<D>;
    if constexpr (std::is_floating_point_v<T>) {
      return v;
    } else if constexpr (std::is_same_v<T, uint32_t>) {
      // The last bits of 2^52 are its integers.
      const hn::DFromV<V> dd;
      const V inRange = bound(dd, v, 0.0, 4294967295.0);
      return hn::TruncateTo(
          d, hn::BitCast(hn::RebindToUnsigned<decltype(dd)>(), hn::Add(inRange, hn::Set(dd, 0x1p52))));
    } else {
      return toInteger<false>(d, v, hwy::LimitsMin<T>(), hwy::LimitsMax<T>());
    }
  }
};

// v to nearest with halves away from zero, saturated.
template <class T, class F>
T rounded(F v) {
  if constexpr (std::is_floating_point_v<T>) {
    return v;
  } else {
    constexpr double kLowest = std::numeric_limits<T>::lowest(), kHighest = std::numeric_limits<T>::max();
    const double x = static_cast<double>(v) + (v > 0 ? 0.5 : -0.5);
    return x >= kHighest ? std::numeric_limits<T>::max()
           : x > kLowest ? static_cast<T>(x)
                         : std::numeric_limits<T>::lowest();
  }
}

// Where the line leaves the number `limit`, at most `len`.
template <class F>
size_t crossing(F limit, F offset, F reciprocal, size_t len) {
  const F at = (limit - offset) * reciprocal + 1;
  if (!(at > 0)) return 0;
  return at >= static_cast<F>(2147483648.0) || static_cast<size_t>(at) >= len ? len : static_cast<size_t>(at);
}

template <class T>
void fillWith(T value, T* dst, size_t len) {
  mapElements(Fill<T>{value}, dst, len);
}

template <class T, class F>
void line(T* dst, size_t len, F base, F slope) {
  generate<F>(Nearest(), dst, len, FourSums<F>(base, slope));
}

template <class T, class F>
void integerLine(T* dst, size_t len, F offset, F slope) {
  constexpr T kLowest = std::numeric_limits<T>::lowest(), kHighest = std::numeric_limits<T>::max();
  const F reciprocal = 1 / slope;
  const size_t low = crossing(static_cast<F>(kLowest), offset, reciprocal, len);
  const size_t high = crossing(static_cast<F>(kHighest), offset, reciprocal, len);
  const bool rises = slope > 0;
  const size_t from = rises ? low : high, to = rises ? high : low;
  fillWith(rises ? kLowest : kHighest, dst, from);
  if (to > from) line(dst + from, to - from, offset + static_cast<F>(from) * slope, slope);
  fillWith(rises ? kHighest : kLowest, dst + (to > from ? to : from), len - (to > from ? to : from));
}

template <class T, class F>
KvrStatus slope(T* dst, int len, F offset, F slope) {
  KVRS_CHECK(pointers(dst), lengthOf<T>(len));
  const size_t n = static_cast<size_t>(len);
  if (slope == 0) {
    fillWith(rounded<T>(offset), dst, n);
  } else if constexpr (std::is_floating_point_v<T>) {
    line(dst, n, offset, slope);
  } else if (offset != offset || slope != slope) {
    fillWith(std::numeric_limits<T>::lowest(), dst, n);
  } else {
    underRounding(Rounding::nearest, [=] { integerLine(dst, n, offset, slope); });
  }
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsVectorRamp_8u(Kvr8u* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return ramp(dst, len, offset, slope);
}
KvrStatus kvrsVectorRamp_8s(Kvr8s* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return ramp(dst, len, offset, slope);
}
KvrStatus kvrsVectorRamp_16u(Kvr16u* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return ramp(dst, len, offset, slope);
}
KvrStatus kvrsVectorRamp_16s(Kvr16s* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return ramp(dst, len, offset, slope);
}
KvrStatus kvrsVectorRamp_32u(Kvr32u* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return ramp(dst, len, offset, slope);
}
KvrStatus kvrsVectorRamp_32s(Kvr32s* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return ramp(dst, len, offset, slope);
}
KvrStatus kvrsVectorRamp_32f(Kvr32f* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return ramp(dst, len, offset, slope);
}
KvrStatus kvrsVectorRamp_64f(Kvr64f* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return ramp(dst, len, offset, slope);
}

KvrStatus kvrsVectorSlope_8u(Kvr8u* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return kvrs::slope(dst, len, offset, slope);
}
KvrStatus kvrsVectorSlope_8s(Kvr8s* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return kvrs::slope(dst, len, offset, slope);
}
KvrStatus kvrsVectorSlope_16u(Kvr16u* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return kvrs::slope(dst, len, offset, slope);
}
KvrStatus kvrsVectorSlope_16s(Kvr16s* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return kvrs::slope(dst, len, offset, slope);
}
KvrStatus kvrsVectorSlope_32u(Kvr32u* dst, int len, Kvr64f offset, Kvr64f slope) noexcept {
  return kvrs::slope(dst, len, offset, slope);
}
KvrStatus kvrsVectorSlope_32s(Kvr32s* dst, int len, Kvr64f offset, Kvr64f slope) noexcept {
  return kvrs::slope(dst, len, offset, slope);
}
KvrStatus kvrsVectorSlope_32f(Kvr32f* dst, int len, Kvr32f offset, Kvr32f slope) noexcept {
  return kvrs::slope(dst, len, offset, slope);
}
KvrStatus kvrsVectorSlope_64f(Kvr64f* dst, int len, Kvr64f offset, Kvr64f slope) noexcept {
  return kvrs::slope(dst, len, offset, slope);
}
