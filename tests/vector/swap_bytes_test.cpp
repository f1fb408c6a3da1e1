// SPDX-License-Identifier: MIT
#include "kvrs/reorder.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

template <class T>
T swapped(T a) {
  T result = 0;
  for (size_t i = 0; i < sizeof(T); ++i) {
    result |= static_cast<T>(static_cast<T>(a >> (8 * i) & 0xFF) << (8 * (sizeof(T) - 1 - i)));
  }
  return result;
}

TEST(SwapBytes, Words) {
  sweepMap<Kvr16u, Kvr16u>(kvrsSwapBytes_16u, swapped<Kvr16u>);
  sweepMap<Kvr32u, Kvr32u>(kvrsSwapBytes_32u, swapped<Kvr32u>);
  sweepMap<Kvr64u, Kvr64u>(kvrsSwapBytes_64u, swapped<Kvr64u>);
  sweepInPlace<Kvr16u>(kvrsSwapBytes_16u_I, swapped<Kvr16u>);
  sweepInPlace<Kvr32u>(kvrsSwapBytes_32u_I, swapped<Kvr32u>);
  sweepInPlace<Kvr64u>(kvrsSwapBytes_64u_I, swapped<Kvr64u>);
}

struct Triple {
  Kvr8u low, middle, high;
};

}  // namespace

template <>
Triple kvrs::test::Random::value<Triple>() {
  return {value<Kvr8u>(), value<Kvr8u>(), value<Kvr8u>()};
}
template <>
std::string kvrs::test::show<Triple>(Triple t) {
  return show(t.low) + " " + show(t.middle) + " " + show(t.high);
}

namespace {

TEST(SwapBytes, Triples) {
  const auto oracle = [](Triple a) { return Triple{a.high, a.middle, a.low}; };
  const auto bytes = [](const Triple* p) { return reinterpret_cast<const Kvr8u*>(p); };
  const auto mutableBytes = [](Triple* p) { return reinterpret_cast<Kvr8u*>(p); };
  sweepMap<Triple, Triple>([=](const Triple* src, Triple* dst,
                               int len) { return kvrsSwapBytes_24u(bytes(src), mutableBytes(dst), len); },
                           oracle);
  sweepInPlace<Triple>(
      [=](Triple* srcDst, int len) { return kvrsSwapBytes_24u_I(mutableBytes(srcDst), len); }, oracle);
}

}  // namespace
