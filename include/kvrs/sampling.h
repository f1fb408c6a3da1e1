/* Samples put between others, and taken out. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_SAMPLING_H
#define KVRS_SAMPLING_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup sampling Changing the sampling rate without a filter
 *
 * SampleUp puts zeros between samples:
 *
 *     dst[phase + i*factor] = src[i] for i from 0 to srcLen-1, and 0 elsewhere, up to *dstLen = srcLen*factor
 *
 * `*phase` stays as it is. SampleDown keeps every factor-th sample:
 *
 *     dst[n] = src[phase + n*factor] while phase + n*factor is below srcLen
 *
 * `*dstLen` receives the number of samples kept, which may be 0, and `*phase` the place of the next sample to keep in the
 * samples that follow, so that a signal cut into pieces gives what it gives in one. With a factor of 1 both copy.
 *
 * `dst` and `src` do not overlap. The complex forms move both parts. Elements are copied as they are.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer, ::kvrStatusBadLength for `srcLen` below 1,
 * ::kvrStatusBadSampleFactor for a factor below 1, ::kvrStatusBadSamplePhase for a `*phase` that is below 0 or not below
 * the factor.
 * @{
 */

KVRS_API KvrStatus kvrsSampleUp_16s(const Kvr16s* src, int srcLen, Kvr16s* dst, int* dstLen, int factor,
                                    int* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSampleUp_16sc(const Kvr16sc* src, int srcLen, Kvr16sc* dst, int* dstLen, int factor,
                                     int* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSampleUp_32f(const Kvr32f* src, int srcLen, Kvr32f* dst, int* dstLen, int factor,
                                    int* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSampleUp_32fc(const Kvr32fc* src, int srcLen, Kvr32fc* dst, int* dstLen, int factor,
                                     int* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSampleUp_64f(const Kvr64f* src, int srcLen, Kvr64f* dst, int* dstLen, int factor,
                                    int* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSampleUp_64fc(const Kvr64fc* src, int srcLen, Kvr64fc* dst, int* dstLen, int factor,
                                     int* phase) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsSampleDown_16s(const Kvr16s* src, int srcLen, Kvr16s* dst, int* dstLen, int factor,
                                      int* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSampleDown_16sc(const Kvr16sc* src, int srcLen, Kvr16sc* dst, int* dstLen, int factor,
                                       int* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSampleDown_32f(const Kvr32f* src, int srcLen, Kvr32f* dst, int* dstLen, int factor,
                                      int* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSampleDown_32fc(const Kvr32fc* src, int srcLen, Kvr32fc* dst, int* dstLen, int factor,
                                       int* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSampleDown_64f(const Kvr64f* src, int srcLen, Kvr64f* dst, int* dstLen, int factor,
                                      int* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSampleDown_64fc(const Kvr64fc* src, int srcLen, Kvr64fc* dst, int* dstLen, int factor,
                                       int* phase) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
