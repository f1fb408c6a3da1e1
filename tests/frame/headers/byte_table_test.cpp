// SPDX-License-Identifier: MIT
#include "frame/byte_table.h"

#include <gtest/gtest.h>

using namespace kvrs;

namespace {

constexpr ByteTable kTable{{200, 1, 22, 3, 44, 5, 66, 7, 88, 9, 110, 11, 132, 13, 154, 255}};

// All 256 bytes that are stated, in vectors of N.
template <size_t N>
void checkVectorsOf() {
  const Lanes<uint8_t, N> d;
  for (int first = 0; first < 256; first += static_cast<int>(N)) {
    uint8_t from[N], got[N];
    for (size_t i = 0; i < N; ++i) from[i] = static_cast<uint8_t>(first + static_cast<int>(i));
    hn::StoreU(lookUp(d, kTable, hn::LoadU(d, from)), d, got);
    for (size_t i = 0; i < N; ++i) {
      if (from[i] >= 16 && from[i] < 128) continue;
      EXPECT_EQ(from[i] < 16 ? kTable.at[from[i]] : 0, got[i]) << from[i] << " of " << N;
    }
  }
}

TEST(ByteTable, AllLengths) {
  checkVectorsOf<1>();
  checkVectorsOf<2>();
  checkVectorsOf<8>();
  checkVectorsOf<16>();
  checkVectorsOf<kVectorBytes>();
}

TEST(ByteTable, LanesOfTwoBytes) {
  const Lanes<int16_t, kLanes<int16_t>> d;
  EXPECT_EQ(44, hn::GetLane(lookUp(d, kTable, hn::Set(d, static_cast<int16_t>(0x8004)))));
  EXPECT_EQ(200 << 8 | 44, static_cast<uint16_t>(hn::GetLane(lookUp(d, kTable, hn::Set(d, int16_t{4})))));
}

}  // namespace
