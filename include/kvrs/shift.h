/* Shifts by a constant.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_SHIFT_H
#define KVRS_SHIFT_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup shift Shifts
 *
 * | Function | stores, for i in 0 .. len-1                            | `val` of the element's bits or more |
 * |----------|--------------------------------------------------------|-------------------------------------|
 * | LShiftC  | `dst[i] = src[i] << val`; `_I`: `srcDst[i] <<= val`    | 0                                   |
 * | RShiftC  | `dst[i] = src[i] >> val`; `_I`: `srcDst[i] >>= val`    | unsigned: 0; signed: 0 or -1        |
 *
 * Element types: 8u, 16u, 16s, 32s. A left shift does not saturate: bits leave at the top. A right shift of a
 * signed element is arithmetic: it repeats the sign, so it rounds down. `dst` may be `src`; otherwise they do
 * not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space, ::kvrStatusBadShift for a negative `val`. With a result of 0 for every element, as the table tells, a
 * shift is Zero on `dst`, whose checks stand in for its own: `src` is not tested.
 * @{
 */

KVRS_API KvrStatus kvrsLShiftC_8u(const Kvr8u* src, int val, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLShiftC_16u(const Kvr16u* src, int val, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLShiftC_16s(const Kvr16s* src, int val, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLShiftC_32s(const Kvr32s* src, int val, Kvr32s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLShiftC_8u_I(int val, Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLShiftC_16u_I(int val, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLShiftC_16s_I(int val, Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLShiftC_32s_I(int val, Kvr32s* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsRShiftC_8u(const Kvr8u* src, int val, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRShiftC_16u(const Kvr16u* src, int val, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRShiftC_16s(const Kvr16s* src, int val, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRShiftC_32s(const Kvr32s* src, int val, Kvr32s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRShiftC_8u_I(int val, Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRShiftC_16u_I(int val, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRShiftC_16s_I(int val, Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRShiftC_32s_I(int val, Kvr32s* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
