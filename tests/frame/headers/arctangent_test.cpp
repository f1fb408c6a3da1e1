// SPDX-License-Identifier: MIT
#include "frame/arctangent.h"

#include <cmath>

#include "tests/support/ulps.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

template <class T>
class ArctangentTest : public testing::Test {};
using Floats = testing::Types<float, double>;
TYPED_TEST_SUITE(ArctangentTest, Floats);

template <class T>
T angle(T y, T x) {
  const Lanes<T, kLanes<T>> d;
  return hn::GetLane(arctangent2(d, hn::Set(d, y), hn::Set(d, x)));
}

TYPED_TEST(ArctangentTest, AllQuadrants) {
  using T = TypeParam;
  Random random;
  for (int i = 0; i < 20000; ++i) {
    const int range = static_cast<int>(random.below(30)) + 1;
    const T y = ofExponents<T>(random, -range, range), x = ofExponents<T>(random, -range, range);
    const long double want = std::atan2(static_cast<long double>(y), static_cast<long double>(x));
    ASSERT_LT(ulps(angle(y, x), want), 2) << y << ", " << x;
  }
}

TYPED_TEST(ArctangentTest, SpecialValues) {
  using T = TypeParam;
  const T pi = static_cast<T>(3.14159265358979323846L), infinity = std::numeric_limits<T>::infinity();
  for (T sign : {T{1}, T{-1}}) {
    EXPECT_TRUE(sameBits(std::copysign(T{0}, sign), angle(sign * 0, T{5})));
    EXPECT_TRUE(sameBits(std::copysign(T{0}, sign), angle(sign * 0, T{0})));
    EXPECT_TRUE(sameBits(std::copysign(T{0}, sign), angle(sign * 0, -T{0}))) << "a zero counts as positive";
    EXPECT_EQ(sign * pi, angle(sign * 0, T{-5}));
    EXPECT_EQ(sign * pi / 2, angle(sign, T{0}));
    EXPECT_EQ(sign * pi / 2, angle(sign * infinity, T{1}));
    EXPECT_EQ(sign * pi / 4, angle(sign * infinity, infinity));
    EXPECT_EQ(sign * 0, angle(sign, infinity));
  }
  EXPECT_TRUE(std::isnan(angle(T(NAN), T{1})));
  EXPECT_TRUE(std::isnan(angle(T{1}, T(NAN))));
}

template <class T>
T ofNumber(T x) {
  const Lanes<T, kLanes<T>> d;
  return hn::GetLane(arctangent(d, hn::Set(d, x)));
}

// About the ends of the ranges that are reduced in different ways, and elsewhere.
TYPED_TEST(ArctangentTest, OfNumbers) {
  using T = TypeParam;
  Random random;
  for (int i = 0; i < 20000; ++i) {
    const int range = i % 2 == 0 ? 2 : 40;
    const T x = ofExponents<T>(random, -range, range);
    ASSERT_LT(ulps(ofNumber(x), std::atan(static_cast<long double>(x))), sizeof(T) == 4 ? 1 : 1.5L) << x;
  }
  const T infinity = std::numeric_limits<T>::infinity();
  for (T end : {T(0.75), T{1}, T{2}, T{0}, infinity}) {
    for (T x : {end, std::nextafter(end, infinity), std::nextafter(end, T{0})}) {
      ASSERT_LT(ulps(ofNumber(x), std::atan(static_cast<long double>(x))), 1) << x;
      EXPECT_TRUE(sameBits(-ofNumber(x), ofNumber(-x)));
    }
  }
  EXPECT_TRUE(std::isnan(ofNumber(T(NAN))));
}

}  // namespace
