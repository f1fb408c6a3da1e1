// FIR filters that work in complex numbers in double precision.
// SPDX-License-Identifier: MIT
#include "filters/fir_rates-inl.h"
#include "frame/array_length.h"

using namespace kvrs::fir;

KvrStatus kvrsFIRGetStateSize_64fc(int tapsLen, int* size) noexcept {
  return getStateSize<Kvr64fc>(k_64fc, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRInit_64fc(KvrsFIRState_64fc** state, const Kvr64fc* taps, int tapsLen,
                           const Kvr64fc* dlyLine, Kvr8u* buffer) noexcept {
  return init(k_64fc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc_64fc(KvrsFIRState_64fc** state, const Kvr64fc* taps, int tapsLen,
                                const Kvr64fc* dlyLine) noexcept {
  return initAlloc(k_64fc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree_64fc(KvrsFIRState_64fc* state) noexcept {
  KVRS_CHECK(k_64fc.either(state));
  return release<Kvr64fc>(state);
}

KvrStatus kvrsFIRGetTaps_64fc(const KvrsFIRState_64fc* state, Kvr64fc* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k_64fc.either(state));
  return getTaps<Kvr64fc>(state, taps);
}

KvrStatus kvrsFIRSetTaps_64fc(const Kvr64fc* taps, KvrsFIRState_64fc* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k_64fc.either(state));
  return PlainTaps<Kvr64fc>{taps}.template storeIn<Kvr64fc>(state);
}

KvrStatus kvrsFIRGetDlyLine_64fc(const KvrsFIRState_64fc* state, Kvr64fc* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k_64fc.either(state));
  return getDelayLine<Kvr64fc>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine_64fc(KvrsFIRState_64fc* state, const Kvr64fc* dlyLine) noexcept {
  KVRS_CHECK(k_64fc.either(state));
  return setDelayLine<Kvr64fc>(state, dlyLine);
}

KvrStatus kvrsFIROne_64fc(Kvr64fc src, Kvr64fc* dst, KvrsFIRState_64fc* state) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k_64fc.single));
  return one<Kvr64fc, Kvr64fc>(*state, src, dst, NoScale());
}

KvrStatus kvrsFIR_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, KvrsFIRState_64fc* state) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k_64fc.either(state));
  return filterAny<Kvr64fc, Kvr64fc>(k_64fc, *state, src, dst, len, NoScale());
}

KvrStatus kvrsFIR_64fc_I(Kvr64fc* srcDst, int len, KvrsFIRState_64fc* state) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k_64fc.either(state));
  return filterAnyInPlace<Kvr64fc, Kvr64fc>(k_64fc, *state, srcDst, len, NoScale());
}

KvrStatus kvrsFIRInit64fc_32fc(KvrsFIRState64fc_32fc** state, const Kvr64fc* taps, int tapsLen,
                               const Kvr32fc* dlyLine, Kvr8u* buffer) noexcept {
  return init(k64fc_32fc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc64fc_32fc(KvrsFIRState64fc_32fc** state, const Kvr64fc* taps, int tapsLen,
                                    const Kvr32fc* dlyLine) noexcept {
  return initAlloc(k64fc_32fc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree64fc_32fc(KvrsFIRState64fc_32fc* state) noexcept {
  KVRS_CHECK(k64fc_32fc.either(state));
  return release<Kvr64fc>(state);
}

KvrStatus kvrsFIRGetTaps64fc_32fc(const KvrsFIRState64fc_32fc* state, Kvr64fc* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k64fc_32fc.either(state));
  return getTaps<Kvr64fc>(state, taps);
}

KvrStatus kvrsFIRSetTaps64fc_32fc(const Kvr64fc* taps, KvrsFIRState64fc_32fc* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k64fc_32fc.either(state));
  return PlainTaps<Kvr64fc>{taps}.template storeIn<Kvr64fc>(state);
}

KvrStatus kvrsFIRGetDlyLine64fc_32fc(const KvrsFIRState64fc_32fc* state, Kvr32fc* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k64fc_32fc.either(state));
  return getDelayLine<Kvr64fc>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine64fc_32fc(KvrsFIRState64fc_32fc* state, const Kvr32fc* dlyLine) noexcept {
  KVRS_CHECK(k64fc_32fc.either(state));
  return setDelayLine<Kvr64fc>(state, dlyLine);
}

KvrStatus kvrsFIROne64fc_32fc(Kvr32fc src, Kvr32fc* dst, KvrsFIRState64fc_32fc* state) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k64fc_32fc.single));
  return one<Kvr32fc, Kvr64fc>(*state, src, dst, NoScale());
}

KvrStatus kvrsFIR64fc_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, KvrsFIRState64fc_32fc* state) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k64fc_32fc.either(state));
  return filterAny<Kvr32fc, Kvr64fc>(k64fc_32fc, *state, src, dst, len, NoScale());
}

KvrStatus kvrsFIR64fc_32fc_I(Kvr32fc* srcDst, int len, KvrsFIRState64fc_32fc* state) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k64fc_32fc.either(state));
  return filterAnyInPlace<Kvr32fc, Kvr64fc>(k64fc_32fc, *state, srcDst, len, NoScale());
}

