// Transforms of any length in single precision.
// SPDX-License-Identifier: MIT
#include "transforms/kernels/dft-inl.h"

namespace kvrs::dft {

template void runMixed(const Mixed<Kvr32f>&, const Points<const Kvr32f>&, const Points<Kvr32f>&, Kvr32f*,
                       Kvr32f);
template void runDirect(int, const Kvr32f*, const Points<const Kvr32f>&, const Points<Kvr32f>&, Kvr32f);
template void runOutOfOrder(const OutOfOrder<Kvr32f>&, Points<const Kvr32f>, Points<Kvr32f>, Kvr32f);
template void runOutOfOrderInverse(const OutOfOrder<Kvr32f>&, Points<const Kvr32f>, Points<Kvr32f>, Kvr32f);
template void movePoints(size_t, const Points<const Kvr32f>&, const Points<Kvr32f>&, Kvr32f);
template struct RealRows<Kvr32f>;

}  // namespace kvrs::dft
