/* Median filters.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_MEDIAN_H
#define KVRS_MEDIAN_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup median Median filters
 *
 * For i in 0 .. len-1, `dst[i]` (or `srcDst[i]`) becomes the median of the M samples from x[i - M/2] to x[i + M/2] as they
 * were before the call, M being `maskSize`, with x[0] before the first and x[len-1] behind the last one: an impulse shorter
 * than half of M disappears, an edge stays where it is. A vector of one or two samples and one with an M of 1 stay as they
 * are.
 *
 * An even `maskSize` is reduced by one, and the call ends with the warning ::kvrStatusEvenMedianMask, except for 32s from
 * 12 on: there the window has M samples from x[i - M/2] to x[i + M/2 - 1], the upper of the two middle ones is stored, and
 * there is no warning.
 *
 * Floats are ordered as their bits are: -NaN, -infinity, ... -0.0, +0.0, ... infinity, NaN. So a NaN is an extreme that the
 * median removes like any other; in 64f with M from 3 to 9 it is not stated what becomes of a
 * NaN, nor which sign a zero has among zeros of both signs.
 *
 * From M = 11 on a call takes M samples of memory from kvrMalloc(), fewer where M is longer than four vectors. The time of a
 * sample is that of some M exchanges on vectors up to 9, and beyond about that of reading M samples in vectors.
 *
 * `dst` is `src` or does not overlap it.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer; ::kvrStatusBadLength for `len` or `maskSize` below
 * 1; ::kvrStatusOutOfMemory: `srcDst` is unchanged then, and `dst` a copy of `src`.
 * @{ */

KVRS_API KvrStatus kvrsFilterMedian_8u(const Kvr8u* src, Kvr8u* dst, int len, int maskSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFilterMedian_16s(const Kvr16s* src, Kvr16s* dst, int len, int maskSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFilterMedian_32s(const Kvr32s* src, Kvr32s* dst, int len, int maskSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFilterMedian_32f(const Kvr32f* src, Kvr32f* dst, int len, int maskSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFilterMedian_64f(const Kvr64f* src, Kvr64f* dst, int len, int maskSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFilterMedian_8u_I(Kvr8u* srcDst, int len, int maskSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFilterMedian_16s_I(Kvr16s* srcDst, int len, int maskSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFilterMedian_32s_I(Kvr32s* srcDst, int len, int maskSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFilterMedian_32f_I(Kvr32f* srcDst, int len, int maskSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFilterMedian_64f_I(Kvr64f* srcDst, int len, int maskSize) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
