// Cosine transforms: what they compute, their sizes, memory and statuses.
// SPDX-License-Identifier: MIT
#include "kvrs/dct.h"

#include <climits>
#include <cmath>
#include <cstring>

#include "tests/support/core.h"
#include "tests/support/short.h"
#include "tests/transforms/dft_families.h"

using namespace kvrs::test;

namespace {

constexpr long double kPi = 3.14159265358979323846264338327950288L;

// One type and one direction.
template <class P, class S, bool forward, uint32_t word, auto getSize_, auto init_, auto initAlloc_,
          auto free_, auto getBufSize_, auto call_, auto inPlace_>
struct Dct {
  using Part = P;
  using Spec = S;
  static constexpr bool kForward = forward;
  static constexpr uint32_t kWord = word;
  static constexpr auto getSize = getSize_;
  static constexpr auto init = init_;
  static constexpr auto initAlloc = initAlloc_;
  static constexpr auto free = free_;
  static constexpr auto getBufSize = getBufSize_;

  static KvrStatus call(const P* src, P* dst, const S* spec, Kvr8u* buffer, [[maybe_unused]] int scale = 0) {
    if constexpr (sizeof(P) == 2) {
      return call_(src, dst, spec, scale, buffer);
    } else {
      return call_(src, dst, spec, buffer);
    }
  }
  static KvrStatus inPlace(P* srcDst, const S* spec, Kvr8u* buffer, [[maybe_unused]] int scale = 0) {
    if constexpr (sizeof(P) == 2) {
      return inPlace_(srcDst, spec, scale, buffer);
    } else {
      return inPlace_(srcDst, spec, buffer);
    }
  }
};

using Fwd32 = Dct<Kvr32f, KvrsDCTFwdSpec_32f, true, 21, kvrsDCTFwdGetSize_32f, kvrsDCTFwdInit_32f,
                  kvrsDCTFwdInitAlloc_32f, kvrsDCTFwdFree_32f, kvrsDCTFwdGetBufSize_32f, kvrsDCTFwd_32f,
                  kvrsDCTFwd_32f_I>;
using Inv32 = Dct<Kvr32f, KvrsDCTInvSpec_32f, false, 22, kvrsDCTInvGetSize_32f, kvrsDCTInvInit_32f,
                  kvrsDCTInvInitAlloc_32f, kvrsDCTInvFree_32f, kvrsDCTInvGetBufSize_32f, kvrsDCTInv_32f,
                  kvrsDCTInv_32f_I>;
using Fwd64 = Dct<Kvr64f, KvrsDCTFwdSpec_64f, true, 23, kvrsDCTFwdGetSize_64f, kvrsDCTFwdInit_64f,
                  kvrsDCTFwdInitAlloc_64f, kvrsDCTFwdFree_64f, kvrsDCTFwdGetBufSize_64f, kvrsDCTFwd_64f,
                  kvrsDCTFwd_64f_I>;
using Inv64 = Dct<Kvr64f, KvrsDCTInvSpec_64f, false, 24, kvrsDCTInvGetSize_64f, kvrsDCTInvInit_64f,
                  kvrsDCTInvInitAlloc_64f, kvrsDCTInvFree_64f, kvrsDCTInvGetBufSize_64f, kvrsDCTInv_64f,
                  kvrsDCTInv_64f_I>;
using Fwd16 = Dct<Kvr16s, KvrsDCTFwdSpec_16s, true, 19, kvrsDCTFwdGetSize_16s, kvrsDCTFwdInit_16s,
                  kvrsDCTFwdInitAlloc_16s, kvrsDCTFwdFree_16s, kvrsDCTFwdGetBufSize_16s, kvrsDCTFwd_16s_Sfs,
                  kvrsDCTFwd_16s_ISfs>;
using Inv16 = Dct<Kvr16s, KvrsDCTInvSpec_16s, false, 20, kvrsDCTInvGetSize_16s, kvrsDCTInvInit_16s,
                  kvrsDCTInvInitAlloc_16s, kvrsDCTInvFree_16s, kvrsDCTInvGetBufSize_16s, kvrsDCTInv_16s_Sfs,
                  kvrsDCTInv_16s_ISfs>;
using DctFamilies = testing::Types<Fwd32, Inv32, Fwd64, Inv64, Fwd16, Inv16>;

template <class F>
class Context {
 public:
  explicit Context(size_t n) {
    EXPECT_EQ(kvrStatusOk, F::initAlloc(&spec_, static_cast<int>(n), kvrHintNone)) << n;
  }
  ~Context() {
    if (spec_ != nullptr) {
      EXPECT_EQ(kvrStatusOk, F::free(spec_));
    }
  }
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;
  typename F::Spec* get() const { return spec_; }
  int bufSize() const {
    int size = -1;
    EXPECT_EQ(kvrStatusOk, F::getBufSize(spec_, &size));
    return size;
  }

