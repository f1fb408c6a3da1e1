// Drawings in SVG.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace examples {

// A sheet of paper, white at first. Styles are attributes of SVG. All throw Failure.
class Drawing {
 public:
  Drawing(const std::string& path, double width, double height);

  void text(double x, double y, const char* style, const std::string& words);
  void line(double x1, double y1, double x2, double y2, const char* style);
  void rectangle(double x1, double y1, double x2, double y2, const char* style);
  void curve(const std::vector<std::pair<double, double>>& points, const char* style);

  // The drawing is complete.
  void close();

 private:
  std::string path_;
  std::unique_ptr<FILE, int (*)(FILE*)> out_;
};

// A part of a sheet in which a range of numbers goes from left to right, perhaps in octaves, and another from the bottom up.
class Axes {
 public:
  struct Range {
    double lowest, highest;
    bool isLogarithmic = false;

    // From 0 to 1, and no farther.
    double part(double value) const;
  };

  Axes(Drawing& drawing, double left, double right, double top, double bottom, Range across, Range up)
      : drawing_(drawing), left_(left), right_(right), top_(top), bottom_(bottom), across_(across), up_(up) {}

  double x(double value) const { return left_ + across_.part(value) * (right_ - left_); }
  double y(double value) const { return bottom_ - up_.part(value) * (bottom_ - top_); }

  // Lines with what they stand for.
  void gridX(double value, const std::string& label);
  void gridY(double value, const std::string& label);
  // What lies on the left or right of the range stays out; what is above or below it is drawn at its border.
  void curve(const std::vector<double>& values, const std::vector<double>& heights, const char* style);

  // Lines of decibels, so many apart, and of frequencies, three in a decade.
  void decibelGrid(double step);
  void frequencyGrid();

 private:
  Drawing& drawing_;
  double left_, right_, top_, bottom_;
  Range across_, up_;
};

}  // namespace examples
