/* Products of packed spectra.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_SPECTRUM_H
#define KVRS_SPECTRUM_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup spectrum Products of packed spectra
 *
 * A product of two spectra is the spectrum of the cyclic convolution of the signals; a product with the
 * conjugate, that of their cyclic correlation. `len` is N, the length of the real signals, of either parity;
 * the layouts Pack and Perm are those of the @ref fft_real.
 *
 * | Function    | stores, for every k of the spectrum                            |
 * |-------------|----------------------------------------------------------------|
 * | MulPack     | `dst[k] = src1[k] * src2[k]`, in Pack format; `_I`: `srcDst[k] = srcDst[k] * src[k]` |
 * | MulPerm     | the same in Perm format                                        |
 * | MulPackConj | `srcDst[k] = src[k] * conj(srcDst[k])`, in Pack format         |
 *
 * With s and d the operands in the order written above, X[0] and, for even N, X[N/2] are real products; all
 * others are `(sr*dr - si*di, sr*di + si*dr)`, and `(sr*dr + si*di, si*dr - sr*di)` for the product with the
 * conjugate of d. Element types: 32f, 64f; every product and every sum is rounded to the type by itself.
 *
 * `dst` may be one of the sources; otherwise they do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1.
 * @{
 */

KVRS_API KvrStatus kvrsMulPack_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst,
                                   int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulPack_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst,
                                   int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulPack_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulPack_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMulPerm_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst,
                                   int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulPerm_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst,
                                   int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulPerm_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulPerm_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMulPackConj_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulPackConj_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