 private:
  typename F::Spec* spec_ = nullptr;
};

// --- the definition in extended precision -----------------------------------------------------------------------

using Numbers = std::vector<long double>;

long double weight(size_t k, size_t n) {
  return sqrtl((k == 0 ? 1.0L : 2.0L) / static_cast<long double>(n));
}
Wide turn(size_t k, size_t n) {  // exp(-i pi k / (2n))
  const long double angle = kPi * static_cast<long double>(k) / static_cast<long double>(2 * n);
  return {cosl(angle), -sinl(angle)};
}

// The sums as they stand, by a transform of twice the length: of the signal and its mirror image, or of weighted and turned
// numbers with zeros behind them.
Numbers wideForward(const Numbers& x) {
  const size_t n = x.size();
  WideVector both(2 * n);
  for (size_t i = 0; i < n; ++i) both[i] = both[2 * n - 1 - i] = {x[i], 0};
  const WideVector X = wideDft(both);
  Numbers y(n);
  for (size_t k = 0; k < n; ++k) y[k] = weight(k, n) / 2 * (turn(k, n) * X[k]).re;
  return y;
}
Numbers wideInverse(const Numbers& y) {
  const size_t n = y.size();
  WideVector turned(2 * n, Wide{0, 0});
  for (size_t k = 0; k < n; ++k) turned[k] = turn(k, n) * Wide{weight(k, n) * y[k], 0};
  const WideVector X = wideDft(turned);
  Numbers x(n);
  for (size_t i = 0; i < n; ++i) x[i] = X[i].re;
  return x;
}

// Numbers of few bits, which every type holds.
Numbers signalOf(size_t n, uint64_t seed) {
  Random random(seed);
  Numbers x(n);
  for (long double& v : x) v = ldexpl(static_cast<long double>(random.below(1 << 18)) - (1 << 17), -17);
  return x;
}

template <class T>
std::vector<T> narrowed(const Numbers& x) {
  return std::vector<T>(x.begin(), x.end());
}

template <class T>
long double relativeError(const std::vector<T>& got, const Numbers& want) {
  long double error = 0, norm = 0;
  for (size_t i = 0; i < want.size(); ++i) {
    const long double d = got[i] - want[i];
    error += d * d;
    norm += want[i] * want[i];
  }
  return norm > 0 ? sqrtl(error / norm) : error > 0 ? HUGE_VALL : 0;
}

TEST(DctModel, OracleIsTheDefinition) {
  for (size_t n : {1, 2, 3, 8, 15, 47, 64, 67, 90}) {
    const Numbers x = signalOf(n, n);
    Numbers forward(n, 0), inverse(n, 0);
    for (size_t i = 0; i < n; ++i) {
      for (size_t k = 0; k < n; ++k) {
        const long double c =
            cosl(kPi * static_cast<long double>((2 * i + 1) * k % (4 * n)) / static_cast<long double>(2 * n));
        forward[k] += weight(k, n) * x[i] * c;
        inverse[i] += weight(k, n) * x[k] * c;
      }
    }
    EXPECT_LT(relativeError(wideForward(x), forward), 1e-17L) << n;
    EXPECT_LT(relativeError(wideInverse(x), inverse), 1e-17L) << n;
  }
}

// --- accuracy ---------------------------------------------------------------------------------------------------

size_t largestFactor(size_t n) {
  size_t largest = 1;
  for (size_t d = 2; d * d <= n; ++d) {
    for (; n % d == 0; n /= d) largest = d;
  }
  return std::max(largest, n);
}

// In units of eps sqrt(log2 n), twice what was found for most: the mean is 0.3 to 0.4, that of convolutions, which go through
// several transforms of more than twice the length, 0.55. Sums of large odd factors have more terms, and a few numbers no
// average.
long double allowedError(size_t n) {
  const size_t factor = largestFactor(n);
  if (n > 100 && factor > 50) return 1.3L;
  return (n < 16 ? 1.2L : 0.7L) + (factor > 13 ? 0.04L * sqrtl(factor) : 0);
}

template <class F>
void checkLength(const Numbers& x, const Numbers& want) {
  using Part = typename F::Part;
  const size_t n = x.size();
  SCOPED_TRACE(std::string(F::kForward ? "forward " : "inverse ") + std::to_string(8 * sizeof(Part)) +
               ", length " + std::to_string(n));
  const Context<F> context(n);
  ASSERT_NE(nullptr, context.get());
  const long double unit = std::numeric_limits<Part>::epsilon() * sqrtl(std::max(1.0, std::log2(double(n))));
  const std::vector<Part> src = narrowed<Part>(x);
  std::vector<Part> dst(n, 77), same(src), buffered(n, 77);
  ASSERT_EQ(kvrStatusOk, F::call(src.data(), dst.data(), context.get(), nullptr));
  ASSERT_LE(relativeError(dst, want) / unit, allowedError(n));
  ASSERT_EQ(kvrStatusOk, F::inPlace(same.data(), context.get(), nullptr));
  ASSERT_EQ(dst, same) << "in place";
  std::vector<Kvr8u> buffer(static_cast<size_t>(context.bufSize()) + 1, 0xff);
  ASSERT_EQ(kvrStatusOk, F::call(src.data(), buffered.data(), context.get(), buffer.data()));
  ASSERT_EQ(dst, buffered) << "another work area";
}

void checkAllTypes(size_t n) {
  const Numbers x = signalOf(n, n);
  const Numbers forward = wideForward(x), inverse = wideInverse(x);
  checkLength<Fwd32>(x, forward);
  checkLength<Fwd64>(x, forward);
  checkLength<Inv32>(x, inverse);
  checkLength<Inv64>(x, inverse);
}

TEST(DctAccuracy, EveryLengthTo600) {
  for (size_t n = 1; n <= 600 && !testing::Test::HasFailure(); n += n < 70 ? 1 : inFull(1, 11))
    checkAllTypes(n);
}

TEST(DctAccuracy, LongOnes) {
  for (size_t n :
       {1000, 1009, 1024, 1155, 2018, 2187, 4096, 5005, 10007, 20014, 32768, 44100, 65025, 65536}) {
    if (testing::Test::HasFailure()) return;
    if (isShort() && n > 20014 && n != 65536) continue;
    checkAllTypes(n);
  }
}

// There and back, and the energy, of lengths beyond the oracle.
template <class Forward, class Inverse>
void checkRoundTrip(size_t n) {
  using Part = typename Forward::Part;
  SCOPED_TRACE("length " + std::to_string(n));
  const Context<Forward> forward(n);
  const Context<Inverse> inverse(n);
  ASSERT_TRUE(forward.get() != nullptr && inverse.get() != nullptr);
  Random random(n);
  std::vector<Part> x(n), y(n);
  for (Part& v : x) v = random.value<Part>();
  ASSERT_EQ(kvrStatusOk, Forward::call(x.data(), y.data(), forward.get(), nullptr));
  long double before = 0, after = 0;
  for (size_t i = 0; i < n; ++i) {
    before += static_cast<long double>(x[i]) * x[i];
    after += static_cast<long double>(y[i]) * y[i];
  }
  const long double unit = std::numeric_limits<Part>::epsilon() * sqrtl(log2l(n));
  EXPECT_LE(fabsl(after / before - 1), 4 * unit);
  ASSERT_EQ(kvrStatusOk, Inverse::inPlace(y.data(), inverse.get(), nullptr));
  EXPECT_LE(relativeError(y, Numbers(x.begin(), x.end())), 2 * allowedError(n) * unit);
}

TEST(DctAccuracy, RoundTripsOfVeryLongOnes) {
  for (size_t n : {131072, 1048576, 100000, 196613, 524294}) {
    checkRoundTrip<Fwd32, Inv32>(n);
    checkRoundTrip<Fwd64, Inv64>(n);
  }
}

// --- sizes ------------------------------------------------------------------------------------------------------

struct SizeModel {
  int64_t spec, initBuf, work;
};

template <class Part>
SizeModel fftSizes(bool real, int order) {
  int spec = 0, init = 0, work = 0;
  const auto get = sizeof(Part) == 4 ? (real ? kvrsFFTGetSize_R_32f : kvrsFFTGetSize_C_32fc)
                                     : (real ? kvrsFFTGetSize_R_64f : kvrsFFTGetSize_C_64fc);
  EXPECT_EQ(kvrStatusOk, get(order, kvrFftNoDivByAny, kvrHintNone, &spec, &init, &work));
  return {spec, init, work};
}

// In bytes, for 32-bit floats; f is 2 for those of 64 bits.
template <class Part>
SizeModel floatSizes(int64_t n) {
  const int64_t f = sizeof(Part) / 4;
  const auto up = [](int64_t x) { return x / 32 * 32; };
  int order = 0;
  while ((int64_t{1} << order) < n) ++order;
  if (int64_t{1} << order == n) {
    if (order < 4) return {f == 1 ? 116 : 128, 0, 0};
    if (order < 6) return {up(4 * f * n + 31) + 128, 0, 4 * f * n + 32};
    const SizeModel fft = fftSizes<Part>(true, order + 1);
    return {fft.spec + 8 * f * n + 128, fft.initBuf > 0 ? fft.initBuf + 32 : 0, fft.work + 8 * f * n + 32};
  }
  if (n <= 100) return {up(16 * f * n + 31) + 128, 0, 4 * f * n + 32};
  order = 0;
  while ((int64_t{1} << order) < 2 * n - 1) ++order;
  const int64_t M = int64_t{1} << order;
  const SizeModel fft = fftSizes<Part>(false, order);
  return {fft.spec + 24 * f * n + 8 * f * M + 128, std::max(fft.initBuf, fft.work) + 32,
          fft.work + 8 * f * M + 32};
}

template <class Part>
SizeModel wantedSizes(int64_t n) {
  if (sizeof(Part) != 2) return floatSizes<Part>(n);
  if (n == 1) return {56, 0, 0};
  const SizeModel floats = floatSizes<Kvr32f>(n);
  return {floats.spec + 56, floats.initBuf, floats.work + 4 * n + 32};
}

template <class F>
class DctContext : public testing::Test {};
TYPED_TEST_SUITE(DctContext, DctFamilies);

TYPED_TEST(DctContext, SizesByFormula) {
  using F = TypeParam;
  std::vector<int> lengths;
  for (int n = 1; n <= 2100; ++n) lengths.push_back(n);
  for (int n : {4095, 4096, 4097, 10007, 44100, 65535, 65536, 65537, 131072, 1000003, 1 << 20, 1 << 22})
    lengths.push_back(n);
  for (int n : lengths) {
    int spec = -1, init = -1, work = -1;
    ASSERT_EQ(kvrStatusOk, F::getSize(n, kvrHintFast, &spec, &init, &work)) << n;
    const auto want = wantedSizes<typename F::Part>(n);
    ASSERT_EQ(want.spec, spec) << n;
    ASSERT_EQ(want.initBuf, init) << n;
    ASSERT_EQ(want.work, work) << n;
  }
  EXPECT_EQ(96 + 128, floatSizes<Kvr32f>(5).spec);  // 80 + 31 rounded down
  EXPECT_EQ(80 + 32, floatSizes<Kvr32f>(20).work);
}

TYPED_TEST(DctContext, StatusesOfSizesAndInit) {
  using F = TypeParam;
  constexpr bool kDouble = sizeof(typename F::Part) == 8;
  int spec = 5, init = 6, work = 7;
  EXPECT_EQ(kvrStatusBadLength, F::getSize(0, kvrHintNone, nullptr, nullptr, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::getSize(INT_MAX, kvrHintNone, &spec, nullptr, &work));
  EXPECT_EQ(kvrStatusBadFftOrder, F::getSize(INT_MAX, kvrHintNone, &spec, &init, &work));
  EXPECT_EQ(kvrStatusBadFftOrder,
            F::getSize((kDouble ? 1 << 25 : 1 << 26) + 1, kvrHintNone, &spec, &init, &work));
  // More bytes than an int holds.
  EXPECT_EQ(kvrStatusBadLength,
            F::getSize((kDouble ? 1 << 25 : 1 << 26) - 1, kvrHintNone, &spec, &init, &work));
  EXPECT_TRUE(spec == 5 && init == 6 && work == 7);

  auto* const nowhere = reinterpret_cast<typename F::Spec*>(uintptr_t{64});
  typename F::Spec* made = nowhere;
  alignas(32) static Kvr8u memory[1 << 20];
  EXPECT_EQ(kvrStatusNullPointer, F::init(nullptr, 0, kvrHintNone, nullptr, nullptr));
  EXPECT_EQ(kvrStatusBadLength, F::init(&made, 0, kvrHintNone, nullptr, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::init(&made, INT_MAX, kvrHintNone, nullptr, nullptr));
  EXPECT_EQ(kvrStatusBadFftOrder, F::init(&made, INT_MAX, kvrHintNone, memory, nullptr));
  for (int n : {101, 1024, 1000}) {
    EXPECT_EQ(kvrStatusNullPointer, F::init(&made, n, kvrHintNone, memory, nullptr)) << n;
  }
  EXPECT_EQ(kvrStatusNullPointer, F::initAlloc(nullptr, 0, kvrHintNone));
  EXPECT_EQ(kvrStatusBadLength, F::initAlloc(&made, -1, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftOrder, F::initAlloc(&made, INT_MAX, kvrHintNone));
  EXPECT_EQ(nowhere, made);

  // The word is there, and gone after Free, which releases nothing that is the caller's.
  EXPECT_EQ(kvrStatusOk, F::init(&made, 12, kvrHintNone, memory + 1, nullptr));
  uint32_t word;
  memcpy(&word, made, sizeof word);
  EXPECT_EQ(F::kWord, word);
  EXPECT_EQ(kvrStatusOk, F::free(made));
  memcpy(&word, made, sizeof word);
  EXPECT_EQ(0u, word);
  EXPECT_EQ(kvrStatusContextMismatch, F::free(made));
  EXPECT_EQ(kvrStatusContextMismatch, F::getBufSize(made, &spec));
  EXPECT_EQ(kvrStatusNullPointer, F::getBufSize(made, nullptr));
  typename F::Part x[12] = {};
  EXPECT_EQ(kvrStatusContextMismatch, F::call(nullptr, x, made, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::call(nullptr, x, nullptr, nullptr));
}

// --- memory -----------------------------------------------------------------------------------------------------

template <class F>
class DctMemory : public testing::Test {};
TYPED_TEST_SUITE(DctMemory, DctFamilies);

// Contexts in memory of exactly the stated sizes at any address give the results of those on the heap, between arrays at
// any address, all next to pages that may not be touched.
template <class F>
void checkGuarded(size_t n, size_t offset, Side side) {
  using Part = typename F::Part;
  SCOPED_TRACE("length " + std::to_string(n) + ", offset " + std::to_string(offset));
  int specSize, initSize, workSize;
  ASSERT_EQ(kvrStatusOk, F::getSize(static_cast<int>(n), kvrHintNone, &specSize, &initSize, &workSize));
  Arena specArena(static_cast<size_t>(specSize)), initArena(static_cast<size_t>(initSize) + 1),
      workArena(static_cast<size_t>(workSize) + 1), srcArena(n * sizeof(Part)), dstArena(n * sizeof(Part));
  Kvr8u* const specMem = specArena.place<Kvr8u>(static_cast<size_t>(specSize), side, offset);
  Kvr8u* const initBuf = initArena.place<Kvr8u>(static_cast<size_t>(initSize), side, (offset * 5 + 3) % 32);
  typename F::Spec* spec = nullptr;
  const int calls = allocationCount();
  ASSERT_EQ(kvrStatusOk,
            F::init(&spec, static_cast<int>(n), kvrHintNone, specMem, initSize > 0 ? initBuf : nullptr));
  ASSERT_TRUE(specArena.intact() && initArena.intact());
  ASSERT_EQ(calls, allocationCount()) << "allocated in Init";
  ASSERT_GE(reinterpret_cast<Kvr8u*>(spec), specMem);
  ASSERT_EQ(0u, reinterpret_cast<uintptr_t>(spec) % 32);
  initArena.template place<Kvr8u>(static_cast<size_t>(initSize), side,
                                  0);  // nothing in it is needed any more

  const Context<F> context(n);
  Random random(n);
  std::vector<Part> src(n), want(n);
  for (Part& v : src) v = random.value<Part>();
  ASSERT_EQ(kvrStatusOk, F::call(src.data(), want.data(), context.get(), nullptr, 3));
  const int before = allocationCount();
  Part* const from = srcArena.place<Part>(n, side, (offset * 3 + 1) % 32);
  Part* const to = dstArena.place<Part>(n, side, offset);
  Kvr8u* const buffer = workArena.place<Kvr8u>(static_cast<size_t>(workSize), side, (offset * 7 + 5) % 32);
  memcpy(static_cast<void*>(from), src.data(), n * sizeof(Part));
  ASSERT_EQ(kvrStatusOk, F::call(from, to, spec, workSize > 0 ? buffer : nullptr, 3));
  ASSERT_EQ(0, memcmp(to, want.data(), n * sizeof(Part))) << "another result";
  ASSERT_EQ(0, memcmp(from, src.data(), n * sizeof(Part))) << "source written";
  ASSERT_EQ(kvrStatusOk, F::inPlace(from, spec, workSize > 0 ? buffer : nullptr, 3));
  ASSERT_EQ(0, memcmp(from, want.data(), n * sizeof(Part))) << "another result in place";
  ASSERT_TRUE(srcArena.intact() && dstArena.intact() && workArena.intact() && specArena.intact());
  ASSERT_EQ(before, allocationCount()) << "allocated, though there is a buffer";
}

TYPED_TEST(DctMemory, GuardedAtEveryLength) {
  for (size_t n = 1; n <= 1100; n += n < 70 ? 1 : inFull(1, 11)) {
    if (testing::Test::HasFailure()) return;
    checkGuarded<TypeParam>(n, n % 32, Side::back);
  }
  for (size_t n : {1155, 1536, 2047, 2048, 3003, 4096, 4099, 8192, 9410, 10007, 16384, 32767, 32768, 32771,
                   40009, 40022, 65025, 65536, 65537}) {
    if (testing::Test::HasFailure()) return;
    checkGuarded<TypeParam>(n, 31, Side::back);
  }
}

TYPED_TEST(DctMemory, GuardedAtEveryAlignment) {
  for (size_t n : {1, 2, 4, 7, 8, 15, 16, 30, 32, 64, 67, 100, 101, 126, 128, 202, 225, 1024}) {
    for (size_t offset = 0; offset < 32; ++offset) {
      if (testing::Test::HasFailure()) return;
      checkGuarded<TypeParam>(n, offset, offset % 2 == 0 ? Side::front : Side::back);
    }
  }
}

// A block holds no address: moved elsewhere, it works there.
TYPED_TEST(DctMemory, CopiedContext) {
  using F = TypeParam;
  using Part = typename F::Part;
  for (int n : {8, 32, 45, 97, 101, 106, 500, 1000, 1024, 4096}) {
    int specSize, initSize, workSize;
    ASSERT_EQ(kvrStatusOk, F::getSize(n, kvrHintNone, &specSize, &initSize, &workSize));
    const size_t bytes = (static_cast<size_t>(specSize) + 31) / 32 * 32;
    auto* const first = static_cast<Kvr8u*>(aligned_alloc(32, bytes));
    auto* const second = static_cast<Kvr8u*>(aligned_alloc(32, bytes));
    std::vector<Kvr8u> init(static_cast<size_t>(initSize) + 1);
    typename F::Spec* spec = nullptr;
    ASSERT_EQ(kvrStatusOk, F::init(&spec, n, kvrHintNone, first, init.data()));
    std::vector<Part> x(static_cast<size_t>(n)), y(x), z(x);
    Random random(7);
    for (Part& v : x) v = random.value<Part>();
    ASSERT_EQ(kvrStatusOk, F::call(x.data(), y.data(), spec, nullptr));
    memcpy(second, first, static_cast<size_t>(specSize));
    memset(first, 0xff, static_cast<size_t>(specSize));
    ASSERT_EQ(kvrStatusOk, F::call(x.data(), z.data(), reinterpret_cast<typename F::Spec*>(second), nullptr));
    EXPECT_EQ(y, z) << n;
    std::free(first);
    std::free(second);
  }
}

TYPED_TEST(DctMemory, NullBufferAndFailures) {
  using F = TypeParam;
  using Part = typename F::Part;
  for (int n : {1, 2, 4, 8, 16, 31, 32, 50, 64, 100, 101, 128, 135, 500, 1000, 1009, 1024, 4096}) {
    SCOPED_TRACE("length " + std::to_string(n));
    const Context<F> context(static_cast<size_t>(n));
    int specSize, initSize, workSize;
    ASSERT_EQ(kvrStatusOk, F::getSize(n, kvrHintNone, &specSize, &initSize, &workSize));
    EXPECT_EQ(workSize, context.bufSize());
    EXPECT_EQ(static_cast<size_t>(specSize), blockBytes(context.get()));
    const std::vector<Part> src(static_cast<size_t>(n), 3);
    std::vector<Part> dst(static_cast<size_t>(n), 7), same(src);
    const auto dstBefore = dst, sameBefore = same;
    const int live = liveBlocks(), calls = allocationCount();
    const KvrStatus want = workSize > 0 ? kvrStatusOutOfMemory : kvrStatusOk;
    {
      FailingAllocator failing(1);
      ASSERT_EQ(want, F::call(src.data(), dst.data(), context.get(), nullptr));
      ASSERT_EQ(want, F::inPlace(same.data(), context.get(), nullptr));
    }
    if (workSize > 0) {
      EXPECT_EQ(dstBefore, dst);
      EXPECT_EQ(sameBefore, same);
      ASSERT_EQ(kvrStatusOk, F::call(src.data(), dst.data(), context.get(), nullptr));
      EXPECT_EQ(3, allocationCount() - calls);
    } else {
      EXPECT_EQ(0, allocationCount() - calls);
      auto* const nowhere = reinterpret_cast<Kvr8u*>(uintptr_t{1});
      ASSERT_EQ(kvrStatusOk, F::call(src.data(), dst.data(), context.get(), nowhere));
    }
    EXPECT_EQ(live, liveBlocks());
    const int blocks = countAllocationsWithFailures(
        [n] {
          auto* const nowhere = reinterpret_cast<typename F::Spec*>(uintptr_t{64});
          typename F::Spec* spec = nowhere;
          const KvrStatus status = F::initAlloc(&spec, n, kvrHintNone);
          if (status == kvrStatusOk) return F::free(spec);
          EXPECT_EQ(nowhere, spec);
          return status;
        },
        kvrStatusOutOfMemory);
    EXPECT_EQ(initSize > 0 ? 2 : 1, blocks);
  }
}

// --- integers ---------------------------------------------------------------------------------------------------

// Rounded from a float whose error is that of the transform; a single point is shifted.
template <class F>
void checkIntegers(size_t n, int scaleFactor) {
  SCOPED_TRACE("length " + std::to_string(n) + ", scaleFactor " + std::to_string(scaleFactor));
  const Context<F> context(n);
  ASSERT_NE(nullptr, context.get());
  Random random(n + static_cast<size_t>(scaleFactor + 100));
  std::vector<Kvr16s> src(n), dst(n);
  for (Kvr16s& v : src) v = random.value<Kvr16s>();
  ASSERT_EQ(kvrStatusOk, F::call(src.data(), dst.data(), context.get(), nullptr, scaleFactor));
  std::vector<Kvr16s> same(src);
  ASSERT_EQ(kvrStatusOk, F::inPlace(same.data(), context.get(), nullptr, scaleFactor));
  ASSERT_EQ(dst, same);
  const Numbers x(src.begin(), src.end());
  const Numbers want = F::kForward ? wideForward(x) : wideInverse(x);
  long double energy = 0;
  for (long double v : x) energy += v * v;
  // Single results may be off by several times the root mean square.
  const long double error = 8 * allowedError(n) * sqrtl(std::max(1.0, std::log2(double(n)))) *
                            std::numeric_limits<Kvr32f>::epsilon() *
                            sqrtl(energy / static_cast<long double>(n));
  for (size_t k = 0; k < n; ++k) {
    const auto stored = [&](long double v) {
      const long double r = rintl(ldexpl(v, -scaleFactor));
      return static_cast<int>(r < -32768 ? -32768 : r > 32767 ? 32767 : r);
    };
    ASSERT_GE(dst[k], stored(want[k] - error)) << k;
    ASSERT_LE(dst[k], stored(want[k] + error)) << k;
  }
}

template <class F>
class DctInteger : public testing::Test {};
using DctIntegers = testing::Types<Fwd16, Inv16>;
TYPED_TEST_SUITE(DctInteger, DctIntegers);

TYPED_TEST(DctInteger, AllLengths) {
  for (size_t n = 2; n <= 300; ++n) {
    if (testing::Test::HasFailure()) return;
    checkIntegers<TypeParam>(n, static_cast<int>(n % 7) - 2);
  }
  for (size_t n : {512, 1000, 1009, 1024, 1155, 4096}) checkIntegers<TypeParam>(n, 1);
}

TYPED_TEST(DctInteger, AllScaleFactors) {
  for (size_t n : {2, 8, 12, 64, 101}) {
    for (int scaleFactor : {-100, -20, -16, -4, -1, 0, 1, 2, 5, 15, 17, 31, 40, 100}) {
      if (testing::Test::HasFailure()) return;
      checkIntegers<TypeParam>(n, scaleFactor);
    }
  }
}

TYPED_TEST(DctInteger, OnePointIsShifted) {
  const Context<TypeParam> context(1);
  const auto stored = [&](Kvr16s v, int scaleFactor) {
    Kvr16s result = 77;
    EXPECT_EQ(kvrStatusOk, TypeParam::call(&v, &result, context.get(), nullptr, scaleFactor));
    EXPECT_EQ(kvrStatusOk, TypeParam::inPlace(&v, context.get(), nullptr, scaleFactor));
    EXPECT_EQ(result, v);
    return result;
  };
  for (int v = -32768; v <= 32767; v += 97) {
    const Kvr16s x = static_cast<Kvr16s>(v);
    EXPECT_EQ(x, stored(x, 0));
    for (int t = 1; t <= 16; ++t) EXPECT_EQ((v + (1 << (t - 1))) >> t, stored(x, t)) << v << ", " << t;
    for (int t = 1; t <= 15; ++t) {
      EXPECT_EQ(std::max(-32768, std::min(32767, v * (1 << t))), stored(x, -t)) << v << ", " << t;
    }
  }
}

}  // namespace
