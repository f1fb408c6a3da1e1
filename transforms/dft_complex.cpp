// The complex transforms of any length.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "transforms/dft_spec.h"
#include "transforms/fft_engine.h"

namespace kvrs::dft {
namespace {

using fft::Direction;

template <class T>
const fft::Record<T>& fftOf(const Record<T>* spec) {
  return *static_cast<const fft::Record<T>*>(spec->fftSpec);
}

template <class T>
T scaleOf(bool scales, T scale) {
  return scales ? scale : T(1);
}

template <class T>
void run(const Record<T>* spec, Direction direction, const Points<const T>& src, const Points<T>& dst,
         T* work) {
  if (direction == Direction::kForward) {
    runCore(spec->core, src, dst, work, scaleOf(spec->scaleFwd, spec->scale));
  } else {
    runCore(spec->core, src.exchanged(), dst.exchanged(), work, scaleOf(spec->scaleInv, spec->scale));
  }
}

// The arguments checked but for the allocation of a work area.
template <class T, class Pair>
KvrStatus pairsTransform(const Record<T>* spec, Direction direction, const Pair* src, Pair* dst,
                         Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  if (spec->fftSpec == nullptr) {
    run(spec, direction, Points<const T>::ofPairs(&src->re), Points<T>::ofPairs(&dst->re), work.as<T>());
  } else {
    const fft::Record<T>& r = fftOf(spec);
    const bool scales = direction == Direction::kForward ? r.scaleFwd : r.scaleInv;
    fft::transform(r, r.order, direction, &src->re, &dst->re, work.as<T>(), scaleOf(scales, r.scale));
  }
  return kvrStatusOk;
}

template <class T>
KvrStatus planesTransform(const Record<T>* spec, Direction direction, const T* srcRe, const T* srcIm,
                          T* dstRe, T* dstIm, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  if (spec->fftSpec == nullptr) {
    run(spec, direction, Points<const T>::ofPlanes(srcRe, srcIm), Points<T>::ofPlanes(dstRe, dstIm),
        work.as<T>());
  } else {
    const fft::Record<T>& r = fftOf(spec);
    if (direction == Direction::kForward) {
      fft::transformPlanes(r, r.order, srcRe, srcIm, dstRe, dstIm, work.as<T>(),
                           scaleOf(r.scaleFwd, r.scale));
    } else {
      fft::transformPlanes(r, r.order, srcIm, srcRe, dstIm, dstRe, work.as<T>(),
                           scaleOf(r.scaleInv, r.scale));
    }
  }
  return kvrStatusOk;
}

template <class T, class Pair>
KvrStatus outOfOrderTransform(const Record<T>* spec, Direction direction, const Pair* src, Pair* dst,
                              Kvr8u* buffer) {
  if (!spec->leavesOrder) return pairsTransform<T>(spec, direction, src, dst, buffer);
  // The work area that callers reserve is not needed, but what its lack is stated to be stays an error.
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const auto from = Points<const T>::ofPairs(&src->re);
  const auto to = Points<T>::ofPairs(&dst->re);
  if (direction == Direction::kForward) {
    runOutOfOrder(spec->outOfOrder, from, to, scaleOf(spec->scaleFwd, spec->scale));
  } else {
    runOutOfOrderInverse(spec->outOfOrder, from.exchanged(), to.exchanged(),
                         scaleOf(spec->scaleInv, spec->scale));
  }
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::dft

using kvrs::dft::Kind;
using kvrs::dft::outOfOrderTransform;
using kvrs::dft::pairsTransform;
using kvrs::dft::planesTransform;
using kvrs::dft::release;
using kvrs::fft::Direction;

KvrStatus kvrsDFTInitAlloc_C_32fc(KvrsDFTSpec_C_32fc** spec, int len, int flag,
                                  KvrHintAlgorithm hint) noexcept {
  return kvrs::dft::initAlloc(Kind::kPairs, kvrs::dft::kWordC32fc, spec, len, flag, hint);
}

KvrStatus kvrsDFTFree_C_32fc(KvrsDFTSpec_C_32fc* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC32fc));
  release<Kvr32f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTGetBufSize_C_32fc(const KvrsDFTSpec_C_32fc* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dft::kWordC32fc));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTFwd_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsDFTSpec_C_32fc* spec,
                               Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC32fc), pointers(src, dst));
  return pairsTransform<Kvr32f>(spec, Direction::kForward, src, dst, buffer);
}

KvrStatus kvrsDFTInv_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsDFTSpec_C_32fc* spec,
                               Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC32fc), pointers(src, dst));
  return pairsTransform<Kvr32f>(spec, Direction::kInverse, src, dst, buffer);
}

KvrStatus kvrsDFTInitAlloc_C_32f(KvrsDFTSpec_C_32f** spec, int len, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return kvrs::dft::initAlloc(Kind::kPlanes, kvrs::dft::kWordC32f, spec, len, flag, hint);
}

