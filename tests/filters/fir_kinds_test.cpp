// All types of FIR filters.
// SPDX-License-Identifier: MIT
#include "tests/filters/fir_kinds.h"

#include "kvrs/fir_multirate.h"

namespace kvrs::test {
namespace {

const FirKind kKinds[] = {
    {
        .name = "_32f",
        .data = elementOf<Kvr32f>(),
        .taps = elementOf<Kvr32f>(),
        .scaled = false,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize_32f,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit_32f(reinterpret_cast<KvrsFIRState_32f**>(state),
                                     static_cast<const Kvr32f*>(taps), tapsLen,
                                     static_cast<const Kvr32f*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc_32f(reinterpret_cast<KvrsFIRState_32f**>(state),
                                          static_cast<const Kvr32f*>(taps), tapsLen,
                                          static_cast<const Kvr32f*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree_32f(static_cast<KvrsFIRState_32f*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps_32f(static_cast<const KvrsFIRState_32f*>(state),
                                        static_cast<Kvr32f*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps_32f(static_cast<const Kvr32f*>(taps),
                                        static_cast<KvrsFIRState_32f*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine_32f(static_cast<const KvrsFIRState_32f*>(state),
                                           static_cast<Kvr32f*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine_32f(static_cast<KvrsFIRState_32f*>(state),
                                           static_cast<const Kvr32f*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int) {
              return kvrsFIROne_32f(get(static_cast<const Kvr32f*>(src), 0), static_cast<Kvr32f*>(dst),
                                    static_cast<KvrsFIRState_32f*>(state));
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int) {
              return kvrsFIR_32f(static_cast<const Kvr32f*>(src), static_cast<Kvr32f*>(dst), len,
                                 static_cast<KvrsFIRState_32f*>(state));
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int) {
              return kvrsFIR_32f_I(static_cast<Kvr32f*>(srcDst), len, static_cast<KvrsFIRState_32f*>(state));
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize_32f,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit_32f(reinterpret_cast<KvrsFIRState_32f**>(state),
                                       static_cast<const Kvr32f*>(taps), tapsLen, upFactor, upPhase,
                                       downFactor, downPhase, static_cast<const Kvr32f*>(dlyLine), buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc_32f(reinterpret_cast<KvrsFIRState_32f**>(state),
                                            static_cast<const Kvr32f*>(taps), tapsLen, upFactor, upPhase,
                                            downFactor, downPhase, static_cast<const Kvr32f*>(dlyLine));
            },
    },
    {
        .name = "32f_16s",
        .data = elementOf<Kvr16s>(),
        .taps = elementOf<Kvr32f>(),
        .scaled = true,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize32f_16s,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit32f_16s(reinterpret_cast<KvrsFIRState32f_16s**>(state),
                                        static_cast<const Kvr32f*>(taps), tapsLen,
                                        static_cast<const Kvr16s*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc32f_16s(reinterpret_cast<KvrsFIRState32f_16s**>(state),
                                             static_cast<const Kvr32f*>(taps), tapsLen,
                                             static_cast<const Kvr16s*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree32f_16s(static_cast<KvrsFIRState32f_16s*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps32f_16s(static_cast<const KvrsFIRState32f_16s*>(state),
                                           static_cast<Kvr32f*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps32f_16s(static_cast<const Kvr32f*>(taps),
                                           static_cast<KvrsFIRState32f_16s*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine32f_16s(static_cast<const KvrsFIRState32f_16s*>(state),
                                              static_cast<Kvr16s*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine32f_16s(static_cast<KvrsFIRState32f_16s*>(state),
                                              static_cast<const Kvr16s*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne32f_16s_Sfs(get(static_cast<const Kvr16s*>(src), 0), static_cast<Kvr16s*>(dst),
                                           static_cast<KvrsFIRState32f_16s*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR32f_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst), len,
                                        static_cast<KvrsFIRState32f_16s*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR32f_16s_ISfs(static_cast<Kvr16s*>(srcDst), len,
                                         static_cast<KvrsFIRState32f_16s*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize32f_16s,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit32f_16s(reinterpret_cast<KvrsFIRState32f_16s**>(state),
                                          static_cast<const Kvr32f*>(taps), tapsLen, upFactor, upPhase,
                                          downFactor, downPhase, static_cast<const Kvr16s*>(dlyLine), buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc32f_16s(reinterpret_cast<KvrsFIRState32f_16s**>(state),
                                               static_cast<const Kvr32f*>(taps), tapsLen, upFactor, upPhase,
                                               downFactor, downPhase, static_cast<const Kvr16s*>(dlyLine));
            },
    },
    {
        .name = "_32fc",
        .data = elementOf<Kvr32fc>(),
        .taps = elementOf<Kvr32fc>(),
        .scaled = false,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize_32fc,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit_32fc(reinterpret_cast<KvrsFIRState_32fc**>(state),
                                      static_cast<const Kvr32fc*>(taps), tapsLen,
                                      static_cast<const Kvr32fc*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc_32fc(reinterpret_cast<KvrsFIRState_32fc**>(state),
                                           static_cast<const Kvr32fc*>(taps), tapsLen,
                                           static_cast<const Kvr32fc*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree_32fc(static_cast<KvrsFIRState_32fc*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps_32fc(static_cast<const KvrsFIRState_32fc*>(state),
                                         static_cast<Kvr32fc*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps_32fc(static_cast<const Kvr32fc*>(taps),
                                         static_cast<KvrsFIRState_32fc*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine_32fc(static_cast<const KvrsFIRState_32fc*>(state),
                                            static_cast<Kvr32fc*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine_32fc(static_cast<KvrsFIRState_32fc*>(state),
                                            static_cast<const Kvr32fc*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int) {
              return kvrsFIROne_32fc(get(static_cast<const Kvr32fc*>(src), 0), static_cast<Kvr32fc*>(dst),
                                     static_cast<KvrsFIRState_32fc*>(state));
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int) {
              return kvrsFIR_32fc(static_cast<const Kvr32fc*>(src), static_cast<Kvr32fc*>(dst), len,
                                  static_cast<KvrsFIRState_32fc*>(state));
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int) {
              return kvrsFIR_32fc_I(static_cast<Kvr32fc*>(srcDst), len,
                                    static_cast<KvrsFIRState_32fc*>(state));
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize_32fc,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit_32fc(reinterpret_cast<KvrsFIRState_32fc**>(state),
                                        static_cast<const Kvr32fc*>(taps), tapsLen, upFactor, upPhase,
                                        downFactor, downPhase, static_cast<const Kvr32fc*>(dlyLine), buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc_32fc(reinterpret_cast<KvrsFIRState_32fc**>(state),
                                             static_cast<const Kvr32fc*>(taps), tapsLen, upFactor, upPhase,
                                             downFactor, downPhase, static_cast<const Kvr32fc*>(dlyLine));
            },
    },
    {
        .name = "32fc_16sc",
        .data = elementOf<Kvr16sc>(),
        .taps = elementOf<Kvr32fc>(),
        .scaled = true,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize32fc_16sc,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit32fc_16sc(reinterpret_cast<KvrsFIRState32fc_16sc**>(state),
                                          static_cast<const Kvr32fc*>(taps), tapsLen,
                                          static_cast<const Kvr16sc*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc32fc_16sc(reinterpret_cast<KvrsFIRState32fc_16sc**>(state),
                                               static_cast<const Kvr32fc*>(taps), tapsLen,
                                               static_cast<const Kvr16sc*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree32fc_16sc(static_cast<KvrsFIRState32fc_16sc*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps32fc_16sc(static_cast<const KvrsFIRState32fc_16sc*>(state),
                                             static_cast<Kvr32fc*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps32fc_16sc(static_cast<const Kvr32fc*>(taps),
                                             static_cast<KvrsFIRState32fc_16sc*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine32fc_16sc(static_cast<const KvrsFIRState32fc_16sc*>(state),
                                                static_cast<Kvr16sc*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine32fc_16sc(static_cast<KvrsFIRState32fc_16sc*>(state),
                                                static_cast<const Kvr16sc*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne32fc_16sc_Sfs(get(static_cast<const Kvr16sc*>(src), 0),
                                             static_cast<Kvr16sc*>(dst),
                                             static_cast<KvrsFIRState32fc_16sc*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR32fc_16sc_Sfs(static_cast<const Kvr16sc*>(src), static_cast<Kvr16sc*>(dst), len,
                                          static_cast<KvrsFIRState32fc_16sc*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR32fc_16sc_ISfs(static_cast<Kvr16sc*>(srcDst), len,
                                           static_cast<KvrsFIRState32fc_16sc*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize32fc_16sc,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit32fc_16sc(reinterpret_cast<KvrsFIRState32fc_16sc**>(state),
                                            static_cast<const Kvr32fc*>(taps), tapsLen, upFactor, upPhase,
                                            downFactor, downPhase, static_cast<const Kvr16sc*>(dlyLine),
                                            buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc32fc_16sc(
                  reinterpret_cast<KvrsFIRState32fc_16sc**>(state), static_cast<const Kvr32fc*>(taps),
                  tapsLen, upFactor, upPhase, downFactor, downPhase, static_cast<const Kvr16sc*>(dlyLine));
            },
    },
    {
        .name = "_64f",
        .data = elementOf<Kvr64f>(),
        .taps = elementOf<Kvr64f>(),
        .scaled = false,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize_64f,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit_64f(reinterpret_cast<KvrsFIRState_64f**>(state),
                                     static_cast<const Kvr64f*>(taps), tapsLen,
                                     static_cast<const Kvr64f*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc_64f(reinterpret_cast<KvrsFIRState_64f**>(state),
                                          static_cast<const Kvr64f*>(taps), tapsLen,
                                          static_cast<const Kvr64f*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree_64f(static_cast<KvrsFIRState_64f*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps_64f(static_cast<const KvrsFIRState_64f*>(state),
                                        static_cast<Kvr64f*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps_64f(static_cast<const Kvr64f*>(taps),
                                        static_cast<KvrsFIRState_64f*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine_64f(static_cast<const KvrsFIRState_64f*>(state),
                                           static_cast<Kvr64f*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine_64f(static_cast<KvrsFIRState_64f*>(state),
                                           static_cast<const Kvr64f*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int) {
              return kvrsFIROne_64f(get(static_cast<const Kvr64f*>(src), 0), static_cast<Kvr64f*>(dst),
                                    static_cast<KvrsFIRState_64f*>(state));
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int) {
              return kvrsFIR_64f(static_cast<const Kvr64f*>(src), static_cast<Kvr64f*>(dst), len,
                                 static_cast<KvrsFIRState_64f*>(state));
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int) {
              return kvrsFIR_64f_I(static_cast<Kvr64f*>(srcDst), len, static_cast<KvrsFIRState_64f*>(state));
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize_64f,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit_64f(reinterpret_cast<KvrsFIRState_64f**>(state),
                                       static_cast<const Kvr64f*>(taps), tapsLen, upFactor, upPhase,
                                       downFactor, downPhase, static_cast<const Kvr64f*>(dlyLine), buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc_64f(reinterpret_cast<KvrsFIRState_64f**>(state),
                                            static_cast<const Kvr64f*>(taps), tapsLen, upFactor, upPhase,
                                            downFactor, downPhase, static_cast<const Kvr64f*>(dlyLine));
            },
    },
    {
        .name = "64f_32f",
        .data = elementOf<Kvr32f>(),
        .taps = elementOf<Kvr64f>(),
        .scaled = false,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize64f_32f,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit64f_32f(reinterpret_cast<KvrsFIRState64f_32f**>(state),
                                        static_cast<const Kvr64f*>(taps), tapsLen,
                                        static_cast<const Kvr32f*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc64f_32f(reinterpret_cast<KvrsFIRState64f_32f**>(state),
                                             static_cast<const Kvr64f*>(taps), tapsLen,
                                             static_cast<const Kvr32f*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree64f_32f(static_cast<KvrsFIRState64f_32f*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps64f_32f(static_cast<const KvrsFIRState64f_32f*>(state),
                                           static_cast<Kvr64f*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps64f_32f(static_cast<const Kvr64f*>(taps),
                                           static_cast<KvrsFIRState64f_32f*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine64f_32f(static_cast<const KvrsFIRState64f_32f*>(state),
                                              static_cast<Kvr32f*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine64f_32f(static_cast<KvrsFIRState64f_32f*>(state),
                                              static_cast<const Kvr32f*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int) {
              return kvrsFIROne64f_32f(get(static_cast<const Kvr32f*>(src), 0), static_cast<Kvr32f*>(dst),
                                       static_cast<KvrsFIRState64f_32f*>(state));
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int) {
              return kvrsFIR64f_32f(static_cast<const Kvr32f*>(src), static_cast<Kvr32f*>(dst), len,
                                    static_cast<KvrsFIRState64f_32f*>(state));
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int) {
              return kvrsFIR64f_32f_I(static_cast<Kvr32f*>(srcDst), len,
                                      static_cast<KvrsFIRState64f_32f*>(state));
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize64f_32f,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit64f_32f(reinterpret_cast<KvrsFIRState64f_32f**>(state),
                                          static_cast<const Kvr64f*>(taps), tapsLen, upFactor, upPhase,
                                          downFactor, downPhase, static_cast<const Kvr32f*>(dlyLine), buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc64f_32f(reinterpret_cast<KvrsFIRState64f_32f**>(state),
                                               static_cast<const Kvr64f*>(taps), tapsLen, upFactor, upPhase,
                                               downFactor, downPhase, static_cast<const Kvr32f*>(dlyLine));
            },
    },
    {
        .name = "64f_32s",
        .data = elementOf<Kvr32s>(),
        .taps = elementOf<Kvr64f>(),
        .scaled = true,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize64f_32s,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit64f_32s(reinterpret_cast<KvrsFIRState64f_32s**>(state),
                                        static_cast<const Kvr64f*>(taps), tapsLen,
                                        static_cast<const Kvr32s*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc64f_32s(reinterpret_cast<KvrsFIRState64f_32s**>(state),
                                             static_cast<const Kvr64f*>(taps), tapsLen,
                                             static_cast<const Kvr32s*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree64f_32s(static_cast<KvrsFIRState64f_32s*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps64f_32s(static_cast<const KvrsFIRState64f_32s*>(state),
                                           static_cast<Kvr64f*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps64f_32s(static_cast<const Kvr64f*>(taps),
                                           static_cast<KvrsFIRState64f_32s*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine64f_32s(static_cast<const KvrsFIRState64f_32s*>(state),
                                              static_cast<Kvr32s*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine64f_32s(static_cast<KvrsFIRState64f_32s*>(state),
                                              static_cast<const Kvr32s*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne64f_32s_Sfs(get(static_cast<const Kvr32s*>(src), 0), static_cast<Kvr32s*>(dst),
                                           static_cast<KvrsFIRState64f_32s*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR64f_32s_Sfs(static_cast<const Kvr32s*>(src), static_cast<Kvr32s*>(dst), len,
                                        static_cast<KvrsFIRState64f_32s*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR64f_32s_ISfs(static_cast<Kvr32s*>(srcDst), len,
                                         static_cast<KvrsFIRState64f_32s*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize64f_32s,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit64f_32s(reinterpret_cast<KvrsFIRState64f_32s**>(state),
                                          static_cast<const Kvr64f*>(taps), tapsLen, upFactor, upPhase,
                                          downFactor, downPhase, static_cast<const Kvr32s*>(dlyLine), buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc64f_32s(reinterpret_cast<KvrsFIRState64f_32s**>(state),
                                               static_cast<const Kvr64f*>(taps), tapsLen, upFactor, upPhase,
                                               downFactor, downPhase, static_cast<const Kvr32s*>(dlyLine));
            },
    },
    {
        .name = "64f_16s",
        .data = elementOf<Kvr16s>(),
        .taps = elementOf<Kvr64f>(),
        .scaled = true,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize64f_16s,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit64f_16s(reinterpret_cast<KvrsFIRState64f_16s**>(state),
                                        static_cast<const Kvr64f*>(taps), tapsLen,
                                        static_cast<const Kvr16s*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc64f_16s(reinterpret_cast<KvrsFIRState64f_16s**>(state),
                                             static_cast<const Kvr64f*>(taps), tapsLen,
                                             static_cast<const Kvr16s*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree64f_16s(static_cast<KvrsFIRState64f_16s*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps64f_16s(static_cast<const KvrsFIRState64f_16s*>(state),
                                           static_cast<Kvr64f*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps64f_16s(static_cast<const Kvr64f*>(taps),
                                           static_cast<KvrsFIRState64f_16s*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine64f_16s(static_cast<const KvrsFIRState64f_16s*>(state),
                                              static_cast<Kvr16s*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine64f_16s(static_cast<KvrsFIRState64f_16s*>(state),
                                              static_cast<const Kvr16s*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne64f_16s_Sfs(get(static_cast<const Kvr16s*>(src), 0), static_cast<Kvr16s*>(dst),
                                           static_cast<KvrsFIRState64f_16s*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR64f_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst), len,
                                        static_cast<KvrsFIRState64f_16s*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR64f_16s_ISfs(static_cast<Kvr16s*>(srcDst), len,
                                         static_cast<KvrsFIRState64f_16s*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize64f_16s,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit64f_16s(reinterpret_cast<KvrsFIRState64f_16s**>(state),
                                          static_cast<const Kvr64f*>(taps), tapsLen, upFactor, upPhase,
                                          downFactor, downPhase, static_cast<const Kvr16s*>(dlyLine), buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc64f_16s(reinterpret_cast<KvrsFIRState64f_16s**>(state),
                                               static_cast<const Kvr64f*>(taps), tapsLen, upFactor, upPhase,
                                               downFactor, downPhase, static_cast<const Kvr16s*>(dlyLine));
            },
    },
    {
        .name = "_32s",
        .data = elementOf<Kvr32s>(),
        .taps = elementOf<Kvr32s>(),
        .scaled = true,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize_32s,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit_32s(reinterpret_cast<KvrsFIRState_32s**>(state),
                                     static_cast<const Kvr32s*>(taps), tapsLen,
                                     static_cast<const Kvr32s*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc_32s(reinterpret_cast<KvrsFIRState_32s**>(state),
                                          static_cast<const Kvr32s*>(taps), tapsLen,
                                          static_cast<const Kvr32s*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree_32s(static_cast<KvrsFIRState_32s*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps_32s(static_cast<const KvrsFIRState_32s*>(state),
                                        static_cast<Kvr32s*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps_32s(static_cast<const Kvr32s*>(taps),
                                        static_cast<KvrsFIRState_32s*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine64f_32s(static_cast<const KvrsFIRState64f_32s*>(state),
                                              static_cast<Kvr32s*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine64f_32s(static_cast<KvrsFIRState64f_32s*>(state),
                                              static_cast<const Kvr32s*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne_32s_Sfs(get(static_cast<const Kvr32s*>(src), 0), static_cast<Kvr32s*>(dst),
                                        static_cast<KvrsFIRState_32s*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR_32s_Sfs(static_cast<const Kvr32s*>(src), static_cast<Kvr32s*>(dst), len,
                                     static_cast<KvrsFIRState_32s*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR_32s_ISfs(static_cast<Kvr32s*>(srcDst), len,
                                      static_cast<KvrsFIRState_32s*>(state), scaleFactor);
            },
    },
    {
        .name = "_64fc",
        .data = elementOf<Kvr64fc>(),
        .taps = elementOf<Kvr64fc>(),
        .scaled = false,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize_64fc,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit_64fc(reinterpret_cast<KvrsFIRState_64fc**>(state),
                                      static_cast<const Kvr64fc*>(taps), tapsLen,
                                      static_cast<const Kvr64fc*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc_64fc(reinterpret_cast<KvrsFIRState_64fc**>(state),
                                           static_cast<const Kvr64fc*>(taps), tapsLen,
                                           static_cast<const Kvr64fc*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree_64fc(static_cast<KvrsFIRState_64fc*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps_64fc(static_cast<const KvrsFIRState_64fc*>(state),
                                         static_cast<Kvr64fc*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps_64fc(static_cast<const Kvr64fc*>(taps),
                                         static_cast<KvrsFIRState_64fc*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine_64fc(static_cast<const KvrsFIRState_64fc*>(state),
                                            static_cast<Kvr64fc*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine_64fc(static_cast<KvrsFIRState_64fc*>(state),
                                            static_cast<const Kvr64fc*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int) {
              return kvrsFIROne_64fc(get(static_cast<const Kvr64fc*>(src), 0), static_cast<Kvr64fc*>(dst),
                                     static_cast<KvrsFIRState_64fc*>(state));
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int) {
              return kvrsFIR_64fc(static_cast<const Kvr64fc*>(src), static_cast<Kvr64fc*>(dst), len,
                                  static_cast<KvrsFIRState_64fc*>(state));
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int) {
              return kvrsFIR_64fc_I(static_cast<Kvr64fc*>(srcDst), len,
                                    static_cast<KvrsFIRState_64fc*>(state));
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize_64fc,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit_64fc(reinterpret_cast<KvrsFIRState_64fc**>(state),
                                        static_cast<const Kvr64fc*>(taps), tapsLen, upFactor, upPhase,
                                        downFactor, downPhase, static_cast<const Kvr64fc*>(dlyLine), buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc_64fc(reinterpret_cast<KvrsFIRState_64fc**>(state),
                                             static_cast<const Kvr64fc*>(taps), tapsLen, upFactor, upPhase,
                                             downFactor, downPhase, static_cast<const Kvr64fc*>(dlyLine));
            },
    },
    {
        .name = "64fc_32fc",
        .data = elementOf<Kvr32fc>(),
        .taps = elementOf<Kvr64fc>(),
        .scaled = false,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize64fc_32fc,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit64fc_32fc(reinterpret_cast<KvrsFIRState64fc_32fc**>(state),
                                          static_cast<const Kvr64fc*>(taps), tapsLen,
                                          static_cast<const Kvr32fc*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc64fc_32fc(reinterpret_cast<KvrsFIRState64fc_32fc**>(state),
                                               static_cast<const Kvr64fc*>(taps), tapsLen,
                                               static_cast<const Kvr32fc*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree64fc_32fc(static_cast<KvrsFIRState64fc_32fc*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps64fc_32fc(static_cast<const KvrsFIRState64fc_32fc*>(state),
                                             static_cast<Kvr64fc*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps64fc_32fc(static_cast<const Kvr64fc*>(taps),
                                             static_cast<KvrsFIRState64fc_32fc*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine64fc_32fc(static_cast<const KvrsFIRState64fc_32fc*>(state),
                                                static_cast<Kvr32fc*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine64fc_32fc(static_cast<KvrsFIRState64fc_32fc*>(state),
                                                static_cast<const Kvr32fc*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int) {
              return kvrsFIROne64fc_32fc(get(static_cast<const Kvr32fc*>(src), 0), static_cast<Kvr32fc*>(dst),
                                         static_cast<KvrsFIRState64fc_32fc*>(state));
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int) {
              return kvrsFIR64fc_32fc(static_cast<const Kvr32fc*>(src), static_cast<Kvr32fc*>(dst), len,
                                      static_cast<KvrsFIRState64fc_32fc*>(state));
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int) {
              return kvrsFIR64fc_32fc_I(static_cast<Kvr32fc*>(srcDst), len,
                                        static_cast<KvrsFIRState64fc_32fc*>(state));
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize64fc_32fc,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit64fc_32fc(reinterpret_cast<KvrsFIRState64fc_32fc**>(state),
                                            static_cast<const Kvr64fc*>(taps), tapsLen, upFactor, upPhase,
                                            downFactor, downPhase, static_cast<const Kvr32fc*>(dlyLine),
                                            buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc64fc_32fc(
                  reinterpret_cast<KvrsFIRState64fc_32fc**>(state), static_cast<const Kvr64fc*>(taps),
                  tapsLen, upFactor, upPhase, downFactor, downPhase, static_cast<const Kvr32fc*>(dlyLine));
            },
    },
    {
        .name = "64fc_32sc",
        .data = elementOf<Kvr32sc>(),
        .taps = elementOf<Kvr64fc>(),
        .scaled = true,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize64fc_32sc,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit64fc_32sc(reinterpret_cast<KvrsFIRState64fc_32sc**>(state),
                                          static_cast<const Kvr64fc*>(taps), tapsLen,
                                          static_cast<const Kvr32sc*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc64fc_32sc(reinterpret_cast<KvrsFIRState64fc_32sc**>(state),
                                               static_cast<const Kvr64fc*>(taps), tapsLen,
                                               static_cast<const Kvr32sc*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree64fc_32sc(static_cast<KvrsFIRState64fc_32sc*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps64fc_32sc(static_cast<const KvrsFIRState64fc_32sc*>(state),
                                             static_cast<Kvr64fc*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps64fc_32sc(static_cast<const Kvr64fc*>(taps),
                                             static_cast<KvrsFIRState64fc_32sc*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine64fc_32sc(static_cast<const KvrsFIRState64fc_32sc*>(state),
                                                static_cast<Kvr32sc*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine64fc_32sc(static_cast<KvrsFIRState64fc_32sc*>(state),
                                                static_cast<const Kvr32sc*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne64fc_32sc_Sfs(get(static_cast<const Kvr32sc*>(src), 0),
                                             static_cast<Kvr32sc*>(dst),
                                             static_cast<KvrsFIRState64fc_32sc*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR64fc_32sc_Sfs(static_cast<const Kvr32sc*>(src), static_cast<Kvr32sc*>(dst), len,
                                          static_cast<KvrsFIRState64fc_32sc*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR64fc_32sc_ISfs(static_cast<Kvr32sc*>(srcDst), len,
                                           static_cast<KvrsFIRState64fc_32sc*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize64fc_32sc,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit64fc_32sc(reinterpret_cast<KvrsFIRState64fc_32sc**>(state),
                                            static_cast<const Kvr64fc*>(taps), tapsLen, upFactor, upPhase,
                                            downFactor, downPhase, static_cast<const Kvr32sc*>(dlyLine),
                                            buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc64fc_32sc(
                  reinterpret_cast<KvrsFIRState64fc_32sc**>(state), static_cast<const Kvr64fc*>(taps),
                  tapsLen, upFactor, upPhase, downFactor, downPhase, static_cast<const Kvr32sc*>(dlyLine));
            },
    },
    {
        .name = "64fc_16sc",
        .data = elementOf<Kvr16sc>(),
        .taps = elementOf<Kvr64fc>(),
        .scaled = true,
        .factored = false,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize64fc_16sc,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit64fc_16sc(reinterpret_cast<KvrsFIRState64fc_16sc**>(state),
                                          static_cast<const Kvr64fc*>(taps), tapsLen,
                                          static_cast<const Kvr16sc*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc64fc_16sc(reinterpret_cast<KvrsFIRState64fc_16sc**>(state),
                                               static_cast<const Kvr64fc*>(taps), tapsLen,
                                               static_cast<const Kvr16sc*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree64fc_16sc(static_cast<KvrsFIRState64fc_16sc*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps64fc_16sc(static_cast<const KvrsFIRState64fc_16sc*>(state),
                                             static_cast<Kvr64fc*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps64fc_16sc(static_cast<const Kvr64fc*>(taps),
                                             static_cast<KvrsFIRState64fc_16sc*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine64fc_16sc(static_cast<const KvrsFIRState64fc_16sc*>(state),
                                                static_cast<Kvr16sc*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine64fc_16sc(static_cast<KvrsFIRState64fc_16sc*>(state),
                                                static_cast<const Kvr16sc*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne64fc_16sc_Sfs(get(static_cast<const Kvr16sc*>(src), 0),
                                             static_cast<Kvr16sc*>(dst),
                                             static_cast<KvrsFIRState64fc_16sc*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR64fc_16sc_Sfs(static_cast<const Kvr16sc*>(src), static_cast<Kvr16sc*>(dst), len,
                                          static_cast<KvrsFIRState64fc_16sc*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR64fc_16sc_ISfs(static_cast<Kvr16sc*>(srcDst), len,
                                           static_cast<KvrsFIRState64fc_16sc*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize64fc_16sc,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit64fc_16sc(reinterpret_cast<KvrsFIRState64fc_16sc**>(state),
                                            static_cast<const Kvr64fc*>(taps), tapsLen, upFactor, upPhase,
                                            downFactor, downPhase, static_cast<const Kvr16sc*>(dlyLine),
                                            buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc64fc_16sc(
                  reinterpret_cast<KvrsFIRState64fc_16sc**>(state), static_cast<const Kvr64fc*>(taps),
                  tapsLen, upFactor, upPhase, downFactor, downPhase, static_cast<const Kvr16sc*>(dlyLine));
            },
    },
    {
        .name = "_16s",
        .data = elementOf<Kvr16s>(),
        .taps = elementOf<Kvr16s>(),
        .scaled = true,
        .factored = true,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize_16s,
        .init =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, const void* dlyLine,
               Kvr8u* buffer) {
              return kvrsFIRInit_16s(reinterpret_cast<KvrsFIRState_16s**>(state),
                                     static_cast<const Kvr16s*>(taps), tapsLen, tapsFactor,
                                     static_cast<const Kvr16s*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, const void* dlyLine) {
              return kvrsFIRInitAlloc_16s(reinterpret_cast<KvrsFIRState_16s**>(state),
                                          static_cast<const Kvr16s*>(taps), tapsLen, tapsFactor,
                                          static_cast<const Kvr16s*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree_16s(static_cast<KvrsFIRState_16s*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int* tapsFactor) {
              return kvrsFIRGetTaps_16s(static_cast<const KvrsFIRState_16s*>(state),
                                        static_cast<Kvr16s*>(taps), tapsFactor);
            },
        .setTaps =
            [](const void* taps, void* state, int tapsFactor) {
              return kvrsFIRSetTaps_16s(static_cast<const Kvr16s*>(taps),
                                        static_cast<KvrsFIRState_16s*>(state), tapsFactor);
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine_16s(static_cast<const KvrsFIRState_16s*>(state),
                                           static_cast<Kvr16s*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine_16s(static_cast<KvrsFIRState_16s*>(state),
                                           static_cast<const Kvr16s*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne_16s_Sfs(get(static_cast<const Kvr16s*>(src), 0), static_cast<Kvr16s*>(dst),
                                        static_cast<KvrsFIRState_16s*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst), len,
                                     static_cast<KvrsFIRState_16s*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR_16s_ISfs(static_cast<Kvr16s*>(srcDst), len,
                                      static_cast<KvrsFIRState_16s*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize_16s,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
               int downFactor, int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit_16s(reinterpret_cast<KvrsFIRState_16s**>(state),
                                       static_cast<const Kvr16s*>(taps), tapsLen, tapsFactor, upFactor,
                                       upPhase, downFactor, downPhase, static_cast<const Kvr16s*>(dlyLine),
                                       buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
               int downFactor, int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc_16s(
                  reinterpret_cast<KvrsFIRState_16s**>(state), static_cast<const Kvr16s*>(taps), tapsLen,
                  tapsFactor, upFactor, upPhase, downFactor, downPhase, static_cast<const Kvr16s*>(dlyLine));
            },
    },
    {
        .name = "32s_16s",
        .data = elementOf<Kvr16s>(),
        .taps = elementOf<Kvr32s>(),
        .scaled = true,
        .factored = true,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize32s_16s,
        .init =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, const void* dlyLine,
               Kvr8u* buffer) {
              return kvrsFIRInit32s_16s(reinterpret_cast<KvrsFIRState32s_16s**>(state),
                                        static_cast<const Kvr32s*>(taps), tapsLen, tapsFactor,
                                        static_cast<const Kvr16s*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, const void* dlyLine) {
              return kvrsFIRInitAlloc32s_16s(reinterpret_cast<KvrsFIRState32s_16s**>(state),
                                             static_cast<const Kvr32s*>(taps), tapsLen, tapsFactor,
                                             static_cast<const Kvr16s*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree32s_16s(static_cast<KvrsFIRState32s_16s*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int* tapsFactor) {
              return kvrsFIRGetTaps32s_16s(static_cast<const KvrsFIRState32s_16s*>(state),
                                           static_cast<Kvr32s*>(taps), tapsFactor);
            },
        .setTaps =
            [](const void* taps, void* state, int tapsFactor) {
              return kvrsFIRSetTaps32s_16s(static_cast<const Kvr32s*>(taps),
                                           static_cast<KvrsFIRState32s_16s*>(state), tapsFactor);
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine32s_16s(static_cast<const KvrsFIRState32s_16s*>(state),
                                              static_cast<Kvr16s*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine32s_16s(static_cast<KvrsFIRState32s_16s*>(state),
                                              static_cast<const Kvr16s*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne32s_16s_Sfs(get(static_cast<const Kvr16s*>(src), 0), static_cast<Kvr16s*>(dst),
                                           static_cast<KvrsFIRState32s_16s*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR32s_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst), len,
                                        static_cast<KvrsFIRState32s_16s*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR32s_16s_ISfs(static_cast<Kvr16s*>(srcDst), len,
                                         static_cast<KvrsFIRState32s_16s*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize32s_16s,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
               int downFactor, int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit32s_16s(reinterpret_cast<KvrsFIRState32s_16s**>(state),
                                          static_cast<const Kvr32s*>(taps), tapsLen, tapsFactor, upFactor,
                                          upPhase, downFactor, downPhase, static_cast<const Kvr16s*>(dlyLine),
                                          buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
               int downFactor, int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc32s_16s(
                  reinterpret_cast<KvrsFIRState32s_16s**>(state), static_cast<const Kvr32s*>(taps), tapsLen,
                  tapsFactor, upFactor, upPhase, downFactor, downPhase, static_cast<const Kvr16s*>(dlyLine));
            },
    },
    {
        .name = "32s_16s32f",
        .data = elementOf<Kvr16s>(),
        .taps = elementOf<Kvr32f>(),
        .scaled = true,
        .factored = false,
        .floatTaps = true,
        .getStateSize = kvrsFIRGetStateSize32s_16s32f,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit32s_16s32f(reinterpret_cast<KvrsFIRState32s_16s**>(state),
                                           static_cast<const Kvr32f*>(taps), tapsLen,
                                           static_cast<const Kvr16s*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc32s_16s32f(reinterpret_cast<KvrsFIRState32s_16s**>(state),
                                                static_cast<const Kvr32f*>(taps), tapsLen,
                                                static_cast<const Kvr16s*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree32s_16s(static_cast<KvrsFIRState32s_16s*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps32s_16s32f(static_cast<const KvrsFIRState32s_16s*>(state),
                                              static_cast<Kvr32f*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps32s_16s32f(static_cast<const Kvr32f*>(taps),
                                              static_cast<KvrsFIRState32s_16s*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine32s_16s(static_cast<const KvrsFIRState32s_16s*>(state),
                                              static_cast<Kvr16s*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine32s_16s(static_cast<KvrsFIRState32s_16s*>(state),
                                              static_cast<const Kvr16s*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne32s_16s_Sfs(get(static_cast<const Kvr16s*>(src), 0), static_cast<Kvr16s*>(dst),
                                           static_cast<KvrsFIRState32s_16s*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR32s_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst), len,
                                        static_cast<KvrsFIRState32s_16s*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR32s_16s_ISfs(static_cast<Kvr16s*>(srcDst), len,
                                         static_cast<KvrsFIRState32s_16s*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize32s_16s32f,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit32s_16s32f(
                  reinterpret_cast<KvrsFIRState32s_16s**>(state), static_cast<const Kvr32f*>(taps), tapsLen,
                  upFactor, upPhase, downFactor, downPhase, static_cast<const Kvr16s*>(dlyLine), buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc32s_16s32f(
                  reinterpret_cast<KvrsFIRState32s_16s**>(state), static_cast<const Kvr32f*>(taps), tapsLen,
                  upFactor, upPhase, downFactor, downPhase, static_cast<const Kvr16s*>(dlyLine));
            },
    },
    {
        .name = "32sc_16sc",
        .data = elementOf<Kvr16sc>(),
        .taps = elementOf<Kvr32sc>(),
        .scaled = true,
        .factored = true,
        .floatTaps = false,
        .getStateSize = kvrsFIRGetStateSize32sc_16sc,
        .init =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, const void* dlyLine,
               Kvr8u* buffer) {
              return kvrsFIRInit32sc_16sc(reinterpret_cast<KvrsFIRState32sc_16sc**>(state),
                                          static_cast<const Kvr32sc*>(taps), tapsLen, tapsFactor,
                                          static_cast<const Kvr16sc*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, const void* dlyLine) {
              return kvrsFIRInitAlloc32sc_16sc(reinterpret_cast<KvrsFIRState32sc_16sc**>(state),
                                               static_cast<const Kvr32sc*>(taps), tapsLen, tapsFactor,
                                               static_cast<const Kvr16sc*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree32sc_16sc(static_cast<KvrsFIRState32sc_16sc*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int* tapsFactor) {
              return kvrsFIRGetTaps32sc_16sc(static_cast<const KvrsFIRState32sc_16sc*>(state),
                                             static_cast<Kvr32sc*>(taps), tapsFactor);
            },
        .setTaps =
            [](const void* taps, void* state, int tapsFactor) {
              return kvrsFIRSetTaps32sc_16sc(static_cast<const Kvr32sc*>(taps),
                                             static_cast<KvrsFIRState32sc_16sc*>(state), tapsFactor);
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine32sc_16sc(static_cast<const KvrsFIRState32sc_16sc*>(state),
                                                static_cast<Kvr16sc*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine32sc_16sc(static_cast<KvrsFIRState32sc_16sc*>(state),
                                                static_cast<const Kvr16sc*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne32sc_16sc_Sfs(get(static_cast<const Kvr16sc*>(src), 0),
                                             static_cast<Kvr16sc*>(dst),
                                             static_cast<KvrsFIRState32sc_16sc*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR32sc_16sc_Sfs(static_cast<const Kvr16sc*>(src), static_cast<Kvr16sc*>(dst), len,
                                          static_cast<KvrsFIRState32sc_16sc*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR32sc_16sc_ISfs(static_cast<Kvr16sc*>(srcDst), len,
                                           static_cast<KvrsFIRState32sc_16sc*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize32sc_16sc,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
               int downFactor, int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit32sc_16sc(reinterpret_cast<KvrsFIRState32sc_16sc**>(state),
                                            static_cast<const Kvr32sc*>(taps), tapsLen, tapsFactor, upFactor,
                                            upPhase, downFactor, downPhase,
                                            static_cast<const Kvr16sc*>(dlyLine), buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
               int downFactor, int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc32sc_16sc(reinterpret_cast<KvrsFIRState32sc_16sc**>(state),
                                                 static_cast<const Kvr32sc*>(taps), tapsLen, tapsFactor,
                                                 upFactor, upPhase, downFactor, downPhase,
                                                 static_cast<const Kvr16sc*>(dlyLine));
            },
    },
    {
        .name = "32sc_16sc32fc",
        .data = elementOf<Kvr16sc>(),
        .taps = elementOf<Kvr32fc>(),
        .scaled = true,
        .factored = false,
        .floatTaps = true,
        .getStateSize = kvrsFIRGetStateSize32sc_16sc32fc,
        .init =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRInit32sc_16sc32fc(reinterpret_cast<KvrsFIRState32sc_16sc**>(state),
                                              static_cast<const Kvr32fc*>(taps), tapsLen,
                                              static_cast<const Kvr16sc*>(dlyLine), buffer);
            },
        .initAlloc =
            [](void** state, const void* taps, int tapsLen, int, const void* dlyLine) {
              return kvrsFIRInitAlloc32sc_16sc32fc(reinterpret_cast<KvrsFIRState32sc_16sc**>(state),
                                                   static_cast<const Kvr32fc*>(taps), tapsLen,
                                                   static_cast<const Kvr16sc*>(dlyLine));
            },
        .free = [](void* state) { return kvrsFIRFree32sc_16sc(static_cast<KvrsFIRState32sc_16sc*>(state)); },
        .getTaps =
            [](const void* state, void* taps, int*) {
              return kvrsFIRGetTaps32sc_16sc32fc(static_cast<const KvrsFIRState32sc_16sc*>(state),
                                                 static_cast<Kvr32fc*>(taps));
            },
        .setTaps =
            [](const void* taps, void* state, int) {
              return kvrsFIRSetTaps32sc_16sc32fc(static_cast<const Kvr32fc*>(taps),
                                                 static_cast<KvrsFIRState32sc_16sc*>(state));
            },
        .getDlyLine =
            [](const void* state, void* dlyLine) {
              return kvrsFIRGetDlyLine32sc_16sc(static_cast<const KvrsFIRState32sc_16sc*>(state),
                                                static_cast<Kvr16sc*>(dlyLine));
            },
        .setDlyLine =
            [](void* state, const void* dlyLine) {
              return kvrsFIRSetDlyLine32sc_16sc(static_cast<KvrsFIRState32sc_16sc*>(state),
                                                static_cast<const Kvr16sc*>(dlyLine));
            },
        .one =
            [](const void* src, void* dst, void* state, int scaleFactor) {
              return kvrsFIROne32sc_16sc_Sfs(get(static_cast<const Kvr16sc*>(src), 0),
                                             static_cast<Kvr16sc*>(dst),
                                             static_cast<KvrsFIRState32sc_16sc*>(state), scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, void* state, int scaleFactor) {
              return kvrsFIR32sc_16sc_Sfs(static_cast<const Kvr16sc*>(src), static_cast<Kvr16sc*>(dst), len,
                                          static_cast<KvrsFIRState32sc_16sc*>(state), scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, void* state, int scaleFactor) {
              return kvrsFIR32sc_16sc_ISfs(static_cast<Kvr16sc*>(srcDst), len,
                                           static_cast<KvrsFIRState32sc_16sc*>(state), scaleFactor);
            },
        .getStateSizeMR = kvrsFIRMRGetStateSize32sc_16sc32fc,
        .initMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine, Kvr8u* buffer) {
              return kvrsFIRMRInit32sc_16sc32fc(reinterpret_cast<KvrsFIRState32sc_16sc**>(state),
                                                static_cast<const Kvr32fc*>(taps), tapsLen, upFactor, upPhase,
                                                downFactor, downPhase, static_cast<const Kvr16sc*>(dlyLine),
                                                buffer);
            },
        .initAllocMR =
            [](void** state, const void* taps, int tapsLen, int, int upFactor, int upPhase, int downFactor,
               int downPhase, const void* dlyLine) {
              return kvrsFIRMRInitAlloc32sc_16sc32fc(
                  reinterpret_cast<KvrsFIRState32sc_16sc**>(state), static_cast<const Kvr32fc*>(taps),
                  tapsLen, upFactor, upPhase, downFactor, downPhase, static_cast<const Kvr16sc*>(dlyLine));
            },
    },
};

}  // namespace

std::span<const FirKind> firKinds() {
  return kKinds;
}

}  // namespace kvrs::test
