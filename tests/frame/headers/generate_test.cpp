// SPDX-License-Identifier: MIT
#include "frame/generate.h"

#include <numeric>
#include <vector>

#include "tests/synth/generated.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

struct ToInt {
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V v) const {
    return hn::DemoteTo(d, v);
  }
};

std::vector<Kvr16s> counted(int len) {
  std::vector<Kvr16s> want(static_cast<size_t>(len));
  std::iota(want.begin(), want.end(), Kvr16s{0});
  return want;
}

// Each value is made once and in order, whatever is written behind the count.
TEST(Generate, FromTiles) {
  expectGenerated<Kvr16s>(
      [](Kvr16s* dst, int len) {
        int32_t made = 0;
        generate<int32_t>(ToInt(), dst, static_cast<size_t>(len), [&](int32_t* tile, size_t count) {
          EXPECT_LE(count, kTile);
          for (size_t i = 0; i < count; ++i) tile[i] = made++;
          for (size_t i = 0; i < kTileSlack; ++i) tile[count + i] = -1;
        });
        EXPECT_EQ(len, made);
        return kvrStatusOk;
      },
      counted);
}

template <size_t N>
void checkBlocks() {
  expectGenerated<Kvr16s>(
      [](Kvr16s* dst, int len) {
        Kvr16s next = 0;
        generateBlocks<N>(dst, static_cast<size_t>(len), [&](auto d) {
          static_assert(hn::MaxLanes(d) == N);
          const auto v = hn::Iota(d, next);
          next = static_cast<Kvr16s>(next + N);
          return v;
        });
        EXPECT_EQ((static_cast<size_t>(len) + N - 1) / N * N, static_cast<size_t>(next));
        return kvrStatusOk;
      },
      counted);
}

TEST(Generate, Blocks) {
  checkBlocks<kLanes<Kvr16s>>();
  checkBlocks<4>();
  checkBlocks<1>();
}

TEST(Generate, ComplexBlocks) {
  expectGenerated<Kvr32fc>(
      [](Kvr32fc* dst, int len) {
        float next = 0;
        generateBlocks<kLanes<float>>(dst, static_cast<size_t>(len), [&](auto d) {
          const auto re = hn::Iota(d, next);
          next += static_cast<float>(kLanes<float>);
          return Complex<hn::Vec<decltype(d)>>{re, hn::Neg(re)};
        });
        return kvrStatusOk;
      },
      [](int len) {
        std::vector<Kvr32fc> want;
        for (int i = 0; i < len; ++i) want.push_back({static_cast<float>(i), -static_cast<float>(i)});
        return want;
      });
}

}  // namespace
