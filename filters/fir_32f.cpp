// FIR filters in single precision.
// SPDX-License-Identifier: MIT
#include "filters/fir_engine-inl.h"

namespace kvrs {

template void firKernel<Kvr32f, Kvr32f>(const Kvr32f*, Kvr32f*, size_t, const Kvr32f*, size_t);

}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsFIROne_32f(Kvr32f src, Kvr32f* dst, KvrsFIRState_32f* state) noexcept {
  KVRS_CHECK(pointers(dst, state), context(state, fir::kWord_32f));
  return fir::filterOne(*state, src, dst);
}

KvrStatus kvrsFIR_32f(const Kvr32f* src, Kvr32f* dst, int len, KvrsFIRState_32f* state) noexcept {
  // Filters test the state's word last.
  KVRS_CHECK(pointers(src, dst, state), length(len), context(state, fir::kWord_32f));
  return fir::filter(*state, src, dst, static_cast<size_t>(len));
}

KvrStatus kvrsFIR_32f_I(Kvr32f* srcDst, int len, KvrsFIRState_32f* state) noexcept {
  KVRS_CHECK(pointers(srcDst, state), length(len), context(state, fir::kWord_32f));
  return fir::filterInPlace(*state, srcDst, static_cast<size_t>(len));
}
