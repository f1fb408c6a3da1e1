// The cascade that runs over a recording, and what it does to each frequency.
// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "bands.h"
#include "support/recording.h"

namespace equalizer {

using namespace examples;

// All channels, `blockLength` samples in a call. Throws Failure.
Recording equalize(const Recording& recording, const std::vector<Section>& sections, int blockLength);

// The amplitudes at some frequencies, measured: the spectrum of what comes out for an impulse.
std::vector<double> measuredGains(const std::vector<Section>& sections, const std::vector<double>& hz,
                                  double sampleRate, int blockLength);

}  // namespace equalizer
