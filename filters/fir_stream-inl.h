// The engine of streams, for the sources that instantiate it: filters without a delay line, whose source holds the samples
// before the first output. A state is only read, so that several threads may use it at the same time.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_STREAM_INL_H
#define KVRS_FILTERS_FIR_STREAM_INL_H

#include "filters/fir_rates-inl.h"

namespace kvrs::fir {

// kvrsFIR of a stream, the arguments checked: `len` outputs, or times upFactor at two rates.
template <class T>
KvrStatus filterStream(const State<T>& state, const T* src, T* dst, size_t len, const ScaleOf<T, T>& scale) {
  const size_t tapsLen = static_cast<size_t>(state.tapsLen);
  if (state.idWord == kStream_32f.single || state.idWord == kStream_16s.single) {
    const auto* taps = state.kernelTaps();
    if constexpr (kPlain<T, T>) {
      firKernel(src, dst, len, taps, tapsLen);
    } else {
      alignas(64) FirSum<T> sums[kSums];
      for (size_t n = 0; n < len; n += kSums) {
        const size_t count = len - n < kSums ? len - n : kSums;
        firKernel(src + n, sums, count, taps, tapsLen);
        Format<T, T>::store(sums, dst + n, count, scale);
      }
    }
    return kvrStatusOk;
  }
  // Init does not look at them.
  KVRS_CHECK(checkRates(state.rates));
  runRates(state, src, len, [&](const FirSum<T>* sums, size_t n, size_t count) {
    Format<T, T>::store(sums, dst + n, count, scale);
  });
  return kvrStatusOk;
}

}  // namespace kvrs::fir

#endif
