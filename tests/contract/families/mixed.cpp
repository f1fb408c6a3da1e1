// What is particular in the checks of include/kvrs/mixed.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .lengthAgainstZero = {"kvrsMulC_64f64s_ISfs"},
}};

}  // namespace
}  // namespace kvrs::test
