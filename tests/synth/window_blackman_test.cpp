// SPDX-License-Identifier: MIT
#include "kvrs/window.h"

#include "tests/support/rounding.h"
#include "tests/synth/window_model.h"

using namespace kvrs::test;

namespace {

std::vector<float> singleWeights(std::vector<float> c, float alpha) {
  const float offset = alpha + 0.5f, factor = -4 * alpha;
  for (float& w : c) {
    const float square = w * w;
    const float product = square * factor;
    w = product + (offset - w);
  }
  return c;
}

std::vector<double> doubleWeights(std::vector<double> c, double alpha) {
  const double offset = alpha + 0.5, factor = alpha * 4.0;
  for (double& w : c) {
    const double square = w * w;
    const double product = square * factor;
    w = (offset - w) - product;
  }
  return c;
}

template <class T>
using Alpha = std::conditional_t<sizeof(PartOf<T>) == 8, double, float>;

template <class T>
std::vector<T> blackman(const std::vector<T>& x, Alpha<T> alpha) {
  if (x.size() == 3) return zeroEnds(x);
  const size_t half = x.size() / 2;
  const CosineModel cosines(0.5, static_cast<int>(x.size()));
  if constexpr (std::is_integral_v<PartOf<T>>) {
    return windowed(x, singleWeights(cosines.byFour(half, sizeof(T) == 2 ? 120 : 56), alpha));
  } else {
    if (half > 512) return windowed(x, doubleWeights(cosines.oneByOne(half), static_cast<double>(alpha)));
    if constexpr (sizeof(PartOf<T>) == 8) {
      return windowed(x, doubleWeights(cosines.byTwo(half), alpha));
    } else {
      const auto c = cosines.oneByOne(half);
      return windowed(x, singleWeights(std::vector<float>(c.begin(), c.end()), alpha));
    }
  }
}

template <class T>
using WithAlpha = KvrStatus (*)(const T*, T*, int, Alpha<T>) noexcept;
template <class T>
using WithAlphaI = KvrStatus (*)(T*, int, Alpha<T>) noexcept;

template <class T>
void checkBlackman(WithAlpha<T> call, WithAlphaI<T> inPlace) {
  for (double value : {-0.16, 0.7}) {
    const Alpha<T> alpha = static_cast<Alpha<T>>(value);
    checkExactWindow<T>([&](const T* src, T* dst, int len) { return call(src, dst, len, alpha); },
                        [&](T* srcDst, int len) { return inPlace(srcDst, len, alpha); }, 3,
                        [&](const std::vector<T>& x) { return blackman(x, alpha); });
  }
}

TEST(WindowBlackman, AnyAlpha) {
  checkBlackman<Kvr16s>(kvrsWinBlackman_16s, kvrsWinBlackman_16s_I);
  checkBlackman<Kvr16sc>(kvrsWinBlackman_16sc, kvrsWinBlackman_16sc_I);
  checkBlackman<Kvr32f>(kvrsWinBlackman_32f, kvrsWinBlackman_32f_I);
  checkBlackman<Kvr32fc>(kvrsWinBlackman_32fc, kvrsWinBlackman_32fc_I);
  checkBlackman<Kvr64f>(kvrsWinBlackman_64f, kvrsWinBlackman_64f_I);
  checkBlackman<Kvr64fc>(kvrsWinBlackman_64fc, kvrsWinBlackman_64fc_I);
}

template <class T>
void checkStandard(Window<T> call, WindowI<T> inPlace) {
  checkExactWindow<T>(call, inPlace, 3,
                      [](const std::vector<T>& x) { return blackman(x, static_cast<Alpha<T>>(-0.16)); });
}

TEST(WindowBlackman, Standard) {
  checkStandard(kvrsWinBlackmanStd_16s, kvrsWinBlackmanStd_16s_I);
  checkStandard(kvrsWinBlackmanStd_16sc, kvrsWinBlackmanStd_16sc_I);
  checkStandard(kvrsWinBlackmanStd_32f, kvrsWinBlackmanStd_32f_I);
  checkStandard(kvrsWinBlackmanStd_32fc, kvrsWinBlackmanStd_32fc_I);
  checkStandard(kvrsWinBlackmanStd_64f, kvrsWinBlackmanStd_64f_I);
  checkStandard(kvrsWinBlackmanStd_64fc, kvrsWinBlackmanStd_64fc_I);
}

template <class T>
void checkOptimal(Window<T> call, WindowI<T> inPlace) {
  checkExactWindow<T>(call, inPlace, 4, [](const std::vector<T>& x) {
    const double r = 0.5 / cosineOf(3.141592653589793 / static_cast<double>(x.size() - 1));
    return blackman(x, static_cast<Alpha<T>>(-r * r));
  });
}

TEST(WindowBlackman, Optimal) {
  checkOptimal(kvrsWinBlackmanOpt_16s, kvrsWinBlackmanOpt_16s_I);
  checkOptimal(kvrsWinBlackmanOpt_16sc, kvrsWinBlackmanOpt_16sc_I);
  checkOptimal(kvrsWinBlackmanOpt_32f, kvrsWinBlackmanOpt_32f_I);
  checkOptimal(kvrsWinBlackmanOpt_32fc, kvrsWinBlackmanOpt_32fc_I);
  checkOptimal(kvrsWinBlackmanOpt_64f, kvrsWinBlackmanOpt_64f_I);
  checkOptimal(kvrsWinBlackmanOpt_64fc, kvrsWinBlackmanOpt_64fc_I);
  EXPECT_EQ(kvrStatusBadLength, kvrsWinBlackmanOpt_32f(nullptr, nullptr, 3));
}

template <class T>
void checkQ15(KvrStatus (*call)(const T*, T*, int, int) noexcept,
              KvrStatus (*inPlace)(T*, int, int) noexcept) {
  for (int alphaQ15 : {-5243, 0, 40000}) {
    checkExactWindow<T>(
        [&](const T* src, T* dst, int len) { return call(src, dst, len, alphaQ15); },
        [&](T* srcDst, int len) { return inPlace(srcDst, len, alphaQ15); }, 3,
        [&](const std::vector<T>& x) { return blackman(x, static_cast<float>(alphaQ15) * 0x1p-15f); });
  }
}

TEST(WindowBlackman, Q15) {
  checkQ15<Kvr16s>(kvrsWinBlackmanQ15_16s, kvrsWinBlackmanQ15_16s_I);
  checkQ15<Kvr16sc>(kvrsWinBlackmanQ15_16sc, kvrsWinBlackmanQ15_16sc_I);
}

Kvr16s timesScaled(Kvr16s x, float w) {
  const float product = static_cast<float>(x) * w;
  if (std::isnan(product)) return 0;
  return static_cast<Kvr16s>(std::nearbyint(std::clamp(product, -32768.0f, 32767.0f)));
}

std::vector<Kvr16s> blackmanScaled(std::vector<Kvr16s> x, int alphaQ15, int scaleFactor) {
  const size_t len = x.size(), half = len / 2;
  const double scale = std::pow(2.0, -static_cast<double>(scaleFactor));
  if (len == 3) {
    const double v = x[1] * scale;
    x[1] = std::isnan(v)  ? Kvr16s{0}
           : v > 32767.0  ? Kvr16s{32767}
           : v < -32768.0 ? Kvr16s{-32768}
           : v >= 0       ? static_cast<Kvr16s>(std::trunc(v + 0.5))
                          : static_cast<Kvr16s>(std::trunc(v - 0.5));
    return zeroEnds(x);
  }
  const float single = static_cast<float>(scale);
  const auto weights = singleWeights(CosineModel(0.5, static_cast<int>(len)).byFour(half, 16),
                                     static_cast<float>(alphaQ15) * 0x1p-15f);
  for (size_t n = 0; n < half; ++n) {
    const float w = weights[n] * single;
    x[n] = timesScaled(x[n], w);
    x[len - 1 - n] = timesScaled(x[len - 1 - n], w);
  }
  if (len % 2 != 0) x[half] = timesScaled(x[half], single);
  return x;
}

TEST(WindowBlackman, Scaled) {
  for (int scaleFactor : {0, 1, -1, 3, -5, 20, -20, 130, -130, 1100, -1100, INT32_MAX, INT32_MIN}) {
    const auto inPlace = [&](Kvr16s* srcDst, int len) {
      return kvrsWinBlackmanQ15_16s_ISfs(srcDst, len, -5243, scaleFactor);
    };
    checkExactWindow<Kvr16s>(
        [&](const Kvr16s* src, Kvr16s* dst, int len) {
          memcpy(dst, src, static_cast<size_t>(len) * sizeof(Kvr16s));
          return inPlace(dst, len);
        },
        inPlace, 3, [&](const std::vector<Kvr16s>& x) { return blackmanScaled(x, -5243, scaleFactor); });
  }
}

TEST(WindowBlackman, ScaledInEveryModeOfTheCaller) {
  for (int mode : kCallerModes) {
    for (int len : {3, 101}) {
      std::vector<Kvr16s> x(static_cast<size_t>(len), 12345);
      const auto want = blackmanScaled(x, -5243, 2);
      callWithRounding(mode, [&] { return kvrsWinBlackmanQ15_16s_ISfs(x.data(), len, -5243, 2); });
      EXPECT_EQ(want, x) << mode;
    }
  }
}

// The definition with its two cosines.
TEST(WindowBlackman, CloseToItsDefinition) {
  for (int len : {5, 64, 1025, 1026, 1027, 100001}) {
    const size_t n = static_cast<size_t>(len);
    const std::vector<Kvr64f> ones(n, 1.0);
    const std::vector<Kvr32f> singles(n, 1.0f);
    std::vector<Kvr64f> y(n);
    std::vector<Kvr32f> z(n);
    ASSERT_EQ(kvrStatusOk, kvrsWinBlackman_64f(ones.data(), y.data(), len, -0.16));
    ASSERT_EQ(kvrStatusOk, kvrsWinBlackmanStd_32f(singles.data(), z.data(), len));
    for (size_t i = 0; i < n; ++i) {
      const double x = 6.283185307179586 * static_cast<double>(i) / (len - 1);
      const double want = 0.42 - 0.5 * std::cos(x) + 0.08 * std::cos(2 * x);
      ASSERT_NEAR(want, y[i], 1e-16 * len * len + 1e-14) << i << " of " << len;
      ASSERT_NEAR(want, z[i], 1e-16 * len * len + 3e-7) << i << " of " << len;
    }
  }
}

}  // namespace
