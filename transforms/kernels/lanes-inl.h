// Complex data in vectors: how the transforms' kernels unroll, load, store and transpose.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_LANES_INL_H
#define KVRS_TRANSFORMS_KERNELS_LANES_INL_H

#include <utility>

#include "frame/complex.h"
#include "frame/element.h"
#include "frame/simd.h"
#include "frame/unroll.h"
#include "transforms/fft_plan.h"

namespace kvrs::fft {

// What a pass works on at once, by a tag d. A tag of Highway's with L lanes stands for L complex numbers, their real
// parts in one vector and their imaginary parts in another; Pairs<T> stands for one vector of pairs as they lie in
// memory.
template <class T>
struct Pairs {};

template <class V>
struct Paired {
  V v;
};

template <class D>
struct Form {
  using Lane = hn::TFromD<D>;
  using Vector = hn::Vec<D>;
  using Number = Complex<Vector>;
  static constexpr size_t kPoints = hn::MaxLanes(D());
  static constexpr D lanes{};
};
template <class T>
struct Form<Pairs<T>> {
  using Lane = T;
  using Vector = hn::Vec<Lanes<T, kLanes<T>>>;
  using Number = Paired<Vector>;
  static constexpr size_t kPoints = kLanes<T> / 2;
  static constexpr Lanes<T, kLanes<T>> lanes{};
};

template <class D>
using Cx = typename Form<D>::Number;
template <class D>
inline constexpr size_t kPoints = Form<D>::kPoints;

// A real factor for all lanes.
template <class D>
KVRS_INLINE auto factor(D, typename Form<D>::Lane x) {
  return hn::Set(Form<D>::lanes, x);
}

// What the passes work on.
template <class T>
using PassTag = std::conditional_t<kPaired, Pairs<T>, Lanes<T, kLanes<T>>>;

// Shuffles work on the 16-byte blocks of a vector apart wherever they can: those take one cycle, and no
// register for an index. kBlock is the number of lanes in a block.
template <class T>
inline constexpr int kBlock = static_cast<int>(16 / sizeof(T));

// Splitting two vectors of interleaved complex numbers block by block leaves the numbers in this order;
// joining takes them back from it. Lane `lane` holds number laneOrder(lane). Only a pass that looks at single
// lanes has to know: tables that hold a value per lane are stored in this order.
//
//   16 lanes of float:  0 1 8 9  2 3 10 11  4 5 12 13  6 7 14 15
//   mirrored (15 - n) it is itself mirrored, so that reversing the lanes reverses the numbers
template <class T>
constexpr int laneOrder(int lane, int lanes) {
  constexpr int kHalf = kBlock<T> / 2;
  if (lanes <= kBlock<T>) return lane;
  const int block = lane / kBlock<T>;
  const int rest = lane % kBlock<T>;
  return rest / kHalf * (lanes / 2) + block * kHalf + rest % kHalf;
}

// The lane of number `number`.
template <class T>
constexpr int laneOfNumber(int number, int lanes) {
  int lane = 0;
  while (laneOrder<T>(lane, lanes) != number) ++lane;
  return lane;
}

namespace detail {

// Lane i of the result is lane Pick::at(i) of the two vectors a, b one behind the other.
template <class Pick, class V, size_t... I>
KVRS_INLINE V pick(V a, V b, std::index_sequence<I...>) {
  return V{__builtin_shufflevector(a.raw, b.raw, Pick::at(I)...)};
}

template <int kLanes, int kPerBlock, int kOdd>
struct PickParts {
  static constexpr int at(int i) {
    constexpr int kHalf = kPerBlock / 2;
    const int rest = i % kPerBlock;
    return (rest >= kHalf ? kLanes : 0) + i / kPerBlock * kPerBlock + rest % kHalf * 2 + kOdd;
  }
};

// Blocks kFirst and kFirst + 2 of a, then of b (four blocks a vector); or block kFirst of a, then of b (two).
template <int kLanes, int kPerBlock, int kFirst>
struct PickBlocks {
  static constexpr int at(int i) {
    constexpr int kHalf = kLanes / kPerBlock / 2;
    const int block = i / kPerBlock;
    return (block >= kHalf ? kLanes : 0) + (kFirst + block % kHalf * 2) * kPerBlock + i % kPerBlock;
  }
};

template <class Pick, class D>
KVRS_INLINE hn::Vec<D> shuffle(D d, hn::Vec<D> a, hn::Vec<D> b) {
  return pick<Pick>(a, b, std::make_index_sequence<hn::MaxLanes(d)>());
}

}  // namespace detail

// Real (kOdd 0) or imaginary (kOdd 1) parts of the complex numbers in a, b, in laneOrder.
template <int kOdd, class D>
KVRS_INLINE hn::Vec<D> parts(D d, hn::Vec<D> a, hn::Vec<D> b) {
  return detail::shuffle<detail::PickParts<static_cast<int>(hn::MaxLanes(d)), kBlock<hn::TFromD<D>>, kOdd>>(
      d, a, b);
}

// Squares of kBlock x kBlock within the blocks of R vectors: column c of a block goes to row c of its group.
template <int R, class D>
KVRS_INLINE void transposeInBlocks(D d, hn::Vec<D>* row) {
  using T = hn::TFromD<D>;
  constexpr int P = kBlock<T>;
  unroll<R / P>([&](auto g) KVRS_UNROLLED {
    hn::Vec<D>* r = row + g * P;
    if constexpr (P == 4) {
      const hn::RepartitionToWide<D> wide;
      const auto a = hn::BitCast(wide, hn::InterleaveLower(d, r[0], r[1]));
      const auto b = hn::BitCast(wide, hn::InterleaveUpper(d, r[0], r[1]));
      const auto c = hn::BitCast(wide, hn::InterleaveLower(d, r[2], r[3]));
      const auto e = hn::BitCast(wide, hn::InterleaveUpper(d, r[2], r[3]));
      r[0] = hn::BitCast(d, hn::InterleaveLower(wide, a, c));
      r[1] = hn::BitCast(d, hn::InterleaveUpper(wide, a, c));
      r[2] = hn::BitCast(d, hn::InterleaveLower(wide, b, e));
      r[3] = hn::BitCast(d, hn::InterleaveUpper(wide, b, e));
    } else {
      static_assert(P == 2);
      const hn::Vec<D> a = hn::InterleaveLower(d, r[0], r[1]);
      r[1] = hn::InterleaveUpper(d, r[0], r[1]);
      r[0] = a;
    }
  });
}

// After that, the square of whole blocks of as many vectors as there are lanes. kApart: the distance of the vectors that
// make up a square; so many squares there are.
template <int kApart, class D>
KVRS_INLINE void transposeBlocksApart(D d, hn::Vec<D>* row) {
  using V = hn::Vec<D>;
  constexpr int L = static_cast<int>(hn::MaxLanes(d));
  constexpr int P = kBlock<hn::TFromD<D>>;
  using Even = detail::PickBlocks<L, P, 0>;
  using Odd = detail::PickBlocks<L, P, 1>;
  static_assert(L / P == 1 || L / P == 2 || L / P == 4);
  if constexpr (L / P == 2) {
    unroll<kApart>([&](auto c) KVRS_UNROLLED {
      const V a = row[c], b = row[kApart + c];
      row[c] = detail::shuffle<Even>(d, a, b);
      row[kApart + c] = detail::shuffle<Odd>(d, a, b);
    });
  } else if constexpr (L / P == 4) {
    unroll<kApart>([&](auto c) KVRS_UNROLLED {
      const V a = detail::shuffle<Even>(d, row[c], row[kApart + c]);
      const V b = detail::shuffle<Odd>(d, row[c], row[kApart + c]);
      const V e = detail::shuffle<Even>(d, row[2 * kApart + c], row[3 * kApart + c]);
      const V f = detail::shuffle<Odd>(d, row[2 * kApart + c], row[3 * kApart + c]);
      row[c] = detail::shuffle<Even>(d, a, e);
      row[kApart + c] = detail::shuffle<Even>(d, b, f);
      row[2 * kApart + c] = detail::shuffle<Odd>(d, a, e);
      row[3 * kApart + c] = detail::shuffle<Odd>(d, b, f);
    });
  }
}

template <class D>
KVRS_INLINE void transposeBlocks(D d, hn::Vec<D>* row) {
  transposeBlocksApart<kBlock<hn::TFromD<D>>>(d, row);
}

// Rows to columns of a square of vectors: row[l] becomes lane l of all rows.
template <class D, int L = static_cast<int>(hn::MaxLanes(D()))>
KVRS_INLINE void transpose(D d, hn::Vec<D> (&row)[L]) {
  transposeInBlocks<L>(d, row);
  transposeBlocks(d, row);
}

// The same of pairs.
template <class T>
KVRS_INLINE void transposePairs(Cx<Pairs<T>> (&row)[kPoints<Pairs<T>>]) {
  constexpr int P = static_cast<int>(kPoints<Pairs<T>>);
  const auto d = Form<Pairs<T>>::lanes;
  using D = std::conditional_t<sizeof(T) == 4, Lanes<double, P>, Lanes<T, 2 * P>>;
  hn::Vec<D> x[P];
  unroll<P>([&](auto i) KVRS_UNROLLED { x[i] = hn::BitCast(D(), row[i].v); });
  if constexpr (sizeof(T) == 4) {
    transpose(D(), x);
  } else {
    transposeBlocksApart<1>(D(), x);
  }
  unroll<P>([&](auto i) KVRS_UNROLLED { row[i].v = hn::BitCast(d, x[i]); });
}

// Half a square: R rows of 2 R lanes become 2 R rows of R lanes.
template <class D, int R = static_cast<int>(hn::MaxLanes(D()) / 2)>
KVRS_INLINE void transposeWide(D d, hn::Vec<D> (&row)[R], hn::Vec<hn::Half<D>> (&out)[2 * R]) {
  const hn::Half<D> half;
  transposeInBlocks<R>(d, row);
  unroll<R>([&](auto r) KVRS_UNROLLED {
    out[r] = hn::LowerHalf(half, row[r]);
    out[R + r] = hn::UpperHalf(half, row[r]);
  });
  transposeBlocks(half, out);
  transposeBlocks(half, out + R);
}

// Views: where complex numbers lie in memory. load and store take the number of the first of a vector, loadParts and
// storeParts the number of its first part, twice as much, which is what fits an address of the processor. A
// transform with the real and the imaginary parts exchanged on its way in and on its way out is the inverse
// transform, so that a view that exchanges them (kSwapped) is all that tells the directions apart.

template <class P, bool kAligned = false>
struct Blocks;

// Real and imaginary parts exchanged.
template <class V>
KVRS_INLINE Paired<V> exchanged(Paired<V> x) {
  return {swapParts(hn::DFromV<V>(), x.v)};
}

// Pairs of real and imaginary part; lanes in laneOrder. P is the type of a part, const in a source.
template <class P, bool kSwapped>
struct Interleaved {
  using T = std::remove_const_t<P>;
  using Source = Interleaved<const P, kSwapped>;
  static constexpr bool kLaneOrder = true;
  P* p;

