/* FIR filters between two sampling rates. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FIR_MULTIRATE_H
#define KVRS_FIR_MULTIRATE_H

#include "kvrs/fir.h"

KVRS_BEGIN_DECLS

/** @defgroup fir_multirate Multi-rate FIR filters
 *
 * A filter that puts upFactor - 1 zeros behind each sample, filters at the high rate, and keeps one of downFactor results;
 * none of the products with the zeros is computed. An iteration takes downFactor samples and gives upFactor results.
 *
 * Time runs in steps of the high rate. Sample i comes at time upPhase + i*upFactor, output n at t = downPhase + n*downFactor:
 *
 *     y[n] = sum over k from 0 to tapsLen-1 of taps[k] * x(t-k)
 *
 * where x is 0 at times that are no sample's, and before the first one what the delay line says. It holds
 *
 *     dlyLen = (tapsLen + upFactor - 1) / upFactor
 *
 * samples, the newest first: that many do Init, kvrsFIRGetDlyLine, kvrsFIRSetDlyLine and the stateless forms read and write.
 *
 * ### With a state
 *
 * States are those of fir.h. They are sized and made by the functions here and then treated by those of fir.h: Free,
 * GetTaps, SetTaps, GetDlyLine, SetDlyLine. kvrsFIR_32f(src, dst, numIters, state) and its like filter numIters*downFactor
 * samples to numIters*upFactor results; in place, the array holds the larger number, and where there are more results than
 * samples, or the taps are integers, the samples are copied first (::kvrStatusOutOfMemory if there is no room). FIROne
 * refuses these states. A call ends where the next one begins, so a stream has no seams.
 *
 * With both factors 1, filters of real floating-point taps are those of a single rate, in all respects.
 *
 * | Function          | Errors, in the order tested |
 * |-------------------|-----------------------------|
 * | GetStateSize      | ::kvrStatusNullPointer, ::kvrStatusBadTapsLength for `tapsLen` below 1, ::kvrStatusBadRateFactor for a factor below 1; ::kvrStatusBadTapsLength if the size is no `int` |
 * | Init, InitAlloc   | the same, with ::kvrStatusBadPhase behind the factors for a phase that is not below its factor, or below 0 |
 * | InitAlloc         | then ::kvrStatusOutOfMemory |
 *
 * ### Without a state
 *
 * The stateless forms (Direct) take taps and delay line with each call and leave in the delay line what the next call
 * wants. Products have the precision of the taps, and are added up in double precision (32s: in 32 bits, modulo 2^32), those
 * with an even j in tap u + j*upFactor apart from the others.
 *
 * | Results of | are |
 * |------------|-----|
 * | 32f taps as 16s | the sum times 2^(-scaleFactor), rounded to nearest with ties away from zero, saturated |
 * | other floating-point taps as 16s, 16sc, 32s, 32sc | the same, with ties to even |
 * | 32s, 32sc taps | the sum shifted left by tapsFactor - scaleFactor, from -31 to 31, modulo 2^32, or right and rounded to nearest with ties to even, saturated |
 *
 * The forms in place filter a copy.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for `src`, `dst` or `srcDst`, ::kvrStatusBadLength for `numIters` below
 * 1, ::kvrStatusNullPointer for `taps`, ::kvrStatusBadTapsLength, ::kvrStatusBadRateFactor, ::kvrStatusBadPhase,
 * ::kvrStatusNullPointer for `dlyLine`; in place then ::kvrStatusOutOfMemory.
 * @{
 */

