// How a transform of any length is taken apart.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_DFT_PLAN_H
#define KVRS_TRANSFORMS_DFT_PLAN_H

#include <cstddef>
#include <cstdint>

#include "frame/simd.h"

namespace kvrs::dft {

// What the interface states of a length: which method it belongs to, and with it the work area that callers reserve.
enum class Method {
  kShort,   // up to 16 points
  kMixed,   // a product of small factors
  kDirect,  // the sum of the definition: short primes
  kChirp,   // a convolution
};

inline constexpr int kLastShort = 16;

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

// The plan of a product n of radices. The points are an array [strip][rest], and p is the place in a row:
//
//   for strips of neighbouring columns p: transforms over `strip` rows in a tile on the stack, in stages of the first
//   radices; turned by exp(-2 pi i p j / n); written transposed, so that the `strip` results of p lie together
//   then, over `rest` rows of `strip` neighbours each, stages of the other radices, from one area into the other
//
// Radices that have no kernel of their own are odd and up to 149.
struct MixedPlan {
  int n;
  int strip;              // product of the first stripCount radices
  int lanes;              // numbers side by side: at most `strip` and n / strip, or 1
  int stripCount, count;  // count == stripCount: the whole transform is one strip of one column
  int radix[24];

  // Two radices up to 16 for a transform in two passes without strips.
  constexpr bool isShort() const { return stripCount == 0; }
  // Up to kLastShort points a transform is one butterfly; that and a short one need no tables of odd radices.
  constexpr bool hasStages() const { return n > kLastShort && !isShort(); }
};

// Up to so many points a tile holds, in bytes of one of its two planes.
inline constexpr size_t kTileBytes = 8192;
template <class T>
inline constexpr int kTilePoints = static_cast<int>(kTileBytes / sizeof(T));

// The points of short transforms.
inline constexpr int kLastTwoPasses = 256;

// How the numbers between the two passes are transposed: in squares of half as many lanes; real and imaginary parts
// together, half a square each; in whole squares.
enum class Squares { small, shared, whole };

// Half a vector has to be one that can be transposed.
inline constexpr bool kHasSmallSquares = kVectorBytes > 16;

template <class T>
constexpr Squares shortSquares(int rows, int columns) {
  constexpr int kHalf = static_cast<int>(kLanes<T>) / 2;
  if (!kHasSmallSquares || rows > kHalf) return Squares::whole;
  return columns <= kHalf ? Squares::small : Squares::shared;
}

// The plan for lanes up to kLanes<T>; n has no prime factor above 149.
template <class T>
MixedPlan makeMixedPlan(int n);

// The plan of a transform in place that leaves its results in an order of its own. Level by level, from the outermost:
// the points are [size][rest] for each block of the level above; the columns are transformed in strips, turned, and left
// where they are. The last level has contiguous blocks.
struct OutOfOrderPlan {
  int n;
  int lanes;
  int levels;
  int size[24];
  int stages[24];  // radices of a level
  int radix[24];   // of all levels
};

template <class T>
OutOfOrderPlan makeOutOfOrderPlan(int n);

// Whether a radix has a kernel of its own.
constexpr bool hasKernel(int radix) {
  return radix <= 5 || radix == 7 || radix == 8 || radix == 9 || radix == 11 || radix == 13 || radix == 16;
}

}  // namespace kvrs::dft

#endif
