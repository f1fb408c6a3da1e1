// What is particular in the checks of include/kvrs/fir.h.
// SPDX-License-Identifier: MIT
#include "kvrs/fir.h"

#include "kvrs/fir_stream.h"
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kMakers = "kvrsFIR(GetStateSize|Init|InitAlloc)(_|32|64).*";

// Taps that are small in every type.
template <class T>
const T* taps() {
  static const T all[4] = {};
  return all;
}

const Family family{{
    .optionalPointers = {{.functions = "kvrsFIR(Init|InitAlloc|SetDlyLine)(_|32|64).*",
                          .parameter = "dlyLine"}},
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
               kvrsFIRInit_32f(&state, taps<Kvr32f>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState_32fc",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState_32fc* state = nullptr;
               kvrsFIRInit_32fc(&state, taps<Kvr32fc>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState32f_16s",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState32f_16s* state = nullptr;
               kvrsFIRInit32f_16s(&state, taps<Kvr32f>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState32fc_16sc",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState32fc_16sc* state = nullptr;
               kvrsFIRInit32fc_16sc(&state, taps<Kvr32fc>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState32s_16s",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState32s_16s* state = nullptr;
               kvrsFIRInit32s_16s(&state, taps<Kvr32s>(), 4, 0, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState32sc_16sc",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState32sc_16sc* state = nullptr;
               kvrsFIRInit32sc_16sc(&state, taps<Kvr32sc>(), 4, 0, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState_64f",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState_64f* state = nullptr;
               kvrsFIRInit_64f(&state, taps<Kvr64f>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState_64fc",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState_64fc* state = nullptr;
               kvrsFIRInit_64fc(&state, taps<Kvr64fc>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState64f_32f",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState64f_32f* state = nullptr;
               kvrsFIRInit64f_32f(&state, taps<Kvr64f>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState64fc_32fc",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState64fc_32fc* state = nullptr;
               kvrsFIRInit64fc_32fc(&state, taps<Kvr64fc>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState64f_32s",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState64f_32s* state = nullptr;
               kvrsFIRInit64f_32s(&state, taps<Kvr64f>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState64fc_32sc",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState64fc_32sc* state = nullptr;
               kvrsFIRInit64fc_32sc(&state, taps<Kvr64fc>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState64f_16s",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState64f_16s* state = nullptr;
               kvrsFIRInit64f_16s(&state, taps<Kvr64f>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState64fc_16sc",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState64fc_16sc* state = nullptr;
               kvrsFIRInit64fc_16sc(&state, taps<Kvr64fc>(), 4, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState_16s",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState_16s* state = nullptr;
               kvrsFIRInit_16s(&state, taps<Kvr16s>(), 4, 0, nullptr, memory);
               return state;
             }},
            {.type = "KvrsFIRState_32s",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRState_32s* state = nullptr;
               kvrsFIRInit_32s(&state, taps<Kvr32s>(), 4, nullptr, memory);
               return state;
             }},
            // Never the first choice, but among the records of other kinds.
            {.type = "KvrsFIRStreamState_32f",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRStreamState_32f* state = nullptr;
               kvrsFIRStreamInit_32f(&state, taps<Kvr32f>(), 4, memory);
               return state;
             }},
            {.type = "KvrsFIRStreamState_16s",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRStreamState_16s* state = nullptr;
               kvrsFIRStreamInit_16s(&state, taps<Kvr16s>(), 4, 0, kvrRoundNear, memory);
               return state;
             }},
        },
    .contextRanks =
        {
            {"kvrsFIR(One|GetTaps|SetTaps|GetDlyLine)(_|32|64).*", Rank::afterPointers},
            {"kvrsFIR(_|32|64).*", Rank::afterLength},
        },
    // Single-rate, multi-rate and stream records of one type are inspected and released by the same functions.
    .acceptedWords =
        {
            {"kvrsFIR(Free_|_)32f", {0x46493333}},
            {"kvrsFIR(Free_16s|GetTaps_16s|_16s_Sfs)", {0x46493331}},
            // Taps of 32 bits are held as doubles, in records of one word.
            {"kvrsFIR((Free|[GS]etDlyLine)64f|[GS]etTaps(64f)?)_32s|kvrsFIR(64f)?_32s_I?Sfs",
             {0x46493231, 0x46493233}},
            {"kvrsFIROne(64f)?_32s_Sfs", {0x46493231}},
        },
}};

}  // namespace
}  // namespace kvrs::test
