// Exact products of integer lanes, in lanes of twice their width.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_WIDEN_H
#define KVRS_FRAME_WIDEN_H

#include <type_traits>

#include "frame/simd.h"

namespace kvrs {

// The same lanes in a vector of N, up to 16 bytes: those beyond N are dropped, those beyond v's own are
// whatever its register holds, which is 0 after a load.
template <size_t N, class T, size_t M>
KVRS_INLINE hn::Vec<Lanes<T, N>> resized(hn::Vec128<T, M> v) {
  static_assert(N * sizeof(T) <= 16);
  return hn::Vec<Lanes<T, N>>{v.raw};
}

// Calls op(d, v...) with vectors of at least 16 bytes, so that op may count on whole blocks: where d is
// shorter, in a block of 16 bytes of which only the first lanes are kept.
template <class Op, class Dt, class... V>
KVRS_INLINE hn::Vec<Dt> inWholeBlocks(const Op& op, Dt d, V... v) {
  using T = hn::TFromD<Dt>;
  constexpr size_t lanes = hn::MaxLanes(Dt());
  if constexpr (lanes * sizeof(T) >= 16) {
    return op(d, v...);
  } else {
    constexpr size_t times = 16 / (lanes * sizeof(T));
    const auto whole = op(Lanes<T, lanes * times>(), resized<times * hn::MaxLanes(hn::DFromV<V>())>(v)...);
    return resized<lanes>(whole);
  }
}

// a[2i] * b[2i] + a[2i+1] * b[2i+1] of 16-bit lanes, in 32-bit lane i, modulo 2^32: the sum only overflows
// where all four are -32768. On processors of this family the widening accumulate adds neighbours, and
// takes no use of its second sum; a test holds it to that.
template <class D32, class V16>
KVRS_INLINE hn::Vec<D32> mulAddNeighbours(D32 d, V16 a, V16 b) {
  hn::Vec<D32> unused = hn::Zero(d);
  return hn::ReorderWidenMulAccumulate(d, a, b, hn::Zero(d), unused);
}

// a * b of 16-bit lanes in 32 bits: within one block of 16 bytes from both halves of the products, else of a
// lane that is extended by its sign and one that is extended by zeros, where the high halves contribute nothing.
template <class D32, class V16>
KVRS_INLINE hn::Vec<D32> mulWiden(D32 d, V16 a, V16 b) {
  if constexpr (hn::MaxLanes(D32()) == 4) {
    const Lanes<int16_t, 8> whole;
    return hn::BitCast(d,
                       hn::InterleaveLower(whole, resized<8>(hn::Mul(a, b)), resized<8>(hn::MulHigh(a, b))));
  } else {
    const hn::RebindToUnsigned<D32> du;
    const hn::RebindToUnsigned<hn::DFromV<V16>> du16;
    const hn::Repartition<int16_t, D32> d16;
    const auto byZeros = hn::PromoteTo(du, hn::BitCast(du16, b));
    return mulAddNeighbours(d, hn::BitCast(d16, hn::PromoteTo(d, a)), hn::BitCast(d16, byZeros));
  }
}

// How much the high half of a * b is too large when both are read as unsigned: where one is negative it is read as
// 2^32 more, and the product by the other one times 2^32.
template <class V32>
KVRS_INLINE V32 unsignedExcess(V32 a, V32 b) {
  return hn::Add(hn::And(hn::BroadcastSignBit(a), b), hn::And(hn::BroadcastSignBit(b), a));
}

// A sum that can leave the range of its lanes by one, at the top alone, and has no other way to the lowest number: that
// one becomes the highest.
template <class D, class V>
KVRS_INLINE V unwrapped(D d, V sum) {
  using T = hn::TFromD<D>;
  const auto wrapped = hn::Eq(sum, hn::Set(d, hwy::LimitsMin<T>()));
  if constexpr (kMaskRegisters) {
    return hn::IfThenElse(wrapped, hn::Set(d, hwy::LimitsMax<T>()), sum);
  } else {
    return hn::Add(sum, hn::VecFromMask(d, wrapped));
  }
}

// All exact products of 32-bit lanes: lane i of `even` holds a[2i] * b[2i], of `odd` a[2i+1] * b[2i+1].
template <class V64>
struct EvenOdd {
  V64 even, odd;
};

template <class D32, class V32>
KVRS_INLINE auto mulEvenOdd(D32 d, V32 a, V32 b) {
  const hn::RepartitionToWide<D32> d64;
  if constexpr (kSignedMulEven || std::is_unsigned_v<hn::TFromD<D32>>) {
    return EvenOdd<hn::Vec<decltype(d64)>>{hn::MulEven(a, b), hn::MulEven(hn::DupOdd(a), hn::DupOdd(b))};
  } else {
    const hn::RebindToUnsigned<D32> du;
    const auto p = mulEvenOdd(du, hn::BitCast(du, a), hn::BitCast(du, b));
    const V32 excess = unsignedExcess(a, b);
    const auto even = hn::ShiftLeft<32>(hn::BitCast(d64, excess));
    const auto odd = hn::BitCast(d64, hn::OddEven(excess, hn::Zero(d)));
    return EvenOdd<hn::Vec<decltype(d64)>>{hn::Sub(hn::BitCast(d64, p.even), even),
                                           hn::Sub(hn::BitCast(d64, p.odd), odd)};
  }
}

// The even lanes, or the odd ones, of two vectors in turn. In 64 bytes one shuffle, where the compiler sees two.
template <bool odd, class D32, class V32>
KVRS_INLINE V32 lanesInTurn(D32, V32 a, V32 b) {
  if constexpr (sizeof(a.raw) == 64) {
    alignas(64) static constexpr int32_t kOrder[2][16] = {
        {0, 16, 2, 18, 4, 20, 6, 22, 8, 24, 10, 26, 12, 28, 14, 30},
        {1, 17, 3, 19, 5, 21, 7, 23, 9, 25, 11, 27, 13, 29, 15, 31}};
    const auto order = hn::Load(hn::RebindToSigned<D32>(), kOrder[odd]);
    return {_mm512_permutex2var_epi32(a.raw, order.raw, b.raw)};
  } else {
    return odd ? hn::OddEven(b, hn::DupOdd(a)) : hn::OddEven(hn::DupEven(b), a);
  }
}

// The low halves of 64-bit lanes, as lanes 2i and 2i+1.
template <class D32, class V64>
KVRS_INLINE hn::Vec<D32> lowHalves(D32 d, V64 even, V64 odd) {
  if constexpr (kBlends) {
    return lanesInTurn<false>(d, hn::BitCast(d, even), hn::BitCast(d, odd));
  } else {
    const auto up = hn::BitCast(d, hn::ShiftLeft<32>(odd));
    const hn::DFromV<V64> d64;
    return hn::Or(up, hn::BitCast(d, hn::And(even, hn::Set(d64, hn::TFromV<V64>(0xFFFFFFFF)))));
  }
}

// The high halves.
template <class D32, class V64>
KVRS_INLINE hn::Vec<D32> highHalves(D32 d, V64 even, V64 odd) {
  if constexpr (kBlends) {
    return lanesInTurn<true>(d, hn::BitCast(d, even), hn::BitCast(d, odd));
  } else {
    const hn::RepartitionToWide<hn::RebindToUnsigned<D32>> du64;
    const auto down = hn::BitCast(d, hn::ShiftRight<32>(hn::BitCast(du64, even)));
    const auto high = hn::And(hn::BitCast(du64, odd), hn::Set(du64, uint64_t{0xFFFFFFFF} << 32));
    return hn::Or(hn::BitCast(d, high), down);
  }
}

}  // namespace kvrs

#endif
