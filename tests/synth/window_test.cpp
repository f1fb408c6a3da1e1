// Bartlett, Hann and Hamming windows.
// SPDX-License-Identifier: MIT
#include "kvrs/window.h"

#include "tests/support/rounding.h"
#include "tests/synth/window_model.h"

using namespace kvrs::test;

namespace {

template <class T>
std::vector<T> bartlett(const std::vector<T>& x) {
  if (x.size() == 3) return zeroEnds(x);
  const size_t half = x.size() / 2;
  const double step = 2.0 / static_cast<double>(x.size() - 1);
  const float single = static_cast<float>(step);
  constexpr bool isDouble = sizeof(PartOf<T>) == 8, isInteger = std::is_integral_v<PartOf<T>>;
  std::vector<double> doubles = {0};
  for (size_t n = 1; n < half; ++n)
    doubles.push_back(doubles.back() + (isDouble ? step : static_cast<double>(single)));
  if constexpr (isDouble) {
    return windowed(x, doubles);
  } else {
    if constexpr (!isInteger) {
      if (half > 640) return windowed(x, doubles);
    }
    std::vector<float> singles = {0.0f, single, 2 * single, 3 * single};
    for (size_t n = 4; n < half; ++n) singles.push_back(singles[n - 4] + 4 * single);
    return windowed(x, singles);
  }
}

template <class T>
void checkBartlett(Window<T> call, WindowI<T> inPlace) {
  checkExactWindow<T>(call, inPlace, 3, bartlett<T>);
}

TEST(Window, Bartlett) {
  checkBartlett(kvrsWinBartlett_16s, kvrsWinBartlett_16s_I);
  checkBartlett(kvrsWinBartlett_16sc, kvrsWinBartlett_16sc_I);
  checkBartlett(kvrsWinBartlett_32f, kvrsWinBartlett_32f_I);
  checkBartlett(kvrsWinBartlett_32fc, kvrsWinBartlett_32fc_I);
  checkBartlett(kvrsWinBartlett_64f, kvrsWinBartlett_64f_I);
  checkBartlett(kvrsWinBartlett_64fc, kvrsWinBartlett_64fc_I);
}

struct RaisedCosine {
  double offset, amplitude;
  bool endsInZero;

