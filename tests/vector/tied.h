// Rounding with halves away from zero, by an oracle that knows what it cannot know: where the exact value is closer to
// a half than the stated error of the library's arithmetic, both neighbours are right.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_VECTOR_TIED_H
#define KVRS_TESTS_VECTOR_TIED_H

#include <cmath>
#include <limits>

namespace kvrs::test {

template <class T>
struct Tied {
  T value;
  T other = value;
};

template <class T>
bool matches(Tied<T> want, T got) {
  return got == want.value || got == want.other;
}

template <class T>
T saturatedTo(long double x) {
  using L = std::numeric_limits<T>;
  return x >= L::max() ? L::max() : x <= L::lowest() ? L::lowest() : static_cast<T>(x);
}

// `error` is relative to `scale`, which is |exact| if it is not given.
template <class T>
Tied<T> tiedTo(long double exact, long double error, long double scale = -1) {
  const long double magnitude = std::fabs(exact), slack = error * (scale < 0 ? magnitude : scale);
  const auto rounded = [&](long double x) {
    return saturatedTo<T>(std::copysign(std::floor(x + 0.5L), exact));
  };
  return {rounded(magnitude),
          rounded(std::floor(magnitude + 0.5L) == std::floor(magnitude + slack + 0.5L) ? magnitude - slack
                                                                                       : magnitude + slack)};
}

}  // namespace kvrs::test

#endif
