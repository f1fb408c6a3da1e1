// SPDX-License-Identifier: MIT
#include "frame/check.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

KvrStatus checked(const int* a, const float* b, int len, int shift) {
  KVRS_CHECK(pointers(a, b), length(len), shiftCount(shift));
  return 1234;
}

// The first check that fails decides, whatever comes behind it.
TEST(Check, InTheOrderWritten) {
  const int a = 0;
  const float b = 0;
  EXPECT_EQ(1234, checked(&a, &b, 1, 0));
  EXPECT_EQ(kvrStatusNullPointer, checked(nullptr, &b, 1, 0));
  EXPECT_EQ(kvrStatusNullPointer, checked(&a, nullptr, 1, 0));
  EXPECT_EQ(kvrStatusNullPointer, checked(nullptr, nullptr, 0, -1));
  EXPECT_EQ(kvrStatusBadLength, checked(&a, &b, 0, 0));
  EXPECT_EQ(kvrStatusBadLength, checked(&a, &b, std::numeric_limits<int>::min(), -1));
  EXPECT_EQ(kvrStatusBadShift, checked(&a, &b, 1, -1));
}

TEST(Check, TapsLength) {
  using namespace kvrs::check;
  EXPECT_EQ(kvrStatusOk, tapsLength(1));
  EXPECT_EQ(kvrStatusBadTapsLength, tapsLength(0));
  EXPECT_EQ(kvrStatusBadTapsLength, tapsLength(-1));
}

TEST(Check, ContextByItsFirstWord) {
  using kvrs::check::context;
  struct Record {
    uint32_t word;
    int rest;
  };
  const Record record = {0x46493031, 0};
  EXPECT_EQ(kvrStatusOk, context(&record, 0x46493031));
  EXPECT_EQ(kvrStatusOk, context(&record, 7, 0x46493031));
  EXPECT_EQ(kvrStatusContextMismatch, context(&record, 7));
  EXPECT_EQ(kvrStatusContextMismatch, context(&record, 7, 8));
  EXPECT_EQ(kvrStatusNullPointer, context(static_cast<const Record*>(nullptr), 7));
}

}  // namespace
