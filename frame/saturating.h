// Saturating arithmetic on vectors, in lanes of every integer type.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_SATURATING_H
#define KVRS_FRAME_SATURATING_H

#include <limits>
#include <type_traits>

#include "frame/shift.h"
#include "frame/simd.h"
#include "frame/widen.h"

namespace kvrs {

// The type's minimum where v is negative, else its maximum.
template <class Dt, class V = hn::Vec<Dt>>
KVRS_INLINE V extremeOfSign(Dt d, V v) {
  using T = hn::TFromD<Dt>;
  const V highest = hn::Set(d, std::numeric_limits<T>::max());
  if constexpr (std::is_signed_v<T>) {
    return hn::Xor(hn::BroadcastSignBit(v), highest);
  } else {
    return highest;
  }
}

// What saturation leaves of v times an overwhelming factor: the extreme of its sign, or 0.
template <class Dt, class V = hn::Vec<Dt>>
KVRS_INLINE V saturatedBySign(Dt d, V v) {
  return hn::IfThenZeroElse(hn::Eq(v, hn::Zero(d)), extremeOfSign(d, v));
}

template <class Dt, class V = hn::Vec<Dt>>
KVRS_INLINE V saturatedAdd(Dt d, V a, V b) {
  using T = hn::TFromD<Dt>;
  if constexpr (sizeof(T) <= 2) {
    return hn::SaturatedAdd(a, b);
  } else if constexpr (std::is_signed_v<T>) {
    const V sum = hn::Add(a, b);
    // Overflow: the signs of a and b agree, and the sum has the other one.
    const V overflow = hn::AndNot(hn::Xor(a, b), hn::Xor(a, sum));
    return hn::IfVecThenElse(hn::BroadcastSignBit(overflow), extremeOfSign(d, a), sum);
  } else {
    const V sum = hn::Add(a, b);
    return hn::Or(sum, hn::VecFromMask(d, hn::Lt(sum, a)));
  }
}

// a - b.
template <class Dt, class V = hn::Vec<Dt>>
KVRS_INLINE V saturatedSub(Dt d, V a, V b) {
  using T = hn::TFromD<Dt>;
  if constexpr (sizeof(T) <= 2) {
    return hn::SaturatedSub(a, b);
  } else if constexpr (std::is_signed_v<T>) {
    const V difference = hn::Sub(a, b);
    const V overflow = hn::And(hn::Xor(a, b), hn::Xor(a, difference));
    return hn::IfVecThenElse(hn::BroadcastSignBit(overflow), extremeOfSign(d, a), difference);
  } else {
    return hn::IfThenElseZero(hn::Gt(a, b), hn::Sub(a, b));
  }
}

// v * 2^n, for n up to the lanes' width, by which every number but 0 leaves the range.
template <class Dt, class V = hn::Vec<Dt>>
KVRS_INLINE V saturatedShiftLeft(Dt d, V v, int n) {
  const V shifted = shiftLeftBy(d, v, n);
  const auto fits = hn::Eq(shiftRightBy(d, shifted, n), v);
  return hn::IfThenElse(fits, shifted, extremeOfSign(d, v));
}

// Two vectors saturated to lanes of half the width, those of `first` and then those of `second`.
template <class Dh, class V>
KVRS_INLINE hn::Vec<Dh> saturatedToHalf(Dh d, V first, V second) {
  const auto blocks = hn::ReorderDemote2To(d, first, second);  // half a block from each in turn
  if constexpr (sizeof(blocks.raw) == 64) {
    alignas(64) static constexpr int64_t kOrder[8] = {0, 2, 4, 6, 1, 3, 5, 7};
    const auto order = hn::Load(hn::Repartition<int64_t, Dh>(), kOrder);
    return {_mm512_permutexvar_epi64(order.raw, blocks.raw)};
  } else if constexpr (sizeof(blocks.raw) == 32) {
    return {_mm256_permute4x64_epi64(blocks.raw, 0xD8)};  // 0, 2, 1, 3
  } else {
    return blocks;
  }
}

// 64-bit lanes saturated to 32 bits: `even` in lanes 2i, `odd` in lanes 2i+1.
template <class D32, class V64>
KVRS_INLINE hn::Vec<D32> saturatedHalves(D32 d, V64 even, V64 odd) {
  const auto low = lowHalves(d, even, odd);
  const auto high = highHalves(d, even, odd);
  // A number fits where its high half is nothing but the sign of its low one.
  return hn::IfThenElse(hn::Eq(high, hn::BroadcastSignBit(low)), low, extremeOfSign(d, high));
}

}  // namespace kvrs

#endif
