// FIR filters that work in complex numbers in single precision.
// SPDX-License-Identifier: MIT
#include "filters/fir_rates-inl.h"
#include "frame/array_length.h"

using namespace kvrs::fir;

KvrStatus kvrsFIRGetStateSize_32fc(int tapsLen, int* size) noexcept {
  return getStateSize<Kvr32fc>(k_32fc, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRInit_32fc(KvrsFIRState_32fc** state, const Kvr32fc* taps, int tapsLen,
                           const Kvr32fc* dlyLine, Kvr8u* buffer) noexcept {
  return init(k_32fc, state, PlainTaps<Kvr32fc>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc_32fc(KvrsFIRState_32fc** state, const Kvr32fc* taps, int tapsLen,
                                const Kvr32fc* dlyLine) noexcept {
  return initAlloc(k_32fc, state, PlainTaps<Kvr32fc>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree_32fc(KvrsFIRState_32fc* state) noexcept {
  KVRS_CHECK(k_32fc.either(state));
  return release<Kvr32fc>(state);
}

KvrStatus kvrsFIRGetTaps_32fc(const KvrsFIRState_32fc* state, Kvr32fc* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k_32fc.either(state));
  return getTaps<Kvr32fc>(state, taps);
}

KvrStatus kvrsFIRSetTaps_32fc(const Kvr32fc* taps, KvrsFIRState_32fc* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k_32fc.either(state));
  return PlainTaps<Kvr32fc>{taps}.template storeIn<Kvr32fc>(state);
}

KvrStatus kvrsFIRGetDlyLine_32fc(const KvrsFIRState_32fc* state, Kvr32fc* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k_32fc.either(state));
  return getDelayLine<Kvr32fc>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine_32fc(KvrsFIRState_32fc* state, const Kvr32fc* dlyLine) noexcept {
  KVRS_CHECK(k_32fc.either(state));
  return setDelayLine<Kvr32fc>(state, dlyLine);
}

KvrStatus kvrsFIROne_32fc(Kvr32fc src, Kvr32fc* dst, KvrsFIRState_32fc* state) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k_32fc.single));
  return one<Kvr32fc, Kvr32fc>(*state, src, dst, NoScale());
}

KvrStatus kvrsFIR_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, KvrsFIRState_32fc* state) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k_32fc.either(state));
  return filterAny<Kvr32fc, Kvr32fc>(k_32fc, *state, src, dst, len, NoScale());
}

KvrStatus kvrsFIR_32fc_I(Kvr32fc* srcDst, int len, KvrsFIRState_32fc* state) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k_32fc.either(state));
  return filterAnyInPlace<Kvr32fc, Kvr32fc>(k_32fc, *state, srcDst, len, NoScale());
}

KvrStatus kvrsFIRInit32fc_16sc(KvrsFIRState32fc_16sc** state, const Kvr32fc* taps, int tapsLen,
                               const Kvr16sc* dlyLine, Kvr8u* buffer) noexcept {
  return init(k32fc_16sc, state, PlainTaps<Kvr32fc>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc32fc_16sc(KvrsFIRState32fc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                    const Kvr16sc* dlyLine) noexcept {
  return initAlloc(k32fc_16sc, state, PlainTaps<Kvr32fc>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree32fc_16sc(KvrsFIRState32fc_16sc* state) noexcept {
  KVRS_CHECK(k32fc_16sc.either(state));
  return release<Kvr32fc>(state);
}

KvrStatus kvrsFIRGetTaps32fc_16sc(const KvrsFIRState32fc_16sc* state, Kvr32fc* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k32fc_16sc.either(state));
  return getTaps<Kvr32fc>(state, taps);
}

KvrStatus kvrsFIRSetTaps32fc_16sc(const Kvr32fc* taps, KvrsFIRState32fc_16sc* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k32fc_16sc.either(state));
  return PlainTaps<Kvr32fc>{taps}.template storeIn<Kvr32fc>(state);
}

KvrStatus kvrsFIRGetDlyLine32fc_16sc(const KvrsFIRState32fc_16sc* state, Kvr16sc* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k32fc_16sc.either(state));
  return getDelayLine<Kvr32fc>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine32fc_16sc(KvrsFIRState32fc_16sc* state, const Kvr16sc* dlyLine) noexcept {
  KVRS_CHECK(k32fc_16sc.either(state));
  return setDelayLine<Kvr32fc>(state, dlyLine);
}

KvrStatus kvrsFIROne32fc_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, KvrsFIRState32fc_16sc* state,
                                  int scaleFactor) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k32fc_16sc.single));
  return one<Kvr16sc, Kvr32fc>(*state, src, dst, scaleFactor);
}

KvrStatus kvrsFIR32fc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, KvrsFIRState32fc_16sc* state,
                               int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k32fc_16sc.either(state));
  return filterAny<Kvr16sc, Kvr32fc>(k32fc_16sc, *state, src, dst, len, scaleFactor);
}

KvrStatus kvrsFIR32fc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsFIRState32fc_16sc* state,
                                int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k32fc_16sc.either(state));
  return filterAnyInPlace<Kvr16sc, Kvr32fc>(k32fc_16sc, *state, srcDst, len, scaleFactor);
}
