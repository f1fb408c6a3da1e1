// Recursive filters that work in double precision.
// SPDX-License-Identifier: MIT
#include "filters/iir_engine-inl.h"
#include "frame/array_length.h"
#include "kvrs/fill.h"

namespace kvrs::iir {

template void filterTile<Kvr64f>(State<Kvr64f>&, const Kvr64f*, Kvr64f*, size_t);

namespace {

constexpr uint32_t kDf1 = wordOf<KvrsIIRState64f_32s>(Form::df1);

// The df1 form is one on top of the transposed form: that form's delay line is what the last inputs and outputs still have
// to add.
void enterDf1(State<Kvr64f>& state) {
  const Kvr64f* past = state.df1DlyLine.get();
  Kvr64f* d = state.dlyLine.get();
  for (int i = 0; i < state.numBq; ++i, past += 4, d += 2) {
    const Section<Kvr64f>& s = state.sections()[i];
    d[0] = s.b1 * past[1] + s.b2 * past[0] - s.a1 * past[3] - s.a2 * past[2];
    d[1] = s.b2 * past[1] - s.a2 * past[3];
  }
}

// With a2 = 0 the transposed delay line does not tell what the last output was before it was rounded.
void leaveDf1(State<Kvr64f>& state, Kvr32s lastOutput, int scaleFactor) {
  const auto last = static_cast<size_t>(state.numBq - 1);
  if (state.sections()[last].a2 != 0) return;
  Kvr64f* past = state.df1DlyLine.get() + 4 * last;
  past[2] = 0;
  past[3] = lastOutput * powerOfTwo<Kvr64f>(samples::boundedScale<Kvr64f>(scaleFactor));
}

void filterFrom(const Kvr32s* src, Kvr32s* dst, size_t len, State<Kvr64f>& state, int scaleFactor) {
  const bool df1 = state.idWord == kDf1;
  if (df1) enterDf1(state);
  filter(state, src, dst, len, scaleFactor);
  if (df1 && (len > 1 || state.numBq > 1)) leaveDf1(state, at(dst, len - 1), scaleFactor);
}

// The word of the first context is that of all.
KvrStatus filterChannels(const Kvr32s* const* src, Kvr32s* const* dst, size_t len, int nChannels,
                         KvrsIIRState64f_32s* const* state, const int* scaleFactor) {
  KVRS_CHECK(contextOf(state[0]));
  // Of direct forms alone the number of channels is looked at, and it has no status of its own.
  if (nChannels < 1 && state[0]->form == Form::direct) return kvrStatusContextMismatch;
  for (int i = 1; i < nChannels; ++i) KVRS_CHECK(context(state[i], state[0]->idWord));
  for (int i = 0; i < nChannels; ++i) KVRS_CHECK(pointers(src[i], dst[i]));
  for (int i = 0; i < nChannels; ++i) filterFrom(src[i], dst[i], len, *state[i], scaleFactor[i]);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::iir

using namespace kvrs;

KvrStatus kvrsIIRGetStateSize64f_16s(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64f_16s>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize64f_32f(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64f_32f>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize64f_32s(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64f_32s>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize64f_BiQuad_16s(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64f_16s>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize64f_BiQuad_32f(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64f_32f>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize64f_BiQuad_32s(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64f_32s>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize64f_BiQuad_DF1_32s(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64f_32s>(iir::Form::df1, numBq, size);
}

KvrStatus kvrsIIRGetStateSize_64f(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState_64f>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize_BiQuad_64f(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState_64f>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRInitAlloc64f_16s(KvrsIIRState64f_16s** state, const Kvr64f* taps, int order,
                                  const Kvr64f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64f_32f(KvrsIIRState64f_32f** state, const Kvr64f* taps, int order,
                                  const Kvr64f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64f_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int order,
                                  const Kvr64f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64f_BiQuad_16s(KvrsIIRState64f_16s** state, const Kvr64f* taps, int numBq,
                                         const Kvr64f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64f_BiQuad_32f(KvrsIIRState64f_32f** state, const Kvr64f* taps, int numBq,
                                         const Kvr64f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64f_BiQuad_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int numBq,
                                         const Kvr64f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64f_BiQuad_DF1_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int numBq,
                                             const Kvr64f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::df1, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc_64f(KvrsIIRState_64f** state, const Kvr64f* taps, int order,
                               const Kvr64f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc_BiQuad_64f(KvrsIIRState_64f** state, const Kvr64f* taps, int numBq,
                                      const Kvr64f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInit64f_16s(KvrsIIRState64f_16s** state, const Kvr64f* taps, int order,
                             const Kvr64f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64f_32f(KvrsIIRState64f_32f** state, const Kvr64f* taps, int order,
                             const Kvr64f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64f_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int order,
                             const Kvr64f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64f_BiQuad_16s(KvrsIIRState64f_16s** state, const Kvr64f* taps, int numBq,
                                    const Kvr64f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64f_BiQuad_32f(KvrsIIRState64f_32f** state, const Kvr64f* taps, int numBq,
                                    const Kvr64f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64f_BiQuad_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int numBq,
                                    const Kvr64f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64f_BiQuad_DF1_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int numBq,
                                        const Kvr64f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::df1, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit_64f(KvrsIIRState_64f** state, const Kvr64f* taps, int order, const Kvr64f* dlyLine,
                          Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit_BiQuad_64f(KvrsIIRState_64f** state, const Kvr64f* taps, int numBq,
                                 const Kvr64f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRFree64f_16s(KvrsIIRState64f_16s* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRFree64f_32f(KvrsIIRState64f_32f* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRFree64f_32s(KvrsIIRState64f_32s* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRFree_64f(KvrsIIRState_64f* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRGetDlyLine64f_16s(const KvrsIIRState64f_16s* state, Kvr64f* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRGetDlyLine64f_32f(const KvrsIIRState64f_32f* state, Kvr64f* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRGetDlyLine64f_32s(const KvrsIIRState64f_32s* state, Kvr64f* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRGetDlyLine64f_DF1_32s(const KvrsIIRState64f_32s* state, Kvr32s* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), context(state, iir::kDf1));
  return kvrsConvert_64f32s_Sfs(state->df1DlyLine.get(), dlyLine, 4 * state->numBq, kvrRoundNear, 0);
}

KvrStatus kvrsIIRGetDlyLine_64f(const KvrsIIRState_64f* state, Kvr64f* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine64f_16s(KvrsIIRState64f_16s* state, const Kvr64f* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine64f_32f(KvrsIIRState64f_32f* state, const Kvr64f* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine64f_32s(KvrsIIRState64f_32s* state, const Kvr64f* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine64f_DF1_32s(KvrsIIRState64f_32s* state, const Kvr32s* dlyLine) noexcept {
  KVRS_CHECK(context(state, iir::kDf1));
  if (dlyLine == nullptr) return kvrsZero_64f(state->df1DlyLine.get(), 4 * state->numBq);
  return kvrsConvert_32s64f(dlyLine, state->df1DlyLine.get(), 4 * state->numBq);
}

KvrStatus kvrsIIRSetDlyLine_64f(KvrsIIRState_64f* state, const Kvr64f* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetTaps64f_16s(const Kvr64f* taps, KvrsIIRState64f_16s* state) noexcept {
  return iir::setTaps(taps, state);
}

KvrStatus kvrsIIRSetTaps64f_32f(const Kvr64f* taps, KvrsIIRState64f_32f* state) noexcept {
  return iir::setTaps(taps, state);
}

KvrStatus kvrsIIRSetTaps64f_32s(const Kvr64f* taps, KvrsIIRState64f_32s* state) noexcept {
  return iir::setTaps(taps, state);
}

KvrStatus kvrsIIRSetTaps_64f(const Kvr64f* taps, KvrsIIRState_64f* state) noexcept {
  return iir::setTaps(taps, state);
}

KvrStatus kvrsIIROne64f_16s_Sfs(Kvr16s val, Kvr16s* dst, KvrsIIRState64f_16s* state,
                                int scaleFactor) noexcept {
  return iir::checkedOne(val, dst, state, scaleFactor);
}

KvrStatus kvrsIIROne64f_32f(Kvr32f val, Kvr32f* dst, KvrsIIRState64f_32f* state) noexcept {
  return iir::checkedOne(val, dst, state);
}

KvrStatus kvrsIIROne64f_32s_Sfs(Kvr32s val, Kvr32s* dst, KvrsIIRState64f_32s* state,
                                int scaleFactor) noexcept {
  return iir::checkedOne(val, dst, state, scaleFactor);
}

KvrStatus kvrsIIROne_64f(Kvr64f val, Kvr64f* dst, KvrsIIRState_64f* state) noexcept {
  return iir::checkedOne(val, dst, state);
}

KvrStatus kvrsIIR64f_16s_ISfs(Kvr16s* srcDst, int len, KvrsIIRState64f_16s* state, int scaleFactor) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state, scaleFactor);
}

KvrStatus kvrsIIR64f_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsIIRState64f_16s* state,
                             int scaleFactor) noexcept {
  return iir::checkedFilter(src, dst, len, state, scaleFactor);
}

KvrStatus kvrsIIR64f_32f(const Kvr32f* src, Kvr32f* dst, int len, KvrsIIRState64f_32f* state) noexcept {
  return iir::checkedFilter(src, dst, len, state);
}

KvrStatus kvrsIIR64f_32f_I(Kvr32f* srcDst, int len, KvrsIIRState64f_32f* state) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state);
}

KvrStatus kvrsIIR64f_32s_IPSfs(Kvr32s* const* srcDst, int len, int nChannels,
                               KvrsIIRState64f_32s* const* state, const int* scaleFactor) noexcept {
  return kvrsIIR64f_32s_PSfs(srcDst, srcDst, len, nChannels, state, scaleFactor);
}

KvrStatus kvrsIIR64f_32s_ISfs(Kvr32s* srcDst, int len, KvrsIIRState64f_32s* state, int scaleFactor) noexcept {
  return kvrsIIR64f_32s_Sfs(srcDst, srcDst, len, state, scaleFactor);
}

KvrStatus kvrsIIR64f_32s_PSfs(const Kvr32s* const* src, Kvr32s* const* dst, int len, int nChannels,
                              KvrsIIRState64f_32s* const* state, const int* scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, state, scaleFactor), channelLength(len, src));
  return iir::filterChannels(src, dst, static_cast<size_t>(len), nChannels, state, scaleFactor);
}

KvrStatus kvrsIIR64f_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, KvrsIIRState64f_32s* state,
                             int scaleFactor) noexcept {
  KVRS_CHECK(pointers(state, src, dst), length(len, src, dst), iir::contextOf(state));
  iir::filterFrom(src, dst, static_cast<size_t>(len), *state, scaleFactor);
  return kvrStatusOk;
}

KvrStatus kvrsIIR_64f(const Kvr64f* src, Kvr64f* dst, int len, KvrsIIRState_64f* state) noexcept {
  return iir::checkedFilter(src, dst, len, state);
}

KvrStatus kvrsIIR_64f_I(Kvr64f* srcDst, int len, KvrsIIRState_64f* state) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state);
}
