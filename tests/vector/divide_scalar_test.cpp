// SPDX-License-Identifier: MIT
#include <cmath>

#include "kvrs/divide.h"
#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

template <class T>
using DivC = KvrStatus (*)(const T*, T, T*, int, int) noexcept;
template <class T>
using DivCI = KvrStatus (*)(T, T*, int, int) noexcept;

Kvr8u quotient(Kvr8u n, Kvr8u d, int s, To) {
  return quotientByRule<Kvr8u>(n, d, s, {-15, 8}, To::nearestEven);
}
Kvr16u quotient(Kvr16u n, Kvr16u d, int s, To) {
  return quotientByRule<Kvr16u>(n, d, s, {-31, 16}, To::nearestEven);
}

// The integer next to x by the processor's mode, saturated.
Kvr16s rounded(double x) {
  return static_cast<Kvr16s>(std::fmax(std::fmin(std::nearbyint(x), 32767), -32768));
}

// Runs in the mode that is wanted. The volatiles keep the compiler from working ahead in another one.
Kvr16s quotient(Kvr16s n, Kvr16s d, int s, To to) {
  if (s > 15 || s < -30) return quotientByRule<Kvr16s>(n, d, s, {-30, 15}, to);
  for (const Mode& mode : kModes)
    if (mode.to == to) fesetround(mode.fe);
  volatile float scale = std::ldexp(1.0f, -s), divisor = d, element = n;
  volatile float factor = scale / divisor;
  volatile float product = element * factor;
  const Kvr16s result = rounded(product);
  fesetround(FE_TONEAREST);
  return result;
}

Kvr16sc quotient(Kvr16sc n, Kvr16sc d, int s, To) {
  const int64_t m = int64_t{d.re} * d.re + int64_t{d.im} * d.im;
  if (s > 64) s = 64;
  if (s < -1000) s = -1000;
  const double re = std::ldexp(d.re / static_cast<double>(m), -s);
  const double im = std::ldexp(-d.im / static_cast<double>(m), -s);
  return {rounded(n.re * re - n.im * im), rounded(n.re * im + n.im * re)};
}

template <class T>
void checkVector(DivC<T> f, const std::vector<T>& src, T val, int s, const Mode& mode) {
  std::vector<T> want(src.size()), got(src.size());
  for (size_t i = 0; i < src.size(); ++i) want[i] = quotient(src[i], val, s, mode.to);
  EXPECT_EQ(kvrStatusOk,
            inMode(mode.fe, [&] { return f(src.data(), val, got.data(), static_cast<int>(src.size()), s); }));
  expectSame(want, got, "val " + show(val) + ", scale factor " + std::to_string(s));
}

template <class T>
void check(DivC<T> f, DivCI<T> inPlace, const std::vector<T>& vals, int threadedFrom) {
  for (int s : {0, 3, -4, -17, 40, -70}) {
    const T val = vals[static_cast<size_t>(s & 3)];
    const auto oracle = inCallersMode([=](To to, T n) { return quotient(n, val, s, to); });
    const SweepOptions options = {.rounding = Rounding::followed};
    sweepMap<T, T>([&](const T* src, T* dst, int len) { return f(src, val, dst, len, s); }, oracle, options);
    sweepInPlace<T>([&](T* srcDst, int len) { return inPlace(val, srcDst, len, s); }, oracle, options);
  }
  const auto src = randomVector<T>(200, 1);
  for (int s : allScaleFactors()) {
    for (T val : vals) checkVector(f, src, val, s, kModes[0]);
    for (const Mode& mode : kModes) checkVector(f, src, vals[3], s, mode);
    if (testing::Test::HasFatalFailure()) return;
  }
  for (int len : {threadedFrom - 1, threadedFrom, threadedFrom + 7}) {
    const auto data = randomVector<T>(static_cast<size_t>(len), 2);
    for (const Mode& mode : kModes) {
      expectSameOnThreads<T>(
          static_cast<size_t>(len), kvrStatusOk, "len " + std::to_string(len),
          [&](T* dst) { return inMode(mode.fe, [&] { return f(data.data(), vals[3], dst, len, 1); }); });
    }
  }
  // A zero divisor is refused, and nothing is written.
  std::vector<T> dst = src;
  for (int s : {0, 100, -100}) {
    EXPECT_EQ(kvrStatusDivByZeroError, f(src.data(), T{}, dst.data(), 200, s));
    EXPECT_EQ(kvrStatusDivByZeroError, inPlace(T{}, dst.data(), 200, s));
    EXPECT_EQ(kvrStatusBadLength, f(src.data(), T{}, dst.data(), 0, s));
    EXPECT_EQ(kvrStatusNullPointer, f(nullptr, T{}, dst.data(), 200, s));
  }
  expectSame(src, dst, "after errors");
}

