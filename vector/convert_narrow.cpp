// Integers to integers: widening, saturation, and scaling by shifts.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <limits>
#include <type_traits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/packed24.h"
#include "frame/saturating.h"
#include "frame/scale.h"
#include "frame/shift.h"
#include "kvrs/convert.h"
#include "kvrs/fill.h"

namespace kvrs {
namespace {

// x / 2^shift, rounded, over the whole range of T and for shifts from 1 to one less than its bits. Where ties do not go
// to even, that is the floor, plus 1 where the part that is cut off lies above a threshold. With `half` 2^(shift-1):
//
//   to nearest, ties away      half for a negative x, half - 1 for others
//   toward zero                0 for a negative x, out of reach for others
template <class T, KvrRoundMode mode>
class ShiftRight {
 public:
  explicit ShiftRight(int shift) : shift_(shift) {}

  template <class Dt, class V = hn::Vec<Dt>>
  KVRS_INLINE V operator()(Dt d, V x) const {
    if constexpr (mode == kvrRoundNear) return shiftRightEven(d, x, shift_);
    const hn::RebindToSigned<Dt> di;
    const auto floor = hn::BitCast(di, shiftRightBy(d, x, shift_));
    const auto rest = hn::And(hn::BitCast(di, x), hn::Set(di, restMask()));
    const auto up = hn::Gt(rest, threshold(di, x));
    return hn::BitCast(d, hn::Sub(floor, hn::VecFromMask(di, up)));
  }

 private:
  using Signed = std::make_signed_t<T>;

  template <class Di, class V, class Vi = hn::Vec<Di>>
  KVRS_INLINE Vi threshold(Di di, V x) const {
    Vi sign = hn::Zero(di);  // all ones for a negative x
    if constexpr (std::is_signed_v<T>) sign = hn::BroadcastSignBit(x);
    if constexpr (mode == kvrRoundFinancial) {
      return hn::Sub(hn::Set(di, static_cast<Signed>(half() - 1)), sign);
    } else {
      return hn::AndNot(sign, hn::Set(di, std::numeric_limits<Signed>::max()));
    }
  }

  // Made where they are used, ahead of the loop: the count alone comes there in a register.
  KVRS_INLINE Signed restMask() const { return static_cast<Signed>((uint64_t{1} << shift_) - 1); }
  KVRS_INLINE Signed half() const { return static_cast<Signed>(Signed{1} << (shift_ - 1)); }

  int shift_;
};

// x * 2^shift, saturated to T, for shifts below its bits.
struct ShiftLeft {
  int shift;
  template <class Dt, class V = hn::Vec<Dt>>
  KVRS_INLINE V operator()(Dt d, V x) const {
    return saturatedShiftLeft(d, x, shift);
  }
};

// Saturated to D, whose lanes may be narrower than the vector's or the same.
template <class D, class Dt, class V>
KVRS_INLINE hn::Vec<Dt> narrow(Dt dt, V v) {
  if constexpr (std::is_same_v<D, Packed24s>) {
    return hn::Min(hn::Max(v, hn::Set(dt, D::kLowest)), hn::Set(dt, D::kHighest));
  } else if constexpr (std::is_same_v<D, Packed24u>) {
    const hn::DFromV<V> du;
    return hn::BitCast(dt, hn::Min(v, hn::Set(du, uint32_t{D::kHighest})));
  } else {
    return hn::DemoteTo(dt, v);
  }
}

// Shifts by `shift` and stores as D.
template <class D, class Shift>
struct ShiftAndNarrow {
  Shift shift;
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    return narrow<D>(dt, shift(hn::DFromV<V>(), v));
  }
};

template <class D>
struct Narrow {
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    return narrow<D>(dt, v);
  }
};

struct Widen {
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    if constexpr (sizeof(hn::TFromV<V>) == sizeof(hn::TFromD<Dt>)) {
      return hn::BitCast(dt, v);
    } else {
      return hn::PromoteTo(dt, v);
    }
  }
};

struct MinusOneOfLowest {
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    const hn::DFromV<V> d;
    const V lowest = hn::Set(d, std::numeric_limits<hn::TFromD<decltype(d)>>::lowest());
    return hn::DemoteTo(dt, hn::VecFromMask(d, hn::Eq(v, lowest)));
  }
};

