// SPDX-License-Identifier: MIT
#include "kvrs/arctan.h"

#include <cmath>
#include <vector>

#include "tests/support/rounding.h"
#include "tests/support/ulps.h"

using namespace kvrs::test;

namespace {

template <class T>
using Call = KvrStatus (*)(const T*, T*, int) noexcept;
template <class T>
using CallI = KvrStatus (*)(T*, int) noexcept;

template <class T>
void sweepBoth(Call<T> f, CallI<T> inPlace) {
  const auto oracle = [](T x) { return static_cast<T>(std::atan(static_cast<long double>(x))); };
  const auto same = [](T got, T want) {
    return std::isnan(want) ? std::isnan(got) : withinUlps(got, want, 1);
  };
  const auto draw = [](Random& random, size_t, T) {
    return random.below(2) != 0 ? anyFloat<T>(random) : ofExponents<T>(random, -2, 3);
  };
  sweepMapWith<T, T>(f, oracle, same, draw, SweepOptions{});
  sweepInPlaceWith<T>(inPlace, oracle, same, draw, SweepOptions{});
}

TEST(Arctan, Sweep) {
  sweepBoth<Kvr32f>(kvrsArctan_32f, kvrsArctan_32f_I);
  sweepBoth<Kvr64f>(kvrsArctan_64f, kvrsArctan_64f_I);
}

template <class T>
long double worstUlps(Call<T> f, const std::vector<T>& x) {
  std::vector<T> got(x.size());
  EXPECT_EQ(kvrStatusOk, f(x.data(), got.data(), static_cast<int>(x.size())));
  long double worst = 0;
  for (size_t i = 0; i < x.size(); ++i) {
    worst = std::max(worst, ulps(got[i], std::atan(static_cast<long double>(x[i]))));
    EXPECT_EQ(std::signbit(x[i]), std::signbit(got[i])) << x[i];
  }
  return worst;
}

// One in 5,003 of all positive and negative numbers.
TEST(Arctan, AccuracyOverAllSingles) {
  std::vector<Kvr32f> x;
  for (uint32_t bits = 0; bits <= 0x7F800000; bits += 5003) {
    for (uint32_t sign : {0u, 0x80000000u}) {
      const uint32_t all = bits | sign;
      Kvr32f value;
      memcpy(&value, &all, sizeof value);
      x.push_back(value);
    }
  }
  EXPECT_LT(worstUlps(kvrsArctan_32f, x), 1);
}

TEST(Arctan, AccuracyOfDoubles) {
  Random random(7);
  std::vector<Kvr64f> x;
  for (int i = 0; i < 100000; ++i) x.push_back(ofExponents<Kvr64f>(random, -3, 3));
  for (int i = 0; i < 20000; ++i) x.push_back(ofExponents<Kvr64f>(random, -1022, 1023));
  EXPECT_LT(worstUlps(kvrsArctan_64f, x), 1.5L);
}

TEST(Arctan, SpecialValues) {
  const Kvr64f inf = std::numeric_limits<Kvr64f>::infinity(), halfPi = 1.5707963267948966;
  const Kvr64f src[] = {0, -0.0, inf, -inf, 1, -1, NAN, 5e-324, -1e300};
  const Kvr64f want[] = {0, -0.0, halfPi, -halfPi, halfPi / 2, -halfPi / 2, NAN, 5e-324, -halfPi};
  Kvr64f got[9];
  Kvr32f src32[9], got32[9];
  for (int i = 0; i < 9; ++i) src32[i] = static_cast<Kvr32f>(src[i]);
  ASSERT_EQ(kvrStatusOk, kvrsArctan_64f(src, got, 9));
  ASSERT_EQ(kvrStatusOk, kvrsArctan_32f(src32, got32, 9));
  for (int i = 0; i < 9; ++i) {
    EXPECT_TRUE(sameFloat(want[i], got[i])) << src[i] << ": " << got[i];
    EXPECT_TRUE(sameFloat(static_cast<Kvr32f>(want[i]), got32[i])) << src32[i] << ": " << got32[i];
  }
}

TEST(Arctan, IgnoresTheRoundingMode) {
  Random random(8);
  std::vector<Kvr32f> src(500), want(500), got(500);
  for (Kvr32f& x : src) x = ofExponents<Kvr32f>(random, -3, 4);
  kvrsArctan_32f(src.data(), want.data(), 500);
  for (int mode : kCallerModes) {
    callWithRounding(mode, [&] { return kvrsArctan_32f(src.data(), got.data(), 500); });
    for (size_t i = 0; i < src.size(); ++i) ASSERT_TRUE(sameBits(want[i], got[i])) << src[i];
  }
}

}  // namespace
