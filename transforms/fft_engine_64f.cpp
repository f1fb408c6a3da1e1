// The complex transform of double-precision numbers, real and imaginary parts in two arrays.
// SPDX-License-Identifier: MIT
#include "transforms/kernels/engine-inl.h"

namespace kvrs::fft {

template <>
void transformPlanes(const Record<Kvr64f>& r, int order, const Kvr64f* srcRe, const Kvr64f* srcIm,
                     Kvr64f* dstRe, Kvr64f* dstIm, Kvr64f* work, Kvr64f scale) {
  transformViews(r, order, Planes<const Kvr64f>{srcRe, srcIm}, Planes<Kvr64f>{dstRe, dstIm}, work, scale);
}

}  // namespace kvrs::fft
