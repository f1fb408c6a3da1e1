// Taps of integer filters: held as 16-bit integers and a power of two.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_TAPS_H
#define KVRS_FILTERS_FIR_TAPS_H

#include <cmath>
#include <type_traits>

#include "filters/fir_state.h"
#include "frame/saturate.h"

namespace kvrs::fir {

// op of a number, or of the parts of a complex one.
template <class T, class X, class Op>
T ofParts(X value, Op op) {
  if constexpr (requires { value.re; }) {
    return {op(value.re), op(value.im)};
  } else {
    return op(value);
  }
}

// The largest magnitude of a tap or of the parts of one.
template <class Magnitude, class X>
Magnitude largestPart(const X* taps, size_t tapsLen) {
  Magnitude largest = 0;
  const auto look = [&](auto part) {
    const Magnitude magnitude = part < 0 ? -static_cast<Magnitude>(part) : static_cast<Magnitude>(part);
    if (magnitude > largest) largest = magnitude;
    return part;
  };
  for (size_t i = 0; i < tapsLen; ++i) ofParts<X>(unaligned::get(taps + i), look);
  return largest;
}

// Stores taps divided by 2^shift and brings the tables up to date; factor + shift goes with them.
template <class T, class X>
KvrStatus setShiftedTaps(State<T>* state, const X* taps, int factor, int shift) {
  const size_t tapsLen = static_cast<size_t>(state->tapsLen);
  T* tapsRev = state->tapsRev.get();
  for (size_t i = 0; i < tapsLen; ++i) {
    tapsRev[tapsLen - 1 - i] =
        ofParts<T>(unaligned::get(taps + i), [=](auto part) { return static_cast<Kvr16s>(part >> shift); });
  }
  state->tapsFactor = static_cast<int32_t>(static_cast<uint32_t>(factor) + static_cast<uint32_t>(shift));
  return tapsChanged(state);
}

// Integers and the power of two that they are to be multiplied with.
template <class X>
struct FactoredTaps {
  const X* at;
  int factor;

  template <class T>
  KvrStatus storeIn(State<T>* state) const {
    const size_t tapsLen = static_cast<size_t>(state->tapsLen);
    int shift = 0;
    if constexpr (std::is_same_v<X, Kvr16s>) {
      for (size_t i = 0; i < tapsLen; ++i) {
        if (unaligned::get(at + i) == -32768) shift = 1;
      }
    } else {
      for (int64_t largest = largestPart<int64_t>(at, tapsLen); largest > 32766; largest >>= 1) ++shift;
    }
    return setShiftedTaps(state, at, factor, shift);
  }
};

// Floats: times a power of two that has them use the 16 bits.
template <class X>
struct FloatTaps {
  const X* at;

  template <class T>
  KvrStatus storeIn(State<T>* state) const {
    const size_t tapsLen = static_cast<size_t>(state->tapsLen);
    double largest = largestPart<Kvr32f>(at, tapsLen), scale = 1;
    int factor = 0;
    // Of taps that are all 0, or not all finite, no power is the right one.
    if (largest > 0 && std::isfinite(largest)) {
      for (; largest > 32767; largest /= 2, scale /= 2) ++factor;
      if (factor == 0) {
        for (; 2 * largest < 32767; largest *= 2, scale *= 2) --factor;
      }
    }
    T* tapsRev = state->tapsRev.get();
    for (size_t i = 0; i < tapsLen; ++i) {
      tapsRev[tapsLen - 1 - i] = ofParts<T>(unaligned::get(at + i), [=](Kvr32f part) {
        const double scaled = scale * part, away = scaled < 0 ? scaled - 0.5 : scaled + 0.5;
        const double bounded = away > 32767 ? 32767 : away < -32767 ? -32767 : away;
        return static_cast<Kvr16s>(std::isnan(bounded) ? 0 : bounded);
      });
    }
    state->tapsFactor = factor;
    return tapsChanged(state);
  }
};

// The stored integers and their factor.
template <class T, class X>
KvrStatus getTaps(const State<T>* state, X* taps, int* factor) {
  getTaps(state, taps);
  unaligned::put(static_cast<int>(state->tapsFactor), factor);
  return kvrStatusOk;
}

// The taps that they stand for.
template <class T, class X>
KvrStatus getFloatTaps(const State<T>* state, X* taps) {
  const size_t tapsLen = static_cast<size_t>(state->tapsLen);
  const T* tapsRev = state->tapsRev.get();
  const int factor = state->tapsFactor;
  for (size_t i = 0; i < tapsLen; ++i) {
    const X tap = ofParts<X>(tapsRev[tapsLen - 1 - i], [=](Kvr16s part) {
      return static_cast<Kvr32f>(std::ldexp(static_cast<double>(part), factor));
    });
    unaligned::put(tap, taps + i);
  }
  return kvrStatusOk;
}

}  // namespace kvrs::fir

#endif
