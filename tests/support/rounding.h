// The rounding modes that a caller may have set, and exact rounding for oracles.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_ROUNDING_H
#define KVRS_TESTS_SUPPORT_ROUNDING_H

#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cfenv>
#include <cmath>
#include <limits>

#include "kvrs/types.h"

namespace kvrs::test {

inline constexpr int kCallerModes[] = {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO};

// Calls a function with a rounding mode of the caller's and sees that it is still set afterwards, in both units.
template <class Call>
KvrStatus callWithRounding(int mode, Call call) {
  const int before = std::fegetround();
  std::fesetround(mode);
  const unsigned vectorUnit = _mm_getcsr() & ~0x3Fu;  // without the exception flags
  const KvrStatus status = call();
  const int after = std::fegetround();
  const unsigned vectorUnitAfter = _mm_getcsr() & ~0x3Fu;
  std::fesetround(before);
  EXPECT_EQ(mode, after) << "rounding mode changed";
  EXPECT_EQ(vectorUnit, vectorUnitAfter) << "control word changed";
  return status;
}

// To an integer in one of the library's modes, for |y| < 2^62.
inline long double roundedTo(long double y, KvrRoundMode mode) {
  const long double floor = std::floor(y), rest = y - floor;
  const bool odd = std::fmod(floor, 2.0L) != 0;
  switch (mode) {
    case kvrRoundZero:
      return y < 0 && rest != 0 ? floor + 1 : floor;
    case kvrRoundNear:
      return rest > 0.5L || (rest == 0.5L && odd) ? floor + 1 : floor;
    default:
      return rest > 0.5L || (rest == 0.5L && y > 0) ? floor + 1 : floor;
  }
}

// Rounded and saturated to the range of D's values.
template <class T>
T saturatedTo(long double y, KvrRoundMode mode, T lowest, T highest) {
  if (std::isnan(y)) return lowest;
  if (y >= static_cast<long double>(highest)) return highest;
  if (y <= static_cast<long double>(lowest)) return lowest;
  return static_cast<T>(roundedTo(y, mode));
}

}  // namespace kvrs::test

#endif
