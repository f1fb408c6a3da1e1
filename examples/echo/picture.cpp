// SPDX-License-Identifier: MIT
#include "picture.h"

#include <cmath>

#include "support/drawing.h"

namespace echo {

using namespace examples;

namespace {

constexpr const char* kEcho = "stroke=\"#f0a040\" stroke-width=\"2.5\"";
constexpr const char* kLeft = "stroke=\"#1f5fbf\" stroke-width=\"2\"";
constexpr const char* kVoice = "stroke=\"#909090\" stroke-width=\"1.5\" stroke-dasharray=\"4 3\"";

// Some round number of seconds, so that there are about ten lines.
double secondsBetweenLines(double all) {
  const double decade = std::pow(10, std::floor(std::log10(all / 10)));
  for (int times : {1, 2, 5}) {
    if (all / (decade * times) <= 12) return decade * times;
  }
  return decade * 10;
}

}  // namespace

void draw(const Picture& picture, const std::string& path) {
  constexpr double kX = 80, kEnd = 960;
  Drawing drawing(path, 1000, 900);
  drawing.text(kX, 34, "font-size=\"20\" font-weight=\"bold\"", picture.title);
  drawing.text(kX, 58, "fill=\"#404040\"", picture.subtitle);

  const char* const kHeading = "font-weight=\"bold\" fill=\"#303030\"";
  drawing.text(kX, 92, kHeading, "Learning curve: levels in pieces of 20 ms");
  const double end = picture.seconds.back();
  Axes time(drawing, kX, kEnd, 105, 445, {0, end}, {-100, 0});
  time.decibelGrid(20);
  const double step = secondsBetweenLines(end);
  for (int i = 0; i * step <= end * 1.0001; i++) {
    char label[32];
    snprintf(label, sizeof label, "%g s", i * step);
    time.gridX(i * step, label);
  }
  if (!picture.voiceDb.empty()) time.curve(picture.seconds, picture.voiceDb, kVoice);
  time.curve(picture.seconds, picture.echoDb, kEcho);
  time.curve(picture.seconds, picture.leftDb, kLeft);

  drawing.text(kX, 506, kHeading, "Spectra: the last time that the recording is played");
  Axes spectrum(drawing, kX, kEnd, 519, 859, {picture.hz.front(), picture.hz.back(), true}, {-140, -20});
  spectrum.decibelGrid(20);
  spectrum.frequencyGrid();
  spectrum.curve(picture.hz, picture.echoAtDb, kEcho);
  spectrum.curve(picture.hz, picture.leftAtDb, kLeft);

  const auto legend = [&](double y, const char* colour, const char* words) {
    const std::string style = std::string("text-anchor=\"end\" font-weight=\"bold\" fill=\"") + colour + "\"";
    drawing.text(kEnd, y, style.c_str(), words);
  };
  legend(34, "#d08020", "echo at the microphone");
  legend(54, "#1f5fbf", "what is left of it");
  if (!picture.voiceDb.empty()) legend(74, "#808080", "voice in the room");
  drawing.close();
}

}  // namespace echo
