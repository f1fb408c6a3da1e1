// The reduction: an accumulator over all elements of one or two vectors, each of which counts exactly once.
//
// A vector of `len` elements is cut into blocks that fill a SIMD vector, from the first element on, whatever its
// alignment. Block b goes into accumulator b mod k, lane by lane:
//
//   block        0      1      2      3      4      5      6 (what is left, and neutral lanes)
//   accumulator  0      1      2      3      0      1      2              k = 4
//
// so that the element at index i is in lane i mod (k * N) of all k accumulators, N being the elements of a block. Where k * N
// is chosen as a constant, `kLanesOf` being so many in each module, sums of floats are the same to the bit in all of them.
//
// The operation is a functor that takes blocks into an accumulator, any record of vectors:
//
//   struct SumSquares {
//     template <class V>
//     KVRS_INLINE void operator()(V& sum, V x) const { sum = hn::Add(sum, hn::Mul(x, x)); }
//   };
//
// The lanes behind the last element are 0 in every source. An operation to which this is not neutral says what is:
//
//   kIdempotent = true    taking an element twice makes no difference: they are other elements instead
//   rest(d, source)       the lanes are this number, in the given source
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_REDUCE_H
#define KVRS_FRAME_REDUCE_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "frame/element.h"
#include "frame/loop.h"
#include "frame/simd.h"
#include "frame/unroll.h"

namespace kvrs {
namespace reduce_detail {

template <class Op>
concept Idempotent = Op::kIdempotent;

// The first elements of a block, fewer than all, with what the operation wants in the lanes behind them. Of an idempotent
// one it is the first element again.
template <size_t N, class Op, class S>
KVRS_INLINE auto loadPartFor([[maybe_unused]] const Op& op, size_t count, const S* p) {
  const ElementLanes<S, N> d;
  const auto part = Element<S>::loadFirst(count, d, p);
  if constexpr (Idempotent<Op>) {
    return hn::IfThenElse(firstLanes(d, count), part, hn::Set(d, hn::GetLane(part)));
  } else if constexpr (requires { op.rest(); }) {
    return hn::IfThenElse(firstLanes(d, count), part, hn::Set(d, op.rest()));
  } else {
    return part;
  }
}

}  // namespace reduce_detail

// Elements of a block when accumulators have lanes of type A: those whose widest lanes, A's among them, fill a vector.
template <class A, class... S>
inline constexpr size_t kReduceBlock = loop_detail::kBlock<A, S...>;

// Takes [0, len) of the sources into the accumulators `acc`, in blocks of N elements. `len` may be 0.
template <size_t N, int kAccumulators, class Acc, class Op, class... S>
KVRS_INLINE void accumulateBlocks(const Op& op, Acc (&acc)[kAccumulators], size_t len, const S*... src) {
  using namespace reduce_detail;
  constexpr ptrdiff_t n = N, k = kAccumulators;
  const ptrdiff_t end = static_cast<ptrdiff_t>(len);
  const auto take = [&](Acc& a, ptrdiff_t at)
                        KVRS_UNROLLED { op(a, Element<S>::load(ElementLanes<S, N>(), src + at)...); };

  ptrdiff_t i = 0;
  for (const ptrdiff_t last = end - k * n; i <= last; i += k * n) {
    keep(i);
    unroll<kAccumulators>([&](auto j) KVRS_UNROLLED { take(acc[j], i + j * n); });
  }
  if (i == end) return;
  if constexpr (kAccumulators > 1) {
    unroll<kAccumulators - 1>([&](auto j) KVRS_UNROLLED {
      if (i + (j + 1) * n <= end) take(acc[j], i + j * n);
    });
  }
  const ptrdiff_t count = (end - i) & (n - 1);
  if (count == 0) return;
  if (Idempotent<Op> && end >= n) return take(acc[0], end - n);
  [[maybe_unused]] const ptrdiff_t whole = (end - i) / n;
  const auto takePart = [&](auto... part) KVRS_UNROLLED {
    if constexpr (Idempotent<Op>) {
      op(acc[0], part...);
    } else {
      unroll<kAccumulators>([&](auto j) KVRS_UNROLLED {
        if (j == whole) op(acc[j], part...);
      });
    }
  };
  takePart(loadPartFor<N>(op, static_cast<size_t>(count), src + (end - count))...);
}

// The same with vectors that are full.
template <class A, int kAccumulators, class Acc, class Op, class... S>
KVRS_INLINE void accumulate(const Op& op, Acc (&acc)[kAccumulators], size_t len, const S*... src) {
  accumulateBlocks<kReduceBlock<A, S...>>(op, acc, len, src...);
}

// The same from k accumulators that begin as `start`, joined to one as ((0 1) (2 3)) by `join(Acc&, Acc)`.
template <class A, int kAccumulators, class Acc, class Op, class... S>
KVRS_INLINE Acc reduce(const Op& op, Acc start, size_t len, const S*... src) {
  static_assert((kAccumulators & (kAccumulators - 1)) == 0);
  Acc acc[kAccumulators];
  unroll<kAccumulators>([&](auto j) KVRS_UNROLLED { acc[j] = start; });
  accumulate<A>(op, acc, len, src...);
  if constexpr (kAccumulators == 8) {
    unroll<4>([&](auto j) KVRS_UNROLLED { op.join(acc[2 * j], acc[2 * j + 1]); });
    op.join(acc[0], acc[2]);
    op.join(acc[4], acc[6]);
    op.join(acc[0], acc[4]);
  } else if constexpr (kAccumulators == 4) {
    op.join(acc[0], acc[1]);
    op.join(acc[2], acc[3]);
    op.join(acc[0], acc[2]);
  } else if constexpr (kAccumulators == 2) {
    op.join(acc[0], acc[1]);
  }
  return acc[0];
}

// Accumulators of a reduction in which only few vectors are live, and of one that has to add up floats in so many lanes.
inline constexpr int kFewAccumulators = 4;
template <class T, size_t lanes>
inline constexpr int kLanesOf = lanes / kLanes<T>;

// body(begin, count) for pieces of [0, len) of at most `most` elements, for accumulators that hold no more.
template <class Body>
KVRS_INLINE void forPieces(size_t len, size_t most, Body body) {
  size_t begin = 0;
  do {
    const size_t count = len - begin < most ? len - begin : most;
    body(begin, count);
    begin += count;
  } while (begin < len);
}

// Lane 0 of all lanes joined: each half of a vector with the other, down to single lanes.
template <class V, class Join>
KVRS_INLINE hn::TFromV<V> foldLanes(V v, Join join) {
  const hn::DFromV<V> d;
  if constexpr (sizeof(v.raw) > 16) {
    const hn::Half<decltype(d)> half;
    return foldLanes(join(hn::LowerHalf(half, v), hn::UpperHalf(half, v)), join);
  } else {
    using T = hn::TFromV<V>;
    const Lanes<uint8_t, 16> bytes;
    [[maybe_unused]] const auto down = [&](auto shift) KVRS_UNROLLED {
      return hn::BitCast(d, hn::ShiftRightBytes<shift>(bytes, hn::BitCast(bytes, v)));
    };
    if constexpr (sizeof(T) <= 8) v = join(v, down(Index<8>()));
    if constexpr (sizeof(T) <= 4) v = join(v, down(Index<4>()));
    if constexpr (sizeof(T) <= 2) v = join(v, down(Index<2>()));
    if constexpr (sizeof(T) <= 1) v = join(v, down(Index<1>()));
    return hn::GetLane(v);
  }
}
struct AddLanes {
  template <class V>
  KVRS_INLINE V operator()(V a, V b) const {
    return hn::Add(a, b);
  }
};
template <class V>
KVRS_INLINE hn::TFromV<V> sumLanes(V v) {
  return foldLanes(v, AddLanes());
}

// Exact sums of unsigned 32-bit lanes in 64 bits: of pairs as they stand, in which the upper lanes count 2^32 times, and of the
// upper lanes.
struct WideSum {
  using D = Lanes<uint64_t, kLanes<uint64_t>>;
  hn::Vec<D> pairs = hn::Zero(D()), upper = hn::Zero(D());

