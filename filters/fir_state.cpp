// FIR states: sizes, layout, tables.
// SPDX-License-Identifier: MIT
#include "filters/fir_state.h"

#include <climits>
#include <type_traits>

#include "filters/fir_dot-inl.h"
#include "filters/fir_phases.h"

namespace kvrs::fir {
namespace {

int floorLog2(unsigned value) {
  int log = 0;
  while (value >>= 1) ++log;
  return log;
}

constexpr uint64_t up16(uint64_t bytes) {
  return (bytes + 15) / 16 * 16;
}
constexpr uint64_t count(int value) {
  return static_cast<uint64_t>(value);
}

// What a block convolution of elements of so many bytes takes.
uint64_t blockBytes(const Plan& plan, uint64_t elementBytes) {
  const uint64_t frame = up16(elementBytes * count(plan.fftLen)), threads = count(plan.threads);
  return (count(plan.workSize) + frame) * threads + count(plan.specSize) + count(plan.initBufSize) + frame +
         up16(4 * threads);
}

// A filter of 16-bit samples whose taps take so many bytes.
uint64_t integerSize(uint64_t tapsLen, uint64_t tapBytes) {
  return up16(tapBytes * tapsLen) + 80 + up16(2 * (2 * tapsLen + (tapsLen + 11) / 8 * 8 + 4)) +
         64 * ((tapsLen + 11) / 8) + 16400;
}

}  // namespace

uint64_t size_32f(const Plan& plan) {
  const uint64_t taps = count(plan.tapsLen);
  return blockBytes(plan, 4) + up16(4 * taps) + up16(12 * taps + 16) +
         64 * ((taps + 6) / 4 + (4 * taps + 15) / 16) + 16 * count(plan.threads) + 16496;
}

uint64_t size_32fc(const Plan& plan) {
  const uint64_t taps = count(plan.tapsLen);
  return blockBytes(plan, 8) + up16(8 * taps) + up16(24 * taps + 32) + 12 * up16(8 * taps) + 96 +
         64 * count(plan.threads) + 32832;
}

uint64_t size_64f(const Plan& plan) {
  const uint64_t taps = count(plan.tapsLen);
  return blockBytes(plan, 8) + up16(8 * taps) + up16(24 * taps + 32) + 32 * ((taps + 2) / 2) +
         16 * count(plan.threads) + 32880;
}

uint64_t size_64fc(const Plan& plan) {
  const uint64_t taps = count(plan.tapsLen);
  return blockBytes(plan, 16) + 16 * (taps + (48 * taps + 79) / 16) + 32 * taps + 65664;
}

uint64_t size_32s(const Plan& plan) {
  const uint64_t taps = count(plan.tapsLen);
  return 16 * count(plan.threads) + 32752 + up16(8 * taps) + 112 + up16(24 * taps + 32) +
         32 * ((8 * taps + 15) / 16) + 15;
}

uint64_t size_16s(const Plan& plan) {
  return integerSize(count(plan.tapsLen), 2);
}

uint64_t size32s_16s(const Plan& plan) {
  return integerSize(count(plan.tapsLen), 4);
}

uint64_t size32sc_16sc(const Plan& plan) {
  const uint64_t taps = count(plan.tapsLen);
  return up16(8 * taps) + 80 + 16 * taps + up16(12 * taps + 16) + 16400;
}

uint64_t sizeStream_16s(const Plan& plan) {
  const uint64_t taps = count(plan.tapsLen);
  return up16(2 * taps) + 80 + (taps == 64 ? 1136 : taps == 16 ? 384 : 0) + 16;
}

namespace {

// A filter at two rates. The sizes of real 32-bit and 16-bit filters are part of the interface, and the others follow them.
template <class T>
uint64_t multiSize(const Plan& plan) {
  const uint64_t taps = count(plan.tapsLen), up = count(plan.rates.upFactor),
                 down = count(plan.rates.downFactor), line = count(plan.dlyLen);
  const uint64_t padded = (taps + 3 * down + up - 1) / up * up;
  uint64_t staged = 4 * down * (line / (4 * down) + 1) + 1;
  if constexpr (FirElement<T>::kInteger) {
    constexpr uint64_t kParts = sizeof(T) / 2;
    return kParts * (up16(4 * taps) + 32 * padded + up16(8 * padded) + up16(2 * (line + staged) + 2)) +
           up16(16 * up + 4) + 96;
  } else {
    // Outputs come in fours of every phase.
    const uint64_t outputs = (down + line - 1) / down;
    staged += (4 - outputs % 4) % 4 * down;
    constexpr uint64_t kWords = sizeof(T) / 4;
    return kWords * (16 * ((4 * taps + 15) / 16 + padded) + 4 * (8 * padded > 4096 ? 8 * padded : 4096) +
                     up16(4 * (line + staged) + 4)) +
           up16(16 * up + 4) + 112;
  }
}

// Tables that vectors run over start with a cache line.
constexpr size_t kLine = 64;
constexpr size_t kRecordAlignment = 16;

template <class T>
KvrStatus transformTaps(State<T>* state) {
  StateBlocks<T>& blocks = state->blocks;
  if constexpr (BlockTransform<T>::kThere) {
    const size_t tapsLen = static_cast<size_t>(state->tapsLen), fftLen = static_cast<size_t>(blocks.fftLen);
    T* fftTaps = blocks.fftTaps.get();
    reverse(state->tapsRev.get(), fftTaps, tapsLen);
    memset(static_cast<void*>(fftTaps + tapsLen), 0, (fftLen - tapsLen) * sizeof(T));
    const KvrStatus status =
        BlockTransform<T>::forward(fftTaps, fftTaps, blocks.fftSpec.get(), blocks.fftBuffers.get());
    if (status != kvrStatusOk) {
      BlockTransform<T>::free(blocks.fftSpec.get());
      blocks.fftSpec.set(nullptr);
      blocks.fftLen = -1;
    }
    return status;
  } else {
    return kvrStatusOk;
  }
}

// The tables of the block convolution, and its FFT context.
template <class T>
void buildBlocks(const Plan& plan, Carver& carver, StateBlocks<T>& blocks) {
  blocks.threads = plan.threads;
  blocks.fftLen = -1;
  blocks.fftBufSize = plan.workSize;
  blocks.fftSpec.set(nullptr);
  blocks.fftTaps.set(nullptr);
  blocks.frames.set(nullptr);
  blocks.fftBuffers.set(nullptr);
  blocks.threadStatus.set(nullptr);
  if constexpr (BlockTransform<T>::kThere) {
    if (plan.fftLen == 0) return;
    const size_t threads = static_cast<size_t>(plan.threads), fftLen = static_cast<size_t>(plan.fftLen);
    blocks.fftTaps.set(carver.take<T>(fftLen, kLine));
    blocks.frames.set(carver.take<T>(fftLen * threads, kLine));
    auto* buffers = carver.take<Kvr8u>(static_cast<size_t>(plan.workSize) * threads, kLine);
    if (plan.workSize != 0) blocks.fftBuffers.set(buffers);
    auto* specMem = carver.take<Kvr8u>(static_cast<size_t>(plan.specSize), kLine);
    auto* initBuf = carver.take<Kvr8u>(static_cast<size_t>(plan.initBufSize), kBufferAlignment);
    blocks.threadStatus.set(carver.take<KvrStatus>(threads));
    typename BlockTransform<T>::Spec* spec;
    if (BlockTransform<T>::init(&spec, plan.order, specMem, initBuf) == kvrStatusOk) {
      blocks.fftSpec.set(spec);
      blocks.fftLen = plan.fftLen;
    }
  }
}

}  // namespace

template <class T>
KvrStatus makePlan(const Form& form, int tapsLen, const Rates* rates, Plan* plan) {
  *plan = {};
  plan->tapsLen = plan->dlyLen = tapsLen;
  plan->threads = threadCount();
  if (rates != nullptr && !isSingleRate<T>(*rates)) {
    plan->word = form.multi;
    plan->rates = *rates;
    plan->dlyLen = (tapsLen - 1) / rates->upFactor + 1;
    plan->size = multiSize<T>(*plan);
  } else {
    plan->word = form.single;
    if constexpr (!FirElement<T>::kInteger) {
      const int order = floorLog2(static_cast<unsigned>(tapsLen)) + 2;
      if (tapsLen >= form.blocksFromTaps &&
          BlockTransform<T>::getSize(order, &plan->specSize, &plan->initBufSize, &plan->workSize) ==
              kvrStatusOk) {
        plan->order = order;
        plan->fftLen = 1 << order;
      }
    }
    plan->size = form.size(*plan);
  }
  return check::require(plan->size <= INT_MAX, kvrStatusBadTapsLength);
}

template <class T>
State<T>* build(const Plan& plan, Kvr8u* buffer) {
  const size_t tapsLen = static_cast<size_t>(plan.tapsLen), dlyLen = static_cast<size_t>(plan.dlyLen);
  const bool multi = plan.rates.upFactor > 0;
  Carver carver(buffer);
  auto* state = carver.take<State<T>>(1, kRecordAlignment);
  memset(static_cast<void*>(state), 0, sizeof *state);
  state->idWord = plan.word;
  state->tapsLen = plan.tapsLen;
  state->dlyLen = plan.dlyLen;
  state->rates = plan.rates;
  const size_t padding = multi ? 0 : shiftPadding<T>(tapsLen);
  T* taps = carver.take<T>(padding + tapsLen, kRecordAlignment);
  memset(static_cast<void*>(taps), 0, padding * sizeof(T));
  state->tapsRev.set(taps + padding);
  if (multi) {
    state->bank.set(carver.take<T>(tapsLen, kLine));
    if (hasPhases(plan.rates, plan.tapsLen)) {
      state->tapsTable.set(carver.take<FirLane<T>>(kTapLanes<T> * tapsLen, kRecordAlignment));
    }
  } else if constexpr (kHasTapTable<T>) {
    state->tapsTable.set(carver.take<FirLane<T>>(kTapLanes<T> * tapsLen, kRecordAlignment));
  }
  if constexpr (!FirElement<T>::kInteger) buildBlocks<T>(plan, carver, state->blocks);
  // The window at its farthest, with samples staged behind it, and then results in place. What is left of the block is
  // theirs.
  T* line = carver.take<T>(padding + dlyLen, kRecordAlignment) + padding;
  state->dlyLine.set(line);
  const size_t room = plan.size - static_cast<size_t>(reinterpret_cast<Kvr8u*>(line + dlyLen) - buffer);
  state->stageLen = static_cast<int32_t>(room / sizeof(T));
  if (!multi) {
    // With one tap nothing is staged. The results begin with a cache line where there is room for that.
    T* behind = carver.take<T>(dlyLen == 1 ? 1 : 2 * dlyLen + kFirLanes<T>);
    T* scratch = alignUp(dlyLen == 1 ? behind + 1 : behind + 2 * dlyLen + kFirLanes<T>, kRecordAlignment);
    T* onLine = alignUp(scratch, kLine);
    const bool fits = reinterpret_cast<Kvr8u*>(onLine + kScratch) <= buffer + plan.size;
    state->scratch.set(fits ? onLine : scratch);
  }
  return state;
}

template <class T>
KvrStatus tapsChanged(State<T>* state) {
  const size_t tapsLen = static_cast<size_t>(state->tapsLen);
  const T* taps = state->tapsRev.get();
  T* bank = state->bank.get();
  FirLane<T>* table = state->tapsTable.get();
  if (bank != nullptr) {
    fillBank(taps, bank, tapsLen, static_cast<size_t>(state->rates.upFactor));
    if (table != nullptr) fillPhases(taps, table, state->tapsLen, state->rates, firstTime(*state));
  } else if (table != nullptr) {
    fillTapTable(taps, table, tapsLen);
  }
  if constexpr (!FirElement<T>::kInteger) {
    if (state->blocks.fftLen > 0) return transformTaps(state);
  }
  return kvrStatusOk;
}

template <class T>
void fillBank(const T* tapsRev, T* bank, size_t tapsLen, size_t upFactor) {
  for (size_t phase = 0; phase < upFactor && phase < tapsLen; ++phase) {
    const size_t taps = (tapsLen - 1 - phase) / upFactor + 1;
    const T* oldest = tapsRev + (tapsLen - 1 - phase - (taps - 1) * upFactor);
    for (size_t i = 0; i < taps; ++i) *bank++ = oldest[i * upFactor];
  }
}

#define KVRS_FIR_STATE(T)                                                \
  template KvrStatus makePlan<T>(const Form&, int, const Rates*, Plan*); \
  template State<T>* build<T>(const Plan&, Kvr8u*);                      \
  template KvrStatus tapsChanged<T>(State<T>*);                          \
  template void fillBank<T>(const T*, T*, size_t, size_t)
KVRS_FIR_STATE(Kvr32f);
KVRS_FIR_STATE(Kvr32fc);
KVRS_FIR_STATE(Kvr64f);
KVRS_FIR_STATE(Kvr64fc);
KVRS_FIR_STATE(Kvr16s);
KVRS_FIR_STATE(Kvr16sc);
#undef KVRS_FIR_STATE

}  // namespace kvrs::fir
