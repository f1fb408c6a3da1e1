/* Adaptive FIR filters in steps, for several rates.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FIR_LMS_MULTIRATE_H
#define KVRS_FIR_LMS_MULTIRATE_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup fir_lms_multirate Adaptive FIR filters in steps
 *
 * Adaptive FIR filters in integers (fir_lms.h has those that do all in one) whose steps are calls of their own: samples are
 * put in at one rate, outputs computed at another, and taps moved at a third, with an error that the caller makes of the
 * output, and perhaps some samples late (delayed LMS: Long, Ling and Proakis, The LMS algorithm with delayed coefficient
 * adaptation, 1989). A filter for complex signals is named by 32sc_16sc where the one for real signals is named by
 * 32s_16s.
 *
 * With x[0] the sample that was put in last, x[1] the one before, and L = tapsLen:
 *
 *     One          dst     = sum over k from 0 to L-1 of (taps[k] >> 16) * x[k*dlyStep]
 *     UpdateTaps   g       = (mu * err + 16384) >> 15
 *                  taps[k] = taps[k] + g * x[k*dlyStep + updateDly]                        real
 *                  taps[k] = taps[k] + g * conj(x[k*dlyStep + updateDly])                  complex
 *
 * Everything is modulo 2^32, the shifts are arithmetic, and of complex taps and errors both parts are shifted. Taps have 32
 * bits: the upper 16 filter, while all of them adapt. Outputs are neither scaled nor rounded. `mu` is in Q15.
 *
 * | Argument       | Meaning                                                             | Range                         |
 * |----------------|---------------------------------------------------------------------|-------------------------------|
 * | `tapsLen`      | L                                                                   | from 1                        |
 * | `dlyStep`      | distance between the samples that consecutive taps meet             | from 1                        |
 * | `updateDly`    | by how many samples updates are late                                | from 0                        |
 * | `dlyLineIndex` | where in the delay line the oldest sample is and the next one goes  | 0 .. dlyLen-1                 |
 * | `mu`           | the step                                                            | any                           |
 *
 * The delay line is a ring of dlyLen = L*dlyStep + updateDly samples.
 *
 * ### Functions
 *
 * | Function      | does |
 * |---------------|------|
 * | InitAlloc     | makes a context in three blocks of the heap: record, taps and delay line. Null taps are zeros, a null `dlyLine` silence |
 * | Free          | releases them; null is allowed |
 * | PutVal        | puts a sample into the delay line in place of the oldest one |
 * | One           | computes an output |
 * | OneVal        | both, in this order |
 * | UpdateTaps    | moves the taps, by the error `err` or `errRe` + i `errIm` |
 * | SetMu         | replaces `mu` |
 * | GetTaps, SetTaps | store and replace the taps; null sets zeros |
 * | GetTapsPointer | gives the address of the context's own taps, the last one first, for reading and writing while the context lives |
 * | GetDlyLine    | stores the ring as it lies in memory, and the index |
 * | SetDlyLine    | replaces both; a null `dlyLine` is silence. The index is not tested: GetDlyLine gives it back, and all else takes it modulo dlyLen |
 * | GetDlyVal     | stores sample `index`, from 0 to dlyLen, of those that stand in the line from the one on that the last tap meets, from older to newer: x[(L-1)*dlyStep - index]. Behind the newest one follows the oldest of the line |
 *
 * ### Errors, in the order tested
 *
 * | Function       | Errors |
 * |----------------|--------|
 * | InitAlloc      | ::kvrStatusNullPointer for `state`; ::kvrStatusBadLength for an argument out of the ranges above; ::kvrStatusOutOfMemory, also for a dlyLen that is no `int` |
 * | Free           | none, and the word of the context is not looked at |
 * | GetTapsPointer | ::kvrStatusNullPointer; the word is not looked at |
 * | SetTaps, SetDlyLine | ::kvrStatusNullPointer for `state`, ::kvrStatusContextMismatch |
 * | GetDlyVal      | ::kvrStatusNullPointer, ::kvrStatusContextMismatch, ::kvrStatusBadArg for an `index` out of 0 .. dlyLen |
 * | all others     | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 *
 * A context is changed by PutVal, OneVal, UpdateTaps and all that set something, and must not be used by another call at
 * the same time.
 * @{
 */

