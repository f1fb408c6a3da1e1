// SPDX-License-Identifier: MIT
#include "kvrs/triangle.h"

#include <cmath>
#include <type_traits>
#include <vector>

#include "tests/support/core.h"
#include "tests/synth/generated.h"

using namespace kvrs::test;

namespace {

constexpr double kPi = 3.141592653589793, kTwoPi = 6.283185307179586;

// The wave as the contract tells it.
std::vector<double> wave(double magn, double rFreq, double asym, double phase, int len) {
  const double l2 = kPi + asym, l1 = kPi - asym, k = 12.566370614359172 * magn;
  const double ratioDown = -l1 / l2, ratioUp = -l2 / l1;
  const double offsDown = magn - magn * ratioDown, offsUp = magn * ratioUp - magn;
  const double numerator = k * rFreq;
  double value, step;
  if (phase < l2) {
    const double quotient = (phase + phase) / l2;
    value = (1 - quotient) * magn;
    step = -numerator / l2;
  } else {
    const double quotient = ((phase - l2) * 2.0) / l1;
    value = (quotient - 1.0) * magn;
    step = numerator / l1;
  }
  bool rising = step > 0;
  std::vector<double> samples;
  for (int i = 0; i < len; ++i) {
    samples.push_back(value);
    value = value + step;
    if (rising && value > magn) {
      const double product = ratioDown * value;
      const double r = product + offsDown;
      if (r >= -magn) {
        value = r;
        step = -numerator / l2;
        rising = false;
      } else {
        value = value - k / l1;
      }
    } else if (!rising && value < -magn) {
      const double product = ratioUp * value;
      const double r = product + offsUp;
      if (r <= magn) {
        value = r;
        step = numerator / l1;
        rising = true;
      } else {
        value = value + k / l2;
      }
    }
  }
  return samples;
}

template <class Part>
Part stored(double v) {
  if constexpr (std::is_same_v<Part, Kvr16s>) {
    return static_cast<Kvr16s>(v > 0 ? std::trunc(v + 0.5) : std::trunc(v - 0.5));
  } else {
    return static_cast<Part>(v);
  }
}

template <class T>
std::vector<T> model(double magn, double rFreq, double asym, double phase, int len) {
  const auto re = wave(magn, rFreq, asym, phase, len);
  std::vector<T> samples;
  if constexpr (std::is_arithmetic_v<T>) {
    for (double v : re) samples.push_back(stored<T>(v));
  } else {
    double second = phase + (kTwoPi + (kPi + asym)) * 0.5;
    if (second >= kTwoPi) second -= kTwoPi;
    const auto im = wave(magn, rFreq, asym, second, len);
    using Part = decltype(T::re);
    for (size_t i = 0; i < re.size(); ++i) samples.push_back({stored<Part>(re[i]), stored<Part>(im[i])});
  }
  return samples;
}

template <class P>
P phaseAfter(P phase, P rFreq, int len) {
  const double w = static_cast<double>(rFreq) * kTwoPi;
  const double product = len * w;
  const double t = product + static_cast<double>(phase);
  const double whole = std::floor(t * 0.15915494309189535) * kTwoPi;
  const P after = static_cast<P>(t - whole);
  return after < 0 || static_cast<double>(after) >= kTwoPi ? P{0} : after;
}

template <class T, class M, class P>
using Direct = KvrStatus (*)(T*, int, M, P, P, P*) noexcept;

template <class T, class M, class P>
void checkDirect(Direct<T, M, P> direct, M magn) {
  struct Case {
    double rFreq, asym, phase;
  };
  const Case cases[] = {{0, 0, 1},           {0.001, 0, 0},          {0.0137, 0, 3.2},  {0.1, 1.5, 6},
                        {0.1, -1.5, 2},      {0.25, 0.5, 1},         {0.4999, 3.14, 1}, {0.4999, -3.14, 5},
                        {0.49, 3.1415, 6.2}, {0.013, -3.1415925, 1}, {0.3, 3, 0.1},     {0.45, -3, 0}};
  for (const Case& c : cases) {
    const P rFreq = static_cast<P>(c.rFreq), asym = static_cast<P>(c.asym), phase = static_cast<P>(c.phase);
    expectGenerated<T>(
        [&](T* dst, int len) {
          P inOut = phase;
          const KvrStatus status = direct(dst, len, magn, rFreq, asym, &inOut);
          EXPECT_EQ(phaseAfter(phase, rFreq, len), inOut) << len;
          return status;
        },
        [&](int len) {
          return model<T>(static_cast<double>(magn), static_cast<double>(rFreq), static_cast<double>(asym),
                          static_cast<double>(phase), len);
        });
  }
}

TEST(Triangle, Direct) {
  checkDirect(kvrsTriangle_Direct_16s, Kvr16s{32767});
  checkDirect(kvrsTriangle_Direct_16sc, Kvr16s{1000});
  checkDirect(kvrsTriangle_Direct_32f, 0.7f);
  checkDirect(kvrsTriangle_Direct_32fc, 1e10f);
  checkDirect(kvrsTriangle_Direct_64f, 1.0);
  checkDirect(kvrsTriangle_Direct_64fc, 3e-5);
}

// The value at a phase, by the shape alone.
double shape(double asym, double phase) {
  const double l2 = kPi + asym;
  return phase < l2 ? 1 - 2 * phase / l2 : 2 * (phase - l2) / (kPi - asym) - 1;
}

TEST(Triangle, FollowsItsShape) {
  constexpr int kLen = 20000;
  for (double asym : {0.0, 1.0, -2.5, 3.1, -3.1}) {
    for (double rFreq : {0.0001, 0.01, 0.0777, 0.2, 0.4321}) {
      std::vector<Kvr64f> got(kLen);
      Kvr64f phase = 0.5;
      ASSERT_EQ(kvrStatusOk, kvrsTriangle_Direct_64f(got.data(), kLen, 1, rFreq, asym, &phase));
      for (int n = 0; n < kLen; ++n) {
        const double at = std::fmod(rFreq * kTwoPi * n + 0.5, kTwoPi);
        const double tolerance = 1e-7 / (kPi - std::fabs(asym));
        const bool nearCorner = std::fabs(at) < 1e-7 || std::fabs(at - kTwoPi) < 1e-7;
        if (!nearCorner) {
          ASSERT_NEAR(shape(asym, at), got[static_cast<size_t>(n)], tolerance)
              << asym << " " << rFreq << " " << n;
        }
      }
    }
  }
}

// A falling leg of no length: a rising sawtooth.
TEST(Triangle, LegOfNoLength) {
  for (double rFreq : {0.0, 0.01, 0.3, 0.4999}) {
    std::vector<Kvr64f> got(5000);
    Kvr64f phase = 1;
    ASSERT_EQ(kvrStatusOk, kvrsTriangle_Direct_64f(got.data(), 5000, 2, rFreq, -kPi, &phase));
    for (int n = 0; n < 5000; ++n) {
      const double at = std::fmod(rFreq * kTwoPi * n + 1, kTwoPi);
      if (at > 1e-7 && at < kTwoPi - 1e-7) {
        ASSERT_NEAR(2 * (at / kPi - 1), got[static_cast<size_t>(n)], 1e-8) << rFreq << " " << n;
      }
    }
    std::vector<Kvr64fc> both(100);
    phase = 1;
    ASSERT_EQ(kvrStatusOk, kvrsTriangle_Direct_64fc(both.data(), 100, 2, rFreq, -kPi, &phase));
    for (const Kvr64fc& x : both) EXPECT_TRUE(std::fabs(x.re) <= 2.0000001 && std::fabs(x.im) <= 2.0000001);
  }
}

TEST(Triangle, LegsOfEqualSlopes) {
  std::vector<Kvr64f> got(11);
  Kvr64f phase = 0;
  ASSERT_EQ(kvrStatusOk, kvrsTriangle_Direct_64f(got.data(), 11, 5, 0.1, 0, &phase));
  const double want[] = {5, 3, 1, -1, -3, -5, -3, -1, 1, 3, 5};
  for (size_t i = 0; i < 11; ++i) EXPECT_NEAR(want[i], got[i], 1e-13);
}

TEST(Triangle, RangesOfTheArguments) {
  Kvr32f dst[4], phase = 0;
  const Kvr32f nan = NAN;
  EXPECT_EQ(kvrStatusNullPointer, kvrsTriangle_Direct_32f(nullptr, 0, 0, 9, 9, nullptr));
  EXPECT_EQ(kvrStatusBadTriangleMagnitude, kvrsTriangle_Direct_32f(nullptr, 0, 0, 9, 9, &phase));
  EXPECT_EQ(kvrStatusBadTriangleFreq, kvrsTriangle_Direct_32f(nullptr, 0, 1, 0.5f, 9, &phase));
  EXPECT_EQ(kvrStatusBadTriangleFreq, kvrsTriangle_Direct_32f(dst, 4, 1, nan, 0, &phase));
  EXPECT_EQ(kvrStatusBadTriangleAsym, kvrsTriangle_Direct_32f(nullptr, 0, 1, 0.1f, 3.1415927f, &phase));
  EXPECT_EQ(kvrStatusBadTriangleAsym, kvrsTriangle_Direct_32f(dst, 4, 1, 0.1f, -3.1415927f, &phase));
  EXPECT_EQ(kvrStatusBadTriangleAsym, kvrsTriangle_Direct_32f(dst, 4, 1, 0.1f, nan, &phase));
  phase = 6.2831855f;
  EXPECT_EQ(kvrStatusBadTrianglePhase, kvrsTriangle_Direct_32f(nullptr, 0, 1, 0.1f, 0, &phase));
  phase = 0;
  EXPECT_EQ(kvrStatusNullPointer, kvrsTriangle_Direct_32f(nullptr, 0, 1, 0.1f, 0, &phase));
  EXPECT_EQ(kvrStatusBadLength, kvrsTriangle_Direct_32f(dst, -1, 1, 0.1f, 0, &phase));
  EXPECT_EQ(kvrStatusOk, kvrsTriangle_Direct_32f(dst, 4, 1, 0.1f, -3.1415925f, &phase));
  Kvr64f dst64[1], phase64 = 0;
  EXPECT_EQ(kvrStatusBadTriangleAsym, kvrsTriangle_Direct_64f(dst64, 1, 1, 0.1, kPi, &phase64));
}

TEST(Triangle, Q15) {
  const int cases[][4] = {{32767, 0, 0, 0},          {32767, 16383, 205886, 102943},
                          {1000, 16383, 0, -102943}, {1, 5000, 102944, 0},
                          {20000, 123, 777, 50000},  {20000, 9000, 777, -50000},
                          {32767, 16383, 1, -102943}};
  for (const auto& [magn, freq, phase, asym] : cases) {
    const auto want = [&](int len) {
      return model<Kvr16s>(magn, freq / 32768.0, asym / 32768.0, phase / 32768.0, len);
    };
    expectGenerated<Kvr16s>(
        [&](Kvr16s* dst, int len) {
          return kvrsTriangleQ15_Direct_16s(dst, len, static_cast<Kvr16s>(magn), static_cast<Kvr16s>(freq),
                                            phase, asym);
        },
        want);
    KvrsTriangleState_16s* state = nullptr;
    ASSERT_EQ(kvrStatusOk, kvrsTriangleInitAllocQ15_16s(&state, static_cast<Kvr16s>(magn),
                                                        static_cast<Kvr16s>(freq), phase, asym));
    const auto all = want(4000);
    size_t at = 0;
    for (int len : {1, 2, 3, 500, 513, 7, 2048}) {
      std::vector<Kvr16s> got(static_cast<size_t>(len));
      ASSERT_EQ(kvrStatusOk, kvrsTriangleQ15_16s(got.data(), len, state));
      EXPECT_EQ(std::vector<Kvr16s>(&all[at], &all[at] + len), got) << len;
      at += static_cast<size_t>(len);
    }
    EXPECT_EQ(kvrStatusOk, kvrsTriangleFree(state));
  }
}

TEST(Triangle, Q15StatesInTheCallersMemoryAreLeftAlone) {
  int size = 0;
  ASSERT_EQ(kvrStatusOk, kvrsTriangleGetStateSizeQ15_16s(&size));
  ASSERT_EQ(136, size);
  Arena arena(256);
  auto* state = reinterpret_cast<KvrsTriangleState_16s*>(arena.place<uint64_t>(17));
  ASSERT_EQ(kvrStatusOk, kvrsTriangleInitQ15_16s(state, 7, 16383, 205886, 102943));
  const int blocks = liveBlocks();
  EXPECT_EQ(kvrStatusOk, kvrsTriangleFree(state));
  EXPECT_EQ(blocks, liveBlocks());
  Kvr16s dst[4];
  const auto* words = reinterpret_cast<const int32_t*>(state);
  EXPECT_EQ(0, get(words, 32)) << "started";
  EXPECT_EQ(kvrStatusOk, kvrsTriangleQ15_16s(dst, 4, state));
  EXPECT_TRUE(arena.intact());
  EXPECT_EQ(get(reinterpret_cast<const double*>(state), 13) > 0, get(words, 30)) << "step, rising";
  EXPECT_EQ(0, get(words, 31)) << "allocated";
  EXPECT_EQ(1, get(words, 32)) << "started";
}

}  // namespace
