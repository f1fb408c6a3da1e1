// What is particular in the arguments of include/kvrs/viterbi.h.
// SPDX-License-Identifier: MIT
#include "kvrs/viterbi.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const Family family{{
    .validValues = {{.functions = "kvrs.*DV(4D)?_16(sc|u)", .parameter = "numStates", .value = 32}},
}};

}  // namespace
}  // namespace kvrs::test
