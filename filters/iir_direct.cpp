// Recursive filters without a context: 16-bit samples and taps, 32-bit delay lines.
// SPDX-License-Identifier: MIT
#include "filters/iir_engine.h"
#include "frame/saturate.h"

namespace kvrs::iir {
namespace {

// Taps of one direct form or one section: b[0] .. b[N], shift, a[1] .. a[N].
struct ShiftedTaps {
  ShiftedTaps(const Kvr16s* taps, size_t order) : taps_(taps), order_(order) {}

  int shift() const { return at(taps_, order_ + 1); }
  int b(size_t k) const { return at(taps_, k); }
  int a(size_t k) const { return at(taps_, order_ + 1 + k); }

 private:
  const Kvr16s* taps_;
  size_t order_;
};

KvrStatus tapScale(int shift) {
  return check::require(shift >= 0, kvrStatusBadTapScale);
}

// One sample through one section, in integers that wrap around.
Kvr32s stepIntegers(const ShiftedTaps& taps, size_t order, Kvr32s sample, Kvr32s* dlyLine) {
  const auto product = [](int tap, uint32_t factor) { return static_cast<uint32_t>(tap) * factor; };
  const auto line = [=](size_t k) { return static_cast<uint32_t>(at(dlyLine, k)); };
  const unsigned shift = static_cast<unsigned>(taps.shift()) % 32;
  const auto x = static_cast<uint32_t>(sample);
  const uint32_t acc = product(taps.b(0), x) + line(0);
  const uint32_t odd = static_cast<uint32_t>(static_cast<int32_t>(acc) >> shift) & 1;
  const uint32_t rounded = acc + odd + (uint32_t{1} << (shift + 31) % 32) - 1;
  const Kvr32s result = static_cast<int32_t>(rounded) >> shift;
  const auto y = static_cast<uint32_t>(result);
  for (size_t k = 0; k < order; ++k) {
    const uint32_t next = k + 1 < order ? line(k + 1) : 0;
    setAt(dlyLine, k, static_cast<Kvr32s>(product(taps.b(k + 1), x) - product(taps.a(k + 1), y) + next));
  }
  return result;
}

KvrStatus one(Kvr16s val, Kvr16s* dst, const Kvr16s* taps, int order, Kvr32s* dlyLine) {
  const auto count = static_cast<size_t>(order);
  const ShiftedTaps shifted(taps, count);
  KVRS_CHECK(tapScale(shifted.shift()));
  setAt(dst, 0, saturate<Kvr16s>(stepIntegers(shifted, count, val, dlyLine)));
  return kvrStatusOk;
}

KvrStatus oneThroughSections(Kvr16s val, Kvr16s* dst, const Kvr16s* taps, int numBq, Kvr32s* dlyLine) {
  Kvr32s sample = val;
  for (size_t i = 0; i < static_cast<size_t>(numBq); ++i) {
    const ShiftedTaps shifted(taps + 6 * i, 2);
    KVRS_CHECK(tapScale(shifted.shift()));
    sample = stepIntegers(shifted, 2, sample, dlyLine + 2 * i);
  }
  setAt(dst, 0, saturate<Kvr16s>(sample));
  return kvrStatusOk;
}

// value * 2^shift in single precision, with a shift of any size.
Kvr32f scaled(Kvr32f value, int shift) {
  while (shift > 100 && value != 0) {
    value *= powerOfTwo<Kvr32f>(100);
    shift -= 100;
    if (shift > 600) shift = 600;
  }
  while (shift < -100 && value != 0) {
    value *= powerOfTwo<Kvr32f>(-100);
    shift += 100;
    if (shift < -600) shift = -600;
  }
  return value == 0 ? value : value * powerOfTwo<Kvr32f>(shift);
}

// The limit of 2^31 is a float; it saturates as what lies above it does.
template <class Round>
Kvr32s toDelay(Kvr32f value, Round round) {
  if (value < -2147483648.0f) return INT32_MIN;
  if (value >= 2147483648.0f) return INT32_MAX;
  return value == value ? round(static_cast<double>(value)) : INT32_MIN;
}

// A context on the heap for one call, with a delay line of `count` zeros.
class OneCall {
 public:
  using State = KvrsIIRState32f_16s;

  OneCall(Form form, int n) : memory_(stateSize<Kvr32f>(form, true, static_cast<uint64_t>(n))) {
    if (auto* block = memory_.as<Kvr8u>(); block != nullptr) {
      state_ = static_cast<State*>(build<Kvr32f>(form, wordOf<State>(form), n, nullptr, block));
    }
  }
  State* get() const { return state_; }

