// Integer division by a scalar and of a scalar.
// SPDX-License-Identifier: MIT
#include <bit>
#include <type_traits>

#include "frame/loop.h"
#include "frame/pack.h"
#include "frame/to_integer.h"
#include "frame/unroll.h"
#include "frame/widen.h"
#include "kvrs/divide.h"
#include "vector/divide_complex-inl.h"
#include "vector/divide_integer-inl.h"
#include "vector/stand_in.h"

namespace kvrs {
namespace {

constexpr Division kC8u{.signBelow = -15, .zeroAbove = 8, .threadedFrom = kNeverThreaded};
constexpr Division kC16u{.signBelow = -31, .zeroAbove = 16, .threadedFrom = kNeverThreaded};
constexpr Division kC16s{.signBelow = -30, .zeroAbove = 15, .threadedFrom = kNeverThreaded};
// Complex quotients by way of the inverse: nothing is left of any long before 2^-64, and what rounding errors leave
// of a part that is 0 has saturated long before 2^1000.
constexpr int kC16scLeast = -1000, kC16scMost = 64;
constexpr Division kCRev16u{.signBelow = -31, .zeroAbove = 16, .threadedFrom = threadedLength(2048)};

// Full vectors of narrow integers by way of `op` on 32-bit ones, which signed 16-bit elements are the upper halves of.
// Shorter vectors are part of a block.
template <class Op>
struct Widened {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V v) const {
    return inWholeBlocks([this](auto whole, auto x) KVRS_UNROLLED { return this->map(whole, x); }, d, v);
  }

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> map(D d, V v) const {
    using T = hn::TFromD<D>;
    if constexpr (sizeof(T) == 1) {
      const hn::RepartitionToWide<D> du;
      const hn::RebindToSigned<decltype(du)> di;
      const auto wide = widened(d, v);
      const auto half = [&](auto x)
                            KVRS_UNROLLED { return narrowed(di, both(widened(du, hn::BitCast(du, x)))); };
      return narrowed(d, Both<hn::Vec<decltype(di)>>{half(wide.first), half(wide.second)});
    } else if constexpr (std::is_signed_v<T>) {
      return narrowed(d, both(widenedUp(d, v)));
    } else {
      return narrowed(d, both(widened(d, v)));
    }
  }

  template <class V>
  KVRS_INLINE Both<V> both(Both<V> v) const {
    return {op(v.first), op(v.second)};
  }

  Op op;
};

// 32-bit integers by way of op(d, v) on floats.
template <class V, class Op>
KVRS_INLINE V byFloats(V v, const Op& op) {
  const hn::RebindToFloat<hn::DFromV<V>> df;
  return nearestInt32(hn::DFromV<V>(), op(df, hn::ConvertTo(df, v)));
}

// On doubles.
template <class V, class Op>
KVRS_INLINE V byDoubles(V v, const Op& op) {
  const hn::DFromV<V> di;
  const hn::Half<decltype(di)> half;
  const hn::Rebind<double, decltype(half)> dd;
  const auto map = [&](auto x) KVRS_UNROLLED { return nearestInt32(half, op(dd, hn::PromoteTo(dd, x))); };
  return hn::Combine(di, map(hn::UpperHalf(half, v)), map(hn::LowerHalf(half, v)));
}

// n / (divisor * 2^exponent) of integers below 2^16, as n * high + n * low: high has 8 bits, so that n * high is exact,
// and low holds the reciprocal's others up to 2^-29 of it. The sum is rounded once, or within 2^-28 of that: a tie,
// which has room to spare in single precision, comes out as it is, and nothing else becomes one
// (divide_integer-inl.h).
class TimesReciprocal {
 public:
  TimesReciprocal(float divisor, int exponent) {
    const float reciprocal = 1 / divisor, scale = powerOfTwo<float>(-exponent);
    const float high = std::bit_cast<float>(std::bit_cast<uint32_t>(reciprocal) & 0xFFFF0000u);
    high_ = high * scale;
    low_ = (1 - high * divisor) * (reciprocal * scale);
  }

  template <class V>
  KVRS_INLINE V operator()(V v) const {
    return byFloats(v, [this](auto d, auto n) KVRS_UNROLLED {
      return hn::MulAdd(n, hn::Set(d, high_), hn::Mul(n, hn::Set(d, low_)));
    });
  }

