// Stateless FIR filters of all types against their definition, and what they leave in their delay lines.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_direct.h"

#include <climits>

#include "kvrs/fir_multirate.h"
#include "tests/filters/fir_kinds.h"
#include "tests/support/core.h"
#include "tests/support/rounding.h"

using namespace kvrs::test;

namespace {

struct DirectKind {
  const ElementType *data, *taps;
  const char* name;
  bool scaled, factored;

  KvrStatus (*one)(const void* src, void* dst, const void* taps, int tapsLen, int tapsFactor, void* dlyLine,
                   int* index, int scaleFactor) = nullptr;
  KvrStatus (*oneInPlace)(void* srcDst, const void* taps, int tapsLen, int tapsFactor, void* dlyLine,
                          int* index, int scaleFactor) = nullptr;
  KvrStatus (*run)(const void* src, void* dst, int len, const void* taps, int tapsLen, int tapsFactor,
                   void* dlyLine, int* index, int scaleFactor) = nullptr;
  KvrStatus (*runInPlace)(void* srcDst, int len, const void* taps, int tapsLen, int tapsFactor, void* dlyLine,
                          int* index, int scaleFactor) = nullptr;
  KvrStatus (*runRates)(const void* src, void* dst, int numIters, const void* taps, int tapsLen,
                        int tapsFactor, int upFactor, int upPhase, int downFactor, int downPhase,
                        void* dlyLine, int scaleFactor) = nullptr;
  KvrStatus (*runRatesInPlace)(void* srcDst, int numIters, const void* taps, int tapsLen, int tapsFactor,
                               int upFactor, int upPhase, int downFactor, int downPhase, void* dlyLine,
                               int scaleFactor) = nullptr;

