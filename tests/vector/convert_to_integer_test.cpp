// SPDX-License-Identifier: MIT
#include <limits>

#include "kvrs/convert.h"
#include "tests/support/packed24.h"
#include "tests/support/rounding.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

template <class F>
struct Format;
template <>
struct Format<float> {
  static constexpr int kBias = 127, kFraction = 23;
};
template <>
struct Format<double> {
  static constexpr int kBias = 1023, kFraction = 52;
};

// The scale that the contract states: the type's own range, with subnormals in financial rounding only.
template <class F>
long double statedScale(int scaleFactor, KvrRoundMode mode) {
  const bool financial = mode != kvrRoundZero && mode != kvrRoundNear;
  const int zeroFrom = Format<F>::kBias + (financial ? Format<F>::kFraction : 0);
  if (scaleFactor >= zeroFrom) return 0;
  if (scaleFactor <= -Format<F>::kBias - 1) return std::numeric_limits<long double>::infinity();
  return std::ldexp(1.0L, -scaleFactor);
}

template <class F, class T>
T oracle(F x, KvrRoundMode mode, int scaleFactor, T lowest, T highest) {
  return saturatedTo(static_cast<long double>(x) * statedScale<F>(scaleFactor, mode), mode, lowest, highest);
}

// Numbers whose scaled values lie around everything where something changes.
template <class F>
std::vector<F> edges(std::initializer_list<long double> integers, int scaleFactor) {
  std::vector<F> all{F(0),
                     -F(0),
                     std::numeric_limits<F>::infinity(),
                     -std::numeric_limits<F>::infinity(),
                     std::numeric_limits<F>::quiet_NaN(),
                     -std::numeric_limits<F>::quiet_NaN(),
                     std::numeric_limits<F>::signaling_NaN(),
                     std::numeric_limits<F>::denorm_min(),
                     -std::numeric_limits<F>::denorm_min(),
                     std::numeric_limits<F>::min(),
                     std::numeric_limits<F>::max(),
                     std::numeric_limits<F>::lowest()};
  std::vector<long double> around;
  for (long double n : integers) {
    for (long double offset : {-2.0L, -1.5L, -1.0L, -0.5L, 0.0L, 0.5L, 1.0L, 1.5L, 2.0L})
      around.push_back(n + offset);
  }
  for (long double n : {0.25L, 0.75L, 2.5L, 3.5L, 4.5L, 2.9L, 100.5L, 101.5L}) {
    around.push_back(n);
    around.push_back(-n);
  }
  for (long double y : around) {
    F x = static_cast<F>(std::ldexp(y, scaleFactor));
    const F infinity = std::numeric_limits<F>::infinity();
    all.push_back(x);
    all.push_back(std::nextafter(x, -infinity));
    all.push_back(std::nextafter(x, infinity));
  }
  return all;
}

constexpr KvrRoundMode kModes[] = {kvrRoundZero, kvrRoundNear, kvrRoundFinancial, 7, -1, 3, 2147483647};

template <class F>
std::vector<int> scaleFactors() {
  const int bias = Format<F>::kBias, fraction = Format<F>::kFraction;
  return {0,
          1,
          -1,
          2,
          7,
          15,
          -15,
          16,
          23,
          -24,
          31,
          -31,
          40,
          60,
          -60,
          100,
          -100,
          bias - 1,
          bias,
          bias + 1,
          bias + 2,
          bias + 20,
          bias + fraction - 1,
          bias + fraction,
          1 - bias,
          -bias,
          -bias - 1,
          -bias - 2,
          -2000,
          2000,
          std::numeric_limits<int>::max(),
          std::numeric_limits<int>::min()};
}