 private:
  float high_, low_;
};

// Scaled up too far for single precision.
[[gnu::noinline]] KvrStatus divideWide(const Division& rule, const Kvr16u* src, Kvr16u val, Kvr16u* dst,
                                       int len, int scaleFactor) {
  const Quotient<double, QuotientRounding::byMode> op(
      powerOfTwo<double>(scaleFactor < rule.signBelow ? -64 : scaleFactor));
  return divideVectors<double>(rule, WithDivisor(op, val), dst, len, src);
}

// The exact quotient, rounded to nearest.
template <class T>
KVRS_INLINE KvrStatus divideByScalar(const Division& rule, const T* src, T val, T* dst, int len,
                                     int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(val == 0));
  if (scaleFactor > rule.zeroAbove) return zeroInstead(dst, len);
  const int exponent = scaleFactor < rule.signBelow ? rule.signBelow - 1 : scaleFactor;
  return underRounding(Rounding::nearest, [=] {
    if constexpr (sizeof(T) == 2) {
      if (scaleFactor < kSingleFrom) return divideWide(rule, src, val, dst, len, scaleFactor);
    }
    const Widened<TimesReciprocal> op{{static_cast<float>(val), exponent}};
    return mapElements(op, dst, static_cast<size_t>(len), src);
  });
}

// The element times a factor: one rounding more than a quotient, and no division for each element.
struct Product {
  template <class V>
  KVRS_INLINE V operator()(V v) const {
    return byFloats(v, [this](auto d, auto x) KVRS_UNROLLED { return hn::Mul(x, hn::Set(d, factor)); });
  }

  float factor;
};

KvrStatus divideByScalar(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(val == 0));
  if (scaleFactor > kC16s.zeroAbove) return zeroInstead(dst, len);
  const int exponent = scaleFactor < kC16s.signBelow ? kC16s.signBelow : scaleFactor;
  const float factor = powerOfTwo<float>(-exponent) / static_cast<float>(val);
  // By larger factors all but 0 saturates, and their products would not fit into 32-bit integers. 2^-16, as the
  // elements come as the upper halves of these.
  const float bounded = factor > 65535 ? 65535 : factor < -65535 ? -65535 : factor;
  return mapElements(Widened<Product>{{bounded * 0x1p-16f}}, dst, static_cast<size_t>(len), src);
}

// Pairs times an inverse: a product for every element in place of two divisions. Its rounding errors may turn a tie, and
// show where they are scaled up.
class ComplexProduct {
 public:
  ComplexProduct(double re, double im) : re_(re * 0x1p-16), im_(im * 0x1p-16) {}

  template <class V>
  KVRS_INLINE V operator()(V v) const {
    return byDoubles(v, [this](auto d, auto x) KVRS_UNROLLED {
      // re * re_ - im * im_ and im * re_ + re * im_
      const auto im = hn::OddEven(hn::Set(d, im_), hn::Set(d, -im_));
      const auto product = hn::Add(hn::Mul(x, hn::Set(d, re_)), hn::Mul(hn::Shuffle01(x), im));
      // What is too low for 32 bits becomes their lowest value of itself.
      return hn::Min(product, hn::Set(d, 2147483647.0));
    });
  }

 private:
  double re_, im_;
};

KvrStatus divideByScalar(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(val.re == 0 && val.im == 0));
  return underRounding(Rounding::nearest, [=] {
    const int exponent = scaleFactor < kC16scLeast  ? kC16scLeast
                         : scaleFactor > kC16scMost ? kC16scMost
                                                    : scaleFactor;
    const double scale = powerOfTwo<double>(-exponent);
    const double re = val.re, im = val.im;
    const double square = re * re + im * im;
    const Widened<ComplexProduct> op{{re / square * scale, -im / square * scale}};
    return mapElements(op, asPairs<Kvr16s>(dst), static_cast<size_t>(len), asPairs<Kvr16s>(src));
  });
}

KvrStatus divideScalar(Kvr16u val, const Kvr16u* src, Kvr16u* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const auto ofVal = [val](auto op) { return WithDividend(op, val); };
  return divideIntegers<QuotientRounding::byMode>(kCRev16u, 0, ofVal, dst, len, src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsDivC_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len, int scaleFactor) noexcept {
  return divideByScalar(kC8u, src, val, dst, len, scaleFactor);
}
KvrStatus kvrsDivC_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return divideByScalar(kC8u, srcDst, val, srcDst, len, scaleFactor);
}
KvrStatus kvrsDivC_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len, int scaleFactor) noexcept {
  return divideByScalar(kC16u, src, val, dst, len, scaleFactor);
}
KvrStatus kvrsDivC_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  return divideByScalar(kC16u, srcDst, val, srcDst, len, scaleFactor);
}
KvrStatus kvrsDivC_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return divideByScalar(src, val, dst, len, scaleFactor);
}
KvrStatus kvrsDivC_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return divideByScalar(srcDst, val, srcDst, len, scaleFactor);
}
KvrStatus kvrsDivC_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                            int scaleFactor) noexcept {
  return divideByScalar(src, val, dst, len, scaleFactor);
}
KvrStatus kvrsDivC_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return divideByScalar(srcDst, val, srcDst, len, scaleFactor);
}
KvrStatus kvrsDivCRev_16u(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len) noexcept {
  return divideScalar(val, src, dst, len);
}
KvrStatus kvrsDivCRev_16u_I(Kvr16u val, Kvr16u* srcDst, int len) noexcept {
  return divideScalar(val, srcDst, srcDst, len);
}
