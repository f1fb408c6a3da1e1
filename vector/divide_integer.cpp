// Integer division of vectors.
// SPDX-License-Identifier: MIT
#include "kvrs/divide.h"
#include "vector/divide_complex-inl.h"
#include "vector/divide_integer-inl.h"

namespace kvrs {
namespace {

constexpr Division k8u{.signBelow = -15, .zeroAbove = 8, .threadedFrom = threadedLength(1024)};
constexpr Division k16u{.signBelow = -31, .zeroAbove = 16, .threadedFrom = kNeverThreaded};
// 15 on purpose, where kvrsDiv_Round_16s_Sfs has 16.
constexpr Division k16s{.signBelow = -30, .zeroAbove = 15, .threadedFrom = threadedLength(1024)};
constexpr Division k16sc{.signBelow = -32, .zeroAbove = 32, .threadedFrom = threadedLength(256)};
constexpr Division k32s{.signBelow = -62, .zeroAbove = 32, .threadedFrom = threadedLength(1024)};
constexpr Division k32s16s{.signBelow = -29, .zeroAbove = 31, .threadedFrom = threadedLength(1024)};

template <class Divisor, class Dividend, class D>
KvrStatus divide(const Division& rule, const Divisor* src1, const Dividend* src2, D* dst, int len,
                 int scaleFactor) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  const auto asItIs = [](auto op) { return op; };
  return divideIntegers<QuotientRounding::byMode>(rule, scaleFactor, asItIs, dst, len, src1, src2);
}

KvrStatus divideComplex(const Kvr16sc* src1, const Kvr16sc* src2, Kvr16sc* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  if (scaleFactor > k16sc.zeroAbove) {
    return divideVectors<Kvr16s>(k16sc, ComplexZeroQuotient(), dst, len, src1);
  }
  const ComplexQuotient op(powerOfTwo<double>(scaleFactor < k16sc.signBelow ? -64 : scaleFactor));
  return underRounding(Rounding::nearest,
                       [=] { return divideVectors<double>(k16sc, op, dst, len, src1, src2); });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsDiv_8u_Sfs(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len,
                         int scaleFactor) noexcept {
  return divide(k8u, src1, src2, dst, len, scaleFactor);
}
KvrStatus kvrsDiv_8u_ISfs(const Kvr8u* src, Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return divide(k8u, src, srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsDiv_16u_Sfs(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len,
                          int scaleFactor) noexcept {
  return divide(k16u, src1, src2, dst, len, scaleFactor);
}
KvrStatus kvrsDiv_16u_ISfs(const Kvr16u* src, Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  return divide(k16u, src, srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsDiv_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                          int scaleFactor) noexcept {
  return divide(k16s, src1, src2, dst, len, scaleFactor);
}
KvrStatus kvrsDiv_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return divide(k16s, src, srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsDiv_16sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, Kvr16sc* dst, int len,
                           int scaleFactor) noexcept {
  return divideComplex(src1, src2, dst, len, scaleFactor);
}
KvrStatus kvrsDiv_16sc_ISfs(const Kvr16sc* src, Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return divideComplex(src, srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsDiv_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* dst, int len,
                          int scaleFactor) noexcept {
  return divide(k32s, src1, src2, dst, len, scaleFactor);
}
KvrStatus kvrsDiv_32s_ISfs(const Kvr32s* src, Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return divide(k32s, src, srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsDiv_32s16s_Sfs(const Kvr16s* src1, const Kvr32s* src2, Kvr16s* dst, int len,
                             int scaleFactor) noexcept {
  return divide(k32s16s, src1, src2, dst, len, scaleFactor);
}
