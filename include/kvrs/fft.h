/* Fast Fourier transforms of lengths that are powers of two. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FFT_H
#define KVRS_FFT_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup fft Floating-point FFT
 *
 * Transforms of N = 2^order points, driven by a context that is made once for an order and a normalisation:
 *
 *     forward:  dst[k] = s * sum over n of src[n] * exp(-2 pi i n k / N)
 *     inverse:  dst[n] = s * sum over k of src[k] * exp(+2 pi i n k / N)
 *
 * | flag                | s, forward | s, inverse |
 * |---------------------|------------|------------|
 * | ::kvrFftDivFwdByN   | 1/N        | 1          |
 * | ::kvrFftDivInvByN   | 1          | 1/N        |
 * | ::kvrFftDivBySqrtN  | 1/sqrt(N)  | 1/sqrt(N)  |
 * | ::kvrFftNoDivByAny  | 1          | 1          |
 *
 * | Context                                 | transforms                                                | orders  |
 * |-----------------------------------------|-----------------------------------------------------------|---------|
 * | KvrsFFTSpec_C_32fc                      | complex numbers                                           | 0 .. 27 |
 * | KvrsFFTSpec_C_32f                       | the same, real and imaginary parts in arrays of their own | 0 .. 27 |
 * | KvrsFFTSpec_R_32f                       | real numbers, into and out of packed spectra              | 0 .. 27 |
 * | KvrsFFTSpec_C_64fc, _C_64f, _R_64f      | likewise in double precision                              | 0 .. 26 |
 *
 * All work is done in the type of the data. The relative error, root mean square over the points, is about
 * 0.3 eps sqrt(order), eps being the distance from 1 to the next number of that type. NaN and infinity pass
 * through the arithmetic and are no error.
 *
 * A context is one block of memory that holds no address: it may be copied as bytes to another address that
 * is a multiple of 32, and used there. Nothing in it changes after its initialisation, so any number of
 * threads may share it if each has its own work area.
 *
 * ### Making a context
 *
 * Either in memory of the caller's own,
 *
 *     kvrsFFTGetSize_C_32fc(order, flag, hint, &specSize, &initBufSize, &workSize);
 *     kvrsFFTInit_C_32fc(&spec, order, flag, hint, specMem, initBuf);
 *
 * with `specMem` of specSize bytes, needed as long as the context is used, and `initBuf` of initBufSize
 * bytes, needed for this call alone; or with kvrsFFTInitAlloc_C_32fc(), which allocates. Memory may have any
 * alignment; the sizes include what is lost by rounding addresses up to a multiple of 32. `hint` is stored
 * and has no effect. kvrsFFTFree_C_32fc() ends the use of a context of either kind.
 *
 * Errors, in the order tested:
 *
 * | Function         | Errors |
 * |------------------|--------|
 * | GetSize          | ::kvrStatusBadFftOrder for an order outside 0 .. 30, ::kvrStatusNullPointer, ::kvrStatusBadFftFlag, ::kvrStatusBadFftOrder for an order beyond the context's range |
 * | Init             | ::kvrStatusNullPointer for `spec`, ::kvrStatusBadFftOrder, ::kvrStatusNullPointer for `specMem`, ::kvrStatusBadFftFlag, ::kvrStatusNullPointer for `initBuf` where its size is not 0 |
 * | InitAlloc        | ::kvrStatusNullPointer for `spec`, those of GetSize, ::kvrStatusOutOfMemory |
 * | Free, GetBufSize | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 *
 * A failed Init leaves `*spec` alone and may have begun to write `specMem`.
 *
 * ### Work area
 *
 * GetBufSize, and GetSize as `workSize`, tell how many bytes of work area a transform needs. If that is 0,
 * `buffer` is ignored. If `buffer` is null, the call allocates a work area and releases it before it returns.
 * Otherwise `buffer` is memory of that size, with any alignment; calls that run at the same time must not
 * share it.
 *
 * ### Transforming
 *
 * `src` and `dst` may be one array, which is what the `_I` forms do; otherwise they do not overlap, and `src`
 * is left as it is. Of two arrays each way, `dstRe` may be `srcRe` and `dstIm` be `srcIm`.
 *
 * Errors of all transforms, in the order tested: ::kvrStatusNullPointer for `spec`, ::kvrStatusContextMismatch,
 * ::kvrStatusNullPointer for the data, ::kvrStatusOutOfMemory if `buffer` is null and there is no memory.
 * @{
 */

typedef struct KvrsFFTSpec_C_32fc KvrsFFTSpec_C_32fc;
typedef struct KvrsFFTSpec_C_32f KvrsFFTSpec_C_32f;
typedef struct KvrsFFTSpec_C_64fc KvrsFFTSpec_C_64fc;
typedef struct KvrsFFTSpec_C_64f KvrsFFTSpec_C_64f;
typedef struct KvrsFFTSpec_R_32f KvrsFFTSpec_R_32f;
typedef struct KvrsFFTSpec_R_64f KvrsFFTSpec_R_64f;

