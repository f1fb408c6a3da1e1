// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "kvrs/polar.h"
#include "tests/support/ulps.h"
#include "tests/vector/planes.h"
#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

// The plain definitions, in the current rounding mode. The empty assembly keeps the compiler from moving the arithmetic
// past a change of the mode.
template <class T>
[[gnu::noinline]] T power(T re, T im) {
  asm volatile("");
  const T a = re * re, b = im * im;
  return a + b;
}
template <class T>
[[gnu::noinline]] T root(T x) {
  asm volatile("");
  return std::sqrt(x);
}
template <class T>
T magnitude(T re, T im) {
  return root(power(re, im));
}

uint32_t sumOfSquares(int re, int im) {
  return static_cast<uint32_t>(int64_t{re} * re + int64_t{im} * im);
}
[[gnu::noinline]] float toFloat(uint32_t x) {
  asm volatile("");
  return static_cast<float>(static_cast<int64_t>(x));
}

// The exact sum of squares, up to 2^63, rounded once.
[[gnu::noinline]] double toDouble(Kvr32sc z) {
  asm volatile("");
  const auto square = [](int64_t part) { return static_cast<uint64_t>(part * part); };
  const uint64_t sum = square(z.re) + square(z.im);
  return sum >> 63 != 0 ? 0x1p63 : static_cast<double>(static_cast<int64_t>(sum));
}

template <class T>
[[gnu::noinline]] T toInteger(double scaled) {
  asm volatile("");
  const double top = std::numeric_limits<T>::max();
  return scaled >= top ? std::numeric_limits<T>::max() : static_cast<T>(std::rint(scaled));
}

Kvr16s magnitude16s(int re, int im, int scaleFactor) {
  const uint32_t s = sumOfSquares(re, im);
  if (scaleFactor < -14) return s == 0 ? 0 : 32767;
  if (scaleFactor > 16) return 0;
  if (scaleFactor == 16) return s > 1u << 30;
  return toInteger<Kvr16s>(static_cast<double>(std::ldexp(root(toFloat(s)), -scaleFactor)));
}
Kvr32s magnitude32s(Kvr32sc z, int scaleFactor) {
  if (scaleFactor < -30) return z.re == 0 && z.im == 0 ? 0 : INT_MAX;
  if (scaleFactor > 32) return 0;
  return toInteger<Kvr32s>(std::ldexp(root(toDouble(z)), -scaleFactor));
}
Kvr32s squared32s(Kvr32sc z, int scaleFactor) {
  if (scaleFactor < -30) return z.re == 0 && z.im == 0 ? 0 : INT_MAX;
  if (scaleFactor > 63) return 0;
  return toInteger<Kvr32s>(std::ldexp(power<double>(z.re, z.im), -scaleFactor));
}
// To nearest in integers, ties to even.
Kvr16s power16s(int re, int im, int scaleFactor) {
  const uint64_t s = sumOfSquares(re, im);
  if (s == 0 || scaleFactor > 40) return 0;
  if (scaleFactor < -14) return 32767;
  if (scaleFactor <= 0) return static_cast<Kvr16s>(std::min<uint64_t>(s << -scaleFactor, 32767));
  const uint64_t floor = s >> scaleFactor, rest = s - (floor << scaleFactor),
                 half = uint64_t{1} << (scaleFactor - 1);
  return static_cast<Kvr16s>(
      std::min<uint64_t>(floor + (rest > half || (rest == half && floor % 2 != 0)), 32767));
}

std::vector<int> everyScaleFactor() {
  std::vector<int> all{INT_MIN, INT_MIN + 1, INT_MAX - 1, INT_MAX};
  for (int s = -140; s <= 140; ++s) all.push_back(s);
  return all;
}

