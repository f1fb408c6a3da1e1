// Transforms of any length in double precision.
// SPDX-License-Identifier: MIT
#include "transforms/kernels/dft-inl.h"

namespace kvrs::dft {

template void runMixed(const Mixed<Kvr64f>&, const Points<const Kvr64f>&, const Points<Kvr64f>&, Kvr64f*,
                       Kvr64f);
template void runDirect(int, const Kvr64f*, const Points<const Kvr64f>&, const Points<Kvr64f>&, Kvr64f);
template void runOutOfOrder(const OutOfOrder<Kvr64f>&, Points<const Kvr64f>, Points<Kvr64f>, Kvr64f);
template void runOutOfOrderInverse(const OutOfOrder<Kvr64f>&, Points<const Kvr64f>, Points<Kvr64f>, Kvr64f);
template void movePoints(size_t, const Points<const Kvr64f>&, const Points<Kvr64f>&, Kvr64f);
template struct RealRows<Kvr64f>;

}  // namespace kvrs::dft
