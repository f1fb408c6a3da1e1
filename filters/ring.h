// A delay line of 2 * len samples in which each stands twice, len apart, so that the window of the last len samples is in
// one piece wherever it begins.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_RING_H
#define KVRS_FILTERS_RING_H

#include "frame/simd.h"
#include "frame/unaligned.h"

namespace kvrs {

// Puts a sample in; the oldest one of the window that it ends is returned.
template <class X>
KVRS_INLINE X* pushTwice(X* line, int len, int32_t* pos, X sample) {
  unaligned::put(sample, line + *pos);
  unaligned::put(sample, line + (*pos + len));
  const int next = *pos + 1;
  *pos = next >= len ? 0 : next;
  return line + *pos;
}

// A position that nobody has tested, within [0, len).
KVRS_INLINE int32_t withinRing(int32_t pos, int32_t len) {
  if (static_cast<uint32_t>(pos) < static_cast<uint32_t>(len)) return pos;
  const int32_t rest = pos % len;
  return rest < 0 ? rest + len : rest;
}

}  // namespace kvrs

#endif