// Random parts of all sizes, extremes, and parts whose scaled magnitude is near a half.
template <class C>
std::vector<C> someIntegers(int scaleFactor) {
  using T = decltype(C{}.re);
  Random random(static_cast<uint64_t>(scaleFactor));
  std::vector<C> v;
  for (int i = 0; i < 60; ++i) v.push_back(random.value<C>());
  for (int i = 0; i < 60; ++i) {
    const int shift = static_cast<int>(random.below(8 * sizeof(T)));
    v.push_back({static_cast<T>(random.value<T>() >> shift), static_cast<T>(random.value<T>() >> shift)});
  }
  const T low = std::numeric_limits<T>::min(), high = std::numeric_limits<T>::max();
  for (T re : {T{0}, T{1}, T{-1}, low, high})
    for (T im : {T{0}, T{1}, T{-1}, low, high}) v.push_back({re, im});
  if (scaleFactor > 0 && scaleFactor < static_cast<int>(8 * sizeof(T))) {
    for (int n = 0; n < 4; ++n) {
      const int64_t half = (int64_t{2} * n + 1) << (scaleFactor - 1);
      for (int64_t x : {half - 1, half, half + 1})
        if (x <= high) v.push_back({static_cast<T>(x), 0}), v.push_back({0, static_cast<T>(-x)});
    }
  }
  return v;
}

// Every scale factor in every rounding mode: `call(src, dst, len, scaleFactor)` against `oracle(z, scaleFactor)`.
template <class C, class D, class Call, class Oracle>
void checkScaleFactors(Call call, Oracle oracle) {
  for (int scaleFactor : everyScaleFactor()) {
    const std::vector<C> src = someIntegers<C>(scaleFactor);
    std::vector<D> got(src.size()), want(src.size());
    for (const Mode& mode : kModes) {
      ASSERT_EQ(kvrStatusOk, inMode(mode.fe, [&] {
                  for (size_t i = 0; i < src.size(); ++i) want[i] = oracle(src[i], scaleFactor);
                  return call(src.data(), got.data(), static_cast<int>(src.size()), scaleFactor);
                }));
      for (size_t i = 0; i < src.size(); ++i) {
        ASSERT_EQ(want[i], got[i]) << show(src[i]) << ", scaleFactor " << scaleFactor << ", mode " << mode.fe;
      }
    }
  }
}

// A planar function on the parts of complex numbers.
template <class T, class Planar>
auto onPlanes(Planar planar) {
  return [=](const auto* src, auto* dst, int len, auto... scaleFactor) {
    std::vector<T> re, im;
    for (int i = 0; i < len; ++i) {
      re.push_back(src[i].re);
      im.push_back(src[i].im);
    }
    return planar(re.data(), im.data(), dst, len, scaleFactor...);
  };
}

TEST(Magnitude, ScaleFactors16s) {
  const auto oracle = [](Kvr16sc z, int scaleFactor) { return magnitude16s(z.re, z.im, scaleFactor); };
  checkScaleFactors<Kvr16sc, Kvr16s>(kvrsMagnitude_16sc_Sfs, oracle);
  checkScaleFactors<Kvr16sc, Kvr16s>(onPlanes<Kvr16s>(kvrsMagnitude_16s_Sfs), oracle);
}
// Squares that are rounded before they are added turn the halves of odd magnitudes.
TEST(Magnitude, SumOfSquaresIsExact) {
  const Kvr32sc known = {411737480, 772007775};  // magnitude 874942145
  Kvr32s got = 0;
  ASSERT_EQ(kvrStatusOk, kvrsMagnitude_32sc_Sfs(&known, &got, 1, 1));
  EXPECT_EQ(437471072, got);
  const Kvr32sc extreme = {INT_MIN, INT_MIN};
  ASSERT_EQ(kvrStatusOk, kvrsMagnitude_32sc_Sfs(&extreme, &got, 1, 1));
  EXPECT_EQ(1518500250, got);  // 2^30.5
  // Whole magnitudes: (m^2 - n^2, 2mn, m^2 + n^2) times k.
  Random random;
  std::vector<Kvr32sc> src;
  std::vector<int64_t> magnitude;
  while (src.size() < 100000) {
    const int64_t m = 1 + random.below(32768), n = 1 + random.below(32768);
    const int64_t k = 1 + random.below(1u << random.below(12));
    const int64_t a = k * (m * m - n * n), b = k * 2 * m * n;
    if (std::max(std::abs(a), b) > INT_MAX) continue;
    src.push_back({static_cast<Kvr32s>(a), static_cast<Kvr32s>(-b)});
    magnitude.push_back(k * (m * m + n * n));
  }
  std::vector<Kvr32s> dst(src.size());
  ASSERT_EQ(kvrStatusOk, kvrsMagnitude_32sc_Sfs(src.data(), dst.data(), static_cast<int>(src.size()), 1));
  for (size_t i = 0; i < src.size(); ++i) {
    const int64_t floor = magnitude[i] >> 1, up = magnitude[i] & 1 & floor;
    ASSERT_EQ(std::min<int64_t>(floor + up, INT_MAX), dst[i]) << show(src[i]);
  }
}
TEST(Magnitude, ScaleFactors32sc) {
  checkScaleFactors<Kvr32sc, Kvr32s>(kvrsMagnitude_32sc_Sfs, magnitude32s);
  checkScaleFactors<Kvr32sc, Kvr32s>(kvrsMagSquared_32sc32s_Sfs, squared32s);
}
TEST(Magnitude, ScaleFactorsOfPower) {
  const auto oracle = [](Kvr16sc z, int scaleFactor) { return power16s(z.re, z.im, scaleFactor); };
  checkScaleFactors<Kvr16sc, Kvr16s>(kvrsPowerSpectr_16sc_Sfs, oracle);
  checkScaleFactors<Kvr16sc, Kvr16s>(onPlanes<Kvr16s>(kvrsPowerSpectr_16s_Sfs), oracle);
}

