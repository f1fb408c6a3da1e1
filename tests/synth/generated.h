// Functions that only write: every length, byte offsets, guard pages and canaries.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SYNTH_GENERATED_H
#define KVRS_TESTS_SYNTH_GENERATED_H

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/arena.h"
#include "tests/support/sweep.h"

namespace kvrs::test {

// call(dst, len) stores what want(len), a vector, holds; same(got, want) compares. Lengths beyond a tile of the library's
// (512) are among them.
template <class T, class Call, class Want, class Same>
void expectGenerated(Call call, Want want, Same same, std::vector<int> lengths = sweepLengths({512, 1024})) {
  size_t most = 0;
  for (int len : lengths) most = std::max(most, static_cast<size_t>(len));
  Arena arena(most * sizeof(T));
  size_t turn = 0;
  for (int len : lengths) {
    const size_t n = static_cast<size_t>(len);
    const std::vector<T> expected = want(len);
    ASSERT_EQ(n, expected.size());
    for (Side side : {Side::front, Side::back}) {
      for (size_t offset : {size_t{0}, sizeof(T), turn++ * 7 % 64}) {
        T* dst = arena.place<T>(n, side, offset);
        ASSERT_EQ(kvrStatusOk, call(dst, len));
        ASSERT_TRUE(arena.intact()) << "length " << len << ", offset " << offset;
        for (size_t i = 0; i < n; ++i) {
          ASSERT_TRUE(same(get(dst, i), expected[i]))
              << "element " << i << " of " << len << ", offset " << offset << ": " << show(get(dst, i))
              << " instead of " << show(expected[i]);
        }
      }
    }
  }
}

template <class T, class Call, class Want>
void expectGenerated(Call call, Want want, std::vector<int> lengths = sweepLengths({512, 1024})) {
  expectGenerated<T>(
      call, want, [](T got, T expected) { return sameBits(got, expected); }, lengths);
}

}  // namespace kvrs::test

#endif
