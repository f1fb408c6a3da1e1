// What is particular in the checks of include/kvrs/fft.h.
// SPDX-License-Identifier: MIT
#include "kvrs/fft.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .optionalPointers =
        {
            {.functions = "kvrsFFT(Fwd|Inv).*", .parameter = "buffer"},
            {.functions = "kvrsFFTInit_.*", .parameter = "initBuf"},  // orders below 11 do not look at it
        },
    .badValues =
        {
            {"kvrsFFTGetSize_.*", "order", -1, kvrStatusBadFftOrder, Rank::beforePointers},
            {"kvrsFFTGetSize_.*", "order", 31, kvrStatusBadFftOrder, Rank::beforePointers},
            {"kvrsFFTGetSize_.*", "order", 28, kvrStatusBadFftOrder, Rank::afterPointers},
            {"kvrsFFTGetSize_.*", "flag", 0, kvrStatusBadFftFlag, Rank::afterPointers},
            {"kvrsFFTGetSize_.*", "flag", 3, kvrStatusBadFftFlag, Rank::afterPointers},
            {"kvrsFFTInitAlloc_.*", "order", -1, kvrStatusBadFftOrder, Rank::afterPointers},
            {"kvrsFFTInitAlloc_.*", "flag", 16, kvrStatusBadFftFlag, Rank::afterPointers},
        },
    .contexts =
        {
            {.type = "KvrsFFTSpec_C_32fc",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFFTSpec_C_32fc* spec = nullptr;
               kvrsFFTInit_C_32fc(&spec, 4, kvrFftNoDivByAny, kvrHintNone, memory, memory + kInitBuffer);
               return spec;
             }},
            {.type = "KvrsFFTSpec_R_32f",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFFTSpec_R_32f* spec = nullptr;
               kvrsFFTInit_R_32f(&spec, 4, kvrFftNoDivByAny, kvrHintNone, memory, memory + kInitBuffer);
               return spec;
             }},
        },
    .contextRanks = {{"kvrsFFTGetBufSize_.*", Rank::afterPointers}},
}};

}  // namespace
}  // namespace kvrs::test
