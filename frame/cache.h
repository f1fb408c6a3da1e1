// The size of the last-level cache, by which large fills and copies decide to bypass it.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_CACHE_H
#define KVRS_FRAME_CACHE_H

#include <unistd.h>

#include <cstddef>

namespace kvrs {

// In bytes; 0 when unknown. The C library reads the processor once, at its start, and answers from memory.
inline size_t lastLevelCacheBytes() {
  const long level3 = sysconf(_SC_LEVEL3_CACHE_SIZE);
  if (level3 > 0) return static_cast<size_t>(level3);
  const long level2 = sysconf(_SC_LEVEL2_CACHE_SIZE);
  return level2 > 0 ? static_cast<size_t>(level2) : 0;
}

}  // namespace kvrs

#endif
