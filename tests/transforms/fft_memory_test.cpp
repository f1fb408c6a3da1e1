// What memory the floating-point FFTs touch, and that no alignment changes a result.
// SPDX-License-Identifier: MIT
#include "tests/support/core.h"
#include "tests/support/short.h"
#include "tests/transforms/fft_families.h"

using namespace kvrs::test;

namespace {

template <class Family>
class FftMemory : public testing::Test {};
TYPED_TEST_SUITE(FftMemory, FftFamilies);

template <class T>
bool sameBytes(const T* a, const std::vector<T>& b) {
  return memcmp(a, b.data(), b.size() * sizeof(T)) == 0;
}

// src, dst and buffer each right between pages that may not be touched, at all alignments.
TYPED_TEST(FftMemory, GuardedArraysAtAnyAlignment) {
  using F = TypeParam;
  using Part = typename F::Part;
  for (int order : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19}) {
    const Context<F> context(order, kvrFftDivBySqrtN);
    const size_t bufSize = static_cast<size_t>(context.bufSize());
    for (const auto& transform : F::transforms()) {
      const size_t srcCount = transform.srcCount(order), dstCount = transform.dstCount(order);
      const size_t inPlaceCount = transform.inPlaceCount(order);
      Arena srcArena(srcCount * sizeof(Part)), dstArena(inPlaceCount * sizeof(Part)), bufArena(bufSize + 1);
      Random random(order);
      const auto src = randomNumbers<Part>(srcCount, random);
      std::vector<Part> want(dstCount), wantInPlace(src);
      ASSERT_EQ(kvrStatusOk, transform.call(src.data(), want.data(), context.get(), nullptr));
      wantInPlace.resize(inPlaceCount);
      ASSERT_EQ(kvrStatusOk, transform.inPlace(wantInPlace.data(), context.get(), nullptr));
      wantInPlace.resize(dstCount);

      const size_t step = inFull(order <= 13   ? 1
                                 : order <= 14 ? 3
                                 : order <= 17 ? 11
                                               : 23,
                                 order <= 14 ? 5 : 31);
      for (size_t offset = 0; offset < 32; offset += step) {
        for (Side side : {Side::front, Side::back}) {
          SCOPED_TRACE(std::string(transform.name) + ", order " + std::to_string(order) + ", offset " +
                       std::to_string(offset));
          Part* from = srcArena.place<Part>(srcCount, side, (offset * 3 + 1) % 32);
          Part* to = dstArena.place<Part>(dstCount, side, offset);
          Kvr8u* buffer = bufArena.place<Kvr8u>(bufSize, side, (offset * 7 + 5) % 32);
          memcpy(from, src.data(), srcCount * sizeof(Part));
          const int calls = allocationCount();
          ASSERT_EQ(kvrStatusOk, transform.call(from, to, context.get(), buffer));
          ASSERT_TRUE(sameBytes(to, want)) << "another result";
          ASSERT_TRUE(sameBytes(from, src)) << "source written";
          ASSERT_TRUE(srcArena.intact() && dstArena.intact()) << "written outside";
          ASSERT_TRUE(bufArena.intact()) << "written outside buffer";

          Part* srcDst = dstArena.place<Part>(inPlaceCount, side, offset);
          memcpy(srcDst, src.data(), srcCount * sizeof(Part));
          ASSERT_EQ(kvrStatusOk, transform.inPlace(srcDst, context.get(), buffer));
          ASSERT_TRUE(sameBytes(srcDst, wantInPlace)) << "another result in place";
          ASSERT_TRUE(dstArena.intact() && bufArena.intact()) << "written outside, in place";
          ASSERT_EQ(calls, allocationCount()) << "allocated, though there is a buffer";
        }
      }
    }
  }
}

