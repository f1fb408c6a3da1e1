/* Addition, subtraction and multiplication of integer vectors, scaled and saturated.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_ARITH_SCALED_H
#define KVRS_ARITH_SCALED_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup arith_scaled Scaled integer arithmetic
 *
 * | Function        | stores, for i in 0 .. len-1, r scaled, where r is                             |
 * |-----------------|-------------------------------------------------------------------------------|
 * | Add             | `src1[i] + src2[i]`; in place `srcDst[i] + src[i]`                            |
 * | Sub             | `src2[i] - src1[i]`; in place `srcDst[i] - src[i]`                            |
 * | Mul             | `src1[i] * src2[i]`; in place `srcDst[i] * src[i]`                            |
 * | AddC            | `src[i] + val`; in place `srcDst[i] + val`                                    |
 * | SubC            | `src[i] - val`; in place `srcDst[i] - val`                                    |
 * | SubCRev         | `val - src[i]`; in place `val - srcDst[i]`                                    |
 * | MulC            | `src[i] * val`; in place `srcDst[i] * val`                                    |
 * | AddProduct      | `srcDst[i] + src1[i] * src2[i]`, stored to `srcDst[i]`                        |
 * | DivC            | `srcDst[i] / val`, in place; of 64s                                           |
 *
 * Scaling. Forms with `_Sfs` or `_ISfs` store r * 2^(-scaleFactor), rounded to nearest with ties to even and
 * then saturated to the destination's range; any `scaleFactor` will do. The others store r saturated, as with
 * a `scaleFactor` of 0. r is exact, however many bits it takes, but for what the table says. An unsigned
 * difference below 0 is raised to 0 before it is scaled.
 *
 * | Types              | functions          | 0 above | extremes up to | r                          |
 * |--------------------|--------------------|--------:|---------------:|----------------------------|
 * | 8u                 | Add, AddC          |       9 |             -8 | exact                      |
 * | 16u                | Add, AddC          |      17 |            -16 | exact                      |
 * | 16s, 16sc          | Add, AddC          |      16 |            -16 | exact                      |
 * | 32s, 32sc          | Add, AddC          |      32 |            -31 | exact                      |
 * | 64s                | Add                |      63 |            -63 | exact, saturated to 64s    |
 * | 8u                 | Sub, SubC, SubCRev |       8 |             -8 | exact, raised to 0         |
 * | 16u                | Sub, SubC, SubCRev |      16 |            -16 | exact, raised to 0         |
 * | 16s, 16sc          | Sub, SubC, SubCRev |      16 |            -16 | exact                      |
 * | 32s, 32sc          | Sub, SubC, SubCRev |      32 |            -31 | exact                      |
 * | 8u                 | Mul, MulC          |      16 |             -8 | exact                      |
 * | 16u                | Mul, MulC          |      32 |            -16 | exact                      |
 * | 16s                | Mul, MulC          |      30 |            -16 | exact                      |
 * | 16sc               | Mul, MulC          |      31 |            -16 | exact                      |
 * | 16u16s: 16u by 16s | Mul                |      31 |            -15 | exact                      |
 * | 16s32s             | Mul                |      30 |            -31 | exact                      |
 * | 32s, 32s32sc       | Mul, MulC          |      62 |            -32 | rounded to 53 bits         |
 * | 32sc               | Mul, MulC          |      63 |            -32 | exact                      |
 * | Low_32s            | Mul                |      62 |            -32 | exact; see below           |
 * | 16s                | AddProduct         |      31 |            -15 | exact                      |
 * | 16s32s             | AddProduct         |      32 |            -31 | exact                      |
 * | 32s                | AddProduct         |      62 |            -31 | product and sum to 53 bits |
 *
 * Above the first bound every element stores 0. At the second one and below it an element stores the
 * destination's maximum where r is positive, its minimum where r is negative, and 0 where r is 0. Both agree
 * with the general rule, but for AddProduct_32s at 63, where the largest sums would still round to 1.
 *
 * Notes on single types:
 *
 * - Complex products are (ar*br - ai*bi, ai*br + ar*bi). Mul_32s32sc multiplies both parts of `src2` by the
 *   real `src1`.
 * - 32s, 32s32sc: the product is taken in double precision, so it is rounded to 53 bits before it is scaled
 *   and rounded once more. That shows where |r| exceeds 2^53. Rounding is to nearest whatever the caller's
 *   mode.
 * - Mul_Low_32s does not round, and saturates at or below -32 only. From -31 to 0 it stores the low 32 bits
 *   of the product shifted left, bits shifted out being lost; from 1 to 31 bits scaleFactor to
 *   scaleFactor + 31 of the 64-bit product; from 32 to 62 the product shifted right arithmetically.
 * - Add_8u16u and Mul_8u16u widen, and so never saturate. Add_16s32s adds 16 bits to 32.
 * - MulC_Low_32f16s: `src[i] * val` in single precision, rounded by the caller's current mode, saturated.
 * - MulC_32f16s: `src[i] * (val * 2^(-scaleFactor))`, both products in single precision, the exponent
 *   -scaleFactor limited to -127 .. 126; rounded to nearest whatever the caller's mode, saturated.
 *   In both, a NaN stores the minimum if its sign bit is set, as it is in one that arises, else the maximum;
 *   the sign is that of `val` if that is one, too.
 * - MulC_64s, MulC_64f64s: `srcDst[i] * (val * 2^(-scaleFactor))` in extended precision, 64 bits of mantissa,
 *   each product rounded to nearest; then rounded to an integer and saturated. A NaN stores the minimum.
 * - DivC_64s: `(srcDst[i] * 2^(-scaleFactor)) / val` likewise. A `val` of 0 stores the maximum for positive
 *   elements, the minimum for negative ones and 0 for 0, with the warning ::kvrStatusDivByZeroWarn.
 *
 * `dst` may be one of the sources of its own element type; otherwise arrays do not overlap. Sources of Mul_Low_32s
 * may overlap `dst` in any way: the result is that of elements computed one after the other.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space. Exceptions:
 *
 * - Add and Sub of 16sc and 32sc test `len` ahead of the pointers.
 * - MulC_64s, MulC_64f64s and DivC_64s refuse a `len` of 0 only; a negative one is no error, and nothing is
 *   written.
 * - 16u forms whose answer is that of Zero or Set on `dst` make the checks of that one alone, so that a source
 *   is not tested: Add, Sub, AddC, SubC and MulC above their first bound, AddC from the second one down with a
 *   `val` other than 0, MulC with a `val` of 0.
 * @{
 */

