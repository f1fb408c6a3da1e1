// The stream of 32-bit words behind both distributions, and what their states have in common.
// SPDX-License-Identifier: MIT
#ifndef KVRS_SYNTH_RANDOM_STREAM_H
#define KVRS_SYNTH_RANDOM_STREAM_H

#include <cstddef>
#include <cstdint>

#include "frame/check.h"
#include "frame/cursor.h"
#include "kvrscore.h"

namespace kvrs {

struct RandomStream {
  uint32_t lcg, x1, x2, x3;
  int32_t borrow;

  static constexpr uint32_t kFactor = 69069, kTerm = 1013904243;
  static constexpr uint32_t congruent(uint32_t x) { return kFactor * x + kTerm; }

  void start(uint32_t seed) {
    lcg = 1131199209;
    x1 = seed;
    x2 = congruent(x1);
    x3 = congruent(x2);
    borrow = -1;
  }

  int32_t next() {
    subtract();
    lcg = congruent(lcg);
    return static_cast<int32_t>(x1 + lcg);
  }

  // The next two. A step of the congruential generator takes four cycles, and so do two at once; the other one's borrow passes
  // from word to word in two.
  struct Two {
    int32_t first, second;
  };
  KVRS_INLINE Two nextTwo() {
    Two two;
    subtract();
    two.first = static_cast<int32_t>(x1 + congruent(lcg));
    subtract();
    lcg = kFactor * kFactor * lcg + congruent(kTerm);
    two.second = static_cast<int32_t>(x1 + lcg);
    return two;
  }

 private:
  // The borrow is the sign of the difference, not the carry out of it.
  KVRS_INLINE void subtract() {
    uint32_t t = x2 - x3;
    keep(t);  // first, as the borrow is the last to come
    t += static_cast<uint32_t>(borrow);
    borrow = static_cast<int32_t>(t) >> 31;
    x3 = x2;
    x2 = x1;
    x1 = t - (18 & static_cast<uint32_t>(borrow));
  }
};

// A state on the heap.
template <class State>
KvrStatus allocateState(State** state) {
  KVRS_CHECK(pointers(state));
  auto* block = static_cast<State*>(kvrMalloc(sizeof(State)));
  if (block == nullptr) return kvrStatusOutOfMemory;
  *state = block;
  return kvrStatusOk;
}

template <class State>
KvrStatus releaseState(State* state) {
  KVRS_CHECK(context(state, State::kWord));
  kvrFree(state);
  return kvrStatusOk;
}

}  // namespace kvrs

#endif
