// Loops of a fixed number of turns, unrolled, so that arrays of vectors that are indexed by the turn live in
// registers.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_UNROLL_H
#define KVRS_FRAME_UNROLL_H

#include <type_traits>
#include <utility>

#include "frame/simd.h"

// For the bodies: one that became a call would take its vectors through memory.
#define KVRS_UNROLLED __attribute__((always_inline))

namespace kvrs {

template <int i>
using Index = std::integral_constant<int, i>;

// body(Index<0>()), body(Index<1>()), ... body(Index<kTurns - 1>()):
//
//   unroll<4>([&](auto i) KVRS_UNROLLED { sum[i] = hn::Add(sum[i], x); });
template <int kTurns, class Body>
KVRS_INLINE void unroll(Body&& body) {
  [&]<int... i>(std::integer_sequence<int, i...>) KVRS_UNROLLED {
    (body(Index<i>()), ...);
  }
  (std::make_integer_sequence<int, kTurns>());
}

}  // namespace kvrs

#endif
