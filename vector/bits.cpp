// Strings of bits.
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "frame/check.h"
#include "frame/loop.h"
#include "kvrs/fill.h"
#include "kvrs/reorder.h"
#include "vector/copy.h"

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

// Appends codes to a string of bits.
class BitWriter {
 public:
  // Begins `offset` bits, below 8, into dst[0].
  BitWriter(Kvr8u* dst, unsigned offset)
      : dst_(dst), pending_(offset), bits_(offset != 0 ? dst[0] >> (8 - offset) : 0) {}

  // The low `count` bits of the code; at most 32.
  void put(uint32_t code, unsigned count) {
    const uint64_t mask = (uint64_t{1} << count) - 1;
    bits_ = bits_ << count | (code & mask);
    pending_ += count;
    if (pending_ >= 32) {
      pending_ -= 32;
      const uint32_t word = __builtin_bswap32(static_cast<uint32_t>(bits_ >> pending_));
      __builtin_memcpy(dst_, &word, sizeof word);
      dst_ += sizeof word;
    }
  }

  void finish() {
    for (; pending_ >= 8; pending_ -= 8) *dst_++ = static_cast<Kvr8u>(bits_ >> (pending_ - 8));
    if (pending_ == 0) return;
    const unsigned behind = 0xFFu >> pending_;
    *dst_ = static_cast<Kvr8u>((bits_ << (8 - pending_) & 0xFFu & ~behind) | (*dst_ & behind));
  }

 private:
  Kvr8u* dst_;
  unsigned pending_;  // bits not yet written, below 32 between codes
  uint64_t bits_;     // in its low end; what lies above them is of no account
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
  KVRS_CHECK(pointers(src, srcBitsLen, dst, dstLenBits), length(len),
             require(dstBitOffset >= 0, kvrStatusBadLength));
  BitWriter writer(dst, static_cast<unsigned>(dstBitOffset) % 8);
  uint32_t total = 0;
  for (int i = 0; i < len; ++i) {
    const unsigned count = static_cast<unsigned>(std::clamp(srcBitsLen[i], 0, 32));
    writer.put(src[i], count);
    total += count;
  }
  if (total != 0) writer.finish();
  *dstLenBits = static_cast<int>(total);
  return kvrStatusOk;
}
