/* Triangles. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_TRIANGLE_H
#define KVRS_TRIANGLE_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup triangle Triangles
 *
 * A wave that falls linearly from magn at phase 0 to -magn at phase L2 = pi + asym and rises back to magn at 2 pi, for
 * L1 = pi - asym: a symmetric triangle with `asym` 0, a sawtooth at the ends of its range. The imaginary parts of complex
 * samples are a second wave of the same shape, with the phase phase + (2 pi + L2) / 2.
 *
 * | Argument | Range                                                                        |
 * |----------|------------------------------------------------------------------------------|
 * | magn     | above 0                                                                      |
 * | rFreq    | 0 or more and below 0.5, in turns a sample: 0.5 is half of the sampling rate |
 * | asym     | in radians, -3.141592653589793 or more and below 3.141592653589793           |
 * | phase    | in radians, 0 or more and below 6.283185307179586, compared as a double      |
 *
 * All is computed in double precision. With K = 12.566370614359172 * magn, a step is -(K * rFreq) / L2 where the wave
 * falls and (K * rFreq) / L1 where it rises. The first value is (1 - (phase + phase) / L2) * magn, or, with `phase` from
 * L2 on, (((phase - L2) * 2) / L1 - 1) * magn. Each sample is the last one and the step of its leg:
 *
 * - A value above magn on a rising leg becomes r = -L1/L2 * value + (magn + magn * L1/L2), and the wave falls. Where r is
 *   not -magn or more, a whole falling leg has been overstepped: K / L1 is subtracted and the wave goes on rising.
 * - A value below -magn on a falling leg becomes r = -L2/L1 * value - (magn * L2/L1 + magn), and the wave rises. Where r is
 *   not magn or less, K / L2 is added and the wave goes on falling.
 *
 * Singles are rounded; integers are rounded to nearest, halves away from zero.
 *
 * ### Triangle_Direct
 *
 * `*phase` is the phase of the first sample and becomes that of the sample behind the last one, as kvrsTone_Direct_32f()
 * hands it on.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for `phase`, ::kvrStatusBadTriangleMagnitude,
 * ::kvrStatusBadTriangleFreq, ::kvrStatusBadTriangleAsym, ::kvrStatusBadTrianglePhase, ::kvrStatusNullPointer for `dst`,
 * ::kvrStatusBadLength for `len` below 1. NaN is refused.
 *
 * ### TriangleQ15
 *
 * Frequency, phase and asymmetry are times 2^15: `rFreqQ15` in 0 .. 16383, `phaseQ15` in 0 .. 205886, `asymQ15` in
 * -102943 .. 102943, `magn` from 1 on. kvrsTriangleQ15_Direct_16s() makes one piece. A state carries the wave from call to
 * call, so that pieces of any lengths are one wave; it is made by kvrsTriangleInitQ15_16s() in memory of the size that
 * kvrsTriangleGetStateSizeQ15_16s() tells, or by kvrsTriangleInitAllocQ15_16s(), which allocates. kvrsTriangleFree()
 * releases what InitAlloc has made and leaves other states as they are. A state holds no addresses and may be copied as
 * bytes. It is changed by every call and must not be used by two calls at the same time.
 *
 * | Function    | Errors, in the order tested |
 * |-------------|-----------------------------|
 * | GetStateSize | ::kvrStatusNullPointer |
 * | Init, InitAlloc | ::kvrStatusNullPointer for `state`, ::kvrStatusBadTriangleMagnitude, ::kvrStatusBadTriangleFreq, ::kvrStatusBadTrianglePhase, ::kvrStatusBadTriangleAsym; InitAlloc then ::kvrStatusOutOfMemory |
 * | TriangleQ15_16s | ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1, ::kvrStatusContextMismatch |
 * | TriangleQ15_Direct_16s | ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1, then those of Init |
 * | Free        | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 * @{
 */

KVRS_API KvrStatus kvrsTriangle_Direct_16s(Kvr16s* dst, int len, Kvr16s magn, Kvr32f rFreq, Kvr32f asym,
                                           Kvr32f* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTriangle_Direct_16sc(Kvr16sc* dst, int len, Kvr16s magn, Kvr32f rFreq, Kvr32f asym,
                                            Kvr32f* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTriangle_Direct_32f(Kvr32f* dst, int len, Kvr32f magn, Kvr32f rFreq, Kvr32f asym,
                                           Kvr32f* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTriangle_Direct_32fc(Kvr32fc* dst, int len, Kvr32f magn, Kvr32f rFreq, Kvr32f asym,
                                            Kvr32f* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTriangle_Direct_64f(Kvr64f* dst, int len, Kvr64f magn, Kvr64f rFreq, Kvr64f asym,
                                           Kvr64f* phase) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTriangle_Direct_64fc(Kvr64fc* dst, int len, Kvr64f magn, Kvr64f rFreq, Kvr64f asym,
                                            Kvr64f* phase) KVRS_NOEXCEPT;

typedef struct KvrsTriangleState_16s KvrsTriangleState_16s;

KVRS_API KvrStatus kvrsTriangleGetStateSizeQ15_16s(int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTriangleInitQ15_16s(KvrsTriangleState_16s* state, Kvr16s magn, Kvr16s rFreqQ15,
                                           Kvr32s phaseQ15, Kvr32s asymQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTriangleInitAllocQ15_16s(KvrsTriangleState_16s** state, Kvr16s magn, Kvr16s rFreqQ15,
                                                Kvr32s phaseQ15, Kvr32s asymQ15) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTriangleFree(KvrsTriangleState_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTriangleQ15_16s(Kvr16s* dst, int len, KvrsTriangleState_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsTriangleQ15_Direct_16s(Kvr16s* dst, int len, Kvr16s magn, Kvr16s rFreqQ15,
                                              Kvr32s phaseQ15, Kvr32s asymQ15) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
