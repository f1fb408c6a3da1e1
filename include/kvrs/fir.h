/* FIR filters. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FIR_H
#define KVRS_FIR_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup fir Single-rate FIR filters
 *
 * A filter with a finite impulse response, that of its taps, run over a signal that comes in pieces:
 *
 *     y[n] = sum over k from 0 to tapsLen-1 of taps[k] * x[n-k]
 *
 * x[n-k] before the first sample is taken from the delay line. The filter's state carries the delay line from
 * call to call, so that a signal cut into pieces of any lengths gives what it gives in one piece.
 *
 * A name says the type of the taps where it is not that of the samples: kvrsFIR64f_16s_Sfs() filters 16s with taps of
 * 64f.
 *
 * | State                 | taps                  | samples | sums | results                           |
 * |-----------------------|-----------------------|---------|------|-----------------------------------|
 * | KvrsFIRState_32f      | 32f                   | 32f     | 32f  |                                   |
 * | KvrsFIRState_64f      | 64f                   | 64f     | 64f  |                                   |
 * | KvrsFIRState_32fc     | 32fc                  | 32fc    | 32fc |                                   |
 * | KvrsFIRState_64fc     | 64fc                  | 64fc    | 64fc |                                   |
 * | KvrsFIRState64f_32f   | 64f                   | 32f     | 64f  | rounded once                      |
 * | KvrsFIRState64fc_32fc | 64fc                  | 32fc    | 64fc | rounded once                      |
 * | KvrsFIRState32f_16s   | 32f                   | 16s     | 32f  | scaled, rounded, saturated        |
 * | KvrsFIRState32fc_16sc | 32fc                  | 16sc    | 32fc | scaled, rounded, saturated        |
 * | KvrsFIRState64f_16s   | 64f                   | 16s     | 64f  | scaled, rounded, saturated        |
 * | KvrsFIRState64fc_16sc | 64fc                  | 16sc    | 64fc | scaled, rounded, saturated        |
 * | KvrsFIRState64f_32s   | 64f                   | 32s     | 64f  | scaled, rounded, saturated        |
 * | KvrsFIRState64fc_32sc | 64fc                  | 32sc    | 64fc | scaled, rounded, saturated        |
 * | KvrsFIRState_32s      | 32s, held as 64f      | 32s     | 64f  | scaled, rounded, saturated        |
 * | KvrsFIRState_16s      | 16s * 2^tapsFactor    | 16s     | 32s  | shifted, rounded, saturated       |
 * | KvrsFIRState32s_16s   | 16 bits * 2^tapsFactor | 16s    | 32s  | shifted, rounded, saturated       |
 * | KvrsFIRState32sc_16sc | 16 bits * 2^tapsFactor | 16sc   | 32sc | shifted, rounded, saturated       |
 *
 * ### Making a state
 *
 * Either in memory of the caller's own,
 *
 *     kvrsFIRGetStateSize_32f(tapsLen, &size);
 *     kvrsFIRInit_32f(&state, taps, tapsLen, dlyLine, buffer);
 *
 * with `buffer` of `size` bytes and any alignment, needed as long as the state is used; or with InitAlloc, which
 * allocates. Free releases what InitAlloc made; a state in the caller's memory needs no release, and Free leaves it as it
 * is. kvrsFIRFree_32f() and kvrsFIRFree_16s() take streams too (fir_stream.h), and all but kvrsFIRFree_32s() filters at
 * two rates (fir_multirate.h).
 *
 * The taps are copied. `dlyLine` holds the tapsLen samples before the first one, the newest in `dlyLine[0]`;
 * the last of them is kept, but no output depends on it. Null stands for silence.
 *
 * A state is made for the number of threads that ownGetNumThreads() returns then, and no call with it uses
 * more. That number must not rise between GetStateSize and Init. A state holds no addresses: its memory may
 * be copied as bytes to an address with the same remainder modulo 64 and used there.
 *
 * | Function    | Errors, in the order tested |
 * |-------------|-----------------------------|
 * | GetStateSize, Init, InitAlloc | ::kvrStatusNullPointer, ::kvrStatusBadTapsLength for `tapsLen` below 1, or so large that the size is no `int` |
 * | InitAlloc   | then ::kvrStatusOutOfMemory |
 * | Free        | ::kvrStatusNullPointer, ::kvrStatusContextMismatch |
 *
 * ### Integer taps
 *
 * Filters with `tapsFactor` hold taps of 16 bits; a tap is the one that is held times 2^tapsFactor.
 *
 * | Taps given as     | are held as                                                                                   |
 * |-------------------|-----------------------------------------------------------------------------------------------|
 * | 16s               | they are; if one is -32768, all are shifted right by 1 and the factor raised by 1             |
 * | 32s, 32sc         | shifted right by as many bits as it takes to have all magnitudes, in halves rounded down, at most 32766; the factor is raised by as many |
 * | 32f, 32fc (16s32f, 16sc32fc) | rounded, halves away from zero, after multiplication with a power of two that brings the largest magnitude of a tap, or of a part of one, to 32767 at most and beyond half of that; taps that are all 0 stay so |
 *
 * Shifts are arithmetic. GetTaps stores what is held, and the factor; that of 16s32f and 16sc32fc the product of both.
 *
 * ### Taps and delay line
 *
 * May be read and replaced between any two calls. GetTaps stores the tapsLen taps, SetTaps replaces them and
 * leaves the delay line. GetDlyLine stores the last tapsLen samples, the newest first; SetDlyLine replaces
 * them, null standing for silence. kvrsFIRGetTaps_32s() and kvrsFIRSetTaps_32s() take a KvrsFIRState64f_32s cast to their
 * type too; of its taps the former stores what lies before the point. The delay line of a KvrsFIRState_32s is read and
 * replaced by the functions of KvrsFIRState64f_32s.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer, ::kvrStatusContextMismatch.
 *
 * ### Filtering
 *
 * FIR filters `len` samples from `src` to `dst`, which do not overlap; the forms that end in _I and _ISfs work in place.
 * FIROne filters one sample. The three may be mixed. All but FIROne also run filters at two rates (fir_multirate.h), and
 * kvrsFIR_32f() and kvrsFIR_16s_Sfs() streams (fir_stream.h).
 *
 * A short filter's sums are computed as they stand. Long filters on long pieces run as block convolution by
 * FFT (overlap-save: Stockham, High-speed convolution and correlation, 1966) where that is faster, which
 * takes at least 512 samples (256 of complex ones), and as many taps as this table says; in place, as many samples must
 * remain behind the 4,096 in hand.
 *
 * | Taps | 32f | 64f | 32fc | 64fc | 32s | 16 bits |
 * |------|-----|-----|------|------|-----|---------|
 * | from | 64  | 64  | 16   | 32   | 32, and by kvrsFIRInitAlloc_32s() only | none |
 *
 * Threads: pieces longer than 1,600 samples (800 of complex ones) may use those of the state, if each of them has so much
 * to do that it is worth waking. That changes no result.
 *
 * By blocks or not decides on no more than rounding: floating-point sums are in an order of their own. Sums of
 * whole numbers that their type holds exactly are exact unless they run by FFT. In a block convolution an infinite or
 * huge sample spreads over its block, and the error of all results of a block is in proportion to the largest.
 *
 * | Results of     | are                                                                                               |
 * |----------------|---------------------------------------------------------------------------------------------------|
 * | 32f, 64f sums as integers | the sum times 2^(-scaleFactor), to nearest with ties to even, saturated; NaN gives the lowest number |
 * | 16-bit taps    | the 32-bit sum, modulo 2^32, shifted left by tapsFactor - scaleFactor (from -31 to 31) modulo 2^32, or right and rounded to nearest with ties to even, saturated to 16 bits |
 *
 * The addend that rounds a shift to the right wraps as the sum does.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space,
 * ::kvrStatusContextMismatch. FIROne has no length. A filter at two rates that is run in place may give
 * ::kvrStatusOutOfMemory.
 *
 * A state is changed by every filtering call and must not be used by two calls at the same time.
 * @{
 */

