// The echo canceller: an adaptive filter that learns what the room does.
// SPDX-License-Identifier: MIT
#pragma once

#include "support/recording.h"

namespace echo {

using namespace examples;

struct Canceller {
  int tapsLen = 0;
  double step = 0.5;     // from 0, which learns nothing, to 1, which learns fastest
  int blockLength = 64;  // samples in one call of the filter
};

// What of the microphone's signal is an echo of what is played, as the filter knows it at each time.
//
// Each call of the filter gets a step of its own. It is over the energy of what is played, so that loud and soft sounds are
// learnt from alike, and it is the smaller the more there is in the microphone that the filter does not expect (Haensler and
// Schmidt, Acoustic echo and noise control, 2004). Nothing is learnt for a while from when the microphone is louder than an
// echo can be, which takes that to be at most half as loud as what was played of late: then somebody speaks in the room
// (Duttweiler, A twelve-channel digital echo canceler, 1978).
Samples estimateEcho(const Samples& played, const Samples& microphone, const Canceller& canceller,
                     int sampleRate);

}  // namespace echo
