// What square roots of all types share.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_SQRT_H
#define KVRS_VECTOR_SQRT_H

#include <cstddef>

#include "frame/loop.h"
#include "frame/threads.h"
#include "kvrs/types.h"

namespace kvrs {

// kernel(begin, count) over all of [0, len), on a team from `threadedFrom` on. It returns true where it met a negative
// number.
template <size_t kElementBytes, class Kernel>
KvrStatus slicedRoots(int len, size_t threadedFrom, Kernel kernel) {
  const size_t n = static_cast<size_t>(len);
  if (!loop_detail::fitsAddress(n, kElementBytes)) return kvrStatusBadLength;
  const bool met = runSliced(n, threadedFrom, kTwoThreads, kernel);
  return met ? kvrStatusSqrtNegArg : kvrStatusOk;
}

}  // namespace kvrs

#endif
