// Recordings in memory, one vector of samples for each channel.
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace examples {

using Samples = std::vector<float>;

struct Recording {
  int sampleRate = 0;
  std::vector<Samples> channels;

  size_t length() const { return channels.front().size(); }
  double seconds() const { return static_cast<double>(length()) / sampleRate; }
};

// Any format, sample rate and number of channels that libsndfile reads. Throws Failure.
Recording readRecording(const std::string& path);

// A WAV file with 16 bits a sample; louder samples are clipped. Throws Failure.
void writeRecording(const Recording& recording, const std::string& path);

}  // namespace examples
