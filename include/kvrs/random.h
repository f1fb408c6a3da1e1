/* Pseudo-random numbers.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_RANDOM_H
#define KVRS_RANDOM_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup random Pseudo-random numbers
 *
 * Noise of uniform and of normal distribution, fixed to the bit: one seed gives one sequence, in every module.
 *
 * ### The stream of words
 *
 * Both distributions are made of one stream of 32-bit words w, the sum of a linear congruential generator and a
 * subtract-with-borrow generator. In arithmetic modulo 2^32, a seed s starts it with
 *
 *     lcg = 1131199209, x1 = s, x2 = 69069 * s + 1013904243, x3 = 69069 * x2 + 1013904243, borrow = -1
 *
 * and a step is
 *
 *     t = x2 - x3 + borrow
 *     lcg = 69069 * lcg + 1013904243
 *     n = t, borrow = 0;  or, where t as a signed number is negative, n = t - 18, borrow = -1
 *     x3 = x2, x2 = x1, x1 = n
 *     w = n + lcg, as a signed number
 *
 * It is meant for signals, not for secrets: three words tell all that follow.
 *
 * ### RandUniform
 *
 * A sample is v = w * ((high - low) * 2.3283064365387e-10) + (low + high) * 0.5, about `low` up to `high`. Sum and
 * difference of the bounds are taken in the element type's precision (of integers exactly), all else in double
 * precision, product and sum rounded each.
 *
 * | Function           | v becomes                                                                       |
 * |--------------------|---------------------------------------------------------------------------------|
 * | _8u, _16s          | an integer, truncated toward zero                                               |
 * | _32f, _Direct_32f  | a single, rounded                                                               |
 * | _Direct_64f        | the sample as it is                                                             |
 * | _Direct_16s        | an integer, to nearest and ties to even; the last sample of an odd `len` is truncated |
 *
 * ### RandGauss
 *
 * The polar method (Marsaglia and Bray, A convenient method for generating normal variables, 1964). Two steps of the stream
 * give u = w1 * 4.656612873077e-10 and v = w2 * 4.656612873077e-10, as long as q = u*u + v*v is 1 or above, or 0, the next
 * two. A pair makes two samples, first that of v, then that of u:
 *
 *     radius = sqrt(ln(q) * -2.0 / q)
 *     g = (stdDev * radius) * v + mean
 *
 * in double precision. The logarithm is within 1 unit in the last place and the same in all modules.
 *
 * | Function           | g becomes                                                                       |
 * |--------------------|---------------------------------------------------------------------------------|
 * | _8u, _16s, _Direct_16s | an integer, truncated toward zero, then saturated                           |
 * | _32f, _Direct_32f  | a single: the product is rounded to single, and `mean` added in single precision |
 * | _Direct_64f        | the sample as it is                                                             |
 *
 * ### States
 *
 * A state carries the stream from call to call: pieces of any lengths give what one piece gives. 16s states are made in
 * the caller's memory,
 *
 *     kvrsRandUniformGetSize_16s(&size);
 *     kvrsRandUniformInit_16s(state, low, high, seed);
 *
 * with `state` of `size` bytes, or by InitAlloc, which allocates, as the other types are. Free releases what InitAlloc has
 * made, and nothing else must be given to it. A state may be copied as bytes. It is changed by every call and must not be
 * used by two calls at the same time.
 *
 * A _Direct function has no state but `*seed`: it runs the stream of that seed from its start and leaves the last x1
 * there, the seed of a further call. Successive calls are not one stream, as lcg and borrow start anew.
 * kvrsRandGauss_Direct draws ahead: for `len` samples it takes len / 2 + 1 pairs, whether it uses the last one or not.
 *
 * No value of `low`, `high`, `mean` and `stdDev` is refused: `low` above `high` and a negative `stdDev` run as they are.
 *
 * ### Errors, in the order tested
 *
 * | Function            | Errors |
 * |---------------------|--------|
 * | GetSize, Init       | ::kvrStatusNullPointer |
 * | InitAlloc           | ::kvrStatusNullPointer, ::kvrStatusOutOfMemory |
 * | with a state        | ::kvrStatusNullPointer for `dst` or `state`, ::kvrStatusBadLength for `len` below 1 or too long for the address space, ::kvrStatusContextMismatch for the state of another type or distribution |
 * | Direct              | ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space |
 * | Free                | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 * @{
 */

