// What is particular in the checks of include/kvrs/test_vectors.h: Jaehne's magnitude.
// SPDX-License-Identifier: MIT
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kSigned = "kvrsVectorJaehne_(8s|16s|32s|32f|64f)";

const Family family{{
    .badValues = {{kSigned, "magn", -1, kvrStatusBadJaehneMagnitude, Rank::afterLength}},
}};

}  // namespace
}  // namespace kvrs::test
