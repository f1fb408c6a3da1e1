// Adaptive filters against their definition: the sum of an output in wide arithmetic, and the steps from it to the next taps
// to the bit.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_lms.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfenv>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/core.h"
#include "tests/support/random.h"
#include "tests/support/rounding.h"

using namespace kvrs::test;

namespace {

// ---- The two contexts.

template <class X>
struct Lms;
template <>
struct Lms<Kvr32f> {
  using State = KvrsFIRLMSState_32f;
  static constexpr uint32_t word = 0x4C4D5331;
  static constexpr auto* initAlloc = kvrsFIRLMSInitAlloc_32f;
  static constexpr auto* free = kvrsFIRLMSFree_32f;
  static constexpr auto* getTaps = kvrsFIRLMSGetTaps_32f;
  static constexpr auto* getDlyLine = kvrsFIRLMSGetDlyLine_32f;
  static constexpr auto* setDlyLine = kvrsFIRLMSSetDlyLine_32f;
  static constexpr auto* filter = kvrsFIRLMS_32f;
  static constexpr auto* one = kvrsFIRLMSOne_Direct_32f;
};
template <>
struct Lms<Kvr16s> {
  using State = KvrsFIRLMSState32f_16s;
  static constexpr uint32_t word = 0x4C4D5300;
  static constexpr auto* initAlloc = kvrsFIRLMSInitAlloc32f_16s;
  static constexpr auto* free = kvrsFIRLMSFree32f_16s;
  static constexpr auto* getTaps = kvrsFIRLMSGetTaps32f_16s;
  static constexpr auto* getDlyLine = kvrsFIRLMSGetDlyLine32f_16s;
  static constexpr auto* setDlyLine = kvrsFIRLMSSetDlyLine32f_16s;
  static constexpr auto* filter = kvrsFIRLMS32f_16s;
  static constexpr auto* one = kvrsFIRLMSOne_Direct32f_16s;
};

template <class X>
class LmsTyped : public testing::Test {};
using SampleTypes = testing::Types<Kvr32f, Kvr16s>;
TYPED_TEST_SUITE(LmsTyped, SampleTypes);

template <class X>
class Context {
 public:
  using Api = Lms<X>;

  Context(const std::vector<float>& taps, const X* line = nullptr, int index = 0)
      : length_(static_cast<int>(taps.size())) {
    EXPECT_EQ(kvrStatusOk, Api::initAlloc(&state_, taps.data(), length_, line, index));
  }
  ~Context() { EXPECT_EQ(kvrStatusOk, Api::free(state_)); }
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;

  typename Api::State* get() { return state_; }
  std::vector<float> taps() {
    std::vector<float> all(static_cast<size_t>(length_));
    EXPECT_EQ(kvrStatusOk, Api::getTaps(state_, all.data()));
    return all;
  }
  std::vector<X> line(int* index) {
    std::vector<X> all(static_cast<size_t>(length_));
    EXPECT_EQ(kvrStatusOk, Api::getDlyLine(state_, all.data(), index));
    return all;
  }
  std::vector<X> run(const std::vector<X>& src, const std::vector<X>& ref, float mu) {
    std::vector<X> dst(src.size());
    EXPECT_EQ(kvrStatusOk,
              Api::filter(src.data(), ref.data(), dst.data(), static_cast<int>(src.size()), mu, state_));
    return dst;
  }

 private:
  int length_;
  typename Api::State* state_ = nullptr;
};

// ---- The definition.

Kvr16s rounded16(long double y) {
  return saturatedTo<Kvr16s>(y, kvrRoundNear, -32768, 32767);
}

// Taps in the order of time, the one of the newest sample first. The next error is formed with the output that the library
// gave, so that rounding errors of sums do not add up: a sum may be wrong by what so many products and sums round, and from it
// on all bits are known.
class Oracle {
 public:
  Oracle(std::vector<float> taps, std::vector<float> newestFirst)
      : taps_(std::move(taps)), past_(std::move(newestFirst)) {
    past_.resize(taps_.size());
  }

  // The output for the next sample, and how far from it a sum in single precision may be.
  long double next(float sample, long double* bound) {
    past_.insert(past_.begin(), sample);
    past_.pop_back();
    long double y = 0, sizes = 0;
    for (size_t k = 0; k < taps_.size(); ++k) {
      const long double product = static_cast<long double>(taps_[k]) * past_[k];
      y += product;
      sizes += std::fabs(product);
    }
    *bound = sizes * 0x1p-24L * static_cast<long double>(taps_.size() + 2);
    return y;
  }
  void move(float y, float ref, float mu) {
    const float error = ref - y, mu2 = mu + mu, step = error * mu2;
    for (size_t k = 0; k < taps_.size(); ++k) {
      const float change = past_[k] * step;
      taps_[k] = taps_[k] + change;
    }
  }

  const std::vector<float>& taps() const { return taps_; }
  const std::vector<float>& past() const { return past_; }

