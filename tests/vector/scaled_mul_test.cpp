// SPDX-License-Identifier: MIT
#include "kvrs/arith_scaled.h"
#include "tests/support/large.h"
#include "tests/vector/scaled_check.h"

using namespace kvrs::test;

namespace {

// Every product of two 16-bit or 32-bit parts, and every sum of two of them, is exact in extended precision.
template <class D>
D product(int n, long double a, long double b) {
  return scaledTo<D>(a * b, n);
}

template <class T>
T complexProduct(int n, T a, T b) {
  using Part = decltype(a.re);
  const long double ar = a.re, ai = a.im, br = b.re, bi = b.im;
  return {scaledTo<Part>(ar * br - ai * bi, n), scaledTo<Part>(ai * br + ar * bi, n)};
}

TEST(ScaledMul, Vectors) {
  checkVectors<Kvr8u>("8u", kvrsMul_8u_Sfs, kvrsMul_8u_ISfs, product<Kvr8u>);
  checkVectors<Kvr16u>("16u", kvrsMul_16u_Sfs, kvrsMul_16u_ISfs, product<Kvr16u>);
  checkVectors<Kvr16s>("16s", kvrsMul_16s_Sfs, kvrsMul_16s_ISfs, product<Kvr16s>);
}

TEST(ScaledMul, ComplexVectors) {
  checkVectors<Kvr16sc>("16sc", kvrsMul_16sc_Sfs, kvrsMul_16sc_ISfs, complexProduct<Kvr16sc>);
  checkVectors<Kvr32sc>("32sc", kvrsMul_32sc_Sfs, kvrsMul_32sc_ISfs, complexProduct<Kvr32sc>);
}

TEST(ScaledMul, MixedVectors) {
  checkScaled(ScaledCase<Kvr16s, Kvr16u, Kvr16s>{"16u16s", kvrsMul_16u16s_Sfs, product<Kvr16s>});
  checkScaled(ScaledCase<Kvr32s, Kvr16s, Kvr16s>{"16s32s", kvrsMul_16s32s_Sfs, product<Kvr32s>});
}

TEST(ScaledMul, Scalar) {
  checkScalar<Kvr8u>("8u", kvrsMulC_8u_Sfs, kvrsMulC_8u_ISfs, product<Kvr8u>);
  checkScalar<Kvr16u>("16u", kvrsMulC_16u_Sfs, kvrsMulC_16u_ISfs, product<Kvr16u>);
  checkScalar<Kvr16s>("16s", kvrsMulC_16s_Sfs, kvrsMulC_16s_ISfs, product<Kvr16s>);
}

TEST(ScaledMul, ComplexScalar) {
  checkScalar<Kvr16sc>("16sc", kvrsMulC_16sc_Sfs, kvrsMulC_16sc_ISfs, complexProduct<Kvr16sc>);
  checkScalar<Kvr32sc>("32sc", kvrsMulC_32sc_Sfs, kvrsMulC_32sc_ISfs, complexProduct<Kvr32sc>);
}

TEST(ScaledMul, Unscaled) {
  const auto times = [](Kvr16s a, Kvr16s b) { return product<Kvr16s>(0, a, b); };
  sweepMap<Kvr16s, Kvr16s, Kvr16s>(kvrsMul_16s, times);
  sweepInPlace<Kvr16s, Kvr16s>(kvrsMul_16s_I, times);
  sweepMap<Kvr16u, Kvr8u, Kvr8u>(kvrsMul_8u16u, [](Kvr8u a, Kvr8u b) { return static_cast<Kvr16u>(a * b); });
  for (Kvr16s val : extremes<Kvr16s>()) {
    sweepInPlace<Kvr16s>([=](Kvr16s* srcDst, int len) { return kvrsMulC_16s_I(val, srcDst, len); },
                         [=](Kvr16s a) { return times(a, val); }, {{1, 2, 3, 7, 64, 100}});
  }
}

// Every pair of bytes at every scale factor that is told apart.
TEST(ScaledMul, EveryPairOfBytes) {
  std::vector<Kvr8u> a, b;
  for (int i = 0; i < 256; ++i) {
    for (int j = 0; j < 256; ++j) a.push_back(static_cast<Kvr8u>(i)), b.push_back(static_cast<Kvr8u>(j));
  }
  std::vector<Kvr8u> dst(a.size()), row(256);
  for (int n = -9; n <= 17; ++n) {
    ASSERT_EQ(kvrStatusOk, kvrsMul_8u_Sfs(a.data(), b.data(), dst.data(), static_cast<int>(a.size()), n));
    for (size_t i = 0; i < a.size(); ++i) {
      ASSERT_EQ(+dst[i], +product<Kvr8u>(n, a[i], b[i])) << +a[i] << " * " << +b[i] << ", " << n;
    }
    for (int val = 0; val < 256; ++val) {
      kvrsMulC_8u_Sfs(b.data(), static_cast<Kvr8u>(val), row.data(), 256, n);
      for (int i = 0; i < 256; ++i) ASSERT_EQ(row[i], dst[256 * val + i]) << val << ", " << i << ", " << n;
    }
  }
}

TEST(ScaledAddProduct, Exact) {
  const auto call16 = [](const Kvr16s* a, const Kvr16s* b, const Kvr16s* before, Kvr16s* srcDst, int len,
                         int n) {
    memcpy(srcDst, before, static_cast<size_t>(len) * sizeof *srcDst);
    return kvrsAddProduct_16s_Sfs(a, b, srcDst, len, n);
  };
  checkScaled(ScaledCase<Kvr16s, Kvr16s, Kvr16s, Kvr16s>{
      .name = "16s",
      .call = call16,
      .oracle = [](int n, long double a, long double b,
                   long double c) { return scaledTo<Kvr16s>(a * b + c, n); },
      .copiesFirst = true});
  const auto call32 = [](const Kvr16s* a, const Kvr16s* b, const Kvr32s* before, Kvr32s* srcDst, int len,
                         int n) {
    memcpy(srcDst, before, static_cast<size_t>(len) * sizeof *srcDst);
    return kvrsAddProduct_16s32s_Sfs(a, b, srcDst, len, n);
  };
  checkScaled(ScaledCase<Kvr32s, Kvr16s, Kvr16s, Kvr32s>{
      .name = "16s32s",
      .call = call32,
      .oracle = [](int n, long double a, long double b,
                   long double c) { return scaledTo<Kvr32s>(a * b + c, n); },
      .copiesFirst = true});
}

TEST(ScaledMul, ImaginaryPartBeyond32Bits) {
  const Kvr16sc lowest = {-32768, -32768};
  Kvr16sc dst = {7, 7};
  ASSERT_EQ(kvrStatusOk, kvrsMul_16sc_Sfs(&lowest, &lowest, &dst, 1, 1));
  EXPECT_EQ(0, dst.re);
  EXPECT_EQ(32767, dst.im);
  ASSERT_EQ(kvrStatusOk, kvrsMul_16sc_Sfs(&lowest, &lowest, &dst, 1, 31));
  EXPECT_EQ(1, dst.im);
  ASSERT_EQ(kvrStatusOk, kvrsMulC_16sc_Sfs(&lowest, lowest, &dst, 1, 17));
  EXPECT_EQ(0, dst.re);
  EXPECT_EQ(16384, dst.im);
}

TEST(ScaledMul, WideResultsPastTheCache) {
  constexpr size_t kPeriod = 1009;
  LargeVector<Kvr32s> dst(4);
  const size_t len = static_cast<size_t>(dst.size());
  Random random(5);
  std::vector<Kvr16s> a(len), b(len);
  std::vector<Kvr32s> want(kPeriod);
  for (size_t i = 0; i < len; ++i) {
    a[i] = i < kPeriod ? random.value<Kvr16s>() : a[i - kPeriod];
    b[i] = i < kPeriod ? random.value<Kvr16s>() : b[i - kPeriod];
    if (i < kPeriod) want[i] = scaledTo<Kvr32s>(static_cast<long double>(a[i] * b[i]), 4);
  }
  ASSERT_EQ(kvrStatusOk, kvrsMul_16s32s_Sfs(a.data(), b.data(), dst.data(), dst.size(), 4));
  dst.expect([&](size_t i) { return want[i % kPeriod]; });
}

TEST(ScaledMul, UpperBoundOf16s) {
  const Kvr16s lowest = -32768;
  Kvr16s dst = 7;
  ASSERT_EQ(kvrStatusOk, kvrsMul_16s_Sfs(&lowest, &lowest, &dst, 1, 31));
  EXPECT_EQ(0, dst);
  ASSERT_EQ(kvrStatusOk, kvrsMul_16s_Sfs(&lowest, &lowest, &dst, 1, 30));
  EXPECT_EQ(1, dst);
}

TEST(ScaledMul, ShortcutsOf16uAheadOfTheChecks) {
  Kvr16u dst[2] = {7, 7};
  EXPECT_EQ(kvrStatusOk, kvrsMulC_16u_Sfs(nullptr, 0, dst, 1, 0));
  EXPECT_EQ(0, dst[0]);
  EXPECT_EQ(7, dst[1]);
  EXPECT_EQ(kvrStatusOk, kvrsMulC_16u_Sfs(nullptr, 5, dst, 2, 33));
  EXPECT_EQ(0, dst[1]);
  EXPECT_EQ(kvrStatusBadLength, kvrsMulC_16u_Sfs(nullptr, 0, dst, 0, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsMulC_16u_Sfs(dst, 0, nullptr, 0, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsMulC_16u_Sfs(nullptr, 1, dst, 2, 0));  // Copy does take the source
  EXPECT_EQ(kvrStatusNullPointer, kvrsMulC_16u_ISfs(0, nullptr, 0, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsMulC_16u_Sfs(nullptr, 5, dst, 2, 32));
  EXPECT_EQ(kvrStatusNullPointer, kvrsMulC_16s_Sfs(nullptr, 0, reinterpret_cast<Kvr16s*>(dst), 2, 0));
}

}  // namespace
