/* Discrete Fourier transforms of any length. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_DFT_H
#define KVRS_DFT_H

#include "kvrs/fft.h"

KVRS_BEGIN_DECLS

/** @defgroup dft DFT of any length
 *
 * The transforms of the @ref fft, of `len` points, driven by a context that is made once for a length and a normalisation:
 *
 *     forward:  dst[k] = s * sum over n of src[n] * exp(-2 pi i n k / len)
 *     inverse:  dst[n] = s * sum over k of src[k] * exp(+2 pi i n k / len)
 *
 * `flag` tells s as it does there, N being `len`. The factor 1/sqrt(len) of the 32f and 32fc contexts is an estimate of the
 * processor's, refined by one step of Newton's method: its relative error is below 4e-7, and it may differ from that of an
 * FFT in its last bits. Where `len` is a power of two above 16 the context holds one of an FFT, and the results are those
 * of the FFT.
 *
 * | Context                            | transforms                                               |
 * |------------------------------------|----------------------------------------------------------|
 * | KvrsDFTSpec_C_32fc, _C_64fc        | complex numbers                                          |
 * | KvrsDFTSpec_C_32f, _C_64f          | the same, real and imaginary parts in arrays of their own |
 * | KvrsDFTSpec_R_32f, _R_64f          | real numbers, into and out of packed spectra             |
 *
 * | Length (of complex numbers; half of it for real signals of even length) | Method | Time |
 * |--------------------------------------------------------------------------|--------|------|
 * | up to 16, products of factors up to 50, multiples of 4 of factors up to 150 | mixed radices (Cooley and Tukey, Math. Comp. 19, 1965), self-sorting | n times the sum of the factors at most |
 * | primes up to 47 | the sum of the definition, sums and differences of opposite points | n^2 |
 * | all others      | chirp transform by a cyclic convolution (Bluestein, IEEE Trans. AU-18, 1970) | about four FFTs of twice the length |
 *
 * All work is done in the type of the data. The relative error, root mean square over the points, is about
 * 0.3 eps sqrt(log2 len), twice that of chirp transforms, and eps sqrt(len)/4 at most for large prime factors. NaN and
 * infinity pass through the arithmetic and are no error.
 *
 * ### Making a context
 *
 * kvrsDFTInitAlloc_C_32fc() allocates it with all its tables; kvrsDFTFree_C_32fc() releases them. `hint` is stored and has
 * no effect. Nothing in a context changes after it is made, so any number of threads may share one if each has its own
 * work area.
 *
 * | Function         | Errors, in the order tested |
 * |------------------|--------|
 * | InitAlloc        | ::kvrStatusNullPointer for `spec`, ::kvrStatusBadLength for `len` below 1, ::kvrStatusOutOfMemory, ::kvrStatusBadFftFlag, ::kvrStatusBadFftOrder for a power of two beyond the FFT, ::kvrStatusBadLength for other lengths from 2^27 on (2^26 in double precision; half that for chirp transforms), ::kvrStatusOutOfMemory |
 * | Free, GetBufSize | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 *
 * A failed InitAlloc leaves `*spec` alone.
 *
 * ### Work area
 *
 * GetBufSize tells how many bytes of work area a transform needs; the rules are those of the @ref fft. Up to 16 points none
 * is needed.
 *
 * ### Transforming
 *
 * `src` and `dst` may be one array; otherwise they do not overlap, and `src` is left as it is. Of two arrays each way,
 * `dstRe` may be `srcRe` and `dstIm` be `srcIm`. The layouts of spectra of real signals, of even and odd lengths, are
 * those of the @ref fft_real: CCS needs `len` + 2 numbers for an even and `len` + 1 for an odd length.
 *
 * Errors of all transforms, in the order tested: ::kvrStatusNullPointer for `spec`, ::kvrStatusContextMismatch,
 * ::kvrStatusNullPointer for the data, ::kvrStatusOutOfMemory if `buffer` is null and there is no memory.
 * @{
 */

typedef struct KvrsDFTSpec_C_32fc KvrsDFTSpec_C_32fc;
typedef struct KvrsDFTSpec_C_32f KvrsDFTSpec_C_32f;
typedef struct KvrsDFTSpec_R_32f KvrsDFTSpec_R_32f;
typedef struct KvrsDFTSpec_C_64fc KvrsDFTSpec_C_64fc;
typedef struct KvrsDFTSpec_C_64f KvrsDFTSpec_C_64f;
typedef struct KvrsDFTSpec_R_64f KvrsDFTSpec_R_64f;