  Interleaved at(size_t i) const { return {p + 2 * i}; }
  Source source() const { return {p}; }
  P* first() const { return p; }
  // The same memory between two passes.
  Blocks<P> area() const { return {p}; }
  template <class D>
  KVRS_INLINE Cx<D> load(D d, size_t i) const {
    hn::Vec<D> re, im;
    constexpr size_t L = hn::MaxLanes(d);
    if constexpr (L == 1) {
      re = hn::Load(d, p + 2 * i);
      im = hn::Load(d, p + 2 * i + 1);
    } else {
      const auto a = hn::LoadU(d, p + 2 * i), b = hn::LoadU(d, p + 2 * i + L);
      re = parts<0>(d, a, b);
      im = parts<1>(d, a, b);
    }
    return kSwapped ? Cx<D>{im, re} : Cx<D>{re, im};
  }
  KVRS_INLINE Cx<Pairs<T>> load(Pairs<T> d, size_t i) const { return loadParts(d, 2 * i); }
  KVRS_INLINE Cx<Pairs<T>> loadParts(Pairs<T> d, size_t i) const {
    const auto x = Blocks<const T>{p}.loadParts(d, i);
    return kSwapped ? exchanged(x) : x;
  }

  template <class D>
  KVRS_INLINE void store(D d, size_t i, Cx<D> x) const {
    const auto re = kSwapped ? x.im : x.re, im = kSwapped ? x.re : x.im;
    constexpr size_t L = hn::MaxLanes(d);
    if constexpr (L == 1) {
      hn::Store(re, d, p + 2 * i);
      hn::Store(im, d, p + 2 * i + 1);
    } else {
      hn::StoreU(hn::InterleaveLower(d, re, im), d, p + 2 * i);
      hn::StoreU(hn::InterleaveUpper(d, re, im), d, p + 2 * i + L);
    }
  }
  KVRS_INLINE void store(Pairs<T> d, size_t i, Cx<Pairs<T>> x) const { storeParts(d, 2 * i, x); }
  KVRS_INLINE void storeParts(Pairs<T> d, size_t i, Cx<Pairs<T>> x) const {
    Blocks<P>{p}.storeParts(d, i, kSwapped ? exchanged(x) : x);
  }
};

// What lies between two passes: a vector of real parts, a vector of imaginary parts, and so on; or pairs. kAligned says
// that p is a multiple of 16 bytes: then a short vector is an operand that the processor reads by itself.
template <class P, bool kAligned>
struct Blocks {
  using T = std::remove_const_t<P>;
  P* p;

