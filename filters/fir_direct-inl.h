// Stateless FIR filters, for the sources that instantiate them: taps and delay line come with every call.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_DIRECT_INL_H
#define KVRS_FILTERS_FIR_DIRECT_INL_H

#include "filters/fir_engine-inl.h"
#include "filters/fir_taps.h"
#include "frame/array_length.h"

namespace kvrs::fir {

// ---- Sums of products as they stand, those with an even number apart from the others.

// Floating-point products of type T added up in Wide.
template <class T, class Wide>
struct FloatSum {
  Wide sum[2] = {};

  template <class D, class X>
  void add(int which, D sample, X tap) {
    sum[which] += static_cast<Wide>(static_cast<T>(sample) * tap);
  }
  Wide total() const { return sum[0] + sum[1]; }
};

template <class T, class Wide>
struct ComplexFloatSum {
  FloatSum<T, Wide> re, im;
  struct Total {
    Wide re, im;
  };

  template <class D, class X>
  void add(int which, D sample, X tap) {
    re.add(which, sample.re, tap.re);
    re.add(which, sample.im, -tap.im);
    im.add(which, sample.re, tap.im);
    im.add(which, sample.im, tap.re);
  }
  Total total() const { return {re.total(), im.total()}; }
};

// Integers modulo 2^32.
struct WrappedSum {
  uint32_t sum = 0;

  void add(int, int32_t sample, int32_t tap) {
    sum += static_cast<uint32_t>(sample) * static_cast<uint32_t>(tap);
  }
  int32_t total() const { return static_cast<int32_t>(sum); }
};
struct ComplexWrappedSum {
  WrappedSum re, im;

  template <class D, class X>
  void add(int, D sample, X tap) {
    re.add(0, sample.re, tap.re);
    re.sum -= static_cast<uint32_t>(int32_t{sample.im}) * static_cast<uint32_t>(int32_t{tap.im});
    im.add(0, sample.re, tap.im);
    im.add(0, sample.im, tap.re);
  }
  Kvr32sc total() const { return {re.total(), im.total()}; }
};

// ---- What becomes of a sum.

struct Plainly {
  template <class Y, class Wide>
  Y as(Wide sum) const {
    return convertedTo<Y>(sum);
  }
};

// Times 2^-scaleFactor, ties to even.
struct ToNearest {
  double scale;
  explicit ToNearest(int scaleFactor) : scale(powerOf(scaleFactor)) {}

  template <class Y, class Wide>
  Y as(Wide sum) const {
    if constexpr (requires { sum.re; }) {
      return {as<decltype(Y::re)>(sum.re), as<decltype(Y::im)>(sum.im)};
    } else {
      return nearestScaled<Y>(sum, scale);
    }
  }
};

// Ties away from zero.
struct AwayFromZero {
  double scale;
  explicit AwayFromZero(int scaleFactor) : scale(powerOf(scaleFactor)) {}

  template <class Y>
  Y as(double sum) const {
    constexpr double kLowest = std::numeric_limits<Y>::lowest(), kHighest = std::numeric_limits<Y>::max();
    const double scaled = sum * scale;
    if (!(scaled > kLowest)) return std::numeric_limits<Y>::lowest();
    if (scaled >= kHighest) return std::numeric_limits<Y>::max();
    // The part behind the point is exact, while a half more might be rounded up.
    const Y toZero = static_cast<Y>(scaled);
    const double rest = scaled - toZero;
    return static_cast<Y>(toZero + (rest >= 0.5) - (rest <= -0.5));
  }
};

struct Shifted {
  Shift shift;

