// SPDX-License-Identifier: MIT
#include "frame/widen.h"

#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

// Random numbers and both ends of the range.
template <class T>
T draw(Random& random) {
  const uint32_t kind = random.below(8);
  return kind == 0   ? std::numeric_limits<T>::lowest()
         : kind == 1 ? std::numeric_limits<T>::max()
                     : random.value<T>();
}

TEST(Widen, NeighboursOf16Bits) {
  constexpr size_t N = kLanes<int16_t>;
  const Lanes<int16_t, N> d16;
  const Lanes<int32_t, N / 2> d32;
  Random random;
  for (int turn = 0; turn < 200; ++turn) {
    int16_t a[N], b[N];
    int32_t got[N / 2];
    for (int16_t& x : a) x = draw<int16_t>(random);
    for (int16_t& x : b) x = draw<int16_t>(random);
    hn::StoreU(mulAddNeighbours(d32, hn::LoadU(d16, a), hn::LoadU(d16, b)), d32, got);
    for (size_t i = 0; i < N / 2; ++i) {
      const int64_t want = int64_t{a[2 * i]} * b[2 * i] + int64_t{a[2 * i + 1]} * b[2 * i + 1];
      ASSERT_EQ(static_cast<int32_t>(static_cast<uint64_t>(want)), got[i]);
    }
    const Lanes<int16_t, N / 2> half;
    hn::StoreU(mulWiden(d32, hn::LoadU(half, a), hn::LoadU(half, b)), d32, got);
    for (size_t i = 0; i < N / 2; ++i) ASSERT_EQ(int32_t{a[i]} * b[i], got[i]);
  }
}

template <class T, class Wide>
void checkProducts() {
  constexpr size_t N = kLanes<T>;
  const Lanes<T, N> d;
  const Lanes<Wide, N / 2> dw;
  Random random;
  for (int turn = 0; turn < 200; ++turn) {
    T a[N], b[N], low[N], high[N];
    Wide even[N / 2], odd[N / 2];
    for (T& x : a) x = draw<T>(random);
    for (T& x : b) x = draw<T>(random);
    const auto p = mulEvenOdd(d, hn::LoadU(d, a), hn::LoadU(d, b));
    hn::StoreU(p.even, dw, even);
    hn::StoreU(p.odd, dw, odd);
    hn::StoreU(lowHalves(d, p.even, p.odd), d, low);
    hn::StoreU(highHalves(d, p.even, p.odd), d, high);
    for (size_t i = 0; i < N; ++i) {
      const Wide want = Wide{a[i]} * b[i];
      ASSERT_EQ(want, (i % 2 == 0 ? even : odd)[i / 2]) << a[i] << " * " << b[i];
      ASSERT_EQ(static_cast<T>(want), low[i]);
      ASSERT_EQ(static_cast<T>(want >> 32), high[i]);
    }
  }
}

TEST(Widen, ProductsOf32Bits) {
  checkProducts<int32_t, int64_t>();
  checkProducts<uint32_t, uint64_t>();
}

TEST(Widen, UnsignedExcess) {
  constexpr size_t N = kLanes<int32_t>;
  const Lanes<int32_t, N> d;
  Random random;
  int32_t a[N], b[N], got[N];
  for (int32_t& x : a) x = draw<int32_t>(random);
  for (int32_t& x : b) x = draw<int32_t>(random);
  hn::StoreU(unsignedExcess(hn::LoadU(d, a), hn::LoadU(d, b)), d, got);
  for (size_t i = 0; i < N; ++i) {
    const uint64_t asUnsigned = uint64_t{static_cast<uint32_t>(a[i])} * static_cast<uint32_t>(b[i]);
    const uint64_t asSigned = static_cast<uint64_t>(int64_t{a[i]} * b[i]);
    EXPECT_EQ(static_cast<uint32_t>((asUnsigned - asSigned) >> 32), static_cast<uint32_t>(got[i]));
  }
}

TEST(Widen, Unwrapped) {
  const Lanes<int32_t, kLanes<int32_t>> d;
  for (int32_t x : {INT32_MIN, INT32_MIN + 1, -1, 0, INT32_MAX}) {
    EXPECT_EQ(x == INT32_MIN ? INT32_MAX : x, hn::GetLane(unwrapped(d, hn::Set(d, x))));
  }
}

}  // namespace
