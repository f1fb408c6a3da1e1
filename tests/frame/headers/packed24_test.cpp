// SPDX-License-Identifier: MIT
#include "frame/packed24.h"

#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

// A block of N elements right before a page that may not be touched and right behind one: their bytes are read as
// numbers and written again, and not a byte else.
template <class P, size_t N>
void check() {
  const Lanes<int32_t, N> d;
  Random random;
  Arena from(4096), to(4096);
  for (Side side : {Side::back, Side::front}) {
    P* src = from.place<P>(N, side);
    P* dst = to.place<P>(N, side);
    for (size_t i = 0; i < N; ++i) {
      for (Kvr8u& byte : src[i].byte) byte = static_cast<Kvr8u>(random.bits());
    }
    const auto v = Element<P>::load(d, src);
    int32_t numbers[N];
    hn::StoreU(v, d, numbers);
    for (size_t i = 0; i < N; ++i) {
      const uint32_t bits = src[i].byte[0] | uint32_t{src[i].byte[1]} << 8 | uint32_t{src[i].byte[2]} << 16;
      const int32_t want = P::kLowest < 0 && bits >> 23 != 0 ? static_cast<int32_t>(bits) - (1 << 24)
                                                             : static_cast<int32_t>(bits);
      EXPECT_EQ(want, numbers[i]) << i;
    }
    Element<P>::store(v, d, dst);
    EXPECT_EQ(0, memcmp(src, dst, N * sizeof(P)));
    EXPECT_TRUE(from.intact() && to.intact());
  }
}

TEST(Packed24, LoadAndStore) {
  check<Packed24s, kLanes<int32_t>>();
  check<Packed24u, kLanes<int32_t>>();
  check<Packed24s, 4>();
  check<Packed24u, 4>();
  check<Packed24s, 2>();
  check<Packed24u, 1>();
}

}  // namespace
