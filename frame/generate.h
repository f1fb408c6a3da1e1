// Arrays that are not computed from others: a state gives its elements one after the other, each exactly once and in order,
// so that the state is behind the last one when the array is full. The array may have any alignment.
//
// Two ways to be made. What comes out of a chain of scalar operations is made into a tile of the nearest cache, from where
// the element loop takes it, converts it and stores it:
//
//   generate<double>(ToSingle(), dst, len, [&](double* tile, size_t count) { ... });
//
// What comes in vectors is stored as it comes:
//
//   generateBlocks<N>(dst, len, [&](auto d) { ...; return v; });
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_GENERATE_H
#define KVRS_FRAME_GENERATE_H

#include "frame/loop.h"

namespace kvrs {

// Values of a tile: with their results they take a part of the first-level cache that leaves room for others.
inline constexpr size_t kTile = 512;
// A tile is longer by so many values, for makers that end with a whole group of them.
inline constexpr size_t kTileSlack = 16;

// dst[i] = op(d, made[i]) for i in [0, len), as mapElements does it. make(tile, count) writes the next `count` values,
// kTile of them but for the last time; it may write up to kTileSlack more, which nobody reads.
template <class Made, class Op, class D, class Make>
KVRS_INLINE void generate(const Op& op, D* dst, size_t len, Make&& make) {
  alignas(kVectorBytes) Made tile[kTile + kTileSlack];
  for (size_t i = 0; i < len; i += kTile) {
    const size_t count = len - i < kTile ? len - i : kTile;
    make(tile, count);
    mapElements(op, dst + i, count, static_cast<const Made*>(tile));
  }
}

// dst[i] for i in [0, len) in blocks of N elements: next(d), with a tag of a block's lanes, is the next block. Of the last
// one as many elements are stored as there is room for.
template <size_t N, class D, class Next>
KVRS_INLINE void generateBlocks(D* dst, size_t len, Next&& next) {
  const ElementLanes<D, N> d;
  Cursor<D> at{dst};
  for (; len >= N; len -= N, at.move(N)) at.template store<N>(next(d), 0);
  if (len > 0) at.template storeFirst<N>(next(d), static_cast<ptrdiff_t>(len));
}

}  // namespace kvrs

#endif
