// What convolutions and correlations are made of: the sums of products of one array, the taps, with another that slides
// along it and has zeros on both sides,
//
//   out[n] = sum over k from 0 to tapsLen-1 of tap[k] * in[first + n + k]    in[i] is 0 for i < 0 and i >= inLen
//
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_SLIDING_SUMS_H
#define KVRS_FILTERS_SLIDING_SUMS_H

#include <cstddef>
#include <cstdint>

#include "kvrs/types.h"

namespace kvrs::sliding {

// tap[k] is taps[k], or taps[tapsLen-1-k] where they are `reversed`; complex taps are conjugated.
template <class D>
struct Sums {
  const D* in;
  size_t inLen;
  const D* taps;
  size_t tapsLen;
  bool reversed;
  int64_t first;
  size_t count;  // of outputs
};

enum class Norm {
  none,
  byLength,    // all sums by `length`
  byProducts,  // the n-th one by length - n
};

// What becomes of the sums.
template <class D>
struct Results {
  D* dst;
  int scaleFactor = 0;  // of integers
  Norm norm = Norm::none;
  size_t length = 0;
  bool mirrored = false;  // the last one first, and complex ones conjugated
};

// Product by product. Works in single precision for 16s, in D otherwise.
template <class D>
void directly(const Sums<D>& sums, const Results<D>& results);

// By discrete Fourier transforms: one of all that there is, or many of blocks, whichever is faster. Where `mayThread`,
// blocks are shared out to threads. kvrStatusOutOfMemory, or the status of a transform, when nothing has been stored.
template <class D>
KvrStatus byTransforms(const Sums<D>& sums, const Results<D>& results, bool mayThread);

// Exact.
void exactly(const Sums<Kvr16s>& sums, Kvr64s* dst, bool mirrored);

extern template void directly<Kvr32f>(const Sums<Kvr32f>&, const Results<Kvr32f>&);
extern template void directly<Kvr64f>(const Sums<Kvr64f>&, const Results<Kvr64f>&);
extern template void directly<Kvr32fc>(const Sums<Kvr32fc>&, const Results<Kvr32fc>&);
extern template void directly<Kvr64fc>(const Sums<Kvr64fc>&, const Results<Kvr64fc>&);
extern template void directly<Kvr16s>(const Sums<Kvr16s>&, const Results<Kvr16s>&);
extern template KvrStatus byTransforms<Kvr32f>(const Sums<Kvr32f>&, const Results<Kvr32f>&, bool);
extern template KvrStatus byTransforms<Kvr64f>(const Sums<Kvr64f>&, const Results<Kvr64f>&, bool);
extern template KvrStatus byTransforms<Kvr32fc>(const Sums<Kvr32fc>&, const Results<Kvr32fc>&, bool);
extern template KvrStatus byTransforms<Kvr64fc>(const Sums<Kvr64fc>&, const Results<Kvr64fc>&, bool);
extern template KvrStatus byTransforms<Kvr16s>(const Sums<Kvr16s>&, const Results<Kvr16s>&, bool);

}  // namespace kvrs::sliding

#endif
