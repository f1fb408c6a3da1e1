// SPDX-License-Identifier: MIT
#include "kvrs/wavelet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/core.h"
#include "tests/support/random.h"
#include "tests/support/rounding.h"

using namespace kvrs::test;

namespace {

// --- the functions of each type ---

template <class T>
struct ForwardOf;
template <>
struct ForwardOf<Kvr32f> {
  using State = KvrsWTFwdState_32f;
  static constexpr auto* init = kvrsWTFwdInitAlloc_32f;
  static constexpr auto* run = kvrsWTFwd_32f;
  static constexpr auto* get = kvrsWTFwdGetDlyLine_32f;
  static constexpr auto* set = kvrsWTFwdSetDlyLine_32f;
  static constexpr auto* release = kvrsWTFwdFree_32f;
};
template <>
struct ForwardOf<Kvr8u> {
  using State = KvrsWTFwdState_8u32f;
  static constexpr auto* init = kvrsWTFwdInitAlloc_8u32f;
  static constexpr auto* run = kvrsWTFwd_8u32f;
  static constexpr auto* get = kvrsWTFwdGetDlyLine_8u32f;
  static constexpr auto* set = kvrsWTFwdSetDlyLine_8u32f;
  static constexpr auto* release = kvrsWTFwdFree_8u32f;
};
template <>
struct ForwardOf<Kvr8s> {
  using State = KvrsWTFwdState_8s32f;
  static constexpr auto* init = kvrsWTFwdInitAlloc_8s32f;
  static constexpr auto* run = kvrsWTFwd_8s32f;
  static constexpr auto* get = kvrsWTFwdGetDlyLine_8s32f;
  static constexpr auto* set = kvrsWTFwdSetDlyLine_8s32f;
  static constexpr auto* release = kvrsWTFwdFree_8s32f;
};
template <>
struct ForwardOf<Kvr16u> {
  using State = KvrsWTFwdState_16u32f;
  static constexpr auto* init = kvrsWTFwdInitAlloc_16u32f;
  static constexpr auto* run = kvrsWTFwd_16u32f;
  static constexpr auto* get = kvrsWTFwdGetDlyLine_16u32f;
  static constexpr auto* set = kvrsWTFwdSetDlyLine_16u32f;
  static constexpr auto* release = kvrsWTFwdFree_16u32f;
};
template <>
struct ForwardOf<Kvr16s> {
  using State = KvrsWTFwdState_16s32f;
  static constexpr auto* init = kvrsWTFwdInitAlloc_16s32f;
  static constexpr auto* run = kvrsWTFwd_16s32f;
  static constexpr auto* get = kvrsWTFwdGetDlyLine_16s32f;
  static constexpr auto* set = kvrsWTFwdSetDlyLine_16s32f;
  static constexpr auto* release = kvrsWTFwdFree_16s32f;
};

template <class T>
struct InverseOf;
template <>
struct InverseOf<Kvr32f> {
  using State = KvrsWTInvState_32f;
  static constexpr auto* init = kvrsWTInvInitAlloc_32f;
  static constexpr auto* run = kvrsWTInv_32f;
  static constexpr auto* get = kvrsWTInvGetDlyLine_32f;
  static constexpr auto* set = kvrsWTInvSetDlyLine_32f;
  static constexpr auto* release = kvrsWTInvFree_32f;
};
template <>
struct InverseOf<Kvr8u> {
  using State = KvrsWTInvState_32f8u;
  static constexpr auto* init = kvrsWTInvInitAlloc_32f8u;
  static constexpr auto* run = kvrsWTInv_32f8u;
  static constexpr auto* get = kvrsWTInvGetDlyLine_32f8u;
  static constexpr auto* set = kvrsWTInvSetDlyLine_32f8u;
  static constexpr auto* release = kvrsWTInvFree_32f8u;
};
template <>
struct InverseOf<Kvr8s> {
  using State = KvrsWTInvState_32f8s;
  static constexpr auto* init = kvrsWTInvInitAlloc_32f8s;
  static constexpr auto* run = kvrsWTInv_32f8s;
  static constexpr auto* get = kvrsWTInvGetDlyLine_32f8s;
  static constexpr auto* set = kvrsWTInvSetDlyLine_32f8s;
  static constexpr auto* release = kvrsWTInvFree_32f8s;
};
template <>
struct InverseOf<Kvr16u> {
  using State = KvrsWTInvState_32f16u;
  static constexpr auto* init = kvrsWTInvInitAlloc_32f16u;
  static constexpr auto* run = kvrsWTInv_32f16u;
  static constexpr auto* get = kvrsWTInvGetDlyLine_32f16u;
  static constexpr auto* set = kvrsWTInvSetDlyLine_32f16u;
  static constexpr auto* release = kvrsWTInvFree_32f16u;
};
template <>
struct InverseOf<Kvr16s> {
  using State = KvrsWTInvState_32f16s;
  static constexpr auto* init = kvrsWTInvInitAlloc_32f16s;
  static constexpr auto* run = kvrsWTInv_32f16s;
  static constexpr auto* get = kvrsWTInvGetDlyLine_32f16s;
  static constexpr auto* set = kvrsWTInvSetDlyLine_32f16s;
  static constexpr auto* release = kvrsWTInvFree_32f16s;
};

// --- the definition ---

// Products from the oldest sample to the newest, in single precision, and their sum.
class Products {
 public:
  void add(float tap, float sample) { all_.push_back(tap * sample); }

