// Goertzel: the spectrum at one or two frequencies.
//
// In single precision four sums are rotated in the lanes of a vector, each of which takes every fourth sample (every second
// one, of two frequencies), from the last to the first:
//
//   src    x x x | a b c d | a b c d | ... | a b c d     the last four first
//          rest                                          comes in by a shorter turn
//
// Other than in the recurrence of second order, rounding errors do not grow next to the frequencies 0 and 0.5, and a step
// takes three operations one after the other for four samples, in place of two for one.
// SPDX-License-Identifier: MIT
#include "kvrs/goertzel.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/element.h"
#include "frame/rounding.h"
#include "frame/scale.h"
#include "frame/sincos.h"
#include "frame/to_integer.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"
#include "frame/widen.h"

namespace kvrs {
namespace {

constexpr double kTwoPi = 6.283185307179586;

template <class F>
KvrStatus frequency(F relFreq) {
  return check::require(relFreq >= 0 && relFreq < 1, kvrStatusBadRelFreq);  // not of NaN either
}
// Both of them; of a null pointer, which is another test's, nothing is said.
template <class F>
KvrStatus frequencies(const F* relFreq) {
  if (relFreq == nullptr) return kvrStatusOk;
  return check::firstBad(frequency(unaligned::get(relFreq)), frequency(unaligned::get(relFreq + 1)));
}

// --- angles ---

using Two = Lanes<double, 2>;
using V2 = hn::Vec<Two>;

// Of two frequencies, to nearest. -0.0 is 0.
KVRS_INLINE SinCos<V2> angles(double relFreq0, double relFreq1) {
  const Two d;
  const V2 relFreq = hn::Abs(hn::InterleaveLower(d, hn::Set(d, relFreq0), hn::Set(d, relFreq1)));
  return sinCos<SinCosFor::doubles>(d, hn::Mul(relFreq, hn::Set(d, kTwoPi)));
}

// --- single precision: rotations ---

using Four = Lanes<float, 4>;
using V4 = hn::Vec<Four>;

// Lanes l of one frequency, or lanes 2f + l of two, each by its own angle.
struct Rotation {
  V4 cos, sin;
};

// Of M samples a step: by M * theta; lane l by l * theta; and all by k * theta where k < M samples are left.
template <int M>
struct Rotations {
  Rotation step, lanes, shorter[M];
};

template <int M>
KVRS_INLINE Rotations<M> rotationsToNearest(double relFreq0, double relFreq1) {
  const Two d;
  const Four d4;
  const auto of = angles(relFreq0, relFreq1);
  const V2 c = of.cos, s = of.sin, one = hn::Set(d, 1), two = hn::Set(d, 2), four = hn::Set(d, 4);
  const V2 c2 = hn::Sub(hn::Mul(two, hn::Mul(c, c)), one), s2 = hn::Mul(two, hn::Mul(c, s));
  const auto single = [&](V2 x) KVRS_UNROLLED { return resized<4>(hn::DemoteTo(Lanes<float, 2>(), x)); };
  // Both lanes of a multiple of the two angles.
  const auto spread = [&](V4 x) KVRS_UNROLLED {
    return M == 4 ? hn::Set(d4, hn::GetLane(x)) : hn::InterleaveLower(d4, x, x);
  };
  const V4 cos0 = hn::Set(d4, 1), sin0 = hn::Zero(d4);
  const V4 cos1 = single(c), sin1 = single(s), cos2 = single(c2), sin2 = single(s2);
  Rotations<M> all;
  all.shorter[1] = {spread(cos1), spread(sin1)};
  all.lanes = {hn::InterleaveLower(d4, cos0, cos1), hn::InterleaveLower(d4, sin0, sin1)};
  if constexpr (M == 2) {
    all.step = {spread(cos2), spread(sin2)};
  } else {
    const V4 cos3 = single(hn::Mul(hn::Sub(hn::Mul(four, hn::Mul(c, c)), hn::Set(d, 3)), c));
    const V4 sin3 = single(hn::Mul(hn::Sub(hn::Set(d, 3), hn::Mul(four, hn::Mul(s, s))), s));
    const V4 cos4 = single(hn::Sub(hn::Mul(two, hn::Mul(c2, c2)), one));
    const V4 sin4 = single(hn::Mul(two, hn::Mul(c2, s2)));
    all.shorter[2] = {spread(cos2), spread(sin2)};
    all.shorter[3] = {spread(cos3), spread(sin3)};
    all.step = {spread(cos4), spread(sin4)};
    all.lanes = {hn::ConcatLowerLower(d4, hn::InterleaveLower(d4, cos2, cos3), all.lanes.cos),
                 hn::ConcatLowerLower(d4, hn::InterleaveLower(d4, sin2, sin3), all.lanes.sin)};
  }
  return all;
}

KVRS_INLINE Complex<V4> rotated(Complex<V4> x, Rotation by) {
  return {hn::Add(hn::Mul(x.re, by.cos), hn::Mul(x.im, by.sin)),
          hn::Sub(hn::Mul(x.im, by.cos), hn::Mul(x.re, by.sin))};
}
KVRS_INLINE Complex<V4> plus(Complex<V4> a, Complex<V4> b) {
  return {hn::Add(a.re, b.re), hn::Add(a.im, b.im)};
}

// M samples from p on, for each frequency.
template <int M>
KVRS_INLINE V4 samples(const Kvr32f* p) {
  const Lanes<float, M> d;
  if constexpr (M == 4) {
    return hn::LoadU(d, p);
  } else {
    const auto both = hn::LoadU(d, p);
    return hn::Combine(Four(), both, both);
  }
}
template <int M>
KVRS_INLINE Complex<V4> load(const Kvr32f* p) {
  return {samples<M>(p), hn::Zero(Four())};
}
template <int M>
KVRS_INLINE Complex<V4> load(const Kvr32fc* p) {
  const Four d;
  if constexpr (M == 4) {
    return Element<Kvr32fc>::load(d, p);
  } else {
    const V4 both = hn::LoadU(d, &p->re);
    return {hn::ConcatEven(d, both, both), hn::ConcatOdd(d, both, both)};
  }
}
template <int M>
KVRS_INLINE Complex<V4> load(const Kvr16s* p) {
  static_assert(M == 4);
  const Lanes<int32_t, 4> di;
  return {hn::ConvertTo(Four(), hn::PromoteTo(di, hn::LoadU(Lanes<int16_t, 4>(), p))), hn::Zero(Four())};
}
template <int M>
KVRS_INLINE Complex<V4> load(const Kvr16sc* p) {
  const Lanes<int32_t, 4> di;
  const Lanes<int32_t, M> pairs;
  const auto loaded = hn::LoadU(pairs, reinterpret_cast<const int32_t*>(p));
  const auto all = [&] {
    if constexpr (M == 4) {
      return loaded;
    } else {
      return hn::Combine(di, loaded, loaded);
    }
  }();
  return {hn::ConvertTo(Four(), hn::ShiftRight<16>(hn::ShiftLeft<16>(all))),
          hn::ConvertTo(Four(), hn::ShiftRight<16>(all))};
}

// The spectrum as (re, im) of the first frequency and, of two, (re, im) of the second one.
template <int M, class T>
KVRS_INLINE V4 spectrum(const T* src, size_t len, const Rotations<M>& rotations) {
  const Four d;
  const size_t rest = len % M;
  const Rotation step = rotations.step;
  Complex<V4> sums{hn::Zero(d), hn::Zero(d)};
  for (const T* p = src + len; p != src + rest;) {
    p -= M;
    sums = plus(rotated(sums, step), load<M>(p));
  }
  if (rest != 0) {
    T first[M] = {};
    for (size_t n = 0; n < rest; ++n) first[n] = unaligned::get(src + n);
    sums = plus(rotated(sums, rotations.shorter[rest]), load<M>(first));
  }
  sums = rotated(sums, rotations.lanes);
  if constexpr (M == 4) {
    // (re0, im0, re1, im1) + (re2, im2, re3, im3), and the upper half of that upon the lower one.
    const V4 pairs =
        hn::Add(hn::InterleaveLower(d, sums.re, sums.im), hn::InterleaveUpper(d, sums.re, sums.im));
    return hn::Add(pairs, hn::ConcatUpperUpper(d, pairs, pairs));
  } else {
    const V4 first = hn::InterleaveLower(d, sums.re, sums.im),
             second = hn::InterleaveUpper(d, sums.re, sums.im);
    return hn::Add(hn::ConcatLowerLower(d, second, first), hn::ConcatUpperUpper(d, second, first));
  }
}

// The results of one frequency or of two.
template <int M>
using Parts = Lanes<float, 8 / M>;

template <int M, class T>
KVRS_INLINE KvrStatus single(const T* src, int len, Kvr32fc* dst, float relFreq0, float relFreq1) {
  Rotations<M>
      rotations;  // filled where it is: a copy would read in one piece what was just written in several
  underRounding(Rounding::nearest, [&] { rotations = rotationsToNearest<M>(relFreq0, relFreq1); });
  const V4 y = spectrum<M>(src, static_cast<size_t>(len), rotations);
  hn::StoreU(resized<8 / M>(y), Parts<M>(), &dst->re);
  return kvrStatusOk;
}

template <int M, class T>
KVRS_INLINE KvrStatus integer(const T* src, int len, Kvr16sc* dst, float relFreq0, float relFreq1,
                              int scaleFactor) {
  return underRounding(Rounding::nearest, [=] {
    const V4 scale = hn::Set(Four(), powerOfTwo<float>(-std::clamp(scaleFactor, -127, 126)));
    const V4 y = spectrum<M>(src, static_cast<size_t>(len), rotationsToNearest<M>(relFreq0, relFreq1));
    const auto rounded =
        toInteger<false>(Lanes<int16_t, 4>(), hn::Mul(y, scale), int16_t{-32768}, int16_t{32767});
    hn::StoreU(resized<8 / M>(rounded), Lanes<int16_t, 8 / M>(), &dst->re);
    return kvrStatusOk;
  });
}

template <class T>
KvrStatus goertzel(const T* src, int len, Kvr32fc* dst, Kvr32f relFreq) {
  KVRS_CHECK(pointers(src, dst), lengthOf<T>(len), frequency(relFreq));
  return single<4>(src, len, dst, relFreq, relFreq);
}
template <class T>
KvrStatus goertzelOfTwo(const T* src, int len, Kvr32fc* dst, const Kvr32f* relFreq) {
  KVRS_CHECK(pointers(src, dst, relFreq), lengthOf<T>(len), frequencies(relFreq));
  return single<2>(src, len, dst, unaligned::get(relFreq), unaligned::get(relFreq + 1));
}
template <class T>
KvrStatus goertzel(const T* src, int len, Kvr16sc* dst, Kvr32f relFreq, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), lengthOf<T>(len), frequency(relFreq));
  return integer<4>(src, len, dst, relFreq, relFreq, scaleFactor);
}

