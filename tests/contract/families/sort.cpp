// What is particular in the checks of include/kvrs/sort.h.
// SPDX-License-Identifier: MIT
#include "kvrs/sort.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .validValues = {{"kvrsSortRadixIndex.*", "srcStrideBytes", 4}},
    .badValues =
        {
            {"kvrsSortRadixIndex.*", "srcStrideBytes", 0, kvrStatusBadLength, Rank::afterPointers},
            {"kvrsSortRadixIndex.*_16[su]", "srcStrideBytes", 1, kvrStatusBadLength, Rank::afterPointers},
            {"kvrsSortRadixIndex.*_32[suf]", "srcStrideBytes", 3, kvrStatusBadLength, Rank::afterPointers},
        },
}};

}  // namespace
}  // namespace kvrs::test
