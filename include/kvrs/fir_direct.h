/* Stateless FIR filters. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FIR_DIRECT_H
#define KVRS_FIR_DIRECT_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup fir_direct Stateless FIR filters
 *
 * FIR filters (fir.h) without a state: taps, delay line and the place in it come with every call.
 *
 * ### The delay line
 *
 * `dlyLine` has room for 2*tapsLen samples in their own type. The window, the last tapsLen samples with the oldest first,
 * begins at `*dlyLineIndex`, from 0 to tapsLen-1. A new filter starts with zeros and the index 0.
 *
 * | Function | leaves |
 * |----------|--------|
 * | FIROne, and FIR of integers except FIR_Direct_16s | each sample twice: at the index and tapsLen behind it; the index goes on by one, and from tapsLen to 0 |
 * | kvrsFIR64f_Direct_32f(), kvrsFIR64fc_Direct_32fc() and their forms in place | the same below 256 (128 of complex) samples; else the new window in place of the old one, the index as it was |
 * | FIR of one type, below 64 taps (32f), 32 (64f, 32fc) or 16 (64fc) | while `len` is below tapsLen the same as FIROne; else the last tapsLen-1 samples in `dlyLine[0]` and behind, and the index tapsLen-1 |
 * | FIR of one type with more taps, or in place | the new window in place of the old one, the index as it was |
 * | kvrsFIR_Direct_16s_Sfs(), kvrsFIR_Direct_16s_ISfs() | the window is read with the newest sample first, and left so at `dlyLine[0]`, the index 0 |
 *
 * A delay line is for calls of one row: what one leaves, another may not understand. In the second row it is for calls on
 * one side of that length, unless the index is 0: shorter ones read each sample at the second of its places, too, which
 * longer ones leave as it was.
 *
 * ### Results
 *
 * | Taps | Samples | Sums | Results |
 * |------|---------|------|---------|
 * | 32f, 64f, 32fc, 64fc | the same | the same | |
 * | 64f, 64fc | 32f, 32fc | 64f | rounded once |
 * | 32f | 16s | products of 32f, sums of 64f | times 2^(-scaleFactor), to nearest with ties away from zero, saturated |
 * | 32fc | 16sc | products of 32f, sums of 64f | times 2^(-scaleFactor), to nearest with ties to even, saturated |
 * | 64f, 64fc | 16s, 32s, 16sc, 32sc | 64f | the same |
 * | 32s, 32sc | 16s, 16sc | 32 bits, modulo 2^32 | shifted left by tapsFactor - scaleFactor, from -31 to 31, modulo 2^32, or right and rounded to nearest with ties to even, then saturated |
 * | 16s, in Q15 | 16s | 32 bits, modulo 2^32 | the same with the tapsFactor -15 |
 *
 * The forms that end in _I and _ISfs work in place. In all others `dst` does not overlap `src`.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for `src`, `dst` or `srcDst`, ::kvrStatusBadLength for `len` below 1 or too long for the address space,
 * ::kvrStatusNullPointer for `taps`, ::kvrStatusBadTapsLength for `tapsLen` below 1, ::kvrStatusNullPointer for `dlyLine` or
 * `dlyLineIndex`, and where a state is made for the call, which is where the window is replaced, ::kvrStatusOutOfMemory.
 * The index is tested by kvrsFIROne_Direct_16s_Sfs(), kvrsFIR_Direct_16s_Sfs() and their forms in place alone: they return
 * ::kvrStatusBadDelayIndex last, before memory is asked for; the FIR form tests all pointers first.
 * @{
 */