template <class Shift, class S, class D>
KvrStatus shiftAndNarrow(Shift shift, const S* src, D* dst, int len) {
  return mapElements(ShiftAndNarrow<D, Shift>{shift}, dst, static_cast<size_t>(len), src);
}

// The shift counts of a scale factor: at most `mostLeft` to the left and `mostRight` to the right.
template <class S, class D>
KvrStatus scale(const S* src, D* dst, int len, KvrRoundMode rndMode, int scaleFactor, int mostLeft,
                int mostRight) {
  if (scaleFactor == 0) return mapElements(Narrow<D>(), dst, static_cast<size_t>(len), src);
  if (scaleFactor < 0) {
    return shiftAndNarrow(ShiftLeft{-std::max(scaleFactor, -mostLeft)}, src, dst, len);
  }
  const int shift = std::min(scaleFactor, mostRight);
  switch (rndMode) {
    case kvrRoundZero:
      return shiftAndNarrow(ShiftRight<S, kvrRoundZero>(shift), src, dst, len);
    case kvrRoundNear:
      return shiftAndNarrow(ShiftRight<S, kvrRoundNear>(shift), src, dst, len);
    default:
      return shiftAndNarrow(ShiftRight<S, kvrRoundFinancial>(shift), src, dst, len);
  }
}

// Integers of 64 bits to 32, as pairs of a low and a high word, each in a vector of its own.
template <class V>
struct Words {
  V low, high;
};

// floor(x) saturated to 32 bits, plus `up` (0 or 1) where that does not leave the range.
template <class Dt, class V = hn::Vec<Dt>>
KVRS_INLINE V saturatedSum(Dt d, Words<V> floor, V up) {
  const V max = hn::Set(d, std::numeric_limits<int32_t>::max());
  const auto fits = hn::Eq(floor.high, hn::ShiftRight<31>(floor.low));
  const V extreme = hn::Xor(max, hn::ShiftRight<31>(floor.high));
  const V sum = hn::Add(floor.low, hn::IfThenZeroElse(hn::Eq(floor.low, max), up));
  // What lies just below the range may be rounded into it, which takes it to the lowest number all the same.
  return hn::IfThenElse(fits, sum, extreme);
}

struct Saturate64 {
  template <class Dt, class V>
  KVRS_INLINE V operator()(Dt d, Complex<V> x) const {
    return saturatedSum(d, Words<V>{x.re, x.im}, hn::Zero(d));
  }
};

struct ShiftLeft64 {
  ShiftLeft shift;
  template <class Dt, class V>
  KVRS_INLINE V operator()(Dt d, Complex<V> x) const {
    return shift(d, Saturate64()(d, x));
  }
};

// As ShiftRight, for shifts from 1 to 63.
template <KvrRoundMode mode>
class ShiftRight64 {
 public:
  explicit ShiftRight64(int shift)
      : shift_((shift - 1) % 32),
        wide_(shift > 32),
        restLow_(static_cast<int32_t>((uint64_t{1} << (shift - 1)) - 1)),
        restHigh_(static_cast<int32_t>(((uint64_t{1} << (shift - 1)) - 1) >> 32)) {}

  template <class Dt, class V>
  KVRS_INLINE V operator()(Dt d, Complex<V> x) const {
    const V zero = hn::Zero(d);
    const V rest = hn::Or(hn::And(x.re, hn::Set(d, restLow_)), hn::And(x.im, hn::Set(d, restHigh_)));
    const V inexact = hn::Not(hn::VecFromMask(d, hn::Eq(rest, zero)));
    const V sign = hn::ShiftRight<31>(x.im);
    const Words<V> half = shiftRight(d, wide_ ? Words<V>{x.im, sign} : Words<V>{x.re, x.im}, shift_);
    const Words<V> floor = shiftRight(d, half, 1);
    V up;
    if constexpr (mode == kvrRoundNear) {
      up = hn::And(half.low, hn::Or(inexact, floor.low));
    } else if constexpr (mode == kvrRoundFinancial) {
      up = hn::And(half.low, hn::Or(inexact, hn::Not(sign)));
    } else {
      up = hn::And(hn::Or(inexact, half.low), sign);
    }
    return saturatedSum(d, floor, hn::And(up, hn::Set(d, 1)));
  }

