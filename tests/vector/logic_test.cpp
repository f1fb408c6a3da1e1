// SPDX-License-Identifier: MIT
#include "kvrs/logic.h"

#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

template <class T>
using Vector = KvrStatus (*)(const T*, const T*, T*, int) noexcept;
template <class T>
using VectorI = KvrStatus (*)(const T*, T*, int) noexcept;
template <class T>
using Scalar = KvrStatus (*)(const T*, T, T*, int) noexcept;
template <class T>
using ScalarI = KvrStatus (*)(T, T*, int) noexcept;

template <class T, class Oracle>
void checkVector(Vector<T> f, VectorI<T> inPlace, Oracle oracle) {
  sweepMap<T, T, T>(f, oracle);
  sweepInPlace<T, T>(inPlace, oracle);
}

template <class T, class Oracle>
void checkScalar(Scalar<T> f, ScalarI<T> inPlace, Oracle oracle) {
  for (T val : {T{0}, T{1}, static_cast<T>(0x5A5A5A5A), static_cast<T>(-1)}) {
    const auto withVal = [=](T a) { return oracle(a, val); };
    sweepMap<T, T>([=](const T* src, T* dst, int len) { return f(src, val, dst, len); }, withVal);
    sweepInPlace<T>([=](T* srcDst, int len) { return inPlace(val, srcDst, len); }, withVal);
  }
}

template <class T>
T both(T a, T b) {
  return a & b;
}
template <class T>
T either(T a, T b) {
  return a | b;
}
template <class T>
T different(T a, T b) {
  return a ^ b;
}
template <class T>
T inverse(T a) {
  return static_cast<T>(~a);
}

TEST(Logic, And) {
  checkVector(kvrsAnd_8u, kvrsAnd_8u_I, both<Kvr8u>);
  checkVector(kvrsAnd_16u, kvrsAnd_16u_I, both<Kvr16u>);
  checkVector(kvrsAnd_32u, kvrsAnd_32u_I, both<Kvr32u>);
}

TEST(Logic, Or) {
  checkVector(kvrsOr_8u, kvrsOr_8u_I, either<Kvr8u>);
  checkVector(kvrsOr_16u, kvrsOr_16u_I, either<Kvr16u>);
  checkVector(kvrsOr_32u, kvrsOr_32u_I, either<Kvr32u>);
}

TEST(Logic, Xor) {
  checkVector(kvrsXor_8u, kvrsXor_8u_I, different<Kvr8u>);
  checkVector(kvrsXor_16u, kvrsXor_16u_I, different<Kvr16u>);
  checkVector(kvrsXor_32u, kvrsXor_32u_I, different<Kvr32u>);
}

TEST(Logic, AndC) {
  checkScalar(kvrsAndC_8u, kvrsAndC_8u_I, both<Kvr8u>);
  checkScalar(kvrsAndC_16u, kvrsAndC_16u_I, both<Kvr16u>);
  checkScalar(kvrsAndC_32u, kvrsAndC_32u_I, both<Kvr32u>);
}

template <class T>
void checkZero(Scalar<T> f, ScalarI<T> inPlace) {
  T src[2] = {1, 2}, dst[3] = {3, 4, 5};
  EXPECT_EQ(kvrStatusNullPointer, f(src, 0, nullptr, 0));
  EXPECT_EQ(kvrStatusNullPointer, inPlace(0, nullptr, 0));
  EXPECT_EQ(kvrStatusBadLength, f(nullptr, 0, dst, 0));
  EXPECT_EQ(kvrStatusBadLength, inPlace(0, dst, -1));
  EXPECT_EQ(kvrStatusNullPointer, f(nullptr, 1, dst, 2));
  EXPECT_EQ(T{3}, dst[0]);
  EXPECT_EQ(kvrStatusOk, f(nullptr, 0, dst, 2));
  EXPECT_EQ(T{0}, dst[0]);
  EXPECT_EQ(T{0}, dst[1]);
  EXPECT_EQ(T{5}, dst[2]);
  EXPECT_EQ(kvrStatusOk, inPlace(0, src, 2));
  EXPECT_EQ(0u, src[0] | src[1]);
}

TEST(Logic, AndCByZeroIsZeroWhoseChecksStandIn) {
  checkZero(kvrsAndC_8u, kvrsAndC_8u_I);
  checkZero(kvrsAndC_16u, kvrsAndC_16u_I);
  checkZero(kvrsAndC_32u, kvrsAndC_32u_I);
}

// Copy does take the source.
template <class T>
void checkCopy(Scalar<T> f, ScalarI<T> inPlace) {
  T src[2] = {1, 2}, dst[3] = {3, 4, 5};
  EXPECT_EQ(kvrStatusNullPointer, f(nullptr, 0, dst, 0));
  EXPECT_EQ(kvrStatusNullPointer, f(nullptr, 0, nullptr, 2));
  EXPECT_EQ(kvrStatusNullPointer, f(src, 0, nullptr, 0));
  EXPECT_EQ(kvrStatusNullPointer, inPlace(0, nullptr, 0));
  EXPECT_EQ(kvrStatusBadLength, f(src, 0, dst, 0));
  EXPECT_EQ(kvrStatusBadLength, inPlace(0, dst, 0));
  EXPECT_EQ(T{3}, dst[0]);
  EXPECT_EQ(kvrStatusOk, f(src, 0, dst, 2));
  EXPECT_EQ(T{2}, dst[1]);
  EXPECT_EQ(T{5}, dst[2]);
}

TEST(Logic, OrCAndXorCByZeroAreCopy) {
  checkCopy(kvrsOrC_8u, kvrsOrC_8u_I);
  checkCopy(kvrsOrC_16u, kvrsOrC_16u_I);
  checkCopy(kvrsOrC_32u, kvrsOrC_32u_I);
  checkCopy(kvrsXorC_8u, kvrsXorC_8u_I);
  checkCopy(kvrsXorC_16u, kvrsXorC_16u_I);
  checkCopy(kvrsXorC_32u, kvrsXorC_32u_I);
}

TEST(Logic, OrC) {
  checkScalar(kvrsOrC_8u, kvrsOrC_8u_I, either<Kvr8u>);
  checkScalar(kvrsOrC_16u, kvrsOrC_16u_I, either<Kvr16u>);
  checkScalar(kvrsOrC_32u, kvrsOrC_32u_I, either<Kvr32u>);
}

TEST(Logic, XorC) {
  checkScalar(kvrsXorC_8u, kvrsXorC_8u_I, different<Kvr8u>);
  checkScalar(kvrsXorC_16u, kvrsXorC_16u_I, different<Kvr16u>);
  checkScalar(kvrsXorC_32u, kvrsXorC_32u_I, different<Kvr32u>);
}

TEST(Logic, Not) {
  sweepMap<Kvr8u, Kvr8u>(kvrsNot_8u, inverse<Kvr8u>);
  sweepMap<Kvr16u, Kvr16u>(kvrsNot_16u, inverse<Kvr16u>);
  sweepMap<Kvr32u, Kvr32u>(kvrsNot_32u, inverse<Kvr32u>);
  sweepInPlace<Kvr8u>(kvrsNot_8u_I, inverse<Kvr8u>);
  sweepInPlace<Kvr16u>(kvrsNot_16u_I, inverse<Kvr16u>);
  sweepInPlace<Kvr32u>(kvrsNot_32u_I, inverse<Kvr32u>);
}

}  // namespace
