// The operations on floating-point vectors that several sources have in common.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_ARITH_FLOAT_H
#define KVRS_VECTOR_ARITH_FLOAT_H

#include "frame/complex.h"
#include "frame/simd.h"

namespace kvrs {

struct Add {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b) const {
    return hn::Add(a, b);
  }
};

// The first operand less the second.
struct SubRev {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b) const {
    return hn::Sub(a, b);
  }
};

// Of complex vectors.
struct MulPairs {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    return mulPairs(d, a, b);
  }
};

}  // namespace kvrs

#endif
