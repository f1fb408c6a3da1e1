// SPDX-License-Identifier: MIT
#include "kvrs/count.h"

#include "tests/support/floats.h"
#include "tests/support/reduction.h"

using namespace kvrs::test;

namespace {

TEST(CountInRange, BoundsAreExcluded) {
  const auto small = [](Random& random, size_t, auto) { return static_cast<Kvr32s>(random.below(11)) - 5; };
  const Kvr32s bounds[][2] = {{-2, 3},         {-1, 1}, {0, 1}, {3, -3}, {INT32_MIN, INT32_MAX},
                              {INT32_MIN, -5}, {2, 2}};
  for (const auto& b : bounds) {
    const Kvr32s lower = b[0], upper = b[1];
    sweepReductionWith<int, Kvr32s>(
        [=](const Kvr32s* src, int len, int* counts) {
          return kvrsCountInRange_32s(src, len, counts, lower, upper);
        },
        exactly<int>([=](const Kvr32s* src, int len) {
          int count = 0;
          for (int i = 0; i < len; ++i) {
            const Kvr32s x = get(src, static_cast<size_t>(i));
            count += lower < x && x < upper;
          }
          return count;
        }),
        small);
  }
  const Kvr32s ends[] = {INT32_MIN, INT32_MAX, 0};
  int counts = -1;
  EXPECT_EQ(kvrStatusOk, kvrsCountInRange_32s(ends, 3, &counts, INT32_MIN, INT32_MAX));
  EXPECT_EQ(1, counts);
}

template <class T>
int sgn(T x) {
  return (x > 0) - (x < 0);
}
template <class T>
Kvr32f crossings(const T* src, int len, int flag) {
  int64_t halves = 0;
  for (int i = 0; i + 1 < len; ++i) {
    const T a = get(src, static_cast<size_t>(i)), b = get(src, static_cast<size_t>(i) + 1);
    if (flag == 0 && sgn(a) * sgn(b) < 0) halves += 2;
    if (flag == 1 && std::signbit(static_cast<double>(a)) != std::signbit(static_cast<double>(b)))
      halves += 2;
    if (flag == 2) halves += std::abs(sgn(a) - sgn(b));
  }
  return static_cast<Kvr32f>(static_cast<double>(halves) / 2);
}

// Signs, zeros of both signs and extremes; with floats NaN too.
auto signs() {
  return [](Random& random, size_t, auto like) {
    using T = decltype(like);
    if constexpr (std::is_floating_point_v<T>) {
      switch (random.below(4)) {
        case 0:
          return random.below(2) != 0 ? T(0) : T(-0.0);
        case 1:
          return anyFloat<T>(random);
        default:
          return static_cast<T>(random.unit() * 1e-30);
      }
    } else {
      return random.below(3) == 0 ? random.value<T>() : static_cast<T>(static_cast<int>(random.below(3)) - 1);
    }
  };
}

TEST(ZeroCrossing, AllFlags) {
  const SweepOptions lengths{.lengths = sweepLengths({(1 << 14) * 8, (1 << 14) * 32})};
  for (int flag = 0; flag < 3; ++flag) {
    sweepReductionWith<Kvr32f, Kvr16s>(
        [=](const Kvr16s* src, int len, Kvr32f* zc) { return kvrsZeroCrossing_16s32f(src, len, zc, flag); },
        exactly<Kvr32f>([=](const Kvr16s* src, int len) { return crossings(src, len, flag); }), signs(),
        lengths);
    sweepReductionWith<Kvr32f, Kvr32f>(
        [=](const Kvr32f* src, int len, Kvr32f* zc) { return kvrsZeroCrossing_32f(src, len, zc, flag); },
        exactly<Kvr32f>([=](const Kvr32f* src, int len) { return crossings(src, len, flag); }), signs());
  }
}

// Every pair crosses, in lengths that fill 16-bit counters.
TEST(ZeroCrossing, Many) {
  const int len = 1 << 21;
  std::vector<Kvr16s> src(len);
  for (int i = 0; i < len; ++i) src[i] = static_cast<Kvr16s>(i % 2 != 0 ? 32767 : -32768);
  for (int flag = 0; flag < 3; ++flag) {
    Kvr32f zc = 0;
    EXPECT_EQ(kvrStatusOk, kvrsZeroCrossing_16s32f(src.data(), len, &zc, flag));
    EXPECT_EQ(static_cast<Kvr32f>(len - 1), zc);
  }
}

TEST(ZeroCrossing, Examples) {
  const Kvr32f src[] = {1, 0, -1};
  Kvr32f zc = -1;
  for (int flag = 0; flag < 3; ++flag) {
    EXPECT_EQ(kvrStatusOk, kvrsZeroCrossing_32f(src, 3, &zc, flag));
    EXPECT_EQ(flag == 0 ? 0.0f : 1.0f, zc);
  }
}

TEST(ZeroCrossing, Lengths) {
  const Kvr16s words[] = {1, -1};
  const Kvr32f singles[] = {1, -1};
  for (int flag = 0; flag < 3; ++flag) {
    for (int len : {1, -1, -2, INT32_MIN}) {
      Kvr32f zc = 5;
      EXPECT_EQ(kvrStatusOk, kvrsZeroCrossing_16s32f(words, len, &zc, flag));
      EXPECT_EQ(0.0f, zc);
      zc = 5;
      EXPECT_EQ(kvrStatusOk, kvrsZeroCrossing_32f(singles, len, &zc, flag));
      EXPECT_EQ(0.0f, zc);
    }
  }
  Kvr32f zc = 5;
  EXPECT_EQ(kvrStatusBadLength, kvrsZeroCrossing_32f(singles, 0, &zc, 9));
  EXPECT_EQ(kvrStatusBadFlag, kvrsZeroCrossing_32f(singles, -4, &zc, 9));
  EXPECT_EQ(kvrStatusBadFlag, kvrsZeroCrossing_16s32f(words, 2, &zc, -1));
  EXPECT_EQ(5.0f, zc);
}

}  // namespace
