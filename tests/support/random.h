// Test data: reproducible, with the extremes of each type among it.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_RANDOM_H
#define KVRS_TESTS_SUPPORT_RANDOM_H

#include <cstdint>
#include <limits>
#include <type_traits>

#include "kvrs/types.h"

namespace kvrs::test {

// SplitMix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators, 2014).
class Random {
 public:
  explicit Random(uint64_t seed = 1) : state_(seed) {}

  uint64_t bits() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15u);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }
  // In [0, n).
  uint32_t below(uint32_t n) { return static_cast<uint32_t>((bits() >> 32) * n >> 32); }
  // In [-1, 1).
  double unit() { return static_cast<double>(static_cast<int64_t>(bits())) * 0x1p-63; }

  // Any value of T: integers over all their bits, one in four an extreme, 0, 1 or -1; floats in [-1, 1).
  template <class T>
  T value() {
    if constexpr (std::is_floating_point_v<T>) {
      return static_cast<T>(unit());
    } else if constexpr (std::is_integral_v<T>) {
      switch (below(20)) {
        case 0:
          return std::numeric_limits<T>::max();
        case 1:
          return std::numeric_limits<T>::min();
        case 2:
          return T{0};
        case 3:
          return T{1};
        case 4:
          return static_cast<T>(-1);
        default:
          return static_cast<T>(bits());
      }
    } else {
      T complex;
      complex.re = value<decltype(complex.re)>();
      complex.im = value<decltype(complex.im)>();
      return complex;
    }
  }

 private:
  uint64_t state_;
};

}  // namespace kvrs::test

#endif
