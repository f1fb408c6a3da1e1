// The complex FFTs.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "transforms/fft_engine.h"

namespace kvrs::fft {
namespace {

// The arguments checked but for the allocation of a work area.
template <class T, class Pair>
KvrStatus pairsTransform(const Record<T>* spec, Direction direction, const Pair* src, Pair* dst,
                         Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const bool scales = direction == Direction::kForward ? spec->scaleFwd : spec->scaleInv;
  transform(*spec, spec->order, direction, &src->re, &dst->re, work.as<T>(), scales ? spec->scale : T(1));
  return kvrStatusOk;
}

// The inverse has the parts exchanged.
template <class T>
KvrStatus planesTransform(const Record<T>* spec, bool scales, const T* srcRe, const T* srcIm, T* dstRe,
                          T* dstIm, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  transformPlanes(*spec, spec->order, srcRe, srcIm, dstRe, dstIm, work.as<T>(), scales ? spec->scale : T(1));
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::fft

using kvrs::fft::bufSize;
using kvrs::fft::Direction;
using kvrs::fft::Kind;
using kvrs::fft::pairsTransform;
using kvrs::fft::planesTransform;
using kvrs::fft::release;

KvrStatus kvrsFFTGetSize_C_32fc(int order, int flag, KvrHintAlgorithm, int* specSize, int* initBufSize,
                                int* workSize) noexcept {
  return kvrs::fft::getSize<Kvr32f>(Kind::kComplex, order, flag, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_C_32fc(KvrsFFTSpec_C_32fc** spec, int order, int flag, KvrHintAlgorithm hint,
                             Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return kvrs::fft::init(Kind::kComplex, kvrs::fft::kWordC32fc, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_C_32fc(KvrsFFTSpec_C_32fc** spec, int order, int flag,
                                  KvrHintAlgorithm hint) noexcept {
  return kvrs::fft::initAlloc(Kind::kComplex, kvrs::fft::kWordC32fc, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_C_32fc(KvrsFFTSpec_C_32fc* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32fc));
  release<Kvr32f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_C_32fc(const KvrsFFTSpec_C_32fc* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::fft::kWordC32fc));
  *size = bufSize<Kvr32f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsFFTSpec_C_32fc* spec,
                               Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32fc), pointers(src, dst));
  return pairsTransform<Kvr32f>(spec, Direction::kForward, src, dst, buffer);
}

KvrStatus kvrsFFTInv_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsFFTSpec_C_32fc* spec,
                               Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32fc), pointers(src, dst));
  return pairsTransform<Kvr32f>(spec, Direction::kInverse, src, dst, buffer);
}

KvrStatus kvrsFFTFwd_CToC_32fc_I(Kvr32fc* srcDst, const KvrsFFTSpec_C_32fc* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32fc), pointers(srcDst));
  return pairsTransform<Kvr32f>(spec, Direction::kForward, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTInv_CToC_32fc_I(Kvr32fc* srcDst, const KvrsFFTSpec_C_32fc* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32fc), pointers(srcDst));
  return pairsTransform<Kvr32f>(spec, Direction::kInverse, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTGetSize_C_32f(int order, int flag, KvrHintAlgorithm, int* specSize, int* initBufSize,
                               int* workSize) noexcept {
  return kvrs::fft::getSize<Kvr32f>(Kind::kPlanes, order, flag, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_C_32f(KvrsFFTSpec_C_32f** spec, int order, int flag, KvrHintAlgorithm hint,
                            Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return kvrs::fft::init(Kind::kPlanes, kvrs::fft::kWordC32f, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_C_32f(KvrsFFTSpec_C_32f** spec, int order, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return kvrs::fft::initAlloc(Kind::kPlanes, kvrs::fft::kWordC32f, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_C_32f(KvrsFFTSpec_C_32f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32f));
  release<Kvr32f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_C_32f(const KvrsFFTSpec_C_32f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::fft::kWordC32f));
  *size = bufSize<Kvr32f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_CToC_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dstRe, Kvr32f* dstIm,
                              const KvrsFFTSpec_C_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32f), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr32f>(spec, spec->scaleFwd, srcRe, srcIm, dstRe, dstIm, buffer);
}

KvrStatus kvrsFFTInv_CToC_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dstRe, Kvr32f* dstIm,
                              const KvrsFFTSpec_C_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32f), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr32f>(spec, spec->scaleInv, srcIm, srcRe, dstIm, dstRe, buffer);
}

KvrStatus kvrsFFTFwd_CToC_32f_I(Kvr32f* srcDstRe, Kvr32f* srcDstIm, const KvrsFFTSpec_C_32f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32f), pointers(srcDstRe, srcDstIm));
  return planesTransform<Kvr32f>(spec, spec->scaleFwd, srcDstRe, srcDstIm, srcDstRe, srcDstIm, buffer);
}

