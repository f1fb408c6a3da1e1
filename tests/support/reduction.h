// The sweep of functions that make one result of one or two vectors: lengths, byte offsets of every array, guard pages,
// canaries around the result.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_REDUCTION_H
#define KVRS_TESTS_SUPPORT_REDUCTION_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/random.h"
#include "tests/support/short.h"
#include "tests/support/sweep.h"

namespace kvrs::test {

// What the sweep needs to know, without types. Arrays may have any address.
class ReductionCase {
 public:
  std::vector<size_t> sourceBytes;  // of one element
  size_t resultBytes = 0;

  virtual void draw(Random& random, size_t source, void* elements, size_t n) const = 0;
  virtual KvrStatus call(const void* const* src, int len, void* result) const = 0;
  // What is wrong with a result; nothing, if it is right.
  virtual std::string judge(const void* const* src, int len, const void* result) const = 0;

 protected:
  ~ReductionCase() = default;
};

inline void sweepReductionCase(const ReductionCase& c, const SweepOptions& options) {
  const size_t longest =
      static_cast<size_t>(*std::max_element(options.lengths.begin(), options.lengths.end()));
  Random random(options.seed);
  std::vector<std::unique_ptr<Arena>> arenas;
  for (size_t bytes : c.sourceBytes) arenas.push_back(std::make_unique<Arena>(longest * bytes));
  Arena resultArena(c.resultBytes);
  std::vector<uint8_t> before, result(c.resultBytes);
  for (int len : options.lengths) {
    const size_t n = static_cast<size_t>(len), step = inFull(len <= 70 ? 3 : len <= 10000 ? 7 : 17, 17);
    for (size_t offset = 0; offset < 33; offset += step) {
      for (Side side : {Side::front, Side::back}) {
        std::vector<const void*> src;
        before.clear();
        for (size_t s = 0; s < arenas.size(); ++s) {
          const size_t bytes = n * c.sourceBytes[s];
          std::vector<uint8_t> elements(bytes);
          c.draw(random, s, elements.data(), n);
          uint8_t* array = arenas[s]->place<uint8_t>(bytes, side, (offset * (2 * s + 1) + 4 * s) % 32);
          memcpy(array, elements.data(), bytes);
          src.push_back(array);
          before.insert(before.end(), elements.begin(), elements.end());
        }
        uint8_t* to = resultArena.place<uint8_t>(c.resultBytes, side, offset);
        ASSERT_EQ(options.status, c.call(src.data(), len, to)) << "len " << len;
        memcpy(result.data(), to, c.resultBytes);
        const std::string wrong = c.judge(src.data(), len, result.data());
        ASSERT_EQ("", wrong) << "len " << len << ", offset " << offset;
        ASSERT_TRUE(resultArena.intact());
        size_t at = 0;
        for (size_t s = 0; s < src.size(); at += n * c.sourceBytes[s], ++s) {
          ASSERT_EQ(0, memcmp(src[s], before.data() + at, n * c.sourceBytes[s])) << "source written";
        }
      }
    }
  }
}

// A result of type R: `call(src..., len, &result)` runs the function and `judge(src..., len, result)` says what is wrong.
// `draw(random, source number, T{})` makes a source's elements, of type T.
template <class R, class... S, class Call, class Judge, class Draw>
void sweepReductionWith(Call call, Judge judge, Draw draw, const SweepOptions& options = {}) {
  class Case final : public ReductionCase {
   public:
    Case(Call& c, Judge& j, Draw& d) : call_(c), judge_(j), draw_(d) {
      sourceBytes = {sizeof(S)...};
      resultBytes = sizeof(R);
    }
    void draw(Random& random, size_t source, void* elements, size_t n) const override {
      size_t k = 0;
      const auto fill = [&]<class T>(T* to) {
        if (k++ != source) return;
        for (size_t i = 0; i < n; ++i) put(to, i, T(draw_(random, source, T{})));
      };
      (fill(static_cast<S*>(elements)), ...);
    }
    KvrStatus call(const void* const* src, int len, void* result) const override {
      return [&]<size_t... I>(std::index_sequence<I...>) {
        return call_(static_cast<const S*>(src[I])..., len, static_cast<R*>(result));
      }
      (std::index_sequence_for<S...>());
    }
    std::string judge(const void* const* src, int len, const void* result) const override {
      R r;
      memcpy(&r, result, sizeof r);
      return [&]<size_t... I>(std::index_sequence<I...>) {
        return judge_(static_cast<const S*>(src[I])..., len, r);
      }
      (std::index_sequence_for<S...>());
    }

   private:
    Call& call_;
    Judge& judge_;
    Draw& draw_;
  };
  sweepReductionCase(Case(call, judge, draw), options);
}

// The usual data: any integers, floats in [-1, 1).
inline auto anyValues() {
  return [](Random& random, size_t, auto like) { return random.value<decltype(like)>(); };
}

// A judge for results that are the same to the bit as oracle(src..., len).
template <class R, class Oracle>
auto exactly(Oracle oracle) {
  return [oracle](auto... srcLenResult) -> std::string {
    const auto all = std::tuple(srcLenResult...);
    constexpr size_t last = sizeof...(srcLenResult) - 1;
    const R got = std::get<last>(all);
    const R want = [&]<size_t... I>(std::index_sequence<I...>) {
      return R(oracle(std::get<I>(all)...));
    }
    (std::make_index_sequence<last>());
    return sameBits(got, want) ? "" : "got " + show(got) + ", want " + show(want);
  };
}

template <class R, class... S, class Call, class Oracle>
void sweepReduction(Call call, Oracle oracle, const SweepOptions& options = {}) {
  sweepReductionWith<R, S...>(call, exactly<R>(oracle), anyValues(), options);
}

// value * 2^(-scaleFactor) to nearest, ties to even, saturated, of a value that is exact in extended precision.
template <class D>
D scaledOracle(long double value, int scaleFactor) {
  const int bounded = std::max(-8000, std::min(8000, scaleFactor));
  const long double rounded = std::nearbyint(std::ldexp(value, -bounded));
  if (rounded <= static_cast<long double>(std::numeric_limits<D>::min()))
    return std::numeric_limits<D>::min();
  if (rounded >= static_cast<long double>(std::numeric_limits<D>::max()))
    return std::numeric_limits<D>::max();
  return static_cast<D>(rounded);
}

// Scale factors around everything that could be a threshold.
inline constexpr int kScaleFactors[] = {0,
                                        1,
                                        2,
                                        7,
                                        15,
                                        16,
                                        17,
                                        31,
                                        32,
                                        33,
                                        47,
                                        48,
                                        61,
                                        62,
                                        63,
                                        64,
                                        100,
                                        2000,
                                        -1,
                                        -2,
                                        -7,
                                        -15,
                                        -16,
                                        -17,
                                        -31,
                                        -32,
                                        -33,
                                        -63,
                                        -64,
                                        -2000,
                                        std::numeric_limits<int>::max(),
                                        std::numeric_limits<int>::min()};

}  // namespace kvrs::test

#endif
