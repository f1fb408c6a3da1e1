// What the floating-point FFTs compute.
// SPDX-License-Identifier: MIT
#include <cmath>

#include "tests/support/short.h"
#include "tests/transforms/fft_families.h"

using namespace kvrs::test;

namespace {

template <class Family>
class FftAccuracy : public testing::Test {};
TYPED_TEST_SUITE(FftAccuracy, FftFamilies);

// The oracle for long lengths against the sum of the definition.
TEST(FftOracle, HalvesAgainstTheDefinition) {
  Random random;
  for (int order = 0; order <= 9; ++order) {
    WideVector x(size_t{1} << order);
    for (Wide& v : x) v = {random.unit(), random.unit()};
    const WideVector want = dft(x), got = fft(x);
    long double error = 0, norm = 0;
    for (size_t k = 0; k < x.size(); ++k) {
      const Wide d = got[k] - want[k];
      error += d.re * d.re + d.im * d.im;
      norm += want[k].re * want[k].re + want[k].im * want[k].im;
    }
    EXPECT_LT(sqrtl(error / norm), 1e-17L) << order;
  }
}

// The sum itself on lengths that can be told by hand.
TEST(FftOracle, DefinitionByHand) {
  const WideVector y = dft({{1, 0}, {0, 2}, {3, 0}, {0, 0}});
  const Wide want[4] = {{4, 2}, {0, 0}, {4, -2}, {-4, 0}};
  for (int k = 0; k < 4; ++k) {
    EXPECT_NEAR(want[k].re, y[k].re, 1e-17) << k;
    EXPECT_NEAR(want[k].im, y[k].im, 1e-17) << k;
  }
}

// Both ways of calling, against the oracle.
template <class Family>
void checkTransform(const Transform<Family>& transform, int order, std::initializer_list<int> flags,
                    uint64_t seed) {
  using Part = typename Family::Part;
  Random random(seed);
  const std::vector<Part> src = randomNumbers<Part>(transform.srcCount(order), random);
  const std::vector<long double> want = oracle(transform, src.data(), order);
  for (int flag : flags) {
    SCOPED_TRACE(std::string(transform.name) + ", order " + std::to_string(order) + ", flag " +
                 std::to_string(flag));
    const Context<Family> context(order, flag);
    ASSERT_NE(nullptr, context.get());
    const long double scale = exactScale(flag, transform.inverse, order);
    std::vector<Part> dst(transform.inPlaceCount(order));
    ASSERT_EQ(kvrStatusOk, transform.call(src.data(), dst.data(), context.get(), nullptr));
    EXPECT_LT(errorInUnits(dst.data(), want.data(), want.size(), scale, order), kMostError);
    std::copy(src.begin(), src.end(), dst.begin());
    ASSERT_EQ(kvrStatusOk, transform.inPlace(dst.data(), context.get(), nullptr));
    EXPECT_LT(errorInUnits(dst.data(), want.data(), want.size(), scale, order), kMostError) << "in place";
    if (transform.layout == Layout::ccs && !transform.inverse) {
      EXPECT_EQ(0, dst[1]);
      EXPECT_EQ(0, dst[order > 0 ? transform.dstCount(order) - 1 : 1]);
    }
  }
}

TYPED_TEST(FftAccuracy, EveryOrderAndFlag) {
  for (const auto& transform : TypeParam::transforms()) {
    for (int order = 0; order <= 14; ++order) {
      checkTransform(transform, order, {kvrFftDivFwdByN, kvrFftDivInvByN, kvrFftDivBySqrtN, kvrFftNoDivByAny},
                     order + 1);
    }
  }
}

TYPED_TEST(FftAccuracy, LongOnes) {
  for (const auto& transform : TypeParam::transforms()) {
    // Layouts differ by a few moves: one of them will do where the oracle takes long.
    const int last = transform.layout == Layout::pack || transform.layout == Layout::ccs ? 17 : 18;
    for (int order = inFull(15, last); order <= last; ++order) {
      checkTransform(transform, order, {kvrFftDivBySqrtN, kvrFftNoDivByAny}, order + 1);
    }
  }
}

// One number of one complex transform: the spectrum is one value in every place, told to the bit.
TYPED_TEST(FftAccuracy, ScaleOfAnImpulse) {
  using Part = typename TypeParam::Part;
  for (int order = 0; order <= inFull(20, 17); ++order) {
    const Part n = static_cast<Part>(1 << order);
    for (int flag : kFlags) {
      const Context<TypeParam> context(order, flag);
      ASSERT_NE(nullptr, context.get());
      for (const auto& transform : TypeParam::transforms()) {
        if (order > 16 && (transform.layout == Layout::pack || transform.layout == Layout::ccs)) continue;
        SCOPED_TRACE(std::string(transform.name) + ", order " + std::to_string(order) + ", flag " +
                     std::to_string(flag));
        Part scale = 1;
        if (flag == kvrFftDivBySqrtN) {
          scale = static_cast<Part>(1.0 / std::sqrt(static_cast<double>(n)));
        } else if (flag == (transform.inverse ? kvrFftDivInvByN : kvrFftDivFwdByN)) {
          scale = Part(1) / n;
        }
        std::vector<Part> src(transform.srcCount(order)), dst(transform.dstCount(order));
        const auto expect = [&](size_t i, Part want) { ASSERT_EQ(want, dst[i]) << "number " << i; };
        if (!TypeParam::kReal || !transform.inverse) {
          src[0] = 1;
          ASSERT_EQ(kvrStatusOk, transform.call(src.data(), dst.data(), context.get(), nullptr));
        }
        if (!TypeParam::kReal) {
          for (size_t i = 0; i < dst.size() / 2; ++i) {
            expect(realPartAt<TypeParam>(i), scale);
            expect(realPartAt<TypeParam>(i) + imaginaryBehind<TypeParam>(order), 0);
          }
        } else if (!transform.inverse) {
          for (size_t k = 0; 2 * k <= size_t{1} << order; ++k) {
            const size_t at = placeOf(transform.layout, k, order);
            expect(at, scale);
            if (hasImaginary(k, order)) expect(at + 1, 0);
          }
        } else {
          for (size_t k = 0; 2 * k <= size_t{1} << order; ++k) src[placeOf(transform.layout, k, order)] = 1;
          ASSERT_EQ(kvrStatusOk, transform.call(src.data(), dst.data(), context.get(), nullptr));
          for (size_t i = 0; i < dst.size(); ++i) expect(i, i == 0 ? n * scale : 0);
        }
      }
    }
  }
}

// exp(-2 pi i p k / N), by hand from two short tables.
class Phases {
 public:
  explicit Phases(int order) : order_(order), low_(order / 2) {
    const long double turn = 6.283185307179586476925286766559L / ldexpl(1, order);
    const auto wave = [&](long double i) { return Wide{cosl(turn * i), -sinl(turn * i)}; };
    for (size_t i = 0; i < size_t{1} << low_; ++i) fine_.push_back(wave(i));
    for (size_t i = 0; i < size_t{1} << (order - low_); ++i) coarse_.push_back(wave(ldexpl(i, low_)));
  }
  Wide operator()(uint64_t p, uint64_t k) const {
    const uint64_t at = p * k & ((uint64_t{1} << order_) - 1);
    return coarse_[at >> low_] * fine_[at & ((uint64_t{1} << low_) - 1)];
  }