typedef struct KvrsFIRLMSMRState32s_16s KvrsFIRLMSMRState32s_16s;
typedef struct KvrsFIRLMSMRState32sc_16sc KvrsFIRLMSMRState32sc_16sc;

KVRS_API KvrStatus kvrsFIRLMSMRInitAlloc32s_16s(KvrsFIRLMSMRState32s_16s** state, const Kvr32s* taps,
                                                int tapsLen, const Kvr16s* dlyLine, int dlyLineIndex,
                                                int dlyStep, int updateDly, int mu) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRInitAlloc32sc_16sc(KvrsFIRLMSMRState32sc_16sc** state, const Kvr32sc* taps,
                                                  int tapsLen, const Kvr16sc* dlyLine, int dlyLineIndex,
                                                  int dlyStep, int updateDly, int mu) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRFree32s_16s(KvrsFIRLMSMRState32s_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRFree32sc_16sc(KvrsFIRLMSMRState32sc_16sc* state) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRLMSMRGetTaps32s_16s(const KvrsFIRLMSMRState32s_16s* state,
                                              Kvr32s* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRGetTaps32sc_16sc(const KvrsFIRLMSMRState32sc_16sc* state,
                                                Kvr32sc* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRSetTaps32s_16s(KvrsFIRLMSMRState32s_16s* state,
                                              const Kvr32s* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRSetTaps32sc_16sc(KvrsFIRLMSMRState32sc_16sc* state,
                                                const Kvr32sc* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRGetTapsPointer32s_16s(KvrsFIRLMSMRState32s_16s* state,
                                                     Kvr32s** tapsPointer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRGetTapsPointer32sc_16sc(KvrsFIRLMSMRState32sc_16sc* state,
                                                       Kvr32sc** tapsPointer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRGetDlyLine32s_16s(const KvrsFIRLMSMRState32s_16s* state, Kvr16s* dlyLine,
                                                 int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRGetDlyLine32sc_16sc(const KvrsFIRLMSMRState32sc_16sc* state, Kvr16sc* dlyLine,
                                                   int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRSetDlyLine32s_16s(KvrsFIRLMSMRState32s_16s* state, const Kvr16s* dlyLine,
                                                 int dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRSetDlyLine32sc_16sc(KvrsFIRLMSMRState32sc_16sc* state, const Kvr16sc* dlyLine,
                                                   int dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRGetDlyVal32s_16s(const KvrsFIRLMSMRState32s_16s* state, Kvr16s* dst,
                                                int index) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRGetDlyVal32sc_16sc(const KvrsFIRLMSMRState32sc_16sc* state, Kvr16sc* dst,
                                                  int index) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRSetMu32s_16s(KvrsFIRLMSMRState32s_16s* state, int mu) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRSetMu32sc_16sc(KvrsFIRLMSMRState32sc_16sc* state, int mu) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRLMSMRPutVal32s_16s(Kvr16s val, KvrsFIRLMSMRState32s_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRPutVal32sc_16sc(Kvr16sc val, KvrsFIRLMSMRState32sc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMROne32s_16s(Kvr32s* dst, KvrsFIRLMSMRState32s_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMROne32sc_16sc(Kvr32sc* dst, KvrsFIRLMSMRState32sc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMROneVal32s_16s(Kvr16s val, Kvr32s* dst,
                                             KvrsFIRLMSMRState32s_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMROneVal32sc_16sc(Kvr16sc val, Kvr32sc* dst,
                                               KvrsFIRLMSMRState32sc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRUpdateTaps32s_16s(int err, KvrsFIRLMSMRState32s_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSMRUpdateTaps32sc_16sc(int errRe, int errIm,
                                                   KvrsFIRLMSMRState32sc_16sc* state) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
