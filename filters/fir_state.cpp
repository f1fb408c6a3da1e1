// FIR states: sizes, construction, release, taps and delay lines.
// SPDX-License-Identifier: MIT
#include "filters/fir_state.h"

#include <climits>

#include "frame/threads.h"

namespace kvrs::fir {
namespace {

int floorLog2(unsigned value) {
  int log = 0;
  while (value >>= 1) ++log;
  return log;
}

// Tables that vectors run over start with a cache line. The stated size has room for it, as it counts four
// copies of the reversed taps and a wider delay line than this layout has.
constexpr size_t kLine = 64;
constexpr size_t kRecordAlignment = 16;

template <class T>
struct Block {
  State<T>* state;
  T *tapsRev, *tapsBcast, *dlyLine, *scratch;
  Kvr8u *specMem, *initBuf;
  T *fftTaps, *frames;
  Kvr8u* fftBuffers;
  KvrStatus* threadStatus;
};

template <class T>
Block<T> layOut(const Plan& plan, Kvr8u* buffer) {
  const size_t tapsLen = static_cast<size_t>(plan.tapsLen), threads = static_cast<size_t>(plan.threads);
  const size_t fftLen = static_cast<size_t>(plan.fftLen);
  Carver carver(buffer);
  Block<T> block{};
  block.state = carver.take<State<T>>(1, kRecordAlignment);
  const size_t padding = shiftPadding<T>(tapsLen);
  block.tapsRev = carver.take<T>(padding + tapsLen, kRecordAlignment) + padding;
  if (kTapCopies < T >> 1) block.tapsBcast = carver.take<T>(kTapCopies<T> * tapsLen, kRecordAlignment);
  // Window and staging area at their farthest.
  block.dlyLine = carver.take<T>(padding + 3 * tapsLen + kLanes<T>, kRecordAlignment) + padding;
  block.scratch = carver.take<T>(kScratch, kLine);
  if (fftLen != 0) {
    block.fftTaps = carver.take<T>(fftLen, kLine);
    block.frames = carver.take<T>(fftLen * threads, kLine);
    block.fftBuffers = carver.take<Kvr8u>(static_cast<size_t>(plan.workSize) * threads, kLine);
    block.specMem = carver.take<Kvr8u>(static_cast<size_t>(plan.specSize), kLine);
    block.initBuf = carver.take<Kvr8u>(static_cast<size_t>(plan.initBufSize), kBufferAlignment);
    block.threadStatus = carver.take<KvrStatus>(threads);
  }
  return block;
}

template <class T>
KvrStatus transformTaps(State<T>* state, const T* taps) {
  const size_t tapsLen = static_cast<size_t>(state->tapsLen), fftLen = static_cast<size_t>(state->fftLen);
  T* fftTaps = state->fftTaps.get();
  memcpy(fftTaps, taps, tapsLen * sizeof(T));
  memset(fftTaps + tapsLen, 0, (fftLen - tapsLen) * sizeof(T));
  return Sums<T>::forward(fftTaps, fftTaps, state->fftSpec.get(), fftBufferOf(*state, 0));
}

}  // namespace

template <class T>
KvrStatus plan(int tapsLen, Plan* plan) {
  *plan = {};
  plan->tapsLen = tapsLen;
  plan->threads = threadCount();
  if (tapsLen >= Sums<T>::kFftFromTaps) {
    plan->order = floorLog2(static_cast<unsigned>(tapsLen)) + 2;
    if (Sums<T>::fftGetSize(plan->order, &plan->specSize, &plan->initBufSize, &plan->workSize) ==
        kvrStatusOk) {
      plan->fftLen = 1 << plan->order;
    }
  }
  const auto count = [](int value) { return static_cast<uint64_t>(value); };
  const uint64_t size =
      Sums<T>::stateSize(count(tapsLen), count(plan->fftLen), count(plan->specSize), count(plan->initBufSize),
                         count(plan->workSize), count(plan->threads));
  plan->size = static_cast<int>(size);
  return check::require(size <= INT_MAX, kvrStatusBadTapsLength);
}

template <class T>
State<T>* build(const Plan& plan, const T* taps, const T* dlyLine, Kvr8u* buffer) {
  const Block<T> block = layOut<T>(plan, buffer);
  State<T>* state = block.state;
  state->idWord = 0;
  state->allocated = 0;
  state->tapsLen = plan.tapsLen;
  state->dlyLen = plan.tapsLen;
  state->dlyPos = 0;
  state->threads = plan.threads;
  state->tapsRev.set(block.tapsRev);
  state->tapsBcast.set(block.tapsBcast);
  state->dlyLine.set(block.dlyLine);
  state->scratch.set(block.scratch);
  const size_t padding = shiftPadding<T>(static_cast<size_t>(plan.tapsLen));
  memset(state->shiftKeep, 0, sizeof state->shiftKeep);
  memset(state->shiftKeep + padding + 1, 0xFF, (kShiftLanes<T> - 1 - padding) * sizeof(T));
  state->fftLen = -1;
  state->fftBufSize = plan.workSize;
  state->fftSpec.set(nullptr);
  state->fftTaps.set(block.fftTaps);
  state->frames.set(block.frames);
  state->fftBuffers.set(plan.workSize == 0 ? nullptr : block.fftBuffers);
  state->threadStatus.set(block.threadStatus);
  // A filter whose transform cannot be had works without.
  typename Sums<T>::Spec* spec;
  if (plan.fftLen != 0 && Sums<T>::fftInit(&spec, plan.order, block.specMem, block.initBuf) == kvrStatusOk) {
    state->fftSpec.set(spec);
    state->fftLen = plan.fftLen;
  }
  setTaps(state, taps);
  setDelayLine(state, dlyLine);
  return state;
}

template <class T>
KvrStatus setTaps(State<T>* state, const T* taps) {
  const size_t tapsLen = static_cast<size_t>(state->tapsLen);
  T* tapsRev = state->tapsRev.get();
  T* tapsBcast = state->tapsBcast.get();
  const size_t padding = shiftPadding<T>(tapsLen);
  memset(tapsRev - padding, 0, padding * sizeof(T));
  reverse(taps, tapsRev, tapsLen);
  if (kTapCopies < T >> 1) {
    for (size_t i = 0; i < kTapCopies<T> * tapsLen; ++i) tapsBcast[i] = tapsRev[i / kTapCopies<T>];
  }
  if (state->fftLen < 0) return kvrStatusOk;
  const KvrStatus status = transformTaps(state, taps);
  if (status != kvrStatusOk) {
    Sums<T>::fftFree(state->fftSpec.get());
    state->fftSpec.set(nullptr);
    state->fftLen = -1;
  }
  return status;
}

template <class T>
void getTaps(const State<T>* state, T* taps) {
  reverse(state->tapsRev.get(), taps, static_cast<size_t>(state->tapsLen));
}

template KvrStatus plan<Kvr32f>(int, Plan*);
template State<Kvr32f>* build<Kvr32f>(const Plan&, const Kvr32f*, const Kvr32f*, Kvr8u*);
template KvrStatus setTaps<Kvr32f>(State<Kvr32f>*, const Kvr32f*);
template void getTaps<Kvr32f>(const State<Kvr32f>*, Kvr32f*);

namespace {

template <class T>
KvrStatus getStateSize(int tapsLen, int* size) {
  KVRS_CHECK(pointers(size), tapsLength(tapsLen));
  Plan planned;
  const KvrStatus status = plan<T>(tapsLen, &planned);
  if (status == kvrStatusOk) *size = planned.size;
  return status;
}

template <class S, class T>
KvrStatus init(uint32_t word, S** state, const T* taps, int tapsLen, const T* dlyLine, Kvr8u* buffer) {
  KVRS_CHECK(pointers(state, taps, buffer), tapsLength(tapsLen));
  Plan planned;
  const KvrStatus status = plan<T>(tapsLen, &planned);
  if (status != kvrStatusOk) return status;
  *state = static_cast<S*>(build(planned, taps, dlyLine, buffer));
  (*state)->idWord = word;
  return kvrStatusOk;
}

template <class S, class T>
KvrStatus initAlloc(uint32_t word, S** state, const T* taps, int tapsLen, const T* dlyLine) {
  KVRS_CHECK(pointers(state, taps), tapsLength(tapsLen));
  Plan planned;
  const KvrStatus status = plan<T>(tapsLen, &planned);
  if (status != kvrStatusOk) return status;
  // A block is aligned to at least 32 bytes, so the state begins where the block does.
  auto* block = static_cast<Kvr8u*>(kvrMalloc(static_cast<size_t>(planned.size)));
  if (block == nullptr) return kvrStatusOutOfMemory;
  *state = static_cast<S*>(build(planned, taps, dlyLine, block));
  (*state)->idWord = word;
  (*state)->allocated = 1;
  return kvrStatusOk;
}

template <class S>
KvrStatus release(S* state) {
  if (state->allocated == 1) kvrFree(state);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::fir

using namespace kvrs;

KvrStatus kvrsFIRGetStateSize_32f(int tapsLen, int* size) noexcept {
  return fir::getStateSize<Kvr32f>(tapsLen, size);
}

KvrStatus kvrsFIRInit_32f(KvrsFIRState_32f** state, const Kvr32f* taps, int tapsLen, const Kvr32f* dlyLine,
                          Kvr8u* buffer) noexcept {
  return fir::init(fir::kWord_32f, state, taps, tapsLen, dlyLine, buffer);
}

KvrStatus kvrsFIRInitAlloc_32f(KvrsFIRState_32f** state, const Kvr32f* taps, int tapsLen,
                               const Kvr32f* dlyLine) noexcept {
  return fir::initAlloc(fir::kWord_32f, state, taps, tapsLen, dlyLine);
}

KvrStatus kvrsFIRFree_32f(KvrsFIRState_32f* state) noexcept {
  KVRS_CHECK(context(state, fir::kWord_32f, fir::kWordMR_32f, fir::kWordStream_32f, fir::kWordMRStream_32f));
  return fir::release(state);
}

KvrStatus kvrsFIRGetTaps_32f(const KvrsFIRState_32f* state, Kvr32f* taps) noexcept {
  KVRS_CHECK(pointers(state, taps), context(state, fir::kWord_32f, fir::kWordMR_32f));
  fir::getTaps(state, taps);
  return kvrStatusOk;
}

KvrStatus kvrsFIRSetTaps_32f(const Kvr32f* taps, KvrsFIRState_32f* state) noexcept {
  KVRS_CHECK(pointers(taps, state), context(state, fir::kWord_32f));
  return fir::setTaps(state, taps);
}

KvrStatus kvrsFIRGetDlyLine_32f(const KvrsFIRState_32f* state, Kvr32f* dlyLine) noexcept {
  KVRS_CHECK(pointers(state, dlyLine), context(state, fir::kWord_32f, fir::kWordMR_32f));
  fir::getDelayLine(state, dlyLine);
  return kvrStatusOk;
}

KvrStatus kvrsFIRSetDlyLine_32f(KvrsFIRState_32f* state, const Kvr32f* dlyLine) noexcept {
  KVRS_CHECK(context(state, fir::kWord_32f, fir::kWordMR_32f));
  fir::setDelayLine(state, dlyLine);
  return kvrStatusOk;
}
