// SPDX-License-Identifier: MIT
#include "frame/shift.h"

#include <gtest/gtest.h>

#include "frame/saturating.h"
#include "tests/support/random.h"

namespace kvrs {
namespace {

using test::Random;

template <class T>
class ShiftTest : public testing::Test {};
using AllLanes = testing::Types<uint8_t, int8_t, uint16_t, int16_t, uint32_t, int32_t, uint64_t, int64_t>;
TYPED_TEST_SUITE(ShiftTest, AllLanes);

TYPED_TEST(ShiftTest, EveryCount) {
  using T = TypeParam;
  using Unsigned = std::make_unsigned_t<T>;
  constexpr int width = 8 * sizeof(T);
  Random random(1);
  const Lanes<T, kLanes<T>> d;
  for (int count = 0; count <= width; ++count) {
    alignas(64) T v[kLanes<T>], left[kLanes<T>], right[kLanes<T>];
    for (T& value : v) value = random.value<T>();
    hn::Store(shiftLeftBy(d, hn::Load(d, v), count), d, left);
    hn::Store(shiftRightBy(d, hn::Load(d, v), count), d, right);
    for (size_t i = 0; i < kLanes<T>; ++i) {
      const bool whole = count == width;
      const T up = whole ? T{0} : static_cast<T>(static_cast<Unsigned>(v[i]) << count);
      ASSERT_EQ(+up, +left[i]) << +v[i] << " << " << count;
      if (whole && std::is_signed_v<T>) continue;
      ASSERT_EQ(+(whole ? T{0} : static_cast<T>(v[i] >> count)), +right[i]) << +v[i] << " >> " << count;
    }
  }
}

TEST(SaturatedToHalf, LanesInOrder) {
  Random random(2);
  const Lanes<int32_t, kLanes<int32_t>> d;
  const Lanes<int16_t, kLanes<int16_t>> dh;
  for (int turn = 0; turn < 100; ++turn) {
    alignas(64) int32_t v[2 * kLanes<int32_t>];
    alignas(64) int16_t half[kLanes<int16_t>];
    for (int32_t& value : v) value = random.value<int32_t>() >> random.below(24);
    hn::Store(saturatedToHalf(dh, hn::Load(d, v), hn::Load(d, v + kLanes<int32_t>)), dh, half);
    for (size_t i = 0; i < kLanes<int16_t>; ++i) {
      ASSERT_EQ(v[i] < -32768 ? -32768 : v[i] > 32767 ? 32767 : v[i], half[i]);
    }
  }
}

}  // namespace
}  // namespace kvrs
