// Floating-point arithmetic on operands of two types.
// SPDX-License-Identifier: MIT
#include "kvrs/mixed.h"

#include <type_traits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/widen.h"

namespace kvrs {
namespace {

// As many 32-bit integers as D has lanes.
template <class D, class V>
KVRS_INLINE hn::Vec<hn::RebindToSigned<D>> widened(D, V v) {
  return hn::PromoteTo(hn::RebindToSigned<D>(), v);
}

// b + a, or b - a, in 32-bit integers. Without an instruction that extends a sign, as sums of neighbours times 1 or -1,
// whose factors are made in a register: position-independent code has to find its own address before it loads any.
template <bool subtracted, class D, class V>
KVRS_INLINE hn::Vec<hn::RebindToSigned<D>> exactSum(D d, V a, V b) {
  if constexpr (kBlends) {
    return subtracted ? hn::Sub(widened(d, b), widened(d, a)) : hn::Add(widened(d, b), widened(d, a));
  } else {
    const Lanes<int16_t, 8> d16;
    using Lane = std::conditional_t<subtracted, uint32_t, uint16_t>;
    const hn::Repartition<Lane, Lanes<int16_t, 8>> du;
    const auto factors = hn::ShiftRight<15>(inRegister(hn::Set(du, static_cast<Lane>(-1))));
    const auto pairs = hn::InterleaveLower(d16, resized<8>(a), resized<8>(b));
    const auto sums = mulAddNeighbours(Lanes<int32_t, 4>(), pairs, hn::BitCast(d16, factors));
    return resized<hn::MaxLanes(D())>(sums);
  }
}

// Sums and differences of 16-bit integers are exact in both types; in integers one conversion is enough.
struct Add {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V a, V b) const {
    return hn::ConvertTo(d, exactSum<false>(d, a, b));
  }
};

struct SubtractFirst {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V a, V b) const {
    return hn::ConvertTo(d, exactSum<true>(d, a, b));
  }
};

// A product of a zero and a negative number is -0.
struct Mul {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V a, V b) const {
    return hn::Mul(hn::ConvertTo(d, widened(d, a)), hn::ConvertTo(d, widened(d, b)));
  }
};

// A real vector of half the lanes times a vector of pairs.
struct MulRealComplex {
  template <class D, class R, class V>
  KVRS_INLINE V operator()(D d, R real, V pairs) const {
    const hn::RepartitionToWide<hn::RebindToUnsigned<D>> wide;
    const auto even = hn::PromoteTo(wide, hn::BitCast(hn::Rebind<uint32_t, hn::DFromV<R>>(), real));
    return hn::Mul(hn::DupEven(hn::BitCast(d, even)), pairs);
  }
};

template <class Op>
KvrStatus combine(const Kvr16s* src1, const Kvr16s* src2, Kvr32f* dst, int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  return mapElements(Op(), dst, static_cast<size_t>(len), src1, src2);
}

KvrStatus multiply(const Kvr32f* src1, const Kvr32fc* src2, Kvr32fc* dst, int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  return mapElements(MulRealComplex(), asPairs<Kvr32f>(dst), static_cast<size_t>(len), src1,
                     asPairs<Kvr32f>(src2));
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsAdd_16s32f(const Kvr16s* src1, const Kvr16s* src2, Kvr32f* dst, int len) noexcept {
  return combine<Add>(src1, src2, dst, len);
}
KvrStatus kvrsSub_16s32f(const Kvr16s* src1, const Kvr16s* src2, Kvr32f* dst, int len) noexcept {
  return combine<SubtractFirst>(src1, src2, dst, len);
}
KvrStatus kvrsMul_16s32f(const Kvr16s* src1, const Kvr16s* src2, Kvr32f* dst, int len) noexcept {
  return combine<Mul>(src1, src2, dst, len);
}
KvrStatus kvrsMul_32f32fc(const Kvr32f* src1, const Kvr32fc* src2, Kvr32fc* dst, int len) noexcept {
  return multiply(src1, src2, dst, len);
}
KvrStatus kvrsMul_32f32fc_I(const Kvr32f* src, Kvr32fc* srcDst, int len) noexcept {
  return multiply(src, srcDst, srcDst, len);
}
