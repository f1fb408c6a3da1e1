// What is particular in the checks of include/kvrs/random.h: how its states are made, on the heap for all but 16s.
// SPDX-License-Identifier: MIT
#include "kvrs/random.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

template <auto initAlloc, class State>
void* made(Kvr8u*) {
  State* state = nullptr;
  initAlloc(&state, 1, 100, 7);
  return state;
}

const Family family{{
    .contexts =
        {
            {.type = "KvrsRandUniState_8u",
             .make = made<kvrsRandUniformInitAlloc_8u, KvrsRandUniState_8u>,
             .release = releaseBy<kvrsRandUniformFree_8u>},
            {.type = "KvrsRandUniState_16s",
             .make = made<kvrsRandUniformInitAlloc_16s, KvrsRandUniState_16s>,
             .release = releaseBy<kvrsRandUniformFree_16s>},
            {.type = "KvrsRandUniState_32f",
             .make = made<kvrsRandUniformInitAlloc_32f, KvrsRandUniState_32f>,
             .release = releaseBy<kvrsRandUniformFree_32f>},
            {.type = "KvrsRandGaussState_8u",
             .make = made<kvrsRandGaussInitAlloc_8u, KvrsRandGaussState_8u>,
             .release = releaseBy<kvrsRandGaussFree_8u>},
            {.type = "KvrsRandGaussState_16s",
             .make = made<kvrsRandGaussInitAlloc_16s, KvrsRandGaussState_16s>,
             .release = releaseBy<kvrsRandGaussFree_16s>},
            {.type = "KvrsRandGaussState_32f",
             .make = made<kvrsRandGaussInitAlloc_32f, KvrsRandGaussState_32f>,
             .release = releaseBy<kvrsRandGaussFree_32f>},
        },
    .contextRanks = {{"kvrsRand(Uniform|Gauss)_(8u|16s|32f)", Rank::afterLength}},
}};

}  // namespace
}  // namespace kvrs::test
