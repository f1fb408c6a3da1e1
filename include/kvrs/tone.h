/* Tones. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_TONE_H
#define KVRS_TONE_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup tone Tones
 *
 * A cosine or, of complex samples, a complex exponential, for n in 0 .. len-1 with w = rFreq * 6.283185307179586 in double
 * precision:
 *
 * | Elements         | stored                                                           |
 * |------------------|------------------------------------------------------------------|
 * | 16s, 32f, 64f    | `dst[n] = magn * cos(w * n + phase)`                              |
 * | 16sc, 32fc, 64fc | `dst[n] = magn * (cos(w * n + phase) + i * sin(w * n + phase))`   |
 *
 * | Argument | Range                                                                   |
 * |----------|-------------------------------------------------------------------------|
 * | magn     | above 0                                                                 |
 * | rFreq    | 0 or more and below 0.5, in turns a sample: 0.5 is half of the sampling rate |
 * | phase    | in radians, 0 or more and below 6.283185307179586 as a double           |
 *
 * ### Tone_Direct
 *
 * `*phase` is the phase of the first sample and becomes that of the sample behind the last one, so that the next call goes
 * on with the tone: with t = len * w + phase, it is t - floor(t * 0.15915494309189535) * 6.283185307179586 in double
 * precision, rounded to the type of `phase`; 0 where the rounding has left the range.
 *
 * Any `hint` but ::kvrHintFast runs one recurrence in double precision. With c = 2 * cos(w) and M = c * c - 2,
 *
 *     x[0] = magn * cos(phase), x[1] = magn * cos(phase + w), x[2] = c * x[1] - x[0], x[3] = c * x[2] - x[1]
 *     x[n+2] = M * x[n] - x[n-2] from there on
 *
 * and the same with sines for the imaginary parts. A sample is x[n] rounded to single, or truncated toward zero to an
 * integer. After n samples x is off by magn * n * 1e-15 * min(n, 1 / |sin(2w)|) at the most.
 *
 * ::kvrHintFast starts anew every 1,024 samples, from x[i] = magn * cos(w * i + phase) and its successor, continues
 * x[n] = c * x[n-1] - x[n-2] in double precision, and then runs
 *
 * | Elements  | precision | samples in double | then                                       |
 * |-----------|-----------|-------------------|--------------------------------------------|
 * | 16s, 32f  | single    | 16                | `x[n] = 2 cos(8w) * x[n-8] - x[n-16]`      |
 * | 16sc, 32fc | single   | 8                 | `x[n] = 2 cos(4w) * x[n-4] - x[n-8]`       |
 * | 64f       | double    | 8                 | `x[n] = 2 cos(4w) * x[n-4] - x[n-8]`       |
 * | 64fc      | double    | 4                 | `x[n] = 2 cos(2w) * x[n-2] - x[n-4]`       |
 *
 * with 2 cos(2w) = c*c - 2, 2 cos(4w) = c*c * (c*c - 4) + 2 and 2 cos(8w) = (2 cos(4w))^2 - 2, computed in double precision
 * and rounded to the recurrence's. Integers are truncated toward zero as long as the samples are doubles; those of the
 * recurrence in single precision are rounded to nearest, ties to even, and saturated. In single precision x is off by
 * magn * k * 2^-22 * min(k, 1 / |sin(m * w)|) at the most, in the k-th step of m samples.
 *
 * The cosines that start a recurrence are those of the C library's `long double`, rounded to double.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for `phase`, ::kvrStatusBadToneMagnitude, ::kvrStatusBadToneFreq,
 * ::kvrStatusBadTonePhase, ::kvrStatusNullPointer for `dst`, ::kvrStatusBadLength for `len` below 1. NaN is refused.
 *
 * ### ToneQ15
 *
 * Every sample is a cosine of its own, in double precision and rounded to nearest, halves away from zero: no error grows,
 * and it takes several times as long. Frequency and phase are times 2^15: `rFreqQ15` in 0 .. 16383, `phaseQ15` in
 * 0 .. 205886, `magn` from 1 on.
 *
 * kvrsToneQ15_Direct_16s() makes one piece. A state carries the number of samples from call to call (modulo 2^32), so
 * that pieces of any lengths are one tone; it is made by kvrsToneInitQ15_16s() in memory of the size that
 * kvrsToneGetStateSizeQ15_16s() tells, or by kvrsToneInitAllocQ15_16s(), which allocates. kvrsToneFree() releases what
 * InitAlloc has made and leaves other states as they are. A state holds no addresses and may be copied as bytes. It is
 * changed by every call and must not be used by two calls at the same time.
 *
 * | Function    | Errors, in the order tested |
 * |-------------|-----------------------------|
 * | GetStateSize | ::kvrStatusNullPointer |
 * | Init, InitAlloc | ::kvrStatusNullPointer for `state`, ::kvrStatusBadToneMagnitude, ::kvrStatusBadToneFreq, ::kvrStatusBadTonePhase; InitAlloc then ::kvrStatusOutOfMemory |
 * | ToneQ15_16s | ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1, ::kvrStatusContextMismatch |
 * | ToneQ15_Direct_16s | ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1, then those of Init |
 * | Free        | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 * @{
 */

KVRS_API KvrStatus kvrsTone_Direct_16s(Kvr16s* dst, int len, Kvr16s magn, Kvr32f rFreq, Kvr32f* phase,
                                       KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTone_Direct_16sc(Kvr16sc* dst, int len, Kvr16s magn, Kvr32f rFreq, Kvr32f* phase,
                                        KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTone_Direct_32f(Kvr32f* dst, int len, Kvr32f magn, Kvr32f rFreq, Kvr32f* phase,
                                       KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTone_Direct_32fc(Kvr32fc* dst, int len, Kvr32f magn, Kvr32f rFreq, Kvr32f* phase,
                                        KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTone_Direct_64f(Kvr64f* dst, int len, Kvr64f magn, Kvr64f rFreq, Kvr64f* phase,
                                       KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTone_Direct_64fc(Kvr64fc* dst, int len, Kvr64f magn, Kvr64f rFreq, Kvr64f* phase,
                                        KvrHintAlgorithm hint) KVRS_NOEXCEPT;

typedef struct KvrsToneState_16s KvrsToneState_16s;

KVRS_API KvrStatus kvrsToneGetStateSizeQ15_16s(int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsToneInitQ15_16s(KvrsToneState_16s* state, Kvr16s magn, Kvr16s rFreqQ15,
                                       Kvr32s phaseQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsToneInitAllocQ15_16s(KvrsToneState_16s** state, Kvr16s magn, Kvr16s rFreqQ15,
                                            Kvr32s phaseQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsToneFree(KvrsToneState_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsToneQ15_16s(Kvr16s* dst, int len, KvrsToneState_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsToneQ15_Direct_16s(Kvr16s* dst, int len, Kvr16s magn, Kvr16s rFreqQ15,
                                          Kvr32s phaseQ15) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
