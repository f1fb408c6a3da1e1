// SPDX-License-Identifier: MIT
#include "frame/saturate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace kvrs;

namespace {

// Holds every 64-bit integer, signed or unsigned; the 32-bit build has no 128-bit one.
using Wide = long double;
static_assert(std::numeric_limits<Wide>::digits >= 64);

template <class S>
std::vector<S> interesting() {
  std::vector<S> values;
  const Wide lowest = std::numeric_limits<S>::lowest(), highest = std::numeric_limits<S>::max();
  for (int bit : {0, 1, 7, 8, 15, 16, 31, 32, 63}) {
    for (int step : {-1, 0, 1}) {
      for (int sign : {-1, 1}) {
        const Wide value = sign * std::ldexp(Wide{1}, bit) + step;
        if (value >= lowest && value <= highest) values.push_back(static_cast<S>(value));
      }
    }
  }
  values.push_back(0);
  values.push_back(std::numeric_limits<S>::lowest());
  values.push_back(std::numeric_limits<S>::max());
  return values;
}

template <class D, class S>
void check() {
  const Wide lowest = std::numeric_limits<D>::lowest(), highest = std::numeric_limits<D>::max();
  for (S value : interesting<S>()) {
    const D want = static_cast<D>(std::clamp<Wide>(value, lowest, highest));
    EXPECT_EQ(want, (saturate<D, S>(value))) << +value;
    const D bySign = value > 0   ? std::numeric_limits<D>::max()
                     : value < 0 ? std::numeric_limits<D>::lowest()
                                 : D{0};
    EXPECT_EQ(bySign, (saturateBySign<D, S>(value))) << +value;
  }
}

// From every type of the same width or wider.
template <class D>
void checkFromWider() {
  check<D, int64_t>();
  check<D, uint64_t>();
  if constexpr (sizeof(D) <= 4) {
    check<D, int32_t>();
    check<D, uint32_t>();
  }
  if constexpr (sizeof(D) <= 2) {
    check<D, int16_t>();
    check<D, uint16_t>();
  }
}

TEST(Saturate, EveryDestination) {
  checkFromWider<uint8_t>();
  checkFromWider<int8_t>();
  checkFromWider<uint16_t>();
  checkFromWider<int16_t>();
  checkFromWider<uint32_t>();
  checkFromWider<int32_t>();
  checkFromWider<int64_t>();
}

}  // namespace
