// The angle of points in the plane, and the arctangent of a number, for vectors of single and double precision.
//
// 1. With the coordinates' magnitudes, t = smaller / larger is in [0, 1], correctly rounded.
// 2. atan t = t + t^3 * P(t^2), P a minimax polynomial (Remez) of 9 coefficients in single and 20 in double precision.
// 3. The angle is one of t, pi/2 - t, pi/2 + t, pi - t in place of t, by octant: base + (+-t + (+-t^3 * P + low)), where
//    base + low is 0, pi/2 or pi to twice the precision, so that only the last two additions round at full size.
//
// Two roundings (that of t and the last one), with what little the others add, make less than 2 units in the last
// place; tests find less than 1.7. Products and sums are fused where the module has that, so that modules may differ
// in the last bit. The rounding mode is to be to nearest.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_ARCTANGENT_H
#define KVRS_FRAME_ARCTANGENT_H

#include <cstddef>

#include "frame/simd.h"

namespace kvrs {

template <class T>
struct ArctangentConstants;
template <>
struct ArctangentConstants<float> {
  static constexpr int kOneByOne = 3;
  static constexpr float kHalfPi = 0x1.921fb6p+0f, kHalfPiLow = -0x1.777a5cp-25f;
  static constexpr float kP[] = {
      -0x1.55553ep-2f, 0x1.9991fep-3f,  -0x1.2421bep-3f, 0x1.c09a56p-4f,   -0x1.58358ap-4f,
      0x1.dacd1ap-5f,  -0x1.fed796p-6f, 0x1.65acdap-7f,  -0x1.d63b4ap-10f,
  };
};
template <>
struct ArctangentConstants<double> {
  static constexpr int kOneByOne = 8;
  static constexpr double kHalfPi = 0x1.921fb54442d18p+0, kHalfPiLow = 0x1.1a62633145c07p-54;
  static constexpr double kP[] = {
      -0x1.5555555555526p-2, 0x1.9999999995545p-3,  -0x1.249249237e22fp-3,  0x1.c71c717f95479p-4,
      -0x1.745d11ab055dcp-4, 0x1.3b136676e7aa6p-4,  -0x1.110e502448aedp-4,  0x1.e1bb9b7272d52p-5,
      -0x1.ae5e45934c698p-5, 0x1.82da4852473bap-5,  -0x1.59a29d590ef26p-5,  0x1.2c2bb1209ee73p-5,
      -0x1.e9f1f97911bd7p-6, 0x1.68334538c1d7ap-6,  -0x1.c77e89e711032p-7,  0x1.d7a186ef5e561p-8,
      -0x1.7a220498a88aap-9, 0x1.b3da6687840e9p-11, -0x1.3f1af28661d20p-13, 0x1.bbc2d12c22eb0p-17,
  };
};

// P(z) for z = t^2. Its upper part runs as two interleaved chains in z^2, for speed; the last steps, whose roundings
// count, one after another, as sums of both chains would lose digits.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V arctangentPolynomial(D d, V z) {
  constexpr auto& c = ArctangentConstants<hn::TFromD<D>>::kP;
  constexpr int kLast = static_cast<int>(sizeof c / sizeof *c) - 1;
  constexpr int kChained = ArctangentConstants<hn::TFromD<D>>::kOneByOne;
  const V zz = hn::Mul(z, z);
  V same = hn::Set(d, c[kLast]), other = hn::Set(d, c[kLast - 1]);
#pragma GCC unroll 32
  for (int i = kLast - 2; i >= kChained; --i) {
    V& chain = (kLast - i) % 2 == 0 ? same : other;
    chain = hn::MulAdd(zz, chain, hn::Set(d, c[i]));
  }
  V sum = (kLast - kChained) % 2 == 0 ? hn::MulAdd(z, other, same) : hn::MulAdd(z, same, other);
#pragma GCC unroll 32
  for (int i = kChained - 1; i >= 0; --i) sum = hn::MulAdd(z, sum, hn::Set(d, c[i]));
  return sum;
}

// The angle of (x, y), in [-pi, pi], with the sign of y. A zero x counts as positive: where both are zero the angle is
// a zero with the sign of y. (+-inf, +-inf) is on a diagonal, and a NaN in either coordinate gives NaN.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V arctangent2(D d, V y, V x) {
  using T = hn::TFromD<D>;
  using C = ArctangentConstants<T>;
  const V zero = hn::Zero(d), one = hn::Set(d, T{1});
  const V ax = hn::Abs(x), ay = hn::Abs(y);
  const auto steep = hn::Gt(ay, ax), left = hn::Lt(x, zero);
  const V smaller = hn::IfThenElse(steep, ax, ay), larger = hn::IfThenElse(steep, ay, ax);
  // 0 / 0 is to be 0, infinity / infinity 1 as for all equals.
  const V divisor = hn::IfThenElse(hn::Eq(larger, zero), one, larger);
  const V t = hn::IfThenElse(hn::Eq(smaller, divisor), one, hn::Div(smaller, divisor));

  const V z = hn::Mul(t, t);
  const V signedT = hn::Xor(t, hn::IfThenElseZero(hn::Xor(steep, left), hn::SignBit(d)));
  const auto base = [&](T half) {
    return hn::IfThenElse(steep, hn::Set(d, half), hn::IfThenElseZero(left, hn::Set(d, 2 * half)));
  };
  const V low = hn::MulAdd(hn::Mul(signedT, z), arctangentPolynomial(d, z), base(C::kHalfPiLow));
  const V high = base(C::kHalfPi), sum = hn::Add(high, signedT);
  const V lost = hn::Sub(signedT, hn::Sub(sum, high));
  return hn::CopySignToAbs(hn::Add(sum, hn::Add(lost, low)), y);
}

// The arctangent of x. Near 1, where the polynomial's share of the angle is large and a quotient 1 / x has no more digits than
// the angle, t = (|x| - 1) / (|x| + 1), and the base is pi/4; beyond 2, t = -1 / |x|. The worst errors found are 0.79 units in
// the last place in single precision and 0.80 in double precision.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V arctangent(D d, V x) {
  using T = hn::TFromD<D>;
  using C = ArctangentConstants<T>;
  const V one = hn::Set(d, T{1}), a = hn::Abs(x);
  const auto isMiddle = hn::Gt(a, hn::Set(d, T(0.75))), isLarge = hn::Gt(a, hn::Set(d, T{2}));
  const auto choose = [&](V large, V middle, V small) __attribute__((always_inline)) {
    return hn::IfThenElse(isLarge, large, hn::IfThenElse(isMiddle, middle, small));
  };
  const V t = hn::Div(choose(hn::Set(d, T{-1}), hn::Sub(a, one), a), choose(a, hn::Add(a, one), one));
  const auto base = [&](T half) __attribute__((always_inline)) {
    return choose(hn::Set(d, half), hn::Set(d, half / 2), hn::Zero(d));
  };
  const V z = hn::Mul(t, t);
  const V low = hn::MulAdd(hn::Mul(t, z), arctangentPolynomial(d, z), base(C::kHalfPiLow));
  const V high = base(C::kHalfPi), sum = hn::Add(high, t);
  const V lost = hn::Sub(t, hn::Sub(sum, high));
  return hn::CopySignToAbs(hn::Add(sum, hn::Add(lost, low)), x);
}

}  // namespace kvrs

#endif
