// Stateless FIR filters at two rates.
// SPDX-License-Identifier: MIT
#include "filters/fir_bank.h"
#include "filters/fir_direct-inl.h"
#include "kvrs/fir_multirate.h"

namespace kvrs::fir {
namespace {

KvrStatus checkRated(int numIters, const void* taps, int tapsLen, const Rates& rates, const void* dlyLine) {
  KVRS_CHECK(length(numIters));
  if (taps == nullptr) return kvrStatusNullPointer;
  KVRS_CHECK(tapsLength(tapsLen), checkRates(rates));
  return check::pointers(dlyLine);
}

// Output by output. The delay line has the newest sample first.
template <class Sum, class D, class X, class Result>
KvrStatus directRates(const D* src, D* dst, int numIters, const X* taps, int tapsLen, const Rates& rates,
                      D* dlyLine, const Result& result) {
  KVRS_CHECK(pointers(src, dst));
  KVRS_CHECK(checkRated(numIters, taps, tapsLen, rates, dlyLine));
  const size_t iters = static_cast<size_t>(numIters), up = static_cast<size_t>(rates.upFactor);
  const size_t outputs = iters * up, inputs = iters * static_cast<size_t>(rates.downFactor);
  BankWalk walk(rates, tapsLen, int64_t{rates.downPhase} - rates.upPhase);
  for (size_t n = 0; n < outputs; ++n, walk.next()) {
    const X* tap = taps + walk.phase();
    const size_t count = walk.taps();
    const ptrdiff_t newest = walk.newestInput();
    // Inputs from newest down to 0, and samples of the delay line from there on.
    const size_t fresh = static_cast<size_t>(newest + 1) < count ? static_cast<size_t>(newest + 1) : count;
    Sum sum;
    for (size_t j = 0; j < fresh; ++j) {
      sum.add(j % 2, unaligned::get(src + (newest - static_cast<ptrdiff_t>(j))),
              unaligned::get(tap + j * up));
    }
    const D* past = dlyLine + (static_cast<ptrdiff_t>(fresh) - newest - 1);
    for (size_t j = fresh; j < count; ++j) {
      sum.add(j % 2, unaligned::get(past + (j - fresh)), unaligned::get(tap + j * up));
    }
    unaligned::put(result.template as<D>(sum.total()), dst + n);
  }
  const size_t dlyLen = static_cast<size_t>((tapsLen - 1) / rates.upFactor + 1),
               kept = dlyLen < inputs ? 0 : dlyLen - inputs;
  memmove(static_cast<void*>(dlyLine + (dlyLen - kept)), dlyLine, kept * sizeof(D));
  for (size_t i = 0; i < dlyLen - kept; ++i)
    unaligned::put(unaligned::get(src + (inputs - 1 - i)), dlyLine + i);
  return kvrStatusOk;
}

// In place: from a copy.
template <class Sum, class D, class X, class Result>
KvrStatus directRatesInPlace(D* srcDst, int numIters, const X* taps, int tapsLen, const Rates& rates,
                             D* dlyLine, const Result& result) {
  KVRS_CHECK(pointers(srcDst));
  KVRS_CHECK(checkRated(numIters, taps, tapsLen, rates, dlyLine));
  const uint64_t bytes =
      static_cast<uint64_t>(numIters) * static_cast<uint64_t>(rates.downFactor) * sizeof(D);
  const Scratch memory(bytes);
  if (!memory.ok()) return kvrStatusOutOfMemory;
  auto* const copy = memory.as<D>();
  memcpy(static_cast<void*>(copy), srcDst, static_cast<size_t>(bytes));
  return directRates<Sum, D>(copy, srcDst, numIters, taps, tapsLen, rates, dlyLine, result);
}

}  // namespace
}  // namespace kvrs::fir

using namespace kvrs::fir;

