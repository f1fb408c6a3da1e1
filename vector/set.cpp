// Constant vectors. What is repeated are the value's bits, so that one kernel serves all types of a width.
//
// Each name has a function of its own, also where two do the same: kvrsSet_32fc and kvrsSet_32sc, or
// kvrsSet_64f and kvrsSet_64s, get their value in registers of different kinds in 64-bit code, so one symbol
// could not serve both.
// SPDX-License-Identifier: MIT
#include <bit>
#include <cstring>

#include "frame/check.h"
#include "kvrs/fill.h"
#include "vector/fill.h"

namespace kvrs {
namespace {

// dst[i] = val for elements of Word's width.
template <class Word, class T>
KvrStatus setVector(Word val, T* dst, int len) {
  static_assert(sizeof(Word) == sizeof(T));
  if (fillMasked<Word>(Fill<Word>{val}, dst, len)) return kvrStatusOk;
  KVRS_CHECK(pointers(dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if constexpr (sizeof(Word) == 1) {
    if (__builtin_expect(n >= kLibraryFill, false)) {
      memset(dst, val, n);
      return kvrStatusOk;
    }
  }
  return fillElements(Fill<Word>{val}, reinterpret_cast<Word*>(dst), n);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSet_8u(Kvr8u val, Kvr8u* dst, int len) noexcept {
  return setVector(std::bit_cast<Kvr8u>(val), dst, len);
}
KvrStatus kvrsSet_16s(Kvr16s val, Kvr16s* dst, int len) noexcept {
  return setVector(std::bit_cast<Kvr16u>(val), dst, len);
}
KvrStatus kvrsSet_16sc(Kvr16sc val, Kvr16sc* dst, int len) noexcept {
  return setVector(std::bit_cast<Kvr32u>(val), dst, len);
}
KvrStatus kvrsSet_32s(Kvr32s val, Kvr32s* dst, int len) noexcept {
  return setVector(std::bit_cast<Kvr32u>(val), dst, len);
}
KvrStatus kvrsSet_32f(Kvr32f val, Kvr32f* dst, int len) noexcept {
  return setVector(std::bit_cast<Kvr32u>(val), dst, len);
}
KvrStatus kvrsSet_32sc(Kvr32sc val, Kvr32sc* dst, int len) noexcept {
  return setVector(std::bit_cast<Kvr64u>(val), dst, len);
}
KvrStatus kvrsSet_32fc(Kvr32fc val, Kvr32fc* dst, int len) noexcept {
  return setVector(std::bit_cast<Kvr64u>(val), dst, len);
}
KvrStatus kvrsSet_64s(Kvr64s val, Kvr64s* dst, int len) noexcept {
  return setVector(std::bit_cast<Kvr64u>(val), dst, len);
}
KvrStatus kvrsSet_64f(Kvr64f val, Kvr64f* dst, int len) noexcept {
  return setVector(std::bit_cast<Kvr64u>(val), dst, len);
}
KvrStatus kvrsSet_64sc(Kvr64sc val, Kvr64sc* dst, int len) noexcept {
  return setVector(std::bit_cast<Pair<Kvr64u>>(val), dst, len);
}
KvrStatus kvrsSet_64fc(Kvr64fc val, Kvr64fc* dst, int len) noexcept {
  return setVector(std::bit_cast<Pair<Kvr64u>>(val), dst, len);
}
