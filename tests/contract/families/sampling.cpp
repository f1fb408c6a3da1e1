// What is particular in the checks of include/kvrs/sampling.h.
// SPDX-License-Identifier: MIT
#include "kvrs/sampling.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kAll = "kvrsSample(Up|Down)_.*";

const Family family{{
    .validValues = {{kAll, "factor", 2}},
    .validContents = {{kAll, "phase", {1}}},
    .badValues =
        {
            {kAll, "factor", 0, kvrStatusBadSampleFactor},
            {kAll, "factor", -3, kvrStatusBadSampleFactor},
        },
    .badContents =
        {
            {kAll, "phase", {-1}, kvrStatusBadSamplePhase},
            {kAll, "phase", {2}, kvrStatusBadSamplePhase},
        },
}};

}  // namespace
}  // namespace kvrs::test
