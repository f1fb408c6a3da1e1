// The state of a FIR filter: one block of memory, a record and its tables, that one description lays out for
// every type, length and number of threads.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_STATE_H
#define KVRS_FILTERS_FIR_STATE_H

#include <cstring>
#include <limits>
#include <type_traits>

#include "filters/block_convolution.h"
#include "filters/fir_kernel.h"
#include "frame/buffer.h"
#include "frame/check.h"
#include "frame/ref.h"
#include "frame/unaligned.h"
#include "kvrs/fir.h"
#include "kvrs/fir_multirate.h"
#include "kvrs/fir_stream.h"

namespace kvrs::fir {

// Identifier words: the letters F and I and two digits.
constexpr uint32_t word(int number) {
  return 0x46493030u + static_cast<uint32_t>(number / 10 * 256 + number % 10);
}

struct Plan;

// A type of filters: the words of one at a single rate and of one at two, the number of taps from which there is a block
// convolution, and the size of a state. Words, limits and sizes are part of the interface: callers may have kept sizes.
struct Form {
  uint32_t single, multi;
  int blocksFromTaps;
  uint64_t (*size)(const Plan& plan);

  // Whether a state is of this type.
  template <class S>
  KvrStatus either(const S* state) const {
    return check::context(state, single, multi);
  }
};

uint64_t size_32f(const Plan& plan);
uint64_t size_32fc(const Plan& plan);
uint64_t size_64f(const Plan& plan);
uint64_t size_64fc(const Plan& plan);
uint64_t size_32s(const Plan& plan);
uint64_t size_16s(const Plan& plan);
uint64_t size32s_16s(const Plan& plan);
uint64_t size32sc_16sc(const Plan& plan);
uint64_t sizeStream_16s(const Plan& plan);

inline constexpr int kNoBlocks = 0x7FFFFFFF;
inline constexpr Form k_32f{word(1), word(3), 64, size_32f};
inline constexpr Form k_32fc{word(2), word(4), 16, size_32fc};
inline constexpr Form k32f_16s{word(5), word(7), 64, size_32f};
inline constexpr Form k32fc_16sc{word(6), word(8), 16, size_32fc};
inline constexpr Form k32s_16s{word(9), word(11), kNoBlocks, size32s_16s};
inline constexpr Form k32sc_16sc{word(10), word(12), kNoBlocks, size32sc_16sc};
inline constexpr Form k_64f{word(13), word(15), 64, size_64f};
inline constexpr Form k_64fc{word(14), word(16), 32, size_64fc};
inline constexpr Form k64f_32f{word(17), word(19), 64, size_64f};
inline constexpr Form k64fc_32fc{word(18), word(20), 32, size_64fc};
inline constexpr Form k64f_32s{word(21), word(23), 64, size_64f};
inline constexpr Form k64fc_32sc{word(22), word(24), 32, size_64fc};
inline constexpr Form k64f_16s{word(25), word(27), 64, size_64f};
inline constexpr Form k64fc_16sc{word(26), word(28), 32, size_64fc};
inline constexpr Form k_16s{word(29), word(30), kNoBlocks, size_16s};
// Integer taps that are held as doubles: in the caller's memory without block convolution, on the heap with one.
inline constexpr Form k_32s{word(21), word(23), kNoBlocks, size_32s};
inline constexpr Form k_32sOnHeap{word(21), word(23), 32, size_64f};
// Streams: filters without a delay line.
inline constexpr Form kStream_16s{word(31), word(32), kNoBlocks, sizeStream_16s};
inline constexpr Form kStream_32f{word(33), word(34), 64, size_32f};

// Pieces of so many samples may run by blocks, and on threads.
template <class T>
inline constexpr size_t kBlocksFromLen = FirElement<T>::kComplex ? 256 : 512;
template <class T>
inline constexpr size_t kThreadsFromLen = FirElement<T>::kComplex ? 801 : 1601;

// How two rates are between the samples of a filter: time runs in steps of the high rate, input i comes at upPhase + i *
// upFactor, output n at downPhase + n * downFactor.
struct Rates {
  int32_t upFactor, upPhase, downFactor, downPhase;
};

// The block convolution of a state; fftLen is -1 where there is none.
template <class T, bool kInteger = FirElement<T>::kInteger>
struct StateBlocks {
  int32_t threads;  // the most that a call may use
  int32_t fftLen;
  int32_t fftBufSize;
  Ref<typename BlockTransform<T>::Spec> fftSpec;
  Ref<T> fftTaps;               // the transform of the taps
  Ref<T> frames;                // fftLen elements for each thread
  Ref<Kvr8u> fftBuffers;        // fftBufSize bytes for each thread; null where that is 0
  Ref<KvrStatus> threadStatus;  // one for each thread
};
template <class T>
struct StateBlocks<T, true> {
  int32_t none;
};

// A filter whose taps and delay line are of type T.
//
// The delay line holds the last dlyLen samples in one piece, the oldest at dlyPos. A single sample is written twice,
// tapsLen apart, so that the window can go round; with few taps it moves the others instead (firShift). Calls with more
// samples put them behind the window, up to stageLen of them where it is at the front, and move the newest to the front
// when they are done.
template <class T>
struct State {
  uint32_t idWord;
  int32_t allocated;  // the block is ours to release
  int32_t tapsLen;
  int32_t dlyLen;  // samples that GetDlyLine shows: tapsLen in a filter at one rate
  int32_t dlyPos;
  int32_t stageLen;
  int32_t tapsFactor;         // integer taps: a tap is the stored one times 2^tapsFactor
  KvrRoundMode rndMode;       // of streams of integers
  Rates rates;                // a filter at two rates
  Ref<T> tapsRev;             // the last tap first: in the order of the samples they meet
  Ref<FirLane<T>> tapsTable;  // the same as firKernel wants them; null where that is tapsRev
  Ref<T> bank;                // a filter at two rates: the taps of each phase (fillBank); see fillPhases too
  Ref<T> dlyLine;
  Ref<T> scratch;  // the results of kScratch samples in place
  StateBlocks<T> blocks;

