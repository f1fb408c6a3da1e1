// Transforms of 2, 4, 8 and 16 points and of a few odd numbers of them, each lane a transform of its own.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_BUTTERFLY_INL_H
#define KVRS_TRANSFORMS_KERNELS_BUTTERFLY_INL_H

#include "transforms/fft_wave.h"
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
// a factor + b
template <class V>
KVRS_INLINE Complex<V> mulAdd(Complex<V> a, V factor, Complex<V> b) {
  return {hn::MulAdd(a.re, factor, b.re), hn::MulAdd(a.im, factor, b.im)};
}
// a - i t a
template <class V>
KVRS_INLINE Complex<V> subMulI(Complex<V> a, V t) {
  return {hn::MulAdd(t, a.im, a.re), hn::NegMulAdd(t, a.re, a.im)};
}
// t a - i a
template <class V>
KVRS_INLINE Complex<V> mulSubI(Complex<V> a, V t) {
  return {hn::MulAdd(t, a.re, a.im), hn::MulSub(t, a.im, a.re)};
}

// The same on pairs.
template <class V>
KVRS_INLINE Paired<V> add(Paired<V> a, Paired<V> b) {
  return {hn::Add(a.v, b.v)};
}
template <class V>
KVRS_INLINE Paired<V> sub(Paired<V> a, Paired<V> b) {
  return {hn::Sub(a.v, b.v)};
}
// -i a
template <class V>
KVRS_INLINE Paired<V> turn90(Paired<V> a) {
  const hn::DFromV<V> d;
  using T = hn::TFromD<decltype(d)>;
  alignas(16) static constexpr T kOddSigns[4] = {0, T(-0.0), 0, T(-0.0)};
  return {hn::Xor(exchanged(a).v, hn::LoadDup128(d, kOddSigns))};
}
template <class V>
KVRS_INLINE Paired<V> subI(Paired<V> a, Paired<V> b) {
  return add(a, turn90(b));
}
template <class V>
KVRS_INLINE Paired<V> addI(Paired<V> a, Paired<V> b) {
  return sub(a, turn90(b));
}
template <class V>
KVRS_INLINE Paired<V> mulAdd(Paired<V> a, V factor, Paired<V> b) {
  return {hn::MulAdd(a.v, factor, b.v)};
}
template <class V>
KVRS_INLINE Paired<V> subMulI(Paired<V> a, V t) {
  return {hn::MulAdd(t, turn90(a).v, a.v)};
}
template <class V>
KVRS_INLINE Paired<V> mulSubI(Paired<V> a, V t) {
  return {hn::MulAdd(t, a.v, turn90(a).v)};
}
template <class V>
KVRS_INLINE Paired<V> turn45(Paired<V> a) {
  return add(a, turn90(a));
}
template <class V>
KVRS_INLINE Paired<V> mul(Paired<V> a, V factor) {
  return {hn::Mul(a.v, factor)};
}
// By a number whose parts are spread over its lanes.
template <class V>
KVRS_INLINE Paired<V> mul(Paired<V> a, Complex<V> w) {
  return {subAdd(hn::DFromV<V>(), hn::Mul(a.v, w.re), hn::Mul(exchanged(a).v, w.im))};
}
template <class V>
KVRS_INLINE Paired<V> mul(Paired<V> a, Paired<V> w) {
  return mul(a, Complex<V>{dupEven(w.v), dupOdd(w.v)});
}

// A number for all lanes.
template <class D>
KVRS_INLINE Complex<typename Form<D>::Vector> spread(D d, const typename Form<D>::Lane* w) {
  return {factor(d, w[0]), factor(d, w[1])};
}

// One number in the first two lanes of a vector of 16 bytes.
template <class D, class T = hn::TFromD<D>>
KVRS_INLINE hn::Vec<D> loadNumber(D d, const T* w) {
  if constexpr (sizeof(T) == 8) return hn::LoadU(d, w);
  return hn::ZeroExtendVector(d, hn::LoadU(hn::Half<D>(), w));
}

