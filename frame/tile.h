// Work on long arrays in pieces on the stack: what comes in as one type is converted into a tile, worked on there as
// often as it takes, and converted out again. A tile stays in the nearest cache, and the work is compiled once for
// all types that are converted.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_TILE_H
#define KVRS_FRAME_TILE_H

#include <cstddef>

#include "frame/simd.h"

namespace kvrs {

// Elements of a tile, where a caller names no number of his own.
inline constexpr size_t kTileElements = 256;

// body(tile, begin, count) for the pieces [begin, begin + count) of [0, len) from the first to the last; all but the
// last one have kElements elements. The tile is aligned to a cache line and holds whatever the piece before has left in
// it:
//
//   forTiles<Kvr32f>(len, [=](Kvr32f* tile, size_t begin, size_t count) {
//     mapElements(ToFloat(), tile, count, src + begin);
//     work(tile, count);
//     mapElements(ToInteger(), dst + begin, count, tile);
//   });
//
// dst may be src: a piece is read before it is written.
template <class T, size_t kElements = kTileElements, class Body>
KVRS_INLINE void forTiles(size_t len, Body body) {
  alignas(64) T tile[kElements];
  for (size_t i = 0; i < len; i += kElements) body(tile, i, len - i < kElements ? len - i : kElements);
}

// The same with a second tile, for work that has its input and its output side by side: body(tile1, tile2, begin, count).
template <class T1, class T2, size_t kElements = kTileElements, class Body>
KVRS_INLINE void forTilePairs(size_t len, Body body) {
  alignas(64) T2 second[kElements];
  forTiles<T1, kElements>(
      len, [&](T1 * first, size_t begin, size_t count)
               __attribute__((always_inline)) { body(first, second, begin, count); });
}

}  // namespace kvrs

#endif
