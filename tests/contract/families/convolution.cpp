// What is particular in the checks of include/kvrs/convolution.h.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .unchecked = {"kvrsConvCyclic.*"},
    .validValues = {{.functions = "kvrsConvBiased_32f", .parameter = "bias", .value = 0}},
}};

}  // namespace
}  // namespace kvrs::test
