// SPDX-License-Identifier: MIT
#include "bands.h"

#include <kvrs.h>

#include <cmath>
#include <complex>
#include <cstdio>
#include <numbers>

#include "support/failure.h"

namespace equalizer {

using namespace examples;

namespace {

constexpr double kPi = std::numbers::pi;

// A peak of gain A^2 at w0 and of quality Q is (s^2 + s A/Q + 1) / (s^2 + s/(A Q) + 1) in s = j tan(w/2) / tan(w0/2): the
// bilinear transform of an analog section (Bristow-Johnson, Cookbook formulae for audio equalizer biquad filter
// coefficients).
double amplitude(const Band& band) {
  return std::pow(10.0, band.gainDb / 40);
}

Section peak(const Band& band, double sampleRate) {
  const double w = 2 * kPi * band.hz / sampleRate, a = amplitude(band);
  const double alpha = std::sin(w) / (2 * band.quality), middle = -2 * std::cos(w);
  return {1 + alpha * a, middle, 1 - alpha * a, 1 + alpha / a, middle, 1 - alpha / a};
}

}  // namespace

Section designSection(const Band& band, double sampleRate) {
  if (band.hz >= sampleRate / 2) {
    char text[128];
    snprintf(text, sizeof text, "%g Hz does not fit into a recording of %g samples a second", band.hz,
             sampleRate);
    throw Failure(text);
  }
  if (band.kind == Kind::peak) return peak(band, sampleRate);
  // Taps of an order of 2 are laid out as a section is.
  Section taps;
  const auto design = band.kind == Kind::highPass ? kvrsIIRGenHighpass_64f : kvrsIIRGenLowpass_64f;
  check("kvrsIIRGen", design(band.hz / sampleRate, 0, 2, taps.data(), kvrButterworth));
  return taps;
}

double wantedGain(const Band& band, double hz, double sampleRate) {
  const double ratio = std::tan(kPi * hz / sampleRate) / std::tan(kPi * band.hz / sampleRate);
  if (band.kind == Kind::highPass) return 1 / std::sqrt(1 + std::pow(ratio, -4));
  if (band.kind == Kind::lowPass) return 1 / std::sqrt(1 + std::pow(ratio, 4));
  const double a = amplitude(band);
  const std::complex<double> s(0, ratio);
  return std::abs((s * s + s * a / band.quality + 1.0) / (s * s + s / (a * band.quality) + 1.0));
}

}  // namespace equalizer
