// Channels of floats to and from interleaved integers.
//
// One channel is an element-wise map, two are one whose elements are pairs. From three on, blocks of four
// frames and four channels are transposed in registers:
//
//   channel 0  a0 a1 a2 a3        frame 0  a0 b0 c0 d0
//   channel 1  b0 b1 b2 b3   <->  frame 1  a1 b1 c1 d1
//   channel 2  c0 c1 c2 c3        frame 2  a2 b2 c2 d2
//   channel 3  d0 d1 d2 d3        frame 3  a3 b3 c3 d3
//
// The channels are taken four at a time, the last four over the ones before, and what is left of the frames one
// sample at a time.
// SPDX-License-Identifier: MIT
#include "kvrs/channels.h"

#include "frame/check.h"
#include "frame/halves.h"
#include "frame/loop.h"
#include "frame/packed24.h"
#include "frame/plain.h"
#include "frame/rounding.h"
#include "frame/tile.h"
#include "frame/to_integer.h"

namespace kvrs {
namespace {

// Floats to 32-bit integers within the range of a sample. NaN becomes the lowest one, since the bounds take it
// to theirs (frame/to_integer.h).

struct Nearest16 {
  using Sample = Kvr16s;
  template <class Di, class V>
  KVRS_INLINE hn::Vec<Di> operator()(Di di, V x) const {
    const hn::DFromV<V> df;
    return nearestInt32(di, bound(df, x, -32768.0f, 32767.0f));
  }
};

struct Scaled16 {
  using Sample = Kvr16s;
  template <class Di, class V>
  KVRS_INLINE hn::Vec<Di> operator()(Di di, V x) const {
    const hn::DFromV<V> df;
    const V scaled = hn::Mul(bound(df, x, -1.0f, 1.0f), hn::Set(df, 32767.5f));
    return nearestInt32(di, hn::Sub(scaled, hn::Set(df, 0.5f)));
  }
};

struct Scaled24 {
  using Sample = Packed24s;
  template <class Di, class V>
  KVRS_INLINE hn::Vec<Di> operator()(Di di, V x) const {
    const hn::DFromV<V> df;
    const auto scale = [](auto dt, auto v) __attribute__((always_inline)) {
      const hn::Rebind<Kvr64f, decltype(dt)> dd;
      const auto scaled = hn::Mul(hn::PromoteTo(dd, v), hn::Set(dd, 8388607.5));
      return nearestInt32(dt, hn::Sub(scaled, hn::Set(dd, 0.5)));
    };
    return through<Kvr64f>(scale, di, bound(df, x, -1.0f, 1.0f));
  }
};

// 32-bit integers to floats.

struct Unscaled16 {
  using Sample = Kvr16s;
  template <class Df, class V>
  KVRS_INLINE hn::Vec<Df> operator()(Df df, V x) const {
    return scale(df, x, 0x1.0001p-15f);
  }
  // The same of samples in the upper halves of their lanes, 2^16 times as large: products are the same.
  template <class Df, class V>
  static KVRS_INLINE hn::Vec<Df> ofUpperHalves(Df df, V x) {
    return scale(df, x, 0x1.0001p-31f);
  }

