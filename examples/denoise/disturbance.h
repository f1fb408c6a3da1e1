// What spoils a recording: a whistle and hiss.
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "support/recording.h"

namespace denoise {

using namespace examples;

// Levels are in dB of full scale: of a whistle its amplitude, of hiss its root mean square.
struct Disturbance {
  std::optional<double> whistleHz;
  double whistleLevel = -20;
  std::optional<double> hissLevel;
};

// The whistle is one for all channels, the hiss of each channel is its own, and the same in every run.
Recording disturb(const Recording& clean, const Disturbance& disturbance);

}  // namespace denoise
