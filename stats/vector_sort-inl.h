// The vectorised quicksort on keys of one type.
// SPDX-License-Identifier: MIT
#ifndef KVRS_STATS_VECTOR_SORT_INL_H
#define KVRS_STATS_VECTOR_SORT_INL_H

#include "frame/simd.h"
#include "stats/vector_sort.h"

#include <hwy/contrib/sort/traits-inl.h>
#include <hwy/contrib/sort/vqsort-inl.h>

#include <bit>

namespace kvrs {

// The recursion itself, and not the function in front of it, which takes the seed of its samples from the clock and from
// addresses, by a library of its own. A seed that is known makes bad partitions possible but not slow: after so many levels
// the rest is a heap sort.
template <class T>
KVRS_INLINE void vectorSort(T* keys, size_t len) {
  namespace detail = hn::detail;
  const hn::SortTag<T> d;
  const detail::SharedTraits<detail::TraitsLane<detail::OrderAscending<T>>> order;
  alignas(64) T buffer[hwy::SortConstants::BufNum<T>(kLanes<T>)];
  detail::Generator random(uint64_t{0x9E3779B97F4A7C15});
  const size_t levels = 2 * static_cast<size_t>(std::bit_width(len)) + 4;
  detail::Recurse(d, order, keys, keys + len, len, buffer, random, levels);
}

}  // namespace kvrs

#endif
