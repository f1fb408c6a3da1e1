// Parallel regions inside one call, and the gate in front of them.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_THREADS_H
#define KVRS_FRAME_THREADS_H

#include <omp.h>

#include <cstddef>

#include "frame/rounding.h"
#include "kvrscore.h"

namespace kvrs {

// Runs body(thread, team) on a team of at most `threads`, and on one thread when the runtime grants no more:
// team is what was granted. All of them work in the caller's rounding mode.
template <class Body>
void runTeam(int threads, Body body) {
  const unsigned control = VectorControlScope::current();
#pragma omp parallel num_threads(threads)
  {
    VectorControlScope scope(control);
    body(omp_get_thread_num(), omp_get_num_threads());
  }
}

// Team sizes of runSliced: most kernels gain nothing from a third thread, as memory feeds two at the most.
inline constexpr int kTwoThreads = 2;
inline constexpr int kAllThreads = 1 << 30;

// The lengths from which families share their work, in proportion to the cost of an element, and how much
// longer than that a vector has to be. A region costs a microsecond or two while its threads are awake and tens of
// them to wake them; the kernels of today need a tenth of a nanosecond to one for an element. Measured on integer
// divisions with a free processor for the second thread, in proportion to the time of one thread: at 8 times the
// lengths 0.6 to 1.2, at 32 and 64 times 0.5 to 1.0 back to back but up to 1.3 after a pause, and from 128 times on,
// which is 30 to 200 microseconds of work, below 1 throughout. Where other programs keep all processors busy no
// factor would do: the caller then waits some milliseconds for its second thread to be scheduled, at any length.
inline constexpr size_t kThreadedLengthFactor = 128;

// The second half of runSliced. A function of its own, so that the usual call does not keep the kernel in memory.
template <class Kernel>
[[gnu::noinline]] bool runSlicesOfTeam(size_t len, int mostThreads, Kernel kernel) {
  const int available = ownGetNumThreads();
  if (available <= 1 || len < static_cast<size_t>(available)) return kernel(0, len);
  bool warned = false;
  runTeam(available < mostThreads ? available : mostThreads, [&](int thread, int team) {
    const size_t chunk = len / static_cast<size_t>(team);
    const size_t begin = chunk * static_cast<size_t>(thread);
    const size_t count = thread == team - 1 ? len - begin : chunk;
    if (kernel(begin, count)) __atomic_store_n(&warned, true, __ATOMIC_RELAXED);
  });
  return warned;
}

// The gate of element-wise work: runs kernel(begin, count) over all of [0, len), on slices of a team when
// `len` reaches `threadedFrom` and more than one thread may be used, and otherwise in one piece. The last
// slice takes what an even division leaves over.
//
// The kernel returns true for a warning; so does runSliced if any slice did. All writers of the flag write
// the same value and the region's end orders them before the read.
template <class Kernel>
bool runSliced(size_t len, size_t threadedFrom, int mostThreads, Kernel kernel) {
  if (__builtin_expect(len >= threadedFrom, false)) return runSlicesOfTeam(len, mostThreads, kernel);
  return kernel(0, len);
}

}  // namespace kvrs

#endif
