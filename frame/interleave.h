// Lanes of two vectors in turn.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_INTERLEAVE_H
#define KVRS_FRAME_INTERLEAVE_H

#include <cstdint>

#include "frame/simd.h"

namespace kvrs {

// Vectors of two neighbouring blocks.
template <class V>
struct Both {
  V first, second;
};

// The lower or upper halves of two vectors of 64 bytes in turn, kGroup lanes by kGroup lanes. One instruction,
// where hn::StoreInterleaved2 takes three: it interleaves within blocks of 16 bytes and then sorts the blocks.
template <bool upper, int kGroup, class D, class V = hn::Vec<D>>
KVRS_INLINE V zip(D d, V a, V b) {
  constexpr int N = static_cast<int>(hn::MaxLanes(D()));
  using Lane = hwy::MakeSigned<hn::TFromD<D>>;
  struct Order {
    alignas(64) Lane from[N];
    constexpr Order() : from() {
      for (int i = 0; i < N; ++i) {
        const int group = i / kGroup, source = group % 2 ? N : 0;
        from[i] = static_cast<Lane>(source + (upper ? N / 2 : 0) + group / 2 * kGroup + i % kGroup);
      }
    }
  };
  static constexpr Order kOrder;
  const hn::RebindToSigned<D> di;
  const auto from = hn::Load(di, kOrder.from);
  const auto bitsA = hn::BitCast(di, a), bitsB = hn::BitCast(di, b);
  using Vi = hn::Vec<decltype(di)>;
  if constexpr (sizeof(Lane) == 4) {
    return hn::BitCast(d, Vi{_mm512_permutex2var_epi32(bitsA.raw, from.raw, bitsB.raw)});
  } else {
    return hn::BitCast(d, Vi{_mm512_permutex2var_epi64(bitsA.raw, from.raw, bitsB.raw)});
  }
}

// What InterleaveLower and InterleaveUpper have interleaved within blocks of 16 bytes, in the order of the lanes.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE Both<V> blocksInOrder(D d, V lower, V upper) {
  if constexpr (sizeof(lower.raw) == 64) {
    const hn::Repartition<uint64_t, D> words;
    const auto low = hn::BitCast(words, lower), high = hn::BitCast(words, upper);
    return {hn::BitCast(d, zip<false, 2>(words, low, high)), hn::BitCast(d, zip<true, 2>(words, low, high))};
  } else if constexpr (sizeof(lower.raw) == 32) {
    return {hn::ConcatLowerLower(d, upper, lower), hn::ConcatUpperUpper(d, upper, lower)};
  } else {
    return {lower, upper};
  }
}

// a[0], b[0], a[1], b[1] and so on.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE Both<V> interleaved(D d, V a, V b) {
  using T = hn::TFromD<D>;
  a = inRegister(a);
  b = inRegister(b);
  if constexpr (sizeof(a.raw) == 64 && sizeof(T) >= 4) {
    return {zip<false, 1>(d, a, b), zip<true, 1>(d, a, b)};
  } else {
    // No such instruction for narrow lanes: what is interleaved within blocks is put in order as words.
    return blocksInOrder(d, hn::InterleaveLower(d, a, b), hn::InterleaveUpper(d, a, b));
  }
}

// p[2 * i] = a[i], p[2 * i + 1] = b[i]
template <class D, class V = hn::Vec<D>, class T = hn::TFromD<D>>
KVRS_INLINE void storeInterleaved(V a, V b, D d, T* p) {
  constexpr size_t N = hn::MaxLanes(D());
  if constexpr (N * sizeof(T) == 64) {
    const auto both = interleaved(d, a, b);
    hn::StoreU(both.first, d, p);
    hn::StoreU(both.second, d, p + N);
  } else {
    hn::StoreInterleaved2(inRegister(a), inRegister(b), d, p);
  }
}

}  // namespace kvrs

#endif
