// SPDX-License-Identifier: MIT
#include "kvrs/tone.h"

#include <cmath>
#include <type_traits>
#include <vector>

#include "tests/support/core.h"
#include "tests/support/rounding.h"
#include "tests/synth/generated.h"

using namespace kvrs::test;

namespace {

constexpr double kTwoPi = 6.283185307179586;

// The numbers of a sample's type.
template <class T>
struct Numbers {
  using Part = T;
  static constexpr int kParts = 1;
};
template <>
struct Numbers<Kvr16sc> {
  using Part = Kvr16s;
  static constexpr int kParts = 2;
};
template <>
struct Numbers<Kvr32fc> {
  using Part = Kvr32f;
  static constexpr int kParts = 2;
};
template <>
struct Numbers<Kvr64fc> {
  using Part = Kvr64f;
  static constexpr int kParts = 2;
};

double cosine(double x) {
  return static_cast<double>(std::cos(static_cast<long double>(x)));
}
double sine(double x) {
  return static_cast<double>(std::sin(static_cast<long double>(x)));
}

template <class Part>
Part stored(double x) {
  if constexpr (std::is_same_v<Part, Kvr16s>) {
    return static_cast<Kvr16s>(std::clamp(std::trunc(x), -32768.0, 32767.0));
  } else {
    return static_cast<Part>(x);
  }
}
template <class Part>
Part storedFast(float x) {
  if constexpr (std::is_same_v<Part, Kvr16s>) {
    return saturatedTo<Kvr16s>(static_cast<long double>(x), kvrRoundNear, -32768, 32767);
  } else {
    return x;
  }
}
template <class Part>
Part storedFast(double x) {
  return x;
}

// One series of parts, the real ones (cosine) or the imaginary ones (sine), as the contract tells it.
template <class Part, class Wave>
std::vector<Part> accurateSeries(double magn, double w, double phase, int len, Wave wave) {
  std::vector<double> x(static_cast<size_t>(len) + 4);
  const double c = 2 * cosine(w), m = c * c - 2;
  x[0] = magn * wave(phase);
  x[1] = magn * wave(phase + w);
  x[2] = c * x[1] - x[0];
  x[3] = c * x[2] - x[1];
  for (size_t n = 4; n < x.size(); ++n) x[n] = m * x[n - 2] - x[n - 4];
  std::vector<Part> series;
  for (int n = 0; n < len; ++n) series.push_back(stored<Part>(x[static_cast<size_t>(n)]));
  return series;
}

template <class Part, class Wave>
std::vector<Part> fastSeries(int parts, double magn, double w, double phase, int len, Wave wave) {
  using F = std::conditional_t<sizeof(Part) == 8, double, float>;
  const int step = static_cast<int>(32 / sizeof(F)) / parts, seeds = 2 * step;
  const double c = 2 * cosine(w), twice = c * c - 2, four = c * c * (c * c - 4) + 2, eight = four * four - 2;
  const F m = static_cast<F>(step == 2 ? twice : step == 4 ? four : eight);
  std::vector<Part> series;
  for (int start = 0; start < len; start += 1024) {
    const int count = std::min(1024, len - start);
    std::vector<double> x(static_cast<size_t>(seeds));
    x[0] = magn * wave(w * start + phase);
    x[1] = magn * wave(w * (start + 1) + phase);
    for (size_t n = 2; n < x.size(); ++n) x[n] = c * x[n - 1] - x[n - 2];
    std::vector<F> y(x.begin(), x.end());
    for (int n = 0; n < count; ++n) {
      const size_t at = static_cast<size_t>(n), back = static_cast<size_t>(step);
      if (n < seeds) {
        series.push_back(stored<Part>(x[at]));
      } else {
        const F product = m * y[at - back];
        y.push_back(product - y[at - 2 * back]);
        series.push_back(storedFast<Part>(y[at]));
      }
    }
  }
  return series;
}

template <class T>
std::vector<T> model(double magn, double w, double phase, int len, KvrHintAlgorithm hint) {
  using Part = typename Numbers<T>::Part;
  constexpr int kParts = Numbers<T>::kParts;
  const auto series = [&](auto wave) {
    return hint == kvrHintFast ? fastSeries<Part>(kParts, magn, w, phase, len, wave)
                               : accurateSeries<Part>(magn, w, phase, len, wave);
  };
  const auto re = series(cosine);
  if constexpr (kParts == 1) {
    return re;
  } else {
    const auto im = series(sine);
    std::vector<T> samples;
    for (size_t i = 0; i < re.size(); ++i) samples.push_back({re[i], im[i]});
    return samples;
  }
}

template <class P>
P phaseAfter(P phase, P rFreq, int len) {
  const double w = static_cast<double>(rFreq) * kTwoPi;
  const double product = len * w;
  const double t = product + static_cast<double>(phase);
  const double turns = std::floor(t * 0.15915494309189535);
  const double whole = turns * kTwoPi;
  const P after = static_cast<P>(t - whole);
  return after < 0 || static_cast<double>(after) >= kTwoPi ? P{0} : after;
}

template <class T, class M, class P>
using Direct = KvrStatus (*)(T*, int, M, P, P*, KvrHintAlgorithm) noexcept;

template <class T, class M, class P>
void checkDirect(Direct<T, M, P> direct, M magn) {
  struct Case {
    double rFreq, phase;
  };
  for (const Case& c : {Case{0, 1.25}, {0.001, 0}, {0.1237, 3}, {0.25, 6.2}, {0.3333, 1}, {0.4999, 2}}) {
    const P rFreq = static_cast<P>(c.rFreq), phase = static_cast<P>(c.phase);
    for (KvrHintAlgorithm hint : {kvrHintFast, kvrHintAccurate}) {
      expectGenerated<T>(
          [&](T* dst, int len) {
            P inOut = phase;
            const KvrStatus status = direct(dst, len, magn, rFreq, &inOut, hint);
            EXPECT_EQ(phaseAfter(phase, rFreq, len), inOut) << len;
            return status;
          },
          [&](int len) {
            return model<T>(static_cast<double>(magn), static_cast<double>(rFreq) * kTwoPi,
                            static_cast<double>(phase), len, hint);
          },
          sweepLengths({512, 1024, 2048}));
    }
  }
}

TEST(Tone, Direct16s) {
  checkDirect(kvrsTone_Direct_16s, Kvr16s{32767});
}
TEST(Tone, Direct16sc) {
  checkDirect(kvrsTone_Direct_16sc, Kvr16s{1000});
}
TEST(Tone, Direct32f) {
  checkDirect(kvrsTone_Direct_32f, 0.7f);
}
TEST(Tone, Direct32fc) {
  checkDirect(kvrsTone_Direct_32fc, 1e10f);
}
TEST(Tone, Direct64f) {
  checkDirect(kvrsTone_Direct_64f, 1.0);
}
TEST(Tone, Direct64fc) {
  checkDirect(kvrsTone_Direct_64fc, 3e-5);
}

TEST(Tone, HintsOtherThanFastAreAccurate) {
  for (KvrHintAlgorithm hint : {-5, 0, 2, 3, 77}) {
    Kvr32f phase = 1, dst[40];
    ASSERT_EQ(kvrStatusOk, kvrsTone_Direct_32f(dst, 40, 1, 0.125f, &phase, hint));
    EXPECT_EQ(model<Kvr32f>(1, 0.125 * kTwoPi, 1, 40, kvrHintAccurate), std::vector<Kvr32f>(dst, dst + 40));
  }
}

// In this order: phase, magnitude, frequency, value of the phase, dst, length.
TEST(Tone, RangesOfTheArguments) {
  Kvr32f dst[4], phase = 0;
  const Kvr32f nan = NAN;
  EXPECT_EQ(kvrStatusNullPointer, kvrsTone_Direct_32f(nullptr, 0, 0, 9, nullptr, 0));
  EXPECT_EQ(kvrStatusBadToneMagnitude, kvrsTone_Direct_32f(nullptr, 0, 0, 9, &phase, 0));
  EXPECT_EQ(kvrStatusBadToneMagnitude, kvrsTone_Direct_32f(dst, 4, nan, 0, &phase, 0));
  EXPECT_EQ(kvrStatusBadToneFreq, kvrsTone_Direct_32f(nullptr, 0, 1, 0.5f, &phase, 0));
  EXPECT_EQ(kvrStatusBadToneFreq, kvrsTone_Direct_32f(dst, 4, 1, nan, &phase, 0));
  phase = 6.2831855f;  // 2 pi as a single, which lies above it
  EXPECT_EQ(kvrStatusBadTonePhase, kvrsTone_Direct_32f(nullptr, 0, 1, 0.1f, &phase, 0));
  phase = 6.283185f;
  EXPECT_EQ(kvrStatusOk, kvrsTone_Direct_32f(dst, 4, 1, 0.1f, &phase, 0));
  phase = nan;
  EXPECT_EQ(kvrStatusBadTonePhase, kvrsTone_Direct_32f(dst, 4, 1, 0.1f, &phase, 0));
  phase = 0;
  EXPECT_EQ(kvrStatusNullPointer, kvrsTone_Direct_32f(nullptr, 0, 1, 0.1f, &phase, 0));
  EXPECT_EQ(kvrStatusBadLength, kvrsTone_Direct_32f(dst, 0, 1, 0.1f, &phase, 0));
  Kvr64f dst64[1], phase64 = kTwoPi;
  EXPECT_EQ(kvrStatusBadTonePhase, kvrsTone_Direct_64f(dst64, 1, 1, 0.1, &phase64, 0));
  phase64 = std::nextafter(kTwoPi, 0);
  EXPECT_EQ(kvrStatusOk, kvrsTone_Direct_64f(dst64, 1, 1, 0.0, &phase64, 0));
}

TEST(Tone, PhaseOfAConstantStays) {
  Kvr32f phase = 1.5f, dst[1000];
  ASSERT_EQ(kvrStatusOk, kvrsTone_Direct_32f(dst, 1000, 2, 0, &phase, kvrHintAccurate));
  EXPECT_EQ(1.5f, phase);
  for (Kvr32f x : dst) EXPECT_EQ(static_cast<Kvr32f>(2 * cosine(1.5)), x);
}

// Each piece starts with the phase that the last one has left, which stays in range.
TEST(Tone, PiecesFollowOneAnother) {
  Kvr64f phase = 0;
  const double rFreq = 0.12345;
  long n = 0;
  for (int len : {1, 2, 3, 1024, 1025, 7, 100000, 5}) {
    std::vector<Kvr64f> got(static_cast<size_t>(len));
    ASSERT_EQ(kvrStatusOk, kvrsTone_Direct_64f(got.data(), len, 1, rFreq, &phase, kvrHintNone));
    ASSERT_TRUE(phase >= 0 && phase < kTwoPi);
    const long double angle = static_cast<long double>(rFreq * kTwoPi) * n;
    EXPECT_NEAR(std::cos(static_cast<double>(std::fmod(angle, 6.283185307179586476925L))), got[0], 1e-9);
    n += len;
  }
}

// The bounds of the contract, against extended precision.
TEST(Tone, DriftStaysWithinItsBound) {
  constexpr int kLen = 10'000'000;
  std::vector<Kvr64f> got(kLen);
  for (double rFreq : {0.0, 1e-7, 1e-4, 0.01, 0.1234567, 0.25, 0.3, 0.4999}) {
    Kvr64f phase = 1;
    ASSERT_EQ(kvrStatusOk, kvrsTone_Direct_64f(got.data(), kLen, 1, rFreq, &phase, kvrHintAccurate));
    const double w = rFreq * kTwoPi;
    for (int n = 1; n < kLen; n += n < 1000 ? 1 : 9973) {
      const double bound = n * 1e-15 * std::min(static_cast<double>(n), 1 / std::fabs(std::sin(2 * w)));
      const double want = static_cast<double>(std::cos(static_cast<long double>(w) * n + 1));
      ASSERT_NEAR(want, got[static_cast<size_t>(n)], bound + 1e-15) << rFreq << ", sample " << n;
    }
  }
}

TEST(Tone, FastDriftStaysWithinItsBound) {
  constexpr int kLen = 1 << 20;
  std::vector<Kvr32f> got(kLen);
  for (float rFreq : {1e-6f, 1e-3f, 0.0123f, 0.0625f, 0.1234567f, 0.25f, 0.31f, 0.4999f}) {
    Kvr32f phase = 1;
    ASSERT_EQ(kvrStatusOk, kvrsTone_Direct_32f(got.data(), kLen, 1, rFreq, &phase, kvrHintFast));
    const double w = static_cast<double>(rFreq) * kTwoPi;
    for (int n = 0; n < kLen; ++n) {
      const double k = (n % 1024) / 8 + 1;
      const double bound = k * 0x1p-22 * std::min(k, 1 / std::fabs(std::sin(8 * w)));
      const double want = std::cos(w * n + 1);
      ASSERT_NEAR(want, got[static_cast<size_t>(n)], bound + 1e-7) << rFreq << ", sample " << n;
    }
  }
}

TEST(Tone, IntegersAreTheSameInEveryModeOfTheCaller) {
  const auto expected = model<Kvr16s>(9999, static_cast<double>(0.1f) * kTwoPi, 0, 500, kvrHintFast);
  for (int mode : kCallerModes) {
    std::vector<Kvr16s> got(500);
    Kvr32f phase = 0;
    callWithRounding(mode,
                     [&] { return kvrsTone_Direct_16s(got.data(), 500, 9999, 0.1f, &phase, kvrHintFast); });
    int different = 0;
    for (size_t i = 16; i < got.size(); ++i) different += got[i] != expected[i];
    EXPECT_EQ(0, different) << mode;
  }
}

// --- Q15

bool isRounded(Kvr16s got, long double v) {
  const long double away = v >= 0 ? std::floor(v + 0.5L) : std::ceil(v - 0.5L);
  if (static_cast<long double>(got) == away) return true;
  // The cosine's last bit decides.
  const long double fraction = std::fabs(v) - std::floor(std::fabs(v));
  return std::fabs(fraction - 0.5L) < 1e-9L && std::fabs(static_cast<long double>(got) - v) < 0.6L;
}

long double exactQ15(int magn, int rFreqQ15, int phaseQ15, long n) {
  const double w = kTwoPi * (rFreqQ15 / 32768.0);
  const double product = w * static_cast<double>(n);
  const double angle = product + phaseQ15 / 32768.0;
  return magn * std::cos(static_cast<long double>(angle));
}

TEST(Tone, Q15Direct) {
  const int magns[] = {1, 32767, 1000}, freqs[] = {0, 1, 1234, 8192, 16383}, phases[] = {0, 102944, 205886};
  for (int magn : magns) {
    for (int freq : freqs) {
      for (int phase : phases) {
        std::vector<Kvr16s> all(3000);
        const auto call = [&](Kvr16s* dst, int len) {
          return kvrsToneQ15_Direct_16s(dst, len, static_cast<Kvr16s>(magn), static_cast<Kvr16s>(freq),
                                        phase);
        };
        ASSERT_EQ(kvrStatusOk, call(all.data(), 3000));
        for (int n = 0; n < 3000; ++n) {
          ASSERT_TRUE(isRounded(all[static_cast<size_t>(n)], exactQ15(magn, freq, phase, n))) << n;
        }
        expectGenerated<Kvr16s>(call,
                                [&](int len) { return std::vector<Kvr16s>(all.begin(), all.begin() + len); });
      }
    }
  }
}

TEST(Tone, Q15PiecesAreOneTone) {
  KvrsToneState_16s* state = nullptr;
  ASSERT_EQ(kvrStatusOk, kvrsToneInitAllocQ15_16s(&state, 20000, 4321, 99999));
  std::vector<Kvr16s> all(200000);
  ASSERT_EQ(kvrStatusOk, kvrsToneQ15_Direct_16s(all.data(), 200000, 20000, 4321, 99999));
  size_t at = 0;
  for (int len : {1, 2, 3, 7, 8, 9, 500, 100000, 1, 60000}) {
    std::vector<Kvr16s> got(static_cast<size_t>(len));
    ASSERT_EQ(kvrStatusOk, kvrsToneQ15_16s(got.data(), len, state));
    EXPECT_EQ(std::vector<Kvr16s>(&all[at], &all[at] + len), got) << len;
    at += static_cast<size_t>(len);
  }
  EXPECT_EQ(kvrStatusOk, kvrsToneFree(state));
}

TEST(Tone, Q15StatesInTheCallersMemoryAreLeftAlone) {
  int size = 0;
  ASSERT_EQ(kvrStatusOk, kvrsToneGetStateSizeQ15_16s(&size));
  ASSERT_EQ(48, size);
  Arena arena(64);
  auto* state = reinterpret_cast<KvrsToneState_16s*>(arena.place<uint64_t>(6));
  ASSERT_EQ(kvrStatusOk, kvrsToneInitQ15_16s(state, 7, 16383, 205886));
  const int blocks = liveBlocks();
  EXPECT_EQ(kvrStatusOk, kvrsToneFree(state));
  EXPECT_EQ(blocks, liveBlocks());
  Kvr16s dst[4];
  EXPECT_EQ(kvrStatusOk, kvrsToneQ15_16s(dst, 4, state));
  EXPECT_TRUE(arena.intact());
}

}  // namespace
