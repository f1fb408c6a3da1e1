// Standard deviations, with means and without.
// SPDX-License-Identifier: MIT
#include "kvrs/deviation.h"

#include <cmath>

#include "frame/check.h"
#include "stats/float_sums-inl.h"
#include "stats/integer_sums-inl.h"
#include "stats/scaled_result.h"

namespace kvrs {
namespace {

template <class F>
struct Deviation {
  F mean, stdDev;
};

// From the sums a of the elements and b of their squares: mean a / n, variance (n * b - a * a) / (n * (n - 1)). Rounding may
// leave a little where nothing should be left, on either side of 0: below it the variance is 0, and above it if
// `allEqual()` says that there is no deviation.
template <class F, class AllEqual>
Deviation<F> deviationOf(F a, F b, F n, AllEqual allEqual) {
  F difference = n * b - a * a;
  if (difference < 0 || (difference > 0 && allEqual())) difference = 0;
  return {a / n, std::sqrt(difference / (n * (n - 1)))};
}

template <class T>
bool allEqual(const T* src, size_t len) {
  const T first = unaligned::get(src);
  const auto differs = [first](auto x)
                           KVRS_UNROLLED { return hn::Ne(x, hn::Set(hn::DFromV<decltype(x)>(), first)); };
  return findFirst(src, len, differs) == len;
}

struct SumsOfWords {
  hn::Vec<DoubleWords> sum;
  WideSum squares;
};
struct SumWordsAndSquares {
  template <class V16>
  KVRS_INLINE void operator()(SumsOfWords& acc, V16 x) const {
    const DoubleWords d;
    SumNeighbours{0x00010001}(acc.sum, x);
    acc.squares.add(mulAddNeighbours(d, x, x));  // at most 2^31, without a sign
  }
  KVRS_INLINE void join(SumsOfWords& a, const SumsOfWords& b) const {
    a.sum = hn::Add(a.sum, b.sum);
    a.squares.add(b.squares);
  }
};

[[gnu::noinline]] Deviation<double> deviation(const Kvr16s* src, size_t len) {
  int64_t sum = 0, squares = 0;
  forPieces(len, kPairBlocks * kLanes<Kvr16s>, [&](size_t begin, size_t count) KVRS_UNROLLED {
    const SumsOfWords zero{hn::Zero(DoubleWords()), {}};
    const auto sums = reduce<Kvr16s, 2>(SumWordsAndSquares(), zero, count, src + begin);
    sum += signedTotal(sums.sum);
    squares += static_cast<int64_t>(sums.squares.total());
  });
  return deviationOf<double>(static_cast<double>(sum), static_cast<double>(squares), static_cast<double>(len),
                             [=] { return allEqual(src, len); });
}

// Of an estimate: every operation of the formula grows, or falls, with its operands, so that the extremes of the deviation are
// those of the largest sum of squares with the sum of the smallest magnitude, and the other way round.
bool decidedDeviation(const Estimate<1, true>& e, long double n, Deviation<Kvr32f>* to) {
  const auto mean = [n](long double a) {
    return static_cast<Kvr32f>(static_cast<double>(a) / static_cast<double>(n));
  };
  const auto never = [] { return false; };
  const long double a = std::fabs(e.sums.sum[0]), smallest = a > e.error ? a - e.error : 0;
  const Kvr32f lowest = static_cast<Kvr32f>(
      deviationOf<long double>(a + e.error, e.sums.squares - e.errorOfSquares, n, never).stdDev);
  const Kvr32f highest = static_cast<Kvr32f>(
      deviationOf<long double>(smallest, e.sums.squares + e.errorOfSquares, n, never).stdDev);
  to->stdDev = lowest;
  return decided(e.sums.sum[0], e.error, mean, &to->mean) && lowest == highest && lowest != 0;
}

// The mean is that of kvrsMean_32f.
[[gnu::noinline]] Deviation<Kvr32f> deviation(const Kvr32f* src, size_t len, KvrHintAlgorithm hint) {
  const auto equal = [=] { return allEqual(src, len); };
  if (hint != kvrHintFast && len >= kEstimatedFrom) {
    Deviation<Kvr32f> d;
    if (decidedDeviation(estimateSums<1, true>(src, len), static_cast<long double>(len), &d) && !equal())
      return d;
  }
  const Sums<long double> t =
      hint == kvrHintFast ? fastSums<1, true>(src, len) : accurateSums<1, true>(src, len);
  const auto d = deviationOf<long double>(t.sum[0], t.squares, len, equal);
  return {static_cast<Kvr32f>(static_cast<double>(t.sum[0]) / static_cast<double>(len)),
          static_cast<Kvr32f>(d.stdDev)};
}

[[gnu::noinline]] Deviation<double> deviation(const Kvr64f* src, size_t len) {
  const Sums<Kvr64f> t = doubleSums<true>(src, len, true);
  return deviationOf<double>(t.sum[0] + t.sum[1], t.squares, static_cast<double>(len),
                             [=] { return allEqual(src, len); });
}

template <class D>
D scaled(double x, int scaleFactor) {
  return nearestInteger<D>(scaledBy(x, scaleFactor));
}

}  // namespace

namespace check {
namespace {

// One element has no deviation.
template <class T>
constexpr KvrStatus sampleLength(int len) {
  return len < 2 ? kvrStatusBadLength : lengthOf<T>(len);
}

}  // namespace
}  // namespace check
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsStdDev_16s_Sfs(const Kvr16s* src, int len, Kvr16s* stdDev, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, stdDev), sampleLength<Kvr16s>(len));
  *stdDev = scaled<Kvr16s>(deviation(src, static_cast<size_t>(len)).stdDev, scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsStdDev_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* stdDev, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, stdDev), sampleLength<Kvr16s>(len));
  *stdDev = scaled<Kvr32s>(deviation(src, static_cast<size_t>(len)).stdDev, scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsStdDev_32f(const Kvr32f* src, int len, Kvr32f* stdDev, KvrHintAlgorithm hint) noexcept {
  KVRS_CHECK(pointers(src, stdDev), sampleLength<Kvr32f>(len));
  *stdDev = deviation(src, static_cast<size_t>(len), hint).stdDev;
  return kvrStatusOk;
}
KvrStatus kvrsStdDev_64f(const Kvr64f* src, int len, Kvr64f* stdDev) noexcept {
  KVRS_CHECK(pointers(src, stdDev), sampleLength<Kvr64f>(len));
  *stdDev = deviation(src, static_cast<size_t>(len)).stdDev;
  return kvrStatusOk;
}

KvrStatus kvrsMeanStdDev_16s_Sfs(const Kvr16s* src, int len, Kvr16s* mean, Kvr16s* stdDev,
                                 int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, mean, stdDev), sampleLength<Kvr16s>(len));
  const auto d = deviation(src, static_cast<size_t>(len));
  *mean = scaled<Kvr16s>(d.mean, scaleFactor);
  *stdDev = scaled<Kvr16s>(d.stdDev, scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsMeanStdDev_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* mean, Kvr32s* stdDev,
                                    int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, mean, stdDev), sampleLength<Kvr16s>(len));
  const auto d = deviation(src, static_cast<size_t>(len));
  *mean = scaled<Kvr32s>(d.mean, scaleFactor);
  *stdDev = scaled<Kvr32s>(d.stdDev, scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsMeanStdDev_32f(const Kvr32f* src, int len, Kvr32f* mean, Kvr32f* stdDev,
                             KvrHintAlgorithm hint) noexcept {
  KVRS_CHECK(pointers(src, mean, stdDev), sampleLength<Kvr32f>(len));
  const auto d = deviation(src, static_cast<size_t>(len), hint);
  *mean = d.mean;
  *stdDev = d.stdDev;
  return kvrStatusOk;
}
KvrStatus kvrsMeanStdDev_64f(const Kvr64f* src, int len, Kvr64f* mean, Kvr64f* stdDev) noexcept {
  KVRS_CHECK(pointers(src, mean, stdDev), sampleLength<Kvr64f>(len));
  const auto d = deviation(src, static_cast<size_t>(len));
  *mean = d.mean;
  *stdDev = d.stdDev;
  return kvrStatusOk;
}
