// Filters at two rates with small factors, by the kernel of those at one: outputs of one phase lie downFactor inputs apart.
// So with every downFactor-th input in an array of its own, they are sums of as many filters at one rate.
//
//   upFactor 1, downFactor 2     y[m] = sum of tap[j] * x[2m - j] = sum of tap[2k] * even[m - k] + tap[2k+1] * odd[m-1 - k]
//
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_PHASES_H
#define KVRS_FILTERS_FIR_PHASES_H

#include <numeric>

#include "filters/fir_state.h"

namespace kvrs::fir {

// The largest factors, and the fewest taps that a filter at one rate should have left.
inline constexpr int kMostPhases = 8, kFewestTapsOfBranch = 4;

// The most taps of a phase: their inputs have to find room in the nearest cache.
inline constexpr int kMostTapsOfPhase = 512;

// Whether filters of these rates and so many taps have tables for it. With factors that have a common divisor the outputs of
// an iteration meet some phases more than once and others not at all: so many taps in all only if all phases have as many.
inline bool hasPhases(const Rates& rates, int tapsLen) {
  return checkRates(rates) == kvrStatusOk && rates.upFactor <= kMostPhases &&
         rates.downFactor <= kMostPhases &&
         (tapsLen % rates.upFactor == 0 || std::gcd(rates.upFactor, rates.downFactor) == 1) &&
         tapsLen / rates.upFactor / rates.downFactor >= kFewestTapsOfBranch &&
         tapsLen / rates.upFactor <= kMostTapsOfPhase;
}

// Fills the table, of kTapLanes for each tap. `time` is that of the first output less that of input 0.
template <class T>
void fillPhases(const T* tapsRev, FirLane<T>* table, int tapsLen, const Rates& rates, int64_t time);

// The outputs of `iters` iterations; `in` is input 0.
template <class T>
void firPhases(const T* in, const FirLane<T>* table, FirSum<T>* out, size_t iters, int tapsLen,
               const Rates& rates, int64_t time);

// Iterations from which it pays: a vector should be full of outputs of a phase.
template <class T>
inline constexpr size_t kPhasesFromIters = kFirLanes<T>;

#define KVRS_FIR_PHASES_EXTERN(T, Sum, Lane)                                       \
  extern template void fillPhases<T>(const T*, Lane*, int, const Rates&, int64_t); \
  extern template void firPhases<T>(const T*, const Lane*, Sum*, size_t, int, const Rates&, int64_t)
KVRS_FIR_PHASES_EXTERN(Kvr32f, Kvr32f, Kvr32f);
KVRS_FIR_PHASES_EXTERN(Kvr64f, Kvr64f, Kvr64f);
KVRS_FIR_PHASES_EXTERN(Kvr32fc, Kvr32fc, Kvr32f);
KVRS_FIR_PHASES_EXTERN(Kvr64fc, Kvr64fc, Kvr64f);
KVRS_FIR_PHASES_EXTERN(Kvr16s, Kvr32s, Kvr16s);
KVRS_FIR_PHASES_EXTERN(Kvr16sc, Kvr32sc, Kvr16s);
#undef KVRS_FIR_PHASES_EXTERN

}  // namespace kvrs::fir

#endif
