// From a floating-point result to a scaled integer.
// SPDX-License-Identifier: MIT
#ifndef KVRS_STATS_SCALED_RESULT_H
#define KVRS_STATS_SCALED_RESULT_H

#include <limits>

#include "frame/scale.h"

namespace kvrs {

// x * 2^(-scaleFactor) for any scale factor. An x that is 0, or between 2^-100 and 2^100, becomes what it is after all the
// halvings or doublings, except where that is far outside or far below every integer; there it stays so.
KVRS_INLINE double scaledBy(double x, int scaleFactor) {
  const int bounded = scaleFactor < -800 ? -800 : scaleFactor > 800 ? 800 : scaleFactor;
  return x * powerOfTwo<double>(-bounded);
}

// To the nearest integer, ties to even, in every rounding mode, saturated. NaN becomes the lowest.
template <class D>
KVRS_INLINE D nearestInteger(double x) {
  constexpr D lowest = std::numeric_limits<D>::lowest(), highest = std::numeric_limits<D>::max();
  if (!(x > lowest)) return lowest;
  if (x >= highest) return highest;
  const int64_t truncated = static_cast<int64_t>(x);
  const double rest = x - static_cast<double>(truncated);  // exact
  const bool odd = (truncated & 1) != 0;
  if (rest > 0.5 || (rest == 0.5 && odd)) return static_cast<D>(truncated + 1);
  if (rest < -0.5 || (rest == -0.5 && odd)) return static_cast<D>(truncated - 1);
  return static_cast<D>(truncated);
}

}  // namespace kvrs

#endif
