// Inner products in all combinations of types.
// SPDX-License-Identifier: MIT
#include "kvrs/dot_product.h"

#include "frame/check.h"
#include "frame/complex.h"
#include "frame/reduce.h"
#include "frame/scale.h"
#include "stats/integer_sums-inl.h"
#include "stats/scaled_result.h"
#include "stats/widened-inl.h"

namespace kvrs {
namespace {

// 16-bit elements: sums of two products in 32 bits, exact, made unsigned by adding what the smallest of them lacks, and
// added up in 64 bits. Two products of -32,768 by itself are 2^31, which the lane holds as -2^31: with this bias it comes
// out right.
inline constexpr uint32_t kPairBias = 0x7FFF0000, kSignBias = 0x80000000;

template <uint32_t kBias, class V32>
KVRS_INLINE void addBiased(WideSum& sum, V32 products) {
  const hn::DFromV<V32> d;
  sum.add(hn::Add(products, hn::Set(d, static_cast<int32_t>(kBias))));
}

// Less the bias of every lane of so many blocks.
KVRS_INLINE int64_t unbiased(const WideSum& sum, size_t blocks, uint32_t bias) {
  return static_cast<int64_t>(sum.total() - uint64_t{blocks} * kLanes<Kvr32s> * bias);
}
KVRS_INLINE size_t blocksOf(size_t len, size_t elements) {
  return len / elements + (len % elements != 0 ? 1 : 0);
}

struct WordsDot {
  template <class V>
  KVRS_INLINE void operator()(WideSum& sum, V a, V b) const {
    addBiased<kPairBias>(sum, mulAddNeighbours(DoubleWords(), a, b));
  }
  KVRS_INLINE void join(WideSum& a, const WideSum& b) const { a.add(b); }
};

[[gnu::noinline]] int64_t dot(const Kvr16s* src1, const Kvr16s* src2, size_t len) {
  return unbiased(reduce<Kvr16s, 2>(WordsDot(), WideSum(), len, src1, src2), blocksOf(len, kLanes<Kvr16s>),
                  kPairBias);
}

struct WideParts {
  WideSum re, im;
};
struct WideComplexDot {
  KVRS_INLINE void join(WideParts& a, const WideParts& b) const {
    a.re.add(b.re);
    a.im.add(b.im);
  }
};

struct ComplexWordsDot : WideComplexDot {
  template <class V>
  KVRS_INLINE void operator()(WideParts& sum, V a, V b) const {
    const DoubleWords d;
    const hn::DFromV<V> d16;
    // ar * br + ai * (-bi - 1) + ai: the negative of bi itself need not fit.
    const V conjugate = hn::Xor(b, hn::BitCast(d16, hn::Set(d, static_cast<int32_t>(0xFFFF0000))));
    const auto ai = hn::ShiftRight<16>(hn::BitCast(d, a));
    addBiased<kSignBias>(sum.re, hn::Add(mulAddNeighbours(d, a, conjugate), ai));
    addBiased<kPairBias>(sum.im, mulAddNeighbours(d, a, hn::Reverse2(d16, b)));
  }
};

[[gnu::noinline]] Kvr64sc dot(const Kvr16sc* src1, const Kvr16sc* src2, size_t len) {
  const WideParts sum =
      reduce<Kvr16s, 1>(ComplexWordsDot(), WideParts(), len, asPairs<Kvr16s>(src1), asPairs<Kvr16s>(src2));
  const size_t blocks = blocksOf(len, kLanes<Kvr32s>);
  return {unbiased(sum.re, blocks, kSignBias), unbiased(sum.im, blocks, kPairBias)};
}

struct RealComplexWordsDot : WideComplexDot {
  template <class Va, class V>
  KVRS_INLINE void operator()(WideParts& sum, Va a, V b) const {
    const DoubleWords d;
    const hn::RebindToUnsigned<DoubleWords> du;
    const hn::DFromV<V> d16;
    const auto low = hn::PromoteTo(du, hn::BitCast(hn::RebindToUnsigned<hn::DFromV<Va>>(), a));
    addBiased<kSignBias>(sum.re, mulAddNeighbours(d, hn::BitCast(d16, low), b));
    addBiased<kSignBias>(sum.im, mulAddNeighbours(d, hn::BitCast(d16, hn::ShiftLeft<16>(low)), b));
  }
};

[[gnu::noinline]] Kvr64sc dot(const Kvr16s* src1, const Kvr16sc* src2, size_t len) {
  const WideParts sum =
      reduce<Kvr16s, 1>(RealComplexWordsDot(), WideParts(), len, src1, asPairs<Kvr16s>(src2));
  const size_t blocks = blocksOf(len, kLanes<Kvr32s>);
  return {unbiased(sum.re, blocks, kSignBias), unbiased(sum.im, blocks, kSignBias)};
}

// Floating-point accumulators. Fused sums of products are for those of open order.
template <bool kFused, class V>
KVRS_INLINE V addProduct(V sum, V a, V b) {
  return kFused ? hn::MulAdd(a, b, sum) : hn::Add(sum, hn::Mul(a, b));
}

template <bool kFused>
struct RealDot {
  template <class V, class X, class Y>
  KVRS_INLINE void operator()(V& sum, X a, Y b) const {
    sum = addProduct<kFused>(sum, widened<V>(a), widened<V>(b));
  }
  template <class V>
  KVRS_INLINE void join(V& a, V b) const {
    a = hn::Add(a, b);
  }
};

template <class V>
struct TwoSums {
  V first, second;
};
template <bool kFused>
struct ComplexDot {
  // Pairs: (ar * br, ai * bi) and (ar * bi, ai * br).
  template <class V, class X>
  KVRS_INLINE void operator()(TwoSums<V>& sum, X a, X b) const {
    const V x = widened<V>(a), y = widened<V>(b);
    sum.first = addProduct<kFused>(sum.first, x, y);
    sum.second = addProduct<kFused>(sum.second, x, swapParts(hn::DFromV<V>(), y));
  }
  // A real vector and the parts of a complex one.
  template <class V, class X, class Y>
  KVRS_INLINE void operator()(TwoSums<V>& sum, X a, Complex<Y> b) const {
    const V x = widened<V>(a);
    sum.first = addProduct<kFused>(sum.first, x, widened<V>(b.re));
    sum.second = addProduct<kFused>(sum.second, x, widened<V>(b.im));
  }
  template <class V>
  KVRS_INLINE void join(TwoSums<V>& a, TwoSums<V> b) const {
    a.first = hn::Add(a.first, b.first);
    a.second = hn::Add(a.second, b.second);
  }
};

template <class A>
using Accumulator = Lanes<A, kLanes<A>>;
inline constexpr int kTwiceAccumulators = kVectorRegisters >= 16 ? 4 : 2;

// In accumulators of A and an open order.
template <class A, class S>
[[gnu::noinline]] A openDot(const S* src1, const S* src2, size_t len) {
  return sumLanes(reduce<A, kFewAccumulators>(RealDot<true>(), hn::Zero(Accumulator<A>()), len, src1, src2));
}
template <class A>
struct Parts {
  A re, im;
};
// Of pairs.
template <class A, class S>
[[gnu::noinline]] Parts<A> openComplexDot(const Pair<S>* src1, const Pair<S>* src2, size_t len) {
  const Accumulator<A> d;
  const TwoSums<hn::Vec<Accumulator<A>>> zero{hn::Zero(d), hn::Zero(d)};
  const auto sum = reduce<Pair<A>, kTwiceAccumulators>(ComplexDot<true>(), zero, len, src1, src2);
  return {sumLanes(hn::Xor(sum.first, setPairs(d, A{0}, -A{0}))), sumLanes(sum.second)};
}
// Of a real and a complex vector.
template <class A, class S, class C>
[[gnu::noinline]] Parts<A> openMixedDot(const S* src1, const C* src2, size_t len) {
  const Accumulator<A> d;
  const TwoSums<hn::Vec<Accumulator<A>>> zero{hn::Zero(d), hn::Zero(d)};
  const auto sum = reduce<A, kTwiceAccumulators>(ComplexDot<true>(), zero, len, src1, src2);
  return {sumLanes(sum.first), sumLanes(sum.second)};
}

// 32-bit integers: in eight lanes of double precision by position in every module, products rounded before they are added,
// so that the integers that come out are the same.
KVRS_INLINE double joined(const double* l, size_t step, size_t count) {
  double sum = l[0];
  for (size_t i = 1; i < count; ++i) sum += l[i * step];
  return sum;
}
template <class V, int k>
KVRS_INLINE void storeLanes(const V (&acc)[k], double* lanes) {
  for (int j = 0; j < k; ++j) hn::Store(acc[j], hn::DFromV<V>(), lanes + j * kLanes<double>);
}

template <class S>
[[gnu::noinline]] double integerDot(const S* src1, const Kvr32s* src2, size_t len) {
  constexpr int k = kLanesOf<double, 8>;
  hn::Vec<Accumulator<double>> acc[k];
  for (auto& a : acc) a = hn::Zero(Accumulator<double>());
  accumulate<double>(RealDot<false>(), acc, len, src1, src2);
  alignas(64) double lanes[8];
  storeLanes(acc, lanes);
  return joined(lanes, 1, 8);
}

// `A` is what blocks count in: pairs, or the numbers of a real vector.
template <class A, class... S>
KVRS_INLINE void integerTwoSums(double (&first)[8], double (&second)[8], size_t len, const S*... src) {
  using V = hn::Vec<Accumulator<double>>;
  constexpr int k = kLanesOf<double, 8>;
  TwoSums<V> acc[k];
  for (auto& a : acc) a = {hn::Zero(Accumulator<double>()), hn::Zero(Accumulator<double>())};
  accumulate<A>(ComplexDot<false>(), acc, len, src...);
  for (int j = 0; j < k; ++j) {
    hn::Store(acc[j].first, Accumulator<double>(), first + j * kLanes<double>);
    hn::Store(acc[j].second, Accumulator<double>(), second + j * kLanes<double>);
  }
}
[[gnu::noinline]] Parts<double> integerDot(const Kvr32sc* src1, const Kvr32sc* src2, size_t len) {
  alignas(64) double first[8], second[8];
  integerTwoSums<Pair<double>>(first, second, len, asPairs<Kvr32s>(src1), asPairs<Kvr32s>(src2));
  return {joined(first, 2, 4) - joined(first + 1, 2, 4), joined(second, 1, 8)};
}
[[gnu::noinline]] Parts<double> integerDot(const Kvr32s* src1, const Kvr32sc* src2, size_t len) {
  alignas(64) double first[8], second[8];
  integerTwoSums<double>(first, second, len, src1, src2);
  return {joined(first, 1, 8), joined(second, 1, 8)};
}

// The range of the factor is limited, so that very large ones leave more than nothing.
Kvr32s scaledDouble(double sum, int scaleFactor) {
  const int bounded = scaleFactor < -31 ? -31 : scaleFactor > 93 ? 93 : scaleFactor;
  return nearestInteger<Kvr32s>(sum * powerOfTwo<double>(-bounded));
}
template <class D>
D scaledInteger(int64_t sum, int scaleFactor) {
  return scaleTo<D>(sum, scaleFactor > 31 ? 31 : scaleFactor);
}
template <class D>
Parts<D> scaledInteger(Kvr64sc sum, int scaleFactor) {
  return {scaledInteger<D>(sum.re, scaleFactor), scaledInteger<D>(sum.im, scaleFactor)};
}

// By way of double precision.
Kvr32f single(int64_t sum) {
  return static_cast<Kvr32f>(static_cast<double>(sum));
}

}  // namespace

namespace check {
namespace {

// Of both vectors: that of the wider elements.
template <class S1, class S2>
constexpr KvrStatus lengthOfBoth(int len) {
  return lengthOf<std::conditional_t<(sizeof(S1) > sizeof(S2)), S1, S2>>(len);
}

}  // namespace
}  // namespace check
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsDotProd_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr16s* dp,
                              int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = scaledInteger<Kvr16s>(dot(src1, src2, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32s* dp,
                                 int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = scaledInteger<Kvr32s>(dot(src1, src2, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16s64s(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr64s* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = dot(src1, src2, n);
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16s32f(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32f* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = single(dot(src1, src2, n));
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, int len, Kvr16sc* dp,
                               int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr16sc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<Kvr16s> sum = scaledInteger<Kvr16s>(dot(src1, src2, n), scaleFactor);
  *dp = {sum.re, sum.im};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16sc32sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, int len, Kvr32sc* dp,
                                   int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr16sc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<Kvr32s> sum = scaledInteger<Kvr32s>(dot(src1, src2, n), scaleFactor);
  *dp = {sum.re, sum.im};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16sc64sc(const Kvr16sc* src1, const Kvr16sc* src2, int len, Kvr64sc* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr16sc>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = dot(src1, src2, n);
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16sc32fc(const Kvr16sc* src1, const Kvr16sc* src2, int len, Kvr32fc* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr16sc>(len));
  const size_t n = static_cast<size_t>(len);
  const Kvr64sc sum = dot(src1, src2, n);
  *dp = {single(sum.re), single(sum.im)};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16s16sc_Sfs(const Kvr16s* src1, const Kvr16sc* src2, int len, Kvr16sc* dp,
                                  int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOfBoth<Kvr16s, Kvr16sc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<Kvr16s> sum = scaledInteger<Kvr16s>(dot(src1, src2, n), scaleFactor);
  *dp = {sum.re, sum.im};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16s16sc32sc_Sfs(const Kvr16s* src1, const Kvr16sc* src2, int len, Kvr32sc* dp,
                                      int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOfBoth<Kvr16s, Kvr16sc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<Kvr32s> sum = scaledInteger<Kvr32s>(dot(src1, src2, n), scaleFactor);
  *dp = {sum.re, sum.im};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16s16sc64sc(const Kvr16s* src1, const Kvr16sc* src2, int len, Kvr64sc* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOfBoth<Kvr16s, Kvr16sc>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = dot(src1, src2, n);
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16s16sc32fc(const Kvr16s* src1, const Kvr16sc* src2, int len, Kvr32fc* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOfBoth<Kvr16s, Kvr16sc>(len));
  const size_t n = static_cast<size_t>(len);
  const Kvr64sc sum = dot(src1, src2, n);
  *dp = {single(sum.re), single(sum.im)};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_16s32s32s_Sfs(const Kvr16s* src1, const Kvr32s* src2, int len, Kvr32s* dp,
                                    int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOfBoth<Kvr16s, Kvr32s>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = scaledDouble(integerDot(src1, src2, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, int len, Kvr32s* dp,
                              int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr32s>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = scaledDouble(integerDot(src1, src2, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_32sc_Sfs(const Kvr32sc* src1, const Kvr32sc* src2, int len, Kvr32sc* dp,
                               int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr32sc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<double> sum = integerDot(src1, src2, n);
  *dp = {scaledDouble(sum.re, scaleFactor), scaledDouble(sum.im, scaleFactor)};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_32s32sc_Sfs(const Kvr32s* src1, const Kvr32sc* src2, int len, Kvr32sc* dp,
                                  int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOfBoth<Kvr32s, Kvr32sc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<double> sum = integerDot(src1, src2, n);
  *dp = {scaledDouble(sum.re, scaleFactor), scaledDouble(sum.im, scaleFactor)};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_32f(const Kvr32f* src1, const Kvr32f* src2, int len, Kvr32f* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr32f>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = openDot<Kvr32f>(src1, src2, n);
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_64f(const Kvr64f* src1, const Kvr64f* src2, int len, Kvr64f* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr64f>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = openDot<Kvr64f>(src1, src2, n);
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_32f64f(const Kvr32f* src1, const Kvr32f* src2, int len, Kvr64f* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr32f>(len));
  const size_t n = static_cast<size_t>(len);
  *dp = openDot<Kvr64f>(src1, src2, n);
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_32fc(const Kvr32fc* src1, const Kvr32fc* src2, int len, Kvr32fc* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr32fc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<Kvr32f> sum = openComplexDot<Kvr32f>(asPairs<Kvr32f>(src1), asPairs<Kvr32f>(src2), n);
  *dp = {sum.re, sum.im};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_64fc(const Kvr64fc* src1, const Kvr64fc* src2, int len, Kvr64fc* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr64fc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<Kvr64f> sum = openComplexDot<Kvr64f>(asPairs<Kvr64f>(src1), asPairs<Kvr64f>(src2), n);
  *dp = {sum.re, sum.im};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_32fc64fc(const Kvr32fc* src1, const Kvr32fc* src2, int len, Kvr64fc* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOf<Kvr32fc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<Kvr64f> sum = openComplexDot<Kvr64f>(asPairs<Kvr32f>(src1), asPairs<Kvr32f>(src2), n);
  *dp = {sum.re, sum.im};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_32f32fc(const Kvr32f* src1, const Kvr32fc* src2, int len, Kvr32fc* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOfBoth<Kvr32f, Kvr32fc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<Kvr32f> sum = openMixedDot<Kvr32f>(src1, src2, n);
  *dp = {sum.re, sum.im};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_64f64fc(const Kvr64f* src1, const Kvr64fc* src2, int len, Kvr64fc* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOfBoth<Kvr64f, Kvr64fc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<Kvr64f> sum = openMixedDot<Kvr64f>(src1, src2, n);
  *dp = {sum.re, sum.im};
  return kvrStatusOk;
}
KvrStatus kvrsDotProd_32f32fc64fc(const Kvr32f* src1, const Kvr32fc* src2, int len, Kvr64fc* dp) noexcept {
  KVRS_CHECK(pointers(src1, src2, dp), lengthOfBoth<Kvr32f, Kvr32fc>(len));
  const size_t n = static_cast<size_t>(len);
  const Parts<Kvr64f> sum = openMixedDot<Kvr64f>(src1, src2, n);
  *dp = {sum.re, sum.im};
  return kvrStatusOk;
}