typedef struct KvrsFIRState_32f KvrsFIRState_32f;
typedef struct KvrsFIRState_64f KvrsFIRState_64f;
typedef struct KvrsFIRState_32fc KvrsFIRState_32fc;
typedef struct KvrsFIRState_64fc KvrsFIRState_64fc;
typedef struct KvrsFIRState_32s KvrsFIRState_32s;
typedef struct KvrsFIRState_16s KvrsFIRState_16s;
typedef struct KvrsFIRState32f_16s KvrsFIRState32f_16s;
typedef struct KvrsFIRState32fc_16sc KvrsFIRState32fc_16sc;
typedef struct KvrsFIRState64f_16s KvrsFIRState64f_16s;
typedef struct KvrsFIRState64f_32f KvrsFIRState64f_32f;
typedef struct KvrsFIRState64f_32s KvrsFIRState64f_32s;
typedef struct KvrsFIRState64fc_16sc KvrsFIRState64fc_16sc;
typedef struct KvrsFIRState64fc_32fc KvrsFIRState64fc_32fc;
typedef struct KvrsFIRState64fc_32sc KvrsFIRState64fc_32sc;
typedef struct KvrsFIRState32s_16s KvrsFIRState32s_16s;
typedef struct KvrsFIRState32sc_16sc KvrsFIRState32sc_16sc;

