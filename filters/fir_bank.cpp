// Filters at two rates: their sums.
// SPDX-License-Identifier: MIT
#include "filters/fir_bank.h"

#include "filters/fir_dot-inl.h"

namespace kvrs::fir {

template <class T>
void firBank(const T* in, const T* bank, FirSum<T>* out, size_t count, BankWalk& walk) {
  for (size_t n = 0; n < count; ++n, walk.next()) {
    out[n] = fir_detail::dot(in + walk.oldestInput(), bank + walk.firstTap(), walk.taps());
  }
}

template void firBank<Kvr32f>(const Kvr32f*, const Kvr32f*, Kvr32f*, size_t, BankWalk&);
template void firBank<Kvr64f>(const Kvr64f*, const Kvr64f*, Kvr64f*, size_t, BankWalk&);
template void firBank<Kvr32fc>(const Kvr32fc*, const Kvr32fc*, Kvr32fc*, size_t, BankWalk&);
template void firBank<Kvr64fc>(const Kvr64fc*, const Kvr64fc*, Kvr64fc*, size_t, BankWalk&);
template void firBank<Kvr16s>(const Kvr16s*, const Kvr16s*, Kvr32s*, size_t, BankWalk&);
template void firBank<Kvr16sc>(const Kvr16sc*, const Kvr16sc*, Kvr32sc*, size_t, BankWalk&);

}  // namespace kvrs::fir
