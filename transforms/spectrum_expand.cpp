// Packed spectra of real signals made whole.
// SPDX-License-Identifier: MIT
#include <cstring>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/unaligned.h"
#include "kvrs/complex_parts.h"
#include "kvrs/spectrum.h"
#include "transforms/packing.h"

namespace kvrs {
namespace {

KvrStatus conjFlip(const Kvr16sc* src, Kvr16sc* dst, int len) {
  return kvrsConjFlip_16sc(src, dst, len);
}
KvrStatus conjFlip(const Kvr32fc* src, Kvr32fc* dst, int len) {
  return kvrsConjFlip_32fc(src, dst, len);
}
KvrStatus conjFlip(const Kvr64fc* src, Kvr64fc* dst, int len) {
  return kvrsConjFlip_64fc(src, dst, len);
}

// The numbers below len/2 as they are stored, then their conjugates in reverse. src may be the memory of dst: the only
// number that a move of the others would cover is read before.
template <Packing kPacking, class Part, class C>
KvrStatus expand(const Part* src, C* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (!loop_detail::fitsAddress(n, sizeof(C))) return kvrStatusBadLength;
  Part* const parts = reinterpret_cast<Part*>(dst);
  const Part first = unaligned::get(src);
  const Part last = n % 2 == 0 ? unaligned::get(src + lastTerm<kPacking>(n)) : first;
  const size_t pairs = (n - 1) / 2;
  std::memmove(parts + 2, src + firstPair<kPacking>(n), pairs * sizeof(C));
  unaligned::put(first, parts);
  unaligned::put(Part(0), parts + 1);
  if (n % 2 == 0) {
    unaligned::put(last, parts + n);
    unaligned::put(Part(0), parts + n + 1);
  }
  return pairs == 0 ? kvrStatusOk : conjFlip(dst + 1, dst + (n - pairs), static_cast<int>(pairs));
}

}  // namespace
}  // namespace kvrs

using kvrs::expand;
using kvrs::Packing;

KvrStatus kvrsConjPack_32fc(const Kvr32f* src, Kvr32fc* dst, int len) noexcept {
  return expand<Packing::kPack>(src, dst, len);
}
KvrStatus kvrsConjPack_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return expand<Packing::kPack>(reinterpret_cast<const Kvr32f*>(srcDst), srcDst, len);
}
KvrStatus kvrsConjPack_64fc(const Kvr64f* src, Kvr64fc* dst, int len) noexcept {
  return expand<Packing::kPack>(src, dst, len);
}
KvrStatus kvrsConjPack_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return expand<Packing::kPack>(reinterpret_cast<const Kvr64f*>(srcDst), srcDst, len);
}
KvrStatus kvrsConjPack_16sc(const Kvr16s* src, Kvr16sc* dst, int len) noexcept {
  return expand<Packing::kPack>(src, dst, len);
}
KvrStatus kvrsConjPack_16sc_I(Kvr16sc* srcDst, int len) noexcept {
  return expand<Packing::kPack>(reinterpret_cast<const Kvr16s*>(srcDst), srcDst, len);
}

KvrStatus kvrsConjPerm_32fc(const Kvr32f* src, Kvr32fc* dst, int len) noexcept {
  return expand<Packing::kPerm>(src, dst, len);
}
KvrStatus kvrsConjPerm_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return expand<Packing::kPerm>(reinterpret_cast<const Kvr32f*>(srcDst), srcDst, len);
}
KvrStatus kvrsConjPerm_64fc(const Kvr64f* src, Kvr64fc* dst, int len) noexcept {
  return expand<Packing::kPerm>(src, dst, len);
}
KvrStatus kvrsConjPerm_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return expand<Packing::kPerm>(reinterpret_cast<const Kvr64f*>(srcDst), srcDst, len);
}
KvrStatus kvrsConjPerm_16sc(const Kvr16s* src, Kvr16sc* dst, int len) noexcept {
  return expand<Packing::kPerm>(src, dst, len);
}
KvrStatus kvrsConjPerm_16sc_I(Kvr16sc* srcDst, int len) noexcept {
  return expand<Packing::kPerm>(reinterpret_cast<const Kvr16s*>(srcDst), srcDst, len);
}

KvrStatus kvrsConjCcs_32fc(const Kvr32f* src, Kvr32fc* dst, int len) noexcept {
  return expand<Packing::kCcs>(src, dst, len);
}
KvrStatus kvrsConjCcs_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return expand<Packing::kCcs>(reinterpret_cast<const Kvr32f*>(srcDst), srcDst, len);
}
KvrStatus kvrsConjCcs_64fc(const Kvr64f* src, Kvr64fc* dst, int len) noexcept {
  return expand<Packing::kCcs>(src, dst, len);
}
KvrStatus kvrsConjCcs_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return expand<Packing::kCcs>(reinterpret_cast<const Kvr64f*>(srcDst), srcDst, len);
}
KvrStatus kvrsConjCcs_16sc(const Kvr16s* src, Kvr16sc* dst, int len) noexcept {
  return expand<Packing::kCcs>(src, dst, len);
}
KvrStatus kvrsConjCcs_16sc_I(Kvr16sc* srcDst, int len) noexcept {
  return expand<Packing::kCcs>(reinterpret_cast<const Kvr16s*>(srcDst), srcDst, len);
}
