// SPDX-License-Identifier: MIT
#include "resample/sweep.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace resample {
namespace {

constexpr int kFrequencies = 160;
constexpr double kFloor = -200;  // dB, of nothing at all

struct Fit {
  double gain = 0, rest = 0;  // powers, that of the sine that went in being 1
};

// What is left of [begin, end) of a signal without its part of one frequency, in radians a sample: least squares.
Fit fit(const Samples& signal, size_t begin, size_t end, double step, bool hasFrequency) {
  double cc = 0, cs = 0, ss = 0, c = 0, s = 0, all = 0;
  for (size_t i = begin; i < end; i++) {
    const double x = signal[i], co = std::cos(step * static_cast<double>(i)),
                 si = std::sin(step * static_cast<double>(i));
    cc += co * co, cs += co * si, ss += si * si;
    c += x * co, s += x * si, all += x * x;
  }
  const auto n = static_cast<double>(end - begin);
  if (!hasFrequency) return {0, 2 * all / n};
  const double det = cc * ss - cs * cs, a = (c * ss - s * cs) / det, b = (s * cc - c * cs) / det;
  double rest = 0;
  for (size_t i = begin; i < end; i++) {
    const double e =
        signal[i] - a * std::cos(step * static_cast<double>(i)) - b * std::sin(step * static_cast<double>(i));
    rest += e * e;
  }
  return {a * a + b * b, 2 * rest / n};
}

double decibels(double power) {
  return std::max(10 * std::log10(std::max(power, 1e-30)), kFloor);
}

}  // namespace

Sweep sweep(const Converter& converter, int inRate, int outRate, int blockLength, const Progress& progress) {
  // Around each sine, as many samples as the filter has in view are left out.
  const size_t view = converter.tapsLen() / static_cast<size_t>(converter.up()) + 1;
  const size_t length = 2 * view + 4096;
  Samples sines;
  Sweep result;
  for (int k = 0; k < kFrequencies; k++) {
    const double hz = inRate / 2.0 * (k + 0.5) / kFrequencies;
    for (size_t i = 0; i < length; i++) {
      const double turns = hz / inRate * static_cast<double>(i);
      sines.push_back(static_cast<float>(std::sin(2 * std::numbers::pi * turns)));
    }
    result.hz.push_back(hz);
  }
  const Samples out = converter.convert(sines, blockLength, progress);
  for (size_t k = 0; k < kFrequencies; k++) {
    const double hz = result.hz[k];
    const size_t begin = converter.resultLength(k * length + view),
                 end = converter.resultLength((k + 1) * length - view) - 1;
    const Fit found = fit(out, begin, end, 2 * std::numbers::pi * hz / outRate, hz < outRate / 2.0);
    result.gainDb.push_back(decibels(found.gain));
    result.unwantedDb.push_back(decibels(found.rest));
  }
  return result;
}

}  // namespace resample
