// The complex FFTs.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "transforms/fft_engine.h"

namespace kvrs::fft {
namespace {

// The arguments checked but for the allocation of a work area.
template <class T, class Pair>
KvrStatus complexTransform(const Record<T>* spec, Direction direction, const Pair* src, Pair* dst,
                           Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const bool scales = direction == Direction::kForward ? spec->scaleFwd : spec->scaleInv;
  transform(*spec, spec->order, direction, &src->re, &dst->re, work.as<T>(), scales ? spec->scale : T(1));
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::fft

using kvrs::fft::bufSize;
using kvrs::fft::complexTransform;
using kvrs::fft::Direction;
using kvrs::fft::Kind;
using kvrs::fft::Record;
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
  return complexTransform<Kvr32f>(spec, Direction::kForward, src, dst, buffer);
}

KvrStatus kvrsFFTInv_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsFFTSpec_C_32fc* spec,
                               Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32fc), pointers(src, dst));
  return complexTransform<Kvr32f>(spec, Direction::kInverse, src, dst, buffer);
}

KvrStatus kvrsFFTFwd_CToC_32fc_I(Kvr32fc* srcDst, const KvrsFFTSpec_C_32fc* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32fc), pointers(srcDst));
  return complexTransform<Kvr32f>(spec, Direction::kForward, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTInv_CToC_32fc_I(Kvr32fc* srcDst, const KvrsFFTSpec_C_32fc* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordC32fc), pointers(srcDst));
  return complexTransform<Kvr32f>(spec, Direction::kInverse, srcDst, srcDst, buffer);
}
