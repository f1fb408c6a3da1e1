// Transforms that stay in registers from load to store.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_SMALL_INL_H
#define KVRS_TRANSFORMS_KERNELS_SMALL_INL_H

#include "transforms/kernels/stockham-inl.h"

namespace kvrs::fft {

// One butterfly, one lane: 1, 2, 4 or 8 points.
template <int R, class In, class Out, class T>
KVRS_INLINE void butterflyTransform(In in, Out out, T scale) {
  const Lanes<T, 1> d;
  Cx<decltype(d)> x[R];
  loadRows(d, in, 0, 1, x);
  if constexpr (R > 1) butterfly(d, x);
  if (scale != T(1)) scaleRows(d, x, scale);
  storeRows(d, out, 0, 1, x);
}

// R1 x R2 points: butterflies of R1 for R2 lanes at once, twiddles, transposition, butterflies of R2.
template <int R1, int R2, class In, class Out, class T>
KVRS_INLINE void squareTransform(In in, Out out, const T* w, T scale) {
  static_assert(R1 % R2 == 0);
  const Lanes<T, R2> d;
  using C = Cx<decltype(d)>;
  C x[R1];
  loadRows(d, in, 0, R2, x);
  butterfly(d, x);
  twiddle(d, x, w);
  C y[R1 / R2][R2];
  transposeRows(d, x, [&](auto lane, auto group, auto row) KVRS_UNROLLED {
    constexpr int kRow = In::kLaneOrder ? laneOrder<T>(lane, R2) : lane;
    y[group][kRow] = row;
  });
  unroll<R1 / R2>([&](auto group) KVRS_UNROLLED { butterfly(d, y[group]); });
  if (scale != T(1)) unroll<R1 / R2>([&](auto group) KVRS_UNROLLED { scaleRows(d, y[group], scale); });
  unroll<R1 / R2>([&](auto group) KVRS_UNROLLED { storeRows(d, out, group * R2, R1, y[group]); });
}

}  // namespace kvrs::fft

#endif
