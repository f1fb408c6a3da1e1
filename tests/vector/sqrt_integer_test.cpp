// SPDX-License-Identifier: MIT
#include <cfenv>
#include <climits>
#include <cmath>
#include <vector>

#include "kvrs/roots.h"
#include "tests/support/rounding.h"
#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

// The stated arithmetic: the root in precision F, times a power of two, rounded as the caller says.
template <class F, class D, class S>
D scaledRoot(S x, int scaleFactor, int zeroAbove = INT_MAX) {
  if (x <= 0 || scaleFactor > zeroAbove) return 0;
  const volatile F value = static_cast<F>(x);
  const volatile F root = std::sqrt(value);
  const int factor = std::max(-500, std::min(500, scaleFactor));
  const long double scaled = std::ldexp(static_cast<long double>(root), -factor);
  const long double most = static_cast<long double>(std::numeric_limits<D>::max());
  return scaled >= most ? std::numeric_limits<D>::max() : static_cast<D>(std::nearbyint(scaled));
}

std::vector<int> scaleFactors() {
  std::vector<int> all{INT_MIN, INT_MIN + 1, -1000, -101, -100, 100, 101, 1000, INT_MAX};
  for (int s = -66; s <= 66; ++s) all.push_back(s);
  return all;
}

template <class F, class D, class S, class Call>
void checkAll(Call call, const std::vector<S>& src, int zeroAbove = INT_MAX) {
  bool negative = false;
  for (S x : src) negative = negative || x < 0;
  std::vector<D> got(src.size());
  for (int scaleFactor : scaleFactors()) {
    ASSERT_EQ(negative ? kvrStatusSqrtNegArg : kvrStatusOk,
              call(src.data(), got.data(), static_cast<int>(src.size()), scaleFactor));
    for (size_t i = 0; i < src.size(); ++i) {
      const D want = scaledRoot<F, D>(src[i], scaleFactor, zeroAbove);
      ASSERT_EQ(want, got[i]) << +src[i] << ", scaleFactor " << scaleFactor;
    }
  }
}

template <class T>
std::vector<T> allOf() {
  std::vector<T> all;
  for (int x = std::numeric_limits<T>::lowest(); x <= std::numeric_limits<T>::max(); ++x)
    all.push_back(static_cast<T>(x));
  return all;
}

TEST(SqrtInteger, All8And16Bits) {
  checkAll<float, Kvr8u>(kvrsSqrt_8u_Sfs, allOf<Kvr8u>());
  checkAll<float, Kvr16u>(kvrsSqrt_16u_Sfs, allOf<Kvr16u>());
  checkAll<float, Kvr16s>(kvrsSqrt_16s_Sfs, allOf<Kvr16s>());
}

// Of 8 bits the stated arithmetic is exact, whatever the scale factor; of 16 bits while nothing is scaled up.
TEST(SqrtInteger, SmallRootsAreExact) {
  const auto exact = [](int64_t x, int shift) {  // 2^shift sqrt(x), by integers
    const int64_t scaled = x << (2 * shift);
    int64_t r = static_cast<int64_t>(std::sqrt(static_cast<long double>(scaled)));
    while (r * r > scaled) --r;
    return scaled - r * r > r ? r + 1 : r;  // above (r + 1/2)^2 = r^2 + r + 1/4
  };
  std::vector<Kvr16u> src = allOf<Kvr16u>(), got(src.size());
  kvrsSqrt_16u_Sfs(src.data(), got.data(), 65536, 0);
  for (size_t i = 0; i < src.size(); ++i) ASSERT_EQ(exact(src[i], 0), got[i]) << src[i];
  std::vector<Kvr8u> small = allOf<Kvr8u>(), gotSmall(256);
  for (int shift : {0, 1, 2, 3}) {
    kvrsSqrt_8u_Sfs(small.data(), gotSmall.data(), 256, -shift);
    for (size_t i = 0; i < small.size(); ++i) {
      ASSERT_EQ(std::min<int64_t>(255, exact(small[i], shift)), gotSmall[i]) << i << ", " << shift;
    }
  }
}

