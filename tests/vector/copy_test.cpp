// SPDX-License-Identifier: MIT
#include "kvrs/fill.h"
#include "tests/support/alias.h"
#include "tests/support/large.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

template <class T>
void checkCopy(KvrStatus (*f)(const T*, T*, int) noexcept) {
  const auto same = [](T a) { return a; };
  sweepMap<T, T>(f, same, {.lengths = sweepLengths({4096})});
  sweepInPlace<T>([=](T* srcDst, int len) { return f(srcDst, srcDst, len); }, same);
}

TEST(Copy, EveryType) {
  checkCopy(kvrsCopy_8u);
  checkCopy(kvrsCopy_16s);
  checkCopy(kvrsCopy_16sc);
  checkCopy(kvrsCopy_32s);
  checkCopy(kvrsCopy_32f);
  checkCopy(kvrsCopy_32sc);
  checkCopy(kvrsCopy_32fc);
  checkCopy(kvrsCopy_64s);
  checkCopy(kvrsCopy_64f);
  checkCopy(kvrsCopy_64sc);
  checkCopy(kvrsCopy_64fc);
}

TEST(Copy, SecondNames) {
  expectOneFunction({"kvrsCopy_32f", "kvrsCopy_32s", "kvrsCopy_16sc"});
  expectOneFunction({"kvrsCopy_64f", "kvrsCopy_64s", "kvrsCopy_32sc", "kvrsCopy_32fc"});
  expectOneFunction({"kvrsCopy_64fc", "kvrsCopy_64sc"});
}

// Where block sizes and ways of storing have been known to change.
TEST(Copy, LongVectors) {
  for (int len : {131071, 131072, 131073, 524288, 1048575, 1048577}) {
    for (size_t offset : {0, 1, 13}) {
      std::vector<Kvr8u> src(static_cast<size_t>(len) + 64), dst(src.size(), 0xA5);
      Random random(static_cast<uint64_t>(len));
      for (Kvr8u& b : src) b = random.value<Kvr8u>();
      ASSERT_EQ(kvrStatusOk, kvrsCopy_8u(src.data() + 7, dst.data() + offset, len));
      ASSERT_EQ(0, memcmp(src.data() + 7, dst.data() + offset, static_cast<size_t>(len)));
      for (size_t i = 0; i < offset; ++i) ASSERT_EQ(0xA5, dst[i]);
      for (size_t i = offset + static_cast<size_t>(len); i < dst.size(); ++i) ASSERT_EQ(0xA5, dst[i]);
    }
  }
}

TEST(Copy, BeyondTheCache) {
  const auto value = [](size_t i) { return static_cast<Kvr32s>(i * 2654435761u); };
  for (size_t offset : {0, 4, 6}) {
    LargeVector<Kvr32s> src(1), dst(offset);
    for (int i = 0; i < src.size(); ++i)
      put(src.data(), static_cast<size_t>(i), value(static_cast<size_t>(i)));
    ASSERT_EQ(kvrStatusOk, kvrsCopy_32s(src.data(), dst.data(), dst.size()));
    dst.expect(value);
    src.expect(value);
  }
}

TEST(Copy, MoreBytesThanAnAddressCounts) {
  if (sizeof(size_t) > 4) GTEST_SKIP() << "32-bit only";
  Kvr64f src = 1, dst = 2;
  EXPECT_EQ(kvrStatusBadLength, kvrsCopy_64f(&src, &dst, 1 << 29));
  EXPECT_EQ(kvrStatusBadLength, kvrsCopy_64f(&src, &dst, (1 << 29) + 1));
  EXPECT_EQ(2, dst);
}

}  // namespace
