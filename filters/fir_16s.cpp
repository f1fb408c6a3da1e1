// FIR filters that work in 16-bit integers.
// SPDX-License-Identifier: MIT
#include "filters/fir_rates-inl.h"
#include "filters/fir_stream-inl.h"
#include "filters/fir_taps.h"
#include "frame/array_length.h"

using namespace kvrs::fir;

KvrStatus kvrsFIRGetStateSize_16s(int tapsLen, int* size) noexcept {
  return getStateSize<Kvr16s>(k_16s, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRInit_16s(KvrsFIRState_16s** state, const Kvr16s* taps, int tapsLen, int tapsFactor,
                          const Kvr16s* dlyLine, Kvr8u* buffer) noexcept {
  return init(k_16s, state, FactoredTaps<Kvr16s>{taps, tapsFactor}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc_16s(KvrsFIRState_16s** state, const Kvr16s* taps, int tapsLen, int tapsFactor,
                               const Kvr16s* dlyLine) noexcept {
  return initAlloc(k_16s, state, FactoredTaps<Kvr16s>{taps, tapsFactor}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree_16s(KvrsFIRState_16s* state) noexcept {
  KVRS_CHECK(context(state, k_16s.single, k_16s.multi, kStream_16s.single, kStream_16s.multi));
  return release<Kvr16s>(state);
}

KvrStatus kvrsFIRGetTaps_16s(const KvrsFIRState_16s* state, Kvr16s* taps, int* tapsFactor) noexcept {
  KVRS_CHECK(pointers(state, taps, tapsFactor),
             context(state, k_16s.single, k_16s.multi, kStream_16s.single, kStream_16s.multi));
  return getTaps<Kvr16s>(state, taps, tapsFactor);
}

KvrStatus kvrsFIRSetTaps_16s(const Kvr16s* taps, KvrsFIRState_16s* state, int tapsFactor) noexcept {
  KVRS_CHECK(pointers(taps, state), k_16s.either(state));
  return FactoredTaps<Kvr16s>{taps, tapsFactor}.template storeIn<Kvr16s>(state);
}

KvrStatus kvrsFIRGetDlyLine_16s(const KvrsFIRState_16s* state, Kvr16s* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k_16s.either(state));
  return getDelayLine<Kvr16s>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine_16s(KvrsFIRState_16s* state, const Kvr16s* dlyLine) noexcept {
  KVRS_CHECK(k_16s.either(state));
  return setDelayLine<Kvr16s>(state, dlyLine);
}

KvrStatus kvrsFIROne_16s_Sfs(Kvr16s src, Kvr16s* dst, KvrsFIRState_16s* state, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k_16s.single));
  return one<Kvr16s, Kvr16s>(*state, src, dst, Shift(state->tapsFactor, scaleFactor));
}

KvrStatus kvrsFIR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsFIRState_16s* state,
                          int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst));
  if (kStream_16s.either(state) == kvrStatusOk)
    return filterStream(*state, src, dst, static_cast<size_t>(len),
                        Shift(state->tapsFactor, scaleFactor, state->rndMode));
  KVRS_CHECK(k_16s.either(state));
  return filterAny<Kvr16s, Kvr16s>(k_16s, *state, src, dst, len, Shift(state->tapsFactor, scaleFactor));
}

KvrStatus kvrsFIR_16s_ISfs(Kvr16s* srcDst, int len, KvrsFIRState_16s* state, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k_16s.either(state));
  return filterAnyInPlace<Kvr16s, Kvr16s>(k_16s, *state, srcDst, len, Shift(state->tapsFactor, scaleFactor));
}

