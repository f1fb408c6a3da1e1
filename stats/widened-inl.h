// Elements in the precision of the accumulators that they go into.
// SPDX-License-Identifier: MIT
#ifndef KVRS_STATS_WIDENED_INL_H
#define KVRS_STATS_WIDENED_INL_H

#include "frame/element.h"
#include "frame/simd.h"

namespace kvrs {

// As lanes of V, a vector of floats.
template <class V, class X>
KVRS_INLINE V widened(X x) {
  const hn::DFromV<V> d;
  if constexpr (std::is_same_v<V, X>) {
    return x;
  } else if constexpr (sizeof(hn::TFromV<X>) == 2) {
    return hn::PromoteTo(d, hn::PromoteTo(hn::Rebind<int32_t, hn::DFromV<V>>(), x));
  } else {
    return hn::PromoteTo(d, x);
  }
}
template <class V, class X>
KVRS_INLINE Complex<V> widened(Complex<X> x) {
  return {widened<V>(x.re), widened<V>(x.im)};
}

// re * re + im * im, every operation rounded by itself.
template <class V>
KVRS_INLINE V squaredMagnitude(Complex<V> x) {
  return hn::Add(hn::Mul(x.re, x.re), hn::Mul(x.im, x.im));
}

}  // namespace kvrs

#endif
