// What is particular in the checks of include/kvrs/goertzel.h: Q15 forms test the frequency first.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kOne = "kvrsGoertz_.*";
const char* const kTwo = "kvrsGoertzTwo_.*";
const char* const kQ15 = "kvrsGoertzQ15_.*";
const char* const kTwoQ15 = "kvrsGoertzTwoQ15_.*";

const Family family{{
    .oneElement = {{.functions = kOne, .parameter = "dst"}},
    .validValues = {{.functions = kOne, .parameter = "relFreq", .value = 0.125},
                    {.functions = kQ15, .parameter = "relFreqQ15", .value = 4321}},
    .validContents = {{.functions = kTwo, .parameter = "relFreq", .elements = {0.125, 0.7}},
                      {.functions = kTwoQ15, .parameter = "relFreqQ15", .elements = {4321, 12345}}},
    .badValues =
        {
            {kOne, "relFreq", 1, kvrStatusBadRelFreq, Rank::afterLength},
            {kOne, "relFreq", -1e-9, kvrStatusBadRelFreq, Rank::afterLength},
            {kQ15, "relFreqQ15", -1, kvrStatusBadRelFreq, Rank::beforePointers},
            {kQ15, "relFreqQ15", -32768, kvrStatusBadRelFreq, Rank::beforePointers},
        },
    .badContents =
        {
            {kTwo, "relFreq", {1, 0.1}, kvrStatusBadRelFreq, Rank::afterLength},
            {kTwo, "relFreq", {0.1, -1e-9}, kvrStatusBadRelFreq, Rank::afterLength},
            {kTwoQ15, "relFreqQ15", {-1, 5}, kvrStatusBadRelFreq, Rank::beforePointers},
            {kTwoQ15, "relFreqQ15", {5, -32768}, kvrStatusBadRelFreq, Rank::beforePointers},
        },
}};

}  // namespace
}  // namespace kvrs::test
