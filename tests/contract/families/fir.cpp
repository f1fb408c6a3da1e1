// What is particular in the checks of include/kvrs/fir.h.
// SPDX-License-Identifier: MIT
#include "kvrs/fir.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

constexpr Kvr32f kTaps32f[] = {1, 2, 3, 4};

const char* const kMakers = "kvrsFIR(GetStateSize|Init|InitAlloc)_?(32f|32fc|64f|64fc).*";

const Family family{{
    .optionalPointers = {{.functions = "kvrsFIR(Init|SetDlyLine).*", .parameter = "dlyLine"}},
    .badValues =
        {
            {kMakers, "tapsLen", 0, kvrStatusBadTapsLength, Rank::afterPointers},
            {kMakers, "tapsLen", -5, kvrStatusBadTapsLength, Rank::afterPointers},
        },
    .contexts =
        {
            {.type = "KvrsFIRState_32f",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState_32f* state = nullptr;
               kvrsFIRInit_32f(&state, kTaps32f, 4, nullptr, memory);
               return state;
             }},
        },
    .contextRanks =
        {
            {"kvrsFIR_.*", Rank::afterLength},
            {"kvrsFIR(One|GetTaps|SetTaps|GetDlyLine)_.*", Rank::afterPointers},
        },
    // Single-rate, multi-rate and stream records of one type are inspected and released by the same functions.
    .acceptedWords =
        {
            {"kvrsFIRFree_32f", {0x46493033, 0x46493333, 0x46493334}},
            {"kvrsFIR(GetTaps|GetDlyLine|SetDlyLine)_32f", {0x46493033}},
        },
}};

}  // namespace
}  // namespace kvrs::test
