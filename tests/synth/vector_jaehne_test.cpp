// SPDX-License-Identifier: MIT
#include "kvrs/test_vectors.h"

#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

#include "tests/support/ulps.h"
#include "tests/synth/generated.h"

using namespace kvrs::test;

namespace {

template <class T>
bool accepts(T got, int n, int len, T magn) {
  if (len == 1) return got == T{0};
  const double c = 1.5707963267948966 / len;
  const double angle = c * n * n;
  const long double sine = std::sin(static_cast<long double>(angle));
  if constexpr (std::is_floating_point_v<T>) {
    // The sine within 2 units of a double, the product rounded, the result rounded to single.
    const long double want = static_cast<long double>(magn) * sine;
    return ulps(got, want) <= (sizeof(T) == 8 ? 3 : 0.501L);
  } else {
    const bool isUnsigned = std::is_unsigned_v<T>;
    const long double v = (isUnsigned ? magn * 0.5L : static_cast<long double>(magn)) * sine;
    const long double away = v >= 0 ? std::floor(v + 0.5L) : std::ceil(v - 0.5L);
    const long double middle = isUnsigned ? std::floor(static_cast<long double>(magn) / 2) : 0;
    const long double fraction = std::fabs(v) - std::floor(std::fabs(v));
    if (static_cast<long double>(got) == std::max(away, isUnsigned ? -middle : away) + middle) return true;
    // The sine's last bits decide.
    return std::fabs(fraction - 0.5L) < 1e-5L &&
           std::fabs(static_cast<long double>(got) - middle - v) < 0.51L;
  }
}

template <class T>
void checkJaehne(KvrStatus (*call)(T*, int, T) noexcept, std::vector<T> magns) {
  for (T magn : magns) {
    for (int len : {1, 2, 3, 7, 8, 31, 63, 64, 65, 129, 1000, 5000, 200000}) {
      std::vector<T> got(static_cast<size_t>(len));
      ASSERT_EQ(kvrStatusOk, call(got.data(), len, magn));
      for (int n = 0; n < len; ++n) {
        ASSERT_TRUE(accepts(got[static_cast<size_t>(n)], n, len, magn))
            << "element " << n << " of " << len << ", magnitude " << +magn << ": "
            << +got[static_cast<size_t>(n)];
      }
    }
    expectGenerated<T>([&](T* dst, int len) { return call(dst, len, magn); },
                       [&](int len) {
                         std::vector<T> aligned(static_cast<size_t>(len));
                         call(aligned.data(), len, magn);
                         return aligned;
                       });
  }
}

TEST(VectorJaehne, AllTypes) {
  checkJaehne<Kvr8u>(kvrsVectorJaehne_8u, {0, 1, 2, 100, 255});
  checkJaehne<Kvr8s>(kvrsVectorJaehne_8s, {0, 1, 127});
  checkJaehne<Kvr16u>(kvrsVectorJaehne_16u, {3, 1000, 65535});
  checkJaehne<Kvr16s>(kvrsVectorJaehne_16s, {3, 32767});
  checkJaehne<Kvr32u>(kvrsVectorJaehne_32u, {1, 1000000, 4294967295u});
  checkJaehne<Kvr32s>(kvrsVectorJaehne_32s, {1, 2147483647});
  checkJaehne<Kvr32f>(kvrsVectorJaehne_32f, {0, 1, 1e10f});
  checkJaehne<Kvr64f>(kvrsVectorJaehne_64f, {0, 1, 3e-5});
}

TEST(VectorJaehne, OneSampleIsZero) {
  Kvr8u unsigned8 = 7;
  EXPECT_EQ(kvrStatusOk, kvrsVectorJaehne_8u(&unsigned8, 1, 200));
  EXPECT_EQ(0, unsigned8);
  Kvr32f single = 7;
  EXPECT_EQ(kvrStatusOk, kvrsVectorJaehne_32f(&single, 1, 200));
  EXPECT_EQ(0, single);
  EXPECT_EQ(kvrStatusBadJaehneMagnitude, kvrsVectorJaehne_32f(&single, 1, -1));
}

}  // namespace
