// Zeros between samples, and samples taken out.
// SPDX-License-Identifier: MIT
#include "kvrs/sampling.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/random.h"

using namespace kvrs::test;

namespace {

template <class T>
using Sample = KvrStatus (*)(const T*, int, T*, int*, int, int*);

template <class T>
class Sampling {
 public:
  explicit Sampling(Sample<T> up, Sample<T> down) : up_(up), down_(down) {}

  void check(int srcLen, int factor, int phase) {
    SCOPED_TRACE(testing::Message() << sizeof(T) << " bytes, " << srcLen << " samples, factor " << factor
                                    << ", phase " << phase);
    const size_t len = static_cast<size_t>(srcLen), step = static_cast<size_t>(factor),
                 first = static_cast<size_t>(phase);
    auto* src = src_.place<T>(len, Side::back, random_.below(17));
    std::vector<T> samples(len);
    for (size_t i = 0; i < len; ++i) put(src, i, samples[i] = random_.value<T>());

    auto* dst = dst_.place<T>(len * step, Side::back, random_.below(17));
    int dstLen = -1, at = phase;
    ASSERT_EQ(kvrStatusOk, up_(src, srcLen, dst, &dstLen, factor, &at));
    EXPECT_EQ(srcLen * factor, dstLen);
    EXPECT_EQ(phase, at);
    std::vector<T> want(len * step, T{});
    for (size_t i = 0; i < len; ++i) want[first + i * step] = samples[i];
    EXPECT_EQ(0, memcmp(want.data(), dst, want.size() * sizeof(T)));
    EXPECT_TRUE(dst_.intact());

    want.clear();
    size_t next = first;
    for (; next < len; next += step) want.push_back(samples[next]);
    if (step == 1) next = len + first;
    dst = dst_.place<T>(want.size(), Side::back, random_.below(17));
    at = phase;
    ASSERT_EQ(kvrStatusOk, down_(src, srcLen, dst, &dstLen, factor, &at));
    EXPECT_EQ(static_cast<int>(want.size()), dstLen);
    EXPECT_EQ(static_cast<int>(next - len), at);
    EXPECT_EQ(0, memcmp(want.data(), dst, want.size() * sizeof(T)));
    EXPECT_TRUE(dst_.intact());
  }

  // A signal in pieces is the signal in one.
  void checkChain(int factor) {
    const size_t len = 1000;
    std::vector<T> src(len), one(len), pieces(len);
    for (T& sample : src) sample = random_.value<T>();
    int count = 0, phase = static_cast<int>(random_.below(static_cast<uint32_t>(factor))), at = phase,
        total = 0;
    ASSERT_EQ(kvrStatusOk, down_(src.data(), static_cast<int>(len), one.data(), &count, factor, &phase));
    for (size_t done = 0; done < len;) {
      const size_t piece = std::min<size_t>(len - done, 1 + random_.below(30));
      int kept = 0;
      ASSERT_EQ(kvrStatusOk,
                down_(&src[done], static_cast<int>(piece), pieces.data() + total, &kept, factor, &at));
      total += kept;
      done += piece;
    }
    EXPECT_EQ(count, total);
    EXPECT_EQ(phase, at);
    EXPECT_EQ(0, memcmp(one.data(), pieces.data(), static_cast<size_t>(count) * sizeof(T)));
  }

 private:
  Sample<T> up_, down_;
  Random random_;
  Arena src_{200000}, dst_{1600000};
};

template <class T>
void checkType(Sample<T> up, Sample<T> down) {
  Sampling<T> sampling(up, down);
  for (int factor : {1, 2, 3, 4, 5, 8, 17}) {
    for (int phase : {0, factor / 2, factor - 1}) {
      for (int srcLen = 1; srcLen <= 70; ++srcLen) sampling.check(srcLen, factor, phase);
      for (int srcLen : {500, 4095, 4096, 4097}) {
        if (factor <= 5) sampling.check(srcLen, factor, phase);
      }
    }
    sampling.checkChain(factor);
  }
}

TEST(Sampling, AllTypes) {
  checkType<Kvr16s>(kvrsSampleUp_16s, kvrsSampleDown_16s);
  checkType<Kvr16sc>(kvrsSampleUp_16sc, kvrsSampleDown_16sc);
  checkType<Kvr32f>(kvrsSampleUp_32f, kvrsSampleDown_32f);
  checkType<Kvr32fc>(kvrsSampleUp_32fc, kvrsSampleDown_32fc);
  checkType<Kvr64f>(kvrsSampleUp_64f, kvrsSampleDown_64f);
  checkType<Kvr64fc>(kvrsSampleUp_64fc, kvrsSampleDown_64fc);
}

TEST(Sampling, ByHand) {
  const Kvr32f src[] = {1, 2, 3, 4, 5};
  Kvr32f dst[8] = {};
  int len = 0, phase = 1;
  // The last sample kept is that at 3; 3 + 2 - 5 is 0.
  EXPECT_EQ(kvrStatusOk, kvrsSampleDown_32f(src, 5, dst, &len, 2, &phase));
  EXPECT_EQ(2, len);
  EXPECT_EQ(0, phase);
  EXPECT_EQ(2, dst[0]);
  EXPECT_EQ(4, dst[1]);
  phase = 4;
  EXPECT_EQ(kvrStatusOk, kvrsSampleDown_32f(src, 2, dst, &len, 5, &phase));
  EXPECT_EQ(0, len);
  EXPECT_EQ(2, phase);
  phase = 2;
  EXPECT_EQ(kvrStatusOk, kvrsSampleUp_32f(src, 1, dst, &len, 3, &phase));
  EXPECT_EQ(3, len);
  EXPECT_EQ(0, dst[0]);
  EXPECT_EQ(0, dst[1]);
  EXPECT_EQ(1, dst[2]);
}

}  // namespace
