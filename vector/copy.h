// The kernel of Copy, and of Move where nothing is overwritten before it is read.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_COPY_H
#define KVRS_VECTOR_COPY_H

#include "frame/loop.h"

namespace kvrs {

struct Same {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a) const {
    return a;
  }
};

}  // namespace kvrs

#endif
