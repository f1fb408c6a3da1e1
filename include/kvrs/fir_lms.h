/* Adaptive FIR filters.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FIR_LMS_H
#define KVRS_FIR_LMS_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup fir_lms Adaptive FIR filters
 *
 * A FIR filter that learns its taps: after each output they move along the input, in proportion to how far the output was
 * from a reference (the least mean squares rule of Widrow and Hoff, Adaptive switching circuits, 1960). With L = tapsLen:
 *
 *     y       = sum over k from 0 to L-1 of taps[k] * x[n-k]
 *     dst[n]  = y
 *     e       = (ref[n] - y) * (mu + mu)
 *     taps[k] = taps[k] + x[n-k] * e                      for all k
 *
 * The next output uses the changed taps. The filter converges, roughly, while mu is above 0 and well below 1 / (L * P),
 * with P the mean square of x; nothing tells when it diverges. With a mu of 0 it is a plain FIR filter.
 *
 * | Context or form                 | samples | taps         | sums             | results                                  |
 * |---------------------------------|---------|--------------|------------------|------------------------------------------|
 * | KvrsFIRLMSState_32f             | 32f     | 32f          | 32f              |                                          |
 * | KvrsFIRLMSState32f_16s          | 16s     | 32f          | 32f              | to nearest with ties to even, saturated; NaN gives -32768 |
 * | kvrsFIRLMSOne_Direct_32f()      | 32f     | 32f          | 32f              |                                          |
 * | kvrsFIRLMSOne_Direct32f_16s()   | 16s     | 32f          | 32f              | as above                                 |
 * | kvrsFIRLMSOne_DirectQ15_16s()   | 16s     | 32s, in Q15  | 64f              | as above; normalised, see below          |
 *
 * The sum y has an order of its own. All other steps are rounded one by one as they stand: a tap that a single sample of
 * the window moves, and whose output is a single product, has the stated bits. Errors are formed with y as it is before it
 * becomes an integer. Floats follow the caller's rounding mode.
 *
 * ### Contexts
 *
 * InitAlloc makes a context on the heap, Free releases it. Taps are copied; null stands for zeros. GetTaps stores the taps
 * as they have become, in the order of `taps` above. There is no SetTaps: make a new context. `*state` is set when all has
 * gone well.
 *
 * FIRLMS filters `len` samples of `src` with the references `ref`. A signal cut into pieces of any lengths gives what it
 * gives in one piece. `dst` may be `src` or `ref`.
 *
 * ### Delay lines of contexts
 *
 * A delay line is a ring of the last L samples. The oldest of them is at `dlyLineIndex`, and the others follow it round the
 * end. A null `dlyLine` stands for silence. SetDlyLine replaces the line and leaves the taps. No output depends on the
 * oldest sample.
 *
 * | tapsLen    | After a filtering call GetDlyLine has                                                          |
 * |------------|------------------------------------------------------------------------------------------------|
 * | below 80   | the index 0, so that the samples are in their order, the oldest first                         |
 * | 80 or more | the index as many places further on, round the end, as samples have been filtered, the newest before it |
 *
 * An index is not tested. GetDlyLine gives back the one that was set, if no samples were filtered since; filtering takes an
 * index outside of 0 .. L-1 modulo L.
 *
 * ### Stateless forms
 *
 * FIRLMSOne filters one sample `src` with the reference `ref`, taps and delay line of the caller. Here `taps[L-1]` meets
 * the newest sample, `taps[0]` the oldest. `dlyLine` has room for 2*L samples. Each is written twice, to
 * `dlyLine[*dlyLineIndex]` and L behind it; then the index goes on by one, and from L to 0, and the window that the taps
 * meet begins there. A new filter starts with zeros and the index 0.
 *
 * ### Normalised, in Q15
 *
 * kvrsFIRLMSOne_DirectQ15_16s() divides its step by the energy of the window, which makes the rate of adaptation
 * independent of the level of the signal (Nagumo and Noda, A learning method for system identification, 1967). All steps
 * are in double precision, to nearest:
 *
 *     y       = (sum over k of taps[k] * w[k]) * 2^-15
 *     dst     = y, to nearest with ties to even, saturated
 *     g       = mu * (ref - y) / (sum over k of w[k]^2)
 *     taps[k] = taps[k] + w[k] * g, to nearest with ties to even, saturated
 *
 * w is the window. A tap of 1 is 32768, and so is a `mu` that takes the whole of the error away at once; sensible ones
 * lie between 0 and 65536. Sums are exact while they are below 2^53. While the window holds nothing but zeros, neither
 * `dst` nor taps are written; the sample is put into the delay line all the same, and the status is ::kvrStatusOk.
 *
 * ### Errors, in the order tested
 *
 * | Function    | Errors |
 * |-------------|--------|
 * | InitAlloc   | ::kvrStatusNullPointer for `state`, ::kvrStatusBadLength for `tapsLen` below 1, ::kvrStatusOutOfMemory |
 * | Free        | none: null is allowed, and the word of the context is not looked at |
 * | GetTaps, GetDlyLine | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 * | SetDlyLine  | ::kvrStatusNullPointer for `state`, ::kvrStatusContextMismatch |
 * | FIRLMS      | ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space, ::kvrStatusContextMismatch |
 * | FIRLMSOne   | ::kvrStatusNullPointer, ::kvrStatusBadLength for `tapsLen` below 1, ::kvrStatusBadDelayIndex for a `*dlyLineIndex` that is not in 0 .. tapsLen-1 |
 *
 * ::kvrStatusOutOfMemory is also what so many taps get that 2 GiB cannot hold their context. A context is changed by
 * every filtering call and must not be used by two calls at the same time.
 * @{
 */

