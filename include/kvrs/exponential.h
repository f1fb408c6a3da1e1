/* Exponential.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_EXPONENTIAL_H
#define KVRS_EXPONENTIAL_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup exponential Exponential
 *
 * Exp stores, for i in 0 .. len-1, e to the power `src[i]` (`srcDst[i]`).
 *
 * | Types            | error, in units in the last place    | infinite                  | 0                          |
 * |------------------|--------------------------------------|---------------------------|----------------------------|
 * | 32f              | below 6, of the last elements 0.5    | above 87.0999984741211    | up to -87.33650207519531   |
 * | 64f, 32f64f      | below 1.5                            | where it is too large     | where it rounds to 0       |
 * | 16s, 32s, 64s    | exact, rounded to nearest, saturated |                           |                            |
 *
 * **32f**. No result is subnormal. With n the integer nearest to x * 1.44269502 (by adding and subtracting 12,582,912 with the
 * sign of x) and r = x + n * -0.693359375 + n * 0.00021219444170128554,
 *
 *     s = r^2 + 10,  P = r (s + 50),  Q = 12 s,  y = (Q + P) / (Q - P) * 2^n
 *
 * by the processor's estimate of the reciprocal and one Newton step: modules may differ in the last bits. The last `len` mod
 * 4 elements are computed in extended precision and rounded once, and are infinite from 87.0999984741211 itself on. NaN gives
 * a NaN. At the end of a call that finds the invalid or the underflow flag of the vector unit set, both are cleared; other
 * flags stay.
 *
 * **64f and 32f64f** are computed to nearest, whatever the caller's rounding mode; results may be subnormal. Modules may differ
 * in the last bit. NaN gives NaN.
 *
 * **Integers** store e^x * 2^(-scaleFactor), rounded to nearest with ties to even (only e^0 can be tied) and saturated to the
 * highest integer. With a scale factor below -63 or above 63 the power is computed in extended precision, with a relative
 * error of 2^-60 or so.
 *
 * `dst` is `src` or does not overlap it. No function warns.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space.
 * @{
 */

KVRS_API KvrStatus kvrsExp_16s_ISfs(Kvr16s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsExp_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsExp_32s_ISfs(Kvr32s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsExp_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsExp_64s_ISfs(Kvr64s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsExp_64s_Sfs(const Kvr64s* src, Kvr64s* dst, int len, int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsExp_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsExp_32f64f(const Kvr32f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsExp_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsExp_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsExp_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
