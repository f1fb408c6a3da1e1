// SPDX-License-Identifier: MIT
#include "frame/buffer.h"

#include <gtest/gtest.h>

#include "tests/support/core.h"

using namespace kvrs;

namespace {

TEST(Buffer, RoundUp) {
  for (uintptr_t value = 0; value < 200; ++value) {
    for (size_t alignment : {1, 2, 16, 32, 64}) {
      const uintptr_t rounded = roundUp(value, alignment);
      EXPECT_EQ(0u, rounded % alignment);
      EXPECT_GE(rounded, value);
      EXPECT_LT(rounded, value + alignment);
    }
  }
}

TEST(Buffer, AlignUp) {
  alignas(64) Kvr8u bytes[128];
  for (size_t offset = 0; offset < 64; ++offset) {
    EXPECT_EQ(bytes + (offset + 31) / 32 * 32, alignUp(bytes + offset));
    EXPECT_EQ(bytes + (offset + 63) / 64 * 64, alignUp(bytes + offset, 64));
  }
}

// Tables lie in a block as the size query on no block at all has counted them.
TEST(Buffer, CarverSizesAndPlacesAlike) {
  const auto carve = [](Carver& carver, void** tables) {
    tables[0] = carver.take<Kvr8u>(3);
    tables[1] = carver.take<Kvr32s>(5);
    tables[2] = carver.take<Kvr16s>(1);
    tables[3] = carver.take<Kvr64f>(2, 32);
    tables[4] = carver.take<Kvr8u>(0);
  };
  void* sized[5];
  Carver query(nullptr);
  carve(query, sized);
  EXPECT_EQ(32u + 16u, query.used());

  alignas(32) Kvr8u block[64];
  void* placed[5];
  Carver carver(block);
  carve(carver, placed);
  EXPECT_EQ(query.used(), carver.used());
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(reinterpret_cast<uintptr_t>(sized[i]),
              static_cast<uintptr_t>(static_cast<Kvr8u*>(placed[i]) - block));
  }
  EXPECT_EQ(block + 4, placed[1]);
  EXPECT_EQ(block + 24, placed[2]);
  EXPECT_EQ(block + 32, placed[3]);
}

TEST(Buffer, ScratchOfNoBytes) {
  const int allocations = test::allocationCount();
  const Scratch scratch(0);
  EXPECT_TRUE(scratch.ok());
  EXPECT_EQ(nullptr, scratch.as<Kvr32f>());
  EXPECT_EQ(allocations, test::allocationCount());
}

TEST(Buffer, ScratchLivesAsLongAsItsScope) {
  const int before = test::liveBlocks();
  {
    const Scratch scratch(1000);
    ASSERT_TRUE(scratch.ok());
    EXPECT_EQ(before + 1, test::liveBlocks());
    EXPECT_EQ(1000u, test::lastAllocation());
    scratch.as<Kvr8u>()[999] = 1;
  }
  EXPECT_EQ(before, test::liveBlocks());
}

TEST(Buffer, ScratchThatIsKept) {
  const int before = test::liveBlocks();
  void* block;
  {
    Scratch scratch(100);
    block = scratch.as<Kvr8u>();
    scratch.keep();
  }
  EXPECT_EQ(before + 1, test::liveBlocks());
  EXPECT_EQ(100u, test::blockBytes(block));
  kvrFree(block);
  EXPECT_EQ(before, test::liveBlocks());
}

TEST(Buffer, ScratchOutOfMemory) {
  const int before = test::liveBlocks();
  {
    const test::FailingAllocator failing(1);
    const Scratch scratch(1000);
    EXPECT_FALSE(scratch.ok());
    EXPECT_EQ(nullptr, scratch.as<Kvr8u>());
  }
  EXPECT_EQ(before, test::liveBlocks());
}

// More bytes than there are addresses: nobody is asked for what is left of the number in 32 bits.
TEST(Buffer, ScratchBeyondAllAddresses) {
  if constexpr (sizeof(size_t) < sizeof(uint64_t)) {
    const int allocations = test::allocationCount();
    const Scratch scratch((uint64_t{1} << 32) + 8);
    EXPECT_FALSE(scratch.ok());
    EXPECT_EQ(allocations, test::allocationCount());
  }
}

TEST(Buffer, WorkAreaOfNoBytes) {
  Kvr8u caller[1];
  const int allocations = test::allocationCount();
  for (int bytes : {0, -1}) {
    for (Kvr8u* buffer : {static_cast<Kvr8u*>(nullptr), caller}) {
      const WorkArea work(bytes, buffer);
      EXPECT_TRUE(work.ok());
      EXPECT_EQ(nullptr, work.as<Kvr8u>());
    }
  }
  EXPECT_EQ(allocations, test::allocationCount());
}

TEST(Buffer, WorkAreaInCallersMemory) {
  alignas(64) Kvr8u caller[128];
  const int allocations = test::allocationCount();
  for (size_t offset = 0; offset < 64; ++offset) {
    const WorkArea work(32, caller + offset);
    EXPECT_TRUE(work.ok());
    EXPECT_EQ(caller + (offset + 31) / 32 * 32, work.as<Kvr8u>());
  }
  EXPECT_EQ(allocations, test::allocationCount());
}

// From the core library, used as it is: the stand-in gives odd multiples of 32 bytes.
TEST(Buffer, WorkAreaOfItsOwn) {
  const int before = test::liveBlocks(), allocations = test::allocationCount();
  {
    const WorkArea work(1000, nullptr);
    ASSERT_TRUE(work.ok());
    EXPECT_EQ(32u, reinterpret_cast<uintptr_t>(work.as<Kvr8u>()) % 64);
    EXPECT_EQ(before + 1, test::liveBlocks());
    work.as<Kvr8u>()[999] = 1;
  }
  EXPECT_EQ(before, test::liveBlocks());
  EXPECT_EQ(allocations + 1, test::allocationCount());
}

TEST(Buffer, WorkAreaOutOfMemory) {
  const int before = test::liveBlocks();
  const test::FailingAllocator failing(1);
  const WorkArea work(1000, nullptr);
  EXPECT_FALSE(work.ok());
  EXPECT_EQ(before, test::liveBlocks());
}

}  // namespace