 private:
  template <class Df, class V>
  static KVRS_INLINE hn::Vec<Df> scale(Df df, V x, Kvr32f factor) {  // 3.0518044e-05, 1.5259022e-05
    return hn::Add(hn::Mul(hn::ConvertTo(df, x), hn::Set(df, factor)), hn::Set(df, 0x1.0001p-16f));
  }
};

struct Unscaled24 {
  using Sample = Packed24s;
  template <class Df, class V>
  KVRS_INLINE hn::Vec<Df> operator()(Df df, V x) const {
    const auto scale = [](auto dt, auto v) __attribute__((always_inline)) {
      const hn::Rebind<Kvr64f, decltype(dt)> dd;
      const auto scaled = hn::Mul(hn::PromoteTo(dd, v), hn::Set(dd, 1.19209296656209e-07));
      return hn::DemoteTo(dt, hn::Add(scaled, hn::Set(dd, 5.96046483281045e-08)));
    };
    return through<Kvr64f>(scale, df, x);
  }
};

// Samples as 32-bit integers, as many as the tag has lanes.
template <class Di>
KVRS_INLINE hn::Vec<Di> loadSamples(Di di, const Kvr16s* p) {
  return hn::PromoteTo(di, hn::LoadU(hn::Rebind<Kvr16s, Di>(), p));
}
template <class Di>
KVRS_INLINE hn::Vec<Di> loadSamples(Di di, const Packed24s* p) {
  return Element<Packed24s>::load(di, p);
}
template <class Di>
KVRS_INLINE void storeSamples(hn::Vec<Di> v, Di, Kvr16s* p) {
  const hn::Rebind<Kvr16s, Di> d16;
  hn::StoreU(hn::DemoteTo(d16, v), d16, p);
}
template <class Di>
KVRS_INLINE void storeSamples(hn::Vec<Di> v, Di di, Packed24s* p) {
  Element<Packed24s>::store(v, di, p);
}

// One channel.

template <class Op>
struct JoinOne {
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V x) const {
    const auto integers = Op()(hn::Rebind<int32_t, Dt>(), x);
    if constexpr (sizeof(hn::TFromD<Dt>) == sizeof(int32_t)) {
      return integers;
    } else {
      return hn::DemoteTo(dt, integers);
    }
  }
};

template <class Op>
struct SplitOne {
  template <class Df, class V>
  KVRS_INLINE hn::Vec<Df> operator()(Df df, V x) const {
    if constexpr (sizeof(hn::TFromV<V>) == sizeof(int32_t)) {
      return Op()(df, x);
    } else {
      return Op()(df, hn::PromoteTo(hn::Rebind<int32_t, Df>(), x));
    }
  }
};

// Two channels of 16 bits: a frame is a 32-bit word.

template <class Op>
struct JoinWords {
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt dt, V left, V right) const {
    const hn::RebindToSigned<hn::DFromV<V>> di;
    const auto low = hn::And(Op()(di, left), hn::Set(di, 0xFFFF));
    return hn::BitCast(dt, hn::Or(low, hn::ShiftLeft<16>(Op()(di, right))));
  }
};

template <class Op>
struct SplitWords {
  template <class Df, class V>
  KVRS_INLINE Complex<hn::Vec<Df>> operator()(Df df, V frames) const {
    const hn::RebindToSigned<Df> di;
    const auto words = hn::BitCast(di, frames);
    return {Op()(df, hn::ShiftRight<16>(hn::ShiftLeft<16>(words))), Op()(df, hn::ShiftRight<16>(words))};
  }
};

template <class Op>
void joinTwo(const Kvr32f* const* src, size_t chanLen, Kvr16s* dst) {
  mapElements(JoinWords<Op>(), asPairs<Kvr16s>(dst), chanLen, src[0], src[1]);
}

template <class Op>
void splitTwo(const Kvr16s* src, Kvr32f* const* dst, size_t chanLen) {
  mapElements(SplitWords<Op>(), Planes<Kvr32f>{dst[0], dst[1]}, chanLen, asPairs<Kvr16s>(src));
}

// Two channels of 24 bits: through a tile of 32-bit numbers that stays in the nearest cache.

constexpr size_t kTileFrames = 512;

template <class Op>
void joinTwo(const Kvr32f* const* src, size_t chanLen, Packed24s* dst) {
  forTiles<Kvr32fc, kTileFrames>(chanLen, [&](Kvr32fc* tile, size_t i, size_t frames) {
    mapElements(JoinParts(), tile, frames, src[0] + i, src[1] + i);
    mapElements(JoinOne<Op>(), dst + 2 * i, 2 * frames, &tile->re);
  });
}

template <class Op>
void splitTwo(const Packed24s* src, Kvr32f* const* dst, size_t chanLen) {
  forTiles<Kvr32fc, kTileFrames>(chanLen, [&](Kvr32fc* tile, size_t i, size_t frames) {
    mapElements(SplitOne<Op>(), &tile->re, 2 * frames, src + 2 * i);
    mapElements(BothParts(), Planes<Kvr32f>{dst[0] + i, dst[1] + i}, frames, tile);
  });
}

// Three and more.

using Quad = Lanes<Kvr32f, 4>;
using QuadInt = Lanes<int32_t, 4>;

template <class D, class V = hn::Vec<D>>
KVRS_INLINE void transpose(D d, V (&row)[4]) {
  const hn::Repartition<uint64_t, D> d64;
  const auto low = [=](V a, V b) { return hn::BitCast(d64, hn::InterleaveLower(d, a, b)); };
  const auto high = [=](V a, V b) { return hn::BitCast(d64, hn::InterleaveUpper(d, a, b)); };
  const auto ab01 = low(row[0], row[1]), ab23 = high(row[0], row[1]);
  const auto cd01 = low(row[2], row[3]), cd23 = high(row[2], row[3]);
  row[0] = hn::BitCast(d, hn::InterleaveLower(d64, ab01, cd01));
  row[1] = hn::BitCast(d, hn::InterleaveUpper(d64, ab01, cd01));
  row[2] = hn::BitCast(d, hn::InterleaveLower(d64, ab23, cd23));
  row[3] = hn::BitCast(d, hn::InterleaveUpper(d64, ab23, cd23));
}

