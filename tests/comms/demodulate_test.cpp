// SPDX-License-Identifier: MIT
#include "kvrs/demodulate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "tests/comms/guarded.h"
#include "tests/support/random.h"
#include "tests/support/rounding.h"

using namespace kvrs::test;

namespace {

const long double kPi = std::acos(-1.0L);

// The step of the phase in units of the result.
long double step(Kvr16sc from, Kvr16sc to) {
  const int64_t re = int64_t{to.re} * from.re + int64_t{to.im} * from.im,
                im = int64_t{to.im} * from.re - int64_t{to.re} * from.im;
  return std::atan2(static_cast<long double>(im), static_cast<long double>(re)) * 32767 / kPi;
}

// What the contract allows; a step next to half a turn has both signs.
constexpr long double kMostError = 0.51L;
bool isStep(Kvr16sc from, Kvr16sc to, Kvr16s got) {
  return std::fabs(got - step(from, to)) <= kMostError;
}

struct Signal {
  std::vector<Kvr16s> re, im;
};

Signal randomSignal(size_t len, Random& random) {
  Signal z;
  for (size_t i = 0; i < len; ++i) {
    const Kvr16sc sample = random.value<Kvr16sc>();
    const bool isSmall = random.below(3) == 0;
    z.re.push_back(isSmall ? static_cast<Kvr16s>(sample.re % 8) : sample.re);
    z.im.push_back(isSmall ? static_cast<Kvr16s>(sample.im % 8) : sample.im);
  }
  return z;
}

enum class Where { apart, overRe, overIm };

void check(const Signal& z, Kvr16sc before, Where where, Random& random) {
  const size_t len = z.re.size();
  const Guarded<Kvr16s> re(z.re, random), im(z.im, random), apart(std::vector<Kvr16s>(len), random);
  const Guarded<Kvr16sc> delay({before}, random);
  const Guarded<Kvr16s>& dst = where == Where::overRe ? re : where == Where::overIm ? im : apart;
  ASSERT_EQ(kvrStatusOk, kvrsDemodulateFM_CToR_16s(re, im, dst, static_cast<int>(len), delay));
  const std::vector<Kvr16s> got = dst.values();
  Kvr16sc last = before;
  for (size_t i = 0; i < len; ++i) {
    const Kvr16sc sample = {z.re[i], z.im[i]};
    ASSERT_TRUE(isStep(last, sample, got[i]))
        << i << " of " << len << ": from (" << last.re << ", " << last.im << ") to (" << sample.re << ", "
        << sample.im << ") is " << got[i] << " instead of " << step(last, sample);
    last = sample;
  }
  ASSERT_EQ(last.re, delay.values()[0].re);
  ASSERT_EQ(last.im, delay.values()[0].im);
  ASSERT_TRUE(where == Where::overRe || re.values() == z.re);
  ASSERT_TRUE(where == Where::overIm || im.values() == z.im);
  ASSERT_TRUE(re.intact() && im.intact() && apart.intact() && delay.intact());
}

TEST(Demodulate, RandomSamples) {
  Random random;
  std::vector<size_t> lengths = {127, 128, 129, 255, 256, 257, 1000, 4099};
  for (size_t len = 1; len <= 70; ++len) lengths.push_back(len);
  for (size_t len : lengths) {
    for (Where where : {Where::apart, Where::overRe, Where::overIm, Where::apart}) {
      check(randomSignal(len, random), random.value<Kvr16sc>(), where, random);
      if (HasFatalFailure()) return;
    }
  }
}

// Every pair of extremes and small numbers, among them the one whose product leaves 32 bits.
TEST(Demodulate, Extremes) {
  const Kvr16s numbers[] = {-32768, -32767, -1, 0, 1, 2, 32766, 32767};
  Signal z;
  for (Kvr16s a : numbers) {
    for (Kvr16s b : numbers) {
      for (Kvr16s c : numbers) {
        for (Kvr16s d : numbers) {
          z.re.insert(z.re.end(), {a, c});
          z.im.insert(z.im.end(), {b, d});
        }
      }
    }
  }
  Random random(2);
  check(z, {-32768, -32768}, Where::apart, random);
  Kvr16s out[2];
  const Kvr16s lowest[2] = {-32768, -32768};
  Kvr16sc delay = {-32768, -32768};
  ASSERT_EQ(kvrStatusOk, kvrsDemodulateFM_CToR_16s(lowest, lowest, out, 2, &delay));
  EXPECT_EQ(0, out[0]);
  EXPECT_EQ(0, out[1]);
}

TEST(Demodulate, TheScale) {
  // A quarter of a turn at a time, forward and backward; half a turn; from and to nothing.
  const Kvr16s re[] = {0, -5, 0, 5, 0, 5, -5, 5, 0, 7}, im[] = {5, 0, -5, 0, -5, 0, 0, 0, 0, 0};
  const Kvr16s want[] = {16384, 16384, 16384, 16384, -16384, 16384, 32767, 32767, 0, 0};
  Kvr16s got[10];
  Kvr16sc delay = {1, 0};
  ASSERT_EQ(kvrStatusOk, kvrsDemodulateFM_CToR_16s(re, im, got, 10, &delay));
  for (int i = 0; i < 10; ++i) EXPECT_EQ(want[i], got[i]) << i;
}

// Small angles of all sizes around all axes: nothing is lost where the polynomial begins and ends.
TEST(Demodulate, AllDirections) {
  Signal z;
  for (int k = 0; k < 100000; ++k) {
    const double turn = 2 * std::acos(-1.0) * k * 0.38196601;
    z.re.push_back(static_cast<Kvr16s>(std::lrint(32000 * std::cos(turn * k / 1000))));
    z.im.push_back(static_cast<Kvr16s>(std::lrint(32000 * std::sin(turn * k / 1000))));
  }
  Random random(3);
  check(z, {1, 1}, Where::apart, random);
}

TEST(Demodulate, CutAnywhere) {
  Random random(4);
  for (int turn = 0; turn < 50; ++turn) {
    const size_t len = 1 + random.below(500);
    const Signal z = randomSignal(len, random);
    std::vector<Kvr16s> one(len), pieces(len);
    Kvr16sc delay = random.value<Kvr16sc>(), piecewise = delay;
    ASSERT_EQ(kvrStatusOk,
              kvrsDemodulateFM_CToR_16s(z.re.data(), z.im.data(), one.data(), static_cast<int>(len), &delay));
    for (size_t done = 0; done < len;) {
      const size_t piece = std::min<size_t>(len - done, 1 + random.below(40));
      ASSERT_EQ(kvrStatusOk, kvrsDemodulateFM_CToR_16s(&z.re[done], &z.im[done], &pieces[done],
                                                       static_cast<int>(piece), &piecewise));
      done += piece;
    }
    ASSERT_EQ(one, pieces);
    EXPECT_EQ(delay.re, piecewise.re);
    EXPECT_EQ(delay.im, piecewise.im);
  }
}

TEST(Demodulate, InEveryRoundingMode) {
  Random random(5);
  const Signal z = randomSignal(999, random);
  std::vector<Kvr16s> want(999), got(999);
  Kvr16sc delay = {3, 4};
  ASSERT_EQ(kvrStatusOk, kvrsDemodulateFM_CToR_16s(z.re.data(), z.im.data(), want.data(), 999, &delay));
  for (int mode : kCallerModes) {
    delay = {3, 4};
    const auto call = [&] {
      return kvrsDemodulateFM_CToR_16s(z.re.data(), z.im.data(), got.data(), 999, &delay);
    };
    ASSERT_EQ(kvrStatusOk, callWithRounding(mode, call));
    EXPECT_EQ(want, got);
  }
}

// A carrier modulated by a tone. What is left of the result without that tone and a constant, in decibels below it.
double distortion(double level, double carrier, double deviation, double tone) {
  constexpr int kLen = 20000;
  const double twoPi = 2 * std::acos(-1.0);
  std::vector<Kvr16s> re(kLen), im(kLen), y(kLen);
  double phase = 0.3;
  for (size_t n = 0; n < kLen; ++n) {
    phase += carrier + deviation * std::sin(twoPi * tone * static_cast<double>(n));
    re[n] = static_cast<Kvr16s>(std::lrint(level * std::cos(phase)));
    im[n] = static_cast<Kvr16s>(std::lrint(level * std::sin(phase)));
  }
  Kvr16sc delay = {re[0], im[0]};
  EXPECT_EQ(kvrStatusOk, kvrsDemodulateFM_CToR_16s(re.data(), im.data(), y.data(), kLen, &delay));
  // The tone has a whole number of periods in what is looked at.
  double mean = 0, sine = 0, cosine = 0;
  for (size_t n = 0; n < kLen; ++n) {
    if (n == 0) y[n] = y[kLen - 1];
    const double t = twoPi * tone * static_cast<double>(n);
    mean += y[n];
    sine += 2 * y[n] * std::sin(t);
    cosine += 2 * y[n] * std::cos(t);
  }
  mean /= kLen, sine /= kLen, cosine /= kLen;
  double rest = 0;
  for (size_t n = 1; n < kLen; ++n) {
    const double t = twoPi * tone * static_cast<double>(n);
    const double e = y[n] - mean - sine * std::sin(t) - cosine * std::cos(t);
    rest += e * e;
  }
  const double amplitude = std::hypot(sine, cosine);
  EXPECT_NEAR(deviation * 32767 / (twoPi / 2), amplitude, 2) << level;
  return 10 * std::log10(rest / kLen / (amplitude * amplitude / 2));
}

TEST(Demodulate, AToneComesBack) {
  for (double level : {1000.0, 1500.0, 3333.3, 10000.0, 32767.0}) {
    for (double carrier : {0.0, 0.4, -1.1}) {
      EXPECT_LT(distortion(level, carrier, 1.0, 0.01), -60) << level << ", " << carrier;
      EXPECT_LT(distortion(level, carrier, 1.5, 0.0035), -60) << level << ", " << carrier;
    }
  }
}

TEST(Demodulate, BadArgumentsLeaveAllUnwritten) {
  Random random(6);
  const std::vector<Kvr16s> numbers = {1, 2, 3, 4};
  const Guarded<Kvr16s> re(numbers, random), im(numbers, random), dst(numbers, random);
  const Guarded<Kvr16sc> delay({{5, 6}}, random);
  const auto expectBad = [&](KvrStatus want, KvrStatus status) {
    EXPECT_EQ(want, status);
    EXPECT_EQ(numbers, dst.values());
    EXPECT_EQ(5, delay.values()[0].re);
  };
  for (int len : {4, 0}) {
    expectBad(kvrStatusNullPointer, kvrsDemodulateFM_CToR_16s(nullptr, im, dst, len, delay));
    expectBad(kvrStatusNullPointer, kvrsDemodulateFM_CToR_16s(re, nullptr, dst, len, delay));
    expectBad(kvrStatusNullPointer, kvrsDemodulateFM_CToR_16s(re, im, nullptr, len, delay));
    expectBad(kvrStatusNullPointer, kvrsDemodulateFM_CToR_16s(re, im, dst, len, nullptr));
  }
  for (int len : {0, -1}) expectBad(kvrStatusBadLength, kvrsDemodulateFM_CToR_16s(re, im, dst, len, delay));
}

}  // namespace
