// Shifts by a constant.
// SPDX-License-Identifier: MIT
#include "kvrs/shift.h"

#include <type_traits>

#include "frame/check.h"
#include "frame/loop.h"
#include "vector/stand_in.h"

namespace kvrs {
namespace {

struct ShiftLeft {
  int count;
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a) const {
    return hn::ShiftLeftSame(a, count);
  }
};

struct ShiftRight {
  int count;
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a) const {
    return hn::ShiftRightSame(a, count);
  }
};

template <class T>
inline constexpr int kBits = 8 * sizeof(T);

template <class T>
KvrStatus shiftLeft(const T* src, int val, T* dst, int len) {
  if (val == 0) return copyInstead(src, dst, len);
  if (val >= kBits<T>) return zeroInstead(dst, len);
  KVRS_CHECK(pointers(src, dst), length(len), shiftCount(val));
  // The same on signed elements, which share the kernel of the unsigned ones.
  using Unsigned = std::make_unsigned_t<T>;
  return mapElements(ShiftLeft{val}, reinterpret_cast<Unsigned*>(dst), static_cast<size_t>(len),
                     reinterpret_cast<const Unsigned*>(src));
}

template <class T>
KvrStatus shiftRight(const T* src, int val, T* dst, int len) {
  if (val == 0) return copyInstead(src, dst, len);
  if (std::is_unsigned_v<T> && val >= kBits<T>) return zeroInstead(dst, len);
  KVRS_CHECK(pointers(src, dst), length(len), shiftCount(val));
  const int count = val < kBits<T> ? val : kBits<T> - 1;  // of signed elements: the sign in every bit
  return mapElements(ShiftRight{count}, dst, static_cast<size_t>(len), src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsLShiftC_8u(const Kvr8u* src, int val, Kvr8u* dst, int len) noexcept {
  return shiftLeft(src, val, dst, len);
}
KvrStatus kvrsLShiftC_16u(const Kvr16u* src, int val, Kvr16u* dst, int len) noexcept {
  return shiftLeft(src, val, dst, len);
}
KvrStatus kvrsLShiftC_16s(const Kvr16s* src, int val, Kvr16s* dst, int len) noexcept {
  return shiftLeft(src, val, dst, len);
}
KvrStatus kvrsLShiftC_32s(const Kvr32s* src, int val, Kvr32s* dst, int len) noexcept {
  return shiftLeft(src, val, dst, len);
}
KvrStatus kvrsLShiftC_8u_I(int val, Kvr8u* srcDst, int len) noexcept {
  return shiftLeft(srcDst, val, srcDst, len);
}
KvrStatus kvrsLShiftC_16u_I(int val, Kvr16u* srcDst, int len) noexcept {
  return shiftLeft(srcDst, val, srcDst, len);
}
KvrStatus kvrsLShiftC_16s_I(int val, Kvr16s* srcDst, int len) noexcept {
  return shiftLeft(srcDst, val, srcDst, len);
}
KvrStatus kvrsLShiftC_32s_I(int val, Kvr32s* srcDst, int len) noexcept {
  return shiftLeft(srcDst, val, srcDst, len);
}
KvrStatus kvrsRShiftC_8u(const Kvr8u* src, int val, Kvr8u* dst, int len) noexcept {
  return shiftRight(src, val, dst, len);
}
KvrStatus kvrsRShiftC_16u(const Kvr16u* src, int val, Kvr16u* dst, int len) noexcept {
  return shiftRight(src, val, dst, len);
}
KvrStatus kvrsRShiftC_16s(const Kvr16s* src, int val, Kvr16s* dst, int len) noexcept {
  return shiftRight(src, val, dst, len);
}
KvrStatus kvrsRShiftC_32s(const Kvr32s* src, int val, Kvr32s* dst, int len) noexcept {
  return shiftRight(src, val, dst, len);
}
KvrStatus kvrsRShiftC_8u_I(int val, Kvr8u* srcDst, int len) noexcept {
  return shiftRight(srcDst, val, srcDst, len);
}
KvrStatus kvrsRShiftC_16u_I(int val, Kvr16u* srcDst, int len) noexcept {
  return shiftRight(srcDst, val, srcDst, len);
}
KvrStatus kvrsRShiftC_16s_I(int val, Kvr16s* srcDst, int len) noexcept {
  return shiftRight(srcDst, val, srcDst, len);
}
KvrStatus kvrsRShiftC_32s_I(int val, Kvr32s* srcDst, int len) noexcept {
  return shiftRight(srcDst, val, srcDst, len);
}
