// Operations whose lanes are wider in between than at their ends.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_HALVES_H
#define KVRS_FRAME_HALVES_H

#include "frame/simd.h"

namespace kvrs {

// op(dt, v), where op passes through as many lanes of Middle: where those do not fit into one vector, half by
// half.
template <class Middle, class Op, class Dt, class V>
KVRS_INLINE hn::Vec<Dt> through(const Op& op, Dt dt, V v) {
  if constexpr (hn::MaxLanes(Dt()) * sizeof(Middle) > kVectorBytes) {
    const hn::Half<Dt> dtHalf;
    const hn::Half<hn::DFromV<V>> dHalf;
    const auto lower = through<Middle>(op, dtHalf, hn::LowerHalf(dHalf, v));
    return hn::Combine(dt, through<Middle>(op, dtHalf, hn::UpperHalf(dHalf, v)), lower);
  } else {
    return op(dt, v);
  }
}

}  // namespace kvrs

#endif
