// What is particular in the checks of include/kvrs/iir.h.
// SPDX-License-Identifier: MIT
#include "kvrs/iir.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

constexpr Kvr32f kTaps32f[] = {1, 1, 1, 1, 1, 4, 1, 1, 1, 1};
constexpr Kvr64f kTaps64f[] = {1, 1, 1, 1, 1, 4, 1, 1, 1, 1};
constexpr Kvr32fc kTaps32fc[10] = {{1, 0}, {1, 0}, {1, 0}, {1, 1}, {1, 0},
                                   {4, 0}, {1, 0}, {1, 0}, {1, 0}, {1, 0}};
constexpr Kvr64fc kTaps64fc[10] = {{1, 0}, {1, 0}, {1, 0}, {1, 1}, {1, 0},
                                   {4, 0}, {1, 0}, {1, 0}, {1, 0}, {1, 0}};

// In the maker's memory, of order 4 or of one section.
template <auto init, const auto& taps, int n, class State>
void* make(Kvr8u* memory) {
  State* state = nullptr;
  init(&state, taps, n, nullptr, memory);
  return state;
}

const Family family{{
    .optionalPointers = {{.functions = "kvrsIIR(Init|SetDlyLine).*", .parameter = "dlyLine"}},
    .latePointers = {{.functions = "kvrsIIROne_(BiQuad)?Direct_16s_I", .parameter = "taps|dlyLine"}},
    // On success they tell a mismatch.
    .unchecked = {"kvrsIIRSetTaps32s_16s", "kvrsIIRSetTaps32sc_16sc"},
    .validContents =
        {
            {.functions = "kvrsIIR(Init|InitAlloc|SetTaps).*(16sc|32sc|32fc|64fc).*",
             .parameter = "taps",
             .elements = {1, 0, 1, 0, 1, 0, 1, 1, 1, 0, 4, 0, 1, 0, 1, 0, 1, 0, 1, 0}},
            {.functions = "kvrsIIR(Init|InitAlloc|SetTaps).*",
             .parameter = "taps",
             .elements = {1, 1, 1, 1, 1, 4, 1, 1, 1, 1}},
            {.functions = "kvrsIIR(One)?_(BiQuad)?Direct_16s(_I)?",
             .parameter = "taps",
             .elements = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
        },
    .badValues =
        {
            {"kvrsIIR(GetStateSize|Init|InitAlloc)(32[fs]c?|64fc?)?_(16sc?|32[fs]c?|64fc?)(32fc?)?", "order",
             0, kvrStatusBadIirOrder, Rank::afterPointers},
            {"kvrsIIR(GetStateSize|Init|InitAlloc).*_BiQuad_.*", "numBq", -1, kvrStatusBadIirOrder,
             Rank::afterPointers},
            {"kvrsIIR_Direct_16s(_I)?|kvrsIIROne_Direct_16s", "order", 0, kvrStatusBadIirOrder,
             Rank::beforePointers},
            {"kvrsIIR_BiQuadDirect_16s(_I)?|kvrsIIROne_BiQuadDirect_16s", "numBq", 0, kvrStatusBadIirOrder,
             Rank::beforePointers},
            {"kvrsIIROne_Direct_16s_I", "order", -1, kvrStatusBadIirOrder, Rank::afterPointers},
            {"kvrsIIROne_BiQuadDirect_16s_I", "numBq", -1, kvrStatusBadIirOrder, Rank::afterPointers},
            {"kvrsIIR_32f_I?P", "nChannels", 0, kvrStatusBadChannelCount, Rank::afterLength},
            {"kvrsIIR_32f_I?P", "nChannels", -9, kvrStatusBadChannelCount, Rank::afterLength},
        },
    .contexts =
        {
            {.type = "KvrsIIRState_32f",
             .functions = "kvrsIIR_32f_I?P",
             .make = make<kvrsIIRInit_BiQuad_32f, kTaps32f, 1, KvrsIIRState_32f>},
            {.type = "KvrsIIRState64f_32s",
             .functions = ".*_DF1_32s",
             .make = make<kvrsIIRInit64f_BiQuad_DF1_32s, kTaps64f, 1, KvrsIIRState64f_32s>},
            {.type = "KvrsIIRState_32f", .make = make<kvrsIIRInit_32f, kTaps32f, 4, KvrsIIRState_32f>},
            {.type = "KvrsIIRState_32fc", .make = make<kvrsIIRInit_32fc, kTaps32fc, 4, KvrsIIRState_32fc>},
            {.type = "KvrsIIRState_64f", .make = make<kvrsIIRInit_64f, kTaps64f, 4, KvrsIIRState_64f>},
            {.type = "KvrsIIRState_64fc", .make = make<kvrsIIRInit_64fc, kTaps64fc, 4, KvrsIIRState_64fc>},
            {.type = "KvrsIIRState32f_16s",
             .make = make<kvrsIIRInit32f_16s, kTaps32f, 4, KvrsIIRState32f_16s>},
            {.type = "KvrsIIRState32fc_16sc",
             .make = make<kvrsIIRInit32fc_16sc, kTaps32fc, 4, KvrsIIRState32fc_16sc>},
            {.type = "KvrsIIRState32s_16s",
             .make = make<kvrsIIRInit32s_16s32f, kTaps32f, 4, KvrsIIRState32s_16s>},
            {.type = "KvrsIIRState32sc_16sc",
             .make = make<kvrsIIRInit32sc_16sc32fc, kTaps32fc, 4, KvrsIIRState32sc_16sc>},
            {.type = "KvrsIIRState64f_16s",
             .make = make<kvrsIIRInit64f_16s, kTaps64f, 4, KvrsIIRState64f_16s>},
            {.type = "KvrsIIRState64f_32f",
             .make = make<kvrsIIRInit64f_32f, kTaps64f, 4, KvrsIIRState64f_32f>},
            {.type = "KvrsIIRState64f_32s",
             .make = make<kvrsIIRInit64f_32s, kTaps64f, 4, KvrsIIRState64f_32s>},
            {.type = "KvrsIIRState64fc_16sc",
             .make = make<kvrsIIRInit64fc_16sc, kTaps64fc, 4, KvrsIIRState64fc_16sc>},
            {.type = "KvrsIIRState64fc_32fc",
             .make = make<kvrsIIRInit64fc_32fc, kTaps64fc, 4, KvrsIIRState64fc_32fc>},
            {.type = "KvrsIIRState64fc_32sc",
             .make = make<kvrsIIRInit64fc_32sc, kTaps64fc, 4, KvrsIIRState64fc_32sc>},
        },
    .contextRanks =
        {
            {"kvrsIIR(One|Free|GetDlyLine|SetDlyLine|SetTaps).*", Rank::afterPointers},
            {"kvrsIIR.*", Rank::afterLength},
        },
    // The words of a type's other structures, and of the type that shares a function.
    .acceptedWords =
        {
            {"kvrsIIR(One|Free|GetDlyLine|SetDlyLine|SetTaps)?_32f(_I)?", {0x49493032}},
            {"kvrsIIR(Free|GetDlyLine|SetDlyLine|SetTaps)?64f_32s(_I?P?Sfs)?", {0x49493330}},
            {"kvrsIIRSetTaps_32fc", {0x49493131}},
            {"kvrsIIRSetTaps32sc_16sc32fc", {0x49493033}},
        },
}};

}  // namespace
}  // namespace kvrs::test
