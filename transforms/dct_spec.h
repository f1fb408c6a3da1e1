// The contexts of the cosine transforms: one block of memory, a record and its tables.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_DCT_SPEC_H
#define KVRS_TRANSFORMS_DCT_SPEC_H

#include "kvrs/dct.h"
#include "transforms/dft_engine.h"
#include "transforms/fft_spec.h"

namespace kvrs::dct {

enum IdWord : uint32_t { kWordFwd16s = 19, kWordInv16s, kWordFwd32f, kWordInv32f, kWordFwd64f, kWordInv64f };

// The complex transform between sorting and rotation.
enum class Method : int32_t {
  kSmall,  // none: 1, 2, 4 or 8 points
  kFft,
  kMixed,
  kChirp,
};

// Up to so many points, powers of two apart, a call has its numbers on the stack.
inline constexpr int kLastOnStack = 100;

// A mixed-radix transform in a block (dft::Mixed).
template <class T>
struct MixedParts {
  int32_t n;
  uint8_t levels;
  uint8_t stages[dft::kMostLevels];
  uint8_t radix[24];
  Ref<T> numbers, turns;
  Ref<T> odd;  // the tables of OddRoots, one behind the other
};

template <class T>
struct Record {
  using Part = T;

  uint32_t idWord;
  int32_t len;
  int32_t hint;          // kept, without effect
  int32_t workSize;      // bytes of work area that a call needs
  int32_t ownedByAlloc;  // the block is ours to release
  T scale0;              // 1 / sqrt(len)
  Method method;
  int32_t chirpLength;       // of the convolution
  int32_t isApart;           // the spectrum has an area of its own
  Ref<T> turns;              // of the rotation
  Ref<MixedParts<T>> mixed;  // of the transform, or of the convolution
  Ref<fft::Record<T>> fft;   // likewise; null up to 32 points, which need no tables
  Ref<T> chirp, spectrum;    // dft::Core
};

// Of 16-bit data: a context of single precision, unless there is one point only.
struct IntegerRecord {
  uint32_t idWord;
  int32_t len;
  int32_t hint;
  int32_t workSize;
  int32_t ownedByAlloc;
  Ref<Record<Kvr32f>> floats;
};

// The numbers that the complex transform has.
constexpr int pointsOf(int len) {
  return len % 2 == 0 ? len / 2 : len;
}

// In bytes, the slack for rounding pointers up included: part of the interface, as callers may have kept them.
struct Sizes {
  int64_t spec, initBuf, work;
};
template <class T>
KvrStatus sizesOf(int len, Sizes* sizes);
KvrStatus integerSizesOf(int len, Sizes* sizes);

// The checked arguments aside, kvrsDCT*Init.
template <class T>
KvrStatus initRecord(IdWord word, Record<T>** record, int len, KvrHintAlgorithm hint, Kvr8u* specMem,
                     Kvr8u* initBuf);
KvrStatus initRecord(IdWord word, IntegerRecord** record, int len, KvrHintAlgorithm hint, Kvr8u* specMem,
                     Kvr8u* initBuf);

// The transform; dst may be src. `work` is the work area of the context, null where that has none.
template <class T>
void forward(const Record<T>& r, const T* src, T* dst, T* work);
template <class T>
void inverse(const Record<T>& r, const T* src, T* dst, T* work);

// kvrsDCTFwdGetSize, given what tells the sizes.
inline KvrStatus getSize(KvrStatus (*sizesOfType)(int, Sizes*), int len, int* specSize, int* initBufSize,
                         int* workSize) {
  if (len < 1) return kvrStatusBadLength;
  if (specSize == nullptr || initBufSize == nullptr || workSize == nullptr) return kvrStatusNullPointer;
  Sizes sizes;
  const KvrStatus status = sizesOfType(len, &sizes);
  if (status != kvrStatusOk) return status;
  *specSize = static_cast<int>(sizes.spec);
  *initBufSize = static_cast<int>(sizes.initBuf);
  *workSize = static_cast<int>(sizes.work);
  return kvrStatusOk;
}

// kvrsDCT*Init for the public type of a context, which is a Record.
template <class Record, class Spec>
KvrStatus init(IdWord word, Spec** spec, int len, KvrHintAlgorithm hint, Kvr8u* specMem, Kvr8u* initBuf) {
  if (spec == nullptr) return kvrStatusNullPointer;
  if (len < 1) return kvrStatusBadLength;
  if (specMem == nullptr) return kvrStatusNullPointer;
  Record* record;
  const KvrStatus status = initRecord(word, &record, len, hint, specMem, initBuf);
  if (status == kvrStatusOk) *spec = static_cast<Spec*>(record);
  return status;
}

// kvrsDCT*InitAlloc.
template <class Record, class Spec>
KvrStatus initAlloc(KvrStatus (*sizesOfType)(int, Sizes*), IdWord word, Spec** spec, int len,
                    KvrHintAlgorithm hint) {
  if (spec == nullptr) return kvrStatusNullPointer;
  int specSize, initBufSize, workSize;
  KvrStatus status = getSize(sizesOfType, len, &specSize, &initBufSize, &workSize);
  if (status != kvrStatusOk) return status;
  Scratch specMem(static_cast<uint64_t>(specSize));
  if (!specMem.ok()) return kvrStatusOutOfMemory;
  const Scratch initBuf(static_cast<uint64_t>(initBufSize));
  if (!initBuf.ok()) return kvrStatusOutOfMemory;
  Record* record;
  status = initRecord(word, &record, len, hint, specMem.as<Kvr8u>(), initBuf.as<Kvr8u>());
  if (status != kvrStatusOk) return status;
  specMem.keep();
  record->ownedByAlloc = 1;
  *spec = static_cast<Spec*>(record);
  return kvrStatusOk;
}

// kvrsDCT*Free, the arguments checked.
template <class Spec>
void release(Spec* spec) {
  spec->idWord = 0;
  if (spec->ownedByAlloc == 1) kvrFree(spec);
}

// kvrsDCT*GetBufSize, the arguments checked.
template <class Spec>
int bufSize(const Spec* spec) {
  return spec->workSize < 1 ? 0 : spec->workSize + static_cast<int>(kBufferAlignment);
}

}  // namespace kvrs::dct

struct KvrsDCTFwdSpec_16s : kvrs::dct::IntegerRecord {};
struct KvrsDCTInvSpec_16s : kvrs::dct::IntegerRecord {};
struct KvrsDCTFwdSpec_32f : kvrs::dct::Record<Kvr32f> {};
struct KvrsDCTInvSpec_32f : kvrs::dct::Record<Kvr32f> {};
struct KvrsDCTFwdSpec_64f : kvrs::dct::Record<Kvr64f> {};
struct KvrsDCTInvSpec_64f : kvrs::dct::Record<Kvr64f> {};

#endif