  const FirLane<T>* kernelTaps() const {
    if constexpr (kHasTapTable<T>) {
      return tapsTable.present();
    } else {
      return reinterpret_cast<const FirLane<T>*>(tapsRev.present());
    }
  }
};
static_assert(sizeof(State<Kvr16s>) == 72 && sizeof(State<Kvr32f>) == 100 && sizeof(State<Kvr64fc>) == 100);

// Samples that are filtered in place in one go.
inline constexpr size_t kScratch = 4096;

// How many of each thing a state holds, and its size in bytes.
struct Plan {
  uint32_t word;
  int tapsLen, dlyLen;
  Rates rates;  // factors of 0 where there is but one rate
  int threads;
  int order, fftLen;  // fftLen is 0 where there is no block convolution
  int specSize, initBufSize, workSize;
  uint64_t size;
};

// Whether a filter at these rates is one at a single rate: of real floating-point taps, where both factors are 1.
template <class T>
bool isSingleRate(const Rates& rates) {
  return !FirElement<T>::kComplex && !FirElement<T>::kInteger && rates.upFactor == 1 && rates.downFactor == 1;
}

// The plan of a filter; null rates stand for one. kvrStatusBadTapsLength if the state is beyond what an int can tell.
template <class T>
KvrStatus makePlan(const Form& form, int tapsLen, const Rates* rates, Plan* plan);

// Makes a state in `buffer`, which has plan.size bytes, without taps and delay line.
template <class T>
State<T>* build(const Plan& plan, Kvr8u* buffer);

// The time of a filter's first output less that of input 0. An output of a stream stands at the oldest input that it meets.
template <class T>
int64_t firstTime(const State<T>& state) {
  const bool isStream = state.idWord == kStream_32f.multi || state.idWord == kStream_16s.multi;
  return int64_t{state.rates.downPhase} - state.rates.upPhase + (isStream ? state.tapsLen - 1 : 0);
}

// Brings all tables up to date with tapsRev.
template <class T>
KvrStatus tapsChanged(State<T>* state);

// The taps of all phases one behind the other, those of a phase in the order of the samples they meet, the oldest first:
// phase u has every upFactor-th tap from u on.
template <class T>
void fillBank(const T* tapsRev, T* bank, size_t tapsLen, size_t upFactor);

// A number as another type, or the parts of a complex one; of floats what lies before the point, saturated.
template <class T, class X>
T convertedTo(X value) {
  if constexpr (requires { value.re; }) {
    T converted;
    converted.re = convertedTo<decltype(converted.re)>(value.re);
    converted.im = convertedTo<decltype(converted.im)>(value.im);
    return converted;
  } else if constexpr (std::is_integral_v<T> && std::is_floating_point_v<X>) {
    constexpr T kLowest = std::numeric_limits<T>::lowest(), kHighest = std::numeric_limits<T>::max();
    return !(value > static_cast<X>(kLowest))  ? kLowest
           : value >= static_cast<X>(kHighest) ? kHighest
                                               : static_cast<T>(value);
  } else {
    return static_cast<T>(value);
  }
}

// to[i] = from[len-1-i], converted.
template <class X, class T>
void reverse(const X* from, T* to, size_t len) {
  for (size_t i = 0; i < len; ++i) {
    unaligned::put(convertedTo<T>(unaligned::get(from + (len - 1 - i))), to + i);
  }
}

template <class T, class X>
KvrStatus setTaps(State<T>* state, const X* taps) {
  reverse(taps, state->tapsRev.get(), static_cast<size_t>(state->tapsLen));
  return tapsChanged(state);
}
template <class T, class X>
KvrStatus getTaps(const State<T>* state, X* taps) {
  reverse(state->tapsRev.get(), taps, static_cast<size_t>(state->tapsLen));
  return kvrStatusOk;
}

// Delay lines of any element D that converts to T and back.
template <class T, class D>
KvrStatus setDelayLine(State<T>* state, const D* dlyLine) {
  const size_t len = static_cast<size_t>(state->dlyLen);
  T* line = state->dlyLine.get();
  state->dlyPos = 0;
  if (dlyLine == nullptr) {
    memset(static_cast<void*>(line), 0, len * sizeof(T));
  } else {
    reverse(dlyLine, line, len);
  }
  return kvrStatusOk;
}
template <class T, class D>
KvrStatus getDelayLine(const State<T>* state, D* dlyLine) {
  reverse(state->dlyLine.get() + state->dlyPos, dlyLine, static_cast<size_t>(state->dlyLen));
  return kvrStatusOk;
}

// ---- What the exports do, their arguments checked for null and range.

inline KvrStatus checkRates(const Rates& rates) {
  if (rates.upFactor < 1 || rates.downFactor < 1) return kvrStatusBadRateFactor;
  return check::require(rates.upPhase >= 0 && rates.upPhase < rates.upFactor && rates.downPhase >= 0 &&
                            rates.downPhase < rates.downFactor,
                        kvrStatusBadPhase);
}

template <class T>
KvrStatus getStateSize(const Form& form, int tapsLen, const Rates* rates, int* size) {
  KVRS_CHECK(pointers(size), tapsLength(tapsLen), rates == nullptr ? kvrStatusOk : checkRates(*rates));
  Plan plan;
  const KvrStatus status = makePlan<T>(form, tapsLen, rates, &plan);
  if (status == kvrStatusOk) *size = static_cast<int>(plan.size);
  return status;
}

// Taps as a caller gives them: Taps::at is where, Taps::storeIn(state) stores them.
template <class X>
struct PlainTaps {
  const X* at;

