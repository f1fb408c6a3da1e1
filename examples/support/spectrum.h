// Spectra, by the library's real FFT.
// SPDX-License-Identifier: MIT
#pragma once

#include "support/recording.h"

namespace examples {

// Mean powers on a grid of frequencies k * stepHz. A sine of full scale has the power 1 at its peak.
struct Spectrum {
  double stepHz = 0;
  std::vector<double> power;

  // The sum over [fromHz, toHz).
  double band(double fromHz, double toHz) const;
};

// Welch's method: the mean over overlapping blocks under a Hann window, and over the channels.
Spectrum meanSpectrum(const Recording& recording);

// The power of a filter's response.
Spectrum response(const Samples& taps, int sampleRate);

// Powers over time and frequency, of the first channel.
struct Spectrogram {
  double stepSeconds = 0;
  double stepHz = 0;
  size_t columns = 0;        // in time
  size_t rows = 0;           // in frequency
  std::vector<float> power;  // row by row
};

Spectrogram spectrogram(const Recording& recording, double highestHz, size_t mostColumns);

// The amplitude of the sine of one frequency that runs through the whole recording, as the power of the mean
// over the channels.
double powerAt(const Recording& recording, double frequencyHz);

}  // namespace examples
