// SPDX-License-Identifier: MIT
#include "kvrs/unary.h"
#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

template <class T>
using Square = KvrStatus (*)(const T*, T*, int, int) noexcept;
template <class T>
using SquareI = KvrStatus (*)(T*, int, int) noexcept;

// r * 2^(-s), rounded to nearest with ties to even, saturated; |r| up to 2^32.
template <class T>
T scaled(int64_t r, int s) {
  if (s > 33) return 0;
  if (s < -16) return extreme<T>(r);
  return exactQuotient<T>(r, 1, s, To::nearestEven);
}

template <class T>
T squared(T x, int s) {
  if constexpr (std::is_integral_v<T>) {
    return scaled<T>(int64_t{x} * x, s);
  } else {
    return {scaled<Kvr16s>(int64_t{x.re} * x.re - int64_t{x.im} * x.im, s),
            scaled<Kvr16s>(2 * int64_t{x.re} * x.im, s)};
  }
}

template <class T>
void checkVector(Square<T> f, SquareI<T> inPlace, const std::vector<T>& src, int s) {
  std::vector<T> want(src.size()), got(src.size()), inside = src;
  for (size_t i = 0; i < src.size(); ++i) want[i] = squared(src[i], s);
  const int len = static_cast<int>(src.size());
  for (const Mode& mode : kModes) {
    EXPECT_EQ(kvrStatusOk, inMode(mode.fe, [&] { return f(src.data(), got.data(), len, s); }));
    expectSame(want, got, "scale factor " + std::to_string(s));
  }
  EXPECT_EQ(kvrStatusOk, inPlace(inside.data(), len, s));
  expectSame(want, inside, "in place, scale factor " + std::to_string(s));
}

template <class T>
void check(Square<T> f, SquareI<T> inPlace, const std::vector<T>& all) {
  for (int s : {0, 1, 9, -3, 40, -70}) {
    const auto oracle = [=](T x) { return squared(x, s); };
    sweepMap<T, T>([=](const T* src, T* dst, int len) { return f(src, dst, len, s); }, oracle);
    sweepInPlace<T>([=](T* srcDst, int len) { return inPlace(srcDst, len, s); }, oracle);
  }
  for (int s : allScaleFactors()) {
    checkVector(f, inPlace, all, s);
    if (testing::Test::HasFatalFailure()) return;
  }
}

template <class T>
std::vector<T> allValues(size_t count) {
  std::vector<T> all(count);
  for (size_t i = 0; i < count; ++i) all[i] = static_cast<T>(i);
  return all;
}

TEST(SquareInteger, Of8u) {
  check(kvrsSqr_8u_Sfs, kvrsSqr_8u_ISfs, allValues<Kvr8u>(256));
}
TEST(SquareInteger, Of16u) {
  check(kvrsSqr_16u_Sfs, kvrsSqr_16u_ISfs, allValues<Kvr16u>(65536));
}
TEST(SquareInteger, Of16s) {
  check(kvrsSqr_16s_Sfs, kvrsSqr_16s_ISfs, allValues<Kvr16s>(65536));
}

// The imaginary part of the square of (-32768, -32768) is 2^31.
TEST(SquareInteger, Of16sc) {
  std::vector<Kvr16sc> some = randomVector<Kvr16sc>(5000, 3);
  some[0] = {-32768, -32768};
  some[1] = {-32768, 32767};
  check(kvrsSqr_16sc_Sfs, kvrsSqr_16sc_ISfs, some);
}

}  // namespace
