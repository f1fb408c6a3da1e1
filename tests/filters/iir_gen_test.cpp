// Design of recursive filters against the gains that it promises, and against poles in extended precision.
// SPDX-License-Identifier: MIT
#include "kvrs/iir_gen.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <vector>

#include "kvrs/iir.h"
#include "tests/support/arena.h"

using namespace kvrs::test;

namespace {

using Number = std::complex<long double>;
constexpr long double kPi = 3.141592653589793238462643383279503L;
constexpr long double kEps = 0x1p-53L;

struct Design {
  bool highpass;
  int type;
  double deviation;
  int order;
  double frequency;
};

std::vector<double> taps(const Design& d) {
  std::vector<double> all(2 * static_cast<size_t>(d.order) + 2, -77);
  EXPECT_EQ(kvrStatusOk, (d.highpass ? kvrsIIRGenHighpass_64f : kvrsIIRGenLowpass_64f)(
                             d.frequency, d.deviation, d.order, all.data(), d.type));
  return all;
}

// From the zeros of 1 + e^2 T(s/j)^2, or of 1 + s^(2 order), in the left half plane.
std::vector<Number> poles(const Design& d) {
  const long double w = std::tan(kPi * d.frequency);
  std::vector<Number> all;
  for (int k = 0; k < d.order; ++k) {
    const long double angle = kPi * (2 * k + 1) / (2 * d.order);
    Number s;
    if (d.type == kvrButterworth) {
      s = {-std::sin(angle), std::cos(angle)};
    } else {
      const long double e = std::sqrt(std::pow(10.0L, d.deviation / 10.0L) - 1);
      const Number u = Number(angle, std::asinh(1 / e) / d.order);  // T(cos u) = cos(order * u)
      s = Number(0, 1) * std::cos(u);
      if (s.real() > 0) s = -std::conj(s);
    }
    s = d.highpass ? w / s : w * s;
    all.push_back((1.0L + s) / (1.0L - s));
  }
  return all;
}

std::vector<long double> denominator(const Design& d) {
  std::vector<Number> a{1};
  for (const Number z : poles(d)) {
    a.push_back(0);
    for (size_t i = a.size() - 1; i > 0; --i) a[i] -= z * a[i - 1];
  }
  std::vector<long double> real;
  for (Number c : a) real.push_back(c.real());
  return real;
}

// The product of the distances of the poles from the point where the gain is known.
long double exactSum(const Design& d) {
  long double product = 1;
  for (const Number z : poles(d)) product *= std::abs(d.highpass ? 1.0L + z : 1.0L - z);
  return product;
}

long double polynomialGain(const double* c, int order, long double frequency, long double* bulk) {
  Number sum = 0;
  *bulk = 0;
  for (int k = 0; k <= order; ++k) {
    sum += static_cast<long double>(c[k]) * std::polar(1.0L, -2 * kPi * frequency * k);
    *bulk += std::abs(static_cast<long double>(c[k]));
  }
  return std::abs(sum);
}

template <class Check>
void forAllDesigns(Check check) {
  for (bool highpass : {false, true}) {
    for (int type : {kvrButterworth, kvrChebyshev1}) {
      for (double deviation : {0.1, 1.0, 3.0, 29.0}) {
        if (type == kvrButterworth && deviation > 0.1) continue;
        for (int order = 1; order <= 12; ++order) {
          for (double frequency : {0.001, 0.01, 0.05, 0.1, 0.2, 0.25, 0.3, 0.4, 0.45, 0.49, 0.499}) {
            const Design d{highpass, type, deviation, order, frequency};
            SCOPED_TRACE(testing::Message()
                         << (highpass ? "high-pass" : "low-pass") << ", type " << type << ", " << deviation
                         << " dB, order " << order << ", frequency " << frequency);
            check(d);
            if (testing::Test::HasFailure()) return;
          }
        }
      }
    }
  }
}

// Coefficients grow like binomial ones. Where they cancel, they have the error of their largest summand.
TEST(IirGen, Denominators) {
  forAllDesigns([](const Design& d) {
    const auto got = taps(d);
    const auto want = denominator(d);
    long double largest = 0;
    for (long double c : want) largest = std::max(largest, std::abs(c));
    for (int k = 0; k <= d.order; ++k) {
      const auto i = static_cast<size_t>(k);
      ASSERT_NEAR(static_cast<double>(want[i]), got[static_cast<size_t>(d.order) + 1 + i],
                  static_cast<double>(16 * kEps * largest))
          << k;
    }
    EXPECT_EQ(1.0, got[static_cast<size_t>(d.order) + 1]);
  });
}

// Numerators are multiples of (1 + 1/z)^order or (1 - 1/z)^order that make the gain right where it is known.
TEST(IirGen, Numerators) {
  forAllDesigns([](const Design& d) {
    const auto got = taps(d);
    const double* a = got.data() + d.order + 1;
    long double sum = 0;
    for (int k = 0; k <= d.order; ++k)
      sum += d.highpass && k % 2 != 0 ? -static_cast<long double>(a[k]) : a[k];
    // Where rounding has left nothing of the sum, that of the exact denominator counts.
    const long double exact = exactSum(d);
    const bool isLost = std::abs(sum - exact) > exact / 2;
    if (isLost) sum = exact;
    const long double relative = isLost ? 1e-12L : 8 * kEps;  // the product has lost some digits too
    long double first = std::ldexp(sum, -d.order);
    if (d.type == kvrChebyshev1 && d.order % 2 == 0) first *= std::pow(10.0L, -d.deviation / 20.0L);
    long double binomial = 1;
    for (int k = 0; k <= d.order; ++k) {
      const long double want = first * binomial * (d.highpass && k % 2 != 0 ? -1 : 1);
      ASSERT_NEAR(static_cast<double>(want), got[static_cast<size_t>(k)],
                  static_cast<double>(relative * std::abs(want)))
          << k;
      binomial = binomial * (d.order - k) / (k + 1);
    }
  });
}

// The gain at many frequencies is that of the formula, as far as rounded coefficients can have it.
TEST(IirGen, Gains) {
  forAllDesigns([](const Design& d) {
    const auto got = taps(d);
    const long double wc = std::tan(kPi * d.frequency);
    for (int i = 0; i <= 60; ++i) {
      const long double f = i / 120.0L;
      if (i == 60 || i == 0) continue;  // tan is infinite, or the ratio is
      const long double w = d.highpass ? wc / std::tan(kPi * f) : std::tan(kPi * f) / wc;
      long double power;
      if (d.type == kvrButterworth) {
        power = 1 / (1 + std::pow(w, 2.0L * d.order));
      } else {
        const long double e2 = std::pow(10.0L, d.deviation / 10.0L) - 1;
        const long double t = w <= 1 ? std::cos(d.order * std::acos(w)) : std::cosh(d.order * std::acosh(w));
        power = 1 / (1 + e2 * t * t);
      }
      long double aBulk, bBulk, dcBulk;
      const long double below = polynomialGain(got.data() + d.order + 1, d.order, f, &aBulk);
      const long double above = polynomialGain(got.data(), d.order, f, &bBulk);
      const long double atReference =
          polynomialGain(got.data() + d.order + 1, d.order, d.highpass ? 0.5L : 0, &dcBulk);
      const long double relative = 64 * kEps * (aBulk / below + dcBulk / atReference);
      if (relative > 0.1L) continue;  // coefficients in doubles do not determine it
      const long double want = std::sqrt(power);
      ASSERT_NEAR(static_cast<double>(want), static_cast<double>(above / below),
                  static_cast<double>(want * relative + 64 * kEps * bBulk / below))
          << "at " << static_cast<double>(f);
    }
  });
}

// The gain where it is told, from the taps.
TEST(IirGen, GainAtTheReference) {
  forAllDesigns([](const Design& d) {
    const auto got = taps(d);
    long double b = 0, a = 0;
    for (int k = 0; k <= d.order; ++k) {
      const int sign = d.highpass && k % 2 != 0 ? -1 : 1;
      b += sign * static_cast<long double>(got[static_cast<size_t>(k)]);
      a += sign * static_cast<long double>(got[static_cast<size_t>(d.order + 1 + k)]);
    }
    if (std::abs(a - exactSum(d)) > exactSum(d) / 2) return;  // rounded coefficients have no gain there
    const bool lower = d.type == kvrChebyshev1 && d.order % 2 == 0;
    EXPECT_NEAR(lower ? std::pow(10.0, -d.deviation / 20) : 1.0, static_cast<double>(b / a), 1e-13);
  });
}

TEST(IirGen, ByHand) {
  double got[4];
  ASSERT_EQ(kvrStatusOk, kvrsIIRGenLowpass_64f(0.25, 0, 1, got, kvrButterworth));
  EXPECT_NEAR(0.5, got[0], 1e-16);
  EXPECT_NEAR(0.5, got[1], 1e-16);
  EXPECT_EQ(1.0, got[2]);
  EXPECT_NEAR(0, got[3], 1e-15);
  ASSERT_EQ(kvrStatusOk, kvrsIIRGenHighpass_64f(0.25, 0, 1, got, kvrButterworth));
  EXPECT_NEAR(0.5, got[0], 1e-16);
  EXPECT_NEAR(-0.5, got[1], 1e-16);
}

// What a filter of these taps does to a tone is the gain that the taps have.
TEST(IirGen, RunsInAFilter) {
  const auto all = taps({false, kvrChebyshev1, 1.0, 6, 0.1});
  KvrsIIRState_64f* state;
  ASSERT_EQ(kvrStatusOk, kvrsIIRInitAlloc_64f(&state, all.data(), 6, nullptr));
  std::vector<double> tone(6000), out(tone.size());
  for (size_t i = 0; i < tone.size(); ++i)
    tone[i] = std::cos(2 * static_cast<double>(kPi) * 0.1 * static_cast<double>(i));
  ASSERT_EQ(kvrStatusOk, kvrsIIR_64f(tone.data(), out.data(), static_cast<int>(tone.size()), state));
  double power = 0;
  for (size_t i = 3000; i < out.size(); ++i) power += out[i] * out[i] / 1500;
  EXPECT_NEAR(std::pow(10.0, -0.1), power, 1e-6);  // 1 dB at the cut-off
  EXPECT_EQ(kvrStatusOk, kvrsIIRFree_64f(state));
}

TEST(IirGen, OrderOfChecks) {
  const double nan = std::nan(""), infinity = INFINITY;
  for (auto* design : {kvrsIIRGenLowpass_64f, kvrsIIRGenHighpass_64f}) {
    double got[30];
    for (double& x : got) x = 5;
    const auto refused = [&](KvrStatus status, double frequency, double deviation, int order, int type) {
      EXPECT_EQ(status, design(frequency, deviation, order, got, type))
          << frequency << " " << deviation << " " << order << " " << type;
      for (double x : got) EXPECT_EQ(5, x);
    };
    EXPECT_EQ(kvrStatusNullPointer, design(0, 0, 0, nullptr, 1));
    for (double frequency : {0.0, 0.5, -0.1, 0.6, nan, infinity}) {
      refused(kvrStatusBadIirGenFreq, frequency, 40, 0, 1);
      refused(kvrStatusBadIirGenFreq, frequency, 1, 3, 0);
    }
    for (int order : {0, 13, -1}) refused(kvrStatusBadIirGenOrder, 0.1, 40, order, 1);
    for (double deviation : {29.000001, 0.0, -1.0, nan, infinity})
      refused(kvrStatusBadIirGenDeviation, 0.1, deviation, 3, 1);
    for (int type : {2, -1, 100}) refused(kvrStatusOk, 0.1, 40, 3, type);
    EXPECT_EQ(kvrStatusOk, design(0.1, 29.0, 3, got, 1));
    for (double deviation : {29.000001, 0.0, -1.0, nan})
      EXPECT_EQ(kvrStatusOk, design(0.1, deviation, 3, got, 0));
  }
}

// Nothing but the taps is written, wherever they lie.
TEST(IirGen, Bounds) {
  Arena arena(400);
  for (int order = 1; order <= 12; ++order) {
    for (size_t offset = 0; offset < 8; ++offset) {
      auto* at = arena.place<double>(2 * static_cast<size_t>(order) + 2, Side::back, offset);
      ASSERT_EQ(kvrStatusOk, kvrsIIRGenHighpass_64f(0.2, 1, order, at, kvrChebyshev1));
      EXPECT_TRUE(arena.intact());
      const auto want = taps({true, kvrChebyshev1, 1, order, 0.2});
      EXPECT_EQ(0, memcmp(at, want.data(), want.size() * sizeof(double)));
    }
  }
}

}  // namespace