  Blocks at(size_t i) const { return {p + 2 * i}; }
  P* first() const { return p; }

  template <class D>
  static KVRS_INLINE hn::Vec<D> vector(D d, const T* x) {
    if constexpr (kAligned && hn::MaxLanes(d) * sizeof(T) == 16) return hn::Load(d, x);
    return hn::LoadU(d, x);
  }

  template <class D>
  KVRS_INLINE Cx<D> load(D d, size_t i) const {
    return {vector(d, p + 2 * i), vector(d, p + 2 * i + hn::MaxLanes(d))};
  }
  template <class D>
  KVRS_INLINE void store(D d, size_t i, Cx<D> x) const {
    hn::StoreU(x.re, d, p + 2 * i);
    hn::StoreU(x.im, d, p + 2 * i + hn::MaxLanes(d));
  }
  KVRS_INLINE Cx<Pairs<T>> load(Pairs<T> d, size_t i) const { return loadParts(d, 2 * i); }
  KVRS_INLINE void store(Pairs<T> d, size_t i, Cx<Pairs<T>> x) const { storeParts(d, 2 * i, x); }
  KVRS_INLINE Cx<Pairs<T>> loadParts(Pairs<T>, size_t i) const {
    return {vector(Form<Pairs<T>>::lanes, p + i)};
  }
  KVRS_INLINE void storeParts(Pairs<T>, size_t i, Cx<Pairs<T>> x) const {
    hn::StoreU(x.v, Form<Pairs<T>>::lanes, p + i);
  }
};

// Real parts in one array, imaginary parts in another. The inverse transform is the same with the two exchanged.
template <class P>
struct Planes {
  using T = std::remove_const_t<P>;
  using Source = Planes<const P>;
  static constexpr bool kLaneOrder = false;
  P* re;
  P* im;

