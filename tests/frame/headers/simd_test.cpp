// SPDX-License-Identifier: MIT
#include "frame/simd.h"

#include "kvrs/frame.h"
#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

// The headers are compiled as the module is that they are tested for.
TEST(Simd, WhatTheModuleHas) {
  const std::string module(kvrsGetLibVersion()->targetCpu, 2);
  EXPECT_EQ(module == "v4" ? 64u : module == "v3" ? 32u : 16u, kVectorBytes);
  EXPECT_EQ(module == "v4" ? 32 : module == "s8" ? 8 : 16, kVectorRegisters);
  EXPECT_EQ(module >= "v3", kFusedMulAdd);
  EXPECT_EQ(module >= "v2", kBlends);
  EXPECT_EQ(module == "v4", kMaskRegisters);
  EXPECT_EQ(kVectorBytes, kLanes<uint8_t>);
  EXPECT_EQ(kVectorBytes / 8, kLanes<double>);
}

TEST(Simd, MulAddIsFusedAsToldSo) {
  const Lanes<double, kLanes<double>> d;
  volatile double x = 1 + 0x1p-30;
  const auto v = hn::Set(d, x);
  const double got = hn::GetLane(hn::MulAdd(v, v, hn::Set(d, -(x * x))));
  EXPECT_EQ(kFusedMulAdd ? 0x1p-60 : 0.0, got);
}

template <class T>
void checkFirstLanes() {
  constexpr size_t N = kLanes<T>;
  const Lanes<T, N> d;
  for (size_t count = 0; count <= N; ++count) {
    T got[N];
    hn::StoreU(hn::IfThenElseZero(firstLanes(d, count), hn::Set(d, T{1})), d, got);
    for (size_t i = 0; i < N; ++i) EXPECT_EQ(T(i < count), got[i]) << count;
    if constexpr (kMaskRegisters) {
      const auto even = hn::Eq(hn::And(hn::Iota(d, T{0}), hn::Set(d, T{1})), hn::Zero(d));
      hn::StoreU(hn::IfThenElseZero(bothMasks(firstLanes(d, count), even), hn::Set(d, T{1})), d, got);
      for (size_t i = 0; i < N; ++i) EXPECT_EQ(T(i < count && i % 2 == 0), got[i]) << count;
    }
  }
}

TEST(Simd, FirstLanes) {
  checkFirstLanes<uint8_t>();
  checkFirstLanes<int16_t>();
  checkFirstLanes<int32_t>();
  checkFirstLanes<int64_t>();
}

template <class T, size_t N>
void checkNeighbours() {
  const Lanes<T, N> d;
  T v[N], even[N], odd[N];
  for (size_t i = 0; i < N; ++i) v[i] = static_cast<T>(i + 1);
  hn::StoreU(dupEven(inRegister(hn::LoadU(d, v))), d, even);
  hn::StoreU(dupOdd(hn::LoadU(d, v)), d, odd);
  for (size_t i = 0; i < N; ++i) {
    EXPECT_EQ(v[i & ~size_t{1}], even[i]);
    EXPECT_EQ(v[i | 1], odd[i]);
  }
}

TEST(Simd, Neighbours) {
  checkNeighbours<float, kLanes<float>>();
  checkNeighbours<float, 2>();
  checkNeighbours<double, kLanes<double>>();
  const Lanes<float, 4> d;
  const float x[] = {1, 2, 3, 4}, y[] = {10, 20, 30, 40};
  float got[4];
  hn::StoreU(subAddLanes(hn::LoadU(d, x), hn::LoadU(d, y)), d, got);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(i % 2 == 0 ? x[i] - y[i] : x[i] + y[i], got[i]);
  EXPECT_EQ(1.5f, inRegister(1.5f));
  EXPECT_EQ(1.5, inRegister(1.5));
}

}  // namespace
