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
  Plan plan;
  const T* numbers;  // between the stages, level by level
  const T* turns;    // between the levels
  OddRoots<T> odd;
};

template <class T>
struct OutOfOrder {
  Plan plan;
  const T* numbers[kMostLevels];  // of each level
  const T* turns[kMostLevels];    // of each level but the last
  OddRoots<T> odd;
};

// All transforms are the forward one, times `scale`; exchanged points make them the inverse one. dst may be the memory of
// src, in the same form.

// n up to kLastShort.
template <class T>
void runTiny(int n, const Points<const T>& src, const Points<T>& dst, T scale);

// Of a plan that is straight, `turns` made by makePairTurns.
template <class T>
void runStraight(const Plan& plan, const T* turns, const Points<const T>& src, const Points<T>& dst, T scale);

// `work` has room for n numbers, where n > kLastShort.
template <class T>
void runMixed(const Mixed<T>& mixed, const Points<const T>& src, const Points<T>& dst, T* work, T scale);

// n odd and below 51; `table` is that of makeDirectTable.
template <class T>
void runDirect(int n, const T* table, const Points<const T>& src, const Points<T>& dst, T scale);

// Out of order: forward, and the inverse of exchanged points.
template <class T>
void runOutOfOrder(const OutOfOrder<T>& plan, Points<const T> src, Points<T> dst, T scale);
template <class T>
void runOutOfOrderInverse(const OutOfOrder<T>& plan, Points<const T> src, Points<T> dst, T scale);

// Copies n numbers, times `scale`.
template <class T>
void movePoints(size_t n, const Points<const T>& src, const Points<T>& dst, T scale);

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
