// Element loops of the _Sfs functions: dst[i] = exact(src[i]...) * 2^(-scaleFactor), rounded to nearest with
// ties to even and saturated.
//
// A family supplies a functor that returns its exact result in one of the forms below; the form knows how to
// saturate and how to shift right with rounding, and from these two every kernel is made:
//
//   scale factor 0   saturate
//   negative         saturate, then shift left and saturate again: the same value, and nothing overflows
//   1, and more      shift right with rounding, then saturate
//
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_SCALED_H
#define KVRS_FRAME_SCALED_H

#include <limits>
#include <type_traits>
#include <utility>

#include "frame/loop.h"
#include "frame/saturating.h"
#include "frame/scale.h"
#include "frame/widen.h"

namespace kvrs {

// Forms of an exact result r, besides a plain vector in the destination's lanes.

// a + b: up to one bit longer than a lane.
template <class V>
struct Sum {
  V a, b;
};

// a - b in signed lanes. (An unsigned difference is raised to 0 first, and then is a plain vector.)
template <class V>
struct Difference {
  V a, b;
};

// high * 2^16 + low, read as unsigned: a product of 16-bit lanes.
template <class V>
struct HighLow {
  V high, low;
};

// Lanes of twice the destination's width. `lower` and `upper` hold what InterleaveLower and InterleaveUpper
// of the destination's lanes with their high halves would give.
template <class V>
struct Interleaved {
  V lower, upper;
};

// The same for numbers that have room for the rounding term of a scale factor up to 30: below 2^30 + 2^29.
template <class V>
struct RoomyInterleaved {
  V lower, upper;
};

// The 32-bit lanes of a signed product.
template <class Dt, class V>
KVRS_INLINE auto interleaved(Dt d, HighLow<V> r) {
  const hn::RepartitionToWide<Dt> dw;
  return Interleaved<hn::Vec<decltype(dw)>>{hn::BitCast(dw, hn::InterleaveLower(d, r.low, r.high)),
                                            hn::BitCast(dw, hn::InterleaveUpper(d, r.low, r.high))};
}

// EvenOdd<V> (frame/widen.h): lanes of twice the width, r of the lanes 2i and of the lanes 2i+1.

// (v + 2^(k-1) - 1 + x) >> k, where x is 1 if floor(v / 2^k) is odd or the lowest bit of `sticky` is set. That
// means v / 2^k rounded to even, of a number v whose lost bits below the lowest are gathered in `sticky`. k is at
// least 1; at most w in unsigned lanes of w <= 16 bits, else w - 1. No intermediate overflows:
//
//  - u8, u16: where x is 0, v is lowered by 1 (a v of 0 stays, and gives 0 all the same); then halves round
//    up, (v + 2^(k-1)) >> k, which is the rounded-up average with 2^(k-1) - 1, shifted by the other k - 1.
//  - i16: likewise, and halves round up in the product with 2^(15-k) that keeps bits 15 and up. A v of -2^15
//    stays where it should be lowered: it is a multiple of 2^k, for which one less gives the same.
//  - others: floor(v / 2^k), plus 1 where the rest is above half - x. With mask registers that is where the
//    highest lost bit is set and one of those that round it up: the lowest of floor, the other lost ones.
struct Nothing {};  // in place of `sticky`

template <class Dt, class V, class Sticky>
KVRS_INLINE V shiftRightEven(Dt d, V v, [[maybe_unused]] Sticky sticky, int k) {
  using T = hn::TFromD<Dt>;
  const V one = hn::Set(d, T{1});
  const V floor = shiftRightBy(d, v, k);
  V up = floor;
  if constexpr (!std::is_same_v<Sticky, Nothing>) up = hn::Or(sticky, floor);
  if constexpr (std::is_unsigned_v<T> && sizeof(T) <= 2) {
    const V lowered = hn::SaturatedSub(v, hn::AndNot(up, one));
    const V bias = hn::Set(d, static_cast<T>((1u << (k - 1)) - 1));
    return shiftRightBy(d, hn::AverageRound(lowered, bias), k - 1);
  } else if constexpr (std::is_same_v<T, int16_t>) {
    const V lowered = hn::SaturatedSub(v, hn::AndNot(up, one));
    return hn::MulFixedPoint15(lowered, hn::Set(d, static_cast<T>(1 << (15 - k))));
  } else if constexpr (kMaskRegisters) {
    const uint64_t half = uint64_t{1} << (k - 1);
    const V others = hn::Set(d, static_cast<T>(2 * half | (half - 1)));
    const auto isHalf = hn::TestBit(v, hn::Set(d, static_cast<T>(half)));
    if constexpr (std::is_same_v<Sticky, Nothing>) {
      return hn::IfThenElse(bothMasks(isHalf, hn::TestBit(v, others)), hn::Add(floor, one), floor);
    } else {
      const V round = hn::Or(hn::And(v, others), hn::And(sticky, one));
      return hn::IfThenElse(bothMasks(isHalf, hn::TestBit(round, round)), hn::Add(floor, one), floor);
    }
  } else {
    // Compared as signed numbers, which the rest is: it has at most w - 1 bits.
    const hn::RebindToSigned<Dt> di;
    const V rest = hn::And(v, hn::Set(d, static_cast<T>((uint64_t{1} << k) - 1)));
    const V limit = hn::Sub(hn::Set(d, static_cast<T>(uint64_t{1} << (k - 1))), hn::And(up, one));
    if constexpr (sizeof(T) <= 4) {
      const auto above = hn::Gt(hn::BitCast(di, rest), hn::BitCast(di, limit));
      return hn::Sub(floor, hn::BitCast(d, hn::VecFromMask(di, above)));
    } else {
      // 64-bit lanes cannot be compared in all modules; both numbers are small enough for their difference.
      const hn::RebindToUnsigned<Dt> du;
      return hn::Add(floor, hn::BitCast(d, hn::ShiftRight<63>(hn::BitCast(du, hn::Sub(limit, rest)))));
    }
  }
}

template <class Dt, class V = hn::Vec<Dt>>
KVRS_INLINE V shiftRightEven(Dt d, V v, int k) {
  return shiftRightEven(d, v, Nothing(), k);
}

namespace scaled_detail {

// floor(r / 2), and r's lowest bit in the lowest bit of `rest`; its other bits mean nothing.
template <class V>
struct Halves {
  V half, rest;
};

// a + b = 2 * (a & b) + (a ^ b).
template <class Dt, class V>
KVRS_INLINE Halves<V> halves(Dt d, Sum<V> r) {
  using T = hn::TFromD<Dt>;
  const V differing = hn::Xor(r.a, r.b);
  if constexpr (std::is_same_v<T, uint8_t>) {
    // There is no shift of bytes.
    return {hn::Sub(hn::AverageRound(r.a, r.b), hn::And(differing, hn::Set(d, T{1}))), differing};
  } else {
    return {hn::Add(hn::And(r.a, r.b), hn::ShiftRight<1>(differing)), differing};
  }
}

// a - b = a + ~b + 1, and (x + y + 1) / 2 rounded down is (x | y) - ((x ^ y) >> 1).
template <class Dt, class V>
KVRS_INLINE Halves<V> halves(Dt, Difference<V> r) {
  const V notB = hn::Not(r.b);
  return {hn::Sub(hn::Or(r.a, notB), hn::ShiftRight<1>(hn::Xor(r.a, notB))), hn::Xor(r.a, r.b)};
}

// r saturated to the destination's lanes.
template <class Dt>
KVRS_INLINE hn::Vec<Dt> saturated(Dt, hn::Vec<Dt> r) {
  return r;
}
template <class Dt, class V>
KVRS_INLINE V saturated(Dt d, Sum<V> r) {
  return saturatedAdd(d, r.a, r.b);
}
template <class Dt, class V>
KVRS_INLINE V saturated(Dt d, Difference<V> r) {
  return saturatedSub(d, r.a, r.b);
}
template <class Dt, class V>
KVRS_INLINE hn::Vec<Dt> saturated(Dt d, Interleaved<V> r) {
  return hn::ReorderDemote2To(d, r.lower, r.upper);
}
template <class Dt, class V>
KVRS_INLINE hn::Vec<Dt> saturated(Dt d, RoomyInterleaved<V> r) {
  return hn::ReorderDemote2To(d, r.lower, r.upper);
}

template <class Dt, class V>
KVRS_INLINE V saturated(Dt d, HighLow<V> r) {
  if constexpr (std::is_signed_v<hn::TFromD<Dt>>) {
    return saturated(d, interleaved(d, r));
  } else {
    return hn::IfThenElse(hn::Eq(r.high, hn::Zero(d)), r.low, extremeOfSign(d, r.low));
  }
}
template <class Dt, class V>
KVRS_INLINE hn::Vec<Dt> saturated(Dt d, EvenOdd<V> r) {
  using T = hn::TFromD<Dt>;
  const hn::RepartitionToWide<Dt> dw;
  if constexpr (std::is_same_v<T, uint8_t>) {
    // Adding 255 * 256 with saturation leaves the smaller of r and 255 in the low byte.
    const V top = hn::Set(dw, uint16_t{0xFF00});
    const V even = hn::And(hn::SaturatedAdd(r.even, top), hn::Set(dw, uint16_t{0x00FF}));
    return hn::BitCast(d, hn::Or(even, hn::ShiftLeft<8>(hn::SaturatedAdd(r.odd, top))));
  } else if constexpr (std::is_same_v<T, int16_t>) {
    // Per block of 16 bytes: four even lanes, then four odd ones.
    const auto packed = hn::BitCast(hn::Repartition<uint8_t, Dt>(), hn::ReorderDemote2To(d, r.even, r.odd));
    alignas(16) static constexpr uint8_t kInTurn[16] = {0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15};
    const auto order = hn::LoadDup128(hn::Repartition<uint8_t, Dt>(), kInTurn);
    return hn::BitCast(d, hn::TableLookupBytes(packed, order));
  } else {
    return saturatedHalves(d, r.even, r.odd);
  }
}

// r / 2^n rounded to even, then saturated; n is at least 1, and at least 2 for a sum or difference.
template <class Dt>
KVRS_INLINE hn::Vec<Dt> rounded(Dt d, hn::Vec<Dt> r, int n) {
  return shiftRightEven(d, r, n);
}
template <class Dt, class V>
KVRS_INLINE hn::Vec<Dt> rounded(Dt d, Interleaved<V> r, int n) {
  const hn::RepartitionToWide<Dt> dw;
  return saturated(d, Interleaved<V>{shiftRightEven(dw, r.lower, n), shiftRightEven(dw, r.upper, n)});
}
template <class Dt, class V>
KVRS_INLINE hn::Vec<Dt> rounded(Dt d, RoomyInterleaved<V> r, int n) {
  const hn::RepartitionToWide<Dt> dw;
  const VectorShiftRightEven<int32_t> shift(n);
  return saturated(d, RoomyInterleaved<V>{shift(dw, r.lower), shift(dw, r.upper)});
}
// Products, for n up to 15: lowered by 1 where bit n is 0, as in shiftRightEven, so that halves round up. A low
// half of 0 stays, as the product then is a multiple of 2^n.
template <class Dt, class V>
KVRS_INLINE V loweredLow(Dt d, HighLow<V> r, int n) {
  const hn::RebindToUnsigned<Dt> du;
  const auto low = hn::BitCast(du, r.low);
  const auto one = hn::Set(du, uint16_t{1});
  if constexpr (kMaskRegisters) {
    const auto odd = hn::TestBit(low, hn::Set(du, static_cast<uint16_t>(1u << n)));
    return hn::BitCast(d, hn::IfThenElse(odd, low, hn::SaturatedSub(low, one)));
  } else {
    return hn::BitCast(d, hn::SaturatedSub(low, hn::AndNot(shiftRightBy(du, low, n), one)));
  }
}
template <class Dt, class V>
KVRS_INLINE auto roundedInterleaved(Dt d, HighLow<V> r, int n) {
  const hn::RepartitionToWide<Dt> dw;
  const auto halfUp = [&](auto v) {
    return shiftRightBy(dw, hn::Add(v, hn::Set(dw, int32_t{1} << (n - 1))), n);
  };
  const auto v = interleaved(d, HighLow<V>{r.high, loweredLow(d, r, n)});
  return Interleaved<hn::Vec<decltype(dw)>>{halfUp(v.lower), halfUp(v.upper)};
}
template <class Dt, class V>
KVRS_INLINE V rounded(Dt d, HighLow<V> r, int n) {
  using T = hn::TFromD<Dt>;
  if constexpr (std::is_signed_v<T>) {
    return saturated(d, roundedInterleaved(d, r, n));
  } else {
    const V low = loweredLow(d, r, n);
    // The quotient's bits come from both lanes; it has more than 16 where high is 2^n or more.
    const V high = shiftLeftBy(d, r.high, 16 - n);
    const V bias = hn::Set(d, static_cast<T>((1u << (n - 1)) - 1));
    const V rounded = shiftRightBy(d, hn::AverageRound(low, bias), n - 1);
    if constexpr (kMaskRegisters) {
      const auto exceeds = hn::Gt(r.high, hn::Set(d, static_cast<T>((1u << n) - 1)));
      return hn::IfThenElse(exceeds, extremeOfSign(d, low), hn::SaturatedAdd(high, rounded));
    } else {
      const V excess = hn::SaturatedSub(r.high, hn::Set(d, static_cast<T>((1u << n) - 1)));
      return hn::IfThenElse(hn::Eq(excess, hn::Zero(d)), hn::SaturatedAdd(high, rounded),
                            extremeOfSign(d, low));
    }
  }
}
template <class Dt, class V>
KVRS_INLINE hn::Vec<Dt> rounded(Dt d, EvenOdd<V> r, int n) {
  const hn::DFromV<V> dw;
  return saturated(d, EvenOdd<V>{shiftRightEven(dw, r.even, n), shiftRightEven(dw, r.odd, n)});
}
// A sum or difference: floor(r / 2) rounded by one bit less, with the bit that it lacks for a sticky one; n is
// 2 or more. Nothing saturates.
template <class Dt, class V>
KVRS_INLINE V rounded(Dt d, Halves<V> r, int n) {
  return shiftRightEven(d, r.half, r.rest, n - 1);
}
template <class Dt, class V>
KVRS_INLINE V rounded(Dt d, Sum<V> r, int n) {
  return rounded(d, halves(d, r), n);
}
template <class Dt, class V>
KVRS_INLINE V rounded(Dt d, Difference<V> r, int n) {
  return rounded(d, halves(d, r), n);
}

// The same for n = 1, of a sum or difference. A tie goes up where floor(r / 2) is odd; only a difference then leaves
// its lane, by one: from the highest number to the lowest one.
template <class Dt, class V>
KVRS_INLINE V halved(Dt d, Sum<V> r) {
  const auto h = halves(d, r);
  return hn::Add(h.half, hn::And(hn::And(h.half, h.rest), hn::Set(d, hn::TFromD<Dt>{1})));
}
template <class Dt, class V>
KVRS_INLINE V halved(Dt d, Difference<V> r) {
  using T = hn::TFromD<Dt>;
  const auto h = halves(d, r);
  const V up = hn::And(hn::And(h.half, h.rest), hn::Set(d, T{1}));
  if constexpr (sizeof(T) <= 2) {
    return hn::SaturatedAdd(h.half, up);
  } else {
    const auto highest = hn::Eq(h.half, hn::Set(d, std::numeric_limits<T>::max()));
    if constexpr (kMaskRegisters) {
      return hn::IfThenElse(highest, h.half, hn::Add(h.half, up));
    } else {
      return hn::Add(h.half, hn::AndNot(hn::VecFromMask(d, highest), up));
    }
  }
}

// The kernels, each a stage behind the exact result. Shifts are as wide as a register, for the reason told at Scalar in
// vector/scaled_form.h.
struct Saturated {
  template <class Dt, class Exact>
  KVRS_INLINE auto operator()(Dt d, Exact r) const {
    return saturated(d, r);
  }
};
struct ShiftedLeft {
  ptrdiff_t n;
  template <class Dt, class Exact>
  KVRS_INLINE auto operator()(Dt d, Exact r) const {
    return saturatedShiftLeft(d, saturated(d, r), static_cast<int>(n));
  }
};
struct Halved {
  template <class Dt, class Exact>
  KVRS_INLINE auto operator()(Dt d, Exact r) const {
    return halved(d, r);
  }
};
struct ShiftedRight {
  ptrdiff_t n;
  template <class Dt, class Exact>
  KVRS_INLINE auto operator()(Dt d, Exact r) const {
    return rounded(d, r, static_cast<int>(n));
  }
};

template <class Exact, class Stage>
struct Kernel {
  [[no_unique_address]] Exact exact;
  [[no_unique_address]] Stage stage;

