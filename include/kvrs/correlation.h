/* Correlation of signals. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_CORRELATION_H
#define KVRS_CORRELATION_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup correlation Correlation
 *
 * | Function       | stores, for n in 0 .. dstLen-1                                                                       |
 * |----------------|------------------------------------------------------------------------------------------------------|
 * | CrossCorr      | `dst[n] = sum over k of conj(src1[k]) * src2[k + lowLag + n]`, of all k for which both elements exist |
 * | AutoCorr       | `dst[n] = sum over k in 0 .. srcLen-1-n of conj(src[k]) * src[k + n]`                                 |
 * | AutoCorr_NormA | the same times 1/srcLen, itself rounded to the precision of the sums                                 |
 * | AutoCorr_NormB | the same over srcLen-n: the mean of the products that exist                                          |
 *
 * Real numbers are their own conjugates. What has no products is 0: lags lowLag + n up to -len1 and from len2 on, and n from
 * srcLen on, with every normalisation. Any `lowLag` will do. `dst` does not overlap a source.
 *
 * | Results of            | are                                                                                         |
 * |-----------------------|---------------------------------------------------------------------------------------------|
 * | 32f, 64f, 32fc, 64fc  | sums in their own precision, in an order of their own                                       |
 * | 16s_Sfs               | sums in single precision, normalised, times 2^(-scaleFactor), to nearest with ties to even, saturated once |
 * | kvrsCrossCorr_16s64s()| exact sums                                                                                  |
 *
 * ### Few and many lags
 *
 * Sums of a few lags are computed product by product, those of many by FFT, with one transform of all or by blocks, whichever
 * takes less time. From these numbers on they are:
 *
 * | Function             | counted                                            | 32f | 64f | 32fc | 64fc | 16s |
 * |----------------------|----------------------------------------------------|----:|----:|-----:|-----:|----:|
 * | CrossCorr            | lags * shorter length / longer length, rounded down | 384 | 512 | 256  | 512  | 384 |
 * | AutoCorr, all forms  | lags                                               | 856 | 856 | 152  | 368  | 856 |
 *
 * Lags without products do not count. kvrsCrossCorr_16s64s() knows no FFT. Sums of products that their type holds exactly are
 * exact without the FFT; with it the error of each result is in proportion to the largest of its block, and an infinite sample
 * or a NaN makes NaN of all its block. Without it such a sample meets its own products alone.
 *
 * The FFT takes one block of memory from kvrMalloc() for the time of the call, nothing else takes any. No call uses threads.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer; ::kvrStatusBadLength for a length below 1; and, with
 * nothing written, ::kvrStatusOutOfMemory, and ::kvrStatusBadFftOrder for signals that are too long for the longest FFT.
 * @{ */

KVRS_API KvrStatus kvrsCrossCorr_32f(const Kvr32f* src1, int len1, const Kvr32f* src2, int len2, Kvr32f* dst,
                                     int dstLen, int lowLag) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCrossCorr_64f(const Kvr64f* src1, int len1, const Kvr64f* src2, int len2, Kvr64f* dst,
                                     int dstLen, int lowLag) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCrossCorr_32fc(const Kvr32fc* src1, int len1, const Kvr32fc* src2, int len2,
                                      Kvr32fc* dst, int dstLen, int lowLag) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCrossCorr_64fc(const Kvr64fc* src1, int len1, const Kvr64fc* src2, int len2,
                                      Kvr64fc* dst, int dstLen, int lowLag) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCrossCorr_16s_Sfs(const Kvr16s* src1, int len1, const Kvr16s* src2, int len2,
                                         Kvr16s* dst, int dstLen, int lowLag, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCrossCorr_16s64s(const Kvr16s* src1, int len1, const Kvr16s* src2, int len2,
                                        Kvr64s* dst, int dstLen, int lowLag) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsAutoCorr_32f(const Kvr32f* src, int srcLen, Kvr32f* dst, int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_64f(const Kvr64f* src, int srcLen, Kvr64f* dst, int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_32fc(const Kvr32fc* src, int srcLen, Kvr32fc* dst, int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_64fc(const Kvr64fc* src, int srcLen, Kvr64fc* dst, int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_16s_Sfs(const Kvr16s* src, int srcLen, Kvr16s* dst, int dstLen,
                                        int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsAutoCorr_NormA_32f(const Kvr32f* src, int srcLen, Kvr32f* dst,
                                          int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_NormA_64f(const Kvr64f* src, int srcLen, Kvr64f* dst,
                                          int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_NormA_32fc(const Kvr32fc* src, int srcLen, Kvr32fc* dst,
                                           int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_NormA_64fc(const Kvr64fc* src, int srcLen, Kvr64fc* dst,
                                           int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_NormA_16s_Sfs(const Kvr16s* src, int srcLen, Kvr16s* dst, int dstLen,
                                              int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsAutoCorr_NormB_32f(const Kvr32f* src, int srcLen, Kvr32f* dst,
                                          int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_NormB_64f(const Kvr64f* src, int srcLen, Kvr64f* dst,
                                          int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_NormB_32fc(const Kvr32fc* src, int srcLen, Kvr32fc* dst,
                                           int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_NormB_64fc(const Kvr64fc* src, int srcLen, Kvr64fc* dst,
                                           int dstLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsAutoCorr_NormB_16s_Sfs(const Kvr16s* src, int srcLen, Kvr16s* dst, int dstLen,
                                              int scaleFactor) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
