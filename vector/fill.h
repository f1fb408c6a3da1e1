// The kernel of Set and Zero.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_FILL_H
#define KVRS_VECTOR_FILL_H

#include "frame/check.h"
#include "frame/loop.h"

namespace kvrs {

template <class Word>
struct Fill {
  Word val;
  template <class D>
  KVRS_INLINE auto operator()(D d) const {
    return hn::Set(d, val);
  }
};

template <class Part>
struct Fill<Pair<Part>> {
  Pair<Part> val;
  template <class D>
  KVRS_INLINE auto operator()(D d) const {
    return hn::OddEven(hn::Set(d, val.im), hn::Set(d, val.re));
  }
};

struct FillZero {
  template <class D>
  KVRS_INLINE auto operator()(D d) const {
    return hn::Zero(d);
  }
};

// Vectors of so many bytes at the most are filled in the export itself, by pieces of at most 16 bytes.
inline constexpr size_t kShortFill = 128;

template <class Word, class Op>
KVRS_INLINE void fillShort(const Op& op, Word* dst, size_t len) {
  constexpr size_t N = 16 / sizeof(Word);
  if (len < N) {
    if constexpr (N > 1) loop_detail::shortMap<N / 2>(op, dst, static_cast<ptrdiff_t>(len));
    return;
  }
  const ElementLanes<Word, N> d;
  const auto piece = op(d);
  const auto putEnds = [&](size_t k) {
    Element<Word>::store(piece, d, dst + k * N);
    Element<Word>::store(piece, d, dst + len - (k + 1) * N);
  };
  putEnds(0);
  if (len <= 2 * N) return;
  putEnds(1);
  if (len <= 4 * N) return;
  putEnds(2);
  putEnds(3);
}

template <class Word, class Op>
KVRS_INLINE KvrStatus fillElements(const Op& op, Word* dst, size_t len) {
  if (len > kShortFill / sizeof(Word)) return mapElements(op, dst, len);
  fillShort(op, dst, len);
  return kvrStatusOk;
}

}  // namespace kvrs

#endif