  template <class Dt, class... V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt d, V... v) const {
    return inWholeBlocks([this](auto whole, auto... w) { return stage(whole, exact(whole, w...)); }, d, v...);
  }
};

template <class Stage, class Exact, class D, class... S>
KVRS_INLINE KvrStatus map(const Exact& exact, const Stage& stage, D* dst, size_t len, const S*... src) {
  return mapElements(Kernel<Exact, Stage>{exact, stage}, dst, len, src...);
}

// Whether an exact result has a kernel of its own for n = 1.
template <class R>
inline constexpr bool kHalves = false;
template <class V>
inline constexpr bool kHalves<Sum<V>> = true;
template <class V>
inline constexpr bool kHalves<Difference<V>> = true;

// What `exact` returns for full vectors.
template <class Exact, class D, class... S>
using ResultOf = decltype(std::declval<const Exact&>()(
    ElementLanes<D, loop_detail::kBlock<D, S...>>(),
    std::declval<hn::Vec<ElementLanes<S, loop_detail::kBlock<D, S...>>>>()...));

}  // namespace scaled_detail

// Above a family's bounds: dst[i] = 0.
struct Zeros {
  template <class Dt>
  KVRS_INLINE auto operator()(Dt d) const {
    return hn::Zero(d);
  }
};

