// SPDX-License-Identifier: MIT
#include "kvrs/reorder.h"

#include <utility>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

Kvr16u swapped(Kvr16u a) {
  return __builtin_bswap16(a);
}
Kvr32u swapped(Kvr32u a) {
  return __builtin_bswap32(a);
}
Kvr64u swapped(Kvr64u a) {
  return __builtin_bswap64(a);
}

template <class T>
__attribute__((noinline)) void loopSwap(const T* src, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = swapped(src[i]);
}
__attribute__((noinline)) void loopSwapTriples(const Kvr8u* src, Kvr8u* dst, int len) {
  for (int i = 0; i < 3 * len; i += 3) {
    const Kvr8u low = src[i];
    dst[i] = src[i + 2];
    dst[i + 1] = src[i + 1];
    dst[i + 2] = low;
  }
}
template <class T>
__attribute__((noinline)) void loopFlip(const T* src, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = src[len - 1 - i];
}
template <class T>
__attribute__((noinline)) void loopFlipInPlace(T* srcDst, int len) {
  for (int i = 0, j = len - 1; i < j; ++i, --j) std::swap(srcDst[i], srcDst[j]);
}

__attribute__((noinline)) int loopPack(const Kvr32u* src, const int* counts, int len, Kvr8u* dst) {
  uint64_t bits = 0;
  unsigned pending = 0;
  int total = 0;
  for (int i = 0; i < len; ++i) {
    bits = bits << counts[i] | (src[i] & ((uint64_t{1} << counts[i]) - 1));
    pending += static_cast<unsigned>(counts[i]);
    total += counts[i];
    for (; pending >= 8; pending -= 8) *dst++ = static_cast<Kvr8u>(bits >> (pending - 8));
  }
  if (pending != 0) *dst = static_cast<Kvr8u>(bits << (8 - pending));
  return total;
}

// One pair of arrays for all cases.
struct Arrays {
  std::shared_ptr<Kvr8u> src, dst;
};

template <class T, class F>
void contest(const Arrays& arrays, const char* name, int len, F f, void (*loop)(const T*, T*, int)) {
  const auto src = [=] { return reinterpret_cast<const T*>(arrays.src.get()); };
  const auto dst = [=] { return reinterpret_cast<T*>(arrays.dst.get()); };
  const std::string label = std::string("reorder/") + name + "/" + std::to_string(len);
  add(label, "kvrs", [=] { f(src(), dst(), len); });
  add(label, "loop", [=] { loop(src(), dst(), len); });
}

template <class T, class F>
void contestInPlace(const Arrays& arrays, const char* name, int len, F f, void (*loop)(T*, int)) {
  const auto srcDst = [=] { return reinterpret_cast<T*>(arrays.dst.get()); };
  const std::string label = std::string("reorder/") + name + "/" + std::to_string(len);
  add(label, "kvrs", [=] { f(srcDst(), len); });
  add(label, "loop", [=] { loop(srcDst(), len); });
}

Register reorder([] {
  const size_t bytes = sizeof(Kvr64fc) * (4 << 20);
  const Arrays arrays = {array<Kvr8u>(bytes), array<Kvr8u>(bytes)};
  for (int len : {64, 1024, 16384, 4 << 20}) {
    contest<Kvr16u>(arrays, "SwapBytes_16u", len, kvrsSwapBytes_16u, loopSwap<Kvr16u>);
    contest<Kvr8u>(arrays, "SwapBytes_24u", len, kvrsSwapBytes_24u, loopSwapTriples);
    contest<Kvr32u>(arrays, "SwapBytes_32u", len, kvrsSwapBytes_32u, loopSwap<Kvr32u>);
    contest<Kvr64u>(arrays, "SwapBytes_64u", len, kvrsSwapBytes_64u, loopSwap<Kvr64u>);
    contest<Kvr8u>(arrays, "Flip_8u", len, kvrsFlip_8u, loopFlip<Kvr8u>);
    contest<Kvr16u>(arrays, "Flip_16u", len, kvrsFlip_16u, loopFlip<Kvr16u>);
    contest<Kvr32f>(arrays, "Flip_32f", len, kvrsFlip_32f, loopFlip<Kvr32f>);
    contest<Kvr64f>(arrays, "Flip_64f", len, kvrsFlip_64f, loopFlip<Kvr64f>);
    contest<Kvr64fc>(arrays, "Flip_64fc", len, kvrsFlip_64fc, loopFlip<Kvr64fc>);
    contestInPlace<Kvr8u>(arrays, "Flip_8u_I", len, kvrsFlip_8u_I, loopFlipInPlace<Kvr8u>);
    contestInPlace<Kvr32f>(arrays, "Flip_32f_I", len, kvrsFlip_32f_I, loopFlipInPlace<Kvr32f>);
    contestInPlace<Kvr64fc>(arrays, "Flip_64fc_I", len, kvrsFlip_64fc_I, loopFlipInPlace<Kvr64fc>);

    const auto codes = array<Kvr32u>(static_cast<size_t>(len));
    const auto lengths = newArray<int>(static_cast<size_t>(len));  // no other case writes it
    for (int i = 0; i < len; ++i) lengths.get()[i] = static_cast<int>(codes.get()[i] % 17);
    const std::string label = "reorder/PackBits_32u8u/" + std::to_string(len);
    add(label, "kvrs", [=] {
      int written;
      kvrsPackBits_32u8u(codes.get(), lengths.get(), len, arrays.dst.get(), 0, &written);
    });
    add(label, "loop", [=] { keep(loopPack(codes.get(), lengths.get(), len, arrays.dst.get())); });
  }
});

}  // namespace
}  // namespace kvrs::bench
