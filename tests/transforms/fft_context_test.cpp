// Contexts of the floating-point FFTs: sizes, checks in their order, making, copying, sharing and freeing.
// SPDX-License-Identifier: MIT
#include <thread>

#include "tests/support/core.h"
#include "tests/transforms/fft_families.h"

using namespace kvrs::test;

namespace {

template <class Family>
class FftContext : public testing::Test {};
TYPED_TEST_SUITE(FftContext, FftFamilies);

// The sizes as the interface states them, in 64 bits.
struct Sizes {
  int64_t spec, initBuf, work;
};
int64_t down32(int64_t x) {
  return x / 32 * 32;
}
int64_t pow2(int order) {
  return int64_t{1} << order;
}

// Single precision, an order at which the array is taken as rows and columns: the tables of all levels below
// the outermost, and the work area without what reversal needs at least.
int outerBits(int order) {
  return order == 17 ? 3 : order <= 21 ? 4 : 8;
}
int64_t splitTables(int order) {
  const int row = order - outerBits(order);
  return 8 * pow2(order) + (row < 16 ? down32(8 * pow2(row) + 39) : splitTables(row));
}
int64_t splitWork(int order) {
  const int row = order - outerBits(order);
  const int64_t rows = row < 16 ? down32(8 * pow2(row) + 31) : splitWork(row);
  return std::max(rows, 8 * pow2(order <= 21 ? 10 : 14));
}
int64_t splitWorkAtTop(int order) {
  return order >= 17 ? std::max<int64_t>(splitWork(order), 16384) : splitWork(order);
}

Sizes wantedSizes(Complex32, int order) {
  if (order <= 5) return {116, 0, 0};
  const int64_t quarter = down32(pow2(order) / 4 * 4 + 35);
  const int64_t initBuf = order > 10 ? quarter + 32 : 0;
  if (order <= 15) {
    return {down32(8 * pow2(order) + 39) + quarter + 128, initBuf, down32(8 * pow2(order) + 31) + 32};
  }
  return {splitTables(order) + quarter + 128, initBuf, splitWorkAtTop(order) + 32};
}

Sizes wantedSizes(Real32, int order) {
  if (order <= 4) return {116, 0, 0};
  const int half = order - 1;
  const int64_t splits = 2 * down32(2 * pow2(order) + 31);
  if (order <= 6) return {splits + 128, 0, 0};
  const int64_t quarter = down32(pow2(order) / 4 * 4 + 35), halfQuarter = down32(pow2(half) / 4 * 4 + 35);
  const int64_t initBuf = order > 10 ? quarter + 32 : 0;
  if (order <= 16) {
    return {splits + halfQuarter + down32(8 * pow2(half) + 39) + 128, initBuf,
            down32(8 * pow2(half) + 31) + 32};
  }
  return {splits + halfQuarter + splitTables(half) + 128, initBuf, splitWorkAtTop(half) + 32};
}

Sizes wantedSizes(Planes32, int order) {
  return wantedSizes(Complex32(), order);
}

// The same in double precision.
int outerBits64(int order) {
  return order == 14 || order == 19 ? 4 : 6;
}
int64_t splitTables64(int order) {
  const int row = order - outerBits64(order);
  return 16 * pow2(order) + (row < 13 ? down32(16 * pow2(row) + 47) : splitTables64(row));
}
int64_t splitWork64(int order) {
  const int row = order - outerBits64(order);
  return std::max<int64_t>(row < 13 ? 0 : splitWork64(row), 16 * pow2(order <= 21 ? 10 : 12));
}
int64_t splitWorkAtTop64(int order) {
  return std::max<int64_t>(splitWork64(order), 32768);
}

Sizes wantedSizes(Complex64, int order) {
  if (order <= 5) return {120, 0, 0};
  const int64_t quarter = down32(pow2(order) / 4 * 4 + 35);
  const int64_t initBuf = order > 10 ? down32(2 * pow2(order) + 39) + 32 : 0;
  if (order <= 12) return {down32(16 * pow2(order) + 47) + quarter + 128, initBuf, 0};
  if (order == 13) return {down32(4 * pow2(order) + 31) + 65568 + quarter + 128, initBuf, 0};
  return {splitTables64(order) + quarter + 128, initBuf, splitWorkAtTop64(order) + 32};
}
Sizes wantedSizes(Planes64, int order) {
  return wantedSizes(Complex64(), order);
}
Sizes wantedSizes(Real64, int order) {
  if (order <= 5) return {120, 0, 0};
  const int half = order - 1;
  const int64_t splits = 2 * down32(4 * pow2(order) + 31);
  if (order == 6) return {splits + 128, 0, 0};
  const int64_t halfQuarter = down32(pow2(half) / 4 * 4 + 35);
  const int64_t initBuf = order > 10 ? down32(2 * pow2(order) + 39) + 32 : 0;
  if (order <= 13) return {splits + halfQuarter + down32(16 * pow2(half) + 47) + 128, initBuf, 0};
  if (order == 14) return {splits + halfQuarter + down32(pow2(half) * 4 + 31) + 65568 + 128, initBuf, 0};
  return {splits + halfQuarter + splitTables64(half) + 128, initBuf, splitWorkAtTop64(half) + 32};
}

constexpr int kUnset = -77;

TYPED_TEST(FftContext, GetSize) {
  using F = TypeParam;
  for (int order = -3; order <= 33; ++order) {
    for (int flag : {1, 2, 4, 8, 0, 3, 9, 16, -1}) {
      for (int missing = 0; missing <= 7; ++missing) {  // a bit for each pointer
        SCOPED_TRACE("order " + std::to_string(order) + ", flag " + std::to_string(flag) +
                     ", null pointers " + std::to_string(missing));
        const bool knownFlag = flag == 1 || flag == 2 || flag == 4 || flag == 8;
        const KvrStatus want = order < 0 || order > 30 ? kvrStatusBadFftOrder
                               : missing != 0          ? kvrStatusNullPointer
                               : !knownFlag            ? kvrStatusBadFftFlag
                               : order > F::kMaxOrder  ? kvrStatusBadFftOrder
                                                       : kvrStatusOk;
        int spec = kUnset, initBuf = kUnset, work = kUnset;
        ASSERT_EQ(want, F::getSize(order, flag, kvrHintNone, missing & 1 ? nullptr : &spec,
                                   missing & 2 ? nullptr : &initBuf, missing & 4 ? nullptr : &work));
        if (want == kvrStatusOk) {
          const Sizes sizes = wantedSizes(F(), order);
          ASSERT_EQ(sizes.spec, spec);
          ASSERT_EQ(sizes.initBuf, initBuf);
          ASSERT_EQ(sizes.work, work);
          for (int hint : {1, 2, 99, -1}) {
            int s, i, w;
            ASSERT_EQ(kvrStatusOk, F::getSize(order, flag, hint, &s, &i, &w));
            ASSERT_TRUE(s == spec && i == initBuf && w == work) << "hint " << hint;
          }
        } else {
          ASSERT_TRUE(spec == kUnset && initBuf == kUnset && work == kUnset) << "written";
        }
      }
    }
  }
}

// A number or two worked out by hand from the tables of the interface.
TEST(FftSizes, ByHand) {
  const auto expect = [](auto getSize, int order, int spec, int initBuf, int work) {
    int s, i, w;
    ASSERT_EQ(kvrStatusOk, getSize(order, kvrFftNoDivByAny, kvrHintNone, &s, &i, &w));
    EXPECT_EQ(spec, s) << order;
    EXPECT_EQ(initBuf, i) << order;
    EXPECT_EQ(work, w) << order;
  };
  expect(kvrsFFTGetSize_C_32fc, 6, 544 + 96 + 128, 0, 544);                 // N = 64
  expect(kvrsFFTGetSize_C_32fc, 11, 16416 + 2080 + 128, 2080 + 32, 16416);  // N = 2048
  expect(kvrsFFTGetSize_C_32fc, 16, 32800 + 524288 + 65568 + 128, 65568 + 32, 32768 + 32);
  expect(kvrsFFTGetSize_C_64fc, 6, 1056 + 96 + 128, 0, 0);
  expect(kvrsFFTGetSize_C_64fc, 13, 32768 + 65568 + 8224 + 128, 16416 + 32, 0);
  expect(kvrsFFTGetSize_C_64f, 14, 16384 + 32 + 262144 + 16416 + 128, 32800 + 32, 32768 + 32);
  expect(kvrsFFTGetSize_R_64f, 6, 2 * 256 + 128, 0, 0);
  expect(kvrsFFTGetSize_R_32f, 5, 2 * 64 + 128, 0, 0);
  expect(kvrsFFTGetSize_R_32f, 7, 2 * 256 + 96 + 544 + 128, 0, 544);
}

// The specMem of a test: exactly `bytes` bytes at an offset, guarded.
template <class Family>
int specSize(int order) {
  int spec = 0, initBuf, work;
  EXPECT_EQ(kvrStatusOk, Family::getSize(order, kvrFftNoDivByAny, kvrHintNone, &spec, &initBuf, &work));
  return spec;
}

uint8_t* rounded(uint8_t* p) {
  return reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(p) + 31) & ~uintptr_t{31});
}
uint32_t firstWord(const void* p) {
  uint32_t word;
  memcpy(&word, p, sizeof word);
  return word;
}