  // In the contract's order, in double precision.
  float total() const {
    double part[4] = {0, 0, 0, 0}, sum = 0;
    size_t j = 0;
    for (; j + 8 <= all_.size(); j += 8) {
      for (size_t k = 0; k < 8; ++k) part[k % 4] += static_cast<double>(all_[j + k]);
    }
    if (all_.size() >= 8) sum = (part[0] + part[2]) + (part[1] + part[3]);
    for (; j < all_.size(); ++j) sum += static_cast<double>(all_[j]);
    return static_cast<float>(sum);
  }
  // The total is the exact sum's nearest single, but for what sums in double precision may lose.
  void expectExact(float total) const {
    long double sum = 0, magnitude = 0;
    for (float p : all_) {
      sum += static_cast<long double>(p);
      magnitude += std::abs(static_cast<long double>(p));
    }
    const float size = std::abs(total);
    const long double half = (std::nextafter(size, INFINITY) - size) * 0.5L;
    EXPECT_LE(std::abs(static_cast<long double>(total) - sum), half + std::ldexp(magnitude, -45));
  }

 private:
  std::vector<float> all_;
};

// A channel: its taps and its whole input.
struct Channel {
  std::vector<float> taps;
  int offset = 0;
  std::vector<float> input = {};

  float at(ptrdiff_t i) const {
    return i >= 0 && i < static_cast<ptrdiff_t>(input.size()) ? input[static_cast<size_t>(i)] : 0;
  }
  int len() const { return static_cast<int>(taps.size()); }

  Products forward(ptrdiff_t i) const {
    Products products;
    for (int k = len() - 1; k >= 0; --k) products.add(taps[static_cast<size_t>(k)], at(2 * i - offset - k));
    return products;
  }
  Products inverse(ptrdiff_t n) const {
    const int late = offset == -1 ? 1 : offset;
    Products products;
    for (int k = len() - 1; k >= 0; --k) {
      const ptrdiff_t m = n - late - k;
      if (m % 2 == 0) products.add(taps[static_cast<size_t>(k)], at(m / 2));
    }
    return products;
  }
  size_t forwardDelay() const { return static_cast<size_t>(std::max(0, len() + offset - 1)); }
  size_t inverseDelay() const {
    const int late = offset == -1 ? 1 : offset;
    return static_cast<size_t>((len() + late % 2 - 1) / 2 + late / 2);
  }
  // The last `count` samples, with zeros before the first one.
  std::vector<float> last(size_t count) const {
    std::vector<float> line(count);
    for (size_t k = 0; k < count; ++k)
      line[k] = at(static_cast<ptrdiff_t>(input.size() + k) - static_cast<ptrdiff_t>(count));
    return line;
  }
  // Makes `line` the last samples. There are as many.
  void replaceLast(const std::vector<float>& line) {
    std::copy(line.begin(), line.end(), input.end() - static_cast<ptrdiff_t>(line.size()));
  }
};

Channel randomChannel(Random& random, int len, int offset) {
  Channel channel{std::vector<float>(static_cast<size_t>(len)), offset};
  for (float& tap : channel.taps) tap = random.value<float>();
  return channel;
}

template <class State>
KvrStatus init(KvrStatus (*initAlloc)(State**, const Kvr32f*, int, int, const Kvr32f*, int, int),
               State** state, const Channel& low, const Channel& high) {
  return initAlloc(state, low.taps.data(), low.len(), low.offset, high.taps.data(), high.len(), high.offset);
}

// Arrays of a call, between guard pages and at any address.
class Memory {
 public:
  explicit Memory(size_t bytes) : arenas_{Arena(bytes), Arena(bytes), Arena(bytes)} {}

