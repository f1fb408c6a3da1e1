// The engines of FIR filters, for the sources that instantiate them: sums as they stand, and overlap-save by FFT. Both
// leave the state alike, so that any call may run on either.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_ENGINE_INL_H
#define KVRS_FILTERS_FIR_ENGINE_INL_H

#include "filters/fir_dot-inl.h"
#include "filters/fir_format-inl.h"
#include "filters/fir_state.h"
#include "filters/ring.h"
#include "frame/threads.h"

namespace kvrs::fir {

template <class D, class T>
using ScaleOf = typename Format<D, T>::Scale;

// Whether samples and sums are what the filter works on.
template <class D, class T>
inline constexpr bool kPlain = std::is_same_v<D, T>&& std::is_same_v<D, FirSum<T>>;

// How many threads to use for so many multiply-adds on a piece of `len` samples.
template <class T>
int teamFor(const State<T>& state, size_t len, uint64_t work) {
  if (len < kThreadsFromLen<T>) return 1;
  const int allowed = threadCount();
  const int most = allowed < state.blocks.threads ? allowed : state.blocks.threads;
  const uint64_t useful = work / kWorkOfThread<T>;
  return useful < static_cast<uint64_t>(most) ? static_cast<int>(useful) : most;
}

// ---- One sample.

// One sample of a filter that is too long for firShift.
template <class T>
__attribute__((noinline)) FirSum<T> filterOneInRing(State<T>& state, T sample) {
  const T* taps = state.tapsRev.present();
  const T* window = pushTwice(state.dlyLine.present(), state.tapsLen, &state.dlyPos, sample);
  const size_t tapsLen = static_cast<size_t>(state.tapsLen);
  if constexpr (kShifts<T>) {
    // A load that covers the sample of a recent call and another would have to wait until that call's store is through.
    // So the newest samples are multiplied one by one.
    constexpr int kRecent = 8;
    const size_t old = tapsLen - kRecent;
    T even = 0, odd = 0;
    unroll<kRecent / 2>([&](auto i) KVRS_UNROLLED {
      even += inRegister(window[old + 2 * i]) * taps[old + 2 * i];
      odd += inRegister(window[old + 2 * i + 1]) * taps[old + 2 * i + 1];
    });
    return fir_detail::dot(window, taps, old) + (even + odd);
  } else {
    return fir_detail::dot(window, taps, tapsLen);
  }
}

template <class T>
KVRS_INLINE FirSum<T> filterOne(State<T>& state, T sample) {
  const size_t tapsLen = static_cast<size_t>(state.tapsLen);
  if constexpr (kShifts<T>) {
    if (tapsLen <= kShiftTaps<T>) {
      return firShift(state.dlyLine.present(), state.tapsRev.present(), tapsLen, sample);
    }
  }
  return filterOneInRing(state, sample);
}

template <class D, class T>
KVRS_INLINE KvrStatus oneOfAll(State<T>& state, D src, D* dst, const ScaleOf<D, T>& scale) {
  unaligned::put(Format<D, T>::one(filterOne(state, convertedTo<T>(src)), scale), dst);
  return kvrStatusOk;
}
template <class D, class T>
[[gnu::noinline]] KvrStatus oneOfMany(State<T>& state, D src, D* dst, const ScaleOf<D, T>& scale) {
  return oneOfAll<D, T>(state, src, dst, scale);
}

// kvrsFIROne, the arguments checked. A few taps take no more than some twenty instructions; those that long vectors want on
// entry to a function and on leaving it would be as many again.
template <class D, class T>
KVRS_INLINE KvrStatus one(State<T>& state, D src, D* dst, const ScaleOf<D, T>& scale) {
  if constexpr (kShifts<T> && kFewShiftLanes<T> < kShiftLanes<T>) {
    const size_t tapsLen = static_cast<size_t>(state.tapsLen);
    if (!shiftsByFew<T>(tapsLen)) return oneOfMany<D, T>(state, src, dst, scale);
    const T sum =
        firShiftByFew(state.dlyLine.present(), state.tapsRev.present(), tapsLen, convertedTo<T>(src));
    unaligned::put(Format<D, T>::one(sum, scale), dst);
    return kvrStatusOk;
  } else {
    return oneOfAll<D, T>(state, src, dst, scale);
  }
}

// ---- The direct engine.

// The same of whole vectors; short ones are not worth a call.
template <class T>
KVRS_INLINE void loadVectors(const T* from, T* to, size_t len) {
  const auto* in = reinterpret_cast<const FirLane<T>*>(from);
  auto* out = reinterpret_cast<FirLane<T>*>(to);
  const hn::ScalableTag<FirLane<T>> d;
  const size_t lanes = len * (sizeof(T) / sizeof(FirLane<T>));
  for (size_t i = 0; i < lanes; i += hn::MaxLanes(d))
    hn::StoreU(inRegister(hn::LoadU(d, in + i)), d, out + i);
}

// From one array to another, in the type that sums are of. The first outputs, which reach back to samples of earlier
// calls, are computed from the delay line with the first new samples behind it, and all others straight from `src`. They
// come last, as loads that span old and new samples would wait for the stores of the new ones.
template <class T>
void filterDirect(State<T>& state, const T* src, T* dst, size_t len) {
  constexpr size_t N = kFirLanes<T>;
  const size_t tapsLen = static_cast<size_t>(state.tapsLen), past = tapsLen - 1;
  const auto* taps = state.kernelTaps();
  T* line = state.dlyLine.get();
  T* window = line + state.dlyPos;
  state.dlyPos = 0;
  if (len < past + N) {
    if (past == 0) {
      firKernel(src, dst, len, taps, tapsLen);
      unaligned::put(unaligned::get(src + (len - 1)), line);
      return;
    }
    memcpy(window + tapsLen, src, len * sizeof(T));
    firKernel(window + 1, dst, len, taps, tapsLen);
    memmove(line, window + len, tapsLen * sizeof(T));
    return;
  }
  const size_t staged = roundUp(past, N);  // whole vectors, and less than len
  loadVectors(src, window + tapsLen, staged);
  // No less than a vector, even if the staged outputs get some of them again.
  const size_t first = staged + N <= len ? staged : len - N;
  const size_t count = len - first;
  // The sums of an output have an order that depends on its place in a tile, so slices are cut between tiles.
  runTeam(teamFor(state, len, uint64_t{count} * tapsLen), [=](int thread, int team) {
    const Slice slice = sliceOf(count, firTileOutputs<T>(), thread, team);
    const size_t begin = first + slice.begin;
    if (slice.count > 0) firKernel(src + (begin - past), dst + begin, slice.count, taps, tapsLen);
  });
  if (staged > 0) firKernel(window + 1, dst, staged, taps, tapsLen);
  memcpy(line, src + (len - tapsLen), tapsLen * sizeof(T));
}

// Outputs that are computed before they are converted, and samples that are converted before they are filtered.
inline constexpr size_t kSums = 512, kStaged = 2048;

template <class T>
size_t stageRoom(const State<T>& state) {
  const size_t room = static_cast<size_t>(state.stageLen);
  return room < kStaged ? room : kStaged;
}

// The delay line, its window moved to the front.
template <class T>
T* windowInFront(State<T>& state) {
  T* line = state.dlyLine.get();
  if (state.dlyPos != 0) memmove(line, line + state.dlyPos, static_cast<size_t>(state.tapsLen) * sizeof(T));
  state.dlyPos = 0;
  return line;
}

// The sums of `count` outputs, whose oldest sample is the first of `in`, as samples.
template <class D, class T>
void storeSums(const State<T>& state, const T* in, D* dst, size_t count, const ScaleOf<D, T>& scale) {
  const size_t tapsLen = static_cast<size_t>(state.tapsLen);
  const auto* taps = state.kernelTaps();
  alignas(64) FirSum<T> sums[kSums];
  for (size_t n = 0; n < count; n += kSums) {
    const size_t piece = count - n < kSums ? count - n : kSums;
    firKernel(in + n, sums, piece, taps, tapsLen);
    Format<D, T>::store(sums, dst + n, piece, scale);
  }
}

// Samples that are converted, or whose sums are: all go through the delay line. src may be dst.
template <class D, class T>
void filterStaged(State<T>& state, const D* src, D* dst, size_t len, const ScaleOf<D, T>& scale) {
  const size_t tapsLen = static_cast<size_t>(state.tapsLen), room = stageRoom(state);
  T* line = windowInFront(state);
  while (len > 0) {
    const size_t staged = len < room ? len : room;
    Format<D, T>::fetch(src, line + tapsLen, staged);
    storeSums(state, line + 1, dst, staged, scale);
    memmove(line, line + staged, tapsLen * sizeof(T));
    src += staged;
    dst += staged;
    len -= staged;
  }
}

// Samples that are what the filter works on, into another array: only those that meet samples of earlier calls go through the
// delay line. They have room behind it, and there are more of them.
template <class T>
void filterFromSource(State<T>& state, const T* src, T* dst, size_t len, const ScaleOf<T, T>& scale) {
  const size_t tapsLen = static_cast<size_t>(state.tapsLen), past = tapsLen - 1;
  T* line = windowInFront(state);
  memcpy(line + tapsLen, src, past * sizeof(T));
  storeSums(state, line + 1, dst, past, scale);
  storeSums(state, src, dst + past, len - past, scale);
  memcpy(line, src + (len - tapsLen), tapsLen * sizeof(T));
}

// ---- The FFT engine.

// Its work on `len` samples, in multiply-adds of the direct one.
template <class T>
uint64_t costOfBlocks(const State<T>& state, size_t len) {
  const uint64_t fftLen = static_cast<uint64_t>(state.blocks.fftLen),
                 tapsLen = static_cast<uint64_t>(state.tapsLen);
  const uint64_t step = fftLen - tapsLen + 1;
  return workOfBlocks<T>(fftLen, (len + step - 1) / step);
}

template <class T>
bool blocksAreFaster(const State<T>& state, size_t len) {
  if constexpr (BlockTransform<T>::kThere) {
    return state.blocks.fftLen > 0 &&
           costOfBlocks(state, len) < uint64_t{len} * static_cast<uint64_t>(state.tapsLen);
  } else {
    return false;
  }
}

// store(sums, begin, count) takes a block's sums.
template <class D, class T, class Store>
KvrStatus filterBlocks(State<T>& state, const D* src, size_t len, Store store) {
  const StateBlocks<T>& own = state.blocks;
  const size_t tapsLen = static_cast<size_t>(state.tapsLen), past = tapsLen - 1;
  const BlockConvolution<T> blocks{
      own.fftSpec.get(), own.fftTaps.get(),    static_cast<size_t>(own.fftLen),     past,
      own.frames.get(),  own.fftBuffers.get(), static_cast<size_t>(own.fftBufSize), own.threadStatus.get()};
  T* line = state.dlyLine.get();

  // A frame from `at` on: samples, and silence behind them.
  const auto fill = [&](T* frame, size_t at, const D* samples, size_t count) {
    Format<D, T>::fetch(samples, frame + at, count);
    memset(static_cast<void*>(frame + at + count), 0, (blocks.fftLen - at - count) * sizeof(T));
  };
  // Block 0 is loaded before any other runs, so that the delay line can be brought up to date in peace.
  const size_t step = blocks.step();
  memcpy(blocks.frames, line + state.dlyPos + 1, past * sizeof(T));
  fill(blocks.frames, past, src, len < step ? len : step);
  state.dlyPos = 0;
  if (len < tapsLen) {
    memcpy(line, blocks.frames + (len - 1), tapsLen * sizeof(T));
  } else {
    Format<D, T>::fetch(src + (len - tapsLen), line, tapsLen);
  }

  const auto fetch = [=](size_t begin, size_t count, T* frame) -> const T* {
    if (begin == 0) return frame;
    const D* from = src + (begin - past);
    if constexpr (std::is_same_v<D, T>) {
      if (count == step) return from;
    }
    fill(frame, 0, from, past + count);
    return frame;
  };
  return blocks.run(len, teamFor(state, len, costOfBlocks(state, len)), fetch, store);
}

// ---- The choice between them.

// kvrsFIR at a single rate, the arguments checked.
template <class D, class T>
KvrStatus filter(State<T>& state, const D* src, D* dst, size_t len, const ScaleOf<D, T>& scale) {
  if constexpr (BlockTransform<T>::kThere) {
    if (len >= kBlocksFromLen<T> && blocksAreFaster(state, len)) {
      return filterBlocks(state, src, len, [=](const T* sums, size_t at, size_t count) {
        Format<D, T>::store(sums, dst + at, count, scale);
      });
    }
  }
  if constexpr (kPlain<D, T>) {
    filterDirect(state, src, dst, len);
  } else {
    if constexpr (std::is_same_v<D, T>) {
      const size_t tapsLen = static_cast<size_t>(state.tapsLen);
      if (len >= 4 * tapsLen && tapsLen <= stageRoom(state)) {
        filterFromSource(state, src, dst, len, scale);
        return kvrStatusOk;
      }
    }
    filterStaged(state, src, dst, len, scale);
  }
  return kvrStatusOk;
}

// In place, by way of the scratch area: outputs must not overwrite samples that later ones still need. A piece runs by
// blocks only where enough is left behind it.
template <class D, class T>
KvrStatus filterInPlace(State<T>& state, D* srcDst, size_t len, const ScaleOf<D, T>& scale) {
  if constexpr (FirElement<T>::kInteger) {
    filterStaged(state, srcDst, srcDst, len, scale);
    return kvrStatusOk;
  } else {
    T* scratch = state.scratch.get();
    while (len > 0) {
      const size_t count = len < kScratch ? len : kScratch;
      len -= count;
      if (len >= kBlocksFromLen<T> && blocksAreFaster(state, count)) {
        if constexpr (BlockTransform<T>::kThere) {
          const KvrStatus status = filterBlocks(
              state, srcDst, count,
              [=](const T* sums, size_t at, size_t n) { memcpy(scratch + at, sums, n * sizeof(T)); });
          if (status != kvrStatusOk) return status;
          Format<D, T>::store(scratch, srcDst, count, scale);
        }
      } else if constexpr (kPlain<D, T>) {
        filterDirect(state, srcDst, scratch, count);
        memcpy(srcDst, scratch, count * sizeof(T));
      } else {
        filterStaged(state, srcDst, srcDst, count, scale);
      }
      srcDst += count;
    }
    return kvrStatusOk;
  }
}

}  // namespace kvrs::fir

#endif