KVRS_API KvrStatus kvrsDFTInitAlloc_C_32fc(KvrsDFTSpec_C_32fc** spec, int len, int flag,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFree_C_32fc(KvrsDFTSpec_C_32fc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTGetBufSize_C_32fc(const KvrsDFTSpec_C_32fc* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsDFTSpec_C_32fc* spec,
                                        Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsDFTSpec_C_32fc* spec,
                                        Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDFTInitAlloc_C_32f(KvrsDFTSpec_C_32f** spec, int len, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFree_C_32f(KvrsDFTSpec_C_32f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTGetBufSize_C_32f(const KvrsDFTSpec_C_32f* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_CToC_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dstRe, Kvr32f* dstIm,
                                       const KvrsDFTSpec_C_32f* spec, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_CToC_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dstRe, Kvr32f* dstIm,
                                       const KvrsDFTSpec_C_32f* spec, Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDFTInitAlloc_R_32f(KvrsDFTSpec_R_32f** spec, int len, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFree_R_32f(KvrsDFTSpec_R_32f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTGetBufSize_R_32f(const KvrsDFTSpec_R_32f* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_RToPerm_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_RToPack_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_RToCCS_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_PermToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_PackToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_CCSToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDFTInitAlloc_C_64fc(KvrsDFTSpec_C_64fc** spec, int len, int flag,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFree_C_64fc(KvrsDFTSpec_C_64fc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTGetBufSize_C_64fc(const KvrsDFTSpec_C_64fc* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst, const KvrsDFTSpec_C_64fc* spec,
                                        Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst, const KvrsDFTSpec_C_64fc* spec,
                                        Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDFTInitAlloc_C_64f(KvrsDFTSpec_C_64f** spec, int len, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFree_C_64f(KvrsDFTSpec_C_64f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTGetBufSize_C_64f(const KvrsDFTSpec_C_64f* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_CToC_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dstRe, Kvr64f* dstIm,
                                       const KvrsDFTSpec_C_64f* spec, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_CToC_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dstRe, Kvr64f* dstIm,
                                       const KvrsDFTSpec_C_64f* spec, Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDFTInitAlloc_R_64f(KvrsDFTSpec_R_64f** spec, int len, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFree_R_64f(KvrsDFTSpec_R_64f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTGetBufSize_R_64f(const KvrsDFTSpec_R_64f* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_RToPerm_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_RToPack_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTFwd_RToCCS_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_PermToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_PackToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTInv_CCSToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;

/** @} */

/** @defgroup dft_out_of_order DFT out of order
 *
 * Complex transforms of any length whose spectrum stands in an order that the length alone fixes: the same for all contexts
 * of a length. The inverse takes that order and gives the signal in its natural one. So spectra may be multiplied number
 * by number and transformed back, which is a cyclic convolution, without the sorting.
 *
 * Lengths that are powers of two, that are at most 2,000, or that have a prime factor above 50 (150, where they are
 * multiples of 4) leave the spectrum in its natural order. Which order it is elsewhere may change between versions and
 * modules of this library.
 *
 * Contexts, flags, work area, errors and accuracy are those of the @ref dft. A context of the one kind is none of the other.
 * `src` and `dst` may be one array; otherwise they do not overlap.
 * @{
 */

typedef struct KvrsDFTOutOrdSpec_C_32fc KvrsDFTOutOrdSpec_C_32fc;
typedef struct KvrsDFTOutOrdSpec_C_64fc KvrsDFTOutOrdSpec_C_64fc;

KVRS_API KvrStatus kvrsDFTOutOrdInitAlloc_C_32fc(KvrsDFTOutOrdSpec_C_32fc** spec, int len, int flag,
                                                 KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTOutOrdFree_C_32fc(KvrsDFTOutOrdSpec_C_32fc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTOutOrdGetBufSize_C_32fc(const KvrsDFTOutOrdSpec_C_32fc* spec,
                                                  int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTOutOrdFwd_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst,
                                              const KvrsDFTOutOrdSpec_C_32fc* spec,
                                              Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTOutOrdInv_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst,
                                              const KvrsDFTOutOrdSpec_C_32fc* spec,
                                              Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDFTOutOrdInitAlloc_C_64fc(KvrsDFTOutOrdSpec_C_64fc** spec, int len, int flag,
                                                 KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTOutOrdFree_C_64fc(KvrsDFTOutOrdSpec_C_64fc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTOutOrdGetBufSize_C_64fc(const KvrsDFTOutOrdSpec_C_64fc* spec,
                                                  int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTOutOrdFwd_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst,
                                              const KvrsDFTOutOrdSpec_C_64fc* spec,
                                              Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDFTOutOrdInv_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst,
                                              const KvrsDFTOutOrdSpec_C_64fc* spec,
                                              Kvr8u* buffer) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
