// SPDX-License-Identifier: MIT
#include "frame/threads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>
#include <vector>

#include "tests/support/core.h"

using namespace kvrs;

namespace {

struct Slice {
  size_t begin, count;
};

// The slices of a call, in their order, and whether it warned.
struct Outcome {
  std::vector<Slice> slices;
  bool warned;
};

template <class Warns>
Outcome run(size_t len, size_t threadedFrom, int most, Warns warns) {
  std::mutex mutex;
  Outcome outcome = {};
  outcome.warned = runSliced(len, threadedFrom, most, [&](size_t begin, size_t count) {
    const std::lock_guard lock(mutex);
    outcome.slices.push_back({begin, count});
    return warns(begin, count);
  });
  std::sort(outcome.slices.begin(), outcome.slices.end(), [](Slice a, Slice b) { return a.begin < b.begin; });
  return outcome;
}

bool never(size_t, size_t) {
  return false;
}

void expectEven(const Outcome& outcome, size_t len, size_t team) {
  ASSERT_EQ(team, outcome.slices.size());
  for (size_t i = 0; i < team; ++i) {
    EXPECT_EQ(len / team * i, outcome.slices[i].begin);
    EXPECT_EQ(i + 1 == team ? len - len / team * i : len / team, outcome.slices[i].count);
  }
}

TEST(Threads, LastSliceTakesTheRest) {
  for (int threads : {1, 2, 3, 8}) {
    const test::ThreadCount count(threads);
    for (size_t len : {8, 9, 15, 1000, 1001, 1007}) {
      expectEven(run(len, 1, kAllThreads, never), len, static_cast<size_t>(threads));
      expectEven(run(len, 1, kTwoThreads, never), len, static_cast<size_t>(std::min(threads, 2)));
    }
  }
}

TEST(Threads, BelowTheLimitInOnePiece) {
  const test::ThreadCount count(8);
  expectEven(run(99, 100, kAllThreads, never), 99, 1);
  expectEven(run(100, 100, kAllThreads, never), 100, 8);
}

TEST(Threads, FewerElementsThanThreads) {
  const test::ThreadCount count(8);
  expectEven(run(5, 1, kTwoThreads, never), 5, 1);
  expectEven(run(8, 1, kTwoThreads, never), 8, 2);
}

TEST(Threads, NoThreadsAtAll) {
  const test::ThreadCount count(0);
  expectEven(run(100, 1, kAllThreads, never), 100, 1);
}

// A warning comes out whichever slice meets it, and only then.
TEST(Threads, Warnings) {
  for (int threads : {1, 2, 3, 8}) {
    const test::ThreadCount count(threads);
    const size_t len = 801;
    EXPECT_FALSE(run(len, 1, kAllThreads, never).warned);
    EXPECT_TRUE(run(len, 1, kAllThreads, [](size_t, size_t) { return true; }).warned);
    for (size_t at : {size_t{0}, size_t{400}, len - 1}) {
      const auto holds = [=](size_t begin, size_t n) { return begin <= at && at < begin + n; };
      EXPECT_TRUE(run(len, 1, kAllThreads, holds).warned);
      EXPECT_TRUE(run(len, len + 1, kAllThreads, holds).warned);
    }
  }
}

TEST(Threads, TeamsAsLargeAsGranted) {
  for (int threads : {1, 2, 3, 8}) {
    std::mutex mutex;
    std::vector<int> seen;
    int granted = 0;
    runTeam(threads, [&](int thread, int team) {
      const std::lock_guard lock(mutex);
      seen.push_back(thread);
      granted = team;
    });
    std::sort(seen.begin(), seen.end());
    EXPECT_LE(granted, threads);
    ASSERT_EQ(static_cast<size_t>(granted), seen.size());
    for (int i = 0; i < granted; ++i) EXPECT_EQ(i, seen[static_cast<size_t>(i)]);
  }
}

}  // namespace
