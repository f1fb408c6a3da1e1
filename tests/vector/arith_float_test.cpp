// SPDX-License-Identifier: MIT
#include "kvrs/arith_float.h"

#include <cfenv>

#include "tests/support/floats.h"
#include "tests/support/large.h"

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

template <class T>
constexpr bool isReal = std::is_floating_point_v<T>;

// The plain operations, each rounded to the type.
template <class T>
T sum(T a, T b) {
  if constexpr (isReal<T>) {
    return a + b;
  } else {
    return {sum(a.re, b.re), sum(a.im, b.im)};
  }
}
template <class T>
T difference(T a, T b) {
  if constexpr (isReal<T>) {
    return b - a;
  } else {
    return {difference(a.re, b.re), difference(a.im, b.im)};
  }
}
template <class T>
T product(T a, T b) {
  if constexpr (isReal<T>) {
    return a * b;
  } else {
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
  }
}

enum class First { pointers, length };

template <class T, class Oracle>
void checkVector(Vector<T> f, VectorI<T> inPlace, Oracle oracle, First first = First::pointers) {
  sweepFloats<T, T, T>(f, oracle);
  sweepFloatsInPlace<T, T>(inPlace, oracle);

  Arena arena(64);
  T* dst = arena.place<T>(2);
  const T src[2] = {};
  const KvrStatus both = first == First::length ? kvrStatusBadLength : kvrStatusNullPointer;
  EXPECT_EQ(kvrStatusNullPointer, f(nullptr, src, dst, 2));
  EXPECT_EQ(kvrStatusNullPointer, f(src, nullptr, dst, 2));
  EXPECT_EQ(kvrStatusNullPointer, f(src, src, nullptr, 2));
  EXPECT_EQ(both, f(nullptr, src, dst, 0));
  EXPECT_EQ(both, f(src, src, nullptr, -1));
  EXPECT_EQ(kvrStatusBadLength, f(src, src, dst, 0));
  EXPECT_EQ(kvrStatusBadLength, f(src, src, dst, -1));
  EXPECT_EQ(kvrStatusNullPointer, inPlace(nullptr, dst, 2));
  EXPECT_EQ(kvrStatusNullPointer, inPlace(src, nullptr, 2));
  EXPECT_EQ(both, inPlace(nullptr, dst, 0));
  EXPECT_EQ(both, inPlace(src, nullptr, -1));
  EXPECT_EQ(kvrStatusBadLength, inPlace(src, dst, 0));
  EXPECT_EQ(kvrStatusBadLength, inPlace(src, dst, std::numeric_limits<int>::min()));
  EXPECT_TRUE(arena.untouched());
}

template <class T>
std::vector<T> scalars() {
  if constexpr (isReal<T>) {
    using L = std::numeric_limits<T>;
    return {T(0.3), T(0), -T(0), T(1), T(-1), L::infinity(), L::quiet_NaN(), L::denorm_min(), L::max()};
  } else {
    using Part = decltype(T::re);
    using L = std::numeric_limits<Part>;
    return {
        {Part(0.3), Part(-1.7)},           {Part(0), -Part(0)}, {Part(1), Part(0)}, {-L::infinity(), Part(1)},
        {L::quiet_NaN(), L::denorm_min()}, {L::max(), L::min()}};
  }
}

// oracle(a, val) is told what to store, shortcuts included.
template <class T, class Oracle>
void checkScalar(Scalar<T> f, ScalarI<T> inPlace, Oracle oracle) {
  SweepOptions options;
  for (T val : scalars<T>()) {
    SCOPED_TRACE("val " + show(val));
    const auto withVal = [=](T a) { return oracle(a, val); };
    sweepFloats<T, T>([=](const T* src, T* dst, int len) { return f(src, val, dst, len); }, withVal, options);
    sweepFloatsInPlace<T>([=](T* srcDst, int len) { return inPlace(val, srcDst, len); }, withVal, options);
    // All lengths with the first scalar; both sides of the usual blocks with the others.
    options.lengths = {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 33, 63, 65, 130, 300};

    Arena arena(64);
    T* dst = arena.place<T>(2);
    const T src[2] = {};
    EXPECT_EQ(kvrStatusNullPointer, f(nullptr, val, dst, 2));
    EXPECT_EQ(kvrStatusNullPointer, f(src, val, nullptr, 2));
    EXPECT_EQ(kvrStatusNullPointer, f(nullptr, val, dst, 0));
    EXPECT_EQ(kvrStatusBadLength, f(src, val, dst, 0));
    EXPECT_EQ(kvrStatusBadLength, f(src, val, dst, -1));
    EXPECT_EQ(kvrStatusNullPointer, inPlace(val, nullptr, 2));
    EXPECT_EQ(kvrStatusNullPointer, inPlace(val, nullptr, 0));
    EXPECT_EQ(kvrStatusBadLength, inPlace(val, dst, 0));
    EXPECT_EQ(kvrStatusBadLength, inPlace(val, dst, -1));
    EXPECT_TRUE(arena.untouched());
  }
}

