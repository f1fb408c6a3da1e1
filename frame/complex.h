// Complex arithmetic on pairs (frame/element.h): even lanes hold real parts, odd lanes imaginary ones. Every
// product and sum is rounded by itself, in each module alike: nothing is fused.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_COMPLEX_H
#define KVRS_FRAME_COMPLEX_H

#include "frame/simd.h"

namespace kvrs {

// (1, 0), (1, 0), ... times `re` and (0, 1), ... times `im`: one complex number in every pair.
template <class D, class T = hn::TFromD<D>>
KVRS_INLINE hn::Vec<D> setPairs(D d, T re, T im) {
  return hn::OddEven(hn::Set(d, im), hn::Set(d, re));
}

// Real parts x - y, imaginary parts x + y.
template <class V>
KVRS_INLINE V subAdd(V x, V y) {
  return hn::OddEven(hn::Add(x, y), hn::Sub(x, y));
}

// Real parts x + y, imaginary parts x - y.
template <class V>
KVRS_INLINE V addSub(V x, V y) {
  return hn::OddEven(hn::Sub(x, y), hn::Add(x, y));
}

// a * b: (ar*br - ai*bi, ar*bi + ai*br).
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V mulPairs(D d, V a, V b) {
  return subAdd(hn::Mul(hn::DupEven(a), b), hn::Mul(hn::DupOdd(a), hn::Reverse2(d, b)));
}

// a * conj(b): (ar*br + ai*bi, ai*br - ar*bi).
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V mulPairsConj(D d, V a, V b) {
  return addSub(hn::Mul(a, hn::DupEven(b)), hn::Mul(hn::Reverse2(d, a), hn::DupOdd(b)));
}

}  // namespace kvrs

#endif
