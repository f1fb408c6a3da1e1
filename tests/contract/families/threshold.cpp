// What is particular in the checks of include/kvrs/threshold.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .validValues = {{.functions = "kvrsThreshold_(16s|32f|64f)c?(_I)?",
                     .parameter = "relOp",
                     .value = kvrCmpGreater}},
    .badValues =
        {
            {"kvrsThreshold_(16s|32f|64f)c?(_I)?", "relOp", 1, kvrStatusBadArg, Rank::afterLength},
            {"kvrsThreshold_(16s|32f|64f)c?(_I)?", "relOp", 3, kvrStatusBadArg, Rank::afterLength},
            {"kvrsThreshold_(16s|32f|64f)c?(_I)?", "relOp", 5, kvrStatusBadArg, Rank::afterLength},
            {"kvrsThreshold_(16s|32f|64f)c?(_I)?", "relOp", -1, kvrStatusBadArg, Rank::afterLength},
            {"kvrsThreshold_((GT|LT|GTVal|LTVal)_)?(16s|32f|64f)c(_I)?", "level", -1,
             kvrStatusNegativeThreshold, Rank::afterLength},
            {"kvrsThreshold_(GTAbs|LTAbs|LTInv)_.*", "level", -1, kvrStatusNegativeThreshold,
             Rank::afterLength},
            {"kvrsThreshold_LTValGTVal_.*", "levelLT", 2, kvrStatusThresholdOrder, Rank::afterLength},
        },
}};

}  // namespace
}  // namespace kvrs::test
