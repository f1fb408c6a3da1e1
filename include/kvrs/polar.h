/* Magnitude, power and phase of complex numbers; polar coordinates. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_POLAR_H
#define KVRS_POLAR_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup magnitude Magnitude and power
 *
 * | Function     | stores, for i in 0 .. len-1    | types                                                        |
 * |--------------|--------------------------------|--------------------------------------------------------------|
 * | Magnitude    | `dst[i] = sqrt(re^2 + im^2)`   | 16sc 16s 32sc (scaled), 16sc32f 16s32f, 32fc 64fc, 32f 64f   |
 * | PowerSpectr  | `dst[i] = re^2 + im^2`         | 16sc 16s (scaled), 16sc32f 16s32f, 32fc 64fc, 32f 64f        |
 * | MagSquared   | `dst[i] = re^2 + im^2`         | 32sc32s (scaled), 32fc64f                                    |
 *
 * of `src[i]`, or of `srcRe[i]` and `srcIm[i]` in two planes (16s, 16s32f, 32f, 64f).
 *
 * | Types                   | computed                                                  | all but 0    | all 0  |
 * |                         |                                                           | maximum below| above  |
 * |-------------------------|-----------------------------------------------------------|--------------|--------|
 * | Magnitude 16sc 16s      | exact sum in integers, rounded to single precision; its   | -14          | 16     |
 * |                         | root in single precision, scaled; to an integer           |              |        |
 * | Magnitude 32sc          | exact sum in integers, rounded to double precision; its   | -30          | 32     |
 * |                         | root in double precision, scaled; to an integer           |              |        |
 * | MagSquared 32sc32s      | squares and sum in double precision, scaled; to an integer| -30          | 63     |
 * | PowerSpectr 16sc 16s    | exact sum, scaled, ties to even                           | -14          | 31     |
 * | 16sc32f 16s32f          | exact sum in integers, rounded to single precision; its   |              |        |
 * |                         | root in single precision                                  |              |        |
 * | 32fc 32f, 64fc 64f      | squares, sum and root in the precision of the elements    |              |        |
 * | MagSquared 32fc64f      | squares (exact) and sum in double precision               |              |        |
 *
 * Scaling is by 2^(-scaleFactor) and adds no rounding; integers saturate. Every operation is rounded by itself in the
 * caller's mode, the conversion to an integer included; only PowerSpectr on integers is independent of it. With
 * scaleFactor 16, Magnitude on 16-bit parts stores 1 where the sum is above 2^30 and 0 elsewhere, in every mode.
 *
 * A float magnitude is at most one unit in the last place from the correctly rounded one, where neither the sum of
 * the squares nor a square that counts leaves the range of the type: parts beyond the square root of the largest float
 * give infinity, and of parts below the root of the smallest normal one precision is lost. NaN in either part gives
 * NaN; an infinite part gives infinity unless the other is NaN.
 *
 * In planar forms `dst` may be one of the sources if it has their type; otherwise arrays do not overlap. Results
 * are the same at any alignment and in every module.
 *
 * Threads: Magnitude of 32f and 16sc32f may use two from 524,288 elements on, of 16s32f, 16s, 16sc and 32fc from 262,144, of
 * 32sc, 64f and 64fc from 32,768. That changes no result.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space.
 * @{
 */

