/* Floating-point arithmetic on operands of two types, and sums of products. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_MIXED_H
#define KVRS_MIXED_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup mixed Arithmetic on two types
 *
 * | Function      | stores, for i in 0 .. len-1                                                    |
 * |---------------|--------------------------------------------------------------------------------|
 * | Add 16s32f    | `dst[i] = src1[i] + src2[i]`, exact                                            |
 * | Sub 16s32f    | `dst[i] = src2[i] - src1[i]`, exact                                            |
 * | Mul 16s32f    | `dst[i] = src1[i] * src2[i]`, the exact product rounded once                   |
 * | Mul 32f32fc   | `dst[i] = src1[i] * src2[i]`, real times complex: each part times the real one |
 * | Mul 32f32fc_I | `srcDst[i] = src[i] * srcDst[i]`                                               |
 *
 * Mind the order of Sub: the first source is what is taken away. Rounding is by the caller's mode.
 *
 * `dst` of Mul 32f32fc may be `src2`; otherwise arrays do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space.
 * @{
 */

KVRS_API KvrStatus kvrsAdd_16s32f(const Kvr16s* src1, const Kvr16s* src2, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_16s32f(const Kvr16s* src1, const Kvr16s* src2, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_16s32f(const Kvr16s* src1, const Kvr16s* src2, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32f32fc(const Kvr32f* src1, const Kvr32fc* src2, Kvr32fc* dst,
                                   int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32f32fc_I(const Kvr32f* src, Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

/** @defgroup add_product_float Sums of products
 *
 * | Function    | stores, for i in 0 .. len-1                       | types                |
 * |-------------|---------------------------------------------------|----------------------|
 * | AddProduct  | `srcDst[i] = srcDst[i] + src1[i] * src2[i]`       | 32f, 64f, 32fc, 64fc |
 * | AddProductC | `srcDst[i] = srcDst[i] + src[i] * val`            | 32f                  |
 *
 * A complex product (a, b) * (c, d) is `(a*c - b*d, a*d + b*c)`. Every product and sum is rounded by itself,
 * in the caller's mode, so that results are the same in every module.
 *
 * Sources may overlap `srcDst` in any way. The result is that of elements computed one after the other: what
 * one stores, a later one reads.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space.
 * @{
 */

KVRS_API KvrStatus kvrsAddProduct_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* srcDst,
                                      int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddProduct_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* srcDst,
                                      int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddProduct_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* srcDst,
                                       int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddProduct_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* srcDst,
                                       int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddProductC_32f(const Kvr32f* src, Kvr32f val, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
