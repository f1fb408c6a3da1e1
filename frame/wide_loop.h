// The element loop of operations that compute in wider lanes than their arrays have, or that have something
// to tell at the end, such as a division by zero.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_WIDE_LOOP_H
#define KVRS_FRAME_WIDE_LOOP_H

#include <cstddef>
#include <cstdint>

#include "frame/element.h"
#include "frame/loop.h"
#include "frame/simd.h"

namespace kvrs {

namespace wide_loop_detail {

template <size_t N, class D, class Op, class... S>
KVRS_INLINE auto block(Op& op, size_t i, const S*... src) {
  const ElementLanes<D, N> d;
  return op(d, Element<S>::load(ElementLanes<S, N>(), src + i)...);
}

// Two blocks from i on, by the operation on both of them if it has one.
template <size_t N, class D, class Op, class... S>
KVRS_INLINE auto twoBlocks(Op& op, size_t i, const S*... src) {
  const ElementLanes<D, N> d;
  if constexpr (requires {
                  op.both(d, Both{Element<S>::load(ElementLanes<S, N>(), src),
                                  Element<S>::load(ElementLanes<S, N>(), src)}...);
                }) {
    return op.both(d, Both{Element<S>::load(ElementLanes<S, N>(), src + i),
                           Element<S>::load(ElementLanes<S, N>(), src + i + N)}...);
  } else {
    const auto first = block<N, D>(op, i, src...);
    return Both{first, block<N, D>(op, i + N, src...)};
  }
}

// Fewer than 2 * N elements.
template <size_t N, class D, class Op, class... S>
KVRS_INLINE void mapShort(Op& op, D* dst, size_t len, const S*... src) {
  if (len >= N) {
    const ElementLanes<D, N> d;
    const auto first = block<N, D>(op, 0, src...);
    const auto last = block<N, D>(op, len - N, src...);
    Element<D>::store(first, d, dst);
    Element<D>::store(last, d, dst + (len - N));
  } else if constexpr (N > 1) {
    mapShort<N / 2>(op, dst, len, src...);
  }
}

}  // namespace wide_loop_detail

// dst[i] = op(d, src[i]...) for i in [0, len), in blocks of as many elements as lanes of Work fill a vector.
// `op` is called as mapElements calls it; it may keep something from block to block and is returned at the
// end. It may have a member `both` that does two blocks at once. Each source is dst itself or does not overlap
// it.
template <class Work, class D, class Op, class... S>
Op mapWide(Op op, D* dst, size_t len, const S*... src) {
  using namespace wide_loop_detail;
  constexpr size_t N = loop_detail::kBlock<D, Work, S...>;
  if (len < 2 * N) {
    mapShort<N>(op, dst, len, src...);
    return op;
  }
  const ElementLanes<D, N> d;
  const size_t end = len - N;
  const auto last = block<N, D>(op, end, src...);
  size_t i = 0;
  for (; i + N < end; i += 2 * N) {
    const auto v = twoBlocks<N, D>(op, i, src...);
    Element<D>::store(v.first, d, dst + i);
    Element<D>::store(v.second, d, dst + i + N);
  }
  if (i < end) Element<D>::store(block<N, D>(op, i, src...), d, dst + i);
  Element<D>::store(last, d, dst + end);
  return op;
}

}  // namespace kvrs

#endif
