// SPDX-License-Identifier: MIT
#include "tests/support/sweep.h"

#include <algorithm>
#include <array>
#include <cfenv>
#include <memory>

#include "tests/support/core.h"
#include "tests/support/large.h"
#include "tests/support/rounding.h"
#include "tests/support/short.h"

namespace kvrs::test {
namespace {

// Long vectors repeat as many elements: a prime number, so that no two blocks of a loop are the same.
constexpr size_t kPeriod = 4099;
constexpr size_t kOffsets = 64;

struct Run {
  int len = 0;
  size_t offset = 0;
  Side side = Side::back;
  bool tight = false;  // all arrays touch the page behind or before them
  int alias = -1;      // the source that dst is
  int rounding = FE_TONEAREST;
  int threads = 1;
  bool drawn = false;  // with the elements that there are
};

std::string describe(const Run& run) {
  std::string text = "len " + std::to_string(run.len) + ", offset " + std::to_string(run.offset);
  if (run.side == Side::front) text += " from the front";
  if (run.alias >= 0) text += ", dst is source " + std::to_string(run.alias);
  if (run.rounding != FE_TONEAREST) text += ", rounding mode " + std::to_string(run.rounding);
  if (run.threads != 1) text += ", " + std::to_string(run.threads) + " threads";
  return text;
}

// Arrays are reused by all sweeps: to map and clear pages would cost more than most calls.
Arena& arenaOf(size_t slot) {
  static auto& all = *new std::array<Arena, 8>;
  return all.at(slot);
}

// Fills n elements by repeating the first `period` of them.
void repeat(uint8_t* to, const uint8_t* from, size_t elementBytes, size_t n, size_t period) {
  for (size_t i = 0; i < n; i += period) {
    memcpy(to + i * elementBytes, from, std::min(period, n - i) * elementBytes);
  }
}

class Sweep {
 public:
  Sweep(const SweepCase& c, const SweepOptions& options) : c_(c), options_(options), random_(options.seed) {
    for (size_t bytes : c.sourceBytes) before_.emplace_back(kPeriod * bytes);
    got_.resize(kPeriod * c.resultBytes);
    want_.resize(kPeriod * c.resultBytes);
    for (int len : options.lengths) {
      if (isShort() && len > 40 && len % 3 != 0) continue;
      lengths_.push_back(len);
    }
  }

  void all() {
    atAllOffsets();
    onSources();
    underAllModes();
    farAway();
  }

 private:
  // Sources that have an array of their own.
  size_t arrays() const { return before_.size() - (c_.inPlace ? 1 : 0); }

  bool run(const Run& r) {
    runOne(r);
    return !testing::Test::HasFatalFailure();
  }

  // Sources of so many elements, and what becomes of them.
  void draw(size_t period, const Run& r) {
    std::vector<const void*> before;
    for (size_t s = 0; s < before_.size(); ++s) {
      c_.draw(random_, s, before_[s].data(), period);
      before.push_back(before_[s].data());
    }
    // In place, a source that is srcDst is the same elements.
    if (c_.inPlace && r.alias >= 0) before_[static_cast<size_t>(r.alias)] = before_.back();
    const bool follows = options_.rounding == Rounding::followed;
    if (follows) std::fesetround(r.rounding);
    c_.oracle(before.data(), want_.data(), period);
    if (follows) std::fesetround(FE_TONEAREST);
  }

  void runOne(const Run& r) {
    const size_t n = static_cast<size_t>(r.len), period = std::min(n, kPeriod);
    const size_t dstBytes = n * c_.resultBytes;
    if (!r.drawn) draw(period, r);

    std::vector<const Arena*> arenas = {&arenaOf(0)};
    uint8_t* dst = arenaOf(0).place<uint8_t>(dstBytes, r.side, r.offset);
    if (c_.inPlace) repeat(dst, before_.back().data(), c_.resultBytes, n, period);
    std::vector<const void*> src;
    for (size_t s = 0; s < arrays(); ++s) {
      const size_t bytes = n * c_.sourceBytes[s];
      uint8_t* array = dst;
      if (static_cast<int>(s) != r.alias) {
        Arena& arena = arenaOf(s + 1);
        arenas.push_back(&arena);
        // Every array has an alignment of its own.
        array =
            arena.place<uint8_t>(bytes, r.side, r.tight ? 0 : (r.offset * (2 * s + 3) + 5 * s) % kOffsets);
      }
      repeat(array, before_[s].data(), c_.sourceBytes[s], n, period);
      src.push_back(array);
    }

    KvrStatus status;
    {
      ThreadCount threads(r.threads);
      status = callWithRounding(r.rounding, [&] { return c_.call(src.data(), dst, r.len); });
    }
    ASSERT_EQ(options_.status, status) << describe(r);
    for (size_t i = 0; i < n; i += period) {
      const size_t count = std::min(period, n - i);
      const uint8_t* results = dst + i * c_.resultBytes;
      if (memcmp(results, want_.data(), count * c_.resultBytes) == 0) continue;
      memcpy(got_.data(), results, count * c_.resultBytes);
      const size_t wrong = c_.firstWrong(got_.data(), want_.data(), count);
      ASSERT_EQ(count, wrong) << describe(r) << ", element " << i + wrong << ": got "
                              << c_.show(got_.data(), wrong) << ", want " << c_.show(want_.data(), wrong);
    }
    for (size_t s = 0; s < src.size(); ++s) {
      if (static_cast<int>(s) == r.alias) continue;
      const auto* array = static_cast<const uint8_t*>(src[s]);
      for (size_t i = 0; i < n; i += period) {
        const size_t bytes = std::min(period, n - i) * c_.sourceBytes[s];
        ASSERT_EQ(0, memcmp(array + i * c_.sourceBytes[s], before_[s].data(), bytes))
            << describe(r) << ": source written";
      }
    }
    for (const Arena* arena : arenas) ASSERT_TRUE(arena->intact()) << describe(r) << ": written outside";
  }

