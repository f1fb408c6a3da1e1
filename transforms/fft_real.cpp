// The real FFTs: a complex transform of half the length, and the split between its spectrum and the real
// one's.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/unaligned.h"
#include "transforms/fft_convolve.h"
#include "transforms/fft_engine.h"
#include "transforms/kernels/real-inl.h"

namespace kvrs::fft {
namespace {

using unaligned::get;
using unaligned::put;

// Up to this order the whole transform is one function.
template <class T>
inline constexpr int kLastTinyOrder = sizeof(T) == 4 ? 4 : 3;

// Contexts of the shortest transforms beyond have no tables.
template <class T>
const T* halvesOf(const Record<T>* spec) {
  if constexpr (sizeof(T) == 8) {
    if (spec->order == 4) return kHalves<T, 4>.data();
    if (spec->order == 5) return kHalves<T, 5>.data();
  }
  return spec->halves.get();
}

template <class T>
void tinyForward(int order, const T* src, T* dst, T scale) {
  switch (order) {
    case 0:
      return put(get(src), dst);
    case 1:
      return scalarForward<2>(src, dst, scale);
    case 2:
      return scalarForward<4>(src, dst, scale);
    case 3:
      return scalarForward<8>(src, dst, scale);
    default:
      if constexpr (kLastTinyOrder<T> >= 4) return forward16(src, dst, scale);
  }
}

template <Packing kPacking, class T>
void tinyInverse(int order, const T* src, T* dst, T scale) {
  if constexpr (kLastTinyOrder<T> >= 4) {
    if (order == 4) return inverse16<kPacking>(src, dst, scale);
  }
  if constexpr (kPacking != Packing::kPerm) {
    permFromPack<kPacking>(src, dst, size_t{1} << order);
    src = dst;
  }
  switch (order) {
    case 0:
      return put(get(src), dst);
    case 1:
      return scalarInverse<2>(src, dst, scale);
    case 2:
      return scalarInverse<4>(src, dst, scale);
    default:
      return scalarInverse<8>(src, dst, scale);
  }
}

template <Packing kPacking, class T>
KvrStatus realForward(const Record<T>* spec, const T* src, T* dst, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const T scale = spec->scaleFwd ? spec->scale : T(1);
  const size_t n = size_t{1} << spec->order;
  if (spec->order <= kLastTinyOrder<T>) {
    tinyForward(spec->order, src, dst, scale);
  } else {
    transform(*spec, spec->order - 1, Direction::kForward, src, dst, work.as<T>(), scale);
    const T re = get(dst), im = get(dst + 1);
    put(re + im, dst);
    put(re - im, dst + 1);
    splitSpectrum(SplitForward(), dst, dst, n / 2, halvesOf(spec));
  }
  packFromPerm<kPacking>(dst, n);
  return kvrStatusOk;
}

template <Packing kPacking, class T>
KvrStatus realInverse(const Record<T>* spec, const T* src, T* dst, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const T scale = spec->scaleInv ? spec->scale : T(1);
  const size_t n = size_t{1} << spec->order;
  if (spec->order <= kLastTinyOrder<T>) {
    tinyInverse<kPacking>(spec->order, src, dst, scale);
    return kvrStatusOk;
  }
  const T first = get(src);
  const T last = get(src + lastTerm<kPacking>(n));
  if constexpr (kPacking == Packing::kPack) {
    permFromPack<kPacking>(src, dst, n);
    src = dst;
  }
  splitSpectrum(SplitInverse(), src, dst, n / 2, halvesOf(spec));
  put(first + last, dst);
  put(first - last, dst + 1);
  transform(*spec, spec->order - 1, Direction::kInverse, dst, dst, work.as<T>(), scale);
  return kvrStatusOk;
}

// Of two spectra that are multiplied the one between never is in memory: the split, the product and the split back are one loop.
template <class T>
KvrStatus convolveReal(const Record<T>* spec, const T* src, const T* spectrum, T* dst, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const int order = spec->order - 1;
  transform(*spec, order, Direction::kForward, src, dst, work.as<T>(), spec->scaleFwd ? spec->scale : T(1));
  const T re = get(dst), im = get(dst + 1);
  const T first = (re + im) * get(spectrum), last = (re - im) * get(spectrum + 1);
  splitSpectrum(SplitProduct<T>{spectrum}, dst, dst, size_t{1} << order, halvesOf(spec));
  put(first + last, dst);
  put(first - last, dst + 1);
  transform(*spec, order, Direction::kInverse, dst, dst, work.as<T>(), spec->scaleInv ? spec->scale : T(1));
  return kvrStatusOk;
}

}  // namespace

KvrStatus convolve(const Kvr32f* src, const Kvr32f* spectrum, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                   Kvr8u* buffer) {
  KVRS_CHECK(context(spec, kWordR32f));
  return convolveReal<Kvr32f>(spec, src, spectrum, dst, buffer);
}

KvrStatus convolve(const Kvr64f* src, const Kvr64f* spectrum, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                   Kvr8u* buffer) {
  KVRS_CHECK(context(spec, kWordR64f));
  return convolveReal<Kvr64f>(spec, src, spectrum, dst, buffer);
}

}  // namespace kvrs::fft

