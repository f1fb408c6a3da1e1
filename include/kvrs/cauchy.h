/* Cauchy functions.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_CAUCHY_H
#define KVRS_CAUCHY_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup cauchy Cauchy functions
 *
 * The robust error function of the Cauchy distribution and its derivatives. With p = `param` and x = `srcDst[i]`, for i in
 * 0 .. len-1:
 *
 * | Function  | `srcDst[i]` becomes         | `dst2[i]`                       |
 * |-----------|-----------------------------|---------------------------------|
 * | Cauchy    | ln(1 + (x / p)^2) / 2       |                                 |
 * | CauchyD   | x / (x^2 + p^2)             |                                 |
 * | CauchyDD2 | x / (p^2 + x^2)             | (p^2 - x^2) / (p^2 + x^2)^2     |
 *
 * Single precision, every operation rounded by itself in the caller's mode: Cauchy is x * (1 / p) squared, plus 1, then
 * kvrsLn_32f_I(), then times 0.5; CauchyD is one division; CauchyDD2 is d = 1 / (p^2 + x^2), then x * d and
 * (p^2 - x^2) * d * d. Results of CauchyD and CauchyDD2 are the same in every module.
 *
 * In CauchyDD2 the arrays may overlap: the elements are then taken one after another, `dst2[i]` being stored before
 * `srcDst[i]`.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer; ::kvrStatusBadLength for `len` below 1 or too long for the address space;
 * ::kvrStatusNonPositiveParam for a `param` of 0 or below.
 * @{
 */

KVRS_API KvrStatus kvrsCauchyDD2_32f_I(Kvr32f* srcDst, Kvr32f* dst2, int len, Kvr32f param) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCauchyD_32f_I(Kvr32f* srcDst, int len, Kvr32f param) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCauchy_32f_I(Kvr32f* srcDst, int len, Kvr32f param) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
