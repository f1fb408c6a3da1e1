// The check of a length by the arrays that it is the length of, for functions that do something else with it than to hand
// it to the element loop, which asks the same itself: share it out among threads, go by pieces, write element by element.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_ARRAY_LENGTH_H
#define KVRS_FRAME_ARRAY_LENGTH_H

#include "frame/check.h"

namespace kvrs::check {

// lengthOf the elements of each of the arrays.
template <class... T>
constexpr KvrStatus length(int len, const T*...) {
  return firstBad(lengthOf<T>(len)...);
}

// Of arrays that are told by pointers to them.
template <class T>
constexpr KvrStatus channelLength(int len, const T* const*) {
  return lengthOf<T>(len);
}

}  // namespace kvrs::check

#endif
