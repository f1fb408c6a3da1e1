// Design of FIR filters by the window method.
//
// The left half of the taps is made from the centre outward, at distances t = 1, 2, ... (odd lengths) or 1/2, 3/2, ...
// (even ones), windowed, normalised and mirrored.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_gen.h"

#include <cmath>
#include <cstring>

#include "frame/buffer.h"
#include "frame/check.h"
#include "frame/unaligned.h"
#include "kvrs/tone.h"
#include "kvrs/window.h"
#include "synth/phase.h"

namespace kvrs {
namespace {

using unaligned::get;
using unaligned::put;

struct Design {
  double* taps;
  int tapsLen, winType;
  bool normal;

  bool isOdd() const { return tapsLen % 2 != 0; }
  int half() const { return tapsLen / 2; }
  // The tap at distance number j to the left of the centre.
  double* at(int j) const { return taps + (half() - 1 - j); }
};

// A table of sines or cosines at the distances, for as long as its scope; null if there is no memory.
class Tone {
 public:
  Tone(const Design& design, double rFreq, double phase)
      : memory_(sizeof(double) * (static_cast<uint64_t>(design.half()) + 1)) {
    if (!ok()) return;
    if (phase >= kTwoPi) phase = 0;
    kvrsTone_Direct_64f(memory_.as<double>(), design.half() + 1, 1.0, rFreq, &phase, kvrHintAccurate);
  }

  bool ok() const { return memory_.ok(); }
  double operator[](int j) const { return memory_.as<double>()[j]; }

