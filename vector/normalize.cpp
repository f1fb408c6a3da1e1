// Normalisation: an offset subtracted, and a division.
// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include "frame/check.h"
#include "frame/complex.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/scale.h"
#include "kvrs/unary.h"

namespace kvrs {
namespace {

template <class T>
struct Normalize {
  T offset, factor;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V v) const {
    return hn::Mul(hn::Sub(v, hn::Set(d, offset)), hn::Set(d, factor));
  }
};

// On pairs.
template <class T>
struct NormalizeComplex {
  T re, im, factor;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V v) const {
    return hn::Mul(hn::Sub(v, setPairs(d, re, im)), hn::Set(d, factor));
  }
};

// (v - offset) * scale / divisor in single precision.
struct NormalizeInteger {
  float scale, divisor;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V v, float offset) const {
    const hn::Rebind<float, D> df;
    const auto x = hn::ConvertTo(df, hn::PromoteTo(hn::Rebind<int32_t, D>(), v));
    const auto scaled = hn::Mul(hn::Sub(x, hn::Set(df, offset)), hn::Set(df, scale));
    return hn::DemoteTo(d, hn::NearestInt(hn::Div(scaled, hn::Set(df, divisor))));
  }
};

struct NormalizeReal16 {
  NormalizeInteger op;
  float offset;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V v) const {
    return op(d, v, offset);
  }
};

struct NormalizeComplex16 {
  NormalizeInteger op;
  float re, im;
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, Complex<V> v) const {
    return {op(d, v.re, re), op(d, v.im, im)};
  }
};

// 2^(-scaleFactor) of the low seven bits of scaleFactor, by its exponent field alone: 127 gives 0.
float sevenBitScale(int scaleFactor) {
  const int low = scaleFactor & 127;
  return powerOfTwo<float>(scaleFactor >= 0 ? -low : -low & 127);
}

template <class T>
bool tooSmall(T divisor) {
  return std::fabs(divisor) < std::numeric_limits<T>::min();
}

template <class T>
KvrStatus normalize(const T* src, T* dst, int len, T vSub, T vDiv) {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(tooSmall(vDiv)));
  return mapElements(Normalize<T>{vSub, 1 / vDiv}, dst, static_cast<size_t>(len), src);
}

template <class Part, class T>
KvrStatus normalizeComplex(const T* src, T* dst, int len, T vSub, Part vDiv) {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(tooSmall(vDiv)));
  return mapElements(NormalizeComplex<Part>{vSub.re, vSub.im, 1 / vDiv}, asPairs<Part>(dst),
                     static_cast<size_t>(len), asPairs<Part>(src));
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsNormalize_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s vSub, int vDiv,
                                int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(vDiv == 0));
  return underRounding(Rounding::nearest, [=] {
    const NormalizeInteger op{sevenBitScale(scaleFactor), static_cast<float>(vDiv)};
    return mapInLanesOf<float>(NormalizeReal16{op, static_cast<float>(vSub)}, dst, static_cast<size_t>(len),
                               src);
  });
}
KvrStatus kvrsNormalize_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr16sc vSub, int vDiv,
                                 int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(vDiv == 0));
  return underRounding(Rounding::nearest, [=] {
    const NormalizeInteger op{sevenBitScale(scaleFactor), static_cast<float>(vDiv)};
    return mapInLanesOf<float>(
        NormalizeComplex16{op, static_cast<float>(vSub.re), static_cast<float>(vSub.im)}, dst,
        static_cast<size_t>(len), src);
  });
}
KvrStatus kvrsNormalize_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f vSub, Kvr32f vDiv) noexcept {
  return normalize(src, dst, len, vSub, vDiv);
}
KvrStatus kvrsNormalize_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f vSub, Kvr64f vDiv) noexcept {
  return normalize(src, dst, len, vSub, vDiv);
}
KvrStatus kvrsNormalize_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32fc vSub, Kvr32f vDiv) noexcept {
  return normalizeComplex(src, dst, len, vSub, vDiv);
}
KvrStatus kvrsNormalize_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64fc vSub, Kvr64f vDiv) noexcept {
  return normalizeComplex(src, dst, len, vSub, vDiv);
}
