// The companion core library: aligned memory and the thread count.
// SPDX-License-Identifier: MIT
#define _GNU_SOURCE
#include <sched.h>
#include <stdatomic.h>
#include <stddef.h>
#include <stdlib.h>

#include "kvrscore.h"

// A cache line, and the widest vector that a module uses.
enum { kAlignment = 64 };

void* kvrMalloc(size_t bytes) {
  void* block = NULL;
  return posix_memalign(&block, kAlignment, bytes) == 0 ? block : NULL;
}

void kvrFree(void* ptr) {
  free(ptr);
}

static atomic_int chosenThreads;   // 0: none chosen
static atomic_int processorCount;  // 0: not yet read

static int countProcessors(void) {
  cpu_set_t set;
  // Fails on machines with more processors than a cpu_set_t holds; one thread is right everywhere.
  if (sched_getaffinity(0, sizeof set, &set) != 0) return 1;
  return CPU_COUNT(&set);
}

int ownGetNumThreads(void) {
  const int chosen = atomic_load_explicit(&chosenThreads, memory_order_relaxed);
  if (chosen > 0) return chosen;
  int count = atomic_load_explicit(&processorCount, memory_order_relaxed);
  if (count == 0) {
    count = countProcessors();
    atomic_store_explicit(&processorCount, count, memory_order_relaxed);
  }
  return count;
}

void ownSetNumThreads(int count) {
  atomic_store_explicit(&chosenThreads, count > 0 ? count : 0, memory_order_relaxed);
}
