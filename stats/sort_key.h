// Keys to sort by.
// SPDX-License-Identifier: MIT
#ifndef KVRS_STATS_SORT_KEY_H
#define KVRS_STATS_SORT_KEY_H

#include <type_traits>

#include "frame/simd.h"

namespace kvrs {

// Elements as unsigned keys whose ascending order is the one that is asked for. Descending keys are the complements of
// ascending ones.
template <class T, bool kDescending>
struct KeyOf {
  using Key = std::conditional_t<
      sizeof(T) == 1, Kvr8u,
      std::conditional_t<sizeof(T) == 2, Kvr16u, std::conditional_t<sizeof(T) == 4, Kvr32u, Kvr64u>>>;
  static constexpr Key kSign = static_cast<Key>(Key{1} << (8 * sizeof(Key) - 1));
  static constexpr Key kTurn = kDescending ? static_cast<Key>(~Key{0}) : Key{0};

  // Of the element's bits. Floats: the sign turned over, and of negative ones all bits.
  static KVRS_INLINE Key from(Key bits) {
    if constexpr (std::is_floating_point_v<T>) {
      return bits ^ ((bits & kSign) != 0 ? static_cast<Key>(~kTurn) : static_cast<Key>(kSign ^ kTurn));
    } else {
      return static_cast<Key>(bits ^ kTurn ^ (std::is_signed_v<T> ? kSign : Key{0}));
    }
  }
  static KVRS_INLINE Key back(Key key) {
    if constexpr (std::is_floating_point_v<T>) {
      const Key ascending = key ^ kTurn;
      return ascending ^ ((ascending & kSign) != 0 ? kSign : static_cast<Key>(~Key{0}));
    } else {
      return from(key);
    }
  }
};

}  // namespace kvrs

#endif
