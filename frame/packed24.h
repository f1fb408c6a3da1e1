// Packed elements of 24 bits, three bytes each, low byte first: how vectors of 32-bit integers are loaded from
// and stored to arrays of them, without a byte read or written outside.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_PACKED24_H
#define KVRS_FRAME_PACKED24_H

#include <cstdint>
#include <cstring>

#include "frame/element.h"
#include "frame/simd.h"

namespace kvrs {

struct Packed24s {
  using Value = int32_t;
  static constexpr int32_t kLowest = -0x800000, kHighest = 0x7FFFFF;
  Kvr8u byte[3];
};

struct Packed24u {
  using Value = uint32_t;
  static constexpr int32_t kLowest = 0, kHighest = 0xFFFFFF;
  Kvr8u byte[3];
};

// Lanes are 32-bit integers within the range of P.
template <class P>
struct PackedElement {
  using Lane = int32_t;
  static constexpr size_t kSpan = 1;

  template <class Dt>
  static KVRS_INLINE hn::Vec<Dt> load(Dt d, const P* p) {
    constexpr size_t N = hn::MaxLanes(Dt());
    if constexpr (N < 4) {
      int32_t value[N];
      for (size_t i = 0; i < N; ++i) {
        const uint32_t low = p[i].byte[0] | static_cast<uint32_t>(p[i].byte[1]) << 8;
        value[i] = static_cast<int32_t>(low | topByte(p[i].byte[2]) << 16);
      }
      return hn::LoadU(d, value);
    } else {
      const auto bytes = spread(d, reinterpret_cast<const int32_t*>(p));
      const Lanes<uint8_t, 4 * N> d8;
      // The three bytes of an element, at the top of its lane where the sign has to be spread below it.
      constexpr uint8_t z = 0x80;
      alignas(16) static constexpr uint8_t kTop[16] = {z, 0, 1, 2, z, 3, 4, 5, z, 6, 7, 8, z, 9, 10, 11};
      alignas(16) static constexpr uint8_t kLow[16] = {0, 1, 2, z, 3, 4, 5, z, 6, 7, 8, z, 9, 10, 11, z};
      if constexpr (P::kLowest < 0) {
        const auto top = hn::TableLookupBytesOr0(hn::BitCast(d8, bytes), hn::LoadDup128(d8, kTop));
        return hn::ShiftRight<8>(hn::BitCast(d, top));
      } else {
        return hn::BitCast(d, hn::TableLookupBytesOr0(hn::BitCast(d8, bytes), hn::LoadDup128(d8, kLow)));
      }
    }
  }

  template <class Dt>
  static KVRS_INLINE void store(hn::Vec<Dt> v, Dt d, P* p) {
    constexpr size_t N = hn::MaxLanes(Dt());
    if constexpr (N < 4) {
      int32_t value[N];
      hn::StoreU(v, d, value);
      for (size_t i = 0; i < N; ++i) {
        for (int b = 0; b < 3; ++b) p[i].byte[b] = static_cast<Kvr8u>(value[i] >> (8 * b));
      }
    } else {
      constexpr uint8_t z = 0x80;
      alignas(16) static constexpr uint8_t kClose[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, z, z, z, z};
      const Lanes<uint8_t, 4 * N> d8;
      const auto closed = hn::TableLookupBytesOr0(hn::BitCast(d8, v), hn::LoadDup128(d8, kClose));
      gather(d, hn::BitCast(d, closed), reinterpret_cast<int32_t*>(p));
    }
  }

 private:
  static KVRS_INLINE uint32_t topByte(Kvr8u byte) {
    return P::kLowest < 0 ? static_cast<uint32_t>(static_cast<int8_t>(byte)) : byte;
  }

  // Four elements, 12 bytes, in every block of 16 bytes.
  template <class Dt>
  static KVRS_INLINE hn::Vec<Dt> spread(Dt d, const int32_t* p) {
    constexpr size_t N = hn::MaxLanes(Dt());
    if constexpr (N == 4) {
      const hn::Half<Dt> d2;
      const hn::Half<decltype(d2)> d1;
      return hn::Combine(d, hn::ZeroExtendVector(d2, hn::LoadU(d1, p + 2)), hn::LoadU(d2, p));
    } else if constexpr (N == 8) {
      const hn::Half<Dt> d4;
      const auto upper = hn::ShiftRightBytes<4>(d4, hn::LoadU(d4, p + 2));  // its first element is at p + 3
      return hn::Combine(d, upper, hn::LoadU(d4, p));
    } else {
      static_assert(N == 16);
      alignas(64) static constexpr int32_t kFrom[16] = {0, 1, 2, 0, 3, 4, 5, 0, 6, 7, 8, 0, 9, 10, 11, 0};
      return hn::TableLookupLanes(hn::MaskedLoad(hn::FirstN(d, 12), d, p), hn::SetTableIndices(d, kFrom));
    }
  }

  template <class Dt>
  static KVRS_INLINE void gather(Dt d, hn::Vec<Dt> v, int32_t* p) {
    constexpr size_t N = hn::MaxLanes(Dt());
    if constexpr (N == 4) {
      const hn::Half<Dt> d2;
      const hn::Half<decltype(d2)> d1;
      hn::StoreU(hn::LowerHalf(d2, v), d2, p);
      hn::StoreU(hn::LowerHalf(d1, hn::UpperHalf(d2, v)), d1, p + 2);
    } else if constexpr (N == 8) {
      alignas(32) static constexpr int32_t kTo[8] = {0, 1, 2, 4, 5, 6, 3, 3};
      const auto close = hn::TableLookupLanes(v, hn::SetTableIndices(d, kTo));
      const hn::Half<Dt> d4;
      const hn::Half<decltype(d4)> d2;
      hn::StoreU(hn::LowerHalf(d4, close), d4, p);
      hn::StoreU(hn::LowerHalf(d2, hn::UpperHalf(d4, close)), d2, p + 4);
    } else {
      static_assert(N == 16);
      alignas(64) static constexpr int32_t kTo[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 3, 3, 3, 3};
      hn::BlendedStore(hn::TableLookupLanes(v, hn::SetTableIndices(d, kTo)), hn::FirstN(d, 12), d, p);
    }
  }
};

template <>
struct Element<Packed24s> : PackedElement<Packed24s> {};
template <>
struct Element<Packed24u> : PackedElement<Packed24u> {};

// Arrays of bytes as packed elements.
template <class P>
const P* asPacked(const Kvr8u* p) {
  return reinterpret_cast<const P*>(p);
}
template <class P>
P* asPacked(Kvr8u* p) {
  return reinterpret_cast<P*>(p);
}

}  // namespace kvrs

#endif
