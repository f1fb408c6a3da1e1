// SPDX-License-Identifier: MIT
#include "tests/support/core.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

#include "kvrscore.h"

namespace {
std::atomic<int> live{0};
std::atomic<int> calls{0};
std::atomic<size_t> lastBytes{0};
std::atomic<int> callsUntilFailure{0};  // 0: never
std::atomic<bool> failing{false};
std::atomic<int> threads{1};
}  // namespace

// The program's definitions come before those of libkvrscore, for the library under test too.
void* kvrMalloc(size_t bytes) noexcept {
  ++calls;
  lastBytes = bytes;
  if (failing && --callsUntilFailure < 1) return nullptr;
  // An odd multiple of 32 bytes: no more than what a core library has to give.
  void* block = nullptr;
  if (posix_memalign(&block, 64, bytes + 64) != 0) return nullptr;
  ++live;
  memcpy(block, &bytes, sizeof bytes);
  return static_cast<char*>(block) + 32;
}

void kvrFree(void* ptr) noexcept {
  if (ptr == nullptr) return;
  --live;
  free(static_cast<char*>(ptr) - 32);
}

int ownGetNumThreads(void) noexcept {
  return threads;
}
void ownSetNumThreads(int count) noexcept {
  threads = count > 0 ? count : 1;
}

namespace kvrs::test {

int liveBlocks() {
  return live;
}
int allocationCount() {
  return calls;
}
size_t lastAllocation() {
  return lastBytes;
}

size_t blockBytes(const void* block) {
  size_t bytes;
  memcpy(&bytes, static_cast<const char*>(block) - 32, sizeof bytes);
  return bytes;
}

FailingAllocator::FailingAllocator(int nth) {
  callsUntilFailure = nth;
  failing = true;
}
FailingAllocator::~FailingAllocator() {
  failing = false;
}

ThreadCount::ThreadCount(int count) : before_(threads) {
  threads = count;
}
ThreadCount::~ThreadCount() {
  threads = before_;
}

}  // namespace kvrs::test
