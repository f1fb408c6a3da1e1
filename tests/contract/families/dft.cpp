// What is particular in the checks of include/kvrs/dft.h.
// SPDX-License-Identifier: MIT
#include "kvrs/dft.h"

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
    .optionalPointers = {{.functions = "kvrsDFT(OutOrd)?(Fwd|Inv).*", .parameter = "buffer"}},
    .badValues =
        {
            {"kvrsDFT(OutOrd)?InitAlloc_.*", "flag", 0, kvrStatusBadFftFlag},
            {"kvrsDFT(OutOrd)?InitAlloc_.*", "flag", 16, kvrStatusBadFftFlag},
        },
    .contexts =
        {
            {.type = "KvrsDFTSpec_C_32fc",
             .make = make<KvrsDFTSpec_C_32fc, kvrsDFTInitAlloc_C_32fc>,
             .release = release<KvrsDFTSpec_C_32fc, kvrsDFTFree_C_32fc>},
            {.type = "KvrsDFTSpec_C_32f",
             .make = make<KvrsDFTSpec_C_32f, kvrsDFTInitAlloc_C_32f>,
             .release = release<KvrsDFTSpec_C_32f, kvrsDFTFree_C_32f>},
            {.type = "KvrsDFTSpec_R_32f",
             .make = make<KvrsDFTSpec_R_32f, kvrsDFTInitAlloc_R_32f>,
             .release = release<KvrsDFTSpec_R_32f, kvrsDFTFree_R_32f>},
            {.type = "KvrsDFTSpec_C_64fc",
             .make = make<KvrsDFTSpec_C_64fc, kvrsDFTInitAlloc_C_64fc>,
             .release = release<KvrsDFTSpec_C_64fc, kvrsDFTFree_C_64fc>},
            {.type = "KvrsDFTSpec_C_64f",
             .make = make<KvrsDFTSpec_C_64f, kvrsDFTInitAlloc_C_64f>,
             .release = release<KvrsDFTSpec_C_64f, kvrsDFTFree_C_64f>},
            {.type = "KvrsDFTSpec_R_64f",
             .make = make<KvrsDFTSpec_R_64f, kvrsDFTInitAlloc_R_64f>,
             .release = release<KvrsDFTSpec_R_64f, kvrsDFTFree_R_64f>},
            {.type = "KvrsDFTOutOrdSpec_C_32fc",
             .make = make<KvrsDFTOutOrdSpec_C_32fc, kvrsDFTOutOrdInitAlloc_C_32fc>,
             .release = release<KvrsDFTOutOrdSpec_C_32fc, kvrsDFTOutOrdFree_C_32fc>},
            {.type = "KvrsDFTOutOrdSpec_C_64fc",
             .make = make<KvrsDFTOutOrdSpec_C_64fc, kvrsDFTOutOrdInitAlloc_C_64fc>,
             .release = release<KvrsDFTOutOrdSpec_C_64fc, kvrsDFTOutOrdFree_C_64fc>},
        },
    .contextRanks = {{"kvrsDFT(OutOrd)?GetBufSize_.*", Rank::afterPointers}},
}};

}  // namespace
}  // namespace kvrs::test
