/* Design of recursive filters.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_IIR_GEN_H
#define KVRS_IIR_GEN_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup iir_gen Design of recursive filters
 *
 * kvrsIIRGenLowpass_64f() and kvrsIIRGenHighpass_64f() store the taps of a Butterworth filter or a Chebyshev filter of
 * type I in the layout of kvrsIIRInit_64f(): 2 * `order` + 2 numbers, `b[0] .. b[order]`, `a[0] .. a[order]`, with a[0] = 1.
 *
 * | Argument     | Meaning                                                           | Range                     |
 * |--------------|-------------------------------------------------------------------|---------------------------|
 * | `rFreq`      | cut-off frequency as a fraction of the sampling rate              | above 0, below 0.5        |
 * | `passDevDb`  | deviation in the pass band in dB; not looked at for Butterworth   | above 0, at most 29       |
 * | `order`      | of the filter                                                     | 1 to 12                   |
 * | `filterType` | ::kvrButterworth or ::kvrChebyshev1                               | with any other value nothing is stored, and the status is ::kvrStatusOk |
 *
 * With w = tan(pi f) / tan(pi rFreq) at the frequency f, or its reciprocal for a high-pass, the gain is
 *
 *     |H|^2 = 1 / (1 + w^(2 order))                  Butterworth
 *     |H|^2 = 1 / (1 + e^2 T(w)^2)                   Chebyshev, T the polynomial of that order, e^2 = 10^(passDevDb / 10) - 1
 *
 * so 3 dB or `passDevDb` are lost at `rFreq`. At frequency 0, or at half the sampling rate for a high-pass, it is 1 for
 * Butterworth and odd orders, and the lower end of the pass band, 10^(-passDevDb / 20), for even orders of Chebyshev.
 *
 * Poles of the analog prototype are taken to the cut-off frequency, which is prewarped, and through the bilinear transform
 * (Oppenheim, Schafer, Discrete-Time Signal Processing). They and their polynomial are computed in extended precision, and
 * each a[k] is rounded once. The scale of b[k] is then that of the rounded a[k]: the sum of their products with 1, or for a
 * high-pass with 1 and -1 by turns. High orders at very low or very high frequencies have a[k] whose rounding moves the
 * poles far; cascades of second-order sections do not suffer from this.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer, ::kvrStatusBadIirGenFreq, ::kvrStatusBadIirGenOrder and, for
 * ::kvrChebyshev1 only, ::kvrStatusBadIirGenDeviation. NaN is out of range.
 * @{
 */

/** The kind of a filter. */
enum {
  kvrButterworth = 0, /**< flat in the pass band */
  kvrChebyshev1 = 1   /**< equal ripples in the pass band */
};

KVRS_API KvrStatus kvrsIIRGenLowpass_64f(Kvr64f rFreq, Kvr64f passDevDb, int order, Kvr64f* taps,
                                         int filterType) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGenHighpass_64f(Kvr64f rFreq, Kvr64f passDevDb, int order, Kvr64f* taps,
                                          int filterType) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
