// Transforms of any length: what they need, and how they run.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_DFT_ENGINE_H
#define KVRS_TRANSFORMS_DFT_ENGINE_H

#include <cstdint>

#include "transforms/dft_plan.h"
#include "transforms/dft_points.h"

namespace kvrs::dft {

// cos and sin of 2 pi k / r for radices without a kernel of their own.
template <class T>
struct OddRoots {
  int count;
  int radix[8];
  const T* table[8];  // r cosines, then r sines

  const T* of(int r) const {
    for (int i = 0; i < count; ++i) {
      if (radix[i] == r) return table[i];
    }
    return nullptr;
  }
};

template <class T>
struct Mixed {
  MixedPlan plan;
  const T* stripNumbers;  // between the stages of a strip
  const T* turns;         // exp(-2 pi i p j / n), strip by strip
  const T* restNumbers;   // between the stages of the rest
  OddRoots<T> odd;
};

template <class T>
struct OutOfOrder {
  OutOfOrderPlan plan;
  const T* numbers[24];  // of each level
  const T* turns[24];    // of each level but the last
  OddRoots<T> odd;
};

// All transforms are the forward one, times `scale`; exchanged points make them the inverse one. dst may be the memory of
// src, in the same form.

// n up to kLastShort.
template <class T>
void runTiny(int n, const Points<const T>& src, const Points<T>& dst, T scale);

// A plan that isShort().
template <class T>
void runShort(const Mixed<T>& mixed, const Points<const T>& src, const Points<T>& dst, T scale);

// `work` has room for n numbers, where n > kLastShort.
template <class T>
void runMixed(const Mixed<T>& mixed, Points<const T> src, Points<T> dst, T* work, T scale);

// n odd and below 51; `table` is that of makeDirectTable.
template <class T>
void runDirect(int n, const T* table, Points<const T> src, Points<T> dst, T scale);

// Out of order: forward, and the inverse of exchanged points.
template <class T>
void runOutOfOrder(const OutOfOrder<T>& plan, Points<const T> src, Points<T> dst, T scale);
template <class T>
void runOutOfOrderInverse(const OutOfOrder<T>& plan, Points<const T> src, Points<T> dst, T scale);

// Copies n numbers, times `scale`.
template <class T>
void movePoints(size_t n, Points<const T> src, Points<T> dst, T scale);

// Lanes of the table of a direct transform: results are computed side by side.
template <class T>
int directLanes();

// The strips that runMixed and runOutOfOrder take, for whoever makes their tables: body(first, width).
template <class T, class Body>
void forStrips(size_t rows, size_t columns, size_t lanes, Body body) {
  // As many columns as a tile of so many rows holds, which is 2 lanes - 1 or more, all strips about as wide, so that none
  // is narrower than `lanes`.
  const size_t holds = static_cast<size_t>(kTilePoints<T>) / rows;
  const size_t most = holds < 8 * lanes ? holds : 8 * lanes;
  const size_t strips = (columns + most - 1) / most;
  for (size_t i = 0, first = 0; i < strips; ++i) {
    const size_t end = static_cast<size_t>(uint64_t{columns} * (i + 1) / strips);
    body(first, end - first);
    first = end;
  }
}

// Real signals of odd length n = r m. A butterfly of radix r makes of the real rows x[p + m k] a real row, j = 0, and
// complex ones, j = 1 .. (r-1)/2, turned; the others are their conjugates. Transforms of m points follow.
template <class T>
struct RealRows {
  int r, m;
  const T* roots;  // r cosines, r sines
  const T* turns;  // exp(-2 pi i p j / n): for each j m real parts, then m imaginary ones

  // rows: row 0, then real and imaginary row of j = 1, 2 ... , m numbers each.
  void forward(const T* src, T* rows) const;
  // The other way, times `scale`, from rows that are left in disorder.
  void inverse(T* rows, T* dst, T scale) const;
};

}  // namespace kvrs::dft

#endif