using kvrs::Packing;
using kvrs::fft::bufSize;
using kvrs::fft::Kind;
using kvrs::fft::realForward;
using kvrs::fft::realInverse;
using kvrs::fft::release;

KvrStatus kvrsFFTGetSize_R_32f(int order, int flag, KvrHintAlgorithm, int* specSize, int* initBufSize,
                               int* workSize) noexcept {
  return kvrs::fft::getSize<Kvr32f>(Kind::kReal, order, flag, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_R_32f(KvrsFFTSpec_R_32f** spec, int order, int flag, KvrHintAlgorithm hint,
                            Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return kvrs::fft::init(Kind::kReal, kvrs::fft::kWordR32f, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_R_32f(KvrsFFTSpec_R_32f** spec, int order, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return kvrs::fft::initAlloc(Kind::kReal, kvrs::fft::kWordR32f, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_R_32f(KvrsFFTSpec_R_32f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f));
  release<Kvr32f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_R_32f(const KvrsFFTSpec_R_32f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::fft::kWordR32f));
  *size = bufSize<Kvr32f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_RToPerm_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(src, dst));
  return realForward<Packing::kPerm, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTFwd_RToPerm_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(srcDst));
  return realForward<Packing::kPerm, Kvr32f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTFwd_RToPack_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(src, dst));
  return realForward<Packing::kPack, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTFwd_RToPack_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(srcDst));
  return realForward<Packing::kPack, Kvr32f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTFwd_RToCCS_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(src, dst));
  return realForward<Packing::kCcs, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTFwd_RToCCS_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(srcDst));
  return realForward<Packing::kCcs, Kvr32f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTInv_PermToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(src, dst));
  return realInverse<Packing::kPerm, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTInv_PermToR_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(srcDst));
  return realInverse<Packing::kPerm, Kvr32f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTInv_PackToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(src, dst));
  return realInverse<Packing::kPack, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTInv_PackToR_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(srcDst));
  return realInverse<Packing::kPack, Kvr32f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTInv_CCSToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(src, dst));
  return realInverse<Packing::kCcs, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTInv_CCSToR_32f_I(Kvr32f* srcDst, const KvrsFFTSpec_R_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR32f), pointers(srcDst));
  return realInverse<Packing::kCcs, Kvr32f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTGetSize_R_64f(int order, int flag, KvrHintAlgorithm, int* specSize, int* initBufSize,
                               int* workSize) noexcept {
  return kvrs::fft::getSize<Kvr64f>(Kind::kReal, order, flag, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_R_64f(KvrsFFTSpec_R_64f** spec, int order, int flag, KvrHintAlgorithm hint,
                            Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return kvrs::fft::init(Kind::kReal, kvrs::fft::kWordR64f, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_R_64f(KvrsFFTSpec_R_64f** spec, int order, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return kvrs::fft::initAlloc(Kind::kReal, kvrs::fft::kWordR64f, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_R_64f(KvrsFFTSpec_R_64f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f));
  release<Kvr64f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_R_64f(const KvrsFFTSpec_R_64f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::fft::kWordR64f));
  *size = bufSize<Kvr64f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_RToPerm_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(src, dst));
  return realForward<Packing::kPerm, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTFwd_RToPerm_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(srcDst));
  return realForward<Packing::kPerm, Kvr64f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTFwd_RToPack_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(src, dst));
  return realForward<Packing::kPack, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTFwd_RToPack_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(srcDst));
  return realForward<Packing::kPack, Kvr64f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTFwd_RToCCS_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(src, dst));
  return realForward<Packing::kCcs, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTFwd_RToCCS_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(srcDst));
  return realForward<Packing::kCcs, Kvr64f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTInv_PermToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(src, dst));
  return realInverse<Packing::kPerm, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTInv_PermToR_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(srcDst));
  return realInverse<Packing::kPerm, Kvr64f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTInv_PackToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(src, dst));
  return realInverse<Packing::kPack, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTInv_PackToR_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(srcDst));
  return realInverse<Packing::kPack, Kvr64f>(spec, srcDst, srcDst, buffer);
}

KvrStatus kvrsFFTInv_CCSToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(src, dst));
  return realInverse<Packing::kCcs, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsFFTInv_CCSToR_64f_I(Kvr64f* srcDst, const KvrsFFTSpec_R_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::fft::kWordR64f), pointers(srcDst));
  return realInverse<Packing::kCcs, Kvr64f>(spec, srcDst, srcDst, buffer);
}