  template <class Y>
  Y as(int32_t sum) const {
    return shift(sum);
  }
  template <class Y>
  Y as(Kvr32sc sum) const {
    return {shift(sum.re), shift(sum.im)};
  }
};

// ---- One sample.

// A delay line of 2 * tapsLen samples with each sample twice, tapsLen apart; the window begins at *index.
template <class Sum, class D, class X, class Result>
D stepOnce(D src, const X* taps, int tapsLen, D* dlyLine, int32_t* index, const Result& result) {
  const D* window = pushTwice(dlyLine, tapsLen, index, src);
  const X* newest = taps + (tapsLen - 1);
  Sum sum;
  int i = 0;
  for (; i + 2 <= tapsLen; i += 2) {
    sum.add(0, unaligned::get(window + i), unaligned::get(newest - i));
    sum.add(1, unaligned::get(window + i + 1), unaligned::get(newest - i - 1));
  }
  if (i < tapsLen) sum.add(0, unaligned::get(window + i), unaligned::get(newest - i));
  return result.template as<D>(sum.total());
}

inline KvrStatus checkDirect(const void* taps, int tapsLen, const void* dlyLine, const int* index) {
  if (taps == nullptr) return kvrStatusNullPointer;
  if (tapsLen < 1) return kvrStatusBadTapsLength;
  return check::pointers(dlyLine, index);
}

template <class Sum, class D, class X, class Result>
KvrStatus directOne(D src, D* dst, const X* taps, int tapsLen, D* dlyLine, int* dlyLineIndex,
                    const Result& result) {
  KVRS_CHECK(pointers(dst), checkDirect(taps, tapsLen, dlyLine, dlyLineIndex));
  int32_t index = unaligned::get(dlyLineIndex);
  unaligned::put(stepOnce<Sum>(src, taps, tapsLen, dlyLine, &index, result), dst);
  unaligned::put(static_cast<int>(index), dlyLineIndex);
  return kvrStatusOk;
}

// In place.
template <class Sum, class D, class X, class Result>
KvrStatus directOne(D* srcDst, const X* taps, int tapsLen, D* dlyLine, int* dlyLineIndex,
                    const Result& result) {
  KVRS_CHECK(pointers(srcDst));
  return directOne<Sum>(unaligned::get(srcDst), srcDst, taps, tapsLen, dlyLine, dlyLineIndex, result);
}

// ---- Pieces.

// Sample by sample. src may be dst.
template <class Sum, class D, class X, class Result>
KvrStatus directEach(const D* src, D* dst, int len, const X* taps, int tapsLen, D* dlyLine, int* dlyLineIndex,
                     const Result& result) {
  KVRS_CHECK(pointers(src, dst), length(len, src, dst), checkDirect(taps, tapsLen, dlyLine, dlyLineIndex));
  int32_t index = unaligned::get(dlyLineIndex);
  for (int n = 0; n < len; ++n) {
    unaligned::put(stepOnce<Sum>(unaligned::get(src + n), taps, tapsLen, dlyLine, &index, result), dst + n);
  }
  unaligned::put(static_cast<int>(index), dlyLineIndex);
  return kvrStatusOk;
}

// By a state that lives as long as the call, with the window as its delay line. src may be dst.
template <class S, class D, class X, class T = typename S::Element>
KvrStatus directByState(const Form& form, const D* src, D* dst, int len, const X* taps, int tapsLen,
                        D* window) {
  S* state;
  KvrStatus status =
      initAlloc(form, &state, PlainTaps<X>{taps}, tapsLen, nullptr, static_cast<const D*>(nullptr));
  if (status != kvrStatusOk) return status;
  T* line = state->dlyLine.get();
  for (int i = 0; i < tapsLen; ++i) line[i] = convertedTo<T>(unaligned::get(window + i));
  const size_t count = static_cast<size_t>(len);
  status =
      src == dst ? filterInPlace<D, T>(*state, dst, count, {}) : filter<D, T>(*state, src, dst, count, {});
  for (int i = 0; i < tapsLen; ++i) unaligned::put(convertedTo<D>(line[state->dlyPos + i]), window + i);
  release<T>(state);
  return status;
}

// Samples in the type of the taps: few taps as they stand, from `fromTaps` on by a state.
template <int fromTaps, class Sum, class S, class T = typename S::Element>
KvrStatus directPlain(const Form& form, const T* src, T* dst, int len, const T* taps, int tapsLen, T* dlyLine,
                      int* dlyLineIndex) {
  KVRS_CHECK(pointers(src, dst), length(len, src, dst), checkDirect(taps, tapsLen, dlyLine, dlyLineIndex));
  int32_t index = unaligned::get(dlyLineIndex);
  if (tapsLen >= fromTaps) return directByState<S>(form, src, dst, len, taps, tapsLen, dlyLine + index);
  const int past = tapsLen - 1, stepped = past < len ? past : len;
  for (int n = 0; n < stepped; ++n) {
    unaligned::put(stepOnce<Sum>(unaligned::get(src + n), taps, tapsLen, dlyLine, &index, Plainly()),
                   dst + n);
  }
  if (tapsLen <= len) {
    const size_t count = static_cast<size_t>(tapsLen);
    alignas(64) T reversed[fromTaps];
    alignas(64) FirLane<T> table[fromTaps * kTapLanes<T>];
    reverse(taps, reversed, count);
    fillTapTable(reversed, table, count);
    firKernel(src, dst + past, static_cast<size_t>(len - past), table, count);
    memcpy(static_cast<void*>(dlyLine), src + (len - past), static_cast<size_t>(past) * sizeof(T));
    index = past;
  }
  unaligned::put(static_cast<int>(index), dlyLineIndex);
  return kvrStatusOk;
}

// The same in place: always by a state.
template <class S, class T = typename S::Element>
KvrStatus directPlainInPlace(const Form& form, T* srcDst, int len, const T* taps, int tapsLen, T* dlyLine,
                             int* dlyLineIndex) {
  KVRS_CHECK(pointers(srcDst), length(len, srcDst), checkDirect(taps, tapsLen, dlyLine, dlyLineIndex));
  return directByState<S>(form, srcDst, srcDst, len, taps, tapsLen, dlyLine + unaligned::get(dlyLineIndex));
}

// Samples of less precision than the taps: by a state from `fromLen` samples on. src may be dst.
template <int fromLen, class Sum, class S, class D, class X>
KvrStatus directMixed(const Form& form, const D* src, D* dst, int len, const X* taps, int tapsLen, D* dlyLine,
                      int* dlyLineIndex) {
  if (len < fromLen) {
    return directEach<Sum>(src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex, Plainly());
  }
  KVRS_CHECK(pointers(src, dst), checkDirect(taps, tapsLen, dlyLine, dlyLineIndex));
  return directByState<S>(form, src, dst, len, taps, tapsLen, dlyLine + unaligned::get(dlyLineIndex));
}

}  // namespace kvrs::fir

#endif
