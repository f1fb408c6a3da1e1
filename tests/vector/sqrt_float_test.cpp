// SPDX-License-Identifier: MIT
#include <xmmintrin.h>

#include <cmath>
#include <vector>

#include "kvrs/roots.h"
#include "tests/support/rounding.h"
#include "tests/support/ulps.h"
#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

constexpr Kvr32f kInf = std::numeric_limits<Kvr32f>::infinity();
// Of a Newton step from an estimate y: where the processor's relative error e is up to 1.5 * 2^-12, the step leaves 1.5 e^2,
// which is 3.4 units in the last place of a root just above a power of two; and the roundings of the step.
constexpr int kBound32f = 4;

template <class T>
T root(T x) {
  return std::sqrt(x);
}

TEST(SqrtFloat, Sweep) {
  const auto draw = [](Random& random, size_t, auto like) {
    return std::fabs(anyFloat<decltype(like)>(random));
  };
  const auto near = [](Kvr32f got, Kvr32f want) {
    return std::isnan(want) ? std::isnan(got) : withinUlps(got, want, kBound32f);
  };
  sweepMapWith<Kvr32f, Kvr32f>(kvrsSqrt_32f, root<Kvr32f>, near, draw, SweepOptions{});
  sweepInPlaceWith<Kvr32f>(kvrsSqrt_32f_I, root<Kvr32f>, near, draw, SweepOptions{});
  sweepMapWith<Kvr64f, Kvr64f>(kvrsSqrt_64f, root<Kvr64f>, sameFloat<Kvr64f>, draw, SweepOptions{});
  sweepInPlaceWith<Kvr64f>(kvrsSqrt_64f_I, root<Kvr64f>, sameFloat<Kvr64f>, draw, SweepOptions{});
}

template <class T>
KvrStatus statusOf(const std::vector<T>& x) {
  for (T value : x)
    if (value < 0) return kvrStatusSqrtNegArg;
  return kvrStatusOk;
}

// Negative numbers everywhere: the status, the results beside them, and what is stored for them.
template <class T>
void checkNegative(KvrStatus (*f)(const T*, T*, int) noexcept, int bound) {
  Random random(3);
  for (int len : {1, 2, 3, 15, 16, 17, 33, 64, 100, 300}) {
    const size_t n = static_cast<size_t>(len);
    for (int turn = 0; turn < 60; ++turn) {
      std::vector<T> src(n), dst(n);
      for (T& x : src) x = std::fabs(anyFloat<T>(random));
      const int negatives = turn % 3;
      for (int k = 0; k < negatives; ++k) {
        src[random.below(static_cast<uint32_t>(len))] =
            k == 0 ? T(-1) : -std::numeric_limits<T>::denorm_min();
      }
      if (turn % 4 == 0) src[random.below(static_cast<uint32_t>(len))] = -T(0);
      ASSERT_EQ(statusOf(src), f(src.data(), dst.data(), len)) << "len " << len << ", turn " << turn;
      for (size_t i = 0; i < n; ++i) {
        const T want = std::sqrt(src[i]);
        ASSERT_TRUE(std::isnan(want) ? std::isnan(dst[i]) : withinUlps(dst[i], want, bound)) << src[i];
      }
    }
  }
}
TEST(SqrtFloat, NegativeNumbers) {
  checkNegative<Kvr32f>(kvrsSqrt_32f, kBound32f);
  checkNegative<Kvr64f>(kvrsSqrt_64f, 0);
}

TEST(SqrtFloat, MinusZeroAndNaNAreNotNegative) {
  for (int len : {2, 4, 16, 40}) {
    const size_t n = static_cast<size_t>(len);
    for (Kvr32f x : {-0.0f, std::copysign(NAN, -1.0f), std::copysign(NAN, 1.0f)}) {
      const std::vector<Kvr32f> src(n, x);
      const std::vector<Kvr64f> wide(n, x);
      std::vector<Kvr32f> dst(n);
      std::vector<Kvr64f> wideDst(n);
      // An aligned destination, and a number of elements that leaves no odd one at the end.
      alignas(16) Kvr32f aligned[40];
      EXPECT_EQ(kvrStatusOk, kvrsSqrt_32f(src.data(), aligned, len)) << x;
      EXPECT_EQ(kvrStatusOk, kvrsSqrt_64f(wide.data(), wideDst.data(), len)) << x;
      for (size_t i = 0; i < n; ++i)
        EXPECT_TRUE(sameFloat(x, aligned[i]) && sameFloat<Kvr64f>(x, wideDst[i]));
    }
  }
}