KvrStatus kvrsDFTFree_C_32f(KvrsDFTSpec_C_32f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC32f));
  release<Kvr32f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTGetBufSize_C_32f(const KvrsDFTSpec_C_32f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dft::kWordC32f));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTFwd_CToC_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dstRe, Kvr32f* dstIm,
                              const KvrsDFTSpec_C_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC32f), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr32f>(spec, Direction::kForward, srcRe, srcIm, dstRe, dstIm, buffer);
}

KvrStatus kvrsDFTInv_CToC_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dstRe, Kvr32f* dstIm,
                              const KvrsDFTSpec_C_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC32f), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr32f>(spec, Direction::kInverse, srcRe, srcIm, dstRe, dstIm, buffer);
}

KvrStatus kvrsDFTInitAlloc_C_64fc(KvrsDFTSpec_C_64fc** spec, int len, int flag,
                                  KvrHintAlgorithm hint) noexcept {
  return kvrs::dft::initAlloc(Kind::kPairs, kvrs::dft::kWordC64fc, spec, len, flag, hint);
}

KvrStatus kvrsDFTFree_C_64fc(KvrsDFTSpec_C_64fc* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC64fc));
  release<Kvr64f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTGetBufSize_C_64fc(const KvrsDFTSpec_C_64fc* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dft::kWordC64fc));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTFwd_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst, const KvrsDFTSpec_C_64fc* spec,
                               Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC64fc), pointers(src, dst));
  return pairsTransform<Kvr64f>(spec, Direction::kForward, src, dst, buffer);
}

KvrStatus kvrsDFTInv_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst, const KvrsDFTSpec_C_64fc* spec,
                               Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC64fc), pointers(src, dst));
  return pairsTransform<Kvr64f>(spec, Direction::kInverse, src, dst, buffer);
}

KvrStatus kvrsDFTInitAlloc_C_64f(KvrsDFTSpec_C_64f** spec, int len, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return kvrs::dft::initAlloc(Kind::kPlanes, kvrs::dft::kWordC64f, spec, len, flag, hint);
}

KvrStatus kvrsDFTFree_C_64f(KvrsDFTSpec_C_64f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC64f));
  release<Kvr64f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTGetBufSize_C_64f(const KvrsDFTSpec_C_64f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dft::kWordC64f));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTFwd_CToC_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dstRe, Kvr64f* dstIm,
                              const KvrsDFTSpec_C_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC64f), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr64f>(spec, Direction::kForward, srcRe, srcIm, dstRe, dstIm, buffer);
}

KvrStatus kvrsDFTInv_CToC_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dstRe, Kvr64f* dstIm,
                              const KvrsDFTSpec_C_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordC64f), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr64f>(spec, Direction::kInverse, srcRe, srcIm, dstRe, dstIm, buffer);
}

KvrStatus kvrsDFTOutOrdInitAlloc_C_32fc(KvrsDFTOutOrdSpec_C_32fc** spec, int len, int flag,
                                        KvrHintAlgorithm hint) noexcept {
  return kvrs::dft::initAlloc(Kind::kOutOfOrder, kvrs::dft::kWordOutOfOrder32fc, spec, len, flag, hint);
}

KvrStatus kvrsDFTOutOrdFree_C_32fc(KvrsDFTOutOrdSpec_C_32fc* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordOutOfOrder32fc));
  release<Kvr32f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTOutOrdGetBufSize_C_32fc(const KvrsDFTOutOrdSpec_C_32fc* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dft::kWordOutOfOrder32fc));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTOutOrdFwd_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsDFTOutOrdSpec_C_32fc* spec,
                                     Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordOutOfOrder32fc), pointers(src, dst));
  return outOfOrderTransform<Kvr32f>(spec, Direction::kForward, src, dst, buffer);
}

KvrStatus kvrsDFTOutOrdInv_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsDFTOutOrdSpec_C_32fc* spec,
                                     Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordOutOfOrder32fc), pointers(src, dst));
  return outOfOrderTransform<Kvr32f>(spec, Direction::kInverse, src, dst, buffer);
}

KvrStatus kvrsDFTOutOrdInitAlloc_C_64fc(KvrsDFTOutOrdSpec_C_64fc** spec, int len, int flag,
                                        KvrHintAlgorithm hint) noexcept {
  return kvrs::dft::initAlloc(Kind::kOutOfOrder, kvrs::dft::kWordOutOfOrder64fc, spec, len, flag, hint);
}

KvrStatus kvrsDFTOutOrdFree_C_64fc(KvrsDFTOutOrdSpec_C_64fc* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordOutOfOrder64fc));
  release<Kvr64f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTOutOrdGetBufSize_C_64fc(const KvrsDFTOutOrdSpec_C_64fc* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dft::kWordOutOfOrder64fc));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTOutOrdFwd_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst, const KvrsDFTOutOrdSpec_C_64fc* spec,
                                     Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordOutOfOrder64fc), pointers(src, dst));
  return outOfOrderTransform<Kvr64f>(spec, Direction::kForward, src, dst, buffer);
}

KvrStatus kvrsDFTOutOrdInv_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst, const KvrsDFTOutOrdSpec_C_64fc* spec,
                                     Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordOutOfOrder64fc), pointers(src, dst));
  return outOfOrderTransform<Kvr64f>(spec, Direction::kInverse, src, dst, buffer);
}
