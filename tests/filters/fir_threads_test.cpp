// FIR filters on teams of all sizes: the same bytes as on one thread.
// SPDX-License-Identifier: MIT
#include <limits>

#include "tests/filters/fir_oracle.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

// Samples and taps that are not whole, so that another order of the sums shows.
std::vector<Kvr32f> noise(Random& random, size_t count) {
  std::vector<Kvr32f> samples(count);
  for (Kvr32f& sample : samples) sample = static_cast<Kvr32f>(random.unit());
  return samples;
}

std::vector<Kvr32f> filtered(const std::vector<Kvr32f>& taps, const std::vector<Kvr32f>& src, int threads) {
  const ThreadCount atInit(8);
  FirState state(taps, nullptr);
  const ThreadCount atCall(threads);
  std::vector<Kvr32f> dst(src.size());
  EXPECT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), static_cast<int>(src.size()), state));
  return dst;
}

TEST(FirThreads, NoOutputDependsOnTheirCount) {
  Random random;
  // Sums as they stand, and blocks; enough work for some threads.
  for (int tapsLen : {2, 7, 16, 33, 40, 64, 500}) {
    const auto taps = noise(random, static_cast<size_t>(tapsLen));
    const size_t most = tapsLen < 30 ? 2000000 : 150001;
    for (size_t len : {most, most - 1, most - 37, most - 300}) {
      const auto src = noise(random, len), want = filtered(taps, src, 1);
      for (int threads : {2, 3, 5, 8}) {
        const auto got = filtered(taps, src, threads);
        size_t different = 0;
        for (size_t i = 0; i < len; ++i) different += memcmp(&want[i], &got[i], sizeof want[i]) != 0;
        EXPECT_EQ(0u, different) << tapsLen << " taps, " << len << " samples, " << threads << " threads";
      }
    }
  }
}

// A core library that says something senseless.
TEST(FirThreads, NoThreadsAtAll) {
  Random random;
  for (int tapsLen : {40, 512}) {
    const auto taps = noise(random, static_cast<size_t>(tapsLen));
    const auto src = noise(random, 4000000), want = filtered(taps, src, 1);
    for (int threads : {0, -1, std::numeric_limits<int>::min()}) {
      EXPECT_EQ(want, filtered(taps, src, threads)) << threads;
    }
  }
}

}  // namespace