  // Every offset within a block, from the front and from the back by turns, where they matter most; in three lengths where
  // a length is two vectors or more, and a few where it is long. Both ends, with nothing between the arrays and the page
  // behind or before them.
  void atAllOffsets() {
    size_t turn = 0;
    for (int len : lengths_) {
      for (Side side : {Side::front, Side::back}) {
        if (!run({.len = len, .side = side, .tight = true})) return;
      }
      const size_t step = isShort() ? 11 : len <= 34 ? 1 : len <= 70 ? 3 : 9;
      for (size_t offset = turn % step; offset < kOffsets; offset += step) {
        const Side side = (turn + offset) % 2 == 0 ? Side::front : Side::back;
        if (!run({.len = len, .offset = offset, .side = side})) return;
      }
      ++turn;
    }
  }

  bool canBe(size_t source) const {
    if (c_.inPlace) return c_.sourceTypes[source] == c_.sourceTypes.back();
    return c_.sourceBytes[source] == c_.resultBytes;
  }

  // `check(source)` for every source that dst may be.
  template <class Check>
  void forAliases(Check check) {
    if (!options_.dstMayBeSource) return;
    for (size_t s = 0; s < arrays(); ++s) {
      if (canBe(s) && !check(static_cast<int>(s))) return;
    }
  }

  void onSources() {
    forAliases([&](int source) {
      size_t turn = 0;
      for (int len : lengths_) {
        for (size_t offset : {size_t{0}, 7 * turn % kOffsets}) {
          if (!run({.len = len, .offset = offset, .alias = source})) return false;
        }
        ++turn;
      }
      return true;
    });
  }

  void underAllModes() {
    const bool ignores = options_.rounding == Rounding::byType && c_.allIntegers;
    if (options_.rounding == Rounding::byType && !ignores) return;
    for (int mode : kCallerModes) {
      if (mode == FE_TONEAREST) continue;
      size_t turn = 0;
      for (int len : lengths_) {
        ++turn;
        if (len > 33 && turn % 3 != 0) continue;
        if (!run({.len = len, .offset = 5 * turn % kOffsets, .rounding = mode})) return;
      }
    }
  }

  // What is far away shows by lengths, places and threads: the elements are drawn once for all of them.
  void farAway() {
    if (!options_.far) return;
    draw(kPeriod, {});
    for (int len : {1365, 2051, 4100, 10007}) {
      if (!run({.len = len, .tight = true, .drawn = true}) ||
          !run({.len = len, .offset = 27, .side = Side::front, .drawn = true}))
        return;
    }
    size_t elementBytes = c_.resultBytes;
    for (size_t s = 0; s < arrays(); ++s) elementBytes += c_.sourceBytes[s];
    const int far = static_cast<int>(kFarBytes / elementBytes) + 77;
    if (!run({.len = far, .tight = true, .drawn = true})) return;
    if (!isShort() && !run({.len = far, .offset = 28, .side = Side::front, .drawn = true})) return;
    if (!run({.len = far, .offset = 5, .threads = 3, .drawn = true})) return;
    if (const int from = options_.threadedFrom; from > 0) {
      for (int threads : {1, 2, 3, 8}) {
        for (int len : {from - 1, from, from + 7}) {
          if (len > 0 && !run({.len = len, .offset = 12, .threads = threads, .drawn = true})) return;
        }
      }
    }
    forAliases([&](int source) {
      if (c_.inPlace) draw(kPeriod, {.alias = source});
      return run({.len = 2051, .offset = 3, .alias = source, .drawn = true}) &&
             run({.len = far, .offset = 4, .alias = source, .drawn = true}) &&
             run({.len = far, .offset = 9, .alias = source, .threads = 3, .drawn = true});
    });
  }

  const SweepCase& c_;
  const SweepOptions& options_;
  Random random_;
  std::vector<int> lengths_;
  std::vector<std::vector<uint8_t>> before_;  // a period of each source
  std::vector<uint8_t> got_, want_;
};

}  // namespace

std::vector<int> sweepLengths(std::initializer_list<int> thresholds) {
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

void sweep(const SweepCase& c, const SweepOptions& options) {
  Sweep(c, options).all();
}

}  // namespace kvrs::test
