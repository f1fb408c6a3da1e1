/* Norms of vectors and of differences of vectors. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_NORM_H
#define KVRS_NORM_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup norm Norms
 *
 * Over the elements x = `src[i]` of Norm, or the differences x = `src1[i] - src2[i]` of NormDiff, for i in 0 .. len-1:
 *
 * | Norm  | `*norm` is                                                        |
 * |-------|-------------------------------------------------------------------|
 * | Inf   | the largest \|x\|                                                 |
 * | L1    | the sum of \|x\|                                                  |
 * | L2    | the square root of the sum of \|x\|^2                             |
 * | L2Sqr | the sum of \|x\|^2                                                |
 *
 * **16s.** Differences, magnitudes and sums are exact. The magnitude of -32,768 is 32,768, but 32,767 in the Inf norms of
 * one vector. These scale factors do not round:
 *
 * | Form           | scaleFactor 0               | above 0                                  | below 0                        |
 * |----------------|-----------------------------|------------------------------------------|--------------------------------|
 * | Inf_16s32s     | the norm                    | shifted right, nothing left from 32 on   | shifted left, saturated        |
 * | L1_16s32s      | the low 32 bits of the norm | the low 32 bits of the norm shifted right | shifted left, saturated       |
 * | L1_16s64s, L2Sqr_16s64s | the norm           | shifted right, nothing left from 64 on   | shifted left, and the maximum of 64 bits where that reaches 2^63 |
 *
 * L2_16s32s divides the root by 2^k, with k the low five bits of a positive scaleFactor, or multiplies it by 2^k, with k
 * those of a negative one's magnitude; the result is rounded to nearest with ties to even and saturated. The root is that
 * of the sum as a double; the results of 16s32f are rounded to a float from it, or from the exact norm.
 *
 * **Floats.** Norms of 32f add up in single precision, all others in double precision, to which the elements of 32fc are
 * widened before they are subtracted. The order of the sums is open: modules may differ in the last bits. The Inf norms
 * are the same in all of them. \|x\| of complex elements is sqrt(re * re + im * im). Inf passes over NaN.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * @{
 */

KVRS_API KvrStatus kvrsNorm_Inf_16s32f(const Kvr16s* src, int len, Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_Inf_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* norm,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_Inf_32f(const Kvr32f* src, int len, Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_Inf_32fc32f(const Kvr32fc* src, int len, Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_Inf_64f(const Kvr64f* src, int len, Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_Inf_64fc64f(const Kvr64fc* src, int len, Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L1_16s32f(const Kvr16s* src, int len, Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L1_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* norm,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L1_16s64s_Sfs(const Kvr16s* src, int len, Kvr64s* norm,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L1_32f(const Kvr32f* src, int len, Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L1_32fc64f(const Kvr32fc* src, int len, Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L1_64f(const Kvr64f* src, int len, Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L1_64fc64f(const Kvr64fc* src, int len, Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L2Sqr_16s64s_Sfs(const Kvr16s* src, int len, Kvr64s* norm,
                                             int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L2_16s32f(const Kvr16s* src, int len, Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L2_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* norm,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L2_32f(const Kvr32f* src, int len, Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L2_32fc64f(const Kvr32fc* src, int len, Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L2_64f(const Kvr64f* src, int len, Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNorm_L2_64fc64f(const Kvr64fc* src, int len, Kvr64f* norm) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsNormDiff_Inf_16s32f(const Kvr16s* src1, const Kvr16s* src2, int len,
                                           Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_Inf_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32s* norm,
                                               int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_Inf_32f(const Kvr32f* src1, const Kvr32f* src2, int len,
                                        Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_Inf_32fc32f(const Kvr32fc* src1, const Kvr32fc* src2, int len,
                                            Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_Inf_64f(const Kvr64f* src1, const Kvr64f* src2, int len,
                                        Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_Inf_64fc64f(const Kvr64fc* src1, const Kvr64fc* src2, int len,
                                            Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L1_16s32f(const Kvr16s* src1, const Kvr16s* src2, int len,
                                          Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L1_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32s* norm,
                                              int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L1_16s64s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr64s* norm,
                                              int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L1_32f(const Kvr32f* src1, const Kvr32f* src2, int len,
                                       Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L1_32fc64f(const Kvr32fc* src1, const Kvr32fc* src2, int len,
                                           Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L1_64f(const Kvr64f* src1, const Kvr64f* src2, int len,
                                       Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L1_64fc64f(const Kvr64fc* src1, const Kvr64fc* src2, int len,
                                           Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L2Sqr_16s64s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len,
                                                 Kvr64s* norm, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L2_16s32f(const Kvr16s* src1, const Kvr16s* src2, int len,
                                          Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L2_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32s* norm,
                                              int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L2_32f(const Kvr32f* src1, const Kvr32f* src2, int len,
                                       Kvr32f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L2_32fc64f(const Kvr32fc* src1, const Kvr32fc* src2, int len,
                                           Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L2_64f(const Kvr64f* src1, const Kvr64f* src2, int len,
                                       Kvr64f* norm) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNormDiff_L2_64fc64f(const Kvr64fc* src1, const Kvr64fc* src2, int len,
                                           Kvr64f* norm) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
