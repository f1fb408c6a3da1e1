// Sums of logarithms.
//
// ln(x0) + ln(x1) + ... is the logarithm of the product. With x = 2^k m, m next to 1, the k are added and the m multiplied, 256
// to a lane, which can not leave the range of doubles; then one logarithm is taken for all of them.
// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstddef>
#include <limits>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/logarithm.h"
#include "frame/reduce.h"
#include "frame/unaligned.h"
#include "kvrs/logarithm.h"

namespace kvrs {
namespace {

using DoubleLanes = Lanes<double, kLanes<double>>;
using Doubles = hn::Vec<DoubleLanes>;

struct Collected {
  Doubles product = hn::Set(DoubleLanes(), 1.0), exponent = hn::Zero(DoubleLanes());
  // Of single elements, by which zeros, negative numbers, infinities and NaN are known.
  Doubles lowest = hn::Zero(DoubleLanes()), highest = hn::Zero(DoubleLanes());
};

struct Collect {
  static constexpr int rest() { return 1; }

  template <class V>
  KVRS_INLINE void operator()(Collected& to, V x) const {
    const DoubleLanes d;
    const auto parts = splitPowerOfTwo(d, asDoubles(d, x));
    to.product = hn::Mul(to.product, parts.m);
    to.exponent = hn::Add(to.exponent, parts.k);
    to.lowest = hn::Min(to.lowest, parts.k);
    to.highest = hn::Max(to.highest, parts.k);
  }
  static KVRS_INLINE void join(Collected& to, const Collected& from) {
    to.product = hn::Mul(to.product, from.product);
    to.exponent = hn::Add(to.exponent, from.exponent);
    to.lowest = hn::Min(to.lowest, from.lowest);
    to.highest = hn::Max(to.highest, from.highest);
  }

 private:
  template <class V>
  static KVRS_INLINE Doubles asDoubles(DoubleLanes d, V x) {
    using T = hn::TFromV<V>;
    if constexpr (sizeof(T) == 8) {
      return x;
    } else if constexpr (sizeof(T) == 4) {
      return hn::PromoteTo(d, x);
    } else {
      return hn::PromoteTo(d, hn::PromoteTo(hn::Rebind<int32_t, DoubleLanes>(), x));
    }
  }
};

struct Sum {
  double exponent = 0;
  long double logarithm = 0;
  KvrStatus status = kvrStatusOk;

  template <class S>
  void addSingly(const S* src, size_t len) {
    for (size_t i = 0; i < len; ++i) {
      const double x = static_cast<double>(unaligned::get(src + i));
      if (status == kvrStatusOk)
        status = x == 0 ? kvrStatusLnZeroArg : x < 0 ? kvrStatusLnNegArg : kvrStatusOk;
      logarithm += std::log(x);
    }
  }

  // At most 256 elements for each lane of an accumulator.
  template <class S>
  void add(const S* src, size_t len) {
    const Collected all = reduce<double, kFewAccumulators>(Collect(), Collected(), len, src);
    // Exponents of normal numbers, but for the outermost.
    const DoubleLanes d;
    if (!hn::AllTrue(
            d, hn::And(hn::Gt(all.lowest, hn::Set(d, -1022.0)), hn::Lt(all.highest, hn::Set(d, 1024.0))))) {
      return addSingly(src, len);
    }
    exponent += sumLanes(all.exponent);
    double products[kLanes<double>];
    hn::StoreU(all.product, d, products);
    for (double product : products) logarithm += std::log(product);
  }
};

template <class S, class R>
KvrStatus sumOfLogarithms(const S* src, int len, R* sum) {
  KVRS_CHECK(pointers(src, sum), length(len, src));
  Sum total;
  forPieces(static_cast<size_t>(len), 256 * kFewAccumulators * kLanes<double>,
            [&](size_t begin, size_t count) { total.add(src + begin, count); });
  constexpr long double kLn2 = 0.693147180559945309417232121458176568L;
  unaligned::put(static_cast<R>(static_cast<long double>(total.exponent) * kLn2 + total.logarithm), sum);
  return total.status;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSumLn_16s32f(const Kvr16s* src, int len, Kvr32f* sum) noexcept {
  return sumOfLogarithms(src, len, sum);
}
KvrStatus kvrsSumLn_32f(const Kvr32f* src, int len, Kvr32f* sum) noexcept {
  return sumOfLogarithms(src, len, sum);
}
KvrStatus kvrsSumLn_32f64f(const Kvr32f* src, int len, Kvr64f* sum) noexcept {
  return sumOfLogarithms(src, len, sum);
}
KvrStatus kvrsSumLn_64f(const Kvr64f* src, int len, Kvr64f* sum) noexcept {
  return sumOfLogarithms(src, len, sum);
}
