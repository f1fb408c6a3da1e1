/* Wavelet transforms: Haar, and two-channel filter banks.
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

/** @defgroup wavelet_banks Wavelet filter banks
 *
 * The two channels of a wavelet transform's level, with filters of any length: WTFwd filters a signal by a low-pass and a high-pass
 * filter and keeps every second output of each; WTInv puts a zero between any two values of two channels, filters each and adds
 * them. A state keeps the delay lines between calls, so that a signal may come in pieces of any size; however it is cut, the results
 * are the same to the bit.
 *
 * With taps h[0] .. h[T-1] and the offset o of a channel (`tapsLow`, `lenLow` and `offsLow`, or those of the high channel), x the
 * whole signal from the first call on, s the whole input of an inverse channel, both 0 before their beginning:
 *
 * | Function | stores                                                                                          |
 * |----------|-------------------------------------------------------------------------------------------------|
 * | WTFwd    | of each channel `dst[i] = sum over k of h[k] * x[2i - o - k]`, dstLen of them from 2 * dstLen samples |
 * | WTInv    | `dst[n]`, 2 * srcLen of them, the sum of `sum over k of h[k] * u[n - o - k]` of both channels, where `u[2m] = s[m]` and `u[2m+1] = 0` |
 *
 * So an offset delays a channel by as many samples of the signal at full rate. It is at least -1: the forward transform is then a
 * sample ahead, from 2i + 1 on; to the inverse one -1 is the same as 1.
 *
 * | Code   | Forward: samples     | Code   | Inverse: results                                              |
 * |--------|----------------------|--------|---------------------------------------------------------------|
 * | 32f    | Kvr32f               | 32f    | Kvr32f                                                        |
 * | 8u32f, 8s32f, 16u32f, 16s32f | integers | 32f8u, 32f8s, 32f16u, 32f16s | rounded to nearest with ties to even, whatever the mode, and saturated; NaN gives the lowest number |
 *
 * Taps, channels and delay lines are singles throughout. Products are rounded to single precision and added up in double
 * precision, from the oldest sample to the newest. Eight taps and more are added in groups of eight to four sums, by index modulo
 * 4, which join as (0 + 2) + (1 + 3); what is left of the taps is then added one by one. The total is rounded to single precision,
 * and the two channels of an inverse transform are added in it. Of an inverse channel the taps of even and of odd index
 * are two such sums. Infinities and NaN go as far as a filter reaches.
 *
 * ### States
 *
 * InitAlloc makes a state, whose delay lines hold zeros, in one block from kvrMalloc(), and writes its address to `state`; Free
 * releases it. A call advances the state; two calls at once must not share one.
 *
 * GetDlyLine and SetDlyLine read and write the last samples that a state knows, in the order of time with the oldest first: in a
 * forward channel max(0, T + o - 1) of the signal, in an inverse one floor((T + (o & 1) - 1) / 2) + floor(o / 2) of the channel,
 * with an o of 1 in place of -1. The taps cannot be changed.
 *
 * A call takes its samples in pieces of 512 outputs of a channel. `dstLow` or `dstHigh` of kvrsWTFwd_32f() may be `src`; otherwise no
 * destination overlaps another array.
 *
 * Errors, in the order tested:
 *
 * | Function               | tests                                                                                |
 * |------------------------|--------------------------------------------------------------------------------------|
 * | InitAlloc              | ::kvrStatusNullPointer for `state` and `tapsLow`, ::kvrStatusBadLength for `lenLow` below 1, the same two for `tapsHigh` and `lenHigh`, ::kvrStatusBadWaveletOffset for an offset below -1, ::kvrStatusOutOfMemory, which also stands for a state of 2^31 bytes and more: `*state` is null then |
 * | WTFwd                  | `state`, ::kvrStatusNullPointer for the other pointers, ::kvrStatusBadLength for `dstLen` below 1 |
 * | WTInv                  | `state`, ::kvrStatusNullPointer for `srcLow` and `srcHigh`, ::kvrStatusBadLength for `srcLen` below 1, ::kvrStatusNullPointer for `dst` |
 * | GetDlyLine, SetDlyLine | `state`, ::kvrStatusNullPointer for the other pointers                               |
 * | Free                   | `state`                                                                              |
 *
 * The test of `state`: ::kvrStatusNullPointer, then ::kvrStatusContextMismatch for a state of another type, or none.
 * @{ */

