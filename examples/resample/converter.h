// From one sampling rate to another by a filter between them: with up / down the ratio of the rates in lowest terms, up - 1
// zeros behind each sample, a long low-pass at that high rate, and one of `down` results kept.
// SPDX-License-Identifier: MIT
#pragma once

#include <kvrs.h>

#include <memory>

#include "support/progress.h"
#include "support/recording.h"

namespace resample {

using namespace examples;

struct Quality {
  double attenuation = 120;  // dB, of what would be aliases or images
  double passBand = 0.913;   // as a part of half the lower rate, which is where everything stops
};

class Converter {
 public:
  // Throws Failure.
  Converter(int inRate, int outRate, const Quality& quality);

  int up() const { return up_; }
  int down() const { return down_; }
  size_t tapsLen() const { return taps_.size(); }
  // The highest frequency that passes whole, and the lowest one that is stopped.
  double passHz() const { return passHz_; }
  double stopHz() const { return stopHz_; }

  // As long as the samples, which result lies under by their times.
  size_t resultLength(size_t length) const;
  // The samples, `blockLength` or so in a call of the filter. Throws Failure.
  Samples convert(const Samples& samples, int blockLength, const Progress& progress) const;

  struct FreeState {
    void operator()(KvrsFIRMRState_32f* state) const { kvrsFIRFree_32f(state); }
  };
  // A filter in rest, for kvrsFIR_32f(): an iteration takes down() samples and gives up() results. Throws Failure.
  std::unique_ptr<KvrsFIRMRState_32f, FreeState> makeState() const;

 private:
  int up_, down_;
  double passHz_, stopHz_;
  Samples taps_;
};

// All channels. Throws Failure.
Recording convert(const Recording& recording, const Converter& converter, int outRate, int blockLength,
                  const Progress& progress);

}  // namespace resample
