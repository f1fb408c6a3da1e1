// Stateless FIR filters.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_direct.h"
#include "filters/fir_direct-inl.h"
#include "frame/array_length.h"

namespace kvrs::fir {
namespace {

constexpr int kQ15 = -15;

KvrStatus checkIndex(int index, int tapsLen) {
  return check::require(index >= 0 && index < tapsLen, kvrStatusBadDelayIndex);
}

// Taps in Q15 as they are, also -32768.
struct Q15Taps {
  const Kvr16s* at;

  KvrStatus storeIn(State<Kvr16s>* state) const { return setShiftedTaps(state, at, kQ15, 0); }
};

KvrStatus directOneQ15(Kvr16s src, Kvr16s* dst, const Kvr16s* taps, int tapsLen, Kvr16s* dlyLine,
                       int* dlyLineIndex, int scaleFactor) {
  KVRS_CHECK(pointers(dst), checkDirect(taps, tapsLen, dlyLine, dlyLineIndex));
  KVRS_CHECK(checkIndex(unaligned::get(dlyLineIndex), tapsLen));
  return directOne<WrappedSum>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                               Shifted{Shift(kQ15, scaleFactor)});
}

KvrStatus directQ15(const Kvr16s* src, Kvr16s* dst, int len, const Kvr16s* taps, int tapsLen, Kvr16s* dlyLine,
                    int* dlyLineIndex, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst, taps, dlyLine, dlyLineIndex), length(len, src, dst), tapsLength(tapsLen));
  const int index = unaligned::get(dlyLineIndex);
  KVRS_CHECK(checkIndex(index, tapsLen));
  KvrsFIRState32s_16s* state;
  const Kvr16s* window = dlyLine + index;
  const KvrStatus status = initAlloc(k32s_16s, &state, Q15Taps{taps}, tapsLen, nullptr, window);
  if (status != kvrStatusOk) return status;
  filterStaged(*state, src, dst, static_cast<size_t>(len), Shift(kQ15, scaleFactor));
  getDelayLine<Kvr16s>(state, dlyLine);
  unaligned::put(0, dlyLineIndex);
  return release<Kvr16s>(state);
}

}  // namespace
}  // namespace kvrs::fir

using namespace kvrs::fir;

KvrStatus kvrsFIROne_Direct_32f(Kvr32f src, Kvr32f* dst, const Kvr32f* taps, int tapsLen, Kvr32f* dlyLine,
                                int* dlyLineIndex) noexcept {
  return directOne<FloatSum<Kvr32f, Kvr32f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex, Plainly());
}

KvrStatus kvrsFIROne_Direct_32f_I(Kvr32f* srcDst, const Kvr32f* taps, int tapsLen, Kvr32f* dlyLine,
                                  int* dlyLineIndex) noexcept {
  return directOne<FloatSum<Kvr32f, Kvr32f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex, Plainly());
}

