// SPDX-License-Identifier: MIT
#include "kvrs/arith_scaled.h"
#include "tests/vector/scaled_check.h"

using namespace kvrs::test;

namespace {

// r as each function defines it, from the left-hand and the right-hand operand.
struct Plus {
  template <class T>
  static long double exact(T a, T b) {
    return static_cast<long double>(a) + static_cast<long double>(b);
  }
};
struct Minus {
  template <class T>
  static long double exact(T a, T b) {
    const long double r = static_cast<long double>(a) - static_cast<long double>(b);
    return std::is_unsigned_v<T> && r < 0 ? 0 : r;
  }
};
struct Reversed {
  template <class T>
  static long double exact(T a, T b) {
    return Minus::exact(b, a);
  }
};

template <class Op>
constexpr auto scaled = [](int n, auto a, auto b) {
  using T = decltype(a);
  if constexpr (std::is_integral_v<T>) {
    return scaledTo<T>(Op::exact(a, b), n);
  } else {
    using Part = decltype(a.re);
    return T{scaledTo<Part>(Op::exact(a.re, b.re), n), scaledTo<Part>(Op::exact(a.im, b.im), n)};
  }
};

TEST(ScaledAdd, Vectors) {
  checkVectors<Kvr8u>("8u", kvrsAdd_8u_Sfs, kvrsAdd_8u_ISfs, scaled<Plus>);
  checkVectors<Kvr16u>("16u", kvrsAdd_16u_Sfs, kvrsAdd_16u_ISfs, scaled<Plus>);
  checkVectors<Kvr16s>("16s", kvrsAdd_16s_Sfs, kvrsAdd_16s_ISfs, scaled<Plus>);
  checkVectors<Kvr16sc>("16sc", kvrsAdd_16sc_Sfs, kvrsAdd_16sc_ISfs, scaled<Plus>);
  checkVectors<Kvr32s>("32s", kvrsAdd_32s_Sfs, kvrsAdd_32s_ISfs, scaled<Plus>);
  checkVectors<Kvr32sc>("32sc", kvrsAdd_32sc_Sfs, kvrsAdd_32sc_ISfs, scaled<Plus>);
}

// The sum saturates to 64 bits before it is scaled.
TEST(ScaledAdd, Vectors64s) {
  const auto oracle = [](int n, Kvr64s a, Kvr64s b) {
    return scaledTo<Kvr64s>(static_cast<long double>(scaledTo<Kvr64s>(Plus::exact(a, b), 0)), n);
  };
  checkVectors<Kvr64s, Kvr64s, Kvr64s>("64s", kvrsAdd_64s_Sfs, nullptr, oracle);
}

TEST(ScaledAdd, Scalar) {
  checkScalar<Kvr8u>("8u", kvrsAddC_8u_Sfs, kvrsAddC_8u_ISfs, scaled<Plus>);
  checkScalar<Kvr16u>("16u", kvrsAddC_16u_Sfs, kvrsAddC_16u_ISfs, scaled<Plus>);
  checkScalar<Kvr16s>("16s", kvrsAddC_16s_Sfs, kvrsAddC_16s_ISfs, scaled<Plus>);
  checkScalar<Kvr16sc>("16sc", kvrsAddC_16sc_Sfs, kvrsAddC_16sc_ISfs, scaled<Plus>);
  checkScalar<Kvr32s>("32s", kvrsAddC_32s_Sfs, kvrsAddC_32s_ISfs, scaled<Plus>);
  checkScalar<Kvr32sc>("32sc", kvrsAddC_32sc_Sfs, kvrsAddC_32sc_ISfs, scaled<Plus>);
}

TEST(ScaledSub, Vectors) {
  checkVectors<Kvr8u>("8u", kvrsSub_8u_Sfs, kvrsSub_8u_ISfs, scaled<Minus>);
  checkVectors<Kvr16u>("16u", kvrsSub_16u_Sfs, kvrsSub_16u_ISfs, scaled<Minus>);
  checkVectors<Kvr16s>("16s", kvrsSub_16s_Sfs, kvrsSub_16s_ISfs, scaled<Minus>);
  checkVectors<Kvr16sc>("16sc", kvrsSub_16sc_Sfs, kvrsSub_16sc_ISfs, scaled<Minus>);
  checkVectors<Kvr32s>("32s", kvrsSub_32s_Sfs, kvrsSub_32s_ISfs, scaled<Minus>);
  checkVectors<Kvr32sc>("32sc", kvrsSub_32sc_Sfs, kvrsSub_32sc_ISfs, scaled<Minus>);
}

TEST(ScaledSub, Scalar) {
  checkScalar<Kvr8u>("8u", kvrsSubC_8u_Sfs, kvrsSubC_8u_ISfs, scaled<Minus>);
  checkScalar<Kvr16u>("16u", kvrsSubC_16u_Sfs, kvrsSubC_16u_ISfs, scaled<Minus>);
  checkScalar<Kvr16s>("16s", kvrsSubC_16s_Sfs, kvrsSubC_16s_ISfs, scaled<Minus>);
  checkScalar<Kvr16sc>("16sc", kvrsSubC_16sc_Sfs, kvrsSubC_16sc_ISfs, scaled<Minus>);
  checkScalar<Kvr32s>("32s", kvrsSubC_32s_Sfs, kvrsSubC_32s_ISfs, scaled<Minus>);
  checkScalar<Kvr32sc>("32sc", kvrsSubC_32sc_Sfs, kvrsSubC_32sc_ISfs, scaled<Minus>);
}

TEST(ScaledSub, ScalarReversed) {
  checkScalar<Kvr8u>("8u", kvrsSubCRev_8u_Sfs, kvrsSubCRev_8u_ISfs, scaled<Reversed>);
  checkScalar<Kvr16u>("16u", kvrsSubCRev_16u_Sfs, kvrsSubCRev_16u_ISfs, scaled<Reversed>);
  checkScalar<Kvr16s>("16s", kvrsSubCRev_16s_Sfs, kvrsSubCRev_16s_ISfs, scaled<Reversed>);
  checkScalar<Kvr16sc>("16sc", kvrsSubCRev_16sc_Sfs, kvrsSubCRev_16sc_ISfs, scaled<Reversed>);
  checkScalar<Kvr32s>("32s", kvrsSubCRev_32s_Sfs, kvrsSubCRev_32s_ISfs, scaled<Reversed>);
  checkScalar<Kvr32sc>("32sc", kvrsSubCRev_32sc_Sfs, kvrsSubCRev_32sc_ISfs, scaled<Reversed>);
}

// Every pair of bytes at every scale factor that is told apart.
TEST(ScaledAdd, EveryPairOfBytes) {
  std::vector<Kvr8u> a, b;
  for (int i = 0; i < 256; ++i) {
    for (int j = 0; j < 256; ++j) a.push_back(static_cast<Kvr8u>(i)), b.push_back(static_cast<Kvr8u>(j));
  }
  const int count = static_cast<int>(a.size());
  std::vector<Kvr8u> sum(a.size()), difference(a.size()), row(256);
  for (int n = -9; n <= 10; ++n) {
    ASSERT_EQ(kvrStatusOk, kvrsAdd_8u_Sfs(a.data(), b.data(), sum.data(), count, n));
    ASSERT_EQ(kvrStatusOk, kvrsSub_8u_Sfs(b.data(), a.data(), difference.data(), count, n));
    for (size_t i = 0; i < a.size(); ++i) {
      ASSERT_EQ(+sum[i], +scaled<Plus>(n, a[i], b[i])) << +a[i] << " + " << +b[i] << ", " << n;
      ASSERT_EQ(+difference[i], +scaled<Minus>(n, a[i], b[i])) << +a[i] << " - " << +b[i] << ", " << n;
    }
    for (int val = 0; val < 256; ++val) {
      const Kvr8u v = static_cast<Kvr8u>(val);
      const Kvr8u* all = b.data();  // 0 to 255
      kvrsAddC_8u_Sfs(all, v, row.data(), 256, n);
      for (int i = 0; i < 256; ++i) ASSERT_EQ(row[i], sum[256 * val + i]) << val << ", " << i << ", " << n;
      kvrsSubCRev_8u_Sfs(all, v, row.data(), 256, n);
      for (int i = 0; i < 256; ++i)
        ASSERT_EQ(row[i], difference[256 * val + i]) << val << ", " << i << ", " << n;
      kvrsSubC_8u_Sfs(all, v, row.data(), 256, n);
      for (int i = 0; i < 256; ++i)
        ASSERT_EQ(row[i], difference[256 * i + val]) << val << ", " << i << ", " << n;
    }
  }
}

TEST(ScaledAdd, Unscaled) {
  const auto plus = [](auto a, auto b) { return scaled<Plus>(0, a, b); };
  sweepMap<Kvr16s, Kvr16s, Kvr16s>(kvrsAdd_16s, plus);
  sweepInPlace<Kvr16s, Kvr16s>(kvrsAdd_16s_I, plus);
  sweepMap<Kvr16u, Kvr16u, Kvr16u>(kvrsAdd_16u, plus);
  sweepMap<Kvr32u, Kvr32u, Kvr32u>(kvrsAdd_32u, plus);
  sweepMap<Kvr16u, Kvr8u, Kvr8u>(kvrsAdd_8u16u, [](Kvr8u a, Kvr8u b) { return static_cast<Kvr16u>(a + b); });
  sweepInPlace<Kvr32s, Kvr16s>(kvrsAdd_16s32s_I, [](Kvr16s a, Kvr32s b) {
    return scaledTo<Kvr32s>(static_cast<long double>(a) + b, 0);
  });
  for (Kvr16s val : extremes<Kvr16s>()) {
    sweepInPlace<Kvr16s>([=](Kvr16s* srcDst, int len) { return kvrsAddC_16s_I(val, srcDst, len); },
                         [=](Kvr16s a) { return plus(a, val); }, {{1, 2, 3, 7, 64, 100}});
  }
}

TEST(ScaledSub, Unscaled) {
  sweepMap<Kvr16s, Kvr16s, Kvr16s>(kvrsSub_16s, [](Kvr16s a, Kvr16s b) { return scaled<Minus>(0, b, a); });
  sweepInPlace<Kvr16s, Kvr16s>(kvrsSub_16s_I, [](Kvr16s a, Kvr16s b) { return scaled<Minus>(0, b, a); });
  for (Kvr16s val : extremes<Kvr16s>()) {
    sweepInPlace<Kvr16s>([=](Kvr16s* srcDst, int len) { return kvrsSubC_16s_I(val, srcDst, len); },
                         [=](Kvr16s a) { return scaled<Minus>(0, a, val); }, {{1, 2, 3, 7, 64, 100}});
  }
}

TEST(ScaledAdd, TiesGoToEven) {
  const Kvr16s a[] = {1, 1, -1, -3}, b[] = {2, 0, 0, 0};
  Kvr16s dst[4];
  ASSERT_EQ(kvrStatusOk, kvrsAdd_16s_Sfs(a, b, dst, 4, 1));
  EXPECT_EQ(2, dst[0]);
  EXPECT_EQ(0, dst[1]);
  EXPECT_EQ(0, dst[2]);
  EXPECT_EQ(-2, dst[3]);
}

TEST(ScaledSub, FirstSourceIsTheSubtrahend) {
  const Kvr16s one = 1, three = 3;
  Kvr16s dst = 0, srcDst = 10;
  ASSERT_EQ(kvrStatusOk, kvrsSub_16s_Sfs(&one, &three, &dst, 1, 0));
  EXPECT_EQ(2, dst);
  ASSERT_EQ(kvrStatusOk, kvrsSub_16s_ISfs(&three, &srcDst, 1, 0));
  EXPECT_EQ(7, srcDst);
}

TEST(ScaledAdd, ZeroScalarBelowTheLowerBound) {
  const Kvr8u src[] = {0, 1};
  Kvr8u dst[2];
  ASSERT_EQ(kvrStatusOk, kvrsAddC_8u_Sfs(src, 0, dst, 2, -8));
  EXPECT_EQ(0, dst[0]);
  EXPECT_EQ(255, dst[1]);
}

TEST(ScaledSub, FromZeroIsZero) {
  for (int n : {-100, -8, -1, 0, 1, 8, 100}) {
    const Kvr8u src[] = {0, 1, 255};
    Kvr8u dst[] = {9, 9, 9};
    ASSERT_EQ(kvrStatusOk, kvrsSubCRev_8u_Sfs(src, 0, dst, 3, n));
    EXPECT_EQ(0, dst[0] | dst[1] | dst[2]);
  }
}

// Complex sums and differences hand on to the real forms, which test the pointers.
TEST(ScaledAdd, ComplexFormsTestTheLengthFirst) {
  Kvr16sc a[1] = {};
  EXPECT_EQ(kvrStatusBadLength, kvrsAdd_16sc_Sfs(nullptr, a, a, 0, 0));
  EXPECT_EQ(kvrStatusBadLength, kvrsSub_16sc_ISfs(nullptr, nullptr, -1, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsAdd_16sc_Sfs(nullptr, a, a, 1, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsAdd_16s_Sfs(nullptr, &a->re, &a->re, 0, 0));
}

// The checks of Zero and Set stand in for those of 16u forms that they answer.
TEST(ScaledAdd, ShortcutsOf16uAheadOfTheChecks) {
  const auto expect = [](Kvr16u value, auto call) {
    Kvr16u dst[3] = {7, 7, 7};
    EXPECT_EQ(kvrStatusOk, call(dst, 2));
    EXPECT_EQ(value, dst[0]);
    EXPECT_EQ(value, dst[1]);
    EXPECT_EQ(7, dst[2]);
    EXPECT_EQ(kvrStatusBadLength, call(dst, 0));
    EXPECT_EQ(kvrStatusNullPointer, call(nullptr, 0));
  };
  const Kvr16u* none = nullptr;
  expect(0, [&](Kvr16u* dst, int len) { return kvrsAdd_16u_Sfs(none, none, dst, len, 18); });
  expect(0, [&](Kvr16u* dst, int len) { return kvrsAdd_16u_ISfs(none, dst, len, 18); });
  expect(0, [&](Kvr16u* dst, int len) { return kvrsSub_16u_Sfs(none, none, dst, len, 17); });
  expect(0, [&](Kvr16u* dst, int len) { return kvrsSub_16u_ISfs(none, dst, len, 17); });
  expect(0, [&](Kvr16u* dst, int len) { return kvrsAddC_16u_Sfs(none, 1, dst, len, 18); });
  expect(0, [&](Kvr16u* dst, int len) { return kvrsSubC_16u_Sfs(none, 1, dst, len, 17); });
  expect(0, [&](Kvr16u* dst, int len) { return kvrsAddC_16u_ISfs(1, dst, len, 18); });
  expect(0, [&](Kvr16u* dst, int len) { return kvrsSubC_16u_ISfs(1, dst, len, 17); });
  expect(0xFFFF, [&](Kvr16u* dst, int len) { return kvrsAddC_16u_ISfs(1, dst, len, -16); });
  expect(0xFFFF, [&](Kvr16u* dst, int len) { return kvrsAddC_16u_Sfs(none, 1, dst, len, -16); });
  Kvr16u dst[2];
  EXPECT_EQ(kvrStatusNullPointer, kvrsAdd_16u_Sfs(none, dst, dst, 2, 17));
  EXPECT_EQ(kvrStatusNullPointer, kvrsSub_16u_Sfs(none, dst, dst, 2, 16));
  EXPECT_EQ(kvrStatusNullPointer, kvrsAddC_16u_Sfs(none, 1, dst, 2, 17));
  EXPECT_EQ(kvrStatusNullPointer, kvrsSubC_16u_Sfs(none, 1, dst, 2, 16));
  EXPECT_EQ(kvrStatusNullPointer, kvrsAddC_16u_Sfs(none, 0, dst, 2, -16));
  // Copy does take the source.
  EXPECT_EQ(kvrStatusNullPointer, kvrsAddC_16u_Sfs(none, 0, dst, 2, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsSubC_16u_Sfs(none, 0, dst, 2, 0));
}

}  // namespace
