/* Arithmetic on floating-point and complex vectors. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_ARITH_FLOAT_H
#define KVRS_ARITH_FLOAT_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup arith_float Floating-point and complex arithmetic
 *
 * | Function | stores, for i in 0 .. len-1                                                     |
 * |----------|---------------------------------------------------------------------------------|
 * | Add      | `dst[i] = src1[i] + src2[i]`; `_I`: `srcDst[i] = srcDst[i] + src[i]`            |
 * | Sub      | `dst[i] = src2[i] - src1[i]`; `_I`: `srcDst[i] = srcDst[i] - src[i]`            |
 * | Mul      | `dst[i] = src1[i] * src2[i]`; `_I`: `srcDst[i] = srcDst[i] * src[i]`            |
 * | AddC     | `dst[i] = src[i] + val`; `_I`: `srcDst[i] = srcDst[i] + val`                    |
 * | SubC     | `dst[i] = src[i] - val`; `_I`: `srcDst[i] = srcDst[i] - val`                    |
 * | SubCRev  | `dst[i] = val - src[i]`; `_I`: `srcDst[i] = val - srcDst[i]`                    |
 * | MulC     | `dst[i] = src[i] * val`; `_I`: `srcDst[i] = srcDst[i] * val`                    |
 *
 * Mind the order of Sub: the first source is what is taken away.
 *
 * Element types: 32f, 64f, 32fc, 64fc. Each operation is rounded once, to the element type, in the caller's
 * rounding mode; infinities, NaN and subnormal numbers follow IEEE 754. A complex product (a, b) * (c, d) is
 * `(a*c - b*d, a*d + b*c)` with each of its products and sums rounded by itself. Results are the same in
 * every module.
 *
 * Real scalars that change nothing are not computed with:
 *
 * | Function         | val          | Result                                                            |
 * |------------------|--------------|-------------------------------------------------------------------|
 * | AddC, SubC       | 0 or -0      | a copy of the bits, or nothing in place: -0 stays -0              |
 * | MulC             | 1            | a copy of the bits, or nothing in place                           |
 * | MulC             | 0 or -0      | all zeros (positive), whatever the source holds, NaN included     |
 *
 * `dst` may be one of the sources; otherwise they do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space; Add and Sub of complex vectors test `len` first.
 * @{
 */

KVRS_API KvrStatus kvrsAdd_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst,
                                int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst,
                                int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAdd_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsSub_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst,
                                int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst,
                                int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSub_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMul_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst,
                                int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst,
                                int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMul_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsAddC_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_64f(const Kvr64f* src, Kvr64f val, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_32f_I(Kvr32f val, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_64f_I(Kvr64f val, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAddC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsSubC_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_64f(const Kvr64f* src, Kvr64f val, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_32f_I(Kvr32f val, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_64f_I(Kvr64f val, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsSubCRev_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_64f(const Kvr64f* src, Kvr64f val, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_32f_I(Kvr32f val, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_64f_I(Kvr64f val, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSubCRev_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMulC_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_64f(const Kvr64f* src, Kvr64f val, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_32f_I(Kvr32f val, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_64f_I(Kvr64f val, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
