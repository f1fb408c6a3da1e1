// FIR filters that work in complex 16-bit integers.
// SPDX-License-Identifier: MIT
#include "filters/fir_rates-inl.h"
#include "filters/fir_taps.h"
#include "frame/array_length.h"

using namespace kvrs::fir;

KvrStatus kvrsFIRGetStateSize32sc_16sc(int tapsLen, int* size) noexcept {
  return getStateSize<Kvr16sc>(k32sc_16sc, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRInit32sc_16sc(KvrsFIRState32sc_16sc** state, const Kvr32sc* taps, int tapsLen,
                               int tapsFactor, const Kvr16sc* dlyLine, Kvr8u* buffer) noexcept {
  return init(k32sc_16sc, state, FactoredTaps<Kvr32sc>{taps, tapsFactor}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc32sc_16sc(KvrsFIRState32sc_16sc** state, const Kvr32sc* taps, int tapsLen,
                                    int tapsFactor, const Kvr16sc* dlyLine) noexcept {
  return initAlloc(k32sc_16sc, state, FactoredTaps<Kvr32sc>{taps, tapsFactor}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree32sc_16sc(KvrsFIRState32sc_16sc* state) noexcept {
  KVRS_CHECK(k32sc_16sc.either(state));
  return release<Kvr16sc>(state);
}

KvrStatus kvrsFIRGetTaps32sc_16sc(const KvrsFIRState32sc_16sc* state, Kvr32sc* taps,
                                  int* tapsFactor) noexcept {
  KVRS_CHECK(pointers(state, taps, tapsFactor), k32sc_16sc.either(state));
  return getTaps<Kvr16sc>(state, taps, tapsFactor);
}

KvrStatus kvrsFIRSetTaps32sc_16sc(const Kvr32sc* taps, KvrsFIRState32sc_16sc* state,
                                  int tapsFactor) noexcept {
  KVRS_CHECK(pointers(taps, state), k32sc_16sc.either(state));
  return FactoredTaps<Kvr32sc>{taps, tapsFactor}.template storeIn<Kvr16sc>(state);
}

KvrStatus kvrsFIRGetDlyLine32sc_16sc(const KvrsFIRState32sc_16sc* state, Kvr16sc* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k32sc_16sc.either(state));
  return getDelayLine<Kvr16sc>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine32sc_16sc(KvrsFIRState32sc_16sc* state, const Kvr16sc* dlyLine) noexcept {
  KVRS_CHECK(k32sc_16sc.either(state));
  return setDelayLine<Kvr16sc>(state, dlyLine);
}

KvrStatus kvrsFIROne32sc_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, KvrsFIRState32sc_16sc* state,
                                  int scaleFactor) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k32sc_16sc.single));
  return one<Kvr16sc, Kvr16sc>(*state, src, dst, Shift(state->tapsFactor, scaleFactor));
}

KvrStatus kvrsFIR32sc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, KvrsFIRState32sc_16sc* state,
                               int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k32sc_16sc.either(state));
  return filterAny<Kvr16sc, Kvr16sc>(k32sc_16sc, *state, src, dst, len,
                                     Shift(state->tapsFactor, scaleFactor));
}

KvrStatus kvrsFIR32sc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsFIRState32sc_16sc* state,
                                int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k32sc_16sc.either(state));
  return filterAnyInPlace<Kvr16sc, Kvr16sc>(k32sc_16sc, *state, srcDst, len,
                                            Shift(state->tapsFactor, scaleFactor));
}

KvrStatus kvrsFIRGetStateSize32sc_16sc32fc(int tapsLen, int* size) noexcept {
  return getStateSize<Kvr16sc>(k32sc_16sc, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRInit32sc_16sc32fc(KvrsFIRState32sc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                   const Kvr16sc* dlyLine, Kvr8u* buffer) noexcept {
  return init(k32sc_16sc, state, FloatTaps<Kvr32fc>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc32sc_16sc32fc(KvrsFIRState32sc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                        const Kvr16sc* dlyLine) noexcept {
  return initAlloc(k32sc_16sc, state, FloatTaps<Kvr32fc>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRGetTaps32sc_16sc32fc(const KvrsFIRState32sc_16sc* state, Kvr32fc* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k32sc_16sc.either(state));
  return getFloatTaps<Kvr16sc>(state, taps);
}

KvrStatus kvrsFIRSetTaps32sc_16sc32fc(const Kvr32fc* taps, KvrsFIRState32sc_16sc* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k32sc_16sc.either(state));
  return FloatTaps<Kvr32fc>{taps}.template storeIn<Kvr16sc>(state);
}
