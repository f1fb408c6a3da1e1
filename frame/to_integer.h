// Floats to integers with the processor's own conversions, and the bounds that make them saturate.
//
// hn::NearestInt and hn::ConvertTo repair results out of range after the conversion; here values are bounded
// before it, which costs less and leaves one rule for NaN in all types: the bounds take it to the lowest
// value, what the processor's conversions make of it too.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_TO_INTEGER_H
#define KVRS_FRAME_TO_INTEGER_H

#include <cstdint>

#include "frame/simd.h"

namespace kvrs {

// max(lowest, min(highest, v)); NaN becomes `lowest`. The order of operands matters: both operations return
// their second operand if one is NaN.
template <class D, class V = hn::Vec<D>, class T = hn::TFromD<D>>
KVRS_INLINE V bound(D d, V v, T lowest, T highest) {
  return hn::Max(hn::Min(hn::Set(d, highest), v), hn::Set(d, lowest));
}

// v moved away from 0 by a number that is not negative.
template <class V>
KVRS_INLINE V awayFromZero(V v, hn::TFromV<V> by) {
  return hn::Add(v, hn::CopySignToAbs(hn::Set(hn::DFromV<V>(), by), v));
}

// What truncation makes of this is v rounded to nearest, ties away from zero. (The float before 0.5 comes out as 1.)
template <class V>
KVRS_INLINE V withHalf(V v) {
  return awayFromZero(v, hn::TFromV<V>(0.5));
}

// Of values within the range of 32 bits: to the nearest integer in the processor's current mode, or toward
// zero. Di is the tag of as many 32-bit integers as there are floats in v.
template <class Di, class V>
KVRS_INLINE hn::Vec<Di> nearestInt32(Di, V v) {
  constexpr bool isDouble = sizeof(hn::TFromV<V>) == 8;
  if constexpr (sizeof(v.raw) == 64) {
    if constexpr (isDouble) {
      return {_mm512_cvtpd_epi32(v.raw)};
    } else {
      return {_mm512_cvtps_epi32(v.raw)};
    }
  } else if constexpr (sizeof(v.raw) == 32) {
    if constexpr (isDouble) {
      return {_mm256_cvtpd_epi32(v.raw)};
    } else {
      return {_mm256_cvtps_epi32(v.raw)};
    }
  } else if constexpr (isDouble) {
    return {_mm_cvtpd_epi32(v.raw)};
  } else {
    return {_mm_cvtps_epi32(v.raw)};
  }
}

template <class Di, class V>
KVRS_INLINE hn::Vec<Di> truncateInt32(Di, V v) {
  constexpr bool isDouble = sizeof(hn::TFromV<V>) == 8;
  if constexpr (sizeof(v.raw) == 64) {
    if constexpr (isDouble) {
      return {_mm512_cvttpd_epi32(v.raw)};
    } else {
      return {_mm512_cvttps_epi32(v.raw)};
    }
  } else if constexpr (sizeof(v.raw) == 32) {
    if constexpr (isDouble) {
      return {_mm256_cvttpd_epi32(v.raw)};
    } else {
      return {_mm256_cvttps_epi32(v.raw)};
    }
  } else if constexpr (isDouble) {
    return {_mm_cvttpd_epi32(v.raw)};
  } else {
    return {_mm_cvttps_epi32(v.raw)};
  }
}

// The same to 64 bits, where kInt64Conversions.
template <class Di, class V>
KVRS_INLINE hn::Vec<Di> nearestInt64(Di, V v) {
  if constexpr (sizeof(v.raw) == 64) {
    return {_mm512_cvtpd_epi64(v.raw)};
  } else if constexpr (sizeof(v.raw) == 32) {
    return {_mm256_cvtpd_epi64(v.raw)};
  } else {
    return {_mm_cvtpd_epi64(v.raw)};
  }
}

template <class Di, class V>
KVRS_INLINE hn::Vec<Di> truncateInt64(Di, V v) {
  if constexpr (sizeof(v.raw) == 64) {
    return {_mm512_cvttpd_epi64(v.raw)};
  } else if constexpr (sizeof(v.raw) == 32) {
    return {_mm256_cvttpd_epi64(v.raw)};
  } else {
    return {_mm_cvttpd_epi64(v.raw)};
  }
}

// Float lanes of Dt's count as integers of Dt: saturated and, where `truncate` is not set, rounded in the
// current mode. NaN becomes the lowest value.
template <bool truncate, class Dt, class V>
KVRS_INLINE hn::Vec<Dt> toInteger(Dt dt, V v, hn::TFromD<Dt> lowest, hn::TFromD<Dt> highest) {
  using T = hn::TFromD<Dt>;
  using F = hn::TFromV<V>;
  const hn::Rebind<F, Dt> df;
  const auto convert = [](auto di, auto x) {
    if constexpr (sizeof(T) == 8) {
      return truncate ? truncateInt64(di, x) : nearestInt64(di, x);
    } else {
      return truncate ? truncateInt32(di, x) : nearestInt32(di, x);
    }
  };
  if constexpr (sizeof(F) == sizeof(T)) {
    // The highest integer of all bits is no float; what lies above all floats below it is at least 2^31 or 2^63.
    if (highest == hwy::LimitsMax<T>()) {
      const F beyond = static_cast<F>(uint64_t{1} << (8 * sizeof(T) - 1));
      const auto tooLarge = hn::RebindMask(dt, hn::Ge(v, hn::Set(df, beyond)));
      const auto converted = convert(dt, hn::Max(v, hn::Set(df, -beyond)));
      return hn::IfThenElse(tooLarge, hn::Set(dt, highest), converted);
    }
    return convert(dt, bound(df, v, static_cast<F>(lowest), static_cast<F>(highest)));
  } else {
    const hn::Rebind<int32_t, Dt> di;
    const auto converted = convert(di, bound(df, v, static_cast<F>(lowest), static_cast<F>(highest)));
    if constexpr (sizeof(T) == 4) {
      return converted;
    } else if constexpr (sizeof(T) == 1 && sizeof(converted.raw) == 64) {
      return {_mm512_cvtepi32_epi8(
          converted.raw)};  // one instruction instead of four, as nothing is out of range
    } else {
      return hn::DemoteTo(dt, converted);
    }
  }
}

}  // namespace kvrs

#endif
