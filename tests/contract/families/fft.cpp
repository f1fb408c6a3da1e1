// What is particular in the checks of include/kvrs/fft.h.
// SPDX-License-Identifier: MIT
#include "kvrs/fft.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

// Of 256 points: from 64 on transforms need memory for work, and ask for it where the caller gives none.
template <class Spec, auto init>
void* make(Kvr8u* memory) {
  Spec* spec = nullptr;
  init(&spec, 8, kvrFftNoDivByAny, kvrHintNone, memory, memory + kInitBuffer);
  return spec;
}

const Family family{{
    .optionalPointers =
        {
            {.functions = "kvrsFFT(Fwd|Inv).*", .parameter = "buffer"},
            {.functions = "kvrsFFTInit_[CR]_(32|64)fc?",
             .parameter = "initBuf"},  // orders below 11 do not look at it
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
            {.type = "KvrsFFTSpec_C_32fc", .make = make<KvrsFFTSpec_C_32fc, kvrsFFTInit_C_32fc>},
            {.type = "KvrsFFTSpec_C_32f", .make = make<KvrsFFTSpec_C_32f, kvrsFFTInit_C_32f>},
            {.type = "KvrsFFTSpec_R_32f", .make = make<KvrsFFTSpec_R_32f, kvrsFFTInit_R_32f>},
            {.type = "KvrsFFTSpec_C_64fc", .make = make<KvrsFFTSpec_C_64fc, kvrsFFTInit_C_64fc>},
            {.type = "KvrsFFTSpec_C_64f", .make = make<KvrsFFTSpec_C_64f, kvrsFFTInit_C_64f>},
            {.type = "KvrsFFTSpec_R_64f", .make = make<KvrsFFTSpec_R_64f, kvrsFFTInit_R_64f>},
        },
    .contextRanks = {{"kvrsFFTGetBufSize_.*", Rank::afterPointers}},
}};

}  // namespace
}  // namespace kvrs::test
