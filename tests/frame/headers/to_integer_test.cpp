// SPDX-License-Identifier: MIT
#include "frame/to_integer.h"

#include <cfenv>
#include <cmath>

#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

// Numbers about integers and halves, about both ends of the range, far beyond it, and what is none.
template <class T, class F>
std::vector<F> values() {
  std::vector<F> all{0,        F(-0.0),   F(0.5),  F(-0.5),  F(1.5), F(-2.5),
                     INFINITY, -INFINITY, F(1e30), F(-1e30), NAN};
  for (T end : {std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()}) {
    const F x = static_cast<F>(end);
    for (F y : {x, x - F(0.5), x + F(0.5), x - 1, x + 1}) {
      for (F z : {y, std::nextafter(y, F(INFINITY)), std::nextafter(y, F(-INFINITY))}) all.push_back(z);
    }
  }
  Random random;
  for (int i = 0; i < 500; ++i) {
    all.push_back(static_cast<F>(std::ldexp(random.unit(), static_cast<int>(random.below(70)))));
  }
  return all;
}

// Not to be moved out of the rounding mode that is set.
template <bool truncate, class T>
[[gnu::noinline]] T integerOf(long double x) {
  asm volatile("");
  constexpr T lowest = std::numeric_limits<T>::lowest(), highest = std::numeric_limits<T>::max();
  if (std::isnan(x) || x <= static_cast<long double>(lowest)) return lowest;
  if (x >= static_cast<long double>(highest)) return highest;
  return static_cast<T>(truncate ? std::trunc(x) : std::rint(x));
}

template <bool truncate, class T, class F>
void check() {
  constexpr size_t N = kVectorBytes / std::max(sizeof(T), sizeof(F));
  const Lanes<T, N> d;
  const Lanes<F, N> df;
  const std::vector<F> all = values<T, F>();
  for (int mode : {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
    for (F x : all) {
      volatile F hidden = x;
      T got[N];
      std::fesetround(mode);
      const T want = integerOf<truncate, T>(hidden);
      hn::StoreU(toInteger<truncate>(d, hn::Set(df, hidden), std::numeric_limits<T>::lowest(),
                                     std::numeric_limits<T>::max()),
                 d, got);
      std::fesetround(FE_TONEAREST);
      for (T y : got) ASSERT_EQ(+want, +y) << x << ", mode " << mode;
    }
  }
}

template <class T, class F>
void checkBoth() {
  check<false, T, F>();
  check<true, T, F>();
}

TEST(ToInteger, SaturatesAndRounds) {
  checkBoth<int8_t, float>();
  checkBoth<uint8_t, float>();
  checkBoth<int16_t, float>();
  checkBoth<uint16_t, float>();
  checkBoth<int32_t, float>();
  checkBoth<int16_t, double>();
  checkBoth<int32_t, double>();
  if constexpr (kInt64Conversions) checkBoth<int64_t, double>();
}

TEST(ToInteger, TiesAwayFromZero) {
  const Lanes<double, kLanes<double>> d;
  for (double x : {0.0, 0.4, 0.5, 1.4, 1.5, 2.5, 1e9 + 0.5}) {
    for (double y : {x, -x}) {
      EXPECT_EQ(std::round(y), std::trunc(hn::GetLane(withHalf(hn::Set(d, y))))) << y;
      EXPECT_EQ(y + std::copysign(3.0, y), hn::GetLane(awayFromZero(hn::Set(d, y), 3.0))) << y;
    }
  }
}

TEST(ToInteger, Bounds) {
  const Lanes<float, kLanes<float>> d;
  for (float x : {-3.0f, -2.0f, 0.0f, 5.0f, 6.0f}) {
    EXPECT_EQ(std::fmin(std::fmax(x, -2), 5), hn::GetLane(bound(d, hn::Set(d, x), -2.0f, 5.0f)));
  }
  EXPECT_EQ(-2, hn::GetLane(bound(d, hn::Set(d, float{NAN}), -2.0f, 5.0f)));
}

}  // namespace
