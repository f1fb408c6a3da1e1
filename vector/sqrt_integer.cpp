// Square roots of integers.
// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/check.h"
#include "frame/halves.h"
#include "frame/loop.h"
#include "frame/note.h"
#include "frame/scale.h"
#include "frame/to_integer.h"
#include "frame/unaligned.h"
#include "kvrs/roots.h"
#include "vector/sqrt.h"

namespace kvrs {
namespace {

// sqrt(x) * scale in single precision (8 and 16 bits) or double precision; of negative numbers 0.
template <class F>
struct ScaledRoot {
  F scale;

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V x) const {
    return through<F>(
        [this](auto dt, auto part) __attribute__((always_inline)) { return this->of(dt, part); }, d, x);
  }

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> of(D d, V x) const {
    using T = hn::TFromD<D>;
    const hn::Rebind<F, D> df;
    const auto value = hn::Max(asFloat(df, x), hn::Zero(df));
    const auto root = hn::Mul(hn::Sqrt(value), hn::Set(df, scale));
    if constexpr (sizeof(T) == 8) {
      // Below 2^52 the sum has no fraction, and its lower bits are the integer.
      const auto sum = hn::BitCast(d, hn::Add(root, hn::Set(df, 0x1p52)));
      return hn::Sub(sum, hn::BitCast(d, hn::Set(df, 0x1p52)));
    } else {
      const hn::Rebind<int32_t, D> d32;
      const auto rounded = nearestInt32(d32, hn::Min(root, hn::Set(df, F{std::numeric_limits<T>::max()})));
      return hn::DemoteTo(d, rounded);
    }
  }

  template <class DF, class V>
  static KVRS_INLINE hn::Vec<DF> asFloat(DF df, V x) {
    using S = hn::TFromV<V>;
    if constexpr (sizeof(S) == 8) {
      return hn::ConvertTo(df, x);
    } else if constexpr (sizeof(S) == 4) {
      return hn::PromoteTo(df, x);
    } else {
      return hn::ConvertTo(df, hn::PromoteTo(hn::RebindToSigned<DF>(), x));
    }
  }
};

// The same for signed numbers, which may be negative.
template <class F>
struct NotingRoot {
  ScaledRoot<F> root;

  template <class D, class V>
  static KVRS_INLINE auto isNegative(D d, V x) {
    using S = hn::TFromV<V>;
    if constexpr (sizeof(S) == sizeof(hn::TFromD<D>)) {
      return hn::Lt(x, hn::Zero(d));
    } else if constexpr (sizeof(S) == 4) {
      return hn::Lt(hn::DemoteTo(d, x), hn::Zero(d));
    } else {
      const hn::Rebind<double, D> df;
      const auto sign = bound(df, hn::ConvertTo(df, x), -1.0, 1.0);
      return hn::Lt(hn::DemoteTo(d, nearestInt32(hn::Rebind<int32_t, D>(), sign)), hn::Zero(d));
    }
  }
  template <class D, class V>
  KVRS_INLINE auto isUsual(D d, V x) const {
    return hn::Not(isNegative(d, x));
  }
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> quick(D d, V x) const {
    return root(d, x);
  }
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> any(D d, Notes& notes, V x) const {
    notes.add(d, kvrStatusSqrtNegArg, isNegative(d, x));
    return root(d, x);
  }
};

// 2^(-scaleFactor), where all that lies beyond these exponents is saturated or 0 anyway; 0 above a bound of the family's.
template <class F>
F scaleOf(int scaleFactor, int zeroAbove = 100) {
  if (scaleFactor > zeroAbove) return 0;
  return powerOfTwo<F>(scaleFactor < -63 ? 63 : -scaleFactor);
}

template <class T>
KvrStatus rootsOfUnsigned(const T* src, T* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const ScaledRoot<float> op{scaleOf<float>(scaleFactor)};
  return slicedRoots<sizeof(T)>(len, threadedLength(2048), [=](size_t begin, size_t count) {
    mapElements(op, dst + begin, count, src + begin);
    return false;
  });
}

template <class F, class S, class D>
KvrStatus rootsOfSigned(const S* src, D* dst, int len, F scale, size_t threadedFrom) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const NotingRoot<F> op{{scale}};
  return slicedRoots<sizeof(S)>(len, threadedFrom, [=](size_t begin, size_t count) {
    return mapNoting(op, dst + begin, count, src + begin) == kvrStatusSqrtNegArg;
  });
}

// Where the root may have more than 52 bits before the point. There is no vector conversion of these in most modules, and
// little use for them.
bool rootsOfLarge(const Kvr64s* src, Kvr64s* dst, size_t len, double scale) {
  bool met = false;
  for (size_t i = 0; i < len; ++i) {
    const Kvr64s x = unaligned::get(src + i);
    met |= x < 0;
    const double root = std::sqrt(static_cast<double>(x < 0 ? 0 : x)) * scale;
    unaligned::put(root < 0x1p63 ? Kvr64s{std::llrint(root)} : INT64_MAX, dst + i);
  }
  return met;
}

KvrStatus rootsOf64s(const Kvr64s* src, Kvr64s* dst, int len, int scaleFactor) {
  const double scale = scaleOf<double>(scaleFactor);
  // The largest root is below 2^31.5.
  if (scaleFactor >= -20) return rootsOfSigned(src, dst, len, scale, threadedLength(256));
  KVRS_CHECK(pointers(src, dst), length(len));
  return slicedRoots<sizeof *src>(len, threadedLength(256), [=](size_t begin, size_t count) {
    return rootsOfLarge(src + begin, dst + begin, count, scale);
  });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSqrt_8u_Sfs(const Kvr8u* src, Kvr8u* dst, int len, int scaleFactor) noexcept {
  return rootsOfUnsigned(src, dst, len, scaleFactor);
}
KvrStatus kvrsSqrt_8u_ISfs(Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return rootsOfUnsigned(srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsSqrt_16u_Sfs(const Kvr16u* src, Kvr16u* dst, int len, int scaleFactor) noexcept {
  return rootsOfUnsigned(src, dst, len, scaleFactor);
}
KvrStatus kvrsSqrt_16u_ISfs(Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  return rootsOfUnsigned(srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsSqrt_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return rootsOfSigned(src, dst, len, scaleOf<float>(scaleFactor), threadedLength(2048));
}
KvrStatus kvrsSqrt_16s_ISfs(Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return rootsOfSigned(srcDst, srcDst, len, scaleOf<float>(scaleFactor), threadedLength(2048));
}
KvrStatus kvrsSqrt_32s16s_Sfs(const Kvr32s* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return rootsOfSigned(src, dst, len, scaleOf<double>(scaleFactor, 16), threadedLength(1024));
}
KvrStatus kvrsSqrt_64s_Sfs(const Kvr64s* src, Kvr64s* dst, int len, int scaleFactor) noexcept {
  return rootsOf64s(src, dst, len, scaleFactor);
}
KvrStatus kvrsSqrt_64s_ISfs(Kvr64s* srcDst, int len, int scaleFactor) noexcept {
  return rootsOf64s(srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsSqrt_64s16s_Sfs(const Kvr64s* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return rootsOfSigned(src, dst, len, scaleOf<double>(scaleFactor, 32), threadedLength(512));
}