TEST(Magnitude, OnlyTheLargestSumsRoundToOne) {
  const Kvr16sc src[] = {{32767, 32767}, {-32768, 0}, {-32768, 1}, {-32768, -32768}, {23170, 23170}, {0, 0}};
  Kvr16s dst[6];
  ASSERT_EQ(kvrStatusOk, kvrsMagnitude_16sc_Sfs(src, dst, 6, 16));
  const Kvr16s want[] = {1, 0, 1, 1, 0, 0};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(want[i], dst[i]) << i;
  ASSERT_EQ(kvrStatusOk, kvrsMagnitude_16sc_Sfs(src, dst, 6, 17));
  for (Kvr16s x : dst) EXPECT_EQ(0, x);
}

TEST(Magnitude, SweepIntegers) {
  for (int scaleFactor : {-40, -3, 0, 1, 7, 16, 17}) {
    SweepOptions options = {.rounding = Rounding::followed};
    options.lengths =
        scaleFactor == 1 ? sweepLengths() : std::vector<int>{1, 2, 3, 5, 8, 15, 16, 17, 31, 33, 65, 140};
    const auto with = [=](auto f) { return [=](auto... a) { return f(a..., scaleFactor); }; };
    const auto of16sc = [=](Kvr16sc z) { return magnitude16s(z.re, z.im, scaleFactor); };
    const auto of16s = [=](Kvr16s re, Kvr16s im) { return magnitude16s(re, im, scaleFactor); };
    sweepMap<Kvr16s, Kvr16sc>(with(kvrsMagnitude_16sc_Sfs), of16sc, options);
    sweepMap<Kvr16s, Kvr16s, Kvr16s>(with(kvrsMagnitude_16s_Sfs), of16s, options);
    sweepMap<Kvr32s, Kvr32sc>(
        with(kvrsMagnitude_32sc_Sfs), [=](Kvr32sc z) { return magnitude32s(z, scaleFactor); }, options);
    sweepMap<Kvr32s, Kvr32sc>(
        with(kvrsMagSquared_32sc32s_Sfs), [=](Kvr32sc z) { return squared32s(z, scaleFactor); }, options);
    sweepMap<Kvr16s, Kvr16sc>(
        with(kvrsPowerSpectr_16sc_Sfs), [=](Kvr16sc z) { return power16s(z.re, z.im, scaleFactor); },
        options);
    sweepMap<Kvr16s, Kvr16s, Kvr16s>(
        with(kvrsPowerSpectr_16s_Sfs), [=](Kvr16s re, Kvr16s im) { return power16s(re, im, scaleFactor); },
        options);
  }
}

