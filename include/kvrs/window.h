/* Windows. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_WINDOW_H
#define KVRS_WINDOW_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup window Windows
 *
 * Multiply a vector by a symmetric taper, `dst[n] = src[n] * w[n]`, `_I`: `srcDst[n] *= w[n]`. With N = `len`, for n below
 * H = N / 2:
 *
 * | Window     | w[n] = w[N-1-n]                                                           | `len` from |
 * |------------|---------------------------------------------------------------------------|-----|
 * | Bartlett   | `2n / (N-1)`                                                              | 3   |
 * | Hann       | `0.5 - 0.5 cos(n A)`, A = 2 pi / (N-1)                                     | 3   |
 * | Hamming    | `0.54 - 0.46 cos(n A)`                                                     | 3   |
 * | Blackman   | `(alpha + 1) / 2 - 0.5 cos(n A) - alpha / 2 * cos(2 n A)`                  | 3   |
 * | BlackmanStd | Blackman with alpha = -0.16                                               | 3   |
 * | BlackmanOpt | Blackman with alpha = -(0.5 / cos(pi / (N-1)))^2                          | 4   |
 * | Kaiser     | `I0(alpha * sqrt(n * (N-1-n))) / I0(alpha * (N-1) / 2)`                    | 1   |
 *
 * The middle sample of an odd `len` stays as it is: its weight is 1. Of complex elements both parts have the same weight.
 * Windows are symmetric to the bit. With `len` 3, Bartlett, Hann and every Blackman store 0 at both ends, whatever the
 * sources hold. `dst` may be `src`; otherwise they do not overlap.
 *
 * BlackmanQ15 and KaiserQ15 take alpha times 2^15 and are otherwise Blackman and Kaiser.
 *
 * ### Arithmetic
 *
 * 16-bit samples are multiplied in single precision and rounded to nearest, ties to even, and saturated (NaN becomes
 * -32768). The cosine terms c[n] = a * cos(n A) come from a recurrence in double precision, c[0] = a,
 * c[1] = 2 cos(A) * a - a * cos(A), c[n+1] = 2 cos(A) * c[n] - c[n-1], whose cosines are those of the C library's
 * `long double`, rounded.
 *
 * | Window        | Elements     | Weights                                                                       |
 * |---------------|--------------|-------------------------------------------------------------------------------|
 * | Bartlett      | 64f, 64fc    | 0, s, s + s, ... added up in double precision, s = 2 / (N-1)                    |
 * |               | 32f, 32fc, H above 640 | the same with s rounded to single; the product in double precision, rounded |
 * |               | all others   | single precision: w[0 .. 3] = n * s, w[n+4] = w[n] + 4s                          |
 * | Hann, Hamming | 64f, 64fc    | offset - c[n] in double precision; from c[4] on c[n+2] = 2 cos(2A) * c[n] - c[n-2] |
 * |               | 32f, 32fc    | the same, rounded to single                                                    |
 * | Blackman      | 64f, 64fc, H up to 512 | ((alpha + 0.5) - c[n]) - (c[n] * c[n]) * (alpha * 4) in double precision, c[n] as for Hann |
 * |               | 32f, 32fc, H up to 512 | single precision: c[n] * c[n] * (-4 alpha) + ((alpha + 0.5) - c[n]), each c[n] rounded |
 * |               | H above 512  | as for 64f, c[n] one by one; products of singles in double precision, rounded   |
 * | Hann, Hamming, Blackman | 16s, 16sc | single precision: c[n+8] = 2 cos(4A) * c[n+4] - c[n]; eight terms of the double recurrence start it, and again after so many pairs, from c[n-1] and c[n] on: Hann and Hamming 176 (16sc: 88), Blackman 120 (56), kvrsWinBlackmanQ15_16s_ISfs() 16 |
 *
 * kvrsWinBlackmanQ15_16s_ISfs() multiplies each weight by 2^(-scaleFactor) in single precision, and limits the products
 * to -32768 .. 32767 before they are rounded; a weight or sample of 0 leaves 0. It scales the middle sample too. With `len`
 * 3 that one is scaled in double precision and rounded with halves away from zero.
 *
 * Kaiser works in single precision, 64f and 64fc in double. I0 is a polynomial of (x / 3.75)^2 (64f: x / 4) for x below
 * 3.75 (4), and exp(x) / sqrt(x) times a polynomial of 3.75 / x (4 / x) from there on (Abramowitz and Stegun, 9.8.1 and
 * 9.8.2). The last one to three pairs (64f: one) that do not fill a step are computed in extended precision. The
 * exponential is within 2 units in the last place. |alpha| * (N-1) / 2 is 38 at the most for 32f and 32fc, 308 for all
 * others; where it is above 80 in single precision, numerator and denominator are both divided by their largest exponential.
 * The coefficients of the denominator differ a little from those of the numerator, so that the largest weights are 1 to about
 * 10^-4 only (64f: 10^-6).
 *
 * ### Errors, in the order tested
 *
 * ::kvrStatusNullPointer; ::kvrStatusBadLength for a `len` below that of the table (BlackmanOpt: before the pointers);
 * Kaiser: ::kvrStatusKaiserOverflow for |alpha| * (N-1) / 2 above its limit. No `alpha` is refused by Blackman.
 * @{
 */

