// The complex transform of single-precision numbers, real and imaginary part in turn.
// SPDX-License-Identifier: MIT
#include "transforms/kernels/engine-inl.h"

namespace kvrs::fft {

template <>
void transform(const Record<Kvr32f>& r, int order, Direction direction, const Kvr32f* src, Kvr32f* dst,
               Kvr32f* work, Kvr32f scale) {
  if (direction == Direction::kForward) {
    transformViews(r, order, Interleaved<const Kvr32f, false>{src}, Interleaved<Kvr32f, false>{dst}, work,
                   scale);
  } else {
    transformViews(r, order, Interleaved<const Kvr32f, true>{src}, Interleaved<Kvr32f, true>{dst}, work,
                   scale);
  }
}

}  // namespace kvrs::fft
