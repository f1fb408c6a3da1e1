// The vector unit's control register out of the way for the length of a call, and its exception flags.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_MASKED_CONTROL_H
#define KVRS_FRAME_MASKED_CONTROL_H

#include "frame/rounding.h"

namespace kvrs {
namespace rounding_detail {

[[gnu::noinline]] inline void runMasked(Rounding, Run run, void* kernel) {
  constexpr unsigned kMasks = 0x1F80, kDenormalsAreZero = 0x40;
  const unsigned before = _mm_getcsr(), wanted = (before | kMasks) & ~kDenormalsAreZero;
  if (wanted != before) _mm_setcsr(wanted);
  callUnseen(run, kernel);
  if (_mm_getcsr() != before) _mm_setcsr(before);
}

}  // namespace rounding_detail

// Exception flags of the vector unit.
inline constexpr unsigned kInvalidOperation = 1, kUnderflow = 16;

inline void clearExceptions(unsigned flags) {
  const unsigned control = _mm_getcsr();
  if ((control & flags) != 0) _mm_setcsr(control & ~flags);
}

// Returns kernel(), run with all exceptions masked and denormals counting as they are. The whole register, exception flags
// included, is as before afterwards.
template <class Kernel>
auto underMaskedControl(Kernel kernel) {
  return rounding_detail::call(rounding_detail::runMasked, currentRounding(), kernel);
}

}  // namespace kvrs

#endif
