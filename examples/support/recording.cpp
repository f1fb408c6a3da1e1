// SPDX-License-Identifier: MIT
#include "support/recording.h"

#include <sndfile.h>

#include <cmath>
#include <memory>

#include "support/failure.h"

namespace examples {
namespace {

using File = std::unique_ptr<SNDFILE, decltype(&sf_close)>;

constexpr size_t kFramesAtOnce = 1 << 16;

}  // namespace

Recording readRecording(const std::string& path) {
  SF_INFO info{};
  File file(sf_open(path.c_str(), SFM_READ, &info), sf_close);
  if (file == nullptr) throw Failure("cannot read " + path + ": " + sf_strerror(nullptr));

  const auto channels = static_cast<size_t>(info.channels);
  Recording recording{info.samplerate, std::vector<Samples>(channels)};
  Samples interleaved(kFramesAtOnce * channels);
  while (const sf_count_t frames = sf_readf_float(file.get(), interleaved.data(), kFramesAtOnce)) {
    for (size_t c = 0; c < channels; c++) {
      for (size_t i = 0; i < static_cast<size_t>(frames); i++) {
        const float sample = interleaved[i * channels + c];
        if (!std::isfinite(sample)) throw Failure(path + " holds samples that are not numbers");
        recording.channels[c].push_back(sample);
      }
    }
  }
  if (sf_error(file.get()) != SF_ERR_NO_ERROR)
    throw Failure("cannot read " + path + ": " + sf_strerror(file.get()));
  if (recording.length() == 0) throw Failure(path + " holds no samples");
  return recording;
}

void writeRecording(const Recording& recording, const std::string& path) {
  const size_t channels = recording.channels.size();
  SF_INFO info{};
  info.samplerate = recording.sampleRate;
  info.channels = static_cast<int>(channels);
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  File file(sf_open(path.c_str(), SFM_WRITE, &info), sf_close);
  if (file == nullptr) throw Failure("cannot write " + path + ": " + sf_strerror(nullptr));
  sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);

  Samples interleaved;
  for (size_t begin = 0; begin < recording.length(); begin += kFramesAtOnce) {
    const size_t frames = std::min(kFramesAtOnce, recording.length() - begin);
    interleaved.resize(frames * channels);
    for (size_t c = 0; c < channels; c++) {
      for (size_t i = 0; i < frames; i++) interleaved[i * channels + c] = recording.channels[c][begin + i];
    }
    const auto written = sf_writef_float(file.get(), interleaved.data(), static_cast<sf_count_t>(frames));
    if (written != static_cast<sf_count_t>(frames)) {
      throw Failure("cannot write " + path + ": " + sf_strerror(file.get()));
    }
  }
  if (sf_close(file.release()) != 0) throw Failure("cannot write " + path);
}

}  // namespace examples
