// Bytes, sorted by counting them.
// SPDX-License-Identifier: MIT
#ifndef KVRS_STATS_COUNTING_SORT_H
#define KVRS_STATS_COUNTING_SORT_H

#include <cstddef>

#include "kvrs/types.h"

namespace kvrs {

void countingSort(Kvr8u* srcDst, size_t len, bool descending);

}  // namespace kvrs

#endif
