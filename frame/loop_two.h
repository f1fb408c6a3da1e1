// The element loop (frame/loop.h) for two results: dst1[i], dst2[i] = op(src0[i], src1[i], ...).
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_LOOP_TWO_H
#define KVRS_FRAME_LOOP_TWO_H

#include "frame/loop.h"

namespace kvrs {
namespace loop_detail {

template <size_t N, class D, class Op, class... S>
KVRS_INLINE void shortMapToTwo(const Op& op, D* dst1, D* dst2, ptrdiff_t len, const S*... src) {
  if (len >= ptrdiff_t{N}) {
    const auto first = block<N, D>(op, 0, src...);
    const auto last = block<N, D>(op, len - N, src...);
    storeBlock<N>(first, 0, dst1, dst2);
    storeBlock<N>(last, len - N, dst1, dst2);
  } else if constexpr (N > 1) {
    shortMapToTwo<N / 2>(op, dst1, dst2, len, src...);
  }
}

template <size_t N, bool kFar, class D, class Op, class... S>
KVRS_INLINE auto putterOfTwo(const Op& op, D* dst1, D* dst2, const S*... src) {
  return Putter<N, kFar, 2, D, Op, S...>(op, src..., dst1, dst2);
}
template <size_t N, class D, class Op, class... S>
KVRS_INLINE auto firstPutterOfTwo(const Op& op, D* dst1, D* dst2, const S*... src) {
  return [ =, &op ](ptrdiff_t i, ptrdiff_t count) __attribute__((always_inline)) {
    const ElementLanes<D, N> d;
    const size_t n = static_cast<size_t>(count);
    const auto v = op(d, Element<S>::loadFirst(n, ElementLanes<S, N>(), src + i)...);
    Element<D>::storeFirst(n, v.re, d, dst1 + i);
    Element<D>::storeFirst(n, v.im, d, dst2 + i);
  };
}

template <bool kFar, class D, class Op, class... S>
KVRS_INLINE void mapBlocksToTwo(const Op& op, D* dst1, D* dst2, ptrdiff_t len, const S*... src) {
  constexpr ptrdiff_t N = kBlock<D, S...>;
  const auto put = putterOfTwo<N, kFar>(op, dst1, dst2, src...);
  if constexpr (kAllMask<D, S...>) {
    forManyBlocks<N, kFar>(dst1, len, put, firstPutterOfTwo<N>(op, dst1, dst2, src...));
  } else {
    if (len <= 2 * N) {
      shortMapToTwo<N>(op, dst1, dst2, len, src...);
      return;
    }
    const ptrdiff_t end = len - N;
    const auto first = block<N, D>(op, 0, src...);
    const auto last = block<N, D>(op, end, src...);
    if (len <= 4 * N) {
      const auto second = block<N, D>(op, N, src...);
      const auto third = block<N, D>(op, end - N, src...);
      storeBlock<N>(first, 0, dst1, dst2);
      storeBlock<N>(second, N, dst1, dst2);
      storeBlock<N>(third, end - N, dst1, dst2);
    } else {
      forBlocks<N, kFar>(firstAligned<N>(dst1), len - 1, put);
      storeBlock<N>(first, 0, dst1, dst2);
    }
    storeBlock<N>(last, end, dst1, dst2);
  }
}

// Far, or empty.
template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapFarToTwo(const S*... src, D* dst1, D* dst2, size_t len, Op op) {
  if (len == 0) return kvrStatusOk;
  if (!fitsAddress(len, widest(sizeof(D), sizeof(S)...))) return kvrStatusBadLength;
  mapBlocksToTwo<true>(op, dst1, dst2, static_cast<ptrdiff_t>(len), src...);
  return kvrStatusOk;
}

template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapToTwoAligned(const S*... src, D* dst1, D* dst2, ptrdiff_t len, Op op) {
  mapBlocksToTwo<false>(op, dst1, dst2, len, src...);
  return kvrStatusOk;
}

template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapManyToTwo(const S*... src, D* dst1, D* dst2, size_t len, Op op) {
  if (__builtin_expect(len - 1 >= kFarBytes / kBytesPerElement<D, D, S...>, false)) {
    return mapFarToTwo<D, Op, S...>(src..., dst1, dst2, len, op);
  }
  if constexpr (kMovesPointers) {
    constexpr size_t N = kBlock<D, S...>;
    if (len >= N && (len < kAlignedFrom * N || bytesToAligned<N>(dst1) == 0)) {
      putFromStart<N>(putterOfTwo<N, false>(op, dst1, dst2, src...), static_cast<ptrdiff_t>(len),
                      block<N, D>(op, static_cast<ptrdiff_t>(len - N), src...));
      return kvrStatusOk;
    }
    return mapToTwoAligned<D, Op, S...>(src..., dst1, dst2, static_cast<ptrdiff_t>(len), op);
  } else {
    mapBlocksToTwo<false>(op, dst1, dst2, static_cast<ptrdiff_t>(len), src...);
    return kvrStatusOk;
  }
}

}  // namespace loop_detail

// As mapElements; `op` returns a Complex, whose `re` goes to dst1 and whose `im` goes to dst2. A source may be
// one of the destinations.
template <class D, class Op, class... S>
KVRS_INLINE KvrStatus mapToTwo(const Op& op, D* dst1, D* dst2, size_t len, const S*... src) {
  using namespace loop_detail;
  if constexpr (kAllMask<D, S...>) {
    constexpr size_t N = kBlock<D, S...>;
    if (__builtin_expect(len - 1 < 4 * N, true)) {
      forFewBlocks<N>(static_cast<ptrdiff_t>(len), putterOfTwo<N, false>(op, dst1, dst2, src...),
                      firstPutterOfTwo<N>(op, dst1, dst2, src...));
      return kvrStatusOk;
    }
  }
  return mapManyToTwo<D, Op, S...>(src..., dst1, dst2, len, op);
}

}  // namespace kvrs

#endif
