// Recursive filters that work in single precision.
// SPDX-License-Identifier: MIT
#include "filters/iir_engine-inl.h"
#include "frame/array_length.h"

namespace kvrs::iir {

template void filterTile<Kvr32f>(State<Kvr32f>&, const Kvr32f*, Kvr32f*, size_t);

namespace {

KvrStatus channelCount(int nChannels) {
  return check::require(nChannels >= 1, kvrStatusBadChannelCount);
}

// Cascades of one form, by the word of the first.
KvrStatus filterChannels(const Kvr32f* const* src, Kvr32f* const* dst, int len, int nChannels,
                         KvrsIIRState_32f* const* state) {
  using S = KvrsIIRState_32f;
  for (int i = 0; i < nChannels; ++i) {
    KVRS_CHECK(pointers(state[i], src[i], dst[i]));
    KVRS_CHECK(context(state[i], i > 0 ? state[0]->idWord : wordOf<S>(Form::cascade),
                       i > 0 ? state[0]->idWord : wordOf<S>(Form::df1)));
  }
  for (int i = 0; i < nChannels; ++i)
    filter<Kvr32f, Kvr32f>(*state[i], src[i], dst[i], static_cast<size_t>(len));
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::iir

using namespace kvrs;

KvrStatus kvrsIIRGetStateSize32f_16s(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState32f_16s>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize32f_BiQuad_16s(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState32f_16s>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize32s_16s(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState32s_16s>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize32s_BiQuad_16s(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState32s_16s>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize_32f(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState_32f>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize_BiQuad_32f(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState_32f>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize_BiQuad_DF1_32f(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState_32f>(iir::Form::df1, numBq, size);
}

KvrStatus kvrsIIRInitAlloc32f_16s(KvrsIIRState32f_16s** state, const Kvr32f* taps, int order,
                                  const Kvr32f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc32f_BiQuad_16s(KvrsIIRState32f_16s** state, const Kvr32f* taps, int numBq,
                                         const Kvr32f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc32s_16s(KvrsIIRState32s_16s** state, const Kvr32s* taps, int order, int tapsFactor,
                                  const Kvr32s* dlyLine) noexcept {
  return iir::initAllocInteger(iir::Form::direct, state, taps, order, tapsFactor, dlyLine);
}

KvrStatus kvrsIIRInitAlloc32s_16s32f(KvrsIIRState32s_16s** state, const Kvr32f* taps, int order,
                                     const Kvr32s* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc32s_BiQuad_16s(KvrsIIRState32s_16s** state, const Kvr32s* taps, int numBq,
                                         int tapsFactor, const Kvr32s* dlyLine) noexcept {
  return iir::initAllocInteger(iir::Form::cascade, state, taps, numBq, tapsFactor, dlyLine);
}

KvrStatus kvrsIIRInitAlloc32s_BiQuad_16s32f(KvrsIIRState32s_16s** state, const Kvr32f* taps, int numBq,
                                            const Kvr32s* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int order,
                               const Kvr32f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc_BiQuad_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int numBq,
                                      const Kvr32f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc_BiQuad_DF1_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int numBq,
                                          const Kvr32f* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::df1, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInit32f_16s(KvrsIIRState32f_16s** state, const Kvr32f* taps, int order,
                             const Kvr32f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit32f_BiQuad_16s(KvrsIIRState32f_16s** state, const Kvr32f* taps, int numBq,
                                    const Kvr32f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit32s_16s(KvrsIIRState32s_16s** state, const Kvr32s* taps, int order, int tapsFactor,
                             const Kvr32s* dlyLine, Kvr8u* buffer) noexcept {
  return iir::initInteger(iir::Form::direct, state, taps, order, tapsFactor, dlyLine, buffer);
}

KvrStatus kvrsIIRInit32s_16s32f(KvrsIIRState32s_16s** state, const Kvr32f* taps, int order,
                                const Kvr32s* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit32s_BiQuad_16s(KvrsIIRState32s_16s** state, const Kvr32s* taps, int numBq,
                                    int tapsFactor, const Kvr32s* dlyLine, Kvr8u* buffer) noexcept {
  return iir::initInteger(iir::Form::cascade, state, taps, numBq, tapsFactor, dlyLine, buffer);
}

KvrStatus kvrsIIRInit32s_BiQuad_16s32f(KvrsIIRState32s_16s** state, const Kvr32f* taps, int numBq,
                                       const Kvr32s* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int order, const Kvr32f* dlyLine,
                          Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit_BiQuad_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int numBq,
                                 const Kvr32f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit_BiQuad_DF1_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int numBq,
                                     const Kvr32f* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::df1, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRFree32f_16s(KvrsIIRState32f_16s* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRFree32s_16s(KvrsIIRState32s_16s* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRFree_32f(KvrsIIRState_32f* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRGetDlyLine32f_16s(const KvrsIIRState32f_16s* state, Kvr32f* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRGetDlyLine32s_16s(const KvrsIIRState32s_16s* state, Kvr32s* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRGetDlyLine_32f(const KvrsIIRState_32f* state, Kvr32f* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine32f_16s(KvrsIIRState32f_16s* state, const Kvr32f* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine32s_16s(KvrsIIRState32s_16s* state, const Kvr32s* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine_32f(KvrsIIRState_32f* state, const Kvr32f* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetTaps32f_16s(const Kvr32f* taps, KvrsIIRState32f_16s* state) noexcept {
  return iir::setTaps(taps, state);
}

// With usual checks, but a mismatch for its status even where it succeeds.
KvrStatus kvrsIIRSetTaps32s_16s(const Kvr32s* taps, KvrsIIRState32s_16s* state, int tapsFactor) noexcept {
  return iir::setTapsInteger(taps, state, tapsFactor);
}

KvrStatus kvrsIIRSetTaps32s_16s32f(const Kvr32f* taps, KvrsIIRState32s_16s* state) noexcept {
  return iir::setTaps(taps, state);
}

KvrStatus kvrsIIRSetTaps_32f(const Kvr32f* taps, KvrsIIRState_32f* state) noexcept {
  return iir::setTaps(taps, state);
}

KvrStatus kvrsIIROne32f_16s_Sfs(Kvr16s val, Kvr16s* dst, KvrsIIRState32f_16s* state,
                                int scaleFactor) noexcept {
  return iir::checkedOne(val, dst, state, scaleFactor);
}

KvrStatus kvrsIIROne32s_16s_Sfs(Kvr16s val, Kvr16s* dst, KvrsIIRState32s_16s* state,
                                int scaleFactor) noexcept {
  return iir::checkedOne(val, dst, state, scaleFactor);
}

KvrStatus kvrsIIROne_32f(Kvr32f val, Kvr32f* dst, KvrsIIRState_32f* state) noexcept {
  return iir::checkedOne(val, dst, state);
}

KvrStatus kvrsIIR32f_16s_ISfs(Kvr16s* srcDst, int len, KvrsIIRState32f_16s* state, int scaleFactor) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state, scaleFactor);
}

KvrStatus kvrsIIR32f_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsIIRState32f_16s* state,
                             int scaleFactor) noexcept {
  return iir::checkedFilter(src, dst, len, state, scaleFactor);
}

KvrStatus kvrsIIR32s_16s_ISfs(Kvr16s* srcDst, int len, KvrsIIRState32s_16s* state, int scaleFactor) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state, scaleFactor);
}

KvrStatus kvrsIIR32s_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsIIRState32s_16s* state,
                             int scaleFactor) noexcept {
  return iir::checkedFilter(src, dst, len, state, scaleFactor);
}

KvrStatus kvrsIIR_32f(const Kvr32f* src, Kvr32f* dst, int len, KvrsIIRState_32f* state) noexcept {
  return iir::checkedFilter(src, dst, len, state);
}

KvrStatus kvrsIIR_32f_I(Kvr32f* srcDst, int len, KvrsIIRState_32f* state) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state);
}

KvrStatus kvrsIIR_32f_IP(Kvr32f* const* srcDst, int len, int nChannels,
                         KvrsIIRState_32f* const* state) noexcept {
  return kvrsIIR_32f_P(srcDst, srcDst, len, nChannels, state);
}

KvrStatus kvrsIIR_32f_P(const Kvr32f* const* src, Kvr32f* const* dst, int len, int nChannels,
                        KvrsIIRState_32f* const* state) noexcept {
  KVRS_CHECK(pointers(state, src, dst), channelLength(len, src), iir::channelCount(nChannels));
  return iir::filterChannels(src, dst, len, nChannels, state);
}
