/* Fast Fourier transforms of integers.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FFT_INTEGER_H
#define KVRS_FFT_INTEGER_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup fft_integer Integer FFT
 *
 * The transforms of the @ref fft, 2^order points, on integers: what they compute there, times the factor of the flag and
 * times 2^(-scaleFactor), rounded and saturated. A factor of 1/N is best put into `scaleFactor` or the flag alike.
 *
 * | Context              | data                                                  | computed in      | orders  |
 * |----------------------|-------------------------------------------------------|------------------|---------|
 * | KvrsFFTSpec_C_16sc   | complex                                               | single precision | 0 .. 27 |
 * | KvrsFFTSpec_C_16s    | complex, real and imaginary parts in two arrays       | single precision | 0 .. 27 |
 * | KvrsFFTSpec_R_16s    | real, into and out of packed spectra                  | single precision | 0 .. 27 |
 * | KvrsFFTSpec_R_16s32s | real of 16 bits, spectra in CCS of 32 bits            | single precision | 0 .. 27 |
 * | KvrsFFTSpec_C_32sc, C_32s, R_32s | as those of 16 bits                       | double precision | 0 .. 26 |
 *
 * Data are converted, transformed with the factor of the flag in floating point, and converted back, rounded to nearest
 * with ties to even and saturated, by kvrsConvert_32f16s_Sfs() and its like. The packed layouts are those of the
 * @ref fft_real.
 *
 * Contexts of 16 bits, R_16s32s not among them, take fixed point for orders 1 to 3 if `hint` is ::kvrHintNone or
 * ::kvrHintFast. Data are brought up to 32 bits, v = x 2^(15 - order); sums and differences are exact, products with
 * sqrt(1/2) rounded; 1/sqrt(N) of an odd order is a shift by order/2 and a factor of 23170/32768. A result is then shifted
 * right by t, the sum of 15 - order, of the flag's shift (order for 1/N, order/2 for 1/sqrt(N)) and of `scaleFactor`:
 *
 * | t       | stored |
 * |---------|--------|
 * | above 0 | `(v + 2^(t-1)) >> t`, saturated; t counts as 31 at most |
 * | 0       | v, saturated |
 * | below 0 | `v << -t` in 32 bits, saturated; bits beyond the highest are lost, and all of them from -32 on |
 *
 * Contexts of 16 bits and order 0 store what this table makes of x with t = `scaleFactor`, whatever the flag.
 *
 * Making a context, the work area, in place or not and the errors are as told for the @ref fft, with these differences:
 *
 * | Function         | Errors, in the order tested |
 * |------------------|--------|
 * | GetSize          | ::kvrStatusBadFftOrder for an order outside 0 .. 30, ::kvrStatusNullPointer, ::kvrStatusBadFftFlag, ::kvrStatusBadFftOrder for an order beyond the context's range |
 * | Init             | ::kvrStatusNullPointer for `spec`, ::kvrStatusBadFftOrder, ::kvrStatusNullPointer for `specMem`, and for `initBuf` where its size is not 0, ::kvrStatusBadFftFlag |
 * | InitAlloc        | ::kvrStatusNullPointer for `spec`, those of GetSize, ::kvrStatusOutOfMemory |
 * | Free, GetBufSize | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 *
 * kvrsFFTGetSize_C_32sc() is a second name of kvrsFFTGetSize_C_32s().
 * @{
 */

typedef struct KvrsFFTSpec_C_16sc KvrsFFTSpec_C_16sc;
typedef struct KvrsFFTSpec_C_16s KvrsFFTSpec_C_16s;
typedef struct KvrsFFTSpec_R_16s KvrsFFTSpec_R_16s;
typedef struct KvrsFFTSpec_C_32sc KvrsFFTSpec_C_32sc;
typedef struct KvrsFFTSpec_C_32s KvrsFFTSpec_C_32s;
typedef struct KvrsFFTSpec_R_32s KvrsFFTSpec_R_32s;
typedef struct KvrsFFTSpec_R_16s32s KvrsFFTSpec_R_16s32s;