// Both out of one load, as integers: their shuffle takes its operand from another register.
template <class T>
KVRS_INLINE Complex<typename Form<Pairs<T>>::Vector> spread(Pairs<T>, const T* w) {
  const auto d = Form<Pairs<T>>::lanes;
  const hn::RebindToSigned<Lanes<T, kLanes<T>>> bits;
  const auto number = hn::BitCast(bits, loadNumber(d, w));
  return {hn::BitCast(d, hn::Broadcast<0>(number)), hn::BitCast(d, hn::Broadcast<1>(number))};
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
KVRS_INLINE void addSub(Paired<V> a, V c, Paired<V> b, Paired<V>& sum, Paired<V>& diff) {
  addSub(a.v, c, b.v, sum.v, diff.v);
}
template <class V>
KVRS_INLINE void addSubI(Paired<V> a, V c, Paired<V> b, Paired<V>& sum, Paired<V>& diff) {
  addSub(a.v, c, turn90(b).v, sum.v, diff.v);
}

// Four points to four results, in place.
template <class C>
KVRS_INLINE void butterfly4(C& x0, C& x1, C& x2, C& x3) {
  const C a = add(x0, x2), b = sub(x0, x2), c = add(x1, x3), e = sub(x1, x3);
  x0 = add(a, c);
  x1 = subI(b, e);
  x2 = sub(a, c);
  x3 = addI(b, e);
}

// An odd number of points. With u[k] = x[k] + x[R-k], v[k] = x[k] - x[R-k], for k = 1 .. (R-1)/2:
//
//   A = x[0] + sum of u[k] cos(2 pi j k / R), B = sum of v[k] sin(2 pi j k / R)
//   y[j] = A - i B, y[R-j] = A + i B
template <int R, class D, class Load, class Emit>
KVRS_INLINE void oddButterfly(D d, Load load, Emit emit) {
  using T = typename Form<D>::Lane;
  using C = Cx<D>;
  using V = typename Form<D>::Vector;
  constexpr int kHalf = (R - 1) / 2;
  const C x0 = load(Index<0>());
  C u[kHalf], v[kHalf], sum = x0;
  unroll<kHalf>([&](auto k) KVRS_UNROLLED {
    const C a = load(Index<k + 1>()), b = load(Index<R - 1 - k>());
    u[k] = add(a, b);
    v[k] = sub(a, b);
    sum = add(sum, u[k]);
  });
  emit(Index<0>(), sum);
  unroll<kHalf>([&](auto j) KVRS_UNROLLED {
    C a = x0, b{};
    unroll<kHalf>([&](auto k) KVRS_UNROLLED {
      constexpr Root<long double> w = turnOf((j + 1) * (k + 1), R);
      const V c = factor(d, static_cast<T>(w.re)), s = factor(d, static_cast<T>(w.im));
      a = mulAdd(u[k], c, a);
      if constexpr (k == 0) {
        b = mul(v[k], s);
      } else {
        b = mulAdd(v[k], s, b);
      }
    });
    emit(Index<j + 1>(), subI(a, b));
    emit(Index<R - 1 - j>(), addI(a, b));
  });
}

// y[k] = sum over n of x[n] exp(-2 pi i n k / R), with x[n] = load(Index<n>()), and emit(Index<k>(), y[k]) as soon as
// it is known, so that few numbers have to be kept. All loads come before the first emit.
template <int R, class D, class Load, class Emit>
KVRS_INLINE void butterfly(D d, Load load, Emit emit) {
  using T = typename Form<D>::Lane;
  using C = Cx<D>;
  if constexpr (R == 1) {
    emit(Index<0>(), load(Index<0>()));
  } else if constexpr (R % 2 != 0) {
    oddButterfly<R>(d, load, emit);
  } else if constexpr (R == 2) {
    const C a = load(Index<0>()), b = load(Index<1>());
    emit(Index<0>(), add(a, b));
    emit(Index<1>(), sub(a, b));
  } else if constexpr (R == 4) {
    const C x0 = load(Index<0>()), x2 = load(Index<2>());
    const C a = add(x0, x2), b = sub(x0, x2);
    const C x1 = load(Index<1>()), x3 = load(Index<3>());
    const C c = add(x1, x3), e = sub(x1, x3);
    emit(Index<0>(), add(a, c));
    emit(Index<2>(), sub(a, c));
    emit(Index<1>(), subI(b, e));
    emit(Index<3>(), addI(b, e));
  } else if constexpr (R == 8) {
    // Two transforms of the even and the odd points; 52 operations, the factors sqrt(1/2) within multiply-adds.
    const auto h = factor(d, T(0.70710678118654752440));
    C e0 = load(Index<0>()), e1 = load(Index<2>()), e2 = load(Index<4>()), e3 = load(Index<6>());
    butterfly4(e0, e1, e2, e3);
    C o0 = load(Index<1>()), o1 = load(Index<3>()), o2 = load(Index<5>()), o3 = load(Index<7>());
    butterfly4(o0, o1, o2, o3);
    emit(Index<0>(), add(e0, o0));
    emit(Index<4>(), sub(e0, o0));
    emit(Index<2>(), subI(e2, o2));
    emit(Index<6>(), addI(e2, o2));
    C p, m;
    addSub(e1, h, turn45(o1), p, m);
    emit(Index<1>(), p);
    emit(Index<5>(), m);
    addSubI(e3, h, turn45(o3), p, m);
    emit(Index<3>(), p);
    emit(Index<7>(), m);
  } else {
    // Four transforms of four points, twice. The turns between them are written as a factor times a number that
    // needs no multiplication, or one multiply-add; the factor goes into the last additions: 144 operations.
    static_assert(R == 16);
    const auto h = factor(d, T(0.70710678118654752440));
    const auto c = factor(d, T(0.92387953251128675613));  // cos(pi/8)
    const auto t = factor(d, T(0.41421356237309504880));  // tan(pi/8)
    // exp(-i pi/8) a / c and exp(-3 i pi/8) a / c
    const auto turn1 = [&](C a) KVRS_UNROLLED { return subMulI(a, t); };
    const auto turn3 = [&](C a) KVRS_UNROLLED { return mulSubI(a, t); };
    C x[4][4];  // [j][k]: output k of the transform of points j, j + 4, j + 8, j + 12
    unroll<4>([&](auto j) KVRS_UNROLLED {
      unroll<4>([&](auto i) KVRS_UNROLLED { x[j][i] = load(Index<j + 4 * i>()); });
      butterfly4(x[j][0], x[j][1], x[j][2], x[j][3]);
    });
    // From the sums and differences of points 0, 2 and of 1, 3, the latter still to be multiplied by the factor.
    const auto finish = [&](auto k, C sum02, C diff02, auto factor, C sum13, C diff13) KVRS_UNROLLED {
      C p, m;
      addSub(sum02, factor, sum13, p, m);
      emit(Index<k>(), p);
      emit(Index<k + 8>(), m);
      addSubI(diff02, factor, diff13, p, m);
      emit(Index<k + 4>(), p);
      emit(Index<k + 12>(), m);
    };
    {
      const C a = add(x[0][0], x[2][0]), b = sub(x[0][0], x[2][0]);
      const C u = add(x[1][0], x[3][0]), v = sub(x[1][0], x[3][0]);
      emit(Index<0>(), add(a, u));
      emit(Index<8>(), sub(a, u));
      emit(Index<4>(), subI(b, v));
      emit(Index<12>(), addI(b, v));
    }
    {
      C p, m;
      addSub(x[0][1], h, turn45(x[2][1]), p, m);
      const C u = turn1(x[1][1]), v = turn3(x[3][1]);
      finish(Index<1>(), p, m, c, add(u, v), sub(u, v));
    }
    {
      const C u = turn45(x[1][2]), v = turn45(x[3][2]);
      finish(Index<2>(), subI(x[0][2], x[2][2]), addI(x[0][2], x[2][2]), h, subI(u, v), addI(u, v));
    }
    {
      C p, m;
      addSubI(x[0][3], h, turn45(x[2][3]), p, m);
      const C u = turn3(x[1][3]), v = turn1(x[3][3]);
      finish(Index<3>(), p, m, c, sub(u, v), add(u, v));
    }
  }
}

// The same in an array of its own.
template <int R, class D>
KVRS_INLINE void butterfly(D d, Cx<D> (&x)[R]) {
  Cx<D> y[R];
  butterfly<R>(
      d, [&](auto n) KVRS_UNROLLED { return x[n]; }, [&](auto k, Cx<D> v) KVRS_UNROLLED { y[k] = v; });
  unroll<R>([&](auto k) KVRS_UNROLLED { x[k] = y[k]; });
}

}  // namespace kvrs::fft

#endif
