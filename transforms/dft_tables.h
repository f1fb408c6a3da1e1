// Tables of mixed-radix transforms, for whoever has memory to put them in.
//
// A Source hands out memory and roots of unity:
//
//   T* take(size_t numbers)                null when there is no more
//   Root<T> root(int64_t k, int64_t n)     exp(-2 pi i k / n)
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_DFT_TABLES_H
#define KVRS_TRANSFORMS_DFT_TABLES_H

#include <cmath>

#include "frame/simd.h"
#include "transforms/dft_engine.h"
#include "transforms/fft_wave.h"

namespace kvrs::dft {

// exp(-2 pi i k / n), 0 <= k < n, computed within an eighth of a turn.
template <class T>
fft::Root<T> rootOf(int64_t k, int64_t n) {
  const bool below = 2 * k > n;
  if (below) k = n - k;
  const bool left = 4 * k > n;
  const int64_t toAxis = left ? n - 2 * k : 2 * k;  // twice the distance from the real axis
  const bool steep = 4 * toAxis > n;
  const double angle = static_cast<double>(steep ? n - 2 * toAxis : 2 * toAxis) * 0.25 *
                       (6.283185307179586 / static_cast<double>(n));
  const double sine = std::sin(angle), cosine = std::cos(angle);
  const T re = static_cast<T>((left ? -1 : 1) * (steep ? sine : cosine));
  const T im = static_cast<T>(steep ? cosine : sine);
  return {re, below ? im : -im};
}

// Between the stages of a transform of n points: for p = 1, 2 ... and j = 1 .. r - 1, exp(-2 pi i p j / n), and so on
// within each r-th of it.
template <class T, class Source>
const T* makeNumbers(Source& source, const int* radix, int count, int64_t n) {
  size_t all = 0;
  int64_t length = n;
  for (int i = 0; i < count; ++i) {
    const int64_t m = length / radix[i];
    all += static_cast<size_t>(2 * (m - 1) * (radix[i] - 1));
    length = m;
  }
  T* const table = source.take(all);
  if (table == nullptr) return nullptr;
  T* to = table;
  for (int i = 0; i < count; ++i) {
    const int64_t m = n / radix[i];
    for (int64_t p = 1; p < m; ++p) {
      for (int64_t j = 1; j < radix[i]; ++j) {
        const fft::Root<T> w = source.root(p * j, n);
        *to++ = w.re;
        *to++ = w.im;
      }
    }
    n = m;
  }
  return table;
}

// Between columns and rows, strip by strip.
template <class T, class Source>
const T* makeTurns(Source& source, int64_t rows, int64_t columns, int lanes) {
  T* const table = source.take(static_cast<size_t>(2 * (rows - 1) * columns));
  if (table == nullptr) return nullptr;
  T* to = table;
  forStrips<T>(static_cast<size_t>(rows), static_cast<size_t>(columns), static_cast<size_t>(lanes),
               [&](size_t first, size_t width) {
                 for (int64_t j = 1; j < rows; ++j, to += 2 * width) {
                   for (size_t q = 0; q < width; ++q) {
                     const fft::Root<T> w = source.root(j * static_cast<int64_t>(first + q), rows * columns);
                     to[q] = w.re;
                     to[width + q] = w.im;
                   }
                 }
               });
  return table;
}

template <class T, class Source>
const T* makeOddRoots(Source& source, int r) {
  T* const table = source.take(static_cast<size_t>(2 * r));
  if (table == nullptr) return nullptr;
  for (int k = 0; k < r; ++k) {
    const fft::Root<T> w = source.root(k, r);
    table[k] = w.re;
    table[r + k] = -w.im;
  }
  return table;
}

// Those of all radices that have no kernel of their own, in the order in which they are met.
template <class T, class Source>
void makeOdd(Source& source, OddRoots<T>* x, const int* radix, int count) {
  for (int i = 0; i < count; ++i) {
    if (hasKernel(radix[i]) || x->of(radix[i]) != nullptr) continue;
    const T* const table = makeOddRoots<T>(source, radix[i]);
    if (table == nullptr) return;
    x->radix[x->count] = radix[i];
    x->table[x->count] = table;
    ++x->count;
  }
}

// exp(-2 pi i j q / n), a row of real and one of imaginary parts for each j from 1 on, and behind them what a vector may
// reach beyond.
template <class T, class Source>
const T* makeShortTurns(Source& source, int64_t rows, int64_t columns) {
  constexpr size_t kBeyond = kLanes<T>;
  const size_t numbers = static_cast<size_t>(2 * (rows - 1) * columns);
  T* const table = source.take(numbers + kBeyond);
  if (table == nullptr) return nullptr;
  T* to = table;
  for (int64_t j = 1; j < rows; ++j, to += 2 * columns) {
    for (int64_t q = 0; q < columns; ++q) {
      const fft::Root<T> w = source.root(j * q, rows * columns);
      to[q] = w.re;
      to[columns + q] = w.im;
    }
  }
  for (size_t i = 0; i < kBeyond; ++i) to[i] = 0;
  return table;
}

// Of x->plan.
template <class T, class Source>
void makeMixed(Source& source, Mixed<T>* x) {
  const MixedPlan& plan = x->plan;
  if (plan.n <= kLastShort) return;
  if (plan.isShort()) {
    x->turns = makeShortTurns<T>(source, plan.radix[0], plan.radix[1]);
    return;
  }
  const int64_t rows = plan.strip, rest = plan.n / rows;
  x->stripNumbers = makeNumbers<T>(source, plan.radix, plan.stripCount, rows);
  if (plan.count > plan.stripCount) {
    x->restNumbers = makeNumbers<T>(source, plan.radix + plan.stripCount, plan.count - plan.stripCount, rest);
    x->turns = makeTurns<T>(source, rows, rest, plan.lanes);
  }
  makeOdd(source, &x->odd, plan.radix, plan.count);
}

}  // namespace kvrs::dft

#endif
