// The context of the floating-point FFTs: one block of memory, a record and its tables.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_FFT_SPEC_H
#define KVRS_TRANSFORMS_FFT_SPEC_H

#include "frame/buffer.h"
#include "frame/ref.h"
#include "kvrs/fft.h"

namespace kvrs::fft {

template <class T>
struct Record {
  using Part = T;

  uint32_t idWord;
  int32_t order;
  int32_t scaleFwd, scaleInv;  // whether the direction multiplies by `scale`
  T scale;                     // 0 when neither does
  int32_t hint;                // kept, without effect
  int32_t workSize;            // bytes of work area that a call needs
  int32_t ownedByAlloc;        // the block is ours to release

  // Twiddles between the passes of a transform up to kLastStockhamOrder, or of the rows of a split one.
  Ref<T> rows;
  // A split transform: see SplitTables.
  Ref<T> columns, spans, places, middle, middleOuter;
  // A real transform: cos and sin of 2 pi k / N, halved, for k = 1 .. N/4.
  Ref<T> halves;
};

enum IdWord : uint32_t { kWordC32fc = 4, kWordC32f, kWordR32f, kWordC64fc, kWordC64f, kWordR64f };

struct Sizes {
  int spec, initBuf, work;  // in bytes, the slack for rounding pointers up included
};

// What tells the families apart. The sizes are part of the interface: callers may have kept them.
template <class T>
struct Family;

template <>
struct Family<float> {
  static constexpr int kMaxOrder = 27;
  static Sizes complexSizes(int order);
  static Sizes realSizes(int order);
};
template <>
struct Family<double> {
  static constexpr int kMaxOrder = 26;
  static Sizes complexSizes(int order);
  static Sizes realSizes(int order);
};

constexpr bool knownFlag(int flag) {
  return flag == kvrFftDivFwdByN || flag == kvrFftDivInvByN || flag == kvrFftDivBySqrtN ||
         flag == kvrFftNoDivByAny;
}

// Complex numbers, real and imaginary part in turn or in two arrays, are transformed as they are; real ones as half as
// many complex ones.
enum class Kind { kComplex, kPlanes, kReal };

template <class T>
Sizes sizesOf(Kind kind, int order) {
  return kind == Kind::kReal ? Family<T>::realSizes(order) : Family<T>::complexSizes(order);
}

// kvrsFFTGetSize.
template <class T>
KvrStatus getSize(Kind kind, int order, int flag, int* specSize, int* initBufSize, int* workSize);

// kvrsFFTInit and kvrsFFTInitAlloc, `spec` checked.
template <class T>
KvrStatus initRecord(Kind kind, IdWord word, Record<T>** record, int order, int flag, KvrHintAlgorithm hint,
                     Kvr8u* specMem, Kvr8u* initBuf);
template <class T>
KvrStatus initAllocRecord(Kind kind, IdWord word, Record<T>** record, int order, int flag,
                          KvrHintAlgorithm hint);

// The same for the public type of a context, which is a Record.
template <class Spec>
KvrStatus init(Kind kind, IdWord word, Spec** spec, int order, int flag, KvrHintAlgorithm hint,
               Kvr8u* specMem, Kvr8u* initBuf) {
  if (spec == nullptr) return kvrStatusNullPointer;
  Record<typename Spec::Part>* record;
  const KvrStatus status = initRecord(kind, word, &record, order, flag, hint, specMem, initBuf);
  if (status == kvrStatusOk) *spec = static_cast<Spec*>(record);
  return status;
}
template <class Spec>
KvrStatus initAlloc(Kind kind, IdWord word, Spec** spec, int order, int flag, KvrHintAlgorithm hint) {
  if (spec == nullptr) return kvrStatusNullPointer;
  Record<typename Spec::Part>* record;
  const KvrStatus status = initAllocRecord(kind, word, &record, order, flag, hint);
  if (status == kvrStatusOk) *spec = static_cast<Spec*>(record);
  return status;
}

// kvrsFFTFree, the arguments checked.
template <class T>
void release(Record<T>* record) {
  record->idWord = 0;
  if (record->ownedByAlloc == 1) kvrFree(record);
}

// kvrsFFTGetBufSize, the arguments checked.
template <class T>
int bufSize(const Record<T>* record) {
  return record->workSize < 1 ? 0 : record->workSize + static_cast<int>(kBufferAlignment);
}

}  // namespace kvrs::fft

struct KvrsFFTSpec_C_32fc : kvrs::fft::Record<Kvr32f> {};
struct KvrsFFTSpec_C_32f : kvrs::fft::Record<Kvr32f> {};
struct KvrsFFTSpec_R_32f : kvrs::fft::Record<Kvr32f> {};
struct KvrsFFTSpec_C_64fc : kvrs::fft::Record<Kvr64f> {};
struct KvrsFFTSpec_C_64f : kvrs::fft::Record<Kvr64f> {};
struct KvrsFFTSpec_R_64f : kvrs::fft::Record<Kvr64f> {};

#endif
