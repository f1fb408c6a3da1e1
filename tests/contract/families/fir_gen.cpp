// What is particular in the checks of include/kvrs/fir_gen.h: all bad values are bad lengths, and failing memory is a null
// pointer.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kAll = "kvrsFIRGen(Lowpass|Highpass|Bandpass|Bandstop)_64f";
const char* const kOne = "kvrsFIRGen(Lowpass|Highpass)_64f";
const char* const kTwo = "kvrsFIRGen(Bandpass|Bandstop)_64f";

const Family family{{
    .validValues =
        {
            {kAll, "tapsLen", 16},
            {kOne, "rFreq", 0.125},
            {kTwo, "rLowFreq", 0.125},
            {kTwo, "rHighFreq", 0.25},
        },
    .badValues =
        {
            {kAll, "tapsLen", 4, kvrStatusBadLength, Rank::afterPointers},
            {kAll, "tapsLen", -5, kvrStatusBadLength, Rank::afterPointers},
            {kOne, "rFreq", 0, kvrStatusBadLength, Rank::afterPointers},
            {kOne, "rFreq", 0.5, kvrStatusBadLength, Rank::afterPointers},
            {kTwo, "rLowFreq", 0, kvrStatusBadLength, Rank::afterPointers},
            {kTwo, "rLowFreq", 0.25, kvrStatusBadLength, Rank::afterPointers},
            {kTwo, "rHighFreq", 0.5, kvrStatusBadLength, Rank::afterPointers},
        },
    .memoryStatuses = {{kAll, kvrStatusNullPointer}},
}};

}  // namespace
}  // namespace kvrs::test