// Signed products of 16-bit lanes by 2^(-n), for n up to 15, in 32-bit lanes; n is at least 1 where rounded.
template <bool kRounded, class Dt, class V>
KVRS_INLINE auto widenedProducts(Dt d, HighLow<V> r, [[maybe_unused]] int n) {
  const hn::RepartitionToWide<Dt> dw;
  auto v = [&] {
    if constexpr (kRounded) {
      return scaled_detail::roundedInterleaved(d, r, n);
    } else {
      return interleaved(d, r);
    }
  }();
  return blocksInOrder(dw, v.lower, v.upper);
}

// dst[i] = exact(d, src[i]...), saturated. `exact` is called as mapElements calls its functor, always with
// vectors of at least 16 bytes, and returns a plain vector or one of the forms above. The result is that of
// mapElements.
template <class Exact, class D, class... S>
KVRS_INLINE KvrStatus mapSaturated(const Exact& exact, D* dst, size_t len, const S*... src) {
  return scaled_detail::map(exact, scaled_detail::Saturated(), dst, len, src...);
}

namespace scaled_detail {

// All scale factors but 0. A function of its own, which all forms of an operation share.
template <class Exact, class D, class... S>
[[gnu::noinline]] KvrStatus mapShifted(const S*... src, D* dst, size_t len, int scaleFactor,
                                       ScaleBounds bounds, Exact exact) {
  switch (scaleKernel(scaleFactor, bounds)) {
    case ScaleKernel::shiftLeft:
      return map(exact, ShiftedLeft{-scaleFactor}, dst, len, src...);
    case ScaleKernel::bySign:
      return map(exact, ShiftedLeft{8 * sizeof(LaneOf<D>)}, dst, len, src...);
    case ScaleKernel::zero:
      return mapElements(Zeros(), dst, len);
    case ScaleKernel::one:
      if constexpr (kHalves<ResultOf<Exact, D, S...>>) return map(exact, Halved(), dst, len, src...);
      [[fallthrough]];
    case ScaleKernel::shiftRight:
      return map(exact, ShiftedRight{scaleFactor}, dst, len, src...);
    case ScaleKernel::none:
      break;
  }
  __builtin_unreachable();
}

}  // namespace scaled_detail

// dst[i] = exact(d, src[i]...) * 2^(-scaleFactor), rounded and saturated.
template <class Exact, class D, class... S>
KVRS_INLINE KvrStatus mapScaled(const Exact& exact, ScaleBounds bounds, int scaleFactor, D* dst, size_t len,
                                const S*... src) {
  if (scaleFactor == 0) return mapSaturated(exact, dst, len, src...);
  return scaled_detail::mapShifted<Exact, D, S...>(src..., dst, len, scaleFactor, bounds, exact);
}

}  // namespace kvrs

#endif
