// What is particular in the checks of include/kvrs/sparse.h.
// SPDX-License-Identifier: MIT
#include "kvrs/sparse.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

constexpr Kvr32f kTaps[] = {1, 1, 0.5f, 0.25f};
constexpr int kPositions[] = {0, 3, 1, 4};

// Records have no word that could be wrong.
const Family family{{
    .optionalPointers = {{.functions = "kvrs(FIR|IIR)SparseInit_32f", .parameter = "dlyLine"}},
    .validValues = {{"kvrs(FIR|IIR)SparseInit_32f", "nzTapsLen[12]?", 2}},
    .validContents = {{.functions = "kvrs(FIR|IIR)SparseInit_32f",
                       .parameter = "nzTapsPos",
                       .elements = {0, 3, 1, 4}}},
    .badValues =
        {
            {"kvrsFIRSparse(GetStateSize|Init)_32f", "nzTapsLen", 0, kvrStatusBadTapsLength,
             Rank::afterPointers},
            {"kvrsFIRSparseGetStateSize_32f", "order", 0, kvrStatusBadTapsLength, Rank::afterPointers},
            {"kvrsIIRSparse(GetStateSize|Init)_32f", "nzTapsLen1", 0, kvrStatusBadIirOrder,
             Rank::afterPointers},
            {"kvrsIIRSparseInit_32f", "nzTapsLen2", 0, kvrStatusBadIirOrder, Rank::afterPointers},
            {"kvrsIIRSparseGetStateSize_32f", "nzTapsLen2", -1, kvrStatusBadIirOrder, Rank::afterPointers},
            {"kvrsIIRSparseGetStateSize_32f", "order1", -1, kvrStatusBadSparseIndex, Rank::afterPointers},
            {"kvrsIIRSparseGetStateSize_32f", "order2", -1, kvrStatusBadSparseIndex, Rank::afterPointers},
        },
    .badContents =
        {
            {"kvrs(FIR|IIR)SparseInit_32f",
             "nzTapsPos",
             {-1, 3, 1, 4},
             kvrStatusBadSparseIndex,
             Rank::afterPointers},
            {"kvrs(FIR|IIR)SparseInit_32f",
             "nzTapsPos",
             {3, 3, 1, 4},
             kvrStatusBadSparseIndex,
             Rank::afterPointers},
            {"kvrsIIRSparseInit_32f",
             "nzTapsPos",
             {0, 3, 0, 4},
             kvrStatusBadSparseIndex,
             Rank::afterPointers},
        },
    .contexts =
        {
            {.type = "KvrsFIRSparseState_32f",
             .make = [](Kvr8u* memory) -> void* {
               KvrsFIRSparseState_32f* state = nullptr;
               kvrsFIRSparseInit_32f(&state, kTaps, kPositions, 2, nullptr, memory);
               return state;
             }},
            {.type = "KvrsIIRSparseState_32f",
             .make = [](Kvr8u* memory) -> void* {
               KvrsIIRSparseState_32f* state = nullptr;
               kvrsIIRSparseInit_32f(&state, kTaps, kPositions, 2, 2, nullptr, memory);
               return state;
             }},
        },
    .wordless = {"kvrs(FIR|IIR)Sparse_32f"},
}};

}  // namespace
}  // namespace kvrs::test
