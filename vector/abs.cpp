// Absolute values.
// SPDX-License-Identifier: MIT
#include <limits>

#include "frame/check.h"
#include "frame/loop.h"
#include "kvrs/unary.h"

namespace kvrs {
namespace {

struct Magnitude {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V v) const {
    using T = hn::TFromD<D>;
    if constexpr (std::numeric_limits<T>::is_integer) {
      // abs leaves the minimum as it is, which is the largest of the unsigned results.
      const hn::RebindToUnsigned<D> du;
      const auto magnitude = hn::BitCast(du, hn::Abs(v));
      return hn::BitCast(d, hn::Sub(magnitude, hn::ShiftRight<sizeof(T) * 8 - 1>(magnitude)));
    } else {
      return hn::Abs(v);
    }
  }
};

template <class T>
KvrStatus magnitudes(const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(Magnitude(), dst, static_cast<size_t>(len), src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsAbs_16s(const Kvr16s* src, Kvr16s* dst, int len) noexcept {
  return magnitudes(src, dst, len);
}
KvrStatus kvrsAbs_32s(const Kvr32s* src, Kvr32s* dst, int len) noexcept {
  return magnitudes(src, dst, len);
}
KvrStatus kvrsAbs_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return magnitudes(src, dst, len);
}
KvrStatus kvrsAbs_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return magnitudes(src, dst, len);
}
KvrStatus kvrsAbs_16s_I(Kvr16s* srcDst, int len) noexcept {
  return magnitudes(srcDst, srcDst, len);
}
KvrStatus kvrsAbs_32s_I(Kvr32s* srcDst, int len) noexcept {
  return magnitudes(srcDst, srcDst, len);
}
KvrStatus kvrsAbs_32f_I(Kvr32f* srcDst, int len) noexcept {
  return magnitudes(srcDst, srcDst, len);
}
KvrStatus kvrsAbs_64f_I(Kvr64f* srcDst, int len) noexcept {
  return magnitudes(srcDst, srcDst, len);
}
