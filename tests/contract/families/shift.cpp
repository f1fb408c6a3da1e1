// What is particular in the checks of include/kvrs/shift.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .badValues =
        {
            {"kvrs[LR]ShiftC_.*", "val", -1, kvrStatusBadShift, Rank::afterLength},
            {"kvrs[LR]ShiftC_.*", "val", -2147483648.0, kvrStatusBadShift, Rank::afterLength},
        },
}};

}  // namespace
}  // namespace kvrs::test