KVRS_API KvrStatus kvrsAdd_8u_Sfs(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len,
                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_8u_ISfs(const Kvr8u* src, Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_16u_Sfs(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_16u_ISfs(const Kvr16u* src, Kvr16u* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_16sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, Kvr16sc* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_16sc_ISfs(const Kvr16sc* src, Kvr16sc* srcDst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_32s_ISfs(const Kvr32s* src, Kvr32s* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_32sc_Sfs(const Kvr32sc* src1, const Kvr32sc* src2, Kvr32sc* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_32sc_ISfs(const Kvr32sc* src, Kvr32sc* srcDst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_64s_Sfs(const Kvr64s* src1, const Kvr64s* src2, Kvr64s* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_16u(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_16s(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_16s_I(const Kvr16s* src, Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_16s32s_I(const Kvr16s* src, Kvr32s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_32u(const Kvr32u* src1, const Kvr32u* src2, Kvr32u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_8u16u(const Kvr8u* src1, const Kvr8u* src2, Kvr16u* dst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsAddC_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_32s_Sfs(const Kvr32s* src, Kvr32s val, Kvr32s* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_32s_ISfs(Kvr32s val, Kvr32s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_32sc_Sfs(const Kvr32sc* src, Kvr32sc val, Kvr32sc* dst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_32sc_ISfs(Kvr32sc val, Kvr32sc* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_16s_I(Kvr16s val, Kvr16s* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsSub_8u_Sfs(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len,
                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_8u_ISfs(const Kvr8u* src, Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_16u_Sfs(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_16u_ISfs(const Kvr16u* src, Kvr16u* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_16sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, Kvr16sc* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_16sc_ISfs(const Kvr16sc* src, Kvr16sc* srcDst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_32s_ISfs(const Kvr32s* src, Kvr32s* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_32sc_Sfs(const Kvr32sc* src1, const Kvr32sc* src2, Kvr32sc* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_32sc_ISfs(const Kvr32sc* src, Kvr32sc* srcDst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_16s(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_16s_I(const Kvr16s* src, Kvr16s* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsSubC_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_32s_Sfs(const Kvr32s* src, Kvr32s val, Kvr32s* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_32s_ISfs(Kvr32s val, Kvr32s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_32sc_Sfs(const Kvr32sc* src, Kvr32sc val, Kvr32sc* dst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_32sc_ISfs(Kvr32sc val, Kvr32sc* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_16s_I(Kvr16s val, Kvr16s* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsSubCRev_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                                        int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_32s_Sfs(const Kvr32s* src, Kvr32s val, Kvr32s* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_32s_ISfs(Kvr32s val, Kvr32s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_32sc_Sfs(const Kvr32sc* src, Kvr32sc val, Kvr32sc* dst, int len,
                                        int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_32sc_ISfs(Kvr32sc val, Kvr32sc* srcDst, int len,
                                         int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMul_8u_Sfs(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len,
                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_8u_ISfs(const Kvr8u* src, Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16u_Sfs(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16u_ISfs(const Kvr16u* src, Kvr16u* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, Kvr16sc* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16sc_ISfs(const Kvr16sc* src, Kvr16sc* srcDst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_Low_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32s_ISfs(const Kvr32s* src, Kvr32s* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32sc_Sfs(const Kvr32sc* src1, const Kvr32sc* src2, Kvr32sc* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32sc_ISfs(const Kvr32sc* src, Kvr32sc* srcDst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16s(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16s_I(const Kvr16s* src, Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr32s* dst, int len,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16u16s_Sfs(const Kvr16u* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32s32sc_Sfs(const Kvr32s* src1, const Kvr32sc* src2, Kvr32sc* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_8u16u(const Kvr8u* src1, const Kvr8u* src2, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32s32sc_ISfs(const Kvr32s* src, Kvr32sc* srcDst, int len,
                                        int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMulC_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_32s_Sfs(const Kvr32s* src, Kvr32s val, Kvr32s* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_32s_ISfs(Kvr32s val, Kvr32s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_32sc_Sfs(const Kvr32sc* src, Kvr32sc val, Kvr32sc* dst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_32sc_ISfs(Kvr32sc val, Kvr32sc* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_64s_ISfs(Kvr64s val, Kvr64s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_16s_I(Kvr16s val, Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_32f16s_Sfs(const Kvr32f* src, Kvr32f val, Kvr16s* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_Low_32f16s(const Kvr32f* src, Kvr32f val, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_64f64s_ISfs(Kvr64f val, Kvr64s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsAddProduct_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* srcDst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddProduct_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* srcDst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddProduct_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr32s* srcDst, int len,
                                             int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDivC_64s_ISfs(Kvr64s val, Kvr64s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
