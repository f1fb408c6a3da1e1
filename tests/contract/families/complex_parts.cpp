// What is particular in the checks of include/kvrs/complex_parts.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .optionalPointers = {{.functions = "kvrsRealToCplx_.*", .parameter = "src(Re|Im)"}},  // not both
}};

}  // namespace
}  // namespace kvrs::test
