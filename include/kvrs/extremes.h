/* Extreme values, where they stand and their order of magnitude.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_EXTREMES_H
#define KVRS_EXTREMES_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup extremes Extreme values
 *
 * | Function              | stores                                                                               |
 * |-----------------------|--------------------------------------------------------------------------------------|
 * | Max, Min              | the largest or smallest element                                                      |
 * | MaxAbs, MinAbs        | the largest or smallest magnitude                                                    |
 * | MaxIndx, MinIndx, MaxAbsIndx, MinAbsIndx | the same, and the **first** index at which it stands              |
 * | MinMax                | both extremes                                                                        |
 * | MinMaxIndx            | both extremes and the first index of each                                            |
 * | MaxEvery, MinEvery    | element by element: `srcDst[i]` becomes the larger or smaller of `src[i]` and `srcDst[i]` |
 *
 * The magnitude of -32,768 is 32,767 in 16s, that of -2,147,483,648 is 2,147,483,647 in 32s: with either, the earlier one
 * of two elements that have it is the one that is found.
 *
 * Floats: zeros of both signs are equal, and the index is that of the first of them. NaN has no rank. Elements that are NaN
 * are passed over; where there is no other element, the index is 0 and no value is promised. MaxEvery and MinEvery leave
 * srcDst[i] where one of the two is NaN.
 *
 * In the Indx forms of one extreme a null `indx` alone is no error: the value is stored, as by the function without Indx.
 * In MinMaxIndx it is one.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * kvrsMinEvery_64f_I tests nothing and always returns ::kvrStatusOk: with a `len` below 1 it does nothing, and null
 * pointers are the caller's fault.
 * @{
 */

KVRS_API KvrStatus kvrsMax_16s(const Kvr16s* src, int len, Kvr16s* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMax_32s(const Kvr32s* src, int len, Kvr32s* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMax_32f(const Kvr32f* src, int len, Kvr32f* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMax_64f(const Kvr64f* src, int len, Kvr64f* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMin_16s(const Kvr16s* src, int len, Kvr16s* min) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMin_32s(const Kvr32s* src, int len, Kvr32s* min) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMin_32f(const Kvr32f* src, int len, Kvr32f* min) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMin_64f(const Kvr64f* src, int len, Kvr64f* min) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMaxIndx_16s(const Kvr16s* src, int len, Kvr16s* max, int* indx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxIndx_32s(const Kvr32s* src, int len, Kvr32s* max, int* indx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxIndx_32f(const Kvr32f* src, int len, Kvr32f* max, int* indx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxIndx_64f(const Kvr64f* src, int len, Kvr64f* max, int* indx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinIndx_16s(const Kvr16s* src, int len, Kvr16s* min, int* indx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinIndx_32s(const Kvr32s* src, int len, Kvr32s* min, int* indx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinIndx_32f(const Kvr32f* src, int len, Kvr32f* min, int* indx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinIndx_64f(const Kvr64f* src, int len, Kvr64f* min, int* indx) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMaxAbs_16s(const Kvr16s* src, int len, Kvr16s* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxAbs_32s(const Kvr32s* src, int len, Kvr32s* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinAbs_16s(const Kvr16s* src, int len, Kvr16s* min) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinAbs_32s(const Kvr32s* src, int len, Kvr32s* min) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMaxAbsIndx_16s(const Kvr16s* src, int len, Kvr16s* max, int* indx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxAbsIndx_32s(const Kvr32s* src, int len, Kvr32s* max, int* indx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinAbsIndx_16s(const Kvr16s* src, int len, Kvr16s* min, int* indx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinAbsIndx_32s(const Kvr32s* src, int len, Kvr32s* min, int* indx) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMinMax_8u(const Kvr8u* src, int len, Kvr8u* min, Kvr8u* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMax_16u(const Kvr16u* src, int len, Kvr16u* min, Kvr16u* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMax_16s(const Kvr16s* src, int len, Kvr16s* min, Kvr16s* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMax_32u(const Kvr32u* src, int len, Kvr32u* min, Kvr32u* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMax_32s(const Kvr32s* src, int len, Kvr32s* min, Kvr32s* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMax_32f(const Kvr32f* src, int len, Kvr32f* min, Kvr32f* max) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMax_64f(const Kvr64f* src, int len, Kvr64f* min, Kvr64f* max) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMinMaxIndx_8u(const Kvr8u* src, int len, Kvr8u* min, int* minIndx, Kvr8u* max,
                                     int* maxIndx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMaxIndx_16u(const Kvr16u* src, int len, Kvr16u* min, int* minIndx, Kvr16u* max,
                                      int* maxIndx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMaxIndx_16s(const Kvr16s* src, int len, Kvr16s* min, int* minIndx, Kvr16s* max,
                                      int* maxIndx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMaxIndx_32u(const Kvr32u* src, int len, Kvr32u* min, int* minIndx, Kvr32u* max,
                                      int* maxIndx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMaxIndx_32s(const Kvr32s* src, int len, Kvr32s* min, int* minIndx, Kvr32s* max,
                                      int* maxIndx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMaxIndx_32f(const Kvr32f* src, int len, Kvr32f* min, int* minIndx, Kvr32f* max,
                                      int* maxIndx) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinMaxIndx_64f(const Kvr64f* src, int len, Kvr64f* min, int* minIndx, Kvr64f* max,
                                      int* maxIndx) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMaxEvery_8u_I(const Kvr8u* src, Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxEvery_16u_I(const Kvr16u* src, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxEvery_16s_I(const Kvr16s* src, Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxEvery_32s_I(const Kvr32s* src, Kvr32s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxEvery_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinEvery_8u_I(const Kvr8u* src, Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinEvery_16u_I(const Kvr16u* src, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinEvery_16s_I(const Kvr16s* src, Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinEvery_32s_I(const Kvr32s* src, Kvr32s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinEvery_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMinEvery_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

/** @defgroup maxorder Order of magnitude
 *
 * `*order` is the smallest k such that the largest magnitude m of all elements is below 2^k.
 *
 * | Type     | of m                                             | examples                                          |
 * |----------|--------------------------------------------------|---------------------------------------------------|
 * | 16s, 32s | the bits that it takes; 0 for 0                  | 1 gives 1, 32,767 gives 15, -32,768 gives 16      |
 * | 32f      | its biased exponent less 126; 0 for 0            | 1.0 gives 1, 0.5 gives 0, 0.25 gives -1           |
 * | 64f      | its biased exponent less 1022; 0 for 0           | 2.0 gives 2                                       |
 *
 * Subnormal numbers have the biased exponent 0. Infinities and NaN count as 0, and then the status is the warning
 * ::kvrStatusMaxOrderFlat.
 *
 * Errors, in the order tested: ::kvrStatusBadLength for `len` below 1, ::kvrStatusNullPointer for a null pointer.
 * @{
 */

KVRS_API KvrStatus kvrsMaxOrder_16s(const Kvr16s* src, int len, int* order) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxOrder_32s(const Kvr32s* src, int len, int* order) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxOrder_32f(const Kvr32f* src, int len, int* order) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMaxOrder_64f(const Kvr64f* src, int len, int* order) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
