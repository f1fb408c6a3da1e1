// Convolution by blocks: overlap-save (Stockham, High-speed convolution and correlation, 1966). With M samples of overlap,
// N points and B = N - M, block b takes the N samples from b*B - M on, multiplies their transform by that of the other
// signal and gets outputs b*B .. b*B + B-1 behind M that are wrapped around:
//
//   samples  |--M--|-------B-------|
//                            |--M--|-------B-------|
//   outputs        |---block 0-----|---block 1-----|
//
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_BLOCK_CONVOLUTION_H
#define KVRS_FILTERS_BLOCK_CONVOLUTION_H

#include <type_traits>

#include "filters/fir_kernel.h"
#include "frame/threads.h"
#include "kvrs/arith_float.h"
#include "kvrs/fft.h"
#include "kvrs/spectrum.h"
#include "transforms/fft_convolve.h"

namespace kvrs {

// The transforms that blocks of elements T run through, their product, and the functions that make and release their context.
// kThere: whether they can be had at all.
template <class T>
struct BlockTransform {
  struct Spec;
  static constexpr bool kThere = false;
};

template <class SpecType, auto kGetSize, auto kInit, auto kFree, auto kForward, auto kMultiply, auto kInverse>
struct BlockTransformOf {
  using Spec = SpecType;
  static constexpr bool kThere = true;
  static constexpr auto free = kFree;
  static constexpr auto forward = kForward;    // (src, dst, spec, buffer)
  static constexpr auto multiply = kMultiply;  // (spectrum, frame, fftLen)
  static constexpr auto inverse = kInverse;    // (frame, spec, buffer)

  // src through all three of them.
  template <class T>
  static KvrStatus convolve(const T* src, const T* spectrum, T* frame, size_t fftLen, const Spec* spec,
                            Kvr8u* buffer) {
    if constexpr (std::is_floating_point_v<T>) {
      return fft::convolve(src, spectrum, frame, spec, buffer);
    } else {
      KvrStatus status = kForward(src, frame, spec, buffer);
      if (status == kvrStatusOk) status = kMultiply(spectrum, frame, static_cast<int>(fftLen));
      if (status == kvrStatusOk) status = kInverse(frame, spec, buffer);
      return status;
    }
  }

  static KvrStatus getSize(int order, int* specSize, int* initBufSize, int* workSize) {
    return kGetSize(order, kvrFftDivInvByN, kvrHintNone, specSize, initBufSize, workSize);
  }
  static KvrStatus init(Spec** spec, int order, Kvr8u* specMem, Kvr8u* initBuf) {
    return kInit(spec, order, kvrFftDivInvByN, kvrHintNone, specMem, initBuf);
  }
};

template <>
struct BlockTransform<Kvr32f>
    : BlockTransformOf<KvrsFFTSpec_R_32f, kvrsFFTGetSize_R_32f, kvrsFFTInit_R_32f, kvrsFFTFree_R_32f,
                       kvrsFFTFwd_RToPerm_32f, kvrsMulPerm_32f_I, kvrsFFTInv_PermToR_32f_I> {};
template <>
struct BlockTransform<Kvr64f>
    : BlockTransformOf<KvrsFFTSpec_R_64f, kvrsFFTGetSize_R_64f, kvrsFFTInit_R_64f, kvrsFFTFree_R_64f,
                       kvrsFFTFwd_RToPerm_64f, kvrsMulPerm_64f_I, kvrsFFTInv_PermToR_64f_I> {};
template <>
struct BlockTransform<Kvr32fc>
    : BlockTransformOf<KvrsFFTSpec_C_32fc, kvrsFFTGetSize_C_32fc, kvrsFFTInit_C_32fc, kvrsFFTFree_C_32fc,
                       kvrsFFTFwd_CToC_32fc, kvrsMul_32fc_I, kvrsFFTInv_CToC_32fc_I> {};
template <>
struct BlockTransform<Kvr64fc>
    : BlockTransformOf<KvrsFFTSpec_C_64fc, kvrsFFTGetSize_C_64fc, kvrsFFTInit_C_64fc, kvrsFFTFree_C_64fc,
                       kvrsFFTFwd_CToC_64fc, kvrsMul_64fc_I, kvrsFFTInv_CToC_64fc_I> {};

// Multiply-adds that are worth a thread: it takes some microseconds to wake, and a core does about
// 3,000 vectors of them in one.
template <class T>
inline constexpr uint64_t kWorkOfThread = uint64_t{kFirLanes<T>} << 16;

// The time of a block of N points, there and back, over N log2(N), in multiply-adds of the direct engine, which
// gains more from long vectors than the FFT does. Measured on real blocks of 256 to 8,192 points: 4.9 to 5.9 with
// vectors of 128 bits, 6.2 to 7.8 with 256, 7.5 to 11.9 with 512. So blocks pay from about 66, 90 and 128 taps on. A
// complex multiply-add takes four times as long as a real one, and a complex block twice as long.
template <class T>
inline constexpr uint64_t kTransformCost = (kVectorBytes == 16   ? 6
                                            : kVectorBytes == 32 ? 7
                                                                 : 9) /
                                           (FirElement<T>::kComplex ? 2 : 1);

// The work on so many blocks, in multiply-adds of the direct engine.
template <class T>
uint64_t workOfBlocks(uint64_t fftLen, uint64_t blocks) {
  uint64_t log = 0;
  while (fftLen >> (log + 1) != 0) ++log;
  return blocks * fftLen * log * kTransformCost<T>;
}

// A signal that blocks are convolved with, and the memory that it takes.
template <class T>
struct BlockConvolution {
  using Transform = BlockTransform<T>;

