// What all windows share: weights are made for the front half, in tiles, and applied to both ends of the vector at once.
// SPDX-License-Identifier: MIT
#ifndef KVRS_SYNTH_WINDOW_INL_H
#define KVRS_SYNTH_WINDOW_INL_H

#include <cmath>
#include <cstring>
#include <type_traits>

#include "frame/check.h"
#include "frame/generate.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/to_integer.h"
#include "frame/two_ended.h"
#include "kvrs/window.h"
#include "synth/phase.h"

namespace kvrs::window {

// Returns kvrStatusOk after kernel(). Integers are rounded to nearest whatever the caller's mode.
template <class T, class Kernel>
KVRS_INLINE KvrStatus run(Kernel kernel) {
  if constexpr (std::is_integral_v<LaneOf<T>>) {
    underRounding(Rounding::nearest, kernel);
  } else {
    kernel();
  }
  return kvrStatusOk;
}

// The numbers of an element, and the precision of its weights: doubles have doubles, all others singles.
template <class T>
using Part = LaneOf<T>;
template <class T>
inline constexpr bool kIsInteger = std::is_integral_v<Part<T>>;
template <class T>
inline constexpr bool kIsDouble = sizeof(Part<T>) == 8;
template <class T>
using Weight = std::conditional_t<kIsDouble<T>, double, float>;

// Samples times weights. Where these are wider, the product is formed in their precision. Integers are rounded to
// nearest, ties to even, and saturated.
struct Times {
  template <class D, class V, class W>
  KVRS_INLINE V operator()(D d, V v, W w) const {
    const hn::DFromV<W> dw;
    using T = hn::TFromD<D>;
    if constexpr (std::is_integral_v<T>) {
      const auto product = hn::Mul(singles(dw, v), w);
      return toInteger<false>(d, product, hwy::LimitsMin<T>(), hwy::LimitsMax<T>());
    } else if constexpr (std::is_same_v<T, hn::TFromV<W>>) {
      return hn::Mul(v, w);
    } else {
      return hn::DemoteTo(d, hn::Mul(hn::PromoteTo(dw, v), w));
    }
  }

  template <class Dw, class V>
  static KVRS_INLINE hn::Vec<Dw> singles(Dw dw, V v) {
    return hn::ConvertTo(dw, hn::PromoteTo(hn::Rebind<int32_t, Dw>(), v));
  }
};

// Weights of the elements from `first` on, applied to a block and its mirror image.
template <class W, class Op>
struct Weigh {
  const W* weights;
  size_t first;
  Op op;

  template <class D, class V>
  KVRS_INLINE Both<V> operator()(D d, size_t n, V front, V back) const {
    const hn::Rebind<W, D> dw;
    const auto w = hn::LoadU(dw, weights + (n - first));
    return {apply(d, front, w), apply(d, back, mirrored(dw, w))};
  }

 private:
  template <class D, class V, class Vw>
  KVRS_INLINE V apply(D d, V v, Vw w) const {
    return op(d, v, w);
  }
  template <class D, class V, class Vw>
  KVRS_INLINE Complex<V> apply(D d, Complex<V> v, Vw w) const {
    return {op(d, v.re, w), op(d, v.im, w)};
  }
};

// dst[n] = src[n] * w[n] and the same at its mirror image, for the elements before the middle one. make(weights, n, count)
// makes the weights from w[n] on: `tile` of them, or at the end what is left, and up to kTileSlack more.
template <class W, class T, class Make, class Op = Times>
KVRS_INLINE void weighHalves(const T* src, T* dst, size_t len, size_t tile, Make&& make, const Op& op = {}) {
  alignas(kVectorBytes) W weights[kTile + kTileSlack];
  const size_t half = len / 2;
  for (size_t n = 0; n < half; n += tile) {
    const size_t count = half - n < tile ? half - n : tile;
    make(weights, n, count);
    fromBothEnds<kVectorBytes / loop_detail::widest(sizeof(W), sizeof(Part<T>))>(Weigh<W, Op>{weights, n, op},
                                                                                 src, dst, len, n, n + count);
  }
}

template <class T>
KVRS_INLINE void copyElement(const T* src, T* dst, size_t i) {
  if (src != dst) memcpy(dst + i, src + i, sizeof(T));
}

// And the middle one of an odd number of elements stays as it is.
template <class W, class T, class Make>
KVRS_INLINE void weigh(const T* src, T* dst, size_t len, size_t tile, Make&& make) {
  weighHalves<W>(src, dst, len, tile, make);
  if (len % 2 != 0) copyElement(src, dst, len / 2);
}

// Three elements of a window that is 0 at its ends, whatever the outer two hold.
template <class T>
KVRS_INLINE void weighThree(const T* src, T* dst) {
  copyElement(src, dst, 1);
  memset(static_cast<void*>(dst), 0, sizeof(T));
  memset(static_cast<void*>(dst + 2), 0, sizeof(T));
}

// c[n] = a * cos(n * A) with A = 2 pi / (len - 1).
class CosineTerm {
 public:
  CosineTerm(double a, size_t len) : a_(a), angle_(kTwoPi / static_cast<double>(len - 1)) {
    const double c = cosine(angle_);
    twice_ = 2 * c;
    first_ = twice_ * a - a * c;
  }

