/* Discrete Fourier transforms of 16-bit integers, of any length.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_DFT_INTEGER_H
#define KVRS_DFT_INTEGER_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup dft_integer Integer DFT of any length
 *
 * The transforms of the @ref dft on 16-bit integers: data are converted to single precision, transformed there with the
 * factor of the flag, and converted back times 2^(-scaleFactor), rounded to nearest with ties to even and saturated
 * (kvrsConvert_32f16s_Sfs()). A single point is stored as the @ref fft_integer stores that of order 0.
 *
 * | Context            | data                                            |
 * |--------------------|-------------------------------------------------|
 * | KvrsDFTSpec_C_16sc | complex                                         |
 * | KvrsDFTSpec_C_16s  | complex, real and imaginary parts in two arrays |
 * | KvrsDFTSpec_R_16s  | real, into and out of packed spectra            |
 *
 * Making a context, lengths, the work area, in place or not and the errors are those of the @ref dft. `hint` is stored and
 * has no effect. One point needs no work area.
 * @{
 */

typedef struct KvrsDFTSpec_C_16sc KvrsDFTSpec_C_16sc;
typedef struct KvrsDFTSpec_C_16s KvrsDFTSpec_C_16s;
typedef struct KvrsDFTSpec_R_16s KvrsDFTSpec_R_16s;

KVRS_API KvrStatus kvrsDFTInitAlloc_C_16sc(KvrsDFTSpec_C_16sc** spec, int len, int flag,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFree_C_16sc(KvrsDFTSpec_C_16sc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTGetBufSize_C_16sc(const KvrsDFTSpec_C_16sc* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_CToC_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, const KvrsDFTSpec_C_16sc* spec,
                                            int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_CToC_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, const KvrsDFTSpec_C_16sc* spec,
                                            int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDFTInitAlloc_C_16s(KvrsDFTSpec_C_16s** spec, int len, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFree_C_16s(KvrsDFTSpec_C_16s* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTGetBufSize_C_16s(const KvrsDFTSpec_C_16s* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_CToC_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dstRe,
                                           Kvr16s* dstIm, const KvrsDFTSpec_C_16s* spec, int scaleFactor,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_CToC_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dstRe,
                                           Kvr16s* dstIm, const KvrsDFTSpec_C_16s* spec, int scaleFactor,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDFTInitAlloc_R_16s(KvrsDFTSpec_R_16s** spec, int len, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFree_R_16s(KvrsDFTSpec_R_16s* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTGetBufSize_R_16s(const KvrsDFTSpec_R_16s* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_RToPerm_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_RToPack_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_RToCCS_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                             int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_PermToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_PackToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_CCSToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                             int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
