/* FIR filters.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FIR_H
#define KVRS_FIR_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup fir Single-rate FIR filters
 *
 * A filter with a finite impulse response, that of its taps, run over a signal that comes in pieces:
 *
 *     y[n] = sum over k from 0 to tapsLen-1 of taps[k] * x[n-k]
 *
 * x[n-k] before the first sample is taken from the delay line. The filter's state carries the delay line from
 * call to call, so that a signal cut into pieces of any lengths gives what it gives in one piece.
 *
 * | State              | taps | signal | sums |
 * |--------------------|------|--------|------|
 * | KvrsFIRState_32f   | 32f  | 32f    | 32f  |
 *
 * ### Making a state
 *
 * Either in memory of the caller's own,
 *
 *     kvrsFIRGetStateSize_32f(tapsLen, &size);
 *     kvrsFIRInit_32f(&state, taps, tapsLen, dlyLine, buffer);
 *
 * with `buffer` of `size` bytes and any alignment, needed as long as the state is used; or with
 * kvrsFIRInitAlloc_32f(), which allocates. kvrsFIRFree_32f() releases what InitAlloc made; a state in the
 * caller's memory needs no release, and Free leaves it as it is.
 *
 * The taps are copied. `dlyLine` holds the tapsLen samples before the first one, the newest in `dlyLine[0]`;
 * the last of them is kept, but no output depends on it. Null stands for silence.
 *
 * A state is made for the number of threads that ownGetNumThreads() returns then, and no call with it uses
 * more. That number must not rise between GetStateSize and Init. A state holds no addresses: its memory may
 * be copied as bytes to an address with the same remainder modulo 64 and used there.
 *
 * | Function    | Errors, in the order tested |
 * |-------------|-----------------------------|
 * | GetStateSize, Init, InitAlloc | ::kvrStatusNullPointer, ::kvrStatusBadTapsLength for `tapsLen` below 1, or so large that the size is no `int` |
 * | InitAlloc   | then ::kvrStatusOutOfMemory |
 * | Free        | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 *
 * ### Taps and delay line
 *
 * May be read and replaced between any two calls. GetTaps stores the tapsLen taps, SetTaps replaces them and
 * leaves the delay line. GetDlyLine stores the last tapsLen samples, the newest first; SetDlyLine replaces
 * them, null standing for silence.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer, ::kvrStatusContextMismatch.
 *
 * ### Filtering
 *
 * kvrsFIR_32f() filters `len` samples. `dst` and `src` do not overlap; kvrsFIR_32f_I() works in place.
 * kvrsFIROne_32f() filters one sample. The three may be mixed.
 *
 * A short filter's sums are computed as they stand. Long filters on long pieces run as block convolution by
 * FFT (overlap-save: Stockham, High-speed convolution and correlation, 1966) where that is faster, which
 * takes at least 64 taps and 512 samples; in place, 512 samples must remain behind the 4,096 in hand. Pieces
 * longer than 1,600 samples are shared out to the state's threads if there is enough work for them. Which of
 * this happens decides on no more than rounding: sums are single precision, in an order of their own. Sums of
 * integers below 2^24 in magnitude are exact unless they run by FFT.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1,
 * ::kvrStatusContextMismatch.
 *
 * A state is changed by every filtering call and must not be used by two calls at the same time.
 * @{
 */

typedef struct KvrsFIRState_32f KvrsFIRState_32f;
typedef struct KvrsFIRState_32f KvrsFIRMRState_32f;       /**< multi-rate */
typedef struct KvrsFIRState_32f KvrsFIRStreamState_32f;   /**< without a delay line */
typedef struct KvrsFIRState_32f KvrsFIRMRStreamState_32f; /**< multi-rate, without a delay line */

KVRS_API KvrStatus kvrsFIRGetStateSize_32f(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize32f_16s(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRStreamGetStateSize_32f(int tapsLen, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRInit_32f(KvrsFIRState_32f** state, const Kvr32f* taps, int tapsLen,
                                   const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc_32f(KvrsFIRState_32f** state, const Kvr32f* taps, int tapsLen,
                                        const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree_32f(KvrsFIRState_32f* state) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRGetTaps_32f(const KvrsFIRState_32f* state, Kvr32f* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps_32f(const Kvr32f* taps, KvrsFIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine_32f(const KvrsFIRState_32f* state, Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine_32f(KvrsFIRState_32f* state, const Kvr32f* dlyLine) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIROne_32f(Kvr32f src, Kvr32f* dst, KvrsFIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_32f(const Kvr32f* src, Kvr32f* dst, int len,
                               KvrsFIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_32f_I(Kvr32f* srcDst, int len, KvrsFIRState_32f* state) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
