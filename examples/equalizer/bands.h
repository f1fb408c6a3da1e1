// The bands of an equalizer: what each is to do, and the second-order section that does it.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <vector>

namespace equalizer {

enum class Kind { highPass, lowPass, peak };

struct Band {
  Kind kind;
  double hz;
  double gainDb = 0;  // of a peak
  double quality = 1;
};

// b0, b1, b2, a0, a1, a2: the layout of kvrsIIRInit_BiQuad_32f.
using Section = std::array<double, 6>;

// Throws Failure for a band that the sample rate has no room for.
Section designSection(const Band& band, double sampleRate);

// The amplitude that the band is wanted to have at a frequency, from its analog model.
double wantedGain(const Band& band, double hz, double sampleRate);

}  // namespace equalizer