  template <class T>
  KvrStatus storeIn(State<T>* state) const {
    return setTaps(state, at);
  }
};

// Makes a state in the caller's buffer. `dlyLine` may be null.
template <class S, class Taps, class D, class T = typename S::Element>
KvrStatus init(const Form& form, S** state, Taps taps, int tapsLen, const Rates* rates, const D* dlyLine,
               Kvr8u* buffer) {
  KVRS_CHECK(pointers(state, taps.at, buffer), tapsLength(tapsLen),
             rates == nullptr ? kvrStatusOk : checkRates(*rates));
  Plan plan;
  const KvrStatus status = makePlan<T>(form, tapsLen, rates, &plan);
  if (status != kvrStatusOk) return status;
  State<T>* made = build<T>(plan, buffer);
  // A filter whose transform cannot be had works without.
  taps.storeIn(made);
  setDelayLine(made, dlyLine);
  *state = static_cast<S*>(made);
  return kvrStatusOk;
}

// Makes a state on the heap.
template <class S, class Taps, class D, class T = typename S::Element>
KvrStatus initAlloc(const Form& form, S** state, Taps taps, int tapsLen, const Rates* rates,
                    const D* dlyLine) {
  KVRS_CHECK(pointers(state, taps.at), tapsLength(tapsLen),
             rates == nullptr ? kvrStatusOk : checkRates(*rates));
  Plan plan;
  KvrStatus status = makePlan<T>(form, tapsLen, rates, &plan);
  if (status != kvrStatusOk) return status;
  // A block is aligned to at least 32 bytes, so the state begins where the block does.
  auto* block = static_cast<Kvr8u*>(kvrMalloc(plan.size));
  if (block == nullptr) return kvrStatusOutOfMemory;
  status = init(form, state, taps, tapsLen, rates, dlyLine, block);
  if (status == kvrStatusOk) {
    (*state)->allocated = 1;
  } else {
    kvrFree(block);  // as when the number of threads has changed since
  }
  return status;
}

template <class T>
KvrStatus release(State<T>* state) {
  if (state->allocated == 1) kvrFree(state);
  return kvrStatusOk;
}

#define KVRS_FIR_STATE_EXTERN(T)                                                \
  extern template KvrStatus makePlan<T>(const Form&, int, const Rates*, Plan*); \
  extern template State<T>* build<T>(const Plan&, Kvr8u*);                      \
  extern template KvrStatus tapsChanged<T>(State<T>*);                          \
  extern template void fillBank<T>(const T*, T*, size_t, size_t)
KVRS_FIR_STATE_EXTERN(Kvr32f);
KVRS_FIR_STATE_EXTERN(Kvr32fc);
KVRS_FIR_STATE_EXTERN(Kvr64f);
KVRS_FIR_STATE_EXTERN(Kvr64fc);
KVRS_FIR_STATE_EXTERN(Kvr16s);
KVRS_FIR_STATE_EXTERN(Kvr16sc);
#undef KVRS_FIR_STATE_EXTERN

}  // namespace kvrs::fir