typedef struct KvrsRandUniState_8u KvrsRandUniState_8u;
typedef struct KvrsRandUniState_16s KvrsRandUniState_16s;
typedef struct KvrsRandUniState_32f KvrsRandUniState_32f;
typedef struct KvrsRandGaussState_8u KvrsRandGaussState_8u;
typedef struct KvrsRandGaussState_16s KvrsRandGaussState_16s;
typedef struct KvrsRandGaussState_32f KvrsRandGaussState_32f;

KVRS_API KvrStatus kvrsRandUniformGetSize_16s(int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniformInit_16s(KvrsRandUniState_16s* state, Kvr16s low, Kvr16s high,
                                           Kvr32u seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniformInitAlloc_8u(KvrsRandUniState_8u** state, Kvr8u low, Kvr8u high,
                                               Kvr32u seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniformInitAlloc_16s(KvrsRandUniState_16s** state, Kvr16s low, Kvr16s high,
                                                Kvr32u seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniformInitAlloc_32f(KvrsRandUniState_32f** state, Kvr32f low, Kvr32f high,
                                                Kvr32u seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniformFree_8u(KvrsRandUniState_8u* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniformFree_16s(KvrsRandUniState_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniformFree_32f(KvrsRandUniState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniform_8u(Kvr8u* dst, int len, KvrsRandUniState_8u* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniform_16s(Kvr16s* dst, int len, KvrsRandUniState_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniform_32f(Kvr32f* dst, int len, KvrsRandUniState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniform_Direct_16s(Kvr16s* dst, int len, Kvr16s low, Kvr16s high,
                                              Kvr32u* seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniform_Direct_32f(Kvr32f* dst, int len, Kvr32f low, Kvr32f high,
                                              Kvr32u* seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandUniform_Direct_64f(Kvr64f* dst, int len, Kvr64f low, Kvr64f high,
                                              Kvr32u* seed) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsRandGaussGetSize_16s(int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGaussInit_16s(KvrsRandGaussState_16s* state, Kvr16s mean, Kvr16s stdDev,
                                         Kvr32u seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGaussInitAlloc_8u(KvrsRandGaussState_8u** state, Kvr8u mean, Kvr8u stdDev,
                                             Kvr32u seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGaussInitAlloc_16s(KvrsRandGaussState_16s** state, Kvr16s mean, Kvr16s stdDev,
                                              Kvr32u seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGaussInitAlloc_32f(KvrsRandGaussState_32f** state, Kvr32f mean, Kvr32f stdDev,
                                              Kvr32u seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGaussFree_8u(KvrsRandGaussState_8u* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGaussFree_16s(KvrsRandGaussState_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGaussFree_32f(KvrsRandGaussState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGauss_8u(Kvr8u* dst, int len, KvrsRandGaussState_8u* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGauss_16s(Kvr16s* dst, int len, KvrsRandGaussState_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGauss_32f(Kvr32f* dst, int len, KvrsRandGaussState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGauss_Direct_16s(Kvr16s* dst, int len, Kvr16s mean, Kvr16s stdDev,
                                            Kvr32u* seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGauss_Direct_32f(Kvr32f* dst, int len, Kvr32f mean, Kvr32f stdDev,
                                            Kvr32u* seed) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsRandGauss_Direct_64f(Kvr64f* dst, int len, Kvr64f mean, Kvr64f stdDev,
                                            Kvr32u* seed) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
