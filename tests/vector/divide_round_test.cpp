// SPDX-License-Identifier: MIT
#include "kvrs/divide.h"
#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

template <class T>
using Div = KvrStatus (*)(const T*, const T*, T*, int, KvrRoundMode, int) noexcept;
template <class T>
using DivI = KvrStatus (*)(const T*, T*, int, KvrRoundMode, int) noexcept;

constexpr KvrRoundMode kRoundModes[] = {kvrRoundZero, kvrRoundNear, kvrRoundFinancial};

To roundingOf(KvrRoundMode mode) {
  return mode == kvrRoundZero ? To::zero : mode == kvrRoundNear ? To::nearestEven : To::nearestAway;
}

Bounds boundsOf(Kvr8u) {
  return {-15, 8};
}
Bounds boundsOf(Kvr16u) {
  return {-31, 16};
}
Bounds boundsOf(Kvr16s) {
  return {-30, 16};
}

template <class T>
T quotient(T d, T n, int s, KvrRoundMode mode) {
  return quotientByRule<T>(n, d, s, boundsOf(T{}), roundingOf(mode));
}

template <class T>
void checkVectors(Div<T> f, const std::vector<T>& a, const std::vector<T>& b, KvrRoundMode mode, int s,
                  int fe = FE_TONEAREST) {
  std::vector<T> want(a.size()), got(a.size());
  for (size_t i = 0; i < a.size(); ++i) want[i] = quotient(a[i], b[i], s, mode);
  const KvrStatus status =
      inMode(fe, [&] { return f(a.data(), b.data(), got.data(), static_cast<int>(a.size()), mode, s); });
  EXPECT_EQ(statusFor(a.data(), a.size()), status);
  expectSame(want, got, "mode " + std::to_string(mode) + ", scale factor " + std::to_string(s));
}

template <class T>
void check(Div<T> f, DivI<T> inPlace, int threadedFrom) {
  for (KvrRoundMode mode : kRoundModes) {
    for (int s : {0, 2, -3, -9, 40, -70}) {
      const auto oracle = [&](T d, T n) { return quotient(d, n, s, mode); };
      const auto isRight = [](const T* src, int len, auto call) {
        const KvrStatus want = statusFor(src, static_cast<size_t>(len));
        return call() == want ? kvrStatusOk : kvrStatusBadArg;
      };
      sweepMap<T, T, T>(
          [&](const T* src1, const T* src2, T* dst, int len) {
            return isRight(src1, len, [&] { return f(src1, src2, dst, len, mode, s); });
          },
          oracle);
      sweepInPlace<T, T>(
          [&](const T* src, T* srcDst, int len) {
            return isRight(src, len, [&] { return inPlace(src, srcDst, len, mode, s); });
          },
          oracle);
    }
    const auto a = randomVector<T>(1500, 1), b = randomVector<T>(1500, 2);
    for (int s : allScaleFactors()) {
      // Whatever mode the caller is in.
      for (const Mode& callers : kModes) checkVectors(f, a, b, mode, s, callers.fe);
      if (testing::Test::HasFatalFailure()) return;
    }
    for (int len : {threadedFrom - 1, threadedFrom, threadedFrom + 7}) {
      const size_t n = static_cast<size_t>(len);
      std::vector<T> divisors = randomVector<T>(n, 3);
      const std::vector<T> dividends = randomVector<T>(n, 4);
      for (T& x : divisors) x = x == 0 ? T{7} : x;
      for (bool zeroInLastSlice : {false, true}) {
        if (zeroInLastSlice) divisors[n - 1] = 0;
        for (int s : {0, -7}) {
          expectSameOnThreads<T>(n, zeroInLastSlice ? kvrStatusDivByZeroWarn : kvrStatusOk,
                                 "len " + std::to_string(len), [&](T* dst) {
                                   return inMode(FE_UPWARD, [&] {
                                     return f(divisors.data(), dividends.data(), dst, len, mode, s);
                                   });
                                 });
          if (testing::Test::HasFatalFailure()) return;
        }
      }
    }
  }
}

TEST(DivideRound, Div8u) {
  check(kvrsDiv_Round_8u_Sfs, kvrsDiv_Round_8u_ISfs, threadedLength(512));
}
TEST(DivideRound, Div16u) {
  check(kvrsDiv_Round_16u_Sfs, kvrsDiv_Round_16u_ISfs, threadedLength(1024));
}
TEST(DivideRound, Div16s) {
  check(kvrsDiv_Round_16s_Sfs, kvrsDiv_Round_16s_ISfs, threadedLength(1024));
}

TEST(DivideRound, Div8uAllPairs) {
  std::vector<Kvr8u> a(65536), b(65536);
  for (size_t i = 0; i < a.size(); ++i) {
    a[i] = static_cast<Kvr8u>(i);
    b[i] = static_cast<Kvr8u>(i >> 8);
  }
  for (KvrRoundMode mode : kRoundModes) {
    for (int s = -17; s <= 10; ++s) checkVectors(kvrsDiv_Round_8u_Sfs, a, b, mode, s);
  }
}

template <class T>
void checkAllDividends(Div<T> f) {
  std::vector<T> dividends(65536), divisors(65536);
  for (size_t i = 0; i < 65536; ++i) dividends[i] = static_cast<T>(i);
  for (int d :
       {1, 2, 3, 6, 7, 10, -1, -2, -3, -10, 127, 256, -1000, 4097, 10007, 32766, 32767, -32767, -32768}) {
    divisors.assign(65536, static_cast<T>(d));
    for (KvrRoundMode mode : kRoundModes) {
      for (int s : {-5, -6, 0, 16}) checkVectors(f, divisors, dividends, mode, s);
    }
  }
}

TEST(DivideRound, Div16sAllDividends) {
  checkAllDividends<Kvr16s>(kvrsDiv_Round_16s_Sfs);
}
TEST(DivideRound, Div16uAllDividends) {
  checkAllDividends<Kvr16u>(kvrsDiv_Round_16u_Sfs);
}

TEST(DivideRound, Div16sStillDividesAtScaleFactor16) {
  const Kvr16s one = 1, least = -32768;
  Kvr16s dst = 77;
  EXPECT_EQ(kvrStatusOk, kvrsDiv_Round_16s_Sfs(&one, &least, &dst, 1, kvrRoundFinancial, 16));
  EXPECT_EQ(-1, dst);
  EXPECT_EQ(kvrStatusOk, kvrsDiv_Round_16s_Sfs(&one, &least, &dst, 1, kvrRoundFinancial, 17));
  EXPECT_EQ(0, dst);
}

TEST(DivideRound, RefusesOtherModesAfterTheLength) {
  const Kvr16s src[2] = {1, 2};
  Kvr16s dst[2] = {77, 78};
  for (KvrRoundMode mode : {-1, 3, 4, INT_MIN, INT_MAX}) {
    EXPECT_EQ(kvrStatusBadRoundMode, kvrsDiv_Round_16s_Sfs(src, src, dst, 2, mode, 0));
    EXPECT_EQ(kvrStatusBadLength, kvrsDiv_Round_16s_Sfs(src, src, dst, 0, mode, 0));
    EXPECT_EQ(kvrStatusNullPointer, kvrsDiv_Round_16s_Sfs(nullptr, src, dst, 2, mode, 0));
  }
  EXPECT_EQ(77, dst[0]);
  EXPECT_EQ(78, dst[1]);
}

}  // namespace
