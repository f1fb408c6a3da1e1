// Transforms of 16-bit integers of any length, in floating point.
// SPDX-License-Identifier: MIT
#include "kvrs/dft_integer.h"

#include "frame/check.h"
#include "kvrs/dft.h"
#include "transforms/integer.h"
#include "transforms/packing.h"

namespace kvrs::dft {

template <class Inner>
struct IntegerRecord {
  using Spec = Inner;

  uint32_t idWord;
  int32_t len;
  int32_t hint;
  int32_t workSize;
  Inner* floatSpec;  // null of one point
};

namespace {

using integer::Areas;
using integer::narrow;
using integer::widen;

enum IntegerWord : uint32_t { kWordC16sc = 10, kWordC16s, kWordR16s };

KvrStatus initInner(KvrsDFTSpec_C_32fc** spec, int len, int flag) {
  return kvrsDFTInitAlloc_C_32fc(spec, len, flag, kvrHintFast);
}
KvrStatus initInner(KvrsDFTSpec_C_32f** spec, int len, int flag) {
  return kvrsDFTInitAlloc_C_32f(spec, len, flag, kvrHintFast);
}
KvrStatus initInner(KvrsDFTSpec_R_32f** spec, int len, int flag) {
  return kvrsDFTInitAlloc_R_32f(spec, len, flag, kvrHintFast);
}
KvrStatus freeInner(KvrsDFTSpec_C_32fc* spec) {
  return kvrsDFTFree_C_32fc(spec);
}
KvrStatus freeInner(KvrsDFTSpec_C_32f* spec) {
  return kvrsDFTFree_C_32f(spec);
}
KvrStatus freeInner(KvrsDFTSpec_R_32f* spec) {
  return kvrsDFTFree_R_32f(spec);
}
KvrStatus innerBufSize(const KvrsDFTSpec_C_32fc* spec, int* size) {
  return kvrsDFTGetBufSize_C_32fc(spec, size);
}
KvrStatus innerBufSize(const KvrsDFTSpec_C_32f* spec, int* size) {
  return kvrsDFTGetBufSize_C_32f(spec, size);
}
KvrStatus innerBufSize(const KvrsDFTSpec_R_32f* spec, int* size) {
  return kvrsDFTGetBufSize_R_32f(spec, size);
}

constexpr bool knownFlag(int flag) {
  return flag == kvrFftDivFwdByN || flag == kvrFftDivInvByN || flag == kvrFftDivBySqrtN ||
         flag == kvrFftNoDivByAny;
}

// `numbers` of data for each point, and `more`.
template <class Spec>
KvrStatus initAlloc(uint32_t word, Spec** spec, int len, int flag, KvrHintAlgorithm hint, int numbers,
                    int more) {
  if (spec == nullptr) return kvrStatusNullPointer;
  if (len < 1) return kvrStatusBadLength;
  Spec* const r = static_cast<Spec*>(kvrMalloc(sizeof(Spec)));
  if (r == nullptr) return kvrStatusOutOfMemory;
  r->len = len;
  r->hint = hint;
  r->workSize = 0;
  r->floatSpec = nullptr;
  KvrStatus status = kvrStatusOk;
  if (!knownFlag(flag)) {
    status = kvrStatusBadFftFlag;
  } else if (len > 1) {
    status = initInner(&r->floatSpec, len, flag);
  }
  if (status != kvrStatusOk) {
    kvrFree(r);
    return status;
  }
  if (len > 1) {
    int inner;
    innerBufSize(r->floatSpec, &inner);
    r->workSize = numbers * static_cast<int>(sizeof(Kvr32f)) * len + inner + more;
  }
  r->idWord = word;
  *spec = r;
  return kvrStatusOk;
}

template <class Spec>
void release(Spec* spec) {
  if (spec->floatSpec != nullptr) freeInner(spec->floatSpec);
  spec->idWord = 0;
  kvrFree(spec);
}

KvrStatus pairsTransform(const IntegerRecord<KvrsDFTSpec_C_32fc>* spec, bool inverse, const Kvr16sc* src,
                         Kvr16sc* dst, int scaleFactor, Kvr8u* buffer) {
  if (spec->len == 1) return integer::onePoint(&src->re, &dst->re, 2, scaleFactor), kvrStatusOk;
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const int numbers = 2 * spec->len;
  const Areas<Kvr32f> areas(work, static_cast<size_t>(numbers) * sizeof(Kvr32f));
  auto* const x = reinterpret_cast<Kvr32fc*>(areas.data);
  widen(&src->re, areas.data, numbers);
  const KvrStatus status = inverse ? kvrsDFTInv_CToC_32fc(x, x, spec->floatSpec, areas.inner)
                                   : kvrsDFTFwd_CToC_32fc(x, x, spec->floatSpec, areas.inner);
  if (status != kvrStatusOk) return status;
  return narrow(areas.data, &dst->re, numbers, scaleFactor);
}

KvrStatus planesTransform(const IntegerRecord<KvrsDFTSpec_C_32f>* spec, bool inverse, const Kvr16s* srcRe,
                          const Kvr16s* srcIm, Kvr16s* dstRe, Kvr16s* dstIm, int scaleFactor, Kvr8u* buffer) {
  const int n = spec->len;
  if (n == 1) {
    integer::onePoint(srcRe, dstRe, 1, scaleFactor);
    integer::onePoint(srcIm, dstIm, 1, scaleFactor);
    return kvrStatusOk;
  }
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const Areas<Kvr32f> areas(work, 2 * static_cast<size_t>(n) * sizeof(Kvr32f));
  Kvr32f* const re = areas.data;
  Kvr32f* const im = re + n;
  widen(srcRe, re, n);
  widen(srcIm, im, n);
  const KvrStatus status = inverse ? kvrsDFTInv_CToC_32f(re, im, re, im, spec->floatSpec, areas.inner)
                                   : kvrsDFTFwd_CToC_32f(re, im, re, im, spec->floatSpec, areas.inner);
  if (status != kvrStatusOk) return status;
  narrow(re, dstRe, n, scaleFactor);
  return narrow(im, dstIm, n, scaleFactor);
}

template <Packing kPacking>
constexpr int packedCount(int n) {
  return kPacking == Packing::kCcs ? n + 2 - n % 2 : n;
}

template <Packing kPacking>
KvrStatus floatForward(Kvr32f* x, const KvrsDFTSpec_R_32f* spec, Kvr8u* work) {
  if constexpr (kPacking == Packing::kPerm) return kvrsDFTFwd_RToPerm_32f(x, x, spec, work);
  if constexpr (kPacking == Packing::kPack) return kvrsDFTFwd_RToPack_32f(x, x, spec, work);
  return kvrsDFTFwd_RToCCS_32f(x, x, spec, work);
}
template <Packing kPacking>
KvrStatus floatInverse(Kvr32f* x, const KvrsDFTSpec_R_32f* spec, Kvr8u* work) {
  if constexpr (kPacking == Packing::kPerm) return kvrsDFTInv_PermToR_32f(x, x, spec, work);
  if constexpr (kPacking == Packing::kPack) return kvrsDFTInv_PackToR_32f(x, x, spec, work);
  return kvrsDFTInv_CCSToR_32f(x, x, spec, work);
}

template <Packing kPacking>
KvrStatus realForward(const IntegerRecord<KvrsDFTSpec_R_32f>* spec, const Kvr16s* src, Kvr16s* dst,
                      int scaleFactor, Kvr8u* buffer) {
  const int n = spec->len;
  if (n == 1) {
    integer::onePoint(src, dst, 1, scaleFactor);
    if (kPacking == Packing::kCcs) unaligned::put(Kvr16s(0), dst + 1);
    return kvrStatusOk;
  }
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const Areas<Kvr32f> areas(work, static_cast<size_t>(n + 2) * sizeof(Kvr32f));
  widen(src, areas.data, n);
  const KvrStatus status = floatForward<kPacking>(areas.data, spec->floatSpec, areas.inner);
  if (status != kvrStatusOk) return status;
  return narrow(areas.data, dst, packedCount<kPacking>(n), scaleFactor);
}

template <Packing kPacking>
KvrStatus realInverse(const IntegerRecord<KvrsDFTSpec_R_32f>* spec, const Kvr16s* src, Kvr16s* dst,
                      int scaleFactor, Kvr8u* buffer) {
  const int n = spec->len;
  if (n == 1) return integer::onePoint(src, dst, 1, scaleFactor), kvrStatusOk;
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const Areas<Kvr32f> areas(work, static_cast<size_t>(n + 2) * sizeof(Kvr32f));
  widen(src, areas.data, kPacking == Packing::kCcs ? n + 1 : n);
  const KvrStatus status = floatInverse<kPacking>(areas.data, spec->floatSpec, areas.inner);
  if (status != kvrStatusOk) return status;
  return narrow(areas.data, dst, n, scaleFactor);
}

}  // namespace
}  // namespace kvrs::dft