  const typename Transform::Spec* spec;
  const T* spectrum;  // of the signal
  size_t fftLen;
  size_t overlap;  // its length less 1
  T* frames;       // fftLen elements for each thread
  Kvr8u* buffers;  // bufferSize bytes for each thread, or null
  size_t bufferSize;
  KvrStatus* statuses;  // one for each thread

  size_t step() const { return fftLen - overlap; }
  size_t blocks(size_t len) const { return (len + step() - 1) / step(); }

  // `len` outputs, by at most `team` threads. fetch(begin, count, frame) returns the fftLen samples of the block of
  // outputs begin .. begin+count-1, `overlap` samples before them and silence behind, in `frame` or anywhere else.
  // store(results, begin, count) takes the outputs.
  template <class Fetch, class Store>
  KvrStatus run(size_t len, int team, Fetch fetch, Store store) const {
    const size_t count = blocks(len);
    if (static_cast<size_t>(team) > count) team = static_cast<int>(count);
    int granted = 1;
    runTeam(team, [&](int thread, int threads) {
      if (thread == 0) granted = threads;
      statuses[thread] = runEach(len, thread, threads, fetch, store);
    });
    KvrStatus worst = kvrStatusOk;
    for (int thread = 0; thread < granted; ++thread) {
      if (statuses[thread] < worst) worst = statuses[thread];
    }
    return worst;
  }

 private:
  template <class Fetch, class Store>
  KvrStatus runEach(size_t len, int thread, int threads, Fetch fetch, Store store) const {
    T* frame = frames + fftLen * static_cast<size_t>(thread);
    Kvr8u* buffer = buffers == nullptr ? nullptr : buffers + bufferSize * static_cast<size_t>(thread);
    for (size_t block = static_cast<size_t>(thread); block < blocks(len);
         block += static_cast<size_t>(threads)) {
      const size_t begin = block * step(), count = len - begin < step() ? len - begin : step();
      const T* samples = fetch(begin, count, frame);
      const KvrStatus status = Transform::convolve(samples, spectrum, frame, fftLen, spec, buffer);
      if (status != kvrStatusOk) return status;
      store(frame + overlap, begin, count);
    }
    return kvrStatusOk;
  }
};

}  // namespace kvrs

#endif
