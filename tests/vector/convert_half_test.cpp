// SPDX-License-Identifier: MIT
#include <bit>
#include <cmath>
#include <limits>

#include "kvrs/convert.h"
#include "tests/support/rounding.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

// The value of a half from its fields.
long double valueOf(Kvr16f half) {
  const int exponent = half >> 10 & 31, fraction = half & 1023;
  const long double sign = half & 0x8000 ? -1 : 1;
  if (exponent == 31) return fraction == 0 ? sign * INFINITY : std::numeric_limits<long double>::quiet_NaN();
  return sign *
         (exponent == 0 ? std::ldexp(1.0L * fraction, -24) : std::ldexp(1024.0L + fraction, exponent - 25));
}

bool isNan(Kvr16f half) {
  return (half & 0x7FFF) > 0x7C00;
}

// The half that a value rounds to, found by looking among all of them: they are in the order of their values.
Kvr16f halfOf(float x, bool nearest) {
  const Kvr16f sign = std::signbit(x) ? 0x8000 : 0;
  const long double magnitude = std::fabs(static_cast<long double>(x));
  if (std::isnan(x)) return static_cast<Kvr16f>(sign | 0x7E00 | (std::bit_cast<uint32_t>(x) >> 13 & 0x3FF));
  if (magnitude >= 65536) return sign | 0x7C00;
  int low = 0, high = 0x7C00;  // value(low) <= magnitude < value(high), the infinity counting as 65536
  while (high - low > 1) {
    const int middle = (low + high) / 2;
    (valueOf(static_cast<Kvr16f>(middle)) <= magnitude ? low : high) = middle;
  }
  if (nearest) {
    const long double above = high == 0x7C00 ? 65536.0L : valueOf(static_cast<Kvr16f>(high));
    const long double toLow = magnitude - valueOf(static_cast<Kvr16f>(low)), toHigh = above - magnitude;
    if (toHigh < toLow || (toHigh == toLow && low % 2 == 1)) low = high;
  }
  return static_cast<Kvr16f>(sign | low);
}

std::vector<Kvr16f> allHalves() {
  std::vector<Kvr16f> all(65536);
  for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<Kvr16f>(i);
  return all;
}

constexpr KvrRoundMode kModes[] = {kvrRoundZero, kvrRoundNear, 3, -1, 7};

TEST(ConvertHalf, ToSingleExhaustive) {
  const std::vector<Kvr16f> src = allHalves();
  for (int caller : kCallerModes) {
    std::vector<float> dst(src.size());
    ASSERT_EQ(kvrStatusOk,
              callWithRounding(caller, [&] { return kvrsConvert_16f32f(src.data(), dst.data(), 65536); }));
    for (size_t i = 0; i < src.size(); ++i) {
      // A NaN keeps its sign and payload and becomes quiet.
      const uint32_t nan = static_cast<uint32_t>(src[i] & 0x8000) << 16 | 0x7FC00000 |
                           static_cast<uint32_t>(src[i] & 0x3FF) << 13;
      const uint32_t want =
          isNan(src[i]) ? nan : std::bit_cast<uint32_t>(static_cast<float>(valueOf(src[i])));
      ASSERT_EQ(want, std::bit_cast<uint32_t>(dst[i])) << std::hex << "half " << i;
    }
  }
}

// Around every half and around the middle between every two, and beyond both ends.
std::vector<float> singlesAroundHalves() {
  std::vector<float> all;
  for (int i = 0; i <= 0x7C00; ++i) {
    const long double a = i == 0x7C00 ? 65536 : valueOf(static_cast<Kvr16f>(i));
    const long double b = i + 1 >= 0x7C00 ? a + 32 : valueOf(static_cast<Kvr16f>(i + 1));
    for (long double y : {a, (a + b) / 2}) {
      const float x = static_cast<float>(y);
      for (float f : {std::nextafter(x, -1.0f), x, std::nextafter(x, INFINITY)}) {
        all.push_back(f);
        all.push_back(-f);
      }
    }
  }
  for (float f : {0x1p-149f, 0x1p-126f, 0x1p-25f, 0x1.000002p-25f, 65520.0f, 65519.996f, 1e10f, 3.4028235e38f,
                  INFINITY}) {
    all.push_back(f);
    all.push_back(-f);
  }
  for (uint32_t nan : {0x7F800001u, 0x7FC00000u, 0xFFC00000u, 0x7F802000u, 0xFF9FFFFFu, 0x7FFFFFFFu}) {
    all.push_back(std::bit_cast<float>(nan));
  }
  return all;
}

TEST(ConvertHalf, FromSingle) {
  const std::vector<float> src = singlesAroundHalves();
  std::vector<Kvr16f> nearest(src.size()), cut(src.size());
  for (size_t i = 0; i < src.size(); ++i) {
    nearest[i] = halfOf(src[i], true);
    cut[i] = halfOf(src[i], false);
  }
  for (KvrRoundMode mode : kModes) {
    for (int caller : kCallerModes) {
      std::vector<Kvr16f> dst(src.size());
      ASSERT_EQ(kvrStatusOk, callWithRounding(caller, [&] {
                  return kvrsConvert_32f16f(src.data(), dst.data(), static_cast<int>(src.size()), mode);
                }));
      for (size_t i = 0; i < src.size(); ++i) {
        ASSERT_EQ(mode == kvrRoundNear ? nearest[i] : cut[i], dst[i])
            << src[i] << ", mode " << mode << ", caller's mode " << caller;
      }
    }
  }
}

