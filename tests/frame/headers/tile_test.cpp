// SPDX-License-Identifier: MIT
#include "frame/tile.h"

#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "frame/loop.h"
#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

using Pieces = std::vector<std::pair<size_t, size_t>>;

TEST(Tile, PiecesCoverTheArrayInTurn) {
  for (size_t len : {0u, 1u, 99u, 100u, 101u, 200u, 1001u}) {
    size_t end = 0;
    forTiles<double, 100>(len, [&](double* tile, size_t begin, size_t count) {
      EXPECT_EQ(end, begin);
      EXPECT_TRUE(count == 100 || (count >= 1 && begin + count == len)) << count;
      EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(tile) % 64);
      for (size_t i = 0; i < count; ++i) tile[i] = 1;  // all of it is there to be written
      end = begin + count;
    });
    EXPECT_EQ(len, end);
  }
}

TEST(Tile, PairsAreApart) {
  Pieces pieces;
  forTilePairs<int16_t, float, 64>(130, [&](int16_t* first, float* second, size_t begin, size_t count) {
    pieces.emplace_back(begin, count);
    EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(first) % 64);
    EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(second) % 64);
    for (size_t i = 0; i < count; ++i) first[i] = static_cast<int16_t>(i);
    for (size_t i = 0; i < count; ++i) second[i] = -1;
    for (size_t i = 0; i < count; ++i) EXPECT_EQ(static_cast<int16_t>(i), first[i]);
  });
  EXPECT_EQ((Pieces{{0, 64}, {64, 64}, {128, 2}}), pieces);
}

struct ToFloat {
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V v) const {
    return hn::ConvertTo(d, hn::PromoteTo(hn::RebindToSigned<D>(), v));
  }
};
struct Half {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V v) const {
    return hn::Mul(v, hn::Set(d, 0.5f));
  }
};
struct ToInteger {
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V v) const {
    return hn::DemoteTo(d, hn::NearestInt(v));
  }
};

// Integers by way of floats, beside the source and in its place.
TEST(Tile, ConvertInWorkConvertOut) {
  const auto half = [](const Kvr16s* src, Kvr16s* dst, int len) {
    forTiles<float, 32>(static_cast<size_t>(len), [=](float* tile, size_t begin, size_t count) {
      mapElements(ToFloat(), tile, count, src + begin);
      mapElements(Half(), tile, count, tile);
      mapElements(ToInteger(), dst + begin, count, tile);
    });
    return kvrStatusOk;
  };
  const auto oracle = [](Kvr16s x) { return static_cast<Kvr16s>(std::nearbyint(x * 0.5f)); };
  const SweepOptions options = {.rounding = Rounding::followed};
  sweepMap<Kvr16s, Kvr16s>(half, oracle, options);
  sweepInPlace<Kvr16s>([&](Kvr16s* srcDst, int len) { return half(srcDst, srcDst, len); }, oracle, options);
}

}  // namespace
