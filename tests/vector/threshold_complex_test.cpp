// SPDX-License-Identifier: MIT
#include <cmath>
#include <vector>

#include "kvrs/threshold.h"
#include "tests/support/floats.h"
#include "tests/support/rounding.h"

using namespace kvrs::test;

namespace {

template <class C>
using PartOf = decltype(C::re);

// Compared as |z|^2 with level^2: 1 above, -1 below, 0 for a tie or NaN.
int compared(Kvr16sc z, Kvr16s level) {
  const int64_t square = int64_t{z.re} * z.re + int64_t{z.im} * z.im, with = int64_t{level} * level;
  return square > with ? 1 : square < with ? -1 : 0;
}
template <class C, class T>
T squareOf(C z, T) {
  const volatile T re = z.re * z.re, im = z.im * z.im;
  return re + im;
}
template <class C, class T>
int compared(C z, T level) {
  const T square = squareOf(z, T()), with = level * level;
  return square > with ? 1 : square < with ? -1 : 0;
}

Kvr16sc withMagnitude(Kvr16sc z, Kvr16s level) {
  const volatile Kvr32f root = std::sqrt(static_cast<Kvr32f>(int64_t{z.re} * z.re + int64_t{z.im} * z.im));
  const volatile Kvr32f factor = static_cast<Kvr32f>(level) / root;
  const volatile Kvr32f re = static_cast<Kvr32f>(z.re) * factor, im = static_cast<Kvr32f>(z.im) * factor;
  return {static_cast<Kvr16s>(roundedTo(re, kvrRoundNear)), static_cast<Kvr16s>(roundedTo(im, kvrRoundNear))};
}
template <class C, class T>
C withMagnitude(C z, T level) {
  const T root = std::sqrt(squareOf(z, T()));
  const volatile T factor = level / root;
  return {z.re * factor, z.im * factor};
}
template <class C>
bool isZero(C z) {
  using T = PartOf<C>;
  if constexpr (std::is_floating_point_v<T>) return squareOf(z, T()) == 0;
  return z.re == 0 && z.im == 0;
}

template <class C, class T>
C limited(C z, T level, KvrCmpOp relOp) {
  if (compared(z, level) != (relOp == kvrCmpGreater ? 1 : -1) || isZero(z)) return z;
  return withMagnitude(z, level);
}

template <class C>
bool same(C a, C b) {
  using T = PartOf<C>;
  if constexpr (std::is_floating_point_v<T>) return sameFloat(a, b);
  return a.re == b.re && a.im == b.im;
}

// Ties, axes, small and extreme numbers.
template <class C, class T>
C drawAbout(Random& random, T level) {
  switch (random.below(8)) {
    case 0:
      return {level, 0};
    case 1:
      return {0, static_cast<T>(0 - level)};
    case 2:
      return {static_cast<T>(level / 5 * 3), static_cast<T>(level / 5 * 4)};
    case 3:
      return {static_cast<T>(level / 2), static_cast<T>(random.unit() * level)};
    default:
      if constexpr (std::is_floating_point_v<T>) return anyElement<C>(random);
      return random.value<C>();
  }
}

template <class C, class Call, class CallI, class Oracle>
void check(Call call, CallI callI, Oracle oracle, PartOf<C> level) {
  const auto draw = [=](Random& random, size_t, C) { return drawAbout<C>(random, level); };
  // One level in all lengths, the others in some.
  SweepOptions options;
  if (level != PartOf<C>(0.5) && level != PartOf<C>(500))
    options.lengths = {1, 2, 3, 5, 8, 15, 16, 17, 31, 33, 65};
  sweepMapWith<C, C>(call, oracle, same<C>, draw, options);
  sweepInPlaceWith<C>(callI, oracle, same<C>, draw, options);
}

template <class T>
std::vector<T> levels() {
  if constexpr (std::is_floating_point_v<T>) return {T(0), T(0.5), std::numeric_limits<T>::infinity()};
  return {T{0}, T{1}, T{500}, T{32767}};
}

template <class C, class T = PartOf<C>>
void checkLimits(KvrStatus (*f)(const C*, C*, int, T, KvrCmpOp) noexcept,
                 KvrStatus (*fI)(C*, int, T, KvrCmpOp) noexcept,
                 KvrStatus (*gt)(const C*, C*, int, T) noexcept, KvrStatus (*gtI)(C*, int, T) noexcept,
                 KvrStatus (*lt)(const C*, C*, int, T) noexcept, KvrStatus (*ltI)(C*, int, T) noexcept) {
  for (KvrCmpOp relOp : {kvrCmpLess, kvrCmpGreater}) {
    const auto named = relOp == kvrCmpGreater ? gt : lt;
    const auto namedI = relOp == kvrCmpGreater ? gtI : ltI;
    for (T level : levels<T>()) {
      const auto oracle = [=](C z) { return limited(z, level, relOp); };
      for (bool byName : {false, true}) {
        check<C>(
            [=](const C* src, C* dst, int len) {
              return byName ? named(src, dst, len, level) : f(src, dst, len, level, relOp);
            },
            [=](C* srcDst, int len) {
              return byName ? namedI(srcDst, len, level) : fI(srcDst, len, level, relOp);
            },
            oracle, level);
      }
    }
  }
}

template <class C, class T = PartOf<C>>
void checkValues(int beyond, KvrStatus (*f)(const C*, C*, int, T, C) noexcept,
                 KvrStatus (*fI)(C*, int, T, C) noexcept) {
  for (T level : levels<T>()) {
    const C value{T(-7), T(9)};
    check<C>([=](const C* src, C* dst, int len) { return f(src, dst, len, level, value); },
             [=](C* srcDst, int len) { return fI(srcDst, len, level, value); },
             [=](C z) { return compared(z, level) == beyond ? value : z; }, level);
  }
}

TEST(ThresholdComplex, Limits) {
  checkLimits<Kvr16sc>(kvrsThreshold_16sc, kvrsThreshold_16sc_I, kvrsThreshold_GT_16sc,
                       kvrsThreshold_GT_16sc_I, kvrsThreshold_LT_16sc, kvrsThreshold_LT_16sc_I);
  checkLimits<Kvr32fc>(kvrsThreshold_32fc, kvrsThreshold_32fc_I, kvrsThreshold_GT_32fc,
                       kvrsThreshold_GT_32fc_I, kvrsThreshold_LT_32fc, kvrsThreshold_LT_32fc_I);
  checkLimits<Kvr64fc>(kvrsThreshold_64fc, kvrsThreshold_64fc_I, kvrsThreshold_GT_64fc,
                       kvrsThreshold_GT_64fc_I, kvrsThreshold_LT_64fc, kvrsThreshold_LT_64fc_I);
}
TEST(ThresholdComplex, Values) {
  checkValues<Kvr16sc>(1, kvrsThreshold_GTVal_16sc, kvrsThreshold_GTVal_16sc_I);
  checkValues<Kvr32fc>(1, kvrsThreshold_GTVal_32fc, kvrsThreshold_GTVal_32fc_I);
  checkValues<Kvr64fc>(1, kvrsThreshold_GTVal_64fc, kvrsThreshold_GTVal_64fc_I);
  checkValues<Kvr16sc>(-1, kvrsThreshold_LTVal_16sc, kvrsThreshold_LTVal_16sc_I);
  checkValues<Kvr32fc>(-1, kvrsThreshold_LTVal_32fc, kvrsThreshold_LTVal_32fc_I);
  checkValues<Kvr64fc>(-1, kvrsThreshold_LTVal_64fc, kvrsThreshold_LTVal_64fc_I);
}

// Every squared magnitude next to level^2, where integers of 16 bits have one: Pythagorean triples and their neighbours.
TEST(ThresholdComplex, TiesOf16scAreKept) {
  std::vector<Kvr16sc> src;
  std::vector<Kvr16s> level;
  for (int m = 2; m <= 128; ++m) {
    for (int n = 1; n < m; ++n) {
      const int a = m * m - n * n, b = 2 * m * n, c = m * m + n * n;
      if (c > 32767) continue;
      for (int off : {-1, 0, 1}) {
        src.push_back({static_cast<Kvr16s>(a + off), static_cast<Kvr16s>(-b)});
        level.push_back(static_cast<Kvr16s>(c));
      }
    }
  }
  src.push_back({-32768, -32768});
  level.push_back(32767);
  const Kvr16sc value{1, 2};
  for (size_t i = 0; i < src.size(); ++i) {
    Kvr16sc above, below;
    kvrsThreshold_GTVal_16sc(&src[i], &above, 1, level[i], value);
    kvrsThreshold_LTVal_16sc(&src[i], &below, 1, level[i], value);
    const int c = compared(src[i], level[i]);
    ASSERT_TRUE(same(c > 0 ? value : src[i], above)) << show(src[i]) << " and " << level[i];
    ASSERT_TRUE(same(c < 0 ? value : src[i], below)) << show(src[i]) << " and " << level[i];
  }
}

TEST(ThresholdComplex, IntegersIgnoreTheRoundingMode) {
  std::vector<Kvr16sc> src(300), want(300), got(300);
  Random random(5);
  for (Kvr16sc& z : src) z = random.value<Kvr16sc>();
  kvrsThreshold_GT_16sc(src.data(), want.data(), 300, 12345);
  for (int mode : kCallerModes) {
    callWithRounding(mode, [&] { return kvrsThreshold_GT_16sc(src.data(), got.data(), 300, 12345); });
    for (size_t i = 0; i < src.size(); ++i) ASSERT_TRUE(same(want[i], got[i]));
  }
}

}  // namespace