typedef struct KvrsFIRLMSState_32f KvrsFIRLMSState_32f;
typedef struct KvrsFIRLMSState32f_16s KvrsFIRLMSState32f_16s;

KVRS_API KvrStatus kvrsFIRLMSInitAlloc_32f(KvrsFIRLMSState_32f** state, const Kvr32f* taps, int tapsLen,
                                           const Kvr32f* dlyLine, int dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSInitAlloc32f_16s(KvrsFIRLMSState32f_16s** state, const Kvr32f* taps, int tapsLen,
                                              const Kvr16s* dlyLine, int dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSFree_32f(KvrsFIRLMSState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSFree32f_16s(KvrsFIRLMSState32f_16s* state) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRLMSGetTaps_32f(const KvrsFIRLMSState_32f* state, Kvr32f* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSGetTaps32f_16s(const KvrsFIRLMSState32f_16s* state, Kvr32f* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSGetDlyLine_32f(const KvrsFIRLMSState_32f* state, Kvr32f* dlyLine,
                                            int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSGetDlyLine32f_16s(const KvrsFIRLMSState32f_16s* state, Kvr16s* dlyLine,
                                               int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSSetDlyLine_32f(KvrsFIRLMSState_32f* state, const Kvr32f* dlyLine,
                                            int dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSSetDlyLine32f_16s(KvrsFIRLMSState32f_16s* state, const Kvr16s* dlyLine,
                                               int dlyLineIndex) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRLMS_32f(const Kvr32f* src, const Kvr32f* ref, Kvr32f* dst, int len, Kvr32f mu,
                                  KvrsFIRLMSState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMS32f_16s(const Kvr16s* src, const Kvr16s* ref, Kvr16s* dst, int len, Kvr32f mu,
                                     KvrsFIRLMSState32f_16s* state) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRLMSOne_Direct_32f(Kvr32f src, Kvr32f ref, Kvr32f* dst, Kvr32f* taps, int tapsLen,
                                            Kvr32f mu, Kvr32f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSOne_Direct32f_16s(Kvr16s src, Kvr16s ref, Kvr16s* dst, Kvr32f* taps, int tapsLen,
                                               Kvr32f mu, Kvr16s* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRLMSOne_DirectQ15_16s(Kvr16s src, Kvr16s ref, Kvr16s* dst, Kvr32s* taps, int tapsLen,
                                               int mu, Kvr16s* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
