// The picture, a drawing in SVG: spectra before and after, and below them what a sweep found.
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "resample/sweep.h"
#include "support/spectrum.h"

namespace resample {

struct Picture {
  std::string title, subtitle;
  const Spectrum& before;
  const Spectrum& after;
  const Sweep& sweep;
  double passHz;
};

// Throws Failure.
void draw(const Picture& picture, const std::string& path);

}  // namespace resample
