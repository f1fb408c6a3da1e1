// Calls that share their work among threads, in a process and in its children.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <vector>

#include "kvrs/divide.h"
#include "kvrs/fir.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

constexpr int kLen = 1 << 20;  // beyond all lengths from which work is shared

struct Work {
  std::vector<Kvr32f> src1, src2, quotients, sums, taps;

  Work() : src1(kLen), src2(kLen), quotients(kLen), sums(kLen), taps(256, 0.25f) {
    for (size_t i = 0; i < kLen; ++i) {
      src1[i] = static_cast<Kvr32f>(i % 1001 + 1);
      src2[i] = static_cast<Kvr32f>(i % 777);
    }
  }

  bool run() {
    KvrsFIRState_32f* state = nullptr;
    bool ok =
        kvrsDiv_32f(src1.data(), src2.data(), quotients.data(), kLen) == kvrStatusOk &&
        kvrsFIRInitAlloc_32f(&state, taps.data(), static_cast<int>(taps.size()), nullptr) == kvrStatusOk;
    ok = ok && kvrsFIR_32f(src2.data(), sums.data(), kLen, state) == kvrStatusOk;
    if (state != nullptr) kvrsFIRFree_32f(state);
    return ok;
  }

  bool isLike(const Work& other) const {
    return memcmp(quotients.data(), other.quotients.data(), kLen * sizeof(Kvr32f)) == 0 &&
           memcmp(sums.data(), other.sums.data(), kLen * sizeof(Kvr32f)) == 0;
  }
};

// Whether `work` ends well in a child, within a minute.
template <class Do>
bool inChild(Do work) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(60);
    _exit(work() ? 0 : 1);
  }
  int status = 0;
  return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// As in Python's multiprocessing, and in servers that fork their workers.
TEST(Fork, ThreadedCallsBeforeAndAfter) {
  const ThreadCount threads(2);
  Work first;
  ASSERT_TRUE(first.run());
  const auto again = [&] {
    Work second;
    return second.run() && second.isLike(first);
  };
  EXPECT_TRUE(inChild(again));
  EXPECT_TRUE(inChild([&] { return again() && inChild(again) && again(); })) << "a child of a child";
  EXPECT_TRUE(again()) << "the parent, afterwards";
}

}  // namespace