KvrStatus kvrsFFTInv_CToC_32f_I(Kvr32f* srcDstRe, Kvr32f* srcDstIm, const KvrsFFTSpec_C_32f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32f), pointers(srcDstRe, srcDstIm));
  return planesTransform<Kvr32f>(spec, spec->scaleInv, srcDstIm, srcDstRe, srcDstIm, srcDstRe, buffer);
}

KvrStatus kvrsFFTGetSize_C_64fc(int order, int flag, KvrHintAlgorithm, int* specSize, int* initBufSize,
                                int* workSize) noexcept {
  return kvrs::fft::getSize<Kvr64f>(Kind::kComplex, order, flag, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_C_64fc(KvrsFFTSpec_C_64fc** spec, int order, int flag, KvrHintAlgorithm hint,
                             Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return kvrs::fft::init(Kind::kComplex, kvrs::fft::kWordC64fc, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_C_64fc(KvrsFFTSpec_C_64fc** spec, int order, int flag,
                                  KvrHintAlgorithm hint) noexcept {
  return kvrs::fft::initAlloc(Kind::kComplex, kvrs::fft::kWordC64fc, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_C_64fc(KvrsFFTSpec_C_64fc* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC64fc));
  release<Kvr64f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_C_64fc(const KvrsFFTSpec_C_64fc* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::fft::kWordC64fc));
  *size = bufSize<Kvr64f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst, const KvrsFFTSpec_C_64fc* spec,
                               Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC64fc), pointers(src, dst));
  return pairsTransform<Kvr64f>(spec, Direction::kForward, src, dst, buffer);
}

KvrStatus kvrsFFTInv_CToC_64fc(const Kvr64fc* src, Kvr64fc* dst, const KvrsFFTSpec_C_64fc* spec,
                               Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC64fc), pointers(src, dst));
  return pairsTransform<Kvr64f>(spec, Direction::kInverse, src, dst, buffer);
}

KvrStatus kvrsFFTFwd_CToC_64fc_I(Kvr64fc* srcDst, const KvrsFFTSpec_C_64fc* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC64fc), pointers(srcDst));
  return pairsTransform<Kvr64f>(spec, Direction::kForward, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTInv_CToC_64fc_I(Kvr64fc* srcDst, const KvrsFFTSpec_C_64fc* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC64fc), pointers(srcDst));
  return pairsTransform<Kvr64f>(spec, Direction::kInverse, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTGetSize_C_64f(int order, int flag, KvrHintAlgorithm, int* specSize, int* initBufSize,
                               int* workSize) noexcept {
  return kvrs::fft::getSize<Kvr64f>(Kind::kPlanes, order, flag, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_C_64f(KvrsFFTSpec_C_64f** spec, int order, int flag, KvrHintAlgorithm hint,
                            Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return kvrs::fft::init(Kind::kPlanes, kvrs::fft::kWordC64f, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_C_64f(KvrsFFTSpec_C_64f** spec, int order, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return kvrs::fft::initAlloc(Kind::kPlanes, kvrs::fft::kWordC64f, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_C_64f(KvrsFFTSpec_C_64f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC64f));
  release<Kvr64f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_C_64f(const KvrsFFTSpec_C_64f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::fft::kWordC64f));
  *size = bufSize<Kvr64f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_CToC_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dstRe, Kvr64f* dstIm,
                              const KvrsFFTSpec_C_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC64f), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr64f>(spec, spec->scaleFwd, srcRe, srcIm, dstRe, dstIm, buffer);
}

KvrStatus kvrsFFTInv_CToC_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dstRe, Kvr64f* dstIm,
                              const KvrsFFTSpec_C_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC64f), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr64f>(spec, spec->scaleInv, srcIm, srcRe, dstIm, dstRe, buffer);
}

KvrStatus kvrsFFTFwd_CToC_64f_I(Kvr64f* srcDstRe, Kvr64f* srcDstIm, const KvrsFFTSpec_C_64f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC64f), pointers(srcDstRe, srcDstIm));
  return planesTransform<Kvr64f>(spec, spec->scaleFwd, srcDstRe, srcDstIm, srcDstRe, srcDstIm, buffer);
}

KvrStatus kvrsFFTInv_CToC_64f_I(Kvr64f* srcDstRe, Kvr64f* srcDstIm, const KvrsFFTSpec_C_64f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC64f), pointers(srcDstRe, srcDstIm));
  return planesTransform<Kvr64f>(spec, spec->scaleInv, srcDstIm, srcDstRe, srcDstIm, srcDstRe, buffer);
}
