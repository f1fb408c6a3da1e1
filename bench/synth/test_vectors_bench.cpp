// SPDX-License-Identifier: MIT
#include "kvrs/test_vectors.h"

#include <cmath>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 1 << 20};

__attribute__((noipa)) void loopRamp(Kvr32f* dst, int len, float offset, float slope) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<float>(i) * slope + offset;
}
__attribute__((noipa)) void loopRamp(Kvr16s* dst, int len, float offset, float slope) {
  for (int i = 0; i < len; ++i) {
    const double v = static_cast<double>(static_cast<float>(i) * slope + offset);
    const double rounded = v > 0 ? v + 0.5 : v - 0.5;
    dst[i] = static_cast<Kvr16s>(rounded >= 32767    ? 32767
                                 : rounded <= -32768 ? -32768
                                                     : static_cast<int>(rounded));
  }
}
// Four sums, as the function has them: one takes the time of an addition for each element.
__attribute__((noipa)) void loopSlope(Kvr32f* dst, int len, float offset, float slope) {
  float sums[4] = {0, slope, 2 * slope, 3 * slope};
  for (int i = 0; i + 4 <= len; i += 4) {
    for (int k = 0; k < 4; ++k) {
      dst[i + k] = offset + sums[k];
      sums[k] += 4 * slope;
    }
  }
}
__attribute__((noipa)) void loopJaehne(Kvr64f* dst, int len, double magn) {
  const double c = 1.5707963267948966 / len;
  for (int i = 0; i < len; ++i) dst[i] = magn * std::sin(c * i * i);
}

Register testVectors([] {
  for (int len : kLengths) {
    const std::string n = std::to_string(len);
    const auto singles = array<Kvr32f>(len);
    const auto doubles = array<Kvr64f>(len);
    const auto integers = array<Kvr16s>(len);
    add("test_vectors/VectorRamp_32f/" + n, "kvrs",
        [=] { kvrsVectorRamp_32f(singles.get(), len, 1, 0.01f); });
    add("test_vectors/VectorRamp_32f/" + n, "loop", [=] { loopRamp(singles.get(), len, 1, 0.01f); });
    add("test_vectors/VectorRamp_16s/" + n, "kvrs",
        [=] { kvrsVectorRamp_16s(integers.get(), len, 1, 0.01f); });
    add("test_vectors/VectorRamp_16s/" + n, "loop", [=] { loopRamp(integers.get(), len, 1, 0.01f); });
    add("test_vectors/VectorSlope_32f/" + n, "kvrs",
        [=] { kvrsVectorSlope_32f(singles.get(), len, 1, 0.01f); });
    add("test_vectors/VectorSlope_32f/" + n, "loop", [=] { loopSlope(singles.get(), len, 1, 0.01f); });
    add("test_vectors/VectorJaehne_64f/" + n, "kvrs", [=] { kvrsVectorJaehne_64f(doubles.get(), len, 1); });
    add("test_vectors/VectorJaehne_64f/" + n, "loop", [=] { loopJaehne(doubles.get(), len, 1); });
  }
});

}  // namespace
}  // namespace kvrs::bench