 private:
  std::vector<float> taps_, past_;
};

void expectSameBits(const std::vector<float>& want, const std::vector<float>& got) {
  ASSERT_EQ(want.size(), got.size());
  for (size_t i = 0; i < want.size(); ++i) {
    if (std::isnan(want[i]) && std::isnan(got[i])) continue;
    ASSERT_EQ(0, memcmp(&want[i], &got[i], 4)) << i << ": " << want[i] << " and " << got[i];
  }
}

std::vector<float> noise(Random& random, size_t count, double size = 1) {
  std::vector<float> all(count);
  for (float& x : all) x = static_cast<float>(size * random.unit());
  return all;
}
std::vector<Kvr16s> noise16(Random& random, size_t count, int most) {
  std::vector<Kvr16s> all(count);
  for (Kvr16s& x : all)
    x = static_cast<Kvr16s>(static_cast<int>(random.below(static_cast<uint32_t>(2 * most + 1))) - most);
  return all;
}
template <class X>
std::vector<X> samples(Random& random, size_t count) {
  if constexpr (std::is_same_v<X, Kvr16s>) {
    return noise16(random, count, 32767);
  } else {
    return noise(random, count);
  }
}

// Zeros but for one sample in `distance`.
template <class X>
std::vector<X> sparse(Random& random, size_t count, size_t distance) {
  std::vector<X> all = samples<X>(random, count);
  for (size_t i = 0; i < count; ++i) {
    if (i % distance != distance / 2) all[i] = 0;
  }
  return all;
}

// What a delay line of samples in time order, the newest first, looks like with the oldest one at `index`.
template <class X>
std::vector<X> ring(const std::vector<float>& newestFirst, int index) {
  const size_t len = newestFirst.size();
  std::vector<X> all(len);
  for (size_t age = 0; age < len; ++age) {
    all[(static_cast<size_t>(index) + len - 1 - age) % len] = static_cast<X>(newestFirst[age]);
  }
  return all;
}

int indexAfter(int tapsLen, int index, size_t len) {
  return tapsLen < 80 ? 0
                      : static_cast<int>((static_cast<size_t>(index) + len) % static_cast<size_t>(tapsLen));
}

constexpr int kTapsLengths[] = {1,  2,  3,  4,  5,  7,  8,  9,  15, 16, 17,  31,  32,  33,  48,
                                49, 63, 64, 65, 66, 78, 79, 80, 81, 97, 100, 128, 129, 200, 333};

enum class Place { apart, overSource, overReference };

// Calls of some lengths between guard pages, of any alignment.
void checkDense(int tapsLen, const std::vector<int>& lengths, Random& random, float mu) {
  static Arena srcArena(1 << 15), refArena(1 << 15), dstArena(1 << 15);
  const size_t count = static_cast<size_t>(tapsLen);
  const auto taps = noise(random, count), past = noise(random, count);
  int index = static_cast<int>(random.below(static_cast<uint32_t>(tapsLen)));
  Context<Kvr32f> context(taps, ring<Kvr32f>(past, index).data(), index);
  Oracle oracle(taps, past);
  for (int len : lengths) {
    const auto side = random.below(2) == 0 ? Side::front : Side::back;
    const auto place = static_cast<Place>(random.below(3));
    const size_t n = static_cast<size_t>(len);
    auto* src = srcArena.place<float>(n, side, random.below(64));
    auto* ref = refArena.place<float>(n, side, random.below(64));
    auto* dst = place == Place::apart        ? dstArena.place<float>(n, side, random.below(64))
                : place == Place::overSource ? src
                                             : ref;
    const auto x = noise(random, n), r = noise(random, n);
    memcpy(static_cast<void*>(src), x.data(), 4 * n);
    memcpy(static_cast<void*>(ref), r.data(), 4 * n);
    ASSERT_EQ(kvrStatusOk, kvrsFIRLMS_32f(src, ref, dst, len, mu, context.get()));
    for (size_t i = 0; i < n; ++i) {
      long double bound;
      const long double want = oracle.next(x[i], &bound);
      const float got = get(dst, i);
      ASSERT_LE(std::fabs(got - want), bound) << tapsLen << " taps, " << i << " of " << len;
      oracle.move(got, r[i], mu);
      if (dst != src) {
        ASSERT_EQ(x[i], get(src, i));
      }
      if (dst != ref) {
        ASSERT_EQ(r[i], get(ref, i));
      }
    }
    ASSERT_TRUE(srcArena.intact() && refArena.intact());
    if (place == Place::apart) {
      ASSERT_TRUE(dstArena.intact());
    }
    expectSameBits(oracle.taps(), context.taps());
    int got;
    const auto line = context.line(&got);
    index = indexAfter(tapsLen, index, n);
    ASSERT_EQ(index, got);
    ASSERT_EQ(ring<Kvr32f>(oracle.past(), index), line);
  }
}

TEST(Lms, Dense) {
  Random random;
  for (int tapsLen : kTapsLengths) {
    for (int turn = 0; turn < 3; ++turn) {
      const float mu = 0.3f / static_cast<float>(tapsLen);
      checkDense(tapsLen, {1, 2, 3, 17, tapsLen, tapsLen + 1, 1, 300, 40}, random, mu);
      if (HasFailure()) return;
    }
  }
}

TEST(Lms, LongCalls) {
  Random random;
  for (int tapsLen : {1, 30, 64, 79, 80, 150}) {
    const float mu = 0.3f / static_cast<float>(tapsLen);
    checkDense(tapsLen, {1000, 1, 1023, 1024, 2, 1025, 2047, 2048, 2049, 7000}, random, mu);
    checkDense(tapsLen, std::vector<int>(3000, 1), random, mu);
    if (HasFailure()) return;
  }
  checkDense(3000, {1, 3001, 700}, random, 0.0001f);
}

// Of single products all bits are known, those of 16-bit samples too.
TYPED_TEST(LmsTyped, SparseToTheBit) {
  using X = TypeParam;
  Random random;
  for (int tapsLen : kTapsLengths) {
    const size_t count = static_cast<size_t>(tapsLen);
    const float mu = std::is_same_v<X, Kvr16s> ? 1e-10f : 0.3f;
    const auto taps = noise(random, count);
    Context<X> context(taps);
    Oracle oracle(taps, {});
    for (int len : {1, 5, 100, 2500, 33}) {
      const auto src = sparse<X>(random, static_cast<size_t>(len), count + random.below(5));
      // The windows of two calls do not meet.
      const std::vector<X> silence(count);
      for (const auto& x : {src, silence}) {
        const auto ref = samples<X>(random, x.size());
        const auto dst = context.run(x, ref, mu);
        for (size_t i = 0; i < x.size(); ++i) {
          long double bound;
          const float y = static_cast<float>(oracle.next(static_cast<float>(x[i]), &bound));
          if constexpr (std::is_same_v<X, Kvr16s>) {
            ASSERT_EQ(rounded16(y), dst[i]) << tapsLen << " taps, sample " << i;
          } else {
            ASSERT_EQ(y, dst[i]) << tapsLen << " taps, sample " << i;
          }
          oracle.move(y, static_cast<float>(ref[i]), mu);
        }
        expectSameBits(oracle.taps(), context.taps());
      }
    }
  }
}

// Dense 16-bit samples: an oracle of its own in extended precision. Errors of sums are 2^-24 of the products' sizes, and they
// die away as the filter converges, since each step takes a good part of the error back.
TEST(Lms, Dense16) {
  Random random;
  static Arena srcArena(1 << 14), refArena(1 << 14), dstArena(1 << 14);
  for (int tapsLen : kTapsLengths) {
    const size_t count = static_cast<size_t>(tapsLen);
    const float mu = static_cast<float>(0.1 / static_cast<double>(tapsLen) / 0x1p30);
    auto taps = noise(random, count, 1.0 / static_cast<double>(tapsLen));
    const auto past = noise16(random, count, 32767);
    const int start = tapsLen / 3;
    Context<Kvr16s> context(taps, ring<Kvr16s>({past.begin(), past.end()}, start).data(), start);
    std::vector<long double> t(taps.begin(), taps.end()), window(past.begin(), past.end());
    int index = start;
    for (int len : {1, 2, 30, 100, 2048, 2049, 3, 1100}) {
      const size_t n = static_cast<size_t>(len);
      const auto x = noise16(random, n, 32767), r = noise16(random, n, 32767);
      const auto side = random.below(2) == 0 ? Side::front : Side::back;
      const auto place = static_cast<Place>(random.below(3));
      auto* src = srcArena.place<Kvr16s>(n, side, random.below(64));
      auto* ref = refArena.place<Kvr16s>(n, side, random.below(64));
      auto* dst = place == Place::apart        ? dstArena.place<Kvr16s>(n, side, random.below(64))
                  : place == Place::overSource ? src
                                               : ref;
      memcpy(static_cast<void*>(src), x.data(), 2 * n);
      memcpy(static_cast<void*>(ref), r.data(), 2 * n);
      ASSERT_EQ(kvrStatusOk, kvrsFIRLMS32f_16s(src, ref, dst, len, mu, context.get()));
      for (size_t i = 0; i < n; ++i) {
        window.insert(window.begin(), x[i]);
        window.pop_back();
        long double y = 0, sizes = 0;
        for (size_t k = 0; k < count; ++k) {
          y += t[k] * window[k];
          sizes += std::fabs(t[k] * window[k]);
        }
        const long double bound = 0.5L + sizes * 0x1p-24L * static_cast<long double>(tapsLen + 100);
        const Kvr16s got = get(dst, i);
        if (y > -32768 && y < 32767) {
          ASSERT_LE(std::fabs(got - y), bound) << tapsLen << " taps, " << i << " of " << len;
        } else {
          ASSERT_LE(std::abs(got - rounded16(y)), 1);
        }
        for (size_t k = 0; k < count; ++k) t[k] += 2 * static_cast<long double>(mu) * (r[i] - y) * window[k];
      }
      ASSERT_TRUE(srcArena.intact() && refArena.intact() && (place != Place::apart || dstArena.intact()));
      long double largest = 0;
      for (long double tap : t) largest = std::max(largest, std::fabs(tap));
      const auto now = context.taps();
      for (size_t k = 0; k < count; ++k) ASSERT_NEAR(t[k], now[k], 1e-5 * largest) << tapsLen << " taps";
      int got;
      index = indexAfter(tapsLen, index, n);
      const auto line = context.line(&got);
      ASSERT_EQ(index, got);
      ASSERT_EQ(ring<Kvr16s>({window.begin(), window.end()}, index), line);
    }
  }
}

// Pieces give what the whole gives.
TYPED_TEST(LmsTyped, Pieces) {
  using X = TypeParam;
  Random random;
  for (int tapsLen : {1, 6, 64, 79, 80, 90}) {
    const size_t count = static_cast<size_t>(tapsLen);
    const float mu =
        static_cast<float>((std::is_same_v<X, Kvr16s> ? 0x1p-30 : 1) * 0.2 / static_cast<double>(tapsLen));
    const auto taps = noise(random, count);
    const auto src = samples<X>(random, 6000), ref = samples<X>(random, 6000);
    Context<X> whole(taps), inPieces(taps);
    const auto want = whole.run(src, ref, mu);
    std::vector<X> got;
    for (size_t done = 0; done < src.size();) {
      const uint32_t most = random.below(3) == 0 ? 3000 : 90;
      const size_t len = std::min<size_t>(src.size() - done, 1 + random.below(most));
      const auto at = [&](const std::vector<X>& all) { return all.begin() + static_cast<ptrdiff_t>(done); };
      const auto piece = inPieces.run({at(src), at(src) + static_cast<ptrdiff_t>(len)},
                                      {at(ref), at(ref) + static_cast<ptrdiff_t>(len)}, mu);
      got.insert(got.end(), piece.begin(), piece.end());
      done += len;
    }
    ASSERT_EQ(want, got) << tapsLen << " taps";
    expectSameBits(whole.taps(), inPieces.taps());
    int index, indexOfPieces;
    EXPECT_EQ(whole.line(&index), inPieces.line(&indexOfPieces));
    EXPECT_EQ(index, indexOfPieces);
  }
}

// A mu of 0 leaves a plain filter.
TYPED_TEST(LmsTyped, NoStep) {
  using X = TypeParam;
  Random random;
  for (int tapsLen : {1, 5, 64, 80, 100}) {
    const auto taps = noise(random, static_cast<size_t>(tapsLen));
    Context<X> context(taps);
    context.run(samples<X>(random, 500), samples<X>(random, 500), 0);
    expectSameBits(taps, context.taps());
  }
}

// 79 and 80 taps, of which the last one is 0 and cannot move, are the same filter.
TEST(Lms, BothSidesOf80) {
  Random random;
  auto taps = noise(random, 79);
  Context<Kvr32f> shorter(taps);
  taps.push_back(0);
  Context<Kvr32f> longer(taps);
  const auto src = noise(random, 79), ref = noise(random, 79);  // the last tap meets silence
  const auto a = shorter.run(src, ref, 0.01f), b = longer.run(src, ref, 0.01f);
  for (size_t i = 0; i < a.size(); ++i) ASSERT_NEAR(a[i], b[i], 1e-5);
}

// The filter that is to be found is found.
TYPED_TEST(LmsTyped, Converges) {
  using X = TypeParam;
  Random random;
  for (int tapsLen : {1, 7, 40, 64, 120}) {
    const size_t count = static_cast<size_t>(tapsLen), len = 400 * count;
    const auto wanted = noise(random, count, 0.05);  // small enough for references of 16 bits
    const auto src = samples<X>(random, len);
    std::vector<X> ref(len);
    for (size_t i = 0; i < len; ++i) {
      double sum = 0;
      for (size_t k = 0; k < count && k <= i; ++k) sum += wanted[k] * static_cast<double>(src[i - k]);
      ref[i] = static_cast<X>(std::is_same_v<X, Kvr16s> ? std::clamp(std::nearbyint(sum), -32768.0, 32767.0)
                                                        : sum);
    }
    const double power = (std::is_same_v<X, Kvr16s> ? 0x1p30 : 1) / 3;
    Context<X> context(std::vector<float>(count, 0));
    context.run(src, ref, static_cast<float>(0.2 / static_cast<double>(tapsLen) / power));
    const auto found = context.taps();
    for (size_t k = 0; k < count; ++k)
      ASSERT_NEAR(wanted[k], found[k], 0.002) << tapsLen << " taps, tap " << k;
  }
}

TYPED_TEST(LmsTyped, DelayLines) {
  using X = TypeParam;
  Random random;
  for (int tapsLen : {1, 2, 7, 64, 79, 80, 81, 130}) {
    const size_t count = static_cast<size_t>(tapsLen);
    const auto taps = noise(random, count);
    const auto line = samples<X>(random, count);
    for (int index :
         {0, 1, tapsLen / 2, tapsLen - 1, tapsLen, 3 * tapsLen + 1, -1, -tapsLen, INT_MAX, INT_MIN}) {
      Context<X> made(taps, line.data(), index), set(taps);
      ASSERT_EQ(kvrStatusOk, Lms<X>::setDlyLine(set.get(), line.data(), index));
      int got = 12345;
      ASSERT_EQ(line, made.line(&got));
      ASSERT_EQ(index, got);
      ASSERT_EQ(line, set.line(&got));
      ASSERT_EQ(index, got);
      // Within the line or taken modulo its length, the index is where the oldest sample is.
      const int within = static_cast<int>(((int64_t{index} % tapsLen) + tapsLen) % tapsLen);
      std::vector<float> past(count);
      for (size_t age = 0; age < count; ++age)
        past[age] = static_cast<float>(line[(static_cast<size_t>(within) + 2 * count - 1 - age) % count]);
      Oracle oracle(taps, past);
      const auto src = samples<X>(random, 3);
      const auto dst = made.run(src, src, 0);
      for (size_t i = 0; i < 3; ++i) {
        long double bound;
        const long double y = oracle.next(static_cast<float>(src[i]), &bound);
        if constexpr (std::is_same_v<X, Kvr16s>) {
          if (std::fabs(y) < 32767) {
            ASSERT_LE(std::fabs(dst[i] - y), 0.5 + bound);
          }
        } else {
          ASSERT_LE(std::fabs(dst[i] - y), bound);
        }
      }
      ASSERT_EQ(ring<X>(oracle.past(), indexAfter(tapsLen, within, 3)), made.line(&got));
      ASSERT_EQ(indexAfter(tapsLen, within, 3), got);
      expectSameBits(taps, made.taps());
    }
    Context<X> silent(taps, line.data(), 0);
    ASSERT_EQ(kvrStatusOk, Lms<X>::setDlyLine(silent.get(), nullptr, 5));
    int got;
    ASSERT_EQ(std::vector<X>(count), silent.line(&got));
    ASSERT_EQ(5, got);
    // After samples too, which move the window.
    silent.run(samples<X>(random, 700), samples<X>(random, 700), 0);
    ASSERT_EQ(kvrStatusOk, Lms<X>::setDlyLine(silent.get(), nullptr, 0));
    const auto dst = silent.run(std::vector<X>(2), std::vector<X>(2), 0);
    ASSERT_EQ(std::vector<X>(2), dst);
  }
}

// Samples that the window has left do not come back: neither those in front of it nor those behind its end.
TEST(Lms, InfinitiesLeave) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (int tapsLen = 1; tapsLen <= 100; ++tapsLen) {
    const size_t count = static_cast<size_t>(tapsLen);
    std::vector<float> line(count, kInfinity);
    const std::vector<float> taps(count, 0.5f), zeros(count - 1);
    Context<Kvr32f> context(taps, line.data(), 0);
    // The oldest sample is not met. The others would be: they go out while silence comes in, without a step.
    int index;
    ASSERT_EQ(kvrStatusOk, kvrsFIRLMSSetDlyLine_32f(context.get(), nullptr, 0));
    ASSERT_EQ(kvrStatusOk, kvrsFIRLMSGetDlyLine_32f(context.get(), line.data(), &index));
    line[0] = kInfinity;
    ASSERT_EQ(kvrStatusOk, kvrsFIRLMSSetDlyLine_32f(context.get(), line.data(), 0));
    for (int turn = 0; turn < 40; ++turn) {
      const auto dst = context.run({1}, {3}, 0.001f);
      ASSERT_TRUE(std::isfinite(dst[0])) << tapsLen << " taps";
    }
    for (float tap : context.taps()) ASSERT_TRUE(std::isfinite(tap)) << tapsLen << " taps";
  }
}