KVRS_API KvrStatus kvrsFFTGetSize_C_16sc(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                         int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_C_16sc(KvrsFFTSpec_C_16sc** spec, int order, int flag, KvrHintAlgorithm hint,
                                      Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_C_16sc(KvrsFFTSpec_C_16sc** spec, int order, int flag,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_C_16sc(KvrsFFTSpec_C_16sc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_C_16sc(const KvrsFFTSpec_C_16sc* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, const KvrsFFTSpec_C_16sc* spec,
                                            int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, const KvrsFFTSpec_C_16sc* spec,
                                            int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_16sc_ISfs(Kvr16sc* srcDst, const KvrsFFTSpec_C_16sc* spec, int scaleFactor,
                                             Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_16sc_ISfs(Kvr16sc* srcDst, const KvrsFFTSpec_C_16sc* spec, int scaleFactor,
                                             Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_C_16s(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                        int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_C_16s(KvrsFFTSpec_C_16s** spec, int order, int flag, KvrHintAlgorithm hint,
                                     Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_C_16s(KvrsFFTSpec_C_16s** spec, int order, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_C_16s(KvrsFFTSpec_C_16s* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_C_16s(const KvrsFFTSpec_C_16s* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dstRe,
                                           Kvr16s* dstIm, const KvrsFFTSpec_C_16s* spec, int scaleFactor,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dstRe,
                                           Kvr16s* dstIm, const KvrsFFTSpec_C_16s* spec, int scaleFactor,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_16s_ISfs(Kvr16s* srcDstRe, Kvr16s* srcDstIm, const KvrsFFTSpec_C_16s* spec,
                                            int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_16s_ISfs(Kvr16s* srcDstRe, Kvr16s* srcDstIm, const KvrsFFTSpec_C_16s* spec,
                                            int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_R_16s(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                        int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_R_16s(KvrsFFTSpec_R_16s** spec, int order, int flag, KvrHintAlgorithm hint,
                                     Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_R_16s(KvrsFFTSpec_R_16s** spec, int order, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_R_16s(KvrsFFTSpec_R_16s* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_R_16s(const KvrsFFTSpec_R_16s* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPerm_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPack_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToCCS_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                             int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PermToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PackToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CCSToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                             int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPerm_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                               Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPack_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                               Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToCCS_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                              Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PermToR_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                               Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PackToR_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                               Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CCSToR_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                              Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_C_32sc(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                         int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_C_32sc(KvrsFFTSpec_C_32sc** spec, int order, int flag, KvrHintAlgorithm hint,
                                      Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_C_32sc(KvrsFFTSpec_C_32sc** spec, int order, int flag,
                                           KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_C_32sc(KvrsFFTSpec_C_32sc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_C_32sc(const KvrsFFTSpec_C_32sc* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, const KvrsFFTSpec_C_32sc* spec,
                                            int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, const KvrsFFTSpec_C_32sc* spec,
                                            int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_32sc_ISfs(Kvr32sc* srcDst, const KvrsFFTSpec_C_32sc* spec, int scaleFactor,
                                             Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_32sc_ISfs(Kvr32sc* srcDst, const KvrsFFTSpec_C_32sc* spec, int scaleFactor,
                                             Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_C_32s(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                        int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_C_32s(KvrsFFTSpec_C_32s** spec, int order, int flag, KvrHintAlgorithm hint,
                                     Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_C_32s(KvrsFFTSpec_C_32s** spec, int order, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_C_32s(KvrsFFTSpec_C_32s* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_C_32s(const KvrsFFTSpec_C_32s* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_32s_Sfs(const Kvr32s* srcRe, const Kvr32s* srcIm, Kvr32s* dstRe,
                                           Kvr32s* dstIm, const KvrsFFTSpec_C_32s* spec, int scaleFactor,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_32s_Sfs(const Kvr32s* srcRe, const Kvr32s* srcIm, Kvr32s* dstRe,
                                           Kvr32s* dstIm, const KvrsFFTSpec_C_32s* spec, int scaleFactor,
                                           Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_CToC_32s_ISfs(Kvr32s* srcDstRe, Kvr32s* srcDstIm, const KvrsFFTSpec_C_32s* spec,
                                            int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CToC_32s_ISfs(Kvr32s* srcDstRe, Kvr32s* srcDstIm, const KvrsFFTSpec_C_32s* spec,
                                            int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_R_32s(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                        int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_R_32s(KvrsFFTSpec_R_32s** spec, int order, int flag, KvrHintAlgorithm hint,
                                     Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_R_32s(KvrsFFTSpec_R_32s** spec, int order, int flag,
                                          KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_R_32s(KvrsFFTSpec_R_32s* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_R_32s(const KvrsFFTSpec_R_32s* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPerm_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPack_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToCCS_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                             int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PermToR_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PackToR_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                              int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CCSToR_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                             int scaleFactor, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPerm_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                               Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToPack_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                               Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToCCS_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                              Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PermToR_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                               Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_PackToR_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                               Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CCSToR_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                              Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFFTGetSize_R_16s32s(int order, int flag, KvrHintAlgorithm hint, int* specSize,
                                           int* initBufSize, int* workSize) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInit_R_16s32s(KvrsFFTSpec_R_16s32s** spec, int order, int flag,
                                        KvrHintAlgorithm hint, Kvr8u* specMem, Kvr8u* initBuf) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInitAlloc_R_16s32s(KvrsFFTSpec_R_16s32s** spec, int order, int flag,
                                             KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFree_R_16s32s(KvrsFFTSpec_R_16s32s* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTGetBufSize_R_16s32s(const KvrsFFTSpec_R_16s32s* spec, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTFwd_RToCCS_16s32s_Sfs(const Kvr16s* src, Kvr32s* dst,
                                                const KvrsFFTSpec_R_16s32s* spec, int scaleFactor,
                                                Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFFTInv_CCSToR_32s16s_Sfs(const Kvr32s* src, Kvr16s* dst,
                                                const KvrsFFTSpec_R_16s32s* spec, int scaleFactor,
                                                Kvr8u* buffer) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