KVRS_API KvrStatus kvrsFFTGetSize_C_32fc(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                         int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_C_32fc(KvrsFFTSpec_C_32fc** spec, int order, int flag, KvrHintAlgorithm hint,
                                      Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_C_32fc(KvrsFFTSpec_C_32fc** spec, int order, int flag,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_C_32fc(KvrsFFTSpec_C_32fc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_C_32fc(const KvrsFFTSpec_C_32fc* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_C_32f(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                        int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_C_32f(KvrsFFTSpec_C_32f** spec, int order, int flag, KvrHintAlgorithm hint,
                                     Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_C_32f(KvrsFFTSpec_C_32f** spec, int order, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_C_32f(KvrsFFTSpec_C_32f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_C_32f(const KvrsFFTSpec_C_32f* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_C_64fc(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                         int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_C_64fc(KvrsFFTSpec_C_64fc** spec, int order, int flag, KvrHintAlgorithm hint,
                                      Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_C_64fc(KvrsFFTSpec_C_64fc** spec, int order, int flag,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_C_64fc(KvrsFFTSpec_C_64fc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_C_64fc(const KvrsFFTSpec_C_64fc* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_C_64f(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                        int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_C_64f(KvrsFFTSpec_C_64f** spec, int order, int flag, KvrHintAlgorithm hint,
                                     Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_C_64f(KvrsFFTSpec_C_64f** spec, int order, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_C_64f(KvrsFFTSpec_C_64f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_C_64f(const KvrsFFTSpec_C_64f* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_R_32f(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                        int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_R_32f(KvrsFFTSpec_R_32f** spec, int order, int flag, KvrHintAlgorithm hint,
                                     Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_R_32f(KvrsFFTSpec_R_32f** spec, int order, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_R_32f(KvrsFFTSpec_R_32f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_R_32f(const KvrsFFTSpec_R_32f* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_R_64f(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                        int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_R_64f(KvrsFFTSpec_R_64f** spec, int order, int flag, KvrHintAlgorithm hint,
                                     Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_R_64f(KvrsFFTSpec_R_64f** spec, int order, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_R_64f(KvrsFFTSpec_R_64f* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_R_64f(const KvrsFFTSpec_R_64f* spec, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTFwd_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsFFTSpec_C_32fc* spec,
                                        Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsFFTSpec_C_32fc* spec,
                                        Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_32fc_I(Kvr32fc* srcDst, const KvrsFFTSpec_C_32fc* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_32fc_I(Kvr32fc* srcDst, const KvrsFFTSpec_C_32fc* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTFwd_CToC_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dstRe, Kvr32f* dstIm,
                                       const KvrsFFTSpec_C_32f* spec, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dstRe, Kvr32f* dstIm,
                                       const KvrsFFTSpec_C_32f* spec, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_32f_I(Kvr32f* srcDstRe, Kvr32f* srcDstIm, const KvrsFFTSpec_C_32f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_32f_I(Kvr32f* srcDstRe, Kvr32f* srcDstIm, const KvrsFFTSpec_C_32f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTFwd_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst, const KvrsFFTSpec_C_64fc* spec,
                                        Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst, const KvrsFFTSpec_C_64fc* spec,
                                        Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_64fc_I(Kvr64fc* srcDst, const KvrsFFTSpec_C_64fc* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_64fc_I(Kvr64fc* srcDst, const KvrsFFTSpec_C_64fc* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTFwd_CToC_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dstRe, Kvr64f* dstIm,
                                       const KvrsFFTSpec_C_64f* spec, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dstRe, Kvr64f* dstIm,
                                       const KvrsFFTSpec_C_64f* spec, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_64f_I(Kvr64f* srcDstRe, Kvr64f* srcDstIm, const KvrsFFTSpec_C_64f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_64f_I(Kvr64f* srcDstRe, Kvr64f* srcDstIm, const KvrsFFTSpec_C_64f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;

/** @} */

/** @defgroup fft_real Real FFT and packed spectra
 *
 * The spectrum X of N real numbers has `X[N-k] = conj(X[k])`, with X[0] and, for even N, X[N/2] real, so that
 * N real numbers hold it. Three layouts:
 *
 * | Layout | N    | sequence                                                                   | numbers |
 * |--------|------|----------------------------------------------------------------------------|---------|
 * | Pack   | even | Re X[0], Re X[1], Im X[1], ..., Re X[N/2-1], Im X[N/2-1], Re X[N/2]         | N       |
 * | Pack   | odd  | Re X[0], Re X[1], Im X[1], ..., Re X[(N-1)/2], Im X[(N-1)/2]                | N       |
 * | Perm   | even | Re X[0], Re X[N/2], Re X[1], Im X[1], ..., Re X[N/2-1], Im X[N/2-1]         | N       |
 * | Perm   | odd  | as Pack                                                                    | N       |
 * | CCS    | even | Re X[0], 0, Re X[1], Im X[1], ..., Re X[N/2-1], Im X[N/2-1], Re X[N/2], 0   | N + 2   |
 * | CCS    | odd  | Re X[0], 0, Re X[1], Im X[1], ..., Re X[(N-1)/2], Im X[(N-1)/2]             | N + 1   |
 *
 * For N = 1, Pack and Perm are `X[0]`, and CCS is `X[0], 0`. The zeros of CCS are written by the forward
 * transforms and ignored by the inverse ones, which read only Re X[0] when N = 1.
 *
 * `src` of a forward and `dst` of an inverse transform are N real numbers. The in-place forms of CCS need an
 * array of N + 2 numbers (2 for N = 1). Perm is the fastest layout: nothing has to be moved to make it.
 * Contexts, scale, work area and errors are those of the @ref fft.
 * @{
 */

KVRS_API KvrStatus kvrsFFTFwd_RToPerm_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPack_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToCCS_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PermToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PackToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CCSToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTFwd_RToPerm_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec,
                                            Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPack_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec,
                                            Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToCCS_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PermToR_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec,
                                            Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PackToR_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec,
                                            Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CCSToR_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTFwd_RToPerm_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPack_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToCCS_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PermToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PackToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                          Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CCSToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTFwd_RToPerm_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec,
                                            Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPack_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec,
                                            Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToCCS_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PermToR_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec,
                                            Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PackToR_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec,
                                            Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CCSToR_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
