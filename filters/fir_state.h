// The state of a FIR filter: one block of memory, a record and its tables, that one description lays out for
// every length and number of threads.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_STATE_H
#define KVRS_FILTERS_FIR_STATE_H

#include <cstring>

#include "filters/fir_kernel.h"
#include "frame/buffer.h"
#include "frame/check.h"
#include "frame/ref.h"
#include "kvrs/fft.h"
#include "kvrs/fir.h"
#include "kvrs/spectrum.h"

namespace kvrs::fir {

// Identifier words: the letters F and I and two digits.
constexpr uint32_t word(int number) {
  return 0x46493030u + static_cast<uint32_t>(number / 10 * 256 + number % 10);
}
inline constexpr uint32_t kWord_32f = word(1), kWordMR_32f = word(3);
inline constexpr uint32_t kWordStream_32f = word(33), kWordMRStream_32f = word(34);

// What the types of the sums differ in.
template <class T>
struct Sums;

template <>
struct Sums<Kvr32f> {
  using Spec = KvrsFFTSpec_R_32f;

  static constexpr int kFftFromTaps = 64;
  static constexpr size_t kFftFromLen = 512;
  static constexpr size_t kThreadsFromLen = 1601;

  static KvrStatus fftGetSize(int order, int* specSize, int* initBufSize, int* workSize) {
    return kvrsFFTGetSize_R_32f(order, kvrFftDivInvByN, kvrHintNone, specSize, initBufSize, workSize);
  }
  static KvrStatus fftInit(Spec** spec, int order, Kvr8u* specMem, Kvr8u* initBuf) {
    return kvrsFFTInit_R_32f(spec, order, kvrFftDivInvByN, kvrHintNone, specMem, initBuf);
  }
  static KvrStatus fftFree(Spec* spec) { return kvrsFFTFree_R_32f(spec); }
  static KvrStatus forward(const Kvr32f* src, Kvr32f* dst, const Spec* spec, Kvr8u* buffer) {
    return kvrsFFTFwd_RToPerm_32f(src, dst, spec, buffer);
  }
  static KvrStatus multiply(const Kvr32f* taps, Kvr32f* frame, int fftLen) {
    return kvrsMulPerm_32f_I(taps, frame, fftLen);
  }
  static KvrStatus inverse(Kvr32f* frame, const Spec* spec, Kvr8u* buffer) {
    return kvrsFFTInv_PermToR_32f_I(frame, spec, buffer);
  }

  // Part of the interface: callers may have kept it.
  static constexpr uint64_t stateSize(uint64_t tapsLen, uint64_t fftLen, uint64_t specSize,
                                      uint64_t initBufSize, uint64_t workSize, uint64_t threads) {
    constexpr auto up = [](uint64_t bytes) { return (bytes + 15) / 16 * 16; };
    return (workSize + up(4 * fftLen)) * threads + specSize + initBufSize + up(4 * tapsLen) +
           up(12 * tapsLen + 16) + 64 * ((tapsLen + 6) / 4 + (4 * tapsLen + 15) / 16) + 16 * threads +
           up(4 * threads) + up(4 * fftLen) + 16496;
  }
};

// A filter whose taps, delay line and sums are of type T.
//
// The delay line holds the last tapsLen samples in one piece, the oldest at dlyPos. A single sample is written twice,
// tapsLen apart, so that the window can go round; with few taps it moves the others instead (firShift). Calls with more
// samples put them behind the window, as many as they need there, and move the newest tapsLen to the front when they
// are done.
template <class T>
struct State {
  uint32_t idWord;
  int32_t allocated;  // the block is ours to release
  int32_t tapsLen;
  int32_t dlyLen;  // samples that GetDlyLine shows: tapsLen in a single-rate filter
  int32_t dlyPos;
  int32_t threads;   // the most that a call may use
  Ref<T> tapsRev;    // the last tap first: in the order of the samples they meet
  Ref<T> tapsBcast;  // the same, each kTapCopies times; null where that is once
  Ref<T> dlyLine;
  Ref<T> scratch;               // the results of kScratch samples in place
  T shiftKeep[kShiftLanes<T>];  // the lanes that firShift keeps

  // The block convolution; fftLen is -1 where there is none.
  int32_t fftLen;
  int32_t fftBufSize;
  Ref<typename Sums<T>::Spec> fftSpec;
  Ref<T> fftTaps;               // the transform of the taps
  Ref<T> frames;                // fftLen elements for each thread
  Ref<Kvr8u> fftBuffers;        // fftBufSize bytes for each thread; null where that is 0
  Ref<KvrStatus> threadStatus;  // one for each thread

  const T* kernelTaps() const { return kTapCopies<T> == 1 ? tapsRev.get() : tapsBcast.get(); }
};

inline constexpr size_t kScratch = 4096;

template <class T>
Kvr8u* fftBufferOf(const State<T>& state, int thread) {
  Kvr8u* first = state.fftBuffers.get();
  return first == nullptr ? nullptr
                          : first + static_cast<size_t>(state.fftBufSize) * static_cast<size_t>(thread);
}

// How many of each thing a state holds, and its size in bytes.
struct Plan {
  int tapsLen, threads;
  int order, fftLen;  // fftLen is 0 where there is no block convolution
  int specSize, initBufSize, workSize;
  int size;
};

// kvrStatusBadTapsLength if the state is beyond what an int can tell.
template <class T>
KvrStatus plan(int tapsLen, Plan* plan);

// Makes a state without a word in `buffer`, which has plan.size bytes. `dlyLine` may be null.
template <class T>
State<T>* build(const Plan& plan, const T* taps, const T* dlyLine, Kvr8u* buffer);

template <class T>
KvrStatus setTaps(State<T>* state, const T* taps);
template <class T>
void getTaps(const State<T>* state, T* taps);

// to[i] = from[len-1-i], converted. Callers' arrays may have any alignment, so elements move as bytes.
template <class D, class T>
void reverse(const D* from, T* to, size_t len) {
  for (size_t i = 0; i < len; ++i) {
    D element;
    memcpy(&element, from + (len - 1 - i), sizeof element);
    const T converted = static_cast<T>(element);
    memcpy(to + i, &converted, sizeof converted);
  }
}

// Delay lines of any element D that converts to the sums' and back.
template <class T, class D>
void setDelayLine(State<T>* state, const D* dlyLine) {
  const size_t len = static_cast<size_t>(state->dlyLen);
  T* line = state->dlyLine.get();
  state->dlyPos = 0;
  if (dlyLine == nullptr) {
    memset(line, 0, len * sizeof(T));
  } else {
    reverse(dlyLine, line, len);
  }
}
template <class T, class D>
void getDelayLine(const State<T>* state, D* dlyLine) {
  reverse(state->dlyLine.get() + state->dlyPos, dlyLine, static_cast<size_t>(state->dlyLen));
}

extern template KvrStatus plan<Kvr32f>(int, Plan*);
extern template State<Kvr32f>* build<Kvr32f>(const Plan&, const Kvr32f*, const Kvr32f*, Kvr8u*);
extern template KvrStatus setTaps<Kvr32f>(State<Kvr32f>*, const Kvr32f*);
extern template void getTaps<Kvr32f>(const State<Kvr32f>*, Kvr32f*);

}  // namespace kvrs::fir

struct KvrsFIRState_32f : kvrs::fir::State<Kvr32f> {};

#endif
