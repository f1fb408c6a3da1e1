// The first lanes of a vector, from memory and to it, without a byte beside them: under a mask where there are masks,
// elsewhere by pieces of half the vector's size that lie over each other:
//
//   bytes 0 .. 10 of 16:   |-- first 8 --|
//                               |-- last 8 --|
//
// Each piece is half as long as the one before, so that three questions at the most find the right ones.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_FIRST_H
#define KVRS_FRAME_FIRST_H

#include "frame/interleave.h"
#include "frame/simd.h"

namespace kvrs {
namespace first_detail {

// Words as wide as half the vector.
template <class D>
using HalfWord = hwy::UnsignedFromSize<sizeof(hn::TFromD<D>) * hn::MaxLanes(D()) / 2>;

}  // namespace first_detail

// The first `count` elements at p, fewer than the vector has lanes; the other lanes are 0.
template <class D, class T = hn::TFromD<D>>
KVRS_INLINE hn::Vec<D> loadFirst(D d, const T* p, size_t count) {
  using namespace first_detail;
  constexpr size_t N = hn::MaxLanes(D());
  if constexpr (kMaskRegisters) {
    return hn::MaskedLoad(firstLanes(d, count), d, p);
  } else if constexpr (N == 1) {
    return hn::Zero(d);
  } else {
    constexpr size_t bytes = N * sizeof(T);
    const hn::Half<D> half;
    if (count < N / 2) return hn::ZeroExtendVector(d, loadFirst(half, p, count));
    if constexpr (N == 2) {
      return hn::ZeroExtendVector(d, hn::LoadU(half, p));
    } else if constexpr (bytes > 16) {
      return hn::Combine(d, loadFirst(half, p + N / 2, count - N / 2), hn::LoadU(half, p));
    } else {
      // The last half comes with elements in front of it that the first one has.
      const Lanes<HalfWord<D>, 1> word;
      const Lanes<HalfWord<D>, 2> words;
      const auto last = hn::BitCast(word, hn::LoadU(half, p + count - N / 2));
      const auto behind = hn::ShiftRightSame(last, static_cast<int>(8 * sizeof(T) * (N - count)));
      return hn::BitCast(d, hn::Combine(words, behind, hn::BitCast(word, hn::LoadU(half, p))));
    }
  }
}

// Stores the first `count` lanes, fewer than there are.
template <class D, class T = hn::TFromD<D>>
KVRS_INLINE void storeFirst(hn::Vec<D> v, D d, T* p, size_t count) {
  using namespace first_detail;
  constexpr size_t N = hn::MaxLanes(D());
  if constexpr (kMaskRegisters) {
    hn::BlendedStore(v, firstLanes(d, count), d, p);
  } else if constexpr (N > 1) {
    constexpr size_t bytes = N * sizeof(T);
    const hn::Half<D> half;
    if (count < N / 2) return storeFirst(hn::LowerHalf(half, v), half, p, count);
    hn::StoreU(hn::LowerHalf(half, v), half, p);
    if constexpr (N == 2) {
      return;
    } else if constexpr (bytes > 16) {
      storeFirst(hn::UpperHalf(half, v), half, p + N / 2, count - N / 2);
    } else {
      const Lanes<HalfWord<D>, 1> word;
      const Lanes<HalfWord<D>, 2> words;
      const int skipped = static_cast<int>(8 * sizeof(T) * (count - N / 2));
      const auto both = hn::BitCast(words, v);
      const auto lower = hn::LowerHalf(word, both), upper = hn::UpperHalf(word, both);
      const auto last = hn::Or(hn::ShiftRightSame(lower, skipped),
                               hn::ShiftLeftSame(upper, static_cast<int>(8 * sizeof(HalfWord<D>)) - skipped));
      hn::StoreU(hn::BitCast(half, last), half, p + count - N / 2);
    }
  }
}

// The same for two vectors, one behind the other; `count` is below the number of lanes of both.
template <class D, class T = hn::TFromD<D>>
KVRS_INLINE Both<hn::Vec<D>> loadFirstOfTwo(D d, const T* p, size_t count) {
  constexpr size_t N = hn::MaxLanes(D());
  if constexpr (kMaskRegisters) {
    return {hn::MaskedLoad(firstLanes(d, count < N ? count : N), d, p),
            hn::MaskedLoad(firstLanes(d, count < N ? 0 : count - N), d, p + N)};
  } else {
    if (count < N) return {loadFirst(d, p, count), hn::Zero(d)};
    return {hn::LoadU(d, p), loadFirst(d, p + N, count - N)};
  }
}
template <class D, class T = hn::TFromD<D>>
KVRS_INLINE void storeFirstOfTwo(Both<hn::Vec<D>> v, D d, T* p, size_t count) {
  constexpr size_t N = hn::MaxLanes(D());
  if constexpr (kMaskRegisters) {
    hn::BlendedStore(v.first, firstLanes(d, count < N ? count : N), d, p);
    hn::BlendedStore(v.second, firstLanes(d, count < N ? 0 : count - N), d, p + N);
  } else {
    if (count < N) return storeFirst(v.first, d, p, count);
    hn::StoreU(v.first, d, p);
    storeFirst(v.second, d, p + N, count - N);
  }
}

}  // namespace kvrs

#endif
