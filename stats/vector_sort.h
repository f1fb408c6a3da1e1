// The vectorised quicksort of Highway, ascending, for each width of keys in a source of its own.
// SPDX-License-Identifier: MIT
#ifndef KVRS_STATS_VECTOR_SORT_H
#define KVRS_STATS_VECTOR_SORT_H

#include <cstddef>

#include "kvrs/types.h"

namespace kvrs {

// The keys are aligned to their width.
void sortAlignedKeys(Kvr16s* keys, size_t len);
void sortAlignedKeys(Kvr32s* keys, size_t len);
void sortAlignedKeys(Kvr64s* keys, size_t len);

// The same at any address.
void sortKeys(Kvr16s* keys, size_t len);
void sortKeys(Kvr32s* keys, size_t len);
void sortKeys(Kvr64s* keys, size_t len);

}  // namespace kvrs

#endif
