// SPDX-License-Identifier: MIT
#include "kvrs/channels.h"

#include <bit>
#include <cmath>
#include <limits>
#include <memory>

#include "tests/support/packed24.h"
#include "tests/support/rounding.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

constexpr int kFrames[] = {1,  2,  3,  4,  5,  6,  7,  8,   9,   12,  13,  15,  16,
                           17, 31, 32, 33, 64, 65, 70, 129, 511, 512, 513, 1025};
constexpr int kChannels[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 13, 16, 17};

// The stated formulas, every operation rounded by itself.
Kvr16s nearest16(float x) {
  return saturatedTo<Kvr16s>(x, kvrRoundNear, -32768, 32767);
}
Kvr16s scaled16(float x) {
  if (std::isnan(x)) return -32768;
  volatile float product = (x > 1 ? 1.0f : x < -1 ? -1.0f : x) * 32767.5f;
  volatile float y = product - 0.5f;
  return static_cast<Kvr16s>(roundedTo(y, kvrRoundNear));
}
Packed scaled24(float x) {
  if (std::isnan(x)) return Packed::of(-0x800000);
  volatile double product = static_cast<double>(x > 1 ? 1.0f : x < -1 ? -1.0f : x) * 8388607.5;
  volatile double y = product - 0.5;
  return Packed::of(static_cast<int32_t>(roundedTo(y, kvrRoundNear)));
}
float unscaled16(Kvr16s x) {
  volatile float product = static_cast<float>(x) * std::bit_cast<float>(0x38000080u);
  return product + std::bit_cast<float>(0x37800080u);
}
float unscaled24(Packed x) {
  volatile double product = x.asSigned() * 1.19209296656209e-07;
  volatile double sum = product + 5.96046483281045e-08;
  return static_cast<float>(sum);
}

float drawScaled(Random& random) {
  constexpr float kSpecial[] = {0.0f,        -0.0f,       1.0f,         -1.0f, 1.0000001f,
                                -1.0000001f, 0.99999994f, -0.99999994f, 2.0f,  -2.0f,
                                INFINITY,    -INFINITY,   NAN,          -NAN,  1e-40f};
  return random.below(8) == 0 ? kSpecial[random.below(15)] : static_cast<float>(random.unit() * 1.1);
}
float drawUnscaled(Random& random) {
  if (random.below(4) == 0) return drawScaled(random) * 32767.5f;
  if (random.below(4) == 0) return static_cast<float>(random.below(1000)) - 500.5f;
  return static_cast<float>(random.unit() * 40000);
}

struct Layout {
  int channels, frames;
  size_t offset;
  Side side;
};

