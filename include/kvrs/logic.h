/* Bitwise logic and shifts.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_LOGIC_H
#define KVRS_LOGIC_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup logic Bitwise logic
 *
 * | Function | stores, for i in 0 .. len-1                       |
 * |----------|---------------------------------------------------|
 * | And      | `dst[i] = src1[i] & src2[i]`; `_I`: `srcDst[i] &= src[i]` |
 * | Or       | `dst[i] = src1[i] \| src2[i]`; `_I`: `srcDst[i] \|= src[i]` |
 * | Xor      | `dst[i] = src1[i] ^ src2[i]`; `_I`: `srcDst[i] ^= src[i]` |
 * | AndC     | `dst[i] = src[i] & val`; `_I`: `srcDst[i] &= val` |
 * | OrC      | `dst[i] = src[i] \| val`; `_I`: `srcDst[i] \|= val` |
 * | XorC     | `dst[i] = src[i] ^ val`; `_I`: `srcDst[i] ^= val` |
 * | Not      | `dst[i] = ~src[i]`; `_I`: `srcDst[i] = ~srcDst[i]` |
 *
 * Element types: 8u, 16u, 32u. `dst` may be one of the sources; otherwise they do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space. AndC with a `val` of 0 is Zero on `dst`, whose checks stand in for its own: `src` is not tested.
 * @{
 */

KVRS_API KvrStatus kvrsAnd_8u(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAnd_16u(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAnd_32u(const Kvr32u* src1, const Kvr32u* src2, Kvr32u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAnd_8u_I(const Kvr8u* src, Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAnd_16u_I(const Kvr16u* src, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAnd_32u_I(const Kvr32u* src, Kvr32u* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsOr_8u(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsOr_16u(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsOr_32u(const Kvr32u* src1, const Kvr32u* src2, Kvr32u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsOr_8u_I(const Kvr8u* src, Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsOr_16u_I(const Kvr16u* src, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsOr_32u_I(const Kvr32u* src, Kvr32u* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsXor_8u(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsXor_16u(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsXor_32u(const Kvr32u* src1, const Kvr32u* src2, Kvr32u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsXor_8u_I(const Kvr8u* src, Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsXor_16u_I(const Kvr16u* src, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsXor_32u_I(const Kvr32u* src, Kvr32u* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsAndC_8u(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAndC_16u(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAndC_32u(const Kvr32u* src, Kvr32u val, Kvr32u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAndC_8u_I(Kvr8u val, Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAndC_16u_I(Kvr16u val, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAndC_32u_I(Kvr32u val, Kvr32u* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsOrC_8u(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsOrC_16u(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsOrC_32u(const Kvr32u* src, Kvr32u val, Kvr32u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsOrC_8u_I(Kvr8u val, Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsOrC_16u_I(Kvr16u val, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsOrC_32u_I(Kvr32u val, Kvr32u* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsXorC_8u(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsXorC_16u(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsXorC_32u(const Kvr32u* src, Kvr32u val, Kvr32u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsXorC_8u_I(Kvr8u val, Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsXorC_16u_I(Kvr16u val, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsXorC_32u_I(Kvr32u val, Kvr32u* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsNot_8u(const Kvr8u* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNot_16u(const Kvr16u* src, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNot_32u(const Kvr32u* src, Kvr32u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNot_8u_I(Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNot_16u_I(Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsNot_32u_I(Kvr32u* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
