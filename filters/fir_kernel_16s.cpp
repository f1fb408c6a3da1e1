// FIR sums of 16-bit integers.
// SPDX-License-Identifier: MIT
#include "filters/fir_kernel-inl.h"

namespace kvrs {

template void firKernel<Kvr16s>(const FirBranch<Kvr16s>*, size_t, Kvr32s*, size_t);

template Kvr32s firDot(const Kvr16s*, const Kvr16s*, size_t);

}  // namespace kvrs
