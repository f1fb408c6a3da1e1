// Scaled arithmetic whose products are floating: by a single-precision scalar into 16 bits, and by a scalar
// in 64 bits with extended precision.
// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/saturating.h"
#include "kvrs/arith_scaled.h"

namespace kvrs {
namespace {

// Rounded in the current mode.
struct TimesTo16s {
  float val;
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V a) const {
    return hn::DemoteTo(d, hn::NearestInt(hn::Mul(a, hn::Set(hn::DFromV<V>(), val))));
  }
};

// A number by 0: the extreme of its sign, or 0.
struct Signs {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    return saturatedBySign(d, a);
  }
};

constexpr int bounded(int value, int lowest, int highest) {
  return value < lowest ? lowest : value > highest ? highest : value;
}

// 2^(-scaleFactor). Beyond these bounds a scale factor is as good as they are: an integer of 64 bits by any
// double but 0 has left the range of 64 bits for good, or has come down to 0.
long double extendedScale(int scaleFactor) {
  return ldexpl(1.0L, -bounded(scaleFactor, -1200, 1200));
}

// Rounded to nearest, ties to even: the scope's doing.
Kvr64s toInteger(long double x) {
  constexpr auto lowest = std::numeric_limits<Kvr64s>::min(), highest = std::numeric_limits<Kvr64s>::max();
  // 2^63 - 0.5 is a tie, and goes to 2^63.
  if (x >= 0x1p63L - 0.5L) return highest;
  if (x <= -0x1p63L) return lowest;
  return llrintl(x);
}

// `operation` runs in extended precision, in the mode of the scope around the call. A function of its own,
// since the compiler would be free to move arithmetic out of the scope.
template <class Operation>
[[gnu::noinline]] void mapExtended(const Operation& operation, Kvr64s* srcDst, int len) {
  // The unit loads and stores integers at any address; a copy in between would cost 32-bit code a detour.
  using Anywhere = Kvr64s __attribute__((aligned(1)));
  Anywhere* at = srcDst;
  for (int i = 0; i < len; ++i) at[i] = toInteger(operation(static_cast<long double>(at[i])));
}

// A negative length is no error.
constexpr KvrStatus lengthNotZero(int len) {
  return check::require(len != 0, kvrStatusBadLength);
}

template <class T>
KvrStatus timesExtended(T val, Kvr64s* srcDst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(srcDst), lengthNotZero(len));
  const ExtendedRoundingScope nearest(Rounding::nearest);
  const long double scaled = static_cast<long double>(val) * extendedScale(scaleFactor);
  mapExtended([=](long double x) { return x * scaled; }, srcDst, len);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMulC_Low_32f16s(const Kvr32f* src, Kvr32f val, Kvr16s* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(TimesTo16s{val}, dst, static_cast<size_t>(len), src);
}
KvrStatus kvrsMulC_32f16s_Sfs(const Kvr32f* src, Kvr32f val, Kvr16s* dst, int len, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len));
  const VectorRoundingScope nearest(Rounding::nearest);
  // The lower limit is a subnormal number, and exact.
  const float scale = ldexpf(1.0f, -bounded(scaleFactor, -126, 127));
  return mapElements(TimesTo16s{val * scale}, dst, static_cast<size_t>(len), src);
}
KvrStatus kvrsMulC_64s_ISfs(Kvr64s val, Kvr64s* srcDst, int len, int scaleFactor) noexcept {
  return timesExtended(val, srcDst, len, scaleFactor);
}
KvrStatus kvrsMulC_64f64s_ISfs(Kvr64f val, Kvr64s* srcDst, int len, int scaleFactor) noexcept {
  return timesExtended(val, srcDst, len, scaleFactor);
}
KvrStatus kvrsDivC_64s_ISfs(Kvr64s val, Kvr64s* srcDst, int len, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst), lengthNotZero(len));
  if (val == 0) {
    if (len > 0) mapElements(Signs(), srcDst, static_cast<size_t>(len), static_cast<const Kvr64s*>(srcDst));
    return kvrStatusDivByZeroWarn;
  }
  const ExtendedRoundingScope nearest(Rounding::nearest);
  const long double scale = extendedScale(scaleFactor), divisor = static_cast<long double>(val);
  mapExtended([=](long double x) { return x * scale / divisor; }, srcDst, len);
  return kvrStatusOk;
}
