// What is particular in the checks of include/kvrs/fir_direct.h.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_direct.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

// Pointers are tested in three groups: samples, then the length, the taps and their number, then the delay line. Only
// kvrsFIR_Direct_16s_Sfs and its form in place test all of them first.
const char* const kAll = "kvrsFIR(One)?(_|32|64).*Direct.*";
const char* const kInGroups =
    "kvrsFIR(One)?(32|64)(f|fc|s|sc)_Direct_.*|kvrsFIR(One)?_Direct_(32f|32fc|64f|64fc)(_I)?|kvrsFIROne_"
    "Direct_16s_I?Sfs";
const char* const kPieces = "kvrsFIR(32|64)(f|fc|s|sc)_Direct_.*|kvrsFIR_Direct_(32f|32fc|64f|64fc)(_I)?";

const Family family{{
    .latePointers = {{kInGroups, "taps"}},
    .lastPointers = {{kInGroups, "dlyLine|dlyLineIndex"}},
    .freeLengths = {{kPieces, "len"}},
    .validContents = {{kAll, "dlyLineIndex", {0}}},
    .badValues =
        {
            {kPieces, "len", 0, kvrStatusBadLength, Rank::afterPointers},
            {kPieces, "len", -1, kvrStatusBadLength, Rank::afterPointers},
            {kAll, "tapsLen", 0, kvrStatusBadTapsLength},
            {kAll, "tapsLen", -5, kvrStatusBadTapsLength},
        },
    .badContents =
        {
            {"kvrsFIR_Direct_16s_I?Sfs", "dlyLineIndex", {-1}, kvrStatusBadDelayIndex},
            {"kvrsFIR_Direct_16s_I?Sfs", "dlyLineIndex", {4}, kvrStatusBadDelayIndex},
        },
}};

}  // namespace
}  // namespace kvrs::test
