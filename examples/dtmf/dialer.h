// Makes recordings of a telephone line on which digits are dialled, with noise and a voice under them.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "support/recording.h"

namespace dtmf {

using namespace examples;

inline constexpr int kLineRate = 8000;

struct Call {
  std::string keys;
  double toneSeconds = 0.07, pauseSeconds = 0.07;
  std::optional<double> noiseDb;  // the tones' power over that of the noise
  Samples voice = {};             // at kLineRate, repeated as long as it takes
  double voiceDb = 10;            // the tones' power over the voice's
  uint32_t seed = 1;
};

// Through the line's mu-law coding and back. Throws Failure.
Samples dial(const Call& call);

// All channels of a recording in one, at the line's rate.
Samples onTheLine(const Recording& recording);

}  // namespace dtmf