template <class Check>
void forLayouts(Check check) {
  for (int channels : kChannels) {
    for (int frames : kFrames) {
      if (channels > 3 && frames > 100) continue;
      const size_t step = frames < 20 ? 1 : 7;
      for (size_t offset = 0; offset < 32; offset += step) {
        check(Layout{channels, frames, offset, offset % 2 ? Side::front : Side::back});
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

std::vector<std::unique_ptr<Arena>> arenas(size_t count) {
  std::vector<std::unique_ptr<Arena>> all;
  for (size_t i = 0; i < count; ++i) all.push_back(std::make_unique<Arena>(1100 * sizeof(float)));
  return all;
}

template <class D, class Call, class Oracle, class Draw>
void checkJoin(Call call, Oracle oracle, Draw draw) {
  const auto channelArenas = arenas(17);
  Arena interleaved(1100 * 17 * sizeof(D));
  Random random(3);
  int caller = 0;
  forLayouts([&](Layout l) {
    const size_t channels = static_cast<size_t>(l.channels), frames = static_cast<size_t>(l.frames);
    std::vector<const float*> src;
    std::vector<float> values(channels * frames);
    for (size_t c = 0; c < channels; ++c) {
      float* channel =
          channelArenas[c]->place<float>(frames, c % 2 ? Side::front : Side::back, (l.offset + 3 * c) % 32);
      for (size_t i = 0; i < frames; ++i) put(channel, i, values[i * channels + c] = draw(random));
      src.push_back(channel);
    }
    D* dst = interleaved.place<D>(channels * frames, l.side, l.offset);
    ASSERT_EQ(kvrStatusOk, callWithRounding(kCallerModes[++caller % 4],
                                            [&] { return call(src.data(), l.channels, l.frames, dst); }));
    for (size_t i = 0; i < values.size(); ++i) {
      const D want = oracle(values[i]);
      ASSERT_TRUE(sameBits(get(dst, i), want))
          << l.channels << " channels of " << l.frames << ", offset " << l.offset << ", element " << i << ", "
          << values[i] << ": got " << show(get(dst, i)) << ", want " << show(want);
    }
    ASSERT_TRUE(interleaved.intact()) << l.channels << " channels of " << l.frames;
    for (size_t c = 0; c < channels; ++c) ASSERT_TRUE(channelArenas[c]->intact());
  });
}

template <class S, class Call, class Oracle, class Draw>
void checkSplit(Call call, Oracle oracle, Draw draw) {
  const auto channelArenas = arenas(17);
  Arena interleaved(1100 * 17 * sizeof(S));
  Random random(4);
  forLayouts([&](Layout l) {
    const size_t channels = static_cast<size_t>(l.channels), frames = static_cast<size_t>(l.frames);
    S* src = interleaved.place<S>(channels * frames, l.side, l.offset);
    for (size_t i = 0; i < channels * frames; ++i) put(src, i, draw(random));
    std::vector<float*> dst;
    for (size_t c = 0; c < channels; ++c) {
      dst.push_back(
          channelArenas[c]->place<float>(frames, c % 2 ? Side::front : Side::back, (l.offset + 3 * c) % 32));
    }
    ASSERT_EQ(kvrStatusOk, call(src, dst.data(), l.channels, l.frames));
    for (size_t i = 0; i < channels * frames; ++i) {
      const float want = oracle(get(src, i)), got = get(dst[i % channels], i / channels);
      ASSERT_TRUE(sameBits(got, want)) << l.channels << " channels of " << l.frames << ", offset " << l.offset
                                       << ", element " << i << ": got " << got << ", want " << want;
    }
    ASSERT_TRUE(interleaved.intact());
    for (size_t c = 0; c < channels; ++c)
      ASSERT_TRUE(channelArenas[c]->intact()) << l.channels << " channels of " << l.frames;
  });
}

TEST(Channels, Join) {
  checkJoin<Kvr16s>(kvrsJoin_32f16s_D2L, nearest16, drawUnscaled);
}
TEST(Channels, JoinScaled16) {
  checkJoin<Kvr16s>(kvrsJoinScaled_32f16s_D2L, scaled16, drawScaled);
}
TEST(Channels, JoinScaled24) {
  checkJoin<Packed>(
      [](const float* const* src, int channels, int frames, Packed* dst) {
        return kvrsJoinScaled_32f24s_D2L(src, channels, frames, reinterpret_cast<Kvr8u*>(dst));
      },
      scaled24, drawScaled);
}
TEST(Channels, SplitScaled16) {
  checkSplit<Kvr16s>(kvrsSplitScaled_16s32f_D2L, unscaled16,
                     [](Random& random) { return random.value<Kvr16s>(); });
}
TEST(Channels, SplitScaled24) {
  checkSplit<Packed>(
      [](const Packed* src, float* const* dst, int channels, int frames) {
        return kvrsSplitScaled_24s32f_D2L(reinterpret_cast<const Kvr8u*>(src), dst, channels, frames);
      },
      unscaled24, [](Random& random) { return Packed::of(random.value<Kvr32s>()); });
}

// The whole range there and back.
TEST(Channels, RoundTrip16) {
  std::vector<Kvr16s> all(65536), back(65536);
  for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<Kvr16s>(i);
  std::vector<float> left(32768), right(32768);
  float* const split[] = {left.data(), right.data()};
  const float* const join[] = {left.data(), right.data()};
  ASSERT_EQ(kvrStatusOk, kvrsSplitScaled_16s32f_D2L(all.data(), split, 2, 32768));
  ASSERT_EQ(kvrStatusOk, kvrsJoinScaled_32f16s_D2L(join, 2, 32768, back.data()));
  EXPECT_EQ(all, back);
  const float ends[] = {1.0f, -1.0f, -7.0f, 0.0f};
  const float* const one[] = {ends};
  ASSERT_EQ(kvrStatusOk, kvrsJoinScaled_32f16s_D2L(one, 1, 4, back.data()));
  EXPECT_EQ(32767, back[0]);
  EXPECT_EQ(-32768, back[1]);
  EXPECT_EQ(-32768, back[2]);
  EXPECT_EQ(0, back[3]);
}

// The single array, the counts, the array of pointers, the pointers in it.
TEST(Channels, OrderOfChecks) {
  float data[8] = {};
  const float *good[] = {data, data}, *bad[] = {data, nullptr};
  float *goodDst[] = {data, data}, *badDst[] = {data, nullptr};
  Kvr16s samples[16];
  Kvr8u bytes[48];
  const auto check = [&](auto join) {
    EXPECT_EQ(kvrStatusNullPointer, join(nullptr, 0, 0, false));
    EXPECT_EQ(kvrStatusBadLength, join(nullptr, 0, 4, true));
    EXPECT_EQ(kvrStatusBadLength, join(nullptr, 2, -1, true));
    EXPECT_EQ(kvrStatusNullPointer, join(nullptr, 2, 4, true));
    EXPECT_EQ(kvrStatusNullPointer, join(bad, 2, 4, true));
    EXPECT_EQ(kvrStatusOk, join(bad, 1, 4, true));
    EXPECT_EQ(kvrStatusOk, join(good, 2, 4, true));
  };
  check([&](const float** src, int n, int len, bool dst) {
    return kvrsJoin_32f16s_D2L(src, n, len, dst ? samples : nullptr);
  });
  check([&](const float** src, int n, int len, bool dst) {
    return kvrsJoinScaled_32f16s_D2L(src, n, len, dst ? samples : nullptr);
  });
  check([&](const float** src, int n, int len, bool dst) {
    return kvrsJoinScaled_32f24s_D2L(src, n, len, dst ? bytes : nullptr);
  });
  const auto checkSplits = [&](auto split) {
    memset(samples, 0, sizeof samples);
    memset(bytes, 0, sizeof bytes);
    EXPECT_EQ(kvrStatusNullPointer, split(false, nullptr, 0, 0));
    EXPECT_EQ(kvrStatusBadLength, split(true, nullptr, 0, 4));
    EXPECT_EQ(kvrStatusBadLength, split(true, nullptr, 2, -1));
    EXPECT_EQ(kvrStatusNullPointer, split(true, nullptr, 2, 4));
    EXPECT_EQ(kvrStatusNullPointer, split(true, badDst, 2, 4));
    for (float x : data) EXPECT_EQ(0, x);
    EXPECT_EQ(kvrStatusOk, split(true, goodDst, 2, 4));
    memset(data, 0, sizeof data);
  };
  checkSplits([&](bool src, float** dst, int n, int len) {
    return kvrsSplitScaled_16s32f_D2L(src ? samples : nullptr, dst, n, len);
  });
  checkSplits([&](bool src, float** dst, int n, int len) {
    return kvrsSplitScaled_24s32f_D2L(src ? bytes : nullptr, dst, n, len);
  });
}

}  // namespace
