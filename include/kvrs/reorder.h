/* Byte order, order of elements, packing of bits. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_REORDER_H
#define KVRS_REORDER_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup reorder Byte order, order of elements, packing of bits
 * @{
 */

/** @name Reverse the bytes of each element
 *
 * Turns little-endian elements into big-endian ones and back. Elements are of 2 (16u), 3 (24u), 4 (32u) or 8
 * (64u) bytes; the three bytes of 24u elements follow each other without a gap. `dst` may be `src`; otherwise
 * they do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space.
 * @{ */
KVRS_API KvrStatus kvrsSwapBytes_16u(const Kvr16u* src, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSwapBytes_24u(const Kvr8u* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSwapBytes_32u(const Kvr32u* src, Kvr32u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSwapBytes_64u(const Kvr64u* src, Kvr64u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSwapBytes_16u_I(Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSwapBytes_24u_I(Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSwapBytes_32u_I(Kvr32u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSwapBytes_64u_I(Kvr64u* srcDst, int len) KVRS_NOEXCEPT;
/** @} */

/** @name Reverse the order of elements
 *
 * `dst[i] = src[len - 1 - i]` for i in 0 .. len-1. The parts of complex elements keep their order. `dst` and
 * `src` do not overlap; the `_I` form reverses in place.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space.
 * @{ */
KVRS_API KvrStatus kvrsFlip_8u(const Kvr8u* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_16u(const Kvr16u* src, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_32f(const Kvr32f* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_64f(const Kvr64f* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_8u_I(Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_16u_I(Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFlip_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;
/** @} */

/** Packs codes of variable length into a string of bits.
 *
 * Appends, for i in 0 .. len-1, the low `srcBitsLen[i]` bits of `src[i]`, the topmost of them first, to the
 * string that begins `dstBitOffset & 7` bits below the top of `dst[0]` and fills each byte from its top. A
 * count of 32 or more counts as 32, a negative one as 0. The bits ahead of the string in `dst[0]` and those
 * behind it in its last byte keep their values; no other byte is touched.
 *
 * @param dstLenBits gets the number of bits appended (modulo 2^32).
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space or a negative `dstBitOffset`. */
KVRS_API KvrStatus kvrsPackBits_32u8u(const Kvr32u* src, const int* srcBitsLen, int len, Kvr8u* dst,
                                      int dstBitOffset, int* dstLenBits) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
