// The picture, drawn by gnuplot.
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "support/recording.h"

namespace denoise {

using namespace examples;

struct Picture {
  std::string title;
  std::string subtitle;
  const Recording& before;
  const Recording& after;
  const Recording* clean;  // null when unknown
  const Samples& taps;
  double highestHz;  // of the spectrograms
};

// Whether gnuplot is there.
bool canDraw();

// Writes a PNG file. Throws Failure.
void draw(const Picture& picture, const std::string& path);

}  // namespace denoise
