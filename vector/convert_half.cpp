// Half precision: 1 sign, 5 exponent and 10 fraction bits.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <bit>

#include "frame/check.h"
#include "frame/halves.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/scale.h"
#include "frame/to_integer.h"
#include "kvrs/convert.h"

namespace kvrs {
namespace {

constexpr uint32_t kInfinity = 0x7F800000;           // of a single
constexpr uint32_t kLeastNormal = (127 - 14) << 23;  // 2^-14, the least normal half
constexpr uint32_t kTooLarge = (127 + 16) << 23;     // 2^16
constexpr int kShift = 23 - 10;                      // from the fraction of a single to that of a half
constexpr uint32_t kRebias = (127 - 15) << 23;

// Halves as singles; nothing is lost. The bits of a half below its sign, seen as the bits of a single, are its
// value times 2^-112, subnormals included; infinities and NaNs need the larger exponent. The product quiets a
// signalling NaN.
template <class Df, class V>
KVRS_INLINE hn::Vec<Df> halfToSingle(Df df, V half) {
  if constexpr (kHalfConversions) {
    return hn::PromoteTo(df, hn::BitCast(hn::Rebind<hwy::float16_t, Df>(), half));
  } else {
    const hn::RebindToSigned<Df> di;
    const auto wide = hn::PromoteTo(di, hn::BitCast(hn::Rebind<int16_t, Df>(), half));  // the sign at the top
    const auto magnitude = hn::ShiftLeft<kShift>(hn::And(wide, hn::Set(di, 0x7FFF)));
    const auto special = hn::VecFromMask(di, hn::Gt(magnitude, hn::Set(di, (0x7C00 << kShift) - 1)));
    const auto bits = hn::Or(magnitude, hn::And(special, hn::Set(di, static_cast<int32_t>(kInfinity))));
    return hn::CopySignToAbs(hn::Mul(hn::BitCast(df, bits), hn::Set(df, 0x1p112f)), hn::BitCast(df, wide));
  }
}

// Singles as halves, to nearest with ties to even or cut off. The processor must be rounding the same way:
// the sum that rounds subnormal halves follows it.
template <bool truncate>
struct ToHalf {
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    if constexpr (kHalfConversions && !truncate) {
      return hn::BitCast(dt, hn::DemoteTo(hn::Rebind<hwy::float16_t, Dt>(), v));
    } else {
      const hn::DFromV<V> df;
      const hn::RebindToSigned<decltype(df)> di;
      const auto set = [di](uint32_t bits) { return hn::Set(di, static_cast<int32_t>(bits)); };
      const auto bits = hn::BitCast(di, v);
      const auto magnitude = hn::And(bits, set(0x7FFFFFFF));

      // Below 2^-14 a half counts in steps of 2^-24, the last place of singles from 0.5 on.
      const auto sum = hn::Add(hn::BitCast(df, magnitude), hn::Set(df, 0.5f));
      const auto subnormal = hn::Sub(hn::BitCast(di, sum), set(std::bit_cast<uint32_t>(0.5f)));

      // A carry out of the fraction goes into the exponent, up to infinity.
      auto rebiased = hn::Sub(magnitude, set(kRebias));
      if constexpr (!truncate) {
        const auto odd = hn::And(hn::ShiftRight<kShift>(magnitude), set(1));
        rebiased = hn::Add(rebiased, hn::Add(odd, set((1 << (kShift - 1)) - 1)));
      }
      const auto normal = hn::ShiftRight<kShift>(rebiased);

      // A NaN keeps the top of its payload and becomes quiet.
      const auto payload = hn::And(hn::ShiftRight<kShift>(magnitude), set(0x3FF));
      const auto isNan = hn::VecFromMask(di, hn::Gt(magnitude, set(kInfinity)));
      const auto special = hn::Or(set(0x7C00), hn::And(isNan, hn::Or(payload, set(0x200))));

      auto half = hn::IfThenElse(hn::Gt(set(kLeastNormal), magnitude), subnormal, normal);
      half = hn::IfThenElse(hn::Gt(magnitude, set(kTooLarge - 1)), special, half);
      // With the sign in all bits from 15 on the value is a number of 16 bits, which narrowing keeps as it is.
      const auto sign = hn::And(hn::ShiftRight<31>(bits), set(0xFFFF8000));
      const hn::RebindToSigned<Dt> di16;
      return hn::BitCast(dt, hn::DemoteTo(di16, hn::Or(half, sign)));
    }
  }
};

template <bool truncate>
struct IntegerToHalf {
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    return through<Kvr32f>(
        [](auto d, auto x) __attribute__((always_inline)) { return convert(d, x); }, dt, v);
  }

