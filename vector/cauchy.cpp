// The Cauchy functions of robust statistics.
// SPDX-License-Identifier: MIT
#include "kvrs/cauchy.h"

#include <cstddef>
#include <cstdint>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/cursor.h"
#include "frame/loop.h"
#include "frame/unaligned.h"
#include "kvrs/arith_float.h"
#include "kvrs/logarithm.h"

namespace kvrs {
namespace check {

constexpr KvrStatus positive(Kvr32f param) {
  return require(!(param <= 0), kvrStatusNonPositiveParam);
}

}  // namespace check

namespace {

struct SquareAbove1 {
  float inverse;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    const V ratio = hn::Mul(x, hn::Set(d, inverse));
    return hn::Add(hn::Mul(ratio, ratio), hn::Set(d, 1.0f));
  }
};

struct Derivative {
  float square;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    return hn::Div(x, hn::Add(hn::Mul(x, x), hn::Set(d, square)));
  }
};

// x times the factor, and the second derivative.
struct Derivatives {
  static constexpr bool kIsHeavy = true;
  float square;
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, V x) const {
    const V squares = hn::Mul(x, x), p = hn::Set(d, square);
    const V factor = hn::Div(hn::Set(d, 1.0f), hn::Add(p, squares));
    return {hn::Mul(x, factor), hn::Mul(hn::Mul(hn::Sub(p, squares), factor), factor)};
  }
};

bool overlap(const Kvr32f* a, const Kvr32f* b, size_t len) {
  const uintptr_t first = reinterpret_cast<uintptr_t>(a), second = reinterpret_cast<uintptr_t>(b);
  const uintptr_t apart = first < second ? second - first : first - second;
  return apart / sizeof *a < len;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsCauchy_32f_I(Kvr32f* srcDst, int len, Kvr32f param) noexcept {
  KVRS_CHECK(pointers(srcDst), length(len, srcDst), positive(param));
  const SquareAbove1 op{1 / param};
  // Three passes, in pieces that stay in the nearest cache.
  constexpr int kPiece = 2048;
  for (int i = 0; i < len;) {
    const int count = len - i < kPiece ? len - i : kPiece;
    mapElements(op, srcDst + i, static_cast<size_t>(count), srcDst + i);
    kvrsLn_32f_I(srcDst + i, count);
    kvrsMulC_32f_I(0.5f, srcDst + i, count);
    i += count;
  }
  return kvrStatusOk;
}
KvrStatus kvrsCauchyD_32f_I(Kvr32f* srcDst, int len, Kvr32f param) noexcept {
  KVRS_CHECK(pointers(srcDst), length(len, srcDst), positive(param));
  return mapElements(Derivative{param * param}, srcDst, static_cast<size_t>(len), srcDst);
}
KvrStatus kvrsCauchyDD2_32f_I(Kvr32f* srcDst, Kvr32f* dst2, int len, Kvr32f param) noexcept {
  KVRS_CHECK(pointers(srcDst, dst2), length(len, srcDst, dst2), positive(param));
  const size_t n = static_cast<size_t>(len);
  const Derivatives op{param * param};
  if (!overlap(srcDst, dst2, n)) return mapElements(op, Planes<Kvr32f>{srcDst, dst2}, n, srcDst);
  for (size_t i = 0; i < n; ++i) {
    const Lanes<float, 1> d;
    const auto both = op(d, hn::Set(d, unaligned::get(srcDst + i)));
    unaligned::put(hn::GetLane(both.im), dst2 + i);
    unaligned::put(hn::GetLane(both.re), srcDst + i);
  }
  return kvrStatusOk;
}
