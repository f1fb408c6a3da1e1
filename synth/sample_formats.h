// What samples that were computed as doubles become in each element type. Complex samples are arrays of their parts.
// SPDX-License-Identifier: MIT
#ifndef KVRS_SYNTH_SAMPLE_FORMATS_H
#define KVRS_SYNTH_SAMPLE_FORMATS_H

#include <type_traits>

#include "frame/simd.h"
#include "frame/to_integer.h"

namespace kvrs {

// The type of a real sample, or of the parts of a complex one, and how many of them there are.
template <class T>
struct SampleParts {
  using Part = T;
  static constexpr size_t kCount = 1;
};
template <>
struct SampleParts<Kvr16sc> {
  using Part = Kvr16s;
  static constexpr size_t kCount = 2;
};
template <>
struct SampleParts<Kvr32fc> {
  using Part = Kvr32f;
  static constexpr size_t kCount = 2;
};
template <>
struct SampleParts<Kvr64fc> {
  using Part = Kvr64f;
  static constexpr size_t kCount = 2;
};
template <class T>
using PartOf = typename SampleParts<T>::Part;
template <class T>
inline constexpr size_t kPartsOf = SampleParts<T>::kCount;

// v + 0.5 where v is at least 0, else v - 0.5: truncated, this is v to nearest with halves away from zero.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V awayByHalf(D d, V v) {
  const V half = hn::Set(d, 0.5);
  return hn::Add(v, hn::IfThenElse(hn::Ge(v, hn::Zero(d)), half, hn::Neg(half)));
}

enum class Integer { truncated, roundedAway };

// Doubles to singles or 16-bit integers, or as they are.
template <Integer integer>
struct FromDouble {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V v) const {
    using T = hn::TFromD<D>;
    if constexpr (std::is_same_v<T, double>) {
      return v;
    } else if constexpr (std::is_same_v<T, float>) {
      return hn::DemoteTo(d, v);
    } else {
      if constexpr (integer == Integer::roundedAway) v = awayByHalf(hn::DFromV<V>(), v);
      return hn::DemoteTo(d, truncateInt32(hn::Rebind<int32_t, D>(), v));
    }
  }
};

// Singles to 16-bit integers, in the current rounding mode, or as they are.
struct FromSingle {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V v) const {
    if constexpr (std::is_same_v<hn::TFromD<D>, int16_t>) {
      return hn::DemoteTo(d, nearestInt32(hn::Rebind<int32_t, D>(), v));
    } else {
      return v;
    }
  }
};

}  // namespace kvrs

#endif
