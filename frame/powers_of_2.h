// Doubles times powers of two, where a module has mask registers: one instruction for what takes five otherwise.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_POWERS_OF_2_H
#define KVRS_FRAME_POWERS_OF_2_H

#include "frame/simd.h"

namespace kvrs {

// y * 2^n, rounded once, for lanes n that are whole numbers.
template <class V>
KVRS_INLINE V timesPowersOf2(V y, V n) {
  if constexpr (sizeof(y.raw) == 64) {
    return V{_mm512_scalef_pd(y.raw, n.raw)};
  } else if constexpr (sizeof(y.raw) == 32) {
    return V{_mm256_scalef_pd(y.raw, n.raw)};
  } else {
    return V{_mm_scalef_pd(y.raw, n.raw)};
  }
}

}  // namespace kvrs

#endif
