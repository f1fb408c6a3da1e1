// SPDX-License-Identifier: MIT
#include "frame/saturating.h"

#include "frame/saturate.h"
#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

template <class T>
class SaturatingTest : public testing::Test {};
using AllLanes = testing::Types<uint8_t, int8_t, uint16_t, int16_t, uint32_t, int32_t, uint64_t, int64_t>;
TYPED_TEST_SUITE(SaturatingTest, AllLanes);

// long double holds every number of 64 bits and every sum of two.
template <class T>
T saturated(long double value) {
  constexpr T lowest = std::numeric_limits<T>::lowest(), highest = std::numeric_limits<T>::max();
  if (value <= static_cast<long double>(lowest)) return lowest;
  return value >= static_cast<long double>(highest) ? highest : static_cast<T>(value);
}

// Random numbers of all sizes, and those about both ends.
template <class T>
T draw(Random& random) {
  constexpr T lowest = std::numeric_limits<T>::lowest(), highest = std::numeric_limits<T>::max();
  const T near = static_cast<T>(random.below(3));
  switch (random.below(5)) {
    case 0:
      return static_cast<T>(lowest + near);
    case 1:
      return static_cast<T>(highest - near);
    case 2:
      return near;
    default:
      return static_cast<T>(random.value<T>() >> random.below(8 * sizeof(T)));
  }
}

TYPED_TEST(SaturatingTest, AgainstWideArithmetic) {
  using T = TypeParam;
  constexpr size_t N = kLanes<T>;
  const Lanes<T, N> d;
  Random random;
  for (int turn = 0; turn < 300; ++turn) {
    T a[N], b[N], got[N];
    for (T& x : a) x = draw<T>(random);
    for (T& x : b) x = draw<T>(random);
    const auto va = hn::LoadU(d, a), vb = hn::LoadU(d, b);
    const auto expect = [&](auto v, auto want) {
      hn::StoreU(v, d, got);
      for (size_t i = 0; i < N; ++i) ASSERT_EQ(+want(a[i], b[i]), +got[i]) << +a[i] << ", " << +b[i];
    };
    const auto wide = [](T x) { return static_cast<long double>(x); };
    expect(saturatedAdd(d, va, vb), [=](T x, T y) { return saturated<T>(wide(x) + wide(y)); });
    expect(saturatedSub(d, va, vb), [=](T x, T y) { return saturated<T>(wide(x) - wide(y)); });
    expect(saturatedBySign(d, va), [](T x, T) { return kvrs::saturateBySign<T>(x); });
    expect(extremeOfSign(d, va),
           [](T x, T) { return x < 0 ? std::numeric_limits<T>::lowest() : std::numeric_limits<T>::max(); });
    const int count = static_cast<int>(random.below(8 * sizeof(T) + 1));
    expect(saturatedShiftLeft(d, va, count),
           [=](T x, T) { return saturated<T>(std::ldexp(wide(x), count)); });
  }
}

TEST(Saturating, HalvesOf64Bits) {
  constexpr size_t N = kLanes<int64_t>;
  const Lanes<int64_t, N> d;
  const Lanes<int32_t, 2 * N> narrow;
  Random random;
  for (int turn = 0; turn < 300; ++turn) {
    int64_t even[N], odd[N];
    int32_t got[2 * N];
    for (int64_t& x : even) x = random.value<int64_t>() >> random.below(64);
    for (int64_t& x : odd) x = draw<int32_t>(random) + static_cast<int64_t>(random.below(5)) - 2;
    hn::StoreU(saturatedHalves(narrow, hn::LoadU(d, even), hn::LoadU(d, odd)), narrow, got);
    for (size_t i = 0; i < N; ++i) {
      ASSERT_EQ(saturate<int32_t>(even[i]), got[2 * i]) << even[i];
      ASSERT_EQ(saturate<int32_t>(odd[i]), got[2 * i + 1]) << odd[i];
    }
  }
}

}  // namespace
