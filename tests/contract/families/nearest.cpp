// What is particular in the checks of include/kvrs/nearest.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .badValues =
        {
            {"kvrsFindNearest(One)?_16u", "tableLen", 0, kvrStatusBadLength, Rank::afterLength},
            {"kvrsFindNearest(One)?_16u", "tableLen", -1, kvrStatusBadLength, Rank::afterLength},
        },
}};

}  // namespace
}  // namespace kvrs::test
