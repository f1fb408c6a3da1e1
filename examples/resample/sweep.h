// What a converter does to sines: one after the other, from the lowest frequency of the input to the highest.
// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "resample/converter.h"

namespace resample {

struct Sweep {
  std::vector<double> hz;
  std::vector<double> gainDb;  // of the sine itself; very low where the output has no such frequency
  std::vector<double>
      unwantedDb;  // of all else that comes out, beside the sine that went in: aliases, images, noise
};

Sweep sweep(const Converter& converter, int inRate, int outRate, int blockLength, const Progress& progress);

}  // namespace resample
