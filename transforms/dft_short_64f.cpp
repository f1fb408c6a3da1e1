// Short transforms of any length in double precision.
// SPDX-License-Identifier: MIT
#include "transforms/kernels/short-inl.h"

namespace kvrs::dft {

template void runTiny(int, const Points<const Kvr64f>&, const Points<Kvr64f>&, Kvr64f);

}  // namespace kvrs::dft
