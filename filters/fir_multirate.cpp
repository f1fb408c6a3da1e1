// States of FIR filters at two rates.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_multirate.h"

#include "filters/fir_state.h"
#include "filters/fir_taps.h"

using namespace kvrs::fir;

KvrStatus kvrsFIRMRGetStateSize_32f(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr32f>(k_32f, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit_32f(KvrsFIRMRState_32f** state, const Kvr32f* taps, int tapsLen, int upFactor,
                            int upPhase, int downFactor, int downPhase, const Kvr32f* dlyLine,
                            Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k_32f, state, PlainTaps<Kvr32f>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc_32f(KvrsFIRMRState_32f** state, const Kvr32f* taps, int tapsLen, int upFactor,
                                 int upPhase, int downFactor, int downPhase, const Kvr32f* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k_32f, state, PlainTaps<Kvr32f>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize32f_16s(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr32f>(k32f_16s, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit32f_16s(KvrsFIRMRState32f_16s** state, const Kvr32f* taps, int tapsLen, int upFactor,
                               int upPhase, int downFactor, int downPhase, const Kvr16s* dlyLine,
                               Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k32f_16s, state, PlainTaps<Kvr32f>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc32f_16s(KvrsFIRMRState32f_16s** state, const Kvr32f* taps, int tapsLen,
                                    int upFactor, int upPhase, int downFactor, int downPhase,
                                    const Kvr16s* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k32f_16s, state, PlainTaps<Kvr32f>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize_32fc(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr32fc>(k_32fc, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit_32fc(KvrsFIRMRState_32fc** state, const Kvr32fc* taps, int tapsLen, int upFactor,
                             int upPhase, int downFactor, int downPhase, const Kvr32fc* dlyLine,
                             Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k_32fc, state, PlainTaps<Kvr32fc>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc_32fc(KvrsFIRMRState_32fc** state, const Kvr32fc* taps, int tapsLen, int upFactor,
                                  int upPhase, int downFactor, int downPhase,
                                  const Kvr32fc* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k_32fc, state, PlainTaps<Kvr32fc>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRInit32fc_16sc(KvrsFIRMRState32fc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                 int upFactor, int upPhase, int downFactor, int downPhase,
                                 const Kvr16sc* dlyLine, Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k32fc_16sc, state, PlainTaps<Kvr32fc>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc32fc_16sc(KvrsFIRMRState32fc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                      int upFactor, int upPhase, int downFactor, int downPhase,
                                      const Kvr16sc* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k32fc_16sc, state, PlainTaps<Kvr32fc>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize_64f(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr64f>(k_64f, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit_64f(KvrsFIRMRState_64f** state, const Kvr64f* taps, int tapsLen, int upFactor,
                            int upPhase, int downFactor, int downPhase, const Kvr64f* dlyLine,
                            Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k_64f, state, PlainTaps<Kvr64f>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc_64f(KvrsFIRMRState_64f** state, const Kvr64f* taps, int tapsLen, int upFactor,
                                 int upPhase, int downFactor, int downPhase, const Kvr64f* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k_64f, state, PlainTaps<Kvr64f>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize64f_32f(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr64f>(k64f_32f, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit64f_32f(KvrsFIRMRState64f_32f** state, const Kvr64f* taps, int tapsLen, int upFactor,
                               int upPhase, int downFactor, int downPhase, const Kvr32f* dlyLine,
                               Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k64f_32f, state, PlainTaps<Kvr64f>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc64f_32f(KvrsFIRMRState64f_32f** state, const Kvr64f* taps, int tapsLen,
                                    int upFactor, int upPhase, int downFactor, int downPhase,
                                    const Kvr32f* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k64f_32f, state, PlainTaps<Kvr64f>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize64f_32s(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr64f>(k64f_32s, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit64f_32s(KvrsFIRMRState64f_32s** state, const Kvr64f* taps, int tapsLen, int upFactor,
                               int upPhase, int downFactor, int downPhase, const Kvr32s* dlyLine,
                               Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k64f_32s, state, PlainTaps<Kvr64f>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc64f_32s(KvrsFIRMRState64f_32s** state, const Kvr64f* taps, int tapsLen,
                                    int upFactor, int upPhase, int downFactor, int downPhase,
                                    const Kvr32s* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k64f_32s, state, PlainTaps<Kvr64f>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize64f_16s(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr64f>(k64f_16s, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit64f_16s(KvrsFIRMRState64f_16s** state, const Kvr64f* taps, int tapsLen, int upFactor,
                               int upPhase, int downFactor, int downPhase, const Kvr16s* dlyLine,
                               Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k64f_16s, state, PlainTaps<Kvr64f>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc64f_16s(KvrsFIRMRState64f_16s** state, const Kvr64f* taps, int tapsLen,
                                    int upFactor, int upPhase, int downFactor, int downPhase,
                                    const Kvr16s* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k64f_16s, state, PlainTaps<Kvr64f>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize_64fc(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr64fc>(k_64fc, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit_64fc(KvrsFIRMRState_64fc** state, const Kvr64fc* taps, int tapsLen, int upFactor,
                             int upPhase, int downFactor, int downPhase, const Kvr64fc* dlyLine,
                             Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k_64fc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc_64fc(KvrsFIRMRState_64fc** state, const Kvr64fc* taps, int tapsLen, int upFactor,
                                  int upPhase, int downFactor, int downPhase,
                                  const Kvr64fc* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k_64fc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRInit64fc_32fc(KvrsFIRMRState64fc_32fc** state, const Kvr64fc* taps, int tapsLen,
                                 int upFactor, int upPhase, int downFactor, int downPhase,
                                 const Kvr32fc* dlyLine, Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k64fc_32fc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc64fc_32fc(KvrsFIRMRState64fc_32fc** state, const Kvr64fc* taps, int tapsLen,
                                      int upFactor, int upPhase, int downFactor, int downPhase,
                                      const Kvr32fc* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k64fc_32fc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRInit64fc_32sc(KvrsFIRMRState64fc_32sc** state, const Kvr64fc* taps, int tapsLen,
                                 int upFactor, int upPhase, int downFactor, int downPhase,
                                 const Kvr32sc* dlyLine, Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k64fc_32sc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc64fc_32sc(KvrsFIRMRState64fc_32sc** state, const Kvr64fc* taps, int tapsLen,
                                      int upFactor, int upPhase, int downFactor, int downPhase,
                                      const Kvr32sc* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k64fc_32sc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRInit64fc_16sc(KvrsFIRMRState64fc_16sc** state, const Kvr64fc* taps, int tapsLen,
                                 int upFactor, int upPhase, int downFactor, int downPhase,
                                 const Kvr16sc* dlyLine, Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k64fc_16sc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc64fc_16sc(KvrsFIRMRState64fc_16sc** state, const Kvr64fc* taps, int tapsLen,
                                      int upFactor, int upPhase, int downFactor, int downPhase,
                                      const Kvr16sc* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k64fc_16sc, state, PlainTaps<Kvr64fc>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize_16s(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr16s>(k_16s, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit_16s(KvrsFIRMRState_16s** state, const Kvr16s* taps, int tapsLen, int tapsFactor,
                            int upFactor, int upPhase, int downFactor, int downPhase, const Kvr16s* dlyLine,
                            Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k_16s, state, FactoredTaps<Kvr16s>{taps, tapsFactor}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc_16s(KvrsFIRMRState_16s** state, const Kvr16s* taps, int tapsLen, int tapsFactor,
                                 int upFactor, int upPhase, int downFactor, int downPhase,
                                 const Kvr16s* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k_16s, state, FactoredTaps<Kvr16s>{taps, tapsFactor}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize32s_16s(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr16s>(k32s_16s, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit32s_16s(KvrsFIRMRState32s_16s** state, const Kvr32s* taps, int tapsLen, int tapsFactor,
                               int upFactor, int upPhase, int downFactor, int downPhase,
                               const Kvr16s* dlyLine, Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k32s_16s, state, FactoredTaps<Kvr32s>{taps, tapsFactor}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc32s_16s(KvrsFIRMRState32s_16s** state, const Kvr32s* taps, int tapsLen,
                                    int tapsFactor, int upFactor, int upPhase, int downFactor, int downPhase,
                                    const Kvr16s* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k32s_16s, state, FactoredTaps<Kvr32s>{taps, tapsFactor}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize32s_16s32f(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr16s>(k32s_16s, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit32s_16s32f(KvrsFIRMRState32s_16s** state, const Kvr32f* taps, int tapsLen,
                                  int upFactor, int upPhase, int downFactor, int downPhase,
                                  const Kvr16s* dlyLine, Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k32s_16s, state, FloatTaps<Kvr32f>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc32s_16s32f(KvrsFIRMRState32s_16s** state, const Kvr32f* taps, int tapsLen,
                                       int upFactor, int upPhase, int downFactor, int downPhase,
                                       const Kvr16s* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k32s_16s, state, FloatTaps<Kvr32f>{taps}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize32sc_16sc(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr16sc>(k32sc_16sc, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit32sc_16sc(KvrsFIRMRState32sc_16sc** state, const Kvr32sc* taps, int tapsLen,
                                 int tapsFactor, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const Kvr16sc* dlyLine, Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k32sc_16sc, state, FactoredTaps<Kvr32sc>{taps, tapsFactor}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc32sc_16sc(KvrsFIRMRState32sc_16sc** state, const Kvr32sc* taps, int tapsLen,
                                      int tapsFactor, int upFactor, int upPhase, int downFactor,
                                      int downPhase, const Kvr16sc* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k32sc_16sc, state, FactoredTaps<Kvr32sc>{taps, tapsFactor}, tapsLen, &rates, dlyLine);
}

KvrStatus kvrsFIRMRGetStateSize32sc_16sc32fc(int tapsLen, int upFactor, int downFactor, int* size) noexcept {
  const Rates rates{upFactor, 0, downFactor, 0};
  return getStateSize<Kvr16sc>(k32sc_16sc, tapsLen, &rates, size);
}

KvrStatus kvrsFIRMRInit32sc_16sc32fc(KvrsFIRMRState32sc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                     int upFactor, int upPhase, int downFactor, int downPhase,
                                     const Kvr16sc* dlyLine, Kvr8u* buffer) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return init(k32sc_16sc, state, FloatTaps<Kvr32fc>{taps}, tapsLen, &rates, dlyLine, buffer);
}

KvrStatus kvrsFIRMRInitAlloc32sc_16sc32fc(KvrsFIRMRState32sc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                          int upFactor, int upPhase, int downFactor, int downPhase,
                                          const Kvr16sc* dlyLine) noexcept {
  const Rates rates{upFactor, upPhase, downFactor, downPhase};
  return initAlloc(k32sc_16sc, state, FloatTaps<Kvr32fc>{taps}, tapsLen, &rates, dlyLine);
}
