// What is particular in the checks of include/kvrs/fill.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .badValues =
        {
            {"kvrsCopy_1u", "srcBitOffset", -1, kvrStatusBadLength, Rank::afterPointers},
            {"kvrsCopy_1u", "dstBitOffset", -1, kvrStatusBadLength, Rank::afterPointers},
        },
}};

}  // namespace
}  // namespace kvrs::test
