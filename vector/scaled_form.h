// The argument forms of the scaled integer families: checks, then the element loop.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_SCALED_FORM_H
#define KVRS_VECTOR_SCALED_FORM_H

#include <type_traits>

#include "frame/check.h"
#include "frame/scalar.h"
#include "frame/scaled.h"
#include "vector/scaled_bounds.h"
#include "vector/stand_in.h"

namespace kvrs {

template <class T>
bool isZero(T val) {
  if constexpr (kIsComplex<T>) {
    return val.re == 0 && val.im == 0;
  } else {
    return val == 0;
  }
}

// An array as the element loop takes it: complex elements as pairs.
template <class T>
auto elements(T* p) {
  if constexpr (kIsComplex<T>) {
    return asPairs<LaneOf<std::remove_const_t<T>>>(p);
  } else {
    return p;
  }
}

// dst = Op(a, b), scaled.
template <class Op, class D, class A, class B>
KvrStatus vectorVector(const A* a, const B* b, D* dst, int len, ScaleBounds bounds, int scaleFactor) {
  KVRS_CHECK(pointers(a, b, dst), length(len));
  return mapScaled(Op(), bounds, scaleFactor, elements(dst), static_cast<size_t>(len), elements(a),
                   elements(b));
}

// The same without a scale factor.
template <class Op, class D, class A, class B>
KvrStatus vectorVector(const A* a, const B* b, D* dst, int len) {
  KVRS_CHECK(pointers(a, b, dst), length(len));
  return mapSaturated(Op(), dst, static_cast<size_t>(len), a, b);
}

// Complex vectors as the real form on twice the length. The length is tested ahead of the pointers, as is usual for the
// forms that hand on to a real one.
template <class Op, class T>
KvrStatus partByPart(const T* a, const T* b, T* dst, int len, ScaleBounds bounds, int scaleFactor) {
  KVRS_CHECK(length(len), pointers(a, b, dst));
  return mapScaled(Op(), bounds, scaleFactor, &dst->re, 2 * static_cast<size_t>(len), &a->re, &b->re);
}

}  // namespace kvrs

#endif
