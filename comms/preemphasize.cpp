// Pre-emphasis, from the last sample to the first, so that each is there for the one behind it.
// SPDX-License-Identifier: MIT
#include "kvrs/preemphasize.h"

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/to_integer.h"
#include "frame/unroll.h"

namespace kvrs {
namespace {

struct Singles {
  float val;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x, V before) const {
    return hn::Sub(x, hn::Mul(hn::Set(d, val), before));
  }
};

struct Integers {
  float val;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x, V before) const {
    const hn::Rebind<float, D> df;
    const hn::Rebind<int32_t, D> di;
    const auto widened = [=](V v) KVRS_UNROLLED { return hn::ConvertTo(df, hn::PromoteTo(di, v)); };
    const auto y = Singles{val}(df, widened(x), widened(before));
    return toInteger<false>(d, y, Kvr16s{-32768}, Kvr16s{32767});
  }
};

template <class Op, class T>
KvrStatus preemphasize(T* srcDst, int len, float val) {
  if (len == 1) return kvrStatusOk;
  T* const end = srcDst + len;
  return mapInLanesOf<float>(Op{val}, Downward<T>{end}, static_cast<size_t>(len) - 1, Downward<const T>{end},
                             Downward<const T>{end - 1});
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsPreemphasize_32f(Kvr32f* srcDst, int len, Kvr32f val) noexcept {
  KVRS_CHECK(pointers(srcDst), lengthOf<Kvr32f>(len));
  return preemphasize<Singles>(srcDst, len, val);
}
KvrStatus kvrsPreemphasize_16s(Kvr16s* srcDst, int len, Kvr32f val) noexcept {
  KVRS_CHECK(pointers(srcDst), length(len));
  return underRounding(Rounding::nearest, [=] { return preemphasize<Integers>(srcDst, len, val); });
}
