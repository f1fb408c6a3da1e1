// Parallel regions inside one call, and the gate in front of them.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_THREADS_H
#define KVRS_FRAME_THREADS_H

#include <fpu_control.h>
#include <omp.h>
#include <sys/types.h>
#include <unistd.h>
#include <xmmintrin.h>

#include <cstddef>
#include <cstdint>

#include "frame/rounding.h"
#include "kvrscore.h"

namespace kvrs {

// How many threads a call may use, at least 1, whatever the core library says.
inline int threadCount() {
  const int count = ownGetNumThreads();
  return count > 1 ? count : 1;
}

namespace threads_detail {

// The process that runs teams, 0 before the first of them: the only variable of the library.
inline pid_t ownerOfTeams = 0;

// Whether this process may run a team. The child of one that has run some may not: it has the OpenMP library's records
// of threads that stayed behind in its parent, and a region would wait for them for ever.
inline bool mayRunTeam() {
  const pid_t self = getpid();
  pid_t owner = __atomic_load_n(&ownerOfTeams, __ATOMIC_RELAXED);
  if (owner == 0 &&
      __atomic_compare_exchange_n(&ownerOfTeams, &owner, self, false, __ATOMIC_RELAXED, __ATOMIC_RELAXED)) {
    return true;
  }
  return owner == self;
}

// What floating-point work depends on besides its operands: rounding, precision, masks, what becomes of subnormals. A
// thread of a team is made with the control words of whoever made it, which may be long ago.
struct FloatControl {
  unsigned vectorUnit;
  fpu_control_t extendedUnit;
};

// Of the vector unit's control word, and in the same places of the x87 unit's status.
inline constexpr unsigned kExceptionFlags = 0x3F;

inline FloatControl currentFloatControl() {
  FloatControl control;
  control.vectorUnit = _mm_getcsr() & ~kExceptionFlags;
  _FPU_GETCW(control.extendedUnit);
  return control;
}

inline unsigned extendedUnitFlags() {
  unsigned short status;
  asm volatile("fnstsw %0" : "=am"(status));
  return status & kExceptionFlags;
}

using RunMember = void (*)(void* body, int thread, int team);

// run(body, thread, team) under the control words of another thread. Returns the exception flags that it raised; this
// thread keeps them too, and its own control words.
[[gnu::noinline]] inline unsigned runMember(FloatControl control, RunMember run, void* body, int thread,
                                            int team) {
  const unsigned vectorUnit = _mm_getcsr() | extendedUnitFlags();
  fpu_control_t extendedUnit;
  _FPU_GETCW(extendedUnit);
  asm volatile("fnclex");
  _mm_setcsr(control.vectorUnit);
  _FPU_SETCW(control.extendedUnit);
  asm volatile("" : "+r"(run) : : "memory");  // frame/rounding.h says why
  run(body, thread, team);
  const unsigned raised = (_mm_getcsr() | extendedUnitFlags()) & kExceptionFlags;
  _FPU_SETCW(extendedUnit);
  _mm_setcsr(vectorUnit | raised);
  return raised;
}

[[gnu::noinline]] inline void runMembers(int threads, RunMember run, void* body) {
  const FloatControl control = currentFloatControl();
  unsigned raised = 0;
#pragma omp parallel num_threads(threads)
  {
    const int thread = omp_get_thread_num(), team = omp_get_num_threads();
    if (thread == 0) {  // the caller
      run(body, thread, team);
    } else {
      const unsigned flags = runMember(control, run, body, thread, team);
      __atomic_fetch_or(&raised, flags, __ATOMIC_RELAXED);
    }
  }
  _mm_setcsr(_mm_getcsr() | raised);
}

}  // namespace threads_detail

// Runs body(thread, team) on a team of at most `threads`, and on the calling thread alone, as thread 0 of 1, where that
// is below 2 or a team may not or cannot be had: `team` is what was granted. All members work under the caller's
// floating-point control, and the exception flags that they raise are raised in the caller too.
template <class Body>
void runTeam(int threads, Body body) {
  // Not inlined, so that there is one copy of it.
  const auto run = [](void* p, int thread, int team) __attribute__((noinline)) {
    (*static_cast<Body*>(p))(thread, team);
  };
  if (threads < 2 || !threads_detail::mayRunTeam()) return run(&body, 0, 1);
  threads_detail::runMembers(threads, run, &body);
}

// A member's share of `len` elements: whole tiles, as many as all others have, and for the last one what is left. Where
// a kernel treats the elements of a tile together, slices of whole tiles give what one piece gives.
struct Slice {
  size_t begin, count;
};

constexpr Slice sliceOf(size_t len, size_t tile, int thread, int team) {
  const size_t share = len / tile / static_cast<size_t>(team) * tile;
  const size_t begin = share * static_cast<size_t>(thread);
  return {begin, thread == team - 1 ? len - begin : share};
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

// The length from which a family whose cost of an element is told by `limit` shares its work, in elements.
constexpr size_t threadedLength(size_t limit) {
  return limit * kThreadedLengthFactor;
}
inline constexpr size_t kNeverThreaded = SIZE_MAX;

// The second half of runSliced. A function of its own, so that the usual call does not keep the kernel in memory.
template <class Kernel>
[[gnu::noinline]] bool runSlicesOfTeam(size_t len, int mostThreads, Kernel kernel) {
  const int available = threadCount();
  if (available == 1 || len < static_cast<size_t>(available)) return kernel(0, len);
  bool warned = false;
  runTeam(available < mostThreads ? available : mostThreads, [&](int thread, int team) {
    const Slice slice = sliceOf(len, 1, thread, team);
    if (kernel(slice.begin, slice.count)) __atomic_store_n(&warned, true, __ATOMIC_RELAXED);
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
