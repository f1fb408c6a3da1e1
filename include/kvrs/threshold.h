/* Thresholds: elements beyond a level are limited or replaced. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_THRESHOLD_H
#define KVRS_THRESHOLD_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup threshold Thresholds
 *
 * Elements are compared with `level`, strictly: one that equals it is kept. For i in 0 .. len-1, x being `src[i]` (or
 * `srcDst[i]`), `dst[i]` (or `srcDst[i]`) becomes
 *
 * | Function    | of real elements                                               | of complex elements                    |
 * |-------------|----------------------------------------------------------------|----------------------------------------|
 * | GT          | level where x > level                                          | x * (level / \|x\|) where \|x\| > level  |
 * | LT          | level where x < level                                          | x * (level / \|x\|) where \|x\| < level  |
 * | GTVal       | value where x > level                                          | value where \|x\| > level              |
 * | LTVal       | value where x < level                                          | value where \|x\| < level              |
 * | GTAbs       | level with the sign of x where \|x\| > level                   |                                        |
 * | LTAbs       | level with the sign bit of x where \|x\| < level               |                                        |
 * | LTValGTVal  | valueLT where x < levelLT, valueGT where x > levelGT           |                                        |
 * | LTInv       | 1 / (the larger of \|x\| and level, with the sign bit of x)    | 1 / x, or 1 / (x * (level / \|x\|)) where \|x\| < level |
 *
 * and x elsewhere. Threshold itself is GT for a `relOp` of ::kvrCmpGreater and LT for ::kvrCmpLess.
 *
 * | Function                             | real types       | complex types   |
 * |--------------------------------------|------------------|-----------------|
 * | Threshold, GTVal, LTVal              | 16s 32f 64f      | 16sc 32fc 64fc  |
 * | GT, LT                               | 16s 32s 32f 64f  | 16sc 32fc 64fc  |
 * | GTAbs, LTAbs, LTValGTVal             | 16s 32s 32f 64f  |                 |
 * | LTInv                                | 32f 64f          | 32fc 64fc       |
 *
 * **Real elements.** The lowest integer has a magnitude of one more than the highest: GTAbs stores -level for it. A NaN is
 * not beyond any level. LTAbs stores -level for -0.0, unless level is 0.
 *
 * **Complex elements** are compared by re^2 + im^2 with level^2: 16sc exactly, in integers; 32fc and 64fc in their own
 * precision, every product and sum rounded by itself, so that what under- or overflows there compares as 0 or infinity.
 * The factor level / |x| is level over the root of that sum, in single precision for 16sc, and both parts are multiplied
 * by it; 16sc parts are then rounded to nearest, ties to even. LT keeps elements whose sum is 0.
 *
 * **Inverses.** Elements of zero do not occur where `level` is above 0; a complex zero counts as a positive real one. With a
 * `level` of 0 a zero stores infinity with its sign bit, a complex zero (+infinity, 0), and the call warns. Complex inverses
 * are computed as (re, -im) / s, with s = re^2 + im^2, or sqrt(s) * level where s is below level^2; a sum that underflows to
 * 0 counts as zero. Divisions and roots are rounded correctly, each by itself.
 *
 * `dst` is `src` or does not overlap it. Results are the same at any alignment and in every module, in the caller's rounding
 * mode; 16sc is independent of it.
 *
 * Threads: LTInv of 32f may use two from 1,048,576 elements on, of 64f and 32fc from 262,144, of 64fc from 65,536. That
 * changes no result.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer; ::kvrStatusBadLength for `len` below 1 or too
 * long for the address space;
 * ::kvrStatusBadArg for a `relOp` that is neither; ::kvrStatusNegativeThreshold for a `level` below 0 of complex elements
 * and in GTAbs, LTAbs and LTInv; ::kvrStatusThresholdOrder for `levelLT` above `levelGT`.
 *
 * Warnings, of LTInv with a `level` of 0 that has met a zero: ::kvrStatusInvZeroWarn for vectors shorter than
 *
 * | 32f   | 32fc, 64f | 64fc |
 * |------:|----------:|-----:|
 * | 8,192 | 2,048     | 512  |
 *
 * and ::kvrStatusDivByZeroWarn from that length on.
 * @{
 */

