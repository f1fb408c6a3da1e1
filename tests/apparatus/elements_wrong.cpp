// Faults that the standard sweep must see.
// SPDX-License-Identifier: MIT
#include <xmmintrin.h>

#include <cfenv>
#include <cmath>
#include <cstring>

#include "kvrs.h"
#include "kvrscore.h"
#include "tests/apparatus/wrong.h"

using namespace kvrs::wrong;

namespace {

constexpr int kFar = 1 << 18;  // elements of arrays that are no longer near

const Fault addFirst("kvrsAdd_32f where dst is its first source", "ArithFloat.Add");
const Fault addSecond("kvrsAdd_32f where dst is its second source", "ArithFloat.Add");
const Fault addNearest("kvrsAdd_32f rounds to nearest in every mode", "ArithFloat.Add");
const Fault addLast("kvrsAdd_32f leaves out the last element above 1,100", "ArithFloat.Add");
const Fault addNan("kvrsAdd_32f replaces a NaN", "ArithFloat.Add");
const Fault addSwapped("kvrsAdd_32f exchanges two blocks of long vectors", "ArithFloat.Add");

}  // namespace

KvrStatus kvrsAdd_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  static const auto add = right<decltype(kvrsAdd_32f)>("kvrsAdd_32f");
  const bool isFirst = dst == src1, isSecond = dst == src2;
  const int mode = fegetround();
  if (addNearest.isOn()) fesetround(FE_TONEAREST);
  const bool isShort = addLast.isOn() && len > 1100;
  const KvrStatus status = add(src1, src2, dst, len - isShort);
  if (addNearest.isOn()) fesetround(mode);
  if (status != kvrStatusOk) return status;
  if (addFirst.isOn() && isFirst) spoil(dst, len / 2);
  if (addSecond.isOn() && isSecond) spoil(dst, 0);
  for (int i = 0; addNan.isOn() && i < len; ++i) {
    Kvr32f x;
    memcpy(&x, reinterpret_cast<char*>(dst) + 4 * static_cast<ptrdiff_t>(i), 4);
    if (std::isnan(x)) memset(reinterpret_cast<char*>(dst) + 4 * static_cast<ptrdiff_t>(i), 0, 4);
  }
  if (addSwapped.isOn() && len > kFar) {
    char block[64];
    memcpy(block, dst, 64);
    memmove(dst, dst + 16, 64);
    memcpy(dst + 16, block, 64);
  }
  return status;
}

namespace {
const Fault addToItself("kvrsAdd_32f_I of a vector to itself", "ArithFloat.Add");
}

KvrStatus kvrsAdd_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  static const auto add = right<decltype(kvrsAdd_32f_I)>("kvrsAdd_32f_I");
  const KvrStatus status = add(src, srcDst, len);
  if (addToItself.isOn() && src == srcDst && status == kvrStatusOk) spoil(srcDst, len - 1);
  return status;
}

namespace {
const Fault subFlushes("kvrsSub_32f takes subnormal numbers for zero", "ArithFloat.Sub");
}

KvrStatus kvrsSub_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  static const auto sub = right<decltype(kvrsSub_32f)>("kvrsSub_32f");
  const unsigned control = _mm_getcsr();
  if (subFlushes.isOn()) _mm_setcsr(control | 0x8040);
  const KvrStatus status = sub(src1, src2, dst, len);
  _mm_setcsr(control);
  return status;
}

namespace {
const Fault mulZero("kvrsMul_32f makes a negative zero positive", "ArithFloat.Mul");
const Fault mulFarAlias("kvrsMul_32f of long vectors where dst is a source", "ArithFloat.Mul");
const Fault mulFused("kvrsMul_32f is off by one unit in long vectors", "ArithFloat.Mul");
}  // namespace

KvrStatus kvrsMul_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  static const auto mul = right<decltype(kvrsMul_32f)>("kvrsMul_32f");
  const bool isAlias = dst == src1 || dst == src2;
  const KvrStatus status = mul(src1, src2, dst, len);
  if (status != kvrStatusOk) return status;
  auto* const bytes = reinterpret_cast<uint8_t*>(dst);
  const auto flip = [bytes](int i) { bytes[4 * static_cast<ptrdiff_t>(i)] ^= 1; };
  for (int i = 0; mulZero.isOn() && i < len; ++i) {
    uint32_t bits;
    memcpy(&bits, bytes + 4 * static_cast<ptrdiff_t>(i), 4);
    if (bits == 0x80000000) bytes[4 * static_cast<ptrdiff_t>(i) + 3] = 0;
  }
  if (mulFarAlias.isOn() && isAlias && len > kFar) flip(len - 5);
  if (mulFused.isOn() && len > kFar) flip(len / 2);
  return status;
}

