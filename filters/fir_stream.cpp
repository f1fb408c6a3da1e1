// States of FIR streams.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_stream.h"

#include <climits>

#include "filters/fir_state.h"
#include "filters/fir_taps.h"

namespace kvrs::fir {
namespace {

// A stream's plan is that of a filter without delay line and block convolution. Its size is that of a filter at a single
// rate, which has room for all; but that of integers is no larger than it must be, and so has another one at two rates.
template <class T>
KvrStatus planStream(const Form& form, int tapsLen, const Rates* rates, Plan* plan) {
  const bool rated = FirElement<T>::kInteger && rates != nullptr;
  const KvrStatus status = makePlan<T>(form, tapsLen, rated ? rates : nullptr, plan);
  if (rated) {
    plan->size += 1312;  // part of the interface is that tables of some factors have at least as much
  }
  if (rates != nullptr) {
    plan->word = form.multi;
    plan->rates = *rates;
  }
  plan->dlyLen = 0;
  plan->fftLen = 0;
  return status == kvrStatusOk ? check::require(plan->size <= INT_MAX, kvrStatusBadTapsLength) : status;
}

template <class T>
KvrStatus getStreamSize(const Form& form, int tapsLen, const Rates* rates, int* size) {
  KVRS_CHECK(pointers(size), tapsLength(tapsLen));
  if (FirElement<T>::kInteger && rates != nullptr) KVRS_CHECK(checkRates(*rates));
  Plan plan;
  const KvrStatus status = planStream<T>(form, tapsLen, rates, &plan);
  if (status == kvrStatusOk) *size = static_cast<int>(plan.size);
  return status;
}

// In `buffer`, or on the heap where that is null.
template <class S, class Taps, class T = typename S::Element>
KvrStatus makeStream(const Form& form, S** state, Taps taps, int tapsLen, const Rates* rates,
                     KvrRoundMode rndMode, Kvr8u* buffer) {
  if constexpr (FirElement<T>::kInteger) {
    KVRS_CHECK(rates == nullptr ? kvrStatusOk : checkRates(*rates), roundMode(rndMode));
  }
  Plan plan;
  const KvrStatus status = planStream<T>(form, tapsLen, rates, &plan);
  if (status != kvrStatusOk) return status;
  auto* block = buffer != nullptr ? buffer : static_cast<Kvr8u*>(kvrMalloc(static_cast<size_t>(plan.size)));
  if (block == nullptr) return kvrStatusOutOfMemory;
  State<T>* made = build<T>(plan, block);
  made->allocated = buffer == nullptr;
  made->rndMode = rndMode;
  taps.storeIn(made);
  *state = static_cast<S*>(made);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::fir

using namespace kvrs::fir;

KvrStatus kvrsFIRMRStreamGetStateSize_32f(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStreamSize<Kvr32f>(kStream_32f, tapsLen, &rates, size);
}

KvrStatus kvrsFIRStreamGetStateSize_16s(int tapsLen, int* size) noexcept {
  return getStreamSize<Kvr16s>(kStream_16s, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRMRStreamGetStateSize_16s(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStreamSize<Kvr16s>(kStream_16s, tapsLen, &rates, size);
}

KvrStatus kvrsFIRStreamInit_32f(KvrsFIRStreamState_32f** state, const Kvr32f* taps, int tapsLen,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(pointers(state, taps, buffer), tapsLength(tapsLen));
  return makeStream(kStream_32f, state, PlainTaps<Kvr32f>{taps}, tapsLen, nullptr, 0, buffer);
}

KvrStatus kvrsFIRStreamInitAlloc_32f(KvrsFIRStreamState_32f** state, const Kvr32f* taps,
                                     int tapsLen) noexcept {
  KVRS_CHECK(pointers(state, taps), tapsLength(tapsLen));
  return makeStream(kStream_32f, state, PlainTaps<Kvr32f>{taps}, tapsLen, nullptr, 0, nullptr);
}

KvrStatus kvrsFIRStreamInit_16s(KvrsFIRStreamState_16s** state, const Kvr16s* taps, int tapsLen,
                                int tapsFactor, KvrRoundMode rndMode, Kvr8u* buffer) noexcept {
  KVRS_CHECK(pointers(state, taps, buffer), tapsLength(tapsLen));
  const FactoredTaps<Kvr16s> given{taps, tapsFactor};
  return makeStream(kStream_16s, state, given, tapsLen, nullptr, rndMode, buffer);
}

KvrStatus kvrsFIRStreamInitAlloc_16s(KvrsFIRStreamState_16s** state, const Kvr16s* taps, int tapsLen,
                                     int tapsFactor, KvrRoundMode rndMode) noexcept {
  KVRS_CHECK(pointers(state, taps), tapsLength(tapsLen));
  const FactoredTaps<Kvr16s> given{taps, tapsFactor};
  return makeStream(kStream_16s, state, given, tapsLen, nullptr, rndMode, nullptr);
}

KvrStatus kvrsFIRMRStreamInit_32f(KvrsFIRMRStreamState_32f** state, const Kvr32f* taps, int tapsLen,
                                  int upFactor, int upPhase, int downFactor, int downPhase,
                                  Kvr8u* buffer) noexcept {
  KVRS_CHECK(pointers(state, taps, buffer), tapsLength(tapsLen));
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return makeStream(kStream_32f, state, PlainTaps<Kvr32f>{taps}, tapsLen, &rates, 0, buffer);
}

KvrStatus kvrsFIRMRStreamInitAlloc_32f(KvrsFIRMRStreamState_32f** state, const Kvr32f* taps, int tapsLen,
                                       int upFactor, int upPhase, int downFactor, int downPhase) noexcept {
  KVRS_CHECK(pointers(state, taps), tapsLength(tapsLen));
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return makeStream(kStream_32f, state, PlainTaps<Kvr32f>{taps}, tapsLen, &rates, 0, nullptr);
}

KvrStatus kvrsFIRMRStreamInit_16s(KvrsFIRMRStreamState_16s** state, const Kvr16s* taps, int tapsLen,
                                  int tapsFactor, int upFactor, int upPhase, int downFactor, int downPhase,
                                  KvrRoundMode rndMode, Kvr8u* buffer) noexcept {
  KVRS_CHECK(pointers(state, taps, buffer), tapsLength(tapsLen));
  const FactoredTaps<Kvr16s> given{taps, tapsFactor};
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return makeStream(kStream_16s, state, given, tapsLen, &rates, rndMode, buffer);
}

KvrStatus kvrsFIRMRStreamInitAlloc_16s(KvrsFIRMRStreamState_16s** state, const Kvr16s* taps, int tapsLen,
                                       int tapsFactor, int upFactor, int upPhase, int downFactor,
                                       int downPhase, KvrRoundMode rndMode) noexcept {
  KVRS_CHECK(pointers(state, taps), tapsLength(tapsLen));
  const FactoredTaps<Kvr16s> given{taps, tapsFactor};
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return makeStream(kStream_16s, state, given, tapsLen, &rates, rndMode, nullptr);
}
