// The picture, a drawing in SVG.
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace equalizer {

struct Picture {
  std::string title, subtitle;
  std::vector<double> hz;  // ascending
  std::vector<double> wantedDb, measuredDb;
};

// Throws Failure.
void draw(const Picture& picture, const std::string& path);

}  // namespace equalizer
