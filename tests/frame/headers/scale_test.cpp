// SPDX-License-Identifier: MIT
#include "frame/scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "tests/support/random.h"

using namespace kvrs;

namespace {

// r * 2^(-scaleFactor), to nearest with ties to even, saturated: in extended precision, which holds every result of 64
// bits, scales it by powers of two without an error and rounds it as the definition does.
template <class D>
D scaled(int64_t r, int scaleFactor) {
  static_assert(std::numeric_limits<long double>::digits >= 64);
  const long double lowest = std::numeric_limits<D>::lowest(), highest = std::numeric_limits<D>::max();
  const int power = -std::clamp(scaleFactor, -1000, 1000);
  return static_cast<D>(
      std::clamp(std::nearbyint(std::ldexp(static_cast<long double>(r), power)), lowest, highest));
}

std::vector<int> scaleFactors() {
  std::vector<int> factors;
  for (int s = -70; s <= 70; ++s) factors.push_back(s);
  for (int s : {-1000, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
    factors.push_back(s);
  return factors;
}

std::vector<int64_t> results() {
  std::vector<int64_t> values;
  for (int64_t r = -70; r <= 70; ++r) values.push_back(r);
  for (int bit = 6; bit <= 62; ++bit) {
    for (int64_t step : {-3, -2, -1, 0, 1, 2, 3}) {
      const int64_t value = (int64_t{1} << bit) + (bit == 62 ? std::min<int64_t>(step, 0) : step);
      values.push_back(value);
      values.push_back(-value);
      const int64_t oneAndAHalf = (int64_t{1} << bit) / 2 * 3 + step;
      if (bit < 62) values.insert(values.end(), {oneAndAHalf, -oneAndAHalf});
    }
  }
  test::Random random;
  for (int i = 0; i < 2000; ++i)
    values.push_back(static_cast<int64_t>(random.bits()) >> (1 + random.below(62)));
  return values;
}

template <class D>
void checkScaleTo() {
  for (int factor : scaleFactors()) {
    for (int64_t r : results())
      ASSERT_EQ(scaled<D>(r, factor), scaleTo<D>(r, factor)) << r << " by " << factor;
  }
}

TEST(Scale, ScalarRule) {
  checkScaleTo<uint8_t>();
  checkScaleTo<int8_t>();
  checkScaleTo<uint16_t>();
  checkScaleTo<int16_t>();
  checkScaleTo<int32_t>();
}

TEST(Scale, TiesGoToEven) {
  EXPECT_EQ(2, scaleTo<int16_t>(3, 1));
  EXPECT_EQ(0, scaleTo<int16_t>(1, 1));
  EXPECT_EQ(0, scaleTo<int16_t>(-1, 1));
  EXPECT_EQ(-2, scaleTo<int16_t>(-3, 1));
}

TEST(Scale, ShiftRightEven) {
  for (int shift = 1; shift < 31; ++shift) {
    const int64_t bound = int64_t{std::numeric_limits<int32_t>::max()} - (int64_t{1} << (shift - 1));
    for (int64_t r : results()) {
      if (r > bound || r < -bound) continue;
      ASSERT_EQ(scaled<int32_t>(r, shift), shiftRightEven(static_cast<int32_t>(r), shift))
          << r << " by " << shift;
    }
  }
}

template <class T>
void checkVectorShift() {
  constexpr int bits = 8 * sizeof(T);
  const hn::ScalableTag<T> d;
  const size_t lanes = hn::Lanes(d);
  for (int shift = 1; shift < bits - 1; ++shift) {
    const int64_t bound = int64_t{std::numeric_limits<T>::max()} - (int64_t{1} << (shift - 1));
    for (int64_t r : results()) {
      if (r > bound || r < -bound) continue;
      T got[kLanes<T>];
      hn::StoreU(shiftRightEvenWithRoom(d, hn::Set(d, static_cast<T>(r)), shift), d, got);
      for (size_t i = 0; i < lanes; ++i) ASSERT_EQ(scaled<T>(r, shift), got[i]) << r << " by " << shift;
    }
  }
}

TEST(Scale, ShiftRightEvenWithRoom) {
  checkVectorShift<int16_t>();
  checkVectorShift<int32_t>();
}

// As halving and doubling 1 has it.
template <class F>
void checkPowersOfTwo() {
  using L = std::numeric_limits<F>;
  for (int scaleFactor = -1200; scaleFactor <= 1200; ++scaleFactor) {
    const F want = static_cast<F>(std::ldexp(1.0L, -scaleFactor));
    EXPECT_EQ(want, scaleOfAny<F>(scaleFactor)) << scaleFactor;
    if (want >= L::min() && want <= L::max()) {
      EXPECT_EQ(want, powerOfTwo<F>(-scaleFactor)) << scaleFactor;
    }
  }
  EXPECT_EQ(0, scaleOfAny<F>(std::numeric_limits<int>::max()));
  EXPECT_EQ(L::infinity(), scaleOfAny<F>(std::numeric_limits<int>::min()));
}

TEST(Scale, PowersOfTwo) {
  checkPowersOfTwo<float>();
  checkPowersOfTwo<double>();
}

TEST(Scale, Kernels) {
  constexpr ScaleBounds bounds = {16, -16};
  EXPECT_EQ(ScaleKernel::none, scaleKernel(0, bounds));
  EXPECT_EQ(ScaleKernel::one, scaleKernel(1, bounds));
  EXPECT_EQ(ScaleKernel::shiftRight, scaleKernel(2, bounds));
  EXPECT_EQ(ScaleKernel::shiftRight, scaleKernel(16, bounds));
  EXPECT_EQ(ScaleKernel::zero, scaleKernel(17, bounds));
  EXPECT_EQ(ScaleKernel::zero, scaleKernel(std::numeric_limits<int>::max(), bounds));
  EXPECT_EQ(ScaleKernel::shiftLeft, scaleKernel(-1, bounds));
  EXPECT_EQ(ScaleKernel::shiftLeft, scaleKernel(-15, bounds));
  EXPECT_EQ(ScaleKernel::bySign, scaleKernel(-16, bounds));
  EXPECT_EQ(ScaleKernel::bySign, scaleKernel(std::numeric_limits<int>::min(), bounds));
}

}  // namespace
