/* Pre-emphasis.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_PREEMPHASIZE_H
#define KVRS_PREEMPHASIZE_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup preemphasize Pre-emphasis
 *
 * Raises high frequencies, as is done before the analysis of speech: for n in 1 .. len-1, x being `srcDst` before the call,
 *
 *     srcDst[n] = x[n] - val * x[n-1]
 *
 * The first sample stays as it is. Nothing goes from call to call: who cuts a signal into pieces lets them overlap by one.
 *
 * | Type | computed                                                                                                 |
 * |------|----------------------------------------------------------------------------------------------------------|
 * | 32f  | the product, then the difference, each in single precision in the caller's rounding mode                |
 * | 16s  | the same from exact samples, to nearest; rounded to the nearest integer, ties to even, and saturated     |
 *
 * In 16s a NaN, where `val` is no number, becomes -32,768.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * @{
 */

KVRS_API KvrStatus kvrsPreemphasize_32f(Kvr32f* srcDst, int len, Kvr32f val) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPreemphasize_16s(Kvr16s* srcDst, int len, Kvr32f val) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
