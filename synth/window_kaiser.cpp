// Kaiser windows: w[n] = I0(alpha * sqrt(n * (N-1-n))) / I0(alpha * (N-1) / 2) with the modified Bessel function I0.
//
// I0 is a polynomial of x^2 up to a breakpoint and exp(x) / sqrt(x) times a polynomial of 1/x from there on (Allen, Notes
// on methods for computing the modified Bessel functions, 1956; Abramowitz and Stegun 9.8.1 and 9.8.2). The coefficients of
// the weights differ from those of the divisor in some digits, and those of doubles from those of all others.
// SPDX-License-Identifier: MIT
#include "synth/window-inl.h"

#include "frame/unroll.h"

namespace kvrs::window {
namespace {

// Coefficients from the highest power down, and where the second one takes over.
template <size_t kSmall, size_t kLarge>
struct Bessel {
  double breakpoint;
  double perBreakpoint;  // 1 / breakpoint, as precise as the numbers it is meant for
  double small[kSmall], large[kLarge];
};

constexpr Bessel<7, 9> kSingleDivisor = {
    3.75,
    0.26666666666666666,
    {0.0045813, 0.0360768, 0.2659732, 1.2067492, 3.0899424, 3.5156229, 1.0},
    {0.00392377, -0.01647633, 0.02635537, -0.02057706, 0.00916281, -0.00157565, 0.00225319, 0.01328592,
     0.39894228}};
constexpr Bessel<7, 9> kSingleWeight = {
    3.75,
    0.26666668f,
    {0.0045813, 0.0360768, 0.26687756, 1.2067492, 3.0899424, 3.5156229, 1.0},
    {0.00392377, -0.01647633, 0.02635537, -0.02057706, 0.00916281, -0.00157565, 0.00225319, 0.01328592,
     0.3989423}};
constexpr Bessel<8, 13> kDoubleDivisor = {
    4.0,
    0.25,
    {0.0008267816, 0.0075942968, 0.0713758187, 0.4443189384, 1.777809969, 3.9999959541, 4.0000001935,
     0.9999999985},
    {0.0051246015, -0.0366694767, 0.1113315511, -0.1867783276, 0.1895476618, -0.1209940805, 0.0495811118,
     -0.0128314822, 0.0022585672, 0.00026, 0.0017623668, 0.0124667783, 0.3989422809}};
constexpr Bessel<8, 13> kDoubleWeight = {
    4.0,
    0.25,
    {0.000674193709375, 0.0075942968, 0.0713758187, 0.4443189384, 1.777809969, 3.9999959541, 4.000003096,
     0.9999999985},
    {0.0051246015, -0.0366694767, 0.1113315511, -0.1867783276, 0.18954771930079328, -0.1209940805,
     0.04958113163828737, -0.0128314822, 0.0022585681074049, 0.00026, 0.0017623668, 0.0124667783,
     0.3989422809}};

template <class W>
constexpr const auto& divisorOf() {
  if constexpr (sizeof(W) == 8) {
    return kDoubleDivisor;
  } else {
    return kSingleDivisor;
  }
}
template <class W>
constexpr const auto& weightOf() {
  if constexpr (sizeof(W) == 8) {
    return kDoubleWeight;
  } else {
    return kSingleWeight;
  }
}

template <class X, size_t n>
X polynomial(const double (&coefficients)[n], X x) {
  X sum = static_cast<X>(coefficients[0]);
  for (size_t i = 1; i < n; ++i) sum = sum * x + static_cast<X>(coefficients[i]);
  return sum;
}

// exp(x) for x from -87 (doubles: -700) to 80, what is below being taken for that: 2^k * exp(r) with |r| up to ln(2)/2 by
// the exponential series. Within 2 units in the last place, in plain sums and products, so that all modules agree.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V exponential(D d, V x) {
  using F = hn::TFromD<D>;
  constexpr bool isDouble = sizeof(F) == 8;
  constexpr int kTerms = isDouble ? 13 : 7, kDigits = isDouble ? 52 : 23, kBias = isDouble ? 1023 : 127;
  // k * kHigh is exact.
  constexpr F kHigh = isDouble ? F(0x1.62e42fefa38p-1) : F(0x1.62e4p-1f);
  constexpr F kLow = isDouble ? F(0x1.ef35793c7673p-45) : F(0x1.7f7d1cp-20f);
  const auto c = [&](double value) KVRS_UNROLLED { return hn::Set(d, static_cast<F>(value)); };
  x = hn::Max(x, c(isDouble ? -700 : -87));
  // The integer k stands in the last bits of this sum.
  const V magic = c(isDouble ? 0x1.8p52 : 0x1.8p23f);
  const V shifted = hn::Add(hn::Mul(x, c(0x1.71547652b82fep+0)), magic);
  const V k = hn::Sub(shifted, magic);
  const V r = hn::Sub(hn::Sub(x, hn::Mul(k, hn::Set(d, kHigh))), hn::Mul(k, hn::Set(d, kLow)));
  constexpr auto factorial = [](int n) {
    double product = 1;
    for (int i = 2; i <= n; ++i) product *= i;
    return product;
  };
  V sum = c(1 / factorial(kTerms));
  unroll<kTerms>([&](auto i)
                     KVRS_UNROLLED { sum = hn::Add(hn::Mul(sum, r), c(1 / factorial(kTerms - 1 - i))); });
  const hn::RebindToSigned<D> di;
  const auto exponent = hn::Add(hn::BitCast(di, shifted), hn::Set(di, kBias));
  return hn::Mul(sum, hn::BitCast(d, hn::ShiftLeft<kDigits>(exponent)));
}

// 1 / I0(x) and, for weights that are too large for a single, what makes both smaller by the same factor exp(-x).
struct Divisor {
  double norm, shift;
};

// From here on exp(x) would soon leave the range of singles.
constexpr double kLargeForSingles = 80;

// The C library's, by way of `long double` for the same reason as cosine().
double exponential(double x) {
  return static_cast<double>(expl(static_cast<long double>(x)));
}

template <class W>
Divisor divisor(double x) {
  constexpr const auto& bessel = divisorOf<W>();
  if (x < bessel.breakpoint) {
    const double ratio = x * bessel.perBreakpoint;
    return {1.0 / polynomial(bessel.small, ratio * ratio), 0};
  }
  const double p = polynomial(bessel.large, bessel.breakpoint / x);
  if (sizeof(W) == 4 && x > kLargeForSingles) {
    const double shift = static_cast<double>(static_cast<W>(x));
    return {sqrt(x) / (p * exponential(x - shift)), shift};
  }
  return {1.0 / (p * exponential(x) / sqrt(x)), 0};
}

template <class W>
class KaiserWeights {
 public:
  KaiserWeights(size_t len, W alpha, Divisor divisor)
      : last_(static_cast<W>(len - 1)),
        alpha_(alpha),
        norm_(static_cast<W>(divisor.norm)),
        shift_(static_cast<W>(divisor.shift)),
        smallFactor_(static_cast<W>(exponential(-divisor.shift))),
        len_(len),
        norm0_(divisor.norm),
        shift0_(divisor.shift),
        count_(hn::Iota(Four(), W{0})) {}

