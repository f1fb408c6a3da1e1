// SPDX-License-Identifier: MIT
#include "frame/plain.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace kvrs;

namespace {

TEST(Plain, NothingIsComputed) {
  const Lanes<float, 4> d;
  const float a[4] = {-0.0f, 1.5f, -3e38f, 7.0f}, b[4] = {5, 6, 7, 8};
  const auto va = hn::LoadU(d, a), vb = hn::LoadU(d, b);
  float same[4], zeros[4] = {1, 1, 1, 1}, re[4], im[4];
  hn::StoreU(Same()(d, va), d, same);
  hn::StoreU(Zeros()(d), d, zeros);
  const auto both = BothParts()(d, JoinParts()(d, va, vb));
  hn::StoreU(both.re, d, re);
  hn::StoreU(both.im, d, im);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(0, memcmp(&same[i], &a[i], sizeof(float)));
    EXPECT_EQ(0.0f, zeros[i]);
    EXPECT_EQ(0, memcmp(&re[i], &a[i], sizeof(float)));
    EXPECT_EQ(b[i], im[i]);
  }
}

}  // namespace
