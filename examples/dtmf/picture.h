// The pictures, drawings in SVG.
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "detector.h"

namespace dtmf {

// The levels of the eight tones over time, and the digits. Throws Failure.
void drawLevels(const Detection& detection, const std::string& title, const std::string& path);

// How many of the digits dialled are wrong, from 0 to 1, over the ratio of signal to noise.
struct ErrorCurve {
  std::string name;
  std::vector<double> db, rate;
};
void drawErrors(const std::vector<ErrorCurve>& curves, const std::string& title, const std::string& path);

}  // namespace dtmf
