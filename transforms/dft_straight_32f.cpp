// Transforms of two radices in single precision.
// SPDX-License-Identifier: MIT
#include "transforms/kernels/straight-inl.h"

namespace kvrs::dft {

template void runStraight(const Plan&, const Kvr32f*, const Points<const Kvr32f>&, const Points<Kvr32f>&,
                          Kvr32f);

}  // namespace kvrs::dft