  template <class V32>
  KVRS_INLINE void add(V32 v) {
    const auto wide = hn::BitCast(D(), v);
    pairs = hn::Add(pairs, wide);
    upper = hn::Add(upper, hn::ShiftRight<32>(wide));
  }
  KVRS_INLINE void add(const WideSum& other) {
    pairs = hn::Add(pairs, other.pairs);
    upper = hn::Add(upper, other.upper);
  }
  KVRS_INLINE uint64_t total() const {
    return sumLanes(hn::Add(hn::Sub(pairs, hn::ShiftLeft<32>(upper)), upper));
  }
};

// The sum of 32-bit lanes, exact.
template <class V32>
KVRS_INLINE uint64_t wideTotal(V32 v) {
  WideSum sum;
  sum.add(v);
  return sum.total();
}

// The first index at which `is(block)`, a mask, is set, or len. `is` is told vectors of the element's type.
template <class T, class Is>
KVRS_INLINE size_t findFirst(const T* src, size_t len, Is is) {
  constexpr size_t N = kReduceBlock<T, T>;
  const ElementLanes<T, N> d;
  size_t i = 0;
  for (; i + N <= len; i += N) {
    const auto mask = is(Element<T>::load(d, src + i));
    if (!hn::AllFalse(d, mask)) return i + static_cast<size_t>(hn::FindFirstTrue(d, mask));
  }
  if (i == len) return len;
  const auto mask = hn::And(is(Element<T>::loadFirst(len - i, d, src + i)), firstLanes(d, len - i));
  return hn::AllFalse(d, mask) ? len : i + static_cast<size_t>(hn::FindFirstTrue(d, mask));
}

// Where an extreme stands first. A block's extreme is found without indices, and only the last block that had a better one
// than all before it is searched, so that the vector is read once.
//
//   op.best(block, count)    the extreme of a block, in order of `better`
//   op.better(a, b)          whether a comes before b: strictly, so that the first of equal ones stays
//   op.is(value)             a functor for findFirst
//
// The index is 0 where no element equals the extreme, which only NaN brings about.
template <class T>
struct Found {
  T value;
  size_t index;
};

inline constexpr size_t kSearchedBytes = 8192;

// The best block so far.
template <class T>
class FirstBlock {
 public:
  template <class Op>
  KVRS_INLINE void meet(const Op& op, T value, size_t begin, size_t count) {
    if (begin != 0 && !op.better(value, best_)) return;
    best_ = value;
    begin_ = begin;
    count_ = count;
  }
  template <class Op>
  KVRS_INLINE Found<T> find(const Op& op, const T* src) const {
    const size_t at = findFirst(src + begin_, count_, op.is(best_));
    return {best_, at == count_ ? 0 : begin_ + at};
  }

 private:
  T best_{};
  size_t begin_ = 0, count_ = 0;
};

template <class T, class Op>
KVRS_INLINE Found<T> findExtreme(const Op& op, const T* src, size_t len) {
  FirstBlock<T> first;
  forPieces(len, kSearchedBytes / sizeof(T), [&](size_t begin, size_t count) KVRS_UNROLLED {
    first.meet(op, op.best(src + begin, count), begin, count);
  });
  return first.find(op, src);
}

}  // namespace kvrs

#endif
