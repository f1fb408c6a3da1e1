// Cartesian to polar coordinates and back.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <limits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/scale.h"
#include "frame/sincos.h"
#include "frame/to_integer.h"
#include "frame/unroll.h"
#include "kvrs/polar.h"

namespace kvrs {
namespace {

// A single that is loaded as such and as a double, and stored by halves of vectors.
struct Single {
  Kvr32f value;
};

template <class V>
struct Halves {
  V lower, upper;
};

}  // namespace

template <>
struct Element<Single> {
  using Lane = Kvr32f;
  static constexpr size_t kSpan = 1;

  template <class Dt>
  static KVRS_INLINE auto load(Dt d, const Single* p) {
    return loadWidened(d, &p->value);
  }
  template <class Dt, class V>
  static KVRS_INLINE void store(Halves<V> v, Dt, Single* p) {
    const hn::DFromV<V> half;
    hn::StoreU(v.lower, half, &p->value);
    hn::StoreU(v.upper, half, &p->value + (hn::MaxLanes(Dt()) - kHalfLanes<Dt>));
  }
};

namespace {

Single* asSingles(Kvr32f* p) {
  return reinterpret_cast<Single*>(p);
}
const Single* asSingles(const Kvr32f* p) {
  return reinterpret_cast<const Single*>(p);
}

// The parts of magnitude and phase in double precision.
struct Cartesian {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, V magnitude, V phase) const {
    const auto of = sinCos<SinCosFor::doubles>(d, phase);
    return {hn::Mul(magnitude, of.cos), hn::Mul(magnitude, of.sin)};
  }
};

// Singles, by way of doubles.
struct CartesianHalves {
  template <class D, class V, class Wide>
  KVRS_INLINE auto operator()(D, WidenedSingles<V, Wide> magnitude, WidenedSingles<V, Wide> phase) const {
    const Lanes<float, kHalfLanes<D>> half;
    const auto of = sinCos(phase);
    const auto product = [&](Wide x, Wide y) KVRS_UNROLLED { return hn::DemoteTo(half, hn::Mul(x, y)); };
    using Half = hn::Vec<decltype(half)>;
    return Complex<Halves<Half>>{
        {product(magnitude.lower, of.lower.cos), product(magnitude.upper, of.upper.cos)},
        {product(magnitude.lower, of.lower.sin), product(magnitude.upper, of.upper.sin)}};
  }
};

// The same as whole vectors.
struct CartesianSingles {
  template <class D, class V, class Wide>
  KVRS_INLINE Complex<V> operator()(D d, WidenedSingles<V, Wide> magnitude,
                                    WidenedSingles<V, Wide> phase) const {
    const auto halves = CartesianHalves()(d, magnitude, phase);
    if constexpr (hn::MaxLanes(D()) == 1) {
      return {halves.re.lower, halves.im.lower};
    } else {
      return {hn::Combine(d, halves.re.upper, halves.re.lower),
              hn::Combine(d, halves.im.upper, halves.im.lower)};
    }
  }
};

// Integers by way of doubles, halves away from zero.
template <SinCosFor use>
struct ScaledCartesian {
  double magnitudeScale, phaseScale;

  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, V magnitude, V phase) const {
    const hn::Rebind<double, D> wide;
    const auto m = hn::Mul(doubles(wide, magnitude), hn::Set(wide, magnitudeScale));
    const auto of = sinCos<use>(wide, hn::Mul(doubles(wide, phase), hn::Set(wide, phaseScale)));
    return {rounded(d, hn::Mul(m, of.cos)), rounded(d, hn::Mul(m, of.sin))};
  }

 private:
  template <class D, class V>
  static KVRS_INLINE hn::Vec<D> doubles(D d, V v) {
    if constexpr (sizeof(hn::TFromV<V>) == 2) {
      return hn::PromoteTo(d, hn::PromoteTo(hn::Rebind<int32_t, D>(), v));
    } else {
      return hn::PromoteTo(d, v);
    }
  }
  template <class D, class V>
  static KVRS_INLINE hn::Vec<D> rounded(D d, V v) {
    using T = hn::TFromD<D>;
    return toInteger<true>(d, withHalf(v), std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max());
  }
};

// 2^(-scaleFactor), the factor limited to [-bound, bound].
double limitedScale(int scaleFactor, int bound) {
  return powerOfTwo<double>(-std::clamp(scaleFactor, -bound, bound));
}

template <class Op, class S, class D>
KvrStatus cartesian(Op op, const S* srcMag, const S* srcPhase, D* dst, int len) {
  KVRS_CHECK(pointers(srcMag, srcPhase, dst), length(len));
  return underRounding(Rounding::nearest,
                       [=] { return mapElements(op, dst, static_cast<size_t>(len), srcMag, srcPhase); });
}

template <class Op, class T>
KvrStatus cartesianPlanes(Op op, const T* srcMag, const T* srcPhase, T* dstRe, T* dstIm, int len) {
  KVRS_CHECK(pointers(srcMag, srcPhase, dstRe, dstIm), length(len));
  return underRounding(Rounding::nearest, [=] {
    return mapElements(op, Planes<T>{dstRe, dstIm}, static_cast<size_t>(len), srcMag, srcPhase);
  });
}

