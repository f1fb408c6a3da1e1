// What infinite, undefined and huge samples do to a FIR filter: what they reach, and what they leave alone.
// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include "tests/filters/fir_oracle.h"

using namespace kvrs::test;

namespace {

constexpr Kvr32f kInfinity = std::numeric_limits<Kvr32f>::infinity();
constexpr Kvr32f kNan = std::numeric_limits<Kvr32f>::quiet_NaN();

// Outputs of a filter on samples of which one is special, and those that it would have with 0 in its place.
struct Filtered {
  std::vector<Kvr32f> taps, got;
  std::vector<double> usual;

  Filtered(int tapsLen, int len, size_t at, Kvr32f special) {
    Random random;
    taps = wholeTaps(random, tapsLen);
    for (Kvr32f& tap : taps) tap = tap == 0 ? 1 : tap;
    auto src = wholeSamples(random, len);
    src[at] = 0;
    usual = FirOracle(taps, nullptr).run(src);
    src[at] = special;
    FirState state(taps);
    got.resize(src.size());
    EXPECT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), got.data(), len, state));
  }
};

// Sums as they stand: all is as usual but the outputs that the sample belongs to.
TEST(FirSpecial, SumsAsTheyStand) {
  for (int tapsLen : {1, 5, 16, 40}) {
    for (size_t at : {size_t{0}, size_t{333}, size_t{4999}}) {
      for (Kvr32f special : {kInfinity, -kInfinity, kNan, 1e30f}) {
        const Filtered run(tapsLen, 5000, at, special);
        for (size_t i = 0; i < run.got.size(); ++i) {
          if (i < at || i - at >= run.taps.size()) {
            ASSERT_EQ(run.usual[i], run.got[i])
                << tapsLen << " taps, special " << special << " at " << at << ", " << i;
          } else if (special == 1e30f) {
            ASSERT_NEAR(double{run.taps[i - at]} * special, double{run.got[i]}, 1e30 * 8 * 0x1p-24);
          } else {
            ASSERT_FALSE(std::isfinite(run.got[i])) << i;
          }
        }
      }
    }
  }
}

// By blocks: the block that has the sample, and no other.
TEST(FirSpecial, Blocks) {
  const int tapsLen = 1024, fftLen = 4096, step = fftLen - tapsLen + 1;
  const size_t begin = step, end = 2 * step;                // of the second block
  for (size_t at : {begin, begin + 1500, end - tapsLen}) {  // where no other block has it
    for (Kvr32f special : {kInfinity, -kInfinity, kNan, 1e30f}) {
      const Filtered run(tapsLen, 4 * step, at, special);
      // The error of a transform there and back, in proportion to the largest sample and the taps' energy.
      const double error = (special == 1e30f ? 1e30 : 0) * 8 * std::sqrt(tapsLen) * 0x1p-22;
      for (size_t i = 0; i < run.got.size(); ++i) {
        if (i < begin || i >= end) {
          ASSERT_NEAR(run.usual[i], double{run.got[i]}, 0.05)
              << "special " << special << " at " << at << ", " << i;
        } else if (special == 1e30f) {
          const double own = i >= at && i - at < run.taps.size() ? double{run.taps[i - at]} * special : 0;
          ASSERT_NEAR(own, double{run.got[i]}, error);
        } else {
          ASSERT_TRUE(std::isnan(run.got[i])) << i;
        }
      }
    }
  }
}

}  // namespace
