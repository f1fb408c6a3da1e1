// SPDX-License-Identifier: MIT
#include "kvrs/shift.h"

#include <limits>

#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

template <class T>
using Shift = KvrStatus (*)(const T*, int, T*, int) noexcept;
template <class T>
using ShiftI = KvrStatus (*)(int, T*, int) noexcept;

// By powers of two in 128 bits, so that no shift of the oracle has a count to worry about.
template <class T>
T shiftedLeft(T a, int val) {
  if (val >= 64) return 0;
  return static_cast<T>(static_cast<uint64_t>(a) * (uint64_t{1} << val));
}

template <class T>
T shiftedRight(T a, int val) {
  if (val >= 62) return a < 0 ? static_cast<T>(-1) : T{0};
  const int64_t divisor = int64_t{1} << val;
  int64_t quotient = static_cast<int64_t>(a) / divisor;
  if (static_cast<int64_t>(a) % divisor < 0) --quotient;
  return static_cast<T>(quotient);
}

template <class T, class Oracle>
void checkShift(Shift<T> f, ShiftI<T> inPlace, Oracle oracle) {
  const int bits = 8 * sizeof(T);
  std::vector<int> counts;
  for (int val = 0; val <= bits + 2; ++val) counts.push_back(val);
  for (int val : {63, 64, 65, 100, 255, 256, 65536, std::numeric_limits<int>::max()}) counts.push_back(val);
  for (int val : counts) {
    const auto shifted = [=](T a) { return oracle(a, val); };
    const bool usual = val == 0 || val == 3 || val == bits;
    const SweepOptions options = {.lengths =
                                      usual ? sweepLengths() : std::vector<int>{1, 7, 16, 33, 65, 300}};
    sweepMap<T, T>([=](const T* src, T* dst, int len) { return f(src, val, dst, len); }, shifted, options);
    sweepInPlace<T>([=](T* srcDst, int len) { return inPlace(val, srcDst, len); }, shifted, options);
    if (testing::Test::HasFatalFailure()) FAIL() << "count " << val;
  }
}

TEST(Shift, Left) {
  checkShift(kvrsLShiftC_8u, kvrsLShiftC_8u_I, shiftedLeft<Kvr8u>);
  checkShift(kvrsLShiftC_16u, kvrsLShiftC_16u_I, shiftedLeft<Kvr16u>);
  checkShift(kvrsLShiftC_16s, kvrsLShiftC_16s_I, shiftedLeft<Kvr16s>);
  checkShift(kvrsLShiftC_32s, kvrsLShiftC_32s_I, shiftedLeft<Kvr32s>);
}

TEST(Shift, Right) {
  checkShift(kvrsRShiftC_8u, kvrsRShiftC_8u_I, shiftedRight<Kvr8u>);
  checkShift(kvrsRShiftC_16u, kvrsRShiftC_16u_I, shiftedRight<Kvr16u>);
  checkShift(kvrsRShiftC_16s, kvrsRShiftC_16s_I, shiftedRight<Kvr16s>);
  checkShift(kvrsRShiftC_32s, kvrsRShiftC_32s_I, shiftedRight<Kvr32s>);
}

TEST(Shift, CountsBeyondTheWidth) {
  Kvr16s minusOne = -1, dst16s = 5;
  EXPECT_EQ(kvrStatusOk, kvrsRShiftC_16s(&minusOne, 100, &dst16s, 1));
  EXPECT_EQ(-1, dst16s);
  Kvr16u most = 65535, dst16u = 5;
  EXPECT_EQ(kvrStatusOk, kvrsRShiftC_16u(&most, 100, &dst16u, 1));
  EXPECT_EQ(0, dst16u);
  Kvr8u bytes[3] = {1, 2, 255}, dst8u[3] = {9, 9, 9};
  EXPECT_EQ(kvrStatusOk, kvrsLShiftC_8u(bytes, 8, dst8u, 3));
  for (Kvr8u b : dst8u) EXPECT_EQ(0, b);
}