TEST(Magnitude, SweepToFloat) {
  const auto power = [](Kvr16s re, Kvr16s im) { return toFloat(sumOfSquares(re, im)); };
  const auto magnitude = [=](Kvr16s re, Kvr16s im) { return root(power(re, im)); };
  const auto complex = [](auto oracle) { return [=](Kvr16sc z) { return oracle(z.re, z.im); }; };
  sweepMap<Kvr32f, Kvr16s, Kvr16s>(kvrsMagnitude_16s32f, magnitude);
  sweepMap<Kvr32f, Kvr16sc>(kvrsMagnitude_16sc32f, complex(magnitude));
  sweepMap<Kvr32f, Kvr16s, Kvr16s>(kvrsPowerSpectr_16s32f, power);
  sweepMap<Kvr32f, Kvr16sc>(kvrsPowerSpectr_16sc32f, complex(power));
}

TEST(Magnitude, SweepFloats) {
  sweepFloats<Kvr32f, Kvr32f, Kvr32f>(kvrsMagnitude_32f, magnitude<float>);
  sweepFloats<Kvr64f, Kvr64f, Kvr64f>(kvrsMagnitude_64f, magnitude<double>);
  sweepFloats<Kvr32f, Kvr32fc>(kvrsMagnitude_32fc, [](Kvr32fc z) { return magnitude(z.re, z.im); });
  sweepFloats<Kvr64f, Kvr64fc>(kvrsMagnitude_64fc, [](Kvr64fc z) { return magnitude(z.re, z.im); });
  sweepFloats<Kvr32f, Kvr32f, Kvr32f>(kvrsPowerSpectr_32f, power<float>);
  sweepFloats<Kvr64f, Kvr64f, Kvr64f>(kvrsPowerSpectr_64f, power<double>);
  sweepFloats<Kvr32f, Kvr32fc>(kvrsPowerSpectr_32fc, [](Kvr32fc z) { return power(z.re, z.im); });
  sweepFloats<Kvr64f, Kvr64fc>(kvrsPowerSpectr_64fc, [](Kvr64fc z) { return power(z.re, z.im); });
  sweepFloats<Kvr64f, Kvr32fc>(kvrsMagSquared_32fc64f, [](Kvr32fc z) { return power<double>(z.re, z.im); });
}

TEST(Magnitude, FollowsTheRoundingMode) {
  constexpr int kLen = 500;
  Random random(5);
  std::vector<Kvr32fc> f(kLen);
  std::vector<Kvr64fc> d(kLen);
  std::vector<Kvr16sc> s(kLen);
  for (int i = 0; i < kLen; ++i) {
    f[i] = {static_cast<float>(random.unit()), static_cast<float>(random.unit())};
    d[i] = {random.unit(), random.unit()};
    s[i] = random.value<Kvr16sc>();
  }
  std::vector<Kvr32f> gotF(kLen), powerF(kLen), gotS(kLen), powerS(kLen);
  std::vector<Kvr64f> gotD(kLen), powerD(kLen), squaredF(kLen);
  for (const Mode& mode : kModes) {
    inMode(mode.fe, [&] {
      kvrsMagnitude_32fc(f.data(), gotF.data(), kLen);
      kvrsPowerSpectr_32fc(f.data(), powerF.data(), kLen);
      kvrsMagnitude_64fc(d.data(), gotD.data(), kLen);
      kvrsPowerSpectr_64fc(d.data(), powerD.data(), kLen);
      kvrsMagSquared_32fc64f(f.data(), squaredF.data(), kLen);
      kvrsMagnitude_16sc32f(s.data(), gotS.data(), kLen);
      kvrsPowerSpectr_16sc32f(s.data(), powerS.data(), kLen);
      for (int i = 0; i < kLen; ++i) {
        EXPECT_EQ(magnitude(f[i].re, f[i].im), gotF[i]);
        EXPECT_EQ(power(f[i].re, f[i].im), powerF[i]);
        EXPECT_EQ(magnitude(d[i].re, d[i].im), gotD[i]);
        EXPECT_EQ(power(d[i].re, d[i].im), powerD[i]);
        EXPECT_EQ(power<double>(f[i].re, f[i].im), squaredF[i]);
        EXPECT_EQ(root(toFloat(sumOfSquares(s[i].re, s[i].im))), gotS[i]);
        EXPECT_EQ(toFloat(sumOfSquares(s[i].re, s[i].im)), powerS[i]);
      }
      return kvrStatusOk;
    });
  }
}

