/* Inner products. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_DOT_PRODUCT_H
#define KVRS_DOT_PRODUCT_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup dotprod Inner product
 *
 * `*dp` is the sum of `src1[i] * src2[i]` for i in 0 .. len-1; nothing is conjugated.
 *
 * | Sources                            | computed in                                | stored                             |
 * |------------------------------------|--------------------------------------------|------------------------------------|
 * | 16s, 16sc, 16s with 16sc           | exact integers                             | 64s, 64sc: as it is; 32f, 32fc: rounded to a double and from there to a float; `_Sfs`: times 2^(-scaleFactor), a factor above 31 counting as 31, rounded to nearest with ties to even, saturated |
 * | 32s, 32sc, 32s with 32sc, 16s with 32s | double precision: products and sums are rounded, element i in sum i mod 8 of a part, or i mod 4 where both are complex; the same in every module | times 2^(-scaleFactor), factors outside -31 .. 93 counting as the nearest of these, rounded to nearest with ties to even, saturated |
 * | floats, result of 32f, 32fc        | single precision, order open               | as it is                           |
 * | floats, result of 64f, 64fc        | double precision, order open               | as it is                           |
 *
 * Where the order is open, products and sums may be fused, and modules may differ in the last bits.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * @{
 */

KVRS_API KvrStatus kvrsDotProd_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr16s* dp,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32s* dp,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16s64s(const Kvr16s* src1, const Kvr16s* src2, int len,
                                      Kvr64s* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16s32f(const Kvr16s* src1, const Kvr16s* src2, int len,
                                      Kvr32f* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, int len, Kvr16sc* dp,
                                        int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16sc32sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, int len, Kvr32sc* dp,
                                            int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16sc64sc(const Kvr16sc* src1, const Kvr16sc* src2, int len,
                                        Kvr64sc* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16sc32fc(const Kvr16sc* src1, const Kvr16sc* src2, int len,
                                        Kvr32fc* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16s16sc_Sfs(const Kvr16s* src1, const Kvr16sc* src2, int len, Kvr16sc* dp,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16s16sc32sc_Sfs(const Kvr16s* src1, const Kvr16sc* src2, int len, Kvr32sc* dp,
                                               int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16s16sc64sc(const Kvr16s* src1, const Kvr16sc* src2, int len,
                                           Kvr64sc* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16s16sc32fc(const Kvr16s* src1, const Kvr16sc* src2, int len,
                                           Kvr32fc* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_16s32s32s_Sfs(const Kvr16s* src1, const Kvr32s* src2, int len, Kvr32s* dp,
                                             int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, int len, Kvr32s* dp,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_32sc_Sfs(const Kvr32sc* src1, const Kvr32sc* src2, int len, Kvr32sc* dp,
                                        int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_32s32sc_Sfs(const Kvr32s* src1, const Kvr32sc* src2, int len, Kvr32sc* dp,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_32f(const Kvr32f* src1, const Kvr32f* src2, int len, Kvr32f* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_64f(const Kvr64f* src1, const Kvr64f* src2, int len, Kvr64f* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_32f64f(const Kvr32f* src1, const Kvr32f* src2, int len,
                                      Kvr64f* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_32fc(const Kvr32fc* src1, const Kvr32fc* src2, int len,
                                    Kvr32fc* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_64fc(const Kvr64fc* src1, const Kvr64fc* src2, int len,
                                    Kvr64fc* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_32fc64fc(const Kvr32fc* src1, const Kvr32fc* src2, int len,
                                        Kvr64fc* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_32f32fc(const Kvr32f* src1, const Kvr32fc* src2, int len,
                                       Kvr32fc* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_64f64fc(const Kvr64f* src1, const Kvr64fc* src2, int len,
                                       Kvr64fc* dp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDotProd_32f32fc64fc(const Kvr32f* src1, const Kvr32fc* src2, int len,
                                           Kvr64fc* dp) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
