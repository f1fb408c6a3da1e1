// What is particular in the checks of include/kvrs/running.h.
// SPDX-License-Identifier: MIT
#include "kvrs/running.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kSums = "kvrsSumWindow_.*";

// A length below 1 is no error of sums: tests/comms/running_test.cpp.
const Family family{{
    .freeLengths = {{.functions = kSums, .parameter = "len"}},
    .oneElement = {{.functions = "kvrsUpdate(Linear|Power)_.*", .parameter = "srcDst"}},
    .validValues = {{.functions = kSums, .parameter = "maskSize", .value = 5},
                    {.functions = "kvrsUpdate(Linear|Power)_.*", .parameter = "alpha", .value = -1}},
    .badValues =
        {
            {kSums, "maskSize", 0, kvrStatusBadWindowLength, Rank::afterPointers},
            {kSums, "maskSize", -3, kvrStatusBadWindowLength, Rank::afterPointers},
        },
}};

}  // namespace
}  // namespace kvrs::test
