// The texts of statuses.
// SPDX-License-Identifier: MIT
#include "kvrs/status_text.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

constexpr const char* kUnknown = "unknown status";

TEST(StatusText, SaysWhatAStatusMeans) {
  EXPECT_STREQ(kvrsStatusText(0), "success");
  EXPECT_STREQ(kvrsStatusText(6), "a division by zero was met and its result replaced");
  EXPECT_STREQ(kvrsStatusText(-8), "a pointer argument is null");
  EXPECT_STREQ(kvrsStatusText(-9), "an allocation failed");
  EXPECT_STREQ(kvrsStatusText(-213), "a rounding mode that the function does not accept");
}

// The numbers of all statuses; everything else is unknown.
TEST(StatusText, KnowsAllStatusesAndNoOthers) {
  const std::map<int, int> ranges{{0, 0},       {3, 9},       {-11, -5},    {-13, -13},  {-19, -15},
                                  {-33, -24},   {-35, -35},   {-46, -38},   {-53, -53},  {-182, -182},
                                  {-195, -194}, {-206, -206}, {-209, -208}, {-213, -213}};
  for (int status = -1000; status <= 1000; status++) {
    bool known = false;
    for (const auto& [from, to] : ranges) known |= status >= from && status <= to;
    EXPECT_EQ(kvrsStatusText(status) != std::string(kUnknown), known) << status;
  }
  EXPECT_STREQ(kvrsStatusText(INT32_MIN), kUnknown);
  EXPECT_STREQ(kvrsStatusText(INT32_MAX), kUnknown);
}

TEST(StatusText, NoTwoStatusesSayTheSame) {
  std::map<std::string, int> seen;
  for (int status = -1000; status <= 1000; status++) {
    const std::string text = kvrsStatusText(status);
    EXPECT_FALSE(text.empty()) << status;
    if (text == kUnknown) continue;
    const auto [entry, first] = seen.emplace(text, status);
    EXPECT_TRUE(first) << status << " and " << entry->second;
  }
}

}  // namespace
