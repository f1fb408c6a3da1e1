// The vectors of the module's target: Highway, with the instruction set fixed by the compiler's flags. The
// only place that knows about instruction sets. SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_SIMD_H
#define KVRS_FRAME_SIMD_H

// One target for each module, chosen by the flags of its build; no dispatch at run time.
#define HWY_COMPILE_ONLY_STATIC 1
// Carry-less multiply and AES are in no x86-64 level; asking for them would push v3 and v4 down to 128 bits.
#define HWY_DISABLE_PCLMUL_AES 1
#include <hwy/cache_control.h>
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

// General vector registers: what a kernel may keep live without spilling.
inline constexpr int kVectorRegisters = HWY_TARGET <= HWY_AVX3 ? 32 : HWY_ARCH_X86_64 ? 16 : 8;

// A tag for vectors of exactly N lanes of T.
template <class T, size_t N>
using Lanes = hn::CappedTag<T, N>;

// The lanes of a full vector of T.
template <class T>
inline constexpr size_t kLanes = kVectorBytes / sizeof(T);

}  // namespace kvrs

#endif
