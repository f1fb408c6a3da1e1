// FIR filters that work in double precision.
// SPDX-License-Identifier: MIT
#include "filters/fir_rates-inl.h"
#include "frame/array_length.h"

using namespace kvrs::fir;

KvrStatus kvrsFIRGetStateSize_64f(int tapsLen, int* size) noexcept {
  return getStateSize<Kvr64f>(k_64f, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRInit_64f(KvrsFIRState_64f** state, const Kvr64f* taps, int tapsLen, const Kvr64f* dlyLine,
                          Kvr8u* buffer) noexcept {
  return init(k_64f, state, PlainTaps<Kvr64f>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc_64f(KvrsFIRState_64f** state, const Kvr64f* taps, int tapsLen,
                               const Kvr64f* dlyLine) noexcept {
  return initAlloc(k_64f, state, PlainTaps<Kvr64f>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree_64f(KvrsFIRState_64f* state) noexcept {
  KVRS_CHECK(k_64f.either(state));
  return release<Kvr64f>(state);
}

KvrStatus kvrsFIRGetTaps_64f(const KvrsFIRState_64f* state, Kvr64f* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k_64f.either(state));
  return getTaps<Kvr64f>(state, taps);
}

KvrStatus kvrsFIRSetTaps_64f(const Kvr64f* taps, KvrsFIRState_64f* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k_64f.either(state));
  return PlainTaps<Kvr64f>{taps}.template storeIn<Kvr64f>(state);
}

KvrStatus kvrsFIRGetDlyLine_64f(const KvrsFIRState_64f* state, Kvr64f* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k_64f.either(state));
  return getDelayLine<Kvr64f>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine_64f(KvrsFIRState_64f* state, const Kvr64f* dlyLine) noexcept {
  KVRS_CHECK(k_64f.either(state));
  return setDelayLine<Kvr64f>(state, dlyLine);
}

KvrStatus kvrsFIROne_64f(Kvr64f src, Kvr64f* dst, KvrsFIRState_64f* state) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k_64f.single));
  return one<Kvr64f, Kvr64f>(*state, src, dst, NoScale());
}

KvrStatus kvrsFIR_64f(const Kvr64f* src, Kvr64f* dst, int len, KvrsFIRState_64f* state) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k_64f.either(state));
  return filterAny<Kvr64f, Kvr64f>(k_64f, *state, src, dst, len, NoScale());
}

KvrStatus kvrsFIR_64f_I(Kvr64f* srcDst, int len, KvrsFIRState_64f* state) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k_64f.either(state));
  return filterAnyInPlace<Kvr64f, Kvr64f>(k_64f, *state, srcDst, len, NoScale());
}

KvrStatus kvrsFIRInit64f_32f(KvrsFIRState64f_32f** state, const Kvr64f* taps, int tapsLen,
                             const Kvr32f* dlyLine, Kvr8u* buffer) noexcept {
  return init(k64f_32f, state, PlainTaps<Kvr64f>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc64f_32f(KvrsFIRState64f_32f** state, const Kvr64f* taps, int tapsLen,
                                  const Kvr32f* dlyLine) noexcept {
  return initAlloc(k64f_32f, state, PlainTaps<Kvr64f>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree64f_32f(KvrsFIRState64f_32f* state) noexcept {
  KVRS_CHECK(k64f_32f.either(state));
  return release<Kvr64f>(state);
}

KvrStatus kvrsFIRGetTaps64f_32f(const KvrsFIRState64f_32f* state, Kvr64f* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k64f_32f.either(state));
  return getTaps<Kvr64f>(state, taps);
}

KvrStatus kvrsFIRSetTaps64f_32f(const Kvr64f* taps, KvrsFIRState64f_32f* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k64f_32f.either(state));
  return PlainTaps<Kvr64f>{taps}.template storeIn<Kvr64f>(state);
}

KvrStatus kvrsFIRGetDlyLine64f_32f(const KvrsFIRState64f_32f* state, Kvr32f* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k64f_32f.either(state));
  return getDelayLine<Kvr64f>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine64f_32f(KvrsFIRState64f_32f* state, const Kvr32f* dlyLine) noexcept {
  KVRS_CHECK(k64f_32f.either(state));
  return setDelayLine<Kvr64f>(state, dlyLine);
}

KvrStatus kvrsFIROne64f_32f(Kvr32f src, Kvr32f* dst, KvrsFIRState64f_32f* state) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k64f_32f.single));
  return one<Kvr32f, Kvr64f>(*state, src, dst, NoScale());
}

