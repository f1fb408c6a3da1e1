// SPDX-License-Identifier: MIT
#include <cmath>
#include <vector>

#include "kvrs/threshold.h"
#include "tests/support/floats.h"
#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

template <class T>
T inverse(T x, T level) {
  const T magnitude = std::fabs(x);
  return 1 / std::copysign(magnitude < level ? level : magnitude, x);
}

template <class C, class T>
T squareOf(C z, T) {
  const volatile T re = z.re * z.re, im = z.im * z.im;
  return re + im;
}
template <class C, class T>
C complexInverse(C z, T level) {
  const T square = squareOf(z, T());
  if (square == 0) return {1 / level, 0};
  const volatile T levelSquare = level * level;
  const T root = std::sqrt(square);
  const volatile T divisor = square < levelSquare ? root * level : square;
  return {z.re / divisor, -z.im / divisor};
}

template <class S, class T, class Oracle>
void sweepAt(KvrStatus (*f)(const S*, S*, int, T) noexcept, KvrStatus (*inPlace)(S*, int, T) noexcept,
             Oracle oracle) {
  for (T level : {T(0.5), T(0), T(1e-20), std::numeric_limits<T>::infinity()}) {
    SweepOptions options;
    if (level != T(0.5)) options.lengths = {1, 2, 3, 5, 8, 15, 16, 17, 31, 33, 65};
    // Zeros, which would warn, are below.
    const auto draw = [=](Random& random, size_t, S) {
      for (;;) {
        const S x = anyElement<S>(random);
        if (level != 0) return x;
        if constexpr (std::is_floating_point_v<S>) {
          if (x != 0) return x;
        } else {
          if (squareOf(x, T()) != 0) return x;
        }
      }
    };
    const auto exact = [=](S x) { return oracle(x, level); };
    sweepMapWith<S, S>([=](const S* src, S* dst, int len) { return f(src, dst, len, level); }, exact,
                       sameFloat<S>, draw, options);
    sweepInPlaceWith<S>([=](S* srcDst, int len) { return inPlace(srcDst, len, level); }, exact, sameFloat<S>,
                        draw, options);
  }
}

TEST(ThresholdInverse, Sweep) {
  sweepAt(kvrsThreshold_LTInv_32f, kvrsThreshold_LTInv_32f_I, inverse<Kvr32f>);
  sweepAt(kvrsThreshold_LTInv_64f, kvrsThreshold_LTInv_64f_I, inverse<Kvr64f>);
  sweepAt(kvrsThreshold_LTInv_32fc, kvrsThreshold_LTInv_32fc_I, complexInverse<Kvr32fc, Kvr32f>);
  sweepAt(kvrsThreshold_LTInv_64fc, kvrsThreshold_LTInv_64fc_I, complexInverse<Kvr64fc, Kvr64f>);
}

TEST(ThresholdInverse, KnownValues) {
  const Kvr32f src[] = {0.5f, -0.5f, 4, -4, 0, -0.0f};
  const Kvr32f want[] = {0.5f, -0.5f, 0.25f, -0.25f, 0.5f, -0.5f};
  Kvr32f got[6];
  ASSERT_EQ(kvrStatusOk, kvrsThreshold_LTInv_32f(src, got, 6, 2));
  for (int i = 0; i < 6; ++i) EXPECT_EQ(want[i], got[i]);
  const Kvr64fc z[] = {{3, 4}, {0, 0}, {0.3, 0.4}};
  Kvr64fc inverses[3];
  ASSERT_EQ(kvrStatusOk, kvrsThreshold_LTInv_64fc(z, inverses, 3, 1));
  EXPECT_TRUE(inverses[0].re == 3.0 / 25 && inverses[0].im == -4.0 / 25);
  EXPECT_TRUE(inverses[1].re == 1 && sameBits(0.0, inverses[1].im));
  EXPECT_NEAR(0.6, inverses[2].re, 1e-15);
  EXPECT_NEAR(-0.8, inverses[2].im, 1e-15);
  ASSERT_EQ(kvrStatusInvZeroWarn, kvrsThreshold_LTInv_64fc(z, inverses, 3, -0.0));
  EXPECT_EQ(std::numeric_limits<double>::infinity(), inverses[1].re);
}

// With a level of 0: a zero in each place, on both sides of the length that changes the warning.
template <class S, class T>
void checkZeros(KvrStatus (*f)(const S*, S*, int, T) noexcept, int longFrom, S one, S zero) {
  for (int len : {1, 2, 7, 16, 33, 100, longFrom - 1, longFrom, longFrom + 1, 10000}) {
    const size_t n = static_cast<size_t>(len);
    std::vector<S> src(n, one), dst(n);
    ASSERT_EQ(kvrStatusOk, f(src.data(), dst.data(), len, 0));
    const KvrStatus warning = len < longFrom ? kvrStatusInvZeroWarn : kvrStatusDivByZeroWarn;
    for (size_t at : {size_t{0}, n / 2, n - 1}) {
      src[at] = zero;
      ASSERT_EQ(warning, f(src.data(), dst.data(), len, 0)) << len << ", " << at;
      for (size_t i = 0; i < n; ++i) {
        if constexpr (std::is_floating_point_v<S>) {
          ASSERT_EQ(i == at ? std::copysign(std::numeric_limits<T>::infinity(), zero) : 1, dst[i]);
        } else {
          ASSERT_EQ(i == at ? std::numeric_limits<T>::infinity() : 1, dst[i].re);
          ASSERT_EQ(0, dst[i].im);
        }
      }
      ASSERT_EQ(kvrStatusOk, f(src.data(), dst.data(), len, T(0.5)));
      src[at] = one;
    }
  }
}

TEST(ThresholdInverse, ZerosWarn) {
  checkZeros<Kvr32f, Kvr32f>(kvrsThreshold_LTInv_32f, 8192, 1, 0);
  checkZeros<Kvr32f, Kvr32f>(kvrsThreshold_LTInv_32f, 8192, 1, -0.0f);
  checkZeros<Kvr64f, Kvr64f>(kvrsThreshold_LTInv_64f, 2048, 1, -0.0);
  checkZeros<Kvr32fc, Kvr32f>(kvrsThreshold_LTInv_32fc, 2048, {1, 0}, {0, -0.0f});
  checkZeros<Kvr64fc, Kvr64f>(kvrsThreshold_LTInv_64fc, 512, {1, 0}, {0, 0});
}

TEST(ThresholdInverse, OnThreads) {
  std::vector<Kvr32f> src(static_cast<size_t>(threadedLength(8192)) + 7, 3);
  src.back() = 0;
  expectSameOnThreads<Kvr32f>(src.size(), kvrStatusDivByZeroWarn, "32f", [&](Kvr32f* dst) {
    return kvrsThreshold_LTInv_32f(src.data(), dst, static_cast<int>(src.size()), 0);
  });
  const std::vector<Kvr64fc> complex(static_cast<size_t>(threadedLength(512)) + 7, Kvr64fc{1, 2});
  expectSameOnThreads<Kvr64fc>(complex.size(), kvrStatusOk, "64fc", [&](Kvr64fc* dst) {
    return kvrsThreshold_LTInv_64fc(complex.data(), dst, static_cast<int>(complex.size()), 5);
  });
}

}  // namespace