// All edges, all modes, all scales, all modes of the caller.
template <class F, class D, class T, class Call, class Store>
void checkEdges(Call call, Store store, T lowest, T highest, std::initializer_list<KvrRoundMode> only = {}) {
  std::vector<KvrRoundMode> modes(std::begin(kModes), std::end(kModes));
  if (only.size() > 0) modes = only;
  for (int scaleFactor : scaleFactors<F>()) {
    for (KvrRoundMode mode : modes) {
      const std::vector<F> src =
          edges<F>({static_cast<long double>(lowest), -1, 0, 1, static_cast<long double>(highest)},
                   std::clamp(scaleFactor, -1200, 1200));
      for (int caller : kCallerModes) {
        std::vector<D> dst(src.size());
        const int len = static_cast<int>(src.size());
        ASSERT_EQ(kvrStatusOk, callWithRounding(caller, [&] {
                    return call(src.data(), dst.data(), len, mode, scaleFactor);
                  }));
        for (size_t i = 0; i < src.size(); ++i) {
          const D want = store(oracle(src[i], mode, scaleFactor, lowest, highest));
          ASSERT_TRUE(sameBits(dst[i], want))
              << src[i] << " (element " << i << "), mode " << mode << ", scaleFactor " << scaleFactor
              << ", caller's mode " << caller << ": got " << show(dst[i]) << ", want " << show(want);
        }
      }
    }
  }
}

// Any float, with many near the range of D.
template <class F>
auto drawNear(long double highest) {
  return [highest](Random& random, size_t, F) {
    const F x = static_cast<F>(static_cast<long double>(random.unit()) * 1.25L * highest);
    switch (random.below(8)) {
      case 0:
        return static_cast<F>(std::floor(random.unit() * 1000) + 0.5);
      case 1:
        return static_cast<F>(random.unit());
      case 2:
        return static_cast<F>(std::floor(x) + F(0.5));
      default:
        return x;
    }
  };
}

template <class F, class D, class T, class Call, class Store>
void checkSweep(Call call, Store store, T lowest, T highest) {
  uint64_t seed = 1;
  for (auto [mode, scaleFactor] : {std::pair{kvrRoundNear, 0}, {kvrRoundZero, 0}, {kvrRoundFinancial, 1}}) {
    SweepOptions options;
    options.seed = ++seed;
    sweepMapWith<D, F>([&, mode = mode, scaleFactor = scaleFactor](
                           const F* src, D* dst, int len) { return call(src, dst, len, mode, scaleFactor); },
                       [&, mode = mode, scaleFactor = scaleFactor](F x) {
                         return store(oracle(x, mode, scaleFactor, lowest, highest));
                       },
                       [](D a, D b) { return sameBits(a, b); },
                       drawNear<F>(static_cast<long double>(highest)), options);
  }
}

template <class F, class D>
void check(KvrStatus (*function)(const F*, D*, int, KvrRoundMode, int) noexcept) {
  const auto same = [](D value) { return value; };
  checkEdges<F, D>(function, same, std::numeric_limits<D>::min(), std::numeric_limits<D>::max());
  checkSweep<F, D>(function, same, std::numeric_limits<D>::min(), std::numeric_limits<D>::max());
}

TEST(ConvertToInteger, From32f) {
  check(kvrsConvert_32f8u_Sfs);
  check(kvrsConvert_32f8s_Sfs);
  check(kvrsConvert_32f16u_Sfs);
  check(kvrsConvert_32f16s_Sfs);
  check(kvrsConvert_32f32s_Sfs);
}

TEST(ConvertToInteger, From64f) {
  check(kvrsConvert_64f16s_Sfs);
  check(kvrsConvert_64f32s_Sfs);
}

// The two forms to packed elements round to nearest.
template <class Function>
auto packed(Function function) {
  return [function](const float* src, Packed* dst, int len, KvrRoundMode, int scaleFactor) {
    return function(src, reinterpret_cast<Kvr8u*>(dst), len, scaleFactor);
  };
}

