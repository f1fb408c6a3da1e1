// FIR filters that work in single precision.
// SPDX-License-Identifier: MIT
#include "filters/fir_rates-inl.h"
#include "filters/fir_stream-inl.h"
#include "frame/array_length.h"

using namespace kvrs::fir;

KvrStatus kvrsFIRGetStateSize_32f(int tapsLen, int* size) noexcept {
  return getStateSize<Kvr32f>(k_32f, tapsLen, nullptr, size);
}

KvrStatus kvrsFIRInit_32f(KvrsFIRState_32f** state, const Kvr32f* taps, int tapsLen, const Kvr32f* dlyLine,
                          Kvr8u* buffer) noexcept {
  return init(k_32f, state, PlainTaps<Kvr32f>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc_32f(KvrsFIRState_32f** state, const Kvr32f* taps, int tapsLen,
                               const Kvr32f* dlyLine) noexcept {
  return initAlloc(k_32f, state, PlainTaps<Kvr32f>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree_32f(KvrsFIRState_32f* state) noexcept {
  KVRS_CHECK(context(state, k_32f.single, k_32f.multi, kStream_32f.single, kStream_32f.multi));
  return release<Kvr32f>(state);
}

KvrStatus kvrsFIRGetTaps_32f(const KvrsFIRState_32f* state, Kvr32f* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k_32f.either(state));
  return getTaps<Kvr32f>(state, taps);
}

KvrStatus kvrsFIRSetTaps_32f(const Kvr32f* taps, KvrsFIRState_32f* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k_32f.either(state));
  return PlainTaps<Kvr32f>{taps}.template storeIn<Kvr32f>(state);
}

KvrStatus kvrsFIRGetDlyLine_32f(const KvrsFIRState_32f* state, Kvr32f* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k_32f.either(state));
  return getDelayLine<Kvr32f>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine_32f(KvrsFIRState_32f* state, const Kvr32f* dlyLine) noexcept {
  KVRS_CHECK(k_32f.either(state));
  return setDelayLine<Kvr32f>(state, dlyLine);
}

KvrStatus kvrsFIROne_32f(Kvr32f src, Kvr32f* dst, KvrsFIRState_32f* state) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k_32f.single));
  return one<Kvr32f, Kvr32f>(*state, src, dst, NoScale());
}

KvrStatus kvrsFIR_32f(const Kvr32f* src, Kvr32f* dst, int len, KvrsFIRState_32f* state) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst));
  if (kStream_32f.either(state) == kvrStatusOk)
    return filterStream(*state, src, dst, static_cast<size_t>(len), NoScale());
  KVRS_CHECK(k_32f.either(state));
  return filterAny<Kvr32f, Kvr32f>(k_32f, *state, src, dst, len, NoScale());
}

KvrStatus kvrsFIR_32f_I(Kvr32f* srcDst, int len, KvrsFIRState_32f* state) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k_32f.either(state));
  return filterAnyInPlace<Kvr32f, Kvr32f>(k_32f, *state, srcDst, len, NoScale());
}

KvrStatus kvrsFIRInit32f_16s(KvrsFIRState32f_16s** state, const Kvr32f* taps, int tapsLen,
                             const Kvr16s* dlyLine, Kvr8u* buffer) noexcept {
  return init(k32f_16s, state, PlainTaps<Kvr32f>{taps}, tapsLen, nullptr, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc32f_16s(KvrsFIRState32f_16s** state, const Kvr32f* taps, int tapsLen,
                                  const Kvr16s* dlyLine) noexcept {
  return initAlloc(k32f_16s, state, PlainTaps<Kvr32f>{taps}, tapsLen, nullptr, dlyLine);
}

KvrStatus kvrsFIRFree32f_16s(KvrsFIRState32f_16s* state) noexcept {
  KVRS_CHECK(k32f_16s.either(state));
  return release<Kvr32f>(state);
}

KvrStatus kvrsFIRGetTaps32f_16s(const KvrsFIRState32f_16s* state, Kvr32f* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), k32f_16s.either(state));
  return getTaps<Kvr32f>(state, taps);
}

KvrStatus kvrsFIRSetTaps32f_16s(const Kvr32f* taps, KvrsFIRState32f_16s* state) noexcept {
  KVRS_CHECK(pointers(taps, state), k32f_16s.either(state));
  return PlainTaps<Kvr32f>{taps}.template storeIn<Kvr32f>(state);
}

KvrStatus kvrsFIRGetDlyLine32f_16s(const KvrsFIRState32f_16s* state, Kvr16s* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), k32f_16s.either(state));
  return getDelayLine<Kvr32f>(state, dlyLine);
}

KvrStatus kvrsFIRSetDlyLine32f_16s(KvrsFIRState32f_16s* state, const Kvr16s* dlyLine) noexcept {
  KVRS_CHECK(k32f_16s.either(state));
  return setDelayLine<Kvr32f>(state, dlyLine);
}

KvrStatus kvrsFIROne32f_16s_Sfs(Kvr16s src, Kvr16s* dst, KvrsFIRState32f_16s* state,
                                int scaleFactor) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, k32f_16s.single));
  return one<Kvr16s, Kvr32f>(*state, src, dst, scaleFactor);
}

KvrStatus kvrsFIR32f_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsFIRState32f_16s* state,
                             int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state), length(len, src, dst), k32f_16s.either(state));
  return filterAny<Kvr16s, Kvr32f>(k32f_16s, *state, src, dst, len, scaleFactor);
}

KvrStatus kvrsFIR32f_16s_ISfs(Kvr16s* srcDst, int len, KvrsFIRState32f_16s* state, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len, srcDst), k32f_16s.either(state));
  return filterAnyInPlace<Kvr16s, Kvr32f>(k32f_16s, *state, srcDst, len, scaleFactor);
}
