/* Products of packed spectra, and packed spectra made whole. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_SPECTRUM_H
#define KVRS_SPECTRUM_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup spectrum Operations on packed spectra
 *
 * The layouts Pack, Perm and CCS are those of the @ref fft_real. `len` is N, the length of the real signals, of either
 * parity.
 *
 * ### Products
 *
 * A product of two spectra is the spectrum of the cyclic convolution of the signals; a product with the
 * conjugate, that of their cyclic correlation.
 *
 * | Function    | stores, for every k of the spectrum                            |
 * |-------------|----------------------------------------------------------------|
 * | MulPack     | `dst[k] = src1[k] * src2[k]`, in Pack format; `_I`: `srcDst[k] = srcDst[k] * src[k]` |
 * | MulPerm     | the same in Perm format                                        |
 * | MulPackConj | `srcDst[k] = src[k] * conj(srcDst[k])`, in Pack format         |
 *
 * With s and d the operands in the order written above, X[0] and, for even N, X[N/2] are real products; all
 * others are `(sr*dr - si*di, sr*di + si*dr)`, and `(sr*dr + si*di, si*dr - sr*di)` for the product with the
 * conjugate of d. Element types: 32f, 64f; every product and every sum is rounded to the type by itself. And 16s, but for
 * MulPackConj: real products, and the two parts of complex ones, are exact integers r, of which is stored
 *
 * | `scaleFactor` | stored |
 * |---------------|--------|
 * | 0             | r, saturated |
 * | above 0       | `r >> scaleFactor`, not rounded, unlike other scaled functions, saturated; 0 or -1 from 32 on |
 * | below 0       | r saturated, then shifted left by -scaleFactor, then saturated again |
 *
 * `dst` may be one of the sources; otherwise they do not overlap.
 *
 * ### Whole spectra
 *
 * ConjPack, ConjPerm and ConjCcs make all `len` complex numbers of a spectrum out of the packed ones in `src`:
 * `dst[k] = X[k]` for k up to len/2, X[0] and, for even `len`, X[len/2] with an imaginary part of 0, and
 * `dst[len-k] = conj(dst[k])`. Element types: 16s to 16sc, 32f to 32fc, 64f to 64fc, named by the latter. In 16sc the
 * conjugate of -32768 is 32767. The imaginary parts that CCS holds for X[0] and X[len/2] are ignored.
 *
 * The `_I` forms take `srcDst` for both: its first numbers are the packed spectrum, and it has room for `len` complex
 * ones. Otherwise source and destination do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space.
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

KVRS_API KvrStatus kvrsMulPack_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulPack_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len,
                                        int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulPerm_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMulPerm_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len,
                                        int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsConjPack_32fc(const Kvr32f* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjPack_64fc(const Kvr64f* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjPack_16sc(const Kvr16s* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjPack_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjPack_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjPack_16sc_I(Kvr16sc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsConjPerm_32fc(const Kvr32f* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjPerm_64fc(const Kvr64f* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjPerm_16sc(const Kvr16s* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjPerm_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjPerm_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjPerm_16sc_I(Kvr16sc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsConjCcs_32fc(const Kvr32f* src, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjCcs_64fc(const Kvr64f* src, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjCcs_16sc(const Kvr16s* src, Kvr16sc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjCcs_32fc_I(Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjCcs_64fc_I(Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConjCcs_16sc_I(Kvr16sc* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
