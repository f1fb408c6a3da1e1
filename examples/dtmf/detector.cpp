// Every 13 ms a frame of 26 ms (205 samples at 8 kHz) goes through Goertzel filters at the eight tones' frequencies, two
// at a time. A frame belongs to a key if one low and one high tone stand out of their groups, are about as strong, and make
// a good part of all there is: what voices and instants of sound have, too, but rarely for long. So a digit is a key in three
// frames following each other, and a pause is two frames without it.
// SPDX-License-Identifier: MIT
#include "detector.h"

#include <kvrs.h>

#include <algorithm>
#include <cmath>

#include "support/failure.h"

namespace dtmf {
namespace {

constexpr double kFrameSeconds = 205.0 / 8000;
constexpr char kNone = '\0';
constexpr int kFramesOfKey = 3, kFramesOfPause = 2;

// What makes a frame a key's, in terms of power.
constexpr float kQuietest = 1e-5f;  // mean square of the samples: -50 dB of full scale
constexpr float kStandsOut = 4.0f;  // above the next tone of the group: 6 dB
constexpr float kTwist = 6.3f;      // between the two tones: 8 dB
constexpr float kShare = 0.3f;      // of both tones in all
constexpr float kHarmonic = 0.25f;  // the most of a tone's power in its second harmonic; voices have more

// The mean square that a tone adds to a frame whose spectrum is y there.
float power(Kvr32fc y, size_t len) {
  const float scale = 1.0f / static_cast<float>(len);
  return 2 * (y.re * y.re + y.im * y.im) * scale * scale;
}

class Filters {
 public:
  explicit Filters(int sampleRate) : rate_(static_cast<float>(sampleRate)) {}

  std::array<float, kTones> powers(const float* frame, size_t len) const {
    std::array<float, kTones> all;
    for (size_t k = 0; k < 4; k++) {
      const float relFreq[2] = {kLowHz[k] / rate_, kHighHz[k] / rate_};
      Kvr32fc y[2];
      check("kvrsGoertzTwo_32f", kvrsGoertzTwo_32f(frame, static_cast<int>(len), y, relFreq));
      all[k] = power(y[0], len);
      all[4 + k] = power(y[1], len);
    }
    return all;
  }

  float power2ndHarmonic(const float* frame, size_t len, float hz) const {
    if (2 * hz >= rate_ / 2) return 0;
    Kvr32fc y;
    check("kvrsGoertz_32f", kvrsGoertz_32f(frame, static_cast<int>(len), &y, 2 * hz / rate_));
    return power(y, len);
  }

 private:
  float rate_;
};

// The strongest of four, if it stands out; else 4.
size_t outstanding(const float* group) {
  const size_t best = static_cast<size_t>(std::max_element(group, group + 4) - group);
  for (size_t k = 0; k < 4; k++) {
    if (k != best && group[k] * kStandsOut > group[best]) return 4;
  }
  return best;
}

char keyOf(const std::array<float, kTones>& powers, const Filters& filters, const float* frame, size_t len) {
  float norm = 0;
  check("kvrsNorm_L2_32f", kvrsNorm_L2_32f(frame, static_cast<int>(len), &norm));
  const float total = norm * norm / static_cast<float>(len);
  const size_t row = outstanding(powers.data()), column = outstanding(powers.data() + 4);
  if (total < kQuietest || row == 4 || column == 4) return kNone;
  const float low = powers[row], high = powers[4 + column];
  if (low > high * kTwist || high > low * kTwist || low + high < kShare * total) return kNone;
  if (filters.power2ndHarmonic(frame, len, kLowHz[row]) > kHarmonic * low) return kNone;
  if (filters.power2ndHarmonic(frame, len, kHighHz[column]) > kHarmonic * high) return kNone;
  return kKeys[4 * row + column];
}

}  // namespace

std::string Detection::keys() const {
  std::string all;
  for (const Digit& digit : digits) all += digit.key;
  return all;
}

Detection detect(const Samples& samples, int sampleRate) {
  if (sampleRate < 4000) throw Failure("the tones do not fit into fewer than 4000 samples a second");
  const size_t len = static_cast<size_t>(std::lround(kFrameSeconds * sampleRate)), step = len / 2;
  const Filters filters(sampleRate);
  Detection detection;
  detection.stepSeconds = static_cast<double>(step) / sampleRate;
  detection.frameSeconds = static_cast<double>(len) / sampleRate;

  char before = kNone, held = kNone;
  int agreeing = 0;
  for (size_t begin = 0; begin + len <= samples.size(); begin += step) {
    const float* const frame = samples.data() + begin;
    const auto powers = filters.powers(frame, len);
    const char key = keyOf(powers, filters, frame, len);
    const double from = static_cast<double>(begin) / sampleRate, to = from + detection.frameSeconds;
    agreeing = key == before ? agreeing + 1 : 1;
    if (key != held && agreeing == (key == kNone ? kFramesOfPause : kFramesOfKey)) {
      held = key;
      if (key != kNone)
        detection.digits.push_back({key, from - (kFramesOfKey - 1) * detection.stepSeconds, to});
    } else if (key != kNone && key == held) {
      detection.digits.back().end = to;
    }
    before = key;
    auto& levels = detection.levels.emplace_back();
    std::transform(powers.begin(), powers.end(), levels.begin(), [](float p) { return std::sqrt(2 * p); });
  }
  return detection;
}

}  // namespace dtmf
