// The contexts of transforms of any length.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_DFT_SPEC_H
#define KVRS_TRANSFORMS_DFT_SPEC_H

#include "kvrs/dft.h"
#include "transforms/dft_engine.h"
#include "transforms/fft_spec.h"

namespace kvrs::dft {

enum IdWord : uint32_t {
  kWordC32fc = 13,
  kWordC32f,
  kWordR32f,
  kWordC64fc,
  kWordC64f,
  kWordR64f,
  kWordOutOfOrder32fc = 0x434d414a,
  kWordOutOfOrder64fc,
};

// Complex numbers; real ones; complex ones whose spectrum may be out of order.
enum class Kind { kPairs, kPlanes, kReal, kOutOfOrder };

// The complex transform of n points inside a context.
template <class T>
struct Core {
  int n;
  Method method;
  Mixed<T> mixed;   // kShort and kMixed, or of the convolution, unless that has `fft`
  const T* direct;  // kDirect
  int length;       // kChirp: of the convolution
  const T* chirp;   // exp(-pi i k k / n)
  const T* spectrum;
  fft::Record<T>* fft;
};

template <class T>
struct Record {
  using Part = T;

  uint32_t idWord;
  int32_t len;
  int32_t scaleFwd, scaleInv;
  T scale;
  int32_t hint;
  int32_t workSize;
  // A power of two beyond kLastShort is left to a context of this library's own: KvrsFFTSpec_C_*, or _R_*.
  void* fftSpec;
  // Otherwise the transform of as many numbers, of half as many for real signals of even length, or of m for those of odd
  // length that have rows (RealRows).
  Core<T> core;
  RealRows<T> rows;  // r is 0: none
  const T* halves;   // cos and sin of 2 pi k / len, halved, for k = 1 .. len/4
  OutOfOrder<T> outOfOrder;
  bool leavesOrder;  // out of order indeed
  // What is released with the context.
  int blockCount;
  void* blocks[40];
};

// kvrsDFTInitAlloc, `spec` checked.
template <class T>
KvrStatus initAllocRecord(Kind kind, IdWord word, Record<T>** record, int len, int flag,
                          KvrHintAlgorithm hint);

template <class Spec>
KvrStatus initAlloc(Kind kind, IdWord word, Spec** spec, int len, int flag, KvrHintAlgorithm hint) {
  if (spec == nullptr) return kvrStatusNullPointer;
  Record<typename Spec::Part>* record;
  const KvrStatus status = initAllocRecord(kind, word, &record, len, flag, hint);
  if (status == kvrStatusOk) *spec = static_cast<Spec*>(record);
  return status;
}

// kvrsDFTFree, the arguments checked.
template <class T>
void release(Record<T>* record);

// The complex transform; dst may be src. `work` is the work area of the context, null where that has none.
template <class T>
void runCore(const Core<T>& core, const Points<const T>& src, const Points<T>& dst, T* work, T scale);

// The same of kChirp for n pairs in an array with room for core.length of them, `work` being that of the convolution.
template <class T>
void runChirp(const Core<T>& core, T* pairs, T* work);

}  // namespace kvrs::dft

struct KvrsDFTSpec_C_32fc : kvrs::dft::Record<Kvr32f> {};
struct KvrsDFTSpec_C_32f : kvrs::dft::Record<Kvr32f> {};
struct KvrsDFTSpec_R_32f : kvrs::dft::Record<Kvr32f> {};
struct KvrsDFTSpec_C_64fc : kvrs::dft::Record<Kvr64f> {};
struct KvrsDFTSpec_C_64f : kvrs::dft::Record<Kvr64f> {};
struct KvrsDFTSpec_R_64f : kvrs::dft::Record<Kvr64f> {};
struct KvrsDFTOutOrdSpec_C_32fc : kvrs::dft::Record<Kvr32f> {};
struct KvrsDFTOutOrdSpec_C_64fc : kvrs::dft::Record<Kvr64f> {};

#endif
