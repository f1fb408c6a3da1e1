// What is particular in the checks of include/kvrs/window.h: the shortest windows, and what Kaiser's takes.
// SPDX-License-Identifier: MIT
#include "kvrs/window.h"

#include "tests/contract/family.h"

namespace kvrs::test {
namespace {

const char* const kFromThree = "kvrsWin(Bartlett|Hann|Hamming|Blackman|BlackmanStd|BlackmanQ15)_.*";
const char* const kFromFour = "kvrsWinBlackmanOpt_.*";
const char* const kKaiserSingle = "kvrsWinKaiser_32fc?(_I)?";
const char* const kKaiserOther = "kvrsWinKaiser_(16s|64f)c?(_I)?";
const char* const kKaiserQ15 = "kvrsWinKaiserQ15_.*";

// (16 - 1) / 2 times what a window of 16 elements takes: 38 and 308.
const Family family{{
    .lengthFirst = {kFromFour},
    .badValues =
        {
            {kFromThree, "len", 2, kvrStatusBadLength, Rank::afterPointers},
            {kFromThree, "len", 1, kvrStatusBadLength, Rank::afterPointers},
            {kFromFour, "len", 3, kvrStatusBadLength, Rank::beforePointers},
            {kKaiserSingle, "alpha", 5.1, kvrStatusKaiserOverflow, Rank::afterLength},
            {kKaiserSingle, "alpha", -5.1, kvrStatusKaiserOverflow, Rank::afterLength},
            {kKaiserOther, "alpha", 41.1, kvrStatusKaiserOverflow, Rank::afterLength},
            {kKaiserOther, "alpha", -41.1, kvrStatusKaiserOverflow, Rank::afterLength},
            {kKaiserQ15, "alphaQ15", 1346766, kvrStatusKaiserOverflow, Rank::afterLength},
            {kKaiserQ15, "alphaQ15", -1346766, kvrStatusKaiserOverflow, Rank::afterLength},
        },
}};

}  // namespace
}  // namespace kvrs::test
