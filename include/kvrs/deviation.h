/* Standard deviations.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_DEVIATION_H
#define KVRS_DEVIATION_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup deviation Standard deviation
 *
 * The deviation of a sample, with `len - 1` degrees of freedom. Of the sums A of the elements and B of their squares,
 * with n for `len`:
 *
 *     *stdDev = sqrt(max(0, n * B - A * A) / (n * (n - 1)))        *mean = A / n
 *
 * One pass over the data: where the mean is far larger than the deviation, the difference cancels, and single-precision
 * sums (`hint` 1) lose it first. Elements that are all equal give exactly 0, unless they are not finite.
 *
 * | Form       | sums                                                      | result                                     |
 * |------------|-----------------------------------------------------------|--------------------------------------------|
 * | 16s, 16s32s | exact                                                    | computed in double precision, times 2^(-scaleFactor), rounded to nearest with ties to even, saturated |
 * | 32f        | by `hint` those of kvrsSum_32f(), of the squares likewise | computed in extended precision and rounded; the mean is that of kvrsMean_32f() |
 * | 64f        | those of kvrsSum_64f(), of the squares likewise           | computed in double precision               |
 *
 * A scaleFactor, of which any will do, applies to the mean and to the deviation.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 2.
 * @{
 */

KVRS_API KvrStatus kvrsStdDev_16s_Sfs(const Kvr16s* src, int len, Kvr16s* stdDev,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsStdDev_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* stdDev,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsStdDev_32f(const Kvr32f* src, int len, Kvr32f* stdDev,
                                  KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsStdDev_64f(const Kvr64f* src, int len, Kvr64f* stdDev) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMeanStdDev_16s_Sfs(const Kvr16s* src, int len, Kvr16s* mean, Kvr16s* stdDev,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMeanStdDev_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* mean, Kvr32s* stdDev,
                                             int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMeanStdDev_32f(const Kvr32f* src, int len, Kvr32f* mean, Kvr32f* stdDev,
                                      KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMeanStdDev_64f(const Kvr64f* src, int len, Kvr64f* mean, Kvr64f* stdDev) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
