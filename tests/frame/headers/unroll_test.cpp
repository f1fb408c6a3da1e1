// SPDX-License-Identifier: MIT
#include "frame/unroll.h"

#include <gtest/gtest.h>

#include <vector>

using namespace kvrs;

namespace {

TEST(Unroll, EveryTurnOnceAndInOrder) {
  std::vector<int> turns;
  unroll<5>([&](auto i) KVRS_UNROLLED {
    constexpr int kTurn = i;  // known to the compiler
    turns.push_back(kTurn);
  });
  EXPECT_EQ((std::vector<int>{0, 1, 2, 3, 4}), turns);
  unroll<0>([&](auto) KVRS_UNROLLED { turns.clear(); });
  EXPECT_EQ(5u, turns.size());
}

}  // namespace
