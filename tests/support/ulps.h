// Distances in units in the last place.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_ULPS_H
#define KVRS_TESTS_SUPPORT_ULPS_H

#include <cmath>
#include <limits>

#include "tests/support/floats.h"

namespace kvrs::test {

// |got - want| in units of T at `want`. Two NaN or equal infinities are 0 apart, and infinitely far from all else.
// Overflow counts as it rounds: what lies above the largest number by half a unit or more is infinity.
template <class T>
long double ulps(T got, long double want) {
  using L = std::numeric_limits<T>;
  if (std::isnan(want)) return std::isnan(got) ? 0 : INFINITY;
  if (std::isinf(static_cast<T>(want)) || std::isinf(got) || std::isnan(got)) {
    return static_cast<T>(want) == got ? 0 : INFINITY;
  }
  int exponent;
  std::frexp(want, &exponent);
  if (want == 0 || exponent < L::min_exponent) exponent = L::min_exponent;
  return std::fabs(static_cast<long double>(got) - want) / std::ldexp(1.0L, exponent - L::digits);
}

// The same for what an oracle has already rounded to T, and zeros with their signs.
template <class T>
bool withinUlps(T got, T want, int bound) {
  if constexpr (std::is_floating_point_v<T>) {
    if (want == 0) return sameBits(got, want);
    return ulps(got, static_cast<long double>(want)) <= bound;
  } else {
    return withinUlps(got.re, want.re, bound) && withinUlps(got.im, want.im, bound);
  }
}

// Both signs, all magnitudes from 2^lowest up to below 2^(highest + 1), evenly over their exponents.
template <class T>
T ofExponents(Random& random, int lowest, int highest) {
  const int exponent = lowest + static_cast<int>(random.below(static_cast<uint32_t>(highest - lowest + 1)));
  const T value = static_cast<T>(std::ldexp(1 + std::fabs(random.unit()), exponent));
  return random.below(2) != 0 ? value : -value;
}

}  // namespace kvrs::test

#endif
