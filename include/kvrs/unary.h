/* Squares, absolute values and normalisation of vectors. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_UNARY_H
#define KVRS_UNARY_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup abs Absolute value
 *
 * `dst[i] = |src[i]|` for i in 0 .. len-1; `_I` works in place on `srcDst`.
 *
 * | Type     | what is special                                                             |
 * |----------|-----------------------------------------------------------------------------|
 * | 16s, 32s | the minimum of the type, whose negation does not fit, stores the maximum    |
 * | 32f, 64f | the sign bit is cleared and nothing else, of zeros and NaN too              |
 *
 * `dst` may be `src`; otherwise they do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space.
 * @{
 */

KVRS_API KvrStatus kvrsAbs_16s(const Kvr16s* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAbs_32s(const Kvr32s* src, Kvr32s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAbs_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAbs_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAbs_16s_I(Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAbs_32s_I(Kvr32s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAbs_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAbs_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

/** @defgroup square Square
 *
 * `dst[i] = src[i]^2` for i in 0 .. len-1; `_I` works in place on `srcDst`.
 *
 * | Type        | the square                                                                            |
 * |-------------|---------------------------------------------------------------------------------------|
 * | 8u to 16s   | exact, times 2^(-scaleFactor), rounded to nearest with ties to even, saturated        |
 * | 16sc        | `(re * re - im * im, 2 * re * im)`, exact, each part scaled and saturated as above    |
 * | 32f, 64f    | `x * x`                                                                               |
 * | 32fc, 64fc  | `(re * re - im * im, (2 * re) * im)`, every operation rounded by itself               |
 *
 * Any scaleFactor will do: one too large for any square stores zeros, one too negative the extreme on the side of
 * the square. Floating-point results follow the caller's rounding mode and are the same in every module.
 *
 * `dst` may be `src`; otherwise they do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space.
 * @{
 */

KVRS_API KvrStatus kvrsSqr_8u_Sfs(const Kvr8u* src, Kvr8u* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_16u_Sfs(const Kvr16u* src, Kvr16u* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_8u_ISfs(Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_16u_ISfs(Kvr16u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_16s_ISfs(Kvr16s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_16sc_ISfs(Kvr16sc* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqr_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

/** @defgroup normalize Normalisation
 *
 * Subtracts an offset and divides, for i in 0 .. len-1. The divisor is real for complex elements too.
 *
 * | Type      | stores                                               | refused `vDiv`                    |
 * |-----------|------------------------------------------------------|-----------------------------------|
 * | 32f, 32fc | `dst[i] = (src[i] - vSub) * (1 / vDiv)`              | below 1.1754943508222875e-38      |
 * | 64f, 64fc | `dst[i] = (src[i] - vSub) * (1 / vDiv)`              | below 2.2250738585072014e-308     |
 * | 16s, 16sc | `dst[i] = (src[i] - vSub) * 2^(-scaleFactor) / vDiv` | 0                                 |
 *
 * Of floats the magnitude counts: zero and the subnormal numbers are refused. Floating-point operations are
 * each rounded by themselves, in the caller's rounding mode, and results are the same in every module.
 *
 * The integer forms compute in single precision, each operation rounded by itself, and then round to nearest
 * with ties to even and saturate. Only the remainder of |scaleFactor| by 128 counts: 128 is 0, and -129 is
 * -1. For a remainder of 127 of a positive scaleFactor the factor is 0.
 *
 * `dst` may be `src`; otherwise they do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space, ::kvrStatusDivByZeroError for a `vDiv` that is refused.
 * @{
 */

KVRS_API KvrStatus kvrsNormalize_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s vSub, int vDiv,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormalize_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr16sc vSub, int vDiv,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormalize_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f vSub,
                                     Kvr32f vDiv) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormalize_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f vSub,
                                     Kvr64f vDiv) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormalize_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32fc vSub,
                                      Kvr32f vDiv) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormalize_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64fc vSub,
                                      Kvr64f vDiv) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
