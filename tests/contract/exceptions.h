// Where a function's checks leave the usual order, one row for each. Everything that has no row is held to
// the usual one. Names are regular expressions on the whole name.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_CONTRACT_EXCEPTIONS_H
#define KVRS_TESTS_CONTRACT_EXCEPTIONS_H

#include "kvrs/types.h"

namespace kvrs::test {

// A pointer that may be null. Both are regular expressions.
struct OptionalPointer {
  const char* functions;
  const char* parameter;
};
inline constexpr OptionalPointer kOptionalPointers[] = {
    {"kvrs(FFT|DFT)(Fwd|Inv).*", "buffer"},
    {"kvrsFFTInit_.*", "initBuf"},  // orders below 11 do not look at it
    {"kvrsFIR(Init|SetDlyLine).*", "dlyLine"},
    {"kvrsRealToCplx_.*", "src(Re|Im)"},  // not both
};

// A pointer that is tested after the values of Rank::afterPointers.
inline constexpr OptionalPointer kLatePointers[] = {
    {"kvrsJoin(Scaled)?_.*_D2L", "src"},
    {"kvrsSplitScaled_.*_D2L", "dst"},
};

// A pointer that is tested after everything else, when other outputs have been written.
inline constexpr OptionalPointer kLastPointers[] = {
    {"kvrsCartToPolar_16sc_Sfs", "dstPhase"},
};

// The length is tested before the pointers.
inline constexpr const char* kLengthFirst[] = {
    "kvrs(Add|Sub)_(16|32)sc_I?Sfs",
    "kvrs(Add|Sub)_(32|64)fc(_I)?",
    "kvrsMaxOrder_.*",
    "kvrsDCTFwdGetSize_.*",
};

// The length is only tested against 0.
inline constexpr const char* kLengthAgainstZero[] = {
    "kvrsZeroCrossing_.*",
    "kvrsMulC_64s_ISfs",
    "kvrsMulC_64f64s_ISfs",
    "kvrsDivC_64s_ISfs",
};

// No checks at all.
inline constexpr const char* kUnchecked[] = {"kvrsMinEvery_64f_I"};

// What a parameter is in a valid call, where it is not 1 (a length is 16).
struct ValidValue {
  const char* functions;
  const char* parameter;
  double value;
};
inline constexpr ValidValue kValidValues[] = {
    {".*", "scaleFactor", 0},  {".*", "order", 4},        {".*", "flag", kvrFftNoDivByAny},
    {".*", "tapsLen", 4},      {".*", "srcBitOffset", 0}, {".*", "dstBitOffset", 0},
    {".*", "dlyLineIndex", 0}, {".*", "hint", 0},
};

// A value that is refused, alone or together with another fault.
enum class Rank {
  beforePointers,  // reported even where a pointer is null
  afterPointers,   // not where a pointer is null, but even where the length is bad
  afterLength,     // only where nothing else is wrong
};
struct BadValue {
  const char* functions;
  const char* parameter;
  double value;
  KvrStatus status;
  Rank rank;
};
inline constexpr BadValue kBadValues[] = {
    {"kvrs[LR]ShiftC_.*", "val", -1, kvrStatusBadShift, Rank::afterLength},
    {"kvrs[LR]ShiftC_.*", "val", -2147483648.0, kvrStatusBadShift, Rank::afterLength},
    {"kvrsDiv_Round_.*", "rndMode", 3, kvrStatusBadRoundMode, Rank::afterLength},
    {"kvrsDiv_Round_.*", "rndMode", -1, kvrStatusBadRoundMode, Rank::afterLength},
    {"kvrsDivC_(8u|16u|16s|16sc|32f|64f|32fc|64fc)(_.*)?", "val", 0, kvrStatusDivByZeroError,
     Rank::afterLength},
    {"kvrsNormalize_.*", "vDiv", 0, kvrStatusDivByZeroError, Rank::afterLength},
    {"kvrsNormalize_32fc?", "vDiv", 1e-40, kvrStatusDivByZeroError, Rank::afterLength},
    {"kvrsNormalize_64fc?", "vDiv", 1e-310, kvrStatusDivByZeroError, Rank::afterLength},
    {"kvrsCopy_1u", "srcBitOffset", -1, kvrStatusBadLength, Rank::afterPointers},
    {"kvrsCopy_1u", "dstBitOffset", -1, kvrStatusBadLength, Rank::afterPointers},
    {"kvrsPackBits_32u8u", "dstBitOffset", -1, kvrStatusBadLength, Rank::afterPointers},
    {"kvrsFFTGetSize_.*", "order", -1, kvrStatusBadFftOrder, Rank::beforePointers},
    {"kvrsFFTGetSize_.*", "order", 31, kvrStatusBadFftOrder, Rank::beforePointers},
    {"kvrsFFTGetSize_.*", "order", 28, kvrStatusBadFftOrder, Rank::afterPointers},
    {"kvrsFFTGetSize_.*", "flag", 0, kvrStatusBadFftFlag, Rank::afterPointers},
    {"kvrsFFTGetSize_.*", "flag", 3, kvrStatusBadFftFlag, Rank::afterPointers},
    {"kvrsFFTInitAlloc_.*", "order", -1, kvrStatusBadFftOrder, Rank::afterPointers},
    {"kvrsFFTInitAlloc_.*", "flag", 16, kvrStatusBadFftFlag, Rank::afterPointers},
    {"kvrsFIR(GetStateSize|Init|InitAlloc)_?(32f|32fc|64f|64fc).*", "tapsLen", 0, kvrStatusBadTapsLength,
     Rank::afterPointers},
    {"kvrsFIR(GetStateSize|Init|InitAlloc)_?(32f|32fc|64f|64fc).*", "tapsLen", -5, kvrStatusBadTapsLength,
     Rank::afterPointers},
    {"kvrsConvert_(32f16f|16s16f|16f16s_Sfs)", "rndMode", kvrRoundFinancial, kvrStatusBadRoundMode,
     Rank::afterLength},
    {"kvrs(Join|Split).*_D2L", "nChannels", 0, kvrStatusBadLength, Rank::afterPointers},
    {"kvrs(Join|Split).*_D2L", "nChannels", -2147483648.0, kvrStatusBadLength, Rank::afterPointers},
    {"kvrs(Join|Split).*_D2L", "chanLen", 0, kvrStatusBadLength, Rank::afterPointers},
    {"kvrs(Join|Split).*_D2L", "chanLen", -1, kvrStatusBadLength, Rank::afterPointers},
};

}  // namespace kvrs::test

#endif
