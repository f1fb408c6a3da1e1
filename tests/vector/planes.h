// Functions of complex numbers in two planes, f(srcRe, srcIm, dst, len), with dst in place of either.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_VECTOR_PLANES_H
#define KVRS_TESTS_VECTOR_PLANES_H

#include <vector>

#include "tests/vector/quotient.h"

namespace kvrs::test {

// The result over a source is the one beside it, which the sweeps hold against an oracle.
template <class F, class T>
void expectPlanesInPlace(F f, T) {
  for (int len : {1, 5, 16, 33, 100, 1000}) {
    const auto re = randomVector<T>(static_cast<size_t>(len), 3),
               im = randomVector<T>(static_cast<size_t>(len), 4);
    std::vector<T> apart(re.size()), overRe = re, overIm = im;
    f(re.data(), im.data(), apart.data(), len);
    f(overRe.data(), im.data(), overRe.data(), len);
    f(re.data(), overIm.data(), overIm.data(), len);
    expectSame(apart, overRe, "over srcRe");
    expectSame(apart, overIm, "over srcIm");
  }
}

}  // namespace kvrs::test

#endif
