// The engine of filters at two rates, for the sources that instantiate it.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_RATES_INL_H
#define KVRS_FILTERS_FIR_RATES_INL_H

#include "filters/fir_bank.h"
#include "filters/fir_engine-inl.h"
#include "filters/fir_phases.h"

namespace kvrs::fir {

// store(sums, first, count) takes the outputs of `iters` iterations; `in` is input 0.
template <class T, class Store>
void runRates(const State<T>& state, const T* in, size_t iters, Store store) {
  const Rates& rates = state.rates;
  const size_t up = static_cast<size_t>(rates.upFactor), down = static_cast<size_t>(rates.downFactor);
  alignas(64) FirSum<T> sums[kSums];
  if (const auto* table = state.tapsTable.get(); table != nullptr && iters >= kPhasesFromIters<T>) {
    const size_t most = kSums / up;
    for (size_t i = 0; i < iters; i += most) {
      const size_t count = iters - i < most ? iters - i : most;
      firPhases(in + i * down, table, sums, count, state.tapsLen, rates, firstTime(state));
      store(sums, i * up, count * up);
    }
    return;
  }
  BankWalk walk(rates, state.tapsLen, firstTime(state));
  for (size_t n = 0; n < iters * up; n += kSums) {
    const size_t count = iters * up - n < kSums ? iters * up - n : kSums;
    firBank(in, state.bank.present(), sums, count, walk);
    store(sums, n, count);
  }
}

// kvrsFIR at two rates, the arguments checked: `numIters` times downFactor samples in and upFactor out, by way of the delay
// line. src may be dst where no more comes out than goes in.
template <class D, class T>
KvrStatus filterRates(State<T>& state, const D* src, D* dst, size_t numIters, const ScaleOf<D, T>& scale) {
  const Rates& rates = state.rates;
  const size_t up = static_cast<size_t>(rates.upFactor), down = static_cast<size_t>(rates.downFactor);
  const size_t past = static_cast<size_t>(state.dlyLen), room = static_cast<size_t>(state.stageLen);
  T* line = state.dlyLine.get();
  const size_t usual = room < kStaged ? room / down : kStaged / down, most = usual > 0 ? usual : 1;
  while (numIters > 0) {
    const size_t iters = numIters < most ? numIters : most;
    Format<D, T>::fetch(src, line + past, iters * down);
    runRates(state, line + past, iters, [&](const FirSum<T>* sums, size_t n, size_t count) {
      Format<D, T>::store(sums, dst + n, count, scale);
    });
    memmove(static_cast<void*>(line), line + iters * down, past * sizeof(T));
    src += iters * down;
    dst += iters * up;
    numIters -= iters;
  }
  return kvrStatusOk;
}

// In place. Where more comes out than goes in, the samples are filtered from a copy; `copies`: always.
template <class D, class T>
KvrStatus filterRatesInPlace(State<T>& state, D* srcDst, size_t numIters, const ScaleOf<D, T>& scale,
                             bool copies) {
  if (state.rates.upFactor <= state.rates.downFactor && !copies) {
    return filterRates(state, srcDst, srcDst, numIters, scale);
  }
  const uint64_t bytes = uint64_t{numIters} * static_cast<uint64_t>(state.rates.downFactor) * sizeof(D);
  const Scratch memory(bytes);
  if (!memory.ok()) return kvrStatusOutOfMemory;
  auto* const copy = memory.as<D>();
  memcpy(copy, srcDst, static_cast<size_t>(bytes));
  return filterRates(state, copy, srcDst, numIters, scale);
}

// kvrsFIR and its form in place, the arguments checked.
template <class D, class T>
KvrStatus filterAny(const Form& form, State<T>& state, const D* src, D* dst, int len,
                    const ScaleOf<D, T>& scale) {
  if (state.idWord == form.single) return filter(state, src, dst, static_cast<size_t>(len), scale);
  return filterRates(state, src, dst, static_cast<size_t>(len), scale);
}
template <class D, class T>
KvrStatus filterAnyInPlace(const Form& form, State<T>& state, D* srcDst, int len,
                           const ScaleOf<D, T>& scale) {
  if (state.idWord == form.single) return filterInPlace(state, srcDst, static_cast<size_t>(len), scale);
  constexpr bool kCopies = FirElement<T>::kInteger;
  return filterRatesInPlace(state, srcDst, static_cast<size_t>(len), scale, kCopies);
}

}  // namespace kvrs::fir

#endif
