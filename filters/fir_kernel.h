// The sums of a FIR filter, y[n] = sum over k of in[n+k] * tap[k], for any run of outputs whose inputs lie in
// one piece.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_KERNEL_H
#define KVRS_FILTERS_FIR_KERNEL_H

#include <cstddef>

#include "frame/simd.h"

namespace kvrs {

// How often a tap stands in the kernel's table. From AVX on a load can spread one number over a vector;
// before, a table of whole vectors saves the shuffle.
template <class T>
inline constexpr size_t kTapCopies = kVectorBytes == 16 ? kLanes<T> : 1;

// Up to kShiftTaps taps, single samples shift the whole window by vectors: the next call loads the very vectors that
// this one stores, which the processor hands through without waiting for the cache. A few taps are faster by short
// vectors, which take less to shift and to fold.
template <class T>
inline constexpr size_t kFewShiftLanes = 16 / sizeof(T);
template <class T>
inline constexpr size_t kShiftLanes = kVectorBytes < 32 ? kLanes<T> : 32 / sizeof(T);
template <class T>
inline constexpr size_t kShiftTaps = 16 * kShiftLanes<T>;

template <class T>
constexpr bool shiftsByFew(size_t tapsLen) {
  return kFewShiftLanes<T> < kShiftLanes<T> && tapsLen <= 2 * kFewShiftLanes<T>;
}

// The window and the taps end with such a vector; these elements are before them in their first one.
template <class T>
constexpr size_t shiftPadding(size_t tapsLen) {
  return (0 - tapsLen) % (shiftsByFew<T>(tapsLen) ? kFewShiftLanes<T> : kShiftLanes<T>);
}

// out[n] for n in [0, count), from inputs of a type D that converts to that of the sums. `taps` begins with the tap of
// the oldest input and has kTapCopies of each. Reads in[0 .. count + tapsLen - 2]. `out` does not overlap `in`.
template <class D, class T>
void firKernel(const D* in, T* out, size_t count, const T* taps, size_t tapsLen);

extern template void firKernel<Kvr32f, Kvr32f>(const Kvr32f*, Kvr32f*, size_t, const Kvr32f*, size_t);

}  // namespace kvrs

#endif
