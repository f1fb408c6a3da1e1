// The complex transform behind all floating-point FFTs.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_FFT_ENGINE_H
#define KVRS_TRANSFORMS_FFT_ENGINE_H

#include "transforms/fft_spec.h"

namespace kvrs::fft {

enum class Direction { kForward, kInverse };

// Transforms 2^order complex numbers with the tables of `r` and multiplies them by `scale`. src may be dst.
// `work` is the work area of the context, null where that has none.
template <class T>
void transform(const Record<T>& r, int order, Direction direction, const T* src, T* dst, T* work, T scale);

// The forward transform of numbers whose parts lie in two arrays, with the tables of a context of Kind::kPlanes. With
// real and imaginary parts exchanged everywhere it is the inverse one.
template <class T>
void transformPlanes(const Record<T>& r, int order, const T* srcRe, const T* srcIm, T* dstRe, T* dstIm,
                     T* work, T scale);

}  // namespace kvrs::fft

#endif
