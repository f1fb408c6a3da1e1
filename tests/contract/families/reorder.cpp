// What is particular in the checks of include/kvrs/reorder.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .badValues = {{"kvrsPackBits_32u8u", "dstBitOffset", -1, kvrStatusBadLength, Rank::afterPointers}},
}};

}  // namespace
}  // namespace kvrs::test
