// SPDX-License-Identifier: MIT
#include "frame/cursor.h"

#include <gtest/gtest.h>

#include <vector>

using namespace kvrs;

namespace {

constexpr size_t kMost = 256;

template <class T, class V>
std::vector<T> elementsOf(V v, size_t n) {
  std::vector<T> elements(n);
  Element<T>::store(v, ElementLanes<T, kLanes<T>>(), elements.data());
  return elements;
}

// The elements first, first + step, ...
template <class T>
std::vector<T> counted(int first, int step, size_t n) {
  std::vector<T> elements;
  for (size_t i = 0; i < n; ++i) elements.push_back(static_cast<T>(first + static_cast<int>(i) * step));
  return elements;
}

template <class T>
class CursorTest : public testing::Test {
 protected:
  static constexpr size_t N = kLanes<T>;
  T src_[kMost], dst_[kMost] = {};

  CursorTest() {
    for (size_t i = 0; i < kMost; ++i) src_[i] = static_cast<T>(i % 100);
  }
  // dst_ holds v's elements at `begin` and zeros elsewhere; it is zero again afterwards.
  void expectStored(size_t begin, const std::vector<T>& want) {
    for (size_t i = 0; i < kMost; ++i) {
      EXPECT_EQ(i - begin < want.size() ? want[i - begin] : T{}, dst_[i]) << i;
      dst_[i] = T{};
    }
  }
};
using Types = testing::Types<uint8_t, int16_t, int32_t, int64_t, float, double>;
TYPED_TEST_SUITE(CursorTest, Types);

TYPED_TEST(CursorTest, Array) {
  using T = TypeParam;
  constexpr size_t N = TestFixture::N;
  auto src = sourceOf(this->src_);
  auto dst = cursorOf(this->dst_);
  src.move(1);
  dst.move(2);
  const auto block = src.template load<N>(3);
  EXPECT_EQ(counted<T>(4, 1, N), elementsOf<T>(block, N));
  dst.template store<N>(block, 5);
  this->expectStored(7, counted<T>(4, 1, N));
  for (size_t count = 1; count < N; ++count) {
    const auto few = static_cast<ptrdiff_t>(count);
    dst.template storeFirst<N>(src.template loadFirst<N>(few), few);
    this->expectStored(2, counted<T>(1, 1, count));
    auto filled = counted<T>(1, 1, count);
    filled.resize(N, T{1});
    EXPECT_EQ(filled, elementsOf<T>(src.template loadFilled<N>(few), N)) << count;
  }
}

TYPED_TEST(CursorTest, TwoPlanes) {
  using T = TypeParam;
  constexpr size_t N = TestFixture::N;
  T dstIm[kMost] = {};
  Planes<const T> src{this->src_, this->src_ + 1};
  Planes<T> dst = cursorOf(Planes<T>{this->dst_, dstIm});
  src.move(2);
  dst.move(3);
  dst.template store<N>(src.template load<N>(1), 1);
  EXPECT_EQ(counted<T>(4, 1, N), std::vector<T>(dstIm + 4, dstIm + 4 + N));
  this->expectStored(4, counted<T>(3, 1, N));
  const auto few = static_cast<ptrdiff_t>(N - 1);
  dst.template storeFirst<N>(src.template loadFirst<N>(few), few);
  this->expectStored(3, counted<T>(2, 1, N - 1));
}

TYPED_TEST(CursorTest, FromTheLastBlockToTheFirst) {
  using T = TypeParam;
  constexpr size_t N = TestFixture::N;
  Downward<const T> src{this->src_ + 90};
  Downward<T> dst = cursorOf(Downward<T>{this->dst_ + 200});
  src.move(1);
  dst.move(2);
  const auto block = src.template load<N>(3);
  EXPECT_EQ(counted<T>(86 - static_cast<int>(N), 1, N), elementsOf<T>(block, N));
  dst.template store<N>(block, 4);
  this->expectStored(194 - N, counted<T>(86 - static_cast<int>(N), 1, N));
  for (size_t count = 1; count < N; ++count) {
    const auto few = static_cast<ptrdiff_t>(count);
    dst.template storeFirst<N>(src.template loadFirst<N>(few), few);
    this->expectStored(198 - count, counted<T>(89 - static_cast<int>(count), 1, count));
  }
}

// How far it is to the next (for Downward the last) address that is aligned to a block.
TYPED_TEST(CursorTest, ToAlignedAddresses) {
  using T = TypeParam;
  constexpr size_t N = TestFixture::N;
  constexpr ptrdiff_t kBlock = static_cast<ptrdiff_t>(N);
  alignas(kVectorBytes) T aligned[2 * N];
  for (ptrdiff_t i = 0; i < kBlock; ++i) {
    EXPECT_EQ((kBlock - i) % kBlock, cursorOf(aligned + i).template toAligned<N>()) << i;
    EXPECT_EQ((kBlock - i) % kBlock, (Planes<T>{aligned + i, aligned}.template toAligned<N>())) << i;
    EXPECT_EQ(i, (Downward<T>{aligned + i}.template toAligned<N>())) << i;
  }
}

template <class T>
class BackwardTest : public testing::Test {};
using Widths = testing::Types<uint8_t, uint16_t, uint32_t, uint64_t>;
TYPED_TEST_SUITE(BackwardTest, Widths);

TYPED_TEST(BackwardTest, FromTheLastElementToTheFirst) {
  using T = TypeParam;
  constexpr size_t N = kLanes<T>;
  T array[100];
  for (size_t i = 0; i < 100; ++i) array[i] = static_cast<T>(i);
  Backward<T> src = sourceOf(Backward<T>{array + 100});
  src.move(2);
  EXPECT_EQ(counted<T>(96, -1, N), elementsOf<T>(src.template load<N>(1), N));
  for (size_t count = 1; count < N; ++count) {
    auto want = counted<T>(97, -1, count);
    auto got = elementsOf<T>(src.template loadFirst<N>(static_cast<ptrdiff_t>(count)), N);
    got.resize(count);
    want.resize(count);
    EXPECT_EQ(want, got) << count;
  }
}

TYPED_TEST(CursorTest, NoArray) {
  using T = TypeParam;
  if constexpr (sizeof(T) >= 2) {
    constexpr size_t N = TestFixture::N;
    Counter<T> index = sourceOf(Counter<T>{7});
    index.move(3);
    EXPECT_EQ(counted<T>(15, 1, N), elementsOf<T>(index.template load<N>(5), N));
    EXPECT_EQ(counted<T>(10, 1, N), elementsOf<T>(index.template loadFirst<N>(2), N));
    EXPECT_EQ(counted<T>(10, 1, N), elementsOf<T>(index.template loadFilled<N>(2), N));
  }
}

}  // namespace
