// SPDX-License-Identifier: MIT
#include "kvrs/fir_gen.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <vector>

#include "kvrs/window.h"
#include "tests/support/arena.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

using Extended = long double;
constexpr Extended kPi = 3.14159265358979323846264338327950288L;

enum Kind { lowpass, highpass, bandpass, bandstop };
constexpr Kind kKinds[] = {lowpass, highpass, bandpass, bandstop};

KvrStatus design(Kind kind, double low, double high, double* taps, int tapsLen, int winType, int doNormal) {
  switch (kind) {
    case lowpass:
      return kvrsFIRGenLowpass_64f(low, taps, tapsLen, winType, doNormal);
    case highpass:
      return kvrsFIRGenHighpass_64f(low, taps, tapsLen, winType, doNormal);
    case bandpass:
      return kvrsFIRGenBandpass_64f(low, high, taps, tapsLen, winType, doNormal);
    default:
      return kvrsFIRGenBandstop_64f(low, high, taps, tapsLen, winType, doNormal);
  }
}

// The window from its formula.
Extended window(int winType, int len, int i) {
  const Extended n = std::min(i, len - 1 - i), x = 2 * kPi * n / (len - 1);
  if (2 * i == len - 1) return 1;
  switch (winType) {
    case kvrWinBartlett:
      return 2 * n / (len - 1);
    case kvrWinBlackmanOpt: {
      const Extended r = 0.5L / std::cos(kPi / (len - 1)), alpha = -r * r;
      return (alpha + 1) / 2 - 0.5L * std::cos(x) - alpha / 2 * std::cos(2 * x);
    }
    case kvrWinHamming:
      return 0.54L - 0.46L * std::cos(x);
    case kvrWinHann:
      return 0.5L - 0.5L * std::cos(x);
    default:
      return 1;
  }
}

// The ideal response at a distance from the centre, from the integral over the pass band.
Extended ideal(Kind kind, double low, double high, Extended t, bool isOdd) {
  const auto sinc = [t](Extended f) { return t == 0 ? 2 * f : std::sin(2 * kPi * f * t) / (kPi * t); };
  const Extended all = isOdd ? (t == 0 ? 1 : 0) : std::sin(kPi * t) / (kPi * t);
  switch (kind) {
    case lowpass:
      return sinc(low);
    case highpass:
      return isOdd ? all - sinc(low) : std::cos(2 * kPi * static_cast<Extended>(low) * t) / (kPi * t);
    case bandpass:
      return sinc(high) - sinc(low);
    default:
      return all - sinc(high) + sinc(low);
  }
}

// Of the taps, which may be antisymmetric, at a frequency.
Extended gain(const std::vector<Extended>& taps, Extended f) {
  std::complex<Extended> sum = 0;
  for (size_t i = 0; i < taps.size(); ++i)
    sum += taps[i] * std::polar<Extended>(1, -2 * kPi * f * static_cast<Extended>(i));
  return std::abs(sum);
}

std::vector<Extended> model(Kind kind, double low, double high, int len, int winType, bool normal) {
  std::vector<Extended> taps(static_cast<size_t>(len));
  for (int i = 0; i < len; ++i) {
    const Extended t = std::fabs(i - (len - 1) / 2.0L);
    const bool mirrored = kind == highpass && len % 2 == 0 && i >= len / 2;
    taps[static_cast<size_t>(i)] =
        (mirrored ? -1 : 1) * ideal(kind, low, high, t, len % 2 != 0) * window(winType, len, i);
  }
  if (normal) {
    const Extended at = kind == highpass   ? 0.5L
                        : kind == bandpass ? (static_cast<Extended>(low) + high) / 2
                                           : 0;
    const Extended scale = 1 / gain(taps, at);
    for (Extended& tap : taps) tap *= scale;
  }
  return taps;
}

TEST(FirGen, TapsAgainstExtendedPrecision) {
  const double bands[][2] = {
      {0.1, 0.2}, {0.25, 0.4}, {1e-3, 0.499}, {0.24999999999999997, 0.25}, {0.05, 0.3}};
  for (Kind kind : kKinds) {
    for (const auto& [low, high] : bands) {
      for (int len : {5, 6, 7, 8, 16, 17, 63, 64, 501, 2000, 2001}) {
        for (int winType : {0, 1, 2, 3, 7, -1}) {
          // A band that lies between the taps' resolution has nothing to be normalised by.
          const bool canNormalise =
              (high - low) * len > 0.5 || kind == lowpass || kind == highpass || kind == bandstop;
          for (int normal : {0, 1}) {
            if (normal && !canNormalise) continue;
            if (normal && low * len < 0.1) continue;
            std::vector<double> taps(static_cast<size_t>(len));
            ASSERT_EQ(kvrStatusOk, design(kind, low, high, taps.data(), len, winType, normal));
            const auto want = model(kind, low, high, len, winType, normal != 0);
            for (size_t i = 0; i < taps.size(); ++i) {
              ASSERT_NEAR(static_cast<double>(want[i]), taps[i], 1e-11)
                  << "tap " << i << " of " << len << ", kind " << kind << ", window " << winType << ", from "
                  << low << ", normal " << normal;
              const double mirror = taps[taps.size() - 1 - i];
              if (kind == highpass && len % 2 == 0) {
                ASSERT_EQ(taps[i], -mirror);
              } else {
                ASSERT_EQ(taps[i], mirror);
              }
            }
          }
        }
      }
    }
  }
}

