/* Recursive (IIR) filters. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_IIR_H
#define KVRS_IIR_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup iir Recursive filters
 *
 * A filter with feedback, run over a signal that comes in pieces:
 *
 *     H(z) = (b0 + b1/z + ... + bN/z^N) / (a0 + a1/z + ... + aN/z^N)
 *
 * Its state carries the delay line from call to call, so that a signal cut into pieces of any lengths gives what it
 * gives in one piece, but for rounding.
 *
 * | Structure   | Names    | Taps, in this order                                       | Delay line             |
 * |-------------|----------|-----------------------------------------------------------|------------------------|
 * | direct form | none     | `b[0] .. b[order]`, `a[0] .. a[order]`                    | `order` numbers        |
 * | cascade     | BiQuad   | b0, b1, b2, a0, a1, a2 for each of the `numBq` sections   | 2 for each section     |
 * | cascade, direct form 1 | BiQuad_DF1 | as a cascade                                 | 4 for each section: x[n-2], x[n-1], y[n-2], y[n-1] |
 *
 * Delay lines but those of the direct form 1 are those of the transposed direct form II: number k is what the samples so
 * far add to the output k samples ahead.
 *
 * The first part of a type's code is the type of taps, sums and delay line, the second that of the samples; one code means
 * both.
 *
 * | Context                  | works in | samples | words, direct form and cascade | direct form 1 |
 * |--------------------------|----------|---------|--------------------------------|---------------|
 * | KvrsIIRState_32f         | 32f      | 32f     | II01, II02                     | II29          |
 * | KvrsIIRState_32fc        | 32fc     | 32fc    | II03, II04                     |               |
 * | KvrsIIRState32f_16s      | 32f      | 16s     | II05, II06                     |               |
 * | KvrsIIRState32fc_16sc    | 32fc     | 16sc    | II07, II08                     |               |
 * | KvrsIIRState32s_16s      | 32f      | 16s     | II09, II10                     |               |
 * | KvrsIIRState32sc_16sc    | 32fc     | 16sc    | II11, II12                     |               |
 * | KvrsIIRState_64f         | 64f      | 64f     | II13, II14                     |               |
 * | KvrsIIRState_64fc        | 64fc     | 64fc    | II15, II16                     |               |
 * | KvrsIIRState64f_32f      | 64f      | 32f     | II17, II18                     |               |
 * | KvrsIIRState64fc_32fc    | 64fc     | 32fc    | II19, II20                     |               |
 * | KvrsIIRState64f_32s      | 64f      | 32s     | II21, II22                     | II30          |
 * | KvrsIIRState64fc_32sc    | 64fc     | 32sc    | II23, II24                     |               |
 * | KvrsIIRState64f_16s      | 64f      | 16s     | II25, II26                     |               |
 * | KvrsIIRState64fc_16sc    | 64fc     | 16sc    | II27, II28                     |               |
 *
 * 32s and 32sc for the working type mean that taps are given as integers; sums are 32f and 32fc. The word is the first of a
 * context, four letters and digits of which the last lies first in memory. A function takes the contexts of its type in
 * all three structures, except where it says otherwise.
 *
 * ### Making a context
 *
 * Either in memory of the caller's own,
 *
 *     kvrsIIRGetStateSize_BiQuad_32f(numBq, &size);
 *     kvrsIIRInit_BiQuad_32f(&state, taps, numBq, dlyLine, buffer);
 *
 * with `buffer` of `size` bytes and any alignment, needed as long as the context is used; or by InitAlloc, which
 * allocates. Free releases what InitAlloc made; a context in the caller's memory needs no release, and Free leaves it as it
 * is. A context holds no addresses: its memory may be copied as bytes to an address with the same remainder modulo 32 and
 * used there. `*state` is set when all has gone well.
 *
 * `dlyLine` is the delay line to begin with, null for silence; with integer taps its 32-bit words are floats bit for bit.
 *
 * Taps are copied and divided by a0: each is multiplied by 1/a0, in the working type, a complex 1/a0 being conj(a0) over the
 * squared magnitude. Sections with a0 = 1 are taken as they are. Integer taps are multiplied by 2^(-tapsFactor) first, as
 * kvrsConvert_32s32f_Sfs() does.
 *
 * | Function    | Errors, in the order tested |
 * |-------------|-----------------------------|
 * | GetStateSize, Init, InitAlloc | ::kvrStatusNullPointer, ::kvrStatusBadIirOrder for an `order` or `numBq` below 1, or so large that the size is no `int` |
 * | InitAlloc, and Init with integer taps | then ::kvrStatusOutOfMemory |
 * | Init, InitAlloc | then ::kvrStatusDivByZeroError for an a0 of 0 and, in cascades, for a section's b0 of 0; NaN passes |
 * | Free        | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 *
 * ### Taps and delay line
 *
 * SetTaps replaces the taps and leaves the delay line. GetDlyLine stores the delay line, SetDlyLine replaces it, null
 * standing for silence. A KvrsIIRState64f_32s of direct form 1 has its line of the table above behind the two functions
 * with DF1 in their names, which convert it to integers, rounding to nearest, and back; the other two know it by the
 * transposed line, which each filtering call computes anew.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer, ::kvrStatusContextMismatch; in SetTaps then ::kvrStatusDivByZeroError,
 * with the sections before the refused one already stored.
 *
 * kvrsIIRSetTaps32s_16s() and kvrsIIRSetTaps32sc_16sc(), those with integer taps, always end with
 * ::kvrStatusContextMismatch or, if there is no memory for the conversion, ::kvrStatusOutOfMemory: on a context of theirs
 * the former means that taps have been loaded as far as they are valid.
 *
 * ### Filtering
 *
 * kvrsIIROne filters one sample, kvrsIIR `len` samples. `dst` and `src` do not overlap; the forms with `_I` work in place.
 * They may be mixed. Integer samples come out as y * 2^(-scaleFactor), in the working type, rounded to nearest with ties to
 * even and saturated; nothing in between is rounded or saturated.
 *
 * A single sample has a stated order of operations, each rounded by itself. Direct form, with N the order, d the delay line
 * and d[N] = 0:
 *
 *     y = b[0] * x + d[0]
 *     d[k] = (b[k+1] * x - a[k+1] * y) + d[k+1]     for k = 0 .. N-1
 *
 * Each section of a cascade, the output of one being the input of the next:
 *
 *     y = b0 * x + d0
 *     d0 = (b1 * x + d1) - a1 * y
 *     d1 = b2 * x - a2 * y
 *
 * Blocks are cut into pieces of 1,024 samples. Those of at most 4 * order, or 4 * numBq, samples (of a KvrsIIRState_32f
 * cascade: of at most 2) are computed in this way; longer ones may be by look-ahead, which computes several outputs from
 * the block before at once (Parhi, Messerschmitt, Pipeline interleaving and parallelism in recursive digital filters,
 * 1989). The results then differ in rounding, and an infinity or NaN may show up to 15 outputs before its sample.
 * Filters whose rounding errors look-ahead would multiply, direct forms of high order with their poles close
 * together above all, run sample by sample. Single samples of the direct
 * form 1 are y = (((b1 * x[n-1] + b2 * x[n-2]) - a2 * y[n-2]) - a1 * y[n-1]) + b0 * x[n].
 *
 * KvrsIIRState64f_32s in direct form 1 keeps outputs before they are rounded. If a2 of the last section is 0 and it was not
 * a single sample of a single section, y[n-1] is the rounded output instead, and y[n-2] is 0.
 *
 * Filters may be unstable: outputs grow to infinity, or saturate.
 *
 * Several channels, each with a context of its own: `src`, `dst` and `state` are arrays of `nChannels` pointers. The results
 * are those of separate calls.
 *
 * | Function               | takes                                          | Errors, in the order tested |
 * |------------------------|------------------------------------------------|-----------------------------|
 * | kvrsIIROne             | all but direct form 1                          | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 * | kvrsIIR                | all                                            | ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space, ::kvrStatusContextMismatch |
 * | 32f_P, 32f_IP          | cascades, all of one structure                 | ::kvrStatusNullPointer, ::kvrStatusBadLength, ::kvrStatusBadChannelCount for `nChannels` below 1, then channel by channel ::kvrStatusNullPointer and ::kvrStatusContextMismatch |
 * | 64f_32s_PSfs, 64f_32s_IPSfs | all, of the structure of the first        | ::kvrStatusNullPointer, also for `state[0]`; ::kvrStatusBadLength before the latter; ::kvrStatusContextMismatch, also for `nChannels` below 1 if the first is a direct form; other channels' ::kvrStatusNullPointer and ::kvrStatusContextMismatch |
 *
 * With no channels, `nChannels` below 1, and cascades 64f_32s_PSfs does nothing.
 *
 * A context is changed by every filtering call and must not be used by two calls at the same time.
 *
 * ### Without a context
 *
 * kvrsIIR_Direct_16s() and its relatives get integer taps and a delay line of 32-bit integers, `order` or 2 * `numBq` of
 * them, with each call. In the place of a0 the taps have a shift s: all taps of the filter, or of the section, count
 * 2^(-s).
 *
 * Blocks are filtered in single precision: taps and delay line times 2^(-s), samples as above. The delay line comes back
 * times 2^s, saturated. kvrsIIR_Direct_16s() rounds it to nearest, ties away from zero; kvrsIIR_BiQuadDirect_16s() cuts off
 * its fraction.
 *
 * Single samples are filtered in 32-bit integers that wrap around, with the taps as given and shifts that count modulo 32:
 *
 *     acc = b[0] * x + d[0]
 *     y = (acc + ((acc >> s) & 1) + (1 << ((s + 31) mod 32)) - 1) >> s
 *     d[k] = b[k+1] * x - a[k+1] * y + d[k+1]     for k = 0 .. N-2
 *     d[N-1] = b[N] * x - a[N] * y
 *
 * which rounds to nearest with ties to even unless s is 0. Sections hand y on as it is; `dst` gets the last one saturated to
 * 16 bits.
 *
 * Errors, in the order tested: of the One forms in place ::kvrStatusNullPointer for `srcDst`; ::kvrStatusBadIirOrder for
 * `order` or `numBq` below 1; ::kvrStatusNullPointer; then
 *
 * | Function           | |
 * |--------------------|-|
 * | Direct             | ::kvrStatusBadTapScale for a negative shift, ::kvrStatusBadLength, ::kvrStatusOutOfMemory |
 * | BiQuadDirect       | ::kvrStatusBadLength, ::kvrStatusOutOfMemory, ::kvrStatusBadTapScale |
 * | One_Direct         | ::kvrStatusBadTapScale |
 * | One_BiQuadDirect   | ::kvrStatusBadTapScale when the sample reaches that section: the sections before have been run |
 * @{
 */

