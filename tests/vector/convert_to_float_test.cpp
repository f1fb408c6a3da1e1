// SPDX-License-Identifier: MIT
#include <fpu_control.h>

#include <cmath>
#include <limits>

#include "kvrs/convert.h"
#include "tests/support/packed24.h"
#include "tests/support/rounding.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

// The two neighbours of a value in F, and the one that a rounding mode of the processor picks. Extended
// precision holds every source and the distances between sources and results exactly.
template <class F>
F roundedToFloat(long double y, int callerMode) {
  const F nearest = static_cast<F>(y);  // the test itself runs in round-to-nearest
  if (static_cast<long double>(nearest) == y || callerMode == FE_TONEAREST || std::isnan(y)) return nearest;
  const F infinity = std::numeric_limits<F>::infinity();
  const F below = static_cast<long double>(nearest) < y ? nearest : std::nextafter(nearest, -infinity);
  const F above = static_cast<long double>(nearest) > y ? nearest : std::nextafter(nearest, infinity);
  if (callerMode == FE_TOWARDZERO) return y > 0 ? below : above;
  return callerMode == FE_DOWNWARD ? below : above;
}

template <class S>
std::vector<S> values() {
  Random random(5);
  std::vector<S> all;
  for (int i = 0; i < 1000; ++i) all.push_back(random.value<S>());
  for (int bit = 0; bit < static_cast<int>(8 * sizeof(S)); ++bit) {
    for (int64_t offset : {-2, -1, 0, 1, 2, 3}) {
      all.push_back(static_cast<S>((uint64_t{1} << bit) + static_cast<uint64_t>(offset)));
      all.push_back(static_cast<S>(0 - (uint64_t{1} << bit) + static_cast<uint64_t>(offset)));
    }
  }
  return all;
}

template <>
std::vector<double> values<double>() {
  std::vector<double> all{0.0,
                          -0.0,
                          INFINITY,
                          -INFINITY,
                          std::numeric_limits<double>::max(),
                          std::numeric_limits<double>::denorm_min(),
                          0x1.fffffefffffffp127,
                          0x1.ffffffp127,
                          0x1p128,
                          0x1p-149,
                          0x1p-150,
                          0x1.000001p-150,
                          -0x1.8p-149,
                          0x1.000001p0,
                          0x1.000003p0,
                          0x1p-126};
  Random random(6);
  for (int i = 0; i < 500; ++i)
    all.push_back(std::ldexp(random.unit(), static_cast<int>(random.below(300)) - 160));
  return all;
}

template <class S, class D, class Value, class Call, class Oracle>
void checkModes(Call call, const std::vector<Value>& src, Oracle oracle) {
  for (int caller : kCallerModes) {
    std::vector<D> dst(src.size());
    ASSERT_EQ(kvrStatusOk, callWithRounding(caller, [&] {
                return call(src.data(), dst.data(), static_cast<int>(src.size()));
              }));
    for (size_t i = 0; i < src.size(); ++i) {
      const D want = oracle(src[i], caller);
      ASSERT_TRUE(sameBits(dst[i], want)) << show(src[i]) << ", caller's mode " << caller << ": got "
                                          << show(dst[i]) << ", want " << show(want);
    }
  }
}

template <class S, class D>
void check(KvrStatus (*function)(const S*, D*, int) noexcept) {
  const auto oracle = [](S x, int caller) { return roundedToFloat<D>(static_cast<long double>(x), caller); };
  checkModes<S, D>(function, values<S>(), oracle);
  sweepMap<D, S>(function, [&](S x) { return oracle(x, FE_TONEAREST); });
}

TEST(ConvertToFloat, Integers) {
  check(kvrsConvert_8u32f);
  check(kvrsConvert_8s32f);
  check(kvrsConvert_16u32f);
  check(kvrsConvert_16s32f);
  check(kvrsConvert_32s32f);
  check(kvrsConvert_32s64f);
  check(kvrsConvert_64s64f);
}

// The mode is that of the vector unit, where all floats are computed, whatever the x87 unit is set to.
TEST(ConvertToFloat, Integers64FollowTheVectorUnit) {
  const std::vector<Kvr64s> src = values<Kvr64s>();
  constexpr int kModes[] = {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD,
                            FE_TOWARDZERO};  // by their number in the field
  const unsigned before = _mm_getcsr();
  fpu_control_t extendedBefore;
  _FPU_GETCW(extendedBefore);
  for (unsigned vectorUnit = 0; vectorUnit < 4; ++vectorUnit) {
    for (unsigned extendedUnit = 0; extendedUnit < 4; ++extendedUnit) {
      std::vector<Kvr64f> dst(src.size());
      fpu_control_t extended = static_cast<fpu_control_t>((extendedBefore & ~0x0F00u) | extendedUnit << 10),
                    after;
      _FPU_SETCW(extended);
      _mm_setcsr((before & ~0x6000u) | vectorUnit << 13);
      const KvrStatus status = kvrsConvert_64s64f(src.data(), dst.data(), static_cast<int>(src.size()));
      _FPU_GETCW(after);
      _FPU_SETCW(extendedBefore);
      _mm_setcsr(before);
      ASSERT_EQ(kvrStatusOk, status);
      EXPECT_EQ(extended, after);
      for (size_t i = 0; i < src.size(); ++i) {
        const Kvr64f want = roundedToFloat<Kvr64f>(static_cast<long double>(src[i]), kModes[vectorUnit]);
        ASSERT_TRUE(sameBits(dst[i], want))
            << show(src[i]) << ", modes " << vectorUnit << " and " << extendedUnit;
      }
    }
  }
}