 private:
  Scratch memory_;
  State* state_ = nullptr;
};

KvrStatus filterIntegers(const Kvr16s* src, Kvr16s* dst, int len, const Kvr16s* taps, int order,
                         Kvr32s* dlyLine) {
  const auto count = static_cast<size_t>(order);
  const ShiftedTaps shifted(taps, count);
  const int shift = shifted.shift();
  OneCall call(Form::direct, order);
  auto* state = call.get();
  if (state == nullptr) return kvrStatusOutOfMemory;
  Kvr32f *stored = state->taps.get(), *line = state->dlyLine.get();
  for (size_t k = 0; k <= count; ++k) stored[k] = scaled(static_cast<Kvr32f>(shifted.b(k)), -shift);
  for (size_t k = 1; k <= count; ++k) stored[count + k] = scaled(static_cast<Kvr32f>(shifted.a(k)), -shift);
  makeDirectTable<Kvr32f>(state);
  for (size_t k = 0; k < count; ++k) line[k] = scaled(static_cast<Kvr32f>(at(dlyLine, k)), -shift);
  filter<Kvr16s, Kvr32f>(*state, src, dst, static_cast<size_t>(len));
  for (size_t k = 0; k < count; ++k) {
    setAt(dlyLine, k, toDelay(scaled(line[k], shift), [](double v) {
            return saturate<Kvr32s>(static_cast<int64_t>(v < 0 ? v - 0.5 : v + 0.5));
          }));
  }
  return kvrStatusOk;
}

KvrStatus filterIntegerSections(const Kvr16s* src, Kvr16s* dst, int len, const Kvr16s* taps, int numBq,
                                Kvr32s* dlyLine) {
  OneCall call(Form::cascade, numBq);
  auto* state = call.get();
  if (state == nullptr) return kvrStatusOutOfMemory;
  Kvr32f* line = state->dlyLine.get();
  const auto shiftOf = [=](size_t i) { return ShiftedTaps(taps + 6 * i, 2).shift(); };
  const auto sections = static_cast<size_t>(numBq);
  for (size_t i = 0; i < sections; ++i) KVRS_CHECK(tapScale(shiftOf(i)));
  for (size_t i = 0; i < sections; ++i) {
    const ShiftedTaps given(taps + 6 * i, 2);
    const auto tap = [&](int value) { return scaled(static_cast<Kvr32f>(value), -given.shift()); };
    storeSection<Kvr32f>(
        state, i, {tap(given.b(0)), tap(given.b(1)), tap(given.b(2)), tap(given.a(1)), tap(given.a(2))});
    for (size_t k = 2 * i; k < 2 * i + 2; ++k) line[k] = tap(at(dlyLine, k));
  }
  filter<Kvr16s, Kvr32f>(*state, src, dst, static_cast<size_t>(len));
  for (size_t k = 0; k < 2 * sections; ++k) {
    setAt(dlyLine, k,
          toDelay(scaled(line[k], shiftOf(k / 2)), [](double v) { return static_cast<Kvr32s>(v); }));
  }
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::iir

using namespace kvrs;

KvrStatus kvrsIIROne_Direct_16s(Kvr16s val, Kvr16s* dst, const Kvr16s* taps, int order,
                                Kvr32s* dlyLine) noexcept {
  KVRS_CHECK(iir::filterOrder(order), pointers(dst, taps, dlyLine));
  return iir::one(val, dst, taps, order, dlyLine);
}

KvrStatus kvrsIIROne_Direct_16s_I(Kvr16s* srcDst, const Kvr16s* taps, int order, Kvr32s* dlyLine) noexcept {
  KVRS_CHECK(pointers(srcDst), iir::filterOrder(order), pointers(taps, dlyLine));
  return iir::one(iir::at(srcDst, 0), srcDst, taps, order, dlyLine);
}

KvrStatus kvrsIIROne_BiQuadDirect_16s(Kvr16s val, Kvr16s* dst, const Kvr16s* taps, int numBq,
                                      Kvr32s* dlyLine) noexcept {
  KVRS_CHECK(iir::filterOrder(numBq), pointers(dst, taps, dlyLine));
  return iir::oneThroughSections(val, dst, taps, numBq, dlyLine);
}

KvrStatus kvrsIIROne_BiQuadDirect_16s_I(Kvr16s* srcDst, const Kvr16s* taps, int numBq,
                                        Kvr32s* dlyLine) noexcept {
  KVRS_CHECK(pointers(srcDst), iir::filterOrder(numBq), pointers(taps, dlyLine));
  return iir::oneThroughSections(iir::at(srcDst, 0), srcDst, taps, numBq, dlyLine);
}

KvrStatus kvrsIIR_Direct_16s(const Kvr16s* src, Kvr16s* dst, int len, const Kvr16s* taps, int order,
                             Kvr32s* dlyLine) noexcept {
  KVRS_CHECK(iir::filterOrder(order), pointers(src, taps, dlyLine, dst));
  KVRS_CHECK(iir::tapScale(iir::at(taps, static_cast<size_t>(order) + 1)), length(len));
  return iir::filterIntegers(src, dst, len, taps, order, dlyLine);
}

KvrStatus kvrsIIR_Direct_16s_I(Kvr16s* srcDst, int len, const Kvr16s* taps, int order,
                               Kvr32s* dlyLine) noexcept {
  return kvrsIIR_Direct_16s(srcDst, srcDst, len, taps, order, dlyLine);
}

KvrStatus kvrsIIR_BiQuadDirect_16s(const Kvr16s* src, Kvr16s* dst, int len, const Kvr16s* taps, int numBq,
                                   Kvr32s* dlyLine) noexcept {
  KVRS_CHECK(iir::filterOrder(numBq), pointers(src, taps, dlyLine, dst), length(len));
  return iir::filterIntegerSections(src, dst, len, taps, numBq, dlyLine);
}

KvrStatus kvrsIIR_BiQuadDirect_16s_I(Kvr16s* srcDst, int len, const Kvr16s* taps, int numBq,
                                     Kvr32s* dlyLine) noexcept {
  return kvrsIIR_BiQuadDirect_16s(srcDst, srcDst, len, taps, numBq, dlyLine);
}
