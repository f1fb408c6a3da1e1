// The loop from both ends of an array: element n and its mirror image len - 1 - n at once, as symmetric windows and
// exchanges want it.
//
//        n, n + 1, ...                                     ..., len - 2 - n, len - 1 - n
//   |------------|------------| -->              <-- |------------|------------|
//   0                                                                         len
//
// A block in front and one at the back are loaded before either is stored, and what is left in the middle runs in blocks of
// N/2, N/4, ... elements, so that each element is read and written once: the arrays may be one.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_TWO_ENDED_H
#define KVRS_FRAME_TWO_ENDED_H

#include "frame/element.h"
#include "frame/loop_reversed.h"

namespace kvrs {

// For n in [from, end), with end up to len / 2: op(d, n, front, back) is called with the index of a block of N elements, or
// fewer, with the block itself and with its mirror image, both in the order of memory, and returns what takes their places,
// a Both.
template <size_t N, class T, class Op>
KVRS_INLINE void fromBothEnds(const Op& op, const T* src, T* dst, size_t len, size_t from, size_t end) {
  const ElementLanes<T, N> d;
  for (; end - from >= N; from += N) {
    const size_t back = len - from - N;
    const auto both = op(d, from, Element<T>::load(d, src + from), Element<T>::load(d, src + back));
    Element<T>::store(both.first, d, dst + from);
    Element<T>::store(both.second, d, dst + back);
  }
  if constexpr (N > 1) {
    if (from < end) fromBothEnds<N / 2>(op, src, dst, len, from, end);
  }
}

// The lanes of a vector in reverse order.
template <class D, class V>
KVRS_INLINE V mirrored(D d, V v) {
  return loop_detail::reverse<hn::TFromD<D>, hn::MaxLanes(D())>(d, v);
}

}  // namespace kvrs

#endif
