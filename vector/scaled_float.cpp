// Scaled arithmetic whose products are floating: by a single-precision scalar into 16 bits, and by a scalar
// in 64 bits with extended precision.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/saturating.h"
#include "frame/scale.h"
#include "frame/to_integer.h"
#include "frame/unaligned.h"
#include "kvrs/arith_scaled.h"
#include "kvrs/fill.h"

namespace kvrs {
namespace {

// Rounded in the current mode. The upper bound is that of the bits read as integers, the order of which is that of
// the numbers but for negative ones, and takes positive NaN for the largest number. What lies below the range of 32
// bits, and negative NaN, is converted to the lowest integer.
struct TimesTo16s {
  float val;

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V a) const {
    return hn::DemoteTo(d, integers(a));
  }
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, Both<V> a) const {
    return saturatedToHalf(d, integers(a.first), integers(a.second));
  }

  template <class V>
  KVRS_INLINE auto integers(V a) const {
    const hn::DFromV<V> df;
    const hn::RebindToSigned<hn::DFromV<V>> di;
    const auto product = hn::BitCast(di, hn::Mul(a, hn::Set(df, val)));
    const auto highest = hn::BitCast(di, hn::Set(df, 32767.0f));
    return nearestInt32(di, hn::BitCast(df, hn::Min(product, highest)));
  }
};

// By two vectors of floats a block. By NaN, all products are that NaN: where an element is one of the other sign, the
// compiler would choose between the two.
KvrStatus mapTo16s(float val, const Kvr32f* src, Kvr16s* dst, int len) {
  if (std::isnan(val)) return kvrsSet_16s(std::signbit(val) ? -32768 : 32767, dst, len);
  return mapElements(TimesTo16s{val}, dst, static_cast<size_t>(len),
                     reinterpret_cast<const Wide<Kvr32f>*>(src));
}

// A number by 0: the extreme of its sign, or 0.
struct Signs {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    return saturatedBySign(d, a);
  }
};

// a * b modulo 2^64.
template <class D, class V>
KVRS_INLINE V mulLow(D d, V a, V b) {
  if constexpr (kInt64Conversions) {
    return hn::Mul(a, b);
  } else {
    const hn::RebindToUnsigned<D> du;
    const hn::Repartition<uint32_t, D> halves;
    const auto x = hn::BitCast(du, a), y = hn::BitCast(du, b);
    const auto product = [&](auto p, auto q) {
      return hn::MulEven(hn::BitCast(halves, p), hn::BitCast(halves, q));
    };
    const auto crossed = hn::Add(product(hn::ShiftRight<32>(x), y), product(x, hn::ShiftRight<32>(y)));
    return hn::BitCast(d, hn::Add(product(x, y), hn::ShiftLeft<32>(crossed)));
  }
}

// Products that are integers, so that nothing is rounded: those of the elements from `lowest` to `highest` fit into 64
// bits.
class IntegerTimes {
 public:
  // val * 2^shift
  IntegerTimes(Kvr64s val, int shift) : negative_(val < 0) {
    const uint64_t magnitude = negative_ ? 0 - static_cast<uint64_t>(val) : static_cast<uint64_t>(val);
    if (magnitude == 0) return;
    const bool fits = shift < 64 && magnitude <= UINT64_MAX >> shift;
    const uint64_t m = fits ? magnitude << shift : 0;
    constexpr uint64_t beyond = uint64_t{1} << 63;
    const uint64_t toMin = fits ? beyond / m : 0, toMax = fits ? (beyond - 1) / m : 0;
    lowest_ = static_cast<Kvr64s>(0 - (negative_ ? toMax : toMin));
    const uint64_t highest = negative_ ? toMin : toMax;
    highest_ = static_cast<Kvr64s>(highest < beyond ? highest : beyond - 1);
    factor_ = static_cast<Kvr64s>(negative_ ? 0 - m : m);
  }

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    const V least = hn::Set(d, std::numeric_limits<Kvr64s>::min());
    const V most = hn::Set(d, std::numeric_limits<Kvr64s>::max());
    const V r = mulLow(d, a, hn::Set(d, factor_));
    const V below = hn::IfThenElse(hn::Gt(hn::Set(d, lowest_), a), negative_ ? most : least, r);
    return hn::IfThenElse(hn::Gt(a, hn::Set(d, highest_)), negative_ ? least : most, below);
  }

 private:
  Kvr64s factor_ = 0;
  Kvr64s lowest_ = std::numeric_limits<Kvr64s>::min(), highest_ = std::numeric_limits<Kvr64s>::max();
  bool negative_;
};

