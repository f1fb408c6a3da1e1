// What is particular in the checks of include/kvrs/iir_gen.h.
// SPDX-License-Identifier: MIT
#include "kvrs/iir_gen.h"

#include <cmath>

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kFunctions = "kvrsIIRGen(Low|High)pass_64f";

const Family family{{
    .validValues = {{kFunctions, "rFreq", 0.25}},
    .badValues =
        {
            {kFunctions, "rFreq", 0, kvrStatusBadIirGenFreq, Rank::afterPointers},
            {kFunctions, "rFreq", 0.5, kvrStatusBadIirGenFreq, Rank::afterPointers},
            {kFunctions, "rFreq", NAN, kvrStatusBadIirGenFreq, Rank::afterPointers},
            {kFunctions, "order", 0, kvrStatusBadIirGenOrder, Rank::afterPointers},
            {kFunctions, "order", 13, kvrStatusBadIirGenOrder, Rank::afterPointers},
            {kFunctions, "passDevDb", 0, kvrStatusBadIirGenDeviation, Rank::afterPointers},
            {kFunctions, "passDevDb", 29.000001, kvrStatusBadIirGenDeviation, Rank::afterPointers},
            {kFunctions, "passDevDb", NAN, kvrStatusBadIirGenDeviation, Rank::afterPointers},
        },
}};

}  // namespace
}  // namespace kvrs::test
