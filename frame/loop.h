// The element loop: dst[i] = op(src0[i], src1[i], ...) over whole vectors, whatever the length and the alignment.
//
//   part          turns of four blocks     blocks      last
//   |--|------------|------------|-------|---|---|---|
//                                                  |---|
//
// An operation has at the most seven bodies in a module: four blocks of a turn, one of what is left of turns, one of the
// last block, which lies over the one before it, and one of part of a block: of vectors that are shorter, and in long ones of
// what lies in front of the first aligned block. Every block, part or not, is a full vector for the operation.
//
// The last block is computed before anything is stored, so that an operation in place reads each element before it is
// overwritten.
//
// There is one loop for every alignment of a source: on processors of the last fifteen years an unaligned load costs
// nothing but the crossing of a cache line, which no alignment of dst can avoid for all sources at once.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_LOOP_H
#define KVRS_FRAME_LOOP_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "frame/cursor.h"
#include "frame/element.h"
#include "frame/simd.h"
#include "kvrs/types.h"

namespace kvrs {

// An operation that is a long chain of its own, such as a logarithm or a division, says `static constexpr bool kIsHeavy =
// true`: more than one block at a time would only be more code.
template <class Op>
inline constexpr bool kIsHeavy = requires {
  requires Op::kIsHeavy;
};

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
template <class... C>
inline constexpr size_t kBlockOf = kVectorBytes / widest(C::kLaneBytes...);
template <class Work>
struct WorkLanes {
  static constexpr size_t kLaneBytes = sizeof(Work);
};
template <>
struct WorkLanes<void> {
  static constexpr size_t kLaneBytes = 1;
};
template <class... T>
inline constexpr size_t kBlock = kVectorBytes / widest(kSpanBytes<T>...);

// Whether an array of `len` elements can exist. Without the question a length of more bytes than an address
// counts would wrap and write at random.
constexpr bool fitsAddress(size_t len, size_t elementBytes) {
  return elementBytes == 0 || len <= SIZE_MAX / elementBytes;
}

// From so many blocks on it is worth while to align the destination first.
inline constexpr ptrdiff_t kAlignedFrom = kVectorBytes == 64 ? 16 : 64;

template <size_t N, class Op, class Dst, class... Src>
KVRS_INLINE auto block(Op& op, [[maybe_unused]] ptrdiff_t i, Dst, Src... src) {
  return op(typename Dst::template Tag<N>(), src.template load<N>(i)...);
}

template <class... C>
KVRS_INLINE void advance(ptrdiff_t count, C&... cursors) {
  (cursors.move(count), ...);
}

template <size_t N, class Op, class Dst, class... Src>
KVRS_INLINE void put(Op& op, ptrdiff_t i, Dst dst, Src... src) {
  dst.template store<N>(block<N>(op, i, dst, src...), i);
}

// The first elements of a block. `kFilled`: lanes without an element hold a copy of the first one.
template <size_t N, bool kFilled, class Op, class Dst, class... Src>
KVRS_INLINE void putFirst(Op& op, ptrdiff_t count, Dst dst, Src... src) {
  const typename Dst::template Tag<N> d;
  if constexpr (kFilled) {
    dst.template storeFirst<N>(op(d, src.template loadFilled<N>(count)...), count);
  } else {
    dst.template storeFirst<N>(op(d, src.template loadFirst<N>(count)...), count);
  }
}

// Each element once and in order, by two bodies.
template <size_t N, bool kFilled, class Op, class Dst, class... Src>
KVRS_INLINE void passInOrder(Op& op, ptrdiff_t len, Dst dst, Src... src) {
  constexpr ptrdiff_t n = N;
  ptrdiff_t left = len - n;
  for (; left >= 0; keep(left -= n), advance(n, dst, src...)) put<N>(op, 0, dst, src...);
  if ((left += n) != 0) putFirst<N, kFilled>(op, left, dst, src...);
}

// All of [0, len).
template <size_t N, class Op, class Dst, class... Src>
KVRS_INLINE void passOver(Op& op, ptrdiff_t len, Dst dst, Src... src) {
  constexpr ptrdiff_t n = N;
  ptrdiff_t left = len, part = left;
  if (__builtin_expect(left >= n, true)) {
    part = 0;
    if (__builtin_expect(left >= kAlignedFrom * n, false)) part = dst.template toAligned<N>();
  }
  if (__builtin_expect(part != 0, false)) {
    putFirst<N, false>(op, part, dst, src...);
    if ((left -= part) == 0) return;
    advance(part, dst, src...);
  }

  const ptrdiff_t rest = left & (n - 1);
  decltype(block<N>(op, 0, dst, src...)) last;
  if (__builtin_expect(rest != 0, false)) last = block<N>(op, left - n, dst, src...);
  for (left -= 4 * n; left >= 0; keep(left -= 4 * n), advance(4 * n, dst, src...)) {
    put<N>(op, 0, dst, src...);
    put<N>(op, n, dst, src...);
    put<N>(op, 2 * n, dst, src...);
    put<N>(op, 3 * n, dst, src...);
  }
  for (left += 3 * n; left >= 0; keep(left -= n), advance(n, dst, src...)) put<N>(op, 0, dst, src...);
  if (__builtin_expect(rest != 0, false)) dst.template store<N>(last, rest - n);
}

// The same for all arrays of a pass; with 64-bit addresses there is no question.
template <class... C>
KVRS_INLINE bool fit(size_t len) {
  return sizeof(size_t) > 4 || __builtin_expect(fitsAddress(len, widest(C::kElementBytes..., 1)), true);
}

// A function of its own, so that it calls nothing: no frame, nothing to save, and all forms of an operation share it.
// Its arguments stand in the order of the exports, which spares them the shuffling of registers.
template <class Work, class Op, class Dst, class... Src>
[[gnu::noinline]] KvrStatus pass(Src... src, Dst dst, size_t len, Op op) {
  constexpr size_t N = kBlockOf<WorkLanes<Work>, Dst, Src...>;
  if (!fit<Dst, Src...>(len)) return kvrStatusBadLength;
  if constexpr (kIsHeavy<Op> || !std::is_void_v<Work>) {
    passInOrder<N, false>(op, static_cast<ptrdiff_t>(len), dst, src...);
  } else {
    passOver<N>(op, static_cast<ptrdiff_t>(len), dst, src...);
  }
  return kvrStatusOk;
}

// `op` keeps something from block to block. Blocks have as many elements as lanes of Work fill a vector.
template <class Work, class Op, class Dst, class... Src>
[[gnu::noinline]] Op passKeeping(Src... src, Dst dst, size_t len, Op op) {
  passInOrder<kBlockOf<WorkLanes<Work>, Dst, Src...>, true>(op, static_cast<ptrdiff_t>(len), dst, src...);
  return op;
}

template <class Work, class Op, class Dst, class... Src>
KVRS_INLINE KvrStatus callPass(const Op& op, size_t len, Dst dst, Src... src) {
  return pass<Work, Op, Dst, Src...>(src..., dst, len, op);
}
template <class Work, class Op, class Dst, class... Src>
KVRS_INLINE Op callKeeping(const Op& op, size_t len, Dst dst, Src... src) {
  return passKeeping<Work, Op, Dst, Src...>(src..., dst, len, op);
}

}  // namespace loop_detail

