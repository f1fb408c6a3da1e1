// SPDX-License-Identifier: MIT
#include <climits>
#include <cmath>
#include <vector>

#include "kvrs/logarithm.h"
#include "tests/support/rounding.h"
#include "tests/support/sweep.h"
#include "tests/vector/tied.h"

using namespace kvrs::test;

namespace {

constexpr long double kDecibels = 4.342944819032518276511289189166050823L;  // 10 / ln 10

// The rule: rounded and shifted from scale factor 0 on; below, of single precision.
template <class D, class S>
Tied<D> scaledLogarithm(S x, int scaleFactor, bool decibels) {
  if (x <= 0) return {std::numeric_limits<D>::lowest()};
  const long double exact = std::log(static_cast<long double>(x)) * (decibels ? kDecibels : 1);
  if (scaleFactor >= 0) {
    const int shift = decibels ? scaleFactor & 31 : std::min(scaleFactor, 31);
    return {static_cast<D>(static_cast<int>(roundedTo(exact, kvrRoundNear)) >> shift)};
  }
  // The integer as a single, its logarithm within a unit, the product and for decibels the factor.
  const long double scaled = std::ldexp(exact, scaleFactor < -200 ? 200 : -scaleFactor);
  const long double slack = scaled * 0x1p-22L + std::ldexp(0x1p-23L, scaleFactor < -200 ? 200 : -scaleFactor);
  const auto rounded = [](long double y) {
    return std::fabs(y) > 1e15L ? saturatedTo<D>(y) : saturatedTo<D>(roundedTo(y, kvrRoundNear));
  };
  return {rounded(scaled - slack), rounded(scaled + slack)};
}

template <class D, class S>
using Call = KvrStatus (*)(const S*, D*, int, int) noexcept;

template <class S>
KvrStatus statusOf(const std::vector<S>& src) {
  for (S x : src)
    if (x <= 0) return x == 0 ? kvrStatusLnZeroArg : kvrStatusLnNegArg;
  return kvrStatusOk;
}

// Between both values, where single precision leaves several.
template <class D>
bool isBetween(Tied<D> want, D got) {
  return std::min(want.value, want.other) <= got && got <= std::max(want.value, want.other);
}

template <class D, class S>
void checkAll(Call<D, S> f, const std::vector<S>& src, bool decibels) {
  std::vector<D> got(src.size());
  std::vector<int> factors{INT_MIN, INT_MIN + 1, -100, -41, -40, 41, 100, INT_MAX};
  for (int s = -33; s <= 33; ++s) factors.push_back(s);
  for (int scaleFactor : factors) {
    ASSERT_EQ(statusOf(src), f(src.data(), got.data(), static_cast<int>(src.size()), scaleFactor));
    for (size_t i = 0; i < src.size(); ++i) {
      ASSERT_TRUE(isBetween(scaledLogarithm<D>(src[i], scaleFactor, decibels), got[i]))
          << src[i] << ", scaleFactor " << scaleFactor << ": " << got[i];
    }
  }
}

TEST(LnInteger, All16Bits) {
  std::vector<Kvr16s> all;
  for (int x = -32768; x <= 32767; ++x) all.push_back(static_cast<Kvr16s>(x));
  checkAll<Kvr16s, Kvr16s>(kvrsLn_16s_Sfs, all, false);
}

// Each point between two results with its neighbours, powers of two, and others.
std::vector<Kvr32s> decisionPoints(bool decibels) {
  std::vector<Kvr32s> src{1, 2, 3, INT_MAX, INT_MAX - 1};
  const auto add = [&](long double x) {
    for (int off : {-1, 0, 1, 2})
      if (x + off >= 1 && x + off <= INT_MAX) src.push_back(static_cast<Kvr32s>(x) + off);
  };
  for (int k = 0; k < 94; ++k) add(std::exp((k + 0.5L) / (decibels ? kDecibels : 1)));
  for (int k = 1; k < 31; ++k) add(std::ldexp(1.0L, k));
  Random random(5);
  for (int i = 0; i < 500; ++i) add(std::exp(random.unit() * 10.7 + 10.7));
  return src;
}

TEST(LnInteger, DecisionPoints) {
  const auto natural = decisionPoints(false);
  checkAll<Kvr32s, Kvr32s>(kvrsLn_32s_Sfs, natural, false);
  checkAll<Kvr16s, Kvr32s>(kvrsLn_32s16s_Sfs, natural, false);
  checkAll<Kvr32s, Kvr32s>(kvrs10Log10_32s_Sfs, decisionPoints(true), true);
}

TEST(LnInteger, KnownValues) {
  const Kvr16s src[] = {1,   2,   4,   5,    12,   13,   33,   34,    90,    91,   244,
                        245, 665, 666, 1808, 1809, 4914, 4915, 13359, 13360, 32767};
  const Kvr16s want[] = {0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8, 9, 9, 10, 10};
  Kvr16s got[21];
  ASSERT_EQ(kvrStatusOk, kvrsLn_16s_Sfs(src, got, 21, 0));
  for (int i = 0; i < 21; ++i) EXPECT_EQ(want[i], got[i]) << src[i];
  // The last integers below e^12.5, e^13.5 and so on.
  const Kvr32s points[] = {268337, 729416, 5389698, 39824784, 108254987, 294267566, 799902177};
  const int k[] = {13, 14, 16, 18, 19, 20, 21};
  for (int i = 0; i < 7; ++i) {
    const Kvr32s about[] = {points[i], points[i] + 1};
    Kvr32s result[2];
    ASSERT_EQ(kvrStatusOk, kvrsLn_32s_Sfs(about, result, 2, 0));
    EXPECT_EQ(k[i] - 1, result[0]) << points[i];
    EXPECT_EQ(k[i], result[1]) << points[i];
  }
  const Kvr32s tens[] = {2, 3, 4, 5, 9, 56234, 56235, 14125375, 14125376};
  const Kvr32s decibels[] = {3, 5, 6, 7, 10, 47, 48, 71, 72};
  Kvr32s gotTens[9];
  ASSERT_EQ(kvrStatusOk, kvrs10Log10_32s_Sfs(tens, gotTens, 9, 0));
  for (int i = 0; i < 9; ++i) EXPECT_EQ(decibels[i], gotTens[i]) << tens[i];
  kvrs10Log10_32s_Sfs(tens, gotTens, 1, 1);
  EXPECT_EQ(1, gotTens[0]);
  kvrs10Log10_32s_Sfs(tens, gotTens, 1, 32);
  EXPECT_EQ(3, gotTens[0]);
}

template <class D, class S>
void checkWarnings(Call<D, S> f) {
  for (int scaleFactor : {-9, 0, 2, 40}) {
    for (int len : {1, 2, 5, 17, 64, 255, 256, 257, 700}) {
      const size_t n = static_cast<size_t>(len);
      Random random(static_cast<uint64_t>(len));
      for (int turn = 0; turn < 40; ++turn) {
        std::vector<S> src(n);
        for (S& x : src) x = static_cast<S>(1 + random.below(30000));
        for (int k = 0; k < turn % 4; ++k) {
          const S replaced[] = {0, -1, std::numeric_limits<S>::lowest()};
          src[random.below(static_cast<uint32_t>(len))] = replaced[random.below(3)];
        }
        std::vector<D> dst(n);
        ASSERT_EQ(statusOf(src), f(src.data(), dst.data(), len, scaleFactor)) << "len " << len;
        for (size_t i = 0; i < n; ++i) {
          ASSERT_EQ(src[i] <= 0, dst[i] == std::numeric_limits<D>::lowest());
        }
      }
    }
  }
}

TEST(LnInteger, Warnings) {
  checkWarnings<Kvr16s, Kvr16s>(kvrsLn_16s_Sfs);
  checkWarnings<Kvr32s, Kvr32s>(kvrsLn_32s_Sfs);
  checkWarnings<Kvr16s, Kvr32s>(kvrsLn_32s16s_Sfs);
  checkWarnings<Kvr32s, Kvr32s>(kvrs10Log10_32s_Sfs);
  const Kvr16s zeroFirst[] = {1, 0, -5}, negativeFirst[] = {1, -5, 0};
  Kvr16s got[3];
  EXPECT_EQ(kvrStatusLnZeroArg, kvrsLn_16s_Sfs(zeroFirst, got, 3, 0));
  EXPECT_EQ(kvrStatusLnNegArg, kvrsLn_16s_Sfs(negativeFirst, got, 3, 0));
}

template <class D, class S>
void sweepAt(Call<D, S> f, int scaleFactor, bool decibels) {
  const auto draw = [](Random& random, size_t, S) {
    const S x = random.value<S>();
    return x > 0 ? x : static_cast<S>(x < -1 ? -(x + 1) : 1);
  };
  sweepMapWith<D, S>([=](const S* src, D* dst, int len) { return f(src, dst, len, scaleFactor); },
                     [=](S x) { return scaledLogarithm<D>(x, scaleFactor, decibels).value; },
                     [=](D got, D want) { return got - want <= (scaleFactor < 0) && want <= got; }, draw,
                     SweepOptions{});
}
template <class T>
void sweepInPlaceAt(KvrStatus (*f)(T*, int, int) noexcept, int scaleFactor, bool decibels) {
  const auto draw = [](Random& random, size_t, T) {
    const T x = random.value<T>();
    return x > 0 ? x : static_cast<T>(x < -1 ? -(x + 1) : 1);
  };
  sweepInPlaceWith<T>([=](T* srcDst, int len) { return f(srcDst, len, scaleFactor); },
                      [=](T x) { return scaledLogarithm<T>(x, scaleFactor, decibels).value; },
                      [=](T got, T want) { return got - want <= (scaleFactor < 0) && want <= got; }, draw,
                      SweepOptions{});
}

TEST(LnInteger, Sweep) {
  for (int scaleFactor : {0, -8}) {
    sweepAt<Kvr16s, Kvr16s>(kvrsLn_16s_Sfs, scaleFactor, false);
    sweepAt<Kvr32s, Kvr32s>(kvrsLn_32s_Sfs, scaleFactor, false);
    sweepAt<Kvr16s, Kvr32s>(kvrsLn_32s16s_Sfs, scaleFactor, false);
    sweepAt<Kvr32s, Kvr32s>(kvrs10Log10_32s_Sfs, scaleFactor, true);
    sweepInPlaceAt<Kvr16s>(kvrsLn_16s_ISfs, scaleFactor, false);
    sweepInPlaceAt<Kvr32s>(kvrsLn_32s_ISfs, scaleFactor, false);
    sweepInPlaceAt<Kvr32s>(kvrs10Log10_32s_ISfs, scaleFactor, true);
  }
}

}  // namespace
