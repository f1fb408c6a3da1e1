// Transforms of two radices in double precision.
// SPDX-License-Identifier: MIT
#include "transforms/kernels/straight-inl.h"

namespace kvrs::dft {

template void runStraight(const Plan&, const Kvr64f*, const Points<const Kvr64f>&, const Points<Kvr64f>&,
                          Kvr64f);

}  // namespace kvrs::dft