struct KvrsDFTSpec_C_16sc : kvrs::dft::IntegerRecord<KvrsDFTSpec_C_32fc> {};
struct KvrsDFTSpec_C_16s : kvrs::dft::IntegerRecord<KvrsDFTSpec_C_32f> {};
struct KvrsDFTSpec_R_16s : kvrs::dft::IntegerRecord<KvrsDFTSpec_R_32f> {};

using kvrs::Packing;
using namespace kvrs::dft;

KvrStatus kvrsDFTInitAlloc_C_16sc(KvrsDFTSpec_C_16sc** spec, int len, int flag,
                                  KvrHintAlgorithm hint) noexcept {
  return initAlloc(kWordC16sc, spec, len, flag, hint, 2, 32);
}

KvrStatus kvrsDFTFree_C_16sc(KvrsDFTSpec_C_16sc* spec) noexcept {
  KVRS_CHECK(context(spec, kWordC16sc));
  release(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTGetBufSize_C_16sc(const KvrsDFTSpec_C_16sc* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kWordC16sc));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTFwd_CToC_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, const KvrsDFTSpec_C_16sc* spec,
                                   int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16sc), pointers(src, dst));
  return pairsTransform(spec, false, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsDFTInv_CToC_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, const KvrsDFTSpec_C_16sc* spec,
                                   int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16sc), pointers(src, dst));
  return pairsTransform(spec, true, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsDFTInitAlloc_C_16s(KvrsDFTSpec_C_16s** spec, int len, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return initAlloc(kWordC16s, spec, len, flag, hint, 2, 32);
}

KvrStatus kvrsDFTFree_C_16s(KvrsDFTSpec_C_16s* spec) noexcept {
  KVRS_CHECK(context(spec, kWordC16s));
  release(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTGetBufSize_C_16s(const KvrsDFTSpec_C_16s* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kWordC16s));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTFwd_CToC_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dstRe, Kvr16s* dstIm,
                                  const KvrsDFTSpec_C_16s* spec, int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16s), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform(spec, false, srcRe, srcIm, dstRe, dstIm, scaleFactor, buffer);
}

