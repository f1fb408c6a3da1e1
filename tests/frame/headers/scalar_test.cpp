// SPDX-License-Identifier: MIT
#include "frame/scalar.h"

#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

// Every lane of a full vector of parts, or of one pair, holds the scalar or its part.
template <class T, class Part, size_t N>
void check(T val, Part re, Part im) {
  const Lanes<Part, N> d;
  Part got[N];
  hn::StoreU(Scalar<T>(val).in(d), d, got);
  for (size_t i = 0; i < N; ++i) EXPECT_TRUE(sameBits(i % 2 == 0 ? re : im, got[i])) << i;
}

template <class T>
void checkReal(T val) {
  EXPECT_FALSE(kIsComplex<T>);
  check<T, T, kLanes<T>>(val, val, val);
}

template <class T>
void checkComplex(T val) {
  using Part = decltype(val.re);
  EXPECT_TRUE(kIsComplex<T>);
  check<T, Part, kLanes<Part>>(val, val.re, val.im);
}

TEST(Scalar, EveryType) {
  checkReal<Kvr8u>(200);
  checkReal<Kvr16u>(40000);
  checkReal<Kvr16s>(-3);
  checkReal<Kvr32u>(0xFFFFFFF0);
  checkReal<Kvr32s>(-5);
  checkReal<Kvr64s>(-7);
  checkReal<Kvr32f>(-0.0f);
  checkReal<Kvr64f>(1.1);
  checkComplex<Kvr16sc>({-1, 2});
  checkComplex<Kvr32sc>({-1, 2});
  checkComplex<Kvr32fc>({1.5f, -2.5f});
  checkComplex<Kvr64fc>({1.5, -2.5});
}

struct Minus {
  template <class D, class V>
  V operator()(D, V a, V b) const {
    return hn::Sub(a, b);
  }
};

TEST(Scalar, AheadAndBehind) {
  const Lanes<float, kLanes<float>> d;
  EXPECT_EQ(2.0f, hn::GetLane(thenScalar(Minus(), 3.0f)(d, hn::Set(d, 5.0f))));
  EXPECT_EQ(-2.0f, hn::GetLane(scalarThen(Minus(), 3.0f)(d, hn::Set(d, 5.0f))));
}

}  // namespace
