// SPDX-License-Identifier: MIT
#include "picture.h"

#include <algorithm>
#include <cmath>

#include "support/drawing.h"

namespace dtmf {
namespace {

constexpr const char* kTitle = "font-size=\"20\" font-weight=\"bold\"";
constexpr double kLeft = 80, kRight = 960;

std::string number(const char* format, double value) {
  char text[64];
  snprintf(text, sizeof text, format, value);
  return text;
}

// 1, 2 or 5 times a power of ten that cuts `range` into ten parts at the most.
double gridStep(double range) {
  for (double decade = 1e-3;; decade *= 10) {
    for (int digit : {1, 2, 5}) {
      if (range <= 10 * decade * digit) return decade * digit;
    }
  }
}

}  // namespace

void drawLevels(const Detection& detection, const std::string& title, const std::string& path) {
  constexpr double kTop = 100, kStrip = 50, kBottom = kTop + kTones * kStrip;
  Drawing drawing(path, 1000, kBottom + 60);
  const double seconds = std::max(
      1e-3, detection.stepSeconds * static_cast<double>(detection.levels.size()) + detection.frameSeconds);
  Axes all(drawing, kLeft, kRight, kTop, kBottom, {0, seconds}, {0, 1});
  drawing.text(kLeft, 34, kTitle, title);
  drawing.text(kLeft, 58, "fill=\"#404040\"",
               "levels of the eight tones, 60 dB to a strip, and the digits found");
  for (const Digit& digit : detection.digits) {
    const double x1 = all.x(digit.begin), x2 = all.x(digit.end);
    drawing.rectangle(x1, kTop, x2, kBottom, "fill=\"#fdebd0\"");
    drawing.text((x1 + x2) / 2, kTop - 8, "text-anchor=\"middle\" font-weight=\"bold\" fill=\"#b05f00\"",
                 std::string(1, digit.key));
  }
  const double step = gridStep(seconds);
  for (double t = 0; t <= seconds; t += step) all.gridX(t, number("%g s", t));

  std::vector<double> times;
  for (size_t k = 0; k < detection.levels.size(); k++) {
    times.push_back(static_cast<double>(k) * detection.stepSeconds + detection.frameSeconds / 2);
  }
  for (size_t tone = 0; tone < kTones; tone++) {
    const double top = kTop + static_cast<double>(tone) * kStrip;
    Axes strip(drawing, kLeft, kRight, top + 4, top + kStrip, {0, seconds}, {-60, 0});
    strip.gridY(-60, "");
    const float hz = tone < 4 ? kLowHz[tone] : kHighHz[tone - 4];
    drawing.text(kLeft - 8, top + kStrip / 2 + 4, "text-anchor=\"end\" fill=\"#303030\"",
                 number("%.0f Hz", static_cast<double>(hz)));
    std::vector<double> db;
    for (const auto& levels : detection.levels) {
      db.push_back(20 * std::log10(std::max(1e-6, static_cast<double>(levels[tone]))));
    }
    strip.curve(
        times, db,
        tone < 4 ? "stroke=\"#1f5fbf\" stroke-width=\"1.5\"" : "stroke=\"#2e8b57\" stroke-width=\"1.5\"");
  }
  drawing.close();
}

void drawErrors(const std::vector<ErrorCurve>& curves, const std::string& title, const std::string& path) {
  constexpr double kBottom = 500;
  constexpr const char* kColours[] = {"#1f5fbf", "#d08020"};
  const double lowest = curves.front().db.front(), highest = curves.front().db.back();
  Drawing drawing(path, 1000, 560);
  Axes axes(drawing, kLeft, kRight, 90, kBottom, {lowest, highest}, {0, 1});
  drawing.text(kLeft, 34, kTitle, title);
  for (int percent = 0; percent <= 100; percent += 20)
    axes.gridY(percent / 100.0, number("%.0f %%", percent));
  for (double db = std::ceil(lowest / 5) * 5; db <= highest; db += 5) {
    axes.gridX(db, number(db == 0 ? "%.0f dB" : "%+.0f dB", db));
  }
  drawing.text((kLeft + kRight) / 2, kBottom + 44, "text-anchor=\"middle\" fill=\"#303030\"",
               "power of the tones over that of the noise");
  for (size_t c = 0; c < curves.size(); c++) {
    const std::string colour = kColours[c % 2];
    axes.curve(curves[c].db, curves[c].rate, ("stroke=\"" + colour + "\" stroke-width=\"2.5\"").c_str());
    drawing.text(kRight, 58 + 18 * static_cast<double>(c),
                 ("text-anchor=\"end\" font-weight=\"bold\" fill=\"" + colour + "\"").c_str(),
                 curves[c].name);
  }
  drawing.close();
}

}  // namespace dtmf