// 2^(-scaleFactor). Beyond these bounds a scale factor is as good as they are: an integer of 64 bits by any
// double but 0 has left the range of 64 bits for good, or has come down to 0.
long double extendedScale(int scaleFactor) {
  return ldexpl(1.0L, -std::clamp(scaleFactor, -1200, 1200));
}

// Rounded in the current mode, which has to be to nearest.
Kvr64s toInteger(long double x) {
  constexpr auto lowest = std::numeric_limits<Kvr64s>::min(), highest = std::numeric_limits<Kvr64s>::max();
  // 2^63 - 0.5 is a tie, and goes to 2^63.
  if (x >= 0x1p63L - 0.5L) return highest;
  if (x <= -0x1p63L) return lowest;
  return llrintl(x);
}

// `operation` runs in extended precision.
template <class Operation>
void mapExtended(const Operation& operation, Kvr64s* srcDst, int len) {
  for (int i = 0; i < len; ++i) {
    Kvr64s* at = srcDst + i;
    unaligned::put(toInteger(operation(static_cast<long double>(unaligned::get(at)))), at);
  }
}

// A negative length is no error.
template <class T>
constexpr KvrStatus lengthNotZero(int len, const T* srcDst) {
  return len < 0 ? kvrStatusOk : check::length(len, srcDst);
}

template <class T>
KvrStatus timesExtended(T val, Kvr64s* srcDst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(srcDst), lengthNotZero(len, srcDst));
  underExtendedRounding(Rounding::nearest, [=] {
    const long double scaled = static_cast<long double>(val) * extendedScale(scaleFactor);
    mapExtended([=](long double x) { return x * scaled; }, srcDst, len);
  });
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMulC_Low_32f16s(const Kvr32f* src, Kvr32f val, Kvr16s* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapTo16s(val, src, dst, len);
}
KvrStatus kvrsMulC_32f16s_Sfs(const Kvr32f* src, Kvr32f val, Kvr16s* dst, int len, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  const float scale = scaleOfAny<float>(std::clamp(scaleFactor, -126, 127));
  return underRounding(Rounding::nearest, [=] { return mapTo16s(val * scale, src, dst, len); });
}
KvrStatus kvrsMulC_64s_ISfs(Kvr64s val, Kvr64s* srcDst, int len, int scaleFactor) noexcept {
  if (scaleFactor <= 0 && srcDst != nullptr && len > 0) {
    const IntegerTimes op(val, scaleFactor > -64 ? -scaleFactor : 64);
    return mapElements(op, srcDst, static_cast<size_t>(len), static_cast<const Kvr64s*>(srcDst));
  }
  return timesExtended(val, srcDst, len, scaleFactor);
}
KvrStatus kvrsMulC_64f64s_ISfs(Kvr64f val, Kvr64s* srcDst, int len, int scaleFactor) noexcept {
  return timesExtended(val, srcDst, len, scaleFactor);
}
KvrStatus kvrsDivC_64s_ISfs(Kvr64s val, Kvr64s* srcDst, int len, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst), lengthNotZero(len, srcDst));
  if (val == 0) {
    if (len > 0) mapElements(Signs(), srcDst, static_cast<size_t>(len), static_cast<const Kvr64s*>(srcDst));
    return kvrStatusDivByZeroWarn;
  }
  underExtendedRounding(Rounding::nearest, [=] {
    const long double scale = extendedScale(scaleFactor), divisor = static_cast<long double>(val);
    mapExtended([=](long double x) { return x * scale / divisor; }, srcDst, len);
  });
  return kvrStatusOk;
}
