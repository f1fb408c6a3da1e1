// SPDX-License-Identifier: MIT
#include "kvrs/cauchy.h"

#include <cmath>
#include <vector>

#include "tests/support/floats.h"
#include "tests/support/ulps.h"

using namespace kvrs::test;

namespace {

const SweepOptions kFewLengths{.lengths = {1, 2, 3, 5, 8, 15, 16, 17, 31, 33, 65}};

// Step by step, in single precision, but for the logarithm, which is rounded correctly.
Kvr32f error(Kvr32f x, Kvr32f param) {
  const volatile Kvr32f inverse = 1 / param;
  const volatile Kvr32f ratio = x * inverse;
  const volatile Kvr32f square = ratio * ratio;
  const volatile Kvr32f above = square + 1;
  return static_cast<Kvr32f>(std::log(static_cast<long double>(above))) * 0.5f;
}
Kvr32f derivative(Kvr32f x, Kvr32f param) {
  const volatile Kvr32f square = param * param, squares = x * x;
  const volatile Kvr32f sum = squares + square;
  return x / sum;
}
struct Two {
  Kvr32f first, second;
};
Two derivatives(Kvr32f x, Kvr32f param) {
  const volatile Kvr32f square = param * param, squares = x * x;
  const volatile Kvr32f sum = square + squares;
  const volatile Kvr32f factor = 1 / sum;
  const volatile Kvr32f difference = (square - squares) * factor;
  return {x * factor, difference * factor};
}

TEST(Cauchy, Sweep) {
  const auto draw = [](Random& random, size_t, Kvr32f) {
    return random.below(2) != 0 ? anyFloat<Kvr32f>(random) : static_cast<Kvr32f>(random.unit() * 10);
  };
  const auto near = [](Kvr32f got, Kvr32f want) {
    return std::isnan(want) ? std::isnan(got) : withinUlps(got, want, 1);
  };
  for (Kvr32f param : {1.0f, 0.3f, 1e20f}) {
    const SweepOptions options = param == 1 ? SweepOptions{} : kFewLengths;
    sweepInPlaceWith<Kvr32f>([=](Kvr32f* srcDst, int len) { return kvrsCauchy_32f_I(srcDst, len, param); },
                             [=](Kvr32f x) { return error(x, param); }, near, draw, options);
    sweepInPlaceWith<Kvr32f>([=](Kvr32f* srcDst, int len) { return kvrsCauchyD_32f_I(srcDst, len, param); },
                             [=](Kvr32f x) { return derivative(x, param); }, sameFloat<Kvr32f>, draw,
                             options);
    // Both results of the second derivative's function, each as the array that the sweep looks at.
    Arena others(65536);
    sweepInPlaceWith<Kvr32f>(
        [&](Kvr32f* srcDst, int len) {
          const size_t n = static_cast<size_t>(len);
          std::vector<Kvr32f> x(n);
          memcpy(x.data(), srcDst, n * sizeof(Kvr32f));
          Kvr32f* const dst2 = others.place<Kvr32f>(n, Side::back, n % 5);
          const KvrStatus status = kvrsCauchyDD2_32f_I(srcDst, dst2, len, param);
          for (size_t i = 0; i < n; ++i)
            EXPECT_TRUE(sameFloat(derivatives(x[i], param).second, get(dst2, i))) << x[i];
          EXPECT_TRUE(others.intact());
          return status;
        },
        [=](Kvr32f x) { return derivatives(x, param).first; }, sameFloat<Kvr32f>, draw, options);
  }
}

TEST(Cauchy, OfZeroIsZero) {
  for (int len : {1, 100, 5000}) {
    std::vector<Kvr32f> x(static_cast<size_t>(len), 0);
    ASSERT_EQ(kvrStatusOk, kvrsCauchy_32f_I(x.data(), len, 2));
    for (Kvr32f y : x) ASSERT_EQ(0, y);
  }
}

TEST(Cauchy, LongVectors) {
  std::vector<Kvr32f> x(10000), got;
  Random random(4);
  for (Kvr32f& v : x) v = static_cast<Kvr32f>(random.unit() * 100);
  got = x;
  ASSERT_EQ(kvrStatusOk, kvrsCauchy_32f_I(got.data(), 10000, 3));
  for (size_t i = 0; i < x.size(); ++i) ASSERT_TRUE(withinUlps(got[i], error(x[i], 3), 1)) << x[i];
}

// Arrays that lie over each other: one element after another, the second derivative being stored first.
TEST(Cauchy, OverlappingArraysRunInOrder) {
  constexpr int kLen = 50;
  for (int byteOffset : {0, 4, 8, 20, 64, 196, -4, -8, -20, -100, 2, -6}) {
    std::vector<uint8_t> memory(4 * kLen + 512), want;
    Random random(static_cast<uint64_t>(byteOffset + 1000));
    Kvr32f* const all = reinterpret_cast<Kvr32f*>(memory.data());
    for (size_t i = 0; i < memory.size() / 4; ++i) put(all, i, static_cast<Kvr32f>(random.unit() * 4));
    want = memory;
    const auto at = [&](std::vector<uint8_t>& bytes, int offset) {
      return reinterpret_cast<Kvr32f*>(bytes.data() + 256 + offset);
    };
    for (size_t i = 0; i < kLen; ++i) {
      const Two two = derivatives(get(at(want, 0), i), 1.5f);
      put(at(want, byteOffset), i, two.second);
      put(at(want, 0), i, two.first);
    }
    ASSERT_EQ(kvrStatusOk, kvrsCauchyDD2_32f_I(at(memory, 0), at(memory, byteOffset), kLen, 1.5f));
    EXPECT_EQ(want, memory) << byteOffset;
  }
}

}  // namespace
