// Products with complex vectors and arithmetic with complex scalars.
// SPDX-License-Identifier: MIT
#include "kvrs/arith_float.h"

#include "frame/check.h"
#include "frame/complex.h"
#include "frame/loop.h"

namespace kvrs {
namespace {

struct Mul {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    return mulPairs(d, a, b);
  }
};

template <class Part>
struct AddC {
  Pair<Part> val;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    return hn::Add(a, setPairs(d, val.re, val.im));
  }
};

template <class Part>
struct SubC {
  Pair<Part> val;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    return hn::Sub(a, setPairs(d, val.re, val.im));
  }
};

template <class Part>
struct SubCRev {
  Pair<Part> val;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    return hn::Sub(setPairs(d, val.re, val.im), a);
  }
};

template <class Part>
struct MulC {
  Pair<Part> val;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    return subAdd(d, hn::Mul(a, hn::Set(d, val.re)), hn::Mul(swapParts(d, a), hn::Set(d, val.im)));
  }
};

template <class T>
KvrStatus multiply(const T* src1, const T* src2, T* dst, int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  using Part = LaneOf<T>;
  return mapElements(Mul(), asPairs<Part>(dst), static_cast<size_t>(len), asPairs<Part>(src1),
                     asPairs<Part>(src2));
}

template <template <class> class Op, class T>
KvrStatus vectorScalar(const T* src, T val, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  using Part = LaneOf<T>;
  return mapElements(Op<Part>{{val.re, val.im}}, asPairs<Part>(dst), static_cast<size_t>(len),
                     asPairs<Part>(src));
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMul_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst, int len) noexcept {
  return multiply(src1, src2, dst, len);
}
KvrStatus kvrsMul_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst, int len) noexcept {
  return multiply(src1, src2, dst, len);
}
KvrStatus kvrsMul_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) noexcept {
  return multiply(src, srcDst, srcDst, len);
}
KvrStatus kvrsMul_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) noexcept {
  return multiply(src, srcDst, srcDst, len);
}
KvrStatus kvrsAddC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) noexcept {
  return vectorScalar<AddC>(src, val, dst, len);
}
KvrStatus kvrsAddC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) noexcept {
  return vectorScalar<AddC>(src, val, dst, len);
}
KvrStatus kvrsAddC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) noexcept {
  return vectorScalar<AddC>(srcDst, val, srcDst, len);
}
KvrStatus kvrsAddC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) noexcept {
  return vectorScalar<AddC>(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) noexcept {
  return vectorScalar<SubC>(src, val, dst, len);
}
KvrStatus kvrsSubC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) noexcept {
  return vectorScalar<SubC>(src, val, dst, len);
}
KvrStatus kvrsSubC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) noexcept {
  return vectorScalar<SubC>(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) noexcept {
  return vectorScalar<SubC>(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubCRev_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) noexcept {
  return vectorScalar<SubCRev>(src, val, dst, len);
}
KvrStatus kvrsSubCRev_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) noexcept {
  return vectorScalar<SubCRev>(src, val, dst, len);
}
KvrStatus kvrsSubCRev_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) noexcept {
  return vectorScalar<SubCRev>(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubCRev_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) noexcept {
  return vectorScalar<SubCRev>(srcDst, val, srcDst, len);
}
KvrStatus kvrsMulC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) noexcept {
  return vectorScalar<MulC>(src, val, dst, len);
}
KvrStatus kvrsMulC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) noexcept {
  return vectorScalar<MulC>(src, val, dst, len);
}
KvrStatus kvrsMulC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) noexcept {
  return vectorScalar<MulC>(srcDst, val, srcDst, len);
}
KvrStatus kvrsMulC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) noexcept {
  return vectorScalar<MulC>(srcDst, val, srcDst, len);
}
