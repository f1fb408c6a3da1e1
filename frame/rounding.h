// Forcing a rounding mode for the length of a scope, and handing the caller's on to other threads.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_ROUNDING_H
#define KVRS_FRAME_ROUNDING_H

#include <fpu_control.h>
#include <xmmintrin.h>

namespace kvrs {

enum class Rounding : unsigned { nearest = 0, down = 1, up = 2, zero = 3 };

// Sets the rounding field of the vector unit's control word and gives the caller's back at the end of the
// scope. Exception flags and masks stay as they are. The control word is only written when it changes: a
// write costs about as much as twenty additions.
class VectorRoundingScope {
 public:
  explicit VectorRoundingScope(Rounding mode) : before_(_mm_getcsr()) {
    const unsigned wanted = (before_ & ~kField) | (static_cast<unsigned>(mode) << 13);
    changed_ = wanted != before_;
    if (changed_) _mm_setcsr(wanted);
  }
  ~VectorRoundingScope() {
    if (changed_) _mm_setcsr((_mm_getcsr() & ~kField) | (before_ & kField));
  }
  VectorRoundingScope(const VectorRoundingScope&) = delete;
  VectorRoundingScope& operator=(const VectorRoundingScope&) = delete;

 private:
  static constexpr unsigned kField = 3u << 13;
  unsigned before_;
  bool changed_;
};

// Gives a thread of a team the control bits of the vector unit that its master has: rounding field, masks,
// what becomes of denormals. A thread is made with those of whoever made it, which may be long ago.
class VectorControlScope {
 public:
  static unsigned current() { return _mm_getcsr() & ~kFlags; }

  explicit VectorControlScope(unsigned control) : before_(_mm_getcsr()) {
    changed_ = control != (before_ & ~kFlags);
    if (changed_) _mm_setcsr(control | (before_ & kFlags));
  }
  ~VectorControlScope() {
    if (changed_) _mm_setcsr(before_ | (_mm_getcsr() & kFlags));
  }
  VectorControlScope(const VectorControlScope&) = delete;
  VectorControlScope& operator=(const VectorControlScope&) = delete;

 private:
  static constexpr unsigned kFlags = 0x3F;
  unsigned before_;
  bool changed_;
};

// What VectorRoundingScope is, for the x87 unit, in which `long double` is computed; it also sets 64-bit
// precision.
class ExtendedRoundingScope {
 public:
  explicit ExtendedRoundingScope(Rounding mode) {
    _FPU_GETCW(before_);
    fpu_control_t wanted = static_cast<fpu_control_t>((before_ & ~kFields) | _FPU_EXTENDED |
                                                      (static_cast<unsigned>(mode) << 10));
    _FPU_SETCW(wanted);
  }
  ~ExtendedRoundingScope() { _FPU_SETCW(before_); }
  ExtendedRoundingScope(const ExtendedRoundingScope&) = delete;
  ExtendedRoundingScope& operator=(const ExtendedRoundingScope&) = delete;

 private:
  static constexpr unsigned kFields = (3u << 10) | _FPU_EXTENDED;
  fpu_control_t before_;
};

}  // namespace kvrs

#endif
