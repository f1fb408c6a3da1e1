// Integers and floats to floats.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <type_traits>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/packed24.h"
#include "frame/rounding.h"
#include "frame/scale.h"
#include "frame/unaligned.h"
#include "frame/widen.h"
#include "kvrs/convert.h"

namespace kvrs {
namespace {

// Bytes as 32-bit integers, by one shuffle that moves each to the bottom of its lane, or to the top where the sign has to
// be spread below it.
template <class Di, class V>
KVRS_INLINE hn::Vec<Di> widenedBytes(Di, V v) {
  constexpr uint8_t z = 0x80;
  alignas(16) static constexpr uint8_t kTop[16] = {z, z, z, 0, z, z, z, 1, z, z, z, 2, z, z, z, 3};
  alignas(16) static constexpr uint8_t kLow[16] = {0, z, z, z, 1, z, z, z, 2, z, z, z, 3, z, z, z};
  const Lanes<uint8_t, 16> d8;
  const auto bytes = hn::BitCast(d8, resized<16>(v));
  constexpr bool isSigned = std::is_signed_v<hn::TFromV<V>>;
  const auto wide = hn::TableLookupBytesOr0(bytes, hn::Load(d8, isSigned ? kTop : kLow));
  const auto lanes = resized<hn::MaxLanes(Di())>(hn::BitCast(Lanes<int32_t, 4>(), wide));
  if constexpr (isSigned) {
    return hn::ShiftRight<24>(lanes);
  } else {
    return lanes;
  }
}

// A vector as floats of Dt's lanes. What is not exact is rounded in the current mode.
template <class Dt, class V>
KVRS_INLINE hn::Vec<Dt> asFloat(Dt dt, V v) {
  using F = hn::TFromD<Dt>;
  using S = hn::TFromV<V>;
  const hn::Rebind<int32_t, Dt> di;
  if constexpr (sizeof(S) == 1 && !kWidensBytes) {
    return asFloat(dt, widenedBytes(di, v));
  } else if constexpr (sizeof(S) < 4) {
    return asFloat(dt, hn::PromoteTo(di, v));
  } else if constexpr (sizeof(S) == sizeof(F)) {
    const hn::Vec<Dt> converted = hn::ConvertTo(dt, v);
    // Made of two halves, a 0 has the sign of their sum: -0 where the processor rounds down.
    if constexpr (sizeof(S) == 8 && !kInt64Conversions) return hn::CopySign(converted, hn::BitCast(dt, v));
    return converted;
  } else if constexpr (sizeof(S) < sizeof(F)) {
    return hn::PromoteTo(dt, v);
  } else {
    return hn::DemoteTo(dt, v);
  }
}

struct ToFloat {
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    return asFloat(dt, v);
  }
};

template <class F>
struct ToScaledFloat {
  F scale;
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V v) const {
    return hn::Mul(asFloat(dt, v), hn::Set(dt, scale));
  }
};

template <class D, class S>
KvrStatus convert(const S* src, D* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(ToFloat(), dst, static_cast<size_t>(len), src);
}

template <class P>
KvrStatus convertPacked(const Kvr8u* src, Kvr32f* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(ToFloat(), dst, static_cast<size_t>(len), asPacked<P>(src));
}

// 2^(-scaleFactor), within limits that keep it a normal number.
template <class D>
D limitedScale(int scaleFactor) {
  return powerOfTwo<D>(
      -(sizeof(D) == 4 ? std::clamp(scaleFactor, -96, 126) : std::clamp(scaleFactor, -1008, 1022)));
}

template <class D, class S>
KvrStatus convertScaled(const S* src, D* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  if (scaleFactor == 0) return mapElements(ToFloat(), dst, static_cast<size_t>(len), src);
  return mapElements(ToScaledFloat<D>{limitedScale<D>(scaleFactor)}, dst, static_cast<size_t>(len), src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsConvert_8u32f(const Kvr8u* src, Kvr32f* dst, int len) noexcept {
  return convert(src, dst, len);
}
KvrStatus kvrsConvert_8s32f(const Kvr8s* src, Kvr32f* dst, int len) noexcept {
  return convert(src, dst, len);
}
KvrStatus kvrsConvert_16u32f(const Kvr16u* src, Kvr32f* dst, int len) noexcept {
  return convert(src, dst, len);
}
KvrStatus kvrsConvert_16s32f(const Kvr16s* src, Kvr32f* dst, int len) noexcept {
  return convert(src, dst, len);
}
KvrStatus kvrsConvert_32s32f(const Kvr32s* src, Kvr32f* dst, int len) noexcept {
  return convert(src, dst, len);
}
KvrStatus kvrsConvert_32s64f(const Kvr32s* src, Kvr64f* dst, int len) noexcept {
  return convert(src, dst, len);
}
KvrStatus kvrsConvert_64s64f(const Kvr64s* src, Kvr64f* dst, int len) noexcept {
  if constexpr (sizeof(void*) == 4) {
    // In 32 bits the x87 unit converts in two instructions what takes the vector unit six. It has a rounding mode of
    // its own.
    KVRS_CHECK(pointers(src, dst), length(len, src, dst));
    underExtendedRounding(currentRounding(), [=] {
      for (int i = 0; i < len; ++i) unaligned::put(static_cast<Kvr64f>(unaligned::get(src + i)), dst + i);
    });
    return kvrStatusOk;
  }
  return convert(src, dst, len);
}
KvrStatus kvrsConvert_32f64f(const Kvr32f* src, Kvr64f* dst, int len) noexcept {
  return convert(src, dst, len);
}
KvrStatus kvrsConvert_64f32f(const Kvr64f* src, Kvr32f* dst, int len) noexcept {
  return convert(src, dst, len);
}
KvrStatus kvrsConvert_24s32f(const Kvr8u* src, Kvr32f* dst, int len) noexcept {
  return convertPacked<Packed24s>(src, dst, len);
}
KvrStatus kvrsConvert_24u32f(const Kvr8u* src, Kvr32f* dst, int len) noexcept {
  return convertPacked<Packed24u>(src, dst, len);
}

KvrStatus kvrsConvert_16s32f_Sfs(const Kvr16s* src, Kvr32f* dst, int len, int scaleFactor) noexcept {
  return convertScaled(src, dst, len, scaleFactor);
}
KvrStatus kvrsConvert_32s32f_Sfs(const Kvr32s* src, Kvr32f* dst, int len, int scaleFactor) noexcept {
  return convertScaled(src, dst, len, scaleFactor);
}
KvrStatus kvrsConvert_16s64f_Sfs(const Kvr16s* src, Kvr64f* dst, int len, int scaleFactor) noexcept {
  return convertScaled(src, dst, len, scaleFactor);
}
KvrStatus kvrsConvert_32s64f_Sfs(const Kvr32s* src, Kvr64f* dst, int len, int scaleFactor) noexcept {
  return convertScaled(src, dst, len, scaleFactor);
}