  template <class T>
  T* place(int which, size_t count, Random& random) {
    return arenas_[which].place<T>(count, random.below(2) != 0 ? Side::front : Side::back, random.below(64));
  }
  bool intact() const { return arenas_[0].intact() && arenas_[1].intact() && arenas_[2].intact(); }

 private:
  Arena arenas_[3];
};

template <class T>
void copyTo(T* to, const T* from, size_t count) {
  memcpy(static_cast<void*>(to), from, count * sizeof(T));
}

int pieceLength(Random& random, int turn) {
  static constexpr int kLengths[] = {1, 1, 2, 3, 8, 16, 17, 511, 512, 513, 1030};
  return turn % 3 == 2 ? kLengths[random.below(11)] : 1 + static_cast<int>(random.below(40));
}

// Delay lines as the functions show them, against the model's; then others in their place.
template <class Bank, class State>
void checkLines(State* state, Channel (&channels)[2], const size_t (&delay)[2], Memory& memory,
                Random& random) {
  Kvr32f* line[2];
  for (int c = 0; c < 2; ++c) line[c] = memory.place<Kvr32f>(c, delay[c], random);
  ASSERT_EQ(kvrStatusOk, Bank::get(state, line[0], line[1]));
  ASSERT_TRUE(memory.intact());
  for (int c = 0; c < 2; ++c) {
    const auto want = channels[c].last(delay[c]);
    for (size_t k = 0; k < delay[c]; ++k) ASSERT_EQ(want[k], get(line[c], k)) << "delay line, " << k;
  }
  if (random.below(3) != 0) return;
  for (int c = 0; c < 2; ++c) {
    if (channels[c].input.size() < delay[c]) return;
  }
  for (int c = 0; c < 2; ++c) {
    std::vector<float> other(delay[c]);
    for (size_t k = 0; k < delay[c]; ++k) put(line[c], k, other[k] = random.value<float>());
    channels[c].replaceLast(other);
  }
  ASSERT_EQ(kvrStatusOk, Bank::set(state, line[0], line[1]));
  ASSERT_TRUE(memory.intact());
}

// A signal in pieces.
template <class T>
void checkForward(Channel low, Channel high, int turns, Random& random) {
  using Bank = ForwardOf<T>;
  Channel channels[2] = {low, high};
  const size_t delay[2] = {low.forwardDelay(), high.forwardDelay()};
  Memory memory(2200 * sizeof(T) + (1200 + delay[0] + delay[1]) * sizeof(Kvr32f));
  typename Bank::State* state = nullptr;
  ASSERT_EQ(kvrStatusOk, init(Bank::init, &state, low, high));
  ptrdiff_t done = 0;
  for (int turn = 0; turn < turns; ++turn) {
    const int dstLen = pieceLength(random, turn);
    const size_t n = static_cast<size_t>(dstLen);
    T* src = memory.place<T>(0, 2 * n, random);
    Kvr32f* dst[2] = {memory.place<Kvr32f>(1, n, random), memory.place<Kvr32f>(2, n, random)};
    if constexpr (std::is_same_v<T, Kvr32f>) {
      if (const uint32_t c = random.below(4); c < 2) dst[c] = src;  // over the signal
    }
    for (size_t i = 0; i < 2 * n; ++i) {
      const T value = random.value<T>();
      put(src, i, value);
      for (Channel& channel : channels) channel.input.push_back(static_cast<float>(value));
    }
    ASSERT_EQ(kvrStatusOk, Bank::run(src, dst[0], dst[1], dstLen, state));
    ASSERT_TRUE(memory.intact());
    for (int c = 0; c < 2; ++c) {
      for (size_t i = 0; i < n; ++i) {
        const Products products = channels[c].forward(done + static_cast<ptrdiff_t>(i));
        const float got = get(dst[c], i);
        ASSERT_EQ(products.total(), got) << "channel " << c << ", taps " << channels[c].len() << ", offset "
                                         << channels[c].offset << ", piece of " << n << ", output " << i;
        products.expectExact(got);
      }
    }
    done += dstLen;
    checkLines<Bank>(state, channels, delay, memory, random);
    if (testing::Test::HasFatalFailure()) break;
  }
  EXPECT_EQ(kvrStatusOk, Bank::release(state));
}

template <class T>
T rounded(float y) {
  if constexpr (std::is_same_v<T, Kvr32f>) {
    return y;
  } else {
    using L = std::numeric_limits<T>;
    return saturatedTo<T>(static_cast<long double>(y), kvrRoundNear, L::lowest(), L::max());
  }
}

template <class T>
void checkInverse(Channel low, Channel high, int turns, Random& random) {
  using Bank = InverseOf<T>;
  Channel channels[2] = {low, high};
  const size_t delay[2] = {low.inverseDelay(), high.inverseDelay()};
  Memory memory(2200 * sizeof(T) + (1200 + delay[0] + delay[1]) * sizeof(Kvr32f));
  typename Bank::State* state = nullptr;
  ASSERT_EQ(kvrStatusOk, init(Bank::init, &state, low, high));
  const float scale = std::is_same_v<T, Kvr32f> ? 1.0f : sizeof(T) == 1 ? 100.0f : 25000.0f;
  ptrdiff_t done = 0;
  for (int turn = 0; turn < turns; ++turn) {
    const int srcLen = pieceLength(random, turn);
    const size_t n = static_cast<size_t>(srcLen);
    Kvr32f* src[2] = {memory.place<Kvr32f>(0, n, random), memory.place<Kvr32f>(1, n, random)};
    T* dst = memory.place<T>(2, 2 * n, random);
    for (int c = 0; c < 2; ++c) {
      for (size_t i = 0; i < n; ++i) {
        const float value = random.value<float>() * scale;
        put(src[c], i, value);
        channels[c].input.push_back(value);
      }
    }
    ASSERT_EQ(kvrStatusOk, Bank::run(src[0], src[1], srcLen, dst, state));
    ASSERT_TRUE(memory.intact());
    for (size_t i = 0; i < 2 * n; ++i) {
      const ptrdiff_t at = done + static_cast<ptrdiff_t>(i);
      const Products fromLow = channels[0].inverse(at), fromHigh = channels[1].inverse(at);
      const float sum = fromLow.total() + fromHigh.total();
      fromLow.expectExact(fromLow.total());
      ASSERT_EQ(rounded<T>(sum), get(dst, i))
          << "taps " << low.len() << " and " << high.len() << ", offsets " << low.offset << " and "
          << high.offset << ", piece of " << n << ", output " << i;
    }
    done += 2 * srcLen;
    checkLines<Bank>(state, channels, delay, memory, random);
    if (testing::Test::HasFatalFailure()) break;
  }
  EXPECT_EQ(kvrStatusOk, Bank::release(state));
}

constexpr int kTaps[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 13, 15, 16, 17, 18, 23, 24, 31, 32, 40, 101};
constexpr int kOffsets[] = {-1, 0, 1, 2, 3, 4, 7, 30, 511, 700, 1401};

// All pairs of a length and an offset in the low channel, others in the high one.
TEST(Wavelet, ForwardSweep) {
  Random random(31);
  size_t other = 0;
  for (int taps : kTaps) {
    for (int offset : kOffsets) {
      other += 5;
      checkForward<Kvr32f>(randomChannel(random, taps, offset),
                           randomChannel(random, kTaps[other % std::size(kTaps)], kOffsets[other % 7]), 6,
                           random);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(Wavelet, InverseSweep) {
  Random random(32);
  size_t other = 0;
  for (int taps : kTaps) {
    for (int offset : kOffsets) {
      other += 5;
      checkInverse<Kvr32f>(randomChannel(random, taps, offset),
                           randomChannel(random, kTaps[other % std::size(kTaps)], kOffsets[other % 7]), 6,
                           random);
      if (HasFatalFailure()) return;
    }
  }
}

template <class T>
void checkIntegers(uint64_t seed) {
  Random random(seed);
  for (int taps : {1, 4, 7, 8, 21}) {
    for (int offset : {-1, 0, 3, 600}) {
      checkForward<T>(randomChannel(random, taps, offset), randomChannel(random, taps + 1, 1), 6, random);
      checkInverse<T>(randomChannel(random, taps, offset), randomChannel(random, taps + 1, 1), 6, random);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(Wavelet, Integers) {
  checkIntegers<Kvr8u>(33);
  checkIntegers<Kvr8s>(34);
  checkIntegers<Kvr16u>(35);
  checkIntegers<Kvr16s>(36);
}

// Long calls and many short ones: the lines move to the front more than once.
TEST(Wavelet, LongSignals) {
  Random random(37);
  checkForward<Kvr32f>(randomChannel(random, 20, 0), randomChannel(random, 5, 2000), 150, random);
  checkInverse<Kvr32f>(randomChannel(random, 20, 0), randomChannel(random, 1200, 3), 60, random);
}

// --- perfect reconstruction ---

struct Wavelet {
  const char* name;
  std::vector<float> low, high, lowBack, highBack;
  int offset;      // of both forward channels
  int offsetBack;  // of both inverse channels
  int delay;       // of one level
};

Wavelet daubechies4(int offset, int offsetBack, int delay) {
  const double root = std::sqrt(3.0), scale = 4 * std::sqrt(2.0);
  const std::vector<float> h = {
      static_cast<float>((1 + root) / scale), static_cast<float>((3 + root) / scale),
      static_cast<float>((3 - root) / scale), static_cast<float>((1 - root) / scale)};
  const std::vector<float> g = {h[3], -h[2], h[1], -h[0]};
  return {"Daubechies, 4 taps",     h,      g,          {h[3], h[2], h[1], h[0]},
          {g[3], g[2], g[1], g[0]}, offset, offsetBack, delay};
}

// LeGall's: filters of 5 and 3 taps, exact in binary.
Wavelet leGall(int offset, int offsetBack, int delay) {
  return {"5/3",
          {-0.125f, 0.25f, 0.75f, 0.25f, -0.125f},
          {-0.5f, 1.0f, -0.5f},
          {0.5f, 1.0f, 0.5f},
          {-0.125f, -0.25f, 0.75f, -0.25f, -0.125f},
          offset,
          offsetBack,
          delay};
}

// One level of a chain; `deeper` is the delay of the levels below it, which its high channel waits for.
struct Level {
  KvrsWTFwdState_32f* forward = nullptr;
  KvrsWTInvState_32f* inverse = nullptr;

  Level(const Wavelet& w, int deeper) {
    EXPECT_EQ(kvrStatusOk,
              init(kvrsWTFwdInitAlloc_32f, &forward, Channel{w.low, w.offset}, Channel{w.high, w.offset}));
    const int waiting = 2 * deeper + (w.offsetBack == -1 && deeper > 0 ? 1 : w.offsetBack);
    EXPECT_EQ(kvrStatusOk, init(kvrsWTInvInitAlloc_32f, &inverse, Channel{w.lowBack, w.offsetBack},
                                Channel{w.highBack, waiting}));
  }
  ~Level() {
    EXPECT_EQ(kvrStatusOk, kvrsWTFwdFree_32f(forward));
    EXPECT_EQ(kvrStatusOk, kvrsWTInvFree_32f(inverse));
  }
  Level(const Level&) = delete;
  Level& operator=(const Level&) = delete;
};

// There and back through `levels` from this one on.
std::vector<float> thereAndBack(const std::vector<std::unique_ptr<Level>>& levels, size_t level,
                                const std::vector<float>& x) {
  if (level == levels.size()) return x;
  const size_t half = x.size() / 2;
  std::vector<float> low(half), high(half), y(x.size());
  EXPECT_EQ(kvrStatusOk,
            kvrsWTFwd_32f(x.data(), low.data(), high.data(), static_cast<int>(half), levels[level]->forward));
  low = thereAndBack(levels, level + 1, low);
  EXPECT_EQ(kvrStatusOk,
            kvrsWTInv_32f(low.data(), high.data(), static_cast<int>(half), y.data(), levels[level]->inverse));
  return y;
}

TEST(Wavelet, ChainsReconstruct) {
  Random random(38);
  for (const Wavelet& w :
       {daubechies4(0, 0, 3), daubechies4(1, 1, 5), daubechies4(-1, -1, 3), daubechies4(6, 3, 12),
        leGall(0, 0, 3), leGall(-1, 1, 3), leGall(-1, -1, 3), leGall(2, 4, 9)}) {
    for (int depth = 1; depth <= 7; ++depth) {
      int delay = 0;
      std::vector<std::unique_ptr<Level>> levels;
      for (int k = 0; k < depth; ++k) {
        levels.insert(levels.begin(), std::make_unique<Level>(w, delay));
        delay = w.delay + 2 * delay;
      }
      std::vector<float> x, y;
      while (x.size() < 6000) {
        std::vector<float> piece(static_cast<size_t>(1 + random.below(5)) << depth);
        for (float& v : piece) v = random.value<float>();
        const auto back = thereAndBack(levels, 0, piece);
        x.insert(x.end(), piece.begin(), piece.end());
        y.insert(y.end(), back.begin(), back.end());
      }
      const auto late = static_cast<size_t>(delay);
      for (size_t n = 0; n < y.size(); ++n) {
        const float want = n < late ? 0 : x[n - late];
        ASSERT_NEAR(want, y[n], 1e-6 * depth)
            << w.name << ", offset " << w.offset << ", " << depth << " levels, sample " << n;
      }
    }
  }
}

// --- edges ---

TEST(Wavelet, OneTap) {
  const float tap = 3;
  KvrsWTFwdState_32f* state = nullptr;
  ASSERT_EQ(kvrStatusOk, kvrsWTFwdInitAlloc_32f(&state, &tap, 1, 0, &tap, 1, -1));
  const float x[] = {1, 2, 4, 8, 16, 32};
  float low[3], high[3];
  ASSERT_EQ(kvrStatusOk, kvrsWTFwd_32f(x, low, high, 3, state));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(3 * x[2 * i], low[i]);
    EXPECT_EQ(3 * x[2 * i + 1], high[i]);
  }
  // Neither channel has a delay line: nothing is written.
  float line[2] = {7, 7};
  EXPECT_EQ(kvrStatusOk, kvrsWTFwdGetDlyLine_32f(state, line, line + 1));
  EXPECT_EQ(kvrStatusOk, kvrsWTFwdSetDlyLine_32f(state, line, line + 1));
  EXPECT_EQ(7, line[0]);
  EXPECT_EQ(7, line[1]);
  EXPECT_EQ(kvrStatusOk, kvrsWTFwdFree_32f(state));
}

// Halves go to even integers in every mode of the caller's, which is left as it is.
TEST(Wavelet, IntegersAreRoundedToNearest) {
  const float half = 0.5f, none = 0;
  const float low[] = {1, 3, 5, -1, -3, -5, 2, 70000, -70000, INFINITY, -INFINITY, NAN};
  const float high[12] = {};
  const Kvr16s want[] = {0, 2, 2, 0, -2, -2, 1, 32767, -32768, 32767, -32768, -32768};
  for (int mode : kCallerModes) {
    KvrsWTInvState_32f16s* state = nullptr;
    ASSERT_EQ(kvrStatusOk, kvrsWTInvInitAlloc_32f16s(&state, &half, 1, 0, &none, 1, 0));
    Kvr16s dst[24];
    ASSERT_EQ(kvrStatusOk,
              callWithRounding(mode, [&] { return kvrsWTInv_32f16s(low, high, 12, dst, state); }));
    for (int i = 0; i < 12; ++i) EXPECT_EQ(want[i], dst[2 * i]) << "mode " << mode << ", " << low[i];
    EXPECT_EQ(kvrStatusOk, kvrsWTInvFree_32f16s(state));
  }
}

// Taps at any address, with nothing readable beside them.
TEST(Wavelet, TapsAnywhere) {
  Random random(39);
  Memory memory(64 * sizeof(float));
  for (int len : {1, 2, 5, 8, 9, 31}) {
    const Channel low = randomChannel(random, len, 0), high = randomChannel(random, len + 1, 2);
    const size_t n = low.taps.size();
    float* const lowTaps = memory.place<float>(0, n, random);
    float* const highTaps = memory.place<float>(1, n + 1, random);
    memory.place<float>(2, 1, random);
    copyTo(lowTaps, low.taps.data(), n);
    copyTo(highTaps, high.taps.data(), n + 1);
    KvrsWTFwdState_32f *state = nullptr, *same = nullptr;
    KvrsWTInvState_32f *inverse = nullptr, *sameInverse = nullptr;
    ASSERT_EQ(kvrStatusOk, kvrsWTFwdInitAlloc_32f(&state, lowTaps, len, 0, highTaps, len + 1, 2));
    ASSERT_EQ(kvrStatusOk, kvrsWTInvInitAlloc_32f(&inverse, lowTaps, len, 0, highTaps, len + 1, 2));
    ASSERT_TRUE(memory.intact());
    ASSERT_EQ(kvrStatusOk, init(kvrsWTFwdInitAlloc_32f, &same, low, high));
    ASSERT_EQ(kvrStatusOk, init(kvrsWTInvInitAlloc_32f, &sameInverse, low, high));
    std::vector<float> x(80), a(40), b(40), c(40), d(40), y(80), z(80);
    for (float& v : x) v = random.value<float>();
    EXPECT_EQ(kvrStatusOk, kvrsWTFwd_32f(x.data(), a.data(), b.data(), 40, state));
    EXPECT_EQ(kvrStatusOk, kvrsWTFwd_32f(x.data(), c.data(), d.data(), 40, same));
    EXPECT_EQ(a, c);
    EXPECT_EQ(b, d);
    EXPECT_EQ(kvrStatusOk, kvrsWTInv_32f(a.data(), b.data(), 40, y.data(), inverse));
    EXPECT_EQ(kvrStatusOk, kvrsWTInv_32f(a.data(), b.data(), 40, z.data(), sameInverse));
    EXPECT_EQ(y, z);
    EXPECT_EQ(kvrStatusOk, kvrsWTFwdFree_32f(state));
    EXPECT_EQ(kvrStatusOk, kvrsWTFwdFree_32f(same));
    EXPECT_EQ(kvrStatusOk, kvrsWTInvFree_32f(inverse));
    EXPECT_EQ(kvrStatusOk, kvrsWTInvFree_32f(sameInverse));
  }
}

TEST(Wavelet, FaultsInOrder) {
  const float taps[4] = {1, 2, 3, 4};
  auto* const before = reinterpret_cast<KvrsWTFwdState_32f*>(uintptr_t{64});
  KvrsWTFwdState_32f* state = before;
  const auto make = [&](const float* low, int lenLow, int offsLow, const float* high, int lenHigh,
                        int offsHigh) {
    return kvrsWTFwdInitAlloc_32f(&state, low, lenLow, offsLow, high, lenHigh, offsHigh);
  };
  EXPECT_EQ(kvrStatusNullPointer, make(nullptr, 0, -2, nullptr, 0, -2));
  EXPECT_EQ(kvrStatusBadLength, make(taps, 0, -2, nullptr, 0, -2));
  EXPECT_EQ(kvrStatusNullPointer, make(taps, 4, -2, nullptr, 0, -2));
  EXPECT_EQ(kvrStatusBadLength, make(taps, 4, -2, taps, 0, -2));
  EXPECT_EQ(kvrStatusBadWaveletOffset, make(taps, 4, -2, taps, 4, 0));
  EXPECT_EQ(kvrStatusBadWaveletOffset, make(taps, 4, 0, taps, 4, INT_MIN));
  EXPECT_EQ(before, state);
  EXPECT_EQ(kvrStatusNullPointer, kvrsWTFwdInitAlloc_32f(nullptr, taps, 0, 0, taps, 4, 0));

  KvrsWTInvState_32f* inverse = nullptr;
  ASSERT_EQ(kvrStatusOk, kvrsWTInvInitAlloc_32f(&inverse, taps, 4, 0, taps, 4, 0));
  float x[2] = {}, y[4] = {7, 7, 7, 7};
  EXPECT_EQ(kvrStatusNullPointer, kvrsWTInv_32f(nullptr, x, 0, nullptr, inverse));
  EXPECT_EQ(kvrStatusBadLength, kvrsWTInv_32f(x, x, 0, nullptr, inverse));
  EXPECT_EQ(kvrStatusNullPointer, kvrsWTInv_32f(x, x, 2, nullptr, inverse));
  EXPECT_EQ(kvrStatusBadLength, kvrsWTInv_32f(x, x, -3, y, inverse));
  for (float v : y) EXPECT_EQ(7, v);
  EXPECT_EQ(kvrStatusOk, kvrsWTInvFree_32f(inverse));
}

template <class State>
void checkMemory(KvrStatus (*initAlloc)(State**, const Kvr32f*, int, int, const Kvr32f*, int, int),
                 KvrStatus (*release)(State*)) {
  const float taps[4] = {1, 2, 3, 4};
  State* state = nullptr;
  EXPECT_EQ(1, countAllocationsWithFailures(
                   [&] {
                     state = reinterpret_cast<State*>(uintptr_t{64});
                     const KvrStatus status = initAlloc(&state, taps, 4, 0, taps, 4, 9);
                     if (status == kvrStatusOk) return release(state);
                     EXPECT_EQ(nullptr, state);
                     return status;
                   },
                   kvrStatusOutOfMemory));
  // More than any block has room for.
  state = reinterpret_cast<State*>(uintptr_t{64});
  EXPECT_EQ(kvrStatusOutOfMemory, initAlloc(&state, taps, 4, INT_MAX, taps, 4, 0));
  EXPECT_EQ(nullptr, state);
}

TEST(Wavelet, Memory) {
  checkMemory(kvrsWTFwdInitAlloc_32f, kvrsWTFwdFree_32f);
  checkMemory(kvrsWTFwdInitAlloc_8u32f, kvrsWTFwdFree_8u32f);
  checkMemory(kvrsWTInvInitAlloc_32f, kvrsWTInvFree_32f);
  checkMemory(kvrsWTInvInitAlloc_32f16s, kvrsWTInvFree_32f16s);
}

// A record that has the word of its type and nothing else.
TEST(Wavelet, DamagedStates) {
  const float taps[4] = {1, 2, 3, 4};
  KvrsWTFwdState_32f* state = nullptr;
  ASSERT_EQ(kvrStatusOk, kvrsWTFwdInitAlloc_32f(&state, taps, 4, 0, taps, 4, 0));
  uint8_t* const fields = reinterpret_cast<uint8_t*>(state) + 4;
  uint8_t kept[16];
  memcpy(kept, fields, sizeof kept);
  memset(fields, 0, sizeof kept);
  float x[4] = {}, low[2] = {7, 7}, high[2] = {7, 7};
  EXPECT_EQ(kvrStatusContextMismatch, kvrsWTFwd_32f(x, low, high, 2, state));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsWTFwdGetDlyLine_32f(state, low, high));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsWTFwdSetDlyLine_32f(state, low, high));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsWTFwdFree_32f(state));
  for (float v : {low[0], low[1], high[0], high[1]}) EXPECT_EQ(7, v);
  memcpy(fields, kept, sizeof kept);
  EXPECT_EQ(kvrStatusOk, kvrsWTFwdFree_32f(state));
}

}  // namespace
