// What is particular in the checks of include/kvrs/fir_stream.h.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_stream.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kAll = "kvrsFIR(MR)?Stream(GetStateSize|Init|InitAlloc)_.*";
const char* const kRated = "kvrsFIRMRStream(GetStateSize|Init|InitAlloc)_16s";
const char* const kRatedInits = "kvrsFIRMRStream(Init|InitAlloc)_16s";
const char* const kInits16s = "kvrsFIR(MR)?Stream(Init|InitAlloc)_16s";

const Family family{{
    .validValues =
        {
            {"kvrsFIRMRStream.*", "upPhase", 0},
            {"kvrsFIRMRStream.*", "downPhase", 0},
        },
    .badValues =
        {
            {kAll, "tapsLen", 0, kvrStatusBadTapsLength, Rank::afterPointers},
            {kAll, "tapsLen", -5, kvrStatusBadTapsLength, Rank::afterPointers},
            {kRated, "upFactor", 0, kvrStatusBadRateFactor, Rank::afterPointers},
            {kRated, "downFactor", 0, kvrStatusBadRateFactor, Rank::afterPointers},
            {kRatedInits, "upPhase", 1, kvrStatusBadPhase, Rank::afterPointers},
            {kRatedInits, "downPhase", -1, kvrStatusBadPhase, Rank::afterPointers},
            {kInits16s, "rndMode", 3, kvrStatusBadRoundMode, Rank::afterPointers},
            {kInits16s, "rndMode", -1, kvrStatusBadRoundMode, Rank::afterPointers},
        },
}};

}  // namespace
}  // namespace kvrs::test
