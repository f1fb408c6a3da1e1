/* Division of vectors, of a vector by a scalar and of a scalar by a vector. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_DIVIDE_H
#define KVRS_DIVIDE_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup divide_integer Integer division
 *
 * | Function  | stores, for i in 0 .. len-1, with s = 2^(-scaleFactor)                                |
 * |-----------|---------------------------------------------------------------------------------------|
 * | Div       | `dst[i] = src2[i] / src1[i] * s`; `_ISfs`: `srcDst[i] = srcDst[i] / src[i] * s`       |
 * | Div_Round | the same, rounded by `rndMode`                                                        |
 * | DivC      | `dst[i] = src[i] / val * s`; `_ISfs`: `srcDst[i] = srcDst[i] / val * s`               |
 * | DivCRev   | `dst[i] = val / src[i]`; `_I`: `srcDst[i] = val / srcDst[i]`                          |
 *
 * Mind the order of Div: the first source is the divisor. Results are rounded and then saturated to the range
 * of `dst`. The quotient that is rounded is the exact one, except where the table says otherwise.
 *
 * | Function                | rounded                                        | all by sign | all 0 above |
 * |-------------------------|------------------------------------------------|-------------|-------------|
 * | Div 8u                  | by the current mode                            | below -15   | 8           |
 * | Div 16u                 | by the current mode; below -5 to nearest       | below -31   | 16          |
 * | Div 16s                 | by the current mode; below -5 to nearest       | below -30   | 15          |
 * | Div 16sc                | to nearest                                     | below -32   | 32          |
 * | Div 32s                 | to double precision, then to nearest           | below -62   | 32          |
 * | Div 32s16s              | to nearest                                     | below -29   | 31          |
 * | Div_Round 8u            | by `rndMode`                                   | below -15   | 8           |
 * | Div_Round 16u           | by `rndMode`                                   | below -31   | 16          |
 * | Div_Round 16s           | by `rndMode`                                   | below -30   | 16          |
 * | DivC 8u                 | to nearest                                     | below -15   | 8           |
 * | DivC 16u                | to nearest                                     | below -31   | 16          |
 * | DivC 16s                | single-precision product, by the current mode  | below -30   | 15          |
 * | DivC 16sc               | double-precision product, to nearest           |             |             |
 * | DivCRev 16u             | by the current mode                            |             |             |
 *
 * "By the current mode" means the rounding field of the vector unit's control word, as fesetround() sets it;
 * "to nearest" means ties to even, whatever that field holds. `rndMode` is ::kvrRoundZero, ::kvrRoundNear or
 * ::kvrRoundFinancial. "All by sign" means that every quotient but 0 is stored as the maximum or the minimum
 * of the type, by its sign; "all 0 above", that for a larger scaleFactor every quotient is stored as 0,
 * except those by zero. At these ends the 16s forms of Div and Div_Round differ: with scaleFactor 16
 * kvrsDiv_16s_Sfs stores zeros, and kvrsDiv_Round_16s_Sfs still divides.
 *
 * - Div 16sc below scaleFactor -32 goes by the signs of the parts of `src2[i] * conj(src1[i])`.
 * - Div 32s can differ from the exact quotient, rounded once, only where |result| exceeds 2^20.
 * - DivC 16s rounds 2^(-scaleFactor) / `val` to single precision and then its product with the element,
 *   before it rounds that to an integer: where the exact quotient is a tie, either neighbour may come out.
 * - DivC 16sc multiplies by conj(val) / |val|^2 * 2^(-scaleFactor) in double precision, each product and sum
 *   rounded by itself. Far below scaleFactor -16 these errors show: what is left of a part that should be 0
 *   is scaled up with all others, down to scaleFactor -1000.
 *
 * Division by zero, the other elements being computed as usual:
 *
 * | Type            | 0 / 0  | positive / 0        | negative / 0        |
 * |-----------------|--------|---------------------|---------------------|
 * | 8u, 16u         | 0      | maximum of the type |                     |
 * | 16s, 32s, 32s16s| 0      | maximum of the type | minimum of the type |
 * | 16sc            | (0, 0) | (0, 0)              | (0, 0)              |
 *
 * `dst` may be one of the sources; otherwise they do not overlap.
 *
 * Threads: Div of 8u, 16s, 32s and 32s16s, and Div_Round of 16u and 16s, may use several from 131,072 elements on,
 * Div of 16sc from 32,768, DivCRev from 262,144, Div_Round of 8u from 65,536; Div of 16u and DivC use none. That changes
 * no result.
 *
 * Warning: ::kvrStatusDivByZeroWarn when an element of the divisor was zero.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space, ::kvrStatusDivByZeroError for a `val` of zero in DivC, ::kvrStatusBadRoundMode for any other
 * `rndMode`.
 * @{
 */

