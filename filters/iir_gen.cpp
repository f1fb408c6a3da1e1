// Design of recursive filters: Butterworth and Chebyshev, low-pass and high-pass.
// SPDX-License-Identifier: MIT
#include "kvrs/iir_gen.h"

#include <cmath>

#include "frame/check.h"
#include "frame/rounding.h"
#include "frame/unaligned.h"

namespace kvrs::iir {
namespace {

constexpr int kMostOrder = 12;
constexpr double kMostDeviation = 29;
constexpr long double kPi = 3.14159265358979323846264L;
constexpr long double kLn10 = 2.302585092994045684018L;

struct Pole {
  long double re, im;
};

// Prototypes have their cut-off at 1. Pole k is on a circle, or an ellipse for Chebyshev, at an angle in the left half; that
// in the middle of an odd order is real.
struct Prototype {
  long double across, along;  // the half axes
};

Prototype prototypeOf(int filterType, int order, double passDevDb) {
  if (filterType == kvrButterworth) return {1, 1};
  const long double ripple = sqrtl(expm1l(passDevDb / 10.0L * kLn10));
  const long double a = asinhl(1 / ripple) / order;
  return {sinhl(a), coshl(a)};
}

Pole analogPole(Prototype prototype, int k, int order) {
  const long double angle = kPi * (2 * k + 1) / (2 * order);
  if (2 * k + 1 == order) return {-prototype.across, 0};
  return {-prototype.across * sinl(angle), prototype.along * cosl(angle)};
}

// To the cut-off, and through z = (1 + s/4) / (1 - s/4).
Pole digitalPole(Pole p, long double cutOff, bool highpass) {
  if (highpass) {
    const long double power = p.re * p.re + p.im * p.im;
    p = {p.re / power, -p.im / power};
  }
  const long double re = p.re * cutOff / 4, im = p.im * cutOff / 4;
  const long double below = (1 - re) * (1 - re) + im * im;
  return {((1 + re) * (1 - re) - im * im) / below, 2 * im / below};
}

void design(bool highpass, double rFreq, double passDevDb, int order, Kvr64f* taps, int filterType) {
  const long double cutOff = 4 * tanl(kPi * rFreq);
  const Prototype prototype = prototypeOf(filterType, order, passDevDb);
  // The product of (1 - p/z), a pair of poles or a real one at a time.
  long double a[kMostOrder + 1] = {1}, exact = 1;
  int degree = 0;
  for (int k = 0; 2 * k < order; ++k) {
    const Pole p = digitalPole(analogPole(prototype, k, order), cutOff, highpass);
    const bool real = 2 * k + 1 == order;
    const long double c1 = real ? -p.re : -2 * p.re, c2 = real ? 0 : p.re * p.re + p.im * p.im;
    const long double distance = highpass ? 1 + p.re : 1 - p.re;
    exact *= real ? distance : distance * distance + p.im * p.im;
    degree += real ? 1 : 2;
    for (int i = degree; i > 0; --i) a[i] += c1 * a[i - 1] + (i > 1 ? c2 * a[i - 2] : 0);
  }
  // Both sums are those of the polynomials at the frequency where the gain is known; that of the numerator is 2^order. Where
  // rounding has left nothing of the denominator's, the sum is that of the exact one.
  long double sum = 0;
  for (int i = 0; i <= order; ++i) {
    const auto rounded = static_cast<Kvr64f>(a[i]);
    unaligned::put(rounded, taps + order + 1 + i);
    sum += highpass && i % 2 != 0 ? -rounded : rounded;
  }
  if (fabsl(sum - exact) > exact / 2) sum = exact;
  long double gain = ldexpl(sum, -order);
  if (filterType == kvrChebyshev1 && order % 2 == 0) gain *= expl(-passDevDb / 20.0L * kLn10);
  long double binomial = 1;
  for (int i = 0; i <= order; ++i) {
    unaligned::put(static_cast<Kvr64f>((highpass && i % 2 != 0 ? -binomial : binomial) * gain), taps + i);
    binomial = binomial * (order - i) / (i + 1);
  }
}

KvrStatus checkedDesign(bool highpass, double rFreq, double passDevDb, int order, Kvr64f* taps,
                        int filterType) {
  KVRS_CHECK(pointers(taps), require(rFreq > 0 && rFreq < 0.5, kvrStatusBadIirGenFreq),
             require(order >= 1 && order <= kMostOrder, kvrStatusBadIirGenOrder),
             require(filterType != kvrChebyshev1 || (passDevDb > 0 && passDevDb <= kMostDeviation),
                     kvrStatusBadIirGenDeviation));
  if (filterType == kvrButterworth || filterType == kvrChebyshev1) {
    underExtendedRounding(Rounding::nearest,
                          [=] { design(highpass, rFreq, passDevDb, order, taps, filterType); });
  }
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::iir

using namespace kvrs;

KvrStatus kvrsIIRGenLowpass_64f(Kvr64f rFreq, Kvr64f passDevDb, int order, Kvr64f* taps,
                                int filterType) noexcept {
  return iir::checkedDesign(false, rFreq, passDevDb, order, taps, filterType);
}

KvrStatus kvrsIIRGenHighpass_64f(Kvr64f rFreq, Kvr64f passDevDb, int order, Kvr64f* taps,
                                 int filterType) noexcept {
  return iir::checkedDesign(true, rFreq, passDevDb, order, taps, filterType);
}
