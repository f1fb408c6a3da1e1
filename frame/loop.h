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
// Vectors shorter than N elements are one block under a mask where there are masks, and run the same way with blocks
// of N/2, N/4, ... elements where there are none.
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
#include "kvrs/types.h"

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

// Elements of a block: those whose widest lanes fill one vector.
template <class D, class... S>
inline constexpr size_t kBlock = kVectorBytes / widest(kSpanBytes<D>, kSpanBytes<S>...);

// Whether an array of `len` elements can exist. Without the question a length of more bytes than an address
// counts would wrap and write at random.
constexpr bool fitsAddress(size_t len, size_t elementBytes) {
  return len <= SIZE_MAX / elementBytes;
}

// One block from index i on.
template <size_t N, class D, class Op, class... S>
KVRS_INLINE auto block(const Op& op, [[maybe_unused]] ptrdiff_t i, const S*... src) {
  const ElementLanes<D, N> d;
  return op(d, Element<S>::load(ElementLanes<S, N>(), src + i)...);
}

// The distance in bytes from dst to the next address that is aligned to a block.
template <size_t N, class D>
KVRS_INLINE size_t bytesToAligned(const D* dst) {
  return (0 - reinterpret_cast<uintptr_t>(dst)) & (N * sizeof(D) - 1);
}

// The first index behind 0 at which dst is aligned to a block; where none is, some index within the first
// block.
template <size_t N, class D>
KVRS_INLINE size_t firstAligned(const D* dst) {
  return N - (reinterpret_cast<uintptr_t>(dst) & (N * sizeof(D) - 1)) / sizeof(D);
}

// Makes the index the loop's one counter: from a plain one the compiler makes a pointer for every array, for
// which s8 has no registers.
KVRS_INLINE void keepIndex(ptrdiff_t& i) {
  asm("" : "+r"(i));
}

// put(i) for the first index of every block from i on, until at most one block is left behind `end`, which is
// the last one's.
template <size_t N, class Put>
KVRS_INLINE void forBlocks(ptrdiff_t i, ptrdiff_t end, Put put) {
  constexpr ptrdiff_t n = N;
  for (const ptrdiff_t lastTurn = end - 3 * n; i < lastTurn; i += 4 * n) {
    keepIndex(i);
    put(i);
    put(i + n);
    put(i + 2 * n);
    put(i + 3 * n);
  }
  for (; i < end; i += n) put(i);
}

// Vectors of more elements than these go through the loop; up to there everything is read before anything is
// written.
template <class D, class... S>
inline constexpr size_t kLoopFrom = 4 * kBlock<D, S...>;

// At most two blocks of N elements, which may lie over each other.
template <size_t N, class D, class Op, class... S>
KVRS_INLINE void shortMap(const Op& op, D* dst, ptrdiff_t len, const S*... src) {
  if (len >= ptrdiff_t{N}) {
    const ElementLanes<D, N> d;
    const auto first = block<N, D>(op, 0, src...);
    const auto last = block<N, D>(op, len - N, src...);
    Element<D>::store(first, d, dst);
    Element<D>::store(last, d, dst + (len - N));
  } else if constexpr (N > 1) {
    shortMap<N / 2>(op, dst, len, src...);
  }
}

// Whether the first elements of a block of N are loaded and stored in one go.
template <class T, size_t N>
inline constexpr bool kMasks = kMaskRegisters&& requires(ElementLanes<T, N> d, const T* p) {
  Element<T>::loadFirst(1, d, p);
};

// Fewer elements than a block of N.
template <size_t N, class D, class Op, class... S>
KVRS_INLINE void partOfBlock(const Op& op, D* dst, ptrdiff_t len, const S*... src) {
  if constexpr (kMasks<D, N> && (kMasks<S, N> && ...)) {
    const ElementLanes<D, N> d;
    const size_t count = static_cast<size_t>(len);
    Element<D>::storeFirst(count, op(d, Element<S>::loadFirst(count, ElementLanes<S, N>(), src)...), d, dst);
  } else if constexpr (N > 1) {
    shortMap<N / 2>(op, dst, len, src...);
  }
}