KvrStatus kvrsFIR_Direct_32f(const Kvr32f* src, Kvr32f* dst, int len, const Kvr32f* taps, int tapsLen,
                             Kvr32f* dlyLine, int* dlyLineIndex) noexcept {
  return directPlain<64, FloatSum<Kvr32f, Kvr32f>, KvrsFIRState_32f>(k_32f, src, dst, len, taps, tapsLen,
                                                                     dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIR_Direct_32f_I(Kvr32f* srcDst, int len, const Kvr32f* taps, int tapsLen, Kvr32f* dlyLine,
                               int* dlyLineIndex) noexcept {
  return directPlainInPlace<KvrsFIRState_32f>(k_32f, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIROne_Direct_64f(Kvr64f src, Kvr64f* dst, const Kvr64f* taps, int tapsLen, Kvr64f* dlyLine,
                                int* dlyLineIndex) noexcept {
  return directOne<FloatSum<Kvr64f, Kvr64f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex, Plainly());
}

KvrStatus kvrsFIROne_Direct_64f_I(Kvr64f* srcDst, const Kvr64f* taps, int tapsLen, Kvr64f* dlyLine,
                                  int* dlyLineIndex) noexcept {
  return directOne<FloatSum<Kvr64f, Kvr64f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex, Plainly());
}

KvrStatus kvrsFIR_Direct_64f(const Kvr64f* src, Kvr64f* dst, int len, const Kvr64f* taps, int tapsLen,
                             Kvr64f* dlyLine, int* dlyLineIndex) noexcept {
  return directPlain<32, FloatSum<Kvr64f, Kvr64f>, KvrsFIRState_64f>(k_64f, src, dst, len, taps, tapsLen,
                                                                     dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIR_Direct_64f_I(Kvr64f* srcDst, int len, const Kvr64f* taps, int tapsLen, Kvr64f* dlyLine,
                               int* dlyLineIndex) noexcept {
  return directPlainInPlace<KvrsFIRState_64f>(k_64f, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIROne_Direct_32fc(Kvr32fc src, Kvr32fc* dst, const Kvr32fc* taps, int tapsLen,
                                 Kvr32fc* dlyLine, int* dlyLineIndex) noexcept {
  return directOne<ComplexFloatSum<Kvr32f, Kvr32f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                                                    Plainly());
}

KvrStatus kvrsFIROne_Direct_32fc_I(Kvr32fc* srcDst, const Kvr32fc* taps, int tapsLen, Kvr32fc* dlyLine,
                                   int* dlyLineIndex) noexcept {
  return directOne<ComplexFloatSum<Kvr32f, Kvr32f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex, Plainly());
}

KvrStatus kvrsFIR_Direct_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, const Kvr32fc* taps, int tapsLen,
                              Kvr32fc* dlyLine, int* dlyLineIndex) noexcept {
  return directPlain<32, ComplexFloatSum<Kvr32f, Kvr32f>, KvrsFIRState_32fc>(k_32fc, src, dst, len, taps,
                                                                             tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIR_Direct_32fc_I(Kvr32fc* srcDst, int len, const Kvr32fc* taps, int tapsLen, Kvr32fc* dlyLine,
                                int* dlyLineIndex) noexcept {
  return directPlainInPlace<KvrsFIRState_32fc>(k_32fc, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIROne_Direct_64fc(Kvr64fc src, Kvr64fc* dst, const Kvr64fc* taps, int tapsLen,
                                 Kvr64fc* dlyLine, int* dlyLineIndex) noexcept {
  return directOne<ComplexFloatSum<Kvr64f, Kvr64f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                                                    Plainly());
}

KvrStatus kvrsFIROne_Direct_64fc_I(Kvr64fc* srcDst, const Kvr64fc* taps, int tapsLen, Kvr64fc* dlyLine,
                                   int* dlyLineIndex) noexcept {
  return directOne<ComplexFloatSum<Kvr64f, Kvr64f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex, Plainly());
}

KvrStatus kvrsFIR_Direct_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, const Kvr64fc* taps, int tapsLen,
                              Kvr64fc* dlyLine, int* dlyLineIndex) noexcept {
  return directPlain<16, ComplexFloatSum<Kvr64f, Kvr64f>, KvrsFIRState_64fc>(k_64fc, src, dst, len, taps,
                                                                             tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIR_Direct_64fc_I(Kvr64fc* srcDst, int len, const Kvr64fc* taps, int tapsLen, Kvr64fc* dlyLine,
                                int* dlyLineIndex) noexcept {
  return directPlainInPlace<KvrsFIRState_64fc>(k_64fc, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIROne64f_Direct_32f(Kvr32f src, Kvr32f* dst, const Kvr64f* taps, int tapsLen, Kvr32f* dlyLine,
                                   int* dlyLineIndex) noexcept {
  return directOne<FloatSum<Kvr64f, Kvr64f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex, Plainly());
}

KvrStatus kvrsFIROne64f_Direct_32f_I(Kvr32f* srcDst, const Kvr64f* taps, int tapsLen, Kvr32f* dlyLine,
                                     int* dlyLineIndex) noexcept {
  return directOne<FloatSum<Kvr64f, Kvr64f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex, Plainly());
}

KvrStatus kvrsFIR64f_Direct_32f(const Kvr32f* src, Kvr32f* dst, int len, const Kvr64f* taps, int tapsLen,
                                Kvr32f* dlyLine, int* dlyLineIndex) noexcept {
  return directMixed<256, FloatSum<Kvr64f, Kvr64f>, KvrsFIRState64f_32f>(k64f_32f, src, dst, len, taps,
                                                                         tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIR64f_Direct_32f_I(Kvr32f* srcDst, int len, const Kvr64f* taps, int tapsLen, Kvr32f* dlyLine,
                                  int* dlyLineIndex) noexcept {
  return directMixed<256, FloatSum<Kvr64f, Kvr64f>, KvrsFIRState64f_32f>(k64f_32f, srcDst, srcDst, len, taps,
                                                                         tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIROne64fc_Direct_32fc(Kvr32fc src, Kvr32fc* dst, const Kvr64fc* taps, int tapsLen,
                                     Kvr32fc* dlyLine, int* dlyLineIndex) noexcept {
  return directOne<ComplexFloatSum<Kvr64f, Kvr64f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                                                    Plainly());
}

KvrStatus kvrsFIROne64fc_Direct_32fc_I(Kvr32fc* srcDst, const Kvr64fc* taps, int tapsLen, Kvr32fc* dlyLine,
                                       int* dlyLineIndex) noexcept {
  return directOne<ComplexFloatSum<Kvr64f, Kvr64f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex, Plainly());
}

KvrStatus kvrsFIR64fc_Direct_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, const Kvr64fc* taps, int tapsLen,
                                  Kvr32fc* dlyLine, int* dlyLineIndex) noexcept {
  return directMixed<128, ComplexFloatSum<Kvr64f, Kvr64f>, KvrsFIRState64fc_32fc>(
      k64fc_32fc, src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIR64fc_Direct_32fc_I(Kvr32fc* srcDst, int len, const Kvr64fc* taps, int tapsLen,
                                    Kvr32fc* dlyLine, int* dlyLineIndex) noexcept {
  return directMixed<128, ComplexFloatSum<Kvr64f, Kvr64f>, KvrsFIRState64fc_32fc>(
      k64fc_32fc, srcDst, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIROne32f_Direct_16s_Sfs(Kvr16s src, Kvr16s* dst, const Kvr32f* taps, int tapsLen,
                                       Kvr16s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<FloatSum<Kvr32f, Kvr64f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                                             AwayFromZero(scaleFactor));
}

KvrStatus kvrsFIROne32f_Direct_16s_ISfs(Kvr16s* srcDst, const Kvr32f* taps, int tapsLen, Kvr16s* dlyLine,
                                        int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<FloatSum<Kvr32f, Kvr64f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex,
                                             AwayFromZero(scaleFactor));
}

KvrStatus kvrsFIR32f_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, const Kvr32f* taps, int tapsLen,
                                    Kvr16s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directEach<FloatSum<Kvr32f, Kvr64f>>(src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                              AwayFromZero(scaleFactor));
}

KvrStatus kvrsFIR32f_Direct_16s_ISfs(Kvr16s* srcDst, int len, const Kvr32f* taps, int tapsLen,
                                     Kvr16s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directEach<FloatSum<Kvr32f, Kvr64f>>(srcDst, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                              AwayFromZero(scaleFactor));
}

KvrStatus kvrsFIROne64f_Direct_16s_Sfs(Kvr16s src, Kvr16s* dst, const Kvr64f* taps, int tapsLen,
                                       Kvr16s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<FloatSum<Kvr64f, Kvr64f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                                             ToNearest(scaleFactor));
}

KvrStatus kvrsFIROne64f_Direct_16s_ISfs(Kvr16s* srcDst, const Kvr64f* taps, int tapsLen, Kvr16s* dlyLine,
                                        int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<FloatSum<Kvr64f, Kvr64f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex,
                                             ToNearest(scaleFactor));
}

KvrStatus kvrsFIR64f_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, const Kvr64f* taps, int tapsLen,
                                    Kvr16s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directEach<FloatSum<Kvr64f, Kvr64f>>(src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                              ToNearest(scaleFactor));
}

KvrStatus kvrsFIR64f_Direct_16s_ISfs(Kvr16s* srcDst, int len, const Kvr64f* taps, int tapsLen,
                                     Kvr16s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directEach<FloatSum<Kvr64f, Kvr64f>>(srcDst, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                              ToNearest(scaleFactor));
}

KvrStatus kvrsFIROne64f_Direct_32s_Sfs(Kvr32s src, Kvr32s* dst, const Kvr64f* taps, int tapsLen,
                                       Kvr32s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<FloatSum<Kvr64f, Kvr64f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                                             ToNearest(scaleFactor));
}

KvrStatus kvrsFIROne64f_Direct_32s_ISfs(Kvr32s* srcDst, const Kvr64f* taps, int tapsLen, Kvr32s* dlyLine,
                                        int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<FloatSum<Kvr64f, Kvr64f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex,
                                             ToNearest(scaleFactor));
}

KvrStatus kvrsFIR64f_Direct_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, const Kvr64f* taps, int tapsLen,
                                    Kvr32s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directEach<FloatSum<Kvr64f, Kvr64f>>(src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                              ToNearest(scaleFactor));
}

KvrStatus kvrsFIR64f_Direct_32s_ISfs(Kvr32s* srcDst, int len, const Kvr64f* taps, int tapsLen,
                                     Kvr32s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directEach<FloatSum<Kvr64f, Kvr64f>>(srcDst, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                              ToNearest(scaleFactor));
}

KvrStatus kvrsFIROne32fc_Direct_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, const Kvr32fc* taps, int tapsLen,
                                         Kvr16sc* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<ComplexFloatSum<Kvr32f, Kvr64f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                                                    ToNearest(scaleFactor));
}

