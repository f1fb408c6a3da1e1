// SPDX-License-Identifier: MIT
#include "resample/converter.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "support/failure.h"
#include "support/kaiser.h"

namespace resample {
namespace {

// More of them than a state should hold: rates without a common divisor want so many.
constexpr double kMostTaps = 1 << 26;

}  // namespace

Converter::Converter(int inRate, int outRate, const Quality& quality) {
  const int common = std::gcd(inRate, outRate);
  up_ = outRate / common;
  down_ = inRate / common;
  stopHz_ = std::min(inRate, outRate) / 2.0;
  passHz_ = quality.passBand * stopHz_;
  if (up_ == 1 && down_ == 1) {
    taps_ = {1};
    return;
  }

  const double highRate = static_cast<double>(up_) * inRate;
  const double transition = (stopHz_ - passHz_) / highRate;
  if (quality.attenuation / (14.36 * transition) > kMostTaps)
    throw Failure("these rates, in this quality, take a filter that is too long");
  const int tapsLen = std::max(kaiserTaps(quality.attenuation, transition), 5);
  std::vector<double> taps(static_cast<size_t>(tapsLen));
  constexpr int kNoWindow = -1;
  const double cutoff = (passHz_ + stopHz_) / 2 / highRate;
  check("kvrsFIRGenLowpass_64f", kvrsFIRGenLowpass_64f(cutoff, taps.data(), tapsLen, kNoWindow, 0));
  const double alpha = 2 * kaiserBeta(quality.attenuation) / (tapsLen - 1);
  check("kvrsWinKaiser_64f_I", kvrsWinKaiser_64f_I(taps.data(), tapsLen, static_cast<float>(alpha)));
  // Of up taps only one meets a sample.
  const double sum = std::accumulate(taps.begin(), taps.end(), 0.0);
  for (double tap : taps) taps_.push_back(static_cast<float>(tap * up_ / sum));
}

size_t Converter::resultLength(size_t length) const {
  const auto up = static_cast<size_t>(up_), down = static_cast<size_t>(down_);
  return (length * up + down - 1) / down;
}

std::unique_ptr<KvrsFIRMRState_32f, Converter::FreeState> Converter::makeState() const {
  // The filter's delay in steps of the high rate; what is no whole number of results is in the phase.
  const int delay = static_cast<int>(taps_.size() / 2);
  KvrsFIRMRState_32f* state = nullptr;
  check("kvrsFIRMRInitAlloc_32f", kvrsFIRMRInitAlloc_32f(&state, taps_.data(), static_cast<int>(taps_.size()),
                                                         up_, 0, down_, delay % down_, nullptr));
  return std::unique_ptr<KvrsFIRMRState_32f, FreeState>(state);
}

Samples Converter::convert(const Samples& samples, int blockLength, const Progress& progress) const {
  const auto up = static_cast<size_t>(up_), down = static_cast<size_t>(down_);
  const size_t skipped = taps_.size() / 2 / down, wanted = resultLength(samples.size());
  const size_t iterations = (skipped + wanted + up - 1) / up;
  const size_t atOnce = std::max<size_t>(1, static_cast<size_t>(blockLength) / down);

  const auto state = makeState();
  // Zeros push the end out.
  Samples padded = samples, result(iterations * up);
  padded.resize(iterations * down);
  for (size_t i = 0; i < iterations; i += atOnce) {
    const size_t count = std::min(atOnce, iterations - i);
    check("kvrsFIR_32f",
          kvrsFIR_32f(&padded[i * down], &result[i * up], static_cast<int>(count), state.get()));
    progress(static_cast<double>(i + count) / static_cast<double>(iterations));
  }
  result.erase(result.begin(), result.begin() + static_cast<std::ptrdiff_t>(skipped));
  result.resize(wanted);
  return result;
}

Recording convert(const Recording& recording, const Converter& converter, int outRate, int blockLength,
                  const Progress& progress) {
  Recording result{outRate, {}};
  const auto channels = static_cast<double>(recording.channels.size());
  for (const Samples& channel : recording.channels) {
    const auto before = static_cast<double>(result.channels.size());
    result.channels.push_back(
        converter.convert(channel, blockLength, [&](double done) { progress((before + done) / channels); }));
  }
  return result;
}

}  // namespace resample
