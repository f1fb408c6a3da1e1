// Samples of sliding sums on their way into the sums and out of them, for the sources that compute them.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_SLIDING_RESULTS_INL_H
#define KVRS_FILTERS_SLIDING_RESULTS_INL_H

#include <cstring>
#include <type_traits>

#include "filters/fir_format-inl.h"
#include "filters/sliding_sums.h"
#include "frame/tile.h"
#include "frame/unaligned.h"
#include "kvrs/arith_float.h"
#include "kvrs/complex_parts.h"
#include "kvrs/divide.h"
#include "kvrs/reorder.h"

namespace kvrs::sliding {

// What samples D are computed in.
template <class D>
using Working = std::conditional_t<std::is_same_v<D, Kvr16s>, Kvr32f, D>;

template <class T>
T conjugated(T tap) {
  if constexpr (FirElement<T>::kComplex) tap.im = -tap.im;
  return tap;
}

// tap[k] for k in [from, from + count), as they are multiplied.
template <class D, class T>
void loadTaps(const Sums<D>& sums, size_t from, size_t count, T* taps) {
  const D* const first = sums.taps + (sums.reversed ? sums.tapsLen - 1 - from : from);
  const ptrdiff_t step = sums.reversed ? -1 : 1;
  for (size_t k = 0; k < count; ++k) {
    const D tap = unaligned::get(first + static_cast<ptrdiff_t>(k) * step);
    if constexpr (std::is_same_v<D, T>) {
      taps[k] = conjugated(tap);
    } else {
      taps[k] = static_cast<T>(tap);
    }
  }
}

// in[at + i] for i in [0, count), with the zeros around them.
template <class D, class T>
void loadInputs(const Sums<D>& sums, int64_t at, T* to, size_t count) {
  const int64_t end = at + static_cast<int64_t>(count), len = static_cast<int64_t>(sums.inLen);
  const int64_t from = at < 0 ? 0 : at, to_ = end < len ? end : len;
  if (from >= to_) {
    memset(static_cast<void*>(to), 0, count * sizeof(T));
    return;
  }
  const size_t before = static_cast<size_t>(from - at), there = static_cast<size_t>(to_ - from);
  memset(static_cast<void*>(to), 0, before * sizeof(T));
  if constexpr (std::is_same_v<D, T>) {
    memcpy(static_cast<void*>(to + before), sums.in + from, there * sizeof(T));
  } else {
    fir::Format<D, T>::fetch(sums.in + from, to + before, there);
  }
  memset(static_cast<void*>(to + before + there), 0, (count - before - there) * sizeof(T));
}

// The sums without what none of them needs.
template <class D>
Sums<D> trimmed(Sums<D> s) {
  const auto clamp = [](int64_t x, int64_t low, int64_t high) { return x < low ? low : x > high ? high : x; };
  const auto inLen = static_cast<int64_t>(s.inLen), tapsLen = static_cast<int64_t>(s.tapsLen),
             count = static_cast<int64_t>(s.count);
  const int64_t from = clamp(s.first, 0, inLen), to = clamp(s.first + count + tapsLen - 1, from, inLen);
  s.in += from;
  s.inLen = static_cast<size_t>(to - from);
  s.first -= from;
  const int64_t low = clamp(1 - count - s.first, 0, tapsLen), high = clamp(to - from - s.first, low, tapsLen);
  s.taps += s.reversed ? tapsLen - high : low;
  s.tapsLen = static_cast<size_t>(high - low);
  s.first += low;
  return s;
}

// Multiplies or divides sums begin, begin + 1 ... as the normalisation has it.
template <class D, class T>
void normalise(const Results<D>& results, T* sums, size_t begin, size_t count) {
  using Part = FirLane<T>;
  constexpr size_t kParts = sizeof(T) / sizeof(Part);
  auto* const parts = reinterpret_cast<Part*>(sums);
  if (results.norm == Norm::byLength) {
    const Part factor = Part{1} / static_cast<Part>(results.length);
    // The parts of as many complex numbers as there may be are no int.
    constexpr size_t kMost = size_t{1} << 24;
    for (size_t at = 0; at < count * kParts; at += kMost) {
      const int n = static_cast<int>(count * kParts - at < kMost ? count * kParts - at : kMost);
      if constexpr (sizeof(Part) == 4) {
        kvrsMulC_32f_I(factor, parts + at, n);
      } else {
        kvrsMulC_64f_I(factor, parts + at, n);
      }
    }
  } else if (results.norm == Norm::byProducts) {
    forTiles<Part>(count * kParts, [=](Part* divisors, size_t at, size_t n) {
      for (size_t i = 0; i < n; ++i) {
        divisors[i] = static_cast<Part>(results.length - (begin + (at + i) / kParts));
      }
      if constexpr (sizeof(Part) == 4) {
        kvrsDiv_32f_I(divisors, parts + at, static_cast<int>(n));
      } else {
        kvrsDiv_64f_I(divisors, parts + at, static_cast<int>(n));
      }
    });
  }
}

// Sums begin, begin + 1 ... that nobody needs any more after this.
template <class D, class T>
void store(const Results<D>& results, T* sums, size_t begin, size_t count) {
  normalise(results, sums, begin, count);
  if constexpr (std::is_same_v<D, T>) {
    memcpy(static_cast<void*>(results.dst + begin), sums, count * sizeof(T));
  } else {
    fir::Format<D, T>::store(sums, results.dst + begin, count, results.scaleFactor);
  }
}

inline void mirror(Kvr16s* dst, int len) {
  kvrsFlip_16u_I(reinterpret_cast<Kvr16u*>(dst), len);
}
inline void mirror(Kvr32f* dst, int len) {
  kvrsFlip_32f_I(dst, len);
}
inline void mirror(Kvr64f* dst, int len) {
  kvrsFlip_64f_I(dst, len);
}
inline void mirror(Kvr64s* dst, int len) {
  kvrsFlip_64f_I(reinterpret_cast<Kvr64f*>(dst), len);
}
inline void mirror(Kvr32fc* dst, int len) {
  kvrsFlip_32fc_I(dst, len);
  kvrsConj_32fc_I(dst, len);
}
inline void mirror(Kvr64fc* dst, int len) {
  kvrsFlip_64fc_I(dst, len);
  kvrsConj_64fc_I(dst, len);
}

}  // namespace kvrs::sliding

#endif
