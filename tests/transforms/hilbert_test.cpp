// Hilbert transforms beside the spectrum with doubled and cleared terms, in extended precision.
// SPDX-License-Identifier: MIT
#include "kvrs/hilbert.h"

#include <cmath>
#include <cstring>

#include "tests/support/core.h"
#include "tests/transforms/dft_families.h"

using namespace kvrs::test;

namespace {

template <class S, class D, class C, auto initAlloc_, auto free_, auto call_>
struct Hilbert {
  using Src = S;
  using Dst = D;
  using Spec = C;
  static constexpr auto initAlloc = initAlloc_;
  static constexpr auto free = free_;
  static KvrStatus call(const S* src, D* dst, const C* spec, [[maybe_unused]] int scaleFactor = 0) {
    if constexpr (sizeof(D) == sizeof(Kvr16sc)) {
      return call_(src, dst, spec, scaleFactor);
    } else {
      return call_(src, dst, spec);
    }
  }
};
using Floats = Hilbert<Kvr32f, Kvr32fc, KvrsHilbertSpec_32f32fc, kvrsHilbertInitAlloc_32f32fc,
                       kvrsHilbertFree_32f32fc, kvrsHilbert_32f32fc>;
using Mixed = Hilbert<Kvr16s, Kvr32fc, KvrsHilbertSpec_16s32fc, kvrsHilbertInitAlloc_16s32fc,
                      kvrsHilbertFree_16s32fc, kvrsHilbert_16s32fc>;
using Integers = Hilbert<Kvr16s, Kvr16sc, KvrsHilbertSpec_16s16sc, kvrsHilbertInitAlloc_16s16sc,
                         kvrsHilbertFree_16s16sc, kvrsHilbert_16s16sc_Sfs>;
using Families = testing::Types<Floats, Mixed, Integers>;

template <class F>
class Context {
 public:
  explicit Context(int n) { EXPECT_EQ(kvrStatusOk, F::initAlloc(&spec_, n, kvrHintFast)) << n; }
  ~Context() {
    if (spec_ != nullptr) {
      EXPECT_EQ(kvrStatusOk, F::free(spec_));
    }
  }
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;
  typename F::Spec* get() const { return spec_; }

