// SPDX-License-Identifier: MIT
#include "frame/pack.h"

#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

// A full vector of T widened by `widen`, every lane shifted right by `shift` and narrowed again is as it was.
template <class T, int shift, class Widen>
void checkThereAndBack(Widen widen) {
  constexpr size_t N = kLanes<T>;
  const Lanes<T, N> d;
  Random random;
  T v[N], back[N];
  for (T& x : v) x = random.value<T>();
  auto wide = widen(d, hn::LoadU(d, v));
  wide = {hn::ShiftRight<shift>(wide.first), hn::ShiftRight<shift>(wide.second)};
  hn::StoreU(narrowed(d, wide), d, back);
  for (size_t i = 0; i < N; ++i) EXPECT_EQ(v[i], back[i]) << i;
}

// Numbers about the bounds of T saturate.
template <class T, class Wide>
void checkSaturation() {
  constexpr size_t N = kLanes<T>;
  const Lanes<Wide, N / 2> dw;
  const Wide values[] = {std::numeric_limits<Wide>::lowest(),
                         -1,
                         0,
                         std::numeric_limits<T>::max() - 1,
                         std::numeric_limits<T>::max(),
                         std::numeric_limits<T>::max() + 1};
  for (Wide x : values) {
    T got[N];
    hn::StoreU(narrowed(Lanes<T, N>(), Both{hn::Set(dw, x), hn::Set(dw, x)}), Lanes<T, N>(), got);
    const int64_t low = std::numeric_limits<T>::lowest(), high = std::numeric_limits<T>::max();
    for (T y : got) EXPECT_EQ(std::min(std::max(int64_t{x}, low), high), int64_t{y}) << x;
  }
}

TEST(Pack, ThereAndBack) {
  checkThereAndBack<Kvr8u, 0>([](auto d, auto v) { return widened(d, v); });
  checkThereAndBack<Kvr16u, 0>([](auto d, auto v) { return widened(d, v); });
  checkThereAndBack<Kvr16s, 16>([](auto d, auto v) { return widenedUp(d, v); });
}

TEST(Pack, Saturates) {
  checkSaturation<Kvr8u, int16_t>();
  checkSaturation<Kvr16s, int32_t>();
}

// Signed lanes are moved by 2^15 on the way, for which all but the lowest have room.
TEST(Pack, SaturatesUnsigned) {
  constexpr size_t N = kLanes<Kvr16u>;
  const Lanes<int32_t, N / 2> dw;
  const Lanes<Kvr16u, N> d;
  for (int32_t x : {-1, 0, 32767, 32768, 65534, 65535, 65536, 2147483647}) {
    Kvr16u got[N];
    hn::StoreU(narrowed(d, Both{hn::Set(dw, x), hn::Set(dw, x)}), d, got);
    for (Kvr16u y : got) EXPECT_EQ(std::min(std::max(x, 0), 65535), int{y}) << x;
  }
}

}  // namespace
