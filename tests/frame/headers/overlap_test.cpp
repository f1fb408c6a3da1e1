// SPDX-License-Identifier: MIT
#include "frame/overlap.h"

#include <gtest/gtest.h>

#include <vector>

using namespace kvrs;

namespace {

TEST(Overlap, ReadsResultsWhereItBeginsBelowAndReachesInto) {
  Kvr32s memory[100];
  Kvr32s* dst = memory + 50;
  for (int by = -50; by <= 49; ++by) {
    for (size_t len : {1, 2, 10, 50}) {
      EXPECT_EQ(by < 0 && static_cast<size_t>(-by) < len, readsResults(dst + by, dst, len))
          << by << ", " << len;
    }
  }
}

// A loop that reads all that it is given before it writes.
TEST(Overlap, ElementsInTheirOrder) {
  for (int by1 = -20; by1 <= 20; ++by1) {
    for (int by2 : {-30, -3, 0, 5}) {
      std::vector<Kvr32s> want(100), got(100);
      for (int i = 0; i < 100; ++i) want[i] = got[i] = i * i;
      for (int i = 0; i < 30; ++i) want[40 + i] = want[40 + by1 + i] + 3 * want[40 + by2 + i];
      const auto map = [](Kvr32s* dst, size_t len, const Kvr32s* a, const Kvr32s* b) {
        std::vector<Kvr32s> results;
        for (size_t i = 0; i < len; ++i) results.push_back(a[i] + 3 * b[i]);
        for (size_t i = 0; i < len; ++i) dst[i] = results[i];
        return KvrStatus{kvrStatusOk};
      };
      Kvr32s* dst = got.data() + 40;
      ASSERT_EQ(kvrStatusOk, inElementOrder(map, dst, 30, static_cast<const Kvr32s*>(dst + by1),
                                            static_cast<const Kvr32s*>(dst + by2)));
      ASSERT_EQ(want, got) << by1 << ", " << by2;
    }
  }
}

TEST(Overlap, StatusComesBack) {
  Kvr32s memory[3] = {};
  const auto refuse = [](Kvr32s*, size_t, const Kvr32s*) { return KvrStatus{kvrStatusBadLength}; };
  EXPECT_EQ(kvrStatusBadLength, inElementOrder(refuse, memory + 1, 2, static_cast<const Kvr32s*>(memory)));
  EXPECT_EQ(kvrStatusBadLength, inElementOrder(refuse, memory, 2, static_cast<const Kvr32s*>(memory + 1)));
}

}  // namespace
