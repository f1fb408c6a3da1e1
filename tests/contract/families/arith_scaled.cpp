// What is particular in the checks of include/kvrs/arith_scaled.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .lengthFirst = {"kvrs(Add|Sub)_(16|32)sc_I?Sfs"},
    .lengthAgainstZero = {"kvrsMulC_64s_ISfs"},
}};

}  // namespace
}  // namespace kvrs::test
