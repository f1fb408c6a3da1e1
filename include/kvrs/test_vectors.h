/* Test signals: ramps and Jaehne's signal.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_TEST_VECTORS_H
#define KVRS_TEST_VECTORS_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup test_vectors Test signals
 *
 * Signals for which one knows what a circuit or a program should make of them.
 *
 * | Function     | stores, for n in 0 .. len-1                                  |
 * |--------------|--------------------------------------------------------------|
 * | VectorRamp   | `dst[n] = offset + slope * n`, each from its index           |
 * | VectorSlope  | `dst[n] = offset + slope * n`, by sums                       |
 * | VectorJaehne | `dst[n] = magn * sin(pi / (2 * len) * n^2)`; unsigned types: `magn / 2 * (1 + sin(...))` |
 *
 * Integers are saturated. NaN becomes the lowest number of an integer type.
 *
 * ### VectorRamp
 *
 * v = n * slope + offset in single precision, n being rounded to single. 32f stores v, 64f stores it widened. Integers are
 * v to nearest, halves away from zero (the half is added in double precision).
 *
 * ### VectorSlope
 *
 * In single precision; 32s, 32u and 64f in double precision. Four sums run side by side: l[n] = n * slope for n in
 * 0 .. 3, l[n+4] = l[n] + 4 * slope. Floats store offset + l[n]. Integers store nothing but the end of their range before
 * the line enters it and after it has left it, and for the indices between, counted from i, (offset + i * slope) + l[n - i]
 * to nearest, ties to even. With r = 1 / slope, the line leaves the lowest number at (lowest - offset) * r + 1 and the
 * highest at (highest - offset) * r + 1, truncated, 0 at least and 2^31 - 1 at the most; with a rising line i is the
 * first of them, with a falling one the second. With `slope` 0 all integers are `offset` to nearest, halves away from
 * zero.
 *
 * ### VectorJaehne
 *
 * A chirp from 0 to half of the sampling rate (Jaehne, Digital image processing). With c = 1.5707963267948966 / len, the
 * angle is c * n * n, and all is computed in double precision. Floats are rounded; integers are rounded to nearest,
 * halves away from zero. Unsigned types have (magn * 0.5) * sin(...), rounded so, plus magn / 2 rounded down, 0 at least.
 * With `len` 1 the one sample is 0. The sine is within 2 units in the last place of a double.
 *
 * ### Errors, in the order tested
 *
 * ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1; VectorJaehne of signed types and floats:
 * ::kvrStatusBadJaehneMagnitude for `magn` below 0.
 * @{
 */

KVRS_API KvrStatus kvrsVectorRamp_8u(Kvr8u* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorRamp_8s(Kvr8s* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorRamp_16u(Kvr16u* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorRamp_16s(Kvr16s* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorRamp_32u(Kvr32u* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorRamp_32s(Kvr32s* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorRamp_32f(Kvr32f* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorRamp_64f(Kvr64f* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsVectorSlope_8u(Kvr8u* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorSlope_8s(Kvr8s* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorSlope_16u(Kvr16u* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorSlope_16s(Kvr16s* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorSlope_32u(Kvr32u* dst, int len, Kvr64f offset, Kvr64f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorSlope_32s(Kvr32s* dst, int len, Kvr64f offset, Kvr64f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorSlope_32f(Kvr32f* dst, int len, Kvr32f offset, Kvr32f slope) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorSlope_64f(Kvr64f* dst, int len, Kvr64f offset, Kvr64f slope) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsVectorJaehne_8u(Kvr8u* dst, int len, Kvr8u magn) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorJaehne_8s(Kvr8s* dst, int len, Kvr8s magn) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorJaehne_16u(Kvr16u* dst, int len, Kvr16u magn) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorJaehne_16s(Kvr16s* dst, int len, Kvr16s magn) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorJaehne_32u(Kvr32u* dst, int len, Kvr32u magn) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorJaehne_32s(Kvr32s* dst, int len, Kvr32s magn) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorJaehne_32f(Kvr32f* dst, int len, Kvr32f magn) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsVectorJaehne_64f(Kvr64f* dst, int len, Kvr64f magn) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