// Calls `four(c)` for the channels c to c + 3, four by four. Of three channels there is one block.
template <class Four>
KVRS_INLINE void forQuads(size_t channels, Four four) {
  size_t c = 0;
  for (; c + 4 < channels; c += 4) four(c);
  four(channels < 4 ? 0 : channels - 4);
}

// Runs `block(i)` on four frames from i on, then `single(i)` on what is left. Blocks of three channels reach
// over the end of each frame into the next one, which therefore has to be there.
template <class Block, class Single>
KVRS_INLINE void forFrames(size_t channels, size_t chanLen, Block block, Single single) {
  const size_t reach = channels < 4 ? 5 : 4;
  size_t i = 0;
  for (; i + reach <= chanLen; i += 4) block(i);
  for (; i < chanLen; ++i) single(i);
}

template <class Op, class Sample>
void joinMany(const Kvr32f* const* src, size_t channels, size_t chanLen, Sample* dst) {
  const auto block = [=](size_t i) __attribute__((always_inline)) {
    forQuads(
        channels, [=](size_t c) __attribute__((always_inline)) {
          hn::Vec<QuadInt> frame[4];
          for (size_t k = 0; k < 4; ++k) {
            const size_t channel = c + k < channels ? c + k : c;
            frame[k] = Op()(QuadInt(), hn::LoadU(Quad(), src[channel] + i));
          }
          transpose(QuadInt(), frame);
          for (size_t k = 0; k < 4; ++k) storeSamples(frame[k], QuadInt(), dst + (i + k) * channels + c);
        });
  };
  const auto single = [=](size_t i) {
    for (size_t c = 0; c < channels; ++c) {
      const auto sample = Op()(Lanes<int32_t, 1>(), hn::LoadU(Lanes<Kvr32f, 1>(), src[c] + i));
      storeSamples(sample, Lanes<int32_t, 1>(), dst + i * channels + c);
    }
  };
  forFrames(channels, chanLen, block, single);
}

// Four samples of four frames each, by channel.
template <class Op>
KVRS_INLINE void loadQuads(const Packed24s* src, size_t channels, hn::Vec<Quad> (&channel)[4]) {
  for (size_t k = 0; k < 4; ++k) channel[k] = Op()(Quad(), loadSamples(QuadInt(), src + k * channels));
  transpose(Quad(), channel);
}

// 16-bit samples are transposed while they are narrow.
template <class Op>
KVRS_INLINE void loadQuads(const Kvr16s* src, size_t channels, hn::Vec<Quad> (&channel)[4]) {
  const Lanes<Kvr16s, 8> d;
  const Lanes<Kvr16s, 4> half;
  const auto frame = [=](size_t k) __attribute__((always_inline)) {
    return hn::ZeroExtendVector(d, hn::LoadU(half, src + k * channels));
  };
  const auto frames02 = hn::InterleaveLower(d, frame(0), frame(2));  // a0 a2 b0 b2 c0 c2 d0 d2
  const auto frames13 = hn::InterleaveLower(d, frame(1), frame(3));
  const auto ab = hn::InterleaveLower(d, frames02, frames13);  // a0 a1 a2 a3 b0 b1 b2 b3
  const auto cd = hn::InterleaveUpper(d, frames02, frames13);
  const auto zero = hn::Zero(d);
  const auto convert = [](auto samples) __attribute__((always_inline)) {
    return Op::ofUpperHalves(Quad(), hn::BitCast(QuadInt(), samples));
  };
  channel[0] = convert(hn::InterleaveLower(d, zero, ab));
  channel[1] = convert(hn::InterleaveUpper(d, zero, ab));
  channel[2] = convert(hn::InterleaveLower(d, zero, cd));
  channel[3] = convert(hn::InterleaveUpper(d, zero, cd));
}

