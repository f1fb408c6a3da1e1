// The standard sweep of element-wise functions: lengths, byte offsets of every array, guard pages, canaries,
// in place against an oracle for one element.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_SWEEP_H
#define KVRS_TESTS_SUPPORT_SWEEP_H

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "kvrs/types.h"
#include "tests/support/arena.h"
#include "tests/support/random.h"

namespace kvrs::test {

// 1 to 70, some lengths of several vectors, and each threshold with its neighbours.
inline std::vector<int> sweepLengths(std::initializer_list<int> thresholds = {}) {
  std::vector<int> lengths;
  for (int len = 1; len <= 70; ++len) lengths.push_back(len);
  for (int len : {127, 128, 129, 191, 255, 256, 257, 300, 511, 513, 1000}) lengths.push_back(len);
  for (int at : thresholds) {
    for (int len = at - 1; len <= at + 1; ++len) {
      if (len > 0) lengths.push_back(len);
    }
  }
  return lengths;
}

template <class T>
bool sameBits(T a, T b) {
  return memcmp(&a, &b, sizeof a) == 0;
}

template <class T>
std::string show(T value) {
  if constexpr (std::is_arithmetic_v<T>) {
    return testing::PrintToString(+value);
  } else {
    return "(" + show(value.re) + ", " + show(value.im) + ")";
  }
}

struct SweepOptions {
  std::vector<int> lengths = sweepLengths();
  KvrStatus status = kvrStatusOk;
  uint64_t seed = 1;
};

// A function dst[i] = oracle(src[i]...): `call(src..., dst, len)` runs it, `same(got, want)` compares.
// `draw(random, source number)` makes a source's elements.
template <class D, class... S, class Call, class Oracle, class Same, class Draw>
void sweepMapWith(Call call, Oracle oracle, Same same, Draw draw, const SweepOptions& options) {
  constexpr size_t sources = sizeof...(S);
  int longest = 0;
  for (int len : options.lengths) longest = std::max(longest, len);
  std::array<std::unique_ptr<Arena>, sources + 1> arenas;
  for (auto& arena : arenas) arena = std::make_unique<Arena>(static_cast<size_t>(longest) * 16 + 64);
  Random random(options.seed);

  const auto run = [&]<size_t... I>(std::index_sequence<I...>, int len, size_t offset, Side side) {
    const size_t n = static_cast<size_t>(len);
    // Every array has an alignment of its own.
    std::tuple<S*...> src{arenas[I]->template place<S>(n, side, (offset * (2 * I + 3) + 5 * I) % 32)...};
    D* dst = arenas[sources]->template place<D>(n, side, offset);
    std::tuple<std::vector<S>...> before{std::vector<S>(n)...};
    for (size_t i = 0; i < n; ++i) {
      ((std::get<I>(before)[i] = draw(random, I, S{}), put(std::get<I>(src), i, std::get<I>(before)[i])),
       ...);
    }
    ASSERT_EQ(options.status, call(static_cast<const S*>(std::get<I>(src))..., dst, len));
    for (size_t i = 0; i < n; ++i) {
      const D want = oracle(std::get<I>(before)[i]...);
      ASSERT_TRUE(same(get(dst, i), want)) << "len " << len << ", offset " << offset << ", element " << i
                                           << ": got " << show(get(dst, i)) << ", want " << show(want);
      ASSERT_TRUE((sameBits(get(std::get<I>(src), i), std::get<I>(before)[i]) && ...)) << "source written";
    }
    for (const auto& arena : arenas) {
      ASSERT_TRUE(arena->intact()) << "written outside, len " << len << ", offset " << offset;
    }
  };
  for (int len : options.lengths) {
    // All offsets where they matter most, a few where the length is long.
    const size_t step = len <= 70 ? 1 : 5;
    for (size_t offset = 0; offset < 32; offset += step) {
      for (Side side : {Side::front, Side::back}) {
        run(std::index_sequence_for<S...>{}, len, offset, side);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

template <class D, class... S, class Call, class Oracle>
void sweepMap(Call call, Oracle oracle, const SweepOptions& options = {}) {
  sweepMapWith<D, S...>(
      call, oracle, [](D a, D b) { return sameBits(a, b); },
      [](Random& random, size_t, auto like) { return random.value<decltype(like)>(); }, options);
}

// The same for a function that works in place: srcDst[i] = oracle(src..., srcDst[i]), `call(src..., srcDst,
// len)`.
template <class T, class... S, class Call, class Oracle, class Same, class Draw>
void sweepInPlaceWith(Call call, Oracle oracle, Same same, Draw draw, const SweepOptions& options) {
  sweepMapWith<T, S..., T>(
      [&](const S*... src, const T* srcDstBefore, T* srcDst, int len) {
        memcpy(static_cast<void*>(srcDst), srcDstBefore, static_cast<size_t>(len) * sizeof(T));
        return call(src..., srcDst, len);
      },
      oracle, same, draw, options);
}

template <class T, class... S, class Call, class Oracle>
void sweepInPlace(Call call, Oracle oracle, const SweepOptions& options = {}) {
  sweepInPlaceWith<T, S...>(
      call, oracle, [](T a, T b) { return sameBits(a, b); },
      [](Random& random, size_t, auto like) { return random.value<decltype(like)>(); }, options);
}

}  // namespace kvrs::test

#endif
