// SPDX-License-Identifier: MIT
#include "frame/ref.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace kvrs;

namespace {

struct Block {
  Ref<int> forward, none;
  int table[4];
  Ref<int> backward;
};

TEST(Ref, FourBytesInEveryModule) {
  EXPECT_EQ(4u, sizeof(Ref<int>));
  EXPECT_EQ(4u, alignof(Ref<int>));
}

// Copied as bytes, a block refers to its own tables.
TEST(Ref, BlockCopiedElsewhere) {
  Block blocks[3] = {};
  Block& first = blocks[0];
  first.forward.set(first.table + 1);
  first.backward.set(first.table);
  first.none.set(nullptr);
  for (Block* copy : {&blocks[0], &blocks[1], &blocks[2]}) {
    if (copy != &first) memcpy(static_cast<void*>(copy), &first, sizeof first);
    EXPECT_EQ(copy->table + 1, copy->forward.get());
    EXPECT_EQ(copy->table, copy->backward.get());
    EXPECT_EQ(nullptr, copy->none.get());
  }
}

TEST(Ref, SetAgain) {
  Block block = {};
  block.forward.set(block.table + 3);
  EXPECT_EQ(block.table + 3, block.forward.get());
  block.forward.set(nullptr);
  EXPECT_EQ(nullptr, block.forward.get());
}

}  // namespace
