// The floating-point FFT engine.
//
// One transform serves both directions: with real and imaginary parts exchanged on the way in and on the way out, the
// forward transform is the inverse one. All that knows the direction, and whether the parts lie in one array or in
// two, is a view (lanes-inl.h): the first pass loads through one, the last stores through one, and between them a
// vector of real parts is followed by one of imaginary parts, so that no pass in the middle moves a lane.
// Where registers are few (kPaired), numbers stay in pairs from end to end instead: a product takes a shuffle then, but
// a butterfly of four points fits eight registers.
//
// Three paths, by order:
//
//   tiny    small-inl.h      one butterfly, or two passes in registers with a transposition between them
//   medium  stockham-inl.h   decimation in frequency that sorts itself (Stockham), the work area and dst taking turns
//   large   split-inl.h      rows and columns in place, since the work area holds a strip of columns only
//
// The medium path, 1024 points on 16 lanes, radix 16, 8, 8. Point n is (p, q): its group's place p and the number q
// of the transform it belongs to, of which there are s, side by side.
//
//   pass    s     reads                        butterflies                 writes
//   first   1     x[p + 64 k]                  16 p at once, one a lane    x[16 p + j], a square of 16 x 16 transposed
//   middle  16    x[q + 16 (p + 8 k)]          16 q at once                x[q + 16 (8 p + j)], turned by p j / 64
//   last    128   x[q + 128 k]                 16 q at once                x[q + 128 j]
//
// From the second pass on all lanes of a vector have one p, and so one twiddle factor: a number in the table, spread
// over the lanes by the load. The tables hold the factors in the order of their use, N - 1 of them in all.
//
// References: P. N. Swarztrauber, FFT algorithms for vector computers, Parallel Computing 1 (1984); D. H. Bailey,
// FFTs in external or hierarchical memory, Journal of Supercomputing 4 (1990); C. Van Loan, Computational Frameworks
// for the Fast Fourier Transform, SIAM 1992.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_ENGINE_INL_H
#define KVRS_TRANSFORMS_KERNELS_ENGINE_INL_H

#include "transforms/fft_engine.h"
#include "transforms/fft_wave.h"
#include "transforms/kernels/small-inl.h"
#include "transforms/kernels/split-inl.h"

namespace kvrs::fft {

// The twiddles of a transform of R1 x R2 points, butterflies of R1 first.
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
    return stockham(order, in, out, Work<T>{work}, r.rows.get(), scale);
  }
  const SplitTables<T> tables{r.columns.get(), r.spans.get(),       r.places.get(),
                              r.middle.get(),  r.middleOuter.get(), r.rows.get()};
  splitTransform(order, in, out, work, static_cast<size_t>(r.workSize) / (2 * sizeof(T)), tables, scale);
}

}  // namespace kvrs::fft

#endif
