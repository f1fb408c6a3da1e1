// SPDX-License-Identifier: MIT
#include "frame/rounding.h"

#include <gtest/gtest.h>

using namespace kvrs;

namespace {

constexpr Rounding kModes[] = {Rounding::nearest, Rounding::down, Rounding::up, Rounding::zero};
constexpr unsigned kFlags = 0x3F;

unsigned vectorMode() {
  return _mm_getcsr() >> 13 & 3;
}

// 2.5 and -2.5 as integers, under the vector unit's mode.
void expectVectorMode(Rounding mode) {
  volatile double plus = 2.5, minus = -2.5;
  const int wantPlus = mode == Rounding::up ? 3 : 2;
  const int wantMinus = mode == Rounding::down ? -3 : -2;
  EXPECT_EQ(wantPlus, _mm_cvtsd_si32(_mm_set_sd(plus)));
  EXPECT_EQ(wantMinus, _mm_cvtsd_si32(_mm_set_sd(minus)));
}

TEST(Rounding, EveryModeInEveryMode) {
  const unsigned before = _mm_getcsr();
  for (Rounding callers : kModes) {
    _mm_setcsr((before & ~(3u << 13)) | static_cast<unsigned>(callers) << 13);
    for (Rounding forced : kModes) {
      const VectorRoundingScope scope(forced);
      EXPECT_EQ(static_cast<unsigned>(forced), vectorMode());
      expectVectorMode(forced);
    }
    EXPECT_EQ(static_cast<unsigned>(callers), vectorMode());
  }
  _mm_setcsr(before);
}

// Flags raised before stay raised, those raised inside come out, and none is raised by the change itself.
TEST(Rounding, FlagsAreLeftAlone) {
  const unsigned before = _mm_getcsr();
  for (Rounding forced : kModes) {
    for (unsigned flags : {0u, 0x01u, 0x20u, kFlags}) {
      _mm_setcsr((before & ~kFlags) | flags);
      { const VectorRoundingScope scope(forced); }
      EXPECT_EQ(flags, _mm_getcsr() & kFlags);
      {
        const VectorRoundingScope scope(forced);
        volatile double one = 1, three = 3, third;
        third = one / three;
        (void)third;
      }
      EXPECT_EQ(flags | 0x20u, _mm_getcsr() & kFlags);
    }
  }
  _mm_setcsr(before);
}

TEST(Rounding, ExtendedPrecisionAndMode) {
  fpu_control_t before;
  _FPU_GETCW(before);
  fpu_control_t callers = static_cast<fpu_control_t>((before & ~0x0F00) | _FPU_DOUBLE | _FPU_RC_UP);
  _FPU_SETCW(callers);
  for (Rounding forced : kModes) {
    {
      const ExtendedRoundingScope scope(forced);
      fpu_control_t now;
      _FPU_GETCW(now);
      EXPECT_EQ(static_cast<unsigned>(forced), static_cast<unsigned>(now) >> 10 & 3);
      EXPECT_EQ(static_cast<unsigned>(_FPU_EXTENDED), static_cast<unsigned>(now) & _FPU_EXTENDED);
      // Half a unit in the last of 64 places: up stays above, the others fall back to 1 (a tie is to even).
      volatile long double one = 1, tiny = 0x1p-64L, sum;
      sum = one + tiny;
      EXPECT_EQ(forced == Rounding::up, sum > one);
      volatile long double place = 0x1p-63L;
      sum = one + place;
      EXPECT_TRUE(sum > one);
    }
    fpu_control_t after;
    _FPU_GETCW(after);
    EXPECT_EQ(callers, after);
  }
  _FPU_SETCW(before);
}

}  // namespace