  void operator()(W* weights, size_t n, size_t count) {
    // n as it is counted in lanes of the weights' precision.
    for (size_t i = 0; i < count; i += kStep) {
      hn::StoreU(count_, Four(), weights + i);
      count_ = hn::Add(count_, hn::Set(Four(), static_cast<W>(kStep)));
    }
    const Lanes<W, kLanes<W>> d;
    for (size_t i = 0; i < count; i += kLanes<W>) {
      hn::Store(weight(d, hn::Load(d, weights + i)), d, weights + i);
    }
    // What is less than a step at the very end.
    if (n + count == len_ / 2) {
      for (size_t i = count / kStep * kStep; i < count; ++i) weights[i] = extendedWeight(n + i);
    }
  }

 private:
  static constexpr size_t kStep = sizeof(W) == 8 ? 2 : 4;
  using Four = Lanes<W, kStep>;
  static constexpr const auto& kBessel = weightOf<W>();

  template <class D, class V, size_t n>
  static KVRS_INLINE V polynomialOf(D d, const double (&coefficients)[n], V x) {
    V sum = hn::Set(d, static_cast<W>(coefficients[0]));
    for (size_t i = 1; i < n; ++i)
      sum = hn::Add(hn::Mul(sum, x), hn::Set(d, static_cast<W>(coefficients[i])));
    return sum;
  }

  template <class D, class V>
  KVRS_INLINE V weight(D d, V n) const {
    const auto c = [&](double value) KVRS_UNROLLED { return hn::Set(d, static_cast<W>(value)); };
    const V r = hn::Sqrt(hn::Mul(hn::Sub(c(last_), n), n));
    const V x = hn::Abs(hn::Mul(r, c(alpha_)));
    const V ratio = c(kBessel.perBreakpoint);
    const V y = hn::Mul(hn::Mul(hn::Mul(x, ratio), x), ratio);
    V bessel = hn::Mul(polynomialOf(d, kBessel.small, y), c(smallFactor_));
    const auto isLarge = hn::Ge(x, c(kBessel.breakpoint));
    if (!hn::AllFalse(d, isLarge)) {
      const V one = c(1), factor = hn::Mul(exponential(d, hn::Sub(x, c(shift_))), hn::Div(one, hn::Sqrt(x)));
      const V large = hn::Mul(factor, polynomialOf(d, kBessel.large, hn::Div(c(kBessel.breakpoint), x)));
      bessel = hn::IfThenElse(isLarge, large, bessel);
    }
    return hn::Mul(bessel, c(norm_));
  }

  W extendedWeight(size_t n) const {
    using Extended = long double;
    const Extended r = sqrtl(static_cast<Extended>(len_ - 1 - n) * static_cast<Extended>(n));
    const Extended x = fabsl(r * static_cast<Extended>(alpha_));
    Extended bessel;
    if (x >= kBessel.breakpoint) {
      bessel = expl(x - static_cast<Extended>(shift0_)) * (1 / sqrtl(x)) *
               polynomial(kBessel.large, kBessel.breakpoint / x);
    } else {
      const Extended ratio = static_cast<Extended>(kBessel.perBreakpoint);
      bessel = polynomial(kBessel.small, x * ratio * x * ratio) * static_cast<Extended>(smallFactor_);
    }
    return static_cast<W>(bessel * static_cast<Extended>(norm_));
  }

