// SPDX-License-Identifier: MIT
#include "frame/powers_of_2.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace kvrs;

namespace {

template <size_t N>
void check() {
  if constexpr (kMaskRegisters) {
    const Lanes<double, N> d;
    // The last ones end among the subnormal numbers, halfway between two of them, and beyond the range.
    const double y[] = {1.5, -3, 0, 0x1.000000018p0, 1, -1}, n[] = {4, -2, 7, -1042, -1080, 1024};
    for (size_t i = 0; i < 6; ++i) {
      const double got = hn::GetLane(timesPowersOf2(hn::Set(d, y[i]), hn::Set(d, n[i])));
      EXPECT_EQ(std::scalbn(y[i], static_cast<int>(n[i])), got) << i;
    }
  }
}

TEST(PowersOf2, RoundedOnce) {
  check<2>();
  check<4>();
  check<8>();
}

}  // namespace
