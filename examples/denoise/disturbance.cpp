// SPDX-License-Identifier: MIT
#include "disturbance.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace denoise {
namespace {

double amplitude(double decibels) {
  return std::pow(10.0, decibels / 20.0);
}

// Rises from 0 to 1 over the first tenth of a second and falls again over the last one. A whistle that is
// there from one sample to the next would be a click besides, which has all frequencies.
double envelope(size_t i, size_t length, int sampleRate) {
  const double ramp = std::min(0.1 * sampleRate, 0.25 * static_cast<double>(length));
  const double toEdge = static_cast<double>(std::min(i, length - 1 - i));
  return toEdge >= ramp ? 1.0 : 0.5 - 0.5 * std::cos(std::numbers::pi * toEdge / ramp);
}

}  // namespace

Recording disturb(const Recording& clean, const Disturbance& disturbance) {
  Recording disturbed = clean;
  if (disturbance.whistleHz) {
    const double step = 2.0 * std::numbers::pi * *disturbance.whistleHz / clean.sampleRate;
    const double height = amplitude(disturbance.whistleLevel);
    for (Samples& channel : disturbed.channels) {
      for (size_t i = 0; i < channel.size(); i++) {
        const double whistle =
            height * envelope(i, channel.size(), clean.sampleRate) * std::sin(step * static_cast<double>(i));
        channel[i] += static_cast<float>(whistle);
      }
    }
  }
  if (disturbance.hissLevel) {
    std::mt19937 generator(1);
    std::normal_distribution<double> hiss(0.0, amplitude(*disturbance.hissLevel));
    for (Samples& channel : disturbed.channels) {
      for (float& sample : channel) sample += static_cast<float>(hiss(generator));
    }
  }
  return disturbed;
}

}  // namespace denoise
