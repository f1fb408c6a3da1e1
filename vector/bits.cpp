// Strings of bits.
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/plain.h"
#include "frame/unaligned.h"
#include "kvrs/fill.h"
#include "kvrs/reorder.h"

namespace kvrs {
namespace {

// Eight bits that begin `shift` bits below the top of the first source, whose successor is the second.
struct Realign {
  int shift;
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b) const {
    return hn::Or(hn::ShiftLeftSame(a, shift), hn::ShiftRightSame(b, 8 - shift));
  }
};

// At most 8 bits from bit `from` of src on to bit `to` of dst's first byte on, all within that byte. Reads no
// byte of src that holds none of them.
void copyFewBits(const Kvr8u* src, unsigned from, Kvr8u* dst, unsigned to, unsigned count) {
  unsigned bits = src[0] << from;
  if (from + count > 8) bits |= src[1] >> (8 - from);
  const unsigned mask = (0xFFu >> to) & ~(0xFFu >> (to + count));
  *dst = static_cast<Kvr8u>((*dst & ~mask) | ((bits & 0xFFu) >> to & mask));
}

void copyBits(const Kvr8u* src, unsigned from, Kvr8u* dst, unsigned to, unsigned len) {
  if (to != 0) {
    const unsigned count = std::min(8 - to, len);
    copyFewBits(src, from, dst, to, count);
    src += (from + count) / 8;
    from = (from + count) % 8;
    ++dst;
    len -= count;
  }
  const size_t bytes = len / 8;
  if (bytes != 0) {
    if (from == 0) {
      mapElements(Same(), dst, bytes, src);
    } else {
      mapElements(Realign{static_cast<int>(from)}, dst, bytes, src, src + 1);
    }
  }
  if (len % 8 != 0) copyFewBits(src + bytes, from, dst + bytes, 0, len % 8);
}

// Appends codes to a string of bits, by words of 32 of them.
class BitWriter {
 public:
  // Begins `offset` bits, below 8, into dst[0].
  BitWriter(Kvr8u* dst, unsigned offset)
      : dst_(dst), room_(32 - offset), word_(offset != 0 ? uint32_t{dst[0]} >> (8 - offset) << room_ : 0) {}

  // The low `count` bits of the code; at most 32.
  KVRS_INLINE void put(uint32_t code, unsigned count) {
    code &= static_cast<uint32_t>((uint64_t{1} << count) - 1);
    if (count < room_) {
      room_ -= count;
      word_ |= (code << 1) << (room_ - 1);  // of a code without bits room_ may be 32
    } else {
      const unsigned over = count - room_;  // below 32, as there always is room
      const uint32_t full = __builtin_bswap32(word_ | code >> over);
      unaligned::put(full, reinterpret_cast<uint32_t*>(dst_));
      dst_ += sizeof full;
      room_ = 32 - over;
      word_ = (code << 1) << (31 - over);
    }
  }

  void finish() {
    for (; room_ <= 24; room_ += 8, word_ <<= 8) *dst_++ = static_cast<Kvr8u>(word_ >> 24);
    if (room_ == 32) return;
    const unsigned behind = 0xFFu >> (32 - room_);
    *dst_ = static_cast<Kvr8u>((word_ >> 24) | (*dst_ & behind));
  }

 private:
  Kvr8u* dst_;
  unsigned room_;  // bits still free in the word, at least 1
  uint32_t word_;  // filled from its top, 0 below
};

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsCopy_1u(const Kvr8u* src, int srcBitOffset, Kvr8u* dst, int dstBitOffset, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len), require(srcBitOffset >= 0, kvrStatusBadLength),
             require(dstBitOffset >= 0, kvrStatusBadLength));
  copyBits(src + srcBitOffset / 8, static_cast<unsigned>(srcBitOffset % 8), dst + dstBitOffset / 8,
           static_cast<unsigned>(dstBitOffset % 8), static_cast<unsigned>(len));
  return kvrStatusOk;
}

KvrStatus kvrsPackBits_32u8u(const Kvr32u* src, const int* srcBitsLen, int len, Kvr8u* dst, int dstBitOffset,
                             int* dstLenBits) noexcept {
  KVRS_CHECK(pointers(src, srcBitsLen, dst, dstLenBits), length(len, src, srcBitsLen),
             require(dstBitOffset >= 0, kvrStatusBadLength));
  BitWriter writer(dst, static_cast<unsigned>(dstBitOffset) % 8);
  uint32_t total = 0;
  for (int i = 0; i < len; ++i) {
    const unsigned count = static_cast<unsigned>(std::clamp(unaligned::get(srcBitsLen + i), 0, 32));
    writer.put(unaligned::get(src + i), count);
    total += count;
  }
  if (total != 0) writer.finish();
  unaligned::put(static_cast<int>(total), dstLenBits);
  return kvrStatusOk;
}
