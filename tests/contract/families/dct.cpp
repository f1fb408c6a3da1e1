// What is particular in the checks of include/kvrs/dct.h.
// SPDX-License-Identifier: MIT
#include "kvrs/dct.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

template <class Spec, auto init>
void* make(Kvr8u* memory) {
  Spec* spec = nullptr;
  init(&spec, 16, kvrHintNone, memory, memory + kInitBuffer);
  return spec;
}

const Family family{{
    .optionalPointers =
        {
            {.functions = "kvrsDCT(Fwd|Inv)_.*", .parameter = "buffer"},
            {.functions = "kvrsDCT(Fwd|Inv)Init_.*", .parameter = "initBuf"},  // 16 points need none
        },
    .latePointers = {{.functions = "kvrsDCT(Fwd|Inv)Init_.*", .parameter = "specMem"}},
    .lengthFirst = {"kvrsDCT(Fwd|Inv)GetSize_.*"},
    .freeLengths = {{.functions = "kvrsDCT(Fwd|Inv)Init_.*", .parameter = "len"}},
    .badValues =
        {
            {"kvrsDCT(Fwd|Inv)Init_.*", "len", 0, kvrStatusBadLength, Rank::afterPointers},
            {"kvrsDCT(Fwd|Inv)Init_.*", "len", -1, kvrStatusBadLength, Rank::afterPointers},
            {"kvrsDCT(Fwd|Inv)GetSize_.*", "len", 1 << 27, kvrStatusBadFftOrder, Rank::afterPointers},
            {"kvrsDCT(Fwd|Inv)GetSize_.*", "len", (1 << 26) + 1, kvrStatusBadFftOrder, Rank::afterPointers},
            {"kvrsDCT(Fwd|Inv)InitAlloc_.*", "len", 1 << 27, kvrStatusBadFftOrder, Rank::afterPointers},
        },
    .contexts =
        {
            {.type = "KvrsDCTFwdSpec_16s", .make = make<KvrsDCTFwdSpec_16s, kvrsDCTFwdInit_16s>},
            {.type = "KvrsDCTInvSpec_16s", .make = make<KvrsDCTInvSpec_16s, kvrsDCTInvInit_16s>},
            {.type = "KvrsDCTFwdSpec_32f", .make = make<KvrsDCTFwdSpec_32f, kvrsDCTFwdInit_32f>},
            {.type = "KvrsDCTInvSpec_32f", .make = make<KvrsDCTInvSpec_32f, kvrsDCTInvInit_32f>},
            {.type = "KvrsDCTFwdSpec_64f", .make = make<KvrsDCTFwdSpec_64f, kvrsDCTFwdInit_64f>},
            {.type = "KvrsDCTInvSpec_64f", .make = make<KvrsDCTInvSpec_64f, kvrsDCTInvInit_64f>},
        },
    .contextRanks = {{"kvrsDCT(Fwd|Inv)GetBufSize_.*", Rank::afterPointers}},
}};

}  // namespace
}  // namespace kvrs::test
