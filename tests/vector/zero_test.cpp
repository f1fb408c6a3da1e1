// SPDX-License-Identifier: MIT
#include "kvrs/fill.h"
#include "tests/support/alias.h"
#include "tests/support/large.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

template <class T>
void checkZero(KvrStatus (*f)(T*, int) noexcept) {
  sweepMap<T>(f, [] { return T{}; }, {.lengths = sweepLengths({4096})});
}

TEST(Zero, EveryType) {
  checkZero(kvrsZero_8u);
  checkZero(kvrsZero_16s);
  checkZero(kvrsZero_16sc);
  checkZero(kvrsZero_32s);
  checkZero(kvrsZero_32f);
  checkZero(kvrsZero_32sc);
  checkZero(kvrsZero_32fc);
  checkZero(kvrsZero_64s);
  checkZero(kvrsZero_64f);
  checkZero(kvrsZero_64sc);
  checkZero(kvrsZero_64fc);
}

TEST(Zero, SecondNames) {
  expectOneFunction({"kvrsZero_32f", "kvrsZero_32s", "kvrsZero_16sc"});
  expectOneFunction({"kvrsZero_64f", "kvrsZero_64s", "kvrsZero_32sc", "kvrsZero_32fc"});
  expectOneFunction({"kvrsZero_64fc", "kvrsZero_64sc"});
}

TEST(Zero, BeyondTheCache) {
  for (size_t offset : {0, 3}) {
    LargeVector<Kvr8u> dst(offset);
    ASSERT_EQ(kvrStatusOk, kvrsZero_8u(dst.data(), dst.size()));
    dst.expect([](size_t) { return Kvr8u{0}; });
  }
}

TEST(Zero, MoreBytesThanAnAddressCounts) {
  if (sizeof(size_t) > 4) GTEST_SKIP() << "32-bit only";
  Kvr64fc element = {1, 2};
  EXPECT_EQ(kvrStatusBadLength, kvrsZero_64fc(&element, 1 << 28));
  EXPECT_EQ(kvrStatusBadLength, kvrsZero_64fc(&element, (1 << 28) + 1));
  EXPECT_EQ(kvrStatusBadLength, kvrsZero_64fc(&element, 0x7FFFFFFF));
  EXPECT_EQ(1, element.re);
}

}  // namespace
