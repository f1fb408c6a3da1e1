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
// within each r-th of it. Returns what comes behind.
template <class T, class Source>
T* putNumbers(Source& source, const int* radix, int count, int64_t n, T* to) {
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
  return to;
}

template <class T, class Source>
const T* makeNumbers(Source& source, const int* radix, int count, int64_t n) {
  T* const table = source.take(numbersOf(radix, count, static_cast<size_t>(n)));
  if (table != nullptr) putNumbers(source, radix, count, n, table);
  return table;
}

// Those of all levels.
template <class T, class Source>
const T* makeAllNumbers(Source& source, const Plan& plan) {
  const auto forLevels = [&](auto body) {
    const int* radix = plan.radix;
    for (int level = 0; level < plan.levels; radix += plan.stages[level], ++level)
      body(radix, plan.stages[level], plan.rows[level]);
  };
  size_t all = 0;
  forLevels([&](const int* radix, int count, int rows) {
    all += numbersOf(radix, count, static_cast<size_t>(rows));
  });
  T* const table = source.take(all);
  if (table == nullptr) return nullptr;
  T* to = table;
  forLevels([&](const int* radix, int count, int rows) { to = putNumbers(source, radix, count, rows, to); });
  return table;
}

// exp(-2 pi i p j / n) for strips of columns p: for each, rows j from 1 on, of real parts and of imaginary ones. No strip
// goes beyond a multiple of `block`, a divisor of `columns`. Returns what comes behind.
template <class T, class Source>
T* putTurns(Source& source, int64_t rows, int64_t columns, int64_t block, T* to) {
  for (int64_t first = 0, width; first < columns; first += width) {
    const int64_t left = block - first % block;
    width = left < kTileWidth<T> ? left : kTileWidth<T>;
    for (int64_t j = 1; j < rows; ++j, to += 2 * width) {
      for (int64_t q = 0; q < width; ++q) {
        const fft::Root<T> w = source.root(j * (first + q), rows * columns);
        to[q] = w.re;
        to[width + q] = w.im;
      }
    }
  }
  return to;
}

// What a vector of the last row may reach beyond a table.
template <class T>
inline constexpr size_t kBeyond = kLanes<T>;
template <class T>
void putBeyond(T* to) {
  for (size_t i = 0; i < kBeyond<T>; ++i) to[i] = 0;
}

template <class T, class Source>
const T* makeTurns(Source& source, int64_t rows, int64_t columns, int64_t block) {
  T* const table = source.take(static_cast<size_t>(2 * (rows - 1) * columns) + kBeyond<T>);
  if (table != nullptr) putBeyond(putTurns(source, rows, columns, block, table));
  return table;
}

// Those of all levels but the last: of the first in strips, of the others numbers, for each p the rows j from 1 on.
template <class T, class Source>
const T* makeAllTurns(Source& source, const Plan& plan) {
  size_t all = kBeyond<T>;
  int64_t n = plan.n;
  for (int level = 0; level + 1 < plan.levels; ++level) {
    const int64_t m = n / plan.rows[level];
    all += static_cast<size_t>(2 * (plan.rows[level] - 1) * m);
    n = m;
  }
  T* const table = source.take(all);
  if (table == nullptr) return nullptr;
  T* to = putTurns(source, plan.rows[0], plan.n / plan.rows[0], plan.n / plan.rows[0], table);
  n = plan.n / plan.rows[0];
  for (int level = 1; level + 1 < plan.levels; ++level) {
    const int64_t m = n / plan.rows[level];
    for (int64_t p = 0; p < m; ++p) {
      for (int64_t j = 1; j < plan.rows[level]; ++j) {
        const fft::Root<T> w = source.root(p * j, n);
        *to++ = w.re;
        *to++ = w.im;
      }
    }
    n = m;
  }
  putBeyond(to);
  return table;
}

// exp(-2 pi i p j / n) in pairs: for the rows j from 1 on, those of the columns p.
template <class T, class Source>
const T* makePairTurns(Source& source, int64_t rows, int64_t columns) {
  T* const table = source.take(static_cast<size_t>(2 * (rows - 1) * columns) + kBeyond<T>);
  if (table == nullptr) return nullptr;
  T* to = table;
  for (int64_t j = 1; j < rows; ++j) {
    for (int64_t p = 0; p < columns; ++p, to += 2) {
      const fft::Root<T> w = source.root(j * p, rows * columns);
      to[0] = w.re;
      to[1] = w.im;
    }
  }
  putBeyond(to);
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

// Of x->plan.
template <class T, class Source>
void makeMixed(Source& source, Mixed<T>* x) {
  const Plan& plan = x->plan;
  if (plan.n <= kLastShort) return;
  // A straight plan has none of these, but as many blocks of memory as any other: who is refused one is so in every module.
  x->numbers = makeAllNumbers<T>(source, plan);
  if (plan.levels > 1) {
    x->turns = isStraight<T>(plan) ? makePairTurns<T>(source, plan.rows[0], plan.rows[1])
                                   : makeAllTurns<T>(source, plan);
  }
  int stages = 0;
  for (int level = 0; level < plan.levels; ++level) stages += plan.stages[level];
  makeOdd(source, &x->odd, plan.radix, stages);
}

}  // namespace kvrs::dft

#endif
