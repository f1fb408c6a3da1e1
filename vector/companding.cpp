// A-law and mu-law companding, G.711. Codes and samples are computed in vectors; what depends on the segment of a code, a
// number from 0 to 7, is looked up among 16 bytes in a register.
// SPDX-License-Identifier: MIT
#include "kvrs/companding.h"

#include <cstdint>

#include "frame/byte_table.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/tile.h"
#include "frame/to_integer.h"
#include "frame/unroll.h"
#include "frame/widen.h"

namespace kvrs {
namespace {

// 2^segment for mu-law; A-law's segments 0 and 1 have steps of one size.
constexpr ByteTable kStepMuLaw{{1, 2, 4, 8, 16, 32, 64, 128}};
constexpr ByteTable kStepALaw{{1, 1, 2, 4, 8, 16, 32, 64}};

// 16-bit lanes, of which the lower byte is a code, to samples.
struct ALaw {
  template <class D, class V>
  static KVRS_INLINE V decoded(D d, V code) {
    const auto set = [d](int x) KVRS_UNROLLED { return hn::Set(d, static_cast<int16_t>(x)); };
    const V a = hn::Xor(code, set(0x55));
    const V segment = hn::And(hn::ShiftRight<4>(a), set(7));
    const V t = hn::Add(hn::ShiftLeft<4>(hn::And(a, set(15))), set(8));
    const V leading = hn::And(hn::VecFromMask(d, hn::Gt(segment, hn::Zero(d))), set(0x100));
    const V sample = hn::Mul(hn::Add(t, leading), lookUp(d, kStepALaw, hn::Or(segment, set(-0x8000))));
    // Bit 7 set: positive.
    const V negative = hn::VecFromMask(d, hn::Lt(a, set(0x80)));
    return hn::Sub(hn::Xor(sample, negative), negative);
  }

  // Samples to codes in the lower bytes of the lanes.
  static constexpr int kDropped = 3, kBelowSegments = 5;
  template <class D, class V>
  static KVRS_INLINE V magnitude(D, V p) {
    return p;
  }
  // Bits dropped behind the four of the code's step: 2^(8 - bits) by segment.
  static constexpr ByteTable kScale{{128, 128, 64, 32, 16, 8, 4, 2}};
  // `step` is 0 .. 31 in segment 0 and 16 .. 31 in the others.
  template <class D, class V>
  static KVRS_INLINE V code(D d, V segment, V step, V negative) {
    const V plain = hn::Or(hn::ShiftLeft<4>(segment), hn::And(step, hn::Set(d, int16_t{15})));
    return hn::Xor(plain, hn::Xor(hn::Set(d, int16_t{0xD5}), hn::And(negative, hn::Set(d, int16_t{0x80}))));
  }
};

struct MuLaw {
  template <class D, class V>
  static KVRS_INLINE V decoded(D d, V code) {
    const auto set = [d](int x) KVRS_UNROLLED { return hn::Set(d, static_cast<int16_t>(x)); };
    const V u = hn::Xor(code, set(0xFF));
    const V segment = hn::And(hn::ShiftRight<4>(u), set(7));
    const V steps = hn::Add(hn::ShiftLeft<3>(hn::And(u, set(15))), set(0x84));
    const V t = hn::Mul(steps, lookUp(d, kStepMuLaw, hn::Or(segment, set(-0x8000))));
    const V negative = hn::VecFromMask(d, hn::Gt(u, set(0x7F)));
    return hn::Sub(hn::Xor(hn::Sub(t, set(0x84)), negative), negative);
  }

