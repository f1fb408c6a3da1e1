// SPDX-License-Identifier: MIT
#include <cmath>
#include <vector>

#include "kvrs/logarithm.h"
#include "tests/support/ulps.h"

using namespace kvrs::test;

namespace {

template <class S>
S drawPositive(Random& random) {
  if constexpr (std::is_integral_v<S>) {
    return static_cast<S>(1 + random.below(32767));
  } else {
    return std::fabs(ofExponents<S>(random, -60, 60));
  }
}

// The sum in extended precision, and the largest of what was added up to it, which the rounding errors depend on.
template <class S>
struct Wanted {
  long double sum = 0, magnitude = 0;
  KvrStatus status = kvrStatusOk;

  explicit Wanted(const std::vector<S>& src) {
    for (S x : src) {
      const long double logarithm = std::log(static_cast<long double>(x));
      sum += logarithm;
      magnitude += std::fabs(logarithm);
      if (status == kvrStatusOk && x == 0) status = kvrStatusLnZeroArg;
      if (status == kvrStatusOk && x < 0) status = kvrStatusLnNegArg;
    }
  }
};

// Of double precision, then rounded to R.
template <class R, class S>
void expectSum(KvrStatus (*f)(const S*, int, R*) noexcept, const std::vector<S>& src) {
  const Wanted<S> want(src);
  R got = 99;
  ASSERT_EQ(want.status, f(src.data(), static_cast<int>(src.size()), &got));
  if (std::isnan(want.sum) || std::isinf(want.sum)) {
    EXPECT_TRUE(sameFloat(static_cast<R>(want.sum), got)) << got;
    return;
  }
  const long double slack =
      want.magnitude * 0x1p-48L + std::fabs(want.sum) * std::numeric_limits<R>::epsilon();
  EXPECT_LE(std::fabs(static_cast<long double>(got) - want.sum), slack) << src.size();
}

// All lengths of parts of blocks and of some blocks, pieces and their neighbours, at every alignment.
template <class R, class S>
void checkLengths(KvrStatus (*f)(const S*, int, R*) noexcept) {
  Random random(3);
  std::vector<int> lengths = sweepLengths({2048, 4096, 8192, 16384});
  Arena sources(20000 * sizeof(S));
  for (int len : lengths) {
    std::vector<S> src(static_cast<size_t>(len));
    for (S& x : src) x = drawPositive<S>(random);
    expectSum(f, src);
    // The same elements give the same sum wherever they are, and nothing else is read.
    R want, got;
    f(src.data(), len, &want);
    for (size_t offset : {size_t{0}, size_t{1}, sizeof(S)}) {
      for (Side side : {Side::front, Side::back}) {
        S* const placed = sources.place<S>(src.size(), side, offset);
        memcpy(static_cast<void*>(placed), src.data(), src.size() * sizeof(S));
        ASSERT_EQ(kvrStatusOk, f(placed, len, &got));
        ASSERT_TRUE(sameBits(want, got)) << len << ", offset " << offset;
      }
    }
  }
}

TEST(SumLn, Lengths) {
  checkLengths<Kvr32f, Kvr16s>(kvrsSumLn_16s32f);
  checkLengths<Kvr32f, Kvr32f>(kvrsSumLn_32f);
  checkLengths<Kvr64f, Kvr32f>(kvrsSumLn_32f64f);
  checkLengths<Kvr64f, Kvr64f>(kvrsSumLn_64f);
}

// Products that would leave the range many times over, in both directions.
TEST(SumLn, ExtremeElements) {
  for (Kvr64f x : {std::numeric_limits<Kvr64f>::max(), std::numeric_limits<Kvr64f>::min(), 5e-324, 1e300,
                   1e-300, 1.4142, 0.70711}) {
    expectSum(kvrsSumLn_64f, std::vector<Kvr64f>(9000, x));
  }
  for (Kvr32f x : {std::numeric_limits<Kvr32f>::max(), std::numeric_limits<Kvr32f>::min(), 1e-45f}) {
    expectSum(kvrsSumLn_32f64f, std::vector<Kvr32f>(9000, x));
    expectSum(kvrsSumLn_32f, std::vector<Kvr32f>(9000, x));
  }
}

// Zeros, negative numbers, infinities and NaN somewhere: the first of the kinds that warn gives the status.
template <class R, class S>
void checkWarnings(KvrStatus (*f)(const S*, int, R*) noexcept) {
  Random random(5);
  for (int len : {1, 2, 7, 33, 100, 5000, 20000}) {
    for (int turn = 0; turn < 30; ++turn) {
      std::vector<S> src(static_cast<size_t>(len));
      for (S& x : src) x = drawPositive<S>(random);
      for (int k = 0; k < turn % 4; ++k) {
        std::vector<S> special{0, S(-1), std::numeric_limits<S>::lowest()};
        if (std::is_floating_point_v<S> && turn % 2 == 0) {
          special = {std::numeric_limits<S>::infinity(), std::numeric_limits<S>::quiet_NaN(), 0};
        }
        src[random.below(static_cast<uint32_t>(len))] = special[random.below(3)];
      }
      expectSum(f, src);
    }
  }
}

TEST(SumLn, Warnings) {
  checkWarnings<Kvr32f, Kvr16s>(kvrsSumLn_16s32f);
  checkWarnings<Kvr32f, Kvr32f>(kvrsSumLn_32f);
  checkWarnings<Kvr64f, Kvr32f>(kvrsSumLn_32f64f);
  checkWarnings<Kvr64f, Kvr64f>(kvrsSumLn_64f);
}

}  // namespace