TEST(ConvertToInteger, Packed24) {
  checkEdges<float, Packed>(packed(kvrsConvert_32f24s_Sfs), Packed::of, -0x800000, 0x7FFFFF, {kvrRoundNear});
  checkEdges<float, Packed>(packed(kvrsConvert_32f24u_Sfs), Packed::of, 0, 0xFFFFFF, {kvrRoundNear});
  for (int scaleFactor : {0, -3, 5}) {
    const auto run = [&](auto function, int lowest, int highest) {
      sweepMapWith<Packed, float>(
          [&](const float* src, Packed* dst, int len) {
            return packed(function)(src, dst, len, 0, scaleFactor);
          },
          [&](float x) { return Packed::of(oracle(x, kvrRoundNear, scaleFactor, lowest, highest)); },
          sameBits<Packed>, drawNear<float>(0x1p24L), {});
    };
    run(kvrsConvert_32f24s_Sfs, -0x800000, 0x7FFFFF);
    run(kvrsConvert_32f24u_Sfs, 0, 0xFFFFFF);
  }
}

// Scaled without limits; only 0 and 2 are not rounding to nearest.
Kvr64s oracle64(double x, KvrRoundMode mode, int scaleFactor) {
  if (std::isnan(x)) return std::numeric_limits<Kvr64s>::min();
  const long double y = std::ldexp(static_cast<long double>(x), -std::clamp(scaleFactor, -5000, 5000));
  if (y >= 0x1p63L) return std::numeric_limits<Kvr64s>::max();
  if (y <= -0x1p63L) return std::numeric_limits<Kvr64s>::min();
  const KvrRoundMode known = mode == kvrRoundZero || mode == kvrRoundFinancial ? mode : kvrRoundNear;
  return static_cast<Kvr64s>(roundedTo(y, known));
}

TEST(ConvertToInteger, From64fTo64s) {
  for (int scaleFactor : scaleFactors<double>()) {
    for (KvrRoundMode mode : kModes) {
      const std::vector<double> src =
          edges<double>({-0x1p63L, -0x1p62L, -0x1p52L, -1, 0, 1, 0x1p51L, 0x1p52L, 0x1p53L, 0x1p62L, 0x1p63L},
                        std::clamp(scaleFactor, -1200, 1200));
      for (int caller : kCallerModes) {
        std::vector<Kvr64s> dst(src.size());
        ASSERT_EQ(kvrStatusOk, callWithRounding(caller, [&] {
                    return kvrsConvert_64f64s_Sfs(src.data(), dst.data(), static_cast<int>(src.size()), mode,
                                                  scaleFactor);
                  }));
        for (size_t i = 0; i < src.size(); ++i) {
          ASSERT_EQ(oracle64(src[i], mode, scaleFactor), dst[i])
              << src[i] << ", mode " << mode << ", scaleFactor " << scaleFactor << ", caller's mode "
              << caller;
        }
      }
    }
  }
  for (KvrRoundMode mode : {kvrRoundZero, kvrRoundNear, kvrRoundFinancial}) {
    for (int scaleFactor : {0, -60, 3}) {
      sweepMapWith<Kvr64s, double>(
          [&](const double* src, Kvr64s* dst, int len) {
            return kvrsConvert_64f64s_Sfs(src, dst, len, mode, scaleFactor);
          },
          [&](double x) { return oracle64(x, mode, scaleFactor); }, sameBits<Kvr64s>,
          drawNear<double>(0x1p63L), {});
    }
  }
}

// The stated examples, as they are stated.
TEST(ConvertToInteger, Examples) {
  const auto one = [](float x, KvrRoundMode mode) {
    Kvr16s y = 99;
    EXPECT_EQ(kvrStatusOk, kvrsConvert_32f16s_Sfs(&x, &y, 1, mode, 0));
    return y;
  };
  for (KvrRoundMode mode : {2, 7, -1}) {
    EXPECT_EQ(3, one(2.5f, mode));
    EXPECT_EQ(0, one(0.49999997f, mode));
    EXPECT_EQ(1, one(0.5f, mode));
    EXPECT_EQ(-1, one(-0.5f, mode));
  }
  EXPECT_EQ(2, one(2.5f, kvrRoundNear));
  EXPECT_EQ(4, one(3.5f, kvrRoundNear));
  EXPECT_EQ(-2, one(-2.9f, kvrRoundZero));
}

}  // namespace
