// Where the scale factors of the scaled integer families change kernel. The first number is the largest scale
// factor at which some exact result still rounds to something else than 0, the second one the largest at
// which every result but 0 saturates.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_SCALED_BOUNDS_H
#define KVRS_VECTOR_SCALED_BOUNDS_H

#include "frame/scale.h"

namespace kvrs {

// clang-format off
inline constexpr ScaleBounds
    kAdd8u            {9,   -8},
    kAdd16u           {17, -16},
    kAdd16s           {16, -16},  // and 16sc
    kAdd32s           {32, -31},  // and 32sc
    kAdd64s           {63, -63},
    kSub8u            {8,   -8},
    kSub16u           {16, -16},
    kSub16s           {16, -16},  // and 16sc
    kSub32s           {32, -31},  // and 32sc
    kMul8u            {16,  -8},
    kMul16u           {32, -16},
    kMul16s           {30, -16},
    kMul16sc          {31, -16},
    kMul16u16s        {31, -15},
    kMul16s32s        {30, -31},
    kMul32s           {62, -32},  // and 32s32sc
    kMul32sc          {63, -32},
    kMulLow32s        {62, -32},
    kAddProduct16s    {31, -15},
    kAddProduct16s32s {32, -31},
    kAddProduct32s    {62, -31};
// clang-format on

}  // namespace kvrs

#endif
