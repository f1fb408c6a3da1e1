// Scalar operands of element-wise functions.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_SCALAR_H
#define KVRS_FRAME_SCALAR_H

#include <bit>
#include <cstdint>
#include <type_traits>

#include "frame/complex.h"
#include "frame/simd.h"

namespace kvrs {

// Whether an element type is complex; its arrays then go through the element loop as pairs.
template <class T>
inline constexpr bool kIsComplex = requires(T val) {
  val.re;
};

// A scalar as an operand: in every lane, or a complex one in every pair of lanes.
template <class T>
class Scalar {
  static constexpr bool kIsFloat = std::is_floating_point_v<T>;
  static constexpr bool kIsWide = sizeof(T) > 8;  // pairs of doubles
  // Integers are held in a whole register. A functor is handed to the loop in registers; of smaller members the compiler
  // would make a register in memory, where the load waits some twelve cycles for the small stores ahead of it.
  using Bits = hwy::UnsignedFromSize<kIsWide ? 8 : sizeof(T)>;
  using Register = std::conditional_t<sizeof(T) <= sizeof(uintptr_t), uintptr_t, uint64_t>;
  using Held = std::conditional_t<kIsFloat || kIsWide, T, Register>;

  static Held hold(T val) {
    if constexpr (kIsFloat || kIsWide) {
      return val;
    } else {
      return std::bit_cast<Bits>(val);
    }
  }

 public:
  explicit Scalar(T val) : held_(hold(val)) {}

  template <class D>
  KVRS_INLINE hn::Vec<D> in(D d) const {
    if constexpr (kIsFloat) {
      return hn::Set(d, held_);
    } else if constexpr (kIsWide) {
      return setPairs(d, held_.re, held_.im);
    } else {
      const hn::Repartition<Bits, D> bits;
      return hn::BitCast(d, hn::Set(bits, static_cast<Bits>(held_)));
    }
  }

 private:
  Held held_;
};

// op(d, a, val): an op with a scalar behind a vector.
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

// op(d, val, a): with the scalar ahead of it.
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

}  // namespace kvrs

#endif
