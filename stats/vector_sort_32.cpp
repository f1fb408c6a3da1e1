// The vectorised quicksort on keys of 32 bits.
// SPDX-License-Identifier: MIT
#include "stats/vector_sort-inl.h"

void kvrs::sortAlignedKeys(Kvr32s* keys, size_t len) {
  vectorSort(keys, len);
}
