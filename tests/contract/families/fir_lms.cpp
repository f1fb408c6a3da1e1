// What is particular in the checks of include/kvrs/fir_lms.h.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_lms.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .optionalPointers = {{"kvrsFIRLMSInitAlloc.*", "taps"},
                         {"kvrsFIRLMS(InitAlloc|SetDlyLine).*", "dlyLine"},
                         {"kvrsFIRLMSFree.*", "state"}},
    // Steps with which taps do not grow.
    .validValues = {{"kvrsFIRLMS(One_Direct)?_32f", "mu", 0x1p-7},
                    {"kvrsFIRLMS(One_Direct)?32f_16s", "mu", 0x1p-38}},
    .badValues =
        {
            {"kvrsFIRLMSInitAlloc(_32f|32f_16s)", "tapsLen", 0, kvrStatusBadLength, Rank::afterPointers},
            {"kvrsFIRLMSInitAlloc(_32f|32f_16s)", "tapsLen", -5, kvrStatusBadLength, Rank::afterPointers},
            {"kvrsFIRLMSOne_.*", "tapsLen", 0, kvrStatusBadLength, Rank::afterPointers},
            {"kvrsFIRLMSOne_.*", "tapsLen", -5, kvrStatusBadLength, Rank::afterPointers},
        },
    .badContents =
        {
            {"kvrsFIRLMSOne_.*", "dlyLineIndex", {-1}, kvrStatusBadDelayIndex},
            {"kvrsFIRLMSOne_.*", "dlyLineIndex", {4}, kvrStatusBadDelayIndex},
        },
    .contexts =
        {
            {.type = "KvrsFIRLMSState_32f",
             .make = [](Kvr8u*) -> void* {
               KvrsFIRLMSState_32f* state = nullptr;
               kvrsFIRLMSInitAlloc_32f(&state, nullptr, 4, nullptr, 0);
               return state;
             },
             .release = releaseBy<kvrsFIRLMSFree_32f>},
            {.type = "KvrsFIRLMSState32f_16s",
             .make = [](Kvr8u*) -> void* {
               KvrsFIRLMSState32f_16s* state = nullptr;
               kvrsFIRLMSInitAlloc32f_16s(&state, nullptr, 4, nullptr, 0);
               return state;
             },
             .release = releaseBy<kvrsFIRLMSFree32f_16s>},
        },
    .contextRanks = {{"kvrsFIRLMS(_32f|32f_16s)", Rank::afterLength},
                     {"kvrsFIRLMSGet(Taps|DlyLine)(_32f|32f_16s)", Rank::afterPointers}},
    .wordless = {"kvrsFIRLMSFree(_32f|32f_16s)"},
}};

}  // namespace
}  // namespace kvrs::test