  W last_, alpha_, norm_, shift_, smallFactor_;
  size_t len_;
  double norm0_, shift0_;
  hn::Vec<Four> count_;
};

constexpr KvrStatus notAbove(double t, double limit) {
  return check::require(!(t > limit), kvrStatusKaiserOverflow);
}

// |alpha| * (len - 1) / 2 up to which a window can be had.
template <class T>
constexpr double kLimit = sizeof(Part<T>) == 4 ? 38.0 : 308.0;

// x is the argument of the divisor.
template <class T>
void kaiser(const T* src, T* dst, size_t n, double alpha, double x) {
  using W = Weight<T>;
  weigh<W>(src, dst, n, kTile, KaiserWeights<W>(n, static_cast<W>(alpha), divisor<W>(x)));
}

template <class T>
KvrStatus kaiser(const T* src, T* dst, int len, Kvr32f alpha) {
  const double wide = static_cast<double>(alpha), last = static_cast<double>(len) - 1;
  KVRS_CHECK(pointers(src, dst), lengthOf<T>(len), notAbove(fabs(wide) * last * 0.5, kLimit<T>));
  const double x = fabs(static_cast<double>(static_cast<float>(len - 1)) * wide) * 0.5;
  return run<T>([=] { kaiser(src, dst, static_cast<size_t>(len), wide, x); });
}

template <class T>
KvrStatus kaiserQ15(const T* src, T* dst, int len, int alphaQ15) {
  const double alpha = alphaQ15 * kQ15, last = static_cast<double>(len) - 1;
  KVRS_CHECK(pointers(src, dst), lengthOf<T>(len), notAbove(fabs(alpha) * last * 0.5, kLimit<T>));
  return run<T>([=] { kaiser(src, dst, static_cast<size_t>(len), alpha, fabs(last * alpha * 0.5)); });
}

}  // namespace
}  // namespace kvrs::window

using namespace kvrs::window;

KvrStatus kvrsWinKaiser_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr32f alpha) noexcept {
  return kaiser(src, dst, len, alpha);
}
KvrStatus kvrsWinKaiser_16s_I(Kvr16s* srcDst, int len, Kvr32f alpha) noexcept {
  return kaiser(srcDst, srcDst, len, alpha);
}
KvrStatus kvrsWinKaiser_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr32f alpha) noexcept {
  return kaiser(src, dst, len, alpha);
}
KvrStatus kvrsWinKaiser_16sc_I(Kvr16sc* srcDst, int len, Kvr32f alpha) noexcept {
  return kaiser(srcDst, srcDst, len, alpha);
}
KvrStatus kvrsWinKaiser_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f alpha) noexcept {
  return kaiser(src, dst, len, alpha);
}
KvrStatus kvrsWinKaiser_32f_I(Kvr32f* srcDst, int len, Kvr32f alpha) noexcept {
  return kaiser(srcDst, srcDst, len, alpha);
}
KvrStatus kvrsWinKaiser_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f alpha) noexcept {
  return kaiser(src, dst, len, alpha);
}
KvrStatus kvrsWinKaiser_32fc_I(Kvr32fc* srcDst, int len, Kvr32f alpha) noexcept {
  return kaiser(srcDst, srcDst, len, alpha);
}
KvrStatus kvrsWinKaiser_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr32f alpha) noexcept {
  return kaiser(src, dst, len, alpha);
}
KvrStatus kvrsWinKaiser_64f_I(Kvr64f* srcDst, int len, Kvr32f alpha) noexcept {
  return kaiser(srcDst, srcDst, len, alpha);
}
KvrStatus kvrsWinKaiser_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr32f alpha) noexcept {
  return kaiser(src, dst, len, alpha);
}
KvrStatus kvrsWinKaiser_64fc_I(Kvr64fc* srcDst, int len, Kvr32f alpha) noexcept {
  return kaiser(srcDst, srcDst, len, alpha);
}

KvrStatus kvrsWinKaiserQ15_16s(const Kvr16s* src, Kvr16s* dst, int len, int alphaQ15) noexcept {
  return kaiserQ15(src, dst, len, alphaQ15);
}
KvrStatus kvrsWinKaiserQ15_16s_I(Kvr16s* srcDst, int len, int alphaQ15) noexcept {
  return kaiserQ15(srcDst, srcDst, len, alphaQ15);
}
KvrStatus kvrsWinKaiserQ15_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, int alphaQ15) noexcept {
  return kaiserQ15(src, dst, len, alphaQ15);
}
KvrStatus kvrsWinKaiserQ15_16sc_I(Kvr16sc* srcDst, int len, int alphaQ15) noexcept {
  return kaiserQ15(srcDst, srcDst, len, alphaQ15);
}