KvrStatus kvrsFIROne32fc_Direct_16sc_ISfs(Kvr16sc* srcDst, const Kvr32fc* taps, int tapsLen, Kvr16sc* dlyLine,
                                          int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<ComplexFloatSum<Kvr32f, Kvr64f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex,
                                                    ToNearest(scaleFactor));
}

KvrStatus kvrsFIR32fc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, const Kvr32fc* taps,
                                      int tapsLen, Kvr16sc* dlyLine, int* dlyLineIndex,
                                      int scaleFactor) noexcept {
  return directEach<ComplexFloatSum<Kvr32f, Kvr64f>>(src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                                     ToNearest(scaleFactor));
}

KvrStatus kvrsFIR32fc_Direct_16sc_ISfs(Kvr16sc* srcDst, int len, const Kvr32fc* taps, int tapsLen,
                                       Kvr16sc* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directEach<ComplexFloatSum<Kvr32f, Kvr64f>>(srcDst, srcDst, len, taps, tapsLen, dlyLine,
                                                     dlyLineIndex, ToNearest(scaleFactor));
}

KvrStatus kvrsFIROne64fc_Direct_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, const Kvr64fc* taps, int tapsLen,
                                         Kvr16sc* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<ComplexFloatSum<Kvr64f, Kvr64f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                                                    ToNearest(scaleFactor));
}

