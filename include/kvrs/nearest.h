/* Search for the nearest value of a table.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_NEAREST_H
#define KVRS_NEAREST_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup nearest Nearest value of a table
 *
 * FindNearest stores, for i in 0 .. len-1, the entry of `table` that is nearest to `src[i]` in `dst[i]`, and its index in
 * `dstIndex[i]`. FindNearestOne does this for one value.
 *
 * The table has `tableLen` entries in ascending order, which is not tested. Of two entries equally near the lower one is
 * taken. Where entries are equal, the neighbours of a value are the last entry that is not above it and the next one; values
 * up to `table[0]` have index 0, and those from the last entry on have the last index.
 *
 * `dst` may be `src`. Otherwise arrays do not overlap.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer; ::kvrStatusBadLength for `len` or `tableLen` below
 * 1.
 * @{
 */

KVRS_API KvrStatus kvrsFindNearest_16u(const Kvr16u* src, Kvr16u* dst, int* dstIndex, int len,
                                       const Kvr16u* table, int tableLen) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFindNearestOne_16u(Kvr16u val, Kvr16u* dstVal, int* dstIndex, const Kvr16u* table,
                                          int tableLen) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
