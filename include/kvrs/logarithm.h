/* Logarithms.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_LOGARITHM_H
#define KVRS_LOGARITHM_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup logarithm Logarithms
 *
 * | Function | stores, for i in 0 .. len-1                   | types                                                        |
 * |----------|-----------------------------------------------|--------------------------------------------------------------|
 * | Ln       | the natural logarithm of `src[i]`             | 32f 64f 64f32f, 16s 32s 32s16s (scaled)                      |
 * | 10Log10  | 10 times the decimal logarithm of `src[i]`    | 32s (scaled)                                                 |
 * | SumLn    | in `sum`, the sum of all natural logarithms   | 16s32f 32f 32f64f 64f                                        |
 *
 * **Floats.** The error is below 1 unit in the last place in rounding to nearest, in 64f32f below 0.51. Modules may differ in the
 * last bit.
 *
 * **Integers, scaleFactor 0 and above**: the logarithm rounded to the nearest integer, which then is shifted right by scaleFactor
 * without further rounding; of 10Log10 only the low five bits of scaleFactor count. The integers are exact: the points between
 * them are e^(k + 1/2), and 10^((k + 1/2) / 10).
 *
 * **Integers, scaleFactor below 0**: the logarithm of the integer as a single, in single precision, times 2^(-scaleFactor), or
 * for 10Log10 times 4.3429446 * 2^(-scaleFactor), rounded to the nearest integer, ties to even, and saturated, whatever the
 * caller's rounding mode. Modules may differ by what the last bit of the logarithm is worth.
 *
 * **Sums** are computed in double precision whatever the type of `sum`: products of the elements are collected while they are in
 * range, and only the logarithms of these products are added. The relative error of each logarithm is a few units of double
 * precision; the order of the products, and so the last bits of a 64f sum, depends on the module.
 *
 * | Element   | stored by integers, at any scale factor | stored by floats | sum             | warning              |
 * |-----------|-----------------------------------------|------------------|-----------------|----------------------|
 * | 0 (-0.0)  | the lowest integer                      | minus infinity   | minus infinity  | ::kvrStatusLnZeroArg |
 * | below 0   | the lowest integer                      | NaN              | NaN             | ::kvrStatusLnNegArg  |
 * | infinity  |                                         | infinity         | infinity        |                      |
 * | NaN       |                                         | NaN              | NaN             |                      |
 *
 * A call that meets both kinds returns the warning of the first one, in the order of the elements.
 *
 * `dst` is `src` or does not overlap it.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space.
 * @{
 */

KVRS_API KvrStatus kvrsLn_16s_ISfs(Kvr16s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLn_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLn_32s16s_Sfs(const Kvr32s* src, Kvr16s* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLn_32s_ISfs(Kvr32s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLn_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsLn_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLn_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLn_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLn_64f32f(const Kvr64f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLn_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrs10Log10_32s_ISfs(Kvr32s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrs10Log10_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsSumLn_16s32f(const Kvr16s* src, int len, Kvr32f* sum) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSumLn_32f(const Kvr32f* src, int len, Kvr32f* sum) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSumLn_32f64f(const Kvr32f* src, int len, Kvr64f* sum) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSumLn_64f(const Kvr64f* src, int len, Kvr64f* sum) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
