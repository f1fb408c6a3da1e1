// FIR sums of complex 16-bit integers.
// SPDX-License-Identifier: MIT
#include "filters/fir_kernel-inl.h"

namespace kvrs {

template void firKernel<Kvr16sc>(const Kvr16sc*, Kvr32sc*, size_t, const Kvr16s*, size_t);

template Kvr32sc firDot(const Kvr16sc*, const Kvr16sc*, size_t);

}  // namespace kvrs
