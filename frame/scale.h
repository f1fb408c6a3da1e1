// The scale-factor rule of the _Sfs functions: r * 2^(-scaleFactor), rounded to nearest with ties to even,
// then saturated.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_SCALE_H
#define KVRS_FRAME_SCALE_H

#include <bit>
#include <cstdint>
#include <limits>
#include <type_traits>

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

// 2^(-scaleFactor) of any scale factor, as halving or doubling 1 has it: a subnormal number, 0 or infinity where it
// leaves the range of normal ones.
template <class F>
constexpr F scaleOfAny(int scaleFactor) {
  using L = std::numeric_limits<F>;
  constexpr int kLeast = L::min_exponent - 1, kMost = L::max_exponent - 1;  // of normal numbers
  if (scaleFactor < -kMost) return L::infinity();
  if (scaleFactor <= -kLeast) return powerOfTwo<F>(-scaleFactor);
  const int below = scaleFactor + kLeast;
  if (below >= L::digits) return 0;
  return std::bit_cast<F>(hwy::UnsignedFromSize<sizeof(F)>{1} << (L::digits - 1 - below));
}

// (v + 2^(k-1) - 1 + x) >> k, where x is 1 if floor(v / 2^k) is odd or the lowest bit of `sticky` is set. That
// means v / 2^k rounded to even, of a number v whose lost bits below the lowest are gathered in `sticky`. k is at
// least 1; at most w in unsigned lanes of w <= 16 bits, else w - 1. No intermediate overflows:
//
//  - u8, u16: where x is 0, v is lowered by 1 (a v of 0 stays, and gives 0 all the same); then halves round
//    up, (v + 2^(k-1)) >> k, which is the rounded-up average with 2^(k-1) - 1, shifted by the other k - 1.
//  - i16: likewise, and halves round up in the product with 2^(15-k) that keeps bits 15 and up. A v of -2^15
//    stays where it should be lowered: it is a multiple of 2^k, for which one less gives the same.
//  - others: floor(v / 2^k), plus 1 where the rest is above half - x. With mask registers that is where the
//    highest lost bit is set and one of those that round it up: the lowest of floor, the other lost ones.
struct Nothing {};  // in place of `sticky`

template <class Dt, class V, class Sticky>
KVRS_INLINE V shiftRightEven(Dt d, V v, [[maybe_unused]] Sticky sticky, int k) {
  using T = hn::TFromD<Dt>;
  const V one = hn::Set(d, T{1});
  const V floor = shiftRightBy(d, v, k);
  V up = floor;
  if constexpr (!std::is_same_v<Sticky, Nothing>) up = hn::Or(sticky, floor);
  if constexpr (std::is_unsigned_v<T> && sizeof(T) <= 2) {
    const V lowered = hn::SaturatedSub(v, hn::AndNot(up, one));
    const V bias = hn::Set(d, static_cast<T>((1u << (k - 1)) - 1));
    return shiftRightBy(d, hn::AverageRound(lowered, bias), k - 1);
  } else if constexpr (std::is_same_v<T, int16_t>) {
    const V lowered = hn::SaturatedSub(v, hn::AndNot(up, one));
    return hn::MulFixedPoint15(lowered, hn::Set(d, static_cast<T>(1 << (15 - k))));
  } else if constexpr (kMaskRegisters) {
    const uint64_t half = uint64_t{1} << (k - 1);
    const V others = hn::Set(d, static_cast<T>(2 * half | (half - 1)));
    const auto isHalf = hn::TestBit(v, hn::Set(d, static_cast<T>(half)));
    if constexpr (std::is_same_v<Sticky, Nothing>) {
      return hn::IfThenElse(bothMasks(isHalf, hn::TestBit(v, others)), hn::Add(floor, one), floor);
    } else {
      const V round = hn::Or(hn::And(v, others), hn::And(sticky, one));
      return hn::IfThenElse(bothMasks(isHalf, hn::TestBit(round, round)), hn::Add(floor, one), floor);
    }
  } else {
    // Compared as signed numbers, which the rest is: it has at most w - 1 bits.
    const hn::RebindToSigned<Dt> di;
    const V rest = hn::And(v, hn::Set(d, static_cast<T>((uint64_t{1} << k) - 1)));
    const V limit = hn::Sub(hn::Set(d, static_cast<T>(uint64_t{1} << (k - 1))), hn::And(up, one));
    if constexpr (sizeof(T) <= 4) {
      const auto above = hn::Gt(hn::BitCast(di, rest), hn::BitCast(di, limit));
      return hn::Sub(floor, hn::BitCast(d, hn::VecFromMask(di, above)));
    } else {
      // 64-bit lanes cannot be compared in all modules; both numbers are small enough for their difference.
      const hn::RebindToUnsigned<Dt> du;
      return hn::Add(floor, hn::BitCast(d, hn::ShiftRight<63>(hn::BitCast(du, hn::Sub(limit, rest)))));
    }
  }
}

template <class Dt, class V = hn::Vec<Dt>>
KVRS_INLINE V shiftRightEven(Dt d, V v, int k) {
  return shiftRightEven(d, v, Nothing(), k);
}

// The same where the addition of 2^(k-1) does not leave v's lanes: the formula as it stands.
template <class Dt, class V = hn::Vec<Dt>>
KVRS_INLINE V shiftRightEvenWithRoom(Dt d, V v, int k) {
  using T = hn::TFromD<Dt>;
  const V one = hn::Set(d, T{1});
  const V biased = hn::Add(v, hn::Set(d, static_cast<T>((uint64_t{1} << (k - 1)) - 1)));
  if constexpr (kMaskRegisters) {
    const auto odd = hn::TestBit(v, hn::Set(d, static_cast<T>(uint64_t{1} << k)));
    return shiftRightBy(d, hn::IfThenElse(odd, hn::Add(biased, one), biased), k);
  } else {
    return shiftRightBy(d, hn::Add(biased, hn::And(shiftRightBy(d, v, k), one)), k);
  }
}

}  // namespace kvrs

#endif
