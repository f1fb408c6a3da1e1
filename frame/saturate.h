// Saturation: the value of the destination's type that lies nearest.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_SATURATE_H
#define KVRS_FRAME_SATURATE_H

#include <cstdint>
#include <limits>
#include <type_traits>

namespace kvrs {

// An integer wider than D, or of D's width and other signedness.
template <class D, class S>
constexpr D saturate(S value) {
  static_assert(std::numeric_limits<D>::is_integer);
  constexpr auto lowest = std::numeric_limits<D>::lowest();
  constexpr auto highest = std::numeric_limits<D>::max();
  if constexpr (std::numeric_limits<S>::is_signed == std::numeric_limits<D>::is_signed) {
    return value < lowest ? lowest : value > highest ? highest : static_cast<D>(value);
  } else if constexpr (std::numeric_limits<S>::is_signed) {
    using Unsigned = std::make_unsigned_t<S>;
    return value < 0 ? lowest : static_cast<Unsigned>(value) > highest ? highest : static_cast<D>(value);
  } else {
    return value > static_cast<std::make_unsigned_t<D>>(highest) ? highest : static_cast<D>(value);
  }
}

// What is left of a value when its scale is too large to matter: D's maximum for a positive one, its minimum
// for a negative one (0 where D is unsigned), 0 for 0.
template <class D, class S>
constexpr D saturateBySign(S value) {
  return value > 0 ? std::numeric_limits<D>::max() : value < 0 ? std::numeric_limits<D>::lowest() : D{0};
}

}  // namespace kvrs

#endif
