// The cube root.
//
// y = a^(-1/3) of the magnitude a, from a third of its bits (relative error 0.035) by two Newton steps (1.2e-5); c = a y^2; and
// one more step, c - (c^3 - a) y^2 / 3, in double precision, since c^3 - a cancels. What is left, 2^-29, disappears in the
// rounding to single precision but for one number in some twenty, which may go to its other neighbour; cubes have exact
// roots.
// SPDX-License-Identifier: MIT
#include <bit>
#include <cstdint>
#include <limits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/to_integer.h"
#include "kvrs/roots.h"

namespace kvrs {
namespace {

// c - (c^3 - a) w in double precision.
template <class D, class V>
KVRS_INLINE V polished(D d, V c, V a, V w) {
  if constexpr (hn::MaxLanes(D()) * sizeof(double) > kVectorBytes) {
    const hn::Half<D> dh;
    const auto lower = polished(dh, hn::LowerHalf(dh, c), hn::LowerHalf(dh, a), hn::LowerHalf(dh, w));
    return hn::Combine(d, polished(dh, hn::UpperHalf(dh, c), hn::UpperHalf(dh, a), hn::UpperHalf(dh, w)),
                       lower);
  } else {
    const hn::Rebind<double, D> dd;
    const auto wide = hn::PromoteTo(dd, c);
    const auto excess = hn::MulSub(hn::Mul(wide, wide), wide, hn::PromoteTo(dd, a));
    return hn::DemoteTo(d, hn::NegMulAdd(excess, hn::PromoteTo(dd, w), wide));
  }
}

// Of positive normal numbers.
template <class D, class V>
KVRS_INLINE V cubeRootOfNormal(D d, V a) {
  const hn::RebindToSigned<D> di;
  const auto third = hn::Mul(hn::ConvertTo(d, hn::BitCast(di, a)), hn::Set(d, 1.0f / 3));
  V y = hn::BitCast(d, hn::Sub(hn::Set(di, 0x54A2FA8C), truncateInt32(di, third)));
  for (int step = 0; step < 2; ++step) {
    const V cube = hn::Mul(hn::Mul(a, y), hn::Mul(y, y));
    y = hn::Mul(y, hn::NegMulAdd(cube, hn::Set(d, 1.0f / 3), hn::Set(d, 4.0f / 3)));
  }
  const V yy = hn::Mul(y, y);
  return polished(d, hn::Mul(a, yy), a, hn::Mul(yy, hn::Set(d, 1.0f / 3)));
}

struct CubeRoot {
  static constexpr bool kIsHeavy = true;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    using L = std::numeric_limits<float>;
    const V a = hn::Abs(x);
    const auto isSmall = hn::Lt(a, hn::Set(d, L::min()));
    const V normal = hn::IfThenElse(isSmall, hn::Mul(a, hn::Set(d, 0x1p24f)), a);
    const V root = cubeRootOfNormal(d, normal);
    const V c = hn::IfThenElse(isSmall, hn::Mul(root, hn::Set(d, 0x1p-8f)), root);
    // Zeros, infinities and NaN are their own roots.
    const auto isUsual = hn::And(hn::Gt(a, hn::Zero(d)), hn::Lt(a, hn::Set(d, L::infinity())));
    return hn::IfThenElse(isUsual, hn::CopySignToAbs(c, x), hn::Add(x, x));
  }
};

struct ScaledCubeRoot {
  static constexpr bool kIsHeavy = true;
  float scale;

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V x) const {
    const hn::DFromV<V> di;
    const hn::RebindToFloat<decltype(di)> df;
    const auto value = hn::ConvertTo(df, x), a = hn::Abs(value);
    const auto isZero = hn::Eq(value, hn::Zero(df));
    const auto root =
        hn::CopySignToAbs(cubeRootOfNormal(df, hn::IfThenElse(isZero, hn::Set(df, 1.0f), a)), value);
    const auto scaled = hn::IfThenZeroElse(isZero, hn::Mul(root, hn::Set(df, scale)));
    return hn::DemoteTo(d, nearestInt32(di, bound(df, scaled, -32768.0f, 32767.0f)));
  }
};

// By the low seven bits of the scale factor: 2^-n of 0 and above, 2^(128 - n) below, but 2^0 where n is 0. The scale of 127
// has no exponent left and is 0.
float scaleOf(int scaleFactor) {
  const uint32_t n = static_cast<uint32_t>(scaleFactor) & 127;
  const uint32_t exponent = scaleFactor >= 0 ? 127 - n : 127 + ((0 - n) & 127);
  return std::bit_cast<float>(exponent << 23);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsCubrt_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(CubeRoot(), dst, static_cast<size_t>(len), src);
}
KvrStatus kvrsCubrt_32s16s_Sfs(const Kvr32s* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  const ScaledCubeRoot op{scaleOf(scaleFactor)};
  return underRounding(Rounding::nearest,
                       [=] { return mapElements(op, dst, static_cast<size_t>(len), src); });
}
