// Functors of the element loop that compute nothing: elements as they are, zeros, and the two parts of a pair, joined or taken
// apart (channels of a frame count as parts, too).
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_PLAIN_H
#define KVRS_FRAME_PLAIN_H

#include "frame/element.h"
#include "frame/simd.h"

namespace kvrs {

struct Same {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a) const {
    return a;
  }
};

struct Zeros {
  template <class D>
  KVRS_INLINE auto operator()(D d) const {
    return hn::Zero(d);
  }
};

struct JoinParts {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D, V first, V second) const {
    return {first, second};
  }
};

struct BothParts {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D, Complex<V> pairs) const {
    return pairs;
  }
};

}  // namespace kvrs

#endif
