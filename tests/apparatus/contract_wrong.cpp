// Faults that the contract tests and the tests of contexts must see.
// SPDX-License-Identifier: MIT
#include <cstring>

#include "kvrs.h"
#include "kvrscore.h"
#include "tests/apparatus/wrong.h"

using namespace kvrs::wrong;

namespace {
const Fault orNegative("kvrsOr_32u takes a negative length", "Contract.Lengths");
const Fault orNull("kvrsOr_32u takes a null pointer", "Contract.NullPointers");
const Fault orWritesFirst("kvrsOr_32u writes ahead of its checks", "Contract.NullPointers");
}  // namespace

KvrStatus kvrsOr_32u(const Kvr32u* src1, const Kvr32u* src2, Kvr32u* dst, int len) noexcept {
  static const auto or32 = right<decltype(kvrsOr_32u)>("kvrsOr_32u");
  if (orNegative.isOn() && src1 && src2 && dst && len < 0) return kvrStatusOk;
  if (orNull.isOn() && src1 && !src2 && dst && len > 0) return kvrStatusOk;
  if (orWritesFirst.isOn() && dst) spoil(dst, 0);
  return or32(src1, src2, dst, len);
}

namespace {
const Fault shiftValue("kvrsLShiftC_16s takes a negative count", "Contract.Values");
const Fault shiftStatus("kvrsLShiftC_16s returns another status for a negative count", "Contract.Values");
const Fault shiftOrder("kvrsLShiftC_16s tests the count before the pointers", "Contract.Values");
}  // namespace

KvrStatus kvrsLShiftC_16s(const Kvr16s* src, int val, Kvr16s* dst, int len) noexcept {
  static const auto shift = right<decltype(kvrsLShiftC_16s)>("kvrsLShiftC_16s");
  if (shiftOrder.isOn() && val < 0) return kvrStatusBadShift;
  const KvrStatus status = shift(src, val, dst, len);
  if (shiftValue.isOn() && status == kvrStatusBadShift) return kvrStatusOk;
  return shiftStatus.isOn() && status == kvrStatusBadShift ? kvrStatusBadArg : status;
}

namespace {
const Fault fftWord("kvrsFFTFwd_CToC_32fc does not look at the word of its context", "Contract.Contexts");
const Fault fftKind("kvrsFFTFwd_CToC_32fc takes a record of another kind", "Contract.ContextsOfOtherKinds");
const Fault fftLate("kvrsFFTFwd_CToC_32fc looks at its context last", "Contract.Contexts");
const Fault fftHides("kvrsFFTFwd_CToC_32fc hides that memory was refused", "Contract.FailingMemory");
const Fault fftWrites("kvrsFFTFwd_CToC_32fc writes, though memory was refused", "Contract.FailingMemory");
const Fault fftBin("kvrsFFTFwd_CToC_32fc has one wrong bin", "FftAccuracy/0.EveryOrderAndFlag");
}  // namespace

KvrStatus kvrsFFTFwd_CToC_32fc(const Kvr32fc* src, Kvr32fc* dst, const KvrsFFTSpec_C_32fc* spec,
                               Kvr8u* buffer) noexcept {
  static const auto fft = right<decltype(kvrsFFTFwd_CToC_32fc)>("kvrsFFTFwd_CToC_32fc");
  if (fftLate.isOn() && spec && (!src || !dst)) return kvrStatusNullPointer;
  const KvrStatus status = fft(src, dst, spec, buffer);
  if (fftWord.isOn() && status == kvrStatusContextMismatch) return kvrStatusOk;
  if (fftKind.isOn() && status == kvrStatusContextMismatch) {
    uint32_t word;
    memcpy(&word, spec, sizeof word);
    return word > 3 && word < 10 ? kvrStatusOk : status;  // of other FFTs alone
  }
  if (status == kvrStatusOutOfMemory) {
    if (fftHides.isOn()) return kvrStatusOk;
    if (fftWrites.isOn()) spoil(dst, 1);
  }
  if (fftBin.isOn() && status == kvrStatusOk) dst[1].re += 1;
  return status;
}

namespace {
const Fault allocLeaks("kvrsFFTInitAlloc_C_32fc leaks where memory is refused", "Contract.FailingMemory");
const Fault allocWrites("kvrsFFTInitAlloc_C_32fc writes, though it refuses its order", "Contract.Values");
}  // namespace

KvrStatus kvrsFFTInitAlloc_C_32fc(KvrsFFTSpec_C_32fc** spec, int order, int flag,
                                  KvrHintAlgorithm hint) noexcept {
  static const auto alloc = right<decltype(kvrsFFTInitAlloc_C_32fc)>("kvrsFFTInitAlloc_C_32fc");
  void* const block = allocLeaks.isOn() ? kvrMalloc(32) : nullptr;
  const KvrStatus status = alloc(spec, order, flag, hint);
  if (status == kvrStatusOk) kvrFree(block);
  if (allocWrites.isOn() && status == kvrStatusBadFftOrder) *spec = nullptr, spoil(spec, 1);
  return status;
}

namespace {
const Fault firLeaks("kvrsFIRInitAlloc_32f leaks", "Contract.ValidCallsSucceed");
}

KvrStatus kvrsFIRInitAlloc_32f(KvrsFIRState_32f** state, const Kvr32f* taps, int tapsLen,
                               const Kvr32f* dlyLine) noexcept {
  static const auto alloc = right<decltype(kvrsFIRInitAlloc_32f)>("kvrsFIRInitAlloc_32f");
  const KvrStatus status = alloc(state, taps, tapsLen, dlyLine);
  if (firLeaks.isOn() && status == kvrStatusOk) kvrMalloc(32);
  return status;
}

namespace {
const Fault firState("kvrsFIR_32f forgets its state between calls", "Fir.StreamsInPieces");
}

KvrStatus kvrsFIR_32f(const Kvr32f* src, Kvr32f* dst, int len, KvrsFIRState_32f* state) noexcept {
  static const auto fir = right<decltype(kvrsFIR_32f)>("kvrsFIR_32f");
  const KvrStatus status = fir(src, dst, len, state);
  if (firState.isOn() && status == kvrStatusOk) kvrsFIRSetDlyLine_32f(state, nullptr);
  return status;
}
