/* Conversion between element types.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_CONVERT_H
#define KVRS_CONVERT_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup convert Conversion
 *
 * kvrsConvert_<from><to> stores `dst[i] = src[i]` for i in 0 .. len-1, in the type of `dst`; an `_Sfs` form
 * stores `src[i] * 2^(-scaleFactor)`. Packed elements of 24 bits lie in arrays of Kvr8u, three bytes each, low
 * byte first, `len` of them; not a byte beyond them is read or written.
 *
 * `src` and `dst` do not overlap, but may be one array where their elements have the same width.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below
 * 1 or too long for the address space, and ::kvrStatusBadRoundMode for `rndMode` ::kvrRoundFinancial in 32f16f, 16s16f and 16f16s_Sfs only.
 *
 * @par Integers and floats to floats
 * No rounding mode is asked for: what the type cannot hold exactly is rounded in the caller's current mode of
 * the processor.
 *
 * | Function                                  | Result                                                      |
 * |-------------------------------------------|-------------------------------------------------------------|
 * | 8u32f, 8s32f, 16u32f, 16s32f, 24u32f, 24s32f | exact: the integer itself, not a fraction of full scale |
 * | 32s64f, 32f64f                            | exact                                                       |
 * | 32s32f, 64s64f, 64f32f                    | rounded                                                     |
 * | 16s32f_Sfs, 32s32f_Sfs                    | the integer as 32f, times 2^(-scaleFactor); a scaleFactor below -96 counts as -96, one above 126 as 126 |
 * | 16s64f_Sfs, 32s64f_Sfs                    | the same in 64f, with the limits -1008 and 1022             |
 *
 * @par Floats to integers
 * 32f8u_Sfs, 32f8s_Sfs, 32f16u_Sfs, 32f16s_Sfs, 32f32s_Sfs, 64f16s_Sfs, 64f32s_Sfs, 64f64s_Sfs, 32f24s_Sfs and
 * 32f24u_Sfs scale, round and then saturate.
 *
 * | rndMode            | rounds                         | -2.9 | -0.5 | 0.5 | 2.5 | 3.5 |
 * |--------------------|--------------------------------|------|------|-----|-----|-----|
 * | ::kvrRoundZero     | toward zero                    | -2   | 0    | 0   | 2   | 3   |
 * | ::kvrRoundNear     | to nearest, ties to even       | -3   | 0    | 0   | 2   | 4   |
 * | ::kvrRoundFinancial, and every other value | to nearest, ties away from zero | -3 | -1 | 1 | 3 | 4 |
 *
 * In 64f64s_Sfs only 2 is ::kvrRoundFinancial, and other unknown values are ::kvrRoundNear. 32f24s_Sfs and
 * 32f24u_Sfs have no `rndMode` and round as ::kvrRoundNear. The caller's own rounding mode has no influence.
 *
 * The scale is a number of the source's type: it is 0 from a scaleFactor of 127 on (of 1023 on for 64f) and
 * infinite from -128 (-1024) downward; in the third rounding mode it becomes 0 only from 150 (1075) on.
 * 64f64s_Sfs computes with a wider range instead, in which no scaleFactor is too large or too small.
 *
 * NaN stores the lowest value of the destination's type: -2^31 for 32s, 0 for an unsigned type. So do 0 times
 * an infinite scale and an infinity times a scale of 0.
 *
 * @par Integers to narrower integers
 * The number is shifted, rounded and saturated. A negative scaleFactor shifts to the left, where nothing is
 * rounded.
 *
 * | Function             | Rounding, scaleFactor above 0        | Limits of scaleFactor                              |
 * |----------------------|--------------------------------------|----------------------------------------------------|
 * | 32s16s               | none: saturates                      |                                                    |
 * | 32s16s_Sfs           | to nearest, ties to even             | below -15 counts as -15, above 31 as 31            |
 * | 32s24s_Sfs, 32u24u_Sfs | to nearest, ties to even           | below -31 counts as -31, above 31 as 31            |
 * | 16s8s_Sfs            | `rndMode`, as in the table above     | from 18 on all results are 0                       |
 * | 64s32s_Sfs           | `rndMode`, as in the table above     | from 64 on all results are 0                       |
 *
 * @par Widening
 * 8s16s, 16s32s, 24s32s and 24u32u are exact.
 *
 * @par Half precision
 * A Kvr16f holds 1 sign, 5 exponent and 10 fraction bits; the largest finite half is 65504, the least positive
 * 2^-24. In these functions a `rndMode` of ::kvrRoundNear rounds to nearest with ties to even,
 * ::kvrRoundFinancial is refused, and every other value cuts off.
 *
 * | Function   | Result                                                                                   |
 * |------------|------------------------------------------------------------------------------------------|
 * | 16f32f     | exact, subnormals, infinities and the payload of NaNs included; a NaN becomes quiet      |
 * | 32f16f     | infinity where the magnitude is 65536 or more, or rounds to it; subnormals rounded at 2^-24; NaN stays NaN and keeps the top of its payload |
 * | 16s16f     | rounded to 11 significant bits                                                           |
 * | 16f16s_Sfs | scaled, rounded, saturated; an infinity stores the extreme of its sign, NaN stores 0     |
 * @{
 */

