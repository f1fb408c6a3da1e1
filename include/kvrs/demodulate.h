/* Frequency demodulation.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_DEMODULATE_H
#define KVRS_DEMODULATE_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup demodulate Frequency demodulation
 *
 * The step of the phase from sample to sample, for z[n] = `srcRe[n]` + j * `srcIm[n]`, n in 0 .. len-1:
 *
 *     dst[n] = 32767 / pi * angle(z[n] * conj(z[n-1]))
 *
 * with `*dlyPoint` for z[-1]; after the call `*dlyPoint` is the last sample, so that a signal cut into pieces gives what it
 * gives in one. A step of pi, half the sampling rate, is 32,767, and one of -pi as well; a step next to a sample of zero is 0.
 *
 * The product is exact. Its angle is that of a quotient by a polynomial of degree 13 in single precision, at most 0.01 units
 * off before it is rounded to the nearest integer: so the result is within 0.51 units, 4.9e-5 radians, of the exact value,
 * whatever the magnitudes of the samples. What is left of a weak signal's distortion is that of its own rounding to integers.
 * Rounding is to nearest in every mode of the caller.
 *
 * `dst` may be `srcRe` or `srcIm`; otherwise arrays do not overlap. Results are the same in every module.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * @{
 */

KVRS_API KvrStatus kvrsDemodulateFM_CToR_16s(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dst, int len,
                                             Kvr16sc* dlyPoint) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