KvrStatus kvrsFIRInit64fc_32sc(KvrsFIRState64fc_32sc** state, const Kvr64fc* taps, int tapsLen,
                               const Kvr32sc* dlyLine, Kvr8u* buffer) noexcept {
  return init(k64fc_32sc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc64fc_32sc(KvrsFIRState64fc_32sc** state, const Kvr64fc* taps, int tapsLen,
                                    const Kvr32sc* dlyLine) noexcept {
  return initAlloc(k64fc_32sc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree64fc_32sc(KvrsFIRState64fc_32sc* state) noexcept {
  KVRS_CHECK(k64fc_32sc.either(state));
  return release<Kvr64fc>(state);
}

KvrStatus kvrsFIRGetTaps64fc_32sc(const KvrsFIRState64fc_32sc* state, Kvr64fc* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k64fc_32sc.either(state));
  return getTaps<Kvr64fc>(state, taps);
}

KvrStatus kvrsFIRSetTaps64fc_32sc(const Kvr64fc* taps, KvrsFIRState64fc_32sc* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k64fc_32sc.either(state));
  return PlainTaps<Kvr64fc>{taps}.template storeIn<Kvr64fc>(state);
}

KvrStatus kvrsFIRGetDlyLine64fc_32sc(const KvrsFIRState64fc_32sc* state, Kvr32sc* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k64fc_32sc.either(state));
  return getDelayLine<Kvr64fc>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine64fc_32sc(KvrsFIRState64fc_32sc* state, const Kvr32sc* dlyLine) noexcept {
  KVRS_CHECK(k64fc_32sc.either(state));
  return setDelayLine<Kvr64fc>(state, dlyLine);
}

KvrStatus kvrsFIROne64fc_32sc_Sfs(Kvr32sc src, Kvr32sc* dst, KvrsFIRState64fc_32sc* state,
                                  int scaleFactor) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k64fc_32sc.single));
  return one<Kvr32sc, Kvr64fc>(*state, src, dst, scaleFactor);
}

KvrStatus kvrsFIR64fc_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, int len, KvrsFIRState64fc_32sc* state,
                               int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k64fc_32sc.either(state));
  return filterAny<Kvr32sc, Kvr64fc>(k64fc_32sc, *state, src, dst, len, scaleFactor);
}

KvrStatus kvrsFIR64fc_32sc_ISfs(Kvr32sc* srcDst, int len, KvrsFIRState64fc_32sc* state,
                                int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k64fc_32sc.either(state));
  return filterAnyInPlace<Kvr32sc, Kvr64fc>(k64fc_32sc, *state, srcDst, len, scaleFactor);
}

KvrStatus kvrsFIRInit64fc_16sc(KvrsFIRState64fc_16sc** state, const Kvr64fc* taps, int tapsLen,
                               const Kvr16sc* dlyLine, Kvr8u* buffer) noexcept {
  return init(k64fc_16sc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc64fc_16sc(KvrsFIRState64fc_16sc** state, const Kvr64fc* taps, int tapsLen,
                                    const Kvr16sc* dlyLine) noexcept {
  return initAlloc(k64fc_16sc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree64fc_16sc(KvrsFIRState64fc_16sc* state) noexcept {
  KVRS_CHECK(k64fc_16sc.either(state));
  return release<Kvr64fc>(state);
}

KvrStatus kvrsFIRGetTaps64fc_16sc(const KvrsFIRState64fc_16sc* state, Kvr64fc* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k64fc_16sc.either(state));
  return getTaps<Kvr64fc>(state, taps);
}

KvrStatus kvrsFIRSetTaps64fc_16sc(const Kvr64fc* taps, KvrsFIRState64fc_16sc* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k64fc_16sc.either(state));
  return PlainTaps<Kvr64fc>{taps}.template storeIn<Kvr64fc>(state);
}

KvrStatus kvrsFIRGetDlyLine64fc_16sc(const KvrsFIRState64fc_16sc* state, Kvr16sc* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k64fc_16sc.either(state));
  return getDelayLine<Kvr64fc>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine64fc_16sc(KvrsFIRState64fc_16sc* state, const Kvr16sc* dlyLine) noexcept {
  KVRS_CHECK(k64fc_16sc.either(state));
  return setDelayLine<Kvr64fc>(state, dlyLine);
}

KvrStatus kvrsFIROne64fc_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, KvrsFIRState64fc_16sc* state,
                                  int scaleFactor) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k64fc_16sc.single));
  return one<Kvr16sc, Kvr64fc>(*state, src, dst, scaleFactor);
}

KvrStatus kvrsFIR64fc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, KvrsFIRState64fc_16sc* state,
                               int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k64fc_16sc.either(state));
  return filterAny<Kvr16sc, Kvr64fc>(k64fc_16sc, *state, src, dst, len, scaleFactor);
}

KvrStatus kvrsFIR64fc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsFIRState64fc_16sc* state,
                                int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k64fc_16sc.either(state));
  return filterAnyInPlace<Kvr16sc, Kvr64fc>(k64fc_16sc, *state, srcDst, len, scaleFactor);
}