template <class T>
T sumWithScalar(T a, T val) {
  if constexpr (isReal<T>) {
    return val == 0 ? a : a + val;
  } else {
    return sum(a, val);
  }
}
template <class T>
T differenceWithScalar(T a, T val) {
  if constexpr (isReal<T>) {
    return val == 0 ? a : a - val;
  } else {
    return difference(val, a);
  }
}
template <class T>
T scalarLess(T a, T val) {
  return difference(a, val);
}
template <class T>
T productWithScalar(T a, T val) {
  if constexpr (isReal<T>) {
    return val == 1 ? a : val == 0 ? T(0) : a * val;
  } else {
    return product(a, val);
  }
}

TEST(ArithFloat, Add) {
  checkVector(kvrsAdd_32f, kvrsAdd_32f_I, sum<Kvr32f>);
  checkVector(kvrsAdd_64f, kvrsAdd_64f_I, sum<Kvr64f>);
  checkVector(kvrsAdd_32fc, kvrsAdd_32fc_I, sum<Kvr32fc>, First::length);
  checkVector(kvrsAdd_64fc, kvrsAdd_64fc_I, sum<Kvr64fc>, First::length);
}

TEST(ArithFloat, Sub) {
  checkVector(kvrsSub_32f, kvrsSub_32f_I, difference<Kvr32f>);
  checkVector(kvrsSub_64f, kvrsSub_64f_I, difference<Kvr64f>);
  checkVector(kvrsSub_32fc, kvrsSub_32fc_I, difference<Kvr32fc>, First::length);
  checkVector(kvrsSub_64fc, kvrsSub_64fc_I, difference<Kvr64fc>, First::length);
}

TEST(ArithFloat, Mul) {
  checkVector(kvrsMul_32f, kvrsMul_32f_I, product<Kvr32f>);
  checkVector(kvrsMul_64f, kvrsMul_64f_I, product<Kvr64f>);
  checkVector(kvrsMul_32fc, kvrsMul_32fc_I, product<Kvr32fc>);
  checkVector(kvrsMul_64fc, kvrsMul_64fc_I, product<Kvr64fc>);
}

TEST(ArithFloat, AddC) {
  checkScalar(kvrsAddC_32f, kvrsAddC_32f_I, sumWithScalar<Kvr32f>);
  checkScalar(kvrsAddC_64f, kvrsAddC_64f_I, sumWithScalar<Kvr64f>);
  checkScalar(kvrsAddC_32fc, kvrsAddC_32fc_I, sumWithScalar<Kvr32fc>);
  checkScalar(kvrsAddC_64fc, kvrsAddC_64fc_I, sumWithScalar<Kvr64fc>);
}

TEST(ArithFloat, SubC) {
  checkScalar(kvrsSubC_32f, kvrsSubC_32f_I, differenceWithScalar<Kvr32f>);
  checkScalar(kvrsSubC_64f, kvrsSubC_64f_I, differenceWithScalar<Kvr64f>);
  checkScalar(kvrsSubC_32fc, kvrsSubC_32fc_I, differenceWithScalar<Kvr32fc>);
  checkScalar(kvrsSubC_64fc, kvrsSubC_64fc_I, differenceWithScalar<Kvr64fc>);
}

