// Sparse filters against their definition.
// SPDX-License-Identifier: MIT
#include "kvrs/sparse.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/random.h"

using namespace kvrs::test;

namespace {

int64_t up16(int64_t bytes) {
  return (bytes + 15) / 16 * 16;
}

struct List {
  std::vector<float> taps;
  std::vector<int> positions;

  int order() const { return positions.back(); }
  int count() const { return static_cast<int>(taps.size()); }
};

List randomList(Random& random, int count, int least, int spread, int most) {
  List list;
  int position = least + static_cast<int>(random.below(static_cast<uint32_t>(spread)));
  for (int i = 0; i < count; ++i) {
    list.positions.push_back(position);
    position += 1 + static_cast<int>(random.below(static_cast<uint32_t>(spread)));
    list.taps.push_back(
        static_cast<float>(static_cast<int>(random.below(static_cast<uint32_t>(2 * most + 1))) - most));
  }
  return list;
}

std::vector<float> wholeSamples(Random& random, int count, int most) {
  std::vector<float> samples(static_cast<size_t>(count));
  for (float& x : samples)
    x = static_cast<float>(static_cast<int>(random.below(static_cast<uint32_t>(2 * most + 1))) - most);
  return samples;
}

// It remembers everything. The feedback is added in single precision in the stated order, the rest is exact.
class Oracle {
 public:
  Oracle(const List& inputs, const List& outputs, const std::vector<float>& line)
      : in_(inputs), out_(outputs) {
    const auto order1 = static_cast<size_t>(in_.order()),
               order2 = out_.taps.empty() ? 0 : static_cast<size_t>(out_.order());
    x_.assign(order1, 0);
    y_.assign(order2, 0);
    for (size_t i = 0; i < order1 && !line.empty(); ++i) x_[order1 - 1 - i] = line[i];
    for (size_t i = 0; i < order2 && !line.empty(); ++i) y_[order2 - 1 - i] = line[order1 + i];
  }

  std::vector<float> run(const std::vector<float>& samples) {
    std::vector<float> result;
    for (float x : samples) {
      x_.push_back(x);
      double sum = 0;
      for (size_t i = 0; i < in_.taps.size(); ++i) {
        sum += double{in_.taps[i]} * x_[x_.size() - 1 - static_cast<size_t>(in_.positions[i])];
      }
      float y = static_cast<float>(sum);
      for (size_t i = out_.taps.size(); i-- > 0;) {
        const float term = out_.taps[i] * y_[y_.size() - static_cast<size_t>(out_.positions[i])];
        y = y + term;
      }
      y_.push_back(y);
      result.push_back(y);
    }
    return result;
  }

