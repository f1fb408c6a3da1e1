/* Products of packed spectra.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_SPECTRUM_H
#define KVRS_SPECTRUM_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup spectrum Packed spectra
 *
 * The spectrum X of a real signal of length N is conjugate-symmetric, so N numbers hold it:
 *
 * | Format | N    | Sequence                                                                  | Numbers |
 * |--------|------|---------------------------------------------------------------------------|---------|
 * | Pack   | even | Re X[0], Re X[1], Im X[1], ..., Re X[N/2-1], Im X[N/2-1], Re X[N/2]       | N       |
 * | Pack   | odd  | Re X[0], Re X[1], Im X[1], ..., Re X[(N-1)/2], Im X[(N-1)/2]              | N       |
 * | Perm   | even | Re X[0], Re X[N/2], Re X[1], Im X[1], ..., Re X[N/2-1], Im X[N/2-1]       | N       |
 * | Perm   | odd  | as Pack                                                                   | N       |
 * | CCS    | even | Re X[0], 0, Re X[1], Im X[1], ..., Re X[N/2-1], Im X[N/2-1], Re X[N/2], 0 | N + 2   |
 * | CCS    | odd  | Re X[0], 0, Re X[1], Im X[1], ..., Re X[(N-1)/2], Im X[(N-1)/2]           | N + 1   |
 *
 * A product of two spectra is the spectrum of the cyclic convolution of the signals; a product with the
 * conjugate, that of their cyclic correlation. `len` is N, the length of the real signals.
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
