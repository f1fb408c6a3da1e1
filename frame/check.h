// Argument checks, written at the head of an export in the order of its contract:
//
//   KVRS_CHECK(pointers(src, dst), length(len), shiftCount(val));
//
// returns the status of the first check that fails. All checks of one KVRS_CHECK are evaluated, so a check
// that looks behind a pointer tests that pointer itself.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_CHECK_H
#define KVRS_FRAME_CHECK_H

#include <cstddef>
#include <cstdint>

#include "kvrs/types.h"

#define KVRS_CHECK(...)                                          \
  do {                                                           \
    using namespace ::kvrs::check;                               \
    const KvrStatus bad = ::kvrs::check::firstBad(__VA_ARGS__);  \
    if (__builtin_expect(bad != kvrStatusOk, false)) return bad; \
  } while (false)

namespace kvrs::check {

template <class... Rest>
constexpr KvrStatus firstBad(KvrStatus first, Rest... rest) {
  if constexpr (sizeof...(rest) == 0) {
    return first;
  } else {
    return first != kvrStatusOk ? first : firstBad(rest...);
  }
}

// `status` unless the condition holds.
constexpr KvrStatus require(bool condition, KvrStatus status) {
  return condition ? kvrStatusOk : status;
}

template <class... T>
constexpr KvrStatus pointers(const T*... p) {
  return require(((p != nullptr) && ...), kvrStatusNullPointer);
}

constexpr KvrStatus length(int len) {
  return require(len >= 1, kvrStatusBadLength);
}

// The same for an array of T that has to fit into the address space: no array of so many can be there.
template <class T>
constexpr KvrStatus lengthOf(int len) {
  return require(len >= 1 && static_cast<size_t>(len) <= SIZE_MAX / sizeof(T), kvrStatusBadLength);
}

constexpr KvrStatus shiftCount(int count) {
  return require(count >= 0, kvrStatusBadShift);
}

// Of functions that accept all three modes.
constexpr KvrStatus roundMode(KvrRoundMode mode) {
  return require(mode == kvrRoundZero || mode == kvrRoundNear || mode == kvrRoundFinancial,
                 kvrStatusBadRoundMode);
}

// For a scalar divisor: an error, and nothing is divided.
constexpr KvrStatus divisor(bool isZero) {
  return require(!isZero, kvrStatusDivByZeroError);
}

constexpr KvrStatus tapsLength(int tapsLen) {
  return require(tapsLen >= 1, kvrStatusBadTapsLength);
}

// A context: there, and its first word one of `words`. Every context begins with a 32-bit identifier word.
template <class Context, class... Word>
KvrStatus context(const Context* record, Word... words) {
  if (record == nullptr) return kvrStatusNullPointer;
  const uint32_t word = *reinterpret_cast<const uint32_t*>(record);
  return require(((word == static_cast<uint32_t>(words)) || ...), kvrStatusContextMismatch);
}

}  // namespace kvrs::check

#endif