KvrStatus kvrsFIROne64fc_Direct_16sc_ISfs(Kvr16sc* srcDst, const Kvr64fc* taps, int tapsLen, Kvr16sc* dlyLine,
                                          int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<ComplexFloatSum<Kvr64f, Kvr64f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex,
                                                    ToNearest(scaleFactor));
}

KvrStatus kvrsFIR64fc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, const Kvr64fc* taps,
                                      int tapsLen, Kvr16sc* dlyLine, int* dlyLineIndex,
                                      int scaleFactor) noexcept {
  return directEach<ComplexFloatSum<Kvr64f, Kvr64f>>(src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                                     ToNearest(scaleFactor));
}

KvrStatus kvrsFIR64fc_Direct_16sc_ISfs(Kvr16sc* srcDst, int len, const Kvr64fc* taps, int tapsLen,
                                       Kvr16sc* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directEach<ComplexFloatSum<Kvr64f, Kvr64f>>(srcDst, srcDst, len, taps, tapsLen, dlyLine,
                                                     dlyLineIndex, ToNearest(scaleFactor));
}

KvrStatus kvrsFIROne64fc_Direct_32sc_Sfs(Kvr32sc src, Kvr32sc* dst, const Kvr64fc* taps, int tapsLen,
                                         Kvr32sc* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<ComplexFloatSum<Kvr64f, Kvr64f>>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                                                    ToNearest(scaleFactor));
}

KvrStatus kvrsFIROne64fc_Direct_32sc_ISfs(Kvr32sc* srcDst, const Kvr64fc* taps, int tapsLen, Kvr32sc* dlyLine,
                                          int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<ComplexFloatSum<Kvr64f, Kvr64f>>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex,
                                                    ToNearest(scaleFactor));
}

KvrStatus kvrsFIR64fc_Direct_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, int len, const Kvr64fc* taps,
                                      int tapsLen, Kvr32sc* dlyLine, int* dlyLineIndex,
                                      int scaleFactor) noexcept {
  return directEach<ComplexFloatSum<Kvr64f, Kvr64f>>(src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                                     ToNearest(scaleFactor));
}

