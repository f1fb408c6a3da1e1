// SPDX-License-Identifier: MIT
#include "kvrs/reorder.h"
#include "tests/support/large.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

template <class T>
using Flip = KvrStatus (*)(const T*, T*, int) noexcept;
template <class T>
using FlipI = KvrStatus (*)(T*, int) noexcept;

template <class T>
void checkFlip(Flip<T> f, FlipI<T> inPlace) {
  Arena srcArena(1 << 16), dstArena(1 << 16);
  Random random;
  for (int len : sweepLengths({4096})) {
    const size_t n = static_cast<size_t>(len);
    for (size_t offset = 0; offset < 32; offset += len <= 70 ? 1 : 5) {
      for (Side side : {Side::front, Side::back}) {
        T* src = srcArena.place<T>(n, side, (offset * 3 + 5) % 32);
        T* dst = dstArena.place<T>(n, side, offset);
        std::vector<T> before(n);
        for (size_t i = 0; i < n; ++i) put(src, i, before[i] = random.value<T>());
        ASSERT_EQ(kvrStatusOk, f(src, dst, len));
        for (size_t i = 0; i < n; ++i) {
          ASSERT_TRUE(sameBits(before[n - 1 - i], get(dst, i))) << "len " << len << ", element " << i;
          ASSERT_TRUE(sameBits(before[i], get(src, i)));
        }
        ASSERT_EQ(kvrStatusOk, inPlace(src, len));
        for (size_t i = 0; i < n; ++i) {
          ASSERT_TRUE(sameBits(before[n - 1 - i], get(src, i)))
              << "in place, len " << len << ", element " << i;
        }
        ASSERT_TRUE(srcArena.intact());
        ASSERT_TRUE(dstArena.intact());
      }
    }
  }
}

TEST(Flip, Type_8u) {
  checkFlip(kvrsFlip_8u, kvrsFlip_8u_I);
}
TEST(Flip, Type_16u) {
  checkFlip(kvrsFlip_16u, kvrsFlip_16u_I);
}
TEST(Flip, Type_32f) {
  checkFlip(kvrsFlip_32f, kvrsFlip_32f_I);
}
TEST(Flip, Type_64f) {
  checkFlip(kvrsFlip_64f, kvrsFlip_64f_I);
}
TEST(Flip, Type_32fc) {
  checkFlip(kvrsFlip_32fc, kvrsFlip_32fc_I);
}
TEST(Flip, Type_64fc) {
  checkFlip(kvrsFlip_64fc, kvrsFlip_64fc_I);
}

TEST(Flip, OneElementStays) {
  Kvr16u element = 0x1234;
  EXPECT_EQ(kvrStatusOk, kvrsFlip_16u_I(&element, 1));
  EXPECT_EQ(0x1234, element);
}

TEST(Flip, BeyondTheCache) {
  const auto value = [](size_t i) { return static_cast<Kvr16u>(i * 40503u); };
  LargeVector<Kvr16u> src, dst;
  const size_t last = static_cast<size_t>(src.size()) - 1;
  for (size_t i = 0; i <= last; ++i) src.data()[i] = value(i);
  ASSERT_EQ(kvrStatusOk, kvrsFlip_16u(src.data(), dst.data(), dst.size()));
  dst.expect([=](size_t i) { return value(last - i); });
}

TEST(Flip, MoreBytesThanAnAddressCounts) {
  if (sizeof(size_t) > 4) GTEST_SKIP() << "32-bit only";
  Kvr64fc src = {1, 2}, dst = {3, 4};
  EXPECT_EQ(kvrStatusBadLength, kvrsFlip_64fc(&src, &dst, 1 << 28));
  EXPECT_EQ(kvrStatusBadLength, kvrsFlip_64fc_I(&src, (1 << 28) + 2));
  EXPECT_EQ(3, dst.re);
  EXPECT_EQ(1, src.re);
}

}  // namespace
