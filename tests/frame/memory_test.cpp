// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "kvrs/frame.h"
#include "tests/support/alias.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

template <class T>
using Allocate = T* (*)(int) noexcept;

// Runs the same check over the allocation of every type.
template <class Check>
void forEveryType(Check check) {
  check(kvrsMalloc_8u);
  check(kvrsMalloc_8s);
  check(kvrsMalloc_16u);
  check(kvrsMalloc_16s);
  check(kvrsMalloc_32u);
  check(kvrsMalloc_32s);
  check(kvrsMalloc_32f);
  check(kvrsMalloc_64s);
  check(kvrsMalloc_64f);
  check(kvrsMalloc_8sc);
  check(kvrsMalloc_16sc);
  check(kvrsMalloc_32sc);
  check(kvrsMalloc_32fc);
  check(kvrsMalloc_64sc);
  check(kvrsMalloc_64fc);
}

TEST(Memory, LengthsBelowOne) {
  const int allocations = allocationCount();
  forEveryType([]<class T>(Allocate<T> allocate) {
    for (int len : {0, -1, std::numeric_limits<int>::min()}) EXPECT_EQ(nullptr, allocate(len));
  });
  EXPECT_EQ(allocations, allocationCount()) << "the allocator was asked";
}

TEST(Memory, BlocksOfTheirSize) {
  forEveryType([]<class T>(Allocate<T> allocate) {
    for (int len : {1, 2, 31, 1000}) {
      const int before = liveBlocks(), allocations = allocationCount();
      T* block = allocate(len);
      ASSERT_NE(nullptr, block);
      EXPECT_EQ(allocations + 1, allocationCount());
      EXPECT_EQ(before + 1, liveBlocks());
      EXPECT_EQ(static_cast<size_t>(len) * sizeof(T), lastAllocation());
      EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(block) % 32);
      block[0] = T{};
      block[len - 1] = T{};
      kvrsFree(block);
      EXPECT_EQ(before, liveBlocks());
    }
  });
}

// What is asked for is the product in 32 bits. Every request fails, as no machine has these sizes to spare.
TEST(Memory, HugeLengthsWrap) {
  const FailingAllocator failing(1);
  forEveryType([]<class T>(Allocate<T> allocate) {
    for (int len : {std::numeric_limits<int>::max(), (1 << 30) + 1, 1 << 30, (1 << 28) + 3, 1 << 28}) {
      const int allocations = allocationCount();
      EXPECT_EQ(nullptr, allocate(len));
      EXPECT_EQ(allocations + 1, allocationCount());
      EXPECT_EQ(static_cast<uint64_t>(len) * sizeof(T) % (uint64_t{1} << 32), lastAllocation()) << len;
    }
  });
}

TEST(Memory, OutOfMemory) {
  const int before = liveBlocks();
  const FailingAllocator failing(1);
  forEveryType([]<class T>(Allocate<T> allocate) { EXPECT_EQ(nullptr, allocate(5)); });
  EXPECT_EQ(before, liveBlocks());
}

TEST(Memory, FreeOfNull) {
  const int before = liveBlocks();
  kvrsFree(nullptr);
  EXPECT_EQ(before, liveBlocks());
}

TEST(Memory, SecondNames) {
  expectOneFunction({"kvrsMalloc_8u", "kvrsMalloc_8s"});
  expectOneFunction({"kvrsMalloc_16s", "kvrsMalloc_16u", "kvrsMalloc_8sc"});
  expectOneFunction({"kvrsMalloc_32f", "kvrsMalloc_32s", "kvrsMalloc_32u", "kvrsMalloc_16sc"});
  expectOneFunction({"kvrsMalloc_64f", "kvrsMalloc_64s", "kvrsMalloc_32sc", "kvrsMalloc_32fc"});
  expectOneFunction({"kvrsMalloc_64fc", "kvrsMalloc_64sc"});
}

}  // namespace
