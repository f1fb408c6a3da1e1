// The argument forms of the scaled integer families: checks, then the element loop.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_SCALED_FORM_H
#define KVRS_VECTOR_SCALED_FORM_H

#include <bit>
#include <type_traits>

#include "frame/check.h"
#include "frame/scaled.h"
#include "vector/scaled_bounds.h"
#include "vector/stand_in.h"

namespace kvrs {

// Whether an element type is complex; its arrays then go through the element loop as pairs.
template <class T>
inline constexpr bool kIsComplex = requires(T val) {
  val.re;
};

template <class T>
bool isZero(T val) {
  if constexpr (kIsComplex<T>) {
    return val.re == 0 && val.im == 0;
  } else {
    return val == 0;
  }
}

// A scalar, held in a whole register. A functor is handed to the loop in registers; of smaller members the compiler
// would make a register in memory, where the load waits some twelve cycles for the small stores ahead of it.
template <class T>
class Scalar {
  using Bits = hwy::UnsignedFromSize<sizeof(T)>;
  using Register = std::conditional_t<sizeof(T) <= sizeof(uintptr_t), uintptr_t, uint64_t>;

 public:
  explicit Scalar(T val) : register_(std::bit_cast<Bits>(val)) {}

  // In every lane, or in every pair of lanes.
  template <class D>
  KVRS_INLINE hn::Vec<D> in(D d) const {
    const hn::Repartition<Bits, D> bits;
    return hn::BitCast(d, hn::Set(bits, static_cast<Bits>(register_)));
  }

 private:
  Register register_;
};

// An array as the element loop takes it: complex elements as pairs.
template <class T>
auto elements(T* p) {
  if constexpr (kIsComplex<T>) {
    return asPairs<LaneOf<std::remove_const_t<T>>>(p);
  } else {
    return p;
  }
}

// An op with a scalar behind a vector, op(d, a, val), or with the scalar ahead of it.
template <class Op, class T>
struct ThenScalar {
  [[no_unique_address]] Op op;
  Scalar<T> val;

  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V a) const {
    return op(d, a, val.in(d));
  }
};
template <class Op, class T>
ThenScalar<Op, T> thenScalar(Op op, T val) {
  return {op, Scalar<T>(val)};
}

template <class Op, class T>
struct ScalarThen {
  [[no_unique_address]] Op op;
  Scalar<T> val;

  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V a) const {
    return op(d, val.in(d), a);
  }
};
template <class Op, class T>
ScalarThen<Op, T> scalarThen(Op op, T val) {
  return {op, Scalar<T>(val)};
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
