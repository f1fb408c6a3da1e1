// What is particular in the checks of include/kvrs/triangle.h: `dst` and `len` of the Direct forms come after the values.
// SPDX-License-Identifier: MIT
#include "kvrs/triangle.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kDirect = "kvrsTriangle_Direct_.*";
const char* const kInit = "kvrsTriangleInit(Alloc)?Q15_16s";
const char* const kQ15 = "kvrsTriangleQ15_Direct_16s";

const Family family{{
    .latePointers = {{.functions = kDirect, .parameter = "dst"}},
    .validValues = {{.functions = kDirect, .parameter = "rFreq", .value = 0.03125}},
    .validContents = {{.functions = kDirect, .parameter = "phase", .elements = {1}}},
    .badValues =
        {
            {kDirect, "magn", 0, kvrStatusBadTriangleMagnitude, Rank::afterPointers},
            {kDirect, "magn", -1, kvrStatusBadTriangleMagnitude, Rank::afterPointers},
            {kDirect, "rFreq", 0.5, kvrStatusBadTriangleFreq, Rank::afterPointers},
            {kDirect, "rFreq", -1e-9, kvrStatusBadTriangleFreq, Rank::afterPointers},
            {kDirect, "asym", 3.1415930, kvrStatusBadTriangleAsym, Rank::afterPointers},
            {kDirect, "asym", -3.1415930, kvrStatusBadTriangleAsym, Rank::afterPointers},
            {kInit, "magn", 0, kvrStatusBadTriangleMagnitude, Rank::afterPointers},
            {kInit, "rFreqQ15", 16384, kvrStatusBadTriangleFreq, Rank::afterPointers},
            {kInit, "rFreqQ15", -1, kvrStatusBadTriangleFreq, Rank::afterPointers},
            {kInit, "phaseQ15", 205887, kvrStatusBadTrianglePhase, Rank::afterPointers},
            {kInit, "phaseQ15", -1, kvrStatusBadTrianglePhase, Rank::afterPointers},
            {kInit, "asymQ15", 102944, kvrStatusBadTriangleAsym, Rank::afterPointers},
            {kInit, "asymQ15", -102944, kvrStatusBadTriangleAsym, Rank::afterPointers},
            {kQ15, "magn", 0, kvrStatusBadTriangleMagnitude, Rank::afterLength},
            {kQ15, "rFreqQ15", 16384, kvrStatusBadTriangleFreq, Rank::afterLength},
            {kQ15, "phaseQ15", 205887, kvrStatusBadTrianglePhase, Rank::afterLength},
            {kQ15, "asymQ15", -102944, kvrStatusBadTriangleAsym, Rank::afterLength},
        },
    .badContents =
        {
            {kDirect, "phase", {6.283186}, kvrStatusBadTrianglePhase, Rank::afterPointers},
            {kDirect, "phase", {-1e-30}, kvrStatusBadTrianglePhase, Rank::afterPointers},
        },
    .contexts = {{.type = "KvrsTriangleState_16s",
                  .make = [](Kvr8u* memory) -> void* {
                    auto* state = reinterpret_cast<KvrsTriangleState_16s*>(memory);
                    kvrsTriangleInitQ15_16s(state, 1000, 1234, 5678, 9012);
                    return state;
                  }}},
    .contextRanks = {{"kvrsTriangleQ15_16s", Rank::afterLength}},
}};

}  // namespace
}  // namespace kvrs::test