// Squares, what lies halfway between their roots, and their neighbours.
template <class T>
std::vector<T> decisionPoints() {
  std::vector<T> src{0, 1, 2, 3, 4, std::numeric_limits<T>::max(), std::numeric_limits<T>::max() - 1};
  Random random(3);
  const long double most = std::sqrt(static_cast<long double>(std::numeric_limits<T>::max()));
  for (int i = 0; i < 3000; ++i) {
    const int64_t r = static_cast<int64_t>(std::ldexp(most, -static_cast<int>(random.below(30))) *
                                           static_cast<long double>(std::fabs(random.unit())));
    for (int64_t off : {int64_t{-1}, int64_t{0}, int64_t{1}}) {
      if (r * r + off > 0) src.push_back(static_cast<T>(r * r + off));
      if (r * r + r + off > 0 && static_cast<long double>(r) < most - 1)
        src.push_back(static_cast<T>(r * r + r + off));
    }
  }
  return src;
}

TEST(SqrtInteger, DecisionPoints) {
  checkAll<double, Kvr16s>(kvrsSqrt_32s16s_Sfs, decisionPoints<Kvr32s>(), 16);
  checkAll<double, Kvr16s>(kvrsSqrt_64s16s_Sfs, decisionPoints<Kvr64s>(), 32);
  checkAll<double, Kvr64s>(kvrsSqrt_64s_Sfs, decisionPoints<Kvr64s>());
}

TEST(SqrtInteger, NegativeNumbers) {
  checkAll<double, Kvr16s>(kvrsSqrt_32s16s_Sfs, std::vector<Kvr32s>{0, 4, -4, INT_MAX, INT_MIN, -1}, 16);
  checkAll<double, Kvr16s>(kvrsSqrt_64s16s_Sfs, std::vector<Kvr64s>{0, 4, -4, INT64_MAX, INT64_MIN, -1}, 32);
  checkAll<double, Kvr64s>(kvrsSqrt_64s_Sfs, std::vector<Kvr64s>{0, 4, -4, INT64_MAX, INT64_MIN, -1});
  const Kvr32s src[] = {0, 4, -4};
  Kvr16s got[3];
  EXPECT_EQ(kvrStatusSqrtNegArg, kvrsSqrt_32s16s_Sfs(src, got, 3, -15));
  EXPECT_EQ(0, got[0]);
  EXPECT_EQ(32767, got[1]);
  EXPECT_EQ(0, got[2]);
  EXPECT_EQ(kvrStatusSqrtNegArg, kvrsSqrt_32s16s_Sfs(src, got, 3, 17));
  EXPECT_EQ(kvrStatusOk, kvrsSqrt_32s16s_Sfs(src, got, 2, 17));
}

// The one negative number in each place, among lengths of blocks and parts of them.
TEST(SqrtInteger, OneNegativeNumberAnywhere) {
  for (int len : {1, 2, 5, 8, 16, 31, 67}) {
    const size_t n = static_cast<size_t>(len);
    std::vector<Kvr16s> s(n, 9), got(n);
    std::vector<Kvr32s> w(n, 9);
    std::vector<Kvr64s> v(n, 9), gotV(n);
    EXPECT_EQ(kvrStatusOk, kvrsSqrt_16s_Sfs(s.data(), got.data(), len, 0));
    for (size_t i = 0; i < n; ++i) {
      s[i] = -1;
      w[i] = INT_MIN;
      v[i] = -1;
      EXPECT_EQ(kvrStatusSqrtNegArg, kvrsSqrt_16s_Sfs(s.data(), got.data(), len, 0));
      EXPECT_EQ(kvrStatusSqrtNegArg, kvrsSqrt_32s16s_Sfs(w.data(), got.data(), len, 0));
      EXPECT_EQ(kvrStatusSqrtNegArg, kvrsSqrt_64s16s_Sfs(v.data(), got.data(), len, 0));
      EXPECT_EQ(kvrStatusSqrtNegArg, kvrsSqrt_64s_Sfs(v.data(), gotV.data(), len, 0));
      EXPECT_EQ(kvrStatusSqrtNegArg, kvrsSqrt_64s_Sfs(v.data(), gotV.data(), len, -30));
      for (size_t k = 0; k < n; ++k) ASSERT_EQ(k == i ? 0 : int64_t{3} << 30, gotV[k]);
      s[i] = 9;
      w[i] = v[i] = 9;
    }
  }
}

