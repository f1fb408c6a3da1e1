// The loop from both ends of an array: element n and its mirror image len - 1 - n at once, as symmetric windows
// want it.
//
//        n, n + 1, ...                                     ..., len - 2 - n, len - 1 - n
//   |------------|------------| -->              <-- |------------|------------|
//   0                                                                         len
//
// A block in front and one at the back are loaded before either is stored, and what is left in the middle goes through
// copies, so that each element is read and written once: the arrays may be one.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_TWO_ENDED_H
#define KVRS_FRAME_TWO_ENDED_H

#include <cstring>

#include "frame/cursor.h"
#include "frame/element.h"

namespace kvrs {

// For n in [from, end), with end up to len / 2: op(d, n, front, back) is called with the index of a block of N elements, with
// the block itself and with its mirror image, both in the order of memory, and returns what takes their places, a Both.
// Lane i of the one is the mirror image of lane N - 1 - i of the other, also where there are fewer than N elements.
template <size_t N, class T, class Op>
KVRS_INLINE void fromBothEnds(const Op& op, const T* src, T* dst, size_t len, size_t from, size_t end) {
  const ElementLanes<T, N> d;
  for (; end - from >= N; from += N) {
    const size_t back = len - from - N;
    const auto both = op(d, from, Element<T>::load(d, src + from), Element<T>::load(d, src + back));
    Element<T>::store(both.first, d, dst + from);
    Element<T>::store(both.second, d, dst + back);
  }
  if (const size_t count = end - from; count != 0) {
    const size_t back = len - from - count, bytes = count * sizeof(T);
    T first[N] = {}, last[N] = {};
    T* const lastOnes = last + (N - count);
    memcpy(static_cast<void*>(first), src + from, bytes);
    memcpy(static_cast<void*>(lastOnes), src + back, bytes);
    const auto both = op(d, from, Element<T>::load(d, first), Element<T>::load(d, last));
    Element<T>::store(both.first, d, first);
    Element<T>::store(both.second, d, last);
    memcpy(static_cast<void*>(dst + from), first, bytes);
    memcpy(static_cast<void*>(dst + back), lastOnes, bytes);
  }
}

// The lanes of a full vector in reverse order.
template <class D, class V>
KVRS_INLINE V mirrored(D d, V v) {
  return cursor_detail::reverse<hn::TFromD<D>, hn::MaxLanes(D())>(d, v);
}

}  // namespace kvrs

#endif
