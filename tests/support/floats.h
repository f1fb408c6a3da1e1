// Floating-point test data with special values in it, and the comparison that goes with them.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_FLOATS_H
#define KVRS_TESTS_SUPPORT_FLOATS_H

#include <cmath>
#include <limits>
#include <type_traits>

#include "tests/support/random.h"
#include "tests/support/sweep.h"

namespace kvrs::test {

// One in three a NaN, an infinity, a zero of either sign, a subnormal number or an extreme; the others spread
// over many orders of magnitude.
template <class T>
T anyFloat(Random& random) {
  using L = std::numeric_limits<T>;
  switch (random.below(30)) {
    case 0:
      return L::quiet_NaN();
    case 1:
      return L::infinity();
    case 2:
      return -L::infinity();
    case 3:
      return T(0);
    case 4:
      return -T(0);
    case 5:
      return L::denorm_min();
    case 6:
      return -L::min() / 2;
    case 7:
      return L::max();
    case 8:
      return L::lowest();
    case 9:
      return T(1);
    default:
      return std::ldexp(static_cast<T>(random.unit()), static_cast<int>(random.below(81)) - 40);
  }
}

// Any value of a real or complex floating-point element.
template <class T>
T anyElement(Random& random) {
  if constexpr (std::is_floating_point_v<T>) {
    return anyFloat<T>(random);
  } else {
    const auto re = anyFloat<decltype(T::re)>(random);
    return T{re, anyFloat<decltype(T::im)>(random)};
  }
}

// The same bits, or both NaN: which NaN comes out of two is no part of any contract.
template <class T>
bool sameFloat(T a, T b) {
  if constexpr (std::is_floating_point_v<T>) {
    return (std::isnan(a) && std::isnan(b)) || sameBits(a, b);
  } else {
    return sameFloat(a.re, b.re) && sameFloat(a.im, b.im);
  }
}

// The standard sweep over such data. Unless `options` say otherwise, results follow the caller's rounding mode.
inline SweepOptions followingRounding(SweepOptions options) {
  if (options.rounding == Rounding::byType) options.rounding = Rounding::followed;
  return options;
}
template <class D, class... S, class Call, class Oracle>
void sweepFloats(Call call, Oracle oracle, const SweepOptions& options = {}) {
  sweepMapWith<D, S...>(
      call, oracle, sameFloat<D>,
      [](Random& random, size_t, auto like) { return anyElement<decltype(like)>(random); },
      followingRounding(options));
}
template <class T, class... S, class Call, class Oracle>
void sweepFloatsInPlace(Call call, Oracle oracle, const SweepOptions& options = {}) {
  sweepInPlaceWith<T, S...>(
      call, oracle, sameFloat<T>,
      [](Random& random, size_t, auto like) { return anyElement<decltype(like)>(random); },
      followingRounding(options));
}

}  // namespace kvrs::test

#endif