TEST(ConvertToFloat, Floats) {
  sweepMap<double, float>(kvrsConvert_32f64f, [](float x) { return static_cast<double>(x); });
  sweepMap<float, double>(kvrsConvert_64f32f, [](double x) { return static_cast<float>(x); });
  checkModes<double, float>(kvrsConvert_64f32f, values<double>(), [](double x, int caller) {
    // Beyond the largest float: infinity or the largest float, by direction. Converting in the mode asked for is
    // the processor's scalar instruction, which the library's vectors are held to.
    volatile double in = x;
    std::fesetround(caller);
    volatile float out = static_cast<float>(in);
    std::fesetround(FE_TONEAREST);
    return out;
  });
  const float special[] = {0.0f, -0.0f, INFINITY, -INFINITY, NAN, 0x1p-149f, 0x1p-127f, 3.4028235e38f};
  double wide[8];
  ASSERT_EQ(kvrStatusOk, kvrsConvert_32f64f(special, wide, 8));
  for (int i = 0; i < 8; ++i) {
    if (std::isnan(special[i])) {
      EXPECT_TRUE(std::isnan(wide[i]));
    } else {
      EXPECT_TRUE(sameBits(wide[i], static_cast<double>(special[i])));
    }
  }
  const double nan = NAN;
  float narrow = 0;
  ASSERT_EQ(kvrStatusOk, kvrsConvert_64f32f(&nan, &narrow, 1));
  EXPECT_TRUE(std::isnan(narrow));
}

template <class D, class Function>
void checkPacked(Function function, bool isSigned) {
  const auto value = [=](Packed x) { return static_cast<D>(isSigned ? x.asSigned() : x.asUnsigned()); };
  const auto call = [=](const Packed* src, D* dst, int len) {
    return function(reinterpret_cast<const Kvr8u*>(src), dst, len);
  };
  const auto draw = [](Random& random, size_t, Packed) { return Packed::of(random.value<int32_t>()); };
  sweepMapWith<D, Packed>(call, value, sameBits<D>, draw, {});
  std::vector<Packed> src;
  for (int bit = 0; bit < 24; ++bit) {
    for (int offset : {-1, 0, 1}) src.push_back(Packed::of((1 << bit) + offset));
  }
  checkModes<Packed, D>(call, src, [&](Packed x, int) { return value(x); });
}

TEST(ConvertToFloat, Packed24) {
  checkPacked<float>(kvrsConvert_24s32f, true);
  checkPacked<float>(kvrsConvert_24u32f, false);
  checkPacked<Kvr32s>(kvrsConvert_24s32s, true);
  checkPacked<Kvr32u>(kvrsConvert_24u32u, false);
}

template <class S, class D>
void checkScaled(KvrStatus (*function)(const S*, D*, int, int) noexcept, int lowest, int highest) {
  for (int scaleFactor : {0,
                          1,
                          -1,
                          5,
                          15,
                          -16,
                          31,
                          100,
                          -95,
                          -96,
                          -97,
                          125,
                          126,
                          127,
                          200,
                          -200,
                          1000,
                          -1007,
                          -1008,
                          -1009,
                          1021,
                          1022,
                          1023,
                          std::numeric_limits<int>::max(),
                          std::numeric_limits<int>::min()}) {
    const int limited = std::clamp(scaleFactor, lowest, highest);
    // The integer is rounded; its product with a power of two is exact, or beyond the largest number.
    const auto oracle = [=](S x, int caller) {
      const long double y = std::ldexp(
          static_cast<long double>(roundedToFloat<D>(static_cast<long double>(x), caller)), -limited);
      const long double most = static_cast<long double>(std::numeric_limits<D>::max());
      if (std::fabs(y) <= most) return static_cast<D>(y);
      const bool toInfinity = caller == FE_TONEAREST || (y > 0 ? caller == FE_UPWARD : caller == FE_DOWNWARD);
      return static_cast<D>(std::copysign(toInfinity ? INFINITY : most, y));
    };
    const auto call = [=](const S* src, D* dst, int len) { return function(src, dst, len, scaleFactor); };
    checkModes<S, D>(call, values<S>(), oracle);
    if (scaleFactor == 5) sweepMap<D, S>(call, [&](S x) { return oracle(x, FE_TONEAREST); });
  }
}

TEST(ConvertToFloat, Scaled) {
  checkScaled(kvrsConvert_16s32f_Sfs, -96, 126);
  checkScaled(kvrsConvert_32s32f_Sfs, -96, 126);
  checkScaled(kvrsConvert_16s64f_Sfs, -1008, 1022);
  checkScaled(kvrsConvert_32s64f_Sfs, -1008, 1022);
}

}  // namespace
