// The complex transform of double-precision numbers, real and imaginary part in turn.
// SPDX-License-Identifier: MIT
#include "transforms/kernels/engine-inl.h"

namespace kvrs::fft {

template <>
void transform(const Record<Kvr64f>& r, int order, Direction direction, const Kvr64f* src, Kvr64f* dst,
               Kvr64f* work, Kvr64f scale) {
  if (direction == Direction::kForward) {
    transformViews(r, order, Interleaved<const Kvr64f, false>{src}, Interleaved<Kvr64f, false>{dst}, work,
                   scale);
  } else {
    transformViews(r, order, Interleaved<const Kvr64f, true>{src}, Interleaved<Kvr64f, true>{dst}, work,
                   scale);
  }
}

}  // namespace kvrs::fft
