// What is particular in the checks of include/kvrs/count.h.
// SPDX-License-Identifier: MIT
#include "kvrs/count.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kCrossings = "kvrsZeroCrossing_.*";

// A negative length is no error here, and 0 is stored: tests/stats/count_test.cpp.
const Family family{{
    .freeLengths = {{.functions = kCrossings, .parameter = "len"}},
    .validValues = {{kCrossings, "flag", 1}},
    .badValues =
        {
            {kCrossings, "len", 0, kvrStatusBadLength, Rank::afterPointers},
            {kCrossings, "flag", 3, kvrStatusBadFlag, Rank::afterLength},
            {kCrossings, "flag", -1, kvrStatusBadFlag, Rank::afterLength},
        },
}};

}  // namespace
}  // namespace kvrs::test
