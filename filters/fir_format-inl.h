// What filters of different samples differ in: samples of type D become elements T of the filter, and its sums become
// samples again.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_FORMAT_INL_H
#define KVRS_FILTERS_FIR_FORMAT_INL_H

#include <cstring>
#include <type_traits>

#include "filters/fir_kernel.h"
#include "frame/loop.h"
#include "frame/saturate.h"
#include "frame/scale.h"
#include "frame/shift.h"
#include "frame/unaligned.h"
#include "kvrs/convert.h"

namespace kvrs::fir {

// Wrapped 32-bit sums times 2^shift, as 16-bit integers.
class Shift {
 public:
  // Sums of taps that are times 2^tapsFactor.
  Shift(int tapsFactor, int scaleFactor, KvrRoundMode mode = kvrRoundNear) {
    const int64_t shift = static_cast<int64_t>(tapsFactor) - scaleFactor;
    const int by = static_cast<int>(shift < -31 ? -31 : shift > 31 ? 31 : shift);
    left_ = by > 0 ? by : 0;
    right_ = by < 0 ? -by : 0;
    const uint32_t half = right_ > 0 ? uint32_t{1} << (right_ - 1) : 0;
    away_ = mode == kvrRoundFinancial && right_ > 0;
    toEven_ = mode == kvrRoundNear && right_ > 0;
    bias_ = static_cast<int32_t>(away_ ? half : toEven_ ? half - 1 : 0);
  }

  bool away() const { return away_; }

  Kvr16s operator()(int32_t sum) const {
    const uint32_t shifted = static_cast<uint32_t>(sum) << left_;
    const int32_t value = static_cast<int32_t>(shifted), floor = value >> right_;
    if (away_) {
      const uint32_t rest = shifted & ((uint32_t{1} << right_) - 1);
      const uint32_t up = (rest + static_cast<uint32_t>(bias_) - (value < 0 ? 1 : 0)) >> right_;
      return saturate<Kvr16s>(floor + static_cast<int32_t>(up));
    }
    const uint32_t biased = shifted + static_cast<uint32_t>(bias_) + (static_cast<uint32_t>(floor) & toEven_);
    return saturate<Kvr16s>(static_cast<int32_t>(biased) >> right_);
  }

  // The same on vectors, where ties do not go away from zero.
  template <class Dd, class V>
  KVRS_INLINE hn::Vec<Dd> operator()(Dd d, V sum) const {
    const hn::Rebind<int32_t, Dd> d32;
    const auto value = shiftLeftBy(d32, sum, left_);
    const auto odd = hn::And(shiftRightBy(d32, value, right_), hn::Set(d32, toEven_ ? 1 : 0));
    const auto biased = hn::Add(hn::Add(value, hn::Set(d32, bias_)), odd);
    return hn::DemoteTo(d, shiftRightBy(d32, biased, right_));
  }

 private:
  int left_, right_;
  int32_t bias_;
  bool toEven_, away_;
};

// Whole numbers from floats, to nearest with ties to even in every rounding mode of the caller's, saturated; NaN becomes
// the lowest number.
template <class D>
D nearestScaled(double value, double scale) {
  constexpr double kLowest = static_cast<double>(std::numeric_limits<D>::lowest());
  constexpr double kHighest = static_cast<double>(std::numeric_limits<D>::max());
  const double scaled = value * scale;
  if (!(scaled > kLowest)) return std::numeric_limits<D>::lowest();
  if (scaled >= kHighest) return std::numeric_limits<D>::max();
  const int32_t toZero = static_cast<int32_t>(scaled);
  const double rest = scaled - static_cast<double>(toZero);
  const bool odd = (toZero & 1) != 0;
  const int up = rest > 0.5 || (rest == 0.5 && odd), down = rest < -0.5 || (rest == -0.5 && odd);
  return saturate<D>(static_cast<int64_t>(toZero) + up - down);
}

// 2^-scaleFactor, and scale factors within a range in which a sum of 0 stays 0.
inline double powerOf(int scaleFactor) {
  return powerOfTwo<double>(scaleFactor > 1022 ? -1022 : scaleFactor < -1000 ? 1000 : -scaleFactor);
}
template <class T>
int boundedScale(int scaleFactor) {
  constexpr int kLowest = sizeof(T) == 4 ? -120 : -1000;
  return scaleFactor < kLowest ? kLowest : scaleFactor;
}

struct NoScale {};

// Real samples, and the parts of complex ones. Scale is what an export makes of a scale factor.
template <class D, class T>
struct PartFormat;

template <class T>
struct PartFormat<T, T> {
  using Scale = NoScale;

  static void fetch(const T* src, T* dst, size_t len) { memcpy(dst, src, len * sizeof *dst); }
  static void store(const T* sums, T* dst, size_t len, Scale) { memcpy(dst, sums, len * sizeof *dst); }
  static T one(T sum, Scale) { return sum; }
};

template <>
struct PartFormat<Kvr16s, Kvr32f> {
  using Scale = int;

