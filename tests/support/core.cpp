// SPDX-License-Identifier: MIT
#include "tests/support/core.h"

#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "kvrscore.h"
#include "tests/support/blocks.h"

namespace {
std::atomic<int> live{0};
std::atomic<int> calls{0};
std::atomic<size_t> lastBytes{0};
std::atomic<int> callsUntilFailure{0};  // 0: never
std::atomic<bool> failing{false};
std::atomic<int> threads{1};
std::atomic<int> refused{0};
std::atomic<int> overruns{0};
std::atomic<bool> guarding{false};
std::atomic<size_t> most{SIZE_MAX};
std::atomic<uint8_t> filling{0};

// What stands in the 32 bytes before a block.
struct Header {
  size_t bytes;
  Header* older;
  Header* newer;
  bool isGuarded;
};
constexpr size_t kHeader = 32;
static_assert(sizeof(Header) <= kHeader);
constexpr uint8_t kBehind = 0xA5;  // up to the next multiple of 32 in guarded blocks

std::mutex listing;
Header* newest = nullptr;

Header* headerOf(const void* block) {
  return reinterpret_cast<Header*>(static_cast<char*>(const_cast<void*>(block)) - kHeader);
}
uint8_t* blockOf(Header* header) {
  return reinterpret_cast<uint8_t*>(header) + kHeader;
}

void list(Header* header) {
  const std::lock_guard<std::mutex> lock(listing);
  header->older = newest;
  header->newer = nullptr;
  if (newest != nullptr) newest->newer = header;
  newest = header;
}
void unlist(Header* header) {
  const std::lock_guard<std::mutex> lock(listing);
  (header->newer != nullptr ? header->newer->older : newest) = header->older;
  if (header->older != nullptr) header->older->newer = header->newer;
}

// A block of so many bytes takes whole pages between two that may not be touched.
struct Pages {
  explicit Pages(size_t bytes)
      : page(static_cast<size_t>(sysconf(_SC_PAGESIZE))),
        padded((bytes + 31) / 32 * 32),
        inside((padded + kHeader + page - 1) / page * page) {}
  size_t page, padded, inside;
};

void* guardedBlock(size_t bytes) {
  const Pages pages(bytes);
  void* const map =
      mmap(nullptr, pages.inside + 2 * pages.page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (map == MAP_FAILED) return nullptr;
  uint8_t* const first = static_cast<uint8_t*>(map) + pages.page;
  if (mprotect(first, pages.inside, PROT_READ | PROT_WRITE) != 0) abort();
  uint8_t* const block = first + pages.inside - pages.padded;
  memset(block, filling, bytes);
  memset(block + bytes, kBehind, pages.padded - bytes);
  return block;
}

void releaseGuarded(uint8_t* block, size_t bytes) {
  const Pages pages(bytes);
  for (size_t i = bytes; i < pages.padded; ++i) {
    if (block[i] == kBehind) continue;
    ++overruns;
    break;
  }
  munmap(block + pages.padded - pages.inside - pages.page, pages.inside + 2 * pages.page);
}
}  // namespace

// The program's definitions come before those of libkvrscore, for the library under test too.
void* kvrMalloc(size_t bytes) noexcept {
  ++calls;
  lastBytes = bytes;
  void* block = nullptr;
  if (!(failing && --callsUntilFailure < 1) && bytes <= most) {
    // An odd multiple of 32 bytes: no more than what a core library has to give.
    void* memory = nullptr;
    if (guarding) {
      block = guardedBlock(bytes);
    } else if (posix_memalign(&memory, 64, bytes + 64) == 0) {
      block = static_cast<char*>(memory) + kHeader;
    }
  }
  if (block == nullptr) {
    ++refused;
    return nullptr;
  }
  ++live;
  Header* const header = headerOf(block);
  header->bytes = bytes;
  header->isGuarded = guarding;
  list(header);
  return block;
}

void kvrFree(void* ptr) noexcept {
  if (ptr == nullptr) return;
  --live;
  Header* const header = headerOf(ptr);
  unlist(header);
  if (header->isGuarded) {
    releaseGuarded(static_cast<uint8_t*>(ptr), header->bytes);
  } else {
    free(header);
  }
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
  return headerOf(block)->bytes;
}

std::vector<std::span<uint8_t>> liveMemory() {
  const std::lock_guard<std::mutex> lock(listing);
  std::vector<std::span<uint8_t>> all;
  for (Header* h = newest; h != nullptr; h = h->older) all.push_back({blockOf(h), h->bytes});
  return {all.rbegin(), all.rend()};
}
void guardBlocks(size_t bytes) {
  guarding = true;
  most = bytes;
}
void fillBlocks(uint8_t byte) {
  filling = byte;
}
int refusedBlocks() {
  return refused;
}
int overrunBlocks() {
  return overruns;
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
