// Finds the digits of a telephone's keys: each is two tones at a time, one of four low ones and one of four high ones.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <vector>

#include "support/recording.h"

namespace dtmf {

using namespace examples;

inline constexpr std::array<float, 4> kLowHz = {697, 770, 852, 941};
inline constexpr std::array<float, 4> kHighHz = {1209, 1336, 1477, 1633};
// Row by row of the keys: the low tone chooses the row, the high one the column.
inline constexpr const char* kKeys = "123A456B789C*0#D";
inline constexpr size_t kTones = 8;

struct Digit {
  char key;
  double begin, end;  // in seconds
};

struct Detection {
  double stepSeconds = 0, frameSeconds = 0;
  std::vector<std::array<float, kTones>> levels;  // of each frame: the tones' amplitudes, the low ones first
  std::vector<Digit> digits;

  std::string keys() const;
};

// Throws Failure for a sample rate below 4,000.
Detection detect(const Samples& samples, int sampleRate);

}  // namespace dtmf