TEST(ConvertHalf, FromIntegerExhaustive) {
  std::vector<Kvr16s> src(65536);
  for (size_t i = 0; i < src.size(); ++i) src[i] = static_cast<Kvr16s>(i);
  for (KvrRoundMode mode : kModes) {
    for (int caller : kCallerModes) {
      std::vector<Kvr16f> dst(src.size());
      ASSERT_EQ(kvrStatusOk, callWithRounding(caller, [&] {
                  return kvrsConvert_16s16f(src.data(), dst.data(), 65536, mode);
                }));
      for (size_t i = 0; i < src.size(); ++i) {
        ASSERT_EQ(halfOf(src[i], mode == kvrRoundNear), dst[i]) << src[i] << ", mode " << mode;
      }
    }
  }
}

Kvr16s integerOf(Kvr16f half, KvrRoundMode mode, int scaleFactor) {
  const long double x = valueOf(half);
  if (std::isnan(x)) return 0;
  const KvrRoundMode known = mode == kvrRoundNear ? kvrRoundNear : kvrRoundZero;
  return saturatedTo<Kvr16s>(std::ldexp(x, -std::clamp(scaleFactor, -1000, 1000)), known, -32768, 32767);
}

TEST(ConvertHalf, ToIntegerExhaustive) {
  const std::vector<Kvr16f> src = allHalves();
  for (KvrRoundMode mode : kModes) {
    for (int scaleFactor : {0,
                            1,
                            -1,
                            5,
                            -7,
                            -15,
                            15,
                            16,
                            17,
                            -24,
                            -25,
                            -39,
                            -40,
                            63,
                            -63,
                            64,
                            -64,
                            65,
                            -65,
                            1000,
                            std::numeric_limits<int>::max(),
                            std::numeric_limits<int>::min()}) {
      std::vector<Kvr16s> dst(src.size());
      const int caller = kCallerModes[static_cast<unsigned>(scaleFactor) % 4];
      ASSERT_EQ(kvrStatusOk, callWithRounding(caller, [&] {
                  return kvrsConvert_16f16s_Sfs(src.data(), dst.data(), 65536, mode, scaleFactor);
                }));
      for (size_t i = 0; i < src.size(); ++i) {
        ASSERT_EQ(integerOf(src[i], mode, scaleFactor), dst[i])
            << std::hex << "half " << i << std::dec << ", mode " << mode << ", scaleFactor " << scaleFactor;
      }
    }
  }
}

TEST(ConvertHalf, Sweep) {
  sweepMapWith<float, Kvr16f>(
      kvrsConvert_16f32f, [](Kvr16f x) { return static_cast<float>(valueOf(x)); }, sameBits<float>,
      [](Random& random, size_t, Kvr16f) { return static_cast<Kvr16f>(random.bits() & 0xBFFF); }, {});
  for (KvrRoundMode mode : {kvrRoundNear, kvrRoundZero}) {
    const bool nearest = mode == kvrRoundNear;
    sweepMapWith<Kvr16f, float>(
        [=](const float* src, Kvr16f* dst, int len) { return kvrsConvert_32f16f(src, dst, len, mode); },
        [=](float x) { return halfOf(x, nearest); }, sameBits<Kvr16f>,
        [](Random& random, size_t, float) { return static_cast<float>(70000 * random.unit()); }, {});
    sweepMap<Kvr16f, Kvr16s>(
        [=](const Kvr16s* src, Kvr16f* dst, int len) { return kvrsConvert_16s16f(src, dst, len, mode); },
        [=](Kvr16s x) { return halfOf(x, nearest); });
    sweepMap<Kvr16s, Kvr16f>([=](const Kvr16f* src, Kvr16s* dst,
                                 int len) { return kvrsConvert_16f16s_Sfs(src, dst, len, mode, 2); },
                             [=](Kvr16f x) { return integerOf(x, mode, 2); });
  }
}

TEST(ConvertHalf, RefusesOnlyFinancialRounding) {
  const float x = 1.5f;
  const Kvr16s n = 3;
  const Kvr16f h = 0x3E00;
  Kvr16f half = 0x1234;
  Kvr16s integer = 99;
  EXPECT_EQ(kvrStatusBadRoundMode, kvrsConvert_32f16f(&x, &half, 1, kvrRoundFinancial));
  EXPECT_EQ(kvrStatusBadRoundMode, kvrsConvert_16s16f(&n, &half, 1, kvrRoundFinancial));
  EXPECT_EQ(kvrStatusBadRoundMode, kvrsConvert_16f16s_Sfs(&h, &integer, 1, kvrRoundFinancial, 0));
  EXPECT_EQ(0x1234, half);
  EXPECT_EQ(99, integer);
}

}  // namespace