  static constexpr int kDropped = 2, kBelowSegments = 6;
  template <class D, class V>
  static KVRS_INLINE V magnitude(D d, V p) {
    return hn::Min(hn::Add(p, hn::Set(d, int16_t{33})), hn::Set(d, int16_t{8191}));
  }
  static constexpr ByteTable kScale{{128, 64, 32, 16, 8, 4, 2, 1}};
  template <class D, class V>
  static KVRS_INLINE V code(D d, V segment, V step, V negative) {
    const V plain = hn::Or(hn::ShiftLeft<4>(segment), hn::And(step, hn::Set(d, int16_t{15})));
    return hn::Xor(plain, hn::Xor(hn::Set(d, int16_t{0xFF}), hn::And(negative, hn::Set(d, int16_t{0x80}))));
  }
};

// The number of significant bits of 0 .. 15, and of 16 times 0 .. 7.
constexpr ByteTable kBits{{0, 1, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4}};
constexpr ByteTable kBitsTimes16{{0, 5, 6, 6, 7, 7, 7, 7}};

// 16-bit samples to codes in the lower bytes of their lanes.
template <class Law, class D, class V>
KVRS_INLINE V encoded(D d, V sample) {
  const V top = hn::ShiftRight<Law::kDropped>(sample);
  const V negative = hn::BroadcastSignBit(sample);
  const V p = Law::magnitude(d, hn::Xor(top, negative));
  // Of the 7 bits above the first segment; the lookups of the upper bytes, which are 0, give 0.
  const V above = hn::ShiftRight<Law::kBelowSegments>(p);
  const V low = lookUp(d, kBits, hn::And(above, hn::Set(d, int16_t{15})));
  const V segment = hn::Max(low, lookUp(d, kBitsTimes16, hn::ShiftRight<4>(above)));
  // p >> bits as the high half of p * 2^(16 - bits).
  const hn::RebindToUnsigned<D> du;
  const auto scale = hn::ShiftLeft<8>(hn::BitCast(du, lookUp(d, Law::kScale, segment)));
  const V step = hn::BitCast(d, hn::MulHigh(hn::BitCast(du, p), scale));
  return Law::code(d, segment, step, negative);
}

template <class Law>
struct Decoder {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V codes) const {
    return Law::decoded(d, hn::PromoteTo(d, codes));
  }
};

template <class Law>
struct Encoder {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V samples) const {
    return hn::DemoteTo(d, encoded<Law>(hn::Rebind<int16_t, D>(), samples));
  }
};

// Samples to floats in [-1, 1), and back.
struct ToFloats {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V samples) const {
    return hn::Mul(hn::ConvertTo(d, hn::PromoteTo(hn::RebindToSigned<D>(), samples)), hn::Set(d, 0x1p-15f));
  }
};
struct ToSamples {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V floats) const {
    const hn::DFromV<V> df;
    const V x = bound(df, hn::Mul(floats, hn::Set(df, 32768.0f)), -32768.0f, 32767.0f);
    const V rounded = hn::Add(x, hn::CopySignToAbs(hn::Set(df, 0.5f), x));
    return hn::DemoteTo(d, truncateInt32(hn::RebindToSigned<decltype(df)>(), rounded));
  }
};

// A table of code magnitudes, made of runs: `count` entries from `first` on, `step` entries of each value.
struct Run {
  int count, first, entriesOfEach = 1, increment = 1;
};
struct CodeTable {
  ByteTable part[8];

  template <int kRuns>
  constexpr explicit CodeTable(const Run (&runs)[kRuns]) : part() {
    int m = 0;
    for (const Run& run : runs) {
      for (int i = 0; i < run.count; ++i, ++m) {
        part[m / 16].at[m % 16] = static_cast<uint8_t>(run.first + i / run.entriesOfEach * run.increment);
      }
    }
  }
};

// G.711, table 4: codes of mu-law for those of A-law, both without sign.
constexpr Run kALawToMuLawRuns[] = {{8, 1, 1, 2}, {16, 16},   {8, 32, 2}, {12, 36},   {4, 48, 2},
                                    {14, 50},     {2, 64, 2}, {15, 65},   {2, 80, 2}, {47, 81}};
// Table 3: codes of A-law for those of mu-law.
constexpr Run kMuLawToALawRuns[] = {{16, 0, 2}, {17, 8}, {3, 26, 1, 2}, {12, 32}, {2, 45, 1, 2},
                                    {14, 48},   {1, 63}, {16, 64},      {47, 81}};
constexpr CodeTable kALawToMuLaw(kALawToMuLawRuns);
constexpr CodeTable kMuLawToALaw(kMuLawToALawRuns);

