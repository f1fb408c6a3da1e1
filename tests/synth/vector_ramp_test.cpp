// SPDX-License-Identifier: MIT
#include "kvrs/test_vectors.h"

#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

#include "tests/support/rounding.h"
#include "tests/synth/generated.h"

using namespace kvrs::test;

namespace {

// v to nearest, halves away from zero, saturated; exact in extended precision.
template <class T>
T roundedAway(long double v) {
  using L = std::numeric_limits<T>;
  const long double r = v > 0 ? std::floor(v + 0.5L) : std::ceil(v - 0.5L);
  return r >= static_cast<long double>(L::max())      ? L::max()
         : r <= static_cast<long double>(L::lowest()) ? L::lowest()
                                                      : static_cast<T>(r);
}

template <class T>
std::vector<T> ramp(int len, float offset, float slope) {
  std::vector<T> samples;
  for (int n = 0; n < len; ++n) {
    const float product = static_cast<float>(n) * slope;
    const float v = product + offset;
    if constexpr (std::is_floating_point_v<T>) {
      samples.push_back(v);
    } else {
      samples.push_back(roundedAway<T>(static_cast<long double>(v)));
    }
  }
  return samples;
}

template <class T, class F>
using Line = KvrStatus (*)(T*, int, F, F) noexcept;

struct Case {
  double offset, slope;
};

template <class T>
void checkRamp(Line<T, Kvr32f> call) {
  const double highest = static_cast<double>(std::numeric_limits<T>::max());
  const double range = std::is_floating_point_v<T> ? 1000 : highest;
  for (const Case& c : {Case{0, 1},
                        {-3.5, 0.5},
                        {range, -range / 50},
                        {-range * 1.5, range / 40},
                        {0.1, 0.37},
                        {range * 0.999, range / 3000},
                        {2.5, 0},
                        {-0.5, 0},
                        {5, 1e30},
                        {-5, -1e30}}) {
    const float offset = static_cast<float>(c.offset), slope = static_cast<float>(c.slope);
    expectGenerated<T>([&](T* dst, int len) { return call(dst, len, offset, slope); },
                       [&](int len) { return ramp<T>(len, offset, slope); });
  }
}

TEST(VectorRamp, FromItsIndex) {
  checkRamp(kvrsVectorRamp_8u);
  checkRamp(kvrsVectorRamp_8s);
  checkRamp(kvrsVectorRamp_16u);
  checkRamp(kvrsVectorRamp_16s);
  checkRamp(kvrsVectorRamp_32u);
  checkRamp(kvrsVectorRamp_32s);
  checkRamp(kvrsVectorRamp_32f);
  checkRamp(kvrsVectorRamp_64f);
}

// Indices beyond 2^24 are rounded to single.
TEST(VectorRamp, LongRamp) {
  constexpr int kLen = (1 << 24) + 1000;
  std::vector<Kvr32f> got(kLen);
  ASSERT_EQ(kvrStatusOk, kvrsVectorRamp_32f(got.data(), kLen, 0.25f, 1.0f));
  for (int n = kLen - 2000; n < kLen; ++n) {
    ASSERT_EQ(static_cast<float>(n) + 0.25f, got[static_cast<size_t>(n)]) << n;
  }
}

TEST(VectorRamp, JustBelowAHalfAndNaN) {
  Kvr16s got[3];
  ASSERT_EQ(kvrStatusOk, kvrsVectorRamp_16s(got, 1, 0.49999997f, 0));
  EXPECT_EQ(0, got[0]);
  ASSERT_EQ(kvrStatusOk, kvrsVectorRamp_16s(got, 1, -0.49999997f, 0));
  EXPECT_EQ(0, got[0]);
  ASSERT_EQ(kvrStatusOk, kvrsVectorRamp_16s(got, 3, NAN, 1));
  EXPECT_EQ(-32768, got[2]);
  ASSERT_EQ(kvrStatusOk, kvrsVectorSlope_16s(got, 3, NAN, 1));
  EXPECT_EQ(-32768, got[0]);
  ASSERT_EQ(kvrStatusOk, kvrsVectorSlope_16s(got, 3, NAN, 0));
  EXPECT_EQ(-32768, got[2]);
}

template <class F>
int crossing(F limit, F offset, F slope, int len) {
  const F reciprocal = 1 / slope;
  const F difference = limit - offset;
  const F product = difference * reciprocal;
  const F at = product + 1;
  if (!(at > 0)) return 0;
  if (at >= static_cast<F>(2147483648.0)) return len;
  return static_cast<int>(std::min<double>(std::trunc(static_cast<double>(at)), len));
}

template <class T, class F>
std::vector<T> slopeModel(int len, F offset, F slope) {
  using L = std::numeric_limits<T>;
  std::vector<T> samples(static_cast<size_t>(len));
  constexpr bool isFloat = std::is_floating_point_v<T>;
  int from = 0, to = len;
  T before{}, after{};
  if (slope == 0) {
    for (T& x : samples) {
      if constexpr (isFloat) {
        x = offset;
      } else {
        x = roundedAway<T>(static_cast<long double>(offset));
      }
    }
    return samples;
  }
  if constexpr (!isFloat) {
    const int low = crossing(static_cast<F>(L::lowest()), offset, slope, len);
    const int high = crossing(static_cast<F>(L::max()), offset, slope, len);
    from = slope > 0 ? low : high;
    to = std::max(from, slope > 0 ? high : low);
    before = slope > 0 ? L::lowest() : L::max();
    after = slope > 0 ? L::max() : L::lowest();
  }
  const F start = static_cast<F>(from) * slope;
  const F base = isFloat ? offset : offset + start;
  std::vector<F> sums = {F{0}, slope, 2 * slope, 3 * slope};
  for (int n = 0; n < len; ++n) {
    const size_t at = static_cast<size_t>(n);
    if (n < from) {
      samples[at] = before;
    } else if (n >= to) {
      samples[at] = after;
    } else {
      const size_t k = static_cast<size_t>(n - from);
      if (k >= 4) sums.push_back(sums[k - 4] + 4 * slope);
      const F v = base + sums[k];
      if constexpr (isFloat) {
        samples[at] = v;
      } else {
        samples[at] = saturatedTo<T>(static_cast<long double>(v), kvrRoundNear, L::lowest(), L::max());
      }
    }
  }
  return samples;
}

template <class T, class F>
void checkSlope(Line<T, F> call) {
  const double highest = static_cast<double>(std::numeric_limits<T>::max());
  const double lowest = static_cast<double>(std::numeric_limits<T>::lowest());
  const double range = std::is_floating_point_v<T> ? 1000 : highest,
               low = std::is_floating_point_v<T> ? -1000 : lowest;
  for (const Case& c : {Case{0, 1},
                        {-3.5, 0.5},
                        {range, -range / 50},
                        {low - 1000, (range - low) / 300},
                        {range + 777, -(range - low) / 250},
                        {0.1, 0.37},
                        {2.5, 0},
                        {-0.5, 0},
                        {40000, 0},
                        {-1e20, 0},
                        {5, 1e30},
                        {-5, -1e30},
                        {low, 1e-30},
                        {range, 1e-30},
                        {0, 1e-42},
                        {range * 2, 1},
                        {low * 2 - 10, -1}}) {
    const F offset = static_cast<F>(c.offset), slope = static_cast<F>(c.slope);
    expectGenerated<T>([&](T* dst, int len) { return call(dst, len, offset, slope); },
                       [&](int len) { return slopeModel<T, F>(len, offset, slope); });
  }
}

TEST(VectorSlope, BySums) {
  checkSlope(kvrsVectorSlope_8u);
  checkSlope(kvrsVectorSlope_8s);
  checkSlope(kvrsVectorSlope_16u);
  checkSlope(kvrsVectorSlope_16s);
  checkSlope(kvrsVectorSlope_32u);
  checkSlope(kvrsVectorSlope_32s);
  checkSlope(kvrsVectorSlope_32f);
  checkSlope(kvrsVectorSlope_64f);
}

TEST(VectorSlope, RunsOfTheExtremes) {
  Kvr16s got[100];
  ASSERT_EQ(kvrStatusOk, kvrsVectorSlope_16s(got, 100, -50000, 1000));
  EXPECT_EQ(-32768, got[0]);
  EXPECT_EQ(-32768, got[17]);
  EXPECT_EQ(-32000, got[18]);
  EXPECT_EQ(32000, got[82]);
  EXPECT_EQ(32767, got[83]);
  EXPECT_EQ(32767, got[99]);
  ASSERT_EQ(kvrStatusOk, kvrsVectorSlope_16s(got, 100, 50000, -1000));
  EXPECT_EQ(32767, got[17]);
  EXPECT_EQ(32000, got[18]);
  EXPECT_EQ(-32000, got[82]);
  EXPECT_EQ(-32768, got[83]);
  ASSERT_EQ(kvrStatusOk, kvrsVectorSlope_16s(got, 100, 40000, 0));
  for (Kvr16s x : got) EXPECT_EQ(32767, x);
}

TEST(VectorSlope, IntegersAreTheSameInEveryModeOfTheCaller) {
  for (int mode : kCallerModes) {
    std::vector<Kvr16s> got(300);
    std::vector<Kvr32u> got32(300);
    callWithRounding(mode, [&] { return kvrsVectorSlope_16s(got.data(), 300, 0, 0.5f); });
    callWithRounding(mode, [&] { return kvrsVectorSlope_32u(got32.data(), 300, 4e9, 0.5); });
    EXPECT_EQ((slopeModel<Kvr16s, Kvr32f>(300, 0, 0.5f)), got) << mode;
    EXPECT_EQ((slopeModel<Kvr32u, Kvr64f>(300, 4e9, 0.5)), got32) << mode;
  }
}

}  // namespace