TEST(FirGen, NormalisedGains) {
  for (int len : {31, 32, 101, 200}) {
    std::vector<double> taps(static_cast<size_t>(len));
    const auto gainAt = [&](double f) {
      return static_cast<double>(
          gain(std::vector<Extended>(taps.begin(), taps.end()), static_cast<Extended>(f)));
    };
    ASSERT_EQ(kvrStatusOk, kvrsFIRGenLowpass_64f(0.2, taps.data(), len, kvrWinHamming, 1));
    EXPECT_NEAR(1, gainAt(0), 1e-14);
    EXPECT_LT(gainAt(0.45), 0.01);
    ASSERT_EQ(kvrStatusOk, kvrsFIRGenHighpass_64f(0.2, taps.data(), len, kvrWinHamming, 1));
    EXPECT_NEAR(1, gainAt(0.5), 1e-14);
    EXPECT_LT(gainAt(0.05), 0.01);
    ASSERT_EQ(kvrStatusOk, kvrsFIRGenBandpass_64f(0.15, 0.3, taps.data(), len, kvrWinHamming, 1));
    EXPECT_NEAR(1, gainAt(0.225), 1e-14);
    EXPECT_LT(gainAt(0.02), 0.01);
    EXPECT_LT(gainAt(0.45), 0.01);
    ASSERT_EQ(kvrStatusOk, kvrsFIRGenBandstop_64f(0.15, 0.35, taps.data(), len, kvrWinHamming, 1));
    EXPECT_NEAR(1, gainAt(0), 1e-14);
    EXPECT_LT(gainAt(0.25), 0.01);
  }
}

TEST(FirGen, AnyAlignmentAndNothingOutside) {
  Arena arena(512);
  for (int len : {5, 6, 33, 34}) {
    for (size_t offset : {0, 1, 3, 8, 12}) {
      for (Kind kind : kKinds) {
        std::vector<double> want(static_cast<size_t>(len));
        ASSERT_EQ(kvrStatusOk, design(kind, 0.1, 0.3, want.data(), len, kvrWinHann, 1));
        double* taps = arena.place<double>(want.size(), Side::back, offset);
        ASSERT_EQ(kvrStatusOk, design(kind, 0.1, 0.3, taps, len, kvrWinHann, 1));
        for (size_t i = 0; i < want.size(); ++i) EXPECT_EQ(want[i], get(taps, i));
        EXPECT_TRUE(arena.intact());
      }
    }
  }
}

TEST(FirGen, FrequenciesAtTheEdges) {
  double taps[9];
  EXPECT_EQ(kvrStatusBadLength, kvrsFIRGenLowpass_64f(NAN, taps, 9, 0, 0));
  EXPECT_EQ(kvrStatusBadLength, kvrsFIRGenBandpass_64f(0.2, NAN, taps, 9, 0, 0));
  EXPECT_EQ(kvrStatusBadLength, kvrsFIRGenBandstop_64f(0.3, 0.3, taps, 9, 0, 0));
  EXPECT_EQ(kvrStatusOk, kvrsFIRGenLowpass_64f(1e-300, taps, 9, kvrWinHamming, 1));
  EXPECT_EQ(kvrStatusOk, kvrsFIRGenLowpass_64f(std::nextafter(0.5, 0.0), taps, 9, kvrWinHamming, 1));
  EXPECT_NEAR(1, taps[4], 1e-9);
  EXPECT_EQ(kvrStatusOk, kvrsFIRGenLowpass_64f(std::nextafter(0.25, 0.0), taps, 9, 7, 0));
  EXPECT_NEAR(0.5, taps[4], 1e-15);
  EXPECT_NEAR(1 / 3.141592653589793, taps[3], 1e-15);
}

TEST(FirGen, FailingMemoryIsANullPointer) {
  double taps[9] = {};
  for (Kind kind : kKinds) {
    const int tones = kind == lowpass || kind == highpass ? 1 : 2;
    EXPECT_EQ(tones, countAllocationsWithFailures([&] { return design(kind, 0.1, 0.2, taps, 9, 0, 1); },
                                                  kvrStatusNullPointer));
  }
}

}  // namespace
