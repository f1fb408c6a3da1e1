// What is particular in the checks of include/kvrs/wavelet.h: InitAlloc tests one channel after the other, WTInv the
// destination last.
// SPDX-License-Identifier: MIT
#include "kvrs/wavelet.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

template <class State, auto initAlloc>
void* make(Kvr8u*) {
  static const Kvr32f taps[4] = {0.5f, 0.5f, -0.25f, 0.125f};
  State* state = nullptr;
  initAlloc(&state, taps, 4, 1, taps, 3, 2);
  return state;
}

const char* const kInitAlloc = "kvrsWT(Fwd|Inv)InitAlloc_.*";

const Family family{{
    .latePointers = {{.functions = kInitAlloc, .parameter = "tapsHigh"}},
    .lastPointers = {{.functions = "kvrsWTInv_.*", .parameter = "dst"}},
    .validValues = {{.functions = kInitAlloc, .parameter = "len(Low|High)", .value = 4},
                    {.functions = kInitAlloc, .parameter = "offs(Low|High)", .value = 3}},
    .badValues =
        {
            {kInitAlloc, "lenLow", 0, kvrStatusBadLength, Rank::afterPointers},
            {kInitAlloc, "lenLow", -5, kvrStatusBadLength, Rank::afterPointers},
            {kInitAlloc, "lenHigh", 0, kvrStatusBadLength, Rank::afterLength},
            {kInitAlloc, "lenHigh", -5, kvrStatusBadLength, Rank::afterLength},
            {kInitAlloc, "offsLow", -2, kvrStatusBadWaveletOffset, Rank::afterLength},
            {kInitAlloc, "offsHigh", -2, kvrStatusBadWaveletOffset, Rank::afterLength},
        },
    .contexts =
        {
            {.type = "KvrsWTFwdState_32f",
             .make = make<KvrsWTFwdState_32f, kvrsWTFwdInitAlloc_32f>,
             .release = releaseBy<kvrsWTFwdFree_32f>},
            {.type = "KvrsWTFwdState_8u32f",
             .make = make<KvrsWTFwdState_8u32f, kvrsWTFwdInitAlloc_8u32f>,
             .release = releaseBy<kvrsWTFwdFree_8u32f>},
            {.type = "KvrsWTFwdState_8s32f",
             .make = make<KvrsWTFwdState_8s32f, kvrsWTFwdInitAlloc_8s32f>,
             .release = releaseBy<kvrsWTFwdFree_8s32f>},
            {.type = "KvrsWTFwdState_16u32f",
             .make = make<KvrsWTFwdState_16u32f, kvrsWTFwdInitAlloc_16u32f>,
             .release = releaseBy<kvrsWTFwdFree_16u32f>},
            {.type = "KvrsWTFwdState_16s32f",
             .make = make<KvrsWTFwdState_16s32f, kvrsWTFwdInitAlloc_16s32f>,
             .release = releaseBy<kvrsWTFwdFree_16s32f>},
            {.type = "KvrsWTInvState_32f",
             .make = make<KvrsWTInvState_32f, kvrsWTInvInitAlloc_32f>,
             .release = releaseBy<kvrsWTInvFree_32f>},
            {.type = "KvrsWTInvState_32f8u",
             .make = make<KvrsWTInvState_32f8u, kvrsWTInvInitAlloc_32f8u>,
             .release = releaseBy<kvrsWTInvFree_32f8u>},
            {.type = "KvrsWTInvState_32f8s",
             .make = make<KvrsWTInvState_32f8s, kvrsWTInvInitAlloc_32f8s>,
             .release = releaseBy<kvrsWTInvFree_32f8s>},
            {.type = "KvrsWTInvState_32f16u",
             .make = make<KvrsWTInvState_32f16u, kvrsWTInvInitAlloc_32f16u>,
             .release = releaseBy<kvrsWTInvFree_32f16u>},
            {.type = "KvrsWTInvState_32f16s",
             .make = make<KvrsWTInvState_32f16s, kvrsWTInvInitAlloc_32f16s>,
             .release = releaseBy<kvrsWTInvFree_32f16s>},
        },
}};

}  // namespace
}  // namespace kvrs::test
