/* Convolution of two finite signals. Elements of 32fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_CONVOLUTION_H
#define KVRS_CONVOLUTION_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup convolution Convolution
 *
 * | Function      | stores                                                                              | for n in          |
 * |---------------|-------------------------------------------------------------------------------------|-------------------|
 * | Conv          | `dst[n] = sum over k of src1[k] * src2[n-k]`, of all k for which both elements exist | 0 .. len1+len2-2  |
 * | ConvBiased    | `dst[n] = sum over k in 0 .. len1-1 of src1[k] * src2[n-k]`, of all k with 0 <= n+bias-k < len2 | 0 .. dstLen-1 |
 * | ConvCyclic8x8 | `y[n] = sum over k in 0 .. 7 of x[k] * h[(n-k) mod 8]`                               | 0 .. 7            |
 * | ConvCyclic4x4 | `y[n] = sum over k in 0 .. 3 of x[k] * h[(n-k) mod 4]`, x real and h complex         | 0 .. 3            |
 *
 * `dst` of Conv has room for len1 + len2 - 1 elements. `src2` of ConvBiased points at the element of index 0 of an array that
 * begins `bias` elements in front of it: the elements that exist are src2[-bias] to src2[len2-bias-1]. Any `bias` will do.
 * Results do not overlap sources, except those of ConvCyclic, which may be one of them.
 *
 * | Results of           | are                                                                                          |
 * |----------------------|----------------------------------------------------------------------------------------------|
 * | 32f, 64f, 32f32fc    | sums in their own precision, in an order of their own                                        |
 * | kvrsConv_16s_Sfs()   | sums in single precision times 2^(-scaleFactor), to nearest with ties to even, saturated     |
 * | kvrsConvCyclic8x8_16s_Sfs() | sums in 32 bits, modulo 2^32, by the scale-factor rule                                |
 *
 * ### Short and long signals
 *
 * Conv is computed product by product when len1 + len2 - 1 is below 512 or the shorter source below 64 elements, and otherwise
 * by FFT: with one transform of all, or by blocks of the longer source (overlap-save: Stockham, High-speed convolution and
 * correlation, 1966), whichever takes less time. Sums of products that their type holds exactly are exact without the FFT;
 * with it the error of each result is in proportion to the largest of its block, and an infinite sample or a NaN makes NaN of
 * all its block. Without it such a sample meets its own products alone.
 *
 * Threads: Conv by FFT may use several if the longer source has more than 4,096 elements and there is enough work for them.
 * ConvBiased and ConvCyclic know no FFT and no threads. The FFT takes one block of memory from kvrMalloc() for the time of the
 * call, nothing else takes any.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer; ::kvrStatusBadLength for a length below 1; and of
 * Conv, with nothing written, ::kvrStatusOutOfMemory, and ::kvrStatusBadFftOrder for signals that are too long for the
 * longest FFT. ConvCyclic tests nothing and returns ::kvrStatusOk.
 * @{ */

KVRS_API KvrStatus kvrsConv_32f(const Kvr32f* src1, int len1, const Kvr32f* src2, int len2,
                                Kvr32f* dst) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConv_64f(const Kvr64f* src1, int len1, const Kvr64f* src2, int len2,
                                Kvr64f* dst) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConv_16s_Sfs(const Kvr16s* src1, int len1, const Kvr16s* src2, int len2, Kvr16s* dst,
                                    int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsConvBiased_32f(const Kvr32f* src1, int len1, const Kvr32f* src2, int len2, Kvr32f* dst,
                                      int dstLen, int bias) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsConvCyclic8x8_32f(const Kvr32f* x, const Kvr32f* h, Kvr32f* y) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvCyclic8x8_16s_Sfs(const Kvr16s* x, const Kvr16s* h, Kvr16s* y,
                                             int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsConvCyclic4x4_32f32fc(const Kvr32f* x, const Kvr32fc* h, Kvr32fc* y) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
