// What is particular in the checks of include/kvrs/median.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .validValues = {{.functions = "kvrsFilterMedian_.*", .parameter = "maskSize", .value = 11}},
    .badValues = {{"kvrsFilterMedian_.*", "maskSize", 0, kvrStatusBadLength, Rank::afterLength},
                  {"kvrsFilterMedian_.*", "maskSize", -3, kvrStatusBadLength, Rank::afterLength}},
}};

}  // namespace
}  // namespace kvrs::test