KVRS_API KvrStatus kvrsDiv_8u_Sfs(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len,
                                  int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_8u_ISfs(const Kvr8u* src, Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_16u_Sfs(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_16u_ISfs(const Kvr16u* src, Kvr16u* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_16sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, Kvr16sc* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_16sc_ISfs(const Kvr16sc* src, Kvr16sc* srcDst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_32s_ISfs(const Kvr32s* src, Kvr32s* srcDst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_32s16s_Sfs(const Kvr16s* src1, const Kvr32s* src2, Kvr16s* dst, int len,
                                      int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDiv_Round_8u_Sfs(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len,
                                        KvrRoundMode rndMode, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_Round_8u_ISfs(const Kvr8u* src, Kvr8u* srcDst, int len, KvrRoundMode rndMode,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_Round_16u_Sfs(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len,
                                         KvrRoundMode rndMode, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_Round_16u_ISfs(const Kvr16u* src, Kvr16u* srcDst, int len, KvrRoundMode rndMode,
                                          int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_Round_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                                         KvrRoundMode rndMode, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_Round_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len, KvrRoundMode rndMode,
                                          int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDivC_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                                     int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len, int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDivCRev_16u(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivCRev_16u_I(Kvr16u val, Kvr16u* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

/** @defgroup divide_float Floating-point division
 *
 * | Function | stores, for i in 0 .. len-1                                              | types             |
 * |----------|--------------------------------------------------------------------------|-------------------|
 * | Div      | `dst[i] = src2[i] / src1[i]`; `_I`: `srcDst[i] = srcDst[i] / src[i]`     | 32f 64f 32fc 64fc |
 * | DivC     | `dst[i] = src[i] * (1 / val)`; `_I`: `srcDst[i] = srcDst[i] * (1 / val)` | 32f 64f 32fc 64fc |
 * | DivCRev  | `dst[i] = val / src[i]`; `_I`: `srcDst[i] = val / srcDst[i]`             | 32f               |
 *
 * Mind the order of Div: the first source is the divisor. Every operation is rounded by itself to the element
 * type, in the caller's rounding mode, and results are the same in every module.
 *
 * - Real quotients are correctly rounded.
 * - A complex quotient of n by d is computed with `m = d.re * d.re + d.im * d.im` and `r = 1 / m` as
 *   `((n.re * d.re + n.im * d.im) * r, (n.im * d.re - n.re * d.im) * r)`: parts of d beyond the square roots
 *   of the type's range overflow or vanish in m.
 * - DivC rounds the reciprocal of `val`, which costs up to one unit in the last place against a quotient and
 *   is as fast as a product. The rest is kvrsMulC, with its shortcuts: a reciprocal of 1 copies, and one of 0
 *   (`val` infinite) stores zeros. A complex `val` is replaced by `(val.re * r, -val.im * r)`, r as above.
 *
 * | Divisor                | Dividend           | stored                                                    |
 * |------------------------|--------------------|-----------------------------------------------------------|
 * | 0 or -0                | positive, negative | infinity with the sign of the dividend alone              |
 * | 0 or -0                | 0, -0, NaN         | the NaN below                                             |
 * | NaN (real)             | any                | the NaN below                                             |
 * | complex, m = 0         | any                | the NaN below in both parts                               |
 *
 * The NaN has the bits 0x7FBFFFFF, in double precision 0x7FF7FFFFFFFFFFFF: all bits of the fraction but the
 * first. All other elements are computed as usual. No division by zero is carried out.
 *
 * `dst` may be one of the sources; otherwise they do not overlap.
 *
 * Threads: functions on 32f may use two from 524,288 elements on, the others from 131,072. That changes no result.
 *
 * Warning: ::kvrStatusDivByZeroWarn when one of the rows above was met.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len`
 * below 1 or too long for the address space, ::kvrStatusDivByZeroError for a `val` of zero in DivC (complex: whose squared magnitude is zero).
 * @{
 */

KVRS_API KvrStatus kvrsDiv_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst,
                                int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst,
                                int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDiv_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDivC_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_32f_I(Kvr32f val, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_64f(const Kvr64f* src, Kvr64f val, Kvr64f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_64f_I(Kvr64f val, Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsDivCRev_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsDivCRev_32f_I(Kvr32f val, Kvr32f* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
