// Square roots of complex numbers.
//
// With m = |z|, t = sqrt((m + |re|) / 2) is the larger part of the root by magnitude and |im| / (2 t) the other one: nothing
// cancels. Single precision and 16-bit integers are computed in double precision, whose range holds all their squares.
// SPDX-License-Identifier: MIT
#include <cstdint>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/halves.h"
#include "frame/loop.h"
#include "frame/scale.h"
#include "frame/threads.h"
#include "frame/to_integer.h"
#include "kvrs/roots.h"

namespace kvrs {
namespace {

// Where squares neither overflow nor underflow to any effect.
template <class D, class V>
KVRS_INLINE Complex<V> complexRoot(D d, Complex<V> z) {
  const V half = hn::Set(d, 0.5), zero = hn::Zero(d);
  const V re = hn::Abs(z.re), im = hn::Abs(z.im);
  const V magnitude = hn::Sqrt(hn::Add(hn::Mul(re, re), hn::Mul(im, im)));
  const V larger = hn::Sqrt(hn::Mul(hn::Add(magnitude, re), half));
  // Of 0 the other part is 0 too.
  const V twice = hn::Add(larger, larger);
  const V other = hn::Div(im, hn::IfThenElse(hn::Eq(twice, zero), half, twice));
  const auto isLeft = hn::Lt(z.re, zero);
  return {hn::IfThenElse(isLeft, other, larger),
          hn::CopySignToAbs(hn::IfThenElse(isLeft, larger, other), z.im)};
}

struct RootOf64fc {
  static constexpr bool kIsHeavy = true;

  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, Complex<V> z) const {
    // Squares beyond the range: roots of z * 4^k, divided by 2^k.
    const V most = hn::Max(hn::Abs(z.re), hn::Abs(z.im)), one = hn::Set(d, 1.0);
    const auto choose = [&](double ofHuge, double ofTiny) __attribute__((always_inline)) {
      const V tiny = hn::IfThenElse(hn::Lt(most, hn::Set(d, 0x1p-400)), hn::Set(d, ofTiny), one);
      return hn::IfThenElse(hn::Gt(most, hn::Set(d, 0x1p500)), hn::Set(d, ofHuge), tiny);
    };
    const V scale = choose(0x1p-600, 0x1p600), back = choose(0x1p300, 0x1p-300);
    const auto root = complexRoot(d, Complex<V>{hn::Mul(z.re, scale), hn::Mul(z.im, scale)});
    return {hn::Mul(root.re, back), hn::Mul(root.im, back)};
  }
};

struct RootOf32fc {
  static constexpr bool kIsHeavy = true;

  template <class D, class V>
  static KVRS_INLINE Complex<V> of(D d, Complex<V> z) {
    if constexpr (hn::MaxLanes(D()) * sizeof(double) > kVectorBytes) {
      const hn::Half<D> dh;
      const auto lower =
          of(dh, Complex<hn::Vec<decltype(dh)>>{hn::LowerHalf(dh, z.re), hn::LowerHalf(dh, z.im)});
      const auto upper =
          of(dh, Complex<hn::Vec<decltype(dh)>>{hn::UpperHalf(dh, z.re), hn::UpperHalf(dh, z.im)});
      return {hn::Combine(d, upper.re, lower.re), hn::Combine(d, upper.im, lower.im)};
    } else {
      const hn::Rebind<double, D> dd;
      const auto root =
          complexRoot(dd, Complex<hn::Vec<decltype(dd)>>{hn::PromoteTo(dd, z.re), hn::PromoteTo(dd, z.im)});
      return {hn::DemoteTo(d, root.re), hn::DemoteTo(d, root.im)};
    }
  }

  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, Complex<V> z) const {
    return of(d, z);
  }
};

// Pairs of 16-bit parts.
struct RootOf16sc {
  static constexpr bool kIsHeavy = true;
  double scale;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V pairs) const {
    const hn::RepartitionToWide<D> d32;
    const auto ofSome = [this](auto di, auto both) __attribute__((always_inline)) {
      const hn::Rebind<double, decltype(di)> dd;
      const auto re = hn::PromoteTo(dd, hn::ShiftRight<16>(hn::ShiftLeft<16>(both)));
      const auto root =
          complexRoot(dd, Complex<hn::Vec<decltype(dd)>>{re, hn::PromoteTo(dd, hn::ShiftRight<16>(both))});
      const auto toInteger = [&](auto part) __attribute__((always_inline)) {
        return nearestInt32(di, bound(dd, hn::Mul(part, hn::Set(dd, scale)), -32768.0, 32767.0));
      };
      return hn::Or(hn::And(toInteger(root.re), hn::Set(di, 0xFFFF)), hn::ShiftLeft<16>(toInteger(root.im)));
    };
    return hn::BitCast(d, through<double>(ofSome, d32, hn::BitCast(d32, pairs)));
  }
};

template <class Op, class C>
KvrStatus roots(const Op& op, size_t threadedFrom, const C* src, C* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len, src, dst));
  const auto slice = [=](size_t begin, size_t count) {
    return mapElements(op, dst + begin, count, src + begin) != kvrStatusOk;
  };
  const bool failed = runSliced(static_cast<size_t>(len), threadedFrom, kTwoThreads, slice);
  return failed ? kvrStatusBadLength : kvrStatusOk;
}

// Parts of roots are 0 or between 2^-9 and 2^8: all but 0 saturate when scaled up by 2^24.
KvrStatus roots(const Kvr16sc* src, Kvr16sc* dst, int len, int scaleFactor) {
  const int exponent = scaleFactor < -30 ? 30 : scaleFactor > 100 ? -100 : -scaleFactor;
  return roots(RootOf16sc{powerOfTwo<double>(exponent)}, threadedLength(256), asPairs<Kvr16s>(src),
               asPairs<Kvr16s>(dst), len);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSqrt_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, int scaleFactor) noexcept {
  return roots(src, dst, len, scaleFactor);
}
KvrStatus kvrsSqrt_16sc_ISfs(Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return roots(srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsSqrt_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) noexcept {
  return roots(RootOf32fc(), threadedLength(512), src, dst, len);
}
KvrStatus kvrsSqrt_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return roots(RootOf32fc(), threadedLength(512), srcDst, srcDst, len);
}
KvrStatus kvrsSqrt_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return roots(RootOf64fc(), threadedLength(256), src, dst, len);
}
KvrStatus kvrsSqrt_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return roots(RootOf64fc(), threadedLength(256), srcDst, srcDst, len);
}