// --- double precision: the recurrence of second order ---

template <class D>
struct Resonator {
  hn::Vec<D> k, s1 = hn::Zero(D()), s2 = hn::Zero(D());

  KVRS_INLINE void take(hn::Vec<D> x) {
    const auto t = hn::Sub(x, s2);
    s2 = s1;
    s1 = hn::Add(hn::Mul(s1, k), t);
  }
};

using One = Lanes<double, 1>;

// exp(i * theta) * s1 - s2. Products are kept apart, see filters/iir_number.h.
KVRS_INLINE double product(double a, double b) {
  return inRegister(a * b);
}
KVRS_INLINE void store(double c, double s, double s1, double s2, Kvr64fc* dst) {
  unaligned::put(product(c, s1) - s2, &dst->re);
  unaligned::put(product(s, s1), &dst->im);
}
KVRS_INLINE void store(double c, double s, V2 s1, V2 s2, Kvr64fc* dst) {
  const double re1 = hn::ExtractLane(s1, 0), im1 = hn::ExtractLane(s1, 1);
  const double re2 = hn::ExtractLane(s2, 0), im2 = hn::ExtractLane(s2, 1);
  unaligned::put(product(c, re1) - re2 - product(s, im1), &dst->re);
  unaligned::put(product(c, im1) - im2 + product(s, re1), &dst->im);
}

