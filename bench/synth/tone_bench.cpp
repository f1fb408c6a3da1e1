// SPDX-License-Identifier: MIT
#include "kvrs/tone.h"

#include <cmath>

#include "bench/support/bench.h"
#include "kvrs/triangle.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 1 << 20};

__attribute__((noipa)) void loopTone(Kvr32f* dst, int len, float magn, float w, float phase) {
  for (int i = 0; i < len; ++i) dst[i] = magn * cosf(w * static_cast<float>(i) + phase);
}
__attribute__((noipa)) void loopTriangle(Kvr32f* dst, int len, float magn, float step, float phase) {
  for (int i = 0; i < len; ++i) {
    const float turn = step * static_cast<float>(i) + phase;
    dst[i] = magn * (4 * std::fabs(turn - std::floor(turn) - 0.5f) - 1);
  }
}

Register tone([] {
  for (int len : kLengths) {
    const std::string n = std::to_string(len);
    const auto dst = array<Kvr32f>(len);
    const auto add32f = [&](const char* name, KvrHintAlgorithm hint) {
      add(name + n, "kvrs", [=] {
        Kvr32f phase = 1;
        kvrsTone_Direct_32f(dst.get(), len, 1, 0.0123f, &phase, hint);
      });
      add(name + n, "cosf", [=] { loopTone(dst.get(), len, 1, 0.0123f * 6.2831853f, 1); });
    };
    add32f("tone/Tone_Direct_32f_accurate/", kvrHintAccurate);
    add32f("tone/Tone_Direct_32f_fast/", kvrHintFast);
    add("tone/Triangle_Direct_32f/" + n, "kvrs", [=] {
      Kvr32f phase = 1;
      kvrsTriangle_Direct_32f(dst.get(), len, 1, 0.0123f, 0, &phase);
    });
    add("tone/Triangle_Direct_32f/" + n, "loop", [=] { loopTriangle(dst.get(), len, 1, 0.0123f, 0.2f); });
  }
});

}  // namespace
}  // namespace kvrs::bench
