// FIR sums of single precision.
// SPDX-License-Identifier: MIT
#include "filters/fir_kernel-inl.h"

namespace kvrs {

template void firKernel<Kvr32f>(const FirBranch<Kvr32f>*, size_t, Kvr32f*, size_t);
template size_t firTileOutputs<Kvr32f>();
template Kvr32f firDot(const Kvr32f*, const Kvr32f*, size_t);

}  // namespace kvrs