typedef struct KvrsFIRState_32f KvrsFIRMRState_32f;
typedef struct KvrsFIRState_64f KvrsFIRMRState_64f;
typedef struct KvrsFIRState_32fc KvrsFIRMRState_32fc;
typedef struct KvrsFIRState_64fc KvrsFIRMRState_64fc;
typedef struct KvrsFIRState_16s KvrsFIRMRState_16s;
typedef struct KvrsFIRState32f_16s KvrsFIRMRState32f_16s;
typedef struct KvrsFIRState32fc_16sc KvrsFIRMRState32fc_16sc;
typedef struct KvrsFIRState64f_16s KvrsFIRMRState64f_16s;
typedef struct KvrsFIRState64f_32f KvrsFIRMRState64f_32f;
typedef struct KvrsFIRState64f_32s KvrsFIRMRState64f_32s;
typedef struct KvrsFIRState64fc_16sc KvrsFIRMRState64fc_16sc;
typedef struct KvrsFIRState64fc_32fc KvrsFIRMRState64fc_32fc;
typedef struct KvrsFIRState64fc_32sc KvrsFIRMRState64fc_32sc;
typedef struct KvrsFIRState32s_16s KvrsFIRMRState32s_16s;
typedef struct KvrsFIRState32sc_16sc KvrsFIRMRState32sc_16sc;

