// What is particular in the checks of include/kvrs/hilbert.h.
// SPDX-License-Identifier: MIT
#include "kvrs/hilbert.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

template <class Spec, auto initAlloc>
void* make(Kvr8u*) {
  Spec* spec = nullptr;
  initAlloc(&spec, 12, kvrHintNone);
  return spec;
}

const Family family{{
    .contexts =
        {
            {.type = "KvrsHilbertSpec_32f32fc",
             .make = make<KvrsHilbertSpec_32f32fc, kvrsHilbertInitAlloc_32f32fc>,
             .release = releaseBy<kvrsHilbertFree_32f32fc>},
            {.type = "KvrsHilbertSpec_16s32fc",
             .make = make<KvrsHilbertSpec_16s32fc, kvrsHilbertInitAlloc_16s32fc>,
             .release = releaseBy<kvrsHilbertFree_16s32fc>},
            {.type = "KvrsHilbertSpec_16s16sc",
             .make = make<KvrsHilbertSpec_16s16sc, kvrsHilbertInitAlloc_16s16sc>,
             .release = releaseBy<kvrsHilbertFree_16s16sc>},
        },
    .contextRanks = {{"kvrsHilbert_.*", Rank::afterPointers}},
}};

}  // namespace
}  // namespace kvrs::test