KVRS_API KvrStatus kvrsFIROne32f_Direct_16s_ISfs(Kvr16s* srcDst, const Kvr32f* taps, int tapsLen,
                                                 Kvr16s* dlyLine, int* dlyLineIndex,
                                                 int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32f_Direct_16s_Sfs(Kvr16s src, Kvr16s* dst, const Kvr32f* taps, int tapsLen,
                                                Kvr16s* dlyLine, int* dlyLineIndex,
                                                int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32fc_Direct_16sc_ISfs(Kvr16sc* srcDst, const Kvr32fc* taps, int tapsLen,
                                                   Kvr16sc* dlyLine, int* dlyLineIndex,
                                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32fc_Direct_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, const Kvr32fc* taps, int tapsLen,
                                                  Kvr16sc* dlyLine, int* dlyLineIndex,
                                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32s_Direct_16s_ISfs(Kvr16s* srcDst, const Kvr32s* taps, int tapsLen,
                                                 int tapsFactor, Kvr16s* dlyLine, int* dlyLineIndex,
                                                 int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32s_Direct_16s_Sfs(Kvr16s src, Kvr16s* dst, const Kvr32s* taps, int tapsLen,
                                                int tapsFactor, Kvr16s* dlyLine, int* dlyLineIndex,
                                                int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32sc_Direct_16sc_ISfs(Kvr16sc* srcDst, const Kvr32sc* taps, int tapsLen,
                                                   int tapsFactor, Kvr16sc* dlyLine, int* dlyLineIndex,
                                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32sc_Direct_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, const Kvr32sc* taps, int tapsLen,
                                                  int tapsFactor, Kvr16sc* dlyLine, int* dlyLineIndex,
                                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64f_Direct_16s_ISfs(Kvr16s* srcDst, const Kvr64f* taps, int tapsLen,
                                                 Kvr16s* dlyLine, int* dlyLineIndex,
                                                 int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64f_Direct_16s_Sfs(Kvr16s src, Kvr16s* dst, const Kvr64f* taps, int tapsLen,
                                                Kvr16s* dlyLine, int* dlyLineIndex,
                                                int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64f_Direct_32f(Kvr32f src, Kvr32f* dst, const Kvr64f* taps, int tapsLen,
                                            Kvr32f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64f_Direct_32f_I(Kvr32f* srcDst, const Kvr64f* taps, int tapsLen,
                                              Kvr32f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64f_Direct_32s_ISfs(Kvr32s* srcDst, const Kvr64f* taps, int tapsLen,
                                                 Kvr32s* dlyLine, int* dlyLineIndex,
                                                 int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64f_Direct_32s_Sfs(Kvr32s src, Kvr32s* dst, const Kvr64f* taps, int tapsLen,
                                                Kvr32s* dlyLine, int* dlyLineIndex,
                                                int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64fc_Direct_16sc_ISfs(Kvr16sc* srcDst, const Kvr64fc* taps, int tapsLen,
                                                   Kvr16sc* dlyLine, int* dlyLineIndex,
                                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64fc_Direct_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, const Kvr64fc* taps, int tapsLen,
                                                  Kvr16sc* dlyLine, int* dlyLineIndex,
                                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64fc_Direct_32fc(Kvr32fc src, Kvr32fc* dst, const Kvr64fc* taps, int tapsLen,
                                              Kvr32fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64fc_Direct_32fc_I(Kvr32fc* srcDst, const Kvr64fc* taps, int tapsLen,
                                                Kvr32fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64fc_Direct_32sc_ISfs(Kvr32sc* srcDst, const Kvr64fc* taps, int tapsLen,
                                                   Kvr32sc* dlyLine, int* dlyLineIndex,
                                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64fc_Direct_32sc_Sfs(Kvr32sc src, Kvr32sc* dst, const Kvr64fc* taps, int tapsLen,
                                                  Kvr32sc* dlyLine, int* dlyLineIndex,
                                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_Direct_16s_ISfs(Kvr16s* srcDst, const Kvr16s* taps, int tapsLen,
                                              Kvr16s* dlyLine, int* dlyLineIndex,
                                              int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_Direct_16s_Sfs(Kvr16s src, Kvr16s* dst, const Kvr16s* taps, int tapsLen,
                                             Kvr16s* dlyLine, int* dlyLineIndex,
                                             int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_Direct_32f(Kvr32f src, Kvr32f* dst, const Kvr32f* taps, int tapsLen,
                                         Kvr32f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_Direct_32f_I(Kvr32f* srcDst, const Kvr32f* taps, int tapsLen, Kvr32f* dlyLine,
                                           int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_Direct_32fc(Kvr32fc src, Kvr32fc* dst, const Kvr32fc* taps, int tapsLen,
                                          Kvr32fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_Direct_32fc_I(Kvr32fc* srcDst, const Kvr32fc* taps, int tapsLen,
                                            Kvr32fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_Direct_64f(Kvr64f src, Kvr64f* dst, const Kvr64f* taps, int tapsLen,
                                         Kvr64f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_Direct_64f_I(Kvr64f* srcDst, const Kvr64f* taps, int tapsLen, Kvr64f* dlyLine,
                                           int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_Direct_64fc(Kvr64fc src, Kvr64fc* dst, const Kvr64fc* taps, int tapsLen,
                                          Kvr64fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_Direct_64fc_I(Kvr64fc* srcDst, const Kvr64fc* taps, int tapsLen,
                                            Kvr64fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIR32f_Direct_16s_ISfs(Kvr16s* srcDst, int len, const Kvr32f* taps, int tapsLen,
                                              Kvr16s* dlyLine, int* dlyLineIndex,
                                              int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32f_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, const Kvr32f* taps,
                                             int tapsLen, Kvr16s* dlyLine, int* dlyLineIndex,
                                             int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32fc_Direct_16sc_ISfs(Kvr16sc* srcDst, int len, const Kvr32fc* taps, int tapsLen,
                                                Kvr16sc* dlyLine, int* dlyLineIndex,
                                                int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32fc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, const Kvr32fc* taps,
                                               int tapsLen, Kvr16sc* dlyLine, int* dlyLineIndex,
                                               int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32s_Direct_16s_ISfs(Kvr16s* srcDst, int len, const Kvr32s* taps, int tapsLen,
                                              int tapsFactor, Kvr16s* dlyLine, int* dlyLineIndex,
                                              int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32s_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, const Kvr32s* taps,
                                             int tapsLen, int tapsFactor, Kvr16s* dlyLine, int* dlyLineIndex,
                                             int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32sc_Direct_16sc_ISfs(Kvr16sc* srcDst, int len, const Kvr32sc* taps, int tapsLen,
                                                int tapsFactor, Kvr16sc* dlyLine, int* dlyLineIndex,
                                                int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32sc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, const Kvr32sc* taps,
                                               int tapsLen, int tapsFactor, Kvr16sc* dlyLine,
                                               int* dlyLineIndex, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_Direct_16s_ISfs(Kvr16s* srcDst, int len, const Kvr64f* taps, int tapsLen,
                                              Kvr16s* dlyLine, int* dlyLineIndex,
                                              int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, const Kvr64f* taps,
                                             int tapsLen, Kvr16s* dlyLine, int* dlyLineIndex,
                                             int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_Direct_32f(const Kvr32f* src, Kvr32f* dst, int len, const Kvr64f* taps,
                                         int tapsLen, Kvr32f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_Direct_32f_I(Kvr32f* srcDst, int len, const Kvr64f* taps, int tapsLen,
                                           Kvr32f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_Direct_32s_ISfs(Kvr32s* srcDst, int len, const Kvr64f* taps, int tapsLen,
                                              Kvr32s* dlyLine, int* dlyLineIndex,
                                              int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_Direct_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, const Kvr64f* taps,
                                             int tapsLen, Kvr32s* dlyLine, int* dlyLineIndex,
                                             int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_Direct_16sc_ISfs(Kvr16sc* srcDst, int len, const Kvr64fc* taps, int tapsLen,
                                                Kvr16sc* dlyLine, int* dlyLineIndex,
                                                int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, const Kvr64fc* taps,
                                               int tapsLen, Kvr16sc* dlyLine, int* dlyLineIndex,
                                               int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_Direct_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, const Kvr64fc* taps,
                                           int tapsLen, Kvr32fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_Direct_32fc_I(Kvr32fc* srcDst, int len, const Kvr64fc* taps, int tapsLen,
                                             Kvr32fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_Direct_32sc_ISfs(Kvr32sc* srcDst, int len, const Kvr64fc* taps, int tapsLen,
                                                Kvr32sc* dlyLine, int* dlyLineIndex,
                                                int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_Direct_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, int len, const Kvr64fc* taps,
                                               int tapsLen, Kvr32sc* dlyLine, int* dlyLineIndex,
                                               int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_Direct_16s_ISfs(Kvr16s* srcDst, int len, const Kvr16s* taps, int tapsLen,
                                           Kvr16s* dlyLine, int* dlyLineIndex, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, const Kvr16s* taps,
                                          int tapsLen, Kvr16s* dlyLine, int* dlyLineIndex,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_Direct_32f(const Kvr32f* src, Kvr32f* dst, int len, const Kvr32f* taps,
                                      int tapsLen, Kvr32f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_Direct_32f_I(Kvr32f* srcDst, int len, const Kvr32f* taps, int tapsLen,
                                        Kvr32f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_Direct_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, const Kvr32fc* taps,
                                       int tapsLen, Kvr32fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_Direct_32fc_I(Kvr32fc* srcDst, int len, const Kvr32fc* taps, int tapsLen,
                                         Kvr32fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_Direct_64f(const Kvr64f* src, Kvr64f* dst, int len, const Kvr64f* taps,
                                      int tapsLen, Kvr64f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_Direct_64f_I(Kvr64f* srcDst, int len, const Kvr64f* taps, int tapsLen,
                                        Kvr64f* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_Direct_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, const Kvr64fc* taps,
                                       int tapsLen, Kvr64fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_Direct_64fc_I(Kvr64fc* srcDst, int len, const Kvr64fc* taps, int tapsLen,
                                         Kvr64fc* dlyLine, int* dlyLineIndex) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