  Planes at(size_t i) const { return {re + i, im + i}; }
  Source source() const { return {re, im}; }
  P* first() const { return re; }
  Planes area() const { return *this; }

  template <class D>
  KVRS_INLINE Cx<D> load(D d, size_t i) const {
    return {hn::LoadU(d, re + i), hn::LoadU(d, im + i)};
  }
  template <class D>
  KVRS_INLINE void store(D d, size_t i, Cx<D> x) const {
    hn::StoreU(x.re, d, re + i);
    hn::StoreU(x.im, d, im + i);
  }
  KVRS_INLINE Cx<Pairs<T>> load(Pairs<T>, size_t i) const {
    const auto d = Form<Pairs<T>>::lanes;
    const hn::Half<decltype(d)> half;
    return {hn::InterleaveLower(d, hn::ZeroExtendVector(d, hn::LoadU(half, re + i)),
                                hn::ZeroExtendVector(d, hn::LoadU(half, im + i)))};
  }
  KVRS_INLINE void store(Pairs<T>, size_t i, Cx<Pairs<T>> x) const {
    const auto d = Form<Pairs<T>>::lanes;
    const hn::Half<decltype(d)> half;
    hn::StoreU(hn::LowerHalf(half, hn::ConcatEven(d, x.v, x.v)), half, re + i);
    hn::StoreU(hn::LowerHalf(half, hn::ConcatOdd(d, x.v, x.v)), half, im + i);
  }
  KVRS_INLINE Cx<Pairs<T>> loadParts(Pairs<T> d, size_t i) const { return load(d, i / 2); }
  KVRS_INLINE void storeParts(Pairs<T> d, size_t i, Cx<Pairs<T>> x) const { store(d, i / 2, x); }
};

// A table of such vectors: contexts lie at multiples of 32 bytes, and so do work areas.
template <class T>
using Table = Blocks<const T, true>;
template <class T>
using Work = Blocks<T, true>;

}  // namespace kvrs::fft

#endif
