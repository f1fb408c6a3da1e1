// Vectors moved by one lane in a row of them, from 16 bytes on: across the blocks of 16 bytes that most operations stay within.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_NEIGHBOURS_H
#define KVRS_FRAME_NEIGHBOURS_H

#include "frame/simd.h"

namespace kvrs {
namespace neighbours_detail {

// The blocks of two vectors from the second one of `lower` on, and from the last one of it on.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V fromSecondBlock(D d, V upper, V lower) {
  if constexpr (sizeof(lower.raw) == 64) {
    return V{_mm512_alignr_epi64(upper.raw, lower.raw, 2)};
  } else if constexpr (sizeof(lower.raw) == 32) {
    return hn::ConcatLowerUpper(d, upper, lower);
  } else {
    return upper;
  }
}
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V fromLastBlock(D d, V upper, V lower) {
  if constexpr (sizeof(lower.raw) == 64) {
    return V{_mm512_alignr_epi64(upper.raw, lower.raw, 6)};
  } else if constexpr (sizeof(lower.raw) == 32) {
    return hn::ConcatLowerUpper(d, upper, lower);
  } else {
    return lower;
  }
}

// Lanes of 4 or 8 bytes of vectors of 64 from lane kFrom of the lower one on: one instruction, where others take two.
template <class D, size_t kFrom, class Bytes, class Raw>
KVRS_INLINE hn::Vec<Bytes> shifted(Bytes, Raw upper, Raw lower) {
  if constexpr (sizeof(hn::TFromD<D>) == 8) {
    return {_mm512_alignr_epi64(upper, lower, kFrom)};
  } else {
    return {_mm512_alignr_epi32(upper, lower, kFrom)};
  }
}

}  // namespace neighbours_detail

// Lanes 1, 2, 3 ... of v, then lane 0 of the vector behind it.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V lanesBehind(D d, V v, V behind) {
  const hn::Repartition<uint8_t, D> bytes;
  const auto lower = hn::BitCast(bytes, v);
  if constexpr (sizeof(v.raw) == 64 && sizeof(hn::TFromD<D>) >= 4) {
    const auto raw = hn::BitCast(bytes, behind).raw;
    return hn::BitCast(d, neighbours_detail::shifted<D, 1>(bytes, raw, lower.raw));
  }
  const auto upper = neighbours_detail::fromSecondBlock(bytes, hn::BitCast(bytes, behind), lower);
  return hn::BitCast(d, hn::CombineShiftRightBytes<sizeof(hn::TFromD<D>)>(bytes, upper, lower));
}

// The last lane of the vector before v, then all lanes of v but the last.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V lanesBefore(D d, V v, V before) {
  const hn::Repartition<uint8_t, D> bytes;
  const auto upper = hn::BitCast(bytes, v);
  if constexpr (sizeof(v.raw) == 64 && sizeof(hn::TFromD<D>) >= 4) {
    const auto raw = hn::BitCast(bytes, before).raw;
    return hn::BitCast(d, neighbours_detail::shifted<D, hn::MaxLanes(D()) - 1>(bytes, upper.raw, raw));
  }
  const auto lower = neighbours_detail::fromLastBlock(bytes, upper, hn::BitCast(bytes, before));
  return hn::BitCast(d, hn::CombineShiftRightBytes<16 - sizeof(hn::TFromD<D>)>(bytes, upper, lower));
}

}  // namespace kvrs

#endif
