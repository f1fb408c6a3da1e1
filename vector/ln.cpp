// Natural logarithms of floats.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/logarithm.h"
#include "frame/loop.h"
#include "frame/note.h"
#include "kvrs/logarithm.h"

namespace kvrs {
namespace {

struct Logarithm {
  static constexpr bool kIsHeavy = true;

  template <class D, class V>
  KVRS_INLINE auto isUsual(D d, V x) const {
    if constexpr (sizeof(hn::TFromV<V>) == sizeof(hn::TFromD<D>)) {
      return isPositiveNormal(d, x);
    } else {
      return isPositiveNormal(d, hn::DemoteTo(d, x));  // doubles beyond singles count as unusual
    }
  }
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> quick(D d, V x) const {
    return narrowed(d, logarithmOfNormal(hn::DFromV<V>(), x));
  }
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> any(D d, Notes& notes, V x) const {
    const hn::DFromV<V> dx;
    const V zero = hn::Zero(dx);
    notes.add(dx, kvrStatusLnZeroArg, hn::Eq(x, zero), kvrStatusLnNegArg, hn::Lt(x, zero));
    return narrowed(d, logarithm(dx, x));
  }

 private:
  template <class D, class V>
  static KVRS_INLINE hn::Vec<D> narrowed(D d, V y) {
    if constexpr (sizeof(hn::TFromV<V>) == sizeof(hn::TFromD<D>)) {
      return y;
    } else {
      return hn::DemoteTo(d, y);
    }
  }
};

template <class S, class D>
KvrStatus logarithms(const S* src, D* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapNoting(Logarithm(), dst, static_cast<size_t>(len), src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsLn_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return logarithms(src, dst, len);
}
KvrStatus kvrsLn_32f_I(Kvr32f* srcDst, int len) noexcept {
  return logarithms(srcDst, srcDst, len);
}
KvrStatus kvrsLn_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return logarithms(src, dst, len);
}
KvrStatus kvrsLn_64f_I(Kvr64f* srcDst, int len) noexcept {
  return logarithms(srcDst, srcDst, len);
}
KvrStatus kvrsLn_64f32f(const Kvr64f* src, Kvr32f* dst, int len) noexcept {
  return logarithms(src, dst, len);
}
