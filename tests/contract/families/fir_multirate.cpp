// What is particular in the checks of include/kvrs/fir_multirate.h.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_multirate.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kMakers = "kvrsFIRMR(GetStateSize|Init|InitAlloc)(_|32|64).*";
const char* const kInits = "kvrsFIRMR(Init|InitAlloc)(_|32|64).*";
const char* const kRated = "kvrsFIRMR((GetStateSize|Init|InitAlloc)(_|32|64).*|.*_Direct_.*)";
const char* const kDirect = "kvrsFIRMR.*_Direct_.*";

// The stateless forms test samples, the number of iterations, the taps, numbers, and then the delay line.
const Family family{{
    .optionalPointers = {{kInits, "dlyLine"}},
    .latePointers = {{kDirect, "taps"}},
    .lastPointers = {{kDirect, "dlyLine"}},
    .freeLengths = {{kDirect, "numIters"}},
    .validValues =
        {
            {kRated, "upFactor", 3},
            {kRated, "upPhase", 2},
            {kRated, "downFactor", 2},
            {kRated, "downPhase", 1},
        },
    .badValues =
        {
            {kMakers, "tapsLen", 0, kvrStatusBadTapsLength, Rank::afterPointers},
            {kMakers, "upFactor", 0, kvrStatusBadRateFactor, Rank::afterPointers},
            {kMakers, "downFactor", -1, kvrStatusBadRateFactor, Rank::afterPointers},
            {kInits, "upPhase", 3, kvrStatusBadPhase, Rank::afterPointers},
            {kInits, "upPhase", -1, kvrStatusBadPhase, Rank::afterPointers},
            {kInits, "downPhase", 2, kvrStatusBadPhase, Rank::afterPointers},
            {kInits, "downPhase", -1, kvrStatusBadPhase, Rank::afterPointers},
            {kDirect, "numIters", 0, kvrStatusBadLength, Rank::afterPointers},
            {kDirect, "numIters", -1, kvrStatusBadLength, Rank::afterPointers},
            {kDirect, "tapsLen", 0, kvrStatusBadTapsLength},
            {kDirect, "upFactor", 0, kvrStatusBadRateFactor},
            {kDirect, "downFactor", 0, kvrStatusBadRateFactor},
            {kDirect, "upPhase", 3, kvrStatusBadPhase},
            {kDirect, "downPhase", -1, kvrStatusBadPhase},
        },
}};

}  // namespace
}  // namespace kvrs::test