KVRS_API KvrStatus kvrsThreshold_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level,
                                     KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_16s_I(Kvr16s* srcDst, int len, Kvr16s level, KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr16s level,
                                      KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_16sc_I(Kvr16sc* srcDst, int len, Kvr16s level, KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level,
                                     KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_32f_I(Kvr32f* srcDst, int len, Kvr32f level, KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f level,
                                      KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level, KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level,
                                     KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_64f_I(Kvr64f* srcDst, int len, Kvr64f level, KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64f level,
                                      KvrCmpOp relOp) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level, KvrCmpOp relOp) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsThreshold_GT_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_16s_I(Kvr16s* srcDst, int len, Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_16sc(const Kvr16sc* src, Kvr16sc* dst, int len,
                                         Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_16sc_I(Kvr16sc* srcDst, int len, Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_32f_I(Kvr32f* srcDst, int len, Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_32fc(const Kvr32fc* src, Kvr32fc* dst, int len,
                                         Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_32s(const Kvr32s* src, Kvr32s* dst, int len, Kvr32s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_32s_I(Kvr32s* srcDst, int len, Kvr32s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_64f_I(Kvr64f* srcDst, int len, Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_64fc(const Kvr64fc* src, Kvr64fc* dst, int len,
                                         Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GT_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsThreshold_LT_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_16s_I(Kvr16s* srcDst, int len, Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_16sc(const Kvr16sc* src, Kvr16sc* dst, int len,
                                         Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_16sc_I(Kvr16sc* srcDst, int len, Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_32f_I(Kvr32f* srcDst, int len, Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_32fc(const Kvr32fc* src, Kvr32fc* dst, int len,
                                         Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_32s(const Kvr32s* src, Kvr32s* dst, int len, Kvr32s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_32s_I(Kvr32s* srcDst, int len, Kvr32s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_64f_I(Kvr64f* srcDst, int len, Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_64fc(const Kvr64fc* src, Kvr64fc* dst, int len,
                                         Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LT_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsThreshold_GTVal_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level,
                                           Kvr16s value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_16s_I(Kvr16s* srcDst, int len, Kvr16s level,
                                             Kvr16s value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr16s level,
                                            Kvr16sc value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_16sc_I(Kvr16sc* srcDst, int len, Kvr16s level,
                                              Kvr16sc value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level,
                                           Kvr32f value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_32f_I(Kvr32f* srcDst, int len, Kvr32f level,
                                             Kvr32f value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f level,
                                            Kvr32fc value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level,
                                              Kvr32fc value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level,
                                           Kvr64f value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_64f_I(Kvr64f* srcDst, int len, Kvr64f level,
                                             Kvr64f value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64f level,
                                            Kvr64fc value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTVal_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level,
                                              Kvr64fc value) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsThreshold_LTVal_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level,
                                           Kvr16s value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_16s_I(Kvr16s* srcDst, int len, Kvr16s level,
                                             Kvr16s value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr16s level,
                                            Kvr16sc value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_16sc_I(Kvr16sc* srcDst, int len, Kvr16s level,
                                              Kvr16sc value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level,
                                           Kvr32f value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_32f_I(Kvr32f* srcDst, int len, Kvr32f level,
                                             Kvr32f value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f level,
                                            Kvr32fc value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level,
                                              Kvr32fc value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level,
                                           Kvr64f value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_64f_I(Kvr64f* srcDst, int len, Kvr64f level,
                                             Kvr64f value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64f level,
                                            Kvr64fc value) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTVal_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level,
                                              Kvr64fc value) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsThreshold_GTAbs_16s(const Kvr16s* src, Kvr16s* dst, int len,
                                           Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTAbs_16s_I(Kvr16s* srcDst, int len, Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTAbs_32f(const Kvr32f* src, Kvr32f* dst, int len,
                                           Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTAbs_32f_I(Kvr32f* srcDst, int len, Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTAbs_32s(const Kvr32s* src, Kvr32s* dst, int len,
                                           Kvr32s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTAbs_32s_I(Kvr32s* srcDst, int len, Kvr32s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTAbs_64f(const Kvr64f* src, Kvr64f* dst, int len,
                                           Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_GTAbs_64f_I(Kvr64f* srcDst, int len, Kvr64f level) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsThreshold_LTAbs_16s(const Kvr16s* src, Kvr16s* dst, int len,
                                           Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTAbs_16s_I(Kvr16s* srcDst, int len, Kvr16s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTAbs_32f(const Kvr32f* src, Kvr32f* dst, int len,
                                           Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTAbs_32f_I(Kvr32f* srcDst, int len, Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTAbs_32s(const Kvr32s* src, Kvr32s* dst, int len,
                                           Kvr32s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTAbs_32s_I(Kvr32s* srcDst, int len, Kvr32s level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTAbs_64f(const Kvr64f* src, Kvr64f* dst, int len,
                                           Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTAbs_64f_I(Kvr64f* srcDst, int len, Kvr64f level) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsThreshold_LTValGTVal_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s levelLT,
                                                Kvr16s valueLT, Kvr16s levelGT, Kvr16s valueGT) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTValGTVal_16s_I(Kvr16s* srcDst, int len, Kvr16s levelLT, Kvr16s valueLT,
                                                  Kvr16s levelGT, Kvr16s valueGT) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTValGTVal_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f levelLT,
                                                Kvr32f valueLT, Kvr32f levelGT, Kvr32f valueGT) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTValGTVal_32f_I(Kvr32f* srcDst, int len, Kvr32f levelLT, Kvr32f valueLT,
                                                  Kvr32f levelGT, Kvr32f valueGT) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTValGTVal_32s(const Kvr32s* src, Kvr32s* dst, int len, Kvr32s levelLT,
                                                Kvr32s valueLT, Kvr32s levelGT, Kvr32s valueGT) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTValGTVal_32s_I(Kvr32s* srcDst, int len, Kvr32s levelLT, Kvr32s valueLT,
                                                  Kvr32s levelGT, Kvr32s valueGT) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTValGTVal_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f levelLT,
                                                Kvr64f valueLT, Kvr64f levelGT, Kvr64f valueGT) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTValGTVal_64f_I(Kvr64f* srcDst, int len, Kvr64f levelLT, Kvr64f valueLT,
                                                  Kvr64f levelGT, Kvr64f valueGT) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsThreshold_LTInv_32f(const Kvr32f* src, Kvr32f* dst, int len,
                                           Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTInv_32f_I(Kvr32f* srcDst, int len, Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTInv_32fc(const Kvr32fc* src, Kvr32fc* dst, int len,
                                            Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTInv_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTInv_64f(const Kvr64f* src, Kvr64f* dst, int len,
                                           Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTInv_64f_I(Kvr64f* srcDst, int len, Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTInv_64fc(const Kvr64fc* src, Kvr64fc* dst, int len,
                                            Kvr64f level) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsThreshold_LTInv_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
