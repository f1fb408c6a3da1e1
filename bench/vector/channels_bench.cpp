// SPDX-License-Identifier: MIT
#include "kvrs/channels.h"

#include <cmath>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kFrames[] = {64, 1024, 16384, 1 << 20};

// What a user would write. The compiler may turn rint into an instruction.
#define KVRS_LOOP __attribute__((noipa, optimize("no-math-errno", "no-trapping-math")))

KVRS_LOOP void loopJoin(const float* const* src, int channels, int frames, Kvr16s* dst) {
  for (int c = 0; c < channels; ++c) {
    const float* channel = src[c];
    for (int i = 0; i < frames; ++i) {
      const float x = channel[i] < -1 ? -1 : channel[i] > 1 ? 1 : channel[i];
      dst[i * channels + c] = static_cast<Kvr16s>(static_cast<int>(std::rint(x * 32767.5f - 0.5f)));
    }
  }
}
KVRS_LOOP void loopJoin24(const float* const* src, int channels, int frames, Kvr8u* dst) {
  for (int c = 0; c < channels; ++c) {
    const float* channel = src[c];
    for (int i = 0; i < frames; ++i) {
      const double x = channel[i] < -1 ? -1 : channel[i] > 1 ? 1 : channel[i];
      const int y = static_cast<int>(std::rint(x * 8388607.5 - 0.5));
      Kvr8u* sample = dst + 3 * (i * channels + c);
      sample[0] = static_cast<Kvr8u>(y);
      sample[1] = static_cast<Kvr8u>(y >> 8);
      sample[2] = static_cast<Kvr8u>(y >> 16);
    }
  }
}
KVRS_LOOP void loopSplit(const Kvr16s* src, float* const* dst, int channels, int frames) {
  for (int c = 0; c < channels; ++c) {
    float* channel = dst[c];
    for (int i = 0; i < frames; ++i) channel[i] = src[i * channels + c] * 0x1.0001p-15f + 0x1.0001p-16f;
  }
}
KVRS_LOOP void loopSplit24(const Kvr8u* src, float* const* dst, int channels, int frames) {
  for (int c = 0; c < channels; ++c) {
    float* channel = dst[c];
    for (int i = 0; i < frames; ++i) {
      const Kvr8u* sample = src + 3 * (i * channels + c);
      const unsigned word = sample[0] | sample[1] << 8 | static_cast<unsigned>(sample[2]) << 16;
      channel[i] = static_cast<float>((static_cast<int>(word << 8) >> 8) * 1.19209296656209e-07 +
                                      5.96046483281045e-08);
    }
  }
}

Register channels([] {
  for (int n : {1, 2, 3, 6, 8}) {
    for (int frames : kFrames) {
      const size_t samples = static_cast<size_t>(n) * static_cast<size_t>(frames);
      const auto planar = array<float>(samples);
      const auto interleaved = array<Kvr8u>(3 * samples);
      const auto pointers = array<float*>(static_cast<size_t>(n));
      for (int c = 0; c < n; ++c)
        pointers.get()[c] = planar.get() + static_cast<size_t>(c) * static_cast<size_t>(frames);
      const auto words = [=] { return reinterpret_cast<Kvr16s*>(interleaved.get()); };
      // Keeps the arrays alive, too.
      const auto from = [=] { return (void)planar, const_cast<const float* const*>(pointers.get()); };
      const auto to = [=] { return (void)planar, pointers.get(); };
      const std::string size = std::to_string(n) + "x" + std::to_string(frames);
      add("channels/Join16/" + size, "kvrs", [=] { kvrsJoinScaled_32f16s_D2L(from(), n, frames, words()); });
      add("channels/Join16/" + size, "loop", [=] { loopJoin(from(), n, frames, words()); });
      add("channels/Join24/" + size, "kvrs",
          [=] { kvrsJoinScaled_32f24s_D2L(from(), n, frames, interleaved.get()); });
      add("channels/Join24/" + size, "loop", [=] { loopJoin24(from(), n, frames, interleaved.get()); });
      add("channels/Split16/" + size, "kvrs", [=] { kvrsSplitScaled_16s32f_D2L(words(), to(), n, frames); });
      add("channels/Split16/" + size, "loop", [=] { loopSplit(words(), to(), n, frames); });
      add("channels/Split24/" + size, "kvrs",
          [=] { kvrsSplitScaled_24s32f_D2L(interleaved.get(), to(), n, frames); });
      add("channels/Split24/" + size, "loop", [=] { loopSplit24(interleaved.get(), to(), n, frames); });
    }
  }
});

}  // namespace
}  // namespace kvrs::bench
