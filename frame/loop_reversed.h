// The element loop (frame/loop.h) backwards: dst[i] = op(src[len - 1 - i]).
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_LOOP_REVERSED_H
#define KVRS_FRAME_LOOP_REVERSED_H

#include "frame/loop.h"

namespace kvrs {
namespace loop_detail {

// The elements of a vector in reverse order.
template <class T, size_t N, class D, class V>
KVRS_INLINE V reverse(D d, V v) {
  const hn::Repartition<uint8_t, D> bytes;
  if constexpr (N == 1) {
    return v;
  } else if constexpr (sizeof(T) == 16) {
    return hn::ReverseBlocks(d, v);
  } else if constexpr (sizeof(T) == 1 && N >= 16) {
    alignas(16) static constexpr uint8_t kOrder[16] = {15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0};
    return hn::ReverseBlocks(d, hn::TableLookupBytes(v, hn::LoadDup128(d, kOrder)));
  } else if constexpr (sizeof(T) == 2 && N == 8) {
    alignas(16) static constexpr uint8_t kOrder[16] = {14, 15, 12, 13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1};
    return hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(bytes, v), hn::Load(bytes, kOrder)));
  } else if constexpr (sizeof(T) == 1) {
    const hn::RepartitionToWide<D> words;
    const auto w = reverse<uint16_t, N / 2>(words, hn::BitCast(words, v));
    return hn::BitCast(d, hn::Or(hn::ShiftLeft<8>(w), hn::ShiftRight<8>(w)));
  } else {
    return hn::Reverse(d, v);
  }
}

// The operation on a block of src, reversed.
template <class Op, class T, size_t N>
KVRS_INLINE auto reversedBlock(const T* src) {
  const ElementLanes<T, N> d;
  return Op()(d, reverse<T, N>(d, Element<T>::load(d, src)));
}

// At most two blocks of N elements, which may lie over each other; dst may be src.
template <class Op, class T, size_t N>
KVRS_INLINE void shortReversed(const T* src, T* dst, ptrdiff_t len) {
  if (len >= ptrdiff_t{N}) {
    const ElementLanes<T, N> d;
    const auto front = reversedBlock<Op, T, N>(src + (len - N));
    const auto back = reversedBlock<Op, T, N>(src);
    Element<T>::store(front, d, dst);
    Element<T>::store(back, d, dst + (len - N));
  } else if constexpr (N > 1) {
    shortReversed<Op, T, N / 2>(src, dst, len);
  }
}

template <bool kFar, class Op, class T>
KVRS_INLINE void mapBlocksReversed(const T* src, T* dst, ptrdiff_t len) {
  constexpr ptrdiff_t N = kBlock<T>;
  if (len <= 2 * N) {
    shortReversed<Op, T, N>(src, dst, len);
    return;
  }
  const ElementLanes<T, N> d;
  const ptrdiff_t end = len - N;
  const T* const lastBlock = src + end;
  const auto first = reversedBlock<Op, T, N>(lastBlock);
  const auto last = reversedBlock<Op, T, N>(src);
  const auto put = [&](ptrdiff_t i) __attribute__((always_inline)) {
    if constexpr (kFar) {
      fetchBehind<N>(lastBlock, -i);
      fetchAheadToWrite<N>(dst, i);
    }
    Element<T>::store(reversedBlock<Op, T, N>(lastBlock - i), d, dst + i);
  };
  forBlocks<N, kFar>(firstAligned<N>(dst), len - 1, put);
  Element<T>::store(first, d, dst);
  Element<T>::store(last, d, dst + end);
}

template <class Op, class T>
[[gnu::noinline]] KvrStatus mapFarReversed(const T* src, T* dst, size_t len) {
  if (!fitsAddress(len, sizeof(T))) return kvrStatusBadLength;
  mapBlocksReversed<true, Op>(src, dst, static_cast<ptrdiff_t>(len));
  return kvrStatusOk;
}

}  // namespace loop_detail

// What moves elements without changing them.
struct Unchanged {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V v) const {
    return v;
  }
};

// dst[i] = op(d, src[len - 1 - i]) for i in [0, len), on elements of unsigned integers that stand for any of
// their width. The arrays do not overlap. Op has no data. Returns what mapElements does.
template <class Op, class T>
[[gnu::noinline]] KvrStatus mapReversed(const T* src, T* dst, size_t len) {
  using namespace loop_detail;
  if (__builtin_expect(len >= kFarBytes / (2 * sizeof(T)), false)) return mapFarReversed<Op>(src, dst, len);
  mapBlocksReversed<false, Op>(src, dst, static_cast<ptrdiff_t>(len));
  return kvrStatusOk;
}

}  // namespace kvrs

#endif