KVRS_API KvrStatus kvrsMagnitude_16sc_Sfs(const Kvr16sc* src, Kvr16s* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMagnitude_32sc_Sfs(const Kvr32sc* src, Kvr32s* dst, int len,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMagnitude_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dst, int len,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMagnitude_16sc32f(const Kvr16sc* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMagnitude_32fc(const Kvr32fc* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMagnitude_64fc(const Kvr64fc* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMagnitude_16s32f(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr32f* dst,
                                        int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMagnitude_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dst,
                                     int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMagnitude_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dst,
                                     int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsMagSquared_32sc32s_Sfs(const Kvr32sc* src, Kvr32s* dst, int len,
                                              int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMagSquared_32fc64f(const Kvr32fc* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsPowerSpectr_16sc_Sfs(const Kvr16sc* src, Kvr16s* dst, int len,
                                            int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPowerSpectr_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dst, int len,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPowerSpectr_16sc32f(const Kvr16sc* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPowerSpectr_16s32f(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr32f* dst,
                                          int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPowerSpectr_32fc(const Kvr32fc* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPowerSpectr_64fc(const Kvr64fc* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPowerSpectr_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dst,
                                       int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPowerSpectr_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dst,
                                       int len) KVRS_NOEXCEPT;

/** @} */

/** @defgroup phase Phase
 *
 * `dst[i]` is the angle of `src[i]`, or of (`srcRe[i]`, `srcIm[i]`), in radians from -pi to pi: atan2(im, re).
 *
 * | Types                 | stored                                                      | all but 0 extreme below    |
 * |-----------------------|-------------------------------------------------------------|----------------------------|
 * | 32fc 32f, 64fc 64f    | the angle, to less than 2 units in the last place           |                            |
 * | 16sc32f 16s32f        | the same, in single precision                               |                            |
 * | 16sc 16s              | the angle times 2^(-scaleFactor), to nearest with halves    | scaleFactor -28            |
 * | 32sc                  | away from zero, saturated                                   | scaleFactor -20            |
 *
 * "Extreme" is the maximum of the type for a positive angle and the minimum for a negative one. Scaled angles are
 * computed in double precision with an error below 2^-51 of the angle: nothing but an exact value that lies as close
 * to a half can be rounded to the other side. All of this is to nearest, whatever the caller's rounding mode.
 *
 * | re                    | im              | stored                                    |
 * |-----------------------|-----------------|-------------------------------------------|
 * | 0 or -0               | 0, -0           | 0, -0                                     |
 * | positive, infinity    | 0, -0           | 0, -0                                     |
 * | negative, -infinity   | 0, -0           | pi, -pi                                   |
 * | infinity, -infinity   | finite          | 0, pi with the sign of im                 |
 * | finite                | infinity        | pi/2 with the sign of im                  |
 * | infinity, -infinity   | infinity        | pi/4, 3*pi/4 with the sign of im          |
 * | NaN in either part    |                 | NaN                                       |
 *
 * In planar forms `dst` may be one of the sources if it has their type; otherwise arrays do not overlap. Floats may
 * differ between modules in their last bit, as some fuse products and sums; alignment and length change nothing.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space.
 * @{
 */

KVRS_API KvrStatus kvrsPhase_16sc_Sfs(const Kvr16sc* src, Kvr16s* dst, int len,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPhase_32sc_Sfs(const Kvr32sc* src, Kvr32s* dst, int len,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPhase_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPhase_16sc32f(const Kvr16sc* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPhase_32fc(const Kvr32fc* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPhase_64fc(const Kvr64fc* src, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPhase_16s32f(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr32f* dst,
                                    int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPhase_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dst,
                                 int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPhase_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dst,
                                 int len) KVRS_NOEXCEPT;

/** @} */

/** @defgroup polar Polar coordinates
 *
 * | Function    | stores, for i in 0 .. len-1                                                        |
 * |-------------|------------------------------------------------------------------------------------|
 * | CartToPolar | `dstMag[i]`, `dstPhase[i]`: what Magnitude and Phase store for the same source     |
 * | PolarToCart | re = `srcMag[i] * cos(srcPhase[i])`, im = `srcMag[i] * sin(srcPhase[i])`           |
 *
 * The Cartesian side is complex (32fc, 64fc, 16sc, 32sc) or two planes (32f, 64f).
 *
 * PolarToCart:
 *
 * | Types       | Phase                                      | Results                                                   |
 * |-------------|--------------------------------------------|-----------------------------------------------------------|
 * | 32fc 32f    | radians                                    | error below 0.6 units in the last place, all finite phases|
 * | 64fc 64f    | radians                                    | error below 2 units in the last place, all finite phases  |
 * | 16sc 32sc   | whole radians                              | halves away from zero, saturated                          |
 * | 16sc_Sfs    | `srcPhase[i] * 2^(-phaseScaleFactor)`      | of magnitudes `srcMag[i] * 2^(-magScaleFactor)`, halves   |
 * |             | radians, the factor limited to +-1000      | away from zero, saturated; the factor is limited to +-31  |
 *
 * So a phase that CartToPolar stored with phaseScaleFactor -13 is read with phaseScaleFactor 13, and a magnitude
 * likewise. Integers are computed in double precision: the error before rounding is below 2^-50 of the magnitude, and
 * nothing but an exact value that lies as close to a half can be rounded to the other side. An infinite or NaN phase
 * gives NaN in both parts; infinite magnitudes are multiplied as such. All of this is to nearest, whatever the caller's
 * rounding mode; the magnitudes of CartToPolar follow it, as Magnitude does.
 *
 * In the planar forms of PolarToCart a destination may be a source; otherwise arrays do not overlap, and the two
 * destinations never do. Floats may differ between modules in their last bit, as some fuse products and sums.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space.
 * kvrsCartToPolar_16sc_Sfs is kvrsMagnitude_16sc_Sfs, and if that succeeds kvrsPhase_16sc_Sfs, each with its own
 * tests: `dstPhase` is looked at last, when `dstMag` has been written.
 * @{
 */

KVRS_API KvrStatus kvrsCartToPolar_32fc(const Kvr32fc* src, Kvr32f* dstMag, Kvr32f* dstPhase,
                                        int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCartToPolar_64fc(const Kvr64fc* src, Kvr64f* dstMag, Kvr64f* dstPhase,
                                        int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCartToPolar_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dstMag,
                                       Kvr32f* dstPhase, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCartToPolar_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dstMag,
                                       Kvr64f* dstPhase, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsCartToPolar_16sc_Sfs(const Kvr16sc* src, Kvr16s* dstMag, Kvr16s* dstPhase, int len,
                                            int magScaleFactor, int phaseScaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsPolarToCart_32fc(const Kvr32f* srcMag, const Kvr32f* srcPhase, Kvr32fc* dst,
                                        int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPolarToCart_64fc(const Kvr64f* srcMag, const Kvr64f* srcPhase, Kvr64fc* dst,
                                        int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPolarToCart_32f(const Kvr32f* srcMag, const Kvr32f* srcPhase, Kvr32f* dstRe,
                                       Kvr32f* dstIm, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPolarToCart_64f(const Kvr64f* srcMag, const Kvr64f* srcPhase, Kvr64f* dstRe,
                                       Kvr64f* dstIm, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPolarToCart_16sc_Sfs(const Kvr16s* srcMag, const Kvr16s* srcPhase, Kvr16sc* dst,
                                            int len, int magScaleFactor, int phaseScaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPolarToCart_16sc(const Kvr16s* srcMag, const Kvr16s* srcPhase, Kvr16sc* dst,
                                        int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsPolarToCart_32sc(const Kvr32s* srcMag, const Kvr32s* srcPhase, Kvr32sc* dst,
                                        int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
