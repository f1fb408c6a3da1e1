// SPDX-License-Identifier: MIT
#include "kvrs/preemphasize.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <limits>
#include <vector>

#include "tests/comms/guarded.h"
#include "tests/support/random.h"
#include "tests/support/rounding.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

KvrStatus preemphasize(Kvr32f* srcDst, int len, Kvr32f val) {
  return kvrsPreemphasize_32f(srcDst, len, val);
}
KvrStatus preemphasize(Kvr16s* srcDst, int len, Kvr32f val) {
  return kvrsPreemphasize_16s(srcDst, len, val);
}

// Products and differences of singles, in double precision, lose nothing that the rounding to single could tell.
Kvr32f single(Kvr32f x, Kvr32f before, Kvr32f val) {
  const Kvr32f product = static_cast<Kvr32f>(double{val} * before);
  return static_cast<Kvr32f>(double{x} - product);
}
Kvr32f oracle(Kvr32f x, Kvr32f before, Kvr32f val) {
  return single(x, before, val);
}
Kvr16s oracle(Kvr16s x, Kvr16s before, Kvr32f val) {
  return saturatedTo<Kvr16s>(single(x, before, val), kvrRoundNear, -32768, 32767);
}

template <class T>
void check(const std::vector<T>& x, Kvr32f val, Random& random) {
  const Guarded<T> srcDst(x, random);
  ASSERT_EQ(kvrStatusOk, preemphasize(srcDst, static_cast<int>(x.size()), val));
  const std::vector<T> got = srcDst.values();
  ASSERT_TRUE(sameBits(x[0], got[0]));
  for (size_t i = 1; i < x.size(); ++i) {
    const T want = oracle(x[i], x[i - 1], val);
    ASSERT_TRUE(sameBits(want, got[i]) || (want != want && got[i] != got[i]))
        << i << " of " << x.size() << ", val " << val << ": " << got[i] << " instead of " << want;
  }
  ASSERT_TRUE(srcDst.intact());
}

template <class T>
void sweepLengths(Random& random) {
  for (int len : kvrs::test::sweepLengths({256, 1024})) {
    for (Kvr32f val : {0.95f, 0.0f, -0.0f, 1.0f, -1.0f, 0.5f, -3.7f, 1e-9f, 65536.0f}) {
      std::vector<T> x(static_cast<size_t>(len));
      for (T& sample : x) sample = random.value<T>();
      check(x, val, random);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(Preemphasize, Singles) {
  Random random;
  sweepLengths<Kvr32f>(random);
}

TEST(Preemphasize, Integers) {
  Random random(2);
  sweepLengths<Kvr16s>(random);
}

// Ties to even, of either sign, and saturation: with a val of a half all results lie on halves or integers.
TEST(Preemphasize, TiesAndExtremes) {
  Random random(3);
  std::vector<Kvr16s> x;
  for (int a : {-32768, -32767, -3, -2, -1, 0, 1, 2, 3, 32766, 32767}) {
    for (int b : {-32768, -32767, -3, -2, -1, 0, 1, 2, 3, 32766, 32767}) {
      x.insert(x.end(), {static_cast<Kvr16s>(a), static_cast<Kvr16s>(b)});
    }
  }
  for (Kvr32f val : {0.5f, -0.5f, 1.5f, 1e30f, -1e30f, 1e-40f, 0.49999997f}) check(x, val, random);
}

TEST(Preemphasize, SpecialValues) {
  const float infinity = std::numeric_limits<float>::infinity(),
              nan = std::numeric_limits<float>::quiet_NaN();
  Random random(4);
  const float special[] = {0.0f, -0.0f, infinity, -infinity, nan, 1e-45f, 3e38f, -3e38f, 1.0f};
  std::vector<Kvr32f> x(200);
  for (float& sample : x) sample = special[random.below(9)];
  for (float val : special) check(x, val, random);
  for (float val : {nan, infinity}) {
    std::vector<Kvr16s> y = {0, 0, 5, -5, 0, 7};
    ASSERT_EQ(kvrStatusOk, kvrsPreemphasize_16s(y.data(), 6, val));
    EXPECT_EQ(0, y[0]);
    EXPECT_EQ(-32768, y[1]) << "a product of zero and " << val;
    EXPECT_EQ(-32768, y[3]);
  }
}

TEST(Preemphasize, InEveryRoundingMode) {
  Random random(5);
  std::vector<Kvr16s> x(100), want;
  std::vector<Kvr32f> y(100);
  for (size_t i = 0; i < 100; ++i) {
    x[i] = random.value<Kvr16s>();
    y[i] = random.value<Kvr32f>();
  }
  want = x;
  ASSERT_EQ(kvrStatusOk, kvrsPreemphasize_16s(want.data(), 100, 0.97f));
  for (int mode : kCallerModes) {
    std::vector<Kvr16s> got = x;
    const auto integers = [&] { return kvrsPreemphasize_16s(got.data(), 100, 0.97f); };
    ASSERT_EQ(kvrStatusOk, callWithRounding(mode, integers));
    EXPECT_EQ(want, got);
    std::vector<Kvr32f> floats = y;
    const auto singles = [&] { return kvrsPreemphasize_32f(floats.data(), 100, 0.97f); };
    ASSERT_EQ(kvrStatusOk, callWithRounding(mode, singles));
    // The caller's mode: the same operations one by one.
    const int before = std::fegetround();
    std::fesetround(mode);
    for (size_t i = 1; i < 100; ++i) {
      volatile float product = 0.97f, difference = y[i];
      product = product * y[i - 1];
      difference = difference - product;
      EXPECT_EQ(difference, floats[i]) << i;
    }
    std::fesetround(before);
  }
}

TEST(Preemphasize, BadArgumentsLeaveAllUnwritten) {
  std::vector<Kvr16s> x = {1, 2, 3};
  std::vector<Kvr32f> y = {1, 2, 3};
  EXPECT_EQ(kvrStatusNullPointer, kvrsPreemphasize_16s(nullptr, 0, 1));
  EXPECT_EQ(kvrStatusNullPointer, kvrsPreemphasize_32f(nullptr, 3, 1));
  for (int len : {0, -1}) {
    EXPECT_EQ(kvrStatusBadLength, kvrsPreemphasize_16s(x.data(), len, 1));
    EXPECT_EQ(kvrStatusBadLength, kvrsPreemphasize_32f(y.data(), len, 1));
  }
  EXPECT_EQ((std::vector<Kvr16s>{1, 2, 3}), x);
  EXPECT_EQ((std::vector<Kvr32f>{1, 2, 3}), y);
}

}  // namespace