namespace {
const Fault addModes("kvrsAdd_16s_Sfs follows the caller's rounding mode", "ScaledAdd.Vectors");
const Fault addLeaves("kvrsAdd_16s_Sfs leaves another rounding mode behind", "ScaledAdd.Vectors");
const Fault addControl("kvrsAdd_16s_Sfs leaves subnormal numbers flushed", "ScaledAdd.Vectors");
const Fault addTies("kvrsAdd_16s_Sfs rounds a tie up", "ScaledAdd.Vectors");
const Fault addWraps("kvrsAdd_16s_Sfs wraps where it should saturate", "ScaledAdd.Vectors");
}  // namespace

KvrStatus kvrsAdd_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                          int scaleFactor) noexcept {
  static const auto add = right<decltype(kvrsAdd_16s_Sfs)>("kvrsAdd_16s_Sfs");
  const bool remakes = addTies.isOn() || addWraps.isOn();
  if (remakes && src1 != nullptr && src2 != nullptr && dst != nullptr && len > 0 && (scaleFactor | 1) == 1) {
    for (ptrdiff_t i = 0; i < len; ++i) {
      Kvr16s a, b;
      memcpy(&a, reinterpret_cast<const char*>(src1) + 2 * i, 2);
      memcpy(&b, reinterpret_cast<const char*>(src2) + 2 * i, 2);
      const int sum = a + b;
      const int shifted = scaleFactor == 0 ? sum
                          : addTies.isOn() ? (sum + 1) >> 1
                                           : (sum + ((sum >> 1) & 1)) >> 1;
      const int clamped = shifted > 32767 ? 32767 : shifted < -32768 ? -32768 : shifted;
      const Kvr16s stored = static_cast<Kvr16s>(addWraps.isOn() ? shifted : clamped);
      memcpy(reinterpret_cast<char*>(dst) + 2 * i, &stored, 2);
    }
    return kvrStatusOk;
  }
  const KvrStatus status = add(src1, src2, dst, len, scaleFactor);
  if (status != kvrStatusOk) return status;
  if (addModes.isOn() && fegetround() == FE_DOWNWARD) spoil(dst, 0);
  if (addLeaves.isOn()) fesetround(FE_TOWARDZERO);
  if (addControl.isOn()) _mm_setcsr(_mm_getcsr() | 0x8000);
  return status;
}

namespace {
const Fault xorAlignment("kvrsXor_8u at one alignment of dst", "Logic.Xor");
const Fault xorBoth("kvrsXor_8u at one alignment of its second source, short vectors", "Logic.Xor");
const Fault xorOrder("kvrsXor_8u tests the length before the pointers", "Contract.Lengths");
}  // namespace

KvrStatus kvrsXor_8u(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len) noexcept {
  static const auto xor8 = right<decltype(kvrsXor_8u)>("kvrsXor_8u");
  if (xorOrder.isOn() && len < 1) return kvrStatusBadLength;
  const KvrStatus status = xor8(src1, src2, dst, len);
  if (status != kvrStatusOk) return status;
  if (xorAlignment.isOn() && (reinterpret_cast<uintptr_t>(dst) & 63) == 37) spoil(dst, 0);
  if (xorBoth.isOn() && (reinterpret_cast<uintptr_t>(src2) & 15) == 9 && len < 20) spoil(dst, len - 1);
  return status;
}

namespace {
const Fault xorLast("kvrsXor_32u leaves out the last element above 1,100", "Logic.Xor");
const Fault xorOneLength("kvrsXor_32u at one length", "Logic.Xor");
}  // namespace

KvrStatus kvrsXor_32u(const Kvr32u* src1, const Kvr32u* src2, Kvr32u* dst, int len) noexcept {
  static const auto xor32 = right<decltype(kvrsXor_32u)>("kvrsXor_32u");
  const KvrStatus status = xor32(src1, src2, dst, xorLast.isOn() && len > 1100 ? len - 1 : len);
  if (xorOneLength.isOn() && len == 47 && status == kvrStatusOk) spoil(dst, 46);
  return status;
}

namespace {
const Fault notReads("kvrsNot_8u reads behind its source", "Logic.Not");
const Fault notStatus("kvrsNot_8u returns a warning", "Logic.Not");

volatile uint8_t sink;
}  // namespace

KvrStatus kvrsNot_8u(const Kvr8u* src, Kvr8u* dst, int len) noexcept {
  static const auto not8 = right<decltype(kvrsNot_8u)>("kvrsNot_8u");
  const KvrStatus status = not8(src, dst, len);
  if (status != kvrStatusOk) return status;
  if (notReads.isOn()) sink = src[len];
  return notStatus.isOn() ? kvrStatusDivByZeroWarn : status;
}

namespace {
const Fault orReads("kvrsOr_16u reads ahead of its second source", "Logic.Or");
const Fault orWrites("kvrsOr_16u writes to a source", "Logic.Or");
}  // namespace

