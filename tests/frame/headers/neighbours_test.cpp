// SPDX-License-Identifier: MIT
#include "frame/neighbours.h"

#include <gtest/gtest.h>

using namespace kvrs;

namespace {

template <class T>
class NeighboursTest : public testing::Test {};
using AllLanes = testing::Types<uint8_t, int16_t, int32_t, float, int64_t, double>;
TYPED_TEST_SUITE(NeighboursTest, AllLanes);

template <class T, size_t N>
void check() {
  const Lanes<T, N> d;
  T row[2 * N], got[N];
  for (size_t i = 0; i < 2 * N; ++i) row[i] = static_cast<T>(i + 1);
  const auto first = hn::LoadU(d, row), second = hn::LoadU(d, row + N);
  hn::StoreU(lanesBehind(d, first, second), d, got);
  for (size_t i = 0; i < N; ++i) EXPECT_EQ(row[i + 1], got[i]) << N << " lanes, " << i;
  hn::StoreU(lanesBefore(d, second, first), d, got);
  for (size_t i = 0; i < N; ++i) EXPECT_EQ(row[N + i - 1], got[i]) << N << " lanes, " << i;
}

TYPED_TEST(NeighboursTest, MovedByOneLane) {
  using T = TypeParam;
  check<T, 16 / sizeof(T)>();
  if constexpr (kVectorBytes >= 32) check<T, 32 / sizeof(T)>();
  check<T, kLanes<T>>();
}

}  // namespace