KvrStatus kvrsFIRMR_Direct_32f(const Kvr32f* src, Kvr32f* dst, int numIters, const Kvr32f* taps, int tapsLen,
                               int upFactor, int upPhase, int downFactor, int downPhase,
                               Kvr32f* dlyLine) noexcept {
  return directRates<FloatSum<Kvr32f, Kvr64f>>(
      src, dst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR_Direct_32f_I(Kvr32f* srcDst, int numIters, const Kvr32f* taps, int tapsLen, int upFactor,
                                 int upPhase, int downFactor, int downPhase, Kvr32f* dlyLine) noexcept {
  return directRatesInPlace<FloatSum<Kvr32f, Kvr64f>>(
      srcDst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR_Direct_64f(const Kvr64f* src, Kvr64f* dst, int numIters, const Kvr64f* taps, int tapsLen,
                               int upFactor, int upPhase, int downFactor, int downPhase,
                               Kvr64f* dlyLine) noexcept {
  return directRates<FloatSum<Kvr64f, Kvr64f>>(
      src, dst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR_Direct_64f_I(Kvr64f* srcDst, int numIters, const Kvr64f* taps, int tapsLen, int upFactor,
                                 int upPhase, int downFactor, int downPhase, Kvr64f* dlyLine) noexcept {
  return directRatesInPlace<FloatSum<Kvr64f, Kvr64f>>(
      srcDst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR_Direct_32fc(const Kvr32fc* src, Kvr32fc* dst, int numIters, const Kvr32fc* taps,
                                int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                Kvr32fc* dlyLine) noexcept {
  return directRates<ComplexFloatSum<Kvr32f, Kvr64f>>(
      src, dst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR_Direct_32fc_I(Kvr32fc* srcDst, int numIters, const Kvr32fc* taps, int tapsLen,
                                  int upFactor, int upPhase, int downFactor, int downPhase,
                                  Kvr32fc* dlyLine) noexcept {
  return directRatesInPlace<ComplexFloatSum<Kvr32f, Kvr64f>>(
      srcDst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR_Direct_64fc(const Kvr64fc* src, Kvr64fc* dst, int numIters, const Kvr64fc* taps,
                                int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                Kvr64fc* dlyLine) noexcept {
  return directRates<ComplexFloatSum<Kvr64f, Kvr64f>>(
      src, dst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR_Direct_64fc_I(Kvr64fc* srcDst, int numIters, const Kvr64fc* taps, int tapsLen,
                                  int upFactor, int upPhase, int downFactor, int downPhase,
                                  Kvr64fc* dlyLine) noexcept {
  return directRatesInPlace<ComplexFloatSum<Kvr64f, Kvr64f>>(
      srcDst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR64f_Direct_32f(const Kvr32f* src, Kvr32f* dst, int numIters, const Kvr64f* taps,
                                  int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                  Kvr32f* dlyLine) noexcept {
  return directRates<FloatSum<Kvr64f, Kvr64f>>(
      src, dst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR64f_Direct_32f_I(Kvr32f* srcDst, int numIters, const Kvr64f* taps, int tapsLen,
                                    int upFactor, int upPhase, int downFactor, int downPhase,
                                    Kvr32f* dlyLine) noexcept {
  return directRatesInPlace<FloatSum<Kvr64f, Kvr64f>>(
      srcDst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR64fc_Direct_32fc(const Kvr32fc* src, Kvr32fc* dst, int numIters, const Kvr64fc* taps,
                                    int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                    Kvr32fc* dlyLine) noexcept {
  return directRates<ComplexFloatSum<Kvr64f, Kvr64f>>(
      src, dst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR64fc_Direct_32fc_I(Kvr32fc* srcDst, int numIters, const Kvr64fc* taps, int tapsLen,
                                      int upFactor, int upPhase, int downFactor, int downPhase,
                                      Kvr32fc* dlyLine) noexcept {
  return directRatesInPlace<ComplexFloatSum<Kvr64f, Kvr64f>>(
      srcDst, numIters, taps, tapsLen, {upFactor, upPhase, downFactor, downPhase}, dlyLine, Plainly());
}

KvrStatus kvrsFIRMR32f_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int numIters, const Kvr32f* taps,
                                      int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                      Kvr16s* dlyLine, int scaleFactor) noexcept {
  return directRates<FloatSum<Kvr32f, Kvr64f>>(src, dst, numIters, taps, tapsLen,
                                               {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                               AwayFromZero(scaleFactor));
}

KvrStatus kvrsFIRMR32f_Direct_16s_ISfs(Kvr16s* srcDst, int numIters, const Kvr32f* taps, int tapsLen,
                                       int upFactor, int upPhase, int downFactor, int downPhase,
                                       Kvr16s* dlyLine, int scaleFactor) noexcept {
  return directRatesInPlace<FloatSum<Kvr32f, Kvr64f>>(srcDst, numIters, taps, tapsLen,
                                                      {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                                      AwayFromZero(scaleFactor));
}

KvrStatus kvrsFIRMR64f_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int numIters, const Kvr64f* taps,
                                      int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                      Kvr16s* dlyLine, int scaleFactor) noexcept {
  return directRates<FloatSum<Kvr64f, Kvr64f>>(src, dst, numIters, taps, tapsLen,
                                               {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                               ToNearest(scaleFactor));
}

KvrStatus kvrsFIRMR64f_Direct_16s_ISfs(Kvr16s* srcDst, int numIters, const Kvr64f* taps, int tapsLen,
                                       int upFactor, int upPhase, int downFactor, int downPhase,
                                       Kvr16s* dlyLine, int scaleFactor) noexcept {
  return directRatesInPlace<FloatSum<Kvr64f, Kvr64f>>(srcDst, numIters, taps, tapsLen,
                                                      {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                                      ToNearest(scaleFactor));
}

KvrStatus kvrsFIRMR64f_Direct_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int numIters, const Kvr64f* taps,
                                      int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                      Kvr32s* dlyLine, int scaleFactor) noexcept {
  return directRates<FloatSum<Kvr64f, Kvr64f>>(src, dst, numIters, taps, tapsLen,
                                               {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                               ToNearest(scaleFactor));
}

KvrStatus kvrsFIRMR64f_Direct_32s_ISfs(Kvr32s* srcDst, int numIters, const Kvr64f* taps, int tapsLen,
                                       int upFactor, int upPhase, int downFactor, int downPhase,
                                       Kvr32s* dlyLine, int scaleFactor) noexcept {
  return directRatesInPlace<FloatSum<Kvr64f, Kvr64f>>(srcDst, numIters, taps, tapsLen,
                                                      {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                                      ToNearest(scaleFactor));
}

KvrStatus kvrsFIRMR32fc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int numIters, const Kvr32fc* taps,
                                        int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                        Kvr16sc* dlyLine, int scaleFactor) noexcept {
  return directRates<ComplexFloatSum<Kvr32f, Kvr64f>>(src, dst, numIters, taps, tapsLen,
                                                      {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                                      ToNearest(scaleFactor));
}

KvrStatus kvrsFIRMR32fc_Direct_16sc_ISfs(Kvr16sc* srcDst, int numIters, const Kvr32fc* taps, int tapsLen,
                                         int upFactor, int upPhase, int downFactor, int downPhase,
                                         Kvr16sc* dlyLine, int scaleFactor) noexcept {
  return directRatesInPlace<ComplexFloatSum<Kvr32f, Kvr64f>>(srcDst, numIters, taps, tapsLen,
                                                             {upFactor, upPhase, downFactor, downPhase},
                                                             dlyLine, ToNearest(scaleFactor));
}

KvrStatus kvrsFIRMR64fc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int numIters, const Kvr64fc* taps,
                                        int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                        Kvr16sc* dlyLine, int scaleFactor) noexcept {
  return directRates<ComplexFloatSum<Kvr64f, Kvr64f>>(src, dst, numIters, taps, tapsLen,
                                                      {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                                      ToNearest(scaleFactor));
}

KvrStatus kvrsFIRMR64fc_Direct_16sc_ISfs(Kvr16sc* srcDst, int numIters, const Kvr64fc* taps, int tapsLen,
                                         int upFactor, int upPhase, int downFactor, int downPhase,
                                         Kvr16sc* dlyLine, int scaleFactor) noexcept {
  return directRatesInPlace<ComplexFloatSum<Kvr64f, Kvr64f>>(srcDst, numIters, taps, tapsLen,
                                                             {upFactor, upPhase, downFactor, downPhase},
                                                             dlyLine, ToNearest(scaleFactor));
}

KvrStatus kvrsFIRMR64fc_Direct_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, int numIters, const Kvr64fc* taps,
                                        int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                        Kvr32sc* dlyLine, int scaleFactor) noexcept {
  return directRates<ComplexFloatSum<Kvr64f, Kvr64f>>(src, dst, numIters, taps, tapsLen,
                                                      {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                                      ToNearest(scaleFactor));
}

KvrStatus kvrsFIRMR64fc_Direct_32sc_ISfs(Kvr32sc* srcDst, int numIters, const Kvr64fc* taps, int tapsLen,
                                         int upFactor, int upPhase, int downFactor, int downPhase,
                                         Kvr32sc* dlyLine, int scaleFactor) noexcept {
  return directRatesInPlace<ComplexFloatSum<Kvr64f, Kvr64f>>(srcDst, numIters, taps, tapsLen,
                                                             {upFactor, upPhase, downFactor, downPhase},
                                                             dlyLine, ToNearest(scaleFactor));
}

KvrStatus kvrsFIRMR32s_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int numIters, const Kvr32s* taps,
                                      int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                                      int downPhase, Kvr16s* dlyLine, int scaleFactor) noexcept {
  return directRates<WrappedSum>(src, dst, numIters, taps, tapsLen,
                                 {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                 Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIRMR32s_Direct_16s_ISfs(Kvr16s* srcDst, int numIters, const Kvr32s* taps, int tapsLen,
                                       int tapsFactor, int upFactor, int upPhase, int downFactor,
                                       int downPhase, Kvr16s* dlyLine, int scaleFactor) noexcept {
  return directRatesInPlace<WrappedSum>(srcDst, numIters, taps, tapsLen,
                                        {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                        Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIRMR32sc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int numIters, const Kvr32sc* taps,
                                        int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                        int downFactor, int downPhase, Kvr16sc* dlyLine,
                                        int scaleFactor) noexcept {
  return directRates<ComplexWrappedSum>(src, dst, numIters, taps, tapsLen,
                                        {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                        Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIRMR32sc_Direct_16sc_ISfs(Kvr16sc* srcDst, int numIters, const Kvr32sc* taps, int tapsLen,
                                         int tapsFactor, int upFactor, int upPhase, int downFactor,
                                         int downPhase, Kvr16sc* dlyLine, int scaleFactor) noexcept {
  return directRatesInPlace<ComplexWrappedSum>(srcDst, numIters, taps, tapsLen,
                                               {upFactor, upPhase, downFactor, downPhase}, dlyLine,
                                               Shifted{Shift(tapsFactor, scaleFactor)});
}
