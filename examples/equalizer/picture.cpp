// SPDX-License-Identifier: MIT
#include "picture.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "support/failure.h"

namespace equalizer {

using namespace examples;

namespace {

constexpr double kLeft = 70, kRight = 960, kTop = 90, kBottom = 500;
constexpr double kLowestDb = -36, kHighestDb = 18;

// Places on the paper.
class Paper {
 public:
  Paper(double lowestHz, double highestHz) : lowest_(std::log(lowestHz)), highest_(std::log(highestHz)) {}

  double x(double hz) const {
    return kLeft + (std::log(hz) - lowest_) / (highest_ - lowest_) * (kRight - kLeft);
  }
  double y(double db) const {
    const double within = std::clamp(db, kLowestDb, kHighestDb);
    return kBottom - (within - kLowestDb) / (kHighestDb - kLowestDb) * (kBottom - kTop);
  }

 private:
  double lowest_, highest_;
};

std::string escaped(const std::string& text) {
  std::string result;
  for (char c : text) {
    if (c == '&') {
      result += "&amp;";
    } else if (c == '<') {
      result += "&lt;";
    } else if (static_cast<unsigned char>(c) >= ' ') {
      result += c;
    }
  }
  return result;
}

void text(FILE* out, double x, double y, const char* style, const std::string& words) {
  fprintf(out, "<text x=\"%.1f\" y=\"%.1f\" %s>%s</text>\n", x, y, style, escaped(words).c_str());
}

void curve(FILE* out, const Paper& paper, const Picture& picture, const std::vector<double>& db,
           const char* style) {
  fprintf(out, "<polyline fill=\"none\" %s points=\"", style);
  for (size_t i = 0; i < db.size(); i++) fprintf(out, "%.1f,%.2f ", paper.x(picture.hz[i]), paper.y(db[i]));
  fputs("\"/>\n", out);
}

void grid(FILE* out, const Paper& paper, double lowestHz, double highestHz) {
  constexpr const char* kLine = "stroke=\"#e0e0e0\"";
  constexpr const char* kRightText = "text-anchor=\"end\" fill=\"#303030\"";
  constexpr const char* kMiddleText = "text-anchor=\"middle\" fill=\"#303030\"";
  for (double db = kLowestDb; db <= kHighestDb; db += 6) {
    const double y = paper.y(db);
    fprintf(out, "<line x1=\"%.0f\" x2=\"%.0f\" y1=\"%.1f\" y2=\"%.1f\" %s/>\n", kLeft, kRight, y, y, kLine);
    char label[32];
    snprintf(label, sizeof label, "%+.0f dB", db);
    text(out, kLeft - 8, y + 4, kRightText, label);
  }
  for (double decade = 10; decade < highestHz; decade *= 10) {
    for (int digit : {1, 2, 5}) {
      const double hz = decade * digit;
      if (hz < lowestHz || hz > highestHz) continue;
      const double x = paper.x(hz);
      fprintf(out, "<line x1=\"%.1f\" x2=\"%.1f\" y1=\"%.0f\" y2=\"%.0f\" %s/>\n", x, x, kTop, kBottom,
              kLine);
      char label[32];
      snprintf(label, sizeof label, hz < 1000 ? "%.0f Hz" : "%.0f kHz", hz < 1000 ? hz : hz / 1000);
      text(out, x, kBottom + 20, kMiddleText, label);
    }
  }
}

}  // namespace

void draw(const Picture& picture, const std::string& path) {
  FILE* out = fopen(path.c_str(), "w");
  if (out == nullptr) throw Failure("cannot write " + path);
  const Paper paper(picture.hz.front(), picture.hz.back());
  fputs(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1000 550\" font-family=\"sans-serif\" "
      "font-size=\"13\">\n<rect width=\"1000\" height=\"550\" fill=\"#ffffff\"/>\n",
      out);
  text(out, kLeft, 34, "font-size=\"20\" font-weight=\"bold\"", picture.title);
  text(out, kLeft, 58, "fill=\"#404040\"", picture.subtitle);
  grid(out, paper, picture.hz.front(), picture.hz.back());
  curve(out, paper, picture, picture.wantedDb,
        "stroke=\"#f0b060\" stroke-width=\"7\" stroke-linejoin=\"round\"");
  curve(out, paper, picture, picture.measuredDb,
        "stroke=\"#1f5fbf\" stroke-width=\"2\" stroke-linejoin=\"round\"");
  text(out, kRight, 58, "text-anchor=\"end\" fill=\"#d08020\" font-weight=\"bold\"", "wanted");
  text(out, kRight, 76, "text-anchor=\"end\" fill=\"#1f5fbf\" font-weight=\"bold\"", "measured");
  fputs("</svg>\n", out);
  if (fclose(out) != 0) throw Failure("cannot write " + path);
}

}  // namespace equalizer
