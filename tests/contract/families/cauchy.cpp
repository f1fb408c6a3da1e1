// What is particular in the checks of include/kvrs/cauchy.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .badValues =
        {
            {"kvrsCauchy.*", "param", 0, kvrStatusNonPositiveParam, Rank::afterLength},
            {"kvrsCauchy.*", "param", -1, kvrStatusNonPositiveParam, Rank::afterLength},
        },
}};

}  // namespace
}  // namespace kvrs::test
