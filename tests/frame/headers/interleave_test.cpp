// SPDX-License-Identifier: MIT
#include "frame/interleave.h"

#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

template <class T>
class InterleaveTest : public testing::Test {};
using AllLanes = testing::Types<uint8_t, int16_t, int32_t, float, int64_t, double>;
TYPED_TEST_SUITE(InterleaveTest, AllLanes);

// Full vectors, and the halves, quarters ... of one.
template <class T, size_t N>
void check() {
  const Lanes<T, N> d;
  T a[N], b[N], got[2 * N + 1];
  for (size_t i = 0; i < N; ++i) {
    a[i] = static_cast<T>(2 * i);
    b[i] = static_cast<T>(2 * i + 1);
  }
  const auto expectInTurn = [&] {
    for (size_t i = 0; i < 2 * N; ++i) ASSERT_EQ(static_cast<T>(i), got[i]) << N << " lanes";
  };
  memset(got, 0, sizeof got);
  got[2 * N] = T{77};
  storeInterleaved(hn::LoadU(d, a), hn::LoadU(d, b), d, got);
  expectInTurn();
  EXPECT_EQ(T{77}, got[2 * N]);
  if constexpr (N * sizeof(T) >= 16) {
    memset(got, 0, sizeof got);
    const auto both = interleaved(d, hn::LoadU(d, a), hn::LoadU(d, b));
    hn::StoreU(both.first, d, got);
    hn::StoreU(both.second, d, got + N);
    expectInTurn();
    const auto blocks = blocksInOrder(d, hn::InterleaveLower(d, hn::LoadU(d, a), hn::LoadU(d, b)),
                                      hn::InterleaveUpper(d, hn::LoadU(d, a), hn::LoadU(d, b)));
    hn::StoreU(blocks.first, d, got);
    hn::StoreU(blocks.second, d, got + N);
    expectInTurn();
    if constexpr (N * sizeof(T) > 16) check<T, N / 2>();
  }
}

TYPED_TEST(InterleaveTest, LanesInTurn) {
  check<TypeParam, kLanes<TypeParam>>();
}

}  // namespace