 private:
  List in_, out_;
  std::vector<float> x_, y_;
};

struct Buffer {
  explicit Buffer(int size) : memory(static_cast<size_t>(size) + 16) {}
  Kvr8u* get() { return memory.data(); }
  std::vector<Kvr8u> memory;
};

TEST(Sparse, Sizes) {
  for (int n = 1; n <= 64; ++n) {
    for (int order = 1; order <= 300; ++order) {
      int size = 0;
      ASSERT_EQ(kvrStatusOk, kvrsFIRSparseGetStateSize_32f(n, order, &size));
      ASSERT_EQ(2 * up16(4 * n) + up16(8 * order) + 16 * n + 48, size);
    }
  }
  for (int n1 : {1, 2, 3, 4, 5, 33}) {
    for (int n2 : {0, 1, 2, 7}) {
      for (int order1 : {0, 1, 2, 3, 100}) {
        for (int order2 : {0, 1, 2, 77}) {
          int size = 0;
          ASSERT_EQ(kvrStatusOk, kvrsIIRSparseGetStateSize_32f(n1, n2, order1, order2, &size));
          const int64_t histories = 8 * (order1 + order2) + 23;
          ASSERT_EQ(2 * up16(4 * n1) + 2 * up16(4 * n2) + histories - histories % 16 + 64, size);
        }
      }
    }
  }
  int size = 77;
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIRSparseGetStateSize_32f(0, 0, nullptr));
  EXPECT_EQ(kvrStatusBadTapsLength, kvrsFIRSparseGetStateSize_32f(0, 1, &size));
  EXPECT_EQ(kvrStatusBadTapsLength, kvrsFIRSparseGetStateSize_32f(1, 0, &size));
  EXPECT_EQ(kvrStatusBadTapsLength, kvrsFIRSparseGetStateSize_32f(1, INT_MAX, &size));
  EXPECT_EQ(kvrStatusNullPointer, kvrsIIRSparseGetStateSize_32f(0, 0, 0, 0, nullptr));
  EXPECT_EQ(kvrStatusBadIirOrder, kvrsIIRSparseGetStateSize_32f(0, 1, -1, 1, &size));
  EXPECT_EQ(kvrStatusBadIirOrder, kvrsIIRSparseGetStateSize_32f(1, -1, 1, 1, &size));
  EXPECT_EQ(kvrStatusBadSparseIndex, kvrsIIRSparseGetStateSize_32f(1, 0, -1, 1, &size));
  EXPECT_EQ(kvrStatusBadSparseIndex, kvrsIIRSparseGetStateSize_32f(1, 0, 1, -1, &size));
  EXPECT_EQ(kvrStatusBadIirOrder, kvrsIIRSparseGetStateSize_32f(1, 1, INT_MAX, INT_MAX, &size));
  EXPECT_EQ(77, size);
}

TEST(Sparse, OrderOfChecks) {
  const float taps[4] = {1, 2, 3, 4};
  std::vector<Kvr8u> buffer(4096);
  KvrsFIRSparseState_32f* fir = nullptr;
  KvrsIIRSparseState_32f* iir = nullptr;
  const auto initFir = [&](std::vector<int> positions, int n) {
    return kvrsFIRSparseInit_32f(&fir, taps, positions.data(), n, nullptr, buffer.data());
  };
  const auto initIir = [&](std::vector<int> positions, int n1, int n2) {
    return kvrsIIRSparseInit_32f(&iir, taps, positions.data(), n1, n2, nullptr, buffer.data());
  };
  const auto before = buffer;
  EXPECT_EQ(kvrStatusBadTapsLength, initFir({-1}, 0));
  EXPECT_EQ(kvrStatusBadSparseIndex, initFir({-1, 3}, 2));
  EXPECT_EQ(kvrStatusBadSparseIndex, initFir({3, 3}, 2));
  EXPECT_EQ(kvrStatusBadSparseIndex, initFir({0, 5, 4}, 3));
  EXPECT_EQ(kvrStatusBadSparseIndex, initFir({INT_MIN}, 1));
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIRSparseInit_32f(&fir, nullptr, nullptr, 0, nullptr, buffer.data()));
  EXPECT_EQ(kvrStatusBadIirOrder, initIir({-1, 1}, 0, 1));
  EXPECT_EQ(kvrStatusBadIirOrder, initIir({-1, 1}, 1, 0));
  EXPECT_EQ(kvrStatusBadSparseIndex, initIir({0, 0}, 1, 1));
  EXPECT_EQ(kvrStatusBadSparseIndex, initIir({0, -1}, 1, 1));
  EXPECT_EQ(kvrStatusBadSparseIndex, initIir({-1, 1}, 1, 1));
  EXPECT_EQ(kvrStatusBadSparseIndex, initIir({0, 0, 1}, 2, 1));
  EXPECT_EQ(kvrStatusBadSparseIndex, initIir({0, 1, 1, 1}, 2, 2));
  EXPECT_EQ(nullptr, fir);
  EXPECT_EQ(nullptr, iir);
  EXPECT_EQ(before, buffer);
  EXPECT_EQ(kvrStatusOk, initFir({0, 5, 6}, 3));
  EXPECT_EQ(kvrStatusOk, initIir({0, 3, 1, 7}, 2, 2));
}

