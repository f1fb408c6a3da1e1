/* Discrete cosine transforms of any length.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_DCT_H
#define KVRS_DCT_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup dct DCT
 *
 * The orthonormal cosine transform DCT-II and its inverse, DCT-III, of `len` points, driven by a context that is made once
 * for a length and a direction. With N = `len`, c(0) = 1/sqrt(N) and c(k) = sqrt(2/N) for k > 0:
 *
 *     forward:  dst[k] = c(k) * sum over n of src[n] * cos(pi (2n + 1) k / (2N))
 *     inverse:  dst[n] = sum over k of c(k) * src[k] * cos(pi (2n + 1) k / (2N))
 *
 * Each is the other's inverse: forward and inverse give back the signal, and the sum of the squares stays what it is.
 *
 * | Length                | Method                                                              |
 * |-----------------------|---------------------------------------------------------------------|
 * | 1, 2, 4, 8            | straight-line code                                                  |
 * | other powers of two   | an FFT of N/2 complex numbers, and a rotation                       |
 * | all others            | a DFT of N/2 complex numbers, or of N where N is odd, and a rotation |
 *
 * The numbers of even index come first, those of odd index in reverse order behind them: the real transform of that
 * sequence, turned by exp(-pi i k / (2N)), has the results in its real and imaginary parts (J. Makhoul, A fast cosine
 * transform in one and two dimensions, IEEE Trans. ASSP-28, 1980). The time is that of the transforms in the @ref fft and
 * the @ref dft, large prime factors included.
 *
 * 32f and 64f work in the type of the data. The relative error, root mean square over the points, is about
 * 0.35 eps sqrt(log2 N), and 0.55 eps sqrt(log2 N) of lengths with prime factors above 50, eps being the distance from 1 to the next
 * number of that type. NaN and infinity pass through the arithmetic and are no error. 16s works in single precision and
 * stores `dst[k] * 2^(-scaleFactor)`, rounded to nearest with ties to even and saturated; a single point is shifted
 * instead: right with halves rounded up, left as a 32-bit integer whose upper bits are lost, and then saturated.
 *
 * ### Making a context
 *
 * Either in memory of the caller's own,
 *
 *     kvrsDCTFwdGetSize_32f(len, hint, &specSize, &initBufSize, &workSize);
 *     kvrsDCTFwdInit_32f(&spec, len, hint, specMem, initBuf);
 *
 * with `specMem` of specSize bytes, needed as long as the context is used, and `initBuf` of initBufSize bytes, needed for
 * this call alone; or with kvrsDCTFwdInitAlloc_32f(), which allocates. Memory may have any alignment; the sizes include
 * what is lost by rounding addresses up to a multiple of 32. Both directions need the same sizes. `hint` is stored and
 * has no effect. kvrsDCTFwdFree_32f() ends the use of a context of either kind, and releases the memory that InitAlloc
 * has taken.
 *
 * A context is one block of memory that holds no address: it may be copied as bytes to another address that is a multiple
 * of 32, and used there. Nothing in it changes after its initialisation, so any number of threads may share it if each
 * has its own work area.
 *
 * Errors, in the order tested:
 *
 * | Function         | Errors |
 * |------------------|--------|
 * | GetSize          | ::kvrStatusBadLength for `len` below 1, ::kvrStatusNullPointer, ::kvrStatusBadFftOrder for lengths from 2^26 + 1 on (2^25 + 1 in double precision), ::kvrStatusBadLength where a size is more than an int holds |
 * | Init             | ::kvrStatusNullPointer for `spec`, ::kvrStatusBadLength for `len` below 1, ::kvrStatusNullPointer for `specMem`, the last two of GetSize, ::kvrStatusNullPointer for `initBuf` where its size is not 0 |
 * | InitAlloc        | ::kvrStatusNullPointer for `spec`, those of GetSize, ::kvrStatusOutOfMemory |
 * | Free, GetBufSize | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 *
 * A failed Init or InitAlloc leaves `*spec` alone.
 *
 * ### Work area
 *
 * GetBufSize, and GetSize as `workSize`, tell how many bytes of work area a transform needs. If that is 0, `buffer` is
 * ignored. If `buffer` is null, the call allocates a work area and releases it before it returns. Otherwise `buffer` is
 * memory of that size, with any alignment; calls that run at the same time must not share it.
 *
 * ### Transforming
 *
 * `src` and `dst` may be one array, which is what the `_I` forms do; otherwise they do not overlap, and `src` is left as it
 * is. Results are the same in place and not.
 *
 * Errors of all transforms, in the order tested: ::kvrStatusNullPointer for `spec`, ::kvrStatusContextMismatch,
 * ::kvrStatusNullPointer for the data, ::kvrStatusOutOfMemory if `buffer` is null and there is no memory.
 * @{
 */