KVRS_API KvrStatus kvrsWinBartlett_16s(const Kvr16s* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_16s_I(Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_16sc_I(Kvr16sc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBartlett_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWinHann_16s(const Kvr16s* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_16s_I(Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_16sc_I(Kvr16sc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHann_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWinHamming_16s(const Kvr16s* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_16s_I(Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_16sc_I(Kvr16sc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinHamming_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWinBlackman_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_16s_I(Kvr16s* srcDst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_16sc(const Kvr16sc* src, Kvr16sc* dst, int len,
                                        Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_16sc_I(Kvr16sc* srcDst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_32f_I(Kvr32f* srcDst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_32fc(const Kvr32fc* src, Kvr32fc* dst, int len,
                                        Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_32fc_I(Kvr32fc* srcDst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_64f_I(Kvr64f* srcDst, int len, Kvr64f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_64fc(const Kvr64fc* src, Kvr64fc* dst, int len,
                                        Kvr64f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackman_64fc_I(Kvr64fc* srcDst, int len, Kvr64f alpha) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWinBlackmanStd_16s(const Kvr16s* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_16s_I(Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_16sc_I(Kvr16sc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanStd_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWinBlackmanOpt_16s(const Kvr16s* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_16s_I(Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_16sc_I(Kvr16sc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanOpt_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWinBlackmanQ15_16s(const Kvr16s* src, Kvr16s* dst, int len,
                                          int alphaQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanQ15_16s_I(Kvr16s* srcDst, int len, int alphaQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanQ15_16sc(const Kvr16sc* src, Kvr16sc* dst, int len,
                                           int alphaQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanQ15_16sc_I(Kvr16sc* srcDst, int len, int alphaQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinBlackmanQ15_16s_ISfs(Kvr16s* srcDst, int len, int alphaQ15,
                                               int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWinKaiser_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_16s_I(Kvr16s* srcDst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_16sc_I(Kvr16sc* srcDst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_32f_I(Kvr32f* srcDst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_32fc_I(Kvr32fc* srcDst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_64f_I(Kvr64f* srcDst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr32f alpha) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiser_64fc_I(Kvr64fc* srcDst, int len, Kvr32f alpha) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWinKaiserQ15_16s(const Kvr16s* src, Kvr16s* dst, int len, int alphaQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiserQ15_16s_I(Kvr16s* srcDst, int len, int alphaQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiserQ15_16sc(const Kvr16sc* src, Kvr16sc* dst, int len,
                                         int alphaQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWinKaiserQ15_16sc_I(Kvr16sc* srcDst, int len, int alphaQ15) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
