// SPDX-License-Identifier: MIT
#include "frame/cache.h"

#include <gtest/gtest.h>

namespace {

// Unknown, or of the order of a last-level cache; the same at every call.
TEST(Cache, Plausible) {
  const size_t bytes = kvrs::lastLevelCacheBytes();
  EXPECT_EQ(bytes, kvrs::lastLevelCacheBytes());
  if (bytes != 0) {
    EXPECT_GE(bytes, size_t{128} << 10);
    EXPECT_LE(bytes, size_t{1} << 31);
  }
}

}  // namespace