KvrStatus kvrsFIR64f_32f(const Kvr32f* src, Kvr32f* dst, int len, KvrsFIRState64f_32f* state) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k64f_32f.either(state));
  return filterAny<Kvr32f, Kvr64f>(k64f_32f, *state, src, dst, len, NoScale());
}

KvrStatus kvrsFIR64f_32f_I(Kvr32f* srcDst, int len, KvrsFIRState64f_32f* state) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k64f_32f.either(state));
  return filterAnyInPlace<Kvr32f, Kvr64f>(k64f_32f, *state, srcDst, len, NoScale());
}

KvrStatus kvrsFIRInit64f_32s(KvrsFIRState64f_32s** state, const Kvr64f* taps, int tapsLen,
                             const Kvr32s* dlyLine, Kvr8u* buffer) noexcept {
  return init(k64f_32s, state, PlainTaps<Kvr64f>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc64f_32s(KvrsFIRState64f_32s** state, const Kvr64f* taps, int tapsLen,
                                  const Kvr32s* dlyLine) noexcept {
  return initAlloc(k64f_32s, state, PlainTaps<Kvr64f>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree64f_32s(KvrsFIRState64f_32s* state) noexcept {
  KVRS_CHECK(k64f_32s.either(state));
  return release<Kvr64f>(state);
}

KvrStatus kvrsFIRGetTaps64f_32s(const KvrsFIRState64f_32s* state, Kvr64f* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k64f_32s.either(state));
  return getTaps<Kvr64f>(state, taps);
}

KvrStatus kvrsFIRSetTaps64f_32s(const Kvr64f* taps, KvrsFIRState64f_32s* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k64f_32s.either(state));
  return PlainTaps<Kvr64f>{taps}.template storeIn<Kvr64f>(state);
}

KvrStatus kvrsFIRGetDlyLine64f_32s(const KvrsFIRState64f_32s* state, Kvr32s* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k64f_32s.either(state));
  return getDelayLine<Kvr64f>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine64f_32s(KvrsFIRState64f_32s* state, const Kvr32s* dlyLine) noexcept {
  KVRS_CHECK(k64f_32s.either(state));
  return setDelayLine<Kvr64f>(state, dlyLine);
}

KvrStatus kvrsFIR64f_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, KvrsFIRState64f_32s* state,
                             int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k64f_32s.either(state));
  return filterAny<Kvr32s, Kvr64f>(k64f_32s, *state, src, dst, len, scaleFactor);
}

KvrStatus kvrsFIR64f_32s_ISfs(Kvr32s* srcDst, int len, KvrsFIRState64f_32s* state, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k64f_32s.either(state));
  return filterAnyInPlace<Kvr32s, Kvr64f>(k64f_32s, *state, srcDst, len, scaleFactor);
}