// The types that callers know: a filter by its taps and by its samples.
#define KVRS_FIR_STATE_TYPE(Name, T)  \
  struct Name : kvrs::fir::State<T> { \
    using Element = T;                \
  }
KVRS_FIR_STATE_TYPE(KvrsFIRState_32f, Kvr32f);
KVRS_FIR_STATE_TYPE(KvrsFIRState_32fc, Kvr32fc);
KVRS_FIR_STATE_TYPE(KvrsFIRState_64f, Kvr64f);
KVRS_FIR_STATE_TYPE(KvrsFIRState_64fc, Kvr64fc);
KVRS_FIR_STATE_TYPE(KvrsFIRState_32s, Kvr64f);
KVRS_FIR_STATE_TYPE(KvrsFIRState_16s, Kvr16s);
KVRS_FIR_STATE_TYPE(KvrsFIRState32f_16s, Kvr32f);
KVRS_FIR_STATE_TYPE(KvrsFIRState32fc_16sc, Kvr32fc);
KVRS_FIR_STATE_TYPE(KvrsFIRState64f_16s, Kvr64f);
KVRS_FIR_STATE_TYPE(KvrsFIRState64f_32f, Kvr64f);
KVRS_FIR_STATE_TYPE(KvrsFIRState64f_32s, Kvr64f);
KVRS_FIR_STATE_TYPE(KvrsFIRState64fc_16sc, Kvr64fc);
KVRS_FIR_STATE_TYPE(KvrsFIRState64fc_32fc, Kvr64fc);
KVRS_FIR_STATE_TYPE(KvrsFIRState64fc_32sc, Kvr64fc);
KVRS_FIR_STATE_TYPE(KvrsFIRState32s_16s, Kvr16s);
KVRS_FIR_STATE_TYPE(KvrsFIRState32sc_16sc, Kvr16sc);
#undef KVRS_FIR_STATE_TYPE

#endif