typedef struct KvrsWTFwdState_32f KvrsWTFwdState_32f;
typedef struct KvrsWTFwdState_8u32f KvrsWTFwdState_8u32f;
typedef struct KvrsWTFwdState_8s32f KvrsWTFwdState_8s32f;
typedef struct KvrsWTFwdState_16u32f KvrsWTFwdState_16u32f;
typedef struct KvrsWTFwdState_16s32f KvrsWTFwdState_16s32f;
typedef struct KvrsWTInvState_32f KvrsWTInvState_32f;
typedef struct KvrsWTInvState_32f8u KvrsWTInvState_32f8u;
typedef struct KvrsWTInvState_32f8s KvrsWTInvState_32f8s;
typedef struct KvrsWTInvState_32f16u KvrsWTInvState_32f16u;
typedef struct KvrsWTInvState_32f16s KvrsWTInvState_32f16s;

KVRS_API KvrStatus kvrsWTFwdInitAlloc_32f(KvrsWTFwdState_32f** state, const Kvr32f* tapsLow, int lenLow,
                                          int offsLow, const Kvr32f* tapsHigh, int lenHigh,
                                          int offsHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdInitAlloc_8u32f(KvrsWTFwdState_8u32f** state, const Kvr32f* tapsLow, int lenLow,
                                            int offsLow, const Kvr32f* tapsHigh, int lenHigh,
                                            int offsHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdInitAlloc_8s32f(KvrsWTFwdState_8s32f** state, const Kvr32f* tapsLow, int lenLow,
                                            int offsLow, const Kvr32f* tapsHigh, int lenHigh,
                                            int offsHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdInitAlloc_16u32f(KvrsWTFwdState_16u32f** state, const Kvr32f* tapsLow, int lenLow,
                                             int offsLow, const Kvr32f* tapsHigh, int lenHigh,
                                             int offsHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdInitAlloc_16s32f(KvrsWTFwdState_16s32f** state, const Kvr32f* tapsLow, int lenLow,
                                             int offsLow, const Kvr32f* tapsHigh, int lenHigh,
                                             int offsHigh) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWTFwdFree_32f(KvrsWTFwdState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdFree_8u32f(KvrsWTFwdState_8u32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdFree_8s32f(KvrsWTFwdState_8s32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdFree_16u32f(KvrsWTFwdState_16u32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdFree_16s32f(KvrsWTFwdState_16s32f* state) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWTFwdGetDlyLine_32f(const KvrsWTFwdState_32f* state, Kvr32f* dlyLow,
                                           Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdGetDlyLine_8u32f(const KvrsWTFwdState_8u32f* state, Kvr32f* dlyLow,
                                             Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdGetDlyLine_8s32f(const KvrsWTFwdState_8s32f* state, Kvr32f* dlyLow,
                                             Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdGetDlyLine_16u32f(const KvrsWTFwdState_16u32f* state, Kvr32f* dlyLow,
                                              Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdGetDlyLine_16s32f(const KvrsWTFwdState_16s32f* state, Kvr32f* dlyLow,
                                              Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdSetDlyLine_32f(KvrsWTFwdState_32f* state, const Kvr32f* dlyLow,
                                           const Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdSetDlyLine_8u32f(KvrsWTFwdState_8u32f* state, const Kvr32f* dlyLow,
                                             const Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdSetDlyLine_8s32f(KvrsWTFwdState_8s32f* state, const Kvr32f* dlyLow,
                                             const Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdSetDlyLine_16u32f(KvrsWTFwdState_16u32f* state, const Kvr32f* dlyLow,
                                              const Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwdSetDlyLine_16s32f(KvrsWTFwdState_16s32f* state, const Kvr32f* dlyLow,
                                              const Kvr32f* dlyHigh) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWTFwd_32f(const Kvr32f* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen,
                                 KvrsWTFwdState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwd_8u32f(const Kvr8u* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen,
                                   KvrsWTFwdState_8u32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwd_8s32f(const Kvr8s* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen,
                                   KvrsWTFwdState_8s32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwd_16u32f(const Kvr16u* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen,
                                    KvrsWTFwdState_16u32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTFwd_16s32f(const Kvr16s* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen,
                                    KvrsWTFwdState_16s32f* state) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWTInvInitAlloc_32f(KvrsWTInvState_32f** state, const Kvr32f* tapsLow, int lenLow,
                                          int offsLow, const Kvr32f* tapsHigh, int lenHigh,
                                          int offsHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvInitAlloc_32f8u(KvrsWTInvState_32f8u** state, const Kvr32f* tapsLow, int lenLow,
                                            int offsLow, const Kvr32f* tapsHigh, int lenHigh,
                                            int offsHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvInitAlloc_32f8s(KvrsWTInvState_32f8s** state, const Kvr32f* tapsLow, int lenLow,
                                            int offsLow, const Kvr32f* tapsHigh, int lenHigh,
                                            int offsHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvInitAlloc_32f16u(KvrsWTInvState_32f16u** state, const Kvr32f* tapsLow, int lenLow,
                                             int offsLow, const Kvr32f* tapsHigh, int lenHigh,
                                             int offsHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvInitAlloc_32f16s(KvrsWTInvState_32f16s** state, const Kvr32f* tapsLow, int lenLow,
                                             int offsLow, const Kvr32f* tapsHigh, int lenHigh,
                                             int offsHigh) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWTInvFree_32f(KvrsWTInvState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvFree_32f8u(KvrsWTInvState_32f8u* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvFree_32f8s(KvrsWTInvState_32f8s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvFree_32f16u(KvrsWTInvState_32f16u* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvFree_32f16s(KvrsWTInvState_32f16s* state) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWTInvGetDlyLine_32f(const KvrsWTInvState_32f* state, Kvr32f* dlyLow,
                                           Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvGetDlyLine_32f8u(const KvrsWTInvState_32f8u* state, Kvr32f* dlyLow,
                                             Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvGetDlyLine_32f8s(const KvrsWTInvState_32f8s* state, Kvr32f* dlyLow,
                                             Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvGetDlyLine_32f16u(const KvrsWTInvState_32f16u* state, Kvr32f* dlyLow,
                                              Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvGetDlyLine_32f16s(const KvrsWTInvState_32f16s* state, Kvr32f* dlyLow,
                                              Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvSetDlyLine_32f(KvrsWTInvState_32f* state, const Kvr32f* dlyLow,
                                           const Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvSetDlyLine_32f8u(KvrsWTInvState_32f8u* state, const Kvr32f* dlyLow,
                                             const Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvSetDlyLine_32f8s(KvrsWTInvState_32f8s* state, const Kvr32f* dlyLow,
                                             const Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvSetDlyLine_32f16u(KvrsWTInvState_32f16u* state, const Kvr32f* dlyLow,
                                              const Kvr32f* dlyHigh) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInvSetDlyLine_32f16s(KvrsWTInvState_32f16s* state, const Kvr32f* dlyLow,
                                              const Kvr32f* dlyHigh) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsWTInv_32f(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, Kvr32f* dst,
                                 KvrsWTInvState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInv_32f8u(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, Kvr8u* dst,
                                   KvrsWTInvState_32f8u* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInv_32f8s(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, Kvr8s* dst,
                                   KvrsWTInvState_32f8s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInv_32f16u(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, Kvr16u* dst,
                                    KvrsWTInvState_32f16u* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsWTInv_32f16s(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, Kvr16s* dst,
                                    KvrsWTInvState_32f16s* state) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
