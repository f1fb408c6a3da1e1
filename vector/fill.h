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

// Vectors of so many bytes at the most are filled in the export itself.
inline constexpr size_t kShortFill = 8 * kVectorBytes;

// Bytes to kShortFill bytes by the narrowest vectors of at least so many that reach with eight.
template <size_t Bytes, class Word, class Op>
KVRS_INLINE void fillVectors(const Op& op, Word* dst, size_t len) {
  constexpr size_t N = Bytes / sizeof(Word);
  const ElementLanes<Word, N> d;
  const auto piece = op(d);
  const auto putEnds = [&](size_t k) {
    Element<Word>::store(piece, d, dst + k * N);
    Element<Word>::store(piece, d, dst + len - (k + 1) * N);
  };
  if constexpr (2 * Bytes <= kVectorBytes) {
    if (len > 2 * N) return fillVectors<2 * Bytes>(op, dst, len);
    putEnds(0);
  } else {
    putEnds(0);
    if (len <= 2 * N) return;
    putEnds(1);
    if (len <= 4 * N) return;
    putEnds(2);
    putEnds(3);
  }
}

template <class Word, class Op>
KVRS_INLINE void fillShort(const Op& op, Word* dst, size_t len) {
  constexpr size_t N = 16 / sizeof(Word);
  if (len >= N) return fillVectors<16>(op, dst, len);
  if constexpr (N > 1) loop_detail::shortMap<N / 2>(op, dst, static_cast<ptrdiff_t>(len));
}

template <class Word, class Op>
KVRS_INLINE KvrStatus fillElements(const Op& op, Word* dst, size_t len) {
  if (len > kShortFill / sizeof(Word)) return mapElements(op, dst, len);
  fillShort(op, dst, len);
  return kvrStatusOk;
}

}  // namespace kvrs

#endif
