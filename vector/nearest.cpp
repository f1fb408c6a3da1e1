// Search for the nearest value of an ascending table.
//
// The last entry that is not above a value is found by halving. All elements take the same steps, whatever they are: of n
// entries that are left, half are left out, from one end or the other, and so the steps of a few vectors of elements run at
// once without a jump that a processor would have to guess.
// SPDX-License-Identifier: MIT
#include "kvrs/nearest.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/simd.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"

namespace kvrs {
namespace {

int nearestOne(Kvr16u x, const Kvr16u* table, int tableLen) {
  if (x <= unaligned::get(table)) return 0;
  if (x >= unaligned::get(table + (tableLen - 1))) return tableLen - 1;
  int lo = 0;
  for (int n = tableLen - 1; n > 1;) {
    const int half = n >> 1;
    if (unaligned::get(table + (lo + half)) <= x) lo += half;
    n -= half;
  }
  return x - unaligned::get(table + lo) > unaligned::get(table + (lo + 1)) - x ? lo + 1 : lo;
}

using D32 = Lanes<int32_t, kLanes<int32_t>>;
using D16 = hn::Rebind<uint16_t, D32>;
using V32 = hn::Vec<D32>;

constexpr int kVectors = 4;
constexpr int kElements = kVectors * static_cast<int>(kLanes<int32_t>);

// Two neighbouring entries in one lane, the lower one in its lower half.
KVRS_INLINE V32 entriesAt(const Kvr16u* table, V32 i) {
  return hn::GatherOffset(D32(), reinterpret_cast<const int32_t*>(table), hn::Add(i, i));
}
KVRS_INLINE V32 lower(V32 entries) {
  return hn::And(entries, hn::Set(D32(), 0xFFFF));
}
KVRS_INLINE V32 upper(V32 entries) {
  const hn::RebindToUnsigned<D32> du;
  return hn::BitCast(D32(), hn::ShiftRight<16>(hn::BitCast(du, entries)));
}

// kElements elements; a table of at least two entries whose bytes an int can count.
KVRS_INLINE void nearestOfSome(const Kvr16u* src, Kvr16u* dst, int* dstIndex, const Kvr16u* table,
                               int tableLen) {
  const D32 d;
  V32 x[kVectors], lo[kVectors];
  unroll<kVectors>([&](auto k) KVRS_UNROLLED {
    x[k] = hn::PromoteTo(d, hn::LoadU(D16(), src + k * kLanes<int32_t>));
    lo[k] = hn::Zero(d);
  });
  for (int n = tableLen - 1; n > 1;) {
    const int half = n >> 1;
    unroll<kVectors>([&](auto k) KVRS_UNROLLED {
      const V32 middle = hn::Add(lo[k], hn::Set(d, half));
      lo[k] = hn::IfThenElse(hn::Gt(lower(entriesAt(table, middle)), x[k]), lo[k], middle);
    });
    n -= half;
  }
  const V32 first = hn::Set(d, unaligned::get(table)),
            last = hn::Set(d, unaligned::get(table + (tableLen - 1)));
  unroll<kVectors>([&](auto k) KVRS_UNROLLED {
    const V32 pair = entriesAt(table, lo[k]), below = lower(pair), above = upper(pair);
    const auto isUpper = hn::Gt(hn::Sub(x[k], below), hn::Sub(above, x[k]));
    V32 index = hn::Sub(lo[k], hn::VecFromMask(d, isUpper));
    V32 value = hn::IfThenElse(isUpper, above, below);
    const auto atEnd = hn::Not(hn::Gt(last, x[k])), atStart = hn::Not(hn::Gt(x[k], first));
    index = hn::IfThenZeroElse(atStart, hn::IfThenElse(atEnd, hn::Set(d, tableLen - 1), index));
    value = hn::IfThenElse(atStart, first, hn::IfThenElse(atEnd, last, value));
    hn::StoreU(hn::DemoteTo(D16(), value), D16(), dst + k * kLanes<int32_t>);
    hn::StoreU(index, d, dstIndex + k * kLanes<int32_t>);
  });
}

void nearest(const Kvr16u* src, Kvr16u* dst, int* dstIndex, int len, const Kvr16u* table, int tableLen) {
  int i = 0;
  for (; len - i >= kElements; i += kElements) nearestOfSome(src + i, dst + i, dstIndex + i, table, tableLen);
  if (i == len) return;
  const size_t rest = static_cast<size_t>(len - i);
  Kvr16u from[kElements] = {}, to[kElements];
  int toIndex[kElements];
  memcpy(from, src + i, rest * sizeof *from);
  nearestOfSome(from, to, toIndex, table, tableLen);
  memcpy(dst + i, to, rest * sizeof *to);
  memcpy(dstIndex + i, toIndex, rest * sizeof *toIndex);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsFindNearest_16u(const Kvr16u* src, Kvr16u* dst, int* dstIndex, int len, const Kvr16u* table,
                              int tableLen) noexcept {
  KVRS_CHECK(pointers(src, dst, dstIndex, table), length(len, src, dst, dstIndex), length(tableLen));
  if (tableLen >= 2 && tableLen <= INT32_MAX / 2) {
    nearest(src, dst, dstIndex, len, table, tableLen);
    return kvrStatusOk;
  }
  for (int i = 0; i < len; ++i) {
    const int index = nearestOne(unaligned::get(src + i), table, tableLen);
    unaligned::put(unaligned::get(table + index), dst + i);
    unaligned::put(index, dstIndex + i);
  }
  return kvrStatusOk;
}
KvrStatus kvrsFindNearestOne_16u(Kvr16u val, Kvr16u* dstVal, int* dstIndex, const Kvr16u* table,
                                 int tableLen) noexcept {
  KVRS_CHECK(pointers(dstVal, dstIndex, table), length(tableLen));
  const int index = nearestOne(val, table, tableLen);
  unaligned::put(unaligned::get(table + index), dstVal);
  unaligned::put(index, dstIndex);
  return kvrStatusOk;
}
