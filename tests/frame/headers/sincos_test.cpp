// SPDX-License-Identifier: MIT
#include "frame/sincos.h"

#include <cmath>

#include "tests/support/ulps.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

// The reference is good for every argument: the C library reduces them exactly.
template <SinCosFor use, class Check>
void expectAll(const std::vector<double>& arguments, Check check) {
  constexpr size_t N = kLanes<double>;
  const Lanes<double, N> d;
  for (size_t i = 0; i + N <= arguments.size(); i += N) {
    const auto of = sinCos<use>(d, hn::LoadU(d, arguments.data() + i));
    double sine[N], cosine[N];
    hn::StoreU(of.sin, d, sine);
    hn::StoreU(of.cos, d, cosine);
    for (size_t k = 0; k < N; ++k) {
      const long double x = arguments[i + k];
      ASSERT_TRUE(check(sine[k], std::sin(x))) << "sine of " << arguments[i + k] << ": " << sine[k];
      ASSERT_TRUE(check(cosine[k], std::cos(x))) << "cosine of " << arguments[i + k] << ": " << cosine[k];
    }
  }
}

// Of all magnitudes, mixed, and next to multiples of a quarter turn. Every argument passes through `as`.
template <class As>
std::vector<double> arguments(int lowest, int highest, As as) {
  Random random;
  std::vector<double> all;
  for (int i = 0; i < 20000; ++i) all.push_back(as(ofExponents<double>(random, lowest, highest)));
  for (int i = 0; i < 4000; ++i) {
    const double quarters =
        std::floor(std::ldexp(1 + std::fabs(random.unit()), static_cast<int>(random.below(30))));
    all.push_back(as(static_cast<double>(quarters * 1.57079632679489661923132169163975144L)));
  }
  for (double x : {0.0, -0.0, 1.0, -1.0, 0.5, 51471.0, 51472.0, -1e9}) all.push_back(as(x));
  return all;
}

TEST(SinCos, Doubles) {
  const auto all = arguments(-1000, 1000, [](double x) { return x; });
  expectAll<SinCosFor::doubles>(all, [](double got, long double want) { return ulps(got, want) < 1; });
}

TEST(SinCos, Singles) {
  const auto all = arguments(-100, 126, [](double x) { return static_cast<double>(static_cast<float>(x)); });
  expectAll<SinCosFor::singles>(all, [](double got, long double want) {
    return std::fabs(got - want) <= std::ldexp(std::fabs(want), -27);
  });
}

TEST(SinCos, Integers) {
  const auto all = arguments(0, 30, [](double x) { return std::trunc(x); });
  expectAll<SinCosFor::integers>(
      all, [](double got, long double want) { return std::fabs(got - want) < 0x1p-51L; });
}

TEST(SinCos, SpecialValues) {
  const Lanes<double, kLanes<double>> d;
  const auto ofZero = sinCos<SinCosFor::doubles>(d, hn::Set(d, -0.0));
  EXPECT_TRUE(std::signbit(hn::GetLane(ofZero.sin)));
  EXPECT_EQ(1, hn::GetLane(ofZero.cos));
  for (double x : {double{INFINITY}, -double{INFINITY}, double{NAN}}) {
    const auto of = sinCos<SinCosFor::doubles>(d, hn::Set(d, x));
    EXPECT_TRUE(std::isnan(hn::GetLane(of.sin)) && std::isnan(hn::GetLane(of.cos))) << x;
  }
}

}  // namespace
