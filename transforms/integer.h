// Integer transforms: data converted to floating point, transformed there and converted back.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_INTEGER_H
#define KVRS_TRANSFORMS_INTEGER_H

#include "frame/buffer.h"
#include "frame/saturate.h"
#include "frame/unaligned.h"
#include "kvrs/convert.h"

namespace kvrs::integer {

inline KvrStatus widen(const Kvr16s* src, Kvr32f* dst, int len) {
  return kvrsConvert_16s32f(src, dst, len);
}
inline KvrStatus widen(const Kvr32s* src, Kvr32f* dst, int len) {
  return kvrsConvert_32s32f(src, dst, len);
}
inline KvrStatus widen(const Kvr32s* src, Kvr64f* dst, int len) {
  return kvrsConvert_32s64f(src, dst, len);
}
inline KvrStatus narrow(const Kvr32f* src, Kvr16s* dst, int len, int scaleFactor) {
  return kvrsConvert_32f16s_Sfs(src, dst, len, kvrRoundNear, scaleFactor);
}
inline KvrStatus narrow(const Kvr32f* src, Kvr32s* dst, int len, int scaleFactor) {
  return kvrsConvert_32f32s_Sfs(src, dst, len, kvrRoundNear, scaleFactor);
}
inline KvrStatus narrow(const Kvr64f* src, Kvr32s* dst, int len, int scaleFactor) {
  return kvrsConvert_64f32s_Sfs(src, dst, len, kvrRoundNear, scaleFactor);
}

// A work area cut in two: `bytes` of data, and behind them the work area of the inner transform.
template <class F>
struct Areas {
  F* data;
  Kvr8u* inner;

  Areas(const WorkArea& work, size_t bytes)
      : data(work.as<F>()), inner(work.as<Kvr8u>() + roundUp(bytes, kBufferAlignment)) {}
};

// A 32-bit result, shifted right by `shift` with halves rounded up, then saturated. To the left the shift is that of a
// register: bits beyond the highest are lost.
inline Kvr16s shifted(int32_t v, int shift) {
  if (shift > 0) {
    const int right = shift < 31 ? shift : 31;
    return saturate<Kvr16s>((int64_t{v} + (int64_t{1} << (right - 1))) >> right);
  }
  if (shift <= -32) return 0;
  return saturate<Kvr16s>(static_cast<int32_t>(static_cast<uint32_t>(v) << -shift));
}

// One point: its parts are their own transform. Flags play no part.
inline void onePoint(const Kvr16s* src, Kvr16s* dst, int parts, int scaleFactor) {
  for (int i = 0; i < parts; ++i) unaligned::put(shifted(unaligned::get(src + i), scaleFactor), dst + i);
}

}  // namespace kvrs::integer

#endif
