/* Wavelet transforms: Haar.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_WAVELET_H
#define KVRS_WAVELET_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup wavelet Wavelet transforms
 *
 * ### Haar
 *
 * One level of the transform of a whole vector, without a context. `len` is the length of the signal: `dstLow` and `srcLow` have
 * (len + 1) / 2 values, `dstHigh` and `srcHigh` len / 2, both rounded down. With a pair x0 = x[2i], x1 = x[2i+1] of the signal:
 *
 * | Elements           | WTHaarFwd stores                                 | WTHaarInv stores                              |
 * |--------------------|--------------------------------------------------|-----------------------------------------------|
 * | 8s, 16s, 32s, 64s  | `low[i] = (x0 + x1) / 2`, `high[i] = (x1 - x0) / 2` | `x0 = low[i] - high[i]`, `x1 = low[i] + high[i]` |
 * | the same with _Sfs | `low[i] = (x0 + x1) / 2 * 2^(-scaleFactor)`, `high[i] = (x1 - x0) / 2 * 2^(-scaleFactor)` | `x0 = (low[i] - high[i]) * 2^(-scaleFactor)`, `x1 = (low[i] + high[i]) * 2^(-scaleFactor)` |
 * | 32f, 64f           | `low[i] = x0 / 2 + x1 / 2`, `high[i] = x1 / 2 - x0 / 2` | `x0 = low[i] - high[i]`, `x1 = low[i] + high[i]` |
 *
 * Integers are exact, then rounded to nearest with ties to even and saturated, once each. The forward transform with scaleFactor -1
 * (sums and differences as they are) and the inverse with 1 lose nothing as long as nothing saturates.
 *
 * A last sample without a partner goes to the end of `dstLow` as it is (times 2^(-scaleFactor)), and comes back from there.
 *
 * Of floats the two halves are exact, and low and high are rounded once: low is x0 + (x1 - x0) / 2 of the unrounded
 * difference, and nothing overflows. (Halves of subnormal numbers are rounded.) Infinities and NaN are what these sums make of them.
 *
 * One of `dstLow` and `dstHigh` may be `src`, so that a pyramid of transforms leaves each level's low values where the level began;
 * otherwise no destination overlaps another array.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * @{ */

KVRS_API KvrStatus kvrsWTHaarFwd_8s(const Kvr8s* src, int len, Kvr8s* dstLow, Kvr8s* dstHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarFwd_16s(const Kvr16s* src, int len, Kvr16s* dstLow,
                                     Kvr16s* dstHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarFwd_32s(const Kvr32s* src, int len, Kvr32s* dstLow,
                                     Kvr32s* dstHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarFwd_64s(const Kvr64s* src, int len, Kvr64s* dstLow,
                                     Kvr64s* dstHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarFwd_32f(const Kvr32f* src, int len, Kvr32f* dstLow,
                                     Kvr32f* dstHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarFwd_64f(const Kvr64f* src, int len, Kvr64f* dstLow,
                                     Kvr64f* dstHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarFwd_8s_Sfs(const Kvr8s* src, int len, Kvr8s* dstLow, Kvr8s* dstHigh,
                                        int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarFwd_16s_Sfs(const Kvr16s* src, int len, Kvr16s* dstLow, Kvr16s* dstHigh,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarFwd_32s_Sfs(const Kvr32s* src, int len, Kvr32s* dstLow, Kvr32s* dstHigh,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarFwd_64s_Sfs(const Kvr64s* src, int len, Kvr64s* dstLow, Kvr64s* dstHigh,
                                         int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWTHaarInv_8s(const Kvr8s* srcLow, const Kvr8s* srcHigh, Kvr8s* dst,
                                    int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarInv_16s(const Kvr16s* srcLow, const Kvr16s* srcHigh, Kvr16s* dst,
                                     int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarInv_32s(const Kvr32s* srcLow, const Kvr32s* srcHigh, Kvr32s* dst,
                                     int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarInv_64s(const Kvr64s* srcLow, const Kvr64s* srcHigh, Kvr64s* dst,
                                     int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarInv_32f(const Kvr32f* srcLow, const Kvr32f* srcHigh, Kvr32f* dst,
                                     int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarInv_64f(const Kvr64f* srcLow, const Kvr64f* srcHigh, Kvr64f* dst,
                                     int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarInv_8s_Sfs(const Kvr8s* srcLow, const Kvr8s* srcHigh, Kvr8s* dst, int len,
                                        int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarInv_16s_Sfs(const Kvr16s* srcLow, const Kvr16s* srcHigh, Kvr16s* dst, int len,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarInv_32s_Sfs(const Kvr32s* srcLow, const Kvr32s* srcHigh, Kvr32s* dst, int len,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTHaarInv_64s_Sfs(const Kvr64s* srcLow, const Kvr64s* srcHigh, Kvr64s* dst, int len,
                                         int scaleFactor) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
