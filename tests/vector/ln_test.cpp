// SPDX-License-Identifier: MIT
#include <cmath>
#include <vector>

#include "kvrs/logarithm.h"
#include "tests/support/rounding.h"
#include "tests/support/ulps.h"

using namespace kvrs::test;

namespace {

template <class S>
long double logarithm(S x) {
  return std::log(static_cast<long double>(x));
}

template <class D, class S>
bool isClose(D got, D want) {
  return std::isnan(want) ? std::isnan(got) : withinUlps(got, want, 1);
}

// Positive numbers of all kinds; warnings are tested below.
template <class S>
S drawPositive(Random& random, size_t, S) {
  const S x = random.below(2) != 0 ? ofExponents<S>(random, -2, 2) : anyFloat<S>(random);
  return x == 0 ? S(1) : std::fabs(x);
}

TEST(Ln, Sweep) {
  const auto oracle32 = [](auto x) { return static_cast<Kvr32f>(logarithm(x)); };
  const auto oracle64 = [](Kvr64f x) { return static_cast<Kvr64f>(logarithm(x)); };
  sweepMapWith<Kvr32f, Kvr32f>(kvrsLn_32f, oracle32, isClose<Kvr32f, Kvr32f>, drawPositive<Kvr32f>,
                               SweepOptions{});
  sweepInPlaceWith<Kvr32f>(kvrsLn_32f_I, oracle32, isClose<Kvr32f, Kvr32f>, drawPositive<Kvr32f>,
                           SweepOptions{});
  sweepMapWith<Kvr64f, Kvr64f>(kvrsLn_64f, oracle64, isClose<Kvr64f, Kvr64f>, drawPositive<Kvr64f>,
                               SweepOptions{});
  sweepInPlaceWith<Kvr64f>(kvrsLn_64f_I, oracle64, isClose<Kvr64f, Kvr64f>, drawPositive<Kvr64f>,
                           SweepOptions{});
  sweepMapWith<Kvr32f, Kvr64f>(kvrsLn_64f32f, oracle32, isClose<Kvr32f, Kvr64f>, drawPositive<Kvr64f>,
                               SweepOptions{});
}

template <class D, class S>
long double worstUlps(KvrStatus (*f)(const S*, D*, int) noexcept, const std::vector<S>& x) {
  std::vector<D> got(x.size());
  EXPECT_EQ(kvrStatusOk, f(x.data(), got.data(), static_cast<int>(x.size())));
  long double worst = 0;
  for (size_t i = 0; i < x.size(); ++i) worst = std::max(worst, ulps(got[i], logarithm(x[i])));
  return worst;
}

// One in 4,099 of all positive numbers, and all within 1 +- 2^-10.
TEST(Ln, AccuracyOfSingles) {
  std::vector<Kvr32f> x;
  const auto add = [&](uint32_t bits) {
    Kvr32f value;
    memcpy(&value, &bits, sizeof value);
    x.push_back(value);
  };
  for (uint32_t bits = 1; bits < 0x7F800000; bits += 4099) add(bits);
  for (uint32_t bits = 0x3F800000 - (1 << 14); bits < 0x3F800000 + (1 << 13); ++bits) add(bits);
  EXPECT_LT((worstUlps<Kvr32f, Kvr32f>(kvrsLn_32f, x)), 1);
}

TEST(Ln, AccuracyOfDoubles) {
  Random random(5);
  std::vector<Kvr64f> x;
  for (int i = 0; i < 100000; ++i) x.push_back(std::fabs(ofExponents<Kvr64f>(random, -2, 2)));
  for (int i = 0; i < 50000; ++i) x.push_back(std::fabs(ofExponents<Kvr64f>(random, -1074, 1023)));
  for (int i = 0; i < 50000; ++i)
    x.push_back(1 + std::ldexp(random.unit(), -static_cast<int>(random.below(50))));
  EXPECT_LT((worstUlps<Kvr64f, Kvr64f>(kvrsLn_64f, x)), 1);
  EXPECT_LT((worstUlps<Kvr32f, Kvr64f>(kvrsLn_64f32f, x)), 0.51L);
}

TEST(Ln, SpecialValues) {
  const Kvr64f inf = std::numeric_limits<Kvr64f>::infinity();
  const Kvr64f src[] = {1, inf, NAN, 0, -0.0, -1, -inf, -5e-324};
  const Kvr64f want[] = {0, inf, NAN, -inf, -inf, NAN, NAN, NAN};
  for (int i = 0; i < 8; ++i) {
    const Kvr32f src32 = i == 7 ? -1e-45f : static_cast<Kvr32f>(src[i]);
    Kvr64f got;
    Kvr32f got32, gotNarrow;
    const KvrStatus status = src[i] == 0 ? kvrStatusLnZeroArg : src[i] < 0 ? kvrStatusLnNegArg : kvrStatusOk;
    EXPECT_EQ(status, kvrsLn_64f(src + i, &got, 1)) << src[i];
    EXPECT_EQ(status, kvrsLn_32f(&src32, &got32, 1)) << src[i];
    EXPECT_EQ(status, kvrsLn_64f32f(src + i, &gotNarrow, 1)) << src[i];
    EXPECT_TRUE(sameFloat(want[i], got)) << src[i] << ": " << got;
    EXPECT_TRUE(sameFloat(static_cast<Kvr32f>(want[i]), got32)) << src[i] << ": " << got32;
    EXPECT_TRUE(sameFloat(static_cast<Kvr32f>(want[i]), gotNarrow)) << src[i] << ": " << gotNarrow;
  }
}

// The status is that of the first zero or negative element, and everything is stored all the same.
template <class D, class S>
void checkWarnings(KvrStatus (*f)(const S*, D*, int) noexcept) {
  Random random(7);
  for (int len : {1, 2, 3, 7, 16, 33, 255, 256, 257, 600}) {
    const size_t n = static_cast<size_t>(len);
    for (int turn = 0; turn < 50; ++turn) {
      std::vector<S> src(n);
      for (S& x : src) x = drawPositive(random, 0, S());
      for (int k = 0; k < turn % 4; ++k) {
        const S replaced[] = {0, -S(0), -1, -std::numeric_limits<S>::infinity()};
        src[random.below(static_cast<uint32_t>(len))] = replaced[random.below(4)];
      }
      KvrStatus want = kvrStatusOk;
      for (size_t i = n; i-- > 0;) {
        if (src[i] == 0) want = kvrStatusLnZeroArg;
        if (src[i] < 0) want = kvrStatusLnNegArg;
      }
      std::vector<D> dst(n);
      ASSERT_EQ(want, f(src.data(), dst.data(), len)) << "len " << len;
      for (size_t i = 0; i < n; ++i) {
        ASSERT_TRUE((isClose<D, S>(dst[i], static_cast<D>(logarithm(src[i]))))) << src[i] << ": " << dst[i];
      }
    }
  }
}

TEST(Ln, Warnings) {
  checkWarnings<Kvr32f, Kvr32f>(kvrsLn_32f);
  checkWarnings<Kvr64f, Kvr64f>(kvrsLn_64f);
  checkWarnings<Kvr32f, Kvr64f>(kvrsLn_64f32f);
}

}  // namespace