template <class T>
void checkStatuses(Shift<T> f, ShiftI<T> inPlace) {
  T src[2] = {1, 2}, dst[2] = {3, 4};
  for (int val : {0, 1, int{8 * sizeof(T) - 1}, -1, std::numeric_limits<int>::min()}) {
    const KvrStatus ok = val < 0 ? kvrStatusBadShift : kvrStatusOk;
    EXPECT_EQ(kvrStatusNullPointer, f(nullptr, val, dst, 0));
    EXPECT_EQ(kvrStatusNullPointer, f(src, val, nullptr, 0));
    EXPECT_EQ(kvrStatusNullPointer, inPlace(val, nullptr, 0));
    EXPECT_EQ(kvrStatusBadLength, f(src, val, dst, 0));
    EXPECT_EQ(kvrStatusBadLength, inPlace(val, dst, -1));
    EXPECT_EQ(3, dst[0]);
    T copy[2] = {3, 4};
    EXPECT_EQ(ok, f(src, val, copy, 2));
    EXPECT_EQ(ok, inPlace(val, copy, 2));
    if (val < 0) {
      EXPECT_EQ(3, copy[0]);
      EXPECT_EQ(4, copy[1]);
    }
  }
}

TEST(Shift, SignIsTestedAfterPointersAndLength) {
  checkStatuses(kvrsLShiftC_8u, kvrsLShiftC_8u_I);
  checkStatuses(kvrsLShiftC_16u, kvrsLShiftC_16u_I);
  checkStatuses(kvrsLShiftC_16s, kvrsLShiftC_16s_I);
  checkStatuses(kvrsLShiftC_32s, kvrsLShiftC_32s_I);
  checkStatuses(kvrsRShiftC_8u, kvrsRShiftC_8u_I);
  checkStatuses(kvrsRShiftC_16u, kvrsRShiftC_16u_I);
  checkStatuses(kvrsRShiftC_16s, kvrsRShiftC_16s_I);
  checkStatuses(kvrsRShiftC_32s, kvrsRShiftC_32s_I);
}

template <class T>
void checkZero(Shift<T> f, ShiftI<T> inPlace) {
  for (int val : {int{8 * sizeof(T)}, 8 * static_cast<int>(sizeof(T)) + 1, std::numeric_limits<int>::max()}) {
    T src[2] = {1, 2}, dst[3] = {3, 4, 5};
    EXPECT_EQ(kvrStatusNullPointer, f(src, val, nullptr, 0));
    EXPECT_EQ(kvrStatusNullPointer, inPlace(val, nullptr, 0));
    EXPECT_EQ(kvrStatusBadLength, f(nullptr, val, dst, 0));
    EXPECT_EQ(kvrStatusBadLength, inPlace(val, dst, -1));
    EXPECT_EQ(3, dst[0]);
    EXPECT_EQ(kvrStatusOk, f(nullptr, val, dst, 2));
    EXPECT_EQ(0, dst[0]);
    EXPECT_EQ(0, dst[1]);
    EXPECT_EQ(5, dst[2]);
    EXPECT_EQ(kvrStatusOk, inPlace(val, src, 2));
    EXPECT_EQ(0, src[0] | src[1]);
  }
}

TEST(Shift, BeyondTheWidthIsZeroWhoseChecksStandIn) {
  checkZero(kvrsLShiftC_8u, kvrsLShiftC_8u_I);
  checkZero(kvrsLShiftC_16u, kvrsLShiftC_16u_I);
  checkZero(kvrsLShiftC_16s, kvrsLShiftC_16s_I);
  checkZero(kvrsLShiftC_32s, kvrsLShiftC_32s_I);
  checkZero(kvrsRShiftC_8u, kvrsRShiftC_8u_I);
  checkZero(kvrsRShiftC_16u, kvrsRShiftC_16u_I);
}

// The sign of a signed element needs the source.
TEST(Shift, ArithmeticShiftsBeyondTheWidthTestTheSource) {
  Kvr16s dst16s = 5;
  Kvr32s dst32s = 5;
  EXPECT_EQ(kvrStatusNullPointer, kvrsRShiftC_16s(nullptr, 16, &dst16s, 1));
  EXPECT_EQ(kvrStatusNullPointer, kvrsRShiftC_32s(nullptr, 32, &dst32s, 1));
  EXPECT_EQ(5, dst16s);
  EXPECT_EQ(5, dst32s);
}

}  // namespace
