// Between the spectrum of a real signal of N points and that of the M = N/2 complex numbers made of its
// pairs.
//
// With Z the transform of z[n] = x[2n] + i x[2n+1], A = Z[k], B = Z[M-k] and c, s the cosine and sine of 2 pi
// k / N:
//
//   d = Re A - Re B, e = Im A + Im B, P = (s e + c d) / 2, Q = (c e - s d) / 2
//   X[k]   = (Re A + Re B) / 2 + Q + i ((Im A - Im B) / 2 - P)
//   X[M-k] = (Re A + Re B) / 2 - Q - i ((Im A - Im B) / 2 + P)
//
// and the other way, with A = X[k], B = X[M-k], d, e likewise, P = s d + c e, Q = c d - s e:
//
//   2 Z[k]   = (Re A + Re B) - P + i ((Im A - Im B) + Q)
//   2 Z[M-k] = (Re A + Re B) + P - i ((Im A - Im B) - Q)
//
// Vectors of k from 1 upwards meet vectors of M-k from M-1 downwards; the last pair shares the middle, k =
// M/2, where both formulas give the conjugate of Z, or twice that of X.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_REAL_INL_H
#define KVRS_TRANSFORMS_KERNELS_REAL_INL_H

#include "transforms/fft_wave.h"
#include "transforms/kernels/small-inl.h"
#include "transforms/packing.h"

namespace kvrs::fft {

// c, s halved in w.
template <class D>
KVRS_INLINE void splitForward(D d, Cx<D>& a, Cx<D>& b, Cx<D> w) {
  const auto half = hn::Set(d, hn::TFromD<D>(0.5));
  const auto diff = hn::Sub(a.re, b.re), sum = hn::Add(a.im, b.im);
  const auto re = hn::Add(a.re, b.re), im = hn::Sub(a.im, b.im);
  const auto p = hn::MulAdd(w.im, sum, hn::Mul(w.re, diff));
  const auto q = hn::NegMulAdd(w.im, diff, hn::Mul(w.re, sum));
  a = {hn::MulAdd(half, re, q), hn::MulSub(half, im, p)};
  b = {hn::MulSub(half, re, q), hn::NegMulSub(half, im, p)};
}

template <class D>
KVRS_INLINE void splitInverse(D d, Cx<D>& a, Cx<D>& b, Cx<D> w) {
  const auto two = hn::Set(d, hn::TFromD<D>(2));
  const auto diff = hn::Sub(a.re, b.re), sum = hn::Add(a.im, b.im);
  const auto re = hn::Add(a.re, b.re), im = hn::Sub(a.im, b.im);
  const auto p = hn::MulAdd(w.im, diff, hn::Mul(w.re, sum));
  const auto q = hn::NegMulAdd(w.im, sum, hn::Mul(w.re, diff));
  a = {hn::NegMulAdd(two, p, re), hn::MulAdd(two, q, im)};
  b = {hn::MulAdd(two, p, re), hn::MulSub(two, q, im)};
}

template <class D>
KVRS_INLINE Cx<D> reversed(D d, Cx<D> x) {
  return {hn::Reverse(d, x.re), hn::Reverse(d, x.im)};
}

// What is done to numbers k and M-k; b is in order of the lanes of a, and begins at `mirrored` in memory.
struct SplitForward {
  template <class D>
  KVRS_INLINE void operator()(D d, Cx<D>& a, Cx<D>& b, Cx<D> w, size_t, size_t) const {
    splitForward(d, a, b, w);
  }
};
struct SplitInverse {
  template <class D>
  KVRS_INLINE void operator()(D d, Cx<D>& a, Cx<D>& b, Cx<D> w, size_t, size_t) const {
    splitInverse(d, a, b, w);
  }
};
// There and back, and times another spectrum between the two.
template <class T>
struct SplitProduct {
  const T* spectrum;