// A call of every length and alignment, between pages that may not be touched, and what it leaves for the next ones.
void checkStream(const List& inputs, const List& outputs, const std::vector<int>& lengths, Random& random,
                 int most) {
  const bool feedsBack = !outputs.taps.empty();
  const int order2 = feedsBack ? outputs.order() : 0;
  int size;
  if (feedsBack) {
    ASSERT_EQ(kvrStatusOk,
              kvrsIIRSparseGetStateSize_32f(inputs.count(), outputs.count(), inputs.order(), order2, &size));
  } else {
    ASSERT_EQ(kvrStatusOk, kvrsFIRSparseGetStateSize_32f(inputs.count(), std::max(inputs.order(), 1), &size));
  }
  const auto line = wholeSamples(random, inputs.order() + order2, most);
  static Arena stateArena(1 << 16), srcArena(1 << 16), dstArena(1 << 16), tapsArena(4096),
      positionsArena(4096), lineArena(1 << 16);
  const Side side = random.below(2) == 0 ? Side::front : Side::back;
  auto* buffer = stateArena.place<Kvr8u>(static_cast<size_t>(size), side, random.below(32));
  auto all = inputs;
  all.taps.insert(all.taps.end(), outputs.taps.begin(), outputs.taps.end());
  all.positions.insert(all.positions.end(), outputs.positions.begin(), outputs.positions.end());
  auto* taps = tapsArena.place<float>(all.taps.size(), side, random.below(9));
  auto* positions = positionsArena.place<int>(all.taps.size(), side, random.below(9));
  auto* lineAt = lineArena.place<float>(line.size(), side, random.below(9));
  memcpy(static_cast<void*>(taps), all.taps.data(), all.taps.size() * 4);
  memcpy(static_cast<void*>(positions), all.positions.data(), all.taps.size() * 4);
  if (!line.empty()) memcpy(static_cast<void*>(lineAt), line.data(), line.size() * 4);
  const bool silent = random.below(4) == 0;
  KvrsFIRSparseState_32f* fir = nullptr;
  KvrsIIRSparseState_32f* iir = nullptr;
  if (feedsBack) {
    ASSERT_EQ(kvrStatusOk, kvrsIIRSparseInit_32f(&iir, taps, positions, inputs.count(), outputs.count(),
                                                 silent ? nullptr : lineAt, buffer));
  } else {
    ASSERT_EQ(kvrStatusOk, kvrsFIRSparseInit_32f(&fir, taps, positions, inputs.count(),
                                                 silent ? nullptr : lineAt, buffer));
  }
  Oracle oracle(inputs, outputs, silent ? std::vector<float>() : line);
  for (int len : lengths) {
    const auto samples = wholeSamples(random, len, most);
    auto* src = srcArena.place<float>(samples.size(), side, random.below(64));
    auto* dst = dstArena.place<float>(samples.size(), side, random.below(64));
    memcpy(static_cast<void*>(src), samples.data(), samples.size() * 4);
    ASSERT_EQ(kvrStatusOk,
              feedsBack ? kvrsIIRSparse_32f(src, dst, len, iir) : kvrsFIRSparse_32f(src, dst, len, fir));
    const auto want = oracle.run(samples);
    for (size_t i = 0; i < want.size(); ++i) {
      ASSERT_EQ(want[i], get(dst, i)) << i << " of " << len << ", orders " << inputs.order() << " " << order2;
    }
    ASSERT_TRUE(stateArena.intact() && srcArena.intact() && dstArena.intact());
  }
}

TEST(Sparse, Fir) {
  Random random;
  for (int count : {1, 2, 3, 5, 20}) {
    for (int spread : {1, 2, 9, 60}) {
      for (int start = 1; start <= 70; start += 3) {
        checkStream(randomList(random, count, 0, spread, 8), {}, {start, 1, start + 1, 3, 2 * start, 300},
                    random, 500);
        if (HasFailure()) return;
      }
    }
  }
}

