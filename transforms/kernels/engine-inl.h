// Picks the path of a transform by its order.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_ENGINE_INL_H
#define KVRS_TRANSFORMS_KERNELS_ENGINE_INL_H

#include "transforms/fft_engine.h"
#include "transforms/fft_wave.h"
#include "transforms/kernels/small-inl.h"
#include "transforms/kernels/split-inl.h"

namespace kvrs::fft {

// The twiddles of squareTransform<R1, R2>.
template <int R1, int R2, class T>
alignas(64) inline constexpr auto kSquareTable = [] {
  std::array<T, 2 * R1 * R2> table{};
  constexpr int kOrder = __builtin_ctz(R1 * R2);
  for (int j = 1; j < R1; ++j) {
    for (int lane = 0; lane < R2; ++lane) {
      const Root<T> w = kWave1024<T>.root(j * laneOrder<T>(lane, R2), kOrder);
      table[2 * R2 * (j - 1) + lane] = w.re;
      table[2 * R2 * (j - 1) + R2 + lane] = w.im;
    }
  }
  return table;
}();

template <class T, class In, class Out>
void transformViews(const Record<T>& r, int order, In in, Out out, T* work, T scale) {
  switch (order) {
    case 0:
      return butterflyTransform<1>(in, out, scale);
    case 1:
      return butterflyTransform<2>(in, out, scale);
    case 2:
      return butterflyTransform<4>(in, out, scale);
    case 3:
      if constexpr (kLanes<T> >= 4) return eightTransform(in, out, scale);
      return butterflyTransform<8>(in, out, scale);
    case 4:
      return squareTransform<4, 4>(in, out, kSquareTable<4, 4, T>.data(), scale);
    case 5:
      if constexpr (kLanes<T> >= 8) return wideTransform<4>(in, out, kSquareTable<4, 8, T>.data(), scale);
      return squareTransform<8, 4>(in, out, kSquareTable<8, 4, T>.data(), scale);
    default:
      break;
  }
  if constexpr (kLastSmallOrder<T> >= 6) {
    if (order == 6) return squareTransform<8, 8>(in, out, r.rows.get(), scale);
  }
  if constexpr (kLastSmallOrder<T> >= 7) {
    if (order == 7) return wideTransform<8>(in, out, r.rows.get(), scale);
  }
  if (order <= kLastStockhamOrder) {
    return stockham(order, in, out, Blocks<T>{work}, Blocks<T>{out.p}, r.rows.get(), scale);
  }
  const SplitTables<T> tables{r.columns.get(), r.vectors.get(),     r.lanes.get(),
                              r.middle.get(),  r.middleOuter.get(), r.rows.get()};
  splitTransform(order, in, out, work, static_cast<size_t>(r.workSize) / (2 * sizeof(T)), tables, scale);
}

}  // namespace kvrs::fft

#endif
