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
#include "frame/plain.h"
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
  return saturated(
      d, RoomyInterleaved<V>{shiftRightEvenWithRoom(dw, r.lower, n), shiftRightEvenWithRoom(dw, r.upper, n)});
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