 private:
  int order_, low_;
  WideVector fine_, coarse_;
};

// An impulse anywhere is a wave of that frequency: the shift theorem, without an oracle.
TYPED_TEST(FftAccuracy, ImpulseAnywhere) {
  using Part = typename TypeParam::Part;
  Random random(5);
  for (int order = 1; order <= inFull(22, 20); ++order) {
    const size_t n = size_t{1} << order;
    const Context<TypeParam> context(order, kvrFftNoDivByAny);
    const Phases phase(order);
    const auto& transform = TypeParam::transforms()[0];  // forward
    for (int trial = 0; trial < (order < 16 ? 4 : 1); ++trial) {
      const size_t p = trial == 0 ? n - 1 : random.below(static_cast<uint32_t>(n));
      std::vector<Part> srcDst(transform.inPlaceCount(order));
      srcDst[TypeParam::kReal ? p : realPartAt<TypeParam>(p)] = 1;
      ASSERT_EQ(kvrStatusOk, transform.inPlace(srcDst.data(), context.get(), nullptr));
      long double most = 0;
      const auto compare = [&](size_t at, long double want) {
        most = std::max(most, fabsl(srcDst[at] - want));
      };
      for (size_t k = 0; k < (TypeParam::kReal ? n / 2 + 1 : n); ++k) {
        const size_t at = TypeParam::kReal ? placeOf(transform.layout, k, order) : realPartAt<TypeParam>(k);
        const Wide want = phase(p, k);
        compare(at, want.re);
        if (!TypeParam::kReal || hasImaginary(k, order))
          compare(at + imaginaryBehind<TypeParam>(order), want.im);
      }
      // A product of at most order/2 + 2 rounded waves.
      EXPECT_LT(most, std::numeric_limits<Part>::epsilon() * (order / 2 + 2))
          << "order " << order << ", at " << p;
    }
  }
}

template <class Part>
long double rootOfSquares(const std::vector<Part>& x) {
  long double sum = 0;
  for (Part v : x) sum += v * static_cast<long double>(v);
  return sqrtl(sum);
}

// transform(a x + b y) = a transform(x) + b transform(y).
TYPED_TEST(FftAccuracy, Linearity) {
  using Part = typename TypeParam::Part;
  Random random(6);
  for (int order = 0; order <= inFull(20, 17); ++order) {
    const Context<TypeParam> context(order, kvrFftDivBySqrtN);
    for (const auto& transform : TypeParam::transforms()) {
      if (order > 17 && (transform.layout == Layout::pack || transform.layout == Layout::ccs)) continue;
      const size_t count = transform.srcCount(order);
      std::vector<Part> x(count), y(count), z(count), tx(transform.dstCount(order)), ty(tx), tz(tx), rest(tx);
      for (size_t i = 0; i < count; ++i) {
        x[i] = static_cast<Part>(random.below(4096)) - 2048;  // so that z is exact
        y[i] = static_cast<Part>(random.below(4096)) - 2048;
        z[i] = Part(0.75) * x[i] - Part(1.5) * y[i];
      }
      ASSERT_EQ(kvrStatusOk, transform.call(x.data(), tx.data(), context.get(), nullptr));
      ASSERT_EQ(kvrStatusOk, transform.call(y.data(), ty.data(), context.get(), nullptr));
      ASSERT_EQ(kvrStatusOk, transform.call(z.data(), tz.data(), context.get(), nullptr));
      for (size_t i = 0; i < rest.size(); ++i)
        rest[i] = static_cast<Part>(tz[i] - (0.75 * tx[i] - 1.5 * ty[i]));
      const long double unit = kMostError * std::numeric_limits<Part>::epsilon() * sqrtl(order);
      EXPECT_LE(rootOfSquares(rest),
                unit * (rootOfSquares(tz) + 0.75L * rootOfSquares(tx) + 1.5L * rootOfSquares(ty)))
          << transform.name << ", order " << order;
    }
  }
}

// There and back gives N times the signal, in place too; with a scale, the signal.
template <class Family>
void checkRoundTrip(int order, int flag, long double gain) {
  using Part = typename Family::Part;
  Random random(order);
  const Context<Family> context(order, flag);
  ASSERT_NE(nullptr, context.get());
  const auto& all = Family::transforms();
  for (size_t i = 0; i < all.size() / 2; ++i) {
    const auto &forward = all[i], &inverse = all[i + all.size() / 2];
    if (order > 20 && i > 0) return;
    const size_t count = forward.srcCount(order);
    const auto signal = randomNumbers<Part>(count, random);
    std::vector<Part> srcDst(signal);
    srcDst.resize(forward.inPlaceCount(order));
    ASSERT_EQ(kvrStatusOk, forward.inPlace(srcDst.data(), context.get(), nullptr));
    ASSERT_EQ(kvrStatusOk, inverse.inPlace(srcDst.data(), context.get(), nullptr));
    EXPECT_LT(errorInUnits(srcDst.data(), signal.data(), count, gain, order), M_SQRT2 * kMostError)
        << forward.name << ", order " << order << ", flag " << flag;
  }
}
TYPED_TEST(FftAccuracy, RoundTrip) {
  for (int order = 0; order <= inFull(22, 20); ++order) {
    checkRoundTrip<TypeParam>(order, kvrFftDivFwdByN, 1);
    if (order > inFull(18, 14)) continue;
    checkRoundTrip<TypeParam>(order, kvrFftDivInvByN, 1);
    // The scale is rounded once, and enters twice.
    const long double scale = static_cast<typename TypeParam::Part>(1 / std::sqrt(std::ldexp(1.0, order)));
    checkRoundTrip<TypeParam>(order, kvrFftDivBySqrtN, ldexpl(scale * scale, order));
    checkRoundTrip<TypeParam>(order, kvrFftNoDivByAny, ldexpl(1, order));
  }
}

// Lengths beyond the oracle, by the energy of the spectrum and a few of its numbers.
TYPED_TEST(FftAccuracy, VeryLongOnes) {
  using Part = typename TypeParam::Part;
  for (int order : {20, 22, TypeParam::kReal ? 24 : 23}) {
    if (isShort() && order != 22) continue;
    const size_t n = size_t{1} << order;
    const auto& transform = TypeParam::transforms()[0];
    const Context<TypeParam> context(order, kvrFftDivBySqrtN);
    ASSERT_NE(nullptr, context.get());
    Random random(order);
    const auto src = randomNumbers<Part>(transform.srcCount(order), random);
    std::vector<Part> dst(src);
    dst.resize(transform.inPlaceCount(order));
    ASSERT_EQ(kvrStatusOk, transform.inPlace(dst.data(), context.get(), nullptr));

    const Phases phase(order);
    const long double root = sqrtl(n);
    const double unit = std::numeric_limits<Part>::epsilon() * std::sqrt(double(order));
    for (int trial = 0; trial < (order < inFull(23, 0) ? 4 : 1); ++trial) {
      const size_t k = 1 + random.below(static_cast<uint32_t>(n / 2 - 1));
      Wide want{0, 0};
      for (size_t i = 0; i < n; ++i) {
        const Part* x = &src[TypeParam::kReal ? i : realPartAt<TypeParam>(i)];
        want = want + Wide{x[0], TypeParam::kReal ? 0 : x[imaginaryBehind<TypeParam>(order)]} * phase(i, k);
      }
      const size_t at = TypeParam::kReal ? placeOf(transform.layout, k, order) : realPartAt<TypeParam>(k);
      const Wide got{dst[at], dst[at + imaginaryBehind<TypeParam>(order)]};
      // Numbers of the spectrum are about 1/sqrt(3) or sqrt(2/3); one error may be some times the usual one.
      EXPECT_LT(hypotl(got.re - want.re / root, got.im - want.im / root), 4 * kMostError * unit)
          << "order " << order << ", number " << k;
    }
    long double in = 0, out = 0;
    for (Part v : src) in += v * static_cast<long double>(v);
    for (Part v : dst) out += v * static_cast<long double>(v);
    if (TypeParam::kReal) {  // pairs stand for two numbers of the spectrum
      out = 2 * out - dst[0] * static_cast<long double>(dst[0]) - dst[1] * static_cast<long double>(dst[1]);
    }
    EXPECT_NEAR(1, static_cast<double>(out / in), 4 * unit) << order;

    // And back, for the inverse.
    const auto& inverse = TypeParam::transforms()[TypeParam::transforms().size() / 2];
    ASSERT_EQ(kvrStatusOk, inverse.inPlace(dst.data(), context.get(), nullptr));
    EXPECT_LT(errorInUnits(dst.data(), src.data(), src.size(), 1, order), M_SQRT2 * kMostError) << order;
  }
}

// X[0] and X[N/2] of a real signal are real: what CCS holds as their imaginary parts is ignored.
template <class Family>
void checkCcsIgnores() {
  using Part = typename Family::Part;
  const auto& ccsToR = Family::transforms()[5];
  ASSERT_TRUE(ccsToR.layout == Layout::ccs && ccsToR.inverse);
  for (int order = 0; order <= 17; ++order) {
    const size_t n = size_t{1} << order;
    const Context<Family> context(order, kvrFftDivInvByN);
    Random random(order);
    std::vector<Part> src = randomNumbers<Part>(n + 2, random), clean(n), dirty(n);
    src[1] = src[n + 1] = 0;
    ASSERT_EQ(kvrStatusOk, ccsToR.call(src.data(), clean.data(), context.get(), nullptr));
    src[1] = std::numeric_limits<Part>::quiet_NaN();
    src[n + 1] = std::numeric_limits<Part>::infinity();
    ASSERT_EQ(kvrStatusOk, ccsToR.call(src.data(), dirty.data(), context.get(), nullptr));
    EXPECT_EQ(clean, dirty) << order;
    ASSERT_EQ(kvrStatusOk, ccsToR.inPlace(src.data(), context.get(), nullptr));
    for (size_t i = 0; i < n; ++i) ASSERT_NEAR(clean[i], src[i], 1e-6) << order;
  }
}
TEST(FftCcs, ImaginaryPartsOfRealNumbersAreIgnored) {
  checkCcsIgnores<Real32>();
  checkCcsIgnores<Real64>();
}

// The shortest lengths by hand.
TEST(FftLayouts, OneAndTwoPoints) {
  const Context<Real32> one(0, kvrFftNoDivByAny), two(1, kvrFftNoDivByAny);
  const Kvr32f x[2] = {3, 5};
  Kvr32f y[4];
  const auto expect = [&](std::vector<Kvr32f> want) {
    for (size_t i = 0; i < 4; ++i) EXPECT_EQ(i < want.size() ? want[i] : 77, y[i]) << i;
    for (Kvr32f& v : y) v = 77;
  };
  for (Kvr32f& v : y) v = 77;
  kvrsFFTFwd_RToPerm_32f(x, y, one.get(), nullptr);
  expect({3});
  kvrsFFTFwd_RToPack_32f(x, y, one.get(), nullptr);
  expect({3});
  kvrsFFTFwd_RToCCS_32f(x, y, one.get(), nullptr);
  expect({3, 0});
  kvrsFFTFwd_RToPerm_32f(x, y, two.get(), nullptr);
  expect({8, -2});
  kvrsFFTFwd_RToPack_32f(x, y, two.get(), nullptr);
  expect({8, -2});
  kvrsFFTFwd_RToCCS_32f(x, y, two.get(), nullptr);
  expect({8, 0, -2, 0});
  const Kvr32f ccs[4] = {8, 100, -2, 100};
  kvrsFFTInv_CCSToR_32f(ccs, y, one.get(), nullptr);
  expect({8});
  kvrsFFTInv_CCSToR_32f(ccs, y, two.get(), nullptr);
  expect({6, 10});
  const Kvr32f packed[2] = {8, -2};
  kvrsFFTInv_PackToR_32f(packed, y, two.get(), nullptr);
  expect({6, 10});
  kvrsFFTInv_PermToR_32f(packed, y, two.get(), nullptr);
  expect({6, 10});
}

TEST(FftLayouts, FourPoints) {
  const Context<Real32> four(2, kvrFftNoDivByAny);
  const Kvr32f x[4] = {1, 2, 4, 8};  // X = 15, -3 + 6i, -5
  Kvr32f y[6];
  kvrsFFTFwd_RToPerm_32f(x, y, four.get(), nullptr);
  EXPECT_EQ(std::vector<Kvr32f>({15, -5, -3, 6}), std::vector<Kvr32f>(y, y + 4));
  kvrsFFTFwd_RToPack_32f(x, y, four.get(), nullptr);
  EXPECT_EQ(std::vector<Kvr32f>({15, -3, 6, -5}), std::vector<Kvr32f>(y, y + 4));
  kvrsFFTFwd_RToCCS_32f(x, y, four.get(), nullptr);
  EXPECT_EQ(std::vector<Kvr32f>({15, 0, -3, 6, -5, 0}), std::vector<Kvr32f>(y, y + 6));
}

// A NaN reaches every number of the result, and an infinity leaves none finite.
TYPED_TEST(FftAccuracy, NanAndInfinityPassThrough) {
  using Part = typename TypeParam::Part;
  using L = std::numeric_limits<Part>;
  for (int order : {0, 1, 2, 3, 4, 5, 6, 7, 10, 11, 13, 15, 16, 17}) {
    const Context<TypeParam> context(order, kvrFftDivBySqrtN);
    for (const auto& transform : TypeParam::transforms()) {
      for (Part special : {L::quiet_NaN(), L::infinity(), -L::infinity()}) {
        Random random(order);
        auto src = randomNumbers<Part>(transform.srcCount(order), random);
        src[0] = special;
        std::vector<Part> dst(transform.dstCount(order));
        ASSERT_EQ(kvrStatusOk, transform.call(src.data(), dst.data(), context.get(), nullptr));
        // src[0] is a real part or a number of its own; it enters every real part of the result.
        const bool single = (TypeParam::kReal && transform.inverse) || TypeParam::kPlanes;
        for (size_t i = 0; i < dst.size() / (TypeParam::kPlanes ? 2 : 1); i += single ? 1 : 2) {
          const size_t at = transform.layout == Layout::pack && i > 0 && !single ? i - 1 : i;
          ASSERT_FALSE(std::isfinite(dst[at])) << transform.name << ", order " << order << ", number " << at;
        }
      }
    }
  }
}

}  // namespace
