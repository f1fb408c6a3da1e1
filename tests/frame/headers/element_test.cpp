// SPDX-License-Identifier: MIT
#include "frame/element.h"

#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

template <class T, size_t N>
void checkComplex() {
  using Part = LaneOf<T>;
  const Lanes<Part, N> d;
  Random random;
  // One element of room around, which must stay; and an address that no element is aligned to.
  Kvr8u from[(N + 2) * sizeof(T) + 1], to[(N + 2) * sizeof(T) + 1];
  memset(to, 0xA5, sizeof to);
  T* const src = reinterpret_cast<T*>(from + 1);
  T* const dst = reinterpret_cast<T*>(to + 1);
  for (size_t i = 0; i < N + 2; ++i) put(src, i, random.value<T>());
  const auto v = Element<T>::load(d, src + 1);
  Part parts[N];
  hn::StoreU(v.re, d, parts);
  for (size_t i = 0; i < N; ++i) EXPECT_TRUE(sameBits(parts[i], get(src, i + 1).re));
  hn::StoreU(v.im, d, parts);
  for (size_t i = 0; i < N; ++i) EXPECT_TRUE(sameBits(parts[i], get(src, i + 1).im));
  Element<T>::store(v, d, dst + 1);
  for (size_t i = 1; i <= N; ++i) EXPECT_TRUE(sameBits(get(dst, i), get(src, i)));
  for (size_t i = 0; i < sizeof(T) + 1; ++i) {
    EXPECT_EQ(0xA5, to[i]);
    EXPECT_EQ(0xA5, to[sizeof to - sizeof(T) + (i > 0 ? i - 1 : 0)]);
  }
  if constexpr (N > 2) checkComplex<T, N / 2>();
}

TEST(Element, ComplexOfEveryLaneCount) {
  checkComplex<Kvr16sc, kLanes<Kvr16s>>();
  checkComplex<Kvr32sc, kLanes<Kvr32s>>();
  checkComplex<Kvr64sc, kLanes<Kvr64s>>();
  checkComplex<Kvr32fc, kLanes<Kvr32f>>();
  checkComplex<Kvr64fc, kLanes<Kvr64f>>();
}

template <class T>
void checkReal() {
  const Lanes<T, kLanes<T>> d;
  Random random;
  T src[kLanes<T>], dst[kLanes<T>];
  for (T& x : src) x = random.value<T>();
  Element<T>::store(Element<T>::load(d, src), d, dst);
  EXPECT_EQ(0, memcmp(src, dst, sizeof src));
}

TEST(Element, RealOfEveryType) {
  checkReal<Kvr8u>();
  checkReal<Kvr16s>();
  checkReal<Kvr32s>();
  checkReal<Kvr32f>();
  checkReal<Kvr64s>();
  checkReal<Kvr64f>();
}

}  // namespace
