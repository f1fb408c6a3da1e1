// The order of magnitude of a vector's largest element.
// SPDX-License-Identifier: MIT
#include <bit>

#include "frame/check.h"
#include "frame/reduce.h"
#include "frame/unaligned.h"
#include "kvrs/extremes.h"
#include "stats/extremes-inl.h"

namespace kvrs {
namespace {

// The union of the bits of all magnitudes, those of the lowest integer as they are: its top bit is that of the largest.
struct MagnitudeBits {
  template <class V>
  KVRS_INLINE void operator()(V& bits, V x) const {
    bits = hn::Or(bits, hn::Abs(x));
  }
  template <class V>
  KVRS_INLINE void join(V& a, V b) const {
    a = hn::Or(a, b);
  }
};
struct OrLanes {
  template <class V>
  KVRS_INLINE V operator()(V a, V b) const {
    return hn::Or(a, b);
  }
};

template <class T>
KvrStatus integerOrder(const T* src, int len, int* order) {
  KVRS_CHECK(lengthOf<T>(len), pointers(src, order));
  const auto zero = hn::Zero(Lanes<T, kLanes<T>>());
  const T bits =
      foldLanes(reduce<T, kFewAccumulators>(MagnitudeBits(), zero, static_cast<size_t>(len), src), OrLanes());
  unaligned::put(static_cast<int>(std::bit_width(static_cast<std::make_unsigned_t<T>>(bits))), order);
  return kvrStatusOk;
}

// Exponents are compared as 16-bit integers, which every processor does at once: all bits of an exponent are in the top 16
// of a float, the other lanes are masked to 0.
template <class F>
struct Exponent;
template <>
struct Exponent<Kvr32f> {
  using Bits = Kvr32s;
  static constexpr Bits kMask = 0x7F800000, kMagnitude = 0x7FFFFFFF;
  static constexpr Kvr16s kTop = 0x7F80;
  static constexpr int kShift = 7, kBelowOne = 126;
};
template <>
struct Exponent<Kvr64f> {
  using Bits = Kvr64s;
  static constexpr Bits kMask = 0x7FF0000000000000, kMagnitude = 0x7FFFFFFFFFFFFFFF;
  static constexpr Kvr16s kTop = 0x7FF0;
  static constexpr int kShift = 4, kBelowOne = 1022;
};

template <class E, bool kFiniteOnly>
struct LargestExponent {
  template <class V, class Vb>
  KVRS_INLINE void operator()(V& best, Vb x) const {
    const hn::DFromV<V> d;
    V exponents = hn::BitCast(d, hn::And(x, hn::Set(hn::DFromV<Vb>(), E::kMask)));
    // The masked lanes are 0 already.
    if (kFiniteOnly) exponents = hn::IfThenZeroElse(hn::Eq(exponents, hn::Set(d, E::kTop)), exponents);
    best = hn::Max(best, exponents);
  }
  template <class V>
  KVRS_INLINE void join(V& a, V b) const {
    a = hn::Max(a, b);
  }
};

template <class F, bool kFiniteOnly, class E = Exponent<F>>
[[gnu::noinline]] int largestExponent(const F* src, size_t len) {
  const auto zero = hn::Zero(Lanes<Kvr16s, kLanes<Kvr16s>>());
  const auto* bits = reinterpret_cast<const typename E::Bits*>(src);
  const auto best =
      reduce<typename E::Bits, kFewAccumulators>(LargestExponent<E, kFiniteOnly>(), zero, len, bits);
  return foldLanes(best, Largest()) >> E::kShift;
}

// Whether there is a number other than 0 where no finite one has an exponent.
template <class F, class E = Exponent<F>>
[[gnu::noinline]] bool anySubnormal(const F* src, size_t len) {
  const auto isSubnormal = [](auto x) KVRS_UNROLLED {
    const hn::DFromV<decltype(x)> d;
    const auto magnitude = hn::And(x, hn::Set(d, E::kMagnitude));
    const auto isZero = hn::Eq(magnitude, hn::Zero(d));
    const auto hasExponent = hn::Ne(hn::And(x, hn::Set(d, E::kMask)), hn::Zero(d));
    return hn::Not(hn::Or(isZero, hasExponent));
  };
  return findFirst(reinterpret_cast<const typename E::Bits*>(src), len, isSubnormal) != len;
}

template <class F>
KvrStatus floatOrder(const F* src, int len, int* order) {
  KVRS_CHECK(lengthOf<F>(len), pointers(src, order));
  using E = Exponent<F>;
  const size_t n = static_cast<size_t>(len);
  int exponent = largestExponent<F, false>(src, n);
  const bool flat = exponent == E::kTop >> E::kShift;
  if (flat) exponent = largestExponent<F, true>(src, n);
  unaligned::put(exponent == 0 && !anySubnormal(src, n) ? 0 : exponent - E::kBelowOne, order);
  return flat ? kvrStatusMaxOrderFlat : kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMaxOrder_16s(const Kvr16s* src, int len, int* order) noexcept {
  return integerOrder(src, len, order);
}
KvrStatus kvrsMaxOrder_32s(const Kvr32s* src, int len, int* order) noexcept {
  return integerOrder(src, len, order);
}
KvrStatus kvrsMaxOrder_32f(const Kvr32f* src, int len, int* order) noexcept {
  return floatOrder(src, len, order);
}
KvrStatus kvrsMaxOrder_64f(const Kvr64f* src, int len, int* order) noexcept {
  return floatOrder(src, len, order);
}
