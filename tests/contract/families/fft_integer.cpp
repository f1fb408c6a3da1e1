// What is particular in the checks of include/kvrs/fft_integer.h.
// SPDX-License-Identifier: MIT
#include "kvrs/fft_integer.h"

#include "kvrs/fft.h"
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

template <class Spec, auto init>
void* make(Kvr8u* memory) {
  Spec* spec = nullptr;
  init(&spec, 4, kvrFftNoDivByAny, kvrHintNone, memory, memory + kInitBuffer);
  return spec;
}

const Family family{{
    .optionalPointers =
        {
            {.functions = "kvrsFFT(Fwd|Inv).*", .parameter = "buffer"},
            {.functions = "kvrsFFTInit_(C_32sc?|R_32s|R_16s32s)",
             .parameter = "initBuf"},  // of those of 32 bits, orders below 11 do not look at it
        },
    .badValues =
        {
            {"kvrsFFTGetSize_.*", "order", -1, kvrStatusBadFftOrder, Rank::beforePointers},
            {"kvrsFFTGetSize_.*", "order", 31, kvrStatusBadFftOrder, Rank::beforePointers},
            {"kvrsFFTGetSize_.*", "order", 28, kvrStatusBadFftOrder, Rank::afterPointers},
            {"kvrsFFTGetSize_.*", "flag", 0, kvrStatusBadFftFlag, Rank::afterPointers},
            {"kvrsFFTInitAlloc_.*", "order", -1, kvrStatusBadFftOrder, Rank::afterPointers},
            {"kvrsFFTInitAlloc_.*", "flag", 16, kvrStatusBadFftFlag, Rank::afterPointers},
        },
    .contexts =
        {
            {.type = "KvrsFFTSpec_C_16sc", .make = make<KvrsFFTSpec_C_16sc, kvrsFFTInit_C_16sc>},
            {.type = "KvrsFFTSpec_C_16s", .make = make<KvrsFFTSpec_C_16s, kvrsFFTInit_C_16s>},
            {.type = "KvrsFFTSpec_R_16s", .make = make<KvrsFFTSpec_R_16s, kvrsFFTInit_R_16s>},
            {.type = "KvrsFFTSpec_C_32sc", .make = make<KvrsFFTSpec_C_32sc, kvrsFFTInit_C_32sc>},
            {.type = "KvrsFFTSpec_C_32s", .make = make<KvrsFFTSpec_C_32s, kvrsFFTInit_C_32s>},
            {.type = "KvrsFFTSpec_R_32s", .make = make<KvrsFFTSpec_R_32s, kvrsFFTInit_R_32s>},
            {.type = "KvrsFFTSpec_R_16s32s", .make = make<KvrsFFTSpec_R_16s32s, kvrsFFTInit_R_16s32s>},
        },
    .contextRanks = {{"kvrsFFTGetBufSize_.*", Rank::afterPointers}},
}};

}  // namespace
}  // namespace kvrs::test
