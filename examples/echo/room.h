// What a made room does to a sound on its way from the loudspeaker to the microphone.
// SPDX-License-Identifier: MIT
#pragma once

#include "support/recording.h"

namespace echo {

using namespace examples;

struct Room {
  double reverberation = 0.08;  // seconds until a sound has lost 60 dB
  double distance = 0.5;        // metres from the loudspeaker to the microphone
  double levelDb = -12;         // of the echo of white noise, against the loudspeaker's signal
};

// The impulse response until it has lost 60 dB: the direct sound, and behind it noise that dies away (Polack, La transmission
// de l'energie sonore dans les salles, 1988). Another seed is another place in the room.
Samples roomResponse(const Room& room, int sampleRate, unsigned seed);

// The sound at the microphone, as long as what is played.
Samples echoOf(const Samples& played, const Samples& response);

// Noise of a root mean square in dB of full scale.
Samples noise(size_t length, double levelDb, unsigned seed);

}  // namespace echo
