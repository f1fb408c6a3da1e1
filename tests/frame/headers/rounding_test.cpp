// SPDX-License-Identifier: MIT
#include "frame/rounding.h"

#include <gtest/gtest.h>

using namespace kvrs;

namespace {

constexpr Rounding kModes[] = {Rounding::nearest, Rounding::down, Rounding::up, Rounding::zero};
constexpr unsigned kFlags = 0x3F;

// The vector unit's control word for as long as a test lasts.
class CallersMode {
 public:
  explicit CallersMode(Rounding mode) : before_(_mm_getcsr()) {
    _mm_setcsr((before_ & ~(3u << 13)) | static_cast<unsigned>(mode) << 13);
  }
  ~CallersMode() { _mm_setcsr(before_); }

 private:
  unsigned before_;
};

// 2.5 and -2.5 as integers, under the vector unit's mode.
void expectVectorMode(Rounding mode) {
  volatile double plus = 2.5, minus = -2.5;
  const int wantPlus = mode == Rounding::up ? 3 : 2;
  const int wantMinus = mode == Rounding::down ? -3 : -2;
  EXPECT_EQ(wantPlus, _mm_cvtsd_si32(_mm_set_sd(plus)));
  EXPECT_EQ(wantMinus, _mm_cvtsd_si32(_mm_set_sd(minus)));
}

TEST(Rounding, EveryModeInEveryMode) {
  for (Rounding callers : kModes) {
    const CallersMode mode(callers);
    for (Rounding forced : kModes) {
      underRounding(forced, [=] {
        EXPECT_EQ(forced, currentRounding());
        expectVectorMode(forced);
      });
      EXPECT_EQ(callers, currentRounding());
    }
  }
}

TEST(Rounding, Nested) {
  const CallersMode mode(Rounding::down);
  underRounding(Rounding::up, [] {
    underRounding(Rounding::zero, [] { expectVectorMode(Rounding::zero); });
    expectVectorMode(Rounding::up);
  });
  expectVectorMode(Rounding::down);
}

TEST(Rounding, ReturnsWhatTheKernelReturns) {
  const int seven = 7;
  EXPECT_EQ(7, underRounding(Rounding::up, [=] { return seven; }));
  EXPECT_EQ(nullptr, underExtendedRounding(Rounding::up, []() -> int* { return nullptr; }));
}

// One product in all modes and outside of them: in the eyes of a compiler the same number five times over, which it
// would compute once, and anywhere.
[[gnu::noinline]] void expectFiveProducts(double x, double y) {
  const double down = underRounding(Rounding::down, [=] { return x * y; });
  const double up = underRounding(Rounding::up, [=] { return x * y; });
  const double zero = underRounding(Rounding::zero, [=] { return x * y; });
  const double nearest = underRounding(Rounding::nearest, [=] { return x * y; });
  const double callers = x * y;
  EXPECT_LT(down, up);
  EXPECT_EQ(x * y < 0 ? up : down, zero);
  EXPECT_TRUE(nearest == down || nearest == up);
  EXPECT_EQ(currentRounding() == Rounding::up     ? up
            : currentRounding() == Rounding::down ? down
                                                  : nearest,
            callers);
}

// Arithmetic ahead of the call, whose result only the kernel uses, and behind it.
[[gnu::noinline]] void expectAheadAndBehind(double x, double y) {
  const double ahead = x * y;
  double inside = 0;
  const auto kernel = [&] { inside = ahead - x * y; };
  underRounding(currentRounding() == Rounding::up ? Rounding::down : Rounding::up, kernel);
  const double behind = x * y;
  EXPECT_NE(0, inside);
  EXPECT_EQ(ahead, behind);
}

TEST(Rounding, NothingMovesInOrOut) {
  for (Rounding callers : {Rounding::nearest, Rounding::up, Rounding::down}) {
    const CallersMode mode(callers);
    expectFiveProducts(1.1, 1.3);
    expectFiveProducts(-1.1, 1.3);
  }
  for (Rounding callers : {Rounding::up, Rounding::down}) {
    const CallersMode mode(callers);
    expectAheadAndBehind(1.1, 1.3);
  }
}

// Flags raised before stay raised, those raised inside come out, and none is raised by the change itself.
TEST(Rounding, FlagsAreLeftAlone) {
  const unsigned before = _mm_getcsr();
  for (Rounding forced : kModes) {
    for (unsigned flags : {0u, 0x01u, 0x20u, kFlags}) {
      _mm_setcsr((before & ~kFlags) | flags);
      underRounding(forced, [] {});
      EXPECT_EQ(flags, _mm_getcsr() & kFlags);
      underRounding(forced, [] {
        volatile double one = 1, three = 3, third;
        third = one / three;
        (void)third;
      });
      EXPECT_EQ(flags | 0x20u, _mm_getcsr() & kFlags);
    }
  }
  _mm_setcsr(before);
}

TEST(Rounding, ExtendedPrecisionAndMode) {
  fpu_control_t before;
  _FPU_GETCW(before);
  for (unsigned precision : {_FPU_SINGLE, _FPU_DOUBLE, _FPU_EXTENDED}) {
    for (Rounding mode : kModes) {
      fpu_control_t callers =
          static_cast<fpu_control_t>((before & ~0x0F00u) | precision | static_cast<unsigned>(mode) << 10);
      _FPU_SETCW(callers);
      for (Rounding forced : kModes) {
        underExtendedRounding(forced, [=] {
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
        });
        fpu_control_t after;
        _FPU_GETCW(after);
        EXPECT_EQ(callers, after);
      }
    }
  }
  _FPU_SETCW(before);
}

}  // namespace
