/* Square and cube roots. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_ROOTS_H
#define KVRS_ROOTS_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup roots Square and cube roots
 *
 * | Function | stores, for i in 0 .. len-1 | types                                                            |
 * |----------|-----------------------------|------------------------------------------------------------------|
 * | Sqrt     | the square root of `src[i]` | 8u 16u 16s 64s 16sc (scaled), 32s16s 64s16s (scaled), 32f 64f 32fc 64fc |
 * | Cubrt    | the cube root of `src[i]`   | 32f, 32s16s (scaled)                                             |
 *
 * **Integer square roots** are computed in single precision (8u, 16u, 16s) or in double precision (32s16s, 64s16s, 64s, 16sc,
 * with 64-bit integers rounded to doubles first), multiplied by 2^(-scaleFactor), converted in the caller's rounding mode and
 * saturated. Negative integers store 0. Above a scale factor of 16 (32s16s) or 32 (64s16s) all results are 0.
 *
 * **Float square roots.** 64f are rounded correctly. Those of 32f are, too, in the elements before `dst` reaches an address
 * divisible by 16, in the last `len` mod 16 elements behind these, and in every block of 16 that holds a zero, a negative
 * number, an infinity or a NaN (and, in some modules, a subnormal one); other blocks come of the processor's estimate of the
 * reciprocal root and a Newton step, with an error of up to 4 units in the last place, mostly less than 1, and modules may differ in these.
 * -0.0 is its own root. Negative numbers store NaN. The control register of the vector unit is back as it was at the end of
 * kvrsSqrt_32f(), exception flags included; inside all exceptions are masked, and subnormal arguments count as they are.
 *
 * **Complex square roots** have a real part of at least 0; the imaginary part has the sign of the argument's, also where that
 * is a zero. With m = |z| they are t = sqrt((m + |re|) / 2) and |im| / (2 t), the larger one being the real part where re >= 0.
 * 32fc and 16sc are computed in double precision; 64fc are scaled where squares would leave the range. An infinite imaginary
 * part gives what these formulas give.
 *
 * **Cube roots** have the sign of their argument. 32f: the error is below 0.6 units in the last place. 32s16s: the cube root of
 * the integer as a single, times a power of two, rounded to nearest, ties to even, and saturated. The scale is 2^-n with n the
 * low seven bits of `scaleFactor`; for a negative `scaleFactor` it is 2^(128 - n), or 1 where n is 0; where n is 127 of a
 * positive one, all results are 0.
 *
 * `dst` is `src` or does not overlap it.
 *
 * Threads: Sqrt of 32f may use two from 524,288 elements on, of 8u, 16u and 16s from 262,144, of 32s16s from 131,072, of
 * 64f, 64s16s and 32fc from 65,536, of 64s, 16sc and 64fc from 32,768. That changes no result but 32f in the last bit.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space. Warning, of
 * square roots other than complex ones: ::kvrStatusSqrtNegArg where an element is below 0. In kvrsSqrt_32f() the last element, where it
 * is the odd one of those behind the blocks of 16, also warns if it is a NaN with its sign bit set.
 * @{
 */

KVRS_API KvrStatus kvrsSqrt_16s_ISfs(Kvr16s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_16sc_ISfs(Kvr16sc* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_16u_ISfs(Kvr16u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_16u_Sfs(const Kvr16u* src, Kvr16u* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_32s16s_Sfs(const Kvr32s* src, Kvr16s* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_64s16s_Sfs(const Kvr64s* src, Kvr16s* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_64s_ISfs(Kvr64s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_64s_Sfs(const Kvr64s* src, Kvr64s* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_8u_ISfs(Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_8u_Sfs(const Kvr8u* src, Kvr8u* dst, int len, int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsSqrt_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSqrt_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsCubrt_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCubrt_32s16s_Sfs(const Kvr32s* src, Kvr16s* dst, int len,
                                        int scaleFactor) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
