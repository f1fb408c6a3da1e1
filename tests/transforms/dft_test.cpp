// Transforms of any length: what they compute, their work areas, memory and statuses.
// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstring>

#include "tests/support/short.h"
#include "tests/transforms/dft_families.h"

using namespace kvrs::test;

namespace {

constexpr int kAllFlags[] = {kvrFftDivFwdByN, kvrFftDivInvByN, kvrFftDivBySqrtN, kvrFftNoDivByAny};

// Where a layout keeps the real part of X[k], k = 0 .. n/2.
size_t placeOfTerm(DftLayout layout, size_t k, size_t n) {
  if (layout == DftLayout::ccs) return 2 * k;
  if (k == 0) return 0;
  if (layout == DftLayout::perm && n % 2 == 0) return 2 * k == n ? 1 : 2 * k;
  return 2 * k - 1;
}

// A signal with numbers of few bits, so that half a sum of two is exact in every type, and its transform.
struct Signal {
  WideVector x, X;

  Signal(size_t n, uint64_t seed) : x(n) {
    Random random(seed);
    const auto draw = [&] {
      return ldexpl(static_cast<long double>(random.below(1 << 18)) - (1 << 17), -17);
    };
    for (Wide& v : x) v = {draw(), draw()};
    X = wideDft(x);
  }
  size_t n() const { return x.size(); }
};

// Half the sum of y[k] and the conjugate of y[n-k]: what the real parts of the other side belong to.
Wide evenPart(const WideVector& y, size_t k) {
  const Wide a = y[k], b = y[(y.size() - k) % y.size()];
  return {(a.re + b.re) / 2, (a.im - b.im) / 2};
}

template <class T>
void putSpectrum(DftLayout layout, const WideVector& y, std::vector<T>* to) {
  const size_t n = y.size();
  for (size_t k = 0; 2 * k <= n; ++k) {
    const Wide v = evenPart(y, k);
    const size_t at = placeOfTerm(layout, k, n);
    (*to)[at] = static_cast<T>(v.re);
    if (k != 0 && 2 * k != n) (*to)[at + 1] = static_cast<T>(v.im);
  }
}

template <class T>
void putComplex(DftLayout layout, const WideVector& y, std::vector<T>* to) {
  const size_t n = y.size();
  for (size_t k = 0; k < n; ++k) {
    (*to)[layout == DftLayout::planes ? k : 2 * k] = static_cast<T>(y[k].re);
    (*to)[layout == DftLayout::planes ? n + k : 2 * k + 1] = static_cast<T>(y[k].im);
  }
}

template <class Family>
std::vector<typename Family::Part> sourceOf(const DftTransform<Family>& t, const Signal& s) {
  std::vector<typename Family::Part> src(t.srcCount(s.n()), 0);
  if (!Family::kReal) {
    putComplex(t.layout, s.x, &src);
  } else if (t.inverse) {
    putSpectrum(t.layout, s.x, &src);
  } else {
    for (size_t i = 0; i < s.n(); ++i) src[i] = static_cast<typename Family::Part>(s.x[i].re);
  }
  return src;
}

template <class Family>
std::vector<long double> wantedOf(const DftTransform<Family>& t, const Signal& s) {
  std::vector<long double> want(t.dstCount(s.n()), 0);
  const WideVector y = t.inverse ? backward(s.X) : s.X;
  if (!Family::kReal) {
    putComplex(t.layout, y, &want);
  } else if (t.inverse) {
    for (size_t i = 0; i < s.n(); ++i) want[i] = y[i].re;
  } else {
    putSpectrum(t.layout, y, &want);
  }
  return want;
}

template <class T>
long double relativeError(const T* got, const std::vector<long double>& want, long double scale) {
  long double error = 0, norm = 0;
  for (size_t i = 0; i < want.size(); ++i) {
    const long double w = want[i] * scale, d = got[i] - w;
    error += d * d;
    norm += w * w;
  }
  return norm > 0 ? sqrtl(error / norm) : error > 0 ? HUGE_VALL : 0;
}

// --- the methods of lengths, as the interface states them -------------------------------------------------------

enum class Way { shortOne, fft, direct, chirp, mixed };

bool powerOfTwo(size_t n) {
  return (n & (n - 1)) == 0;
}

// Odd factors by trial, in ascending order, the last one what is left; none if one of them is too large.
std::vector<size_t> smallFactors(size_t n) {
  std::vector<size_t> all;
  const size_t most = n % 4 == 0 ? 150 : 50;
  size_t rest = n, fours = 0;
  while (rest % 4 == 0) rest /= 4, ++fours;
  const bool two = rest % 2 == 0;
  if (two) rest /= 2;
  if (two) all.push_back(2);
  for (size_t i = 0; i < fours; ++i) all.push_back(4);
  for (size_t d = 3; rest >= 9 && d * d <= rest;) {
    if (rest % d == 0) {
      all.push_back(d);
      rest /= d;
    } else if ((d += 2) > 50) {
      return {};
    }
  }
  if (all.empty() || rest > most) return {};
  all.push_back(rest);
  return all;
}

Way wayOf(size_t n) {
  if (n < 17) return Way::shortOne;
  if (powerOfTwo(n)) return Way::fft;
  if (!smallFactors(n).empty()) return Way::mixed;
  return n < 51 ? Way::direct : Way::chirp;
}

// Room for the largest factor above 13, four times that where a multiple of 4 is left of the length behind it.
size_t scratchNumbers(size_t n, bool arranged) {
  std::vector<size_t> f = smallFactors(n);
  if (arranged) {
    if (f[1] == 4) {
      f[1] *= f[0];
      f.erase(f.begin());
    }
    if (f[0] % 2 == 0) std::swap(f.front(), f.back());
  }
  size_t most = 0, left = n;
  for (size_t i = 0; i < f.size(); ++i) {
    left /= f[i];
    if (f[i] > 13 && f[i] % 2 != 0)
      most = std::max(most, i + 1 < f.size() && left % 4 == 0 ? 4 * f[i] : f[i]);
  }
  return most;
}

template <class F>
int64_t fftWork(size_t n, F getSize) {
  int order = 0, spec, initBuf, work;
  while (size_t{1} << order < n) ++order;
  EXPECT_EQ(kvrStatusOk, getSize(order, kvrFftNoDivByAny, kvrHintNone, &spec, &initBuf, &work));
  return work;
}

size_t convolutionLength(size_t n) {
  for (size_t m :
       {128,  144,  160,  192,  200,  256,  288,  320,  384,  400,  512,  576,  640,  768,  800, 1024,
        1152, 1280, 1536, 1600, 2048, 2304, 2560, 3072, 3200, 4096, 4608, 5120, 6144, 6400, 8192}) {
    if (m >= 2 * n - 1) return m;
  }
  size_t m = 1;
  while (m < 2 * n - 1) m *= 2;
  return m;
}

template <class Family>
int64_t wantedWork(size_t len) {
  constexpr bool kSingle = sizeof(typename Family::Part) == 4;
  constexpr bool kOutOfOrder = Family::kWord > 100;
  const int64_t pair = kSingle ? 8 : 16;
  const auto complexWork = [](size_t n) {
    return kSingle ? fftWork(n, kvrsFFTGetSize_C_32fc) : fftWork(n, kvrsFFTGetSize_C_64fc);
  };
  if (len < 17) return 0;
  if (powerOfTwo(len)) {
    if (!Family::kReal) return complexWork(len);
    return kSingle ? fftWork(len, kvrsFFTGetSize_R_32f) : fftWork(len, kvrsFFTGetSize_R_64f);
  }
  const bool odd = len % 2 != 0;
  const size_t n = Family::kReal && !odd ? len / 2 : len;
  if (!smallFactors(n).empty()) {
    if (kOutOfOrder && n > 2000) {
      const size_t g = scratchNumbers(n, false);
      return g == 0 ? 0 : pair * static_cast<int64_t>(g) + 64;
    }
    return pair * static_cast<int64_t>(scratchNumbers(n, true) + n) + 64;
  }
  if (n < 51) return (Family::kReal && odd ? pair / 2 : pair) * static_cast<int64_t>(n) + 32;
  const size_t m = convolutionLength(n);
  const int64_t inner =
      powerOfTwo(m) ? complexWork(m) : pair * static_cast<int64_t>(scratchNumbers(m, true) + m) + 64;
  return inner + pair * static_cast<int64_t>(m) + 32;
}

TEST(DftModel, FactorsByHand) {
  EXPECT_EQ((std::vector<size_t>{3, 3}), smallFactors(9));
  EXPECT_EQ((std::vector<size_t>{2, 3, 3}), smallFactors(18));
  EXPECT_EQ((std::vector<size_t>{4, 3, 3}), smallFactors(36));
  EXPECT_EQ(Way::direct, wayOf(17));
  EXPECT_EQ(Way::chirp, wayOf(53));
  EXPECT_EQ(Way::chirp, wayOf(106));
  EXPECT_EQ(Way::mixed, wayOf(212));
  EXPECT_EQ(Way::mixed, wayOf((1 << 20) - 1));
  EXPECT_EQ(8 * (4 * 53 + 212) + 64, wantedWork<DftComplex32>(212));  // as 53, 4: a multiple of 4 behind 53
  EXPECT_EQ(16 * (17 + 34) + 64, wantedWork<DftComplex64>(34));
  EXPECT_EQ(8 * 18 + 64, wantedWork<DftReal32>(36));
  EXPECT_EQ(4 * 17 + 32, wantedWork<DftReal32>(17));
  EXPECT_EQ(8 * 23 + 64, wantedWork<DftOutOfOrder32>(2 * 3 * 17 * 23));
}

// The oracle's ways against the sum itself.
TEST(DftModel, OracleAgainstTheDefinition) {
  constexpr long double kTwoPi = 6.283185307179586476925286766559L;
  for (size_t n : {1, 2, 12, 47, 64, 67, 90, 97, 128, 134, 210}) {
    const Signal s(n, 3);
    long double error = 0, norm = 0;
    for (size_t k = 0; k < n; ++k) {
      Wide sum{0, 0};
      for (size_t i = 0; i < n; ++i) {
        const long double angle = kTwoPi * static_cast<long double>(i * k % n) / static_cast<long double>(n);
        sum = sum + s.x[i] * Wide{cosl(angle), -sinl(angle)};
      }
      const Wide d = s.X[k] - sum;
      error += d.re * d.re + d.im * d.im;
      norm += sum.re * sum.re + sum.im * sum.im;
    }
    EXPECT_LT(sqrtl(error / norm), 1e-17L) << n;
  }
}

// --- accuracy ---------------------------------------------------------------------------------------------------

// In units of eps sqrt(log2 n): about 0.3 measured for small factors, at most twice that allowed. The sums of large odd
// factors have more terms; convolutions go through several transforms of more than twice the length.
long double allowedError(size_t n) {
  const Way way = wayOf(n);
  size_t largest = 1;
  if (way == Way::direct) largest = n;
  if (way == Way::mixed) {
    for (size_t f : smallFactors(n)) largest = std::max(largest, f);
  }
  return (way == Way::chirp ? 1.2L : 0.6L) + 0.04L * sqrtl(largest > 13 ? largest : 0);
}

// The scale as it is stated: a quotient rounded to the type.
template <class Part>
long double statedScale(int flag, bool inverse, size_t n) {
  if (flag == kvrFftDivBySqrtN) return static_cast<Part>(1 / std::sqrt(static_cast<double>(n)));
  return flag == (inverse ? kvrFftDivInvByN : kvrFftDivFwdByN) ? Part(1) / static_cast<Part>(n) : Part(1);
}

long double worst[2][5];  // by precision and way

template <class Family>
void checkLength(const Signal& s, int flag) {
  using Part = typename Family::Part;
  const size_t n = s.n();
  const DftContext<Family> context(n, flag);
  ASSERT_NE(nullptr, context.get()) << n;
  ASSERT_EQ(wantedWork<Family>(n), context.bufSize()) << n;
  if (Family::kWord > 100 && n > 2000 && wayOf(n) == Way::mixed) return;  // another order
  const long double unit = std::numeric_limits<Part>::epsilon() * sqrtl(std::max(1.0, std::log2(double(n))));
  const size_t half = Family::kReal && n % 2 == 0 ? n / 2 : n;
  // The scale by Newton's step has a relative error of its own.
  const long double allowed =
      unit * allowedError(half) + (flag == kvrFftDivBySqrtN && sizeof(Part) == 4 ? 4e-7L : 0);
  for (const auto& t : Family::transforms()) {
    SCOPED_TRACE(std::string(t.name) + ", length " + std::to_string(n) + ", flag " + std::to_string(flag));
    const auto src = sourceOf(t, s);
    const auto want = wantedOf(t, s);
    const long double scale = statedScale<Part>(flag, t.inverse, n);
    std::vector<Part> dst(t.mostCount(n), 77);
    ASSERT_EQ(kvrStatusOk, t.call(src.data(), dst.data(), context.get(), nullptr, n));
    const long double error = relativeError(dst.data(), want, scale);
    ASSERT_LE(error, allowed);
    if (flag != kvrFftDivBySqrtN) {
      long double& w = worst[sizeof(Part) == 8][static_cast<int>(wayOf(half))];
      w = std::max(w, error / unit);
    }
    std::fill(dst.begin(), dst.end(), 77);
    std::copy(src.begin(), src.end(), dst.begin());
    ASSERT_EQ(kvrStatusOk, t.call(dst.data(), dst.data(), context.get(), nullptr, n));
    ASSERT_LE(relativeError(dst.data(), want, scale), allowed) << "in place";
    if (t.layout == DftLayout::ccs && !t.inverse) {
      ASSERT_EQ(0, dst[1]);
      ASSERT_EQ(0, dst[n % 2 == 0 ? n + 1 : 1]);
    }
  }
}

void checkAllFamilies(size_t n, int flag) {
  const Signal s(n, n);
  checkLength<DftComplex32>(s, flag);
  checkLength<DftPlanes32>(s, flag);
  checkLength<DftReal32>(s, flag);
  checkLength<DftComplex64>(s, flag);
  checkLength<DftPlanes64>(s, flag);
  checkLength<DftReal64>(s, flag);
  checkLength<DftOutOfOrder32>(s, flag);
  checkLength<DftOutOfOrder64>(s, flag);
}

TEST(DftAccuracy, ShortLengthsEveryFlag) {
  for (size_t n = 1; n <= 70; ++n) {
    for (int flag : kAllFlags) checkAllFamilies(n, flag);
    if (testing::Test::HasFailure()) return;
  }
}

TEST(DftAccuracy, EveryLengthTo2100) {
  for (size_t n = 71; n <= 2100; n += inFull(1, 11)) {
    checkAllFamilies(n, kAllFlags[n % 4]);
    if (testing::Test::HasFailure()) return;
  }
  for (int type = 0; type < 2; ++type) {
    for (int way = 0; way < 5; ++way) {
      RecordProperty("worst" + std::to_string(type) + std::to_string(way),
                     std::to_string(double(worst[type][way])));
    }
  }
}

TEST(DftAccuracy, SomeLongOnes) {
  for (size_t n : {2187,  2310,  2401,  3840,  4410,  5005,  5041,  6561,  8191,  9409, 10000,
                   10007, 15625, 16807, 20014, 22201, 44100, 44101, 65536, 65537, 88200}) {
    if (isShort() && n > 10007 && n != 65537) continue;
    checkAllFamilies(n, kAllFlags[n % 4]);
    if (testing::Test::HasFailure()) return;
  }
}

// Lengths beyond the oracle: a few numbers by the definition, the energy, and back.
template <class Family>
void checkVeryLong(size_t n) {
  using Part = typename Family::Part;
  SCOPED_TRACE(std::string(Family::transforms()[0].name) + ", length " + std::to_string(n));
  const DftContext<Family> context(n, kvrFftDivInvByN);
  ASSERT_NE(nullptr, context.get());
  ASSERT_EQ(wantedWork<Family>(n), context.bufSize());
  const auto& forward = Family::transforms()[0];
  const auto& inverse = Family::transforms()[Family::transforms().size() / 2];
  Random random(n);
  std::vector<Part> src(forward.srcCount(n)), dst(forward.mostCount(n));
  for (Part& v : src) v = random.value<Part>();
  ASSERT_EQ(kvrStatusOk, forward.call(src.data(), dst.data(), context.get(), nullptr, n));
  const long double unit = std::numeric_limits<Part>::epsilon() * sqrtl(log2l(n));
  constexpr long double kTwoPi = 6.283185307179586476925286766559L;
  if (Family::kWord < 100) {
    for (int trial = 0; trial < 3; ++trial) {
      const uint64_t k = 1 + random.below(static_cast<uint32_t>(n / 2 - 1));
      Wide sum{0, 0};
      for (uint64_t i = 0; i < n; ++i) {
        const double angle =
            static_cast<double>(i * k % n) / static_cast<double>(n) * static_cast<double>(kTwoPi);
        const Wide w{std::cos(angle), -std::sin(angle)};
        sum = sum + (Family::kReal ? Wide{src[i], 0} : Wide{src[2 * i], src[2 * i + 1]}) * w;
      }
      const size_t at = Family::kReal ? placeOfTerm(forward.layout, k, n) : 2 * k;
      EXPECT_LE(hypotl(dst[at] - sum.re, dst[at + 1] - sum.im), 6 * unit * sqrtl(n)) << k;
    }
  }
  long double in = 0, out = 0;
  for (Part v : src) in += static_cast<long double>(v) * v;
  for (size_t i = 0; i < forward.dstCount(n); ++i) out += static_cast<long double>(dst[i]) * dst[i];
  if (Family::kReal) {
    out = 2 * out - static_cast<long double>(dst[0]) * dst[0];
    if (n % 2 == 0) out -= static_cast<long double>(dst[1]) * dst[1];
  }
  EXPECT_NEAR(1, static_cast<double>(out / in / n), static_cast<double>(4 * unit));
  ASSERT_EQ(kvrStatusOk, inverse.call(dst.data(), dst.data(), context.get(), nullptr, n));
  const std::vector<long double> want(src.begin(), src.end());
  EXPECT_LE(relativeError(dst.data(), want, 1), 2 * 1.2L * unit);
}

TEST(DftAccuracy, VeryLongOnes) {
  for (size_t n : {size_t{1000003}, (size_t{1} << 20) - 1}) {
    if (isShort() && n == 1000003) continue;
    checkVeryLong<DftComplex32>(n);
    checkVeryLong<DftReal32>(n);
    checkVeryLong<DftComplex64>(n);
    checkVeryLong<DftOutOfOrder32>(n);
  }
  checkVeryLong<DftReal64>(1000000);
}

// The 1/sqrt(n) of single precision comes from an estimate; that of double precision does not.
TEST(DftAccuracy, RootScale) {
  for (size_t n : {2, 3, 5, 15, 17, 60, 101, 1000}) {
    const double want = 1 / std::sqrt(static_cast<double>(n));
    const DftContext<DftComplex32> single(n, kvrFftDivBySqrtN);
    const DftContext<DftComplex64> twice(n, kvrFftDivBySqrtN);
    std::vector<Kvr32f> x(2 * n), y(2 * n);
    std::vector<Kvr64f> u(2 * n), v(2 * n);
    x[0] = 1;
    u[0] = 1;
    for (int inverse = 0; inverse < 2; ++inverse) {
      ASSERT_EQ(kvrStatusOk,
                DftComplex32::transforms()[inverse].call(x.data(), y.data(), single.get(), nullptr, n));
      ASSERT_EQ(kvrStatusOk,
                DftComplex64::transforms()[inverse].call(u.data(), v.data(), twice.get(), nullptr, n));
      for (size_t k = 0; k < n; ++k) {
        ASSERT_NEAR(want, y[2 * k], 1e-6 * want) << n << ", " << k;
        ASSERT_NEAR(want, v[2 * k], 2e-15 * want) << n << ", " << k;
      }
    }
  }
}

// --- memory -----------------------------------------------------------------------------------------------------

template <class Family>
class DftMemory : public testing::Test {};
TYPED_TEST_SUITE(DftMemory, DftFamilies);

TYPED_TEST(DftMemory, GuardedArraysAtAnyAlignment) {
  using F = TypeParam;
  using Part = typename F::Part;
  std::vector<size_t> lengths;
  for (size_t n = 1; n <= 66; ++n) lengths.push_back(n);
  for (size_t n : {75,   81,   94,   100,  101,  120,  121,  125,  143,  144,  147,  156,  169,  180,  192,
                   212,  225,  240,  243,  289,  323,  360,  480,  596,  600,  675,  720,  1000, 1001, 1009,
                   1024, 1100, 1500, 1920, 2021, 2048, 2100, 2205, 2209, 2401, 3000, 3003, 4410, 4900}) {
    lengths.push_back(n);
  }
  for (size_t n : lengths) {
    const DftContext<F> context(n, kvrFftDivFwdByN);
    const size_t bufSize = static_cast<size_t>(context.bufSize());
    for (const auto& t : F::transforms()) {
      const size_t srcCount = t.srcCount(n), dstCount = t.dstCount(n), most = t.mostCount(n);
      Arena srcArena(srcCount * sizeof(Part)), dstArena(most * sizeof(Part)), bufArena(bufSize + 1);
      Random random(n);
      std::vector<Part> src(srcCount), want(dstCount), inPlace(most);
      for (Part& v : src) v = random.value<Part>();
      ASSERT_EQ(kvrStatusOk, t.call(src.data(), want.data(), context.get(), nullptr, n));
      std::copy(src.begin(), src.end(), inPlace.begin());
      ASSERT_EQ(kvrStatusOk, t.call(inPlace.data(), inPlace.data(), context.get(), nullptr, n));
      for (size_t turn = 0; turn < 4; ++turn) {
        const size_t offset = (5 * turn + 7 * n) % 32;
        const Side side = turn % 2 == 0 ? Side::front : Side::back;
        SCOPED_TRACE(std::string(t.name) + ", length " + std::to_string(n) + ", offset " +
                     std::to_string(offset));
        Part* from = srcArena.place<Part>(srcCount, side, (offset * 3 + 1) % 32);
        Part* to = dstArena.place<Part>(dstCount, side, offset);
        Kvr8u* buffer = bufArena.place<Kvr8u>(bufSize, side, (offset * 7 + 5) % 32);
        memcpy(from, src.data(), srcCount * sizeof(Part));
        const int calls = allocationCount();
        ASSERT_EQ(kvrStatusOk, t.call(from, to, context.get(), buffer, n));
        ASSERT_EQ(0, memcmp(to, want.data(), dstCount * sizeof(Part))) << "another result";
        ASSERT_EQ(0, memcmp(from, src.data(), srcCount * sizeof(Part))) << "source written";
        ASSERT_TRUE(srcArena.intact() && dstArena.intact() && bufArena.intact()) << "written outside";
        Part* both = dstArena.place<Part>(most, side, offset);
        memcpy(both, src.data(), srcCount * sizeof(Part));
        ASSERT_EQ(kvrStatusOk, t.call(both, both, context.get(), buffer, n));
        ASSERT_EQ(0, memcmp(both, inPlace.data(), dstCount * sizeof(Part))) << "another result in place";
        ASSERT_TRUE(dstArena.intact() && bufArena.intact()) << "written outside, in place";
        ASSERT_EQ(calls, allocationCount()) << "allocated, though there is a buffer";
      }
    }
  }
}

TYPED_TEST(DftMemory, NullBuffer) {
  using F = TypeParam;
  using Part = typename F::Part;
  for (size_t n : {1, 15, 16, 17, 32, 60, 94, 101, 106, 1024, 2187, 2310}) {
    const DftContext<F> context(n, kvrFftNoDivByAny);
    const bool needsWork = context.bufSize() > 0;
    for (const auto& t : F::transforms()) {
      SCOPED_TRACE(std::string(t.name) + ", length " + std::to_string(n));
      Random random(n);
      std::vector<Part> src(t.srcCount(n)), dst(t.dstCount(n), 7);
      for (Part& v : src) v = random.value<Part>();
      const auto before = dst;
      const int live = liveBlocks(), calls = allocationCount();
      {
        FailingAllocator failing(1);
        ASSERT_EQ(needsWork ? kvrStatusOutOfMemory : kvrStatusOk,
                  t.call(src.data(), dst.data(), context.get(), nullptr, n));
      }
      if (needsWork) {
        ASSERT_EQ(before, dst);
        ASSERT_EQ(kvrStatusOk, t.call(src.data(), dst.data(), context.get(), nullptr, n));
        ASSERT_EQ(static_cast<size_t>(context.bufSize()), lastAllocation());
      }
      EXPECT_EQ(needsWork ? 2 : 0, allocationCount() - calls);
      EXPECT_EQ(live, liveBlocks());
    }
  }
}

// --- statuses ---------------------------------------------------------------------------------------------------

TYPED_TEST(DftMemory, InitAllocChecks) {
  using F = TypeParam;
  auto* const unset = reinterpret_cast<typename F::Spec*>(uintptr_t{0x1234});
  typename F::Spec* spec = unset;
  constexpr bool kSingle = sizeof(typename F::Part) == 4;
  const int live = liveBlocks();
  EXPECT_EQ(kvrStatusNullPointer, F::initAlloc(nullptr, 0, 3, kvrHintNone));
  EXPECT_EQ(kvrStatusBadLength, F::initAlloc(&spec, 0, 3, kvrHintNone));
  EXPECT_EQ(kvrStatusBadLength, F::initAlloc(&spec, -5, 1, kvrHintNone));
  for (int flag : {0, 3, 5, 16, -1})
    EXPECT_EQ(kvrStatusBadFftFlag, F::initAlloc(&spec, 12, flag, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftFlag, F::initAlloc(&spec, INT32_MAX, 0, kvrHintNone));
  // Powers of two beyond the FFT, and other lengths beyond the limit, of the chirp transform too: 2 * 67 * 2^k - 1 is
  // no help, but a multiple of 2 by a large prime is.
  const int limit = kSingle ? 1 << 27 : 1 << 26;
  EXPECT_EQ(kvrStatusBadFftOrder, F::initAlloc(&spec, 1 << 30, 1, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftOrder, F::initAlloc(&spec, 2 * limit, 1, kvrHintNone));
  EXPECT_EQ(kvrStatusBadLength, F::initAlloc(&spec, 2 * limit - 1, 1, kvrHintNone));
  EXPECT_EQ(kvrStatusBadLength, F::initAlloc(&spec, limit + 1, 1, kvrHintNone));
  EXPECT_EQ(kvrStatusBadLength, F::initAlloc(&spec, INT32_MAX, 1, kvrHintNone));
  if (!F::kReal) {
    EXPECT_EQ(kvrStatusBadLength,
              F::initAlloc(&spec, kSingle ? 67108879 : 33554467, 1, kvrHintNone));  // primes
  }
  EXPECT_EQ(unset, spec);
  EXPECT_EQ(live, liveBlocks());
}

TYPED_TEST(DftMemory, InitAllocWithoutMemory) {
  using F = TypeParam;
  for (int len :
       {1, 7, 12, 16, 17, 32, 34, 60, 94, 101, 106, 121, 212, 945, 1009, 2048, 2100, 2187, 4999, 20014}) {
    auto* const unset = reinterpret_cast<typename F::Spec*>(uintptr_t{0x1234});
    const auto make = [&] {
      typename F::Spec* spec = unset;
      const KvrStatus status = F::initAlloc(&spec, len, kvrFftDivBySqrtN, kvrHintNone);
      if (status == kvrStatusOk) {
        EXPECT_EQ(kvrStatusOk, F::free(spec));
      } else {
        EXPECT_EQ(unset, spec);
      }
      return status;
    };
    EXPECT_LT(0, countAllocationsWithFailures(make, kvrStatusOutOfMemory, 40)) << len;
  }
}

// Which request for memory is the fourth does not depend on the module, though other lengths go other ways in it.
TEST(DftBlocks, AsManyInEveryModule) {
  struct Row {
    int len, complex, real;
  };
  for (const Row& row : {Row{16, 2, 3},
                         {18, 4, 3},
                         {60, 4, 5},
                         {94, 5, 4},
                         {240, 4, 5},
                         {945, 4, 6},
                         {1009, 8, 8},
                         {2021, 6, 5},
                         {4096, 3, 3}}) {
    int calls = allocationCount();
    const DftContext<DftComplex32> complex(static_cast<size_t>(row.len), kvrFftNoDivByAny);
    EXPECT_EQ(row.complex, allocationCount() - calls) << row.len;
    calls = allocationCount();
    const DftContext<DftReal32> real(static_cast<size_t>(row.len), kvrFftNoDivByAny);
    EXPECT_EQ(row.real, allocationCount() - calls) << row.len;
  }
}

TYPED_TEST(DftMemory, ContextChecks) {
  using F = TypeParam;
  using Part = typename F::Part;
  const DftContext<F> context(60, kvrFftNoDivByAny);
  alignas(64) uint32_t words[1024] = {};
  auto* const other = reinterpret_cast<typename F::Spec*>(words);
  int size = -77;
  EXPECT_EQ(kvrStatusNullPointer, F::free(nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::getBufSize(nullptr, &size));
  EXPECT_EQ(kvrStatusNullPointer, F::getBufSize(context.get(), nullptr));
  std::vector<Part> src(256), dst(256, 5);
  for (uint32_t word :
       {0u, 1u, 4u, 9u, 10u, 12u, 13u, 14u, 15u, 16u, 17u, 18u, 19u, 0x434d414au, 0x434d414bu, 0x434d414cu}) {
    if (word == F::kWord) continue;
    words[0] = word;
    EXPECT_EQ(kvrStatusContextMismatch, F::free(other)) << word;
    EXPECT_EQ(kvrStatusContextMismatch, F::getBufSize(other, &size)) << word;
    for (const auto& t : F::transforms()) {
      EXPECT_EQ(kvrStatusContextMismatch, t.call(src.data(), dst.data(), other, nullptr, 60)) << word;
      EXPECT_EQ(kvrStatusContextMismatch, t.call(nullptr, nullptr, other, nullptr, 60)) << word;
    }
  }
  for (const auto& t : F::transforms()) {
    EXPECT_EQ(kvrStatusNullPointer, t.call(src.data(), dst.data(), nullptr, nullptr, 60));
    EXPECT_EQ(kvrStatusNullPointer, t.call(nullptr, dst.data(), context.get(), nullptr, 60));
    EXPECT_EQ(kvrStatusNullPointer, t.call(src.data(), nullptr, context.get(), nullptr, 60));
  }
  EXPECT_EQ(std::vector<Part>(256, 5), dst);
  EXPECT_EQ(-77, size);
}

// --- out of order -----------------------------------------------------------------------------------------------

template <class Family>
void checkOutOfOrder(size_t n) {
  using Part = typename Family::Part;
  SCOPED_TRACE("length " + std::to_string(n));
  const auto &forward = Family::transforms()[0], &inverse = Family::transforms()[1];
  const DftContext<Family> context(n, kvrFftDivInvByN), again(n, kvrFftNoDivByAny);
  const Signal a(n, 1), b(n, 2);
  const auto srcA = sourceOf(forward, a), srcB = sourceOf(forward, b);
  std::vector<Part> A(2 * n), B(2 * n);
  ASSERT_EQ(kvrStatusOk, forward.call(srcA.data(), A.data(), context.get(), nullptr, n));
  ASSERT_EQ(kvrStatusOk, forward.call(srcB.data(), B.data(), again.get(), nullptr, n));
  const long double unit = std::numeric_limits<Part>::epsilon() * sqrtl(log2l(n));

  std::vector<Part> C(srcA);
  ASSERT_EQ(kvrStatusOk, forward.call(C.data(), C.data(), context.get(), nullptr, n));
  EXPECT_LE(relativeError(C.data(), std::vector<long double>(A.begin(), A.end()), 1), 2.4L * unit)
      << "in place";

  // A permutation, the same for both signals and contexts: where the first spectrum has gone, the second is found.
  if (n <= 2400) {
    std::vector<bool> taken(n);
    std::vector<double> re(n), im(n);
    for (size_t k = 0; k < n; ++k) {
      re[k] = static_cast<double>(a.X[k].re);
      im[k] = static_cast<double>(a.X[k].im);
    }
    for (size_t i = 0; i < n; ++i) {
      size_t best = 0;
      double least = HUGE_VAL;
      for (size_t k = 0; k < n; ++k) {
        const double x = A[2 * i] - re[k], y = A[2 * i + 1] - im[k], distance = x * x + y * y;
        if (distance < least) least = distance, best = k;
      }
      ASSERT_LT(std::sqrt(least), 20 * unit * sqrtl(n)) << i;
      ASSERT_FALSE(taken[best]) << i;
      taken[best] = true;
      ASSERT_LT(hypotl(B[2 * i] - b.X[best].re, B[2 * i + 1] - b.X[best].im), 20 * unit * sqrtl(n)) << i;
    }
  }

  // Forward, product, inverse: the cyclic convolution.
  WideVector product(n);
  for (size_t k = 0; k < n; ++k) product[k] = a.X[k] * b.X[k];
  product = backward(wideDft(product));
  std::vector<long double> want(2 * n);
  putComplex(DftLayout::complex, product, &want);
  for (size_t k = 0; k < n; ++k) {
    C[2 * k] = A[2 * k] * B[2 * k] - A[2 * k + 1] * B[2 * k + 1];
    C[2 * k + 1] = A[2 * k] * B[2 * k + 1] + A[2 * k + 1] * B[2 * k];
  }
  ASSERT_EQ(kvrStatusOk, inverse.call(C.data(), C.data(), context.get(), nullptr, n));
  EXPECT_LE(relativeError(C.data(), want, 1 / static_cast<long double>(n)), 4 * unit);

  // And back, from one array to another.
  ASSERT_EQ(kvrStatusOk, inverse.call(A.data(), C.data(), context.get(), nullptr, n));
  EXPECT_LE(relativeError(C.data(), std::vector<long double>(srcA.begin(), srcA.end()), 1), 2.4L * unit);
}

TEST(DftOutOfOrder, PermutationAndConvolution) {
  for (size_t n : {60, 1000, 2000, 2001, 2002, 2025, 2048, 2100, 2187, 2209, 2310, 2384, 3000, 4410, 4999,
                   10000, 29791, 44100}) {
    checkOutOfOrder<DftOutOfOrder32>(n);
    checkOutOfOrder<DftOutOfOrder64>(n);
    if (testing::Test::HasFailure()) return;
  }
}

}  // namespace
