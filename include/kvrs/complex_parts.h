/* Complex numbers and their parts. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_COMPLEX_PARTS_H
#define KVRS_COMPLEX_PARTS_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup complex_parts Complex numbers and their parts
 *
 * | Function   | stores, for i in 0 .. len-1                                                   |
 * |------------|-------------------------------------------------------------------------------|
 * | Real       | `dstRe[i] = src[i].re`                                                        |
 * | Imag       | `dstIm[i] = src[i].im`                                                        |
 * | CplxToReal | both                                                                          |
 * | RealToCplx | `dst[i] = (srcRe[i], srcIm[i])`; a null `srcRe` or `srcIm` stands for zeros   |
 * | Conj       | `dst[i] = (src[i].re, -src[i].im)`; `_I`: the same on `srcDst`                |
 * | ConjFlip   | `dst[i] = conj(src[len - 1 - i])`                                             |
 *
 * Element types: 16sc, 32fc, 64fc, and 16s, 32f, 64f for their parts. In 16sc the conjugate of -32768 is 32767.
 * In floats only the sign bit changes, that of a zero or NaN included.
 *
 * Conj works in place too; otherwise sources and destinations do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below
 * 1 or too long for the address space. RealToCplx tests `dst`, then `len`, then whether both sources are null.
 * @{
 */

KVRS_API KvrStatus kvrsReal_16sc(const Kvr16sc* src, Kvr16s* dstRe, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsReal_32fc(const Kvr32fc* src, Kvr32f* dstRe, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsReal_64fc(const Kvr64fc* src, Kvr64f* dstRe, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsImag_16sc(const Kvr16sc* src, Kvr16s* dstIm, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsImag_32fc(const Kvr32fc* src, Kvr32f* dstIm, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsImag_64fc(const Kvr64fc* src, Kvr64f* dstIm, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsCplxToReal_16sc(const Kvr16sc* src, Kvr16s* dstRe, Kvr16s* dstIm,
                                       int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCplxToReal_32fc(const Kvr32fc* src, Kvr32f* dstRe, Kvr32f* dstIm,
                                       int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCplxToReal_64fc(const Kvr64fc* src, Kvr64f* dstRe, Kvr64f* dstIm,
                                       int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsRealToCplx_16s(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16sc* dst,
                                      int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRealToCplx_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32fc* dst,
                                      int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRealToCplx_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64fc* dst,
                                      int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsConj_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConj_16sc_I(Kvr16sc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConj_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConj_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConj_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConj_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsConjFlip_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjFlip_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjFlip_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
