/* Design of FIR filters.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FIR_GEN_H
#define KVRS_FIR_GEN_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup fir_gen Design of FIR filters
 *
 * The taps of a filter of linear phase by the window method: the ideal impulse response of a low-pass, high-pass,
 * band-pass or band-stop filter, cut to `tapsLen` taps, tapered by a window and, if `doNormal` is not 0, normalised to
 * unit gain in the pass band. The taps fit kvrsFIRInit_64f() and, converted, its relatives.
 *
 * Frequencies are relative to the sampling rate: 0.5 is half of it. With t the distance of a tap from the centre, which is
 * a whole number for odd `tapsLen` and a half more for even ones:
 *
 * | Function | the ideal response at t | at t = 0 | gain 1 at |
 * |----------|-------------------------|----------|-----------|
 * | Lowpass  | `sin(2 pi rFreq t) / (pi t)` | `2 rFreq` | 0 |
 * | Highpass | odd: `-sin(2 pi rFreq t) / (pi t)`; even: `cos(2 pi rFreq t) / (pi t)` | `1 - 2 rFreq` | 0.5 |
 * | Bandpass | `(sin(2 pi rHighFreq t) - sin(2 pi rLowFreq t)) / (pi t)` | `2 (rHighFreq - rLowFreq)` | `(rLowFreq + rHighFreq) / 2` |
 * | Bandstop | `(sin(2 pi rLowFreq t) - sin(2 pi rHighFreq t)) / (pi t)`; even: plus `(-1)^(t - 1/2) / (pi t)` | `1 - 2 (rHighFreq - rLowFreq)` | 0 |
 *
 * Filters are symmetric to the bit, `taps[tapsLen-1-i] = taps[i]`, but for the high-pass filter of even `tapsLen`, which is
 * antisymmetric: a symmetric one could not pass half of the sampling rate. A band-stop filter of even `tapsLen` stops that
 * frequency too. Sines come from kvrsTone_Direct_64f(), the accurate way, and pi t is added up.
 *
 * `winType` is ::kvrWinBartlett, ::kvrWinBlackmanOpt, ::kvrWinHamming or ::kvrWinHann; with any other value there is no
 * window.
 *
 * Normalisation divides by the sum of the taps (Lowpass), its magnitude (Bandstop), the magnitude of their alternating sum
 * (Highpass), or of their sum with the cosine of the mid frequency (Bandpass).
 *
 * ### Errors, in the order tested
 *
 * ::kvrStatusNullPointer for `taps`; ::kvrStatusBadLength for `tapsLen` below 5, for a frequency that is not between 0 and
 * 0.5, both excluded, or NaN, and for an rLowFreq that is not below rHighFreq; ::kvrStatusNullPointer if there is no memory
 * for the tones.
 * @{
 */

/** The window of a designed filter. */
enum { kvrWinBartlett = 0, kvrWinBlackmanOpt = 1, kvrWinHamming = 2, kvrWinHann = 3 };

KVRS_API KvrStatus kvrsFIRGenLowpass_64f(Kvr64f rFreq, Kvr64f* taps, int tapsLen, int winType,
                                         int doNormal) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGenHighpass_64f(Kvr64f rFreq, Kvr64f* taps, int tapsLen, int winType,
                                          int doNormal) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGenBandpass_64f(Kvr64f rLowFreq, Kvr64f rHighFreq, Kvr64f* taps, int tapsLen,
                                          int winType, int doNormal) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsFIRGenBandstop_64f(Kvr64f rLowFreq, Kvr64f rHighFreq, Kvr64f* taps, int tapsLen,
                                          int winType, int doNormal) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
