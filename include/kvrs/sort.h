/* Sorting in place, with permutations, by digits.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_SORT_H
#define KVRS_SORT_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup sort Sorting
 *
 * SortAscend and SortDescend order `srcDst` in place, without memory of their own, in O(n log n) steps for every input.
 * Floats are ordered by their values; zeros by their signs, -0.0 below 0.0; NaN lie beyond the infinities on the side of
 * their sign bit. Every bit pattern is kept.
 *
 * Vectors of 8u are counted; others are sorted by a vectorised quicksort (Wassenberg, Blacher, Giesen, Sanders: Vectorized
 * and performance-portable Quicksort, 2022), which turns into a heap sort when partitions keep failing.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * @{
 */

KVRS_API KvrStatus kvrsSortAscend_8u_I(Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortAscend_16u_I(Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortAscend_16s_I(Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortAscend_32s_I(Kvr32s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortAscend_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortAscend_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortDescend_8u_I(Kvr8u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortDescend_16u_I(Kvr16u* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortDescend_16s_I(Kvr16s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortDescend_32s_I(Kvr32s* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortDescend_32f_I(Kvr32f* srcDst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortDescend_64f_I(Kvr64f* srcDst, int len) KVRS_NOEXCEPT;

/** @} */

/** @defgroup sortindex Sorting with a permutation
 *
 * Orders `srcDst` in place and stores in `dstIndx[i]` the index at which the element that is now at i was before. `len` is
 * the length of both.
 *
 * Not stable, but stated: where keys are equal the permutation is that of the following steps, in every module. The
 * elements that an exchange moves take their indices along. Segments wait on a stack, the larger part first.
 *
 * 1. A segment of at most 9 elements: the last of its largest elements changes places with the segment's last element,
 *    which then no longer belongs to it, until it is empty. (Descending: the last of the smallest.)
 * 2. A longer one of n elements, from `first` to `last`, with m = first + n / 2. Integers: if a[first] < a[first + 1],
 *    they change places (descending: if a[last] < a[last - 1]). Then a[first] and a[m], a[m] and a[last], a[first] and
 *    a[m] change places, each if they are in the wrong order. The pivot is a[m].
 * 3. From first + 1 up, past elements that do not come behind the pivot, and from `last` down, past those that do; where
 *    both stop, the elements change places, until they have met.
 * 4. What then equals the pivot at the end of the lower part belongs to neither part.
 *
 * Sequences made to defeat the choice of the pivot: where all keys differ, there is one permutation only, and what remains
 * after 8 n log2 n steps is left to a heap sort, so that these take O(n log n) as well. Where keys are equal among them,
 * the stated steps are taken, all of them, whatever their number.
 *
 * Floats: NaN fail every comparison, and so the steps above may leave them anywhere and other elements unordered between
 * them; zeros of both signs are equal.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1.
 * @{
 */

KVRS_API KvrStatus kvrsSortIndexAscend_8u_I(Kvr8u* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexAscend_16u_I(Kvr16u* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexAscend_16s_I(Kvr16s* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexAscend_32s_I(Kvr32s* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexAscend_32f_I(Kvr32f* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexAscend_64f_I(Kvr64f* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexDescend_8u_I(Kvr8u* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexDescend_16u_I(Kvr16u* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexDescend_16s_I(Kvr16s* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexDescend_32s_I(Kvr32s* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexDescend_32f_I(Kvr32f* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortIndexDescend_64f_I(Kvr64f* srcDst, Kvr32s* dstIndx, int len) KVRS_NOEXCEPT;

/** @} */

/** @defgroup sortradix Sorting by digits
 *
 * Order `srcDst` by counting digits of 8, 10 and 11 bits, with `buffer` for `len` elements of the same type, whose contents
 * are lost. Where the vectors of a module are wide or the array is short, the sort of SortAscend and SortDescend is faster and
 * takes its place: the order is the same, that of floats too.
 *
 * Threads: elements of 32 bits may use two from 1,048,576 of them on, elements of 64 bits from 524,288. That changes no
 * result.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1. The
 * functions on 8u test `buffer` too, which they do not use.
 * @{
 */

KVRS_API KvrStatus kvrsSortRadixAscend_8u_I(Kvr8u* srcDst, Kvr8u* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixAscend_16u_I(Kvr16u* srcDst, Kvr16u* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixAscend_16s_I(Kvr16s* srcDst, Kvr16s* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixAscend_32u_I(Kvr32u* srcDst, Kvr32u* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixAscend_32s_I(Kvr32s* srcDst, Kvr32s* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixAscend_32f_I(Kvr32f* srcDst, Kvr32f* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixAscend_64f_I(Kvr64f* srcDst, Kvr64f* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixDescend_8u_I(Kvr8u* srcDst, Kvr8u* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixDescend_16u_I(Kvr16u* srcDst, Kvr16u* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixDescend_16s_I(Kvr16s* srcDst, Kvr16s* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixDescend_32u_I(Kvr32u* srcDst, Kvr32u* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixDescend_32s_I(Kvr32s* srcDst, Kvr32s* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixDescend_32f_I(Kvr32f* srcDst, Kvr32f* buffer, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixDescend_64f_I(Kvr64f* srcDst, Kvr64f* buffer, int len) KVRS_NOEXCEPT;

/** @} */

/** @defgroup sortradixindex Permutations by digits
 *
 * Stores in `dstIndx[i]` the index of the element that comes i-th in order, and leaves the elements as they are. Stable:
 * among equal keys the indices ascend, in both orders. Element i is read `i * srcStrideBytes` bytes behind `src`, so that
 * keys may be fields of records; neither `src` nor the stride need be a multiple of anything. `tmpIndx` has room for `len`
 * indices, which are lost.
 *
 * Floats are ordered as by SortAscend and SortDescend.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer (of `tmpIndx` too where it is not used, with 8u),
 * ::kvrStatusBadLength for `len` below 1 or a stride that is smaller than a key.
 * @{
 */

KVRS_API KvrStatus kvrsSortRadixIndexAscend_8u(const Kvr8u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                               Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexAscend_16u(const Kvr16u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexAscend_16s(const Kvr16s* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexAscend_32u(const Kvr32u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexAscend_32s(const Kvr32s* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexAscend_32f(const Kvr32f* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexDescend_8u(const Kvr8u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexDescend_16u(const Kvr16u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                 Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexDescend_16s(const Kvr16s* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                 Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexDescend_32u(const Kvr32u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                 Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexDescend_32s(const Kvr32s* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                 Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsSortRadixIndexDescend_32f(const Kvr32f* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                                 Kvr32s* tmpIndx, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
