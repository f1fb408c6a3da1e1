// The filter: a long FIR with linear phase, which cuts a notch out and everything above a band off.
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "support/progress.h"
#include "support/recording.h"

namespace denoise {

using namespace examples;

struct FilterDesign {
  std::optional<double> notchHz;
  std::optional<double> lowPassHz;
  std::optional<int> tapsLen;  // odd; by default as many as transitionHz takes
  double notchWidthHz = 100;   // between the points of half amplitude
  double transitionHz = 50;    // from passing to stopping
  double attenuation = 80;     // where it stops, in dB
};

// The taps for a sample rate: an odd number of them, symmetric.
Samples designFilter(const FilterDesign& design, int sampleRate);

// Filters every channel in blocks of `blockLength` and takes the filter's delay back, so that the result lies
// under the original sample by sample.
Recording applyFilter(const Recording& recording, const Samples& taps, int blockLength,
                      const Progress& progress);

// How many seconds of this recording go through the filter in one second, with the threads that the library
// may use.
double timesRealTime(const Recording& recording, const Samples& taps);

}  // namespace denoise
