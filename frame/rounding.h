// Forcing a rounding mode for the length of a call.
//
// To a compiler a change of the control word and an addition have nothing to do with each other: it moves arithmetic
// across the change, out of the mode that it is meant for or into it. So the only way to a forced mode is a call that
// no compiler sees through in either direction: what the caller computes before or after it, and what the kernel
// computes, stay where they are.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_ROUNDING_H
#define KVRS_FRAME_ROUNDING_H

#include <fpu_control.h>
#include <xmmintrin.h>

#include <type_traits>

namespace kvrs {

enum class Rounding : unsigned { nearest = 0, down = 1, up = 2, zero = 3 };

// The mode that the vector unit is in.
inline Rounding currentRounding() {
  return static_cast<Rounding>(_mm_getcsr() >> 13 & 3);
}

namespace rounding_detail {

using Run = void (*)(void*);

// Calls a function that the compiler knows nothing about, though it may have seen its body: it may neither look into
// it nor take it for one without side effects.
inline void callUnseen(Run run, void* kernel) {
  asm volatile("" : "+r"(run) : : "memory");
  run(kernel);
}

// A control word is only written when it changes: a write costs about as much as twenty additions.

[[gnu::noinline]] inline void runInVectorUnit(Rounding mode, Run run, void* kernel) {
  constexpr unsigned kField = 3u << 13;
  const unsigned before = _mm_getcsr(), wanted = (before & ~kField) | static_cast<unsigned>(mode) << 13;
  if (wanted == before) return callUnseen(run, kernel);
  _mm_setcsr(wanted);
  callUnseen(run, kernel);
  _mm_setcsr((_mm_getcsr() & ~kField) | (before & kField));
}

[[gnu::noinline]] inline void runInExtendedUnit(Rounding mode, Run run, void* kernel) {
  constexpr unsigned kFields = 3u << 10 | _FPU_EXTENDED;
  fpu_control_t before;
  _FPU_GETCW(before);
  fpu_control_t wanted =
      static_cast<fpu_control_t>((before & ~kFields) | _FPU_EXTENDED | static_cast<unsigned>(mode) << 10);
  if (wanted == before) return callUnseen(run, kernel);
  _FPU_SETCW(wanted);
  callUnseen(run, kernel);
  _FPU_SETCW(before);
}

template <class Kernel>
auto call(void (*force)(Rounding, Run, void*), Rounding mode, Kernel& kernel) {
  using Result = decltype(kernel());
  if constexpr (std::is_void_v<Result>) {
    force(
        mode, [](void* p) { (*static_cast<Kernel*>(p))(); }, &kernel);
  } else {
    struct Frame {
      Kernel& kernel;
      Result result;
    } frame{kernel, {}};
    const auto run = [](void* p) {
      Frame& f = *static_cast<Frame*>(p);
      f.result = f.kernel();
    };
    force(mode, run, &frame);
    return frame.result;
  }
}

}  // namespace rounding_detail

// Returns kernel(), run with the vector unit rounding in this mode; the caller's mode is back afterwards. Exception
// flags and masks are left alone.
//
//   return underRounding(Rounding::nearest, [=] { return mapElements(op, dst, len, src); });
template <class Kernel>
auto underRounding(Rounding mode, Kernel kernel) {
  return rounding_detail::call(rounding_detail::runInVectorUnit, mode, kernel);
}

// The same for the x87 unit, in which `long double` is computed; it also sets 64-bit precision.
template <class Kernel>
auto underExtendedRounding(Rounding mode, Kernel kernel) {
  return rounding_detail::call(rounding_detail::runInExtendedUnit, mode, kernel);
}

}  // namespace kvrs

#endif
