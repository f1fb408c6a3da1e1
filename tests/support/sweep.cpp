// SPDX-License-Identifier: MIT
#include "tests/support/sweep.h"

#include <algorithm>
#include <memory>

namespace kvrs::test {
namespace {

class Sweep {
 public:
  Sweep(const SweepCase& c, const SweepOptions& options, size_t longest)
      : c_(c), options_(options), random_(options.seed) {
    for (size_t bytes : c.sourceBytes) {
      arenas_.push_back(std::make_unique<Arena>(longest * bytes));
      before_.emplace_back(longest * bytes);
    }
    arenas_.push_back(std::make_unique<Arena>(longest * c.resultBytes));
    got_.resize(longest * c.resultBytes);
    want_.resize(longest * c.resultBytes);
  }

  void run(int len, size_t offset, Side side) {
    const size_t n = static_cast<size_t>(len), sources = before_.size(), dstBytes = n * c_.resultBytes;
    std::vector<const void*> src, before;
    for (size_t s = 0; s < sources; ++s) {
      const size_t bytes = n * c_.sourceBytes[s];
      c_.draw(random_, s, before_[s].data(), n);
      // Every array has an alignment of its own.
      uint8_t* array = arenas_[s]->place<uint8_t>(bytes, side, (offset * (2 * s + 3) + 5 * s) % 32);
      memcpy(array, before_[s].data(), bytes);
      src.push_back(array);
      before.push_back(before_[s].data());
    }
    uint8_t* dst = arenas_[sources]->place<uint8_t>(dstBytes, side, offset);

    ASSERT_EQ(options_.status, c_.call(src.data(), dst, len));
    c_.oracle(before.data(), want_.data(), n);
    memcpy(got_.data(), dst, dstBytes);
    const size_t wrong = c_.firstWrong(got_.data(), want_.data(), n);
    ASSERT_EQ(n, wrong) << "len " << len << ", offset " << offset << ", element " << wrong << ": got "
                        << c_.show(got_.data(), wrong) << ", want " << c_.show(want_.data(), wrong);
    for (size_t s = 0; s < sources; ++s) {
      ASSERT_EQ(0, memcmp(src[s], before[s], n * c_.sourceBytes[s])) << "source written";
    }
    for (const auto& arena : arenas_) {
      ASSERT_TRUE(arena->intact()) << "written outside, len " << len << ", offset " << offset;
    }
  }

 private:
  const SweepCase& c_;
  const SweepOptions& options_;
  Random random_;
  std::vector<std::unique_ptr<Arena>> arenas_;
  std::vector<std::vector<uint8_t>> before_;
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
  const int longest = *std::max_element(options.lengths.begin(), options.lengths.end());
  Sweep sweep(c, options, static_cast<size_t>(longest));
  for (int len : options.lengths) {
    // All offsets where they matter most, a few where the length is long.
    const size_t step = len <= 70 ? 1 : 5;
    for (size_t offset = 0; offset < 32; offset += step) {
      for (Side side : {Side::front, Side::back}) {
        sweep.run(len, offset, side);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

}  // namespace kvrs::test
