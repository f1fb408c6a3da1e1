// SPDX-License-Identifier: MIT
#include "frame/first.h"

#include "frame/cursor.h"
#include "tests/support/arena.h"
#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

// The first `count` elements of a block of N, right behind and right before a page that may not be touched.
template <class T, size_t N>
void checkFirst() {
  Random random;
  Arena from(N * sizeof(T)), to(N * sizeof(T));
  for (size_t count = 0; count < N; ++count) {
    for (Side side : {Side::front, Side::back}) {
      T* const src = from.place<T>(count, side);
      T* const dst = to.place<T>(count, side);
      for (size_t i = 0; i < count; ++i) src[i] = random.value<T>();
      const auto v = Cursor<const T>{src}.template loadFirst<N>(static_cast<ptrdiff_t>(count));
      T block[N];
      Cursor<T>{block}.template store<N>(v, 0);
      ASSERT_EQ(0, memcmp(block, src, count * sizeof(T))) << N << " " << count;
      const T zero{};
      for (size_t i = count; i < N; ++i)
        ASSERT_TRUE(sameBits(zero, block[i])) << N << " " << count << " " << i;

      Cursor<T>{dst}.template storeFirst<N>(v, static_cast<ptrdiff_t>(count));
      ASSERT_EQ(0, memcmp(dst, src, count * sizeof(T))) << N << " " << count;
      ASSERT_TRUE(to.intact()) << N << " " << count;

      if (count == 0) continue;
      Cursor<T>{block}.template store<N>(
          Cursor<const T>{src}.template loadFilled<N>(static_cast<ptrdiff_t>(count)), 0);
      ASSERT_EQ(0, memcmp(block, src, count * sizeof(T))) << N << " " << count;
      for (size_t i = count; i < N; ++i)
        ASSERT_TRUE(sameBits(src[0], block[i])) << N << " " << count << " " << i;
    }
  }
}

// Vectors of all sizes that blocks of mixed widths have.
template <class T, size_t N>
void checkSizes() {
  checkFirst<T, N>();
  if constexpr (N * sizeof(T) > kVectorBytes / 8 && N > 2) checkSizes<T, N / 2>();
}

TEST(First, RealOfEveryWidth) {
  checkSizes<Kvr8u, kLanes<Kvr8u>>();
  checkSizes<Kvr16s, kLanes<Kvr16s>>();
  checkSizes<Kvr32s, kLanes<Kvr32s>>();
  checkSizes<Kvr32f, kLanes<Kvr32f>>();
  checkSizes<Kvr64s, kLanes<Kvr64s>>();
  checkSizes<Kvr64f, kLanes<Kvr64f>>();
}

TEST(First, ComplexOfEveryWidth) {
  checkFirst<Kvr16sc, kLanes<Kvr16s>>();
  checkFirst<Kvr16sc, kLanes<Kvr16s> / 2>();
  checkFirst<Kvr32sc, kLanes<Kvr32s>>();
  checkFirst<Kvr32fc, kLanes<Kvr32f>>();
  checkFirst<Kvr64fc, kLanes<Kvr64f>>();
}

TEST(First, Pairs) {
  checkFirst<Pair<Kvr16s>, kLanes<Kvr16s> / 2>();
  checkFirst<Pair<Kvr32f>, kLanes<Kvr32f> / 2>();
  checkFirst<Pair<Kvr64f>, kLanes<Kvr64f> / 2>();
}

}  // namespace
