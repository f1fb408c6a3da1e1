// FIR sums of complex numbers in double precision.
// SPDX-License-Identifier: MIT
#include "filters/fir_kernel-inl.h"

namespace kvrs {

template void firKernel<Kvr64fc>(const FirBranch<Kvr64fc>*, size_t, Kvr64fc*, size_t);
template size_t firTileOutputs<Kvr64fc>();
template Kvr64fc firDot(const Kvr64fc*, const Kvr64fc*, size_t);

}  // namespace kvrs
