// The vectors of the module's target: Highway, with the instruction set fixed by the compiler's flags. The
// only place that knows about instruction sets.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_SIMD_H
#define KVRS_FRAME_SIMD_H

// One target for each module, chosen by the flags of its build; no dispatch at run time.
#define HWY_COMPILE_ONLY_STATIC 1
// Carry-less multiply and AES are in no x86-64 level; asking for them would push v3 and v4 down to 128 bits.
#define HWY_DISABLE_PCLMUL_AES 1
#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>

#include "kvrs/types.h"

#define KVRS_INLINE inline __attribute__((always_inline))

namespace kvrs {

namespace hn = hwy::HWY_NAMESPACE;

// Bytes of the widest vector: 16 in s8 and v2, 32 in v3, 64 in v4.
inline constexpr size_t kVectorBytes = HWY_LANES(uint8_t);

// Whether MulAdd is one rounding (v3, v4) or two (s8, v2).
inline constexpr bool kFusedMulAdd = HWY_TARGET <= HWY_AVX2;

// Whether lanes of two vectors are merged in one operation: not in s8, which has no blend.
inline constexpr bool kBlends = HWY_TARGET <= HWY_SSE4;

// Whether bytes are widened to 32 bits in one operation: not in s8.
inline constexpr bool kWidensBytes = HWY_TARGET <= HWY_SSE4;

// Whether there is a widening multiply of signed 32-bit lanes (all but s8).
inline constexpr bool kSignedMulEven = HWY_TARGET <= HWY_SSE4;

// Whether comparisons give masks in registers of their own, which arithmetic takes for free (v4).
inline constexpr bool kMaskRegisters = HWY_TARGET <= HWY_AVX3;

// The first `count` lanes, at most all.
template <class D>
KVRS_INLINE hn::Mask<D> firstLanes([[maybe_unused]] D d, size_t count) {
#if HWY_TARGET <= HWY_AVX3 && HWY_ARCH_X86_64
  // Highway's also asks whether the count is above 255.
  return hn::Mask<D>{static_cast<decltype(hn::Mask<D>::raw)>(_bzhi_u64(~0ull, count))};
#else
  return hn::FirstN(d, count);
#endif
}

// Where both masks are set, kMaskRegisters given. To Highway's And the compiler cannot say that a comparison takes a
// mask for free.
template <class M>
KVRS_INLINE M bothMasks(M a, M b) {
  return M{static_cast<decltype(a.raw)>(a.raw & b.raw)};
}

// Whether the processor converts between single and half precision, and between double and 64-bit integers.
inline constexpr bool kHalfConversions = HWY_TARGET <= HWY_AVX2;
inline constexpr bool kInt64Conversions = HWY_TARGET <= HWY_AVX3;

// Whether hn::Shr on lanes of 32 bits is one instruction.
inline constexpr bool kShiftsByLane = HWY_TARGET <= HWY_AVX3;

// General vector registers: what a kernel may keep live without spilling.
inline constexpr int kVectorRegisters = HWY_TARGET <= HWY_AVX3 ? 32 : HWY_ARCH_X86_64 ? 16 : 8;

// v in a register of its own. Without this the compiler may load a vector again from memory at each of its uses,
// which looks free to it, as arithmetic can take an operand from memory.
template <class V>
KVRS_INLINE V inRegister(V v) {
  asm("" : "+v"(v.raw));
  return v;
}
// A number: the compiler may not make vectors of this and its neighbours.
KVRS_INLINE float inRegister(float number) {
  asm("" : "+x"(number));
  return number;
}
KVRS_INLINE double inRegister(double number) {
  asm("" : "+x"(number));
  return number;
}

// Even lanes x - y, odd lanes x + y: one instruction that s8 needs a name for. Elsewhere, and in double precision, the
// compiler makes it of a sum, a difference and their merging.
template <size_t N>
KVRS_INLINE hn::Vec128<float, N> subAddLanes(hn::Vec128<float, N> x, hn::Vec128<float, N> y) {
  return hn::Vec128<float, N>{_mm_addsub_ps(x.raw, y.raw)};
}

// A tag for vectors of exactly N lanes of T.
template <class T, size_t N>
using Lanes = hn::CappedTag<T, N>;

// The lanes of a full vector of T.
template <class T>
inline constexpr size_t kLanes = kVectorBytes / sizeof(T);

#if HWY_TARGET <= HWY_AVX3
// Lane i is lane from[i] of `lower`, or lane from[i] - 16 of `upper`.
KVRS_INLINE hn::Vec512<float> lanesOf(hn::Vec512<float> upper, hn::Vec512<float> lower,
                                      hn::Vec512<int32_t> from) {
  return hn::Vec512<float>{_mm512_permutex2var_ps(lower.raw, from.raw, upper.raw)};
}
#endif

// Even (odd) lanes over their odd (even) neighbours. Highway's take the one shuffle unit; on single precision
// these take none at all where the operand comes from memory.
template <class V>
KVRS_INLINE V dupEven(V v) {
  return hn::DupEven(v);
}
template <class V>
KVRS_INLINE V dupOdd(V v) {
  return hn::DupOdd(v);
}
template <size_t N>
KVRS_INLINE hn::Vec128<float, N> dupEven(hn::Vec128<float, N> v) {
  return hn::Vec128<float, N>{_mm_moveldup_ps(v.raw)};
}
template <size_t N>
KVRS_INLINE hn::Vec128<float, N> dupOdd(hn::Vec128<float, N> v) {
  return hn::Vec128<float, N>{_mm_movehdup_ps(v.raw)};
}
#if HWY_TARGET <= HWY_AVX2
KVRS_INLINE hn::Vec256<float> dupEven(hn::Vec256<float> v) {
  return hn::Vec256<float>{_mm256_moveldup_ps(v.raw)};
}
KVRS_INLINE hn::Vec256<float> dupOdd(hn::Vec256<float> v) {
  return hn::Vec256<float>{_mm256_movehdup_ps(v.raw)};
}
#endif
#if HWY_TARGET <= HWY_AVX3
KVRS_INLINE hn::Vec512<float> dupEven(hn::Vec512<float> v) {
  return hn::Vec512<float>{_mm512_moveldup_ps(v.raw)};
}
KVRS_INLINE hn::Vec512<float> dupOdd(hn::Vec512<float> v) {
  return hn::Vec512<float>{_mm512_movehdup_ps(v.raw)};
}
#endif

}  // namespace kvrs

#endif