KVRS_API KvrStatus kvrsFIRGetStateSize_32f(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize32f_16s(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize_32fc(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize32fc_16sc(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize_64f(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize64f_32f(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize64f_32s(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize64f_16s(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize_32s(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize_64fc(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize64fc_32fc(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize64fc_32sc(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize64fc_16sc(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize_16s(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize32s_16s(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize32s_16s32f(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize32sc_16sc(int tapsLen, int* size) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetStateSize32sc_16sc32fc(int tapsLen, int* size) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRInit_32f(KvrsFIRState_32f** state, const Kvr32f* taps, int tapsLen,
                                   const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit32f_16s(KvrsFIRState32f_16s** state, const Kvr32f* taps, int tapsLen,
                                      const Kvr16s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit_32fc(KvrsFIRState_32fc** state, const Kvr32fc* taps, int tapsLen,
                                    const Kvr32fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit32fc_16sc(KvrsFIRState32fc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                        const Kvr16sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit_64f(KvrsFIRState_64f** state, const Kvr64f* taps, int tapsLen,
                                   const Kvr64f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit64f_32f(KvrsFIRState64f_32f** state, const Kvr64f* taps, int tapsLen,
                                      const Kvr32f* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit64f_32s(KvrsFIRState64f_32s** state, const Kvr64f* taps, int tapsLen,
                                      const Kvr32s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit64f_16s(KvrsFIRState64f_16s** state, const Kvr64f* taps, int tapsLen,
                                      const Kvr16s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit_32s(KvrsFIRState_32s** state, const Kvr32s* taps, int tapsLen,
                                   const Kvr32s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit_64fc(KvrsFIRState_64fc** state, const Kvr64fc* taps, int tapsLen,
                                    const Kvr64fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit64fc_32fc(KvrsFIRState64fc_32fc** state, const Kvr64fc* taps, int tapsLen,
                                        const Kvr32fc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit64fc_32sc(KvrsFIRState64fc_32sc** state, const Kvr64fc* taps, int tapsLen,
                                        const Kvr32sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit64fc_16sc(KvrsFIRState64fc_16sc** state, const Kvr64fc* taps, int tapsLen,
                                        const Kvr16sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit_16s(KvrsFIRState_16s** state, const Kvr16s* taps, int tapsLen, int tapsFactor,
                                   const Kvr16s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit32s_16s(KvrsFIRState32s_16s** state, const Kvr32s* taps, int tapsLen,
                                      int tapsFactor, const Kvr16s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit32s_16s32f(KvrsFIRState32s_16s** state, const Kvr32f* taps, int tapsLen,
                                         const Kvr16s* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit32sc_16sc(KvrsFIRState32sc_16sc** state, const Kvr32sc* taps, int tapsLen,
                                        int tapsFactor, const Kvr16sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInit32sc_16sc32fc(KvrsFIRState32sc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                            const Kvr16sc* dlyLine, Kvr8u* buffer) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRInitAlloc_32f(KvrsFIRState_32f** state, const Kvr32f* taps, int tapsLen,
                                        const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc32f_16s(KvrsFIRState32f_16s** state, const Kvr32f* taps, int tapsLen,
                                           const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc_32fc(KvrsFIRState_32fc** state, const Kvr32fc* taps, int tapsLen,
                                         const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc32fc_16sc(KvrsFIRState32fc_16sc** state, const Kvr32fc* taps, int tapsLen,
                                             const Kvr16sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc_64f(KvrsFIRState_64f** state, const Kvr64f* taps, int tapsLen,
                                        const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc64f_32f(KvrsFIRState64f_32f** state, const Kvr64f* taps, int tapsLen,
                                           const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc64f_32s(KvrsFIRState64f_32s** state, const Kvr64f* taps, int tapsLen,
                                           const Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc64f_16s(KvrsFIRState64f_16s** state, const Kvr64f* taps, int tapsLen,
                                           const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc_32s(KvrsFIRState_32s** state, const Kvr32s* taps, int tapsLen,
                                        const Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc_64fc(KvrsFIRState_64fc** state, const Kvr64fc* taps, int tapsLen,
                                         const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc64fc_32fc(KvrsFIRState64fc_32fc** state, const Kvr64fc* taps, int tapsLen,
                                             const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc64fc_32sc(KvrsFIRState64fc_32sc** state, const Kvr64fc* taps, int tapsLen,
                                             const Kvr32sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc64fc_16sc(KvrsFIRState64fc_16sc** state, const Kvr64fc* taps, int tapsLen,
                                             const Kvr16sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc_16s(KvrsFIRState_16s** state, const Kvr16s* taps, int tapsLen,
                                        int tapsFactor, const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc32s_16s(KvrsFIRState32s_16s** state, const Kvr32s* taps, int tapsLen,
                                           int tapsFactor, const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc32s_16s32f(KvrsFIRState32s_16s** state, const Kvr32f* taps, int tapsLen,
                                              const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc32sc_16sc(KvrsFIRState32sc_16sc** state, const Kvr32sc* taps, int tapsLen,
                                             int tapsFactor, const Kvr16sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRInitAlloc32sc_16sc32fc(KvrsFIRState32sc_16sc** state, const Kvr32fc* taps,
                                                 int tapsLen, const Kvr16sc* dlyLine) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRFree_32f(KvrsFIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree32f_16s(KvrsFIRState32f_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree_32fc(KvrsFIRState_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree32fc_16sc(KvrsFIRState32fc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree_64f(KvrsFIRState_64f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree64f_32f(KvrsFIRState64f_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree64f_32s(KvrsFIRState64f_32s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree64f_16s(KvrsFIRState64f_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree_32s(KvrsFIRState_32s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree_64fc(KvrsFIRState_64fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree64fc_32fc(KvrsFIRState64fc_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree64fc_32sc(KvrsFIRState64fc_32sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree64fc_16sc(KvrsFIRState64fc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree_16s(KvrsFIRState_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree32s_16s(KvrsFIRState32s_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRFree32sc_16sc(KvrsFIRState32sc_16sc* state) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRGetTaps_32f(const KvrsFIRState_32f* state, Kvr32f* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps32f_16s(const KvrsFIRState32f_16s* state, Kvr32f* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps_32fc(const KvrsFIRState_32fc* state, Kvr32fc* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps32fc_16sc(const KvrsFIRState32fc_16sc* state, Kvr32fc* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps_64f(const KvrsFIRState_64f* state, Kvr64f* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps64f_32f(const KvrsFIRState64f_32f* state, Kvr64f* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps64f_32s(const KvrsFIRState64f_32s* state, Kvr64f* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps64f_16s(const KvrsFIRState64f_16s* state, Kvr64f* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps_32s(const KvrsFIRState_32s* state, Kvr32s* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps_64fc(const KvrsFIRState_64fc* state, Kvr64fc* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps64fc_32fc(const KvrsFIRState64fc_32fc* state, Kvr64fc* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps64fc_32sc(const KvrsFIRState64fc_32sc* state, Kvr64fc* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps64fc_16sc(const KvrsFIRState64fc_16sc* state, Kvr64fc* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps_16s(const KvrsFIRState_16s* state, Kvr16s* taps,
                                      int* tapsFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps32s_16s(const KvrsFIRState32s_16s* state, Kvr32s* taps,
                                         int* tapsFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps32s_16s32f(const KvrsFIRState32s_16s* state, Kvr32f* taps) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps32sc_16sc(const KvrsFIRState32sc_16sc* state, Kvr32sc* taps,
                                           int* tapsFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetTaps32sc_16sc32fc(const KvrsFIRState32sc_16sc* state,
                                               Kvr32fc* taps) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRSetTaps_32f(const Kvr32f* taps, KvrsFIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps32f_16s(const Kvr32f* taps, KvrsFIRState32f_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps_32fc(const Kvr32fc* taps, KvrsFIRState_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps32fc_16sc(const Kvr32fc* taps, KvrsFIRState32fc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps_64f(const Kvr64f* taps, KvrsFIRState_64f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps64f_32f(const Kvr64f* taps, KvrsFIRState64f_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps64f_32s(const Kvr64f* taps, KvrsFIRState64f_32s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps64f_16s(const Kvr64f* taps, KvrsFIRState64f_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps_32s(const Kvr32s* taps, KvrsFIRState_32s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps_64fc(const Kvr64fc* taps, KvrsFIRState_64fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps64fc_32fc(const Kvr64fc* taps, KvrsFIRState64fc_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps64fc_32sc(const Kvr64fc* taps, KvrsFIRState64fc_32sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps64fc_16sc(const Kvr64fc* taps, KvrsFIRState64fc_16sc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps_16s(const Kvr16s* taps, KvrsFIRState_16s* state,
                                      int tapsFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps32s_16s(const Kvr32s* taps, KvrsFIRState32s_16s* state,
                                         int tapsFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps32s_16s32f(const Kvr32f* taps, KvrsFIRState32s_16s* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps32sc_16sc(const Kvr32sc* taps, KvrsFIRState32sc_16sc* state,
                                           int tapsFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetTaps32sc_16sc32fc(const Kvr32fc* taps,
                                               KvrsFIRState32sc_16sc* state) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRGetDlyLine_32f(const KvrsFIRState_32f* state, Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine32f_16s(const KvrsFIRState32f_16s* state, Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine_32fc(const KvrsFIRState_32fc* state, Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine32fc_16sc(const KvrsFIRState32fc_16sc* state,
                                              Kvr16sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine_64f(const KvrsFIRState_64f* state, Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine64f_32f(const KvrsFIRState64f_32f* state, Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine64f_32s(const KvrsFIRState64f_32s* state, Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine64f_16s(const KvrsFIRState64f_16s* state, Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine_64fc(const KvrsFIRState_64fc* state, Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine64fc_32fc(const KvrsFIRState64fc_32fc* state,
                                              Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine64fc_32sc(const KvrsFIRState64fc_32sc* state,
                                              Kvr32sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine64fc_16sc(const KvrsFIRState64fc_16sc* state,
                                              Kvr16sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine_16s(const KvrsFIRState_16s* state, Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine32s_16s(const KvrsFIRState32s_16s* state, Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGetDlyLine32sc_16sc(const KvrsFIRState32sc_16sc* state,
                                              Kvr16sc* dlyLine) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIRSetDlyLine_32f(KvrsFIRState_32f* state, const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine32f_16s(KvrsFIRState32f_16s* state, const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine_32fc(KvrsFIRState_32fc* state, const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine32fc_16sc(KvrsFIRState32fc_16sc* state,
                                              const Kvr16sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine_64f(KvrsFIRState_64f* state, const Kvr64f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine64f_32f(KvrsFIRState64f_32f* state, const Kvr32f* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine64f_32s(KvrsFIRState64f_32s* state, const Kvr32s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine64f_16s(KvrsFIRState64f_16s* state, const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine_64fc(KvrsFIRState_64fc* state, const Kvr64fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine64fc_32fc(KvrsFIRState64fc_32fc* state,
                                              const Kvr32fc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine64fc_32sc(KvrsFIRState64fc_32sc* state,
                                              const Kvr32sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine64fc_16sc(KvrsFIRState64fc_16sc* state,
                                              const Kvr16sc* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine_16s(KvrsFIRState_16s* state, const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine32s_16s(KvrsFIRState32s_16s* state, const Kvr16s* dlyLine) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRSetDlyLine32sc_16sc(KvrsFIRState32sc_16sc* state,
                                              const Kvr16sc* dlyLine) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIROne_32f(Kvr32f src, Kvr32f* dst, KvrsFIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32f_16s_Sfs(Kvr16s src, Kvr16s* dst, KvrsFIRState32f_16s* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_32fc(Kvr32fc src, Kvr32fc* dst, KvrsFIRState_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32fc_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, KvrsFIRState32fc_16sc* state,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_64f(Kvr64f src, Kvr64f* dst, KvrsFIRState_64f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64f_32f(Kvr32f src, Kvr32f* dst, KvrsFIRState64f_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64f_32s_Sfs(Kvr32s src, Kvr32s* dst, KvrsFIRState64f_32s* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64f_16s_Sfs(Kvr16s src, Kvr16s* dst, KvrsFIRState64f_16s* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_32s_Sfs(Kvr32s src, Kvr32s* dst, KvrsFIRState_32s* state,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_64fc(Kvr64fc src, Kvr64fc* dst, KvrsFIRState_64fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64fc_32fc(Kvr32fc src, Kvr32fc* dst, KvrsFIRState64fc_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64fc_32sc_Sfs(Kvr32sc src, Kvr32sc* dst, KvrsFIRState64fc_32sc* state,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne64fc_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, KvrsFIRState64fc_16sc* state,
                                           int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne_16s_Sfs(Kvr16s src, Kvr16s* dst, KvrsFIRState_16s* state,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32s_16s_Sfs(Kvr16s src, Kvr16s* dst, KvrsFIRState32s_16s* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIROne32sc_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, KvrsFIRState32sc_16sc* state,
                                           int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIR_32f(const Kvr32f* src, Kvr32f* dst, int len,
                               KvrsFIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32f_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsFIRState32f_16s* state,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_32fc(const Kvr32fc* src, Kvr32fc* dst, int len,
                                KvrsFIRState_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32fc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len,
                                        KvrsFIRState32fc_16sc* state, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_64f(const Kvr64f* src, Kvr64f* dst, int len,
                               KvrsFIRState_64f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_32f(const Kvr32f* src, Kvr32f* dst, int len,
                                  KvrsFIRState64f_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, KvrsFIRState64f_32s* state,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsFIRState64f_16s* state,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, KvrsFIRState_32s* state,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_64fc(const Kvr64fc* src, Kvr64fc* dst, int len,
                                KvrsFIRState_64fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_32fc(const Kvr32fc* src, Kvr32fc* dst, int len,
                                    KvrsFIRState64fc_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, int len,
                                        KvrsFIRState64fc_32sc* state, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len,
                                        KvrsFIRState64fc_16sc* state, int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsFIRState_16s* state,
                                   int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32s_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, KvrsFIRState32s_16s* state,
                                      int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32sc_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len,
                                        KvrsFIRState32sc_16sc* state, int scaleFactor) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsFIR_32f_I(Kvr32f* srcDst, int len, KvrsFIRState_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32f_16s_ISfs(Kvr16s* srcDst, int len, KvrsFIRState32f_16s* state,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_32fc_I(Kvr32fc* srcDst, int len, KvrsFIRState_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32fc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsFIRState32fc_16sc* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_64f_I(Kvr64f* srcDst, int len, KvrsFIRState_64f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_32f_I(Kvr32f* srcDst, int len, KvrsFIRState64f_32f* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_32s_ISfs(Kvr32s* srcDst, int len, KvrsFIRState64f_32s* state,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64f_16s_ISfs(Kvr16s* srcDst, int len, KvrsFIRState64f_16s* state,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_32s_ISfs(Kvr32s* srcDst, int len, KvrsFIRState_32s* state,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_64fc_I(Kvr64fc* srcDst, int len, KvrsFIRState_64fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_32fc_I(Kvr32fc* srcDst, int len, KvrsFIRState64fc_32fc* state) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_32sc_ISfs(Kvr32sc* srcDst, int len, KvrsFIRState64fc_32sc* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR64fc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsFIRState64fc_16sc* state,
                                         int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR_16s_ISfs(Kvr16s* srcDst, int len, KvrsFIRState_16s* state,
                                    int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32s_16s_ISfs(Kvr16s* srcDst, int len, KvrsFIRState32s_16s* state,
                                       int scaleFactor) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIR32sc_16sc_ISfs(Kvr16sc* srcDst, int len, KvrsFIRState32sc_16sc* state,
                                         int scaleFactor) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