KvrStatus kvrsOr_16u(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len) noexcept {
  static const auto or16 = right<decltype(kvrsOr_16u)>("kvrsOr_16u");
  const KvrStatus status = or16(src1, src2, dst, len);
  if (status != kvrStatusOk) return status;
  if (orReads.isOn()) sink = reinterpret_cast<const uint8_t*>(src2)[-1];
  if (orWrites.isOn()) spoil(const_cast<Kvr16u*>(src1), len - 1);
  return status;
}

namespace {
const Fault andWrites("kvrsAnd_8u writes behind dst", "Logic.And");
const Fault andRewrites("kvrsAnd_8u writes back what is behind dst", "Logic.And");
const Fault andAhead("kvrsAnd_8u writes ahead of dst", "Logic.And");
}  // namespace

KvrStatus kvrsAnd_8u(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len) noexcept {
  static const auto and8 = right<decltype(kvrsAnd_8u)>("kvrsAnd_8u");
  const KvrStatus status = and8(src1, src2, dst, len);
  if (status != kvrStatusOk) return status;
  // The page behind an array is the subject of another fault: this one keeps to the page it is on.
  const bool isSafe = (reinterpret_cast<uintptr_t>(dst + len) & 4095) != 0;
  if (andWrites.isOn() && isSafe) spoil(dst, len);
  if (andRewrites.isOn()) *const_cast<volatile Kvr8u*>(dst + len) = dst[len];
  if (andAhead.isOn() && (reinterpret_cast<uintptr_t>(dst) & 4095) != 0) spoil(dst, -1);
  return status;
}

namespace {
const Fault divHalf("kvrsDiv_32f leaves half of a threaded result zero", "DivideFloat.Div32f");
const Fault divWarning("kvrsDiv_32f forgets its warning", "DivideFloat.*");
}  // namespace

KvrStatus kvrsDiv_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  static const auto div = right<decltype(kvrsDiv_32f)>("kvrsDiv_32f");
  const KvrStatus status = div(src1, src2, dst, len);
  if (status < kvrStatusOk) return status;
  if (divHalf.isOn() && ownGetNumThreads() > 1 && len > kFar) memset(dst, 0, 2 * static_cast<size_t>(len));
  return divWarning.isOn() ? kvrStatusOk : status;
}

namespace {
const Fault magnitudeSlice("kvrsMagnitude_32f leaves out the last element of a slice", "Magnitude.*");
}

KvrStatus kvrsMagnitude_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dst, int len) noexcept {
  static const auto magnitude = right<decltype(kvrsMagnitude_32f)>("kvrsMagnitude_32f");
  const KvrStatus status = magnitude(srcRe, srcIm, dst, len);
  const bool isSliced = status == kvrStatusOk && ownGetNumThreads() > 1 && len > kFar;
  if (magnitudeSlice.isOn() && isSliced) spoil(dst, len / ownGetNumThreads() - 1);
  return status;
}

namespace {
const Fault convertAlias("kvrsConvert_32s32f where dst is its source", "ConvertToFloat.*");
const Fault convertNearest("kvrsConvert_32s32f rounds to nearest in every mode", "ConvertToFloat.*");
}  // namespace

KvrStatus kvrsConvert_32s32f(const Kvr32s* src, Kvr32f* dst, int len) noexcept {
  static const auto convert = right<decltype(kvrsConvert_32s32f)>("kvrsConvert_32s32f");
  const bool isAlias = static_cast<const void*>(src) == dst;
  const int mode = fegetround();
  if (convertNearest.isOn()) fesetround(FE_TONEAREST);
  const KvrStatus status = convert(src, dst, len);
  if (convertNearest.isOn()) fesetround(mode);
  if (convertAlias.isOn() && isAlias && status == kvrStatusOk && len > 3) spoil(dst, 3);
  return status;
}

namespace {
const Fault zeroLast("kvrsZero_8u leaves out the last element of long vectors", "Zero.*");
}

KvrStatus kvrsZero_8u(Kvr8u* dst, int len) noexcept {
  static const auto zero = right<decltype(kvrsZero_8u)>("kvrsZero_8u");
  return zero(dst, zeroLast.isOn() && len > kFar ? len - 1 : len);
}

namespace {
const Fault absRead("kvrsAbs_16s in whole blocks behind its source", "Abs.Integers");
}

KvrStatus kvrsAbs_16s(const Kvr16s* src, Kvr16s* dst, int len) noexcept {
  static const auto abs16 = right<decltype(kvrsAbs_16s)>("kvrsAbs_16s");
  const KvrStatus status = abs16(src, dst, len);
  if (absRead.isOn() && status == kvrStatusOk)
    sink = reinterpret_cast<const uint8_t*>(src)[(2 * len + 15) / 16 * 16 - 1];
  return status;
}
