// SPDX-License-Identifier: MIT
#include "frame/scaled.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/support/random.h"

namespace kvrs {
namespace {

using test::Random;

// A vector's lanes, filled by `make(i)`, and back.
template <class T>
struct Row {
  alignas(64) T at[kLanes<T>];
};
template <class T>
using Full = Lanes<T, kLanes<T>>;

template <class T>
Row<T> randomRow(Random& random) {
  Row<T> row;
  for (T& value : row.at) value = random.value<T>();
  return row;
}
template <class T>
auto load(const Row<T>& row) {
  return hn::LoadU(Full<T>(), row.at);
}
template <class V>
auto store(V v) {
  using T = hn::TFromV<V>;
  Row<T> row;
  hn::StoreU(v, Full<T>(), row.at);
  return row;
}

template <class T>
T clamped(long double r) {
  const long double rounded = rintl(r);
  if (rounded <= static_cast<long double>(std::numeric_limits<T>::min()))
    return std::numeric_limits<T>::min();
  if (rounded >= static_cast<long double>(std::numeric_limits<T>::max()))
    return std::numeric_limits<T>::max();
  return static_cast<T>(rounded);
}

template <class T>
class ShiftRightEvenTest : public testing::Test {};
using ShiftedLanes = testing::Types<uint8_t, uint16_t, int16_t, uint32_t, int32_t, int64_t>;
TYPED_TEST_SUITE(ShiftRightEvenTest, ShiftedLanes);

// With a sticky bit the number counts as v + 1/4: on the same side of every tie, whatever the lost bits are.
TYPED_TEST(ShiftRightEvenTest, RoundsToEven) {
  using T = TypeParam;
  constexpr int w = 8 * sizeof(T);
  Random random(3);
  const Full<T> d;
  for (int k = 1; k <= (std::is_unsigned_v<T> && w <= 16 ? w : w - 1); ++k) {
    for (int turn = 0; turn < 40; ++turn) {
      auto v = randomRow<T>(random), sticky = randomRow<T>(random);
      // Ties and their neighbours.
      if (turn % 2) {
        for (T& value : v.at) {
          value = static_cast<T>(((value >> (k - 1)) << (k - 1)) + static_cast<T>(random.below(3)) - 1);
        }
      }
      const auto plain = store(shiftRightEven(d, load(v), k));
      const auto sticking = store(shiftRightEven(d, load(v), load(sticky), k));
      for (size_t i = 0; i < kLanes<T>; ++i) {
        const long double x = v.at[i];
        ASSERT_EQ(+clamped<T>(ldexpl(x, -k)), +plain.at[i]) << +v.at[i] << " >> " << k;
        // Where v is too long for a quarter more, the tie is the only place that counts.
        const bool tie = ldexpl(x, -k) - floorl(ldexpl(x, -k)) == 0.5L;
        const long double above =
            (sticky.at[i] & 1) && tie ? floorl(ldexpl(x, -k)) + 1 : rintl(ldexpl(x, -k));
        ASSERT_EQ(+clamped<T>(above), +sticking.at[i]) << +v.at[i] << " >> " << k;
      }
    }
  }
}

// The forms of an exact result, each against the same rule, at every scale factor and at lengths below a block.

struct AsSum {
  template <class D, class V>
  KVRS_INLINE Sum<V> operator()(D, V a, V b) const {
    return {a, b};
  }
};
struct AsDifference {
  template <class D, class V>
  KVRS_INLINE Difference<V> operator()(D, V a, V b) const {
    return {a, b};
  }
};

template <class T, class Exact>
void checkForm(Exact exact, ScaleBounds bounds, long double (*r)(long double, long double)) {
  Random random(6);
  for (int scaleFactor = -70; scaleFactor <= 70; ++scaleFactor) {
    for (size_t len : {1, 3, 8, 33, 200}) {
      std::vector<T> a(len), b(len), dst(len + 1, T{85});
      for (T& value : a) value = random.value<T>();
      for (T& value : b) value = random.value<T>();
      mapScaled(exact, bounds, scaleFactor, dst.data(), len, a.data(), b.data());
      for (size_t i = 0; i < len; ++i) {
        ASSERT_EQ(+clamped<T>(ldexpl(r(a[i], b[i]), -scaleFactor)), +dst[i])
            << +a[i] << ", " << +b[i] << ", " << scaleFactor;
      }
      ASSERT_EQ(+T{85}, +dst[len]);
    }
  }
}

TEST(Scaled, Sum) {
  const auto plus = [](long double a, long double b) { return a + b; };
  checkForm<uint8_t>(AsSum(), {9, -8}, plus);
  checkForm<uint16_t>(AsSum(), {17, -16}, plus);
  checkForm<int16_t>(AsSum(), {16, -16}, plus);
  checkForm<int32_t>(AsSum(), {32, -31}, plus);
}

TEST(Scaled, Difference) {
  const auto minus = [](long double a, long double b) { return a - b; };
  checkForm<int16_t>(AsDifference(), {16, -16}, minus);
  checkForm<int32_t>(AsDifference(), {32, -31}, minus);
}

TEST(Scaled, Kernels) {
  const ScaleBounds bounds = {16, -15};
  EXPECT_EQ(ScaleKernel::none, scaleKernel(0, bounds));
  EXPECT_EQ(ScaleKernel::one, scaleKernel(1, bounds));
  EXPECT_EQ(ScaleKernel::shiftRight, scaleKernel(2, bounds));
  EXPECT_EQ(ScaleKernel::shiftRight, scaleKernel(16, bounds));
  EXPECT_EQ(ScaleKernel::zero, scaleKernel(17, bounds));
  EXPECT_EQ(ScaleKernel::zero, scaleKernel(INT32_MAX, bounds));
  EXPECT_EQ(ScaleKernel::shiftLeft, scaleKernel(-1, bounds));
  EXPECT_EQ(ScaleKernel::shiftLeft, scaleKernel(-14, bounds));
  EXPECT_EQ(ScaleKernel::bySign, scaleKernel(-15, bounds));
  EXPECT_EQ(ScaleKernel::bySign, scaleKernel(INT32_MIN, bounds));
}

}  // namespace
}  // namespace kvrs