// At most one unit from the correctly rounded magnitude.
template <class T, class F>
void checkAccuracy(F f, int lowest, int highest) {
  constexpr int kLen = 1000;
  Random random(11);
  std::vector<T> re(kLen), im(kLen), got(kLen);
  for (int turn = 0; turn < 100; ++turn) {
    for (int i = 0; i < kLen; ++i) {
      re[i] = ofExponents<T>(random, lowest, highest);
      im[i] = ofExponents<T>(random, lowest, highest);
    }
    ASSERT_EQ(kvrStatusOk, f(re.data(), im.data(), got.data(), kLen));
    for (int i = 0; i < kLen; ++i) {
      const long double a = re[i], b = im[i];
      const T rounded = static_cast<T>(std::sqrt(a * a + b * b));
      ASSERT_LE(ulps(got[i], static_cast<long double>(rounded)), 1) << re[i] << ", " << im[i];
    }
  }
}

TEST(Magnitude, Accuracy) {
  checkAccuracy<Kvr32f>(kvrsMagnitude_32f, -2, 1);
  checkAccuracy<Kvr32f>(kvrsMagnitude_32f, -60, 61);
  checkAccuracy<Kvr64f>(kvrsMagnitude_64f, -2, 1);
  checkAccuracy<Kvr64f>(kvrsMagnitude_64f, -500, 500);
}

TEST(Magnitude, PlanesInPlace) {
  expectPlanesInPlace(kvrsMagnitude_32f, Kvr32f());
  expectPlanesInPlace(kvrsMagnitude_64f, Kvr64f());
  expectPlanesInPlace(kvrsPowerSpectr_32f, Kvr32f());
  expectPlanesInPlace(kvrsPowerSpectr_64f, Kvr64f());
  expectPlanesInPlace([](auto... a) { return kvrsMagnitude_16s_Sfs(a..., 2); }, Kvr16s());
  expectPlanesInPlace([](auto... a) { return kvrsPowerSpectr_16s_Sfs(a..., 9); }, Kvr16s());
}

// Around the length from which a team works, on several teams, in two rounding modes.
template <class D, class S, class Call>
void checkThreads(int threadedFrom, Call call) {
  const int from = threadedLength(threadedFrom);
  const auto src = randomVector<S>(static_cast<size_t>(from) + 1, 7);
  for (int len : {from - 1, from, from + 1}) {
    for (int mode : {FE_TONEAREST, FE_UPWARD}) {
      expectSameOnThreads<D>(
          static_cast<size_t>(len), kvrStatusOk, "len " + std::to_string(len),
          [&](D* dst) { return inMode(mode, [&] { return call(src.data(), dst, len); }); });
    }
  }
}
TEST(Magnitude, Threads) {
  checkThreads<Kvr32f, Kvr32f>(
      4096, [](const Kvr32f* src, Kvr32f* dst, int len) { return kvrsMagnitude_32f(src, src, dst, len); });
  checkThreads<Kvr64f, Kvr64f>(
      256, [](const Kvr64f* src, Kvr64f* dst, int len) { return kvrsMagnitude_64f(src, src, dst, len); });
  checkThreads<Kvr32f, Kvr16s>(
      2048, [](const Kvr16s* src, Kvr32f* dst, int len) { return kvrsMagnitude_16s32f(src, src, dst, len); });
  checkThreads<Kvr16s, Kvr16s>(2048, [](const Kvr16s* src, Kvr16s* dst, int len) {
    return kvrsMagnitude_16s_Sfs(src, src, dst, len, 1);
  });
  checkThreads<Kvr32f, Kvr16sc>(4096, kvrsMagnitude_16sc32f);
  checkThreads<Kvr32f, Kvr32fc>(2048, kvrsMagnitude_32fc);
  checkThreads<Kvr64f, Kvr64fc>(256, kvrsMagnitude_64fc);
  for (int scaleFactor : {1, 16}) {
    checkThreads<Kvr16s, Kvr16sc>(2048, [=](const Kvr16sc* src, Kvr16s* dst, int len) {
      return kvrsMagnitude_16sc_Sfs(src, dst, len, scaleFactor);
    });
  }
  checkThreads<Kvr32s, Kvr32sc>(
      256, [](const Kvr32sc* src, Kvr32s* dst, int len) { return kvrsMagnitude_32sc_Sfs(src, dst, len, 1); });
}

}  // namespace
