// What the thresholds' checks share.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_THRESHOLD_H
#define KVRS_VECTOR_THRESHOLD_H

#include "frame/check.h"

namespace kvrs::check {

constexpr KvrStatus comparison(KvrCmpOp relOp) {
  return require(relOp == kvrCmpLess || relOp == kvrCmpGreater, kvrStatusBadArg);
}

// A level that magnitudes are compared with.
template <class T>
constexpr KvrStatus magnitudeLevel(T level) {
  return require(!(level < 0), kvrStatusNegativeThreshold);
}

}  // namespace kvrs::check

#endif
