/* FIR filters without a delay line.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FIR_STREAM_H
#define KVRS_FIR_STREAM_H

#include "kvrs/fir.h"

KVRS_BEGIN_DECLS

/** @defgroup fir_stream FIR streams
 *
 * FIR filters whose source holds the samples before the first output, so that pieces of a long signal may be filtered in
 * any order. They are run by kvrsFIR_32f() and kvrsFIR_16s_Sfs() and released by kvrsFIRFree_32f() and kvrsFIRFree_16s(). A
 * call does not change the state, so several threads may use one at the same time.
 *
 * ### One rate
 *
 * kvrsFIR_32f(src, dst, len, state) stores `len` outputs and reads len + tapsLen - 1 samples:
 *
 *     dst[n] = sum over k from 0 to tapsLen-1 of taps[tapsLen-1-k] * src[n+k]
 *
 * The last sample that an output meets is src[n + tapsLen - 1].
 *
 * ### Two rates
 *
 * Sample i stands at time upPhase + i*upFactor, output n at time t = downPhase + n*downFactor:
 *
 *     dst[n] = sum over k from 0 to tapsLen-1 of taps[tapsLen-1-k] * x(t+k)
 *
 * where x is 0 at times that are no sample's. kvrsFIR_32f(src, dst, numIters, state) stores numIters*upFactor outputs. The
 * samples read are those that stand before time downPhase + (numIters*upFactor - 1)*downFactor + tapsLen.
 *
 * ### Integers
 *
 * Sums of 16s are modulo 2^32. The taps are held as kvrsFIRInit_16s() holds them. With s = scaleFactor - tapsFactor, from
 * -31 to 31, a sum is shifted left by -s, or right by s and rounded as `rndMode` says, then saturated to 16 bits:
 *
 * | rndMode              | rounds                                     | -5 shifted by 1 |
 * |----------------------|--------------------------------------------|-----------------|
 * | ::kvrRoundZero       | towards minus infinity                     | -3              |
 * | ::kvrRoundNear       | to nearest, ties to even                   | -2              |
 * | ::kvrRoundFinancial  | to nearest, ties away from zero            | -3              |
 *
 * kvrsFIRGetTaps_16s() reads the taps of integer streams. Streams have no delay line to be read or set.
 *
 * | Function     | Errors, in the order tested |
 * |--------------|-----------------------------|
 * | GetStateSize, Init, InitAlloc | ::kvrStatusNullPointer, ::kvrStatusBadTapsLength for `tapsLen` below 1 or so large that the size is no `int` |
 * | at two rates, 16s alone | then ::kvrStatusBadRateFactor for a factor below 1, ::kvrStatusBadPhase for a phase that is not below its factor or is below 0 |
 * | Init, InitAlloc of 16s | then ::kvrStatusBadRoundMode |
 * | InitAlloc    | then ::kvrStatusOutOfMemory |
 *
 * Streams of 32f do not look at factors and phases before they are run: kvrsFIR_32f() then gives ::kvrStatusBadRateFactor
 * or ::kvrStatusBadPhase.
 * @{
 */

typedef struct KvrsFIRState_32f KvrsFIRStreamState_32f;
typedef struct KvrsFIRState_32f KvrsFIRMRStreamState_32f; /**< at two rates */
typedef struct KvrsFIRState_16s KvrsFIRStreamState_16s;
typedef struct KvrsFIRState_16s KvrsFIRMRStreamState_16s; /**< at two rates */

KVRS_API KvrStatus kvrsFIRStreamGetStateSize_32f(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRStreamGetStateSize_16s(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRStreamGetStateSize_32f(int tapsLen, int upFactor, int downFactor,
                                                   int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRStreamGetStateSize_16s(int tapsLen, int upFactor, int downFactor,
                                                   int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRStreamInit_32f(KvrsFIRStreamState_32f** state, const Kvr32f* taps, int tapsLen,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRStreamInit_16s(KvrsFIRStreamState_16s** state, const Kvr16s* taps, int tapsLen,
                                         int tapsFactor, KvrRoundMode rndMode, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRStreamInit_32f(KvrsFIRMRStreamState_32f** state, const Kvr32f* taps, int tapsLen,
                                           int upFactor, int upPhase, int downFactor, int downPhase,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRStreamInit_16s(KvrsFIRMRStreamState_16s** state, const Kvr16s* taps, int tapsLen,
                                           int tapsFactor, int upFactor, int upPhase, int downFactor,
                                           int downPhase, KvrRoundMode rndMode, Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRStreamInitAlloc_32f(KvrsFIRStreamState_32f** state, const Kvr32f* taps,
                                              int tapsLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRStreamInitAlloc_16s(KvrsFIRStreamState_16s** state, const Kvr16s* taps, int tapsLen,
                                              int tapsFactor, KvrRoundMode rndMode) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRStreamInitAlloc_32f(KvrsFIRMRStreamState_32f** state, const Kvr32f* taps,
                                                int tapsLen, int upFactor, int upPhase, int downFactor,
                                                int downPhase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRMRStreamInitAlloc_16s(KvrsFIRMRStreamState_16s** state, const Kvr16s* taps,
                                                int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                                int downFactor, int downPhase,
                                                KvrRoundMode rndMode) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