 private:
  template <class Dt, class V>
  static KVRS_INLINE hn::Vec<Dt> convert(Dt dt, V v) {
    const hn::Rebind<int32_t, Dt> di;
    const hn::Rebind<Kvr32f, Dt> df;
    return ToHalf<truncate>()(dt, hn::ConvertTo(df, hn::PromoteTo(di, v)));
  }
};

struct ToSingle {
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    return halfToSingle(dt, v);
  }
};

template <bool truncate>
struct HalfToInteger {
  Kvr32f scale;
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    return through<Kvr32f>(
        [this](auto d, auto x) __attribute__((always_inline)) { return this->convert(d, x); }, dt, v);
  }

 private:
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> convert(Dt dt, V v) const {
    const hn::Rebind<Kvr32f, Dt> df;
    const auto single = halfToSingle(df, v);
    const auto number = hn::IfThenElseZero(hn::Eq(single, single), single);
    const auto scaled = hn::Mul(number, hn::Set(df, scale));
    return toInteger<truncate>(dt, scaled, int16_t{-32768}, int16_t{32767});
  }
};

constexpr KvrStatus halfRounding(KvrRoundMode rndMode) {
  return check::require(rndMode != kvrRoundFinancial, kvrStatusBadRoundMode);
}

// Nearest for kvrRoundNear, cut off for every other mode.
template <template <bool> class Op, class S>
KvrStatus toHalf(const S* src, Kvr16f* dst, int len, KvrRoundMode rndMode) {
  const size_t n = static_cast<size_t>(len);
  if (rndMode == kvrRoundNear) {
    return underRounding(Rounding::nearest, [=] { return mapElements(Op<false>(), dst, n, src); });
  }
  return underRounding(Rounding::zero, [=] { return mapElements(Op<true>(), dst, n, src); });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsConvert_16f32f(const Kvr16f* src, Kvr32f* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(ToSingle(), dst, static_cast<size_t>(len), src);
}

KvrStatus kvrsConvert_32f16f(const Kvr32f* src, Kvr16f* dst, int len, KvrRoundMode rndMode) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len), halfRounding(rndMode));
  return toHalf<ToHalf>(src, dst, len, rndMode);
}

KvrStatus kvrsConvert_16s16f(const Kvr16s* src, Kvr16f* dst, int len, KvrRoundMode rndMode) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len), halfRounding(rndMode));
  return toHalf<IntegerToHalf>(src, dst, len, rndMode);
}

KvrStatus kvrsConvert_16f16s_Sfs(const Kvr16f* src, Kvr16s* dst, int len, KvrRoundMode rndMode,
                                 int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len), halfRounding(rndMode));
  // A half lies between 2^-24 and 2^16: beyond these scales nothing changes any more.
  const Kvr32f scale = powerOfTwo<Kvr32f>(-std::clamp(scaleFactor, -64, 64));
  const size_t n = static_cast<size_t>(len);
  if (rndMode == kvrRoundNear) {
    return underRounding(Rounding::nearest,
                         [=] { return mapElements(HalfToInteger<false>{scale}, dst, n, src); });
  }
  return mapElements(HalfToInteger<true>{scale}, dst, n, src);
}