TEST(ArithFloat, SubCRev) {
  checkScalar(kvrsSubCRev_32f, kvrsSubCRev_32f_I, scalarLess<Kvr32f>);
  checkScalar(kvrsSubCRev_64f, kvrsSubCRev_64f_I, scalarLess<Kvr64f>);
  checkScalar(kvrsSubCRev_32fc, kvrsSubCRev_32fc_I, scalarLess<Kvr32fc>);
  checkScalar(kvrsSubCRev_64fc, kvrsSubCRev_64fc_I, scalarLess<Kvr64fc>);
}

TEST(ArithFloat, MulC) {
  checkScalar(kvrsMulC_32f, kvrsMulC_32f_I, productWithScalar<Kvr32f>);
  checkScalar(kvrsMulC_64f, kvrsMulC_64f_I, productWithScalar<Kvr64f>);
  checkScalar(kvrsMulC_32fc, kvrsMulC_32fc_I, productWithScalar<Kvr32fc>);
  checkScalar(kvrsMulC_64fc, kvrsMulC_64fc_I, productWithScalar<Kvr64fc>);
}

// Shortcuts copy bits: a signalling NaN stays one, which no operation would leave.
TEST(ArithFloat, ShortcutsCopyBits) {
  const uint32_t signalling[5] = {0x7FA00001, 0x80000000, 0xFFA55555, 1, 0x3F800000};
  uint32_t dst[5];
  const auto* src = reinterpret_cast<const Kvr32f*>(signalling);
  auto* out = reinterpret_cast<Kvr32f*>(dst);
  const auto expectCopy = [&](KvrStatus status) {
    EXPECT_EQ(kvrStatusOk, status);
    EXPECT_EQ(0, memcmp(dst, signalling, sizeof dst));
    memset(dst, 0, sizeof dst);
  };
  expectCopy(kvrsAddC_32f(src, 0.0f, out, 5));
  expectCopy(kvrsSubC_32f(src, 0.0f, out, 5));
  expectCopy(kvrsMulC_32f(src, 1.0f, out, 5));
  const auto expectNothing = [&](KvrStatus (*f)(Kvr32f, Kvr32f*, int) noexcept, Kvr32f val) {
    memcpy(dst, signalling, sizeof dst);
    expectCopy(f(val, out, 5));
  };
  expectNothing(kvrsAddC_32f_I, 0.0f);
  expectNothing(kvrsSubC_32f_I, 0.0f);
  expectNothing(kvrsMulC_32f_I, 1.0f);
}

// Vectors that are written past the cache.
template <class T>
void checkLong(Vector<T> f, T (*oracle)(T, T), size_t offset) {
  LargeVector<T> src(8), dst(offset);
  const auto source = [](size_t i) {
    if constexpr (isReal<T>) {
      return static_cast<T>(i % 1021) - 500;
    } else {
      using Part = decltype(T::re);
      return T{static_cast<Part>(i % 1021) - 500, static_cast<Part>(i % 127)};
    }
  };
  for (int i = 0; i < src.size(); ++i)
    put(src.data(), static_cast<size_t>(i), source(static_cast<size_t>(i)));
  ASSERT_EQ(kvrStatusOk, f(src.data(), src.data(), dst.data(), dst.size()));
  dst.expect([&](size_t i) { return oracle(source(i), source(i)); });
}
TEST(ArithFloat, LongVectors) {
  checkLong<Kvr32f>(kvrsMul_32f, product<Kvr32f>, 12);
  checkLong<Kvr32fc>(kvrsMul_32fc, product<Kvr32fc>, 40);
  checkLong<Kvr64fc>(kvrsMul_64fc, product<Kvr64fc>, 32);
}

TEST(ArithFloat, CallersRoundingMode) {
  const Kvr32f src[9] = {1, 1, 1, 1, 1, 1, 1, 1, 1};
  Kvr32f dst[9];
  fesetround(FE_UPWARD);
  const KvrStatus status = kvrsAddC_32f(src, 0x1p-30f, dst, 9);
  fesetround(FE_TONEAREST);
  ASSERT_EQ(kvrStatusOk, status);
  for (Kvr32f x : dst) EXPECT_EQ(1 + 0x1p-23f, x);
}

}  // namespace
