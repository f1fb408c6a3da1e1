// Complex arithmetic on pairs (frame/element.h): even lanes hold real parts, odd lanes imaginary ones. Every
// product and sum is rounded by itself, in each module alike: nothing is fused.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_COMPLEX_H
#define KVRS_FRAME_COMPLEX_H

#include "frame/simd.h"

namespace kvrs {

// (re, im), (re, im), ...
template <class D, class T = hn::TFromD<D>>
KVRS_INLINE hn::Vec<D> setPairs(D d, T re, T im) {
  return hn::OddEven(hn::Set(d, im), hn::Set(d, re));
}

// Real parts x - y, imaginary parts x + y. The compiler has one instruction for the sum, the difference and
// their merging; without blends it sees that in double precision only, and a flip of signs costs less.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V subAdd(D d, V x, V y) {
  if constexpr (kBlends || sizeof(hn::TFromD<D>) == 8) {
    return hn::OddEven(hn::Add(x, y), hn::Sub(x, y));
  } else {
    return hn::Add(x, hn::Xor(y, setPairs(d, -0.0f, 0.0f)));
  }
}

// Real parts x + y, imaginary parts x - y.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V addSub(D d, V x, V y) {
  if constexpr (kBlends || sizeof(hn::TFromD<D>) == 8) {
    return hn::OddEven(hn::Sub(x, y), hn::Add(x, y));
  } else {
    return hn::Add(x, hn::Xor(y, setPairs(d, 0.0f, -0.0f)));
  }
}

// a * b: (ar*br - ai*bi, ar*bi + ai*br).
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V mulPairs(D d, V a, V b) {
  return subAdd(d, hn::Mul(dupEven(a), b), hn::Mul(dupOdd(a), hn::Reverse2(d, b)));
}

// a * conj(b): (ar*br + ai*bi, ai*br - ar*bi).
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V mulPairsConj(D d, V a, V b) {
  return addSub(d, hn::Mul(a, dupEven(b)), hn::Mul(hn::Reverse2(d, a), dupOdd(b)));
}

}  // namespace kvrs

#endif
