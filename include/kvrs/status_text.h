/* What a status says, in words.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_STATUS_TEXT_H
#define KVRS_STATUS_TEXT_H

#include "kvrs/types.h"

/** @defgroup status_text Statuses in words
 * @{
 */

/** The meaning of a status in a few words: "an allocation failed" for ::kvrStatusOutOfMemory, "unknown status" for a
 * number that is none. The text is a constant and needs no release. Inline, so that the library has no texts, only
 * programs that ask for them. Made from the list in types.h by tools/make_status_text.py. */
static inline const char* kvrsStatusText(KvrStatus status) {
  switch (status) {
    case kvrStatusOk:
      return "success";
    case kvrStatusSqrtNegArg:
      return "a square root of a negative number was met";
    case kvrStatusInvZeroWarn:
      return "an inverse threshold met a zero";
    case kvrStatusEvenMedianMask:
      return "an even median mask was reduced by one";
    case kvrStatusDivByZeroWarn:
      return "a division by zero was met and its result replaced";
    case kvrStatusLnZeroArg:
      return "a logarithm of zero was met";
    case kvrStatusLnNegArg:
      return "a logarithm of a negative number was met";
    case kvrStatusMaxOrderFlat:
      return "the data holds values with no order of magnitude";
    case kvrStatusBadArg:
      return "a comparison or a delay index that the function does not know";
    case kvrStatusBadLength:
      return "a length below 1, or of an array that no address space holds";
    case kvrStatusBadFlag:
      return "a flag that the function does not know";
    case kvrStatusNullPointer:
      return "a pointer argument is null";
    case kvrStatusOutOfMemory:
      return "an allocation failed";
    case kvrStatusDivByZeroError:
      return "a scalar divisor is zero";
    case kvrStatusNonPositiveParam:
      return "a parameter is zero or below";
    case kvrStatusBadTapScale:
      return "a scale tap is negative";
    case kvrStatusBadFftOrder:
      return "an FFT order out of range";
    case kvrStatusBadFftFlag:
      return "a normalisation flag that is not accepted";
    case kvrStatusContextMismatch:
      return "a context of another kind, or none";
    case kvrStatusThresholdOrder:
      return "the lower level lies above the upper one";
    case kvrStatusNegativeThreshold:
      return "a level below 0";
    case kvrStatusBadDelayIndex:
      return "a delay-line index out of range";
    case kvrStatusBadIirOrder:
      return "an IIR order below 1";
    case kvrStatusBadTapsLength:
      return "fewer than one tap";
    case kvrStatusBadRelFreq:
      return "a relative frequency out of range";
    case kvrStatusBadPhase:
      return "a multi-rate phase out of range";
    case kvrStatusBadRateFactor:
      return "a multi-rate factor below 1";
    case kvrStatusBadSamplePhase:
      return "a sampling phase out of range";
    case kvrStatusBadSampleFactor:
      return "a sampling factor below 1";
    case kvrStatusBadShift:
      return "a negative shift count";
    case kvrStatusBadWindowLength:
      return "a mask length below 1";
    case kvrStatusBadWaveletOffset:
      return "an offset of a wavelet filter out of range";
    case kvrStatusBadJaehneMagnitude:
      return "a magnitude of Jaehne's signal below 0";
    case kvrStatusKaiserOverflow:
      return "the parameter of a Kaiser window overflows";
    case kvrStatusBadTriangleAsym:
      return "an asymmetry of a triangle out of range";
    case kvrStatusBadTrianglePhase:
      return "a phase of a triangle out of range";
    case kvrStatusBadTriangleFreq:
      return "a frequency of a triangle out of range";
    case kvrStatusBadTriangleMagnitude:
      return "a magnitude of a triangle not above 0";
    case kvrStatusBadTonePhase:
      return "a phase of a tone out of range";
    case kvrStatusBadToneFreq:
      return "a frequency of a tone out of range";
    case kvrStatusBadToneMagnitude:
      return "a magnitude of a tone not above 0";
    case kvrStatusBadChannelCount:
      return "fewer than one channel";
    case kvrStatusBadMatrixStep:
      return "a step of a matrix that is no positive multiple of 8 bytes";
    case kvrStatusBadSparseIndex:
      return "sparse positions negative, or not strictly ascending";
    case kvrStatusSingularMatrix:
      return "a pivot too close to zero";
    case kvrStatusBadIirGenOrder:
      return "a design order out of range";
    case kvrStatusBadIirGenFreq:
      return "a design frequency out of range";
    case kvrStatusBadIirGenDeviation:
      return "a passband deviation out of range";
    case kvrStatusBadRoundMode:
      return "a rounding mode that the function does not accept";
    default:
      return "unknown status";
  }
}

/** @} */

#endif
