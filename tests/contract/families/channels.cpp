// What is particular in the checks of include/kvrs/channels.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kFunctions = "kvrs(Join|Split).*_D2L";

const Family family{{
    .latePointers =
        {
            {.functions = "kvrsJoin(Scaled)?_.*_D2L", .parameter = "src"},
            {.functions = "kvrsSplitScaled_.*_D2L", .parameter = "dst"},
        },
    .badValues =
        {
            {kFunctions, "nChannels", 0, kvrStatusBadLength, Rank::afterPointers},
            {kFunctions, "nChannels", -2147483648.0, kvrStatusBadLength, Rank::afterPointers},
            {kFunctions, "chanLen", 0, kvrStatusBadLength, Rank::afterPointers},
            {kFunctions, "chanLen", -1, kvrStatusBadLength, Rank::afterPointers},
        },
}};

}  // namespace
}  // namespace kvrs::test