KvrStatus kvrsFIRInit64f_16s(KvrsFIRState64f_16s** state, const Kvr64f* taps, int tapsLen,
                             const Kvr16s* dlyLine, Kvr8u* buffer) noexcept {
  return init(k64f_16s, state, PlainTaps<Kvr64f>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc64f_16s(KvrsFIRState64f_16s** state, const Kvr64f* taps, int tapsLen,
                                  const Kvr16s* dlyLine) noexcept {
  return initAlloc(k64f_16s, state, PlainTaps<Kvr64f>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree64f_16s(KvrsFIRState64f_16s* state) noexcept {
  KVRS_CHECK(k64f_16s.either(state));
  return release<Kvr64f>(state);
}

KvrStatus kvrsFIRGetTaps64f_16s(const KvrsFIRState64f_16s* state, Kvr64f* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k64f_16s.either(state));
  return getTaps<Kvr64f>(state, taps);
}

KvrStatus kvrsFIRSetTaps64f_16s(const Kvr64f* taps, KvrsFIRState64f_16s* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k64f_16s.either(state));
  return PlainTaps<Kvr64f>{taps}.template storeIn<Kvr64f>(state);
}

KvrStatus kvrsFIRGetDlyLine64f_16s(const KvrsFIRState64f_16s* state, Kvr16s* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k64f_16s.either(state));
  return getDelayLine<Kvr64f>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine64f_16s(KvrsFIRState64f_16s* state, const Kvr16s* dlyLine) noexcept {
  KVRS_CHECK(k64f_16s.either(state));
  return setDelayLine<Kvr64f>(state, dlyLine);
}

KvrStatus kvrsFIROne64f_16s_Sfs(Kvr16s src, Kvr16s* dst, KvrsFIRState64f_16s* state,
                                int scaleFactor) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k64f_16s.single));
  return one<Kvr16s, Kvr64f>(*state, src, dst, scaleFactor);
}

KvrStatus kvrsFIR64f_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsFIRState64f_16s* state,
                             int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k64f_16s.either(state));
  return filterAny<Kvr16s, Kvr64f>(k64f_16s, *state, src, dst, len, scaleFactor);
}

KvrStatus kvrsFIR64f_16s_ISfs(Kvr16s* srcDst, int len, KvrsFIRState64f_16s* state, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k64f_16s.either(state));
  return filterAnyInPlace<Kvr16s, Kvr64f>(k64f_16s, *state, srcDst, len, scaleFactor);
}

KvrStatus kvrsFIRGetStateSize_32s(int tapsLen, int* size) noexcept {
  return getStateSize<Kvr64f>(k_32s, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRInit_32s(KvrsFIRState_32s** state, const Kvr32s* taps, int tapsLen, const Kvr32s* dlyLine,
                          Kvr8u* buffer) noexcept {
  return init(k_32s, state, PlainTaps<Kvr32s>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc_32s(KvrsFIRState_32s** state, const Kvr32s* taps, int tapsLen,
                               const Kvr32s* dlyLine) noexcept {
  return initAlloc(k_32sOnHeap, state, PlainTaps<Kvr32s>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree_32s(KvrsFIRState_32s* state) noexcept {
  KVRS_CHECK(context(state, k_32s.single));
  return release<Kvr64f>(state);
}

KvrStatus kvrsFIRGetTaps_32s(const KvrsFIRState_32s* state, Kvr32s* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k_32s.either(state));
  return getTaps<Kvr64f>(state, taps);
}

KvrStatus kvrsFIRSetTaps_32s(const Kvr32s* taps, KvrsFIRState_32s* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k_32s.either(state));
  return PlainTaps<Kvr32s>{taps}.template storeIn<Kvr64f>(state);
}

KvrStatus kvrsFIROne_32s_Sfs(Kvr32s src, Kvr32s* dst, KvrsFIRState_32s* state, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k_32s.single));
  return one<Kvr32s, Kvr64f>(*state, src, dst, scaleFactor);
}

KvrStatus kvrsFIR_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, KvrsFIRState_32s* state,
                          int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k_32s.either(state));
  return filterAny<Kvr32s, Kvr64f>(k_32s, *state, src, dst, len, scaleFactor);
}

KvrStatus kvrsFIR_32s_ISfs(Kvr32s* srcDst, int len, KvrsFIRState_32s* state, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k_32s.either(state));
  return filterAnyInPlace<Kvr32s, Kvr64f>(k_32s, *state, srcDst, len, scaleFactor);
}
