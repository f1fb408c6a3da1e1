// SPDX-License-Identifier: MIT
#include "kvrs/mixed.h"

#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

TEST(Mixed, IntegersToFloat) {
  sweepMap<Kvr32f, Kvr16s, Kvr16s>(kvrsAdd_16s32f,
                                   [](Kvr16s a, Kvr16s b) { return static_cast<Kvr32f>(a + b); });
  sweepMap<Kvr32f, Kvr16s, Kvr16s>(kvrsSub_16s32f,
                                   [](Kvr16s a, Kvr16s b) { return static_cast<Kvr32f>(b - a); });
  // -0.0 where one operand is 0 and the other negative: the product of two floats.
  sweepMap<Kvr32f, Kvr16s, Kvr16s>(kvrsMul_16s32f, [](Kvr16s a, Kvr16s b) {
    return static_cast<Kvr32f>(static_cast<Kvr64f>(a) * static_cast<Kvr64f>(b));
  });
}

TEST(Mixed, RealTimesComplex) {
  const auto oracle = [](Kvr32f a, Kvr32fc b) { return Kvr32fc{a * b.re, a * b.im}; };
  sweepMap<Kvr32fc, Kvr32f, Kvr32fc>(kvrsMul_32f32fc, oracle);
  sweepInPlace<Kvr32fc, Kvr32f>(kvrsMul_32f32fc_I, oracle);
}

template <class T>
T addProduct(T a, T b, T sum) {
  if constexpr (std::is_floating_point_v<T>) {
    return sum + a * b;
  } else {
    return {sum.re + (a.re * b.re - a.im * b.im), sum.im + (a.re * b.im + a.im * b.re)};
  }
}

template <class T>
bool isNaN(T x) {
  if constexpr (std::is_floating_point_v<T>) {
    return x != x;
  } else {
    return x.re != x.re || x.im != x.im;
  }
}

template <class T>
using AddProduct = KvrStatus (*)(const T*, const T*, T*, int) noexcept;

template <class T>
void checkAddProduct(AddProduct<T> f) {
  sweepInPlace<T, T, T>(f, addProduct<T>);
  // Sources anywhere in the same memory, also off by half an element. What is read there may be a NaN; which
  // one comes out then is open, so that these cases are left out.
  std::vector<uint8_t> fresh(700 * sizeof(T));
  Random random(3);
  for (size_t i = 0; i < 700; ++i) put(reinterpret_cast<T*>(fresh.data()), i, random.value<T>());
  constexpr ptrdiff_t size = sizeof(T);
  int compared = 0;
  for (ptrdiff_t by1 : {0 * size, size, -size, 5 * size, -5 * size, 64 * size, -64 * size, 150 * size,
                        -150 * size, size / 2, -size / 2}) {
    for (ptrdiff_t by2 : {0 * size, 3 * size, -2 * size, 100 * size, -40 * size}) {
      for (int len : {1, 2, 3, 8, 17, 33, 64, 100, 200}) {
        auto want = fresh, got = fresh;
        const auto at = [](std::vector<uint8_t>& v, ptrdiff_t by) {
          return reinterpret_cast<T*>(v.data() + 250 * size + by);
        };
        bool metNaN = false;
        for (size_t i = 0; i < static_cast<size_t>(len); ++i) {
          const T sum = addProduct(get(at(want, by1), i), get(at(want, by2), i), get(at(want, 0), i));
          metNaN = metNaN || isNaN(sum);
          put(at(want, 0), i, sum);
        }
        ASSERT_EQ(kvrStatusOk, f(at(got, by1), at(got, by2), at(got, 0), len));
        if (metNaN) continue;
        ++compared;
        ASSERT_TRUE(want == got) << "sources " << by1 << " and " << by2 << " bytes behind srcDst, len "
                                 << len;
      }
    }
  }
  EXPECT_GT(compared, 420);  // of 495
}

TEST(AddProduct, Floats) {
  checkAddProduct<Kvr32f>(kvrsAddProduct_32f);
  checkAddProduct<Kvr64f>(kvrsAddProduct_64f);
}

TEST(AddProduct, Complex) {
  checkAddProduct<Kvr32fc>(kvrsAddProduct_32fc);
  checkAddProduct<Kvr64fc>(kvrsAddProduct_64fc);
}

TEST(AddProduct, Scalar) {
  sweepInPlace<Kvr32f, Kvr32f>(
      [](const Kvr32f* src, Kvr32f* srcDst, int len) { return kvrsAddProductC_32f(src, -0.3f, srcDst, len); },
      [](Kvr32f a, Kvr32f sum) { return sum + a * -0.3f; });
  const auto fresh = randomVector<Kvr32f>(700, 4);
  for (ptrdiff_t by : {0, 1, -1, 7, -7, 60, -60, 150, -150}) {
    for (int len : {1, 2, 5, 16, 31, 64, 100, 300}) {
      auto want = fresh, got = fresh;
      for (int i = 0; i < len; ++i) want[200 + i] = want[200 + i] + want[200 + by + i] * 0.7f;
      ASSERT_EQ(kvrStatusOk, kvrsAddProductC_32f(got.data() + 200 + by, 0.7f, got.data() + 200, len));
      expectSame(want, got, "source " + std::to_string(by) + " elements behind srcDst");
    }
  }
}

}  // namespace
