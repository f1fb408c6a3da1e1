// What is particular in the checks of include/kvrs/polar.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .lastPointers = {{.functions = "kvrsCartToPolar_16sc_Sfs", .parameter = "dstPhase"}},
}};

}  // namespace
}  // namespace kvrs::test
