// SPDX-License-Identifier: MIT
#include <climits>
#include <cmath>
#include <vector>

#include "kvrs/exponential.h"
#include "tests/support/rounding.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

// e^x * 2^kPlaces for small integers x, as a sum of x^k / k!, in a fixed-point number of many bits.
class Power {
 public:
  static constexpr int kPlaces = 384;

  explicit Power(int x) : plus_(kLimbs), minus_(kLimbs) {
    Limbs term(kLimbs);
    term[kPlaces / 32] = 1;
    for (uint32_t k = 1; k < 700; ++k) {
      add(x < 0 && k % 2 == 0 ? minus_ : plus_, term);
      multiply(term, static_cast<uint32_t>(std::abs(x)));
      divide(term, k);
    }
    // plus_ becomes the difference.
    int64_t borrow = 0;
    for (size_t i = 0; i < kLimbs; ++i) {
      borrow += int64_t{plus_[i]} - minus_[i];
      plus_[i] = static_cast<uint32_t>(borrow);
      borrow >>= 32;
    }
    exact_ = x == 0;
  }

  // e^x * 2^(-scaleFactor) to nearest, ties to even, at most 2^63 - 1, for |scaleFactor| up to 128.
  int64_t scaled(int scaleFactor) const {
    const size_t point = static_cast<size_t>(kPlaces + scaleFactor);  // the bit of one unit
    for (size_t i = point + 63; i < 32 * kLimbs; ++i)
      if (bit(i)) return INT64_MAX;
    int64_t whole = 0;
    for (size_t i = 0; i < 63; ++i) whole |= int64_t{bit(point + i)} << i;
    const bool half = bit(point - 1);
    bool more = !exact_;
    for (size_t i = 0; exact_ && i < point - 1; ++i) more = more || bit(i);
    const bool up = half && (more || (whole & 1) != 0);
    return up && whole < INT64_MAX ? whole + 1 : whole;
  }

 private:
  static constexpr size_t kLimbs = 24;
  using Limbs = std::vector<uint32_t>;

  bool bit(size_t i) const { return i < 32 * kLimbs && (plus_[i / 32] >> i % 32 & 1) != 0; }
  static void add(Limbs& to, const Limbs& from) {
    uint64_t carry = 0;
    for (size_t i = 0; i < kLimbs; ++i) {
      carry += uint64_t{to[i]} + from[i];
      to[i] = static_cast<uint32_t>(carry);
      carry >>= 32;
    }
  }
  static void multiply(Limbs& by, uint32_t n) {
    uint64_t carry = 0;
    for (uint32_t& limb : by) {
      carry += uint64_t{limb} * n;
      limb = static_cast<uint32_t>(carry);
      carry >>= 32;
    }
  }
  static void divide(Limbs& by, uint32_t n) {
    uint64_t rest = 0;
    for (size_t i = kLimbs; i-- > 0;) {
      rest = rest << 32 | by[i];
      by[i] = static_cast<uint32_t>(rest / n);
      rest %= n;
    }
  }

  Limbs plus_, minus_;
  bool exact_;
};

// x of either far side leaves the range at every scale factor up to 63.
constexpr int kFar = 110;
const Power& powerOf(int x) {
  static const auto& all = *[] {
    auto* powers = new std::vector<Power>;
    for (int i = -kFar; i <= kFar; ++i) powers->emplace_back(i);
    return powers;
  }();
  return all[static_cast<size_t>(x + kFar)];
}

template <class T>
T exact(int64_t x, int scaleFactor) {
  if (x > kFar) return std::numeric_limits<T>::max();
  if (x < -kFar) return 0;
  return static_cast<T>(
      std::min<int64_t>(powerOf(static_cast<int>(x)).scaled(scaleFactor), std::numeric_limits<T>::max()));
}

template <class T>
using Call = KvrStatus (*)(const T*, T*, int, int) noexcept;

// All arguments about the window, and the extremes, at every scale factor that has a table.
template <class T>
void checkScaleFactors(Call<T> f) {
  std::vector<T> src{std::numeric_limits<T>::max(), std::numeric_limits<T>::lowest()};
  for (int x = -kFar - 2; x <= kFar + 2; ++x) src.push_back(static_cast<T>(x));
  std::vector<T> got(src.size());
  for (int scaleFactor = -63; scaleFactor <= 63; ++scaleFactor) {
    for (int step : {static_cast<int>(src.size()), 7}) {  // with a window and without
      for (size_t i = 0; i < src.size(); i += static_cast<size_t>(step)) {
        const int len = std::min(step, static_cast<int>(src.size() - i));
        ASSERT_EQ(kvrStatusOk, f(&src[i], &got[i], len, scaleFactor));
      }
      for (size_t i = 0; i < src.size(); ++i) {
        ASSERT_EQ(exact<T>(src[i], scaleFactor), got[i]) << "e^" << src[i] << ", scaleFactor " << scaleFactor;
      }
    }
  }
}

TEST(ExpInteger, ScaleFactors) {
  checkScaleFactors<Kvr16s>(kvrsExp_16s_Sfs);
  checkScaleFactors<Kvr32s>(kvrsExp_32s_Sfs);
  checkScaleFactors<Kvr64s>(kvrsExp_64s_Sfs);
}

