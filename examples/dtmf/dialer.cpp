// SPDX-License-Identifier: MIT
#include "dialer.h"

#include <kvrs.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>

#include "detector.h"
#include "support/failure.h"

namespace dtmf {
namespace {

using Line = std::vector<Kvr16s>;

constexpr Kvr16s kToneAmplitude = 6000;  // -15 dB of full scale each
constexpr double kTonePower = 2 * (kToneAmplitude / 32768.0) * (kToneAmplitude / 32768.0) / 2;

int length(const Line& line) {
  return static_cast<int>(line.size());
}

// One more tone from `begin` on.
void addTone(Line& line, size_t begin, size_t len, float hz) {
  Line tone(len);
  Kvr32f phase = 0;
  check("kvrsTone_Direct_16s", kvrsTone_Direct_16s(tone.data(), length(tone), kToneAmplitude, hz / kLineRate,
                                                   &phase, kvrHintAccurate));
  check("kvrsAdd_16s_ISfs", kvrsAdd_16s_ISfs(tone.data(), line.data() + begin, length(tone), 0));
}

void addNoise(Line& line, double power, uint32_t seed) {
  Line noise(line.size());
  Kvr32u state = seed;
  const double deviation = std::min(32767.0, 32768 * std::sqrt(power));
  check("kvrsRandGauss_Direct_16s",
        kvrsRandGauss_Direct_16s(noise.data(), length(noise), 0, static_cast<Kvr16s>(std::lround(deviation)),
                                 &state));
  check("kvrsAdd_16s_ISfs", kvrsAdd_16s_ISfs(noise.data(), line.data(), length(line), 0));
}

// The voice's own power is that of all of it, its pauses included.
void addVoice(Line& line, const Samples& voice, double power) {
  float norm = 0;
  check("kvrsNorm_L2_32f", kvrsNorm_L2_32f(voice.data(), static_cast<int>(voice.size()), &norm));
  if (norm == 0) return;
  Samples repeated(line.size());
  for (size_t i = 0; i < repeated.size(); i++) repeated[i] = voice[i % voice.size()];
  const double scale =
      32768 * std::sqrt(power * static_cast<double>(voice.size())) / static_cast<double>(norm);
  check("kvrsMulC_32f_I", kvrsMulC_32f_I(static_cast<float>(scale), repeated.data(), length(line)));
  Line rounded(line.size());
  check("kvrsConvert_32f16s_Sfs",
        kvrsConvert_32f16s_Sfs(repeated.data(), rounded.data(), length(line), kvrRoundNear, 0));
  check("kvrsAdd_16s_ISfs", kvrsAdd_16s_ISfs(rounded.data(), line.data(), length(line), 0));
}

}  // namespace

Samples dial(const Call& call) {
  const auto samples = [](double seconds) { return static_cast<size_t>(std::lround(seconds * kLineRate)); };
  const size_t tone = samples(call.toneSeconds), pause = samples(call.pauseSeconds);
  Line line(pause + call.keys.size() * (tone + pause));
  for (size_t k = 0; k < call.keys.size(); k++) {
    const char* const key = strchr(kKeys, call.keys[k]);
    if (key == nullptr || *key == '\0')
      throw Failure(std::string("there is no key \"") + call.keys[k] + "\"");
    const size_t at = pause + k * (tone + pause), place = static_cast<size_t>(key - kKeys);
    addTone(line, at, tone, kLowHz[place / 4]);
    addTone(line, at, tone, kHighHz[place % 4]);
  }
  if (!call.voice.empty()) addVoice(line, call.voice, kTonePower * std::pow(10, -call.voiceDb / 10));
  if (call.noiseDb) addNoise(line, kTonePower * std::pow(10, -*call.noiseDb / 10), call.seed);

  std::vector<Kvr8u> coded(line.size());
  check("kvrsLinToMuLaw_16s8u", kvrsLinToMuLaw_16s8u(line.data(), coded.data(), length(line)));
  check("kvrsMuLawToLin_8u16s", kvrsMuLawToLin_8u16s(coded.data(), line.data(), length(line)));
  Samples heard(line.size());
  check("kvrsConvert_16s32f", kvrsConvert_16s32f(line.data(), heard.data(), length(line)));
  check("kvrsMulC_32f_I", kvrsMulC_32f_I(1 / 32768.0f, heard.data(), length(line)));
  return heard;
}

Samples onTheLine(const Recording& recording) {
  Samples mixed(recording.length());
  for (const Samples& channel : recording.channels) {
    check("kvrsAdd_32f_I", kvrsAdd_32f_I(channel.data(), mixed.data(), static_cast<int>(mixed.size())));
  }
  if (recording.sampleRate == kLineRate) return mixed;

  // By a filter at two rates: of every `down` samples `up` are made.
  const int divisor = std::gcd(recording.sampleRate, kLineRate);
  const int up = kLineRate / divisor, down = recording.sampleRate / divisor, larger = std::max(up, down);
  std::vector<Kvr64f> design(static_cast<size_t>(20 * larger + 1));
  check("kvrsFIRGenLowpass_64f", kvrsFIRGenLowpass_64f(0.45 / larger, design.data(),
                                                       static_cast<int>(design.size()), kvrWinHamming, 1));
  Samples taps(design.begin(), design.end());
  check("kvrsMulC_32f_I", kvrsMulC_32f_I(static_cast<float>(up), taps.data(), static_cast<int>(taps.size())));
  KvrsFIRMRState_32f* state = nullptr;
  check("kvrsFIRMRInitAlloc_32f",
        kvrsFIRMRInitAlloc_32f(&state, taps.data(), static_cast<int>(taps.size()), up, 0, down, 0, nullptr));
  const size_t turns = mixed.size() / static_cast<size_t>(down);
  Samples resampled(turns * static_cast<size_t>(up));
  const KvrStatus status =
      turns == 0 ? kvrStatusOk : kvrsFIR_32f(mixed.data(), resampled.data(), static_cast<int>(turns), state);
  kvrsFIRFree_32f(state);
  check("kvrsFIR_32f", status);
  return resampled;
}

}  // namespace dtmf