// A function of its own so that it calls nothing: no frame, nothing to save, and all forms of an operation
// share it. Its arguments stand in the order of the exports, which spares them the shuffling of registers.
template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapInCache(const S*... src, D* dst, ptrdiff_t len, Op op) {
  constexpr ptrdiff_t N = kBlock<D, S...>;
  if (len < N) {
    partOfBlock<N>(op, dst, len, src...);
    return kvrStatusOk;
  }
  const ElementLanes<D, N> d;
  const ptrdiff_t end = len - N;
  const auto first = block<N, D>(op, 0, src...);
  const auto last = block<N, D>(op, end, src...);
  if (len > 4 * N) {
    forBlocks<N>(
        firstAligned<N>(dst), end, [&](ptrdiff_t i) __attribute__((always_inline)) {
          Element<D>::store(block<N, D>(op, i, src...), d, dst + i);
        });
  } else if (len > 2 * N) {
    const auto second = block<N, D>(op, N, src...);
    const auto third = block<N, D>(op, end - N, src...);
    Element<D>::store(second, d, dst + N);
    Element<D>::store(third, d, dst + (end - N));
  }
  Element<D>::store(first, d, dst);
  Element<D>::store(last, d, dst + end);
  return kvrStatusOk;
}

// The same with stores that bypass the cache. Wants an alignable dst and more than two blocks. One block a turn: it is
// memory that takes the time.
template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapPastCache(const S*... src, D* dst, ptrdiff_t len, Op op) {
  constexpr ptrdiff_t N = kBlock<D, S...>;
  const ElementLanes<D, N> d;
  const ptrdiff_t end = len - N;
  const auto first = block<N, D>(op, 0, src...);
  const auto last = block<N, D>(op, end, src...);
  for (ptrdiff_t i = firstAligned<N>(dst); i < end; i += N) {
    Element<D>::stream(block<N, D>(op, i, src...), d, dst + i);
  }
  hwy::FlushStream();
  Element<D>::store(first, d, dst);
  Element<D>::store(last, d, dst + end);
  return kvrStatusOk;
}

// Bytes of one element of every array.
template <class D, class... S>
inline constexpr size_t kBytesPerElement = (sizeof(D) + ... + sizeof(S));

// Stores past the cache pay where one vector fills a line: measured on vectors of 8 to 256 MiB they give up to a
// fifth with 64-byte vectors, and cost as much with 16-byte ones.
inline constexpr bool kStreamsPay = kVectorBytes >= 64;

// Whether a result is better written past the cache: when it and its sources cannot all stay there. In place
// there is nothing to gain, as the lines of dst have been read anyway.
template <class D, class... S>
bool beyondCache(const D* dst, size_t len, const S*... src) {
  constexpr size_t N = kBlock<D, S...>;
  const bool alignable = bytesToAligned<N>(dst) % sizeof(D) == 0;
  const bool inPlace = ((static_cast<const void*>(dst) == static_cast<const void*>(src)) || ...);
  const size_t cache = lastLevelCacheBytes();
  return alignable && !inPlace && cache != 0 && len > cache / kBytesPerElement<D, S...>;
}

// Vectors of so many bytes are asked questions that the usual call is spared.
inline constexpr size_t kLongBytes = size_t{1} << 20;

template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapLong(const S*... src, D* dst, size_t len, Op op) {
  if (!fitsAddress(len, widest(sizeof(D), sizeof(S)...))) return kvrStatusBadLength;
  if constexpr (kStreamsPay && Element<D>::kStreams) {
    if (beyondCache(dst, len, src...)) return mapPastCache<D, Op, S...>(src..., dst, len, op);
  }
  return mapInCache<D, Op, S...>(src..., dst, len, op);
}

}  // namespace loop_detail

// dst[i] = op(d, src[i]...) for i in [0, len). `op` is called with a tag of dst's lanes and the sources'
// vectors (a Complex for complex elements) and returns dst's. It is called for 1, 2, 4, ... elements up to a
// full block, for some elements twice, and with elements in any order. Each source is dst itself or does not
// overlap it. `len` is below 2^32.
//
// The result is kvrStatusOk, and in a 32-bit process kvrStatusBadLength, with nothing written, for an array that
// does not fit into the address space. An export may end in the call, which then is a jump:
//
//   return mapElements(Add(), dst, len, src1, src2);
template <class D, class Op, class... S>
KVRS_INLINE KvrStatus mapElements(const Op& op, D* dst, size_t len, const S*... src) {
  using namespace loop_detail;
  if (__builtin_expect(len >= kLongBytes / kBytesPerElement<D, S...>, false)) {
    return mapLong<D, Op, S...>(src..., dst, len, op);
  }
  return mapInCache<D, Op, S...>(src..., dst, len, op);
}

}  // namespace kvrs

#endif
