// FIR sums of complex 16-bit integers.
// SPDX-License-Identifier: MIT
#include "filters/fir_kernel-inl.h"

namespace kvrs {

template void firKernel<Kvr16sc>(const FirBranch<Kvr16sc>*, size_t, Kvr32sc*, size_t);

template Kvr32sc firDot(const Kvr16sc*, const Kvr16sc*, size_t);

}  // namespace kvrs
