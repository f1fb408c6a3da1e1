// The cosine transforms of 16-bit integers: converted, transformed in single precision and converted back.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "transforms/dct_spec.h"
#include "transforms/integer.h"

namespace kvrs::dct {
namespace {

using Transform = void (*)(const Record<Kvr32f>&, const Kvr32f*, Kvr32f*, Kvr32f*);

// The arguments checked but for the allocation of a work area.
KvrStatus run(Transform transform, const Kvr16s* src, Kvr16s* dst, const IntegerRecord* spec, int scaleFactor,
              Kvr8u* buffer) {
  if (spec->len == 1) {
    integer::onePoint(src, dst, 1, scaleFactor);
    return kvrStatusOk;
  }
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const Record<Kvr32f>& floats = *spec->floats.present();
  const integer::Areas<Kvr32f> areas(work, static_cast<size_t>(spec->len) * sizeof(Kvr32f));
  integer::widen(src, areas.data, spec->len);
  transform(floats, areas.data, areas.data, reinterpret_cast<Kvr32f*>(areas.inner));
  return integer::narrow(areas.data, dst, spec->len, scaleFactor);
}

}  // namespace
}  // namespace kvrs::dct

using kvrs::dct::bufSize;
using kvrs::dct::integerSizesOf;
using kvrs::dct::release;
using kvrs::dct::run;

KvrStatus kvrsDCTFwdGetSize_16s(int len, KvrHintAlgorithm, int* specSize, int* initBufSize,
                                int* workSize) noexcept {
  return kvrs::dct::getSize(integerSizesOf, len, specSize, initBufSize, workSize);
}

KvrStatus kvrsDCTFwdInit_16s(KvrsDCTFwdSpec_16s** spec, int len, KvrHintAlgorithm hint, Kvr8u* specMem,
                             Kvr8u* initBuf) noexcept {
  return kvrs::dct::init<kvrs::dct::IntegerRecord>(kvrs::dct::kWordFwd16s, spec, len, hint, specMem, initBuf);
}

KvrStatus kvrsDCTFwdInitAlloc_16s(KvrsDCTFwdSpec_16s** spec, int len, KvrHintAlgorithm hint) noexcept {
  return kvrs::dct::initAlloc<kvrs::dct::IntegerRecord>(integerSizesOf, kvrs::dct::kWordFwd16s, spec, len,
                                                        hint);
}

KvrStatus kvrsDCTFwdFree_16s(KvrsDCTFwdSpec_16s* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordFwd16s));
  release(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTFwdGetBufSize_16s(const KvrsDCTFwdSpec_16s* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dct::kWordFwd16s));
  *size = bufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTFwd_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDCTFwdSpec_16s* spec, int scaleFactor,
                             Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordFwd16s), pointers(src, dst));
  return run(kvrs::dct::forward<Kvr32f>, src, dst, spec, scaleFactor, buffer);
}

KvrStatus kvrsDCTFwd_16s_ISfs(Kvr16s* srcDst, const KvrsDCTFwdSpec_16s* spec, int scaleFactor,
                              Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordFwd16s), pointers(srcDst));
  return run(kvrs::dct::forward<Kvr32f>, srcDst, srcDst, spec, scaleFactor, buffer);
}

KvrStatus kvrsDCTInvInit_16s(KvrsDCTInvSpec_16s** spec, int len, KvrHintAlgorithm hint, Kvr8u* specMem,
                             Kvr8u* initBuf) noexcept {
  return kvrs::dct::init<kvrs::dct::IntegerRecord>(kvrs::dct::kWordInv16s, spec, len, hint, specMem, initBuf);
}

KvrStatus kvrsDCTInvInitAlloc_16s(KvrsDCTInvSpec_16s** spec, int len, KvrHintAlgorithm hint) noexcept {
  return kvrs::dct::initAlloc<kvrs::dct::IntegerRecord>(integerSizesOf, kvrs::dct::kWordInv16s, spec, len,
                                                        hint);
}

KvrStatus kvrsDCTInvFree_16s(KvrsDCTInvSpec_16s* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordInv16s));
  release(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTInvGetBufSize_16s(const KvrsDCTInvSpec_16s* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dct::kWordInv16s));
  *size = bufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTInv_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDCTInvSpec_16s* spec, int scaleFactor,
                             Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordInv16s), pointers(src, dst));
  return run(kvrs::dct::inverse<Kvr32f>, src, dst, spec, scaleFactor, buffer);
}

KvrStatus kvrsDCTInv_16s_ISfs(Kvr16s* srcDst, const KvrsDCTInvSpec_16s* spec, int scaleFactor,
                              Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordInv16s), pointers(srcDst));
  return run(kvrs::dct::inverse<Kvr32f>, srcDst, srcDst, spec, scaleFactor, buffer);
}
