// SPDX-License-Identifier: MIT
#include "frame/threads.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cfenv>
#include <limits>
#include <mutex>
#include <vector>

#include "tests/support/core.h"

using namespace kvrs;

namespace {

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

// Whatever a core library says.
TEST(Threads, NoThreadsAtAll) {
  for (int threads : {0, -1, std::numeric_limits<int>::min()}) {
    const test::ThreadCount count(threads);
    EXPECT_EQ(1, threadCount());
    expectEven(run(100, 1, kAllThreads, never), 100, 1);
    expectEven(run(100, 1, kTwoThreads, never), 100, 1);
  }
}

TEST(Threads, SlicesOfWholeTiles) {
  for (size_t tile : {1, 7, 16, 100}) {
    for (int team : {1, 2, 3, 8}) {
      for (size_t len = 0; len < 1000; ++len) {
        size_t end = 0;
        for (int thread = 0; thread < team; ++thread) {
          const Slice slice = sliceOf(len, tile, thread, team);
          ASSERT_EQ(end, slice.begin);
          if (thread < team - 1) {
            ASSERT_EQ(len / tile / static_cast<size_t>(team) * tile, slice.count);
          }
          end += slice.count;
        }
        ASSERT_EQ(len, end);
      }
    }
  }
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
  for (int threads : {-1, 0, 1, 2, 3, 8}) {
    std::mutex mutex;
    std::vector<int> seen;
    int granted = 0;
    runTeam(threads, [&](int thread, int team) {
      const std::lock_guard lock(mutex);
      seen.push_back(thread);
      granted = team;
    });
    std::sort(seen.begin(), seen.end());
    EXPECT_LE(granted, std::max(threads, 1));
    ASSERT_EQ(static_cast<size_t>(granted), seen.size());
    for (int i = 0; i < granted; ++i) EXPECT_EQ(i, seen[static_cast<size_t>(i)]);
  }
}

// Of a team's members: what they compute, and what they find in the control words of both units.
struct Member {
  double quotient;
  unsigned vectorUnit;
  fpu_control_t extendedUnit;
};

constexpr unsigned kFlags = 0x3F, kInexact = 0x20, kDivideByZero = 0x04;

std::vector<Member> divideOnTeam(int threads) {
  std::vector<Member> members(static_cast<size_t>(threads));
  runTeam(threads, [&](int thread, int) {
    Member& member = members[static_cast<size_t>(thread)];
    volatile double one = 1, three = 3;
    member.vectorUnit = _mm_getcsr() & ~kFlags;
    _FPU_GETCW(member.extendedUnit);
    member.quotient = one / three;
  });
  return members;
}

// All members work under the caller's control words, whatever theirs were in the region before.
TEST(Threads, ControlWordsAreTheCallers) {
  const unsigned before = _mm_getcsr();
  fpu_control_t extendedBefore;
  _FPU_GETCW(extendedBefore);
  double quotient[4];
  for (unsigned mode = 0; mode < 4; ++mode) {
    for (unsigned flushing : {0u, 0x8040u}) {
      const unsigned control = (before & ~(kFlags | 3u << 13 | 0x8040u)) | mode << 13 | flushing;
      fpu_control_t extended = static_cast<fpu_control_t>((extendedBefore & ~0x0C00u) | mode << 10);
      _mm_setcsr(control);
      _FPU_SETCW(extended);
      const std::vector<Member> members = divideOnTeam(3);
      fpu_control_t extendedAfter;
      _FPU_GETCW(extendedAfter);
      const unsigned after = _mm_getcsr();
      _mm_setcsr(before);
      _FPU_SETCW(extendedBefore);
      EXPECT_EQ(control, after & ~kFlags);
      EXPECT_EQ(extended, extendedAfter);
      for (const Member& member : members) {
        EXPECT_EQ(control, member.vectorUnit);
        EXPECT_EQ(extended, member.extendedUnit);
        EXPECT_EQ(members[0].quotient, member.quotient);
      }
      quotient[mode] = members[0].quotient;
    }
  }
  EXPECT_LT(quotient[1], quotient[2]);
}

// Flags raised by any member, in either unit, are raised in the caller, and no others.
TEST(Threads, ExceptionFlagsReachTheCaller) {
  const unsigned before = _mm_getcsr();
  for (int round = 0; round < 2; ++round) {  // the same threads, whose flags are up already
    for (int at = 0; at < 3; ++at) {
      for (bool extended : {false, true}) {
        asm volatile("fnclex");
        _mm_setcsr(before & ~kFlags);
        runTeam(3, [](int, int) {});
        EXPECT_EQ(0u, _mm_getcsr() & kFlags);
        runTeam(3, [=](int thread, int team) {
          if (thread != at % team) return;
          if (extended) {
            volatile long double one = 1, zero = 0, infinite = one / zero;
            (void)infinite;
          } else {
            volatile double one = 1, zero = 0, infinite = one / zero;
            (void)infinite;
          }
        });
        EXPECT_EQ(kDivideByZero, static_cast<unsigned>(std::fetestexcept(FE_ALL_EXCEPT)));
        asm volatile("fnclex");
        _mm_setcsr((before & ~kFlags) | kInexact);
        runTeam(3, [](int, int) {});
        EXPECT_EQ(kInexact, _mm_getcsr() & kFlags);
      }
    }
  }
  asm volatile("fnclex");
  _mm_setcsr(before);
}

// A child has no threads but the one that called fork: it must not wait for those of its parent.
TEST(Threads, OneThreadAfterFork) {
  int granted = 0;
  runTeam(2, [&](int thread, int team) {
    if (thread == 0) granted = team;
  });
  if (granted < 2) GTEST_SKIP() << "no second thread";
  const pid_t child = fork();
  ASSERT_LE(0, child);
  if (child == 0) {
    alarm(20);
    int team = 0;
    for (int round = 0; round < 3; ++round) runTeam(2, [&](int, int size) { team = size; });
    _exit(team);
  }
  int status = 0;
  ASSERT_EQ(child, waitpid(child, &status, 0));
  EXPECT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
  EXPECT_EQ(1, WEXITSTATUS(status));
  runTeam(2, [&](int thread, int team) {
    if (thread == 0) granted = team;
  });
  EXPECT_EQ(2, granted) << "the parent lost its team";
}

}  // namespace
