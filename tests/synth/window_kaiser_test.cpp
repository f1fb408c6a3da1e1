// SPDX-License-Identifier: MIT
#include "kvrs/window.h"

#include "tests/synth/window_model.h"

using namespace kvrs::test;

namespace {

using Extended = long double;

// From the highest power down.
const std::vector<double> kDivisorSmall = {0.0045813, 0.0360768, 0.2659732, 1.2067492,
                                           3.0899424, 3.5156229, 1};
const std::vector<double> kWeightSmall = {0.0045813, 0.0360768, 0.26687756, 1.2067492,
                                          3.0899424, 3.5156229, 1};
const std::vector<double> kDivisorLarge = {0.00392377,  -0.01647633, 0.02635537, -0.02057706, 0.00916281,
                                           -0.00157565, 0.00225319,  0.01328592, 0.39894228};
const std::vector<double> kWeightLarge = {0.00392377,  -0.01647633, 0.02635537, -0.02057706, 0.00916281,
                                          -0.00157565, 0.00225319,  0.01328592, 0.3989423};
const std::vector<double> kDivisorSmall64 = {0.0008267816, 0.0075942968, 0.0713758187, 0.4443189384,
                                             1.777809969,  3.9999959541, 4.0000001935, 0.9999999985};
const std::vector<double> kWeightSmall64 = {0.000674193709375, 0.0075942968, 0.0713758187, 0.4443189384,
                                            1.777809969,       3.9999959541, 4.000003096,  0.9999999985};
const std::vector<double> kDivisorLarge64 = {
    0.0051246015,  -0.0366694767, 0.1113315511, -0.1867783276, 0.1895476618, -0.1209940805, 0.0495811118,
    -0.0128314822, 0.0022585672,  0.00026,      0.0017623668,  0.0124667783, 0.3989422809};
const std::vector<double> kWeightLarge64 = {
    0.0051246015,  -0.0366694767,       0.1113315511,  -0.1867783276,      0.18954771930079328,
    -0.1209940805, 0.04958113163828737, -0.0128314822, 0.0022585681074049, 0.00026,
    0.0017623668,  0.0124667783,        0.3989422809};

template <class F>
F polynomial(const std::vector<double>& c, F x) {
  F sum = static_cast<F>(c[0]);
  for (size_t i = 1; i < c.size(); ++i) {
    const F product = sum * x;
    sum = product + static_cast<F>(c[i]);
  }
  return sum;
}

template <class T>
using Weight = std::conditional_t<sizeof(PartOf<T>) == 8, double, float>;

struct WeightModel {
  Extended weight;
  bool isExact;  // by the bit; otherwise the exponential is in it
};

// Of pairs n in steps of four (64f: two), and of those that do not fill one.
template <class W>
WeightModel weight(int len, size_t n, W alpha, double divisorArgument) {
  constexpr bool isDouble = sizeof(W) == 8;
  const double breakpoint = isDouble ? 4.0 : 3.75;
  const size_t half = static_cast<size_t>(len) / 2, step = isDouble ? 2 : 4;
  const double x0 = divisorArgument;
  Extended divisor;
  const bool exactDivisor = x0 < breakpoint;
  if (exactDivisor) {
    const double ratio = isDouble ? x0 * 0.25 : x0 * 0.26666666666666666;
    divisor = polynomial(isDouble ? kDivisorSmall64 : kDivisorSmall, ratio * ratio);
  } else {
    divisor = polynomial<Extended>(isDouble ? kDivisorLarge64 : kDivisorLarge, breakpoint / x0) *
              std::exp(static_cast<Extended>(x0)) / std::sqrt(static_cast<Extended>(x0));
  }
  const auto& small = isDouble ? kWeightSmall64 : kWeightSmall;
  const auto& large = isDouble ? kWeightLarge64 : kWeightLarge;
  const W ratio = static_cast<W>(isDouble ? 0.25 : 0.26666668f);
  const W norm = static_cast<W>(1.0 / static_cast<double>(divisor));
  if (n >= half / step * step) {
    const Extended r =
        std::sqrt(static_cast<Extended>(len - 1 - static_cast<int>(n)) * static_cast<Extended>(n));
    const Extended x = std::fabs(r * static_cast<Extended>(alpha)), k = static_cast<Extended>(ratio);
    if (x >= breakpoint) {
      return {std::exp(x) / std::sqrt(x) * polynomial<Extended>(large, breakpoint / x) / divisor, false};
    }
    const Extended bessel = polynomial<Extended>(small, x * k * x * k);
    if (!exactDivisor) return {bessel / divisor, false};
    return {static_cast<Extended>(static_cast<W>(bessel * static_cast<Extended>(norm))), true};
  }
  const W last = static_cast<W>(len - 1), index = static_cast<W>(n);
  const W difference = last - index;
  const W product = difference * index;
  const W r = std::sqrt(product);
  const W x = std::fabs(r * alpha);
  if (static_cast<double>(x) >= breakpoint) {
    const Extended wide = static_cast<Extended>(x);
    return {std::exp(wide) / std::sqrt(wide) * polynomial<Extended>(large, breakpoint / wide) / divisor,
            false};
  }
  const W y1 = x * ratio;
  const W y2 = y1 * x;
  const W bessel = polynomial<W>(small, y2 * ratio);
  if (!exactDivisor) return {static_cast<Extended>(bessel) / divisor, false};
  return {static_cast<Extended>(bessel * norm), true};
}

template <class P>
bool isClose(P got, P x, const WeightModel& model) {
  using W = std::conditional_t<sizeof(P) == 8, double, float>;
  if (model.isExact) return sameBits(got, times(x, static_cast<W>(model.weight)));
  const Extended want = model.weight * static_cast<Extended>(x), tolerance = sizeof(P) == 8 ? 1e-14L : 2e-6L;
  if constexpr (std::is_integral_v<P>) {
    const Extended limited = std::clamp<Extended>(want, -32768, 32767);
    return std::fabs(static_cast<Extended>(got) - limited) <= 0.5L + std::fabs(want) * tolerance;
  } else {
    return std::fabs(static_cast<Extended>(got) - want) <=
           std::fabs(want) * tolerance + static_cast<Extended>(std::numeric_limits<P>::min());
  }
}
template <class T>
bool isCloseElement(T got, T x, const WeightModel& model) {
  if constexpr (std::is_arithmetic_v<T>) {
    return isClose(got, x, model);
  } else {
    return isClose(got.re, x.re, model) && isClose(got.im, x.im, model);
  }
}

template <class T>
bool accepts(const std::vector<T>& got, const std::vector<T>& x, Weight<T> alpha, double divisorArgument) {
  const int len = static_cast<int>(x.size());
  for (size_t n = 0; n < x.size(); ++n) {
    const size_t mirror = x.size() - 1 - n;
    const bool right =
        n == mirror ? sameBits(got[n], x[n])
                    : isCloseElement(got[n], x[n],
                                     weight<Weight<T>>(len, std::min(n, mirror), alpha, divisorArgument));
    if (!right) {
      ADD_FAILURE() << "element " << n << " of " << len << ", alpha " << alpha << ": " << show(x[n])
                    << " became " << show(got[n]);
      return false;
    }
  }
  return true;
}

// alpha such that alpha * (len - 1) / 2 is about `argument`.
float alphaFor(double argument, size_t len) {
  return len < 2 ? 1.0f : static_cast<float>(argument * 2 / static_cast<double>(len - 1) * 0.999999);
}

template <class T>
void checkKaiser(KvrStatus (*call)(const T*, T*, int, Kvr32f) noexcept,
                 KvrStatus (*inPlace)(T*, int, Kvr32f) noexcept, std::vector<double> arguments) {
  // The first argument at every length.
  for (double argument : arguments) {
    const int stride = argument == arguments[0] ? 1 : 31;
    const auto alpha = [&](size_t len) {
      return argument < 0 ? -alphaFor(-argument, len) : alphaFor(argument, len);
    };
    checkWindow<T>(
        [&](const T* src, T* dst, int len) { return call(src, dst, len, alpha(static_cast<size_t>(len))); },
        [&](T* srcDst, int len) { return inPlace(srcDst, len, alpha(static_cast<size_t>(len))); }, 1,
        [&](const std::vector<T>& got, const std::vector<T>& x) {
          const float a = alpha(x.size());
          const double divisorArgument =
              std::fabs(static_cast<double>(static_cast<float>(x.size() - 1)) * static_cast<double>(a)) * 0.5;
          return accepts<T>(got, x, static_cast<Weight<T>>(a), divisorArgument);
        },
        stride);
  }
}

TEST(WindowKaiser, Singles) {
  checkKaiser<Kvr32f>(kvrsWinKaiser_32f, kvrsWinKaiser_32f_I, {9, 0, 2, -3.7, 3.8, 38});
  checkKaiser<Kvr32fc>(kvrsWinKaiser_32fc, kvrsWinKaiser_32fc_I, {3, 12, 38});
}

TEST(WindowKaiser, Doubles) {
  checkKaiser<Kvr64f>(kvrsWinKaiser_64f, kvrsWinKaiser_64f_I, {9, 0, 2, -3.9, 4.1, 308});
  checkKaiser<Kvr64fc>(kvrsWinKaiser_64fc, kvrsWinKaiser_64fc_I, {3, 50});
}

// Arguments beyond 88 have exponentials beyond the range of singles.
TEST(WindowKaiser, Integers) {
  checkKaiser<Kvr16s>(kvrsWinKaiser_16s, kvrsWinKaiser_16s_I, {12, 0, 3, 79, 81, 100, 308});
  checkKaiser<Kvr16sc>(kvrsWinKaiser_16sc, kvrsWinKaiser_16sc_I, {3, 12, 308});
}

template <class T>
void checkQ15(KvrStatus (*call)(const T*, T*, int, int) noexcept,
              KvrStatus (*inPlace)(T*, int, int) noexcept) {
  for (double argument : {0.0, 3.0, 20.0, -300.0}) {
    const auto alpha = [&](size_t len) {
      return len < 2 ? 7 : static_cast<int>(argument * 2 / static_cast<double>(len - 1) * 32768);
    };
    checkWindow<T>(
        [&](const T* src, T* dst, int len) { return call(src, dst, len, alpha(static_cast<size_t>(len))); },
        [&](T* srcDst, int len) { return inPlace(srcDst, len, alpha(static_cast<size_t>(len))); }, 1,
        [&](const std::vector<T>& got, const std::vector<T>& x) {
          const double a = alpha(x.size()) / 32768.0;
          return accepts<T>(got, x, static_cast<float>(a),
                            std::fabs(static_cast<double>(x.size() - 1) * a * 0.5));
        },
        31);
  }
}

TEST(WindowKaiser, Q15) {
  checkQ15<Kvr16s>(kvrsWinKaiserQ15_16s, kvrsWinKaiserQ15_16s_I);
  checkQ15<Kvr16sc>(kvrsWinKaiserQ15_16sc, kvrsWinKaiserQ15_16sc_I);
}

TEST(WindowKaiser, Limits) {
  Kvr32f x[5] = {1, 1, 1, 1, 1}, y[5];
  EXPECT_EQ(kvrStatusOk, kvrsWinKaiser_32f(x, y, 5, 19.0f));  // 38 exactly
  EXPECT_EQ(kvrStatusKaiserOverflow, kvrsWinKaiser_32f(x, y, 5, std::nextafter(19.0f, 20.0f)));
  EXPECT_EQ(kvrStatusKaiserOverflow, kvrsWinKaiser_32f(x, y, 5, -19.5f));
  Kvr16s x16[5] = {}, y16[5];
  EXPECT_EQ(kvrStatusOk, kvrsWinKaiser_16s(x16, y16, 5, 154.0f));  // 308 exactly
  EXPECT_EQ(kvrStatusKaiserOverflow, kvrsWinKaiser_16s(x16, y16, 5, std::nextafter(154.0f, 155.0f)));
  EXPECT_EQ(kvrStatusOk, kvrsWinKaiserQ15_16s(x16, y16, 5, 154 * 32768));
  EXPECT_EQ(kvrStatusKaiserOverflow, kvrsWinKaiserQ15_16s(x16, y16, 5, 154 * 32768 + 1));
  EXPECT_EQ(kvrStatusKaiserOverflow, kvrsWinKaiserQ15_16s(x16, y16, 5, INT32_MIN));
  // One element has no argument that could overflow.
  x[0] = 7;
  EXPECT_EQ(kvrStatusOk, kvrsWinKaiser_32f(x, y, 1, 1e30f));
  EXPECT_EQ(7, y[0]);
}

// The definition by the C++ library's Bessel function.
TEST(WindowKaiser, CloseToItsDefinition) {
  for (int len : {2, 3, 10, 101, 5000}) {
    for (double argument : {0.5, 3.0, 8.0, 30.0}) {
      const size_t n = static_cast<size_t>(len);
      const float alpha = alphaFor(argument, n);
      const std::vector<Kvr64f> ones(n, 1.0);
      const std::vector<Kvr32f> singles(n, 1.0f);
      std::vector<Kvr64f> y(n);
      std::vector<Kvr32f> z(n);
      ASSERT_EQ(kvrStatusOk, kvrsWinKaiser_64f(ones.data(), y.data(), len, alpha));
      ASSERT_EQ(kvrStatusOk, kvrsWinKaiser_32f(singles.data(), z.data(), len, alpha));
      const double a = static_cast<double>(alpha), peak = std::cyl_bessel_i(0.0, a * (len - 1) / 2);
      for (size_t i = 0; i < n; ++i) {
        const double inside = static_cast<double>(i) * static_cast<double>(n - 1 - i);
        const double want = std::cyl_bessel_i(0.0, a * std::sqrt(inside)) / peak;
        ASSERT_NEAR(want, y[i], 2e-6) << i << " of " << len << ", " << argument;
        ASSERT_NEAR(want, z[i], 3e-4) << i << " of " << len << ", " << argument;
      }
    }
  }
}

}  // namespace
