// SPDX-License-Identifier: MIT
#include "frame/halves.h"

#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

// Three times a number, by way of doubles: eight times the width of a byte.
struct TimesThree {
  template <class D, class V>
  hn::Vec<D> operator()(D d, V v) const {
    static_assert(hn::MaxLanes(D()) * sizeof(double) <= kVectorBytes, "the doubles fit a vector");
    const hn::Rebind<int32_t, D> d32;
    const hn::Rebind<double, D> df;
    const auto wide = hn::PromoteTo(df, hn::PromoteTo(d32, v));
    return hn::DemoteTo(d, hn::DemoteTo(d32, hn::Mul(wide, hn::Set(df, 3.0))));
  }
};

template <class T, size_t N>
void check() {
  const Lanes<T, N> d;
  T v[N], got[N];
  for (size_t i = 0; i < N; ++i) v[i] = static_cast<T>(i < 40 ? i : i - 64);
  hn::StoreU(through<double>(TimesThree(), d, hn::LoadU(d, v)), d, got);
  for (size_t i = 0; i < N; ++i)
    EXPECT_EQ(std::min<int>(3 * v[i], std::numeric_limits<T>::max()), got[i]) << i;
}

TEST(Halves, LanesInOrder) {
  check<int16_t, kLanes<int16_t>>();
  check<int16_t, kLanes<double>>();
  check<int8_t, kLanes<int8_t>>();
  check<int8_t, kLanes<double>>();
}

}  // namespace
