/* Sums and means. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_SUM_H
#define KVRS_SUM_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup sum Sum and mean
 *
 * `*sum = src[0] + ... + src[len-1]`, `*mean = *sum / len`; of complex elements part by part.
 *
 * | Integer form        | stores                                                                              |
 * |---------------------|-------------------------------------------------------------------------------------|
 * | Sum                 | the exact sum times 2^(-scaleFactor), rounded to nearest with ties to even, saturated |
 * | Mean_16s, Mean_16sc | the exact sum times 2^(-scaleFactor), divided by `len` in double precision, rounded and saturated likewise |
 * | Mean_32s            | the exact sum over `len`, rounded to nearest with ties to even, as m; of m what the next table says |
 *
 * | scaleFactor of Mean_32s | stores                                                                           |
 * |-------------------------|----------------------------------------------------------------------------------|
 * | 0                       | m                                                                                |
 * | above 0                 | m times 2^(-scaleFactor), rounded to nearest with ties to even                   |
 * | -1 to -31               | if the sum fits in 32 bits: the sum times 2^(-scaleFactor) over `len`, rounded as m is; else m times 2^(-scaleFactor); saturated |
 * | below -31               | 0 if m is 0, else the end of the range on m's side                               |
 *
 * Floating-point sums have a stated order, and so are the same to the bit in every module:
 *
 * - **32f, 32fc, `hint` 1** (::kvrHintFast). Elements ahead of the first 16-byte boundary are added to the total, which has
 *   extended precision (64 bits of mantissa). What follows is taken in blocks of 32,768 elements. In a block, 16 sums in
 *   single precision take element i of it into sum i mod 16; they are joined as (l + (l + 8)) + ((l + 4) + (l + 12)) to
 *   four; the last elements, fewer than 16, are added to these, four at a time, then two to the first two, then one to the
 *   first; the third and fourth are added to the first and second, and these two to the total, in this order. An array
 *   that is not aligned to its elements has none ahead of the boundary.
 * - **32f, 32fc, any other `hint`.** Eight sums in extended precision take element i into sum i mod 8, but all behind the
 *   last whole eight into the first, and are joined pairwise.
 * - **64f.** Eight sums in double precision take element i into sum i mod 8 and are joined as
 *   ((s0 + s2) + (s4 + s6)) + ((s1 + s3) + (s5 + s7)). The first element of an array that is not aligned to 16 bytes is
 *   left out of the count and added to s0 at the end. **64fc** is the same with four sums for each part, joined as
 *   (s0 + s1) + (s2 + s3), and no first element left out.
 *
 * The total is rounded once to the type of the result. Mean_32f and Mean_32fc round it to double precision first, divide it
 * by `len` there and round the quotient; Mean_64f and Mean_64fc divide by `len`. All of it follows the caller's rounding
 * mode. Infinities and NaN make what arithmetic makes of them.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * @{
 */

KVRS_API KvrStatus kvrsSum_16s_Sfs(const Kvr16s* src, int len, Kvr16s* sum, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSum_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* sum, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSum_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc* sum, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSum_16sc32sc_Sfs(const Kvr16sc* src, int len, Kvr32sc* sum,
                                        int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSum_32s_Sfs(const Kvr32s* src, int len, Kvr32s* sum, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSum_32f(const Kvr32f* src, int len, Kvr32f* sum, KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSum_32fc(const Kvr32fc* src, int len, Kvr32fc* sum,
                                KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSum_64f(const Kvr64f* src, int len, Kvr64f* sum) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSum_64fc(const Kvr64fc* src, int len, Kvr64fc* sum) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMean_16s_Sfs(const Kvr16s* src, int len, Kvr16s* mean, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMean_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc* mean,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMean_32s_Sfs(const Kvr32s* src, int len, Kvr32s* mean, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMean_32f(const Kvr32f* src, int len, Kvr32f* mean,
                                KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMean_32fc(const Kvr32fc* src, int len, Kvr32fc* mean,
                                 KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMean_64f(const Kvr64f* src, int len, Kvr64f* mean) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMean_64fc(const Kvr64fc* src, int len, Kvr64fc* mean) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
