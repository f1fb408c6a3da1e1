// SPDX-License-Identifier: MIT
#include "canceller.h"

#include <kvrs.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "support/failure.h"

namespace echo {
namespace {

struct FreeFilter {
  void operator()(KvrsFIRLMSState_32f* state) const { kvrsFIRLMSFree_32f(state); }
};

float loudestOf(const float* samples, size_t count) {
  float loudest;
  check("kvrsNorm_Inf_32f", kvrsNorm_Inf_32f(samples, static_cast<int>(count), &loudest));
  return loudest;
}

double energyOf(const float* samples, size_t count) {
  float norm;
  check("kvrsNorm_L2_32f", kvrsNorm_L2_32f(samples, static_cast<int>(count), &norm));
  return static_cast<double>(norm) * norm;
}

}  // namespace

Samples estimateEcho(const Samples& played, const Samples& microphone, const Canceller& canceller,
                     int sampleRate) {
  constexpr float kLoudestEcho = 0.5f;  // over the loudest sample that it is an echo of
  constexpr double kPause = 0.05;       // seconds without learning when somebody has spoken
  constexpr double kMemory = 0.2;       // seconds in which the error's power is forgotten
  constexpr double kCaution = 50;       // how much the error's power counts against that of what is played
  constexpr double kSilence = 1e-6;     // a power with nothing to learn from

  const auto length = static_cast<size_t>(canceller.tapsLen),
             block = static_cast<size_t>(canceller.blockLength);
  KvrsFIRLMSState_32f* state = nullptr;
  check("kvrsFIRLMSInitAlloc_32f", kvrsFIRLMSInitAlloc_32f(&state, nullptr, canceller.tapsLen, nullptr, 0));
  const std::unique_ptr<KvrsFIRLMSState_32f, FreeFilter> filter(state);

  Samples estimate(played.size()), error(block);
  double errorPower = 0, pause = 0;
  for (size_t begin = 0; begin < played.size(); begin += block) {
    const size_t count = std::min(block, played.size() - begin);
    const double seconds = static_cast<double>(count) / sampleRate;
    // All samples that the taps meet in this call.
    const size_t back = std::min(begin, length - 1);
    const float *const met = played.data() + (begin - back), *const heard = microphone.data() + begin;
    if (loudestOf(heard, count) > kLoudestEcho * loudestOf(met, back + count)) pause = kPause;
    const double energy =
        energyOf(met, back + count) + (kSilence + kCaution * errorPower) * static_cast<double>(length);
    const double mu = pause > 0 ? 0 : canceller.step / (2 * energy);
    pause -= seconds;
    const auto len = static_cast<int>(count);
    float* const expected = estimate.data() + begin;
    check("kvrsFIRLMS_32f",
          kvrsFIRLMS_32f(played.data() + begin, heard, expected, len, static_cast<float>(mu), state));

    check("kvrsSub_32f", kvrsSub_32f(expected, heard, error.data(), len));
    const double power = energyOf(error.data(), count) / static_cast<double>(count);
    errorPower = std::max(power, errorPower + (power - errorPower) * -std::expm1(-seconds / kMemory));
  }
  return estimate;
}

}  // namespace echo
