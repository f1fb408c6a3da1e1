// Bitwise logic on vectors.
// SPDX-License-Identifier: MIT
#include "kvrs/logic.h"

#include <type_traits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/scalar.h"
#include "vector/stand_in.h"

namespace kvrs {
namespace {

struct And {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b) const {
    return hn::And(a, b);
  }
};

struct Or {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b) const {
    return hn::Or(a, b);
  }
};

struct Xor {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b) const {
    return hn::Xor(a, b);
  }
};

struct Not {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a) const {
    return hn::Not(a);
  }
};

template <class Op, class T>
KvrStatus vectorVector(const T* src1, const T* src2, T* dst, int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  return mapElements(Op(), dst, static_cast<size_t>(len), src1, src2);
}

// A value of 0 leaves nothing to compute: And gives zeros, Or and Xor the source.
template <class Op, class T>
KvrStatus vectorScalar(const T* src, T val, T* dst, int len) {
  if (val == 0) return std::is_same_v<Op, And> ? zeroInstead(dst, len) : copyInstead(src, dst, len);
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(thenScalar(Op(), val), dst, static_cast<size_t>(len), src);
}

template <class T>
KvrStatus invert(const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(Not(), dst, static_cast<size_t>(len), src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsAnd_8u(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len) noexcept {
  return vectorVector<And>(src1, src2, dst, len);
}
KvrStatus kvrsAnd_16u(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len) noexcept {
  return vectorVector<And>(src1, src2, dst, len);
}
KvrStatus kvrsAnd_32u(const Kvr32u* src1, const Kvr32u* src2, Kvr32u* dst, int len) noexcept {
  return vectorVector<And>(src1, src2, dst, len);
}
KvrStatus kvrsAnd_8u_I(const Kvr8u* src, Kvr8u* srcDst, int len) noexcept {
  return vectorVector<And>(src, srcDst, srcDst, len);
}
KvrStatus kvrsAnd_16u_I(const Kvr16u* src, Kvr16u* srcDst, int len) noexcept {
  return vectorVector<And>(src, srcDst, srcDst, len);
}
KvrStatus kvrsAnd_32u_I(const Kvr32u* src, Kvr32u* srcDst, int len) noexcept {
  return vectorVector<And>(src, srcDst, srcDst, len);
}
KvrStatus kvrsOr_8u(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len) noexcept {
  return vectorVector<Or>(src1, src2, dst, len);
}
KvrStatus kvrsOr_16u(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len) noexcept {
  return vectorVector<Or>(src1, src2, dst, len);
}
KvrStatus kvrsOr_32u(const Kvr32u* src1, const Kvr32u* src2, Kvr32u* dst, int len) noexcept {
  return vectorVector<Or>(src1, src2, dst, len);
}
KvrStatus kvrsOr_8u_I(const Kvr8u* src, Kvr8u* srcDst, int len) noexcept {
  return vectorVector<Or>(src, srcDst, srcDst, len);
}
KvrStatus kvrsOr_16u_I(const Kvr16u* src, Kvr16u* srcDst, int len) noexcept {
  return vectorVector<Or>(src, srcDst, srcDst, len);
}
KvrStatus kvrsOr_32u_I(const Kvr32u* src, Kvr32u* srcDst, int len) noexcept {
  return vectorVector<Or>(src, srcDst, srcDst, len);
}
KvrStatus kvrsXor_8u(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len) noexcept {
  return vectorVector<Xor>(src1, src2, dst, len);
}
KvrStatus kvrsXor_16u(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len) noexcept {
  return vectorVector<Xor>(src1, src2, dst, len);
}
KvrStatus kvrsXor_32u(const Kvr32u* src1, const Kvr32u* src2, Kvr32u* dst, int len) noexcept {
  return vectorVector<Xor>(src1, src2, dst, len);
}
KvrStatus kvrsXor_8u_I(const Kvr8u* src, Kvr8u* srcDst, int len) noexcept {
  return vectorVector<Xor>(src, srcDst, srcDst, len);
}
KvrStatus kvrsXor_16u_I(const Kvr16u* src, Kvr16u* srcDst, int len) noexcept {
  return vectorVector<Xor>(src, srcDst, srcDst, len);
}
KvrStatus kvrsXor_32u_I(const Kvr32u* src, Kvr32u* srcDst, int len) noexcept {
  return vectorVector<Xor>(src, srcDst, srcDst, len);
}
KvrStatus kvrsAndC_8u(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len) noexcept {
  return vectorScalar<And>(src, val, dst, len);
}
KvrStatus kvrsAndC_16u(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len) noexcept {
  return vectorScalar<And>(src, val, dst, len);
}
KvrStatus kvrsAndC_32u(const Kvr32u* src, Kvr32u val, Kvr32u* dst, int len) noexcept {
  return vectorScalar<And>(src, val, dst, len);
}
KvrStatus kvrsAndC_8u_I(Kvr8u val, Kvr8u* srcDst, int len) noexcept {
  return vectorScalar<And>(srcDst, val, srcDst, len);
}
KvrStatus kvrsAndC_16u_I(Kvr16u val, Kvr16u* srcDst, int len) noexcept {
  return vectorScalar<And>(srcDst, val, srcDst, len);
}
KvrStatus kvrsAndC_32u_I(Kvr32u val, Kvr32u* srcDst, int len) noexcept {
  return vectorScalar<And>(srcDst, val, srcDst, len);
}
KvrStatus kvrsOrC_8u(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len) noexcept {
  return vectorScalar<Or>(src, val, dst, len);
}
KvrStatus kvrsOrC_16u(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len) noexcept {
  return vectorScalar<Or>(src, val, dst, len);
}
KvrStatus kvrsOrC_32u(const Kvr32u* src, Kvr32u val, Kvr32u* dst, int len) noexcept {
  return vectorScalar<Or>(src, val, dst, len);
}
KvrStatus kvrsOrC_8u_I(Kvr8u val, Kvr8u* srcDst, int len) noexcept {
  return vectorScalar<Or>(srcDst, val, srcDst, len);
}
KvrStatus kvrsOrC_16u_I(Kvr16u val, Kvr16u* srcDst, int len) noexcept {
  return vectorScalar<Or>(srcDst, val, srcDst, len);
}
KvrStatus kvrsOrC_32u_I(Kvr32u val, Kvr32u* srcDst, int len) noexcept {
  return vectorScalar<Or>(srcDst, val, srcDst, len);
}
KvrStatus kvrsXorC_8u(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len) noexcept {
  return vectorScalar<Xor>(src, val, dst, len);
}
KvrStatus kvrsXorC_16u(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len) noexcept {
  return vectorScalar<Xor>(src, val, dst, len);
}
KvrStatus kvrsXorC_32u(const Kvr32u* src, Kvr32u val, Kvr32u* dst, int len) noexcept {
  return vectorScalar<Xor>(src, val, dst, len);
}
KvrStatus kvrsXorC_8u_I(Kvr8u val, Kvr8u* srcDst, int len) noexcept {
  return vectorScalar<Xor>(srcDst, val, srcDst, len);
}
KvrStatus kvrsXorC_16u_I(Kvr16u val, Kvr16u* srcDst, int len) noexcept {
  return vectorScalar<Xor>(srcDst, val, srcDst, len);
}
KvrStatus kvrsXorC_32u_I(Kvr32u val, Kvr32u* srcDst, int len) noexcept {
  return vectorScalar<Xor>(srcDst, val, srcDst, len);
}
KvrStatus kvrsNot_8u(const Kvr8u* src, Kvr8u* dst, int len) noexcept {
  return invert(src, dst, len);
}
KvrStatus kvrsNot_16u(const Kvr16u* src, Kvr16u* dst, int len) noexcept {
  return invert(src, dst, len);
}
KvrStatus kvrsNot_32u(const Kvr32u* src, Kvr32u* dst, int len) noexcept {
  return invert(src, dst, len);
}
KvrStatus kvrsNot_8u_I(Kvr8u* srcDst, int len) noexcept {
  return invert(srcDst, srcDst, len);
}
KvrStatus kvrsNot_16u_I(Kvr16u* srcDst, int len) noexcept {
  return invert(srcDst, srcDst, len);
}
KvrStatus kvrsNot_32u_I(Kvr32u* srcDst, int len) noexcept {
  return invert(srcDst, srcDst, len);
}
