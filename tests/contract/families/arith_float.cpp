// What is particular in the checks of include/kvrs/arith_float.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .lengthFirst = {"kvrs(Add|Sub)_(32|64)fc(_I)?"},
}};

}  // namespace
}  // namespace kvrs::test