 private:
  typename F::Spec* spec_ = nullptr;
};

// The analytic signal as it is defined.
template <class T>
WideVector analytic(const std::vector<T>& x) {
  const size_t n = x.size();
  WideVector X(n);
  for (size_t i = 0; i < n; ++i) X[i] = {static_cast<long double>(x[i]), 0};
  X = wideDft(X);
  for (size_t k = 1; k < n; ++k) {
    if (2 * k < n) X[k] = X[k] + X[k];
    if (2 * k > n) X[k] = {0, 0};
  }
  WideVector z = backward(wideDft(X));
  for (Wide& v : z) v = {v.re / static_cast<long double>(n), v.im / static_cast<long double>(n)};
  return z;
}

template <class T>
std::vector<T> signalOf(size_t n) {
  Random random(n);
  std::vector<T> x(n);
  for (T& v : x) v = random.value<T>();
  return x;
}

std::vector<int> lengths() {
  std::vector<int> all;
  for (int n = 1; n <= 260; ++n) all.push_back(n);
  for (int n : {512, 1000, 1009, 1024, 2018, 4099, 10007, 16384, 44100}) all.push_back(n);
  return all;
}

// As for the transforms of that length: two of them, and an error of the signal before the second.
long double allowedError(size_t n) {
  size_t largest = 1, rest = n;
  for (size_t d = 2; d * d <= rest; ++d) {
    for (; rest % d == 0; rest /= d) largest = d;
  }
  largest = std::max(largest, rest);
  return (n > 50 && largest > 47 ? 2.4L : 1.2L) + 0.06L * sqrtl(largest > 13 ? largest : 0);
}
long double unitOf(size_t n) {
  return std::numeric_limits<Kvr32f>::epsilon() * sqrtl(std::max(1.0, std::log2(double(n))));
}

template <class F>
void checkFloats(int len) {
  const size_t n = static_cast<size_t>(len);
  SCOPED_TRACE("length " + std::to_string(n));
  const Context<F> context(len);
  ASSERT_NE(nullptr, context.get());
  const auto src = signalOf<typename F::Src>(n);
  std::vector<Kvr32fc> dst(n, {77, 77});
  ASSERT_EQ(kvrStatusOk, F::call(src.data(), dst.data(), context.get()));
  const WideVector want = analytic(src);
  long double error = 0, norm = 0;
  for (size_t i = 0; i < n; ++i) {
    ASSERT_EQ(static_cast<Kvr32f>(src[i]), dst[i].re) << i;
    const long double d = dst[i].im - want[i].im;
    error += d * d;
    norm += want[i].re * want[i].re;
  }
  for (size_t i = 0; n < 3 && i < n; ++i) ASSERT_EQ(0, dst[i].im);
  ASSERT_LE(sqrtl(error / norm), allowedError(n) * unitOf(n));
}

TEST(HilbertAccuracy, Floats) {
  for (int n : lengths()) {
    if (testing::Test::HasFailure()) return;
    checkFloats<Floats>(n);
    checkFloats<Mixed>(n);
  }
}

void checkIntegers(int len, int scaleFactor) {
  const size_t n = static_cast<size_t>(len);
  SCOPED_TRACE("length " + std::to_string(n) + ", scaleFactor " + std::to_string(scaleFactor));
  const Context<Integers> context(len);
  ASSERT_NE(nullptr, context.get());
  const auto src = signalOf<Kvr16s>(n);
  std::vector<Kvr16sc> dst(n, {77, 77});
  ASSERT_EQ(kvrStatusOk, Integers::call(src.data(), dst.data(), context.get(), scaleFactor));
  const WideVector want = analytic(src);
  long double norm = 0;
  for (const Wide& v : want) norm += v.re * v.re;
  const long double error = 8 * allowedError(n) * unitOf(n) * sqrtl(norm / static_cast<long double>(n));
  const auto stored = [&](long double v, bool truncates) {
    const long double scaled = ldexpl(v, -scaleFactor), r = truncates ? truncl(scaled) : rintl(scaled);
    return static_cast<int>(r < -32768 ? -32768 : r > 32767 ? 32767 : r);
  };
  for (size_t i = 0; i < n; ++i) {
    ASSERT_EQ(stored(src[i], n < 3), dst[i].re) << i;
    if (n < 3) {
      ASSERT_EQ(0, dst[i].im);
    } else {
      ASSERT_GE(dst[i].im, stored(want[i].im - error, false)) << i;
      ASSERT_LE(dst[i].im, stored(want[i].im + error, false)) << i;
    }
  }
}

TEST(HilbertAccuracy, Integers) {
  for (int n : lengths()) {
    if (testing::Test::HasFailure()) return;
    checkIntegers(n, n % 4 - 1);
  }
  for (int n : {1, 2, 3, 4, 16, 100}) {
    for (int scaleFactor : {-126, -40, -17, -16, -15, -3, 0, 1, 2, 7, 14, 15, 16, 17, 31, 32, 200}) {
      if (testing::Test::HasFailure()) return;
      checkIntegers(n, scaleFactor);
    }
  }
}

TEST(HilbertAccuracy, CosineBecomesSine) {
  constexpr long double kTwoPi = 6.283185307179586476925286766559L;
  for (size_t n : {3, 4, 45, 64, 1000}) {
    for (size_t k : {size_t{1}, (n - 1) / 2}) {
      std::vector<Kvr32f> x(n);
      std::vector<Kvr32fc> z(n);
      for (size_t i = 0; i < n; ++i)
        x[i] = static_cast<Kvr32f>(cosl(kTwoPi * static_cast<long double>(i * k % n) / n));
      const Context<Floats> context(static_cast<int>(n));
      ASSERT_EQ(kvrStatusOk, kvrsHilbert_32f32fc(x.data(), z.data(), context.get()));
      for (size_t i = 0; i < n; ++i) {
        EXPECT_NEAR(static_cast<double>(sinl(kTwoPi * static_cast<long double>(i * k % n) / n)), z[i].im,
                    2e-6)
            << n;
      }
    }
  }
}

template <class F>
class HilbertMemory : public testing::Test {};
TYPED_TEST_SUITE(HilbertMemory, Families);

TYPED_TEST(HilbertMemory, GuardedArraysAtAnyAlignment) {
  using F = TypeParam;
  using Src = typename F::Src;
  using Dst = typename F::Dst;
  for (size_t n :
       {1, 2, 3, 4, 5, 15, 16, 17, 31, 45, 64, 67, 100, 101, 255, 256, 257, 500, 515, 1024, 4096}) {
    const Context<F> context(static_cast<int>(n));
    const auto src = signalOf<Src>(n);
    std::vector<Dst> want(n);
    ASSERT_EQ(kvrStatusOk, F::call(src.data(), want.data(), context.get(), 1));
    Arena srcArena(n * sizeof(Src)), dstArena(n * sizeof(Dst));
    for (size_t offset = 0; offset < 32; offset += n < 300 ? 1 : 5) {
      const Side side = offset % 2 == 0 ? Side::back : Side::front;
      SCOPED_TRACE("length " + std::to_string(n) + ", offset " + std::to_string(offset));
      Src* const from = srcArena.place<Src>(n, side, (offset * 3 + 1) % 32);
      Dst* const to = dstArena.place<Dst>(n, side, offset);
      memcpy(static_cast<void*>(from), src.data(), n * sizeof(Src));
      ASSERT_EQ(kvrStatusOk, F::call(from, to, context.get(), 1));
      ASSERT_EQ(0, memcmp(to, want.data(), n * sizeof(Dst))) << "another result";
      ASSERT_EQ(0, memcmp(from, src.data(), n * sizeof(Src))) << "source written";
      ASSERT_TRUE(srcArena.intact() && dstArena.intact());
    }
  }
}

TYPED_TEST(HilbertMemory, FailingMemory) {
  using F = TypeParam;
  for (int n : {1, 2, 3, 16, 17, 60, 64, 101, 1000, 1024}) {
    SCOPED_TRACE("length " + std::to_string(n));
    EXPECT_LT(1, countAllocationsWithFailures(
                     [n] {
                       auto* const nowhere = reinterpret_cast<typename F::Spec*>(uintptr_t{64});
                       typename F::Spec* spec = nowhere;
                       const KvrStatus status = F::initAlloc(&spec, n, kvrHintNone);
                       if (status == kvrStatusOk) return F::free(spec);
                       EXPECT_EQ(nowhere, spec);
                       return status;
                     },
                     kvrStatusOutOfMemory, 40));
    const Context<F> context(n);
    const auto src = signalOf<typename F::Src>(static_cast<size_t>(n));
    std::vector<typename F::Dst> dst(static_cast<size_t>(n), {7, 7});
    const std::vector<typename F::Dst> before(dst);
    EXPECT_LE(0, countAllocationsWithFailures(
                     [&] {
                       const KvrStatus status = F::call(src.data(), dst.data(), context.get());
                       if (status != kvrStatusOk) {
                         EXPECT_EQ(0, memcmp(before.data(), dst.data(), dst.size() * sizeof dst[0]));
                       }
                       return status;
                     },
                     kvrStatusOutOfMemory));
  }
}

TYPED_TEST(HilbertMemory, Statuses) {
  using F = TypeParam;
  using Spec = typename F::Spec;
  Spec* spec = nullptr;
  EXPECT_EQ(kvrStatusNullPointer, F::initAlloc(nullptr, 0, kvrHintNone));
  EXPECT_EQ(kvrStatusBadLength, F::initAlloc(&spec, 0, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftOrder, F::initAlloc(&spec, 1 << 28, kvrHintNone));
  EXPECT_EQ(kvrStatusBadLength, F::initAlloc(&spec, (1 << 28) + 1, kvrHintNone));
  EXPECT_EQ(nullptr, spec);
  EXPECT_EQ(kvrStatusNullPointer, F::free(nullptr));
  // Any null pointer comes before the word.
  alignas(16) uint32_t other[16] = {0x434d4142};
  auto* const wrong = reinterpret_cast<Spec*>(other);
  typename F::Src src[3] = {};
  typename F::Dst dst[3] = {};
  EXPECT_EQ(kvrStatusNullPointer, F::call(nullptr, dst, wrong));
  EXPECT_EQ(kvrStatusNullPointer, F::call(src, nullptr, wrong));
  EXPECT_EQ(kvrStatusNullPointer, F::call(src, dst, nullptr));
  EXPECT_EQ(kvrStatusContextMismatch, F::call(src, dst, wrong));
  EXPECT_EQ(kvrStatusContextMismatch, F::free(wrong));
}

}  // namespace
