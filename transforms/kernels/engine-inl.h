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
#include "transforms/kernels/split-inl.h"

namespace kvrs::fft {

template <class T, class In, class Out>
void longTransform(const Record<T>& r, int order, In in, Out out, T* work, size_t workBytes, T scale) {
  if (order <= kLastStockhamOrder<T>) {
    return stockham(order, in, out, Work<T>{work}, r.rows.get(), scale);
  }
  const SplitTables<T> tables{r.columns.get(), r.spans.get(),       r.places.get(),
                              r.middle.get(),  r.middleOuter.get(), r.rows.get()};
  splitTransform(order, in, out, work, workBytes, tables, scale);
}

// Contexts that state no work area: one on the stack. A function of its own, so that no other has so large a frame.
template <class T, class In, class Out>
__attribute__((noinline)) void transformOnStack(const Record<T>& r, int order, In in, Out out, T scale) {
  alignas(64) T work[kStackBytes / sizeof(T)];
  longTransform(r, order, in, out, work, kStackBytes, scale);
}

template <class T, class In, class Out>
void transformViews(const Record<T>& r, int order, In in, Out out, T* work, T scale) {
  if (order <= kLastSmallOrder<T>) return smallTransform(order, in, out, r.rows.get(), scale);
  if constexpr (sizeof(T) == 8) {
    if (work == nullptr) return transformOnStack(r, order, in, out, scale);
  }
  longTransform(r, order, in, out, work, static_cast<size_t>(r.workSize), scale);
}

}  // namespace kvrs::fft

#endif
