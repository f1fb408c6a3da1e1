/* The analytic signal. Elements of 32fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_HILBERT_H
#define KVRS_HILBERT_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup hilbert Hilbert transform
 *
 * Of a real signal of N = `len` numbers its analytic signal: the signal itself as real part, its Hilbert transform as
 * imaginary part. With X the spectrum of src,
 *
 *     dst[n] = 1/N * sum over k of Z[k] * exp(+2 pi i n k / N)
 *     Z[k] = X[k] for k = 0 and, where N is even, k = N/2; 2 X[k] for 0 < k < N/2; 0 elsewhere
 *
 * so that a cosine becomes a cosine plus i times a sine. Signals of 1 and 2 numbers have an imaginary part of 0.
 *
 * | Types    | Real part                                  | Imaginary part                               |
 * |----------|--------------------------------------------|----------------------------------------------|
 * | 32f32fc  | src[n], exactly                            | in single precision                          |
 * | 16s32fc  | src[n], exactly                            | in single precision                          |
 * | 16s16sc  | src[n] * 2^(-scaleFactor), as said below   | in single precision, then times 2^(-scaleFactor) |
 *
 * Both parts of 16s16sc are rounded to nearest with ties to even and saturated. Where `len` is 1 or 2 the real part is
 * truncated towards zero instead, unless scaleFactor is 0.
 *
 * The imaginary part is a real transform and its inverse with the phases turned by a quarter; its relative error, root
 * mean square over the signal, is about 0.5 eps sqrt(log2 N), twice that of lengths with prime factors above 50 (see the
 * @ref dft). An infinity or a NaN makes NaN of all imaginary parts.
 *
 * kvrsHilbertInitAlloc_32f32fc() makes a context for a length, kvrsHilbertFree_32f32fc() releases it. `hint` is stored and
 * has no effect. Nothing in a context changes after it is made, so any number of threads may share one.
 *
 * `src` and `dst` do not overlap. Work areas are allocated in each call and released before it returns; 32f32fc and
 * 16s32fc need one only where a real DFT of that length does.
 *
 * | Function  | Errors, in the order tested |
 * |-----------|--------|
 * | InitAlloc | ::kvrStatusNullPointer for `spec`, ::kvrStatusBadLength for `len` below 1, ::kvrStatusOutOfMemory, ::kvrStatusBadFftOrder and ::kvrStatusBadLength for lengths beyond a real DFT, ::kvrStatusOutOfMemory |
 * | Free      | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 * | Hilbert   | ::kvrStatusNullPointer for any pointer, ::kvrStatusContextMismatch, ::kvrStatusOutOfMemory |
 *
 * A failed InitAlloc leaves `*spec` alone.
 * @{
 */

typedef struct KvrsHilbertSpec_32f32fc KvrsHilbertSpec_32f32fc;
typedef struct KvrsHilbertSpec_16s32fc KvrsHilbertSpec_16s32fc;
typedef struct KvrsHilbertSpec_16s16sc KvrsHilbertSpec_16s16sc;

KVRS_API KvrStatus kvrsHilbertInitAlloc_32f32fc(KvrsHilbertSpec_32f32fc** spec, int len,
                                                KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsHilbertFree_32f32fc(KvrsHilbertSpec_32f32fc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsHilbert_32f32fc(const Kvr32f* src, Kvr32fc* dst,
                                       const KvrsHilbertSpec_32f32fc* spec) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsHilbertInitAlloc_16s32fc(KvrsHilbertSpec_16s32fc** spec, int len,
                                                KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsHilbertFree_16s32fc(KvrsHilbertSpec_16s32fc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsHilbert_16s32fc(const Kvr16s* src, Kvr32fc* dst,
                                       const KvrsHilbertSpec_16s32fc* spec) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsHilbertInitAlloc_16s16sc(KvrsHilbertSpec_16s16sc** spec, int len,
                                                KvrHintAlgorithm hint) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsHilbertFree_16s16sc(KvrsHilbertSpec_16s16sc* spec) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsHilbert_16s16sc_Sfs(const Kvr16s* src, Kvr16sc* dst,
                                           const KvrsHilbertSpec_16s16sc* spec,
                                           int scaleFactor) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
