// What is particular in the checks of include/kvrs/fir_lms_multirate.h.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_lms_multirate.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kInitAlloc = "kvrsFIRLMSMRInitAlloc.*";

constexpr Kvr32s kTaps[] = {0x12345678, -0x7FFF0000, 0x0000FFFF, 0x70000000};
constexpr Kvr16s kLine[] = {-32768, 5, 32767, 100, -3};
constexpr Kvr32sc kComplexTaps[] = {
    {0x12345678, -0x7FFF0000}, {0x0000FFFF, 0x70000000}, {-1, 1}, {1 << 30, 7}};
constexpr Kvr16sc kComplexLine[] = {{-32768, 5}, {32767, 100}, {-3, -32768}, {1, 2}, {-9, 0}};

const Family family{{
    .optionalPointers = {{"kvrsFIRLMSMR(InitAlloc|SetTaps).*", "taps"},
                         {"kvrsFIRLMSMR(InitAlloc|SetDlyLine).*", "dlyLine"},
                         {"kvrsFIRLMSMRFree.*", "state"}},
    .badValues =
        {
            {kInitAlloc, "tapsLen", 0, kvrStatusBadLength, Rank::afterPointers},
            {kInitAlloc, "tapsLen", -5, kvrStatusBadLength, Rank::afterPointers},
            {kInitAlloc, "dlyStep", 0, kvrStatusBadLength, Rank::afterPointers},
            {kInitAlloc, "dlyStep", -5, kvrStatusBadLength, Rank::afterPointers},
            {kInitAlloc, "updateDly", -1, kvrStatusBadLength, Rank::afterPointers},
            {kInitAlloc, "dlyLineIndex", -1, kvrStatusBadLength, Rank::afterPointers},
            {kInitAlloc, "dlyLineIndex", 5, kvrStatusBadLength, Rank::afterPointers},
            {"kvrsFIRLMSMRGetDlyVal.*", "index", -1, kvrStatusBadArg},
            {"kvrsFIRLMSMRGetDlyVal.*", "index", 6, kvrStatusBadArg},
        },
    .contexts =
        {
            {.type = "KvrsFIRLMSMRState32s_16s",
             .make = [](Kvr8u*) -> void* {
               KvrsFIRLMSMRState32s_16s* state = nullptr;
               kvrsFIRLMSMRInitAlloc32s_16s(&state, kTaps, 4, kLine, 0, 1, 1, 1);
               return state;
             },
             .release = releaseBy<kvrsFIRLMSMRFree32s_16s>},
            {.type = "KvrsFIRLMSMRState32sc_16sc",
             .make = [](Kvr8u*) -> void* {
               KvrsFIRLMSMRState32sc_16sc* state = nullptr;
               kvrsFIRLMSMRInitAlloc32sc_16sc(&state, kComplexTaps, 4, kComplexLine, 0, 1, 1, 1);
               return state;
             },
             .release = releaseBy<kvrsFIRLMSMRFree32sc_16sc>},
        },
    .contextRanks = {{"kvrsFIRLMSMR.*", Rank::afterPointers}},
    .wordless = {"kvrsFIRLMSMR(Free|GetTapsPointer).*"},
}};

}  // namespace
}  // namespace kvrs::test