  // 2 cos(k * A)
  double twiceCosine(int k) const { return k == 1 ? twice_ : 2 * cosine(k * angle_); }

  // c[0], c[1] and so on by c[n+1] = 2 cos(A) * c[n] - c[n-1], `count` of at least two of them.
  void start(double* c, size_t count) const {
    c[0] = a_;
    c[1] = first_;
    recur(c, count);
  }
  // c[n-1] and c[n] on their own, and then the same.
  void restart(double* c, size_t n, size_t count) const {
    c[0] = single(n - 1);
    c[1] = single(n);
    recur(c, count);
  }

 private:
  double single(size_t n) const {
    return static_cast<double>(static_cast<long double>(a_) *
                               cosl(static_cast<long double>(n) * static_cast<long double>(angle_)));
  }
  void recur(double* c, size_t count) const {
    for (size_t i = 2; i < count; ++i) c[i] = twice_ * c[i - 1] - c[i - 2];
  }

  double a_, angle_, twice_, first_;
};

// Two lanes in double precision, even and odd n, that step by two.
class CosinePairs {
 public:
  using D = Lanes<double, 2>;

  explicit CosinePairs(const CosineTerm& term) : factor_(hn::Set(D(), term.twiceCosine(2))) {
    double c[4];
    term.start(c, 4);
    now_ = hn::LoadU(D(), c);
    next_ = hn::LoadU(D(), c + 2);
  }

  KVRS_INLINE hn::Vec<D> next() {
    const auto c = now_;
    now_ = next_;
    next_ = hn::Sub(hn::Mul(factor_, next_), c);
    return c;
  }

 private:
  hn::Vec<D> now_, next_, factor_;
};

// One by one, in double precision.
class CosineSteps {
 public:
  explicit CosineSteps(const CosineTerm& term) : factor_(term.twiceCosine(1)) {
    double c[2];
    term.start(c, 2);
    now_ = c[0];
    next_ = c[1];
  }

  KVRS_INLINE double next() {
    const double c = now_;
    now_ = next_;
    next_ = factor_ * next_ - c;
    return c;
  }

 private:
  double now_, next_, factor_;
};

// Four lanes in single precision, started anew in every tile: toWeights(d, c) makes four weights.
template <class ToWeights>
KVRS_INLINE auto singlesByFour(const CosineTerm& term, ToWeights toWeights) {
  const Lanes<float, 4> d;
  const auto factor = hn::Set(d, static_cast<float>(term.twiceCosine(4)));
  return [=](float* weights, size_t n, size_t count) {
    double c[9];
    if (n == 0) {
      term.start(c + 1, 8);
    } else {
      term.restart(c, n, 9);
    }
    float singles[8];
    for (size_t k = 0; k < 8; ++k) singles[k] = static_cast<float>(c[1 + k]);
    auto now = hn::LoadU(d, singles), next = hn::LoadU(d, singles + 4);
    for (size_t i = 0; i < count; i += 4) {
      hn::StoreU(toWeights(d, now), d, weights + i);
      const auto after = hn::Sub(hn::Mul(factor, next), now);
      now = next;
      next = after;
    }
  };
}

}  // namespace kvrs::window

#endif
