/* Counts of elements and of crossings.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_COUNT_H
#define KVRS_COUNT_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup count Elements within bounds
 *
 * `*counts` is the number of elements with `lowerBound < src[i] < upperBound`, both bounds excluded. The bounds are not
 * compared with each other: where no number lies between them, the count is 0.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * @{
 */

KVRS_API KvrStatus kvrsCountInRange_32s(const Kvr32s* src, int len, int* counts, Kvr32s lowerBound,
                                        Kvr32s upperBound) KVRS_NOEXCEPT;

/** @} */

/** @defgroup zerocrossing Zero crossings
 *
 * Over the pairs of neighbours a = `src[i]`, b = `src[i+1]`, for i in 0 .. len-2:
 *
 * | flag | `*valZC` is                                                                                     |
 * |------|-------------------------------------------------------------------------------------------------|
 * | 0    | the number of pairs with a * b < 0: a zero between two signs stops the crossing                 |
 * | 1    | the number of pairs whose sign bits differ: 0.0 counts as positive, -0.0 as negative            |
 * | 2    | half the sum of \|sgn(a) - sgn(b)\|, with sgn(0) = 0: to a zero and on is half a crossing each  |
 *
 * Counted exactly and then rounded to a float. Products are not formed: tiny numbers of two signs cross like others. In
 * floats NaN has the sign 0 with flags 0 and 2, and its sign bit with flag 1.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for a `len` of 0,
 * ::kvrStatusBadFlag for a flag that is not 0, 1 or 2. A negative `len` is no error; there are no pairs then, as with a
 * `len` of 1, and 0 is stored.
 * @{
 */

KVRS_API KvrStatus kvrsZeroCrossing_16s32f(const Kvr16s* src, int len, Kvr32f* valZC, int flag) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZeroCrossing_32f(const Kvr32f* src, int len, Kvr32f* valZC, int flag) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
