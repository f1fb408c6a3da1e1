// Transforms of 2, 4, 8 and 16 points, each lane a transform of its own.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_BUTTERFLY_INL_H
#define KVRS_TRANSFORMS_KERNELS_BUTTERFLY_INL_H

#include "transforms/kernels/lanes-inl.h"

namespace kvrs::fft {

template <class V>
KVRS_INLINE Complex<V> add(Complex<V> a, Complex<V> b) {
  return {hn::Add(a.re, b.re), hn::Add(a.im, b.im)};
}
template <class V>
KVRS_INLINE Complex<V> sub(Complex<V> a, Complex<V> b) {
  return {hn::Sub(a.re, b.re), hn::Sub(a.im, b.im)};
}
// a - i b
template <class V>
KVRS_INLINE Complex<V> subI(Complex<V> a, Complex<V> b) {
  return {hn::Add(a.re, b.im), hn::Sub(a.im, b.re)};
}
// a + i b
template <class V>
KVRS_INLINE Complex<V> addI(Complex<V> a, Complex<V> b) {
  return {hn::Sub(a.re, b.im), hn::Add(a.im, b.re)};
}
// (1 - i) a, which is exp(-i pi/4) a but for the factor sqrt(1/2)
template <class V>
KVRS_INLINE Complex<V> turn45(Complex<V> a) {
  return {hn::Add(a.re, a.im), hn::Sub(a.im, a.re)};
}
template <class V>
KVRS_INLINE Complex<V> mul(Complex<V> a, Complex<V> w) {
  return {hn::NegMulAdd(a.im, w.im, hn::Mul(a.re, w.re)), hn::MulAdd(a.im, w.re, hn::Mul(a.re, w.im))};
}
template <class V>
KVRS_INLINE Complex<V> mul(Complex<V> a, V factor) {
  return {hn::Mul(a.re, factor), hn::Mul(a.im, factor)};
}

// sum = a + c b, diff = a - c b
template <class V>
KVRS_INLINE void addSub(V a, V c, V b, V& sum, V& diff) {
  if constexpr (kFusedMulAdd) {
    sum = hn::MulAdd(c, b, a);
    diff = hn::NegMulAdd(c, b, a);
  } else {
    b = hn::Mul(c, b);
    sum = hn::Add(a, b);
    diff = hn::Sub(a, b);
  }
}
template <class V>
KVRS_INLINE void addSub(Complex<V> a, V c, Complex<V> b, Complex<V>& sum, Complex<V>& diff) {
  addSub(a.re, c, b.re, sum.re, diff.re);
  addSub(a.im, c, b.im, sum.im, diff.im);
}
// sum = a - i c b, diff = a + i c b
template <class V>
KVRS_INLINE void addSubI(Complex<V> a, V c, Complex<V> b, Complex<V>& sum, Complex<V>& diff) {
  addSub(a.re, c, b.im, sum.re, diff.re);
  addSub(a.im, c, b.re, diff.im, sum.im);
}

template <class V>
KVRS_INLINE void butterfly4(Complex<V>& x0, Complex<V>& x1, Complex<V>& x2, Complex<V>& x3) {
  const Complex<V> a = add(x0, x2), b = sub(x0, x2), c = add(x1, x3), e = sub(x1, x3);
  x0 = add(a, c);
  x1 = subI(b, e);
  x2 = sub(a, c);
  x3 = addI(b, e);
}

// x[k] = sum over n of x[n] exp(-2 pi i n k / R), in place, in natural order.
template <int R, class D>
KVRS_INLINE void butterfly(D d, Cx<D> (&x)[R]) {
  using T = hn::TFromD<D>;
  using C = Cx<D>;
  if constexpr (R == 2) {
    const C a = x[0];
    x[0] = add(a, x[1]);
    x[1] = sub(a, x[1]);
  } else if constexpr (R == 4) {
    butterfly4(x[0], x[1], x[2], x[3]);
  } else if constexpr (R == 8) {
    // Two transforms of the even and the odd points; 52 operations, the factors sqrt(1/2) within
    // multiply-adds.
    const auto h = hn::Set(d, T(0.70710678118654752440));
    butterfly4(x[0], x[2], x[4], x[6]);
    butterfly4(x[1], x[3], x[5], x[7]);
    const C e0 = x[0], e1 = x[2], e2 = x[4], e3 = x[6];
    const C o0 = x[1], o1 = turn45(x[3]), o2 = x[5], o3 = turn45(x[7]);
    x[0] = add(e0, o0);
    x[4] = sub(e0, o0);
    x[2] = subI(e2, o2);
    x[6] = addI(e2, o2);
    addSub(e1, h, o1, x[1], x[5]);
    addSubI(e3, h, o3, x[3], x[7]);
  } else {
    // Four transforms of four points, twice. The turns between them are written as a factor times a number
    // that needs no multiplication, or one multiply-add; the factor goes into the last additions: 144
    // operations.
    static_assert(R == 16);
    const auto h = hn::Set(d, T(0.70710678118654752440));
    const auto c = hn::Set(d, T(0.92387953251128675613));  // cos(pi/8)
    const auto t = hn::Set(d, T(0.41421356237309504880));  // tan(pi/8)
    unroll<4>([&](auto j) KVRS_UNROLLED { butterfly4(x[j], x[j + 4], x[j + 8], x[j + 12]); });
    // exp(-i pi/8) a / c and exp(-3 i pi/8) a / c
    const auto turn1 = [&](C a) KVRS_UNROLLED {
      return C{hn::MulAdd(t, a.im, a.re), hn::NegMulAdd(t, a.re, a.im)};
    };
    const auto turn3 = [&](C a) KVRS_UNROLLED {
      return C{hn::MulAdd(t, a.re, a.im), hn::MulSub(t, a.im, a.re)};
    };
    butterfly4(x[0], x[1], x[2], x[3]);
    C p, m;
    {
      const C u1 = turn1(x[5]), u3 = turn3(x[7]);
      addSub(x[4], h, turn45(x[6]), p, m);
      addSub(p, c, add(u1, u3), x[4], x[6]);
      addSubI(m, c, sub(u1, u3), x[5], x[7]);
    }
    {
      const C u1 = turn45(x[9]), u3 = turn45(x[11]);
      p = subI(x[8], x[10]);
      m = addI(x[8], x[10]);
      addSub(p, h, subI(u1, u3), x[8], x[10]);
      addSubI(m, h, addI(u1, u3), x[9], x[11]);
    }
    {
      const C u1 = turn3(x[13]), u3 = turn1(x[15]);
      addSubI(x[12], h, turn45(x[14]), p, m);
      addSub(p, c, sub(u1, u3), x[12], x[14]);
      addSubI(m, c, add(u1, u3), x[13], x[15]);
    }
    // x[4 k + j] is now output k + 4 j.
    unroll<4>([&](auto k) KVRS_UNROLLED {
      unroll<4>([&](auto j) KVRS_UNROLLED {
        if constexpr (k() < j()) std::swap(x[4 * k + j], x[4 * j + k]);
      });
    });
  }
}

}  // namespace kvrs::fft

#endif
