// What is particular in the checks of include/kvrs/tone.h: `dst` and `len` of the Direct forms come after the values.
// SPDX-License-Identifier: MIT
#include "kvrs/tone.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kDirect = "kvrsTone_Direct_.*";
const char* const kInit = "kvrsToneInit(Alloc)?Q15_16s";
const char* const kQ15 = "kvrsToneQ15_Direct_16s";

const Family family{{
    .latePointers = {{.functions = kDirect, .parameter = "dst"}},
    .validValues = {{.functions = kDirect, .parameter = "rFreq", .value = 0.125}},
    .validContents = {{.functions = kDirect, .parameter = "phase", .elements = {1}}},
    .badValues =
        {
            {kDirect, "magn", 0, kvrStatusBadToneMagnitude, Rank::afterPointers},
            {kDirect, "magn", -1, kvrStatusBadToneMagnitude, Rank::afterPointers},
            {kDirect, "rFreq", 0.5, kvrStatusBadToneFreq, Rank::afterPointers},
            {kDirect, "rFreq", -1e-9, kvrStatusBadToneFreq, Rank::afterPointers},
            {kInit, "magn", 0, kvrStatusBadToneMagnitude, Rank::afterPointers},
            {kInit, "rFreqQ15", 16384, kvrStatusBadToneFreq, Rank::afterPointers},
            {kInit, "rFreqQ15", -1, kvrStatusBadToneFreq, Rank::afterPointers},
            {kInit, "phaseQ15", 205887, kvrStatusBadTonePhase, Rank::afterPointers},
            {kInit, "phaseQ15", -1, kvrStatusBadTonePhase, Rank::afterPointers},
            {kQ15, "magn", 0, kvrStatusBadToneMagnitude, Rank::afterLength},
            {kQ15, "rFreqQ15", 16384, kvrStatusBadToneFreq, Rank::afterLength},
            {kQ15, "phaseQ15", 205887, kvrStatusBadTonePhase, Rank::afterLength},
        },
    .badContents =
        {
            {kDirect, "phase", {6.283186}, kvrStatusBadTonePhase, Rank::afterPointers},
            {kDirect, "phase", {-1e-30}, kvrStatusBadTonePhase, Rank::afterPointers},
        },
    .contexts = {{.type = "KvrsToneState_16s",
                  .make = [](Kvr8u* memory) -> void* {
                    auto* state = reinterpret_cast<KvrsToneState_16s*>(memory);
                    kvrsToneInitQ15_16s(state, 1000, 1234, 5678);
                    return state;
                  }}},
    .contextRanks = {{"kvrsToneQ15_16s", Rank::afterLength}},
}};

}  // namespace
}  // namespace kvrs::test
