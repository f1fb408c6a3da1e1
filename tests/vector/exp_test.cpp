// SPDX-License-Identifier: MIT
#include <xmmintrin.h>

#include <cmath>
#include <vector>

#include "kvrs/exponential.h"
#include "tests/support/rounding.h"
#include "tests/support/ulps.h"

using namespace kvrs::test;

namespace {

constexpr Kvr32f kHighest = 87.0999984741211f, kLowest = -87.33650207519531f;
constexpr Kvr32f kInf = std::numeric_limits<Kvr32f>::infinity();
// Of the estimate of the reciprocal, whose relative error of up to 1.5 * 2^-12 is squared to 2.25 units in the last place of
// results just above a power of two, and of the roundings before and behind it.
constexpr int kBound32f = 6;

template <class T>
long double power(T x) {
  return std::exp(static_cast<long double>(x));
}

// The rule of single precision away from its limits themselves.
Kvr32f power32f(Kvr32f x) {
  return x > kHighest ? kInf : x <= kLowest ? 0 : static_cast<Kvr32f>(power(x));
}

template <class T>
T drawArgument(Random& random, double range) {
  return random.below(3) == 0 ? anyFloat<T>(random) : static_cast<T>(random.unit() * range);
}

TEST(Exp, Sweep32f) {
  const auto same = [](Kvr32f got, Kvr32f want) {
    return std::isnan(want) ? std::isnan(got) : withinUlps(got, want, kBound32f);
  };
  const auto draw = [](Random& random, size_t, Kvr32f) { return drawArgument<Kvr32f>(random, 95); };
  sweepMapWith<Kvr32f, Kvr32f>(kvrsExp_32f, power32f, same, draw, SweepOptions{});
  sweepInPlaceWith<Kvr32f>(kvrsExp_32f_I, power32f, same, draw, SweepOptions{});
}

TEST(Exp, SweepDoubles) {
  const auto same = [](Kvr64f got, Kvr64f want) {
    return std::isnan(want) ? std::isnan(got) : withinUlps(got, want, 1);
  };
  const auto oracle = [](auto x) { return static_cast<Kvr64f>(power(x)); };
  const auto draw = [](Random& random, size_t, auto like) {
    return drawArgument<decltype(like)>(random, 760);
  };
  sweepMapWith<Kvr64f, Kvr64f>(kvrsExp_64f, oracle, same, draw, SweepOptions{});
  sweepMapWith<Kvr64f, Kvr32f>(kvrsExp_32f64f, oracle, same, draw, SweepOptions{});
  sweepInPlaceWith<Kvr64f>(kvrsExp_64f_I, oracle, same, draw, SweepOptions{});
}

TEST(Exp, AccuracyOfVectorsAndLastElements) {
  Random random(4);
  std::vector<Kvr32f> x(40003), got(x.size());
  for (Kvr32f& v : x) v = static_cast<Kvr32f>(random.unit() * 87.09);
  ASSERT_EQ(kvrStatusOk, kvrsExp_32f(x.data(), got.data(), 40003));
  long double worst = 0, worstLast = 0;
  for (size_t i = 0; i < 40000; ++i) worst = std::max(worst, ulps(got[i], power(x[i])));
  for (size_t i = 40000; i < x.size(); ++i) worstLast = std::max(worstLast, ulps(got[i], power(x[i])));
  for (size_t i = 0; i + 3 <= 3000; i += 3) {
    kvrsExp_32f(&x[i], got.data(), 3);
    for (size_t k = 0; k < 3; ++k) worstLast = std::max(worstLast, ulps(got[k], power(x[i + k])));
  }
  EXPECT_LT(worst, kBound32f);
  EXPECT_LT(worstLast, 0.5001L);
}

TEST(Exp, AccuracyOfDoubles) {
  Random random(5);
  std::vector<Kvr64f> x(100000), got(x.size());
  for (size_t i = 0; i < x.size(); ++i) x[i] = random.unit() * (i % 2 == 0 ? 709 : 2);
  for (size_t i = 0; i < 1000; ++i) x[i] = -708 - random.unit() * 37.5;  // subnormal results
  ASSERT_EQ(kvrStatusOk, kvrsExp_64f(x.data(), got.data(), 100000));
  long double worst = 0;
  for (size_t i = 0; i < x.size(); ++i) worst = std::max(worst, ulps(got[i], power(x[i])));
  EXPECT_LT(worst, 1.5L);
}

// The same value in all places of a vector, and as one of the last elements.
struct Results {
  Kvr32f inVector, last;
};
Results of32f(Kvr32f x) {
  const Kvr32f src[4] = {x, x, x, x};
  Kvr32f dst[4], last[3];
  EXPECT_EQ(kvrStatusOk, kvrsExp_32f(src, dst, 4));
  EXPECT_EQ(kvrStatusOk, kvrsExp_32f(src, last, 3));
  for (int i = 1; i < 4; ++i) EXPECT_TRUE(sameBits(dst[0], dst[i]));
  for (int i = 1; i < 3; ++i) EXPECT_TRUE(sameBits(last[0], last[i]));
  return {dst[0], last[0]};
}

TEST(Exp, LimitsOf32f) {
  const Kvr32f above = std::nextafter(kHighest, kInf), below = std::nextafter(kHighest, 0.0f);
  EXPECT_LT(of32f(below).inVector, kInf);
  EXPECT_LT(of32f(below).last, kInf);
  EXPECT_LT(of32f(kHighest).inVector, kInf);
  EXPECT_LT(ulps(of32f(kHighest).inVector, power(kHighest)), kBound32f);
  EXPECT_EQ(kInf, of32f(kHighest).last);
  for (Kvr32f x : {above, 88.0f, 1e30f, kInf}) {
    EXPECT_EQ(kInf, of32f(x).inVector);
    EXPECT_EQ(kInf, of32f(x).last);
  }
  for (Kvr32f x : {kLowest, std::nextafter(kLowest, -kInf), -88.0f, -1e30f, -kInf}) {
    EXPECT_TRUE(sameBits(0.0f, of32f(x).inVector)) << x;
    EXPECT_TRUE(sameBits(0.0f, of32f(x).last)) << x;
  }
  const Kvr32f lowest = std::nextafter(kLowest, 0.0f);
  EXPECT_GE(of32f(lowest).inVector, std::numeric_limits<Kvr32f>::min() / 2);
  EXPECT_GE(of32f(lowest).last, std::numeric_limits<Kvr32f>::min() / 2);
  for (Kvr32f x : {0.0f, -0.0f}) {
    EXPECT_LE(ulps(of32f(x).inVector, 1.0L), 1);
    EXPECT_EQ(1, of32f(x).last);
  }
}

TEST(Exp, NaNOf32f) {
  const auto ofBits = [](uint32_t bits) {
    Kvr32f x;
    memcpy(&x, &bits, sizeof x);
    return of32f(x);
  };
  const auto bitsOf = [](Kvr32f x) {
    uint32_t bits;
    memcpy(&bits, &x, sizeof bits);
    return bits;
  };
  EXPECT_EQ(0x7FC00000u, bitsOf(ofBits(0x7FC12345).inVector));
  EXPECT_EQ(0x7FC00000u, bitsOf(ofBits(0x7FC12345).last));
  EXPECT_TRUE(std::isnan(ofBits(0xFFC12345).inVector));
  EXPECT_EQ(0xFFC00000u, bitsOf(ofBits(0xFFC12345).last));
}

// Invalid and underflow are cleared at the end, if one of them is set; the others stay.
TEST(Exp, FlagsOf32f) {
  const unsigned before = _mm_getcsr();
  const Kvr32f src[5] = {1, 2, 3, 4, 5};
  Kvr32f dst[5];
  constexpr unsigned kDivideByZero = 4, kInvalid = 1, kUnderflow = 16;
  for (unsigned flags : {kInvalid, kUnderflow, kInvalid | kUnderflow | kDivideByZero}) {
    for (int len : {1, 4, 5}) {
      _mm_setcsr((before & ~0x3Fu) | flags);
      kvrsExp_32f(src, dst, len);
      const unsigned after = _mm_getcsr();
      EXPECT_EQ(0u, after & (kInvalid | kUnderflow));
      EXPECT_EQ(flags & kDivideByZero, after & kDivideByZero);
    }
  }
  const Kvr32f huge[4] = {kInf, NAN, -kInf, 1e38f};
  _mm_setcsr(before & ~0x3Fu);
  kvrsExp_32f(huge, dst, 4);
  EXPECT_EQ(0u, _mm_getcsr() & (kInvalid | kUnderflow));
  _mm_setcsr(before);
}

TEST(Exp, SpecialDoubles) {
  const Kvr64f inf = std::numeric_limits<Kvr64f>::infinity();
  const Kvr64f src[] = {
      0, -0.0, inf, -inf, NAN, 710, -746, 1e308, -1e308, 709.782712893384, 709.7827128933841, -745.2};
  const Kvr64f want[] = {1,   1, inf, 0, NAN, inf, 0, inf, 0, static_cast<Kvr64f>(power(709.782712893384)),
                         inf, 0};
  Kvr64f got[12];
  ASSERT_EQ(kvrStatusOk, kvrsExp_64f(src, got, 12));
  for (int i = 0; i < 12; ++i) {
    EXPECT_TRUE(std::isnan(want[i]) ? std::isnan(got[i]) : withinUlps(got[i], want[i], 1))
        << src[i] << ": " << got[i];
  }
}

TEST(Exp, DoublesIgnoreTheRoundingMode) {
  Random random(6);
  std::vector<Kvr64f> src(500), want(500), got(500);
  for (Kvr64f& x : src) x = random.unit() * 740;
  kvrsExp_64f(src.data(), want.data(), 500);
  for (int mode : kCallerModes) {
    callWithRounding(mode, [&] { return kvrsExp_64f(src.data(), got.data(), 500); });
    for (size_t i = 0; i < src.size(); ++i) ASSERT_TRUE(sameBits(want[i], got[i])) << src[i];
  }
}

// Elements behind 2^31 - 4 others would lie before the array, as addresses of 32 bits go.
TEST(Exp, RefusedLengthLeavesWhatLiesBeforeTheArray) {
  if (sizeof(void*) > 4) GTEST_SKIP() << "every length fits";
  std::vector<Kvr32f> all(64, 2.0f);
  Kvr32f other[8] = {};
  const std::vector<Kvr32f> before = all;
  EXPECT_EQ(kvrStatusBadLength, kvrsExp_32f(other + 4, &all[32], INT32_MAX));
  EXPECT_EQ(kvrStatusBadLength, kvrsExp_32f_I(&all[32], INT32_MAX));
  EXPECT_EQ(before, all);
}

}  // namespace
