// The element loop: dst[i] = op(src0[i], src1[i], ...) over whole vectors.
//
//        first                                         last
//   |------------|                                |------------|
//   .     |------------|------------|------------|------------|
//   .     aligned body, 4 blocks a turn           .            .
//   0                                             len - N      len
//
// The blocks at both ends lie over the body instead of running element by element, so that every element
// comes out of the same vector code, whatever the length and the alignment. Both are computed before anything
// is stored and stored after the body: an operation in place reads each element before it is overwritten.
// Vectors shorter than N elements run the same way with blocks of N/2, N/4, ... elements.
//
// There is one loop for every alignment of a source: on processors of the last fifteen years an unaligned
// load costs nothing but the crossing of a cache line, which no alignment of dst can avoid for all sources at
// once.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_LOOP_H
#define KVRS_FRAME_LOOP_H

#include <cstddef>
#include <cstdint>

#include "frame/cache.h"
#include "frame/element.h"
#include "frame/simd.h"

namespace kvrs {
namespace loop_detail {

constexpr size_t widest(size_t a) {
  return a;
}
template <class... Rest>
constexpr size_t widest(size_t a, Rest... rest) {
  const size_t b = widest(rest...);
  return a > b ? a : b;
}

// Bytes of a vector that an element takes.
template <class T>
inline constexpr size_t kSpanBytes = Element<T>::kSpan * sizeof(LaneOf<T>);

// Elements of a block: those whose widest lanes fill one vector.
template <class D, class... S>
inline constexpr size_t kBlock = kVectorBytes / widest(kSpanBytes<D>, kSpanBytes<S>...);

// One block from index i on.
template <size_t N, class D, class Op, class... S>
KVRS_INLINE auto block(const Op& op, size_t i, const S*... src) {
  const ElementLanes<D, N> d;
  return op(d, Element<S>::load(ElementLanes<S, N>(), src + i)...);
}

// The elements from `i` on, block by block until at most one block is left, which is the last one's.
// Streaming stores want an aligned dst + i.
template <bool kStream, size_t N, class D, class Op, class... S>
KVRS_INLINE void body(const Op& op, D* dst, size_t i, size_t end, const S*... src) {
  const ElementLanes<D, N> d;
  const auto put = [&](auto v, size_t at) {
    if constexpr (kStream) {
      Element<D>::stream(v, d, dst + at);
    } else {
      Element<D>::store(v, d, dst + at);
    }
  };
  while (i + 3 * N < end) {
    const auto v0 = block<N, D>(op, i, src...);
    const auto v1 = block<N, D>(op, i + N, src...);
    put(v0, i);
    put(v1, i + N);
    const auto v2 = block<N, D>(op, i + 2 * N, src...);
    const auto v3 = block<N, D>(op, i + 3 * N, src...);
    put(v2, i + 2 * N);
    put(v3, i + 3 * N);
    i += 4 * N;
  }
  for (; i < end; i += N) put(block<N, D>(op, i, src...), i);
}

template <size_t N, class D, class Op, class... S>
KVRS_INLINE void shortMap(const Op& op, D* dst, size_t len, const S*... src) {
  if (len >= N) {
    const ElementLanes<D, N> d;
    const auto first = block<N, D>(op, 0, src...);
    const auto last = block<N, D>(op, len - N, src...);
    Element<D>::store(first, d, dst);
    Element<D>::store(last, d, dst + (len - N));
  } else if constexpr (N > 1) {
    shortMap<N / 2>(op, dst, len, src...);
  }
}

// Up to so many blocks, finding where dst is aligned takes longer than stores that cross a cache line.
inline constexpr size_t kUnalignedBlocks = 512 / kVectorBytes;

// The first index above 0 at which dst is aligned to a block; 0 if no index is.
template <size_t N, class D>
KVRS_INLINE size_t toAligned(const D* dst) {
  constexpr size_t blockBytes = N * sizeof(D);
  const size_t bytes = blockBytes - (reinterpret_cast<uintptr_t>(dst) & (blockBytes - 1));
  return bytes % sizeof(D) == 0 ? bytes / sizeof(D) : 0;
}

// Whether a result of so many bytes is better written past the cache: when it and its sources cannot all stay
// there. The bound below spares the usual call the question.
inline constexpr size_t kLeastStreamedBytes = size_t{1} << 20;

inline bool beyondCache(size_t bytes) {
  const size_t cache = lastLevelCacheBytes();
  return cache != 0 && bytes > cache;
}

// The loop itself. Streaming wants at least two blocks.
template <bool kStream, class D, class Op, class... S>
KVRS_INLINE void map(const Op& op, D* dst, size_t len, const S*... src) {
  constexpr size_t N = kBlock<D, S...>;
  if (len < 2 * N) {
    if (len >= N) {
      shortMap<N>(op, dst, len, src...);
    } else if constexpr (N > 1) {
      shortMap<N / 2>(op, dst, len, src...);
    }
    return;
  }
  const ElementLanes<D, N> d;
  const auto last = block<N, D>(op, len - N, src...);
  if (!kStream && len <= kUnalignedBlocks * N) {
#pragma GCC unroll 1
    for (size_t i = 0; i < len - N; i += N) Element<D>::store(block<N, D>(op, i, src...), d, dst + i);
  } else {
    const auto first = block<N, D>(op, 0, src...);
    const size_t aligned = toAligned<N>(dst);
    body<kStream, N>(op, dst, aligned != 0 ? aligned : N, len - N, src...);
    if constexpr (kStream) hwy::FlushStream();
    Element<D>::store(first, d, dst);
  }
  Element<D>::store(last, d, dst + (len - N));
}

// For what may be worth streaming. Out of line, as a loop that calls nothing needs no stack.
template <class D, class Op, class... S>
__attribute__((noinline)) void mapLarge(const Op& op, D* dst, size_t len, size_t bytes, const S*... src) {
  constexpr size_t N = kBlock<D, S...>;
  const bool inPlace = ((static_cast<const void*>(dst) == static_cast<const void*>(src)) || ...);
  if (!inPlace && toAligned<N>(dst) != 0 && beyondCache(bytes)) {
    map<true>(op, dst, len, src...);
  } else {
    map<false>(op, dst, len, src...);
  }
}

}  // namespace loop_detail

// dst[i] = op(d, src[i]...) for i in [0, len). `op` is called with a tag of dst's lanes and the sources'
// vectors (a Complex for complex elements) and returns dst's. It is called for 1, 2, 4, ... elements up to a
// full block, for some elements twice, and with elements in any order. Each source is dst itself or does not
// overlap it.
template <class D, class Op, class... S>
void mapElements(const Op& op, D* dst, size_t len, const S*... src) {
  if constexpr (Element<D>::kStreams) {
    const size_t bytes = len * (sizeof(D) + (size_t{0} + ... + sizeof(S)));
    if (bytes >= loop_detail::kLeastStreamedBytes) return loop_detail::mapLarge(op, dst, len, bytes, src...);
  }
  loop_detail::map<false>(op, dst, len, src...);
}

}  // namespace kvrs

#endif