typedef struct KvrsDCTFwdSpec_32f KvrsDCTFwdSpec_32f;
typedef struct KvrsDCTFwdSpec_64f KvrsDCTFwdSpec_64f;
typedef struct KvrsDCTFwdSpec_16s KvrsDCTFwdSpec_16s;
typedef struct KvrsDCTInvSpec_32f KvrsDCTInvSpec_32f;
typedef struct KvrsDCTInvSpec_64f KvrsDCTInvSpec_64f;
typedef struct KvrsDCTInvSpec_16s KvrsDCTInvSpec_16s;

KVRS_API KvrStatus kvrsDCTFwdGetSize_32f(int len, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                                         int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdInit_32f(KvrsDCTFwdSpec_32f** spec, int len, KvrHintAlgorithm hint,
                                      Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdInitAlloc_32f(KvrsDCTFwdSpec_32f** spec, int len,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdFree_32f(KvrsDCTFwdSpec_32f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdGetBufSize_32f(const KvrsDCTFwdSpec_32f* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDCTInvGetSize_32f(int len, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                                         int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvInit_32f(KvrsDCTInvSpec_32f** spec, int len, KvrHintAlgorithm hint,
                                      Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvInitAlloc_32f(KvrsDCTInvSpec_32f** spec, int len,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvFree_32f(KvrsDCTInvSpec_32f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvGetBufSize_32f(const KvrsDCTInvSpec_32f* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDCTFwdGetSize_64f(int len, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                                         int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdInit_64f(KvrsDCTFwdSpec_64f** spec, int len, KvrHintAlgorithm hint,
                                      Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdInitAlloc_64f(KvrsDCTFwdSpec_64f** spec, int len,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdFree_64f(KvrsDCTFwdSpec_64f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdGetBufSize_64f(const KvrsDCTFwdSpec_64f* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDCTInvGetSize_64f(int len, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                                         int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvInit_64f(KvrsDCTInvSpec_64f** spec, int len, KvrHintAlgorithm hint,
                                      Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvInitAlloc_64f(KvrsDCTInvSpec_64f** spec, int len,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvFree_64f(KvrsDCTInvSpec_64f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvGetBufSize_64f(const KvrsDCTInvSpec_64f* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDCTFwdGetSize_16s(int len, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                                         int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdInit_16s(KvrsDCTFwdSpec_16s** spec, int len, KvrHintAlgorithm hint,
                                      Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdInitAlloc_16s(KvrsDCTFwdSpec_16s** spec, int len,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdFree_16s(KvrsDCTFwdSpec_16s* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwdGetBufSize_16s(const KvrsDCTFwdSpec_16s* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDCTInvGetSize_16s(int len, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                                         int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvInit_16s(KvrsDCTInvSpec_16s** spec, int len, KvrHintAlgorithm hint,
                                      Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvInitAlloc_16s(KvrsDCTInvSpec_16s** spec, int len,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvFree_16s(KvrsDCTInvSpec_16s* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInvGetBufSize_16s(const KvrsDCTInvSpec_16s* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDCTFwd_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDCTFwdSpec_32f* spec,
                                  Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwd_32f_I(Kvr32f* srcDst, const KvrsDCTFwdSpec_32f* spec,
                                    Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInv_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDCTInvSpec_32f* spec,
                                  Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInv_32f_I(Kvr32f* srcDst, const KvrsDCTInvSpec_32f* spec,
                                    Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDCTFwd_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDCTFwdSpec_64f* spec,
                                  Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwd_64f_I(Kvr64f* srcDst, const KvrsDCTFwdSpec_64f* spec,
                                    Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInv_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDCTInvSpec_64f* spec,
                                  Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInv_64f_I(Kvr64f* srcDst, const KvrsDCTInvSpec_64f* spec,
                                    Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDCTFwd_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDCTFwdSpec_16s* spec,
                                      int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTFwd_16s_ISfs(Kvr16s* srcDst, const KvrsDCTFwdSpec_16s* spec, int scaleFactor,
                                       Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInv_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDCTInvSpec_16s* spec,
                                      int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDCTInv_16s_ISfs(Kvr16s* srcDst, const KvrsDCTInvSpec_16s* spec, int scaleFactor,
                                       Kvr8u* buffer) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
