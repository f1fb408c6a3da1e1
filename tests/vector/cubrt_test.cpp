// SPDX-License-Identifier: MIT
#include <climits>
#include <cmath>
#include <vector>

#include "kvrs/roots.h"
#include "tests/support/rounding.h"
#include "tests/support/ulps.h"
#include "tests/vector/tied.h"

using namespace kvrs::test;

namespace {

Kvr32f nearest(Kvr32f x) {
  return static_cast<Kvr32f>(std::cbrt(static_cast<long double>(x)));
}

TEST(Cubrt, Sweep) {
  const auto same = [](Kvr32f got, Kvr32f want) {
    return std::isnan(want) ? std::isnan(got) : withinUlps(got, want, 1);
  };
  const auto draw = [](Random& random, size_t, Kvr32f) { return anyFloat<Kvr32f>(random); };
  sweepMapWith<Kvr32f, Kvr32f>(kvrsCubrt_32f, nearest, same, draw, SweepOptions{});
}

// One in 4,099 of all numbers, subnormal ones too.
TEST(Cubrt, Accuracy) {
  std::vector<Kvr32f> src;
  for (uint32_t bits = 1; bits < 0x7F800000; bits += 4099) {
    Kvr32f x;
    memcpy(&x, &bits, sizeof x);
    src.push_back(bits % 2 == 0 ? x : -x);
  }
  std::vector<Kvr32f> got(src.size());
  ASSERT_EQ(kvrStatusOk, kvrsCubrt_32f(src.data(), got.data(), static_cast<int>(src.size())));
  long double worst = 0;
  for (size_t i = 0; i < src.size(); ++i) {
    worst = std::max(worst, ulps(got[i], std::cbrt(static_cast<long double>(src[i]))));
    ASSERT_EQ(std::signbit(src[i]), std::signbit(got[i]));
  }
  EXPECT_LT(worst, 0.6L);
}

TEST(Cubrt, CubesAndSpecialValues) {
  std::vector<Kvr32f> src{0, -0.0f, INFINITY, -INFINITY, NAN, 0x1p-149f, 0x1p-147f};
  std::vector<Kvr32f> want{0, -0.0f, INFINITY, -INFINITY, NAN, nearest(0x1p-149f), 0x1p-49f};
  for (int r = -256; r <= 256; ++r) {
    src.push_back(static_cast<Kvr32f>(r * r * r));
    want.push_back(static_cast<Kvr32f>(r));
  }
  std::vector<Kvr32f> got(src.size());
  kvrsCubrt_32f(src.data(), got.data(), static_cast<int>(src.size()));
  for (size_t i = 0; i < src.size(); ++i) EXPECT_TRUE(sameFloat(want[i], got[i])) << src[i] << ": " << got[i];
}

// Low seven bits of the scale factor: 2^-n, or 2^(128 - n) of a negative one.
long double scaleOf(int scaleFactor) {
  const int n = scaleFactor & 127;
  if (scaleFactor >= 0) return n == 127 ? 0 : std::ldexp(1.0L, -n);
  return std::ldexp(1.0L, n == 0 ? 0 : 128 - n);
}

Tied<Kvr16s> scaled(Kvr32s x, int scaleFactor) {
  // Of the integer as a single, whose root is a single again.
  const long double exact = std::cbrt(static_cast<long double>(static_cast<Kvr32f>(x)));
  const long double root = static_cast<Kvr32f>(exact), scale = scaleOf(scaleFactor);
  const auto rounded = [&](long double y) {
    return saturatedTo<Kvr16s>(std::fabs(y) > 1e6L ? y : roundedTo(y, kvrRoundNear));
  };
  // The single may be the other neighbour where the root is close to the middle of both.
  const long double unit = std::ldexp(1.0L, std::ilogb(root == 0 ? 1 : root) - 23);
  const bool unclear = std::fabs(std::fabs(exact - root) - unit / 2) < unit / 16;
  const long double other = root + (exact > root ? unit : -unit);
  return {rounded(root * scale), rounded((unclear ? other : root) * scale)};
}

TEST(Cubrt, ScaleFactors) {
  std::vector<int> all{INT_MIN, INT_MIN + 1, INT_MAX - 1, INT_MAX};
  for (int s = -260; s <= 260; ++s) all.push_back(s);
  Random random(5);
  for (int scaleFactor : all) {
    std::vector<Kvr32s> src{0, 1, -1, 8, -8, 27, INT_MAX, INT_MIN, 16777217};
    for (int i = 0; i < 100; ++i) src.push_back(static_cast<Kvr32s>(random.bits()) >> random.below(32));
    // Next to the halves.
    for (int i = 0; i < 100; ++i) {
      const long double half = (random.below(1290) + 0.5L);
      src.push_back(static_cast<Kvr32s>(half * half * half) + static_cast<int>(random.below(3)) - 1);
    }
    std::vector<Kvr16s> got(src.size());
    ASSERT_EQ(kvrStatusOk,
              kvrsCubrt_32s16s_Sfs(src.data(), got.data(), static_cast<int>(src.size()), scaleFactor));
    for (size_t i = 0; i < src.size(); ++i) {
      ASSERT_TRUE(matches(scaled(src[i], scaleFactor), got[i]))
          << src[i] << ", scaleFactor " << scaleFactor << ": " << got[i];
    }
  }
}

TEST(Cubrt, OnlySevenBitsOfTheScaleFactorCount) {
  const Kvr32s src[] = {1000, -27000, 2000000000, 7};
  Kvr16s zero[4], got[4];
  kvrsCubrt_32s16s_Sfs(src, zero, 4, 0);
  EXPECT_EQ(10, zero[0]);
  EXPECT_EQ(-30, zero[1]);
  for (int scaleFactor : {128, -128, 256, INT_MIN}) {
    kvrsCubrt_32s16s_Sfs(src, got, 4, scaleFactor);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(zero[i], got[i]) << scaleFactor;
  }
}

TEST(Cubrt, SweepIntegers) {
  sweepMap<Kvr16s, Kvr32s>(
      [](const Kvr32s* src, Kvr16s* dst, int len) { return kvrsCubrt_32s16s_Sfs(src, dst, len, -2); },
      [](Kvr32s x) { return scaled(x, -2).value; });
}

TEST(Cubrt, IntegersIgnoreTheRoundingMode) {
  std::vector<Kvr32s> src(200);
  Random random(6);
  for (Kvr32s& x : src) x = random.value<Kvr32s>();
  std::vector<Kvr16s> want(200), got(200);
  kvrsCubrt_32s16s_Sfs(src.data(), want.data(), 200, -3);
  for (int mode : kCallerModes) {
    callWithRounding(mode, [&] { return kvrsCubrt_32s16s_Sfs(src.data(), got.data(), 200, -3); });
    EXPECT_EQ(want, got);
  }
}

}  // namespace