struct Angles {
  double cos[2], sin[2];
  V2 twiceCos;
};
KVRS_INLINE Angles makeAngles(double relFreq0, double relFreq1) {
  Angles made;
  underRounding(Rounding::nearest, [&] {
    const Two d;
    const auto of = angles(relFreq0, relFreq1);
    made.cos[0] = hn::GetLane(of.cos);
    made.cos[1] = hn::ExtractLane(of.cos, 1);
    made.sin[0] = hn::GetLane(of.sin);
    made.sin[1] = hn::ExtractLane(of.sin, 1);
    made.twiceCos = hn::Mul(hn::Set(d, 2), of.cos);
  });
  return made;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsGoertz_32f(const Kvr32f* src, int len, Kvr32fc* dst, Kvr32f relFreq) noexcept {
  return goertzel(src, len, dst, relFreq);
}
KvrStatus kvrsGoertz_32fc(const Kvr32fc* src, int len, Kvr32fc* dst, Kvr32f relFreq) noexcept {
  return goertzel(src, len, dst, relFreq);
}
KvrStatus kvrsGoertz_16s_Sfs(const Kvr16s* src, int len, Kvr16sc* dst, Kvr32f relFreq,
                             int scaleFactor) noexcept {
  return goertzel(src, len, dst, relFreq, scaleFactor);
}
KvrStatus kvrsGoertz_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc* dst, Kvr32f relFreq,
                              int scaleFactor) noexcept {
  return goertzel(src, len, dst, relFreq, scaleFactor);
}
KvrStatus kvrsGoertzQ15_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc* dst, Kvr16s relFreqQ15,
                                 int scaleFactor) noexcept {
  KVRS_CHECK(frequency(relFreqQ15 * 0x1p-15f));  // known to callers: before the pointers
  return kvrsGoertz_16sc_Sfs(src, len, dst, relFreqQ15 * 0x1p-15f, scaleFactor);
}

