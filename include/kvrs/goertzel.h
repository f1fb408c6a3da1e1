/* Goertzel: the spectrum at one or two frequencies. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_GOERTZEL_H
#define KVRS_GOERTZEL_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup goertzel Goertzel
 *
 * The spectrum of a sequence at one frequency, or at two in one pass (GoertzTwo), without a transform of the whole: a few
 * operations a sample and no context. Frequencies need not be those of a DFT.
 *
 * With theta = 2 * pi * relFreq, relFreq in turns a sample:
 *
 * | Elements           | stored                                                                  |
 * |--------------------|-------------------------------------------------------------------------|
 * | 32f, 32fc          | `y = sum over n = 0 .. len-1 of src[n] * exp(-i * theta * n)`             |
 * | 16s, 16sc with _Sfs | `y * 2^(-scaleFactor)`, saturated, rounded to nearest with ties to even |
 * | 64f, 64fc          | `exp(i * theta * len) * y`                                              |
 *
 * The phases of the two differ where relFreq * len is no whole number: a single sample 1 gives 1 in single precision and
 * exp(i * theta) in double. For relFreq = m / len both are bin m of the DFT.
 *
 * `dst` is one complex number, of GoertzTwo two: `dst[k]` belongs to `relFreq[k]`.
 *
 * | Argument   | Range                                                                        |
 * |------------|------------------------------------------------------------------------------|
 * | relFreq    | 0 or more and below 1; -0.0 is 0                                             |
 * | relFreqQ15 | 0 .. 32767: relFreqQ15 * 2^(-15) turns a sample                              |
 * | scaleFactor | any; beyond -127 .. 126 it counts as the nearer of these                     |
 *
 * ### Arithmetic
 *
 * Sine and cosine of theta are those of double precision, to nearest (theta is the double relFreq * 6.283185307179586), whose last
 * bit may differ between modules.
 *
 * 32f, 32fc, 16s and 16sc rotate M = 4 sums (of GoertzTwo M = 2 for each frequency) in single precision, from the end of `src`,
 * M samples a step: integers are converted, real samples have the imaginary part 0, and with c and s the cosine and sine of
 * M * theta, made from those of theta in double precision and rounded,
 *
 *     re[l], im[l] = (re[l] * c + im[l] * s) + x.re, (im[l] * c - re[l] * s) + x.im     for x = src[r + M * step + l]
 *
 * where r = len mod M samples are left at the beginning of `src`. These come in by one more such step, by r * theta, after
 * which sum l is rotated by l * theta and all are added. Every product and every sum is rounded by itself, in the caller's
 * rounding mode; for integers to nearest, whatever the mode, and so is the sum times 2^(-scaleFactor). The rounding of c
 * and s lets the phase of a sum drift by up to 2^(-25) a step.
 *
 * 64f and 64fc run the recurrence of second order (G. Goertzel, An Algorithm for the Evaluation of Finite Trigonometric Series,
 * American Mathematical Monthly 65, 1958) in double precision, from the beginning of `src`, on real and imaginary parts by
 * themselves: with k = 2 * cos(theta) and s1 = s2 = 0,
 *
 *     t = src[n] - s2;  s2 = s1;  s1 = s1 * k + t      and at the end      dst = exp(i * theta) * s1 - s2
 *
 * Its rounding errors grow with len, and with 1 / sin(theta) next to the frequencies 0 and 0.5.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer (relFreq of GoertzTwo is one), ::kvrStatusBadLength for
 * `len` below 1, ::kvrStatusBadRelFreq for a frequency out of range or NaN, the first one before the second. Q15 forms test the
 * frequency before everything else (of GoertzTwo, a null relFreqQ15 before that).
 * @{
 */

KVRS_API KvrStatus kvrsGoertz_32f(const Kvr32f* src, int len, Kvr32fc* dst, Kvr32f relFreq) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertz_32fc(const Kvr32fc* src, int len, Kvr32fc* dst, Kvr32f relFreq) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertz_64f(const Kvr64f* src, int len, Kvr64fc* dst, Kvr64f relFreq) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertz_64fc(const Kvr64fc* src, int len, Kvr64fc* dst, Kvr64f relFreq) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertz_16s_Sfs(const Kvr16s* src, int len, Kvr16sc* dst, Kvr32f relFreq,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertz_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc* dst, Kvr32f relFreq,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertzQ15_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc* dst, Kvr16s relFreqQ15,
                                          int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsGoertzTwo_32f(const Kvr32f* src, int len, Kvr32fc dst[2],
                                     const Kvr32f relFreq[2]) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertzTwo_32fc(const Kvr32fc* src, int len, Kvr32fc dst[2],
                                      const Kvr32f relFreq[2]) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertzTwo_64f(const Kvr64f* src, int len, Kvr64fc dst[2],
                                     const Kvr64f relFreq[2]) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertzTwo_64fc(const Kvr64fc* src, int len, Kvr64fc dst[2],
                                      const Kvr64f relFreq[2]) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertzTwo_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc dst[2],
                                          const Kvr32f relFreq[2], int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsGoertzTwoQ15_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc dst[2],
                                             const Kvr16s relFreqQ15[2], int scaleFactor) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
