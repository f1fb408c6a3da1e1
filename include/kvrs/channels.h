/* Channels of audio: interleaved integers to and from one array of floats for each channel.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_CHANNELS_H
#define KVRS_CHANNELS_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup channels Channels
 *
 * An interleaved array holds `chanLen` frames of `nChannels` samples each: sample i of channel c is element
 * `i * nChannels + c`. On the other side is an array of `nChannels` pointers to channels, arrays of `chanLen`
 * floats each. For c in 0 .. nChannels-1 and i in 0 .. chanLen-1:
 *
 * | Function                 | stores                                                                       |
 * |--------------------------|------------------------------------------------------------------------------|
 * | Join_32f16s_D2L          | `dst[i*nChannels + c] = nearest(x)` with `x = src[c][i]`, saturated           |
 * | JoinScaled_32f16s_D2L    | `dst[i*nChannels + c] = nearest(min(max(x, -1), 1) * 32767.5 - 0.5)`, computed in 32f |
 * | JoinScaled_32f24s_D2L    | `dst[i*nChannels + c] = nearest(min(max(x, -1), 1) * 8388607.5 - 0.5)`, computed in 64f |
 * | SplitScaled_16s32f_D2L   | `dst[c][i] = x * 3.0518044e-05 + 1.5259022e-05` with `x = src[i*nChannels + c]`, computed in 32f |
 * | SplitScaled_24s32f_D2L   | `dst[c][i] = x * 1.19209296656209e-07 + 5.96046483281045e-08`, computed in 64f, then rounded to 32f |
 *
 * The scaled forms map -1 .. 1 to the whole range of the integers and back by one straight line: -1 to the
 * lowest integer, 1 to the highest, and 0, which lies between two integers, to 0. `nearest` rounds ties to
 * even, whatever the caller's mode; products and sums of the Split forms are rounded one by one in the caller's
 * mode. NaN stores the lowest integer. Elements of 24 bits are packed, three bytes each, low byte first, in an
 * array of Kvr8u.
 *
 * Channels and the interleaved array do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null interleaved array, ::kvrStatusBadLength for
 * `nChannels` below 1, then for `chanLen` below 1, ::kvrStatusNullPointer for a null array of pointers, then
 * for a null pointer in it.
 * @{
 */

KVRS_API KvrStatus kvrsJoin_32f16s_D2L(const Kvr32f* const* src, int nChannels, int chanLen,
                                       Kvr16s* dst) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsJoinScaled_32f16s_D2L(const Kvr32f* const* src, int nChannels, int chanLen,
                                             Kvr16s* dst) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsJoinScaled_32f24s_D2L(const Kvr32f* const* src, int nChannels, int chanLen,
                                             Kvr8u* dst) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSplitScaled_16s32f_D2L(const Kvr16s* src, Kvr32f* const* dst, int nChannels,
                                              int chanLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSplitScaled_24s32f_D2L(const Kvr8u* src, Kvr32f* const* dst, int nChannels,
                                              int chanLen) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