template <SinCosFor use, class T, class C>
KvrStatus scaledCartesian(ScaledCartesian<use> op, const T* srcMag, const T* srcPhase, C* dst, int len) {
  KVRS_CHECK(pointers(srcMag, srcPhase, dst), length(len));
  return underRounding(Rounding::nearest, [=] {
    return mapInLanesOf<double>(op, dst, static_cast<size_t>(len), srcMag, srcPhase);
  });
}

// The farthest that a 16-bit phase may be scaled up and stay within 2^31.
constexpr int kMostPhaseShift = 16;

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsCartToPolar_32fc(const Kvr32fc* src, Kvr32f* dstMag, Kvr32f* dstPhase, int len) noexcept {
  KVRS_CHECK(pointers(src, dstMag, dstPhase), length(len));
  const KvrStatus status = kvrsMagnitude_32fc(src, dstMag, len);
  return status != kvrStatusOk ? status : kvrsPhase_32fc(src, dstPhase, len);
}
KvrStatus kvrsCartToPolar_64fc(const Kvr64fc* src, Kvr64f* dstMag, Kvr64f* dstPhase, int len) noexcept {
  KVRS_CHECK(pointers(src, dstMag, dstPhase), length(len));
  const KvrStatus status = kvrsMagnitude_64fc(src, dstMag, len);
  return status != kvrStatusOk ? status : kvrsPhase_64fc(src, dstPhase, len);
}
KvrStatus kvrsCartToPolar_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dstMag, Kvr32f* dstPhase,
                              int len) noexcept {
  KVRS_CHECK(pointers(srcRe, srcIm, dstMag, dstPhase), length(len));
  const KvrStatus status = kvrsMagnitude_32f(srcRe, srcIm, dstMag, len);
  return status != kvrStatusOk ? status : kvrsPhase_32f(srcRe, srcIm, dstPhase, len);
}
KvrStatus kvrsCartToPolar_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dstMag, Kvr64f* dstPhase,
                              int len) noexcept {
  KVRS_CHECK(pointers(srcRe, srcIm, dstMag, dstPhase), length(len));
  const KvrStatus status = kvrsMagnitude_64f(srcRe, srcIm, dstMag, len);
  return status != kvrStatusOk ? status : kvrsPhase_64f(srcRe, srcIm, dstPhase, len);
}
// The two calls test their own arguments: the magnitudes are written before `dstPhase` is looked at. This is meant.
KvrStatus kvrsCartToPolar_16sc_Sfs(const Kvr16sc* src, Kvr16s* dstMag, Kvr16s* dstPhase, int len,
                                   int magScaleFactor, int phaseScaleFactor) noexcept {
  const KvrStatus status = kvrsMagnitude_16sc_Sfs(src, dstMag, len, magScaleFactor);
  return status != kvrStatusOk ? status : kvrsPhase_16sc_Sfs(src, dstPhase, len, phaseScaleFactor);
}

KvrStatus kvrsPolarToCart_32fc(const Kvr32f* srcMag, const Kvr32f* srcPhase, Kvr32fc* dst, int len) noexcept {
  return cartesian(CartesianSingles(), asSingles(srcMag), asSingles(srcPhase), dst, len);
}
KvrStatus kvrsPolarToCart_64fc(const Kvr64f* srcMag, const Kvr64f* srcPhase, Kvr64fc* dst, int len) noexcept {
  return cartesian(Cartesian(), srcMag, srcPhase, dst, len);
}
KvrStatus kvrsPolarToCart_32f(const Kvr32f* srcMag, const Kvr32f* srcPhase, Kvr32f* dstRe, Kvr32f* dstIm,
                              int len) noexcept {
  return cartesianPlanes(CartesianHalves(), asSingles(srcMag), asSingles(srcPhase), asSingles(dstRe),
                         asSingles(dstIm), len);
}
KvrStatus kvrsPolarToCart_64f(const Kvr64f* srcMag, const Kvr64f* srcPhase, Kvr64f* dstRe, Kvr64f* dstIm,
                              int len) noexcept {
  return cartesianPlanes(Cartesian(), srcMag, srcPhase, dstRe, dstIm, len);
}
KvrStatus kvrsPolarToCart_16sc_Sfs(const Kvr16s* srcMag, const Kvr16s* srcPhase, Kvr16sc* dst, int len,
                                   int magScaleFactor, int phaseScaleFactor) noexcept {
  const double magnitudeScale = limitedScale(magScaleFactor, 31),
               phaseScale = limitedScale(phaseScaleFactor, 1000);
  if (phaseScaleFactor >= -kMostPhaseShift) {
    return scaledCartesian(ScaledCartesian<SinCosFor::integers>{magnitudeScale, phaseScale}, srcMag, srcPhase,
                           dst, len);
  }
  return scaledCartesian(ScaledCartesian<SinCosFor::doubles>{magnitudeScale, phaseScale}, srcMag, srcPhase,
                         dst, len);
}
KvrStatus kvrsPolarToCart_16sc(const Kvr16s* srcMag, const Kvr16s* srcPhase, Kvr16sc* dst, int len) noexcept {
  return scaledCartesian(ScaledCartesian<SinCosFor::integers>{1, 1}, srcMag, srcPhase, dst, len);
}
KvrStatus kvrsPolarToCart_32sc(const Kvr32s* srcMag, const Kvr32s* srcPhase, Kvr32sc* dst, int len) noexcept {
  return scaledCartesian(ScaledCartesian<SinCosFor::integers>{1, 1}, srcMag, srcPhase, dst, len);
}
