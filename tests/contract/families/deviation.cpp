// What is particular in the checks of include/kvrs/deviation.h.
// SPDX-License-Identifier: MIT
#include "kvrs/deviation.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

// One element is too few.
const Family family{{
    .badValues = {{"kvrs(Mean)?StdDev_.*", "len", 1, kvrStatusBadLength, Rank::afterPointers}},
}};

}  // namespace
}  // namespace kvrs::test
