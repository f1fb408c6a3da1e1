/* Arctangent.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_ARCTAN_H
#define KVRS_ARCTAN_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup arctan Arctangent
 *
 * Arctan stores, for i in 0 .. len-1, the arctangent of `src[i]` (of `srcDst[i]`) in radians, from -pi/2 to pi/2.
 *
 * The error is below 1 unit in the last place for 32f and below 1.5 for 64f, whatever the rounding mode of the caller. The
 * sign is that of the argument, zeros included; infinities give +-pi/2, and NaN gives NaN. Modules may differ in the last bit.
 *
 * Computed by a division for arguments above 1 and a minimax polynomial.
 *
 * `dst` is `src` or does not overlap it.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space.
 * @{
 */

KVRS_API KvrStatus kvrsArctan_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsArctan_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsArctan_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsArctan_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
