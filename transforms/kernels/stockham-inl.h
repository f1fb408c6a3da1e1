// The passes of a self-sorting transform, and the plan that strings them together.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_STOCKHAM_INL_H
#define KVRS_TRANSFORMS_KERNELS_STOCKHAM_INL_H

#include "transforms/fft_plan.h"
#include "transforms/kernels/butterfly-inl.h"

namespace kvrs::fft {

// w[j - 1] for j = 1 .. R - 1, a vector of each, real and imaginary parts in turn.
template <int R, class D>
KVRS_INLINE void twiddle(D d, Cx<D> (&x)[R], const hn::TFromD<D>* w) {
  unroll<R - 1>([&](auto j) KVRS_UNROLLED {
    x[j + 1] = mul(x[j + 1], Blocks<const hn::TFromD<D>>{w}.load(d, j * hn::MaxLanes(d)));
  });
}

// The same with one number for all lanes.
template <int R, class D>
KVRS_INLINE void twiddleAll(D d, Cx<D> (&x)[R], const hn::TFromD<D>* w) {
  unroll<R - 1>([&](auto j) KVRS_UNROLLED {
    x[j + 1] = mul(x[j + 1], Cx<D>{hn::Set(d, w[2 * j]), hn::Set(d, w[2 * j + 1])});
  });
}

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

// Lane p of row j goes to lane j of row p, for R rows: R / L squares side by side. Rows come out in the order
// of the lanes, and the lanes in laneOrder, so that whoever joins the parts again finds them where they
// belong.
template <int R, class D, class Store>
KVRS_INLINE void transposeRows(D d, const Cx<D> (&x)[R], Store store) {
  constexpr int L = static_cast<int>(hn::MaxLanes(d));
  unroll<R / L>([&](auto g) KVRS_UNROLLED {
    hn::Vec<D> re[L], im[L];
    unroll<L>([&](auto l) KVRS_UNROLLED {
      re[l] = x[g * L + laneOrder<hn::TFromD<D>>(l, L)].re;
      im[l] = x[g * L + laneOrder<hn::TFromD<D>>(l, L)].im;
    });
    transpose(d, re);
    transpose(d, im);
    unroll<L>([&](auto l) KVRS_UNROLLED { store(l, g, Cx<D>{re[l], im[l]}); });
  });
}

// First pass: butterflies over points n / R apart, for L neighbours at once; the R results of each neighbour
// go together.
template <int R, size_t L, class In, class T>
void firstPass(In in, Blocks<T> out, size_t n, const T* w) {
  const Lanes<T, L> d;
  const size_t m = n / R;
  for (size_t p = 0; p < m; p += L, w += 2 * L * (R - 1)) {
    Cx<decltype(d)> x[R];
    loadRows(d, in, p, m, x);
    butterfly(d, x);
    twiddle(d, x, w);
    transposeRows(d, x, [&](auto lane, auto group, auto row) KVRS_UNROLLED {
      constexpr int kRow = In::kLaneOrder ? laneOrder<T>(lane, L) : lane;
      out.store(d, R * (p + kRow) + group * L, row);
    });
  }
}

// A pass over groups of n points, s of them side by side: butterflies over points n / R apart.
template <int R, class T>
void middlePass(Blocks<T> in, Blocks<T> out, size_t n, size_t s, const T* w) {
  const Lanes<T, kLanes<T>> d;
  const size_t m = n / R;
  for (size_t p = 0; p < m; ++p, w += 2 * (R - 1)) {
    for (size_t q = 0; q < s; q += kLanes<T>) {
      Cx<decltype(d)> x[R];
      loadRows(d, in, q + s * p, s * m, x);
      butterfly(d, x);
      twiddleAll(d, x, w);
      storeRows(d, out, q + s * R * p, s, x);
    }
  }
}

// The last one: groups of R points, no twiddles, and the scale on the way out. In and out may be the same
// memory.
template <int R, bool kScaled, class Out, class T>
void lastPass(Blocks<T> in, Out out, size_t s, T scale) {
  const Lanes<T, kLanes<T>> d;
  for (size_t q = 0; q < s; q += kLanes<T>) {
    Cx<decltype(d)> x[R];
    loadRows(d, in, q, s, x);
    butterfly(d, x);
    if constexpr (kScaled) scaleRows(d, x, scale);
    storeRows(d, out, q, s, x);
  }
}

template <class Out, class T>
KVRS_INLINE void lastPass(Blocks<T> in, Out out, int bits, size_t s, T scale) {
  const bool scaled = scale != T(1);
  switch (bits) {
    case 2:
      return scaled ? lastPass<4, true>(in, out, s, scale) : lastPass<4, false>(in, out, s, scale);
    case 3:
      return scaled ? lastPass<8, true>(in, out, s, scale) : lastPass<8, false>(in, out, s, scale);
    default:
      return scaled ? lastPass<16, true>(in, out, s, scale) : lastPass<16, false>(in, out, s, scale);
  }
}

template <class T>
KVRS_INLINE void middlePass(Blocks<T> in, Blocks<T> out, int bits, size_t n, size_t s, const T* w) {
  switch (bits) {
    case 2:
      return middlePass<4>(in, out, n, s, w);
    case 3:
      return middlePass<8>(in, out, n, s, w);
    default:
      return middlePass<16>(in, out, n, s, w);
  }
}

// The whole transform of 2^order points. `work` and `scratch`, which is the memory of `out`, take turns.
template <class T, class In, class Out>
void stockham(int order, In in, Out out, Blocks<T> work, Blocks<T> scratch, const T* w, T scale) {
  const Plan& plan = kStockhamPlans<T>[order];
  const size_t points = size_t{1} << order;
  constexpr int kFirst = kFirstRadix<T>;
  firstPass<kFirst, kLanes<T>>(in, work, points, w);
  w += 2 * (points / kFirst) * (kFirst - 1);
  size_t s = kFirst, n = points / kFirst;
  Blocks<T> from = work, to = scratch;
  int pass = 1;
  for (; pass + 1 < plan.passes; ++pass) {
    const int bits = plan.bits[pass];
    middlePass(from, to, bits, n, s, w);
    std::swap(from, to);
    s <<= bits;
    n >>= bits;
    w += 2 * n * ((1 << bits) - 1);
  }
  lastPass(from, out, plan.bits[pass], s, scale);
}

}  // namespace kvrs::fft

#endif
