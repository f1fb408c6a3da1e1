// Shifts by a count that is the same for all lanes and known at run time.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_SHIFT_H
#define KVRS_FRAME_SHIFT_H

#include <type_traits>

#include "frame/simd.h"

namespace kvrs {

// A count for each lane is the faster instruction where there is one: it takes the count as it is, in place of
// spreading it in every shift. (On a single lane Highway 1.0.3 has it take two lanes' worth of count.)
template <class D>
inline constexpr bool kCountsByLane = kShiftsByLane && sizeof(hn::TFromD<D>) >= 2 && hn::MaxLanes(D()) > 1;

// floor(v / 2^count), for a count below the lanes' width; of unsigned numbers, and of 0, up to it.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V shiftRightBy(D d, V v, int count) {
  using T = hn::TFromD<D>;
  if constexpr (kCountsByLane<D>) {
    return hn::Shr(v, hn::Set(d, static_cast<T>(count)));
  } else if constexpr (std::is_same_v<T, uint8_t> && kShiftsByLane) {
    const hn::RepartitionToWide<D> dw;
    return hn::And(hn::BitCast(d, shiftRightBy(dw, hn::BitCast(dw, v), count)),
                   hn::Set(d, static_cast<T>(0xFF >> count)));
  } else {
    return hn::ShiftRightSame(v, count);
  }
}

// v * 2^count modulo the lanes' range, for a count up to their width.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V shiftLeftBy(D d, V v, int count) {
  using T = hn::TFromD<D>;
  if constexpr (kCountsByLane<D>) {
    return hn::Shl(v, hn::Set(d, static_cast<T>(count)));
  } else if constexpr (sizeof(T) == 1 && kShiftsByLane) {
    const hn::RepartitionToWide<D> dw;
    return hn::And(hn::BitCast(d, shiftLeftBy(dw, hn::BitCast(dw, v), count)),
                   hn::Set(d, static_cast<T>(0xFF << count)));
  } else {
    return hn::ShiftLeftSame(v, count);
  }
}

}  // namespace kvrs

#endif
