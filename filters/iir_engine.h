// Filtering with the states of recursive filters: samples of any type come in by load() and leave by store(), and what lies
// between knows working numbers alone.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_IIR_ENGINE_H
#define KVRS_FILTERS_IIR_ENGINE_H

#include <type_traits>

#include "filters/iir_state.h"
#include "frame/array_length.h"
#include "frame/rounding.h"
#include "frame/scale.h"
#include "frame/tile.h"
#include "frame/to_integer.h"

namespace kvrs::iir {

// Samples that are filtered at a time. It is also where a stream is cut, which decides by the length of a piece whether it
// runs by look-ahead.
inline constexpr size_t kTile = 1024;

// Filters at most kTile samples; `in` and `out` are one array or do not overlap, and may have any alignment.
template <class W>
void filterTile(State<W>& state, const W* in, W* out, size_t len);
extern template void filterTile<Kvr32f>(State<Kvr32f>&, const Kvr32f*, Kvr32f*, size_t);
extern template void filterTile<Kvr32fc>(State<Kvr32fc>&, const Kvr32fc*, Kvr32fc*, size_t);
extern template void filterTile<Kvr64f>(State<Kvr64f>&, const Kvr64f*, Kvr64f*, size_t);
extern template void filterTile<Kvr64fc>(State<Kvr64fc>&, const Kvr64fc*, Kvr64fc*, size_t);

// One sample through one section, in the stated order.
template <class W>
KVRS_INLINE W transposedStep(const Section<W>& section, W* d, W x) {
  const W y = plus(times(section.b0, x), d[0]);
  d[0] = minus(plus(times(section.b1, x), d[1]), times(section.a1, y));
  d[1] = minus(times(section.b2, x), times(section.a2, y));
  return y;
}

// A single sample, in the stated order. Not for df1 forms.
template <class W>
KVRS_INLINE W filterSample(State<W>& state, W x) {
  W* d = state.dlyLine.present();
  if (state.form == Form::direct) {
    const auto order = static_cast<size_t>(state.dlyLen);
    const W* b = state.taps.present();
    const W* a = b + order;
    const W y = plus(times(b[0], x), d[0]);
    for (size_t k = 1; k <= order; ++k) d[k - 1] = plus(minus(times(b[k], x), times(a[k], y)), d[k]);
    return y;
  }
  const auto* section = reinterpret_cast<const Section<W>*>(state.taps.present());
  for (int i = 0; i < state.numBq; ++i, ++section, d += 2) x = transposedStep(*section, d, x);
  return x;
}

namespace samples {

inline void load(const Kvr16s* from, Kvr32f* to, int len) {
  kvrsConvert_16s32f(from, to, len);
}
inline void load(const Kvr16s* from, Kvr64f* to, int len) {
  kvrsConvert_16s64f_Sfs(from, to, len, 0);
}
inline void load(const Kvr32s* from, Kvr64f* to, int len) {
  kvrsConvert_32s64f(from, to, len);
}
inline void load(const Kvr32f* from, Kvr64f* to, int len) {
  kvrsConvert_32f64f(from, to, len);
}
inline void store(const Kvr32f* from, Kvr16s* to, int len, int scaleFactor) {
  kvrsConvert_32f16s_Sfs(from, to, len, kvrRoundNear, scaleFactor);
}
inline void store(const Kvr64f* from, Kvr16s* to, int len, int scaleFactor) {
  kvrsConvert_64f16s_Sfs(from, to, len, kvrRoundNear, scaleFactor);
}
inline void store(const Kvr64f* from, Kvr32s* to, int len, int scaleFactor) {
  kvrsConvert_64f32s_Sfs(from, to, len, kvrRoundNear, scaleFactor);
}
inline void store(const Kvr64f* from, Kvr32f* to, int len, int) {
  kvrsConvert_64f32f(from, to, len);
}

// The scale is a number of type T: beyond these it would be 0 or infinite, and 0 times infinity is not 0.
template <class T>
constexpr int boundedScale(int scaleFactor) {
  constexpr int most = sizeof(T) == 4 ? 126 : 1022;
  return scaleFactor > most ? most : scaleFactor < -1 - most ? -1 - most : scaleFactor;
}

template <class S, class T>
KVRS_INLINE S rounded(T y, int scaleFactor) {
  if constexpr (kIsComplex<S>) {
    return {rounded<Part<S>>(y.re, scaleFactor), rounded<Part<S>>(y.im, scaleFactor)};
  } else if constexpr (std::is_floating_point_v<S>) {
    return static_cast<S>(y);
  } else {
    const auto convert = [=] {
      const Lanes<T, 1> d;
      const hn::Rebind<S, decltype(d)> to;
      const auto scaled = hn::Set(d, y * powerOfTwo<T>(-boundedScale<T>(scaleFactor)));
      return hn::GetLane(
          toInteger<false>(to, scaled, std::numeric_limits<S>::min(), std::numeric_limits<S>::max()));
    };
    // The detour only where it is needed.
    return currentRounding() == Rounding::nearest ? convert() : underRounding(Rounding::nearest, convert);
  }
}

}  // namespace samples

template <class S, class W>
void filter(State<W>& state, const S* src, S* dst, size_t len, int scaleFactor = 0) {
  if constexpr (std::is_same_v<S, W>) {
    for (size_t begin = 0; begin < len; begin += kTile) {
      filterTile(state, src + begin, dst + begin, len - begin < kTile ? len - begin : kTile);
    }
  } else {
    forTiles<W, kTile>(len, [&](W* tile, size_t begin, size_t count) {
      const int parts = static_cast<int>(count * kParts<W>);
      samples::load(reinterpret_cast<const Part<S>*>(src + begin), reinterpret_cast<Part<W>*>(tile), parts);
      filterTile<W>(state, tile, tile, count);
      samples::store(reinterpret_cast<const Part<W>*>(tile), reinterpret_cast<Part<S>*>(dst + begin), parts,
                     samples::boundedScale<Part<W>>(scaleFactor));
    });
  }
}

template <class S, class W>
KVRS_INLINE void filterOne(State<W>& state, S val, S* dst, int scaleFactor = 0) {
  if constexpr (std::is_same_v<S, W>) {
    setAt(dst, 0, filterSample(state, val));
  } else {
    setAt(dst, 0, samples::rounded<S>(filterSample(state, converted<W>(val)), scaleFactor));
  }
}

// What exports of all types share.

template <class S, class State, class... Scale>
KVRS_INLINE KvrStatus checkedFilter(const S* src, S* dst, int len, State* state, Scale... scaleFactor) {
  KVRS_CHECK(pointers(state, src, dst), length(len, src, dst), contextOf(state));
  filter<S, typename State::Working>(*state, src, dst, static_cast<size_t>(len), scaleFactor...);
  return kvrStatusOk;
}

template <class S, class State, class... Scale>
KVRS_INLINE KvrStatus checkedOne(S val, S* dst, State* state, Scale... scaleFactor) {
  KVRS_CHECK(pointers(state, dst), contextOf(state, false));
  filterOne<S, typename State::Working>(*state, val, dst, scaleFactor...);
  return kvrStatusOk;
}

}  // namespace kvrs::iir

#endif