// dst[i] = op(d, src[i]...) for i in [0, len). `op` is called with a tag of dst's lanes and the sources' vectors (a
// Complex for complex elements) and returns dst's. Vectors are full ones; lanes without an element hold 0. It is called
// for some elements twice. `dst` and sources are pointers or cursors (frame/cursor.h). Blocks are read and written
// upward: a source is dst itself, lies behind its beginning, or does not overlap it. `len` is below 2^32.
//
// The result is kvrStatusOk, and in a 32-bit process kvrStatusBadLength, with nothing written, for an array that
// does not fit into the address space. An export may end in the call, which then is a jump:
//
//   return mapElements(Add(), dst, len, src1, src2);
template <class Dst, class Op, class... S>
KVRS_INLINE KvrStatus mapElements(const Op& op, Dst dst, size_t len, S... src) {
  return loop_detail::callPass<void>(op, len, cursorOf(dst), sourceOf(src)...);
}

// The same for an operation that computes in lanes of Work, wider than those of the arrays: a block has as many elements as
// these fill a vector.
template <class Work, class Dst, class Op, class... S>
KVRS_INLINE KvrStatus mapInLanesOf(const Op& op, Dst dst, size_t len, S... src) {
  return loop_detail::callPass<Work>(op, len, cursorOf(dst), sourceOf(src)...);
}

// The same for an operation that keeps something from block to block, which is returned at the end: it is called once for
// each element and in order, in blocks of as many elements as lanes of Work fill a vector. Lanes without an element hold
// a copy of one, so that they add nothing new. The arrays exist: their length has been tested.
template <class Work, class Dst, class Op, class... S>
KVRS_INLINE Op mapKeeping(const Op& op, Dst dst, size_t len, S... src) {
  return loop_detail::callKeeping<Work>(op, len, cursorOf(dst), sourceOf(src)...);
}

}  // namespace kvrs

#endif
