// Transforms that stay in registers from load to store.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_SMALL_INL_H
#define KVRS_TRANSFORMS_KERNELS_SMALL_INL_H

#include "transforms/fft_wave.h"
#include "transforms/kernels/stockham-inl.h"

namespace kvrs::fft {

template <int R, class D, class In>
KVRS_INLINE void loadRows(D d, In in, size_t first, size_t stride, Cx<D> (&x)[R]) {
  unroll<R>([&](auto k) KVRS_UNROLLED { x[k] = in.load(d, first + k * stride); });
}

template <int R, class D, class Out>
KVRS_INLINE void storeRows(D d, Out out, size_t first, size_t stride, const Cx<D> (&x)[R]) {
  unroll<R>([&](auto k) KVRS_UNROLLED { out.store(d, first + k * stride, x[k]); });
}

template <int R, class D>
KVRS_INLINE void scaleRows(D d, Cx<D> (&x)[R], hn::TFromD<D> scale) {
  const auto factor = hn::Set(d, scale);
  unroll<R>([&](auto k) KVRS_UNROLLED { x[k] = mul(x[k], factor); });
}

// One butterfly, one lane: 1, 2, 4 or 8 points.
template <int R, class In, class Out, class T>
KVRS_INLINE void butterflyTransform(In in, Out out, T scale) {
  const Lanes<T, 1> d;
  Cx<Lanes<T, 1>> x[R];
  loadRows(d, in, 0, 1, x);
  butterfly(d, x);
  if (scale != T(1)) scaleRows(d, x, scale);
  storeRows(d, out, 0, 1, x);
}

// R1 x R2 points: butterflies of R1 for R2 lanes at once, twiddles, transposition, butterflies of R2.
template <int R1, int R2, class In, class Out, class T>
KVRS_INLINE void squareTransform(In in, Out out, const T* w, T scale) {
  static_assert(R1 % R2 == 0);
  const Lanes<T, R2> d;
  using C = Cx<Lanes<T, R2>>;
  const LaneTwiddles<Lanes<T, R2>> twiddles{{w}};
  C x[R1];
  butterfly<R1>(
      d, [&](auto k) KVRS_UNROLLED { return in.load(d, k * R2); },
      [&](auto k, C y) KVRS_UNROLLED { x[k] = twiddles.apply(d, k, y); });
  C y[R1 / R2][R2];
  transposeRows<In::kLaneOrder>(d, x, [&](auto lane, auto group, C row) KVRS_UNROLLED {
    constexpr int kRow = In::kLaneOrder ? laneOrder<T>(lane, R2) : lane;
    y[group][kRow] = row;
  });
  unroll<R1 / R2>([&](auto group) KVRS_UNROLLED { butterfly(d, y[group]); });
  if (scale != T(1)) unroll<R1 / R2>([&](auto group) KVRS_UNROLLED { scaleRows(d, y[group], scale); });
  unroll<R1 / R2>([&](auto group) KVRS_UNROLLED { storeRows(d, out, group * R2, R1, y[group]); });
}

// R x 2R points, the other way about: butterflies of R for 2R lanes, then butterflies of 2R for R lanes.
template <int R, class In, class Out, class T>
KVRS_INLINE void wideTransform(In in, Out out, const T* w, T scale) {
  const Lanes<T, 2 * R> d;
  const Lanes<T, R> half;
  using C = Cx<Lanes<T, 2 * R>>;
  const LaneTwiddles<Lanes<T, 2 * R>> twiddles{{w}};
  hn::Vec<Lanes<T, 2 * R>> re[R], im[R];
  butterfly<R>(
      d, [&](auto k) KVRS_UNROLLED { return in.load(d, k * 2 * R); },
      [&](auto k, C x) KVRS_UNROLLED {
        const C y = twiddles.apply(d, k, x);
        constexpr int kRow = In::kLaneOrder ? laneOfNumber<T>(k, R) : k;
        re[kRow] = y.re;
        im[kRow] = y.im;
      });
  hn::Vec<Lanes<T, R>> outRe[2 * R], outIm[2 * R];
  transposeWide(d, re, outRe);
  transposeWide(d, im, outIm);
  Cx<Lanes<T, R>> y[2 * R];
  unroll<2 * R>([&](auto lane) KVRS_UNROLLED {
    constexpr int kRow = In::kLaneOrder ? laneOrder<T>(lane, 2 * R) : lane;
    y[kRow] = {outRe[lane], outIm[lane]};
  });
  butterfly(half, y);
  if (scale != T(1)) scaleRows(half, y, scale);
  storeRows(half, out, 0, R, y);
}

// Eight floats in one register of four lanes and another: a butterfly of 2, twiddles, and a butterfly of 4 on vectors
// that hold both halves, even and odd results side by side, real before imaginary:
//
//   lo = x0 x1 x2 x3   lo + hi       = a0 a1 a2 a3   transposed   re a0, re b0, im a0, im b0    ...   re X0, re X1, im X0, im X1
//   hi = x4 x5 x6 x7   (lo - hi) w^n = b0 b1 b2 b3      to        re a1, re b1, im a1, im b1          re X2, re X3, im X2, im X3
//                                                                 ...                                 ...
template <class D>
KVRS_INLINE void eightPoints(D d, Cx<D> lo, Cx<D> hi, hn::Vec<D> (&y)[4]) {
  using T = hn::TFromD<D>;
  using V = hn::Vec<D>;
  constexpr T h = T(0.70710678118654752440);
  alignas(16) static constexpr T kTurns[8] = {1, h, 0, -h, 0, -h, -1, -h};
  alignas(16) static constexpr T kMinusI[4] = {0, 0, T(-0.0), T(-0.0)};
  const Cx<D> a = add(lo, hi), b = mul(sub(lo, hi), Table<T>{kTurns}.load(d, 0));
  V r[4] = {a.re, b.re, a.im, b.im};
  transpose(d, r);
  const V sum02 = hn::Add(r[0], r[2]), diff02 = hn::Sub(r[0], r[2]);
  const V sum13 = hn::Add(r[1], r[3]), diff13 = hn::Sub(r[1], r[3]);
  // -i times the difference: the parts exchanged, the new imaginary one negated
  const V turned = hn::Xor(hn::Shuffle1032(diff13), hn::Load(d, kMinusI));
  y[0] = hn::Add(sum02, sum13);
  y[1] = hn::Add(diff02, turned);
  y[2] = hn::Sub(sum02, sum13);
  y[3] = hn::Sub(diff02, turned);
}

template <class In, class Out, class T>
KVRS_INLINE void eightTransform(In in, Out out, T scale) {
  const Lanes<T, 4> d;
  hn::Vec<Lanes<T, 4>> y[4];
  eightPoints(d, in.load(d, 0), in.load(d, 4), y);
  if (scale != T(1)) unroll<4>([&](auto k) KVRS_UNROLLED { y[k] = hn::Mul(y[k], hn::Set(d, scale)); });
  out.store(d, 0, {hn::ConcatLowerLower(d, y[1], y[0]), hn::ConcatUpperUpper(d, y[1], y[0])});
  out.store(d, 4, {hn::ConcatLowerLower(d, y[3], y[2]), hn::ConcatUpperUpper(d, y[3], y[2])});
}

// The twiddles of a transform of R1 x R2 points, butterflies of R1 first.
template <int R1, int R2, class T, bool kLaneOrder>
alignas(64) inline constexpr auto kSquareTable = [] {
  std::array<T, 2 * R1 * R2> table{};
  constexpr int kOrder = __builtin_ctz(R1 * R2);
  for (int j = 1; j < R1; ++j) {
    for (int lane = 0; lane < R2; ++lane) {
      const Root<T> w = kWave1024<T>.root(j * (kLaneOrder ? laneOrder<T>(lane, R2) : lane), kOrder);
      table[2 * R2 * (j - 1) + lane] = w.re;
      table[2 * R2 * (j - 1) + R2 + lane] = w.im;
    }
  }
  return table;
}();

// Orders up to kLastSmallOrder. The table `w` is of order 6 and up.
template <class In, class Out, class T>
void smallTransform(int order, In in, Out out, [[maybe_unused]] const T* w, T scale) {
  constexpr bool kOrdered = In::kLaneOrder;
  switch (order) {
    case 0:
      return butterflyTransform<1>(in, out, scale);
    case 1:
      return butterflyTransform<2>(in, out, scale);
    case 2:
      return butterflyTransform<4>(in, out, scale);
    case 3:
      if constexpr (sizeof(T) == 4) {
        return eightTransform(in, out, scale);
      } else {
        return squareTransform<4, 2>(in, out, kSquareTable<4, 2, T, kOrdered>.data(), scale);
      }
    case 4:
      if constexpr (kLanes<T> >= 4) {
        return squareTransform<4, 4>(in, out, kSquareTable<4, 4, T, kOrdered>.data(), scale);
      } else {
        return squareTransform<8, 2>(in, out, kSquareTable<8, 2, T, kOrdered>.data(), scale);
      }
    case 5:
      if constexpr (kLanes<T> >= 8) {
        return wideTransform<4>(in, out, kSquareTable<4, 8, T, kOrdered>.data(), scale);
      } else if constexpr (kLanes<T> == 4) {
        return squareTransform<8, 4>(in, out, kSquareTable<8, 4, T, kOrdered>.data(), scale);
      } else {
        return squareTransform<16, 2>(in, out, kSquareTable<16, 2, T, kOrdered>.data(), scale);
      }
    case 6:
      if constexpr (kLastSmallOrder<T> >= 6) return squareTransform<8, 8>(in, out, w, scale);
      return;
    default:
      if constexpr (kLastSmallOrder<T> >= 7) return wideTransform<8>(in, out, w, scale);
      return;
  }
}

// Orders up to kLastStockhamOrder.
template <class T, class In, class Out>
void unsplitTransform(int order, In in, Out out, T* work, const T* w, T scale) {
  if (order <= kLastSmallOrder<T>) return smallTransform(order, in, out, w, scale);
  stockham(order, in, out, Work<T>{work}, w, scale);
}

}  // namespace kvrs::fft

#endif
