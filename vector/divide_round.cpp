// Integer division with a choice of rounding. All quotients are exact before they are rounded, whatever the
// path.
// SPDX-License-Identifier: MIT
#include "kvrs/divide.h"
#include "vector/divide_integer-inl.h"

namespace kvrs {
namespace {

constexpr Division k8u{
    .signBelow = -15, .zeroAbove = 8, .threadedFrom = threadedLength(512), .mostThreads = kAllThreads};
constexpr Division k16u{
    .signBelow = -31, .zeroAbove = 16, .threadedFrom = threadedLength(1024), .mostThreads = kAllThreads};
constexpr Division k16s{
    .signBelow = -30, .zeroAbove = 16, .threadedFrom = threadedLength(1024), .mostThreads = kAllThreads};

template <class T>
KvrStatus divide(const Division& rule, const T* src1, const T* src2, T* dst, int len, KvrRoundMode rndMode,
                 int scaleFactor) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len), roundMode(rndMode));
  return underRounding(Rounding::nearest, [=] {
    const auto asItIs = [](auto op) { return op; };
    switch (rndMode) {
      case kvrRoundZero:
        return divideIntegers<QuotientRounding::zero>(rule, scaleFactor, asItIs, dst, len, src1, src2);
      case kvrRoundNear:
        return divideIntegers<QuotientRounding::byMode>(rule, scaleFactor, asItIs, dst, len, src1, src2);
      default:
        return divideIntegers<QuotientRounding::away>(rule, scaleFactor, asItIs, dst, len, src1, src2);
    }
  });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsDiv_Round_8u_Sfs(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len,
                               KvrRoundMode rndMode, int scaleFactor) noexcept {
  return divide(k8u, src1, src2, dst, len, rndMode, scaleFactor);
}
KvrStatus kvrsDiv_Round_8u_ISfs(const Kvr8u* src, Kvr8u* srcDst, int len, KvrRoundMode rndMode,
                                int scaleFactor) noexcept {
  return divide(k8u, src, srcDst, srcDst, len, rndMode, scaleFactor);
}
KvrStatus kvrsDiv_Round_16u_Sfs(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len,
                                KvrRoundMode rndMode, int scaleFactor) noexcept {
  return divide(k16u, src1, src2, dst, len, rndMode, scaleFactor);
}
KvrStatus kvrsDiv_Round_16u_ISfs(const Kvr16u* src, Kvr16u* srcDst, int len, KvrRoundMode rndMode,
                                 int scaleFactor) noexcept {
  return divide(k16u, src, srcDst, srcDst, len, rndMode, scaleFactor);
}
KvrStatus kvrsDiv_Round_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                                KvrRoundMode rndMode, int scaleFactor) noexcept {
  return divide(k16s, src1, src2, dst, len, rndMode, scaleFactor);
}
KvrStatus kvrsDiv_Round_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len, KvrRoundMode rndMode,
                                 int scaleFactor) noexcept {
  return divide(k16s, src, srcDst, srcDst, len, rndMode, scaleFactor);
}
