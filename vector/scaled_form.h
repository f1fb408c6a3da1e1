// The argument forms of the scaled integer families: checks, then the element loop.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_SCALED_FORM_H
#define KVRS_VECTOR_SCALED_FORM_H

#include "frame/check.h"
#include "frame/complex.h"
#include "frame/scaled.h"
#include "vector/scaled_bounds.h"
#include "vector/stand_in.h"

namespace kvrs {

// Both parts of a complex scalar, or a real one twice: what setPairs takes.
template <class T>
Pair<T> partsOf(T val) {
  return {val, val};
}
inline Pair<Kvr16s> partsOf(Kvr16sc val) {
  return {val.re, val.im};
}
inline Pair<Kvr32s> partsOf(Kvr32sc val) {
  return {val.re, val.im};
}

template <class T>
bool isZero(T val) {
  const auto parts = partsOf(val);
  return parts.re == 0 && parts.im == 0;
}

// An array as the element loop takes it: complex elements as pairs.
template <class T>
auto elements(T* p) {
  if constexpr (requires { p->re; }) {
    return asPairs<LaneOf<std::remove_const_t<T>>>(p);
  } else {
    return p;
  }
}

// Op with a scalar behind a vector, `op(d, a, val)`, or with the scalar ahead of it.
template <class Op, class Part>
struct ThenScalar {
  Pair<Part> val;
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V a) const {
    return Op()(d, a, setPairs(d, val.re, val.im));
  }
};
template <class Op, class Part>
struct ScalarThen {
  Pair<Part> val;
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V a) const {
    return Op()(d, setPairs(d, val.re, val.im), a);
  }
};

// dst = Op(a, b), scaled.
template <class Op, class D, class A, class B>
KvrStatus vectorVector(const A* a, const B* b, D* dst, int len, ScaleBounds bounds, int scaleFactor) {
  KVRS_CHECK(pointers(a, b, dst), length(len));
  return mapScaled(Op(), bounds, scaleFactor, dst, static_cast<size_t>(len), a, b);
}

// The same without a scale factor.
template <class Op, class D, class A, class B>
KvrStatus vectorVector(const A* a, const B* b, D* dst, int len) {
  KVRS_CHECK(pointers(a, b, dst), length(len));
  return mapSaturated(Op(), dst, static_cast<size_t>(len), a, b);
}

// Complex vectors part by part, as the real form on twice the length. The length is tested ahead of the
// pointers, as is usual for the forms that hand on to a real one.
template <class Op, class T>
KvrStatus partByPart(const T* a, const T* b, T* dst, int len, ScaleBounds bounds, int scaleFactor) {
  KVRS_CHECK(length(len), pointers(a, b, dst));
  return mapScaled(Op(), bounds, scaleFactor, elements(dst), static_cast<size_t>(len), elements(a),
                   elements(b));
}

}  // namespace kvrs

#endif
