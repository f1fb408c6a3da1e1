/* Viterbi decoding of trellis-coded modulation.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_VITERBI_H
#define KVRS_VITERBI_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup viterbi Viterbi decoding
 *
 * What a decoder of a four-dimensional trellis code does for each pair of received points (G. D. Forney, The Viterbi
 * algorithm, 1973; L.-F. Wei, Trellis-coded modulation with multidimensional constellations, 1987):
 *
 *     for (int k = 0; k < 2; k++) kvrsGetVarPointDV_16sc(received + k, base + k, metrics + 8 * k, labels, numStates);
 *     kvrsBuildSymblTableDV4D_16sc(metrics, symbols, numStates, mask);
 *     kvrsCalcStatesDV_16sc(pathError, nextState, curError, (Kvr16u*)symbols, survivors, numStates, numStates * time);
 *     kvrsUpdatePathMetricsDV_16u(curError, &least, &best, pathError, numStates);
 *
 * with curError full of 65,535 in the beginning. `numStates` is 16, 32 or 64; it is not tested, and the functions tell what
 * they do with others.
 *
 * All of this is in integers, and results are exact. No two arrays of a call overlap.
 *
 * Errors: ::kvrStatusNullPointer for a null pointer.
 * @{
 */

/** Finds the grid points around a received point and their squared distances from it.
 *
 * Points of the grid have odd multiples of 128 for coordinates. The base point, stored in `*dstPoint`, is the next one below
 * in both coordinates; with a and b for what `*src` lies above it, from 0 to 255, and
 *
 *     column = ((base.re - 128) / 256 + 2) mod 4, row = ((base.im - 128) / 256 + 2) mod 4
 *
 * points around it have these numbers, in which rows count upward:
 *
 *               column-1  column  column+1  column+2
 *     row+2                  8        9
 *     row+1         6        3        2         7
 *     row           5        0        1         4
 *     row-1                 11       10
 *
 * The labels of their subsets are those of a 4 x 4 table that goes on in all directions: that of column c and row r is
 * `labels[4 * (r mod 4) + c mod 4]`, of which the low two bits count with 16 states and otherwise the low three. The squared
 * distance of a point is x*x/16 + y*y/16, where the magnitudes of x and y are a, 256-a, 512-a or 256+a, and b, 256-b, 512-b
 * or 256+b; both quotients are cut to integers.
 *
 * For the points 0, 1, 2, 3, in this order, `dstMetrics[label]` becomes number * 65536 + distance. Unless there are 16 states,
 * the labels of 4, 5, 6, 7 then get the same of the nearer point of 4 and 8, of 5 and 9, of 6 and 10, and of 7 and 11, which
 * have one label in a lattice that is cut into eight subsets; of two that are as near the latter. Other elements of
 * `dstMetrics` stay as they are. Coordinates are taken modulo 65536.
 *
 * @param src         one point
 * @param dstPoint    one point
 * @param dstMetrics  4 elements for 16 states, otherwise 8
 * @param labels      16 elements
 * @param numStates   16, or any other number */
KVRS_API KvrStatus kvrsGetVarPointDV_16sc(const Kvr16sc* src, Kvr16sc* dstPoint, Kvr32u* dstMetrics,
                                          const Kvr8u* labels, int numStates) KVRS_NOEXCEPT;

/** Adds the metrics of two received points up to those of four-dimensional symbols.
 *
 * For v from 0 to 15 the subset v has two symbols, u = (v ^ mask) + 2 * (v & 8) and u ^ 8. The one labelled u has a point of
 * the subset u >> 2 first and one of (u + (u >> 2)) & 3 after it; its metric is the sum of theirs, in the low halves of
 * `src`, saturated to 32,767:
 *
 *     dst[2*v]   = {u,     metric(src[u >> 2])       + metric(src[8 + ((u + (u >> 2)) & 3)])}
 *     dst[2*v+1] = {u ^ 8, metric(src[(u ^ 8) >> 2]) + metric(src[8 + (((u ^ 8) + ((u ^ 8) >> 2)) & 3)])}
 *
 * in parts {re, im}. With 16 states, which have four subsets of points, of u >> 2 the low two bits count.
 * So `dst` is what kvrsCalcStatesDV_16sc() takes for `symbolTable`.
 *
 * @param src        16 elements: those of kvrsGetVarPointDV_16sc() for the first point, and from src[8] on for the second one
 * @param dst        32 elements
 * @param numStates  16, or any other number
 * @param mask       its low four bits count */
KVRS_API KvrStatus kvrsBuildSymblTableDV4D_16sc(const Kvr32u* src, Kvr16sc* dst, int numStates,
                                                int mask) KVRS_NOEXCEPT;

/** Continues the best path to each state: add, compare, select.
 *
 * For each state s in turn and each of its branches j = 0 .. 15, t being `nextState[16*s + j]`, `label` and `metric` being
 * `symbolTable[4*j + 2*(s & 1)]` and the element after it: if
 *
 *     pathError[s] + metric < curError[t]
 *
 * the sum becomes `curError[t]`, and `survivors[offset + t]` becomes s * 65536 + label. Of equal paths the first one stays, and
 * a sum beyond 65,535 never wins. Other elements of `survivors` stay as they are. With `numStates` below 1 nothing happens.
 *
 * @param pathError    an element for each state
 * @param nextState    16 elements for each state, below numStates; branches to others are left out
 * @param curError     an element for each state
 * @param symbolTable  64 elements
 * @param survivors    an element for each state, from `offset` on
 * @param numStates    any number; states from 256 on are reached by no branch
 * @param offset       any number */
KVRS_API KvrStatus kvrsCalcStatesDV_16sc(const Kvr16u* pathError, const Kvr8u* nextState, Kvr16u* curError,
                                         const Kvr16u* symbolTable, Kvr32u* survivors, int numStates,
                                         int offset) KVRS_NOEXCEPT;

/** Takes the least of all path metrics off them and makes room for the next ones.
 *
 * `*dstMin` becomes the least of `metrics`, `*dstIndex` the first state that has it, `dstMetrics[s]` the difference
 * `metrics[s] - *dstMin`, and then all of `metrics` 65,535.
 *
 * @param metrics     an element for each state
 * @param dstMin      one element
 * @param dstIndex    one element
 * @param dstMetrics  an element for each state
 * @param numStates   16 or 32; any other number stands for 64 */
KVRS_API KvrStatus kvrsUpdatePathMetricsDV_16u(Kvr16u* metrics, Kvr16u* dstMin, Kvr8u* dstIndex,
                                               Kvr16u* dstMetrics, int numStates) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
