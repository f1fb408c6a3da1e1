// Short transforms of any length in single precision.
// SPDX-License-Identifier: MIT
#include "transforms/kernels/short-inl.h"

namespace kvrs::dft {

template void runTiny(int, const Points<const Kvr32f>&, const Points<Kvr32f>&, Kvr32f);

}  // namespace kvrs::dft