 private:
  Scratch memory_;
};

// The phases that make a tone sin(2 pi f t), its negative and cos(2 pi f t) at the distances.
double sinePhase(const Design& design, double f) {
  if (design.isOdd()) return f < 0.25 ? (0.75 + f) * kTwoPi : (f - 0.25) * kTwoPi;
  return (1.5 + f) * kPi;
}
double minusSinePhase(const Design& design, double f) {
  return design.isOdd() ? (0.25 + f) * kTwoPi : (0.5 + f) * kPi;
}

// numerator(j) / (pi * t) for all distances.
template <class Numerator>
void makeLeftHalf(const Design& design, Numerator numerator) {
  double piT = design.isOdd() ? kPi : kPi / 2;
  for (int j = 0; j < design.half(); ++j) {
    put(numerator(j) / piT, design.at(j));
    piT += kPi;
  }
}

void applyWindow(const Design& design) {
  const int half = design.half();
  memset(static_cast<void*>(design.taps + (design.tapsLen - half)), 0,
         sizeof(double) * static_cast<size_t>(half));
  switch (design.winType) {
    case kvrWinBartlett:
      kvrsWinBartlett_64f_I(design.taps, design.tapsLen);
      break;
    case kvrWinBlackmanOpt:
      kvrsWinBlackmanOpt_64f_I(design.taps, design.tapsLen);
      break;
    case kvrWinHamming:
      kvrsWinHamming_64f_I(design.taps, design.tapsLen);
      break;
    case kvrWinHann:
      kvrsWinHann_64f_I(design.taps, design.tapsLen);
      break;
    default:
      break;
  }
}

// The response at a frequency for which weight(i) weighs tap i and its mirror image alike, and `centreWeight` the centre.
template <class Weight>
double response(const Design& design, Weight weight, double centreWeight) {
  double sum = 0;
  for (int i = 0; i < design.half(); ++i) sum += get(design.taps + i) * weight(i);
  return design.isOdd() ? get(design.taps + design.half()) * centreWeight + 2 * sum : 2 * sum;
}

double sumOfTaps(const Design& design) {
  return response(
      design, [](int) { return 1.0; }, 1);
}

// The signs alternate, with a minus for the first tap.
double alternatingSum(const Design& design) {
  const auto sign = [](int i) { return i % 2 == 0 ? -1.0 : 1.0; };
  return response(design, sign, sign(design.half()));
}

double responseAt(const Design& design, double rFreq) {
  const double first = design.isOdd() ? 1 : 0.5;
  return response(
      design, [&](int i) { return cosine(kTwoPi * rFreq * (design.half() - 1 - i + first)); }, 1);
}

// Multiplies the left half and the centre by 1 / gain and mirrors them, with this sign. Without normalisation as they are.
void finish(const Design& design, double gain, double mirrorSign = 1) {
  const double scale = design.normal ? 1 / gain : 1;
  for (int i = 0; i < design.half(); ++i) {
    const double tap = get(design.taps + i) * scale;
    put(tap, design.taps + i);
    put(tap * mirrorSign, design.taps + (design.tapsLen - 1 - i));
  }
  double* const centre = design.taps + design.half();
  if (design.isOdd()) put(get(centre) * scale, centre);
}

void setCentre(const Design& design, double value) {
  if (design.isOdd()) put(value, design.taps + design.half());
}

// The windowed taps of a filter with two edges: tap(sine of the lower one, sine of the upper one, j) at distance number j.
// False: there is no memory.
template <class Tap>
bool makeBetween(const Design& design, double rLowFreq, double rHighFreq, double centre, Tap tap) {
  const Tone low(design, rLowFreq, sinePhase(design, rLowFreq));
  if (!low.ok()) return false;
  const Tone high(design, rHighFreq, sinePhase(design, rHighFreq));
  if (!high.ok()) return false;
  makeLeftHalf(design, [&](int j) { return tap(low[j], high[j], j); });
  setCentre(design, centre);
  applyWindow(design);
  return true;
}

constexpr KvrStatus between(double rFreq) {
  return check::require(rFreq > 0 && rFreq < 0.5, kvrStatusBadLength);
}
constexpr KvrStatus lengthOfTaps(int tapsLen) {
  return check::require(tapsLen >= 5, kvrStatusBadLength);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsFIRGenLowpass_64f(Kvr64f rFreq, Kvr64f* taps, int tapsLen, int winType, int doNormal) noexcept {
  KVRS_CHECK(pointers(taps), lengthOfTaps(tapsLen), between(rFreq));
  const Design design{taps, tapsLen, winType, doNormal != 0};
  const Tone sines(design, rFreq, sinePhase(design, rFreq));
  if (!sines.ok()) return kvrStatusNullPointer;
  makeLeftHalf(design, [&](int j) { return sines[j]; });
  setCentre(design, 2 * rFreq);
  applyWindow(design);
  finish(design, sumOfTaps(design));
  return kvrStatusOk;
}

KvrStatus kvrsFIRGenHighpass_64f(Kvr64f rFreq, Kvr64f* taps, int tapsLen, int winType,
                                 int doNormal) noexcept {
  KVRS_CHECK(pointers(taps), lengthOfTaps(tapsLen), between(rFreq));
  const Design design{taps, tapsLen, winType, doNormal != 0};
  const Tone tone(design, rFreq, design.isOdd() ? minusSinePhase(design, rFreq) : kPi * rFreq);
  if (!tone.ok()) return kvrStatusNullPointer;
  makeLeftHalf(design, [&](int j) { return tone[j]; });
  setCentre(design, 1 - 2 * rFreq);
  applyWindow(design);
  finish(design, fabs(alternatingSum(design)), design.isOdd() ? 1 : -1);
  return kvrStatusOk;
}

KvrStatus kvrsFIRGenBandpass_64f(Kvr64f rLowFreq, Kvr64f rHighFreq, Kvr64f* taps, int tapsLen, int winType,
                                 int doNormal) noexcept {
  KVRS_CHECK(pointers(taps), lengthOfTaps(tapsLen), between(rLowFreq), between(rHighFreq),
             require(rLowFreq < rHighFreq, kvrStatusBadLength));
  const Design design{taps, tapsLen, winType, doNormal != 0};
  const double centre = 2 * (rHighFreq - rLowFreq);
  const bool made = makeBetween(design, rLowFreq, rHighFreq, centre,
                                [](double low, double high, int) { return high - low; });
  if (!made) return kvrStatusNullPointer;
  finish(design, design.normal ? fabs(responseAt(design, (rLowFreq + rHighFreq) / 2)) : 1);
  return kvrStatusOk;
}

KvrStatus kvrsFIRGenBandstop_64f(Kvr64f rLowFreq, Kvr64f rHighFreq, Kvr64f* taps, int tapsLen, int winType,
                                 int doNormal) noexcept {
  KVRS_CHECK(pointers(taps), lengthOfTaps(tapsLen), between(rLowFreq), between(rHighFreq),
             require(rLowFreq < rHighFreq, kvrStatusBadLength));
  const Design design{taps, tapsLen, winType, doNormal != 0};
  const double centre = 1 - 2 * (rHighFreq - rLowFreq);
  const bool made = makeBetween(design, rLowFreq, rHighFreq, centre, [&](double low, double high, int j) {
    const double passedByAll = design.isOdd() ? 0 : j % 2 == 0 ? 1 : -1;
    return low - high + passedByAll;
  });
  if (!made) return kvrStatusNullPointer;
  finish(design, fabs(sumOfTaps(design)));
  return kvrStatusOk;
}
