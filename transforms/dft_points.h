// Where the complex numbers of a transform lie, told at run time: transforms of any length load them into tiles and store
// them out of tiles, so that their stages are compiled once for all forms and both directions.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_DFT_POINTS_H
#define KVRS_TRANSFORMS_DFT_POINTS_H

#include <cstddef>

namespace kvrs::dft {

// Real and imaginary parts in arrays of their own or in turn; with the two exchanged a forward transform is the inverse
// one. P is the type of a part, const in a source.
template <class P>
struct Points {
  P* re;
  P* im;  // null in a source: zeros
  bool pairs;

  static Points ofPairs(P* p) { return {p, p + 1, true}; }
  static Points ofPlanes(P* re, P* im) { return {re, im, false}; }

  Points exchanged() const { return {im, re, pairs}; }
  Points at(size_t i) const {
    const size_t parts = pairs ? 2 * i : i;
    return {re + parts, im == nullptr ? im : im + parts, pairs};
  }
  bool isExchanged() const { return pairs && im != nullptr && im < re; }
  P* first() const { return isExchanged() ? im : re; }
};

template <class T>
Points<const T> asSource(Points<T> x) {
  return {x.re, x.im, x.pairs};
}

}  // namespace kvrs::dft

#endif