// The conversion to an integer is in the caller's mode.
TEST(SqrtInteger, CallersRoundingMode) {
  const Kvr16s src[] = {2, 3, 6, 7, 9};
  const int down[] = {1, 1, 2, 2, 3}, up[] = {2, 2, 3, 3, 3};
  Kvr16s got[5];
  for (int mode : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
    callWithRounding(mode, [&] { return kvrsSqrt_16s_Sfs(src, got, 5, 0); });
    for (int i = 0; i < 5; ++i) EXPECT_EQ(mode == FE_UPWARD ? up[i] : down[i], got[i]);
  }
}

template <class F, class D, class S, class Call>
void sweepAt(Call call, int scaleFactor) {
  const auto draw = [](Random& random, size_t, S) {
    const S x = random.value<S>();
    return x < 0 ? static_cast<S>(-(x + 1)) : x;
  };
  sweepMapWith<D, S>([=](const S* src, D* dst, int len) { return call(src, dst, len, scaleFactor); },
                     [=](S x) { return scaledRoot<F, D>(x, scaleFactor); }, sameBits<D>, draw,
                     {.rounding = Rounding::followed});
}
template <class F, class T, class Call>
void sweepInPlaceAt(Call call, int scaleFactor) {
  const auto draw = [](Random& random, size_t, T) {
    const T x = random.value<T>();
    return x < 0 ? static_cast<T>(-(x + 1)) : x;
  };
  sweepInPlaceWith<T>([=](T* srcDst, int len) { return call(srcDst, len, scaleFactor); },
                      [=](T x) { return scaledRoot<F, T>(x, scaleFactor); }, sameBits<T>, draw,
                      {.rounding = Rounding::followed});
}

TEST(SqrtInteger, Sweep) {
  sweepAt<float, Kvr8u, Kvr8u>(kvrsSqrt_8u_Sfs, -3);
  sweepAt<float, Kvr16u, Kvr16u>(kvrsSqrt_16u_Sfs, 0);
  sweepAt<float, Kvr16s, Kvr16s>(kvrsSqrt_16s_Sfs, -4);
  sweepAt<double, Kvr16s, Kvr32s>(kvrsSqrt_32s16s_Sfs, 2);
  sweepAt<double, Kvr16s, Kvr64s>(kvrsSqrt_64s16s_Sfs, 18);
  sweepAt<double, Kvr64s, Kvr64s>(kvrsSqrt_64s_Sfs, 0);
  sweepAt<double, Kvr64s, Kvr64s>(kvrsSqrt_64s_Sfs, -25);
  sweepInPlaceAt<float, Kvr8u>(kvrsSqrt_8u_ISfs, -3);
  sweepInPlaceAt<float, Kvr16u>(kvrsSqrt_16u_ISfs, 0);
  sweepInPlaceAt<float, Kvr16s>(kvrsSqrt_16s_ISfs, -4);
  sweepInPlaceAt<double, Kvr64s>(kvrsSqrt_64s_ISfs, 0);
}

TEST(SqrtInteger, OnThreads) {
  auto src = randomVector<Kvr16u>(static_cast<size_t>(threadedLength(2048)) + 3, 4);
  expectSameOnThreads<Kvr16u>(src.size(), kvrStatusOk, "16u", [&](Kvr16u* dst) {
    return kvrsSqrt_16u_Sfs(src.data(), dst, static_cast<int>(src.size()), -1);
  });
  std::vector<Kvr64s> wide(static_cast<size_t>(threadedLength(256)) + 3, 5);
  wide.back() = -1;
  expectSameOnThreads<Kvr64s>(wide.size(), kvrStatusSqrtNegArg, "64s", [&](Kvr64s* dst) {
    return kvrsSqrt_64s_Sfs(wide.data(), dst, static_cast<int>(wide.size()), -1);
  });
}

}  // namespace