TEST(DivideScalar, DivC8u) {
  check<Kvr8u>(kvrsDivC_8u_Sfs, kvrsDivC_8u_ISfs, {1, 2, 3, 7, 10, 128, 254, 255}, threadedLength(4096));
}
TEST(DivideScalar, DivC16u) {
  check<Kvr16u>(kvrsDivC_16u_Sfs, kvrsDivC_16u_ISfs, {1, 2, 6, 7, 1000, 32768, 65534, 65535},
                threadedLength(4096));
}
TEST(DivideScalar, DivC16s) {
  check<Kvr16s>(kvrsDivC_16s_Sfs, kvrsDivC_16s_ISfs, {1, -1, 6, -7, 10, -1000, 32767, -32768},
                threadedLength(4096));
}
TEST(DivideScalar, DivC16sc) {
  check<Kvr16sc>(
      kvrsDivC_16sc_Sfs, kvrsDivC_16sc_ISfs,
      {{1, 0}, {0, -1}, {3, 7}, {-5, 2}, {100, 100}, {-32768, -32768}, {32767, -32768}, {0, 32767}}, 1024);
}

// What the inverse and the products round off shows where it is scaled up.
TEST(DivideScalar, DivC16scFollowsTheStatedArithmetic) {
  struct Case {
    Kvr16sc n, d;
    int scaleFactor;
    Kvr16sc want;
  };
  for (const Case& c : {Case{{32766, 32767}, {-32767, -32768}, -45, {-32768, -16384}},
                        Case{{-1, 3}, {3, 1}, -54, {1, 32767}}}) {
    Kvr16sc got;
    ASSERT_EQ(kvrStatusOk, kvrsDivC_16sc_Sfs(&c.n, c.d, &got, 1, c.scaleFactor));
    EXPECT_EQ(c.want.re, got.re);
    EXPECT_EQ(c.want.im, got.im);
  }
  // Multiples of the divisor by numbers that leave zeros, at every scale factor.
  Random random;
  for (int turn = 0; turn < 60; ++turn) {
    const Kvr16sc d = {static_cast<Kvr16s>(1 + random.below(180)),
                       static_cast<Kvr16s>(1 + random.below(180))};
    std::vector<Kvr16sc> src;
    for (int k = -90; k < 90; ++k) {
      src.push_back({static_cast<Kvr16s>(k * d.re), static_cast<Kvr16s>(k * d.im)});
      src.push_back({static_cast<Kvr16s>(-k * d.im), static_cast<Kvr16s>(k * d.re)});
    }
    for (int s = -90; s < -10; ++s) checkVector(kvrsDivC_16sc_Sfs, src, d, s, kModes[0]);
    for (int s : {-999, -1000, -1001, -5000, std::numeric_limits<int>::min()}) {
      checkVector(kvrsDivC_16sc_Sfs, src, d, s, kModes[0]);
    }
    if (testing::Test::HasFailure()) return;
  }
}

TEST(DivideScalar, DivC8uAllPairs) {
  std::vector<Kvr8u> all(256);
  for (size_t i = 0; i < 256; ++i) all[i] = static_cast<Kvr8u>(i);
  for (int val = 1; val < 256; ++val)
    for (int s = -17; s <= 10; ++s) checkVector(kvrsDivC_8u_Sfs, all, static_cast<Kvr8u>(val), s, kModes[0]);
}

template <class T>
void checkAllElements(DivC<T> f) {
  std::vector<T> all(65536);
  for (size_t i = 0; i < 65536; ++i) all[i] = static_cast<T>(i);
  for (int val : {1, 3, 6, 10, -7, 1000, -4096, 32767, -32768}) {
    for (int s : {-31, -30, -6, -5, 0, 1, 15, 16}) checkVector(f, all, static_cast<T>(val), s, kModes[0]);
  }
}

