// The test's own companion core library. It stands in for the real one, so that a test can count allocations,
// make one fail and set the number of threads.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_CORE_H
#define KVRS_TESTS_SUPPORT_CORE_H

#include <cstddef>

namespace kvrs::test {

// Blocks of kvrMalloc that nobody has given back.
int liveBlocks();

// Calls of kvrMalloc since the start of the program.
int allocationCount();

// The bytes that the last of them asked for.
size_t lastAllocation();

// The bytes that a live block was asked for with.
size_t blockBytes(const void* block);

// While it lives, the nth call of kvrMalloc from now on (counted from 1) and all later ones fail.
class FailingAllocator {
 public:
  explicit FailingAllocator(int nth);
  ~FailingAllocator();
};

// While it lives, ownGetNumThreads() returns `count`; otherwise it returns 1.
class ThreadCount {
 public:
  explicit ThreadCount(int count);
  ~ThreadCount();

 private:
  int before_;
};

// Calls `make` with its 1st, 2nd, ... allocation failing until it does without a failure, and checks that it
// leaves nothing behind. `make` returns a status and undoes what it made if that is kvrStatusOk. Returns how
// many allocations it takes, or -1 if a failure was not reported by `failure` or something was left behind.
template <class Make>
int countAllocationsWithFailures(Make make, int failure, int most = 16) {
  for (int nth = 1; nth <= most; ++nth) {
    const int before = liveBlocks();
    int status;
    {
      FailingAllocator failing(nth);
      status = make();
    }
    if (liveBlocks() != before) return -1;
    if (status == 0) return nth - 1;
    if (status != failure) return -1;
  }
  return -1;
}

}  // namespace kvrs::test

#endif
