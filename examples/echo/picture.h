// The picture: the learning curve above the spectra.
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace echo {

struct Picture {
  std::string title, subtitle;
  std::vector<double> seconds, echoDb, leftDb, voiceDb;  // over time; voiceDb may be empty
  std::vector<double> hz, echoAtDb, leftAtDb;            // over frequency, ascending
};

// Throws Failure.
void draw(const Picture& picture, const std::string& path);

}  // namespace echo