  static void fetch(const Kvr16s* src, Kvr32f* dst, size_t len) {
    kvrsConvert_16s32f(src, dst, static_cast<int>(len));
  }
  static void store(const Kvr32f* sums, Kvr16s* dst, size_t len, Scale scale) {
    kvrsConvert_32f16s_Sfs(sums, dst, static_cast<int>(len), kvrRoundNear, boundedScale<Kvr32f>(scale));
  }
  static Kvr16s one(Kvr32f sum, Scale scale) { return nearestScaled<Kvr16s>(sum, powerOf(scale)); }
};

template <>
struct PartFormat<Kvr16s, Kvr64f> {
  using Scale = int;

  static void fetch(const Kvr16s* src, Kvr64f* dst, size_t len) {
    kvrsConvert_16s64f_Sfs(src, dst, static_cast<int>(len), 0);
  }
  static void store(const Kvr64f* sums, Kvr16s* dst, size_t len, Scale scale) {
    kvrsConvert_64f16s_Sfs(sums, dst, static_cast<int>(len), kvrRoundNear, boundedScale<Kvr64f>(scale));
  }
  static Kvr16s one(Kvr64f sum, Scale scale) { return nearestScaled<Kvr16s>(sum, powerOf(scale)); }
};

template <>
struct PartFormat<Kvr32s, Kvr64f> {
  using Scale = int;

  static void fetch(const Kvr32s* src, Kvr64f* dst, size_t len) {
    kvrsConvert_32s64f(src, dst, static_cast<int>(len));
  }
  static void store(const Kvr64f* sums, Kvr32s* dst, size_t len, Scale scale) {
    kvrsConvert_64f32s_Sfs(sums, dst, static_cast<int>(len), kvrRoundNear, boundedScale<Kvr64f>(scale));
  }
  static Kvr32s one(Kvr64f sum, Scale scale) { return nearestScaled<Kvr32s>(sum, powerOf(scale)); }
};

template <>
struct PartFormat<Kvr32f, Kvr64f> {
  using Scale = NoScale;

  static void fetch(const Kvr32f* src, Kvr64f* dst, size_t len) {
    kvrsConvert_32f64f(src, dst, static_cast<int>(len));
  }
  static void store(const Kvr64f* sums, Kvr32f* dst, size_t len, Scale) {
    kvrsConvert_64f32f(sums, dst, static_cast<int>(len));
  }
  static Kvr32f one(Kvr64f sum, Scale) { return static_cast<Kvr32f>(sum); }
};

template <>
struct PartFormat<Kvr16s, Kvr16s> {
  using Scale = Shift;

  static void fetch(const Kvr16s* src, Kvr16s* dst, size_t len) { memcpy(dst, src, len * sizeof *dst); }
  static void store(const Kvr32s* sums, Kvr16s* dst, size_t len, const Scale& shift) {
    if (shift.away()) {
      for (size_t i = 0; i < len; ++i) unaligned::put(shift(sums[i]), dst + i);
    } else {
      mapElements(shift, dst, len, sums);
    }
  }
  static Kvr16s one(Kvr32s sum, const Scale& shift) { return shift(sum); }
};

template <class D, class T>
struct Format : PartFormat<D, T> {};

// Complex samples.
template <class D, class T, class Part, class TPart>
struct ComplexFormat {
  using Parts = PartFormat<Part, TPart>;
  using Scale = typename Parts::Scale;
  using Sum = FirSum<T>;

  static void fetch(const D* src, T* dst, size_t len) { Parts::fetch(&src->re, &dst->re, 2 * len); }
  static void store(const Sum* sums, D* dst, size_t len, const Scale& scale) {
    Parts::store(&sums->re, &dst->re, 2 * len, scale);
  }
  static D one(Sum sum, const Scale& scale) { return {Parts::one(sum.re, scale), Parts::one(sum.im, scale)}; }
};
template <>
struct Format<Kvr32fc, Kvr32fc> : ComplexFormat<Kvr32fc, Kvr32fc, Kvr32f, Kvr32f> {};
template <>
struct Format<Kvr64fc, Kvr64fc> : ComplexFormat<Kvr64fc, Kvr64fc, Kvr64f, Kvr64f> {};
template <>
struct Format<Kvr16sc, Kvr32fc> : ComplexFormat<Kvr16sc, Kvr32fc, Kvr16s, Kvr32f> {};
template <>
struct Format<Kvr16sc, Kvr64fc> : ComplexFormat<Kvr16sc, Kvr64fc, Kvr16s, Kvr64f> {};
template <>
struct Format<Kvr32sc, Kvr64fc> : ComplexFormat<Kvr32sc, Kvr64fc, Kvr32s, Kvr64f> {};
template <>
struct Format<Kvr32fc, Kvr64fc> : ComplexFormat<Kvr32fc, Kvr64fc, Kvr32f, Kvr64f> {};
template <>
struct Format<Kvr16sc, Kvr16sc> : ComplexFormat<Kvr16sc, Kvr16sc, Kvr16s, Kvr16s> {};

}  // namespace kvrs::fir

#endif