 private:
  // By 0 to 31: a word shifted by 32 is 0.
  template <class Dt, class V = hn::Vec<Dt>>
  static KVRS_INLINE Words<V> shiftRight(Dt d, Words<V> x, int shift) {
    const hn::RebindToUnsigned<Dt> du;
    const V fromHigh = hn::ShiftLeftSame(x.high, 32 - shift);
    const V low = hn::BitCast(d, hn::ShiftRightSame(hn::BitCast(du, x.low), shift));
    return {hn::Or(low, fromHigh), hn::ShiftRightSame(x.high, shift)};
  }

  int shift_;
  bool wide_;
  int32_t restLow_, restHigh_;
};

template <class Op>
KvrStatus narrow64(Op op, const Kvr64s* src, Kvr32s* dst, int len) {
  return mapElements(op, dst, static_cast<size_t>(len), reinterpret_cast<const Kvr32sc*>(src));
}

template <class S, class D>
KvrStatus widen(const S* src, D* dst, int len) {
  return mapElements(Widen(), dst, static_cast<size_t>(len), src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsConvert_8s16s(const Kvr8s* src, Kvr16s* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return widen(src, dst, len);
}
KvrStatus kvrsConvert_16s32s(const Kvr16s* src, Kvr32s* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return widen(src, dst, len);
}
KvrStatus kvrsConvert_24s32s(const Kvr8u* src, Kvr32s* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return widen(asPacked<Packed24s>(src), dst, len);
}
KvrStatus kvrsConvert_24u32u(const Kvr8u* src, Kvr32u* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return widen(asPacked<Packed24u>(src), dst, len);
}

KvrStatus kvrsConvert_32s16s(const Kvr32s* src, Kvr16s* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return scale(src, dst, len, kvrRoundNear, 0, 15, 31);
}
KvrStatus kvrsConvert_32s16s_Sfs(const Kvr32s* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return scale(src, dst, len, kvrRoundNear, scaleFactor, 15, 31);
}
KvrStatus kvrsConvert_32s24s_Sfs(const Kvr32s* src, Kvr8u* dst, int len, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return scale(src, asPacked<Packed24s>(dst), len, kvrRoundNear, scaleFactor, 31, 31);
}
KvrStatus kvrsConvert_32u24u_Sfs(const Kvr32u* src, Kvr8u* dst, int len, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return scale(src, asPacked<Packed24u>(dst), len, kvrRoundNear, scaleFactor, 31, 31);
}

KvrStatus kvrsConvert_16s8s_Sfs(const Kvr16s* src, Kvr8s* dst, int len, KvrRoundMode rndMode,
                                int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  if (scaleFactor >= 16) {
    // A half is left of the lowest number when it is shifted by 16, and less than a half of all others.
    const bool tiesAway = rndMode != kvrRoundZero && rndMode != kvrRoundNear;
    return scaleFactor == 16 && tiesAway ? mapElements(MinusOneOfLowest(), dst, static_cast<size_t>(len), src)
                                         : kvrsZero_8u(reinterpret_cast<Kvr8u*>(dst), len);
  }
  return scale(src, dst, len, rndMode, scaleFactor, 15, 15);
}

KvrStatus kvrsConvert_64s32s_Sfs(const Kvr64s* src, Kvr32s* dst, int len, KvrRoundMode rndMode,
                                 int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  if (scaleFactor == 0) return narrow64(Saturate64(), src, dst, len);
  if (scaleFactor < 0) return narrow64(ShiftLeft64{{-std::max(scaleFactor, -31)}}, src, dst, len);
  if (scaleFactor > 63) {
    return kvrsZero_32s(dst, len);
  }
  switch (rndMode) {
    case kvrRoundZero:
      return narrow64(ShiftRight64<kvrRoundZero>(scaleFactor), src, dst, len);
    case kvrRoundNear:
      return narrow64(ShiftRight64<kvrRoundNear>(scaleFactor), src, dst, len);
    default:
      return narrow64(ShiftRight64<kvrRoundFinancial>(scaleFactor), src, dst, len);
  }
}