TYPED_TEST(LmsTyped, Creation) {
  using X = TypeParam;
  using Api = Lms<X>;
  for (int tapsLen : {1, 3, 64, 79, 80, 1000}) {
    const size_t count = static_cast<size_t>(tapsLen);
    typename Api::State* state = nullptr;
    const int before = liveBlocks();
    ASSERT_EQ(kvrStatusOk, Api::initAlloc(&state, nullptr, tapsLen, nullptr, 0));
    EXPECT_EQ(before + 1, liveBlocks());
    uint32_t word;
    memcpy(&word, state, sizeof word);
    EXPECT_EQ(Api::word, word);
    std::vector<float> taps(count, 1);
    std::vector<X> line(count, X{1});
    int index = 7;
    ASSERT_EQ(kvrStatusOk, Api::getTaps(state, taps.data()));
    ASSERT_EQ(kvrStatusOk, Api::getDlyLine(state, line.data(), &index));
    EXPECT_EQ(std::vector<float>(count), taps);
    EXPECT_EQ(std::vector<X>(count), line);
    EXPECT_EQ(0, index);
    // Free does not look at the word.
    memset(static_cast<void*>(state), 0, sizeof word);
    EXPECT_EQ(kvrStatusOk, Api::free(state));
    EXPECT_EQ(before, liveBlocks());
    const auto make = [&] {
      const KvrStatus status = Api::initAlloc(&state, taps.data(), tapsLen, line.data(), 0);
      return status == kvrStatusOk ? Api::free(state) : status;
    };
    EXPECT_EQ(1, countAllocationsWithFailures(make, kvrStatusOutOfMemory));
  }
  EXPECT_EQ(kvrStatusOk, Api::free(nullptr));
  auto* const untouched = reinterpret_cast<typename Api::State*>(intptr_t{64});
  typename Api::State* state = untouched;
  EXPECT_EQ(kvrStatusNullPointer, Api::initAlloc(nullptr, nullptr, 0, nullptr, 0));
  EXPECT_EQ(kvrStatusBadLength, Api::initAlloc(&state, nullptr, 0, nullptr, 0));
  EXPECT_EQ(kvrStatusBadLength, Api::initAlloc(&state, nullptr, INT_MIN, nullptr, -1));
  EXPECT_EQ(kvrStatusOutOfMemory, Api::initAlloc(&state, nullptr, INT_MAX, nullptr, 0));
  EXPECT_EQ(kvrStatusOutOfMemory, Api::initAlloc(&state, nullptr, 1 << 29, nullptr, 0));
  EXPECT_EQ(untouched, state);
}

