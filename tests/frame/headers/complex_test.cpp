// SPDX-License-Identifier: MIT
#include "frame/complex.h"

#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

template <class T>
class ComplexTest : public testing::Test {};
using Floats = testing::Types<float, double>;
TYPED_TEST_SUITE(ComplexTest, Floats);

template <class T, size_t N>
struct Operands {
  T a[N], b[N], out[N];
  Operands() {
    Random random;
    for (T& x : a) x = static_cast<T>(random.unit());
    for (T& x : b) x = static_cast<T>(random.unit());
  }
  Lanes<T, N> d;
  auto va() const { return hn::LoadU(d, a); }
  auto vb() const { return hn::LoadU(d, b); }

  // `want` gives the real and the imaginary part of a pair of a and one of b.
  template <class V, class Want>
  void expect(V v, Want want) {
    hn::StoreU(v, d, out);
    for (size_t i = 0; i < N; i += 2) {
      const T* p = a + i;
      const T* q = b + i;
      const auto [re, im] = want(p[0], p[1], q[0], q[1]);
      EXPECT_TRUE(sameBits(re, out[i])) << i;
      EXPECT_TRUE(sameBits(im, out[i + 1])) << i;
    }
  }
};

// Of whole vectors and of a single pair; every operation is rounded by itself.
template <class T, size_t N>
void check() {
  struct Pair {
    T re, im;
  };
  Operands<T, N> x;
  const auto d = x.d;
  x.expect(setPairs(d, T(1.5), T(-2)), [](T, T, T, T) { return Pair{T(1.5), T(-2)}; });
  x.expect(subAdd(d, x.va(), x.vb()), [](T re, T im, T re2, T im2) { return Pair{re - re2, im + im2}; });
  x.expect(addSub(d, x.va(), x.vb()), [](T re, T im, T re2, T im2) { return Pair{re + re2, im - im2}; });
  x.expect(swapParts(d, x.va()), [](T re, T im, T, T) { return Pair{im, re}; });
  x.expect(mulPairs(d, x.va(), x.vb()), [](T re, T im, T re2, T im2) {
    return Pair{re * re2 - im * im2, re * im2 + im * re2};
  });
  x.expect(mulPairsConj(d, x.va(), x.vb()), [](T re, T im, T re2, T im2) {
    return Pair{re * re2 + im * im2, im * re2 - re * im2};
  });
}

TYPED_TEST(ComplexTest, Pairs) {
  check<TypeParam, kLanes<TypeParam>>();
  check<TypeParam, 2>();
}

}  // namespace
