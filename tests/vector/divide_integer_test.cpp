// SPDX-License-Identifier: MIT
#include <cmath>

#include "kvrs/divide.h"
#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

template <class T>
using Div = KvrStatus (*)(const T*, const T*, T*, int, int) noexcept;
template <class T>
using DivI = KvrStatus (*)(const T*, T*, int, int) noexcept;

constexpr Bounds k8u{-15, 8}, k16u{-31, 16}, k16s{-30, 15}, k16sc{-32, 32}, k32s{-62, 32}, k32s16s{-29, 31};

// Below this scale factor 16-bit quotients are rounded to nearest, whatever the mode.
constexpr int kByModeFrom = -5;

Kvr8u quotient(Kvr8u d, Kvr8u n, int s, To mode) {
  return quotientByRule<Kvr8u>(n, d, s, k8u, mode);
}
Kvr16u quotient(Kvr16u d, Kvr16u n, int s, To mode) {
  return quotientByRule<Kvr16u>(n, d, s, k16u, s < kByModeFrom ? To::nearestEven : mode);
}
Kvr16s quotient(Kvr16s d, Kvr16s n, int s, To mode) {
  return quotientByRule<Kvr16s>(n, d, s, k16s, s < kByModeFrom ? To::nearestEven : mode);
}
Kvr16s quotient(Kvr16s d, Kvr32s n, int s, To) {
  return quotientByRule<Kvr16s>(n, d, s, k32s16s, To::nearestEven);
}
// Rounded to double precision first.
Kvr32s quotient(Kvr32s d, Kvr32s n, int s, To) {
  if (d == 0 || s > k32s.zeroAbove || s < k32s.signBelow) {
    return quotientByRule<Kvr32s>(n, d, s, k32s, To::nearestEven);
  }
  const double q = std::ldexp(static_cast<double>(n) / static_cast<double>(d), -s);
  if (q >= 0x1p31) return INT32_MAX;
  if (q <= -0x1p31) return INT32_MIN;
  return static_cast<Kvr32s>(std::fmin(std::nearbyint(q), 0x1p31 - 1));
}
Kvr16sc quotient(Kvr16sc d, Kvr16sc n, int s, To) {
  const int64_t m = int64_t{d.re} * d.re + int64_t{d.im} * d.im;
  if (m == 0) return {0, 0};
  const int64_t re = int64_t{n.re} * d.re + int64_t{n.im} * d.im;
  const int64_t im = int64_t{n.im} * d.re - int64_t{n.re} * d.im;
  return {quotientByRule<Kvr16s>(re, m, s, k16sc, To::nearestEven),
          quotientByRule<Kvr16s>(im, m, s, k16sc, To::nearestEven)};
}

template <class T1, class T2, class D, class Call>
void checkVectors(Call call, const std::vector<T1>& divisors, const std::vector<T2>& dividends, int s,
                  const Mode& mode) {
  const size_t n = divisors.size();
  std::vector<D> want(n), got(n);
  for (size_t i = 0; i < n; ++i) want[i] = quotient(divisors[i], dividends[i], s, mode.to);
  const KvrStatus status = inMode(
      mode.fe, [&] { return call(divisors.data(), dividends.data(), got.data(), static_cast<int>(n), s); });
  EXPECT_EQ(statusFor(divisors.data(), n), status);
  expectSame(want, got, "scale factor " + std::to_string(s) + ", mode " + std::to_string(mode.fe));
}