// The same for lengths that are split more than once, at one alignment.
TYPED_TEST(FftMemory, GuardedArraysOfLongTransforms) {
  using F = TypeParam;
  using Part = typename F::Part;
  const auto& all = F::transforms();
  const int order = F::kReal ? 23 : 22;
  int specBytes, initBytes, work;
  ASSERT_EQ(kvrStatusOk, F::getSize(order, kvrFftDivBySqrtN, kvrHintNone, &specBytes, &initBytes, &work));
  Arena specArena(static_cast<size_t>(specBytes)), bufArena(static_cast<size_t>(work));
  typename F::Spec* spec = nullptr;
  {
    Arena initArena(static_cast<size_t>(initBytes));
    ASSERT_EQ(kvrStatusOk, F::init(&spec, order, kvrFftDivBySqrtN, kvrHintNone,
                                   specArena.place<Kvr8u>(static_cast<size_t>(specBytes), Side::back, 0),
                                   initArena.place<Kvr8u>(static_cast<size_t>(initBytes), Side::back, 0)));
    EXPECT_TRUE(specArena.intact() && initArena.intact());
  }
  for (size_t i : {size_t{0}, all.size() / 2}) {  // Perm, where there is a choice
    SCOPED_TRACE(all[i].name);
    const size_t count = all[i].inPlaceCount(order);
    Arena srcArena(count * sizeof(Part)), dstArena(count * sizeof(Part));
    Part* src = srcArena.place<Part>(count, Side::back, 0);
    Part* dst = dstArena.place<Part>(count, Side::back, 4);
    Random random(1);
    for (size_t k = 0; k < count; ++k) src[k] = random.value<Part>();
    const std::vector<Part> before(src, src + count);
    Kvr8u* buffer = bufArena.place<Kvr8u>(static_cast<size_t>(work), Side::back, 0);
    ASSERT_EQ(kvrStatusOk, all[i].call(src, dst, spec, buffer));
    EXPECT_TRUE(srcArena.intact() && dstArena.intact() && bufArena.intact());
    EXPECT_TRUE(sameBytes(src, before)) << "source written";
    const std::vector<Part> want(dst, dst + count);
    ASSERT_EQ(kvrStatusOk, all[i].inPlace(src, spec, buffer));
    EXPECT_TRUE(srcArena.intact() && bufArena.intact());
    // In place the passes may go another way: the same within rounding.
    EXPECT_LT(errorInUnits(src, want.data(), count, 1, order), kMostError);
  }
}

// The out-of-place form with one array for both is the form in place.
TYPED_TEST(FftMemory, OneArrayForBoth) {
  using F = TypeParam;
  using Part = typename F::Part;
  for (int order = 0; order <= 18; ++order) {
    const Context<F> context(order, kvrFftDivFwdByN);
    for (const auto& transform : F::transforms()) {
      Random random(order);
      auto both = randomNumbers<Part>(transform.inPlaceCount(order), random);
      auto inPlace = both;
      ASSERT_EQ(kvrStatusOk, transform.call(both.data(), both.data(), context.get(), nullptr));
      ASSERT_EQ(kvrStatusOk, transform.inPlace(inPlace.data(), context.get(), nullptr));
      both.resize(transform.dstCount(order));
      EXPECT_TRUE(sameBytes(inPlace.data(), both)) << transform.name << ", order " << order;
    }
  }
}

// A null buffer costs one allocation where a work area is needed, and none elsewhere; without memory the call
// fails before it writes anything.
TYPED_TEST(FftMemory, NullBuffer) {
  using F = TypeParam;
  using Part = typename F::Part;
  for (int order = 0; order <= 19; ++order) {
    const Context<F> context(order, kvrFftNoDivByAny);
    const bool needsWork = context.bufSize() > 0;
    for (const auto& transform : F::transforms()) {
      SCOPED_TRACE(std::string(transform.name) + ", order " + std::to_string(order));
      Random random(order);
      const auto src = randomNumbers<Part>(transform.srcCount(order), random);
      std::vector<Part> dst(transform.dstCount(order), 7), srcDst(src);
      srcDst.resize(transform.inPlaceCount(order));
      const auto dstBefore = dst, srcDstBefore = srcDst;
      const int live = liveBlocks(), calls = allocationCount();
      {
        FailingAllocator failing(1);
        const KvrStatus want = needsWork ? kvrStatusOutOfMemory : kvrStatusOk;
        ASSERT_EQ(want, transform.call(src.data(), dst.data(), context.get(), nullptr));
        ASSERT_EQ(want, transform.inPlace(srcDst.data(), context.get(), nullptr));
      }
      if (needsWork) {
        ASSERT_EQ(dstBefore, dst);
        ASSERT_EQ(srcDstBefore, srcDst);
        ASSERT_EQ(kvrStatusOk, transform.call(src.data(), dst.data(), context.get(), nullptr));
        ASSERT_EQ(kvrStatusOk, transform.inPlace(srcDst.data(), context.get(), nullptr));
      }
      EXPECT_EQ(needsWork ? 4 : 0, allocationCount() - calls);
      EXPECT_EQ(live, liveBlocks());
      if (!needsWork) {  // then a buffer is not looked at
        auto* const nowhere = reinterpret_cast<Kvr8u*>(uintptr_t{1});
        ASSERT_EQ(kvrStatusOk, transform.call(src.data(), dst.data(), context.get(), nowhere));
      }
    }
  }
}

}  // namespace