KvrStatus kvrsDFTInv_CToC_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dstRe, Kvr16s* dstIm,
                                  const KvrsDFTSpec_C_16s* spec, int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16s), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform(spec, true, srcRe, srcIm, dstRe, dstIm, scaleFactor, buffer);
}

KvrStatus kvrsDFTInitAlloc_R_16s(KvrsDFTSpec_R_16s** spec, int len, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return initAlloc(kWordR16s, spec, len, flag, hint, 1, 40);
}

KvrStatus kvrsDFTFree_R_16s(KvrsDFTSpec_R_16s* spec) noexcept {
  KVRS_CHECK(context(spec, kWordR16s));
  release(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTGetBufSize_R_16s(const KvrsDFTSpec_R_16s* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kWordR16s));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTFwd_RToPerm_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realForward<Packing::kPerm>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsDFTFwd_RToPack_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realForward<Packing::kPack>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsDFTFwd_RToCCS_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                    int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realForward<Packing::kCcs>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsDFTInv_PermToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realInverse<Packing::kPerm>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsDFTInv_PackToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realInverse<Packing::kPack>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsDFTInv_CCSToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsDFTSpec_R_16s* spec,
                                    int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realInverse<Packing::kCcs>(spec, src, dst, scaleFactor, buffer);
}
