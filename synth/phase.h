// Angles of tones and triangles: their checks, and how a phase is handed on from call to call.
// SPDX-License-Identifier: MIT
#ifndef KVRS_SYNTH_PHASE_H
#define KVRS_SYNTH_PHASE_H

#include <cmath>

#include "frame/check.h"

namespace kvrs {

inline constexpr double kPi = 3.141592653589793, kTwoPi = 6.283185307179586;

// The largest numbers below 1/2, 2 pi and pi with 15 bits behind the point.
inline constexpr int kFreqQ15 = 16383, kPhaseQ15 = 205886, kAsymQ15 = 102943;

inline constexpr double kQ15 = 0x1p-15;

// From the C library's long double: correctly rounded but for one result in a thousand, and the same in 32 and 64 bits,
// where its double functions differ.
inline double cosine(double angle) {
  return static_cast<double>(cosl(static_cast<long double>(angle)));
}
inline double sine(double angle) {
  return static_cast<double>(sinl(static_cast<long double>(angle)));
}

// The phase behind `len` samples.
template <class P>
P phaseAfter(P phase, P rFreq, int len) {
  const double w = static_cast<double>(rFreq) * kTwoPi;
  const double t = static_cast<double>(len) * w + static_cast<double>(phase);
  const double turns = floor(t * 0.15915494309189535);
  const P after = static_cast<P>(t - turns * kTwoPi);
  // Rounding may have left the range.
  return after < 0 || static_cast<double>(after) >= kTwoPi ? P{0} : after;
}

namespace check {

// False for NaN.
template <class T>
constexpr bool isWithin(T value, T from, T below) {
  return value >= from && value < below;
}

template <class P>
constexpr KvrStatus frequency(P rFreq, KvrStatus status) {
  return require(isWithin(rFreq, P{0}, P{0.5}), status);
}
template <class P>
constexpr KvrStatus phaseAt(const P* phase, KvrStatus status) {
  return phase == nullptr ? kvrStatusNullPointer
                          : require(isWithin(static_cast<double>(*phase), 0.0, kTwoPi), status);
}
template <class P>
constexpr KvrStatus asymmetry(P asym, KvrStatus status) {
  return require(isWithin(static_cast<double>(asym), -kPi, kPi), status);
}
constexpr KvrStatus q15(int value, int from, int to, KvrStatus status) {
  return require(value >= from && value <= to, status);
}

}  // namespace check
}  // namespace kvrs

#endif
