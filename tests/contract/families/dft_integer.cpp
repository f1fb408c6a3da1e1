// What is particular in the checks of include/kvrs/dft_integer.h.
// SPDX-License-Identifier: MIT
#include "kvrs/dft_integer.h"

#include "kvrs/fft.h"
#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

template <class Spec, auto initAlloc>
void* make(Kvr8u*) {
  Spec* spec = nullptr;
  initAlloc(&spec, 12, kvrFftNoDivByAny, kvrHintNone);
  return spec;
}
template <class Spec, auto free>
void release(void* spec) {
  free(static_cast<Spec*>(spec));
}

const Family family{{
    .optionalPointers = {{.functions = "kvrsDFT(Fwd|Inv).*", .parameter = "buffer"}},
    .badValues =
        {
            {"kvrsDFTInitAlloc_.*", "flag", 0, kvrStatusBadFftFlag},
            {"kvrsDFTInitAlloc_.*", "flag", 16, kvrStatusBadFftFlag},
        },
    .contexts =
        {
            {.type = "KvrsDFTSpec_C_16sc",
             .make = make<KvrsDFTSpec_C_16sc, kvrsDFTInitAlloc_C_16sc>,
             .release = release<KvrsDFTSpec_C_16sc, kvrsDFTFree_C_16sc>},
            {.type = "KvrsDFTSpec_C_16s",
             .make = make<KvrsDFTSpec_C_16s, kvrsDFTInitAlloc_C_16s>,
             .release = release<KvrsDFTSpec_C_16s, kvrsDFTFree_C_16s>},
            {.type = "KvrsDFTSpec_R_16s",
             .make = make<KvrsDFTSpec_R_16s, kvrsDFTInitAlloc_R_16s>,
             .release = release<KvrsDFTSpec_R_16s, kvrsDFTFree_R_16s>},
        },
    .contextRanks = {{"kvrsDFT(OutOrd)?GetBufSize_.*", Rank::afterPointers}},
}};

}  // namespace
}  // namespace kvrs::test
