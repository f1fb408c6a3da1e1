// Jaehne's signal, a chirp of constant amplitude up to half of the sampling rate.
// SPDX-License-Identifier: MIT
#include <limits>
#include <type_traits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/sincos.h"
#include "frame/to_integer.h"
#include "kvrs/test_vectors.h"
#include "synth/sample_formats.h"

namespace kvrs {
namespace {

template <class T>
struct Jaehne {
  static constexpr bool kIsHeavy = true;

  T magn;
  double c;

  // n are doubles.
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V n) const {
    const hn::DFromV<V> dd;
    const V wave = sinCos<SinCosFor::doubles>(dd, hn::Mul(hn::Mul(hn::Set(dd, c), n), n)).sin;
    const double wide = static_cast<double>(magn);
    if constexpr (std::is_floating_point_v<T>) {
      return FromDouble<Integer::roundedAway>()(d, hn::Mul(hn::Set(dd, wide), wave));
    } else {
      const hn::Rebind<int32_t, D> di;
      const V v = hn::Mul(hn::Set(dd, std::is_signed_v<T> ? wide : wide * 0.5), wave);
      auto integer = truncateInt32(di, hn::Min(awayByHalf(dd, v), hn::Set(dd, 2147483647.0)));
      if constexpr (std::is_unsigned_v<T>) {
        const auto middle = hn::Set(di, static_cast<int32_t>(magn / 2));
        integer = hn::Add(hn::Max(integer, hn::Neg(middle)), middle);
      }
      if constexpr (sizeof(T) == 4) {
        return hn::BitCast(d, integer);
      } else {
        return hn::DemoteTo(d, integer);
      }
    }
  }
};

template <class T>
KvrStatus jaehne(T* dst, int len, T magn) {
  KVRS_CHECK(pointers(dst), length(len), require(!(magn < 0), kvrStatusBadJaehneMagnitude));
  // One sample is 0, in unsigned types too.
  if (len == 1) magn = 0;
  const Jaehne<T> op{magn, 1.5707963267948966 / static_cast<double>(len)};
  return mapElements(op, dst, static_cast<size_t>(len), Counter<double>{0});
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsVectorJaehne_8u(Kvr8u* dst, int len, Kvr8u magn) noexcept {
  return jaehne(dst, len, magn);
}
KvrStatus kvrsVectorJaehne_8s(Kvr8s* dst, int len, Kvr8s magn) noexcept {
  return jaehne(dst, len, magn);
}
KvrStatus kvrsVectorJaehne_16u(Kvr16u* dst, int len, Kvr16u magn) noexcept {
  return jaehne(dst, len, magn);
}
KvrStatus kvrsVectorJaehne_16s(Kvr16s* dst, int len, Kvr16s magn) noexcept {
  return jaehne(dst, len, magn);
}
KvrStatus kvrsVectorJaehne_32u(Kvr32u* dst, int len, Kvr32u magn) noexcept {
  return jaehne(dst, len, magn);
}
KvrStatus kvrsVectorJaehne_32s(Kvr32s* dst, int len, Kvr32s magn) noexcept {
  return jaehne(dst, len, magn);
}
KvrStatus kvrsVectorJaehne_32f(Kvr32f* dst, int len, Kvr32f magn) noexcept {
  return jaehne(dst, len, magn);
}
KvrStatus kvrsVectorJaehne_64f(Kvr64f* dst, int len, Kvr64f magn) noexcept {
  return jaehne(dst, len, magn);
}