KvrStatus kvrsGoertzTwo_32f(const Kvr32f* src, int len, Kvr32fc dst[2], const Kvr32f relFreq[2]) noexcept {
  return goertzelOfTwo(src, len, dst, relFreq);
}
KvrStatus kvrsGoertzTwo_32fc(const Kvr32fc* src, int len, Kvr32fc dst[2], const Kvr32f relFreq[2]) noexcept {
  return goertzelOfTwo(src, len, dst, relFreq);
}
KvrStatus kvrsGoertzTwo_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc dst[2], const Kvr32f relFreq[2],
                                 int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, relFreq), lengthOf<Kvr16sc>(len), frequencies(relFreq));
  return integer<2>(src, len, dst, unaligned::get(relFreq), unaligned::get(relFreq + 1), scaleFactor);
}
KvrStatus kvrsGoertzTwoQ15_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc dst[2], const Kvr16s relFreqQ15[2],
                                    int scaleFactor) noexcept {
  KVRS_CHECK(pointers(relFreqQ15));
  const float relFreq[2] = {unaligned::get(relFreqQ15) * 0x1p-15f, unaligned::get(relFreqQ15 + 1) * 0x1p-15f};
  KVRS_CHECK(frequencies(relFreq));  // known to callers: before the other pointers
  return kvrsGoertzTwo_16sc_Sfs(src, len, dst, relFreq, scaleFactor);
}

KvrStatus kvrsGoertz_64f(const Kvr64f* src, int len, Kvr64fc* dst, Kvr64f relFreq) noexcept {
  KVRS_CHECK(pointers(src, dst), lengthOf<Kvr64f>(len), frequency(relFreq));
  const Angles of = makeAngles(relFreq, relFreq);
  Resonator<One> at{hn::Set(One(), 2 * of.cos[0])};
  for (const Kvr64f* const end = src + len; src != end; ++src) at.take(hn::LoadU(One(), src));
  store(of.cos[0], of.sin[0], hn::GetLane(at.s1), hn::GetLane(at.s2), dst);
  return kvrStatusOk;
}
KvrStatus kvrsGoertz_64fc(const Kvr64fc* src, int len, Kvr64fc* dst, Kvr64f relFreq) noexcept {
  KVRS_CHECK(pointers(src, dst), lengthOf<Kvr64fc>(len), frequency(relFreq));
  const Angles of = makeAngles(relFreq, relFreq);
  Resonator<Two> at{hn::Set(Two(), 2 * of.cos[0])};
  for (const Kvr64fc* const end = src + len; src != end; ++src) at.take(hn::LoadU(Two(), &src->re));
  store(of.cos[0], of.sin[0], at.s1, at.s2, dst);
  return kvrStatusOk;
}
KvrStatus kvrsGoertzTwo_64f(const Kvr64f* src, int len, Kvr64fc dst[2], const Kvr64f relFreq[2]) noexcept {
  KVRS_CHECK(pointers(src, dst, relFreq), lengthOf<Kvr64f>(len), frequencies(relFreq));
  const Angles of = makeAngles(unaligned::get(relFreq), unaligned::get(relFreq + 1));
  Resonator<Two> both{of.twiceCos};
  for (const Kvr64f* const end = src + len; src != end; ++src) {
    both.take(hn::Set(Two(), unaligned::get(src)));
  }
  for (size_t f = 0; f < 2; ++f) {
    store(of.cos[f], of.sin[f], hn::ExtractLane(both.s1, f), hn::ExtractLane(both.s2, f), dst + f);
  }
  return kvrStatusOk;
}
KvrStatus kvrsGoertzTwo_64fc(const Kvr64fc* src, int len, Kvr64fc dst[2], const Kvr64f relFreq[2]) noexcept {
  KVRS_CHECK(pointers(src, dst, relFreq), lengthOf<Kvr64fc>(len), frequencies(relFreq));
  const Angles of = makeAngles(unaligned::get(relFreq), unaligned::get(relFreq + 1));
  Resonator<Two> first{hn::Set(Two(), 2 * of.cos[0])}, second{hn::Set(Two(), 2 * of.cos[1])};
  for (const Kvr64fc* const end = src + len; src != end; ++src) {
    const auto x = hn::LoadU(Two(), &src->re);
    first.take(x);
    second.take(x);
  }
  store(of.cos[0], of.sin[0], first.s1, first.s2, dst);
  store(of.cos[1], of.sin[1], second.s1, second.s2, dst + 1);
  return kvrStatusOk;
}