KVRS_API KvrStatus kvrsConvert_8u32f(const Kvr8u* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_8s32f(const Kvr8s* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_16u32f(const Kvr16u* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_16s32f(const Kvr16s* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32s32f(const Kvr32s* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32s64f(const Kvr32s* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_64s64f(const Kvr64s* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32f64f(const Kvr32f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_64f32f(const Kvr64f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_24s32f(const Kvr8u* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_24u32f(const Kvr8u* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_16s32f_Sfs(const Kvr16s* src, Kvr32f* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32s32f_Sfs(const Kvr32s* src, Kvr32f* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_16s64f_Sfs(const Kvr16s* src, Kvr64f* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32s64f_Sfs(const Kvr32s* src, Kvr64f* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsConvert_32f8u_Sfs(const Kvr32f* src, Kvr8u* dst, int len, KvrRoundMode rndMode,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32f8s_Sfs(const Kvr32f* src, Kvr8s* dst, int len, KvrRoundMode rndMode,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32f16u_Sfs(const Kvr32f* src, Kvr16u* dst, int len, KvrRoundMode rndMode,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32f16s_Sfs(const Kvr32f* src, Kvr16s* dst, int len, KvrRoundMode rndMode,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32f32s_Sfs(const Kvr32f* src, Kvr32s* dst, int len, KvrRoundMode rndMode,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_64f16s_Sfs(const Kvr64f* src, Kvr16s* dst, int len, KvrRoundMode rndMode,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_64f32s_Sfs(const Kvr64f* src, Kvr32s* dst, int len, KvrRoundMode rndMode,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_64f64s_Sfs(const Kvr64f* src, Kvr64s* dst, int len, KvrRoundMode rndMode,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32f24s_Sfs(const Kvr32f* src, Kvr8u* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32f24u_Sfs(const Kvr32f* src, Kvr8u* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsConvert_8s16s(const Kvr8s* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_16s32s(const Kvr16s* src, Kvr32s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_24s32s(const Kvr8u* src, Kvr32s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_24u32u(const Kvr8u* src, Kvr32u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32s16s(const Kvr32s* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32s16s_Sfs(const Kvr32s* src, Kvr16s* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32s24s_Sfs(const Kvr32s* src, Kvr8u* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32u24u_Sfs(const Kvr32u* src, Kvr8u* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_16s8s_Sfs(const Kvr16s* src, Kvr8s* dst, int len, KvrRoundMode rndMode,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_64s32s_Sfs(const Kvr64s* src, Kvr32s* dst, int len, KvrRoundMode rndMode,
                                          int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsConvert_16f32f(const Kvr16f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_32f16f(const Kvr32f* src, Kvr16f* dst, int len,
                                      KvrRoundMode rndMode) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_16s16f(const Kvr16s* src, Kvr16f* dst, int len,
                                      KvrRoundMode rndMode) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvert_16f16s_Sfs(const Kvr16f* src, Kvr16s* dst, int len, KvrRoundMode rndMode,
                                          int scaleFactor) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