  bool is(const char* wanted) const { return std::string(name) == wanted; }
  bool q15() const { return is("_Direct_16s_Sfs"); }
  bool integer() const { return factored || q15(); }
  bool plain() const { return data == taps && !q15(); }
  bool away() const { return is("32f_Direct_16s_Sfs"); }
  int fromTaps() const { return is("_Direct_32f") ? 64 : is("_Direct_64fc") ? 16 : 32; }
  int fromLen() const { return data->complex ? 128 : 256; }
};

const DirectKind kKinds[] = {
    {
        .data = elementOf<Kvr32f>(),
        .taps = elementOf<Kvr32f>(),
        .name = "_Direct_32f",
        .scaled = false,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int) {
              return kvrsFIROne_Direct_32f(
                  src == nullptr ? Kvr32f{} : get(static_cast<const Kvr32f*>(src), 0),
                  static_cast<Kvr32f*>(dst), static_cast<const Kvr32f*>(taps), tapsLen,
                  static_cast<Kvr32f*>(dlyLine), index);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIROne_Direct_32f_I(static_cast<Kvr32f*>(srcDst), static_cast<const Kvr32f*>(taps),
                                             tapsLen, static_cast<Kvr32f*>(dlyLine), index);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int) {
              return kvrsFIR_Direct_32f(static_cast<const Kvr32f*>(src), static_cast<Kvr32f*>(dst), len,
                                        static_cast<const Kvr32f*>(taps), tapsLen,
                                        static_cast<Kvr32f*>(dlyLine), index);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIR_Direct_32f_I(static_cast<Kvr32f*>(srcDst), len, static_cast<const Kvr32f*>(taps),
                                          tapsLen, static_cast<Kvr32f*>(dlyLine), index);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR_Direct_32f(static_cast<const Kvr32f*>(src), static_cast<Kvr32f*>(dst),
                                          numIters, static_cast<const Kvr32f*>(taps), tapsLen, upFactor,
                                          upPhase, downFactor, downPhase, static_cast<Kvr32f*>(dlyLine));
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR_Direct_32f_I(static_cast<Kvr32f*>(srcDst), numIters,
                                            static_cast<const Kvr32f*>(taps), tapsLen, upFactor, upPhase,
                                            downFactor, downPhase, static_cast<Kvr32f*>(dlyLine));
            },
    },
    {
        .data = elementOf<Kvr64f>(),
        .taps = elementOf<Kvr64f>(),
        .name = "_Direct_64f",
        .scaled = false,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int) {
              return kvrsFIROne_Direct_64f(
                  src == nullptr ? Kvr64f{} : get(static_cast<const Kvr64f*>(src), 0),
                  static_cast<Kvr64f*>(dst), static_cast<const Kvr64f*>(taps), tapsLen,
                  static_cast<Kvr64f*>(dlyLine), index);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIROne_Direct_64f_I(static_cast<Kvr64f*>(srcDst), static_cast<const Kvr64f*>(taps),
                                             tapsLen, static_cast<Kvr64f*>(dlyLine), index);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int) {
              return kvrsFIR_Direct_64f(static_cast<const Kvr64f*>(src), static_cast<Kvr64f*>(dst), len,
                                        static_cast<const Kvr64f*>(taps), tapsLen,
                                        static_cast<Kvr64f*>(dlyLine), index);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIR_Direct_64f_I(static_cast<Kvr64f*>(srcDst), len, static_cast<const Kvr64f*>(taps),
                                          tapsLen, static_cast<Kvr64f*>(dlyLine), index);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR_Direct_64f(static_cast<const Kvr64f*>(src), static_cast<Kvr64f*>(dst),
                                          numIters, static_cast<const Kvr64f*>(taps), tapsLen, upFactor,
                                          upPhase, downFactor, downPhase, static_cast<Kvr64f*>(dlyLine));
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR_Direct_64f_I(static_cast<Kvr64f*>(srcDst), numIters,
                                            static_cast<const Kvr64f*>(taps), tapsLen, upFactor, upPhase,
                                            downFactor, downPhase, static_cast<Kvr64f*>(dlyLine));
            },
    },
    {
        .data = elementOf<Kvr32fc>(),
        .taps = elementOf<Kvr32fc>(),
        .name = "_Direct_32fc",
        .scaled = false,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int) {
              return kvrsFIROne_Direct_32fc(
                  src == nullptr ? Kvr32fc{} : get(static_cast<const Kvr32fc*>(src), 0),
                  static_cast<Kvr32fc*>(dst), static_cast<const Kvr32fc*>(taps), tapsLen,
                  static_cast<Kvr32fc*>(dlyLine), index);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIROne_Direct_32fc_I(static_cast<Kvr32fc*>(srcDst),
                                              static_cast<const Kvr32fc*>(taps), tapsLen,
                                              static_cast<Kvr32fc*>(dlyLine), index);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int) {
              return kvrsFIR_Direct_32fc(static_cast<const Kvr32fc*>(src), static_cast<Kvr32fc*>(dst), len,
                                         static_cast<const Kvr32fc*>(taps), tapsLen,
                                         static_cast<Kvr32fc*>(dlyLine), index);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIR_Direct_32fc_I(static_cast<Kvr32fc*>(srcDst), len,
                                           static_cast<const Kvr32fc*>(taps), tapsLen,
                                           static_cast<Kvr32fc*>(dlyLine), index);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR_Direct_32fc(static_cast<const Kvr32fc*>(src), static_cast<Kvr32fc*>(dst),
                                           numIters, static_cast<const Kvr32fc*>(taps), tapsLen, upFactor,
                                           upPhase, downFactor, downPhase, static_cast<Kvr32fc*>(dlyLine));
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR_Direct_32fc_I(static_cast<Kvr32fc*>(srcDst), numIters,
                                             static_cast<const Kvr32fc*>(taps), tapsLen, upFactor, upPhase,
                                             downFactor, downPhase, static_cast<Kvr32fc*>(dlyLine));
            },
    },
    {
        .data = elementOf<Kvr64fc>(),
        .taps = elementOf<Kvr64fc>(),
        .name = "_Direct_64fc",
        .scaled = false,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int) {
              return kvrsFIROne_Direct_64fc(
                  src == nullptr ? Kvr64fc{} : get(static_cast<const Kvr64fc*>(src), 0),
                  static_cast<Kvr64fc*>(dst), static_cast<const Kvr64fc*>(taps), tapsLen,
                  static_cast<Kvr64fc*>(dlyLine), index);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIROne_Direct_64fc_I(static_cast<Kvr64fc*>(srcDst),
                                              static_cast<const Kvr64fc*>(taps), tapsLen,
                                              static_cast<Kvr64fc*>(dlyLine), index);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int) {
              return kvrsFIR_Direct_64fc(static_cast<const Kvr64fc*>(src), static_cast<Kvr64fc*>(dst), len,
                                         static_cast<const Kvr64fc*>(taps), tapsLen,
                                         static_cast<Kvr64fc*>(dlyLine), index);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIR_Direct_64fc_I(static_cast<Kvr64fc*>(srcDst), len,
                                           static_cast<const Kvr64fc*>(taps), tapsLen,
                                           static_cast<Kvr64fc*>(dlyLine), index);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR_Direct_64fc(static_cast<const Kvr64fc*>(src), static_cast<Kvr64fc*>(dst),
                                           numIters, static_cast<const Kvr64fc*>(taps), tapsLen, upFactor,
                                           upPhase, downFactor, downPhase, static_cast<Kvr64fc*>(dlyLine));
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR_Direct_64fc_I(static_cast<Kvr64fc*>(srcDst), numIters,
                                             static_cast<const Kvr64fc*>(taps), tapsLen, upFactor, upPhase,
                                             downFactor, downPhase, static_cast<Kvr64fc*>(dlyLine));
            },
    },
    {
        .data = elementOf<Kvr32f>(),
        .taps = elementOf<Kvr64f>(),
        .name = "64f_Direct_32f",
        .scaled = false,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int) {
              return kvrsFIROne64f_Direct_32f(
                  src == nullptr ? Kvr32f{} : get(static_cast<const Kvr32f*>(src), 0),
                  static_cast<Kvr32f*>(dst), static_cast<const Kvr64f*>(taps), tapsLen,
                  static_cast<Kvr32f*>(dlyLine), index);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIROne64f_Direct_32f_I(static_cast<Kvr32f*>(srcDst),
                                                static_cast<const Kvr64f*>(taps), tapsLen,
                                                static_cast<Kvr32f*>(dlyLine), index);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int) {
              return kvrsFIR64f_Direct_32f(static_cast<const Kvr32f*>(src), static_cast<Kvr32f*>(dst), len,
                                           static_cast<const Kvr64f*>(taps), tapsLen,
                                           static_cast<Kvr32f*>(dlyLine), index);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIR64f_Direct_32f_I(static_cast<Kvr32f*>(srcDst), len,
                                             static_cast<const Kvr64f*>(taps), tapsLen,
                                             static_cast<Kvr32f*>(dlyLine), index);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR64f_Direct_32f(static_cast<const Kvr32f*>(src), static_cast<Kvr32f*>(dst),
                                             numIters, static_cast<const Kvr64f*>(taps), tapsLen, upFactor,
                                             upPhase, downFactor, downPhase, static_cast<Kvr32f*>(dlyLine));
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR64f_Direct_32f_I(static_cast<Kvr32f*>(srcDst), numIters,
                                               static_cast<const Kvr64f*>(taps), tapsLen, upFactor, upPhase,
                                               downFactor, downPhase, static_cast<Kvr32f*>(dlyLine));
            },
    },
    {
        .data = elementOf<Kvr32fc>(),
        .taps = elementOf<Kvr64fc>(),
        .name = "64fc_Direct_32fc",
        .scaled = false,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int) {
              return kvrsFIROne64fc_Direct_32fc(
                  src == nullptr ? Kvr32fc{} : get(static_cast<const Kvr32fc*>(src), 0),
                  static_cast<Kvr32fc*>(dst), static_cast<const Kvr64fc*>(taps), tapsLen,
                  static_cast<Kvr32fc*>(dlyLine), index);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIROne64fc_Direct_32fc_I(static_cast<Kvr32fc*>(srcDst),
                                                  static_cast<const Kvr64fc*>(taps), tapsLen,
                                                  static_cast<Kvr32fc*>(dlyLine), index);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int) {
              return kvrsFIR64fc_Direct_32fc(static_cast<const Kvr32fc*>(src), static_cast<Kvr32fc*>(dst),
                                             len, static_cast<const Kvr64fc*>(taps), tapsLen,
                                             static_cast<Kvr32fc*>(dlyLine), index);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index, int) {
              return kvrsFIR64fc_Direct_32fc_I(static_cast<Kvr32fc*>(srcDst), len,
                                               static_cast<const Kvr64fc*>(taps), tapsLen,
                                               static_cast<Kvr32fc*>(dlyLine), index);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR64fc_Direct_32fc(static_cast<const Kvr32fc*>(src), static_cast<Kvr32fc*>(dst),
                                               numIters, static_cast<const Kvr64fc*>(taps), tapsLen, upFactor,
                                               upPhase, downFactor, downPhase,
                                               static_cast<Kvr32fc*>(dlyLine));
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int) {
              return kvrsFIRMR64fc_Direct_32fc_I(
                  static_cast<Kvr32fc*>(srcDst), numIters, static_cast<const Kvr64fc*>(taps), tapsLen,
                  upFactor, upPhase, downFactor, downPhase, static_cast<Kvr32fc*>(dlyLine));
            },
    },
    {
        .data = elementOf<Kvr16s>(),
        .taps = elementOf<Kvr32f>(),
        .name = "32f_Direct_16s_Sfs",
        .scaled = true,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIROne32f_Direct_16s_Sfs(
                  src == nullptr ? Kvr16s{} : get(static_cast<const Kvr16s*>(src), 0),
                  static_cast<Kvr16s*>(dst), static_cast<const Kvr32f*>(taps), tapsLen,
                  static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int scaleFactor) {
              return kvrsFIROne32f_Direct_16s_ISfs(static_cast<Kvr16s*>(srcDst),
                                                   static_cast<const Kvr32f*>(taps), tapsLen,
                                                   static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIR32f_Direct_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst),
                                               len, static_cast<const Kvr32f*>(taps), tapsLen,
                                               static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIR32f_Direct_16s_ISfs(static_cast<Kvr16s*>(srcDst), len,
                                                static_cast<const Kvr32f*>(taps), tapsLen,
                                                static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR32f_Direct_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst),
                                                 numIters, static_cast<const Kvr32f*>(taps), tapsLen,
                                                 upFactor, upPhase, downFactor, downPhase,
                                                 static_cast<Kvr16s*>(dlyLine), scaleFactor);
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR32f_Direct_16s_ISfs(
                  static_cast<Kvr16s*>(srcDst), numIters, static_cast<const Kvr32f*>(taps), tapsLen, upFactor,
                  upPhase, downFactor, downPhase, static_cast<Kvr16s*>(dlyLine), scaleFactor);
            },
    },
    {
        .data = elementOf<Kvr16s>(),
        .taps = elementOf<Kvr64f>(),
        .name = "64f_Direct_16s_Sfs",
        .scaled = true,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIROne64f_Direct_16s_Sfs(
                  src == nullptr ? Kvr16s{} : get(static_cast<const Kvr16s*>(src), 0),
                  static_cast<Kvr16s*>(dst), static_cast<const Kvr64f*>(taps), tapsLen,
                  static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int scaleFactor) {
              return kvrsFIROne64f_Direct_16s_ISfs(static_cast<Kvr16s*>(srcDst),
                                                   static_cast<const Kvr64f*>(taps), tapsLen,
                                                   static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIR64f_Direct_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst),
                                               len, static_cast<const Kvr64f*>(taps), tapsLen,
                                               static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIR64f_Direct_16s_ISfs(static_cast<Kvr16s*>(srcDst), len,
                                                static_cast<const Kvr64f*>(taps), tapsLen,
                                                static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR64f_Direct_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst),
                                                 numIters, static_cast<const Kvr64f*>(taps), tapsLen,
                                                 upFactor, upPhase, downFactor, downPhase,
                                                 static_cast<Kvr16s*>(dlyLine), scaleFactor);
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR64f_Direct_16s_ISfs(
                  static_cast<Kvr16s*>(srcDst), numIters, static_cast<const Kvr64f*>(taps), tapsLen, upFactor,
                  upPhase, downFactor, downPhase, static_cast<Kvr16s*>(dlyLine), scaleFactor);
            },
    },
    {
        .data = elementOf<Kvr32s>(),
        .taps = elementOf<Kvr64f>(),
        .name = "64f_Direct_32s_Sfs",
        .scaled = true,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIROne64f_Direct_32s_Sfs(
                  src == nullptr ? Kvr32s{} : get(static_cast<const Kvr32s*>(src), 0),
                  static_cast<Kvr32s*>(dst), static_cast<const Kvr64f*>(taps), tapsLen,
                  static_cast<Kvr32s*>(dlyLine), index, scaleFactor);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int scaleFactor) {
              return kvrsFIROne64f_Direct_32s_ISfs(static_cast<Kvr32s*>(srcDst),
                                                   static_cast<const Kvr64f*>(taps), tapsLen,
                                                   static_cast<Kvr32s*>(dlyLine), index, scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIR64f_Direct_32s_Sfs(static_cast<const Kvr32s*>(src), static_cast<Kvr32s*>(dst),
                                               len, static_cast<const Kvr64f*>(taps), tapsLen,
                                               static_cast<Kvr32s*>(dlyLine), index, scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIR64f_Direct_32s_ISfs(static_cast<Kvr32s*>(srcDst), len,
                                                static_cast<const Kvr64f*>(taps), tapsLen,
                                                static_cast<Kvr32s*>(dlyLine), index, scaleFactor);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR64f_Direct_32s_Sfs(static_cast<const Kvr32s*>(src), static_cast<Kvr32s*>(dst),
                                                 numIters, static_cast<const Kvr64f*>(taps), tapsLen,
                                                 upFactor, upPhase, downFactor, downPhase,
                                                 static_cast<Kvr32s*>(dlyLine), scaleFactor);
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR64f_Direct_32s_ISfs(
                  static_cast<Kvr32s*>(srcDst), numIters, static_cast<const Kvr64f*>(taps), tapsLen, upFactor,
                  upPhase, downFactor, downPhase, static_cast<Kvr32s*>(dlyLine), scaleFactor);
            },
    },
    {
        .data = elementOf<Kvr16sc>(),
        .taps = elementOf<Kvr32fc>(),
        .name = "32fc_Direct_16sc_Sfs",
        .scaled = true,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIROne32fc_Direct_16sc_Sfs(
                  src == nullptr ? Kvr16sc{} : get(static_cast<const Kvr16sc*>(src), 0),
                  static_cast<Kvr16sc*>(dst), static_cast<const Kvr32fc*>(taps), tapsLen,
                  static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int scaleFactor) {
              return kvrsFIROne32fc_Direct_16sc_ISfs(static_cast<Kvr16sc*>(srcDst),
                                                     static_cast<const Kvr32fc*>(taps), tapsLen,
                                                     static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIR32fc_Direct_16sc_Sfs(static_cast<const Kvr16sc*>(src), static_cast<Kvr16sc*>(dst),
                                                 len, static_cast<const Kvr32fc*>(taps), tapsLen,
                                                 static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIR32fc_Direct_16sc_ISfs(static_cast<Kvr16sc*>(srcDst), len,
                                                  static_cast<const Kvr32fc*>(taps), tapsLen,
                                                  static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR32fc_Direct_16sc_Sfs(
                  static_cast<const Kvr16sc*>(src), static_cast<Kvr16sc*>(dst), numIters,
                  static_cast<const Kvr32fc*>(taps), tapsLen, upFactor, upPhase, downFactor, downPhase,
                  static_cast<Kvr16sc*>(dlyLine), scaleFactor);
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR32fc_Direct_16sc_ISfs(
                  static_cast<Kvr16sc*>(srcDst), numIters, static_cast<const Kvr32fc*>(taps), tapsLen,
                  upFactor, upPhase, downFactor, downPhase, static_cast<Kvr16sc*>(dlyLine), scaleFactor);
            },
    },
    {
        .data = elementOf<Kvr16sc>(),
        .taps = elementOf<Kvr64fc>(),
        .name = "64fc_Direct_16sc_Sfs",
        .scaled = true,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIROne64fc_Direct_16sc_Sfs(
                  src == nullptr ? Kvr16sc{} : get(static_cast<const Kvr16sc*>(src), 0),
                  static_cast<Kvr16sc*>(dst), static_cast<const Kvr64fc*>(taps), tapsLen,
                  static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int scaleFactor) {
              return kvrsFIROne64fc_Direct_16sc_ISfs(static_cast<Kvr16sc*>(srcDst),
                                                     static_cast<const Kvr64fc*>(taps), tapsLen,
                                                     static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIR64fc_Direct_16sc_Sfs(static_cast<const Kvr16sc*>(src), static_cast<Kvr16sc*>(dst),
                                                 len, static_cast<const Kvr64fc*>(taps), tapsLen,
                                                 static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIR64fc_Direct_16sc_ISfs(static_cast<Kvr16sc*>(srcDst), len,
                                                  static_cast<const Kvr64fc*>(taps), tapsLen,
                                                  static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR64fc_Direct_16sc_Sfs(
                  static_cast<const Kvr16sc*>(src), static_cast<Kvr16sc*>(dst), numIters,
                  static_cast<const Kvr64fc*>(taps), tapsLen, upFactor, upPhase, downFactor, downPhase,
                  static_cast<Kvr16sc*>(dlyLine), scaleFactor);
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR64fc_Direct_16sc_ISfs(
                  static_cast<Kvr16sc*>(srcDst), numIters, static_cast<const Kvr64fc*>(taps), tapsLen,
                  upFactor, upPhase, downFactor, downPhase, static_cast<Kvr16sc*>(dlyLine), scaleFactor);
            },
    },
    {
        .data = elementOf<Kvr32sc>(),
        .taps = elementOf<Kvr64fc>(),
        .name = "64fc_Direct_32sc_Sfs",
        .scaled = true,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIROne64fc_Direct_32sc_Sfs(
                  src == nullptr ? Kvr32sc{} : get(static_cast<const Kvr32sc*>(src), 0),
                  static_cast<Kvr32sc*>(dst), static_cast<const Kvr64fc*>(taps), tapsLen,
                  static_cast<Kvr32sc*>(dlyLine), index, scaleFactor);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int scaleFactor) {
              return kvrsFIROne64fc_Direct_32sc_ISfs(static_cast<Kvr32sc*>(srcDst),
                                                     static_cast<const Kvr64fc*>(taps), tapsLen,
                                                     static_cast<Kvr32sc*>(dlyLine), index, scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIR64fc_Direct_32sc_Sfs(static_cast<const Kvr32sc*>(src), static_cast<Kvr32sc*>(dst),
                                                 len, static_cast<const Kvr64fc*>(taps), tapsLen,
                                                 static_cast<Kvr32sc*>(dlyLine), index, scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIR64fc_Direct_32sc_ISfs(static_cast<Kvr32sc*>(srcDst), len,
                                                  static_cast<const Kvr64fc*>(taps), tapsLen,
                                                  static_cast<Kvr32sc*>(dlyLine), index, scaleFactor);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR64fc_Direct_32sc_Sfs(
                  static_cast<const Kvr32sc*>(src), static_cast<Kvr32sc*>(dst), numIters,
                  static_cast<const Kvr64fc*>(taps), tapsLen, upFactor, upPhase, downFactor, downPhase,
                  static_cast<Kvr32sc*>(dlyLine), scaleFactor);
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int, int upFactor, int upPhase,
               int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR64fc_Direct_32sc_ISfs(
                  static_cast<Kvr32sc*>(srcDst), numIters, static_cast<const Kvr64fc*>(taps), tapsLen,
                  upFactor, upPhase, downFactor, downPhase, static_cast<Kvr32sc*>(dlyLine), scaleFactor);
            },
    },
    {
        .data = elementOf<Kvr16s>(),
        .taps = elementOf<Kvr32s>(),
        .name = "32s_Direct_16s_Sfs",
        .scaled = true,
        .factored = true,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int tapsFactor, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIROne32s_Direct_16s_Sfs(
                  src == nullptr ? Kvr16s{} : get(static_cast<const Kvr16s*>(src), 0),
                  static_cast<Kvr16s*>(dst), static_cast<const Kvr32s*>(taps), tapsLen, tapsFactor,
                  static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int tapsFactor, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIROne32s_Direct_16s_ISfs(static_cast<Kvr16s*>(srcDst),
                                                   static_cast<const Kvr32s*>(taps), tapsLen, tapsFactor,
                                                   static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int tapsFactor,
               void* dlyLine, int* index, int scaleFactor) {
              return kvrsFIR32s_Direct_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst),
                                               len, static_cast<const Kvr32s*>(taps), tapsLen, tapsFactor,
                                               static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int tapsFactor, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIR32s_Direct_16s_ISfs(static_cast<Kvr16s*>(srcDst), len,
                                                static_cast<const Kvr32s*>(taps), tapsLen, tapsFactor,
                                                static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int tapsFactor,
               int upFactor, int upPhase, int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR32s_Direct_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst),
                                                 numIters, static_cast<const Kvr32s*>(taps), tapsLen,
                                                 tapsFactor, upFactor, upPhase, downFactor, downPhase,
                                                 static_cast<Kvr16s*>(dlyLine), scaleFactor);
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int tapsFactor, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR32s_Direct_16s_ISfs(static_cast<Kvr16s*>(srcDst), numIters,
                                                  static_cast<const Kvr32s*>(taps), tapsLen, tapsFactor,
                                                  upFactor, upPhase, downFactor, downPhase,
                                                  static_cast<Kvr16s*>(dlyLine), scaleFactor);
            },
    },
    {
        .data = elementOf<Kvr16sc>(),
        .taps = elementOf<Kvr32sc>(),
        .name = "32sc_Direct_16sc_Sfs",
        .scaled = true,
        .factored = true,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int tapsFactor, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIROne32sc_Direct_16sc_Sfs(
                  src == nullptr ? Kvr16sc{} : get(static_cast<const Kvr16sc*>(src), 0),
                  static_cast<Kvr16sc*>(dst), static_cast<const Kvr32sc*>(taps), tapsLen, tapsFactor,
                  static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int tapsFactor, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIROne32sc_Direct_16sc_ISfs(static_cast<Kvr16sc*>(srcDst),
                                                     static_cast<const Kvr32sc*>(taps), tapsLen, tapsFactor,
                                                     static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int tapsFactor,
               void* dlyLine, int* index, int scaleFactor) {
              return kvrsFIR32sc_Direct_16sc_Sfs(static_cast<const Kvr16sc*>(src), static_cast<Kvr16sc*>(dst),
                                                 len, static_cast<const Kvr32sc*>(taps), tapsLen, tapsFactor,
                                                 static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int tapsFactor, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIR32sc_Direct_16sc_ISfs(static_cast<Kvr16sc*>(srcDst), len,
                                                  static_cast<const Kvr32sc*>(taps), tapsLen, tapsFactor,
                                                  static_cast<Kvr16sc*>(dlyLine), index, scaleFactor);
            },
        .runRates =
            [](const void* src, void* dst, int numIters, const void* taps, int tapsLen, int tapsFactor,
               int upFactor, int upPhase, int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR32sc_Direct_16sc_Sfs(
                  static_cast<const Kvr16sc*>(src), static_cast<Kvr16sc*>(dst), numIters,
                  static_cast<const Kvr32sc*>(taps), tapsLen, tapsFactor, upFactor, upPhase, downFactor,
                  downPhase, static_cast<Kvr16sc*>(dlyLine), scaleFactor);
            },
        .runRatesInPlace =
            [](void* srcDst, int numIters, const void* taps, int tapsLen, int tapsFactor, int upFactor,
               int upPhase, int downFactor, int downPhase, void* dlyLine, int scaleFactor) {
              return kvrsFIRMR32sc_Direct_16sc_ISfs(static_cast<Kvr16sc*>(srcDst), numIters,
                                                    static_cast<const Kvr32sc*>(taps), tapsLen, tapsFactor,
                                                    upFactor, upPhase, downFactor, downPhase,
                                                    static_cast<Kvr16sc*>(dlyLine), scaleFactor);
            },
    },
    {
        .data = elementOf<Kvr16s>(),
        .taps = elementOf<Kvr16s>(),
        .name = "_Direct_16s_Sfs",
        .scaled = true,
        .factored = false,
        .one =
            [](const void* src, void* dst, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIROne_Direct_16s_Sfs(
                  src == nullptr ? Kvr16s{} : get(static_cast<const Kvr16s*>(src), 0),
                  static_cast<Kvr16s*>(dst), static_cast<const Kvr16s*>(taps), tapsLen,
                  static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .oneInPlace =
            [](void* srcDst, const void* taps, int tapsLen, int, void* dlyLine, int* index, int scaleFactor) {
              return kvrsFIROne_Direct_16s_ISfs(static_cast<Kvr16s*>(srcDst),
                                                static_cast<const Kvr16s*>(taps), tapsLen,
                                                static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .run =
            [](const void* src, void* dst, int len, const void* taps, int tapsLen, int, void* dlyLine,
               int* index, int scaleFactor) {
              return kvrsFIR_Direct_16s_Sfs(static_cast<const Kvr16s*>(src), static_cast<Kvr16s*>(dst), len,
                                            static_cast<const Kvr16s*>(taps), tapsLen,
                                            static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
        .runInPlace =
            [](void* srcDst, int len, const void* taps, int tapsLen, int, void* dlyLine, int* index,
               int scaleFactor) {
              return kvrsFIR_Direct_16s_ISfs(static_cast<Kvr16s*>(srcDst), len,
                                             static_cast<const Kvr16s*>(taps), tapsLen,
                                             static_cast<Kvr16s*>(dlyLine), index, scaleFactor);
            },
    },
};

int64_t scaledResult(const DirectKind& kind, int64_t sum, int tapsFactor, int scaleFactor) {
  if (!kind.scaled) return sum;
  // Half a unit more where ties go away from zero: exact, as sums are whole.
  if (kind.away()) {
    const long double scaled =
        std::ldexp(static_cast<long double>(sum), -std::max(-9999, std::min(9999, scaleFactor)));
    const long double rounded = std::round(scaled);
    return rounded > 32767 ? 32767 : rounded < -32768 ? -32768 : static_cast<int64_t>(rounded);
  }
  FirKind like{};
  like.data = kind.data;
  like.scaled = true;
  like.factored = kind.integer();
  int64_t shift = scaleFactor;
  if (kind.integer()) shift -= kind.q15() ? -15 : tapsFactor;
  return scaledPart(like, sum,
                    static_cast<int>(std::max<int64_t>(INT_MIN, std::min<int64_t>(INT_MAX, shift))));
}

// Sums by the definition over samples, the last of them the newest, from `past` of them on.
Wholes resultsOf(const DirectKind& kind, const Wholes& taps, const Wholes& samples, size_t past,
                 int tapsFactor, int scaleFactor) {
  Wholes results;
  for (size_t n = past; n < samples.size(); ++n) {
    uint64_t re = 0, im = 0;
    for (size_t k = 0; k < taps.size() && k <= n; ++k) {
      const Whole x = samples[n - k], h = taps[k];
      re += static_cast<uint64_t>(x.re * h.re - x.im * h.im);
      im += static_cast<uint64_t>(x.re * h.im + x.im * h.re);
    }
    results.push_back(
        {scaledResult(kind, static_cast<int64_t>(re), tapsFactor, scaleFactor),
         kind.data->complex ? scaledResult(kind, static_cast<int64_t>(im), tapsFactor, scaleFactor) : 0});
  }
  return results;
}

template <class Check>
void forKinds(Check check) {
  for (const DirectKind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    check(kind);
    if (testing::Test::HasFailure()) return;
  }
}

// The caller's buffers, and what should be in them.
class DirectFilter {
 public:
  DirectFilter(const DirectKind& kind, Random& random, int tapsLen, int index)
      : kind_(kind),
        length_(static_cast<size_t>(tapsLen)),
        index_(index),
        taps_(randomWholes(random, *kind.taps, length_, kind.q15() ? 20000 : 8)),
        line_(randomWholes(random, *kind.data, 2 * length_, 64)),
        bytes_(bytesOf(*kind.data, line_)),
        tapBytes_(bytesOf(*kind.taps, taps_)) {
    // Each sample twice.
    std::copy_n(line_.begin(), length_, line_.begin() + tapsLen);
    bytes_ = bytesOf(*kind.data, line_);
  }

  void one(Random& random, bool inPlace, int tapsFactor, int scaleFactor) {
    const Wholes sample = randomWholes(random, *kind_.data, 1, 64);
    const auto src = bytesOf(*kind_.data, sample);
    auto dst = src;
    Wholes samples = window();
    samples.push_back(sample[0]);
    step(sample[0]);
    if (inPlace) {
      ASSERT_EQ(kvrStatusOk, kind_.oneInPlace(dst.data(), tapBytes_.data(), static_cast<int>(length_),
                                              tapsFactor, bytes_.data(), &index_, scaleFactor));
    } else {
      ASSERT_EQ(kvrStatusOk, kind_.one(src.data(), dst.data(), tapBytes_.data(), static_cast<int>(length_),
                                       tapsFactor, bytes_.data(), &index_, scaleFactor));
    }
    expectSame(resultsOf(kind_, taps_, samples, length_, tapsFactor, scaleFactor),
               wholesOf(*kind_.data, dst.data(), 1));
    expectLeft();
  }

  void run(Random& random, size_t len, bool inPlace, int tapsFactor, int scaleFactor) {
    SCOPED_TRACE(testing::Message() << length_ << " taps, " << len << " samples, "
                                    << (inPlace ? "in place" : ""));
    const Wholes samples = randomWholes(random, *kind_.data, len, 64);
    const auto src = bytesOf(*kind_.data, samples);
    auto dst = src;
    Wholes all = window();
    if (kind_.q15()) std::reverse(all.begin(), all.end());
    all.insert(all.end(), samples.begin(), samples.end());
    const Wholes newWindow(all.end() - static_cast<ptrdiff_t>(length_), all.end());
    const int tapsLen = static_cast<int>(length_), n = static_cast<int>(len);
    if (kind_.q15()) {
      std::reverse_copy(newWindow.begin(), newWindow.end(), line_.begin());
      expectedIndex_ = 0;
    } else if (kind_.plain() ? inPlace || tapsLen >= kind_.fromTaps()
                             : kind_.data->floating && n >= kind_.fromLen()) {
      std::copy(newWindow.begin(), newWindow.end(), line_.begin() + index_);
      expectedIndex_ = index_;
    } else if (kind_.plain() && n >= tapsLen) {
      for (int i = 0; i < tapsLen - 1; ++i) step(samples[static_cast<size_t>(i)]);
      std::copy(newWindow.begin() + 1, newWindow.end(), line_.begin());
      expectedIndex_ = tapsLen - 1;
    } else {
      expectedIndex_ = index_;
      for (const Whole& sample : samples) step(sample);
    }
    if (inPlace) {
      ASSERT_EQ(kvrStatusOk, kind_.runInPlace(dst.data(), n, tapBytes_.data(), tapsLen, tapsFactor,
                                              bytes_.data(), &index_, scaleFactor));
    } else {
      ASSERT_EQ(kvrStatusOk, kind_.run(src.data(), dst.data(), n, tapBytes_.data(), tapsLen, tapsFactor,
                                       bytes_.data(), &index_, scaleFactor));
    }
    const Wholes want = resultsOf(kind_, taps_, all, length_, tapsFactor, scaleFactor);
    if (kind_.data->floating && len >= 256 && length_ >= 16) {
      // Perhaps by FFT: near whole numbers.
      const auto rounded = [&](size_t i) {
        const size_t bytes = kind_.data->bytes / (kind_.data->complex ? 2 : 1);
        return bytes == 8 ? std::lround(get(reinterpret_cast<const Kvr64f*>(dst.data()), i))
                          : std::lround(get(reinterpret_cast<const Kvr32f*>(dst.data()), i));
      };
      for (size_t i = 0; i < len; ++i) {
        ASSERT_EQ(want[i].re, rounded(kind_.data->complex ? 2 * i : i)) << i;
        if (kind_.data->complex) {
          ASSERT_EQ(want[i].im, rounded(2 * i + 1)) << i;
        }
      }
    } else {
      expectSame(want, wholesOf(*kind_.data, dst.data(), len));
    }
    expectLeft();
  }

  int index() const { return index_; }

 private:
  Wholes window() const {
    return {line_.begin() + index_, line_.begin() + index_ + static_cast<ptrdiff_t>(length_)};
  }
  // A sample comes twice, and the window moves on.
  void step(const Whole& sample) {
    if (expectedIndex_ < 0) expectedIndex_ = index_;
    line_[static_cast<size_t>(expectedIndex_)] = line_[static_cast<size_t>(expectedIndex_) + length_] =
        sample;
    expectedIndex_ = (expectedIndex_ + 1) % static_cast<int>(length_);
  }
  void expectLeft() {
    EXPECT_EQ(expectedIndex_, index_);
    expectSame(line_, wholesOf(*kind_.data, bytes_.data(), 2 * length_));
    expectedIndex_ = -1;
  }

  const DirectKind& kind_;
  size_t length_;
  int index_, expectedIndex_ = -1;
  Wholes taps_, line_;
  std::vector<Kvr8u> bytes_, tapBytes_;
};

TEST(FirDirect, OneSample) {
  Random random;
  forKinds([&](const DirectKind& kind) {
    for (int tapsLen : {1, 2, 3, 4, 7, 8, 15, 16, 17, 40, 100}) {
      for (int index : {0, tapsLen / 2, tapsLen - 1}) {
        DirectFilter filter(kind, random, tapsLen, index);
        for (int n = 0; n < 2 * tapsLen + 3; ++n) filter.one(random, n % 2 == 0, n % 3, n % 5);
      }
    }
  });
}

TEST(FirDirect, Pieces) {
  Random random;
  forKinds([&](const DirectKind& kind) {
    for (int tapsLen : {1, 2, 3, 7, 15, 16, 17, 31, 32, 33, 63, 64, 65, 150}) {
      for (size_t len :
           {1, 2, 5, 14, 15, 16, 31, 32, 63, 64, 65, 100, 127, 128, 129, 255, 256, 257, 900, 2000}) {
        DirectFilter filter(kind, random, tapsLen,
                            static_cast<int>(random.below(static_cast<uint32_t>(tapsLen))));
        filter.run(random, len, false, 0, 0);
        if (testing::Test::HasFailure()) return;
        DirectFilter inPlace(kind, random, tapsLen,
                             static_cast<int>(random.below(static_cast<uint32_t>(tapsLen))));
        inPlace.run(random, len, true, 1, 2);
        if (testing::Test::HasFailure()) return;
      }
    }
  });
}

// Calls of one kind go on where the last one ended.
TEST(FirDirect, Streams) {
  Random random;
  forKinds([&](const DirectKind& kind) {
    for (int tapsLen : {1, 5, 12, 40, 80}) {
      for (bool inPlace : {false, true}) {
        DirectFilter filter(kind, random, tapsLen, 0);
        for (int piece = 0; piece < 12; ++piece) {
          const size_t len =
              kind.plain() ? static_cast<size_t>(tapsLen) + random.below(50) : 1 + random.below(100);
          // The window of a short out-of-place filter is whole from the next single samples on.
          filter.run(random, len, inPlace, 0, 0);
          if (testing::Test::HasFailure()) return;
          if (kind.plain() && !inPlace && tapsLen < kind.fromTaps()) break;
        }
      }
    }
  });
}

// A short filter of one type, whose delay line is only whole as the next samples come in.
template <class T>
void checkShortStream(KvrStatus (*run)(const T*, T*, int, const T*, int, T*, int*)) {
  Random random;
  for (int tapsLen : {1, 2, 5, 12}) {
    std::vector<T> taps(static_cast<size_t>(tapsLen)), line(static_cast<size_t>(2 * tapsLen)), all(300),
        got(300);
    for (T& tap : taps) tap = static_cast<T>(random.below(17)) - 8;
    for (T& sample : all) sample = static_cast<T>(random.below(129)) - 64;
    int index = 0;
    for (size_t done = 0; done < all.size();) {
      const size_t len = std::min<size_t>(all.size() - done, 1 + random.below(20));
      ASSERT_EQ(kvrStatusOk, run(&all[done], &got[done], static_cast<int>(len), taps.data(), tapsLen,
                                 line.data(), &index));
      done += len;
    }
    for (size_t n = 0; n < all.size(); ++n) {
      T want = 0;
      for (size_t k = 0; k < taps.size() && k <= n; ++k) want += taps[k] * all[n - k];
      ASSERT_EQ(want, got[n]) << tapsLen << " taps, output " << n;
    }
  }
}
TEST(FirDirect, StreamsOfFewTaps) {
  checkShortStream<Kvr32f>(kvrsFIR_Direct_32f);
  checkShortStream<Kvr64f>(kvrsFIR_Direct_64f);
}

TEST(FirDirect, ScaleFactors) {
  Random random;
  forKinds([&](const DirectKind& kind) {
    if (!kind.scaled) return;
    for (int tapsFactor : {0, 5, -9}) {
      for (int scaleFactor :
           {0, 1, 2, 5, 14, 16, 17, 31, 47, 100, INT_MAX, -1, -5, -15, -16, -17, -31, -47, -100, INT_MIN}) {
        SCOPED_TRACE(testing::Message() << "factors " << tapsFactor << " " << scaleFactor);
        // The sum of the factors is clamped before it can overflow.
        DirectFilter filter(kind, random, 6, 2);
        filter.run(random, 40, false, tapsFactor, scaleFactor);
        DirectFilter one(kind, random, 6, 2);
        one.one(random, true, tapsFactor, scaleFactor);
      }
    }
  });
}

TEST(FirDirect, RoundingModes) {
  Random random;
  forKinds([&](const DirectKind& kind) {
    if (!kind.scaled) return;
    const auto taps = bytesOf(*kind.taps, {{3}, {-5}}),
               src = bytesOf(*kind.data, {{7, 1}, {-8, 3}, {11, -2}, {5, 5}});
    std::vector<Kvr8u> want(src), line(4 * kind.data->bytes);
    int index = 0;
    ASSERT_EQ(kvrStatusOk, kind.run(src.data(), want.data(), 4, taps.data(), 2, 0, line.data(), &index, 1));
    for (int mode : kCallerModes) {
      std::vector<Kvr8u> got(src);
      std::fill(line.begin(), line.end(), Kvr8u{0});
      index = 0;
      callWithRounding(mode, [&] {
        return kind.run(src.data(), got.data(), 4, taps.data(), 2, 0, line.data(), &index, 1);
      });
      EXPECT_EQ(want, got);
    }
  });
}

// Q15 takes -32768 as it is.
TEST(FirDirect, LowestQ15Tap) {
  const Kvr16s taps[] = {-32768, 3}, src[] = {-32768, 100};
  Kvr16s dst[2], line[4] = {};
  int index = 0;
  ASSERT_EQ(kvrStatusOk, kvrsFIR_Direct_16s_Sfs(src, dst, 2, taps, 2, line, &index, 0));
  EXPECT_EQ(32767, dst[0]);
  EXPECT_EQ(-103, dst[1]);  // -100 - 3
  EXPECT_EQ(100, line[0]);
  EXPECT_EQ(-32768, line[1]);
}

TEST(FirDirect, OrderOfChecks) {
  Random random;
  forKinds([&](const DirectKind& kind) {
    const auto taps = bytesOf(*kind.taps, randomWholes(random, *kind.taps, 4, 5));
    std::vector<Kvr8u> line(256), src(64);
    auto dst = src;
    int index = 0;
    const auto run = [&](const void* s, void* d, int len, const void* t, int tapsLen, void* l, int* i) {
      return kind.run(s, d, len, t, tapsLen, 0, l, i, 0);
    };
    const auto p = [](std::vector<Kvr8u>& v) { return v.data(); };
    EXPECT_EQ(kvrStatusNullPointer, run(nullptr, p(dst), 0, taps.data(), 0, p(line), &index));
    EXPECT_EQ(kvrStatusNullPointer, run(p(src), nullptr, 0, taps.data(), 0, p(line), &index));
    EXPECT_EQ(kind.q15() ? kvrStatusNullPointer : kvrStatusBadLength,
              run(p(src), p(dst), 0, nullptr, 0, p(line), &index));
    EXPECT_EQ(kvrStatusNullPointer, run(p(src), p(dst), 4, nullptr, 0, p(line), &index));
    EXPECT_EQ(kind.q15() ? kvrStatusNullPointer : kvrStatusBadTapsLength,
              run(p(src), p(dst), 4, taps.data(), 0, nullptr, &index));
    EXPECT_EQ(kvrStatusBadTapsLength, run(p(src), p(dst), 4, taps.data(), 0, p(line), &index));
    EXPECT_EQ(kvrStatusNullPointer, run(p(src), p(dst), 4, taps.data(), 4, nullptr, &index));
    EXPECT_EQ(kvrStatusNullPointer, run(p(src), p(dst), 4, taps.data(), 4, p(line), nullptr));
    EXPECT_EQ(kvrStatusNullPointer, kind.runInPlace(nullptr, 0, taps.data(), 0, 0, p(line), &index, 0));
    EXPECT_EQ(kvrStatusNullPointer, kind.one(p(src), nullptr, taps.data(), 0, 0, p(line), &index, 0));
    EXPECT_EQ(kvrStatusNullPointer, kind.oneInPlace(nullptr, taps.data(), 0, 0, p(line), &index, 0));
    EXPECT_EQ(kvrStatusNullPointer, kind.one(p(src), p(dst), nullptr, 0, 0, p(line), &index, 0));
    EXPECT_EQ(kvrStatusBadTapsLength, kind.one(p(src), p(dst), taps.data(), 0, 0, nullptr, &index, 0));
    EXPECT_EQ(kvrStatusNullPointer, kind.one(p(src), p(dst), taps.data(), 4, 0, nullptr, &index, 0));
    EXPECT_EQ(kvrStatusNullPointer, kind.one(p(src), p(dst), taps.data(), 4, 0, p(line), nullptr, 0));
    if (kind.q15()) {
      for (int bad : {-1, 4, 100, INT_MIN}) {
        index = bad;
        EXPECT_EQ(kvrStatusBadDelayIndex, run(p(src), p(dst), 4, taps.data(), 4, p(line), &index));
        EXPECT_EQ(kvrStatusBadDelayIndex, kind.one(p(src), p(dst), taps.data(), 4, 0, p(line), &index, 0));
        EXPECT_EQ(kvrStatusBadDelayIndex, kind.oneInPlace(p(dst), taps.data(), 4, 0, p(line), &index, 0));
      }
    }
    EXPECT_EQ(src, dst);
  });
}

TEST(FirDirect, Memory) {
  Random random;
  forKinds([&](const DirectKind& kind) {
    const auto taps = bytesOf(*kind.taps, randomWholes(random, *kind.taps, 80, 5));
    std::vector<Kvr8u> line(160 * kind.data->bytes, 1), src(300 * kind.data->bytes, 1);
    const auto before = line;
    for (bool inPlace : {false, true}) {
      auto dst = src;
      int index = 3;
      const auto run = [&] {
        return inPlace ? kind.runInPlace(dst.data(), 300, taps.data(), 80, 0, line.data(), &index, 0)
                       : kind.run(src.data(), dst.data(), 300, taps.data(), 80, 0, line.data(), &index, 0);
      };
      const bool allocates = kind.q15() || kind.data->floating;
      if (allocates) {
        FailingAllocator failing(1);
        EXPECT_EQ(kvrStatusOutOfMemory, run());
        EXPECT_EQ(before, line);
        EXPECT_EQ(src, dst);
        EXPECT_EQ(3, index);
      }
      EXPECT_EQ(allocates ? 1 : 0, countAllocationsWithFailures(run, kvrStatusOutOfMemory));
      line = before;
    }
  });
}

// ---- Two rates

TEST(FirMultirateDirect, FactorsPhasesAndPieces) {
  Random random;
  forKinds([&](const DirectKind& kind) {
    if (kind.runRates == nullptr) return;
    FirKind like{};
    like.data = kind.data;
    for (int up = 1; up <= 7; ++up) {
      for (int down = 1; down <= 7; ++down) {
        for (int turn = 0; turn < 6; ++turn) {
          const WholeFilter::Rates rates{up, static_cast<int>(random.below(static_cast<uint32_t>(up))), down,
                                         static_cast<int>(random.below(static_cast<uint32_t>(down)))};
          const int tapsLen = 1 + static_cast<int>(random.below(static_cast<uint32_t>(turn < 3 ? 6 : 40)));
          SCOPED_TRACE(testing::Message() << tapsLen << " taps, up " << up << " from " << rates.upPhase
                                          << ", down " << down << " from " << rates.downPhase);
          const Wholes taps = randomWholes(random, *kind.taps, static_cast<size_t>(tapsLen), 8);
          WholeFilter oracle(like, taps, 0, {}, rates);
          const Wholes line = randomWholes(random, *kind.data, oracle.delayLength(), 64);
          oracle.setDelayLine(line);
          auto lineBytes = bytesOf(*kind.data, line);
          const auto tapBytes = bytesOf(*kind.taps, taps);
          for (int numIters : {1, 2, 5, 30}) {
            const int tapsFactor = kind.factored ? 1 : 0, scaleFactor = kind.scaled ? numIters % 4 : 0;
            const size_t in = static_cast<size_t>(numIters * down), out = static_cast<size_t>(numIters * up);
            const Wholes samples = randomWholes(random, *kind.data, in, 64);
            auto src = bytesOf(*kind.data, samples);
            std::vector<Kvr8u> dst(std::max(in, out) * kind.data->bytes);
            if (numIters == 5) {
              memcpy(dst.data(), src.data(), src.size());
              ASSERT_EQ(kvrStatusOk, kind.runRatesInPlace(dst.data(), numIters, tapBytes.data(), tapsLen,
                                                          tapsFactor, up, rates.upPhase, down,
                                                          rates.downPhase, lineBytes.data(), scaleFactor));
            } else {
              ASSERT_EQ(kvrStatusOk, kind.runRates(src.data(), dst.data(), numIters, tapBytes.data(), tapsLen,
                                                   tapsFactor, up, rates.upPhase, down, rates.downPhase,
                                                   lineBytes.data(), scaleFactor));
            }
            Wholes want = oracle.run(samples, 0);
            for (Whole& value : want) {
              value = {scaledResult(kind, value.re, tapsFactor, scaleFactor),
                       kind.data->complex ? scaledResult(kind, value.im, tapsFactor, scaleFactor) : 0};
            }
            expectSame(want, wholesOf(*kind.data, dst.data(), out));
            expectSame(oracle.delayLine(), wholesOf(*kind.data, lineBytes.data(), oracle.delayLength()));
            if (testing::Test::HasFailure()) return;
          }
        }
      }
    }
  });
}

TEST(FirMultirateDirect, OrderOfChecksAndMemory) {
  Random random;
  forKinds([&](const DirectKind& kind) {
    if (kind.runRates == nullptr) return;
    const auto taps = bytesOf(*kind.taps, randomWholes(random, *kind.taps, 8, 5));
    std::vector<Kvr8u> line(256, 1), src(640, 1);
    auto dst = src;
    const auto run = [&](const void* s, int iters, const void* t, int tapsLen, int up, int upPhase, int down,
                         int downPhase, void* l) {
      const KvrStatus status =
          kind.runRates(s, dst.data(), iters, t, tapsLen, 0, up, upPhase, down, downPhase, l, 0);
      if (s != nullptr) {
        EXPECT_EQ(status,
                  kind.runRatesInPlace(dst.data(), iters, t, tapsLen, 0, up, upPhase, down, downPhase, l, 0));
      }
      return status;
    };
    EXPECT_EQ(kvrStatusNullPointer, run(nullptr, 0, nullptr, 0, 0, 0, 0, 0, nullptr));
    EXPECT_EQ(kvrStatusNullPointer, kind.runRatesInPlace(nullptr, 0, nullptr, 0, 0, 0, 0, 0, 0, nullptr, 0));
    EXPECT_EQ(kvrStatusBadLength, run(src.data(), 0, nullptr, 0, 0, 0, 0, 0, nullptr));
    EXPECT_EQ(kvrStatusNullPointer, run(src.data(), 1, nullptr, 0, 0, 0, 0, 0, nullptr));
    EXPECT_EQ(kvrStatusBadTapsLength, run(src.data(), 1, taps.data(), 0, 0, 0, 0, 0, nullptr));
    EXPECT_EQ(kvrStatusBadRateFactor, run(src.data(), 1, taps.data(), 8, 0, 9, 1, 9, nullptr));
    EXPECT_EQ(kvrStatusBadRateFactor, run(src.data(), 1, taps.data(), 8, 1, 9, 0, 9, nullptr));
    EXPECT_EQ(kvrStatusBadPhase, run(src.data(), 1, taps.data(), 8, 2, 2, 2, 0, nullptr));
    EXPECT_EQ(kvrStatusBadPhase, run(src.data(), 1, taps.data(), 8, 2, 0, 2, -1, nullptr));
    EXPECT_EQ(kvrStatusNullPointer, run(src.data(), 1, taps.data(), 8, 2, 0, 2, 0, nullptr));
    EXPECT_EQ(src, dst);
    const auto before = line;
    {
      FailingAllocator failing(1);
      EXPECT_EQ(kvrStatusOutOfMemory,
                kind.runRatesInPlace(dst.data(), 3, taps.data(), 8, 0, 2, 0, 3, 0, line.data(), 0));
    }
    EXPECT_EQ(src, dst);
    EXPECT_EQ(before, line);
    const auto inPlace = [&] {
      return kind.runRatesInPlace(dst.data(), 3, taps.data(), 8, 0, 2, 0, 3, 0, line.data(), 0);
    };
    EXPECT_EQ(1, countAllocationsWithFailures(inPlace, kvrStatusOutOfMemory));
  });
}

}  // namespace