  template <class D>
  KVRS_INLINE void operator()(D d, Cx<D>& a, Cx<D>& b, Cx<D> w, size_t k, size_t mirrored) const {
    const Interleaved<const T, false> other{spectrum};
    splitForward(d, a, b, w);
    a = mul(a, other.load(d, k));
    b = mul(b, reversed(d, other.load(d, mirrored)));
    splitInverse(d, a, b, w);
  }
};

// All k but 0, for M = 2 L or more. src may be dst.
template <size_t L, class Split, class T>
void splitVectors(Split split, const T* src, T* dst, size_t M, const T* halves) {
  const Lanes<T, L> d;
  const Interleaved<const T, false> in{src};
  const Interleaved<T, false> out{dst};
  for (size_t k = 1; k < M / 2; k += L, halves += 2 * L) {
    const size_t mirrored = M - k - L + 1;
    auto a = in.load(d, k);
    auto b = reversed(d, in.load(d, mirrored));
    split(d, a, b, Table<T>{halves}.load(d, 0), k, mirrored);
    out.store(d, k, a);
    out.store(d, mirrored, reversed(d, b));
  }
}

template <class Split, class T>
void splitSpectrum(Split split, const T* src, T* dst, size_t M, const T* halves) {
  if constexpr (kLanes<T> >= 8) {
    if (M / 2 < kLanes<T>) return splitVectors<kLanes<T> / 2>(split, src, dst, M, halves);
  }
  splitVectors<kLanes<T>>(split, src, dst, M, halves);
}

// The same for any M: vectors as long as they fit below the middle, then single numbers, each with their factors in `halves`.
template <class Split, class T>
void splitSpectrumOfAny(Split split, const T* src, T* dst, size_t M, const T* halves) {
  const Lanes<T, kLanes<T>> d;
  const Lanes<T, 1> one;
  const Interleaved<const T, false> in{src};
  const Interleaved<T, false> out{dst};
  const size_t pairs = (M - 1) / 2;
  size_t k = 1;
  for (; k + kLanes<T> - 1 <= pairs; k += kLanes<T>, halves += 2 * kLanes<T>) {
    const size_t mirrored = M - k - kLanes<T> + 1;
    auto a = in.load(d, k);
    auto b = reversed(d, in.load(d, mirrored));
    split(d, a, b, Table<T>{halves}.load(d, 0), k, mirrored);
    out.store(d, k, a);
    out.store(d, mirrored, reversed(d, b));
  }
  for (; k <= pairs; ++k, halves += 2) {
    auto a = in.load(one, k), b = in.load(one, M - k);
    split(one, a, b, Table<T>{halves}.load(one, 0), k, M - k);
    out.store(one, k, a);
    out.store(one, M - k, b);
  }
  if (M % 2 == 0) {
    auto a = in.load(one, M / 2), b = a;
    split(one, a, b, {hn::Zero(one), hn::Set(one, T(0.5))}, M / 2, M / 2);
    out.store(one, M / 2, a);
  }
}

// The table `halves` of a transform of 2^kOrder points whose context has none.
template <class T, int kOrder>
alignas(64) inline constexpr auto kHalves = [] {
  constexpr int kCount = 1 << (kOrder - 2);
  constexpr int kLanesHere = kCount < static_cast<int>(kLanes<T>) ? kCount : static_cast<int>(kLanes<T>);
  std::array<T, 2 * kCount> table{};
  for (int k = 0; k < kCount; k += kLanesHere) {
    for (int lane = 0; lane < kLanesHere; ++lane) {
      const Root<T> w = kWave1024<T>.root(k + 1 + laneOrder<T>(lane, kLanesHere), kOrder);
      table[2 * k + lane] = w.re / 2;
      table[2 * k + kLanesHere + lane] = -w.im / 2;
    }
  }
  return table;
}();

// N = 2, 4, 8 or 16, one lane, from pairs to the Perm sequence and back. src may be dst.
template <size_t N, class T>
void scalarForward(const T* src, T* dst, T scale) {
  constexpr int M = N / 2;
  const Lanes<T, 1> d;
  Cx<decltype(d)> z[M];
  loadRows(d, Interleaved<const T, false>{src}, 0, 1, z);
  butterfly(d, z);
  unroll<M / 2>([&](auto i) KVRS_UNROLLED {
    constexpr int k = i + 1;
    constexpr Root<T> w = kWave1024<T>.root(k, __builtin_ctz(N));
    if constexpr (2 * k < M) {
      splitForward(d, z[k], z[M - k], {hn::Set(d, w.re / 2), hn::Set(d, -w.im / 2)});
    } else {
      z[k].im = hn::Neg(z[k].im);
    }
  });
  z[0] = {hn::Add(z[0].re, z[0].im), hn::Sub(z[0].re, z[0].im)};
  if (scale != T(1)) scaleRows(d, z, scale);
  storeRows(d, Interleaved<T, false>{dst}, 0, 1, z);
}

template <size_t N, class T>
void scalarInverse(const T* src, T* dst, T scale) {
  constexpr int M = N / 2;
  const Lanes<T, 1> d;
  Cx<decltype(d)> z[M];
  loadRows(d, Interleaved<const T, false>{src}, 0, 1, z);
  z[0] = {hn::Add(z[0].re, z[0].im), hn::Sub(z[0].re, z[0].im)};
  unroll<M / 2>([&](auto i) KVRS_UNROLLED {
    constexpr int k = i + 1;
    constexpr Root<T> w = kWave1024<T>.root(k, __builtin_ctz(N));
    if constexpr (2 * k < M) {
      splitInverse(d, z[k], z[M - k], {hn::Set(d, w.re / 2), hn::Set(d, -w.im / 2)});
    } else {
      z[k] = {hn::Add(z[k].re, z[k].re), hn::Neg(hn::Add(z[k].im, z[k].im))};
    }
  });
  unroll<M>([&](auto k) KVRS_UNROLLED { std::swap(z[k].re, z[k].im); });
  butterfly(d, z);
  if (scale != T(1)) scaleRows(d, z, scale);
  storeRows(d, Interleaved<T, true>{dst}, 0, 1, z);
}

// N = 16 on four lanes. k = 1 .. 4 meets 7 .. 4 there, too.
template <class D>
KVRS_INLINE Cx<D> halves16(D d) {
  using T = hn::TFromD<D>;
  alignas(16) static constexpr auto kHalves = [] {
    std::array<T, 8> table{};
    for (int k = 1; k <= 4; ++k) {
      const Root<T> w = kWave1024<T>.root(k, 4);
      table[k - 1] = w.re / 2;
      table[k + 3] = -w.im / 2;
    }
    return table;
  }();
  return Table<T>{kHalves.data()}.load(d, 0);
}

// Numbers 0 .. 3 and 4 .. 7 to 1 .. 4 and 7 .. 4, split, and back with `head` for number 0.
template <class Split, class D>
KVRS_INLINE void splitEight(Split split, D d, Cx<D>& lo, Cx<D>& hi, Cx<D> head) {
  constexpr int kBytes = sizeof(hn::TFromD<D>);
  Cx<D> a{hn::CombineShiftRightBytes<kBytes>(d, hi.re, lo.re),
          hn::CombineShiftRightBytes<kBytes>(d, hi.im, lo.im)};
  Cx<D> b = reversed(d, hi);
  split(d, a, b, halves16(d), 1, 4);
  lo = {hn::CombineShiftRightBytes<3 * kBytes>(d, a.re, hn::Reverse(d, head.re)),
        hn::CombineShiftRightBytes<3 * kBytes>(d, a.im, hn::Reverse(d, head.im))};
  hi = reversed(d, b);
}

template <class T>
void forward16(const T* src, T* dst, T scale) {
  const Lanes<T, 4> d;
  using C = Cx<Lanes<T, 4>>;
  const Interleaved<const T, false> in{src};
  const Interleaved<T, false> out{dst};
  hn::Vec<Lanes<T, 4>> y[4];
  eightPoints(d, in.load(d, 0), in.load(d, 4), y);
  C lo{hn::ConcatLowerLower(d, y[1], y[0]), hn::ConcatUpperUpper(d, y[1], y[0])};
  C hi{hn::ConcatLowerLower(d, y[3], y[2]), hn::ConcatUpperUpper(d, y[3], y[2])};
  splitEight(SplitForward(), d, lo, hi, C{hn::Add(lo.re, lo.im), hn::Sub(lo.re, lo.im)});
  if (scale != T(1)) {
    lo = mul(lo, hn::Set(d, scale));
    hi = mul(hi, hn::Set(d, scale));
  }
  out.store(d, 0, lo);
  out.store(d, 4, hi);
}

// From any packing: putting the spectrum in order in memory first would have vectors wait for the pieces to be stored.
template <Packing kPacking, class T>
void inverse16(const T* src, T* dst, T scale) {
  const Lanes<T, 4> d;
  using C = Cx<Lanes<T, 4>>;
  const Interleaved<T, true> out{dst};
  const T first = src[0], last = src[lastTerm<kPacking>(16)];
  C lo, hi;
  if constexpr (kPacking == Packing::kPack) {
    const Interleaved<const T, false> fromOne{src + 1};
    const C next = fromOne.load(d, 0);
    lo = {hn::ShiftLeftLanes<1>(d, next.re), hn::ShiftLeftLanes<1>(d, next.im)};
    hi = fromOne.load(d, 3);
  } else {
    const Interleaved<const T, false> in{src};
    lo = in.load(d, 0);
    hi = in.load(d, 4);
  }
  // Of `lo` the first lane is not used.
  splitEight(SplitInverse(), d, lo, hi, C{hn::Set(d, first + last), hn::Set(d, first - last)});
  hn::Vec<Lanes<T, 4>> y[4];
  eightPoints(d, C{lo.im, lo.re}, C{hi.im, hi.re}, y);
  if (scale != T(1)) unroll<4>([&](auto k) KVRS_UNROLLED { y[k] = hn::Mul(y[k], hn::Set(d, scale)); });
  out.store(d, 0, C{hn::ConcatLowerLower(d, y[1], y[0]), hn::ConcatUpperUpper(d, y[1], y[0])});
  out.store(d, 4, C{hn::ConcatLowerLower(d, y[3], y[2]), hn::ConcatUpperUpper(d, y[3], y[2])});
}

}  // namespace kvrs::fft

#endif
