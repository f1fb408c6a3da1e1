// SPDX-License-Identifier: MIT
#include "frame/logarithm.h"

#include <cmath>
#include <limits>
#include <vector>

#include "tests/support/ulps.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

template <class T>
std::vector<T> positiveNumbers() {
  using L = std::numeric_limits<T>;
  std::vector<T> x{1, L::min(), L::max(), std::nextafter(T(1), T(0)), std::nextafter(T(1), T(2))};
  Random random(3);
  for (int i = 0; i < 5000; ++i)
    x.push_back(std::fabs(ofExponents<T>(random, L::min_exponent - 1, L::max_exponent - 1)));
  for (int i = 0; i < 5000; ++i) x.push_back(std::fabs(ofExponents<T>(random, -2, 1)));
  return x;
}

// op on full vectors, all lanes but the first holding something else.
template <class T, class Op>
T ofLane(T x, Op op) {
  const Lanes<T, kLanes<T>> d;
  T lanes[kLanes<T>];
  for (T& lane : lanes) lane = 3;
  lanes[0] = x;
  hn::StoreU(op(d, hn::LoadU(d, lanes)), d, lanes);
  return lanes[0];
}

template <class T>
void checkSplit(T lowest) {
  for (T x : positiveNumbers<T>()) {
    const T k = ofLane(x, [](auto d, auto v) { return splitPowerOfTwo(d, v).k; });
    const T m = ofLane(x, [](auto d, auto v) { return splitPowerOfTwo(d, v).m; });
    ASSERT_EQ(x, std::ldexp(static_cast<long double>(m), static_cast<int>(k)));
    ASSERT_TRUE(m >= lowest && m < 2 * lowest) << x << ": " << m;
  }
}

TEST(Logarithm, SplitIsExact) {
  checkSplit(0x1.555556p-1f);
  checkSplit(0x1.6a09e667f3bcdp-1);
}

TEST(Logarithm, SplitTellsWhatIsNotNormal) {
  const auto exponent = [](double x) {
    return ofLane(x, [](auto d, auto v) { return splitPowerOfTwo(d, v).k; });
  };
  const double inf = std::numeric_limits<double>::infinity(), nan = std::numeric_limits<double>::quiet_NaN();
  for (double x : {0.0, 5e-324, 2.2e-308, inf, nan, -0.0, -1.0, -5e-324, -1e308, -inf, -nan}) {
    EXPECT_TRUE(exponent(x) < -1021 || exponent(x) > 1023) << x;
  }
}

template <class T>
void checkLogarithms() {
  for (T x : positiveNumbers<T>()) {
    const long double want = std::log(static_cast<long double>(x));
    ASSERT_LT(ulps(ofLane(x, [](auto d, auto v) { return logarithmOfNormal(d, v); }), want), 1) << x;
    ASSERT_LT(ulps(ofLane(x, [](auto d, auto v) { return logarithm(d, v); }), want), 1) << x;
  }
  using L = std::numeric_limits<T>;
  const T special[] = {0,           -T(0), -1, L::infinity(), -L::infinity(), L::quiet_NaN(), L::denorm_min(),
                       L::min() / 2};
  for (T x : special) {
    const long double want = std::log(static_cast<long double>(x));
    ASSERT_LT(ulps(ofLane(x, [](auto d, auto v) { return logarithm(d, v); }), want), 1) << x;
    EXPECT_EQ(T(0), ofLane(x, [](auto d, auto v) {
                return hn::IfThenElseZero(isPositiveNormal(d, v), hn::Set(d, T(1)));
              }));
  }
}

TEST(Logarithm, Values) {
  checkLogarithms<float>();
  checkLogarithms<double>();
}

}  // namespace
