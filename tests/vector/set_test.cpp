// SPDX-License-Identifier: MIT
#include "kvrs/fill.h"
#include "tests/support/large.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

template <class T>
void checkSet(KvrStatus (*f)(T, T*, int) noexcept) {
  Random random;
  for (int round = 0; round < 3; ++round) {
    const T val = random.value<T>();
    sweepMap<T>([=](T* dst, int len) { return f(val, dst, len); }, [=] { return val; },
                {.lengths = sweepLengths({4096})});
  }
}

TEST(Set, EveryType) {
  checkSet(kvrsSet_8u);
  checkSet(kvrsSet_16s);
  checkSet(kvrsSet_16sc);
  checkSet(kvrsSet_32s);
  checkSet(kvrsSet_32f);
  checkSet(kvrsSet_32sc);
  checkSet(kvrsSet_32fc);
  checkSet(kvrsSet_64s);
  checkSet(kvrsSet_64f);
  checkSet(kvrsSet_64sc);
  checkSet(kvrsSet_64fc);
}

// Names that do the same, but get their values in registers of their own kind.
TEST(Set, SameWidthDifferentRegisters) {
  Kvr32fc floats[3];
  Kvr32sc ints[3];
  ASSERT_EQ(kvrStatusOk, kvrsSet_32fc({1.5f, -2.25f}, floats, 3));
  ASSERT_EQ(kvrStatusOk, kvrsSet_32sc({7, -9}, ints, 3));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(1.5f, floats[i].re);
    EXPECT_EQ(-2.25f, floats[i].im);
    EXPECT_EQ(7, ints[i].re);
    EXPECT_EQ(-9, ints[i].im);
  }
  Kvr64f real[2];
  Kvr64s whole[2];
  ASSERT_EQ(kvrStatusOk, kvrsSet_64f(0.125, real, 2));
  ASSERT_EQ(kvrStatusOk, kvrsSet_64s(INT64_MIN + 5, whole, 2));
  EXPECT_EQ(0.125, real[1]);
  EXPECT_EQ(INT64_MIN + 5, whole[1]);
}

TEST(Set, NaNKeepsItsBits) {
  const uint64_t bits = 0x7FF4000000001234;
  Kvr64f nan, dst[5];
  memcpy(&nan, &bits, sizeof nan);
  Kvr64fc complexDst[3];
  ASSERT_EQ(kvrStatusOk, kvrsSet_64fc({nan, 1}, complexDst, 3));
  EXPECT_EQ(0, memcmp(&complexDst[2].re, &bits, sizeof bits));
  // In 32-bit code the caller may pass a lone double through the x87 unit, which quiets it.
  ASSERT_EQ(kvrStatusOk, kvrsSet_64f(__builtin_nan("0x1234"), dst, 5));
  EXPECT_TRUE(__builtin_isnan(dst[4]));
}

TEST(Set, BeyondTheCache) {
  for (size_t offset : {0, 2}) {
    LargeVector<Kvr16s> dst(offset);
    ASSERT_EQ(kvrStatusOk, kvrsSet_16s(-12345, dst.data(), dst.size()));
    dst.expect([](size_t) { return Kvr16s{-12345}; });
  }
}

}  // namespace
