// What tests of convolutions and correlations share: signals, and arrays at the edge of a page.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_FILTERS_SLIDING_ORACLE_H
#define KVRS_TESTS_FILTERS_SLIDING_ORACLE_H

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "kvrs/types.h"
#include "tests/support/arena.h"
#include "tests/support/core.h"
#include "tests/support/random.h"

namespace kvrs::test {

// Sums in extended precision. With whole numbers below 2^10 and up to 2^20 of them, all are exact.
using Wide = std::complex<long double>;

template <class T>
Wide wide(T x) {
  if constexpr (std::is_arithmetic_v<T>) {
    return Wide(x, 0);
  } else {
    return Wide(x.re, x.im);
  }
}

template <class T>
T narrow([[maybe_unused]] long double re, [[maybe_unused]] long double im) {
  if constexpr (std::is_arithmetic_v<T>) {
    return static_cast<T>(re);
  } else {
    using Part = decltype(T{}.re);
    return {static_cast<Part>(re), static_cast<Part>(im)};
  }
}

template <class T>
constexpr long double epsilonOf() {
  if constexpr (std::is_same_v<T, Kvr64f> || std::is_same_v<T, Kvr64fc>) {
    return std::numeric_limits<double>::epsilon();
  } else {
    return std::numeric_limits<float>::epsilon();
  }
}

// Whole numbers from -most to most.
template <class T>
std::vector<T> wholeNumbers(Random& random, int len, int most) {
  std::vector<T> x(static_cast<size_t>(len));
  const auto draw = [&] {
    return static_cast<long double>(static_cast<int>(random.below(2 * static_cast<uint32_t>(most) + 1)) -
                                    most);
  };
  for (T& v : x) v = narrow<T>(draw(), draw());
  return x;
}

// Noise, of integers of full scale.
template <class T>
std::vector<T> noise(Random& random, int len) {
  std::vector<T> x(static_cast<size_t>(len));
  for (T& v : x) v = random.value<T>();
  return x;
}

// An array at the edge of a page.
template <class T>
class EdgeArray {
 public:
  EdgeArray(const std::vector<T>& values, Random& random) : EdgeArray(values.size(), random) {
    memcpy(static_cast<void*>(at_), values.data(), values.size() * sizeof(T));
  }
  EdgeArray(size_t count, Random& random)
      : arena_(count * sizeof(T) + 64), count_(count), at_(place(random)) {}

  operator T*() { return at_; }
  T operator[](size_t i) const { return get(at_, i); }
  bool intact() const { return arena_.intact(); }
  bool untouched() const { return arena_.untouched(); }
  bool holds(const std::vector<T>& values) const {
    return memcmp(static_cast<const void*>(at_), values.data(), values.size() * sizeof(T)) == 0;
  }
  std::vector<T> values() const {
    std::vector<T> all(count_);
    memcpy(static_cast<void*>(all.data()), at_, count_ * sizeof(T));
    return all;
  }

 private:
  T* place(Random& random) {
    const size_t offset = random.below(2) ? 0 : random.below(64);
    return arena_.place<T>(count_, random.below(2) ? Side::front : Side::back, offset);
  }

  Arena arena_;
  size_t count_;
  T* at_;
};

// A 16-bit result of an exact sum: within half a unit of sum * 2^(-scaleFactor) and an error of the sum, saturated.
inline bool isRounded(Kvr16s got, long double sum, int scaleFactor, long double error) {
  const long double factor = std::ldexp(1.0L, -scaleFactor), want = sum * factor,
                    slack = 0.5L + error * factor;
  const auto saturated = [](long double x) { return std::min(32767.0L, std::max(-32768.0L, x)); };
  return got >= saturated(want - slack) && got <= saturated(want + slack);
}

}  // namespace kvrs::test

#endif