TYPED_TEST(FftContext, InitChecks) {
  using F = TypeParam;
  auto* const unset = reinterpret_cast<typename F::Spec*>(uintptr_t{0x1234});
  typename F::Spec* spec = unset;
  std::vector<Kvr8u> mem(static_cast<size_t>(specSize<F>(12)), 0xA5), initBuf(1 << 16);
  const auto init = [&](int order, int flag, Kvr8u* specMem, Kvr8u* buf) {
    return F::init(&spec, order, flag, kvrHintNone, specMem, buf);
  };
  EXPECT_EQ(kvrStatusNullPointer, F::init(nullptr, -1, 3, kvrHintNone, nullptr, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::init(nullptr, 4, 1, kvrHintNone, mem.data(), nullptr));
  for (int order : {-1, -1000, F::kMaxOrder + 1, 30, 31, 1000}) {
    EXPECT_EQ(kvrStatusBadFftOrder, init(order, 3, nullptr, nullptr)) << order;
    EXPECT_EQ(kvrStatusBadFftOrder, init(order, 1, mem.data(), initBuf.data())) << order;
  }
  EXPECT_EQ(kvrStatusNullPointer, init(4, 3, nullptr, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, init(12, 1, nullptr, initBuf.data()));
  EXPECT_EQ(std::vector<Kvr8u>(mem.size(), 0xA5), mem) << "written before the checks were over";
  for (int order : {0, 4, 6, 12}) {
    for (int flag : {0, 3, 5, 16, -1}) {
      std::fill(mem.begin(), mem.end(), 0xA5);
      EXPECT_EQ(kvrStatusBadFftFlag, init(order, flag, mem.data() + 1, nullptr)) << order;
      EXPECT_EQ(0u, firstWord(rounded(mem.data() + 1))) << order;
    }
  }
  EXPECT_EQ(kvrStatusNullPointer, init(11, 1, mem.data(), nullptr));
  EXPECT_EQ(kvrStatusNullPointer, init(12, 1, mem.data(), nullptr));
  EXPECT_EQ(unset, spec);
  // Below order 11 initBuf is no more than an argument.
  for (int order = 0; order <= 10; ++order) {
    EXPECT_EQ(kvrStatusOk, init(order, 1, mem.data(), nullptr)) << order;
    EXPECT_EQ(kvrStatusOk, init(order, 1, mem.data(), reinterpret_cast<Kvr8u*>(1))) << order;
    EXPECT_EQ(F::kWord, firstWord(spec));
    EXPECT_EQ(rounded(mem.data()), reinterpret_cast<uint8_t*>(spec));
  }
  EXPECT_EQ(kvrStatusOk, init(11, 1, mem.data(), initBuf.data() + 3));
}

TYPED_TEST(FftContext, InitAllocChecks) {
  using F = TypeParam;
  auto* const unset = reinterpret_cast<typename F::Spec*>(uintptr_t{0x1234});
  typename F::Spec* spec = unset;
  const int before = liveBlocks(), calls = allocationCount();
  EXPECT_EQ(kvrStatusNullPointer, F::initAlloc(nullptr, -1, 3, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftOrder, F::initAlloc(&spec, -1, 3, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftOrder, F::initAlloc(&spec, 31, 3, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftFlag, F::initAlloc(&spec, F::kMaxOrder + 1, 3, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftFlag, F::initAlloc(&spec, 4, 0, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftFlag, F::initAlloc(&spec, 12, 6, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftOrder, F::initAlloc(&spec, F::kMaxOrder + 1, 1, kvrHintNone));
  EXPECT_EQ(kvrStatusBadFftOrder, F::initAlloc(&spec, 30, 1, kvrHintNone));
  EXPECT_EQ(unset, spec);
  EXPECT_EQ(before, liveBlocks());
  EXPECT_EQ(calls, allocationCount()) << "allocated before the checks were over";
}

TYPED_TEST(FftContext, InitAllocWithoutMemory) {
  using F = TypeParam;
  for (int order : {0, 3, 5, 6, 8, 10, 11, 13, 16, 17, 18}) {
    auto* const unset = reinterpret_cast<typename F::Spec*>(uintptr_t{0x1234});
    const auto make = [&] {
      typename F::Spec* spec = unset;
      const KvrStatus status = F::initAlloc(&spec, order, kvrFftDivBySqrtN, kvrHintNone);
      if (status == kvrStatusOk) {
        EXPECT_EQ(kvrStatusOk, F::free(spec));
      } else {
        EXPECT_EQ(unset, spec);
      }
      return status;
    };
    EXPECT_EQ(order > 10 ? 2 : 1, countAllocationsWithFailures(make, kvrStatusOutOfMemory)) << order;
  }
}

TYPED_TEST(FftContext, GetBufSize) {
  using F = TypeParam;
  for (int order = 0; order <= 18; ++order) {
    int spec, initBuf, work;
    ASSERT_EQ(kvrStatusOk, F::getSize(order, kvrFftDivFwdByN, kvrHintNone, &spec, &initBuf, &work));
    const Context<F> context(order, kvrFftDivFwdByN);
    EXPECT_EQ(work, context.bufSize()) << order;
  }
  const Context<F> context(8, kvrFftNoDivByAny);
  uint32_t words[64] = {};
  auto* const dead = reinterpret_cast<typename F::Spec*>(words);
  int size = kUnset;
  EXPECT_EQ(kvrStatusNullPointer, F::getBufSize(nullptr, &size));
  EXPECT_EQ(kvrStatusNullPointer, F::getBufSize(context.get(), nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::getBufSize(dead, nullptr));
  EXPECT_EQ(kvrStatusContextMismatch, F::getBufSize(dead, &size));
  EXPECT_EQ(kUnset, size);
}

TYPED_TEST(FftContext, Free) {
  using F = TypeParam;
  EXPECT_EQ(kvrStatusNullPointer, F::free(nullptr));
  for (int order : {3, 9, 12}) {
    // Allocated by the library: the block goes back.
    typename F::Spec* spec = nullptr;
    const int before = liveBlocks();
    ASSERT_EQ(kvrStatusOk, F::initAlloc(&spec, order, kvrFftNoDivByAny, kvrHintNone));
    EXPECT_EQ(before + 1, liveBlocks()) << "more than the context is kept";
    EXPECT_EQ(F::kWord, firstWord(spec));
    EXPECT_EQ(kvrStatusOk, F::free(spec));
    EXPECT_EQ(before, liveBlocks());

    // In memory of our own: dead, and otherwise as it was.
    std::vector<Kvr8u> mem(static_cast<size_t>(specSize<F>(order))), initBuf(1 << 16);
    ASSERT_EQ(kvrStatusOk, F::init(&spec, order, kvrFftNoDivByAny, kvrHintNone, mem.data(), initBuf.data()));
    std::vector<Kvr8u> kept = mem;
    EXPECT_EQ(kvrStatusOk, F::free(spec));
    EXPECT_EQ(before, liveBlocks());
    EXPECT_EQ(0u, firstWord(spec));
    memset(kept.data() + (reinterpret_cast<Kvr8u*>(spec) - mem.data()), 0, 4);
    EXPECT_EQ(kept, mem);
    EXPECT_EQ(kvrStatusContextMismatch, F::free(spec));
    typename F::Part data[4] = {};
    for (const auto& transform : F::transforms()) {
      EXPECT_EQ(kvrStatusContextMismatch, transform.call(data, data + 2, spec, nullptr));
      EXPECT_EQ(kvrStatusContextMismatch, transform.inPlace(data, spec, nullptr));
    }
  }
}

TYPED_TEST(FftContext, TransformChecks) {
  using F = TypeParam;
  using Part = typename F::Part;
  const Context<F> context(9, kvrFftNoDivByAny);
  std::vector<Part> src(2048);
  Arena arena(8192);
  Part* dst = arena.place<Part>(2048);
  for (const auto& transform : F::transforms()) {
    SCOPED_TRACE(transform.name);
    EXPECT_EQ(kvrStatusNullPointer, transform.call(src.data(), dst, nullptr, nullptr));
    EXPECT_EQ(kvrStatusNullPointer, transform.inPlace(dst, nullptr, nullptr));
    for (uint32_t word = 0; word <= 20; ++word) {
      if (word == F::kWord) continue;
      alignas(32) uint32_t words[64] = {word};
      const auto* other = reinterpret_cast<const typename F::Spec*>(words);
      EXPECT_EQ(kvrStatusContextMismatch, transform.call(src.data(), dst, other, nullptr)) << word;
      EXPECT_EQ(kvrStatusContextMismatch, transform.call(nullptr, nullptr, other, nullptr)) << word;
      EXPECT_EQ(kvrStatusContextMismatch, transform.inPlace(nullptr, other, nullptr)) << word;
    }
    EXPECT_EQ(kvrStatusNullPointer, transform.call(nullptr, dst, context.get(), nullptr));
    EXPECT_EQ(kvrStatusNullPointer, transform.call(src.data(), nullptr, context.get(), nullptr));
    EXPECT_EQ(kvrStatusNullPointer, transform.inPlace(nullptr, context.get(), nullptr));
    if (context.bufSize() > 0) {
      FailingAllocator failing(1);
      EXPECT_EQ(kvrStatusNullPointer, transform.call(src.data(), nullptr, context.get(), nullptr));
      EXPECT_EQ(kvrStatusOutOfMemory, transform.call(src.data(), dst, context.get(), nullptr));
      EXPECT_EQ(kvrStatusOutOfMemory, transform.inPlace(dst, context.get(), nullptr));
    }
    EXPECT_TRUE(arena.untouched());
  }
}

// Each of the four arrays is looked at.
TEST(FftContexts, NullPlanes) {
  const Context<Planes32> single(4, kvrFftNoDivByAny);
  const Context<Planes64> twice(4, kvrFftNoDivByAny);
  const auto check = [](auto call, auto inPlace, const auto* spec, auto zero) {
    using Part = decltype(zero);
    Part x[4][16] = {};
    for (int missing = 0; missing < 4; ++missing) {
      const auto at = [&](int i) { return i == missing ? nullptr : x[i]; };
      EXPECT_EQ(kvrStatusNullPointer, call(at(0), at(1), at(2), at(3), spec, nullptr)) << missing;
      if (missing < 2) {
        EXPECT_EQ(kvrStatusNullPointer, inPlace(at(0), at(1), spec, nullptr)) << missing;
      }
    }
  };
  check(kvrsFFTFwd_CToC_32f, kvrsFFTFwd_CToC_32f_I, single.get(), Kvr32f());
  check(kvrsFFTInv_CToC_32f, kvrsFFTInv_CToC_32f_I, single.get(), Kvr32f());
  check(kvrsFFTFwd_CToC_64f, kvrsFFTFwd_CToC_64f_I, twice.get(), Kvr64f());
  check(kvrsFFTInv_CToC_64f, kvrsFFTInv_CToC_64f_I, twice.get(), Kvr64f());
}

// Contexts of the one family are none of the other.
TEST(FftContexts, OfAnotherFamily) {
  const Context<Complex32> complex(7, kvrFftNoDivByAny);
  const Context<Real32> real(7, kvrFftNoDivByAny);
  const auto* asReal = reinterpret_cast<const KvrsFFTSpec_R_32f*>(complex.get());
  const auto* asComplex = reinterpret_cast<const KvrsFFTSpec_C_32fc*>(real.get());
  std::vector<Kvr32f> x(256), y(256);
  int size;
  for (const auto& transform : Real32::transforms()) {
    EXPECT_EQ(kvrStatusContextMismatch, transform.call(x.data(), y.data(), asReal, nullptr));
  }
  for (const auto& transform : Complex32::transforms()) {
    EXPECT_EQ(kvrStatusContextMismatch, transform.call(x.data(), y.data(), asComplex, nullptr));
  }
  EXPECT_EQ(kvrStatusContextMismatch, kvrsFFTGetBufSize_R_32f(asReal, &size));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsFFTGetBufSize_C_32fc(asComplex, &size));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsFFTFree_R_32f(const_cast<KvrsFFTSpec_R_32f*>(asReal)));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsFFTFree_C_32fc(const_cast<KvrsFFTSpec_C_32fc*>(asComplex)));
}

// Every transform of a context, on the same data each time.
template <class Family>
std::vector<std::vector<typename Family::Part>> runAll(const typename Family::Spec* spec, int order) {
  using Part = typename Family::Part;
  std::vector<std::vector<Part>> results;
  for (const auto& transform : Family::transforms()) {
    Random random(order);
    const auto src = randomNumbers<Part>(transform.srcCount(order), random);
    std::vector<Part> dst(transform.dstCount(order));
    EXPECT_EQ(kvrStatusOk, transform.call(src.data(), dst.data(), spec, nullptr));
    results.push_back(dst);
    dst.resize(transform.inPlaceCount(order));
    std::copy(src.begin(), src.end(), dst.begin());
    EXPECT_EQ(kvrStatusOk, transform.inPlace(dst.data(), spec, nullptr));
    dst.resize(transform.dstCount(order));
    results.push_back(dst);
  }
  return results;
}

TYPED_TEST(FftContext, HintHasNoEffect) {
  using F = TypeParam;
  for (int order : {4, 9, 13}) {
    std::vector<std::vector<typename F::Part>> want;
    for (int hint : {0, 1, 2, 3, -5}) {
      typename F::Spec* spec = nullptr;
      ASSERT_EQ(kvrStatusOk, F::initAlloc(&spec, order, kvrFftDivBySqrtN, hint));
      if (want.empty()) want = runAll<F>(spec, order);
      EXPECT_EQ(want, runAll<F>(spec, order)) << hint;
      F::free(spec);
    }
  }
}

// Sizes are enough at any alignment, nothing outside is touched, and the context is that of InitAlloc.
TYPED_TEST(FftContext, InitInBlocksOfTheirSizes) {
  using F = TypeParam;
  for (int order = 0; order <= 18; ++order) {
    int specBytes, initBytes, work;
    ASSERT_EQ(kvrStatusOk, F::getSize(order, kvrFftDivBySqrtN, kvrHintNone, &specBytes, &initBytes, &work));
    const Context<F> reference(order, kvrFftDivBySqrtN);
    const auto want = runAll<F>(reference.get(), order);
    Arena specArena(static_cast<size_t>(specBytes)), initArena(static_cast<size_t>(initBytes) + 1);
    for (size_t offset = 0; offset < 32; offset += order <= 12 ? 1 : 9) {
      for (Side side : {Side::front, Side::back}) {
        SCOPED_TRACE("order " + std::to_string(order) + ", offset " + std::to_string(offset));
        Kvr8u* specMem = specArena.place<Kvr8u>(static_cast<size_t>(specBytes), side, offset);
        Kvr8u* initBuf = initArena.place<Kvr8u>(static_cast<size_t>(initBytes), side, (offset * 5 + 3) % 32);
        typename F::Spec* spec = nullptr;
        ASSERT_EQ(kvrStatusOk, F::init(&spec, order, kvrFftDivBySqrtN, kvrHintNone, specMem, initBuf));
        ASSERT_EQ(rounded(specMem), reinterpret_cast<uint8_t*>(spec));
        ASSERT_TRUE(specArena.intact()) << "written outside specMem";
        ASSERT_TRUE(initArena.intact()) << "written outside initBuf";
        const std::vector<Kvr8u> block(specMem, specMem + specBytes);
        initArena.place<Kvr8u>(static_cast<size_t>(initBytes));  // a context does not need it any more
        if (offset % 8 == 1) {
          ASSERT_EQ(want, runAll<F>(spec, order));
        }
        ASSERT_EQ(0, memcmp(specMem, block.data(), block.size())) << "a transform wrote its context";
        ASSERT_TRUE(specArena.intact());
      }
    }
  }
}

TYPED_TEST(FftContext, CopiedAsBytes) {
  using F = TypeParam;
  for (int order = 0; order <= 18; ++order) {
    int bytes, initBytes, work;
    ASSERT_EQ(kvrStatusOk, F::getSize(order, kvrFftDivFwdByN, kvrHintNone, &bytes, &initBytes, &work));
    std::vector<Kvr8u> first(static_cast<size_t>(bytes) + 64), second(first.size() + 64),
        initBuf(initBytes + 1);
    typename F::Spec* spec = nullptr;
    ASSERT_EQ(kvrStatusOk,
              F::init(&spec, order, kvrFftDivFwdByN, kvrHintNone, rounded(first.data()), initBuf.data()));
    const auto want = runAll<F>(spec, order);
    // To a place with another remainder by 64.
    Kvr8u* to = rounded(second.data());
    if ((reinterpret_cast<uintptr_t>(to) ^ reinterpret_cast<uintptr_t>(spec)) % 64 == 0) to += 32;
    memcpy(to, rounded(first.data()), static_cast<size_t>(bytes) - 32);
    std::fill(first.begin(), first.end(), 0xEE);
    EXPECT_EQ(want, runAll<F>(reinterpret_cast<const typename F::Spec*>(to), order)) << order;
    EXPECT_EQ(kvrStatusOk, F::free(reinterpret_cast<typename F::Spec*>(to)));
  }
}

TYPED_TEST(FftContext, SharedByThreads) {
  using F = TypeParam;
  for (int order : {4, 8, 12, 16, 17}) {
    const Context<F> context(order, kvrFftDivInvByN);
    const auto want = runAll<F>(context.get(), order);
    bool same[4] = {};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
      threads.emplace_back([&, t] {
        bool all = true;
        for (int turn = 0; turn < (order < 10 ? 50 : 5); ++turn) {
          all = all && runAll<F>(context.get(), order) == want;
        }
        same[t] = all;
      });
    }
    for (auto& thread : threads) thread.join();
    for (int t = 0; t < 4; ++t) EXPECT_TRUE(same[t]) << "order " << order << ", thread " << t;
  }
}

}  // namespace