TEST(ExpInteger, All16Bits) {
  std::vector<Kvr16s> src, got(65536);
  for (int x = -32768; x <= 32767; ++x) src.push_back(static_cast<Kvr16s>(x));
  for (int scaleFactor : {-24, -16, -12, -5, -1, 0, 1, 5, 12, 16, 24, 63}) {
    ASSERT_EQ(kvrStatusOk, kvrsExp_16s_Sfs(src.data(), got.data(), 65536, scaleFactor));
    for (size_t i = 0; i < src.size(); ++i) {
      ASSERT_EQ(exact<Kvr16s>(src[i], scaleFactor), got[i]) << src[i] << ", scaleFactor " << scaleFactor;
    }
  }
}

// Beyond the tables, where the window lies far from 0 or outside of the type.
template <class T>
void checkFarScaleFactors(Call<T> f) {
  for (int scaleFactor : {INT_MIN, INT_MIN + 1, -100000, -47000, -1000, -100, -64, 64, 100, 1000, 47000,
                          100000, INT_MAX - 1, INT_MAX}) {
    const long double middle = scaleFactor * 0.693147180559945309417232121458176568L;
    std::vector<T> src{std::numeric_limits<T>::max(), std::numeric_limits<T>::lowest(), 0, 1, T(-1)};
    for (int off = -5; off <= 50; ++off) {
      const long double x = std::floor(middle) + off;
      if (x >= std::numeric_limits<T>::lowest() && x <= std::numeric_limits<T>::max())
        src.push_back(static_cast<T>(x));
    }
    std::vector<T> got(src.size());
    ASSERT_EQ(kvrStatusOk, f(src.data(), got.data(), static_cast<int>(src.size()), scaleFactor));
    for (size_t i = 0; i < src.size(); ++i) {
      const long double power = std::exp(static_cast<long double>(src[i]) - middle);
      const long double most = static_cast<long double>(std::numeric_limits<T>::max());
      const long double want = power >= most ? most : roundedTo(power, kvrRoundNear);
      // The difference above is exact to 2^-33, as is the relative error of the power.
      const long double slack = power >= most ? 0 : power * 0x1p-31L + (power < 1 ? 0.0L : 1.0L);
      ASSERT_LE(std::fabs(want - static_cast<long double>(got[i])), slack)
          << "e^" << src[i] << ", scaleFactor " << scaleFactor << ": " << got[i];
    }
  }
}

TEST(ExpInteger, FarScaleFactors) {
  checkFarScaleFactors<Kvr16s>(kvrsExp_16s_Sfs);
  checkFarScaleFactors<Kvr32s>(kvrsExp_32s_Sfs);
  checkFarScaleFactors<Kvr64s>(kvrsExp_64s_Sfs);
}

TEST(ExpInteger, KnownValues) {
  const Kvr32s src[] = {-1, 22, 0, 1, 21};
  Kvr32s got[5];
  ASSERT_EQ(kvrStatusOk, kvrsExp_32s_Sfs(src, got, 5, 0));
  EXPECT_EQ(0, got[0]);
  EXPECT_EQ(2147483647, got[1]);
  EXPECT_EQ(1, got[2]);
  EXPECT_EQ(3, got[3]);
  EXPECT_EQ(1318815734, got[4]);
  ASSERT_EQ(kvrStatusOk, kvrsExp_32s_Sfs(src, got, 5, 1));
  EXPECT_EQ(0, got[2]);  // a tie
}

TEST(ExpInteger, Sweep) {
  for (int scaleFactor : {0, -9, 40}) {
    SweepOptions options;
    if (scaleFactor != 0) options.lengths = {1, 15, 16, 17, 26, 33, 48, 65};
    const auto check = [&](auto f, auto inPlace, auto like) {
      using T = decltype(like);
      const auto draw = [](Random& random, size_t, T) {
        return random.below(4) == 0 ? random.value<T>()
                                    : static_cast<T>(static_cast<int>(random.below(140)) - 60);
      };
      std::vector<T> near;
      for (int x = -kFar; x <= kFar; ++x) near.push_back(exact<T>(x, scaleFactor));
      const auto oracle = [&](T x) {
        return x < -kFar || x > kFar ? exact<T>(x, scaleFactor) : near[static_cast<size_t>(x + kFar)];
      };
      sweepMapWith<T, T>([=](const T* src, T* dst, int len) { return f(src, dst, len, scaleFactor); }, oracle,
                         sameBits<T>, draw, options);
      sweepInPlaceWith<T>([=](T* srcDst, int len) { return inPlace(srcDst, len, scaleFactor); }, oracle,
                          sameBits<T>, draw, options);
    };
    check(kvrsExp_16s_Sfs, kvrsExp_16s_ISfs, Kvr16s());
    check(kvrsExp_32s_Sfs, kvrsExp_32s_ISfs, Kvr32s());
    check(kvrsExp_64s_Sfs, kvrsExp_64s_ISfs, Kvr64s());
  }
}

}  // namespace
