// What is particular in the checks of include/kvrs/divide.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .lengthAgainstZero = {"kvrsDivC_64s_ISfs"},
    .badValues =
        {
            {"kvrsDiv_Round_.*", "rndMode", 3, kvrStatusBadRoundMode, Rank::afterLength},
            {"kvrsDiv_Round_.*", "rndMode", -1, kvrStatusBadRoundMode, Rank::afterLength},
            {"kvrsDivC_(8u|16u|16s|16sc|32f|64f|32fc|64fc)(_.*)?", "val", 0, kvrStatusDivByZeroError,
             Rank::afterLength},
            {"kvrsNormalize_.*", "vDiv", 0, kvrStatusDivByZeroError, Rank::afterLength},
            {"kvrsNormalize_32fc?", "vDiv", 1e-40, kvrStatusDivByZeroError, Rank::afterLength},
            {"kvrsNormalize_64fc?", "vDiv", 1e-310, kvrStatusDivByZeroError, Rank::afterLength},
        },
}};

}  // namespace
}  // namespace kvrs::test
