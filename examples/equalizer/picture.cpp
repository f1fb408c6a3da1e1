// SPDX-License-Identifier: MIT
#include "picture.h"

#include "support/drawing.h"

namespace equalizer {

using namespace examples;

void draw(const Picture& picture, const std::string& path) {
  constexpr double kLeft = 70, kRight = 960;
  Drawing drawing(path, 1000, 550);
  drawing.text(kLeft, 34, "font-size=\"20\" font-weight=\"bold\"", picture.title);
  drawing.text(kLeft, 58, "fill=\"#404040\"", picture.subtitle);
  Axes axes(drawing, kLeft, kRight, 90, 500, {picture.hz.front(), picture.hz.back(), true}, {-36, 18});
  axes.decibelGrid(6);
  axes.frequencyGrid();
  axes.curve(picture.hz, picture.wantedDb, "stroke=\"#f0b060\" stroke-width=\"7\"");
  axes.curve(picture.hz, picture.measuredDb, "stroke=\"#1f5fbf\" stroke-width=\"2\"");
  drawing.text(kRight, 58, "text-anchor=\"end\" fill=\"#d08020\" font-weight=\"bold\"", "wanted");
  drawing.text(kRight, 76, "text-anchor=\"end\" fill=\"#1f5fbf\" font-weight=\"bold\"", "measured");
  drawing.close();
}

}  // namespace equalizer
