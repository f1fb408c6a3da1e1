// Recursive filters that work in complex double precision.
// SPDX-License-Identifier: MIT
#include "filters/iir_engine-inl.h"

namespace kvrs::iir {

template void filterTile<Kvr64fc>(State<Kvr64fc>&, const Kvr64fc*, Kvr64fc*, size_t);

}  // namespace kvrs::iir

using namespace kvrs;

KvrStatus kvrsIIRGetStateSize64fc_16sc(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64fc_16sc>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize64fc_32fc(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64fc_32fc>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize64fc_32sc(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64fc_32sc>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize64fc_BiQuad_16sc(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64fc_16sc>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize64fc_BiQuad_32fc(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64fc_32fc>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize64fc_BiQuad_32sc(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState64fc_32sc>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRGetStateSize_64fc(int order, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState_64fc>(iir::Form::direct, order, size);
}

KvrStatus kvrsIIRGetStateSize_BiQuad_64fc(int numBq, int* size) noexcept {
  return iir::getStateSize<KvrsIIRState_64fc>(iir::Form::cascade, numBq, size);
}

KvrStatus kvrsIIRInitAlloc64fc_16sc(KvrsIIRState64fc_16sc** state, const Kvr64fc* taps, int order,
                                    const Kvr64fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64fc_32fc(KvrsIIRState64fc_32fc** state, const Kvr64fc* taps, int order,
                                    const Kvr64fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64fc_32sc(KvrsIIRState64fc_32sc** state, const Kvr64fc* taps, int order,
                                    const Kvr64fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64fc_BiQuad_16sc(KvrsIIRState64fc_16sc** state, const Kvr64fc* taps, int numBq,
                                           const Kvr64fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64fc_BiQuad_32fc(KvrsIIRState64fc_32fc** state, const Kvr64fc* taps, int numBq,
                                           const Kvr64fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc64fc_BiQuad_32sc(KvrsIIRState64fc_32sc** state, const Kvr64fc* taps, int numBq,
                                           const Kvr64fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInitAlloc_64fc(KvrsIIRState_64fc** state, const Kvr64fc* taps, int order,
                                const Kvr64fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::direct, state, taps, order, dlyLine);
}

KvrStatus kvrsIIRInitAlloc_BiQuad_64fc(KvrsIIRState_64fc** state, const Kvr64fc* taps, int numBq,
                                       const Kvr64fc* dlyLine) noexcept {
  return iir::initAlloc(iir::Form::cascade, state, taps, numBq, dlyLine);
}

KvrStatus kvrsIIRInit64fc_16sc(KvrsIIRState64fc_16sc** state, const Kvr64fc* taps, int order,
                               const Kvr64fc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64fc_32fc(KvrsIIRState64fc_32fc** state, const Kvr64fc* taps, int order,
                               const Kvr64fc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64fc_32sc(KvrsIIRState64fc_32sc** state, const Kvr64fc* taps, int order,
                               const Kvr64fc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64fc_BiQuad_16sc(KvrsIIRState64fc_16sc** state, const Kvr64fc* taps, int numBq,
                                      const Kvr64fc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64fc_BiQuad_32fc(KvrsIIRState64fc_32fc** state, const Kvr64fc* taps, int numBq,
                                      const Kvr64fc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit64fc_BiQuad_32sc(KvrsIIRState64fc_32sc** state, const Kvr64fc* taps, int numBq,
                                      const Kvr64fc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRInit_64fc(KvrsIIRState_64fc** state, const Kvr64fc* taps, int order, const Kvr64fc* dlyLine,
                           Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::direct, state, taps, order, dlyLine, buffer);
}

KvrStatus kvrsIIRInit_BiQuad_64fc(KvrsIIRState_64fc** state, const Kvr64fc* taps, int numBq,
                                  const Kvr64fc* dlyLine, Kvr8u* buffer) noexcept {
  return iir::init(iir::Form::cascade, state, taps, numBq, dlyLine, buffer);
}

KvrStatus kvrsIIRFree64fc_16sc(KvrsIIRState64fc_16sc* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRFree64fc_32fc(KvrsIIRState64fc_32fc* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRFree64fc_32sc(KvrsIIRState64fc_32sc* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRFree_64fc(KvrsIIRState_64fc* state) noexcept {
  return iir::release(state);
}

KvrStatus kvrsIIRGetDlyLine64fc_16sc(const KvrsIIRState64fc_16sc* state, Kvr64fc* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRGetDlyLine64fc_32fc(const KvrsIIRState64fc_32fc* state, Kvr64fc* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRGetDlyLine64fc_32sc(const KvrsIIRState64fc_32sc* state, Kvr64fc* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRGetDlyLine_64fc(const KvrsIIRState_64fc* state, Kvr64fc* dlyLine) noexcept {
  return iir::getDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine64fc_16sc(KvrsIIRState64fc_16sc* state, const Kvr64fc* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine64fc_32fc(KvrsIIRState64fc_32fc* state, const Kvr64fc* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine64fc_32sc(KvrsIIRState64fc_32sc* state, const Kvr64fc* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetDlyLine_64fc(KvrsIIRState_64fc* state, const Kvr64fc* dlyLine) noexcept {
  return iir::setDlyLine(state, dlyLine);
}

KvrStatus kvrsIIRSetTaps64fc_16sc(const Kvr64fc* taps, KvrsIIRState64fc_16sc* state) noexcept {
  return iir::setTaps(taps, state);
}

KvrStatus kvrsIIRSetTaps64fc_32fc(const Kvr64fc* taps, KvrsIIRState64fc_32fc* state) noexcept {
  return iir::setTaps(taps, state);
}

KvrStatus kvrsIIRSetTaps64fc_32sc(const Kvr64fc* taps, KvrsIIRState64fc_32sc* state) noexcept {
  return iir::setTaps(taps, state);
}

KvrStatus kvrsIIRSetTaps_64fc(const Kvr64fc* taps, KvrsIIRState_64fc* state) noexcept {
  return iir::setTaps(taps, state);
}

KvrStatus kvrsIIROne64fc_16sc_Sfs(Kvr16sc val, Kvr16sc* dst, KvrsIIRState64fc_16sc* state,
                                  int scaleFactor) noexcept {
  return iir::checkedOne(val, dst, state, scaleFactor);
}

KvrStatus kvrsIIROne64fc_32fc(Kvr32fc val, Kvr32fc* dst, KvrsIIRState64fc_32fc* state) noexcept {
  return iir::checkedOne(val, dst, state);
}

KvrStatus kvrsIIROne64fc_32sc_Sfs(Kvr32sc val, Kvr32sc* dst, KvrsIIRState64fc_32sc* state,
                                  int scaleFactor) noexcept {
  return iir::checkedOne(val, dst, state, scaleFactor);
}

KvrStatus kvrsIIROne_64fc(Kvr64fc val, Kvr64fc* dst, KvrsIIRState_64fc* state) noexcept {
  return iir::checkedOne(val, dst, state);
}

KvrStatus kvrsIIR64fc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsIIRState64fc_16sc* state,
                                int scaleFactor) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state, scaleFactor);
}

KvrStatus kvrsIIR64fc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, KvrsIIRState64fc_16sc* state,
                               int scaleFactor) noexcept {
  return iir::checkedFilter(src, dst, len, state, scaleFactor);
}

KvrStatus kvrsIIR64fc_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, KvrsIIRState64fc_32fc* state) noexcept {
  return iir::checkedFilter(src, dst, len, state);
}

KvrStatus kvrsIIR64fc_32fc_I(Kvr32fc* srcDst, int len, KvrsIIRState64fc_32fc* state) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state);
}

KvrStatus kvrsIIR64fc_32sc_ISfs(Kvr32sc* srcDst, int len, KvrsIIRState64fc_32sc* state,
                                int scaleFactor) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state, scaleFactor);
}

KvrStatus kvrsIIR64fc_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, int len, KvrsIIRState64fc_32sc* state,
                               int scaleFactor) noexcept {
  return iir::checkedFilter(src, dst, len, state, scaleFactor);
}

KvrStatus kvrsIIR_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, KvrsIIRState_64fc* state) noexcept {
  return iir::checkedFilter(src, dst, len, state);
}

KvrStatus kvrsIIR_64fc_I(Kvr64fc* srcDst, int len, KvrsIIRState_64fc* state) noexcept {
  return iir::checkedFilter(srcDst, srcDst, len, state);
}
