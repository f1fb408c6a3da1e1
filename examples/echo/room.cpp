// SPDX-License-Identifier: MIT
#include "room.h"

#include <kvrs.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "support/failure.h"

namespace echo {
namespace {

constexpr double kSpeedOfSound = 343;  // metres in a second

struct FreeFilter {
  void operator()(KvrsFIRState_32f* state) const { kvrsFIRFree_32f(state); }
};

Samples gaussian(size_t length, float deviation, unsigned seed) {
  Samples result(length);
  check("kvrsRandGauss_Direct_32f",
        kvrsRandGauss_Direct_32f(result.data(), static_cast<int>(length), 0, deviation, &seed));
  return result;
}

}  // namespace

Samples roomResponse(const Room& room, int sampleRate, unsigned seed) {
  const double rate = sampleRate;
  const auto direct = static_cast<size_t>(std::lround(room.distance / kSpeedOfSound * rate));
  const auto tail = static_cast<size_t>(std::lround(room.reverberation * rate));
  Samples response(direct + 1 + tail);
  const Samples random = gaussian(tail + 1, 1, seed);
  // Of the noise, so much that it has the energy of the direct sound.
  const double decay = 3 * std::log(10) / (room.reverberation * rate);
  const double start = std::sqrt(-std::expm1(-2 * decay));
  response[direct] = 1;
  for (size_t i = 0; i < tail; i++) {
    response[direct + 1 + i] =
        static_cast<float>(start * std::exp(-decay * static_cast<double>(i))) * random[i];
  }
  double energy = 0;
  for (double tap : response) energy += tap * tap;
  const auto gain = static_cast<float>(std::pow(10, room.levelDb / 20) / std::sqrt(energy));
  check("kvrsMulC_32f_I", kvrsMulC_32f_I(gain, response.data(), static_cast<int>(response.size())));
  return response;
}

Samples echoOf(const Samples& played, const Samples& response) {
  KvrsFIRState_32f* state = nullptr;
  check("kvrsFIRInitAlloc_32f",
        kvrsFIRInitAlloc_32f(&state, response.data(), static_cast<int>(response.size()), nullptr));
  const std::unique_ptr<KvrsFIRState_32f, FreeFilter> filter(state);
  Samples result(played.size());
  check("kvrsFIR_32f", kvrsFIR_32f(played.data(), result.data(), static_cast<int>(played.size()), state));
  return result;
}

Samples noise(size_t length, double levelDb, unsigned seed) {
  return gaussian(length, static_cast<float>(std::pow(10, levelDb / 20)), seed);
}

}  // namespace echo
