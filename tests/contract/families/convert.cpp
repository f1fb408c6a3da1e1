// What is particular in the checks of include/kvrs/convert.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .badValues = {{"kvrsConvert_(32f16f|16s16f|16f16s_Sfs)", "rndMode", kvrRoundFinancial,
                   kvrStatusBadRoundMode, Rank::afterLength}},
}};

}  // namespace
}  // namespace kvrs::test
