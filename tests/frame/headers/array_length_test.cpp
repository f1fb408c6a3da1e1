// SPDX-License-Identifier: MIT
#include "frame/array_length.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

// In a 32-bit process the arrays of some lengths cannot exist.
TEST(ArrayLength, AsLongAsAddressesReach) {
  using namespace kvrs::check;
  const int longest = std::numeric_limits<int>::max();
  const char* bytes = nullptr;
  const short* shorts = nullptr;
  const float* floats = nullptr;
  const float* const* channels = nullptr;
  const bool exists = sizeof(size_t) > 4;
  EXPECT_EQ(kvrStatusOk, length(1, bytes, floats));
  EXPECT_EQ(kvrStatusBadLength, length(0, bytes, floats));
  EXPECT_EQ(kvrStatusBadLength, length(std::numeric_limits<int>::min(), bytes));
  EXPECT_EQ(kvrStatusOk, length(longest, bytes, shorts));
  EXPECT_EQ(exists ? kvrStatusOk : kvrStatusBadLength, length(longest, bytes, floats));
  EXPECT_EQ(exists ? kvrStatusOk : kvrStatusBadLength, length(1 << 30, floats));
  EXPECT_EQ(kvrStatusOk, length((1 << 30) - 1, floats));
  EXPECT_EQ(exists ? kvrStatusOk : kvrStatusBadLength, channelLength(1 << 30, channels));
  EXPECT_EQ(kvrStatusOk, channelLength((1 << 30) - 1, channels));
}

}  // namespace
