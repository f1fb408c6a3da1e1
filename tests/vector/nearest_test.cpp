// SPDX-License-Identifier: MIT
#include "kvrs/nearest.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

// By looking at every entry: the nearest, of equally near ones the lower value, of equal ones the last but at the start.
int nearestIndex(Kvr16u x, const std::vector<Kvr16u>& table) {
  if (x <= table.front()) return 0;
  if (x >= table.back()) return static_cast<int>(table.size()) - 1;
  size_t best = 0;
  for (size_t i = 1; i < table.size(); ++i) {
    const int here = std::abs(x - table[i]), before = std::abs(x - table[best]);
    // The upper neighbour, where there are several of it, is met at its first.
    if (here < before || (here == before && table[i] == table[best] && table[i] <= x)) best = i;
  }
  return static_cast<int>(best);
}

std::vector<Kvr16u> someTable(size_t len, uint64_t seed) {
  Random random(seed);
  std::vector<Kvr16u> table(len);
  // Many repeated entries among few values, none else.
  const uint32_t range = seed % 2 == 0 ? 65536 : static_cast<uint32_t>(len);
  for (Kvr16u& entry : table) entry = static_cast<Kvr16u>(random.below(range));
  std::sort(table.begin(), table.end());
  return table;
}

// All 65,536 values on tables of these lengths.
TEST(Nearest, AllValues) {
  std::vector<Kvr16u> src;
  for (int x = 0; x <= 65535; ++x) src.push_back(static_cast<Kvr16u>(x));
  for (size_t len : {1u, 2u, 3u, 4u, 5u, 7u, 8u, 15u, 16u, 17u, 33u, 100u, 255u, 256u, 257u}) {
    for (uint64_t seed : {1u, 2u}) {
      const std::vector<Kvr16u> table = someTable(len, seed + 2 * len);
      std::vector<Kvr16u> dst(src.size());
      std::vector<int> index(src.size());
      ASSERT_EQ(kvrStatusOk, kvrsFindNearest_16u(src.data(), dst.data(), index.data(), 65536, table.data(),
                                                 static_cast<int>(len)));
      for (size_t i = 0; i < src.size(); i += len < 64 ? 1 : 7) {
        const int want = nearestIndex(src[i], table);
        ASSERT_EQ(want, index[i]) << src[i] << " in " << len;
        ASSERT_EQ(table[static_cast<size_t>(want)], dst[i]) << src[i] << " in " << len;
        if (i % 64 != 0) continue;
        Kvr16u value;
        int one;
        ASSERT_EQ(kvrStatusOk,
                  kvrsFindNearestOne_16u(src[i], &value, &one, table.data(), static_cast<int>(len)));
        ASSERT_EQ(want, one) << src[i] << " in " << len;
        ASSERT_EQ(dst[i], value);
      }
    }
  }
}

TEST(Nearest, LongTable) {
  const std::vector<Kvr16u> table = someTable(60000, 4);
  Random random(3);
  std::vector<Kvr16u> src(500), dst(500);
  std::vector<int> index(500);
  for (Kvr16u& x : src) x = random.value<Kvr16u>();
  ASSERT_EQ(kvrStatusOk, kvrsFindNearest_16u(src.data(), dst.data(), index.data(), 500, table.data(), 60000));
  for (size_t i = 0; i < src.size(); ++i) {
    const int want = nearestIndex(src[i], table);
    ASSERT_EQ(want, index[i]);
    ASSERT_EQ(table[static_cast<size_t>(want)], dst[i]);
  }
}

TEST(Nearest, TiesGoToTheLowerEntry) {
  const Kvr16u table[] = {10, 20}, src[] = {15, 16, 0, 65535};
  Kvr16u dst[4];
  int index[4];
  ASSERT_EQ(kvrStatusOk, kvrsFindNearest_16u(src, dst, index, 4, table, 2));
  EXPECT_EQ(10, dst[0]);
  EXPECT_EQ(0, index[0]);
  EXPECT_EQ(20, dst[1]);
  EXPECT_EQ(1, index[1]);
  EXPECT_EQ(0, index[2]);
  EXPECT_EQ(1, index[3]);
}

// Lengths, alignments and guard pages of values and table; in place.
TEST(Nearest, Sweep) {
  for (size_t tableLen : {2u, 16u, 37u}) {
    const std::vector<Kvr16u> entries = someTable(tableLen, 6);
    std::vector<int> indexOf;
    for (int x = 0; x <= 65535; ++x) indexOf.push_back(nearestIndex(static_cast<Kvr16u>(x), entries));
    Arena tables(2 * tableLen), indices(8192);
    for (size_t offset : {0u, 1u, 2u}) {
      Kvr16u* const table = tables.place<Kvr16u>(tableLen, Side::back, offset);
      memcpy(static_cast<void*>(table), entries.data(), 2 * tableLen);
      const auto call = [&](const Kvr16u* src, Kvr16u* dst, int len) {
        const size_t n = static_cast<size_t>(len);
        std::vector<Kvr16u> before(n);
        memcpy(before.data(), src, 2 * n);
        int* const index = indices.place<int>(n, Side::back, offset);
        const KvrStatus status = kvrsFindNearest_16u(src, dst, index, len, table, static_cast<int>(tableLen));
        for (size_t i = 0; i < n; ++i) EXPECT_EQ(indexOf[before[i]], get(index, i));
        EXPECT_TRUE(indices.intact());
        return status;
      };
      const auto oracle = [&](Kvr16u x) { return entries[static_cast<size_t>(indexOf[x])]; };
      sweepMap<Kvr16u, Kvr16u>(call, oracle);
      sweepInPlace<Kvr16u>([&](Kvr16u* srcDst, int len) { return call(srcDst, srcDst, len); }, oracle);
    }
  }
}

}  // namespace
