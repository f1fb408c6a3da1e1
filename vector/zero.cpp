// Zeros: Set with the value 0, one kernel for each width of elements. Names of one width share a symbol, see
// frame/aliases.def.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "kvrs/fill.h"
#include "vector/fill.h"

using namespace kvrs;

KvrStatus kvrsZero_8u(Kvr8u* dst, int len) noexcept {
  return fillVector<Kvr8u>({}, dst, len);
}
KvrStatus kvrsZero_16s(Kvr16s* dst, int len) noexcept {
  return fillVector<Kvr16u>({}, dst, len);
}
KvrStatus kvrsZero_32f(Kvr32f* dst, int len) noexcept {
  return fillVector<Kvr32u>({}, dst, len);
}
KvrStatus kvrsZero_64f(Kvr64f* dst, int len) noexcept {
  return fillVector<Kvr64u>({}, dst, len);
}
KvrStatus kvrsZero_64fc(Kvr64fc* dst, int len) noexcept {
  return fillVector<Pair<Kvr64u>>({}, dst, len);
}