// Of many divisors every dividend whose quotient is a tie, and its neighbours.
TEST(DivideScalar, DivC16uTies) {
  for (int s : {-31, -6, -5, -1, 0, 1, 5}) {
    for (uint64_t val = 1; val < 65536; val += 1 + val / 5) {
      std::vector<Kvr16u> src;
      const uint64_t d = s > 0 ? val << s : val;
      for (uint64_t n = 1; n < 65535; ++n) {
        const uint64_t twice = (s < 0 ? n << -s : n) * 2;
        if (twice % (2 * d) != d) continue;
        for (uint64_t x : {n - 1, n, n + 1}) src.push_back(static_cast<Kvr16u>(x));
      }
      if (!src.empty()) checkVector(kvrsDivC_16u_Sfs, src, static_cast<Kvr16u>(val), s, kModes[0]);
    }
  }
}

TEST(DivideScalar, DivC16uAllElements) {
  checkAllElements(kvrsDivC_16u_Sfs);
}
TEST(DivideScalar, DivC16sAllElements) {
  checkAllElements(kvrsDivC_16s_Sfs);
}

TEST(DivideScalar, DivCRev16u) {
  const auto byRule = [](Kvr16u d, Kvr16u val, To to) {
    return quotientByRule<Kvr16u>(val, d, 0, {-31, 16}, to);
  };
  std::vector<Kvr16u> all(65536), want(65536), got(65536);
  for (size_t i = 0; i < 65536; ++i) all[i] = static_cast<Kvr16u>(i);
  for (Kvr16u val : {0, 1, 2, 3, 1000, 32767, 32768, 65534, 65535}) {
    const auto checked = [&](const Kvr16u* src, Kvr16u* dst, int len) {
      const KvrStatus want = statusFor(src, static_cast<size_t>(len));
      return kvrsDivCRev_16u(src, val, dst, len) == want ? kvrStatusOk : kvrStatusBadArg;
    };
    if (val % 1000 == 0) {
      sweepMap<Kvr16u, Kvr16u>(checked, inCallersMode([=](To to, Kvr16u d) { return byRule(d, val, to); }),
                               {.rounding = Rounding::followed});
    }
    for (const Mode& mode : kModes) {
      for (size_t i = 0; i < 65536; ++i) want[i] = byRule(all[i], val, mode.to);
      EXPECT_EQ(kvrStatusDivByZeroWarn,
                inMode(mode.fe, [&] { return kvrsDivCRev_16u(all.data(), val, got.data(), 65536); }));
      expectSame(want, got, "val " + show(val));
      got = all;
      EXPECT_EQ(kvrStatusDivByZeroWarn,
                inMode(mode.fe, [&] { return kvrsDivCRev_16u_I(val, got.data(), 65536); }));
      expectSame(want, got, "in place, val " + show(val));
    }
    EXPECT_EQ(kvrStatusOk, kvrsDivCRev_16u(all.data() + 1, val, got.data(), 65535));
  }
  const int from = threadedLength(2048);
  for (int len : {from - 1, from, from + 7}) {
    std::vector<Kvr16u> src(static_cast<size_t>(len));
    for (size_t i = 0; i < src.size(); ++i) src[i] = static_cast<Kvr16u>(1 + i % 65535);
    for (KvrStatus status : {kvrStatusOk, kvrStatusDivByZeroWarn}) {
      if (status != kvrStatusOk) src.back() = 0;
      expectSameOnThreads<Kvr16u>(src.size(), status, "len " + std::to_string(len), [&](Kvr16u* dst) {
        return inMode(FE_UPWARD, [&] { return kvrsDivCRev_16u(src.data(), 40000, dst, len); });
      });
    }
  }
}

// n * (1 / val) in single precision: the factor is rounded before the product, which turns some ties.
TEST(DivideScalar, DivC16sRoundsTheFactorFirst) {
  int different = 0;
  for (int val = 2; val < 2000; val += 2) {
    for (int k = 0; k < 30; ++k) {
      const int n = val / 2 * (2 * k + 1);  // n / val is a tie
      if (n > 32767) break;
      const Kvr16s src = static_cast<Kvr16s>(n);
      Kvr16s dst;
      ASSERT_EQ(kvrStatusOk, kvrsDivC_16s_Sfs(&src, static_cast<Kvr16s>(val), &dst, 1, 0));
      ASSERT_EQ(quotient(src, static_cast<Kvr16s>(val), 0, To::nearestEven), dst);
      different += dst != exactQuotient<Kvr16s>(n, val, 0, To::nearestEven);
    }
  }
  EXPECT_GT(different, 0);
}

}  // namespace