KvrStatus kvrsFIRGetStateSize32s_16s(int tapsLen, int* size) noexcept {
  return getStateSize<Kvr16s>(k32s_16s, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRInit32s_16s(KvrsFIRState32s_16s** state, const Kvr32s* taps, int tapsLen, int tapsFactor,
                             const Kvr16s* dlyLine, Kvr8u* buffer) noexcept {
  return init(k32s_16s, state, FactoredTaps<Kvr32s>{taps, tapsFactor}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc32s_16s(KvrsFIRState32s_16s** state, const Kvr32s* taps, int tapsLen,
                                  int tapsFactor, const Kvr16s* dlyLine) noexcept {
  return initAlloc(k32s_16s, state, FactoredTaps<Kvr32s>{taps, tapsFactor}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree32s_16s(KvrsFIRState32s_16s* state) noexcept {
  KVRS_CHECK(k32s_16s.either(state));
  return release<Kvr16s>(state);
}

KvrStatus kvrsFIRGetTaps32s_16s(const KvrsFIRState32s_16s* state, Kvr32s* taps, int* tapsFactor) noexcept {
  KVRS_CHECK(pointers(state, taps, tapsFactor), k32s_16s.either(state));
  return getTaps<Kvr16s>(state, taps, tapsFactor);
}

KvrStatus kvrsFIRSetTaps32s_16s(const Kvr32s* taps, KvrsFIRState32s_16s* state, int tapsFactor) noexcept {
  KVRS_CHECK(pointers(taps, state), k32s_16s.either(state));
  return FactoredTaps<Kvr32s>{taps, tapsFactor}.template storeIn<Kvr16s>(state);
}

KvrStatus kvrsFIRGetDlyLine32s_16s(const KvrsFIRState32s_16s* state, Kvr16s* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k32s_16s.either(state));
  return getDelayLine<Kvr16s>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine32s_16s(KvrsFIRState32s_16s* state, const Kvr16s* dlyLine) noexcept {
  KVRS_CHECK(k32s_16s.either(state));
  return setDelayLine<Kvr16s>(state, dlyLine);
}

KvrStatus kvrsFIROne32s_16s_Sfs(Kvr16s src, Kvr16s* dst, KvrsFIRState32s_16s* state,
                                int scaleFactor) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k32s_16s.single));
  return one<Kvr16s, Kvr16s>(*state, src, dst, Shift(state->tapsFactor, scaleFactor));
}

KvrStatus kvrsFIR32s_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsFIRState32s_16s* state,
                             int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k32s_16s.either(state));
  return filterAny<Kvr16s, Kvr16s>(k32s_16s, *state, src, dst, len, Shift(state->tapsFactor, scaleFactor));
}

KvrStatus kvrsFIR32s_16s_ISfs(Kvr16s* srcDst, int len, KvrsFIRState32s_16s* state, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k32s_16s.either(state));
  return filterAnyInPlace<Kvr16s, Kvr16s>(k32s_16s, *state, srcDst, len,
                                          Shift(state->tapsFactor, scaleFactor));
}

KvrStatus kvrsFIRGetStateSize32s_16s32f(int tapsLen, int* size) noexcept {
  return getStateSize<Kvr16s>(k32s_16s, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRInit32s_16s32f(KvrsFIRState32s_16s** state, const Kvr32f* taps, int tapsLen,
                                const Kvr16s* dlyLine, Kvr8u* buffer) noexcept {
  return init(k32s_16s, state, FloatTaps<Kvr32f>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc32s_16s32f(KvrsFIRState32s_16s** state, const Kvr32f* taps, int tapsLen,
                                     const Kvr16s* dlyLine) noexcept {
  return initAlloc(k32s_16s, state, FloatTaps<Kvr32f>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRGetTaps32s_16s32f(const KvrsFIRState32s_16s* state, Kvr32f* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k32s_16s.either(state));
  return getFloatTaps<Kvr16s>(state, taps);
}

KvrStatus kvrsFIRSetTaps32s_16s32f(const Kvr32f* taps, KvrsFIRState32s_16s* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k32s_16s.either(state));
  return FloatTaps<Kvr32f>{taps}.template storeIn<Kvr16s>(state);
}
