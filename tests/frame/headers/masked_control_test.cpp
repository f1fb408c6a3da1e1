// SPDX-License-Identifier: MIT
#include "frame/masked_control.h"

#include <gtest/gtest.h>

using namespace kvrs;

namespace {

constexpr unsigned kDenormalsAreZero = 0x40, kFlushToZero = 0x8000, kMasks = 0x1F80, kFlags = 0x3F;

TEST(MaskedControl, MaskedInsideAndGivenBack) {
  const unsigned before = _mm_getcsr();
  for (unsigned control :
       {kMasks, kMasks | kDenormalsAreZero, kMasks | kFlushToZero | 0x2000, kMasks | 0x11, 0x1D00u}) {
    _mm_setcsr(control);
    unsigned inside = 0;
    const int result = underMaskedControl([&] {
      inside = _mm_getcsr();
      _mm_setcsr(inside | kFlags);  // the kernel raises all flags there are
      return 42;
    });
    const unsigned after = _mm_getcsr();
    _mm_setcsr(before);
    EXPECT_EQ(42, result);
    EXPECT_EQ(control, after);
    EXPECT_EQ((control | kMasks) & ~kDenormalsAreZero, inside);
  }
}

TEST(MaskedControl, ClearedExceptions) {
  const unsigned before = _mm_getcsr();
  _mm_setcsr(kMasks | kFlags);
  clearExceptions(kInvalidOperation | kUnderflow);
  const unsigned after = _mm_getcsr();
  _mm_setcsr(kMasks | 0x20);
  clearExceptions(kUnderflow);
  const unsigned untouched = _mm_getcsr();
  _mm_setcsr(before);
  EXPECT_EQ(kMasks | (kFlags & ~0x11u), after);
  EXPECT_EQ(kMasks | 0x20, untouched);
}

}  // namespace