typedef struct KvrsIIRState_32f KvrsIIRState_32f;
typedef struct KvrsIIRState_32fc KvrsIIRState_32fc;
typedef struct KvrsIIRState_64f KvrsIIRState_64f;
typedef struct KvrsIIRState_64fc KvrsIIRState_64fc;
typedef struct KvrsIIRState32f_16s KvrsIIRState32f_16s;
typedef struct KvrsIIRState32fc_16sc KvrsIIRState32fc_16sc;
typedef struct KvrsIIRState32s_16s KvrsIIRState32s_16s;
typedef struct KvrsIIRState32sc_16sc KvrsIIRState32sc_16sc;
typedef struct KvrsIIRState64f_16s KvrsIIRState64f_16s;
typedef struct KvrsIIRState64f_32f KvrsIIRState64f_32f;
typedef struct KvrsIIRState64f_32s KvrsIIRState64f_32s;
typedef struct KvrsIIRState64fc_16sc KvrsIIRState64fc_16sc;
typedef struct KvrsIIRState64fc_32fc KvrsIIRState64fc_32fc;
typedef struct KvrsIIRState64fc_32sc KvrsIIRState64fc_32sc;

/* Sizes of contexts. */
KVRS_API KvrStatus kvrsIIRGetStateSize32f_16s(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32f_BiQuad_16s(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32fc_16sc(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32fc_BiQuad_16sc(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32s_16s(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32s_16s32f(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32s_BiQuad_16s(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32s_BiQuad_16s32f(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32sc_16sc(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32sc_16sc32fc(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32sc_BiQuad_16sc(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize32sc_BiQuad_16sc32fc(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64f_16s(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64f_32f(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64f_32s(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64f_BiQuad_16s(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64f_BiQuad_32f(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64f_BiQuad_32s(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64f_BiQuad_DF1_32s(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64fc_16sc(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64fc_32fc(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64fc_32sc(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64fc_BiQuad_16sc(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64fc_BiQuad_32fc(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize64fc_BiQuad_32sc(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize_32f(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize_32fc(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize_64f(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize_64fc(int order, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize_BiQuad_32f(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize_BiQuad_32fc(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize_BiQuad_64f(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize_BiQuad_64fc(int numBq, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetStateSize_BiQuad_DF1_32f(int numBq, int* size) KVRS_NOEXCEPT;

/* Contexts in the caller's memory. */
KVRS_API KvrStatus kvrsIIRInit32f_16s(KvrsIIRState32f_16s** state, const Kvr32f* taps, int order,
                                      const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32f_BiQuad_16s(KvrsIIRState32f_16s** state, const Kvr32f* taps, int numBq,
                                             const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32fc_16sc(KvrsIIRState32fc_16sc** state, const Kvr32fc* taps, int order,
                                        const Kvr32fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32fc_BiQuad_16sc(KvrsIIRState32fc_16sc** state, const Kvr32fc* taps, int numBq,
                                               const Kvr32fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32s_16s(KvrsIIRState32s_16s** state, const Kvr32s* taps, int order,
                                      int tapsFactor, const Kvr32s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32s_16s32f(KvrsIIRState32s_16s** state, const Kvr32f* taps, int order,
                                         const Kvr32s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32s_BiQuad_16s(KvrsIIRState32s_16s** state, const Kvr32s* taps, int numBq,
                                             int tapsFactor, const Kvr32s* dlyLine,
                                             Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32s_BiQuad_16s32f(KvrsIIRState32s_16s** state, const Kvr32f* taps, int numBq,
                                                const Kvr32s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32sc_16sc(KvrsIIRState32sc_16sc** state, const Kvr32sc* taps, int order,
                                        int tapsFactor, const Kvr32sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32sc_16sc32fc(KvrsIIRState32sc_16sc** state, const Kvr32fc* taps, int order,
                                            const Kvr32sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32sc_BiQuad_16sc(KvrsIIRState32sc_16sc** state, const Kvr32sc* taps, int numBq,
                                               int tapsFactor, const Kvr32sc* dlyLine,
                                               Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit32sc_BiQuad_16sc32fc(KvrsIIRState32sc_16sc** state, const Kvr32fc* taps,
                                                   int numBq, const Kvr32sc* dlyLine,
                                                   Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64f_16s(KvrsIIRState64f_16s** state, const Kvr64f* taps, int order,
                                      const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64f_32f(KvrsIIRState64f_32f** state, const Kvr64f* taps, int order,
                                      const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64f_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int order,
                                      const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64f_BiQuad_16s(KvrsIIRState64f_16s** state, const Kvr64f* taps, int numBq,
                                             const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64f_BiQuad_32f(KvrsIIRState64f_32f** state, const Kvr64f* taps, int numBq,
                                             const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64f_BiQuad_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int numBq,
                                             const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64f_BiQuad_DF1_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int numBq,
                                                 const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64fc_16sc(KvrsIIRState64fc_16sc** state, const Kvr64fc* taps, int order,
                                        const Kvr64fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64fc_32fc(KvrsIIRState64fc_32fc** state, const Kvr64fc* taps, int order,
                                        const Kvr64fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64fc_32sc(KvrsIIRState64fc_32sc** state, const Kvr64fc* taps, int order,
                                        const Kvr64fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64fc_BiQuad_16sc(KvrsIIRState64fc_16sc** state, const Kvr64fc* taps, int numBq,
                                               const Kvr64fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64fc_BiQuad_32fc(KvrsIIRState64fc_32fc** state, const Kvr64fc* taps, int numBq,
                                               const Kvr64fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit64fc_BiQuad_32sc(KvrsIIRState64fc_32sc** state, const Kvr64fc* taps, int numBq,
                                               const Kvr64fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int order,
                                   const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit_32fc(KvrsIIRState_32fc** state, const Kvr32fc* taps, int order,
                                    const Kvr32fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit_64f(KvrsIIRState_64f** state, const Kvr64f* taps, int order,
                                   const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit_64fc(KvrsIIRState_64fc** state, const Kvr64fc* taps, int order,
                                    const Kvr64fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit_BiQuad_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int numBq,
                                          const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit_BiQuad_32fc(KvrsIIRState_32fc** state, const Kvr32fc* taps, int numBq,
                                           const Kvr32fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit_BiQuad_64f(KvrsIIRState_64f** state, const Kvr64f* taps, int numBq,
                                          const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit_BiQuad_64fc(KvrsIIRState_64fc** state, const Kvr64fc* taps, int numBq,
                                           const Kvr64fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInit_BiQuad_DF1_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int numBq,
                                              const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;

/* Contexts on the heap. */
KVRS_API KvrStatus kvrsIIRInitAlloc32f_16s(KvrsIIRState32f_16s** state, const Kvr32f* taps, int order,
                                           const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32f_BiQuad_16s(KvrsIIRState32f_16s** state, const Kvr32f* taps, int numBq,
                                                  const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32fc_16sc(KvrsIIRState32fc_16sc** state, const Kvr32fc* taps, int order,
                                             const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32fc_BiQuad_16sc(KvrsIIRState32fc_16sc** state, const Kvr32fc* taps,
                                                    int numBq, const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32s_16s(KvrsIIRState32s_16s** state, const Kvr32s* taps, int order,
                                           int tapsFactor, const Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32s_16s32f(KvrsIIRState32s_16s** state, const Kvr32f* taps, int order,
                                              const Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32s_BiQuad_16s(KvrsIIRState32s_16s** state, const Kvr32s* taps, int numBq,
                                                  int tapsFactor, const Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32s_BiQuad_16s32f(KvrsIIRState32s_16s** state, const Kvr32f* taps,
                                                     int numBq, const Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32sc_16sc(KvrsIIRState32sc_16sc** state, const Kvr32sc* taps, int order,
                                             int tapsFactor, const Kvr32sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32sc_16sc32fc(KvrsIIRState32sc_16sc** state, const Kvr32fc* taps,
                                                 int order, const Kvr32sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32sc_BiQuad_16sc(KvrsIIRState32sc_16sc** state, const Kvr32sc* taps,
                                                    int numBq, int tapsFactor,
                                                    const Kvr32sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc32sc_BiQuad_16sc32fc(KvrsIIRState32sc_16sc** state, const Kvr32fc* taps,
                                                        int numBq, const Kvr32sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64f_16s(KvrsIIRState64f_16s** state, const Kvr64f* taps, int order,
                                           const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64f_32f(KvrsIIRState64f_32f** state, const Kvr64f* taps, int order,
                                           const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64f_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int order,
                                           const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64f_BiQuad_16s(KvrsIIRState64f_16s** state, const Kvr64f* taps, int numBq,
                                                  const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64f_BiQuad_32f(KvrsIIRState64f_32f** state, const Kvr64f* taps, int numBq,
                                                  const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64f_BiQuad_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps, int numBq,
                                                  const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64f_BiQuad_DF1_32s(KvrsIIRState64f_32s** state, const Kvr64f* taps,
                                                      int numBq, const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64fc_16sc(KvrsIIRState64fc_16sc** state, const Kvr64fc* taps, int order,
                                             const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64fc_32fc(KvrsIIRState64fc_32fc** state, const Kvr64fc* taps, int order,
                                             const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64fc_32sc(KvrsIIRState64fc_32sc** state, const Kvr64fc* taps, int order,
                                             const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64fc_BiQuad_16sc(KvrsIIRState64fc_16sc** state, const Kvr64fc* taps,
                                                    int numBq, const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64fc_BiQuad_32fc(KvrsIIRState64fc_32fc** state, const Kvr64fc* taps,
                                                    int numBq, const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc64fc_BiQuad_32sc(KvrsIIRState64fc_32sc** state, const Kvr64fc* taps,
                                                    int numBq, const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int order,
                                        const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc_32fc(KvrsIIRState_32fc** state, const Kvr32fc* taps, int order,
                                         const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc_64f(KvrsIIRState_64f** state, const Kvr64f* taps, int order,
                                        const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc_64fc(KvrsIIRState_64fc** state, const Kvr64fc* taps, int order,
                                         const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc_BiQuad_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int numBq,
                                               const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc_BiQuad_32fc(KvrsIIRState_32fc** state, const Kvr32fc* taps, int numBq,
                                                const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc_BiQuad_64f(KvrsIIRState_64f** state, const Kvr64f* taps, int numBq,
                                               const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc_BiQuad_64fc(KvrsIIRState_64fc** state, const Kvr64fc* taps, int numBq,
                                                const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRInitAlloc_BiQuad_DF1_32f(KvrsIIRState_32f** state, const Kvr32f* taps, int numBq,
                                                   const Kvr32f* dlyLine) KVRS_NOEXCEPT;

/* Release. */
KVRS_API KvrStatus kvrsIIRFree32f_16s(KvrsIIRState32f_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree32fc_16sc(KvrsIIRState32fc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree32s_16s(KvrsIIRState32s_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree32sc_16sc(KvrsIIRState32sc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree64f_16s(KvrsIIRState64f_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree64f_32f(KvrsIIRState64f_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree64f_32s(KvrsIIRState64f_32s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree64fc_16sc(KvrsIIRState64fc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree64fc_32fc(KvrsIIRState64fc_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree64fc_32sc(KvrsIIRState64fc_32sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree_32f(KvrsIIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree_32fc(KvrsIIRState_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree_64f(KvrsIIRState_64f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRFree_64fc(KvrsIIRState_64fc* state) KVRS_NOEXCEPT;

/* Taps. */
KVRS_API KvrStatus kvrsIIRSetTaps32f_16s(const Kvr32f* taps, KvrsIIRState32f_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps32fc_16sc(const Kvr32fc* taps, KvrsIIRState32fc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps32s_16s(const Kvr32s* taps, KvrsIIRState32s_16s* state,
                                         int tapsFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps32s_16s32f(const Kvr32f* taps, KvrsIIRState32s_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps32sc_16sc(const Kvr32sc* taps, KvrsIIRState32sc_16sc* state,
                                           int tapsFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps32sc_16sc32fc(const Kvr32fc* taps,
                                               KvrsIIRState32sc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps64f_16s(const Kvr64f* taps, KvrsIIRState64f_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps64f_32f(const Kvr64f* taps, KvrsIIRState64f_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps64f_32s(const Kvr64f* taps, KvrsIIRState64f_32s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps64fc_16sc(const Kvr64fc* taps, KvrsIIRState64fc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps64fc_32fc(const Kvr64fc* taps, KvrsIIRState64fc_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps64fc_32sc(const Kvr64fc* taps, KvrsIIRState64fc_32sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps_32f(const Kvr32f* taps, KvrsIIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps_32fc(const Kvr32fc* taps, KvrsIIRState_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps_64f(const Kvr64f* taps, KvrsIIRState_64f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetTaps_64fc(const Kvr64fc* taps, KvrsIIRState_64fc* state) KVRS_NOEXCEPT;

/* Delay lines, read. */
KVRS_API KvrStatus kvrsIIRGetDlyLine32f_16s(const KvrsIIRState32f_16s* state, Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine32fc_16sc(const KvrsIIRState32fc_16sc* state,
                                              Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine32s_16s(const KvrsIIRState32s_16s* state, Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine32sc_16sc(const KvrsIIRState32sc_16sc* state,
                                              Kvr32sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine64f_16s(const KvrsIIRState64f_16s* state, Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine64f_32f(const KvrsIIRState64f_32f* state, Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine64f_32s(const KvrsIIRState64f_32s* state, Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine64f_DF1_32s(const KvrsIIRState64f_32s* state,
                                                Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine64fc_16sc(const KvrsIIRState64fc_16sc* state,
                                              Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine64fc_32fc(const KvrsIIRState64fc_32fc* state,
                                              Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine64fc_32sc(const KvrsIIRState64fc_32sc* state,
                                              Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine_32f(const KvrsIIRState_32f* state, Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine_32fc(const KvrsIIRState_32fc* state, Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine_64f(const KvrsIIRState_64f* state, Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRGetDlyLine_64fc(const KvrsIIRState_64fc* state, Kvr64fc* dlyLine) KVRS_NOEXCEPT;

/* Delay lines, replaced. */
KVRS_API KvrStatus kvrsIIRSetDlyLine32f_16s(KvrsIIRState32f_16s* state, const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine32fc_16sc(KvrsIIRState32fc_16sc* state,
                                              const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine32s_16s(KvrsIIRState32s_16s* state, const Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine32sc_16sc(KvrsIIRState32sc_16sc* state,
                                              const Kvr32sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine64f_16s(KvrsIIRState64f_16s* state, const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine64f_32f(KvrsIIRState64f_32f* state, const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine64f_32s(KvrsIIRState64f_32s* state, const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine64f_DF1_32s(KvrsIIRState64f_32s* state,
                                                const Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine64fc_16sc(KvrsIIRState64fc_16sc* state,
                                              const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine64fc_32fc(KvrsIIRState64fc_32fc* state,
                                              const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine64fc_32sc(KvrsIIRState64fc_32sc* state,
                                              const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine_32f(KvrsIIRState_32f* state, const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine_32fc(KvrsIIRState_32fc* state, const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine_64f(KvrsIIRState_64f* state, const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIRSetDlyLine_64fc(KvrsIIRState_64fc* state, const Kvr64fc* dlyLine) KVRS_NOEXCEPT;

/* One sample. */
KVRS_API KvrStatus kvrsIIROne32f_16s_Sfs(Kvr16s val, Kvr16s* dst, KvrsIIRState32f_16s* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne32fc_16sc_Sfs(Kvr16sc val, Kvr16sc* dst, KvrsIIRState32fc_16sc* state,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne32s_16s_Sfs(Kvr16s val, Kvr16s* dst, KvrsIIRState32s_16s* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne32sc_16sc_Sfs(Kvr16sc val, Kvr16sc* dst, KvrsIIRState32sc_16sc* state,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne64f_16s_Sfs(Kvr16s val, Kvr16s* dst, KvrsIIRState64f_16s* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne64f_32f(Kvr32f val, Kvr32f* dst, KvrsIIRState64f_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne64f_32s_Sfs(Kvr32s val, Kvr32s* dst, KvrsIIRState64f_32s* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne64fc_16sc_Sfs(Kvr16sc val, Kvr16sc* dst, KvrsIIRState64fc_16sc* state,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne64fc_32fc(Kvr32fc val, Kvr32fc* dst, KvrsIIRState64fc_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne64fc_32sc_Sfs(Kvr32sc val, Kvr32sc* dst, KvrsIIRState64fc_32sc* state,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne_32f(Kvr32f val, Kvr32f* dst, KvrsIIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne_32fc(Kvr32fc val, Kvr32fc* dst, KvrsIIRState_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne_64f(Kvr64f val, Kvr64f* dst, KvrsIIRState_64f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne_64fc(Kvr64fc val, Kvr64fc* dst, KvrsIIRState_64fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne_BiQuadDirect_16s(Kvr16s val, Kvr16s* dst, const Kvr16s* taps, int numBq,
                                               Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne_BiQuadDirect_16s_I(Kvr16s* srcDst, const Kvr16s* taps, int numBq,
                                                 Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne_Direct_16s(Kvr16s val, Kvr16s* dst, const Kvr16s* taps, int order,
                                         Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIROne_Direct_16s_I(Kvr16s* srcDst, const Kvr16s* taps, int order,
                                           Kvr32s* dlyLine) KVRS_NOEXCEPT;

/* Blocks. */
KVRS_API KvrStatus kvrsIIR32f_16s_ISfs(Kvr16s* srcDst, int len, KvrsIIRState32f_16s* state,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR32f_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsIIRState32f_16s* state,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR32fc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsIIRState32fc_16sc* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR32fc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len,
                                        KvrsIIRState32fc_16sc* state, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR32s_16s_ISfs(Kvr16s* srcDst, int len, KvrsIIRState32s_16s* state,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR32s_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsIIRState32s_16s* state,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR32sc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsIIRState32sc_16sc* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR32sc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len,
                                        KvrsIIRState32sc_16sc* state, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64f_16s_ISfs(Kvr16s* srcDst, int len, KvrsIIRState64f_16s* state,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64f_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsIIRState64f_16s* state,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64f_32f(const Kvr32f* src, Kvr32f* dst, int len,
                                  KvrsIIRState64f_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64f_32f_I(Kvr32f* srcDst, int len, KvrsIIRState64f_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64f_32s_IPSfs(Kvr32s* const* srcDst, int len, int nChannels,
                                        KvrsIIRState64f_32s* const* state,
                                        const int* scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64f_32s_ISfs(Kvr32s* srcDst, int len, KvrsIIRState64f_32s* state,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64f_32s_PSfs(const Kvr32s* const* src, Kvr32s* const* dst, int len, int nChannels,
                                       KvrsIIRState64f_32s* const* state,
                                       const int* scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64f_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, KvrsIIRState64f_32s* state,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64fc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsIIRState64fc_16sc* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64fc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len,
                                        KvrsIIRState64fc_16sc* state, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64fc_32fc(const Kvr32fc* src, Kvr32fc* dst, int len,
                                    KvrsIIRState64fc_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64fc_32fc_I(Kvr32fc* srcDst, int len, KvrsIIRState64fc_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64fc_32sc_ISfs(Kvr32sc* srcDst, int len, KvrsIIRState64fc_32sc* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR64fc_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, int len,
                                        KvrsIIRState64fc_32sc* state, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_32f(const Kvr32f* src, Kvr32f* dst, int len,
                               KvrsIIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_32f_I(Kvr32f* srcDst, int len, KvrsIIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_32f_IP(Kvr32f* const* srcDst, int len, int nChannels,
                                  KvrsIIRState_32f* const* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_32f_P(const Kvr32f* const* src, Kvr32f* const* dst, int len, int nChannels,
                                 KvrsIIRState_32f* const* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_32fc(const Kvr32fc* src, Kvr32fc* dst, int len,
                                KvrsIIRState_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_32fc_I(Kvr32fc* srcDst, int len, KvrsIIRState_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_64f(const Kvr64f* src, Kvr64f* dst, int len,
                               KvrsIIRState_64f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_64f_I(Kvr64f* srcDst, int len, KvrsIIRState_64f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_64fc(const Kvr64fc* src, Kvr64fc* dst, int len,
                                KvrsIIRState_64fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_64fc_I(Kvr64fc* srcDst, int len, KvrsIIRState_64fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_BiQuadDirect_16s(const Kvr16s* src, Kvr16s* dst, int len, const Kvr16s* taps,
                                            int numBq, Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_BiQuadDirect_16s_I(Kvr16s* srcDst, int len, const Kvr16s* taps, int numBq,
                                              Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_Direct_16s(const Kvr16s* src, Kvr16s* dst, int len, const Kvr16s* taps, int order,
                                      Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsIIR_Direct_16s_I(Kvr16s* srcDst, int len, const Kvr16s* taps, int order,
                                        Kvr32s* dlyLine) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
