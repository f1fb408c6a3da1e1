// FIR sums of complex numbers in single precision.
// SPDX-License-Identifier: MIT
#include "filters/fir_kernel-inl.h"

namespace kvrs {

template void firKernel<Kvr32fc>(const FirBranch<Kvr32fc>*, size_t, Kvr32fc*, size_t);
template size_t firTileOutputs<Kvr32fc>();
template Kvr32fc firDot(const Kvr32fc*, const Kvr32fc*, size_t);

}  // namespace kvrs
