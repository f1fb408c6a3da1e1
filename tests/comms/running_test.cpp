// SPDX-License-Identifier: MIT
#include "kvrs/running.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "tests/comms/guarded.h"
#include "tests/support/random.h"
#include "tests/support/rounding.h"

using namespace kvrs::test;

namespace {

// --- averages ---

using Average = KvrStatus (*)(const Kvr16s*, int, Kvr32s*, int, Kvr16s, KvrHintAlgorithm);

int64_t valueOf(Average f, Kvr16s x, int shift) {
  if (f == kvrsUpdateLinear_16s32s_I) return int64_t{x} >> std::clamp(shift, 0, 15);
  return (int64_t{x} * x) >> std::clamp(shift, 0, 31);
}

// In integers. One that is so far away comes no nearer any more, whatever it is.
int64_t oracle(Average f, const std::vector<Kvr16s>& x, int64_t acc, int shift, int64_t alpha) {
  constexpr int64_t kFar = int64_t{1} << 46;
  for (Kvr16s sample : x) {
    acc = acc * alpha + valueOf(f, sample, shift) * (1 - alpha);
    if (alpha != -1) acc = std::clamp(acc, -kFar, kFar);
  }
  return std::clamp<int64_t>(acc, INT_MIN, INT_MAX);
}

void check(Average f, const std::vector<Kvr16s>& x, Kvr32s before, int shift, int alpha,
           KvrHintAlgorithm hint, Random& random) {
  const Guarded<Kvr16s> src(x, random);
  const Guarded<Kvr32s> srcDst({before}, random);
  ASSERT_EQ(kvrStatusOk, f(src, static_cast<int>(x.size()), srcDst, shift, static_cast<Kvr16s>(alpha), hint));
  ASSERT_EQ(oracle(f, x, before, shift, alpha), srcDst.values()[0])
      << x.size() << " samples, alpha " << alpha << ", shift " << shift << ", from " << before;
  ASSERT_TRUE(srcDst.intact());
}

constexpr int kAlphas[] = {-32768, -32767, -1000, -182, -181, -180, -179, -100,  -7,   -6,
                           -5,     -3,     -2,    -1,   0,    1,    2,    3,     7,    8,
                           9,      100,    180,   181,  182,  183,  1000, 32766, 32767};
constexpr int kShifts[] = {INT_MIN, -5, -1, 0, 1, 7, 14, 15, 16, 20, 30, 31, 32, 100, INT_MAX};

void sweep(Average f) {
  Random random;
  const bool isPower = f == kvrsUpdatePower_16s32s_I;
  const std::vector<KvrHintAlgorithm> hints =
      isPower ? std::vector<KvrHintAlgorithm>{kvrHintNone, kvrHintAccurate, 77}
              : std::vector<KvrHintAlgorithm>{kvrHintNone, kvrHintFast, kvrHintAccurate, -3};
  for (int alpha : kAlphas) {
    for (size_t len : {1, 2, 3, 4, 5, 6, 7, 8, 9, 15, 31, 32, 33, 34, 63, 64, 65, 97, 200}) {
      for (int shift : kShifts) {
        std::vector<Kvr16s> x(len);
        // All numbers, small ones, and a constant, which an average may hold.
        const uint32_t kind = random.below(3);
        const Kvr16s constant = random.value<Kvr16s>();
        for (Kvr16s& sample : x) {
          sample = kind == 0   ? random.value<Kvr16s>()
                   : kind == 1 ? static_cast<Kvr16s>(random.below(7))
                               : constant;
        }
        const bool isHeld = kind == 2 && random.below(2);
        const Kvr32s start = isHeld      ? static_cast<Kvr32s>(valueOf(f, constant, shift))
                             : kind == 1 ? static_cast<Kvr32s>(random.below(7))
                                         : random.value<Kvr32s>();
        // Leaves the constant at the end, by a little.
        if (isHeld && len > 1) x[len - 1 - random.below(2)] ^= 1;
        check(f, x, start, shift, alpha, hints[random.below(static_cast<uint32_t>(hints.size()))], random);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

TEST(Running, LinearAverage) {
  sweep(kvrsUpdateLinear_16s32s_I);
}

TEST(Running, PowerAverage) {
  sweep(kvrsUpdatePower_16s32s_I);
}

// From beyond the range and back: -2 * 2^31 + 3 * 2^30.
TEST(Running, ReturnsFromBeyondTheRange) {
  Random random(2);
  const std::vector<Kvr16s> full(1, -32768);
  check(kvrsUpdatePower_16s32s_I, full, INT_MAX, 0, -2, kvrHintNone, random);
  check(kvrsUpdatePower_16s32s_I, {0, -32768}, 1 << 30, 0, -2, kvrHintNone, random);
  // A constant that the average holds, then twice the highest power, which takes it out and back, after any number of samples.
  for (size_t held = 0; held <= 70; ++held) {
    std::vector<Kvr16s> x(held, 23170);
    x.insert(x.end(), 2, -32768);
    check(kvrsUpdatePower_16s32s_I, x, 23170 * 23170, 0, -2, kvrHintNone, random);
  }
}

TEST(Running, LongAveragesByTurns) {
  Random random(3);
  std::vector<Kvr16s> x(100000);
  for (size_t i = 0; i < x.size(); ++i)
    x[i] = static_cast<Kvr16s>(i % 2 ? 20000 + random.below(3) : random.below(9));
  for (Average f : {Average{kvrsUpdateLinear_16s32s_I}, Average{kvrsUpdatePower_16s32s_I}}) {
    for (int shift : {0, 4, 15, 20}) check(f, x, 123, shift, -1, kvrHintNone, random);
  }
}

// The stated steps in single precision.
Kvr32s fastOracle(const std::vector<Kvr16s>& x, Kvr32s before, int shift, int alpha) {
  if (alpha == 1) return before;
  const int64_t a = alpha, b = 1 - a;
  const auto v = [&](size_t i) { return static_cast<float>(valueOf(kvrsUpdatePower_16s32s_I, x[i], shift)); };
  const float b0 = static_cast<float>(b), b1 = static_cast<float>(b * a), b2 = static_cast<float>(b * a * a),
              b3 = static_cast<float>(b * a * a * a);
  float acc = static_cast<float>(before);
  size_t i = 0;
  for (; x.size() - i >= 4; i += 4) {
    const float first = v(i) * b3 + v(i + 1) * b2, second = v(i + 2) * b1 + v(i + 3) * b0;
    acc = acc * static_cast<float>(a * a * a * a) + (first + second);
  }
  if (x.size() - i >= 2) {
    acc = acc * static_cast<float>(a * a) + (v(i) * b1 + v(i + 1) * b0);
    i += 2;
  }
  if (i < x.size()) acc = acc * static_cast<float>(a) + v(i) * b0;
  return static_cast<Kvr32s>(std::clamp(double{acc}, -2147483648.0, 2147483647.0));
}

TEST(Running, FastPowerAverage) {
  Random random(4);
  for (int alpha : kAlphas) {
    for (size_t len : {1, 2, 3, 4, 5, 6, 7, 8, 11, 64, 201}) {
      for (int shift : kShifts) {
        std::vector<Kvr16s> x(len);
        const Kvr16s constant = random.value<Kvr16s>();
        for (Kvr16s& sample : x) sample = shift % 2 ? random.value<Kvr16s>() : constant;
        const Kvr32s before = random.value<Kvr32s>();
        const Guarded<Kvr16s> src(x, random);
        const Guarded<Kvr32s> srcDst({before}, random);
        ASSERT_EQ(kvrStatusOk, kvrsUpdatePower_16s32s_I(src, static_cast<int>(len), srcDst, shift,
                                                        static_cast<Kvr16s>(alpha), kvrHintFast));
        ASSERT_EQ(fastOracle(x, before, shift, alpha), srcDst.values()[0])
            << len << " samples, alpha " << alpha << ", shift " << shift;
        // Where all is small, singles are exact.
        if (shift >= 15 && std::abs(alpha) <= 2 && len <= 8 && std::abs(int64_t{before}) < 1 << 12) {
          ASSERT_EQ(oracle(kvrsUpdatePower_16s32s_I, x, before, shift, alpha), srcDst.values()[0]);
        }
        ASSERT_TRUE(srcDst.intact());
      }
    }
  }
}

TEST(Running, AveragesInEveryRoundingMode) {
  Random random(5);
  std::vector<Kvr16s> x(101);
  for (Kvr16s& sample : x) sample = random.value<Kvr16s>();
  for (int mode : kCallerModes) {
    for (int alpha : {-1, 0, 2, 300}) {
      const int64_t want = oracle(kvrsUpdateLinear_16s32s_I, x, 77, 2, alpha);
      Kvr32s got = 77;
      const auto call = [&] {
        return kvrsUpdateLinear_16s32s_I(x.data(), 101, &got, 2, static_cast<Kvr16s>(alpha), kvrHintNone);
      };
      ASSERT_EQ(kvrStatusOk, callWithRounding(mode, call));
      EXPECT_EQ(want, got) << alpha;
    }
  }
}

TEST(Running, BadArgumentsLeaveTheAverageUnwritten) {
  const Kvr16s x[3] = {1, 2, 3};
  for (Average f : {Average{kvrsUpdateLinear_16s32s_I}, Average{kvrsUpdatePower_16s32s_I}}) {
    Kvr32s acc = 5;
    for (int len : {3, 0}) {
      EXPECT_EQ(kvrStatusNullPointer, f(nullptr, len, &acc, 0, 0, kvrHintNone));
      EXPECT_EQ(kvrStatusNullPointer, f(x, len, nullptr, 0, 0, kvrHintFast));
    }
    for (int len : {0, -1}) EXPECT_EQ(kvrStatusBadLength, f(x, len, &acc, 0, 0, kvrHintNone));
    EXPECT_EQ(5, acc);
  }
}

// --- sums ---

template <class T>
struct SumWindow;
template <>
struct SumWindow<Kvr8u> {
  static constexpr auto* call = kvrsSumWindow_8u32f;
  static constexpr int kMostExact = 65793;
};
template <>
struct SumWindow<Kvr16s> {
  static constexpr auto* call = kvrsSumWindow_16s32f;
  static constexpr int kMostExact = 512;
};

// Exact sums where they are single numbers, else the stated steps.
template <class T>
std::vector<Kvr32f> sums(const std::vector<T>& x, size_t len, size_t mask) {
  std::vector<Kvr32f> result;
  if (mask <= SumWindow<T>::kMostExact) {
    for (size_t n = 0; n < len; ++n) {
      int64_t sum = 0;
      for (size_t k = 0; k < mask; ++k) sum += x[n + k];
      result.push_back(static_cast<Kvr32f>(sum));
    }
    return result;
  }
  float lane[4] = {}, sum;
  for (size_t i = 0; i < mask / 8 * 8; ++i) lane[i % 4] += static_cast<float>(x[i]);
  sum = lane[0] + lane[2];
  sum += lane[1] + lane[3];
  for (size_t i = mask / 8 * 8; i < mask; ++i) sum += static_cast<float>(x[i]);
  for (size_t n = 0; n < len; ++n) {
    result.push_back(sum);
    if (n + 1 < len) sum += static_cast<float>(int{x[n + mask]} - int{x[n]});
  }
  return result;
}

template <class T>
void checkSums(size_t len, size_t mask, int kind, Random& random) {
  std::vector<T> x(len + mask - 1);
  using L = std::numeric_limits<T>;
  for (T& sample : x) sample = kind == 0 ? random.value<T>() : kind == 1 ? L::max() : L::min();
  const Guarded<T> src(x, random);
  const Guarded<Kvr32f> dst(std::vector<Kvr32f>(len), random);
  ASSERT_EQ(kvrStatusOk, SumWindow<T>::call(src, dst, static_cast<int>(len), static_cast<int>(mask)));
  const std::vector<Kvr32f> want = sums(x, len, mask), got = dst.values();
  for (size_t n = 0; n < len; ++n) {
    ASSERT_EQ(want[n], got[n]) << n << " of " << len << ", mask " << mask;
  }
  ASSERT_TRUE(dst.intact());
}

template <class T>
void sweepSums() {
  Random random(6);
  const size_t most = SumWindow<T>::kMostExact;
  for (size_t mask : {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 24, 64, 100, 511, 512}) {
    for (size_t len = 1; len <= 70; ++len) checkSums<T>(len, mask, 0, random);
    for (size_t len : {127, 128, 129, 1000}) checkSums<T>(len, mask, static_cast<int>(len % 3), random);
    if (testing::Test::HasFatalFailure()) return;
  }
  for (size_t mask : {most - 1, most, most + 1, most + 2, most + 9, 3 * most}) {
    for (size_t len : {1, 2, 3, 50}) {
      for (int kind = 0; kind < 3; ++kind) checkSums<T>(len, mask, kind, random);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(Running, SumsOfBytes) {
  sweepSums<Kvr8u>();
}

TEST(Running, SumsOfIntegers) {
  sweepSums<Kvr16s>();
}

TEST(Running, ASumOfOneIsAConversion) {
  std::vector<Kvr8u> x(256);
  for (size_t i = 0; i < 256; ++i) x[i] = static_cast<Kvr8u>(i);
  std::vector<Kvr32f> dst(256);
  ASSERT_EQ(kvrStatusOk, kvrsSumWindow_8u32f(x.data(), dst.data(), 256, 1));
  for (size_t i = 0; i < 256; ++i) EXPECT_EQ(static_cast<float>(i), dst[i]);
}

TEST(Running, SumsInEveryRoundingMode) {
  Random random(7);
  std::vector<Kvr16s> x(600);
  for (Kvr16s& sample : x) sample = random.value<Kvr16s>();
  const std::vector<Kvr32f> want = sums(x, 100, 500);
  for (int mode : kCallerModes) {
    std::vector<Kvr32f> got(100);
    const auto call = [&] { return kvrsSumWindow_16s32f(x.data(), got.data(), 100, 500); };
    ASSERT_EQ(kvrStatusOk, callWithRounding(mode, call));
    EXPECT_EQ(want, got);
  }
}

template <class T>
void checkBadSums() {
  Random random(8);
  const std::vector<Kvr32f> numbers = {1, 2, 3};
  const Guarded<T> src(std::vector<T>(5), random);
  const Guarded<Kvr32f> dst(numbers, random);
  const auto f = SumWindow<T>::call;
  for (int len : {3, 0}) {
    EXPECT_EQ(kvrStatusNullPointer, f(nullptr, dst, len, 0));
    EXPECT_EQ(kvrStatusNullPointer, f(src, nullptr, len, 3));
    for (int mask : {0, -1, INT_MIN}) EXPECT_EQ(kvrStatusBadWindowLength, f(src, dst, len, mask));
  }
  for (int len : {0, -1, INT_MIN}) EXPECT_EQ(kvrStatusOk, f(src, dst, len, 3));
  EXPECT_EQ(numbers, dst.values());
}

TEST(Running, BadArgumentsLeaveSumsUnwritten) {
  checkBadSums<Kvr8u>();
  checkBadSums<Kvr16s>();
}

}  // namespace
