// The scale-factor rule of the _Sfs functions: r * 2^(-scaleFactor), rounded to nearest with ties to even,
// then saturated.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_SCALE_H
#define KVRS_FRAME_SCALE_H

#include <bit>
#include <cstdint>

#include "frame/saturate.h"
#include "frame/shift.h"
#include "frame/simd.h"

namespace kvrs {

// Where a family's scale factors change kernel. Above `zeroAbove` no exact result can round to anything but
// 0; at or below `signAtOrBelow` every result but 0 leaves the destination's range, so that only its sign
// matters.
struct ScaleBounds {
  int zeroAbove;
  int signAtOrBelow;
};

enum class ScaleKernel {
  none,        // scale factor 0
  shiftLeft,   // negative: left, then saturate
  bySign,      // so negative that only the sign is left
  zero,        // so positive that nothing is left
  one,         // exactly 1
  shiftRight,  // all others
};

constexpr ScaleKernel scaleKernel(int scaleFactor, ScaleBounds bounds) {
  if (scaleFactor == 0) return ScaleKernel::none;
  if (scaleFactor < 0)
    return scaleFactor > bounds.signAtOrBelow ? ScaleKernel::shiftLeft : ScaleKernel::bySign;
  if (scaleFactor > bounds.zeroAbove) return ScaleKernel::zero;
  return scaleFactor == 1 ? ScaleKernel::one : ScaleKernel::shiftRight;
}

// r / 2^shift, ties to even, for 1 <= shift < bits of R. The addition must not overflow: |r| <= max -
// 2^(shift-1).
template <class R>
constexpr R shiftRightEven(R r, int shift) {
  return static_cast<R>((r + ((R{1} << (shift - 1)) - 1) + ((r >> shift) & 1)) >> shift);
}

// The rule on one value, for every scale factor: the definition that vector kernels are written after, and
// what kernels that work element by element use. Valid for |r| <= 2^62.
template <class D>
constexpr D scaleTo(int64_t r, int scaleFactor) {
  if (scaleFactor > 63) return D{0};
  if (scaleFactor > 0) {
    // In halves, since the rounding term of scale factor 63 alone is 2^62.
    const int64_t floor = r >> scaleFactor;
    const int64_t rest = r - (floor << (scaleFactor - 1)) - (floor << (scaleFactor - 1));
    const int64_t half = int64_t{1} << (scaleFactor - 1);
    return saturate<D>(floor + (rest > half || (rest == half && (floor & 1) != 0) ? 1 : 0));
  }
  if (scaleFactor < 0) {
    if (scaleFactor <= -32) return saturateBySign<D>(r);
    const D bounded = saturate<D>(r);  // the same value in the end, and the shift cannot overflow
    return saturate<D>(static_cast<int64_t>(bounded) * (int64_t{1} << -scaleFactor));
  }
  return saturate<D>(r);
}

// 2^exponent as a normal float, for an exponent within its range: a scale that adds no rounding.
template <class F>
constexpr F powerOfTwo(int exponent) {
  if constexpr (sizeof(F) == 4) {
    return std::bit_cast<F>(static_cast<uint32_t>(127 + exponent) << 23);
  } else {
    return std::bit_cast<F>(static_cast<uint64_t>(1023 + exponent) << 52);
  }
}

// shiftRightEven on vectors; the constants are made once, outside the loop.
template <class T>
class VectorShiftRightEven {
 public:
  explicit VectorShiftRightEven(int shift)
      : shift_(shift), bias_(static_cast<T>((uint64_t{1} << (shift - 1)) - 1)) {}

  template <class Dt, class V = hn::Vec<Dt>>
  KVRS_INLINE V operator()(Dt d, V r) const {
    const V one = hn::Set(d, T{1}), biased = hn::Add(r, hn::Set(d, bias_));
    if constexpr (kMaskRegisters) {
      const auto odd = hn::TestBit(r, hn::Set(d, static_cast<T>(uint64_t{1} << shift_)));
      return shiftRightBy(d, hn::IfThenElse(odd, hn::Add(biased, one), biased), shift_);
    } else {
      return shiftRightBy(d, hn::Add(biased, hn::And(shiftRightBy(d, r, shift_), one)), shift_);
    }
  }

 private:
  int shift_;
  T bias_;
};

}  // namespace kvrs

#endif