KvrStatus kvrsFIR64fc_Direct_32sc_ISfs(Kvr32sc* srcDst, int len, const Kvr64fc* taps, int tapsLen,
                                       Kvr32sc* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directEach<ComplexFloatSum<Kvr64f, Kvr64f>>(srcDst, srcDst, len, taps, tapsLen, dlyLine,
                                                     dlyLineIndex, ToNearest(scaleFactor));
}

KvrStatus kvrsFIROne32s_Direct_16s_Sfs(Kvr16s src, Kvr16s* dst, const Kvr32s* taps, int tapsLen,
                                       int tapsFactor, Kvr16s* dlyLine, int* dlyLineIndex,
                                       int scaleFactor) noexcept {
  return directOne<WrappedSum>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                               Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIROne32s_Direct_16s_ISfs(Kvr16s* srcDst, const Kvr32s* taps, int tapsLen, int tapsFactor,
                                        Kvr16s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<WrappedSum>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex,
                               Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIR32s_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, const Kvr32s* taps, int tapsLen,
                                    int tapsFactor, Kvr16s* dlyLine, int* dlyLineIndex,
                                    int scaleFactor) noexcept {
  return directEach<WrappedSum>(src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIR32s_Direct_16s_ISfs(Kvr16s* srcDst, int len, const Kvr32s* taps, int tapsLen, int tapsFactor,
                                     Kvr16s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directEach<WrappedSum>(srcDst, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIROne32sc_Direct_16sc_Sfs(Kvr16sc src, Kvr16sc* dst, const Kvr32sc* taps, int tapsLen,
                                         int tapsFactor, Kvr16sc* dlyLine, int* dlyLineIndex,
                                         int scaleFactor) noexcept {
  return directOne<ComplexWrappedSum>(src, dst, taps, tapsLen, dlyLine, dlyLineIndex,
                                      Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIROne32sc_Direct_16sc_ISfs(Kvr16sc* srcDst, const Kvr32sc* taps, int tapsLen, int tapsFactor,
                                          Kvr16sc* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directOne<ComplexWrappedSum>(srcDst, taps, tapsLen, dlyLine, dlyLineIndex,
                                      Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIR32sc_Direct_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, const Kvr32sc* taps,
                                      int tapsLen, int tapsFactor, Kvr16sc* dlyLine, int* dlyLineIndex,
                                      int scaleFactor) noexcept {
  return directEach<ComplexWrappedSum>(src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                       Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIR32sc_Direct_16sc_ISfs(Kvr16sc* srcDst, int len, const Kvr32sc* taps, int tapsLen,
                                       int tapsFactor, Kvr16sc* dlyLine, int* dlyLineIndex,
                                       int scaleFactor) noexcept {
  return directEach<ComplexWrappedSum>(srcDst, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex,
                                       Shifted{Shift(tapsFactor, scaleFactor)});
}

KvrStatus kvrsFIROne_Direct_16s_Sfs(Kvr16s src, Kvr16s* dst, const Kvr16s* taps, int tapsLen, Kvr16s* dlyLine,
                                    int* dlyLineIndex, int scaleFactor) noexcept {
  return directOneQ15(src, dst, taps, tapsLen, dlyLine, dlyLineIndex, scaleFactor);
}

KvrStatus kvrsFIROne_Direct_16s_ISfs(Kvr16s* srcDst, const Kvr16s* taps, int tapsLen, Kvr16s* dlyLine,
                                     int* dlyLineIndex, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(srcDst));
  return directOneQ15(kvrs::unaligned::get(srcDst), srcDst, taps, tapsLen, dlyLine, dlyLineIndex,
                      scaleFactor);
}

KvrStatus kvrsFIR_Direct_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, const Kvr16s* taps, int tapsLen,
                                 Kvr16s* dlyLine, int* dlyLineIndex, int scaleFactor) noexcept {
  return directQ15(src, dst, len, taps, tapsLen, dlyLine, dlyLineIndex, scaleFactor);
}

KvrStatus kvrsFIR_Direct_16s_ISfs(Kvr16s* srcDst, int len, const Kvr16s* taps, int tapsLen, Kvr16s* dlyLine,
                                  int* dlyLineIndex, int scaleFactor) noexcept {
  return directQ15(srcDst, srcDst, len, taps, tapsLen, dlyLine, dlyLineIndex, scaleFactor);
}
