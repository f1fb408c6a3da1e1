// SPDX-License-Identifier: MIT
#include "resample/picture.h"

#include <algorithm>
#include <cmath>

#include "support/drawing.h"

namespace resample {
namespace {

constexpr const char* kBlue = "stroke=\"#1f5fbf\" stroke-width=\"1.8\"";
constexpr const char* kOrange = "stroke=\"#e08a20\" stroke-width=\"1.8\"";
constexpr const char* kRed = "stroke=\"#c03030\" stroke-width=\"1.8\"";

double highest(const Spectrum& spectrum) {
  return spectrum.stepHz * static_cast<double>(spectrum.power.size() - 1);
}

// Lines of frequencies in equal steps of 1, 2 or 5 times a power of ten, some ten of them.
void kilohertzGrid(Axes& axes, double highestHz) {
  const double decade = std::pow(10, std::floor(std::log10(highestHz / 5)));
  const double step = highestHz / decade > 25 ? 5 * decade : highestHz / decade > 10 ? 2 * decade : decade;
  for (double hz = 0; hz <= highestHz; hz += step) {
    char label[32];
    snprintf(label, sizeof label, "%g kHz", hz / 1000);
    axes.gridX(hz, label);
  }
}

void curve(Axes& axes, const Spectrum& spectrum, const char* style) {
  std::vector<double> hz, db;
  for (double power : spectrum.power) {
    hz.push_back(spectrum.stepHz * static_cast<double>(hz.size()));
    db.push_back(10 * std::log10(std::max(power, 1e-20)));
  }
  axes.curve(hz, db, style);
}

}  // namespace

void draw(const Picture& picture, const std::string& path) {
  constexpr double kLeft = 70, kRight = 960;
  constexpr const char* kBlueText = "text-anchor=\"end\" fill=\"#1f5fbf\" font-weight=\"bold\"";
  const double highestHz = std::max(highest(picture.before), highest(picture.after));
  Drawing drawing(path, 1000, 810);
  drawing.text(kLeft, 34, "font-size=\"20\" font-weight=\"bold\"", picture.title);
  drawing.text(kLeft, 58, "fill=\"#404040\"", picture.subtitle);

  Axes spectra(drawing, kLeft, kRight, 80, 380, {0, highestHz}, {-140, 0});
  spectra.decibelGrid(20);
  kilohertzGrid(spectra, highestHz);
  curve(spectra, picture.before, kOrange);
  curve(spectra, picture.after, kBlue);
  drawing.text(kRight - 90, 58, "text-anchor=\"end\" fill=\"#e08a20\" font-weight=\"bold\"",
               "spectrum before");
  drawing.text(kRight, 58, kBlueText, "and after");

  Axes swept(drawing, kLeft, kRight, 460, 760, {0, highestHz}, {-180, 20});
  swept.decibelGrid(20);
  kilohertzGrid(swept, highestHz);
  drawing.line(swept.x(picture.passHz), 460, swept.x(picture.passHz), 760,
               "stroke=\"#808080\" stroke-dasharray=\"4 4\"");
  // The output has no frequencies beyond half its rate.
  const Sweep& sweep = picture.sweep;
  const auto end = std::lower_bound(sweep.hz.begin(), sweep.hz.end(), highest(picture.after));
  swept.curve({sweep.hz.begin(), end}, sweep.gainDb, kBlue);
  swept.curve(sweep.hz, sweep.unwantedDb, kRed);
  drawing.text(kLeft, 440, "fill=\"#404040\"", "Sines of the frequencies of the input, one after the other:");
  drawing.text(kRight - 200, 440, kBlueText, "what comes out of each");
  drawing.text(kRight, 440, "text-anchor=\"end\" fill=\"#c03030\" font-weight=\"bold\"",
               "and all that comes along");
  drawing.close();
}

}  // namespace resample
