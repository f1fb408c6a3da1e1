// SPDX-License-Identifier: MIT
#include "filter.h"

#include <kvrs.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <vector>

#include "support/failure.h"
#include "support/kaiser.h"

namespace denoise {
namespace {

struct FreeState {
  void operator()(KvrsFIRState_32f* state) const { kvrsFIRFree_32f(state); }
};
using State = std::unique_ptr<KvrsFIRState_32f, FreeState>;

// A filter in rest.
State makeState(const Samples& taps) {
  KvrsFIRState_32f* state = nullptr;
  check("kvrsFIRInitAlloc_32f",
        kvrsFIRInitAlloc_32f(&state, taps.data(), static_cast<int>(taps.size()), nullptr));
  return State(state);
}

// The ideal low-pass, without a window: nothing for a cutoff that lets nothing through, a single 1 for one that lets all.
std::vector<double> lowPass(double cutoff, int tapsLen) {
  constexpr int kNoWindow = -1;
  std::vector<double> taps(static_cast<size_t>(tapsLen));
  if (cutoff >= 0.5) {
    taps[taps.size() / 2] = 1;
  } else if (cutoff > 0) {
    check("kvrsFIRGenLowpass_64f", kvrsFIRGenLowpass_64f(cutoff, taps.data(), tapsLen, kNoWindow, 0));
  }
  return taps;
}

}  // namespace

Samples designFilter(const FilterDesign& design, int sampleRate) {
  const double rate = sampleRate;
  const int tapsLen = design.tapsLen.value_or(kaiserTaps(design.attenuation, design.transitionHz / rate));

  // The ideal filter is a sum of ideal low-passes: the band that stays, less what lies below the notch's upper edge, plus
  // what lies below its lower edge.
  std::vector<double> taps = lowPass(design.lowPassHz ? *design.lowPassHz / rate : 0.5, tapsLen);
  if (design.notchHz) {
    const auto upTo = [&](double hz) { return lowPass(hz / rate, tapsLen); };
    const auto upper = upTo(*design.notchHz + design.notchWidthHz / 2);
    const auto lower = upTo(*design.notchHz - design.notchWidthHz / 2);
    check("kvrsSub_64f_I", kvrsSub_64f_I(upper.data(), taps.data(), tapsLen));
    check("kvrsAdd_64f_I", kvrsAdd_64f_I(lower.data(), taps.data(), tapsLen));
  }
  const double alpha = 2 * kaiserBeta(design.attenuation) / (tapsLen - 1);
  check("kvrsWinKaiser_64f_I", kvrsWinKaiser_64f_I(taps.data(), tapsLen, static_cast<float>(alpha)));
  return Samples(taps.begin(), taps.end());
}

Recording applyFilter(const Recording& recording, const Samples& taps, int blockLength,
                      const Progress& progress) {
  const size_t delay = taps.size() / 2;
  const size_t total = recording.length() + delay;
  const size_t allChannels = recording.channels.size();
  Recording filtered{recording.sampleRate, {}};
  for (const Samples& channel : recording.channels) {
    // What has gone in comes out `delay` samples later, so that many zeros push the end out.
    Samples padded = channel;
    padded.resize(total);
    Samples result(total);
    const State state = makeState(taps);
    for (size_t begin = 0; begin < total; begin += static_cast<size_t>(blockLength)) {
      const int len = static_cast<int>(std::min(static_cast<size_t>(blockLength), total - begin));
      check("kvrsFIR_32f", kvrsFIR_32f(&padded[begin], &result[begin], len, state.get()));
      const double done = static_cast<double>(filtered.channels.size() * total + begin) /
                          static_cast<double>(allChannels * total);
      progress(done);
    }
    result.erase(result.begin(), result.begin() + static_cast<std::ptrdiff_t>(delay));
    filtered.channels.push_back(std::move(result));
  }
  progress(1);
  return filtered;
}

double timesRealTime(const Recording& recording, const Samples& taps) {
  using Clock = std::chrono::steady_clock;
  constexpr size_t kSecondsOfSound = 60;
  constexpr int kRuns = 9;

  // A minute of the recording, over and over if it is shorter.
  const Samples& channel = recording.channels.front();
  Samples minute(kSecondsOfSound * static_cast<size_t>(recording.sampleRate));
  for (size_t i = 0; i < minute.size(); i++) minute[i] = channel[i % channel.size()];
  Samples result(minute.size());

  const State state = makeState(taps);
  std::vector<double> seconds;
  for (int run = -1; run < kRuns; run++) {  // the first one warms up
    const auto start = Clock::now();
    check("kvrsFIR_32f",
          kvrsFIR_32f(minute.data(), result.data(), static_cast<int>(minute.size()), state.get()));
    if (run >= 0) seconds.push_back(std::chrono::duration<double>(Clock::now() - start).count());
  }
  std::nth_element(seconds.begin(), seconds.begin() + kRuns / 2, seconds.end());
  return static_cast<double>(kSecondsOfSound) / seconds[kRuns / 2] /
         static_cast<double>(recording.channels.size());
}

}  // namespace denoise
