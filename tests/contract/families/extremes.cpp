// What is particular in the checks of include/kvrs/extremes.h.
// SPDX-License-Identifier: MIT
#include "kvrs/extremes.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .optionalPointers = {{.functions = "kvrs(Max|Min)(Abs)?Indx_.*", .parameter = "indx"}},
    .lengthFirst = {"kvrsMaxOrder_.*"},
    .unchecked = {"kvrsMinEvery_64f_I"},
}};

}  // namespace
}  // namespace kvrs::test
