// SPDX-License-Identifier: MIT
#include "kvrs/fill.h"
#include "tests/support/alias.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

// Source and destination in one array, `distance` bytes apart in either direction.
template <class T>
void checkOverlap(KvrStatus (*f)(const T*, T*, int) noexcept, int len, ptrdiff_t distance, size_t offset) {
  const size_t bytes = static_cast<size_t>(len) * sizeof(T);
  const size_t reach = static_cast<size_t>(distance < 0 ? -distance : distance);
  static Arena arena(1 << 16);
  Kvr8u* all = arena.place<Kvr8u>(bytes + reach, offset % 2 == 0 ? Side::back : Side::front, offset);
  Random random(bytes + reach);
  std::vector<Kvr8u> want(bytes + reach);
  for (size_t i = 0; i < want.size(); ++i) all[i] = want[i] = random.value<Kvr8u>();
  const size_t from = distance < 0 ? reach : 0, to = distance < 0 ? 0 : reach;
  std::copy_n(std::vector<Kvr8u>(want.begin() + from, want.begin() + from + bytes).begin(), bytes,
              want.begin() + to);
  ASSERT_EQ(kvrStatusOk, f(reinterpret_cast<const T*>(all + from), reinterpret_cast<T*>(all + to), len));
  ASSERT_EQ(0, memcmp(want.data(), all, want.size())) << "len " << len << ", distance " << distance;
  ASSERT_TRUE(arena.intact());
}

template <class T>
void checkMove(KvrStatus (*f)(const T*, T*, int) noexcept) {
  sweepMap<T, T>(f, [](T a) { return a; });
  for (int len : {1,  2,  3,  4,   5,   7,   8,   9,   15,  16,  17,  31, 33,
                  63, 64, 65, 100, 127, 129, 255, 256, 257, 300, 511, 777}) {
    for (ptrdiff_t distance :
         {0, 1, 2, 3, 4, 8, 12, 15, 16, 17, 31, 32, 33, 63, 64, 65, 100, 128, 255, 256, 1000}) {
      for (size_t offset : {0, 1, 3, 8, 16, 33}) {
        checkOverlap(f, len, distance, offset);
        checkOverlap(f, len, -distance, offset);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

TEST(Move, Type_8u) {
  checkMove(kvrsMove_8u);
}
TEST(Move, Type_16s) {
  checkMove(kvrsMove_16s);
}
TEST(Move, Type_16sc) {
  checkMove(kvrsMove_16sc);
}
TEST(Move, Type_32s) {
  checkMove(kvrsMove_32s);
}
TEST(Move, Type_32f) {
  checkMove(kvrsMove_32f);
}
TEST(Move, Type_32sc) {
  checkMove(kvrsMove_32sc);
}
TEST(Move, Type_32fc) {
  checkMove(kvrsMove_32fc);
}
TEST(Move, Type_64s) {
  checkMove(kvrsMove_64s);
}
TEST(Move, Type_64f) {
  checkMove(kvrsMove_64f);
}
TEST(Move, Type_64sc) {
  checkMove(kvrsMove_64sc);
}
TEST(Move, Type_64fc) {
  checkMove(kvrsMove_64fc);
}

TEST(Move, SecondNames) {
  expectOneFunction({"kvrsMove_32f", "kvrsMove_32s", "kvrsMove_16sc"});
  expectOneFunction({"kvrsMove_64f", "kvrsMove_64s", "kvrsMove_32sc", "kvrsMove_32fc"});
  expectOneFunction({"kvrsMove_64fc", "kvrsMove_64sc"});
}

TEST(Move, OneByteUpward) {
  for (int len : {15, 16, 63, 64, 65}) checkOverlap<Kvr8u>(kvrsMove_8u, len, 1, 0);
}

TEST(Move, EveryShortLengthAndDistance) {
  for (int len = 1; len <= 300; ++len) {
    for (ptrdiff_t distance = -70; distance <= 70; ++distance)
      checkOverlap<Kvr8u>(kvrsMove_8u, len, distance, 5);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(Move, LongVectors) {
  const size_t size = 3 << 20;
  std::vector<Kvr8u> data(size), want;
  for (ptrdiff_t distance : {1, 100, 4096, 1 << 20}) {
    for (bool up : {false, true}) {
      Random random(7);
      for (Kvr8u& b : data) b = static_cast<Kvr8u>(random.bits());
      want = data;
      Kvr8u* low = data.data() + 3;
      const size_t len = size - static_cast<size_t>(distance) - 10;
      memmove(want.data() + 3 + (up ? distance : 0), data.data() + 3 + (up ? 0 : distance), len);
      kvrsMove_8u(low + (up ? 0 : distance), low + (up ? distance : 0), static_cast<int>(len));
      ASSERT_EQ(want, data);
    }
  }
}

}  // namespace
