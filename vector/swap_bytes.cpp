// Byte order of elements.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/loop.h"
#include "kvrs/reorder.h"

namespace kvrs {
namespace {

// The bytes of every lane in reverse order. Vectors of less than 16 bytes use the table's first bytes alone.
struct ReverseBytes {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    constexpr size_t width = sizeof(hn::TFromD<D>);
    alignas(16) static constexpr uint8_t kOrder[16] = {
        0 ^ (width - 1),  1 ^ (width - 1),  2 ^ (width - 1),  3 ^ (width - 1),
        4 ^ (width - 1),  5 ^ (width - 1),  6 ^ (width - 1),  7 ^ (width - 1),
        8 ^ (width - 1),  9 ^ (width - 1),  10 ^ (width - 1), 11 ^ (width - 1),
        12 ^ (width - 1), 13 ^ (width - 1), 14 ^ (width - 1), 15 ^ (width - 1),
    };
    const hn::Repartition<uint8_t, D> bytes;
    return hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(bytes, a), hn::LoadDup128(bytes, kOrder)));
  }
};

template <class T>
KvrStatus swapBytes(const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(ReverseBytes(), dst, static_cast<size_t>(len), src);
}

// A vector of 16 bytes holds five elements of three bytes, and its last byte goes back as it came. In place,
// that byte belongs to an element still to be swapped; so each vector is loaded before the one ahead of it is
// stored, which also spares the load the wait for bytes on their way to memory.
KvrStatus swapTriples(const Kvr8u* src, Kvr8u* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (!loop_detail::fitsAddress(n, 3)) return kvrStatusBadLength;
  constexpr size_t step = 15;
  const Lanes<uint8_t, 16> d;
  alignas(16) static constexpr uint8_t kOrder[16] = {2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15};
  const auto order = hn::Load(d, kOrder);
  const size_t bytes = 3 * n;
  size_t i = 0;
  if (bytes >= 16) {
    auto next = hn::LoadU(d, src);
    for (; i + step + 16 <= bytes; i += step) {
      const auto here = next;
      next = hn::LoadU(d, src + i + step);
      hn::StoreU(hn::TableLookupBytes(here, order), d, dst + i);
    }
    // Out of place the odd byte is the first of its element, which the next store sets right.
    hn::StoreU(hn::TableLookupBytes(next, order), d, dst + i);
    i += step;
  }
  for (; i < bytes; i += 3) {
    const Kvr8u low = src[i], middle = src[i + 1], high = src[i + 2];
    dst[i] = high;
    dst[i + 1] = middle;
    dst[i + 2] = low;
  }
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSwapBytes_16u(const Kvr16u* src, Kvr16u* dst, int len) noexcept {
  return swapBytes(src, dst, len);
}
KvrStatus kvrsSwapBytes_24u(const Kvr8u* src, Kvr8u* dst, int len) noexcept {
  return swapTriples(src, dst, len);
}
KvrStatus kvrsSwapBytes_32u(const Kvr32u* src, Kvr32u* dst, int len) noexcept {
  return swapBytes(src, dst, len);
}
KvrStatus kvrsSwapBytes_64u(const Kvr64u* src, Kvr64u* dst, int len) noexcept {
  return swapBytes(src, dst, len);
}
KvrStatus kvrsSwapBytes_16u_I(Kvr16u* srcDst, int len) noexcept {
  return swapBytes(srcDst, srcDst, len);
}
KvrStatus kvrsSwapBytes_24u_I(Kvr8u* srcDst, int len) noexcept {
  return swapTriples(srcDst, srcDst, len);
}
KvrStatus kvrsSwapBytes_32u_I(Kvr32u* srcDst, int len) noexcept {
  return swapBytes(srcDst, srcDst, len);
}
KvrStatus kvrsSwapBytes_64u_I(Kvr64u* srcDst, int len) noexcept {
  return swapBytes(srcDst, srcDst, len);
}
