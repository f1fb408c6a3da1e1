/* Fill, copy and move. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FILL_H
#define KVRS_FILL_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup fill Fill, copy and move
 *
 * | Function | stores, for i in 0 .. len-1                                            | overlap           |
 * |----------|------------------------------------------------------------------------|-------------------|
 * | Zero     | `dst[i] = 0`                                                           |                   |
 * | Set      | `dst[i] = val`                                                         |                   |
 * | Copy     | `dst[i] = src[i]`                                                      | none, or in place |
 * | Move     | `dst[i] = src[i]`, with every source element as it was before the call | any               |
 *
 * Element types: 8u, 16s, 16sc, 32s, 32f, 32sc, 32fc, 64s, 64f, 64sc, 64fc. Values go over bit by bit, so a
 * NaN keeps its bits.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 and, in a 32-bit process, for a `len` of more bytes than an address can count.
 * @{
 */

KVRS_API KvrStatus kvrsZero_8u(Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZero_16s(Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZero_16sc(Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZero_32s(Kvr32s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZero_32f(Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZero_32sc(Kvr32sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZero_32fc(Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZero_64s(Kvr64s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZero_64f(Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZero_64sc(Kvr64sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsZero_64fc(Kvr64fc* dst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsSet_8u(Kvr8u val, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSet_16s(Kvr16s val, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSet_16sc(Kvr16sc val, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSet_32s(Kvr32s val, Kvr32s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSet_32f(Kvr32f val, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSet_32sc(Kvr32sc val, Kvr32sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSet_32fc(Kvr32fc val, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSet_64s(Kvr64s val, Kvr64s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSet_64f(Kvr64f val, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSet_64sc(Kvr64sc val, Kvr64sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSet_64fc(Kvr64fc val, Kvr64fc* dst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsCopy_8u(const Kvr8u* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCopy_16s(const Kvr16s* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCopy_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCopy_32s(const Kvr32s* src, Kvr32s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCopy_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCopy_32sc(const Kvr32sc* src, Kvr32sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCopy_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCopy_64s(const Kvr64s* src, Kvr64s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCopy_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCopy_64sc(const Kvr64sc* src, Kvr64sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCopy_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMove_8u(const Kvr8u* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMove_16s(const Kvr16s* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMove_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMove_32s(const Kvr32s* src, Kvr32s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMove_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMove_32sc(const Kvr32sc* src, Kvr32sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMove_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMove_64s(const Kvr64s* src, Kvr64s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMove_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMove_64sc(const Kvr64sc* src, Kvr64sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMove_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;

/** Copies a string of bits: bit `srcBitOffset + i` of `src` to bit `dstBitOffset + i` of `dst`, for i in
 * 0 .. len-1.
 *
 * Bits count from the top of each byte: bit 0 is the top bit of the first byte, bit 8 that of the second.
 * All other bits of `dst` stay, also those that share a byte with the string. The bytes that hold the two
 * strings do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space or a negative offset. */
KVRS_API KvrStatus kvrsCopy_1u(const Kvr8u* src, int srcBitOffset, Kvr8u* dst, int dstBitOffset,
                               int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
