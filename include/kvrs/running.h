/* Running sums and averages.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_RUNNING_H
#define KVRS_RUNNING_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup running_average Exponential averages
 *
 * Takes a vector into an average. From acc = `*srcDst` on, for n = 0 .. len-1 in this order,
 *
 *     acc = acc * alpha + v[n] * (1 - alpha)
 *
 * and acc, cut to an integer and saturated, becomes `*srcDst` again.
 *
 * | Function    | v[n]             | s is srcShiftRight limited to |
 * |-------------|------------------|-------------------------------|
 * | UpdateLinear| `src[n]` >> s    | 0 .. 15                       |
 * | UpdatePower | `src[n]`^2 >> s  | 0 .. 31                       |
 *
 * Shifts are towards minus infinity. `alpha` is an integer: 1 leaves `*srcDst` as it is, 0 makes it the last v[n], -1 takes
 * samples by turns, and with a magnitude from 2 on most averages soon leave the range of their type for good.
 *
 * The average is computed in double precision, which is exact up to 2^53: so the result is that of exact integers, saturated
 * once in the end, but for UpdatePower with an `alpha` of -1 from 4,194,304 samples on. UpdatePower with a `hint` of
 * ::kvrHintFast runs in single precision in the caller's rounding mode, four samples at a time, with a for `alpha`:
 *
 *     acc = acc*a^4 + ((v[n]*(1-a)*a^3 + v[n+1]*(1-a)*a^2) + (v[n+2]*(1-a)*a + v[n+3]*(1-a)))
 *
 * then acc*a^2 + (v[n]*(1-a)*a + v[n+1]*(1-a)) if two are left, and acc*a + v[n]*(1-a) for the last one. The products of a
 * and 1-a are computed first and rounded to single precision, and so is each v[n]. UpdateLinear gives the same with every `hint`.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * @{
 */

KVRS_API KvrStatus kvrsUpdateLinear_16s32s_I(const Kvr16s* src, int len, Kvr32s* srcDst, int srcShiftRight,
                                             Kvr16s alpha, KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsUpdatePower_16s32s_I(const Kvr16s* src, int len, Kvr32s* srcDst, int srcShiftRight,
                                            Kvr16s alpha, KvrHintAlgorithm hint) KVRS_NOEXCEPT;

/** @} */

/** @defgroup running_sum Running sums
 *
 * The sum of `maskSize` samples from each one on, for n in 0 .. len-1:
 *
 *     dst[n] = src[n] + src[n+1] + ... + src[n + maskSize - 1]
 *
 * `src` has len + maskSize - 1 elements.
 *
 * Sums are in single precision, and exact as long as they stay below 2^24, which is certain for a `maskSize` up to 512 (16s) or
 * 65,793 (8u). Beyond that they are what this order of operations gives in the caller's rounding mode: the first sum is that of
 * groups of eight samples in four lanes, x[8g+k] and then x[8g+4+k] being added to lane k, joined as (0 + 2) + (1 + 3), to which
 * the samples behind the last whole group are added one after the other; the others are
 *
 *     dst[n+1] = dst[n] + (float)(src[n + maskSize] - src[n])
 *
 * so that rounding errors add up along the vector.
 *
 * `dst` and `src` do not overlap. A `len` below 1 is no error: the result is ::kvrStatusOk, and nothing is written.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadWindowLength for `maskSize` below 1.
 * @{
 */

KVRS_API KvrStatus kvrsSumWindow_8u32f(const Kvr8u* src, Kvr32f* dst, int len, int maskSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSumWindow_16s32f(const Kvr16s* src, Kvr32f* dst, int len, int maskSize) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
