// SPDX-License-Identifier: MIT
#include "frame/unaligned.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "kvrs/types.h"

using namespace kvrs;

namespace {

// Every address, next to a page's end too: not a byte more than the element.
template <class T>
void expectEveryAddress(T value) {
  unsigned char bytes[sizeof(T) + 17], want[sizeof bytes];
  for (size_t at = 0; at <= 16; ++at) {
    memset(bytes, 0xA5, sizeof bytes);
    memset(want, 0xA5, sizeof want);
    memcpy(want + at, &value, sizeof value);
    unaligned::put(value, reinterpret_cast<T*>(bytes + at));
    EXPECT_EQ(0, memcmp(want, bytes, sizeof bytes)) << at;
    const T got = unaligned::get(reinterpret_cast<const T*>(bytes + at));
    EXPECT_EQ(0, memcmp(&value, &got, sizeof got)) << at;
  }
}

TEST(Unaligned, EveryTypeAtEveryAddress) {
  expectEveryAddress<Kvr8u>(0x12);
  expectEveryAddress<Kvr16s>(-0x1234);
  expectEveryAddress<Kvr32u>(0x12345678);
  expectEveryAddress<Kvr64s>(-0x123456789ABCDEF0);
  expectEveryAddress<Kvr32f>(1.1f);
  expectEveryAddress<Kvr64f>(-1.1);
  expectEveryAddress<Kvr16sc>({0x1234, -2});
  expectEveryAddress<Kvr64fc>({1.1, -2.2});
}

// A loop over an array at an odd address, which a compiler that took elements for aligned ones would run in vectors
// that are.
[[gnu::noinline]] double sumOf(const Kvr64f* p, int len) {
  double sum = 0;
  for (int i = 0; i < len; ++i) sum += unaligned::get(p + i);
  return sum;
}

TEST(Unaligned, Loops) {
  unsigned char bytes[8 * 32 + 8];
  for (size_t at = 1; at < 8; ++at) {
    for (int i = 0; i < 32; ++i) unaligned::put(i + 0.5, reinterpret_cast<Kvr64f*>(bytes + at) + i);
    EXPECT_EQ(31 * 16 + 16, sumOf(reinterpret_cast<const Kvr64f*>(bytes + at), 32));
  }
}

// An array that was written as something else, as callers' arrays are.
[[gnu::noinline]] uint32_t readBack(uint32_t* words, Kvr32f* same) {
  *words = 0x3F800000;
  unaligned::put(2.0f, same);
  return *words;
}

TEST(Unaligned, OfAnotherType) {
  uint32_t word;
  EXPECT_EQ(0x40000000u, readBack(&word, reinterpret_cast<Kvr32f*>(&word)));
}

}  // namespace
