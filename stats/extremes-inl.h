// The extremes of a vector as reductions.
// SPDX-License-Identifier: MIT
#ifndef KVRS_STATS_EXTREMES_INL_H
#define KVRS_STATS_EXTREMES_INL_H

#include <cstddef>
#include <limits>
#include <type_traits>

#include "frame/reduce.h"
#include "frame/unaligned.h"

namespace kvrs {

// Of two vectors; where a lane of x is NaN it is that of `best`.
struct Largest {
  static constexpr bool before(auto a, auto b) { return a > b; }
  template <class V>
  KVRS_INLINE V operator()(V x, V best) const {
    return hn::Max(x, best);
  }
  template <class T>
  static constexpr T last() {
    using L = std::numeric_limits<T>;
    return L::has_infinity ? -L::infinity() : L::lowest();
  }
};
struct Smallest {
  static constexpr bool before(auto a, auto b) { return a < b; }
  template <class V>
  KVRS_INLINE V operator()(V x, V best) const {
    return hn::Min(x, best);
  }
  template <class T>
  static constexpr T last() {
    using L = std::numeric_limits<T>;
    return L::has_infinity ? L::infinity() : L::max();
  }
};

// What is compared: the element, or its magnitude, that of the lowest integer being the highest.
struct Itself {
  template <class V>
  KVRS_INLINE V operator()(V x) const {
    return x;
  }
};
struct Magnitude {
  template <class V>
  KVRS_INLINE V operator()(V x) const {
    const hn::DFromV<V> d;
    if constexpr (sizeof(hn::TFromV<V>) == 2) {
      return hn::Max(x, hn::SaturatedSub(hn::Zero(d), x));
    } else {
      const V magnitude = hn::Abs(x);
      return hn::Add(magnitude, hn::BroadcastSignBit(magnitude));
    }
  }
};

template <class Pick, class Of>
struct ExtremeOf {
  static constexpr bool kIdempotent = true;

  template <class V>
  KVRS_INLINE void operator()(V& best, V x) const {
    best = Pick()(Of()(x), best);
  }
  template <class V>
  KVRS_INLINE void join(V& a, V b) const {
    a = Pick()(b, a);
  }

  // For findExtreme().
  template <class T>
  KVRS_INLINE T best(const T* src, size_t len) const {
    const auto start = hn::Set(Lanes<T, kLanes<T>>(), Pick::template last<T>());
    return foldLanes(reduce<T, kFewAccumulators>(*this, start, len, src), Pick());
  }
  template <class T>
  static constexpr bool better(T a, T b) {
    return Pick::before(a, b);
  }
  template <class T>
  static KVRS_INLINE auto is(T value) {
    return [value](auto x)
               KVRS_UNROLLED { return hn::Eq(Of()(x), hn::Set(hn::DFromV<decltype(x)>(), value)); };
  }
};

// Both extremes at once.
template <class T>
struct MinAndMax {
  T min, max;
};
struct BothExtremes {
  static constexpr bool kIdempotent = true;

  template <class V>
  KVRS_INLINE void operator()(MinAndMax<V>& best, V x) const {
    best.min = hn::Min(x, best.min);
    best.max = hn::Max(x, best.max);
  }
  template <class V>
  KVRS_INLINE void join(MinAndMax<V>& a, MinAndMax<V> b) const {
    a.min = hn::Min(b.min, a.min);
    a.max = hn::Max(b.max, a.max);
  }

  template <class T>
  static KVRS_INLINE MinAndMax<T> best(const T* src, size_t len) {
    const Lanes<T, kLanes<T>> d;
    const MinAndMax<hn::Vec<decltype(d)>> start{hn::Set(d, Smallest::last<T>()),
                                                hn::Set(d, Largest::last<T>())};
    const auto both = reduce<T, 2>(BothExtremes(), start, len, src);
    return {foldLanes(both.min, Smallest()), foldLanes(both.max, Largest())};
  }
};

// findExtreme() for both in one pass.
template <class T>
KVRS_INLINE MinAndMax<Found<T>> findBothExtremes(const T* src, size_t len) {
  using Min = ExtremeOf<Smallest, Itself>;
  using Max = ExtremeOf<Largest, Itself>;
  FirstBlock<T> min, max;
  forPieces(len, kSearchedBytes / sizeof(T), [&](size_t begin, size_t count) KVRS_UNROLLED {
    const MinAndMax<T> both = BothExtremes::best(src + begin, count);
    min.meet(Min(), both.min, begin, count);
    max.meet(Max(), both.max, begin, count);
  });
  return {min.find(Min(), src), max.find(Max(), src)};
}

}  // namespace kvrs

#endif
