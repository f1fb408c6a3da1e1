// The complex transform of single-precision numbers, real and imaginary parts in two arrays.
// SPDX-License-Identifier: MIT
#include "transforms/kernels/engine-inl.h"

namespace kvrs::fft {

template <>
void transformPlanes(const Record<Kvr32f>& r, int order, const Kvr32f* srcRe, const Kvr32f* srcIm,
                     Kvr32f* dstRe, Kvr32f* dstIm, Kvr32f* work, Kvr32f scale) {
  transformViews(r, order, Planes<const Kvr32f>{srcRe, srcIm}, Planes<Kvr32f>{dstRe, dstIm}, work, scale);
}

}  // namespace kvrs::fft
