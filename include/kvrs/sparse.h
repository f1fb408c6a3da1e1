/* Sparse filters.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_SPARSE_H
#define KVRS_SPARSE_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup sparse Sparse FIR and IIR filters
 *
 * Filters of high order with few taps that are not zero, such as echoes, run over a signal that comes in pieces. The work
 * for a sample grows with the number of taps, not with the order:
 *
 *     y[n] = sum over i of nzTaps[i] * x[n - nzTapsPos[i]]                                       FIR
 *     y[n] = sum over i of b[i] * x[n - p[i]] + sum over j of a[j] * y[n - q[j]]                 IIR
 *
 * In the latter `nzTaps` holds the `nzTapsLen1` numbers b and behind them the `nzTapsLen2` numbers a, and `nzTapsPos` the
 * positions p and q in the same way. Feedback is added as it is given: a difference equation with its feedback on the left
 * has the opposite signs.
 *
 * Positions of each list ascend strictly. Those of x begin with 0 or more, those of y with 1 or more. The last position is
 * the order: `order` of a FIR filter, `order1` and `order2` of an IIR filter.
 *
 * A state is made in the caller's memory, of any alignment and the size that GetStateSize tells, and needs no release; taps
 * are changed by another Init. `*state` is set when all has gone well. GetStateSize wants an order of at least 1 for a FIR
 * filter, even where the only position is 0, and takes `nzTapsLen2` 0, which Init does not.
 *
 * `dlyLine` holds the samples before the first one, the newest first: `order` inputs, or `order1` inputs and behind them
 * `order2` outputs. Null stands for silence.
 *
 * `dst` and `src` do not overlap. Sums are single precision; those over x have an order of their own. To them the terms over
 * y are added one by one, those of the highest position first. A state begins with no word, so that a wrong one is not
 * found out; it holds no addresses, and its memory may be copied as bytes to an address with the same remainder modulo 16.
 *
 * | Function                        | Errors, in the order tested |
 * |---------------------------------|-----------------------------|
 * | kvrsFIRSparseGetStateSize_32f() | ::kvrStatusNullPointer, ::kvrStatusBadTapsLength for `nzTapsLen` or `order` below 1, or so large that the size is no `int` |
 * | kvrsFIRSparseInit_32f()         | ::kvrStatusNullPointer, ::kvrStatusBadTapsLength for `nzTapsLen` below 1, ::kvrStatusBadSparseIndex for positions as told above |
 * | kvrsIIRSparseGetStateSize_32f() | ::kvrStatusNullPointer, ::kvrStatusBadIirOrder for `nzTapsLen1` below 1 or `nzTapsLen2` below 0, ::kvrStatusBadSparseIndex for `order1` or `order2` below 0; ::kvrStatusBadIirOrder for a size that is no `int` |
 * | kvrsIIRSparseInit_32f()         | ::kvrStatusNullPointer, ::kvrStatusBadIirOrder for `nzTapsLen1` or `nzTapsLen2` below 1, ::kvrStatusBadSparseIndex |
 * | kvrsFIRSparse_32f(), kvrsIIRSparse_32f() | ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space |
 *
 * A state is changed by every filtering call and must not be used by two calls at the same time.
 * @{
 */

typedef struct KvrsFIRSparseState_32f KvrsFIRSparseState_32f;
typedef struct KvrsIIRSparseState_32f KvrsIIRSparseState_32f;

KVRS_API KvrStatus kvrsFIRSparseGetStateSize_32f(int nzTapsLen, int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSparseInit_32f(KvrsFIRSparseState_32f** state, const Kvr32f* nzTaps,
                                         const int* nzTapsPos, int nzTapsLen, const Kvr32f* dlyLine,
                                         Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSparse_32f(const Kvr32f* src, Kvr32f* dst, int len,
                                     KvrsFIRSparseState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSparseGetStateSize_32f(int nzTapsLen1, int nzTapsLen2, int order1, int order2,
                                                 int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSparseInit_32f(KvrsIIRSparseState_32f** state, const Kvr32f* nzTaps,
                                         const int* nzTapsPos, int nzTapsLen1, int nzTapsLen2,
                                         const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSparse_32f(const Kvr32f* src, Kvr32f* dst, int len,
                                     KvrsIIRSparseState_32f* state) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
