// How a transform of any length is taken apart.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_DFT_PLAN_H
#define KVRS_TRANSFORMS_DFT_PLAN_H

#include <cstddef>
#include <cstdint>

#include "frame/simd.h"
#include "transforms/fft_plan.h"

namespace kvrs::dft {

// What the interface states of a length: which method it belongs to, and with it the work area that callers reserve.
enum class Method {
  kShort,   // up to 16 points
  kMixed,   // a product of small factors
  kDirect,  // the sum of the definition: short primes
  kChirp,   // a convolution
};

inline constexpr int kLastShort = 16;

// Whether a radix has a kernel of its own: in stages, of 16 points only where that many find room in registers.
constexpr bool hasKernel(int radix) {
  return radix <= kLastShort;
}
inline constexpr int kLastRadix = fft::kMaxBits >= 4 ? 16 : 15;

struct Factors {
  int count;  // 0: none that will do
  int factor[32];
  int extra;  // numbers of scratch space that the largest odd factor above 13 is entitled to
};

// The factors of n > 1, which is no power of two, as the interface deals them out: in the order of in-order transforms,
// or as they are found.
Factors factorsOf(int n, bool arranged = true);

// The least length of a convolution that a chirp transform of n points is stated to use.
int64_t chirpLength(int64_t n);

// The plan of a product n: a few levels, each of as many rows as a tile holds, each a product of radices, its stages.
//
//   first level   the points are [rows][m], p the place in a row: strips of neighbouring columns p are transformed in a
//                 tile, turned by exp(-2 pi i p j / n), and written transposed, so that the results j of p lie together
//   every other   the points are [rows][m][side], side the product of the levels before: strips of the side are transformed
//                 and turned likewise, and written as [m][rows][side]; the last level has m = 1, and ends in the caller's
//                 array
//
// Radices without a kernel of their own are odd and up to 149. One level: a single column.
//
// A product of two radices that have kernels runs without tiles, on vectors of pairs (isStraight): the rows of the first
// level are transformed in memory, the results turned, transposed in registers and put in rows of the last one.
inline constexpr int kMostLevels = 8;
struct Plan {
  int n;
  int levels;
  int rows[kMostLevels];
  int stages[kMostLevels];
  int radix[24];  // of all levels
};

// A tile is this many rows of so many numbers. Every length has a divisor above 15 and up to it.
inline constexpr int kMostRows = 169;
template <class T>
inline constexpr int kTileWidth = static_cast<int>(64 / sizeof(T));

// Between the two levels of so many points, rows may be filled up to whole vectors.
template <class T>
inline constexpr int kMostPadded = static_cast<int>(8192 / sizeof(T));

template <class T>
constexpr int wholeVectors(int count) {
  constexpr int kAll = static_cast<int>(kLanes<T>);
  return (count + kAll - 1) / kAll * kAll;
}
template <class T>
constexpr bool isPadded(const Plan& plan) {
  const int pitch = wholeVectors<T>(plan.rows[0]);
  return plan.levels == 2 && pitch != plan.rows[0] && pitch * plan.rows[1] <= kMostPadded<T>;
}
// So few of them that real and imaginary parts share a vector.
template <class T>
constexpr bool shareVectors(int rows) {
  return kVectorBytes > 16 && 2 * rows <= static_cast<int>(kLanes<T>);
}

// The complex numbers in a vector of pairs.
template <class T>
inline constexpr int kPairsOfVector = static_cast<int>(kLanes<T> / 2);

// Without masks a row has to fill a vector.
template <class T>
constexpr bool isStraight(const Plan& plan) {
  const auto fits = [](int radix) {
    return hasKernel(radix) && (kMaskRegisters || radix >= kPairsOfVector<T>);
  };
  return plan.levels == 2 && plan.stages[0] == 1 && plan.stages[1] == 1 && fits(plan.rows[0]) &&
         fits(plan.rows[1]);
}

// n is no prime and has no prime factor above 149.
template <class T>
Plan makePlan(int n);

// The plan of a transform in place that leaves its results in an order of its own. Level by level, from the outermost:
// the points are [rows][rest] for each block of the level above; the columns are transformed in strips, turned, and left
// where they are. The last level has contiguous blocks of a vector or more.
template <class T>
Plan makeOutOfOrderPlan(int n);

// Numbers of the table between the stages of a level.
inline size_t numbersOf(const int* radix, int count, size_t rows) {
  size_t all = 0;
  for (int i = 0; i < count; ++i) {
    const size_t r = static_cast<size_t>(radix[i]), m = i + 1 < count ? rows / r : 1;
    all += 2 * (m - 1) * (r - 1);
    rows = m;
  }
  return all;
}

}  // namespace kvrs::dft

#endif