// The odd element behind the blocks is asked for its sign alone, which a NaN may have; -0.0 is let pass.
TEST(SqrtFloat, LoneLastElement) {
  alignas(16) Kvr32f dst[64];
  const Kvr32f signedNaN = std::copysign(NAN, -1.0f);
  for (int len : {1, 3, 15, 17, 19, 31, 33}) {
    std::vector<Kvr32f> src(static_cast<size_t>(len), 1);
    src.back() = signedNaN;
    EXPECT_EQ(kvrStatusSqrtNegArg, kvrsSqrt_32f(src.data(), dst, len)) << len;
    EXPECT_TRUE(std::isnan(dst[len - 1]));
    src.back() = -0.0f;
    EXPECT_EQ(kvrStatusOk, kvrsSqrt_32f(src.data(), dst, len)) << len;
    EXPECT_TRUE(sameBits(-0.0f, dst[len - 1]));
    src.back() = std::copysign(NAN, 1.0f);
    EXPECT_EQ(kvrStatusOk, kvrsSqrt_32f(src.data(), dst, len)) << len;
    // Not the last one.
    if (len < 3) continue;
    src.back() = 1;
    src[src.size() - 2] = signedNaN;
    EXPECT_EQ(kvrStatusOk, kvrsSqrt_32f(src.data(), dst, len)) << len;
  }
}

// Heads, tails and blocks with something special in them are rounded correctly; other blocks within the bound.
TEST(SqrtFloat, WhereRootsAreExact) {
  Random random(9);
  alignas(16) Kvr32f dst[80];
  std::vector<Kvr32f> src(75);
  for (int turn = 0; turn < 200; ++turn) {
    for (Kvr32f& x : src) x = static_cast<Kvr32f>(random.unit() + 1) + 0.01f;
    const size_t special = random.below(16);
    src[19 + special] = turn % 2 == 0 ? 0 : kInf;
    ASSERT_EQ(kvrStatusOk, kvrsSqrt_32f(src.data(), dst + 1, 75));  // three elements to the next 16 bytes
    for (size_t i = 0; i < 75; ++i) {
      const bool inBlock = i >= 3 && i < 67, exact = !inBlock || (i >= 19 && i < 35);
      const Kvr32f want = std::sqrt(src[i]);
      ASSERT_TRUE(exact ? sameBits(want, dst[1 + i]) : withinUlps(dst[1 + i], want, kBound32f)) << i;
    }
  }
}

TEST(SqrtFloat, AccuracyOfBlocks) {
  std::vector<Kvr32f> src, dst;
  for (uint32_t bits = 0x00800000; bits < 0x7F800000; bits += 4099) {
    Kvr32f x;
    memcpy(&x, &bits, sizeof x);
    src.push_back(x);
  }
  dst.resize(src.size());
  ASSERT_EQ(kvrStatusOk, kvrsSqrt_32f(src.data(), dst.data(), static_cast<int>(src.size())));
  long double worst = 0;
  for (size_t i = 0; i < src.size(); ++i) {
    worst = std::max(worst, ulps(dst[i], std::sqrt(static_cast<long double>(src[i]))));
  }
  EXPECT_LT(worst, kBound32f);
}

// Masks, modes and flags are back as they were; inside, subnormal numbers count and nothing traps.
TEST(SqrtFloat, ControlRegisterIsGivenBack) {
  const unsigned before = _mm_getcsr();
  std::vector<Kvr32f> src(40, 2), dst(40);
  src[7] = -1;
  src[20] = std::numeric_limits<Kvr32f>::denorm_min();
  for (unsigned control :
       {0x1F80u, 0x1F80u | 0x40u, 0x1F80u | 0x8000u, 0x1F80u | 0x6000u, 0x1F80u | 0x15u, 0x1F00u | 0x20u}) {
    _mm_setcsr(control);  // the last one would trap on invalid operations
    const KvrStatus status = kvrsSqrt_32f(src.data(), dst.data(), 40);
    const unsigned after = _mm_getcsr();
    _mm_setcsr(before);
    EXPECT_EQ(control, after);
    EXPECT_EQ(kvrStatusSqrtNegArg, status);
    EXPECT_GT(dst[20], 1e-23f);
  }
}

TEST(SqrtFloat, OnThreads) {
  const size_t n = static_cast<size_t>(threadedLength(4096)) + 5;
  std::vector<Kvr32f> src(n), dst(n);
  Random random(2);
  for (Kvr32f& x : src) x = static_cast<Kvr32f>(random.unit() + 1);
  for (int threads : {1, 2, 8}) {
    ThreadCount count(threads);
    src[n - 2] = 1;
    EXPECT_EQ(kvrStatusOk, kvrsSqrt_32f(src.data(), dst.data(), static_cast<int>(n)));
    for (size_t i = 0; i < n; ++i) ASSERT_TRUE(withinUlps(dst[i], std::sqrt(src[i]), kBound32f));
    src[n - 2] = -1;
    EXPECT_EQ(kvrStatusSqrtNegArg, kvrsSqrt_32f(src.data(), dst.data(), static_cast<int>(n)));
  }
  const std::vector<Kvr64f> wide(static_cast<size_t>(threadedLength(512)) + 5, -2);
  expectSameOnThreads<Kvr64f>(wide.size(), kvrStatusSqrtNegArg, "64f", [&](Kvr64f* to) {
    return kvrsSqrt_64f(wide.data(), to, static_cast<int>(wide.size()));
  });
}

}  // namespace
