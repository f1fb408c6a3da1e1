// The element loop of operations with unusual elements: those for which something else is stored than arithmetic gives, or
// that make the call end with a warning. An operation has three members:
//
//   isUsual(d, v...)      which lanes have nothing unusual about them
//   quick(d, v...)        the result where all lanes are usual
//   any(d, notes, v...)   the result everywhere; tells `notes` which lanes the status shall speak of
//
// Blocks of a turn are asked together, before anything of them is stored. The first unusual one ends the quick loop; what
// follows is taken the long way for some blocks, each element once and in order.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_NOTE_H
#define KVRS_FRAME_NOTE_H

#include "frame/loop.h"
#include "frame/unroll.h"

namespace kvrs {

// The warning of a call: that of the first lane that has one.
class Notes {
 public:
  KvrStatus status() const { return status_; }

  template <class D, class M>
  KVRS_INLINE void add(D d, KvrStatus warning, M lanes) {
    if (status_ == kvrStatusOk && !hn::AllFalse(d, lanes)) status_ = warning;
  }

  // Of two kinds; a lane is of one at the most.
  template <class D, class M>
  KVRS_INLINE void add(D d, KvrStatus warning1, M lanes1, KvrStatus warning2, M lanes2) {
    if (status_ != kvrStatusOk) return;
    const intptr_t first1 = hn::FindFirstTrue(d, lanes1), first2 = hn::FindFirstTrue(d, lanes2);
    if (first1 >= 0 && (first2 < 0 || first1 < first2)) {
      status_ = warning1;
    } else if (first2 >= 0) {
      status_ = warning2;
    }
  }

 private:
  KvrStatus status_ = kvrStatusOk;
};

namespace note_detail {

template <class M>
KVRS_INLINE M allOf(M mask) {
  return mask;
}
template <class M, class... Rest>
KVRS_INLINE M allOf(M mask, Rest... rest) {
  return hn::And(mask, allOf(rest...));
}

// The tag that an operation gets: of the parts' lanes.
template <size_t N, class Dst>
using TagOf = typename Dst::template Tag<N>;

// `any`, as an operation of mapKeeping.
template <class Op>
struct Any {
  template <class D, class... V>
  KVRS_INLINE auto operator()(D d, V... v) {
    return op.any(d, notes, v...);
  }

  Op op;
  Notes notes;
};

// Up to the first turn with an unusual element, or to what is less than a block; how many elements these are.
template <size_t N, class Op, class Dst, class... Src>
KVRS_INLINE ptrdiff_t passUsual(const Op& op, const ptrdiff_t len, Dst dst, Src... src) {
  constexpr ptrdiff_t n = N;
  const TagOf<N, Dst> d;
  const auto with = [&](auto use, ptrdiff_t at) KVRS_UNROLLED { return use(src.template load<N>(at)...); };
  const auto isUsual = [&](auto... v) KVRS_UNROLLED { return op.isUsual(d, v...); };
  const auto result = [&](auto... v) KVRS_UNROLLED { return op.quick(d, v...); };
  const auto turn = [&](auto... at) KVRS_UNROLLED {
    if (__builtin_expect(!hn::AllTrue(d, allOf(with(isUsual, at)...)), false)) return false;
    const auto store = [&](auto... v) KVRS_UNROLLED { (dst.template store<N>(v, at), ...); };
    store(with(result, at)...);
    return true;
  };
  ptrdiff_t left = len;
  if constexpr (!kIsHeavy<Op>) {
    for (; left >= 4 * n; keep(left -= 4 * n), loop_detail::advance(4 * n, dst, src...))
      if (!turn(Index<0>(), Index<N>(), Index<2 * N>(), Index<3 * N>())) return len - left;
  }
  for (; left >= n; keep(left -= n), loop_detail::advance(n, dst, src...))
    if (!turn(Index<0>())) return len - left;
  return len - left;
}

// For elements the next of which are unusual or less than a block: takes so many of these the long way before it tries
// again.
template <class Op, class Dst, class... Src>
[[gnu::noinline]] KvrStatus passUnusual(Src... src, Dst dst, ptrdiff_t len, Op op) {
  constexpr size_t N = loop_detail::kBlockOf<Dst, Src...>;
  constexpr ptrdiff_t kUnusual = 16 * N;
  Any<Op> any{op, {}};
  for (ptrdiff_t left = len; left > 0;) {
    const ptrdiff_t slow = left < kUnusual ? left : kUnusual;
    loop_detail::passInOrder<N, true>(any, slow, dst, src...);
    left -= slow;
    if (left == 0) break;
    loop_detail::advance(slow, dst, src...);
    const ptrdiff_t quick = passUsual<N>(op, left, dst, src...);
    left -= quick;
    loop_detail::advance(quick, dst, src...);
  }
  return any.notes.status();
}

// A function of its own that calls nothing but at its end: no frame, nothing to save.
template <class Op, class Dst, class... Src>
[[gnu::noinline]] KvrStatus passNoting(Src... src, Dst dst, size_t len, Op op) {
  if (!loop_detail::fit<Dst, Src...>(len)) return kvrStatusBadLength;
  const ptrdiff_t n = static_cast<ptrdiff_t>(len);
  const ptrdiff_t done = passUsual<loop_detail::kBlockOf<Dst, Src...>>(op, n, dst, src...);
  if (__builtin_expect(done == n, true)) return kvrStatusOk;
  loop_detail::advance(done, dst, src...);
  return passUnusual<Op, Dst, Src...>(src..., dst, n - done, op);
}

template <class Op, class Dst, class... Src>
KVRS_INLINE KvrStatus callNoting(const Op& op, size_t len, Dst dst, Src... src) {
  return passNoting<Op, Dst, Src...>(src..., dst, len, op);
}

}  // namespace note_detail

// dst[i] = op(src[i]...) for i in [0, len), `op` as told above, dst and sources as of mapElements. The result is that of
// mapElements or the warning that `op` noted first.
template <class Dst, class Op, class... S>
KVRS_INLINE KvrStatus mapNoting(const Op& op, Dst dst, size_t len, S... src) {
  return note_detail::callNoting(op, len, cursorOf(dst), sourceOf(src)...);
}

}  // namespace kvrs

#endif