  template <class T>
  std::vector<T> operator()(const std::vector<T>& x) const {
    if (endsInZero && x.size() == 3) return zeroEnds(x);
    const size_t half = x.size() / 2;
    const CosineModel cosines(amplitude, static_cast<int>(x.size()));
    if constexpr (std::is_integral_v<PartOf<T>>) {
      std::vector<float> weights = cosines.byFour(half, sizeof(T) == 2 ? 176 : 88);
      for (float& w : weights) w = static_cast<float>(offset) - w;
      return windowed(x, weights);
    } else {
      std::vector<double> weights = cosines.byTwo(half);
      for (double& w : weights) w = offset - w;
      if constexpr (sizeof(PartOf<T>) == 8) {
        return windowed(x, weights);
      } else {
        return windowed(x, std::vector<float>(weights.begin(), weights.end()));
      }
    }
  }
};

template <class T>
void checkRaisedCosine(RaisedCosine model, Window<T> call, WindowI<T> inPlace) {
  checkExactWindow<T>(call, inPlace, 3, model);
}

TEST(Window, Hann) {
  const RaisedCosine hann{0.5, 0.5, true};
  checkRaisedCosine(hann, kvrsWinHann_16s, kvrsWinHann_16s_I);
  checkRaisedCosine(hann, kvrsWinHann_16sc, kvrsWinHann_16sc_I);
  checkRaisedCosine(hann, kvrsWinHann_32f, kvrsWinHann_32f_I);
  checkRaisedCosine(hann, kvrsWinHann_32fc, kvrsWinHann_32fc_I);
  checkRaisedCosine(hann, kvrsWinHann_64f, kvrsWinHann_64f_I);
  checkRaisedCosine(hann, kvrsWinHann_64fc, kvrsWinHann_64fc_I);
}

TEST(Window, Hamming) {
  const RaisedCosine hamming{0.54, 0.46, false};
  checkRaisedCosine(hamming, kvrsWinHamming_16s, kvrsWinHamming_16s_I);
  checkRaisedCosine(hamming, kvrsWinHamming_16sc, kvrsWinHamming_16sc_I);
  checkRaisedCosine(hamming, kvrsWinHamming_32f, kvrsWinHamming_32f_I);
  checkRaisedCosine(hamming, kvrsWinHamming_32fc, kvrsWinHamming_32fc_I);
  checkRaisedCosine(hamming, kvrsWinHamming_64f, kvrsWinHamming_64f_I);
  checkRaisedCosine(hamming, kvrsWinHamming_64fc, kvrsWinHamming_64fc_I);
}

TEST(Window, EndsOfThree) {
  const Kvr32f x[] = {INFINITY, 7, NAN};
  Kvr32f y[3];
  ASSERT_EQ(kvrStatusOk, kvrsWinBartlett_32f(x, y, 3));
  EXPECT_EQ(0, y[0]);
  EXPECT_EQ(7, y[1]);
  EXPECT_EQ(0, y[2]);
  const Kvr32f ones[] = {1, 1, 1};
  ASSERT_EQ(kvrStatusOk, kvrsWinHamming_32f(ones, y, 3));
  EXPECT_FLOAT_EQ(0.08f, y[0]);
  EXPECT_EQ(1, y[1]);
  EXPECT_EQ(y[0], y[2]);
}

// Whole vectors, parts of them and what is left in the middle: a weight is the same at both ends.
template <class T, class Call>
void expectSymmetric(Call call) {
  for (int len = 3; len <= 2100; ++len) {
    const std::vector<T> ones(static_cast<size_t>(len), T(1));
    std::vector<T> y(ones.size());
    ASSERT_EQ(kvrStatusOk, call(ones.data(), y.data(), len));
    for (size_t i = 0; i < y.size() / 2; ++i)
      ASSERT_TRUE(sameBits(y[i], y[y.size() - 1 - i])) << i << " of " << len;
  }
}

TEST(Window, SymmetricToTheBit) {
  expectSymmetric<Kvr32f>(kvrsWinBartlett_32f);
  expectSymmetric<Kvr64f>(kvrsWinBartlett_64f);
  expectSymmetric<Kvr32f>(kvrsWinHann_32f);
  expectSymmetric<Kvr64f>(kvrsWinHann_64f);
  expectSymmetric<Kvr32f>(kvrsWinHamming_32f);
  expectSymmetric<Kvr64f>(kvrsWinHamming_64f);
  expectSymmetric<Kvr32f>(kvrsWinBlackmanStd_32f);
  expectSymmetric<Kvr64f>(kvrsWinBlackmanStd_64f);
  const auto kaiser = [](auto call) {
    return [call](const auto* src, auto* dst, int len) {
      return call(src, dst, len, 16.0f / static_cast<float>(len));
    };
  };
  expectSymmetric<Kvr32f>(kaiser(kvrsWinKaiser_32f));
  expectSymmetric<Kvr64f>(kaiser(kvrsWinKaiser_64f));
}

// The definitions with a cosine of each angle: long windows do not drift.
TEST(Window, CloseToTheirDefinition) {
  for (int len : {5, 64, 1001, 100000, 1000001}) {
    const size_t n = static_cast<size_t>(len);
    const std::vector<Kvr64f> ones(n, 1.0);
    const std::vector<Kvr16s> samples(n, 32767);
    std::vector<Kvr64f> y(n);
    std::vector<Kvr16s> y16(n);
    ASSERT_EQ(kvrStatusOk, kvrsWinHann_64f(ones.data(), y.data(), len));
    ASSERT_EQ(kvrStatusOk, kvrsWinHann_16s(samples.data(), y16.data(), len));
    for (size_t i = 0; i < n; ++i) {
      const double want = 0.5 - 0.5 * std::cos(6.283185307179586 * static_cast<double>(i) / (len - 1));
      ASSERT_NEAR(want, y[i], 1e-16 * len * len + 1e-14) << i << " of " << len;
      // 44 steps in single precision, whose errors add up twice.
      ASSERT_NEAR(want * 32767, y16[i], 0.5 + 32767 * 44 * 44 * 0x1p-25) << i << " of " << len;
    }
    ASSERT_EQ(kvrStatusOk, kvrsWinBartlett_64f(ones.data(), y.data(), len));
    for (size_t i = 0; i < n; ++i) {
      const double want = 1 - std::fabs(2.0 * static_cast<double>(i) / (len - 1) - 1);
      ASSERT_NEAR(want, y[i], 1e-16 * len + 1e-15) << i << " of " << len;
    }
  }
}

TEST(Window, IntegersAreTheSameInEveryModeOfTheCaller) {
  std::vector<Kvr16s> x(1000), want(1000), got(1000);
  Random random;
  for (Kvr16s& v : x) v = random.value<Kvr16s>();
  kvrsWinHann_16s(x.data(), want.data(), 1000);
  for (int mode : kCallerModes) {
    callWithRounding(mode, [&] { return kvrsWinHann_16s(x.data(), got.data(), 1000); });
    EXPECT_EQ(want, got) << mode;
  }
}

}  // namespace
