// SPDX-License-Identifier: MIT
#include "filter.h"

#include <kvrs.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "support/failure.h"

namespace equalizer {
namespace {

// One context for each channel.
class Contexts {
 public:
  Contexts(const std::vector<Section>& sections, size_t channels) {
    std::vector<Kvr32f> taps;
    for (const Section& section : sections) taps.insert(taps.end(), section.begin(), section.end());
    for (size_t c = 0; c < channels; c++) {
      KvrsIIRState_32f* state = nullptr;
      check("kvrsIIRInitAlloc_BiQuad_32f",
            kvrsIIRInitAlloc_BiQuad_32f(&state, taps.data(), static_cast<int>(sections.size()), nullptr));
      all_.push_back(state);
    }
  }
  ~Contexts() {
    for (KvrsIIRState_32f* state : all_) kvrsIIRFree_32f(state);
  }
  Contexts(const Contexts&) = delete;
  Contexts& operator=(const Contexts&) = delete;

  KvrsIIRState_32f* const* get() const { return all_.data(); }

 private:
  std::vector<KvrsIIRState_32f*> all_;
};

}  // namespace

Recording equalize(const Recording& recording, const std::vector<Section>& sections, int blockLength) {
  Recording result = recording;
  const size_t channels = recording.channels.size(), step = static_cast<size_t>(blockLength);
  const Contexts contexts(sections, channels);
  std::vector<Kvr32f*> samples(channels);
  for (size_t begin = 0; begin < recording.length(); begin += step) {
    for (size_t c = 0; c < channels; c++) samples[c] = result.channels[c].data() + begin;
    const auto count = static_cast<int>(std::min(step, recording.length() - begin));
    check("kvrsIIR_32f_IP",
          kvrsIIR_32f_IP(samples.data(), count, static_cast<int>(channels), contexts.get()));
  }
  return result;
}

std::vector<double> measuredGains(const std::vector<Section>& sections, const std::vector<double>& hz,
                                  double sampleRate, int blockLength) {
  // A second is long enough for the slowest of the bands.
  Recording impulse{static_cast<int>(sampleRate), {Samples(static_cast<size_t>(sampleRate))}};
  impulse.channels[0][0] = 1;
  const Recording response = equalize(impulse, sections, blockLength);
  std::vector<double> gains;
  for (double frequency : hz) {
    // Horner's scheme on the samples, the last one first.
    const auto back = std::polar(1.0, -2 * std::numbers::pi * frequency / sampleRate);
    std::complex<double> sum = 0;
    const Samples& samples = response.channels[0];
    for (size_t i = samples.size(); i-- > 0;) sum = sum * back + static_cast<double>(samples[i]);
    gains.push_back(std::abs(sum));
  }
  return gains;
}

}  // namespace equalizer