TYPED_TEST(LmsTyped, OrderOfChecks) {
  using X = TypeParam;
  using Api = Lms<X>;
  Context<X> context({1, 2, 3});
  auto* state = context.get();
  const std::vector<X> src(4, X{1});
  std::vector<X> dst(4, X{7});
  std::vector<float> taps(3, 7);
  int index = 7;
  EXPECT_EQ(kvrStatusNullPointer, Api::filter(nullptr, src.data(), dst.data(), 0, 1, state));
  EXPECT_EQ(kvrStatusNullPointer, Api::filter(src.data(), nullptr, dst.data(), 0, 1, state));
  EXPECT_EQ(kvrStatusNullPointer, Api::filter(src.data(), src.data(), nullptr, 0, 1, state));
  EXPECT_EQ(kvrStatusNullPointer, Api::filter(src.data(), src.data(), dst.data(), 0, 1, nullptr));
  EXPECT_EQ(kvrStatusBadLength, Api::filter(src.data(), src.data(), dst.data(), 0, 1, state));
  EXPECT_EQ(kvrStatusBadLength, Api::filter(src.data(), src.data(), dst.data(), INT_MIN, 1, state));
  const uint32_t other = Api::word ^ 0x31;  // the word of the other type
  memcpy(static_cast<void*>(state), &other, sizeof other);
  EXPECT_EQ(kvrStatusBadLength, Api::filter(src.data(), src.data(), dst.data(), 0, 1, state));
  EXPECT_EQ(kvrStatusContextMismatch, Api::filter(src.data(), src.data(), dst.data(), 4, 1, state));
  EXPECT_EQ(kvrStatusNullPointer, Api::filter(nullptr, src.data(), dst.data(), 4, 1, state));
  EXPECT_EQ(kvrStatusNullPointer, Api::getTaps(state, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, Api::getDlyLine(state, nullptr, &index));
  EXPECT_EQ(kvrStatusNullPointer, Api::getDlyLine(state, dst.data(), nullptr));
  EXPECT_EQ(kvrStatusContextMismatch, Api::getTaps(state, taps.data()));
  EXPECT_EQ(kvrStatusContextMismatch, Api::getDlyLine(state, dst.data(), &index));
  EXPECT_EQ(kvrStatusContextMismatch, Api::setDlyLine(state, nullptr, 1));
  EXPECT_EQ(kvrStatusNullPointer, Api::setDlyLine(nullptr, nullptr, 1));
  EXPECT_EQ(std::vector<X>(4, X{7}), dst);
  EXPECT_EQ(std::vector<float>(3, 7), taps);
  EXPECT_EQ(7, index);
  memcpy(static_cast<void*>(state), &Api::word, sizeof other);
  expectSameBits({1, 2, 3}, context.taps());
  EXPECT_EQ(std::vector<X>(3), context.line(&index));
  EXPECT_EQ(0, index);
}

// Products and sums round as the caller has it; 16-bit results to nearest all the same, ties to even.
TEST(Lms, RoundingModes) {
  for (int mode : kCallerModes) {
    volatile float tap = 0.1f, x = 0.3f, ref = 0.7f, mu2 = 0.2f;
    std::fesetround(mode);
    volatile float product = tap * x, error = ref - product;
    volatile float step = error * mu2;
    volatile float change = x * step, want = tap + change;
    std::fesetround(FE_TONEAREST);
    Context<Kvr32f> context({0.1f});
    const float src = x, reference = ref;
    float dst;
    ASSERT_EQ(kvrStatusOk, callWithRounding(mode, [&] {
                return kvrsFIRLMS_32f(&src, &reference, &dst, 1, 0.1f, context.get());
              }));
    EXPECT_EQ(product, dst);
    EXPECT_EQ(want, context.taps()[0]);
    float taps[1] = {0.1f}, line[2] = {};
    int index = 0;
    ASSERT_EQ(kvrStatusOk, callWithRounding(mode, [&] {
                return kvrsFIRLMSOne_Direct_32f(src, reference, &dst, taps, 1, 0.1f, line, &index);
              }));
    EXPECT_EQ(product, dst);
    EXPECT_EQ(want, taps[0]);

    const std::vector<Kvr16s> in = {1, 2, 3, -1, -3, 5, 32767, -32768},
                              halves = {0, 1, 2, 0, -2, 2, 16384, -16384};
    std::vector<Kvr16s> out(in.size());
    Context<Kvr16s> context16({0.5f});
    ASSERT_EQ(kvrStatusOk, callWithRounding(mode, [&] {
                return kvrsFIRLMS32f_16s(in.data(), in.data(), out.data(), 8, 0, context16.get());
              }));
    EXPECT_EQ(halves, out);
    for (size_t i = 0; i < in.size(); ++i) {
      float half[1] = {0.5f};
      Kvr16s one, line16[2] = {};
      ASSERT_EQ(kvrStatusOk, callWithRounding(mode, [&] {
                  return kvrsFIRLMSOne_Direct32f_16s(in[i], 0, &one, half, 1, 0, line16, &index);
                }));
      EXPECT_EQ(halves[i], one);
    }
  }
}

TYPED_TEST(LmsTyped, Saturates) {
  using X = TypeParam;
  if constexpr (std::is_same_v<X, Kvr16s>) {
    Context<X> context({3});
    EXPECT_EQ((std::vector<X>{32767, -32768, 32766}), context.run({20000, -20000, 10922}, {0, 0, 0}, 0));
    // The error is formed before the output saturates: 20,000 times 3 is 60,000 too large.
    Context<X> moved({3});
    moved.run({20000}, {0}, 0x1p-31f);
    Oracle oracle({3}, {});
    long double bound;
    oracle.move(static_cast<float>(oracle.next(20000, &bound)), 0, 0x1p-31f);
    expectSameBits(oracle.taps(), moved.taps());
    Context<X> nan({std::numeric_limits<float>::quiet_NaN()});
    EXPECT_EQ(std::vector<X>{-32768}, nan.run({1}, {0}, 0));
  }
}

// ---- Without a context.

// Arrays of a stateless filter between guard pages, and where the newest sample is.
template <class X, class T>
struct Direct {
  Direct(Random& random, const std::vector<T>& taps, const std::vector<X>& past, int start)
      : length(static_cast<int>(taps.size())), index(start) {
    const size_t len = taps.size();
    const auto side = random.below(2) == 0 ? Side::front : Side::back;
    tapsAt = tapsArena().template place<T>(len, side, random.below(64));
    lineAt = lineArena().template place<X>(2 * len, side, random.below(64));
    for (size_t i = 0; i < len; ++i) put(tapsAt, i, taps[len - 1 - i]);
    // Both copies, the oldest sample where the window begins.
    for (size_t i = 0; i < 2 * len; ++i) {
      put(lineAt, (i + static_cast<size_t>(start)) % (2 * len), past[len - 1 - i % len]);
    }
    for (size_t i = 0; i < 2 * len; ++i) line.push_back(get(lineAt, i));
  }
  // What the delay line is to hold now.
  void push(X x) {
    line[static_cast<size_t>(index)] = line[static_cast<size_t>(index + length)] = x;
    index = (index + 1) % length;
  }
  void expect(int gotIndex) {
    ASSERT_EQ(index, gotIndex);
    for (size_t i = 0; i < line.size(); ++i) ASSERT_EQ(line[i], get(lineAt, i));
    ASSERT_TRUE(tapsArena().intact() && lineArena().intact());
  }
  std::vector<T> taps() const {
    std::vector<T> all;
    for (size_t i = static_cast<size_t>(length); i-- > 0;) all.push_back(get(tapsAt, i));
    return all;
  }

  static Arena& tapsArena() {
    static Arena arena(4096);
    return arena;
  }
  static Arena& lineArena() {
    static Arena arena(8192);
    return arena;
  }

  int length, index;
  T* tapsAt;
  X* lineAt;
  std::vector<X> line;
};

TEST(LmsDirect, Dense32f) {
  Random random;
  static Arena dstArena(64);
  for (int tapsLen : kTapsLengths) {
    for (int start : {0, tapsLen / 2, tapsLen - 1}) {
      const size_t len = static_cast<size_t>(tapsLen);
      const auto taps = noise(random, len), past = noise(random, len);
      Direct<float, float> direct(random, taps, past, start);
      Oracle oracle(taps, past);
      int index = start;
      const float mu = 0.3f / static_cast<float>(tapsLen);
      for (int n = 0; n < 2 * tapsLen + 3; ++n) {
        const auto x = static_cast<float>(random.unit()), ref = static_cast<float>(random.unit());
        auto* dst = dstArena.place<float>(1, Side::back, random.below(8));
        ASSERT_EQ(kvrStatusOk,
                  kvrsFIRLMSOne_Direct_32f(x, ref, dst, direct.tapsAt, tapsLen, mu, direct.lineAt, &index));
        direct.push(x);
        long double bound;
        const long double want = oracle.next(x, &bound);
        ASSERT_LE(std::fabs(get(dst, 0) - want), bound) << tapsLen << " taps";
        oracle.move(get(dst, 0), ref, mu);
        direct.expect(index);
        expectSameBits(oracle.taps(), direct.taps());
        ASSERT_TRUE(dstArena.intact());
        if (HasFailure()) return;
      }
    }
  }
}

// One step from the taps as they are, so that nothing adds up: y is within the bound of its sum, and each tap within what
// that makes of the error and its own roundings.
TEST(LmsDirect, Dense16) {
  Random random;
  static Arena dstArena(64);
  for (int tapsLen : kTapsLengths) {
    for (int start : {0, tapsLen / 2, tapsLen - 1}) {
      const size_t len = static_cast<size_t>(tapsLen);
      const auto taps = noise(random, len, 2.0 / static_cast<double>(tapsLen));
      const auto past = noise16(random, len, 32767);
      Direct<Kvr16s, float> direct(random, taps, past, start);
      std::vector<float> window(past.begin(), past.end());
      int index = start;
      const float mu = static_cast<float>(0.3 / tapsLen * 0x1p-30);
      for (int n = 0; n < tapsLen + 3; ++n) {
        const auto before = direct.taps();
        Oracle oracle(before, window);
        const Kvr16s x = random.value<Kvr16s>(), ref = random.value<Kvr16s>();
        auto* dst = dstArena.place<Kvr16s>(1, Side::back, random.below(8));
        ASSERT_EQ(kvrStatusOk, kvrsFIRLMSOne_Direct32f_16s(x, ref, dst, direct.tapsAt, tapsLen, mu,
                                                           direct.lineAt, &index));
        direct.push(x);
        long double bound;
        const long double y = oracle.next(x, &bound);
        window = oracle.past();
        ASSERT_GE(get(dst, 0), rounded16(y - bound)) << tapsLen << " taps";
        ASSERT_LE(get(dst, 0), rounded16(y + bound)) << tapsLen << " taps";
        const auto after = direct.taps();
        for (size_t k = 0; k < len; ++k) {
          const long double change = 2 * static_cast<long double>(mu) * (ref - y) * window[k];
          const long double uncertain = 2 * mu * bound * std::fabs(window[k]) +
                                        (3 * std::fabs(change) + std::fabs(before[k] + change)) * 0x1p-23L;
          ASSERT_LE(std::fabs(after[k] - (before[k] + change)), uncertain) << tapsLen << " taps";
        }
        direct.expect(index);
        ASSERT_TRUE(dstArena.intact());
        if (HasFailure()) return;
      }
    }
  }
}

TYPED_TEST(LmsTyped, DirectSparseToTheBit) {
  using X = TypeParam;
  Random random;
  for (int tapsLen : kTapsLengths) {
    const size_t len = static_cast<size_t>(tapsLen);
    const float mu = std::is_same_v<X, Kvr16s> ? 1e-10f : 0.3f;
    const auto taps = noise(random, len);
    Direct<X, float> direct(random, taps, std::vector<X>(len), 0);
    Oracle oracle(taps, {});
    int index = 0;
    const auto src = sparse<X>(random, 3 * len + 10, len), ref = samples<X>(random, 3 * len + 10);
    for (size_t i = 0; i < src.size(); ++i) {
      X dst;
      ASSERT_EQ(kvrStatusOk,
                Lms<X>::one(src[i], ref[i], &dst, direct.tapsAt, tapsLen, mu, direct.lineAt, &index));
      long double bound;
      const float y = static_cast<float>(oracle.next(static_cast<float>(src[i]), &bound));
      if constexpr (std::is_same_v<X, Kvr16s>) {
        ASSERT_EQ(rounded16(y), dst);
      } else {
        ASSERT_EQ(y, dst);
      }
      oracle.move(y, static_cast<float>(ref[i]), mu);
      expectSameBits(oracle.taps(), direct.taps());
    }
  }
}

// ---- Normalised, in Q15. Sums are exact, all else is in double precision as it stands.

int32_t roundedTap(double moved) {
  if (moved >= 2147483647.0) return INT_MAX;
  if (moved <= -2147483648.0) return INT_MIN;
  return static_cast<int32_t>(roundedTo(moved, kvrRoundNear));
}

// Returns whether there was anything in the window.
bool stepQ15(const std::vector<Kvr16s>& window, Kvr16s ref, int mu, std::vector<int32_t>& taps, Kvr16s* dst) {
  int64_t sum = 0, energy = 0;
  for (size_t k = 0; k < taps.size(); ++k) {
    sum += int64_t{taps[k]} * window[k];
    energy += int64_t{window[k]} * window[k];
  }
  if (energy == 0) return false;
  const double y = static_cast<double>(sum) * 0x1p-15, error = ref - y, scaled = mu * error,
               g = scaled / static_cast<double>(energy);
  *dst = rounded16(y);
  for (size_t k = 0; k < taps.size(); ++k) {
    const double change = window[k] * g, moved = taps[k] + change;
    taps[k] = roundedTap(moved);
  }
  return true;
}

TEST(LmsDirect, Q15ToTheBit) {
  Random random;
  static Arena dstArena(64);
  for (int tapsLen : kTapsLengths) {
    for (int mu : {0, 1, 3000, 32768, -20000, INT_MAX, INT_MIN}) {
      const size_t len = static_cast<size_t>(tapsLen);
      // 2^31 * 2^15 * 333 is below 2^53 for all the lengths but those above 128.
      const int shift = tapsLen > 128 ? 2 : static_cast<int>(random.below(20));
      std::vector<int32_t> taps;
      for (size_t k = 0; k < len; ++k) taps.push_back(random.value<int32_t>() >> shift);
      auto window = std::vector<Kvr16s>(len);
      for (Kvr16s& x : window) x = random.value<Kvr16s>();
      const int start = static_cast<int>(random.below(static_cast<uint32_t>(tapsLen)));
      Direct<Kvr16s, int32_t> direct(random, taps, window, start);
      int index = start;
      for (int n = 0; n < 20; ++n) {
        const Kvr16s x = random.value<Kvr16s>(), ref = random.value<Kvr16s>();
        auto* dst = dstArena.place<Kvr16s>(1, Side::back, random.below(8));
        const Kvr16s canary = get(dst, 0);
        const int mode = kCallerModes[n % 4];
        ASSERT_EQ(kvrStatusOk, callWithRounding(mode, [&] {
                    return kvrsFIRLMSOne_DirectQ15_16s(x, ref, dst, direct.tapsAt, tapsLen, mu, direct.lineAt,
                                                       &index);
                  }));
        direct.push(x);
        window.insert(window.begin(), x);
        window.pop_back();
        Kvr16s want = canary;
        stepQ15(window, ref, mu, taps, &want);
        ASSERT_EQ(want, get(dst, 0)) << tapsLen << " taps, mu " << mu;
        ASSERT_EQ(taps, direct.taps()) << tapsLen << " taps, mu " << mu;
        direct.expect(index);
        ASSERT_TRUE(dstArena.intact());
        if (HasFailure()) return;
        if (tapsLen > 128) {  // taps that saturate would make inexact sums
          taps.assign(len, 1000);
          for (size_t k = 0; k < len; ++k) put(direct.tapsAt, k, 1000);
        }
      }
    }
  }
}

TEST(LmsDirect, Q15WithoutEnergy) {
  for (int tapsLen : {1, 4, 15, 16, 17, 100, 128, 129, 200}) {
    const size_t len = static_cast<size_t>(tapsLen);
    std::vector<Kvr32s> taps(len, 1234);
    std::vector<Kvr16s> line(2 * len);
    Kvr16s dst = 77;
    int index = tapsLen - 1;
    ASSERT_EQ(kvrStatusOk,
              kvrsFIRLMSOne_DirectQ15_16s(0, 500, &dst, taps.data(), tapsLen, 16384, line.data(), &index));
    EXPECT_EQ(77, dst);
    EXPECT_EQ(std::vector<Kvr32s>(len, 1234), taps);
    EXPECT_EQ(0, index);
    // The smallest energy there is.
    ASSERT_EQ(kvrStatusOk,
              kvrsFIRLMSOne_DirectQ15_16s(-1, 500, &dst, taps.data(), tapsLen, 0, line.data(), &index));
    EXPECT_EQ(0, dst);  // -1234 / 32768
    EXPECT_EQ(-1, line[0]);
    EXPECT_EQ(-1, line[len]);
  }
}

TEST(LmsDirect, Q15Converges) {
  Random random;
  for (int tapsLen : {1, 12, 64}) {
    const size_t len = static_cast<size_t>(tapsLen);
    std::vector<double> wanted;
    for (size_t k = 0; k < len; ++k) wanted.push_back(0.3 * random.unit());
    std::vector<Kvr32s> taps(len);
    std::vector<Kvr16s> line(2 * len), past(len);
    int index = 0;
    for (int n = 0; n < 300 * tapsLen + 300; ++n) {
      past.insert(past.begin(), static_cast<Kvr16s>(random.unit() * 10000));
      past.pop_back();
      double sum = 0;
      for (size_t k = 0; k < len; ++k) sum += wanted[k] * past[k];
      Kvr16s dst;
      ASSERT_EQ(kvrStatusOk, kvrsFIRLMSOne_DirectQ15_16s(past[0], static_cast<Kvr16s>(std::lround(sum)), &dst,
                                                         taps.data(), tapsLen, 16384, line.data(), &index));
    }
    for (size_t k = 0; k < len; ++k) ASSERT_NEAR(wanted[k], taps[len - 1 - k] / 32768.0, 0.002) << tapsLen;
  }
}

template <class X, class T, class Mu>
void checkDirectArguments(KvrStatus (*one)(X, X, X*, T*, int, Mu, X*, int*)) {
  const std::vector<T> taps(4, T{3});
  const std::vector<X> line(8, X{2});
  auto tapsNow = taps;
  auto lineNow = line;
  X dst = 9;
  int index = 1;
  T* const t = tapsNow.data();
  X* const l = lineNow.data();
  EXPECT_EQ(kvrStatusNullPointer, one(1, 1, nullptr, t, 0, 1, l, &index));
  EXPECT_EQ(kvrStatusNullPointer, one(1, 1, &dst, nullptr, 0, 1, l, &index));
  EXPECT_EQ(kvrStatusNullPointer, one(1, 1, &dst, t, 0, 1, nullptr, &index));
  EXPECT_EQ(kvrStatusNullPointer, one(1, 1, &dst, t, 0, 1, l, nullptr));
  EXPECT_EQ(kvrStatusBadLength, one(1, 1, &dst, t, 0, 1, l, &index));
  EXPECT_EQ(kvrStatusBadLength, one(1, 1, &dst, t, INT_MIN, 1, l, &index));
  for (int bad : {-1, 4, 5, INT_MIN, INT_MAX}) {
    index = bad;
    EXPECT_EQ(kvrStatusBadDelayIndex, one(1, 1, &dst, t, 4, 1, l, &index));
    EXPECT_EQ(kvrStatusBadLength, one(1, 1, &dst, t, 0, 1, l, &index));
    EXPECT_EQ(bad, index);
  }
  EXPECT_EQ(taps, tapsNow);
  EXPECT_EQ(line, lineNow);
  EXPECT_EQ(9, dst);
}
TEST(LmsDirect, OrderOfChecks) {
  checkDirectArguments(kvrsFIRLMSOne_Direct_32f);
  checkDirectArguments(kvrsFIRLMSOne_Direct32f_16s);
  checkDirectArguments(kvrsFIRLMSOne_DirectQ15_16s);
}

}  // namespace
