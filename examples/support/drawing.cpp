// SPDX-License-Identifier: MIT
#include "support/drawing.h"

#include <algorithm>
#include <cmath>

#include "support/failure.h"

namespace examples {
namespace {

constexpr const char* kGridLine = "stroke=\"#e0e0e0\"";

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

}  // namespace

Drawing::Drawing(const std::string& path, double width, double height)
    : path_(path), out_(fopen(path.c_str(), "w"), fclose) {
  if (out_ == nullptr) throw Failure("cannot write " + path);
  fprintf(out_.get(),
          "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %g %g\" font-family=\"sans-serif\" "
          "font-size=\"13\">\n<rect width=\"%g\" height=\"%g\" fill=\"#ffffff\"/>\n",
          width, height, width, height);
}

void Drawing::text(double x, double y, const char* style, const std::string& words) {
  fprintf(out_.get(), "<text x=\"%.1f\" y=\"%.1f\" %s>%s</text>\n", x, y, style, escaped(words).c_str());
}

void Drawing::line(double x1, double y1, double x2, double y2, const char* style) {
  fprintf(out_.get(), "<line x1=\"%.1f\" x2=\"%.1f\" y1=\"%.1f\" y2=\"%.1f\" %s/>\n", x1, x2, y1, y2, style);
}

void Drawing::rectangle(double x1, double y1, double x2, double y2, const char* style) {
  fprintf(out_.get(), "<rect x=\"%.1f\" y=\"%.1f\" width=\"%.1f\" height=\"%.1f\" %s/>\n", x1, y1, x2 - x1,
          y2 - y1, style);
}

void Drawing::curve(const std::vector<std::pair<double, double>>& points, const char* style) {
  fprintf(out_.get(), "<polyline fill=\"none\" stroke-linejoin=\"round\" %s points=\"", style);
  for (const auto& [x, y] : points) fprintf(out_.get(), "%.1f,%.2f ", x, y);
  fputs("\"/>\n", out_.get());
}

void Drawing::close() {
  fputs("</svg>\n", out_.get());
  if (fclose(out_.release()) != 0) throw Failure("cannot write " + path_);
}

double Axes::Range::part(double value) const {
  const double within = std::clamp(value, lowest, highest);
  return isLogarithmic ? std::log(within / lowest) / std::log(highest / lowest)
                       : (within - lowest) / (highest - lowest);
}

void Axes::gridX(double value, const std::string& label) {
  drawing_.line(x(value), top_, x(value), bottom_, kGridLine);
  drawing_.text(x(value), bottom_ + 20, "text-anchor=\"middle\" fill=\"#303030\"", label);
}

void Axes::gridY(double value, const std::string& label) {
  drawing_.line(left_, y(value), right_, y(value), kGridLine);
  drawing_.text(left_ - 8, y(value) + 4, "text-anchor=\"end\" fill=\"#303030\"", label);
}

void Axes::curve(const std::vector<double>& values, const std::vector<double>& heights, const char* style) {
  std::vector<std::pair<double, double>> points;
  for (size_t i = 0; i < values.size(); i++) {
    if (values[i] >= across_.lowest && values[i] <= across_.highest)
      points.emplace_back(x(values[i]), y(heights[i]));
  }
  drawing_.curve(points, style);
}

void Axes::decibelGrid(double step) {
  for (double db = up_.lowest; db <= up_.highest; db += step) {
    char label[32];
    snprintf(label, sizeof label, db == 0 ? "%.0f dB" : "%+.0f dB", db);
    gridY(db, label);
  }
}

void Axes::frequencyGrid() {
  for (double decade = 10; decade < across_.highest; decade *= 10) {
    for (int digit : {1, 2, 5}) {
      const double hz = decade * digit;
      if (hz < across_.lowest || hz > across_.highest) continue;
      char label[32];
      snprintf(label, sizeof label, hz < 1000 ? "%.0f Hz" : "%.0f kHz", hz < 1000 ? hz : hz / 1000);
      gridX(hz, label);
    }
  }
}

}  // namespace examples