template <class Op, class Sample>
void splitMany(const Sample* src, Kvr32f* const* dst, size_t channels, size_t chanLen) {
  const auto block = [=](size_t i) __attribute__((always_inline)) {
    forQuads(
        channels, [=](size_t c) __attribute__((always_inline)) {
          hn::Vec<Quad> channel[4];
          for (size_t k = 0; k < 4; ++k) {
            channel[k] = Op()(Quad(), loadSamples(QuadInt(), src + (i + k) * channels + c));
          }
          transpose(Quad(), channel);
          for (size_t k = 0; k < 4 && c + k < channels; ++k) hn::StoreU(channel[k], Quad(), dst[c + k] + i);
        });
  };
  const auto single = [=](size_t i) {
    for (size_t c = 0; c < channels; ++c) {
      const auto sample = loadSamples(Lanes<int32_t, 1>(), src + i * channels + c);
      hn::StoreU(Op()(Lanes<Kvr32f, 1>(), sample), Lanes<Kvr32f, 1>(), dst[c] + i);
    }
  };
  forFrames(channels, chanLen, block, single);
}

// The checks have an order of their own: the interleaved array, the counts, then the pointers to channels. Last
// comes what no valid call can meet, an interleaved array that does not fit into the address space.
template <class Sample>
KvrStatus checkChannels(const void* interleaved, int nChannels, int chanLen, const void* const* channels) {
  KVRS_CHECK(pointers(interleaved), length(nChannels), length(chanLen), pointers(channels));
  for (int c = 0; c < nChannels; ++c) {
    if (channels[c] == nullptr) return kvrStatusNullPointer;
  }
  const uint64_t samples = static_cast<uint64_t>(nChannels) * static_cast<uint64_t>(chanLen);
  return check::require(samples <= SIZE_MAX / sizeof(Sample), kvrStatusBadLength);
}

template <class Op>
KvrStatus join(const Kvr32f* const* src, int nChannels, int chanLen, void* interleaved) {
  const KvrStatus bad = checkChannels<typename Op::Sample>(interleaved, nChannels, chanLen,
                                                           reinterpret_cast<const void* const*>(src));
  if (bad != kvrStatusOk) return bad;
  auto* dst = static_cast<typename Op::Sample*>(interleaved);
  const size_t channels = static_cast<size_t>(nChannels), frames = static_cast<size_t>(chanLen);
  return underRounding(Rounding::nearest, [=]() -> KvrStatus {
    if (channels == 1) return mapElements(JoinOne<Op>(), dst, frames, src[0]);
    if (channels == 2) {
      joinTwo<Op>(src, frames, dst);
    } else {
      joinMany<Op>(src, channels, frames, dst);
    }
    return kvrStatusOk;
  });
}

template <class Op>
KvrStatus split(const void* interleaved, Kvr32f* const* dst, int nChannels, int chanLen) {
  const KvrStatus bad = checkChannels<typename Op::Sample>(interleaved, nChannels, chanLen,
                                                           reinterpret_cast<const void* const*>(dst));
  if (bad != kvrStatusOk) return bad;
  const auto* src = static_cast<const typename Op::Sample*>(interleaved);
  const size_t channels = static_cast<size_t>(nChannels), frames = static_cast<size_t>(chanLen);
  if (channels == 1) return mapElements(SplitOne<Op>(), dst[0], frames, src);
  if (channels == 2) {
    splitTwo<Op>(src, dst, frames);
  } else {
    splitMany<Op>(src, dst, channels, frames);
  }
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsJoin_32f16s_D2L(const Kvr32f* const* src, int nChannels, int chanLen, Kvr16s* dst) noexcept {
  return join<Nearest16>(src, nChannels, chanLen, dst);
}
KvrStatus kvrsJoinScaled_32f16s_D2L(const Kvr32f* const* src, int nChannels, int chanLen,
                                    Kvr16s* dst) noexcept {
  return join<Scaled16>(src, nChannels, chanLen, dst);
}
KvrStatus kvrsJoinScaled_32f24s_D2L(const Kvr32f* const* src, int nChannels, int chanLen,
                                    Kvr8u* dst) noexcept {
  return join<Scaled24>(src, nChannels, chanLen, dst);
}
KvrStatus kvrsSplitScaled_16s32f_D2L(const Kvr16s* src, Kvr32f* const* dst, int nChannels,
                                     int chanLen) noexcept {
  return split<Unscaled16>(src, dst, nChannels, chanLen);
}
KvrStatus kvrsSplitScaled_24s32f_D2L(const Kvr8u* src, Kvr32f* const* dst, int nChannels,
                                     int chanLen) noexcept {
  return split<Unscaled24>(src, dst, nChannels, chanLen);
}