// One tap at position 0 has no history.
TEST(Sparse, OrderZero) {
  Random random;
  for (int len = 1; len < 80; ++len) checkStream({{3}, {0}}, {}, {len, 2}, random, 100);
  for (int len = 1; len < 80; ++len) checkStream({{3}, {0}}, {{-1}, {1}}, {len, 2}, random, 100);
}

// Feedback by whole numbers that do not let the outputs grow beyond what is exact: 1 or -1 at one place; and random feedback,
// whose order of operations is stated.
TEST(Sparse, Iir) {
  Random random;
  for (int count : {1, 2, 5}) {
    for (int place : {1, 2, 3, 4, 5, 7, 8, 15, 16, 17, 32, 40, 64, 128}) {
      for (int len : {1, 2, 5, 16, 17, 39, 40, 41, 100, 333}) {
        const List inputs = randomList(random, count, 0, 9, 8);
        checkStream(inputs, {{random.below(2) == 0 ? 1.0f : -1.0f}, {place}}, {len, 3, len, 50}, random, 50);
        List outputs = randomList(random, count, place, 12, 8);
        for (float& tap : outputs.taps) tap = static_cast<float>(random.unit()) / static_cast<float>(count);
        checkStream(inputs, outputs, {len, 3, len, 50}, random, 50);
        if (HasFailure()) return;
      }
    }
  }
}

// The filter y[n] = x[n] + a y[n-1].
TEST(Sparse, FirstOrder) {
  const float taps[2] = {1, 0.5f};
  const int positions[2] = {0, 1};
  Buffer buffer(1000);
  KvrsIIRSparseState_32f* state;
  ASSERT_EQ(kvrStatusOk, kvrsIIRSparseInit_32f(&state, taps, positions, 1, 1, nullptr, buffer.get()));
  const float x[4] = {8, 0, 0, 1};
  float y[4];
  ASSERT_EQ(kvrStatusOk, kvrsIIRSparse_32f(x, y, 4, state));
  EXPECT_EQ(8, y[0]);
  EXPECT_EQ(4, y[1]);
  EXPECT_EQ(2, y[2]);
  EXPECT_EQ(2, y[3]);
}

// A longer history moves on by one with each sample.
TEST(Sparse, SingleSamples) {
  Random random;
  checkStream(randomList(random, 7, 0, 30, 8), {}, std::vector<int>(300, 1), random, 100);
  checkStream(randomList(random, 3, 90, 30, 8), {{1}, {100}}, std::vector<int>(300, 1), random, 100);
}

TEST(Sparse, CopiedAsBytes) {
  Random random;
  const float taps[2] = {2, 3};
  const int positions[2] = {1, 40};
  int size;
  ASSERT_EQ(kvrStatusOk, kvrsFIRSparseGetStateSize_32f(2, 40, &size));
  Buffer first(size), second(size);
  KvrsFIRSparseState_32f* state;
  ASSERT_EQ(kvrStatusOk, kvrsFIRSparseInit_32f(&state, taps, positions, 2, nullptr, first.get()));
  const auto x = wholeSamples(random, 100, 50);
  std::vector<float> y(100), again(100);
  ASSERT_EQ(kvrStatusOk, kvrsFIRSparse_32f(x.data(), y.data(), 100, state));
  auto* copy = second.get() + (16 - reinterpret_cast<uintptr_t>(second.get()) % 16) % 16;
  memcpy(copy, static_cast<const void*>(state), static_cast<size_t>(size) - 15);
  ASSERT_EQ(kvrStatusOk, kvrsFIRSparse_32f(x.data(), y.data(), 100, state));
  memset(first.get(), 0xFF, static_cast<size_t>(size));
  ASSERT_EQ(kvrStatusOk,
            kvrsFIRSparse_32f(x.data(), again.data(), 100, reinterpret_cast<KvrsFIRSparseState_32f*>(copy)));
  EXPECT_EQ(y, again);
}

}  // namespace
