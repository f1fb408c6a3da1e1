// Phases of complex numbers, interleaved or in two planes.
// SPDX-License-Identifier: MIT
#include <limits>

#include "frame/arctangent.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/scale.h"
#include "frame/to_integer.h"
#include "kvrs/polar.h"

namespace kvrs {
namespace {

// The parts of 16-bit pairs, in lanes of 32 bits.
template <class D32, class V16>
KVRS_INLINE Complex<hn::Vec<D32>> partsOfPairs(D32 d, V16 pairs) {
  const auto both = hn::BitCast(d, pairs);
  return {hn::ShiftRight<16>(hn::ShiftLeft<16>(both)), hn::ShiftRight<16>(both)};
}

struct Phase {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, Complex<V> z) const {
    return arctangent2(d, z.im, z.re);
  }
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V re, V im) const {
    return arctangent2(d, im, re);
  }
};

// 16-bit parts, exact as floats.
struct FloatPhaseOf16s {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V pairs) const {
    const auto z = partsOfPairs(hn::RebindToSigned<D>(), pairs);
    return arctangent2(d, hn::ConvertTo(d, z.im), hn::ConvertTo(d, z.re));
  }
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V re, V im) const {
    const hn::RebindToSigned<D> di;
    return arctangent2(d, hn::ConvertTo(d, hn::PromoteTo(di, im)), hn::ConvertTo(d, hn::PromoteTo(di, re)));
  }
};

// Integers by way of doubles, halves away from zero.
struct ScaledPhase {
  double scale;

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> fromDoubles(D d, V re, V im) const {
    using T = hn::TFromD<D>;
    const hn::DFromV<V> df;
    const V scaled = hn::Mul(arctangent2(df, im, re), hn::Set(df, scale));
    return toInteger<true>(d, withHalf(scaled), std::numeric_limits<T>::lowest(),
                           std::numeric_limits<T>::max());
  }

  // 16-bit pairs.
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V pairs) const {
    const hn::Rebind<double, D> df;
    const auto z = partsOfPairs(hn::Rebind<int32_t, D>(), pairs);
    return fromDoubles(d, hn::PromoteTo(df, z.re), hn::PromoteTo(df, z.im));
  }
  // 16-bit planes.
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V re, V im) const {
    const hn::Rebind<double, D> df;
    const hn::Rebind<int32_t, D> d32;
    return fromDoubles(d, hn::PromoteTo(df, hn::PromoteTo(d32, re)),
                       hn::PromoteTo(df, hn::PromoteTo(d32, im)));
  }
  // 32-bit parts.
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, Complex<V> z) const {
    const hn::Rebind<double, D> df;
    return fromDoubles(d, hn::PromoteTo(df, z.re), hn::PromoteTo(df, z.im));
  }
};

template <class Op, class D, class... S>
KvrStatus phase(const Op& op, D* dst, int len, const S*... src) {
  KVRS_CHECK(pointers(src..., dst), length(len));
  return underRounding(Rounding::nearest,
                       [=] { return mapElements(op, dst, static_cast<size_t>(len), src...); });
}

// Below `signBelow` all phases but 0 are stored as extremes, which any scale does that is large enough; and one small
// enough leaves 0 of all of them.
constexpr int kEnough = 100;

template <class D, class... S>
KvrStatus scaledPhase(D* dst, int len, int scaleFactor, int signBelow, const S*... src) {
  KVRS_CHECK(pointers(src..., dst), length(len));
  const int exponent = scaleFactor < signBelow ? kEnough : scaleFactor > kEnough ? -kEnough : -scaleFactor;
  const ScaledPhase op{powerOfTwo<double>(exponent)};
  return underRounding(Rounding::nearest,
                       [=] { return mapInLanesOf<double>(op, dst, static_cast<size_t>(len), src...); });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsPhase_16sc_Sfs(const Kvr16sc* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return scaledPhase(dst, len, scaleFactor, -28, asPairs<Kvr16s>(src));
}
KvrStatus kvrsPhase_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dst, int len,
                            int scaleFactor) noexcept {
  return scaledPhase(dst, len, scaleFactor, -28, srcRe, srcIm);
}
KvrStatus kvrsPhase_32sc_Sfs(const Kvr32sc* src, Kvr32s* dst, int len, int scaleFactor) noexcept {
  return scaledPhase(dst, len, scaleFactor, -20, src);
}
KvrStatus kvrsPhase_16sc32f(const Kvr16sc* src, Kvr32f* dst, int len) noexcept {
  return phase(FloatPhaseOf16s(), dst, len, asPairs<Kvr16s>(src));
}
KvrStatus kvrsPhase_16s32f(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr32f* dst, int len) noexcept {
  return phase(FloatPhaseOf16s(), dst, len, srcRe, srcIm);
}
KvrStatus kvrsPhase_32fc(const Kvr32fc* src, Kvr32f* dst, int len) noexcept {
  return phase(Phase(), dst, len, src);
}
KvrStatus kvrsPhase_64fc(const Kvr64fc* src, Kvr64f* dst, int len) noexcept {
  return phase(Phase(), dst, len, src);
}
KvrStatus kvrsPhase_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dst, int len) noexcept {
  return phase(Phase(), dst, len, srcRe, srcIm);
}
KvrStatus kvrsPhase_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dst, int len) noexcept {
  return phase(Phase(), dst, len, srcRe, srcIm);
}
