// Recursive filters that work in complex single precision.
// SPDX-License-Identifier: MIT
#include "filters/iir_engine-inl.h"

namespace kvrs::iir {

template void filterTile<Kvr32fc>(State<Kvr32fc>&, const Kvr32fc*, Kvr32fc*, size_t);

}  // namespace kvrs::iir

using namespace kvrs;

KvrStatus kvrsIIRGetStateSize32fc_16sc(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState32fc_16sc>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize32fc_BiQuad_16sc(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState32fc_16sc>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize32sc_16sc(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState32sc_16sc>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize32sc_BiQuad_16sc(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState32sc_16sc>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize_32fc(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState_32fc>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize_BiQuad_32fc(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState_32fc>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRInitAlloc32fc_16sc(KvrsIIRState32fc_16sc** state, const Kvr32fc* taps, int order,
                                    const Kvr32fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc32fc_BiQuad_16sc(KvrsIIRState32fc_16sc** state, const Kvr32fc* taps, int numBq,
                                           const Kvr32fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc32sc_16sc(KvrsIIRState32sc_16sc** state, const Kvr32sc* taps, int order,
                                    int tapsFactor, const Kvr32sc* dlyLine) noexcept {
  return iir::initAllocInteger(iir::Form::direct, state, taps, order, tapsFactor, dlyLine);
}

KvrStatus kvrsIIRInitAlloc32sc_16sc32fc(KvrsIIRState32sc_16sc** state, const Kvr32fc* taps, int order,
                                        const Kvr32sc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc32sc_BiQuad_16sc(KvrsIIRState32sc_16sc** state, const Kvr32sc* taps, int numBq,
                                           int tapsFactor, const Kvr32sc* dlyLine) noexcept {
  return iir::initAllocInteger(iir::Form::cascade, state, taps, numBq, tapsFactor, dlyLine);
}

KvrStatus kvrsIIRInitAlloc32sc_BiQuad_16sc32fc(KvrsIIRState32sc_16sc** state, const Kvr32fc* taps, int numBq,
                                               const Kvr32sc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc_32fc(KvrsIIRState_32fc** state, const Kvr32fc* taps, int order,
                                const Kvr32fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc_BiQuad_32fc(KvrsIIRState_32fc** state, const Kvr32fc* taps, int numBq,
                                       const Kvr32fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInit32fc_16sc(KvrsIIRState32fc_16sc** state, const Kvr32fc* taps, int order,
                               const Kvr32fc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit32fc_BiQuad_16sc(KvrsIIRState32fc_16sc** state, const Kvr32fc* taps, int numBq,
                                      const Kvr32fc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit32sc_16sc(KvrsIIRState32sc_16sc** state, const Kvr32sc* taps, int order, int tapsFactor,
                               const Kvr32sc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::initInteger(iir::Form::direct, state, taps, order, tapsFactor, dlyLine, buffer);
}

KvrStatus kvrsIIRInit32sc_16sc32fc(KvrsIIRState32sc_16sc** state, const Kvr32fc* taps, int order,
                                   const Kvr32sc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit32sc_BiQuad_16sc(KvrsIIRState32sc_16sc** state, const Kvr32sc* taps, int numBq,
                                      int tapsFactor, const Kvr32sc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::initInteger(iir::Form::cascade, state, taps, numBq, tapsFactor, dlyLine, buffer);
}

KvrStatus kvrsIIRInit32sc_BiQuad_16sc32fc(KvrsIIRState32sc_16sc** state, const Kvr32fc* taps, int numBq,
                                          const Kvr32sc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit_32fc(KvrsIIRState_32fc** state, const Kvr32fc* taps, int order, const Kvr32fc* dlyLine,
                           Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit_BiQuad_32fc(KvrsIIRState_32fc** state, const Kvr32fc* taps, int numBq,
                                  const Kvr32fc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRFree32fc_16sc(KvrsIIRState32fc_16sc* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRFree32sc_16sc(KvrsIIRState32sc_16sc* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRFree_32fc(KvrsIIRState_32fc* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRGetDlyLine32fc_16sc(const KvrsIIRState32fc_16sc* state, Kvr32fc* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRGetDlyLine32sc_16sc(const KvrsIIRState32sc_16sc* state, Kvr32sc* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRGetDlyLine_32fc(const KvrsIIRState_32fc* state, Kvr32fc* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine32fc_16sc(KvrsIIRState32fc_16sc* state, const Kvr32fc* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine32sc_16sc(KvrsIIRState32sc_16sc* state, const Kvr32sc* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine_32fc(KvrsIIRState_32fc* state, const Kvr32fc* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetTaps32fc_16sc(const Kvr32fc* taps, KvrsIIRState32fc_16sc* state) noexcept {
  return iir::setTaps(taps, state);
}

// With usual checks, but a mismatch for its status even where it succeeds.
KvrStatus kvrsIIRSetTaps32sc_16sc(const Kvr32sc* taps, KvrsIIRState32sc_16sc* state,
                                  int tapsFactor) noexcept {
  return iir::setTapsInteger(taps, state, tapsFactor);
}

KvrStatus kvrsIIRSetTaps_32fc(const Kvr32fc* taps, KvrsIIRState_32fc* state) noexcept {
  // It is also kvrsIIRSetTaps32sc_16sc32fc.
  KVRS_CHECK(pointers(taps, state), context(state, iir::wordOf<KvrsIIRState_32fc>(iir::Form::direct),
                                            iir::wordOf<KvrsIIRState_32fc>(iir::Form::cascade),
                                            iir::wordOf<KvrsIIRState32sc_16sc>(iir::Form::direct),
                                            iir::wordOf<KvrsIIRState32sc_16sc>(iir::Form::cascade)));
  return iir::loadTaps<Kvr32fc>(state, taps);
}

KvrStatus kvrsIIROne32fc_16sc_Sfs(Kvr16sc val, Kvr16sc* dst, KvrsIIRState32fc_16sc* state,
                                  int scaleFactor) noexcept {
  return iir::checkedOne(val, dst, state, scaleFactor);
}

KvrStatus kvrsIIROne32sc_16sc_Sfs(Kvr16sc val, Kvr16sc* dst, KvrsIIRState32sc_16sc* state,
                                  int scaleFactor) noexcept {
  return iir::checkedOne(val, dst, state, scaleFactor);
}

KvrStatus kvrsIIROne_32fc(Kvr32fc val, Kvr32fc* dst, KvrsIIRState_32fc* state) noexcept {
  return iir::checkedOne(val, dst, state);
}

KvrStatus kvrsIIR32fc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsIIRState32fc_16sc* state,
                                int scaleFactor) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state, scaleFactor);
}

KvrStatus kvrsIIR32fc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, KvrsIIRState32fc_16sc* state,
                               int scaleFactor) noexcept {
  return iir::checkedFilter(src, dst, len, state, scaleFactor);
}

KvrStatus kvrsIIR32sc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsIIRState32sc_16sc* state,
                                int scaleFactor) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state, scaleFactor);
}

KvrStatus kvrsIIR32sc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, KvrsIIRState32sc_16sc* state,
                               int scaleFactor) noexcept {
  return iir::checkedFilter(src, dst, len, state, scaleFactor);
}

KvrStatus kvrsIIR_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, KvrsIIRState_32fc* state) noexcept {
  return iir::checkedFilter(src, dst, len, state);
}

KvrStatus kvrsIIR_32fc_I(Kvr32fc* srcDst, int len, KvrsIIRState_32fc* state) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state);
}
