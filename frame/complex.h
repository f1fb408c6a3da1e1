// Complex arithmetic on pairs (frame/element.h): even lanes hold real parts, odd lanes imaginary ones. Every
// product and sum is rounded by itself, in each module alike.
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

// Real parts x + re*y, imaginary parts x + im*y, where one of re and im is 1 and the other -1. Where there are fused
// operations it is one of them, with one rounding all the same, as products with 1 and -1 are exact. Otherwise the
// compiler has one instruction for a sum, a difference and their merging; without blends it sees that in double
// precision only.
template <int re, int im, class D, class V = hn::Vec<D>>
KVRS_INLINE V addSigned(D d, V x, V y) {
  static_assert(re * im == -1);
  using T = hn::TFromD<D>;
  if constexpr (kFusedMulAdd) {
    return hn::MulAdd(y, setPairs(d, T{re}, T{im}), x);
  } else if constexpr (kBlends || sizeof(T) == 8) {
    const V sum = hn::Add(x, y), difference = hn::Sub(x, y);
    return re > 0 ? hn::OddEven(difference, sum) : hn::OddEven(sum, difference);
  } else if constexpr (re < 0) {
    return subAddLanes(x, y);
  } else {
    return hn::Add(x, hn::Xor(y, setPairs(d, T{0}, -T{0})));
  }
}

// Real parts x - y, imaginary parts x + y.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V subAdd(D d, V x, V y) {
  return addSigned<-1, 1>(d, x, y);
}

// Real parts x + y, imaginary parts x - y.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V addSub(D d, V x, V y) {
  return addSigned<1, -1>(d, x, y);
}

// Imaginary parts before real ones. In 16-byte vectors as integers, whose shuffle leaves its operand as it is; the one
// for floats overwrites it, at the cost of a copy.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V swapParts(D d, V v) {
  if constexpr (kVectorBytes == 16 && sizeof(hn::TFromD<D>) == 4) {
    const hn::RebindToSigned<D> di;
    return hn::BitCast(d, hn::Reverse2(di, hn::BitCast(di, v)));
  } else {
    return hn::Reverse2(d, v);
  }
}

// a * b: (ar*br - ai*bi, ar*bi + ai*br).
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V mulPairs(D d, V a, V b) {
  return subAdd(d, hn::Mul(dupEven(a), b), hn::Mul(dupOdd(a), swapParts(d, b)));
}

// a * conj(b): (ar*br + ai*bi, ai*br - ar*bi).
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V mulPairsConj(D d, V a, V b) {
  return addSub(d, hn::Mul(a, dupEven(b)), hn::Mul(swapParts(d, a), dupOdd(b)));
}

}  // namespace kvrs

#endif