// Lengths, alignments, guard pages; all scale factors; all modes; threads.
template <class T1, class T2, class D, class Call>
void checkDivision(Call call, int threadedFrom) {
  for (int s : {0, 1, 7, -1, -6, 40, -70}) {
    const auto checked = [&](const T1* src1, const T2* src2, D* dst, int len) {
      const KvrStatus want = statusFor(src1, static_cast<size_t>(len));
      return call(src1, src2, dst, len, s) == want ? kvrStatusOk : kvrStatusBadArg;
    };
    sweepMap<D, T1, T2>(checked, inCallersMode([=](To to, T1 d, T2 n) { return quotient(d, n, s, to); }),
                        {.rounding = Rounding::followed});
  }
  const auto divisors = randomVector<T1>(1500, 11);
  const auto dividends = randomVector<T2>(1500, 12);
  for (int s : allScaleFactors()) {
    for (const Mode& mode : kModes) {
      checkVectors<T1, T2, D>(call, divisors, dividends, s, mode);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
  for (int len : {threadedFrom - 1, threadedFrom, threadedFrom + 7}) {
    const size_t n = static_cast<size_t>(len);
    auto a = randomVector<T1>(n, 21);
    const auto b = randomVector<T2>(n, 22);
    for (T1& x : a)
      if (isZero(x)) memset(&x, 1, sizeof x);
    for (bool zeroInLastSlice : {false, true}) {
      if (zeroInLastSlice) a[n - 1] = T1{};
      for (const Mode& mode : {kModes[0], kModes[3]}) {
        for (int s : {0, -7}) {
          expectSameOnThreads<D>(
              n, zeroInLastSlice ? kvrStatusDivByZeroWarn : kvrStatusOk, "len " + std::to_string(len),
              [&](D* dst) { return inMode(mode.fe, [&] { return call(a.data(), b.data(), dst, len, s); }); });
          if (testing::Test::HasFatalFailure()) return;
        }
      }
    }
  }
}

template <class T>
void checkInPlace(DivI<T> inPlace) {
  for (int s : {0, 3, -4, -20, 40, -70}) {
    const auto checked = [&](const T* src, T* srcDst, int len) {
      const KvrStatus want = statusFor(src, static_cast<size_t>(len));
      return inPlace(src, srcDst, len, s) == want ? kvrStatusOk : kvrStatusBadArg;
    };
    sweepInPlace<T, T>(checked, inCallersMode([=](To to, T d, T n) { return quotient(d, n, s, to); }),
                       {.rounding = Rounding::followed});
  }
}

template <class T>
void check(Div<T> f, DivI<T> inPlace, int threadedFrom) {
  checkDivision<T, T, T>(f, threadedFrom);
  checkInPlace(inPlace);
  // The divisors may be the destination too.
  const auto a = randomVector<T>(3000, 31), b = randomVector<T>(3000, 32);
  std::vector<T> want(3000), got = a;
  const KvrStatus status = f(a.data(), b.data(), want.data(), 3000, 1);
  EXPECT_EQ(status, f(got.data(), b.data(), got.data(), 3000, 1));
  expectSame(want, got, "dst is src1");
}

TEST(DivideInteger, Div8u) {
  check(kvrsDiv_8u_Sfs, kvrsDiv_8u_ISfs, threadedLength(1024));
}
TEST(DivideInteger, Div16u) {
  check(kvrsDiv_16u_Sfs, kvrsDiv_16u_ISfs, threadedLength(1024));
}
TEST(DivideInteger, Div16s) {
  check(kvrsDiv_16s_Sfs, kvrsDiv_16s_ISfs, threadedLength(1024));
}
TEST(DivideInteger, Div16sc) {
  check(kvrsDiv_16sc_Sfs, kvrsDiv_16sc_ISfs, threadedLength(256));
}
TEST(DivideInteger, Div32s) {
  check(kvrsDiv_32s_Sfs, kvrsDiv_32s_ISfs, threadedLength(1024));
}
TEST(DivideInteger, Div32s16s) {
  checkDivision<Kvr16s, Kvr32s, Kvr16s>(kvrsDiv_32s16s_Sfs, threadedLength(1024));
}

TEST(DivideInteger, Div8uAllPairs) {
  std::vector<Kvr8u> a(65536), b(65536);
  for (size_t i = 0; i < a.size(); ++i) {
    a[i] = static_cast<Kvr8u>(i);
    b[i] = static_cast<Kvr8u>(i >> 8);
  }
  for (int s = -17; s <= 10; ++s) checkVectors<Kvr8u, Kvr8u, Kvr8u>(kvrsDiv_8u_Sfs, a, b, s, kModes[0]);
  for (int s : {-5, 0, 1, 8}) {
    for (const Mode& mode : kModes) checkVectors<Kvr8u, Kvr8u, Kvr8u>(kvrsDiv_8u_Sfs, a, b, s, mode);
  }
}

// Every dividend over divisors of all kinds: small, prime, around powers of two, extreme, random.
template <class T>
void checkAllDividends(Div<T> f) {
  std::vector<T> dividends(65536), divisors(65536);
  for (size_t i = 0; i < 65536; ++i) dividends[i] = static_cast<T>(i);
  std::vector<T> list;
  for (int d :
       {1, 2, 3, 5, 6, 7, 9, 10, 11, 13, 48, 127, 128, 255, 257, 1000, 4095, 4097, 10007, 32749, 32767})
    list.insert(list.end(), {static_cast<T>(d), static_cast<T>(-d)});
  list.push_back(static_cast<T>(0x8000));
  Random random(5);
  for (int i = 0; i < 8; ++i) list.push_back(static_cast<T>(random.bits() | 1));
  for (T d : list) {
    divisors.assign(65536, d);
    for (int s : {-5, -6, 0, 15}) checkVectors<T, T, T>(f, divisors, dividends, s, kModes[0]);
    for (int s : {-5, 0}) checkVectors<T, T, T>(f, divisors, dividends, s, kModes[1 + (d & 1)]);
    checkVectors<T, T, T>(f, divisors, dividends, -4, kModes[3]);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(DivideInteger, Div16sAllDividends) {
  checkAllDividends<Kvr16s>(kvrsDiv_16s_Sfs);
}
TEST(DivideInteger, Div16uAllDividends) {
  checkAllDividends<Kvr16u>(kvrsDiv_16u_Sfs);
}

// Ties and their neighbours, which an inexact quotient would turn: dividends next to (k + 1/2) * d * 2^s.
TEST(DivideInteger, Div16sNextToTies) {
  Random random(6);
  for (int s = -5; s <= 15; ++s) {
    std::vector<Kvr16s> a, b;
    for (int i = 0; i < 3000; ++i) {
      const int most = std::min(32767, 65535 >> std::max(s, 0));
      const int d = (1 + static_cast<int>(random.below(static_cast<uint32_t>(most)))) * (i % 2 != 0 ? -1 : 1);
      const double step = std::ldexp(d, s);
      const uint32_t steps = static_cast<uint32_t>(32767 / std::fabs(step));
      const double tie = (random.below(std::min(steps, 40000u) + 1) + 0.5) * step;
      for (double n : {std::floor(tie), std::ceil(tie)}) {
        if (std::fabs(n) > 32767) continue;
        a.push_back(static_cast<Kvr16s>(d));
        b.push_back(static_cast<Kvr16s>(n));
      }
    }
    ASSERT_GT(a.size(), 500u);
    for (const Mode& mode : kModes) checkVectors<Kvr16s, Kvr16s, Kvr16s>(kvrsDiv_16s_Sfs, a, b, s, mode);
    if (testing::Test::HasFatalFailure()) return;
  }
}

// As long as the quotient is no larger than 2^20, its rounding to double precision does not show.
TEST(DivideInteger, Div32sIsExactUpTo2To20) {
  const auto a = randomVector<Kvr32s>(20000, 41), b = randomVector<Kvr32s>(20000, 42);
  std::vector<Kvr32s> got(20000);
  for (int s = -20; s <= 32; ++s) {
    EXPECT_EQ(kvrStatusDivByZeroWarn, kvrsDiv_32s_Sfs(a.data(), b.data(), got.data(), 20000, s));
    for (size_t i = 0; i < a.size(); ++i) {
      const Kvr32s want = quotientByRule<Kvr32s>(b[i], a[i], s, k32s, To::nearestEven);
      if (std::abs(static_cast<double>(want)) <= 0x1p20) {
        ASSERT_EQ(want, got[i]) << b[i] << " / " << a[i] << ", s " << s;
      }
    }
  }
}

TEST(DivideInteger, Div16scExtremeParts) {
  std::vector<Kvr16sc> a, b;
  const Kvr16s parts[] = {-32768, -32767, -1, 0, 1, 2, 32767};
  for (Kvr16s ar : parts)
    for (Kvr16s ai : parts)
      for (Kvr16s br : parts)
        for (Kvr16s bi : parts) {
          a.push_back({ar, ai});
          b.push_back({br, bi});
        }
  for (int s : allScaleFactors())
    checkVectors<Kvr16sc, Kvr16sc, Kvr16sc>(kvrsDiv_16sc_Sfs, a, b, s, kModes[0]);
}

// The bound of 16s is 15 here and 16 in kvrsDiv_Round_16s_Sfs: 32,768 / 65,536 is a tie, so only a mode shows
// it.
TEST(DivideInteger, Div16sStoresZerosFromScaleFactor16On) {
  const Kvr16s divisors[] = {1, -1, 1, 0, 0, 0}, dividends[] = {-32768, -32768, 32767, 5, -5, 0};
  Kvr16s dst[6];
  EXPECT_EQ(kvrStatusDivByZeroWarn,
            inMode(FE_DOWNWARD, [&] { return kvrsDiv_16s_Sfs(divisors, dividends, dst, 6, 16); }));
  const Kvr16s want[] = {0, 0, 0, 32767, -32768, 0};
  EXPECT_EQ(0, memcmp(want, dst, sizeof want));
  EXPECT_EQ(kvrStatusOk,
            inMode(FE_DOWNWARD, [&] { return kvrsDiv_16s_Sfs(divisors, dividends, dst, 3, 15); }));
  EXPECT_EQ(-1, dst[0]);
  EXPECT_EQ(1, dst[1]);
  EXPECT_EQ(0, dst[2]);
}

TEST(DivideInteger, DivisionByZeroLeavesTheOthersAlone) {
  const Kvr8u divisors[] = {0, 0, 2, 3}, dividends[] = {0, 5, 9, 9};
  Kvr8u dst[4];
  EXPECT_EQ(kvrStatusDivByZeroWarn, kvrsDiv_8u_Sfs(divisors, dividends, dst, 4, 0));
  const Kvr8u want[] = {0, 255, 4, 3};
  EXPECT_EQ(0, memcmp(want, dst, sizeof want));
}

// Complex quotients by zero do not saturate by parts.
TEST(DivideInteger, Div16scByZeroIsZero) {
  const Kvr16sc divisors[] = {{0, 0}, {0, 1}, {1, 0}}, dividends[] = {{7, -9}, {7, -9}, {7, -9}};
  Kvr16sc dst[3];
  for (int s : {-40, -3, 0}) {
    EXPECT_EQ(kvrStatusDivByZeroWarn, kvrsDiv_16sc_Sfs(divisors, dividends, dst, 3, s));
    EXPECT_EQ(0, dst[0].re);
    EXPECT_EQ(0, dst[0].im);
    EXPECT_LT(dst[1].re, 0);
    EXPECT_LT(dst[1].im, 0);
  }
}

// A quotient by zero is never carried out: no exception is raised.
TEST(DivideInteger, RaisesNoDivisionByZero) {
  const std::vector<Kvr16s> zeros(100), some(100, 3);
  std::vector<Kvr16s> dst(100);
  feclearexcept(FE_ALL_EXCEPT);
  for (int s : {-40, -7, 0, 3, 40}) {
    EXPECT_EQ(kvrStatusDivByZeroWarn, kvrsDiv_16s_Sfs(zeros.data(), some.data(), dst.data(), 100, s));
    EXPECT_EQ(kvrStatusDivByZeroWarn, kvrsDiv_16s_Sfs(zeros.data(), zeros.data(), dst.data(), 100, s));
  }
  EXPECT_EQ(0, fetestexcept(FE_DIVBYZERO));
}

}  // namespace
