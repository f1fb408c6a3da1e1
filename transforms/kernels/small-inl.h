// Transforms that stay in registers from load to store.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_SMALL_INL_H
#define KVRS_TRANSFORMS_KERNELS_SMALL_INL_H

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
  transposeRows(d, x, [&](auto lane, auto group, C row) KVRS_UNROLLED {
    constexpr int kRow = In::kLaneOrder ? laneOrder<T>(lane, R2) : lane;
    y[group][kRow] = row;
  });
  unroll<R1 / R2>([&](auto group) KVRS_UNROLLED { butterfly(d, y[group]); });
  if (scale != T(1)) unroll<R1 / R2>([&](auto group) KVRS_UNROLLED { scaleRows(d, y[group], scale); });
  unroll<R1 / R2>([&](auto group) KVRS_UNROLLED { storeRows(d, out, group * R2, R1, y[group]); });
}

}  // namespace kvrs::fft

#endif