KVRS_API KvrStatus kvrsFIRMRGetStateSize_32f(int tapsLen, int upFactor, int downFactor,
                                             int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize32f_16s(int tapsLen, int upFactor, int downFactor,
                                                int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize_32fc(int tapsLen, int upFactor, int downFactor,
                                              int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize32fc_16sc(int tapsLen, int upFactor, int downFactor,
                                                  int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize_64f(int tapsLen, int upFactor, int downFactor,
                                             int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize64f_32f(int tapsLen, int upFactor, int downFactor,
                                                int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize64f_32s(int tapsLen, int upFactor, int downFactor,
                                                int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize64f_16s(int tapsLen, int upFactor, int downFactor,
                                                int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize_64fc(int tapsLen, int upFactor, int downFactor,
                                              int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize64fc_32fc(int tapsLen, int upFactor, int downFactor,
                                                  int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize64fc_32sc(int tapsLen, int upFactor, int downFactor,
                                                  int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize64fc_16sc(int tapsLen, int upFactor, int downFactor,
                                                  int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize_16s(int tapsLen, int upFactor, int downFactor,
                                             int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize32s_16s(int tapsLen, int upFactor, int downFactor,
                                                int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize32s_16s32f(int tapsLen, int upFactor, int downFactor,
                                                   int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize32sc_16sc(int tapsLen, int upFactor, int downFactor,
                                                  int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRGetStateSize32sc_16sc32fc(int tapsLen, int upFactor, int downFactor,
                                                      int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRMRInit_32f(KvrsFIRMRState_32f** state, const Kvr32f* taps, int tapsLen,
                                     int upFactor, int upPhase, int downFactor, int downPhase,
                                     const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit32f_16s(KvrsFIRMRState32f_16s** state, const Kvr32f* taps, int tapsLen,
                                        int upFactor, int upPhase, int downFactor, int downPhase,
                                        const Kvr16s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit_32fc(KvrsFIRMRState_32fc** state, const Kvr32fc* taps, int tapsLen,
                                      int upFactor, int upPhase, int downFactor, int downPhase,
                                      const Kvr32fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit32fc_16sc(KvrsFIRMRState32fc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                          int upFactor, int upPhase, int downFactor, int downPhase,
                                          const Kvr16sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit_64f(KvrsFIRMRState_64f** state, const Kvr64f* taps, int tapsLen,
                                     int upFactor, int upPhase, int downFactor, int downPhase,
                                     const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit64f_32f(KvrsFIRMRState64f_32f** state, const Kvr64f* taps, int tapsLen,
                                        int upFactor, int upPhase, int downFactor, int downPhase,
                                        const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit64f_32s(KvrsFIRMRState64f_32s** state, const Kvr64f* taps, int tapsLen,
                                        int upFactor, int upPhase, int downFactor, int downPhase,
                                        const Kvr32s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit64f_16s(KvrsFIRMRState64f_16s** state, const Kvr64f* taps, int tapsLen,
                                        int upFactor, int upPhase, int downFactor, int downPhase,
                                        const Kvr16s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit_64fc(KvrsFIRMRState_64fc** state, const Kvr64fc* taps, int tapsLen,
                                      int upFactor, int upPhase, int downFactor, int downPhase,
                                      const Kvr64fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit64fc_32fc(KvrsFIRMRState64fc_32fc** state, const Kvr64fc* taps, int tapsLen,
                                          int upFactor, int upPhase, int downFactor, int downPhase,
                                          const Kvr32fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit64fc_32sc(KvrsFIRMRState64fc_32sc** state, const Kvr64fc* taps, int tapsLen,
                                          int upFactor, int upPhase, int downFactor, int downPhase,
                                          const Kvr32sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit64fc_16sc(KvrsFIRMRState64fc_16sc** state, const Kvr64fc* taps, int tapsLen,
                                          int upFactor, int upPhase, int downFactor, int downPhase,
                                          const Kvr16sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit_16s(KvrsFIRMRState_16s** state, const Kvr16s* taps, int tapsLen,
                                     int tapsFactor, int upFactor, int upPhase, int downFactor, int downPhase,
                                     const Kvr16s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit32s_16s(KvrsFIRMRState32s_16s** state, const Kvr32s* taps, int tapsLen,
                                        int tapsFactor, int upFactor, int upPhase, int downFactor,
                                        int downPhase, const Kvr16s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit32s_16s32f(KvrsFIRMRState32s_16s** state, const Kvr32f* taps, int tapsLen,
                                           int upFactor, int upPhase, int downFactor, int downPhase,
                                           const Kvr16s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit32sc_16sc(KvrsFIRMRState32sc_16sc** state, const Kvr32sc* taps, int tapsLen,
                                          int tapsFactor, int upFactor, int upPhase, int downFactor,
                                          int downPhase, const Kvr16sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInit32sc_16sc32fc(KvrsFIRMRState32sc_16sc** state, const Kvr32fc* taps,
                                              int tapsLen, int upFactor, int upPhase, int downFactor,
                                              int downPhase, const Kvr16sc* dlyLine,
                                              Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRMRInitAlloc_32f(KvrsFIRMRState_32f** state, const Kvr32f* taps, int tapsLen,
                                          int upFactor, int upPhase, int downFactor, int downPhase,
                                          const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc32f_16s(KvrsFIRMRState32f_16s** state, const Kvr32f* taps, int tapsLen,
                                             int upFactor, int upPhase, int downFactor, int downPhase,
                                             const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc_32fc(KvrsFIRMRState_32fc** state, const Kvr32fc* taps, int tapsLen,
                                           int upFactor, int upPhase, int downFactor, int downPhase,
                                           const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc32fc_16sc(KvrsFIRMRState32fc_16sc** state, const Kvr32fc* taps,
                                               int tapsLen, int upFactor, int upPhase, int downFactor,
                                               int downPhase, const Kvr16sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc_64f(KvrsFIRMRState_64f** state, const Kvr64f* taps, int tapsLen,
                                          int upFactor, int upPhase, int downFactor, int downPhase,
                                          const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc64f_32f(KvrsFIRMRState64f_32f** state, const Kvr64f* taps, int tapsLen,
                                             int upFactor, int upPhase, int downFactor, int downPhase,
                                             const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc64f_32s(KvrsFIRMRState64f_32s** state, const Kvr64f* taps, int tapsLen,
                                             int upFactor, int upPhase, int downFactor, int downPhase,
                                             const Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc64f_16s(KvrsFIRMRState64f_16s** state, const Kvr64f* taps, int tapsLen,
                                             int upFactor, int upPhase, int downFactor, int downPhase,
                                             const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc_64fc(KvrsFIRMRState_64fc** state, const Kvr64fc* taps, int tapsLen,
                                           int upFactor, int upPhase, int downFactor, int downPhase,
                                           const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc64fc_32fc(KvrsFIRMRState64fc_32fc** state, const Kvr64fc* taps,
                                               int tapsLen, int upFactor, int upPhase, int downFactor,
                                               int downPhase, const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc64fc_32sc(KvrsFIRMRState64fc_32sc** state, const Kvr64fc* taps,
                                               int tapsLen, int upFactor, int upPhase, int downFactor,
                                               int downPhase, const Kvr32sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc64fc_16sc(KvrsFIRMRState64fc_16sc** state, const Kvr64fc* taps,
                                               int tapsLen, int upFactor, int upPhase, int downFactor,
                                               int downPhase, const Kvr16sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc_16s(KvrsFIRMRState_16s** state, const Kvr16s* taps, int tapsLen,
                                          int tapsFactor, int upFactor, int upPhase, int downFactor,
                                          int downPhase, const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc32s_16s(KvrsFIRMRState32s_16s** state, const Kvr32s* taps, int tapsLen,
                                             int tapsFactor, int upFactor, int upPhase, int downFactor,
                                             int downPhase, const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc32s_16s32f(KvrsFIRMRState32s_16s** state, const Kvr32f* taps,
                                                int tapsLen, int upFactor, int upPhase, int downFactor,
                                                int downPhase, const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc32sc_16sc(KvrsFIRMRState32sc_16sc** state, const Kvr32sc* taps,
                                               int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                               int downFactor, int downPhase,
                                               const Kvr16sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRInitAlloc32sc_16sc32fc(KvrsFIRMRState32sc_16sc** state, const Kvr32fc* taps,
                                                   int tapsLen, int upFactor, int upPhase, int downFactor,
                                                   int downPhase, const Kvr16sc* dlyLine) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRMR32f_Direct_16s_ISfs(Kvr16s* srcDst, int numIters, const Kvr32f* taps, int tapsLen,
                                                int upFactor, int upPhase, int downFactor, int downPhase,
                                                Kvr16s* dlyLine, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR32f_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int numIters,
                                               const Kvr32f* taps, int tapsLen, int upFactor, int upPhase,
                                               int downFactor, int downPhase, Kvr16s* dlyLine,
                                               int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR32fc_Direct_16sc_ISfs(Kvr16sc* srcDst, int numIters, const Kvr32fc* taps,
                                                  int tapsLen, int upFactor, int upPhase, int downFactor,
                                                  int downPhase, Kvr16sc* dlyLine,
                                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR32fc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int numIters,
                                                 const Kvr32fc* taps, int tapsLen, int upFactor, int upPhase,
                                                 int downFactor, int downPhase, Kvr16sc* dlyLine,
                                                 int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR32s_Direct_16s_ISfs(Kvr16s* srcDst, int numIters, const Kvr32s* taps, int tapsLen,
                                                int tapsFactor, int upFactor, int upPhase, int downFactor,
                                                int downPhase, Kvr16s* dlyLine,
                                                int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR32s_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int numIters,
                                               const Kvr32s* taps, int tapsLen, int tapsFactor, int upFactor,
                                               int upPhase, int downFactor, int downPhase, Kvr16s* dlyLine,
                                               int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR32sc_Direct_16sc_ISfs(Kvr16sc* srcDst, int numIters, const Kvr32sc* taps,
                                                  int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                                  int downFactor, int downPhase, Kvr16sc* dlyLine,
                                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR32sc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int numIters,
                                                 const Kvr32sc* taps, int tapsLen, int tapsFactor,
                                                 int upFactor, int upPhase, int downFactor, int downPhase,
                                                 Kvr16sc* dlyLine, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64f_Direct_16s_ISfs(Kvr16s* srcDst, int numIters, const Kvr64f* taps, int tapsLen,
                                                int upFactor, int upPhase, int downFactor, int downPhase,
                                                Kvr16s* dlyLine, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64f_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int numIters,
                                               const Kvr64f* taps, int tapsLen, int upFactor, int upPhase,
                                               int downFactor, int downPhase, Kvr16s* dlyLine,
                                               int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64f_Direct_32f(const Kvr32f* src, Kvr32f* dst, int numIters, const Kvr64f* taps,
                                           int tapsLen, int upFactor, int upPhase, int downFactor,
                                           int downPhase, Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64f_Direct_32f_I(Kvr32f* srcDst, int numIters, const Kvr64f* taps, int tapsLen,
                                             int upFactor, int upPhase, int downFactor, int downPhase,
                                             Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64f_Direct_32s_ISfs(Kvr32s* srcDst, int numIters, const Kvr64f* taps, int tapsLen,
                                                int upFactor, int upPhase, int downFactor, int downPhase,
                                                Kvr32s* dlyLine, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64f_Direct_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int numIters,
                                               const Kvr64f* taps, int tapsLen, int upFactor, int upPhase,
                                               int downFactor, int downPhase, Kvr32s* dlyLine,
                                               int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64fc_Direct_16sc_ISfs(Kvr16sc* srcDst, int numIters, const Kvr64fc* taps,
                                                  int tapsLen, int upFactor, int upPhase, int downFactor,
                                                  int downPhase, Kvr16sc* dlyLine,
                                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64fc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int numIters,
                                                 const Kvr64fc* taps, int tapsLen, int upFactor, int upPhase,
                                                 int downFactor, int downPhase, Kvr16sc* dlyLine,
                                                 int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64fc_Direct_32fc(const Kvr32fc* src, Kvr32fc* dst, int numIters,
                                             const Kvr64fc* taps, int tapsLen, int upFactor, int upPhase,
                                             int downFactor, int downPhase, Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64fc_Direct_32fc_I(Kvr32fc* srcDst, int numIters, const Kvr64fc* taps,
                                               int tapsLen, int upFactor, int upPhase, int downFactor,
                                               int downPhase, Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64fc_Direct_32sc_ISfs(Kvr32sc* srcDst, int numIters, const Kvr64fc* taps,
                                                  int tapsLen, int upFactor, int upPhase, int downFactor,
                                                  int downPhase, Kvr32sc* dlyLine,
                                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR64fc_Direct_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, int numIters,
                                                 const Kvr64fc* taps, int tapsLen, int upFactor, int upPhase,
                                                 int downFactor, int downPhase, Kvr32sc* dlyLine,
                                                 int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR_Direct_32f(const Kvr32f* src, Kvr32f* dst, int numIters, const Kvr32f* taps,
                                        int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                        Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR_Direct_32f_I(Kvr32f* srcDst, int numIters, const Kvr32f* taps, int tapsLen,
                                          int upFactor, int upPhase, int downFactor, int downPhase,
                                          Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR_Direct_32fc(const Kvr32fc* src, Kvr32fc* dst, int numIters, const Kvr32fc* taps,
                                         int tapsLen, int upFactor, int upPhase, int downFactor,
                                         int downPhase, Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR_Direct_32fc_I(Kvr32fc* srcDst, int numIters, const Kvr32fc* taps, int tapsLen,
                                           int upFactor, int upPhase, int downFactor, int downPhase,
                                           Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR_Direct_64f(const Kvr64f* src, Kvr64f* dst, int numIters, const Kvr64f* taps,
                                        int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                        Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR_Direct_64f_I(Kvr64f* srcDst, int numIters, const Kvr64f* taps, int tapsLen,
                                          int upFactor, int upPhase, int downFactor, int downPhase,
                                          Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR_Direct_64fc(const Kvr64fc* src, Kvr64fc* dst, int numIters, const Kvr64fc* taps,
                                         int tapsLen, int upFactor, int upPhase, int downFactor,
                                         int downPhase, Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMR_Direct_64fc_I(Kvr64fc* srcDst, int numIters, const Kvr64fc* taps, int tapsLen,
                                           int upFactor, int upPhase, int downFactor, int downPhase,
                                           Kvr64fc* dlyLine) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
