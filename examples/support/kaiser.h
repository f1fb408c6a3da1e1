// The window by which filters are cut to length: J. F. Kaiser, "Nonrecursive digital filter design using the I0-sinh window
// function", 1974.
// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

namespace examples {

// Taps, an odd number, of a filter that goes from passing to stopping within `transition` of the sampling rate, and stops by
// `attenuation` dB.
inline int kaiserTaps(double attenuation, double transition) {
  return static_cast<int>(std::ceil((attenuation - 7.95) / (14.36 * transition))) | 1;
}

// The window's parameter.
inline double kaiserBeta(double attenuation) {
  if (attenuation > 50) return 0.1102 * (attenuation - 8.7);
  if (attenuation < 21) return 0;
  return 0.5842 * std::pow(attenuation - 21, 0.4) + 0.07886 * (attenuation - 21);
}

}  // namespace examples
