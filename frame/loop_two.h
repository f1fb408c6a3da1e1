// The element loop (frame/loop.h) for two results: dst1[i], dst2[i] = op(src0[i], src1[i], ...).
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_LOOP_TWO_H
#define KVRS_FRAME_LOOP_TWO_H

#include "frame/loop.h"

namespace kvrs {
namespace loop_detail {

template <size_t N, class D, class V>
KVRS_INLINE void storeTwo(Complex<V> v, D* dst1, D* dst2) {
  const ElementLanes<D, N> d;
  Element<D>::store(v.re, d, dst1);
  Element<D>::store(v.im, d, dst2);
}

template <size_t N, class D, class Op, class... S>
KVRS_INLINE void shortMapToTwo(const Op& op, D* dst1, D* dst2, ptrdiff_t len, const S*... src) {
  if (len >= ptrdiff_t{N}) {
    const auto first = block<N, D>(op, 0, src...);
    const auto last = block<N, D>(op, len - N, src...);
    storeTwo<N>(first, dst1, dst2);
    storeTwo<N>(last, dst1 + (len - N), dst2 + (len - N));
  } else if constexpr (N > 1) {
    shortMapToTwo<N / 2>(op, dst1, dst2, len, src...);
  }
}

}  // namespace loop_detail

// As mapElements; `op` returns a Complex, whose `re` goes to dst1 and whose `im` goes to dst2. A source may be
// one of the destinations.
template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapToTwo(Op op, D* dst1, D* dst2, size_t count, const S*... src) {
  using namespace loop_detail;
  if (!fitsAddress(count, widest(sizeof(D), sizeof(S)...))) return kvrStatusBadLength;
  const ptrdiff_t len = static_cast<ptrdiff_t>(count);
  constexpr ptrdiff_t N = kBlock<D, S...>;
  if (len <= 2 * N) {
    shortMapToTwo<N>(op, dst1, dst2, len, src...);
    return kvrStatusOk;
  }
  const ptrdiff_t end = len - N;
  const auto first = block<N, D>(op, 0, src...);
  const auto last = block<N, D>(op, end, src...);
  if (len <= 4 * N) {
    const auto second = block<N, D>(op, N, src...);
    const auto third = block<N, D>(op, end - N, src...);
    storeTwo<N>(first, dst1, dst2);
    storeTwo<N>(second, dst1 + N, dst2 + N);
    storeTwo<N>(third, dst1 + (end - N), dst2 + (end - N));
  } else {
    forBlocks<N>(firstAligned<N>(dst1), end,
                 [&](ptrdiff_t i) { storeTwo<N>(block<N, D>(op, i, src...), dst1 + i, dst2 + i); });
    storeTwo<N>(first, dst1, dst2);
  }
  storeTwo<N>(last, dst1 + end, dst2 + end);
  return kvrStatusOk;
}

}  // namespace kvrs

#endif
