// Arctangent.
// SPDX-License-Identifier: MIT
#include "kvrs/arctan.h"

#include "frame/arctangent.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/rounding.h"

namespace kvrs {
namespace {

struct Arctangent {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    return arctangent(d, x);
  }
};

template <class T>
KvrStatus map(const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return underRounding(Rounding::nearest,
                       [=] { return mapElements(Arctangent(), dst, static_cast<size_t>(len), src); });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsArctan_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return map(src, dst, len);
}
KvrStatus kvrsArctan_32f_I(Kvr32f* srcDst, int len) noexcept {
  return map(srcDst, srcDst, len);
}
KvrStatus kvrsArctan_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return map(src, dst, len);
}
KvrStatus kvrsArctan_64f_I(Kvr64f* srcDst, int len) noexcept {
  return map(srcDst, srcDst, len);
}