// The magnitude is the code with some of its bits inverted, and so is the other law's code; bit 7, the sign, stays.
struct CodeToCode {
  const CodeTable& table;
  uint8_t inverted, invertedAfter;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V code) const {
    const V sign = hn::And(code, hn::Set(d, uint8_t{0x80}));
    const V magnitude = hn::AndNot(hn::Set(d, uint8_t{0x80}), hn::Xor(code, hn::Set(d, inverted)));
    V value = hn::Zero(d);
    unroll<8>([&](auto part) KVRS_UNROLLED {
      // Below 128 only in the part that the magnitude is of.
      const V inPart = hn::Xor(magnitude, hn::Set(d, static_cast<uint8_t>(16 * part)));
      value = hn::Or(value, lookUp(d, table.part[part], hn::SaturatedAdd(inPart, hn::Set(d, uint8_t{0x70}))));
    });
    return hn::Or(sign, hn::Xor(value, hn::Set(d, invertedAfter)));
  }
};

template <class Op, class S, class D>
KvrStatus map(const Op& op, const S* src, D* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(op, dst, static_cast<size_t>(len), src);
}

// Floats by way of samples in tiles: so full vectors are decoded and encoded.
template <class Law>
KvrStatus decodeToFloats(const Kvr8u* src, Kvr32f* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (!loop_detail::fitsAddress(n, sizeof *dst)) return kvrStatusBadLength;
  forTiles<Kvr16s>(n, [=](Kvr16s* tile, size_t begin, size_t count) {
    mapElements(Decoder<Law>(), tile, count, src + begin);
    mapElements(ToFloats(), dst + begin, count, tile);
  });
  return kvrStatusOk;
}
template <class Law>
KvrStatus encodeFloats(const Kvr32f* src, Kvr8u* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (!loop_detail::fitsAddress(n, sizeof *src)) return kvrStatusBadLength;
  forTiles<Kvr16s>(n, [=](Kvr16s* tile, size_t begin, size_t count) {
    mapElements(ToSamples(), tile, count, src + begin);
    mapElements(Encoder<Law>(), dst + begin, count, tile);
  });
  return kvrStatusOk;
}

KvrStatus convertCodes(const CodeTable& table, uint8_t inverted, uint8_t invertedAfter, const Kvr8u* src,
                       Kvr8u* dst, int len) {
  return map(CodeToCode{table, inverted, invertedAfter}, src, dst, len);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsALawToLin_8u16s(const Kvr8u* src, Kvr16s* dst, int len) noexcept {
  return map(Decoder<ALaw>(), src, dst, len);
}
KvrStatus kvrsALawToLin_8u32f(const Kvr8u* src, Kvr32f* dst, int len) noexcept {
  return decodeToFloats<ALaw>(src, dst, len);
}
KvrStatus kvrsMuLawToLin_8u16s(const Kvr8u* src, Kvr16s* dst, int len) noexcept {
  return map(Decoder<MuLaw>(), src, dst, len);
}
KvrStatus kvrsMuLawToLin_8u32f(const Kvr8u* src, Kvr32f* dst, int len) noexcept {
  return decodeToFloats<MuLaw>(src, dst, len);
}
KvrStatus kvrsLinToALaw_16s8u(const Kvr16s* src, Kvr8u* dst, int len) noexcept {
  return map(Encoder<ALaw>(), src, dst, len);
}
KvrStatus kvrsLinToALaw_32f8u(const Kvr32f* src, Kvr8u* dst, int len) noexcept {
  return encodeFloats<ALaw>(src, dst, len);
}
KvrStatus kvrsLinToMuLaw_16s8u(const Kvr16s* src, Kvr8u* dst, int len) noexcept {
  return map(Encoder<MuLaw>(), src, dst, len);
}
KvrStatus kvrsLinToMuLaw_32f8u(const Kvr32f* src, Kvr8u* dst, int len) noexcept {
  return encodeFloats<MuLaw>(src, dst, len);
}
KvrStatus kvrsALawToMuLaw_8u(const Kvr8u* src, Kvr8u* dst, int len) noexcept {
  return convertCodes(kALawToMuLaw, 0x55, 0x7F, src, dst, len);
}
KvrStatus kvrsMuLawToALaw_8u(const Kvr8u* src, Kvr8u* dst, int len) noexcept {
  return convertCodes(kMuLawToALaw, 0x7F, 0x55, src, dst, len);
}
