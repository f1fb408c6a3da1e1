// FIR sums of double precision.
// SPDX-License-Identifier: MIT
#include "filters/fir_kernel-inl.h"

namespace kvrs {

template void firKernel<Kvr64f>(const FirBranch<Kvr64f>*, size_t, Kvr64f*, size_t);
template size_t firTileOutputs<Kvr64f>();
template Kvr64f firDot(const Kvr64f*, const Kvr64f*, size_t);

}  // namespace kvrs
