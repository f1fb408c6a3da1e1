// The engines of single-rate FIR filters, for the sources that instantiate them: sums as they stand, and
// overlap-save by FFT. Both leave the state alike, so that any call may run on either.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_ENGINE_INL_H
#define KVRS_FILTERS_FIR_ENGINE_INL_H

#include <cstring>
#include <type_traits>

#include "filters/fir_kernel-inl.h"
#include "filters/fir_state.h"
#include "frame/threads.h"
#include "frame/unroll.h"

namespace kvrs::fir {

// Multiply-adds that are worth a thread: it takes some microseconds to wake, and a core does about
// 3,000 * kLanes of them in one.
template <class T>
inline constexpr uint64_t kWorkOfThread = uint64_t{kLanes<T>} << 16;

// The time of a block of N points, there and back, over N log2(N), in multiply-adds of the direct engine, which
// gains more from long vectors than the FFT does. Measured on blocks of 256 to 8,192 points: 4.9 to 5.9 with
// vectors of 128 bits, 6.2 to 7.8 with 256, 7.5 to 11.9 with 512. So blocks pay from about 66, 90 and 128 taps on.
inline constexpr uint64_t kTransformCost = kVectorBytes == 16 ? 6 : kVectorBytes == 32 ? 7 : 9;

// How many threads to use for so many multiply-adds on a piece of `len` samples.
template <class T>
int teamFor(const State<T>& state, size_t len, uint64_t work) {
  if (len < Sums<T>::kThreadsFromLen) return 1;
  const int allowed = threadCount();
  const int most = allowed < state.threads ? allowed : state.threads;
  const uint64_t useful = work / kWorkOfThread<T>;
  return useful < static_cast<uint64_t>(most) ? static_cast<int>(useful) : most;
}

// Samples come in the sums' type, or in another that a load() of theirs converts.
inline void load(const Kvr32f* from, Kvr32f* to, size_t len) {
  memcpy(to, from, len * sizeof *to);
}

// One sample of a filter that is too long for firShift.
template <class T>
__attribute__((noinline)) KvrStatus filterOneInRing(State<T>& state, T sample, T* dst) {
  const size_t tapsLen = static_cast<size_t>(state.tapsLen);
  const T* taps = state.tapsRev.present();
  T* line = state.dlyLine.present();
  const size_t pos = static_cast<size_t>(state.dlyPos);
  line[pos] = sample;
  line[pos + tapsLen] = sample;
  const size_t next = pos + 1 < tapsLen ? pos + 1 : 0;
  state.dlyPos = static_cast<int32_t>(next);
  // A load that covers the sample of a recent call and another would have to wait until that call's store is through.
  // So the newest samples are multiplied one by one.
  constexpr int kRecent = 8;
  const size_t old = tapsLen - kRecent;
  const T* window = line + next;
  T even = 0, odd = 0;
  unroll<kRecent / 2>([&](auto i) KVRS_UNROLLED {
    even += inRegister(window[old + 2 * i]) * taps[old + 2 * i];
    odd += inRegister(window[old + 2 * i + 1]) * taps[old + 2 * i + 1];
  });
  *dst = firDot(window, taps, old) + (even + odd);
  return kvrStatusOk;
}

template <class T>
KVRS_INLINE KvrStatus filterOne(State<T>& state, T sample, T* dst) {
  const size_t tapsLen = static_cast<size_t>(state.tapsLen);
  if (tapsLen > kShiftTaps<T>) return filterOneInRing(state, sample, dst);
  *dst = firShift(state.dlyLine.present(), state.tapsRev.present(), state.shiftKeep, tapsLen, sample);
  return kvrStatusOk;
}

// The same of whole vectors; short ones are not worth a call.
template <size_t N>
KVRS_INLINE void loadVectors(const Kvr32f* from, Kvr32f* to, size_t len) {
  const Lanes<Kvr32f, N> d;
  for (size_t i = 0; i < len; i += N) hn::StoreU(inRegister(hn::LoadU(d, from + i)), d, to + i);
}

// The direct engine. The first outputs, which reach back to samples of earlier calls, are computed from the
// delay line with the first new samples behind it, and all others straight from `src`. They come last, as loads
// that span old and new samples would wait for the stores of the new ones.
template <class D, class T>
void filterDirect(State<T>& state, const D* src, T* dst, size_t len) {
  constexpr size_t N = kLanes<T>;
  const size_t tapsLen = static_cast<size_t>(state.tapsLen), past = tapsLen - 1;
  const T* taps = state.kernelTaps();
  T* line = state.dlyLine.get();
  T* window = line + state.dlyPos;
  state.dlyPos = 0;
  if (len < past + N) {
    load(src, window + tapsLen, len);
    firKernel(window + 1, dst, len, taps, tapsLen);
    memmove(line, window + len, tapsLen * sizeof(T));
    return;
  }
  const size_t staged = roundUp(past, N);  // whole vectors, and less than len
  loadVectors<N>(src, window + tapsLen, staged);
  // No less than a vector, even if the staged outputs get some of them again.
  const size_t first = staged + N <= len ? staged : len - N;
  const size_t count = len - first;
  // The sums of an output have an order that depends on its place in a tile, so slices are cut between tiles.
  runTeam(teamFor(state, len, uint64_t{count} * tapsLen), [=](int thread, int team) {
    const Slice slice = sliceOf(count, N * fir_detail::kBlocks, thread, team);
    const size_t begin = first + slice.begin;
    if (slice.count > 0) firKernel(src + (begin - past), dst + begin, slice.count, taps, tapsLen);
  });
  if (staged > 0) firKernel(window + 1, dst, staged, taps, tapsLen);
  // With what comes before it in its first vector.
  const size_t kept = tapsLen + shiftPadding<T>(tapsLen);
  loadVectors<kFewShiftLanes<T>>(src + (len - kept), line + tapsLen - kept, kept);
}

// The work of the FFT engine on `len` samples, in multiply-adds of the direct one.
template <class T>
uint64_t costOfBlocks(const State<T>& state, size_t len) {
  const uint64_t fftLen = static_cast<uint64_t>(state.fftLen), tapsLen = static_cast<uint64_t>(state.tapsLen);
  const uint64_t step = fftLen - tapsLen + 1;
  uint64_t log = 0;
  while (fftLen >> (log + 1) != 0) ++log;
  return (len + step - 1) / step * fftLen * log * kTransformCost;
}

template <class T>
bool blocksAreFaster(const State<T>& state, size_t len) {
  return state.fftLen > 0 && costOfBlocks(state, len) < uint64_t{len} * static_cast<uint64_t>(state.tapsLen);
}

// The FFT engine: overlap-save (Stockham, High-speed convolution and correlation, 1966). With M = tapsLen - 1,
// N = fftLen and B = N - M, block b takes the N samples from b*B - M on, multiplies their transform by that of
// the taps and gets outputs b*B .. b*B + B-1 behind M that are wrapped around:
//
//   samples  |--M--|-------B-------|
//                            |--M--|-------B-------|
//   outputs        |---block 0-----|---block 1-----|
//
// Only block 0 has samples of earlier calls. `store` is called with a block's sums, the index of the first and
// their number.
template <class D, class T, class Store>
KvrStatus filterBlocks(State<T>& state, const D* src, size_t len, Store store) {
  const size_t tapsLen = static_cast<size_t>(state.tapsLen), past = tapsLen - 1;
  const size_t fftLen = static_cast<size_t>(state.fftLen), step = fftLen - past;
  const size_t blocks = (len + step - 1) / step;
  T* line = state.dlyLine.get();
  T* frames = state.frames.get();

  // A frame from `at` on: samples, and silence behind them.
  const auto fill = [=](T* frame, size_t at, const D* samples, size_t count) {
    load(samples, frame + at, count);
    memset(frame + at + count, 0, (fftLen - at - count) * sizeof(T));
  };
  // Block 0 is loaded before any other runs, so that the delay line can be brought up to date in peace.
  memcpy(frames, line + state.dlyPos + 1, past * sizeof(T));
  fill(frames, past, src, len < step ? len : step);
  state.dlyPos = 0;
  if (len < tapsLen) {
    memcpy(line, frames + (len - 1), tapsLen * sizeof(T));
  } else {
    load(src + (len - tapsLen), line, tapsLen);
  }

  const auto* spec = state.fftSpec.get();
  const T* fftTaps = state.fftTaps.get();
  const auto runBlock = [=, &state](size_t block, T* frame, Kvr8u* buffer) {
    const size_t begin = block * step, count = len - begin < step ? len - begin : step;
    const T* samples = frame;
    if (block > 0) {
      const D* from = src + (begin - past);
      if constexpr (std::is_same_v<D, T>) samples = from;
      if (count < step || samples == frame) {
        fill(frame, 0, from, past + count);
        samples = frame;
      }
    }
    KvrStatus status = Sums<T>::forward(samples, frame, spec, buffer);
    if (status == kvrStatusOk) status = Sums<T>::multiply(fftTaps, frame, state.fftLen);
    if (status == kvrStatusOk) status = Sums<T>::inverse(frame, spec, buffer);
    if (status == kvrStatusOk) store(frame + past, begin, count);
    return status;
  };

  KvrStatus* threadStatus = state.threadStatus.get();
  int team = teamFor(state, len, costOfBlocks(state, len));
  if (static_cast<size_t>(team) > blocks) team = static_cast<int>(blocks);
  int granted = 1;
  runTeam(team, [=, &state, &granted](int thread, int threads) {
    if (thread == 0) granted = threads;
    T* frame = frames + fftLen * static_cast<size_t>(thread);
    Kvr8u* buffer = state.fftBuffers.get();
    if (buffer != nullptr) buffer += static_cast<size_t>(state.fftBufSize) * static_cast<size_t>(thread);
    KvrStatus status = kvrStatusOk;
    for (size_t block = static_cast<size_t>(thread); block < blocks && status == kvrStatusOk;
         block += static_cast<size_t>(threads)) {
      status = runBlock(block, frame, buffer);
    }
    threadStatus[thread] = status;
  });
  KvrStatus worst = kvrStatusOk;
  for (int thread = 0; thread < granted; ++thread) {
    if (threadStatus[thread] < worst) worst = threadStatus[thread];
  }
  return worst;
}

// In place, by way of the scratch area: outputs must not overwrite samples that later ones still need. A piece
// runs by blocks only where enough is left behind it.
template <class T>
KvrStatus filterInPlace(State<T>& state, T* srcDst, size_t len) {
  T* scratch = state.scratch.get();
  while (len > 0) {
    const size_t count = len < kScratch ? len : kScratch;
    len -= count;
    if (len >= Sums<T>::kFftFromLen && blocksAreFaster(state, count)) {
      const KvrStatus status = filterBlocks(state, srcDst, count, [=](const T* sums, size_t at, size_t n) {
        memcpy(scratch + at, sums, n * sizeof(T));
      });
      if (status != kvrStatusOk) return status;
    } else {
      filterDirect(state, srcDst, scratch, count);
    }
    memcpy(srcDst, scratch, count * sizeof(T));
    srcDst += count;
  }
  return kvrStatusOk;
}

// From one array to another.
template <class T>
KvrStatus filter(State<T>& state, const T* src, T* dst, size_t len) {
  if (len >= Sums<T>::kFftFromLen && blocksAreFaster(state, len)) {
    return filterBlocks(state, src, len, [=](const T* sums, size_t at, size_t count) {
      memcpy(dst + at, sums, count * sizeof(T));
    });
  }
  filterDirect(state, src, dst, len);
  return kvrStatusOk;
}

}  // namespace kvrs::fir

#endif
