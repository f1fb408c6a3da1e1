// Frequency demodulation.
//
// The angle of z[n] * conj(z[n-1]), whose parts are exact 32-bit integers, by octants: t is the quotient of the smaller of
// their magnitudes by the larger one, and the angle one of p, 90 - p, 90 + p, 180 - p degrees with p = atan t, in units of the
// result. Quotients, products and sums are rounded one by one, so that modules do not differ.
// SPDX-License-Identifier: MIT
#include "kvrs/demodulate.h"

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/to_integer.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"
#include "frame/widen.h"

namespace kvrs {
namespace {

constexpr float kHalfTurn = 32767;

// 32767 / pi * atan(t) is t * P(t^2) for t in [0, 1], within 0.0026 (minimax, by Remez's exchange).
constexpr float kP[] = {0x1.45f028p+13f, -0x1.b260b0p+11f, 0x1.023ef2p+11f, -0x1.590fb6p+10f,
                        0x1.9f3d66p+9f,  -0x1.5e7e7ap+8f,  0x1.1c308ep+6f};
constexpr int kLast = static_cast<int>(sizeof kP / sizeof *kP) - 1;

// The angle of integers re, im that are not larger than 2^31, to the nearest unit.
template <class Di, class V = hn::Vec<Di>>
KVRS_INLINE V angle(Di di, V re, V im) {
  const hn::Rebind<float, Di> d;
  const auto x = hn::ConvertTo(d, re), y = hn::ConvertTo(d, im);
  const auto ax = hn::Abs(x), ay = hn::Abs(y);
  // Integers below 1 are 0, of both as of none.
  const auto t = hn::Div(hn::Min(ax, ay), hn::Max(hn::Max(ax, ay), hn::Set(d, 1.0f)));
  const auto z = hn::Mul(t, t);
  auto p = hn::Set(d, kP[kLast]);
#pragma GCC unroll 8
  for (int i = kLast - 1; i >= 0; --i) p = hn::Add(hn::Mul(p, z), hn::Set(d, kP[i]));
  p = hn::Mul(p, t);
  p = hn::IfThenElse(hn::Gt(ay, ax), hn::Sub(hn::Set(d, kHalfTurn / 2), p), p);
  p = hn::IfThenElse(hn::Lt(x, hn::Zero(d)), hn::Sub(hn::Set(d, kHalfTurn), p), p);
  return nearestInt32(di, hn::CopySignToAbs(p, y));
}

// The step from b to a.
struct Step {
  static constexpr bool kIsHeavy = true;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V aRe, V aIm, V bRe, V bIm) const {
    const hn::RepartitionToWide<D> di;
    const auto sign = hn::BroadcastSignBit(bIm), notRe = hn::Not(aRe);
    // Lanes that are interleaved within blocks of 16 bytes; packing puts them back into their order.
    const auto half = [&](auto interleave) KVRS_UNROLLED {
      const V b = interleave(bRe, bIm);
      // Above all other sums is that of four numbers of -32768, 2^31.
      const auto re = unwrapped(di, mulAddNeighbours(di, interleave(aRe, aIm), b));
      // -aRe is ~aRe + 1, and so every product exists.
      const auto im =
          hn::Add(mulAddNeighbours(di, interleave(aIm, notRe), b), hn::BitCast(di, interleave(bIm, sign)));
      return angle(di, re, im);
    };
    const auto lower = half([=](V even, V odd) KVRS_UNROLLED { return hn::InterleaveLower(d, even, odd); });
    const auto upper = half([=](V even, V odd) KVRS_UNROLLED { return hn::InterleaveUpper(d, even, odd); });
    return hn::ReorderDemote2To(d, lower, upper);
  }
};

// From the last sample to the first, so that each is there for the one behind it when dst lies over a source.
void demodulate(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dst, size_t len, Kvr16sc* dlyPoint) {
  const Kvr16sc before = unaligned::get(dlyPoint);
  const Kvr16s re = unaligned::get(srcRe), im = unaligned::get(srcIm);
  Kvr16s first;
  mapElements(Step(), &first, 1, &re, &im, &before.re, &before.im);
  unaligned::put({unaligned::get(srcRe + len - 1), unaligned::get(srcIm + len - 1)}, dlyPoint);
  if (len > 1) {
    mapElements(Step(), Downward<Kvr16s>{dst + len}, len - 1, Downward<const Kvr16s>{srcRe + len},
                Downward<const Kvr16s>{srcIm + len}, Downward<const Kvr16s>{srcRe + len - 1},
                Downward<const Kvr16s>{srcIm + len - 1});
  }
  unaligned::put(first, dst);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsDemodulateFM_CToR_16s(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dst, int len,
                                    Kvr16sc* dlyPoint) noexcept {
  KVRS_CHECK(pointers(srcRe, srcIm, dst, dlyPoint), length(len));
  underRounding(Rounding::nearest,
                [=] { demodulate(srcRe, srcIm, dst, static_cast<size_t>(len), dlyPoint); });
  return kvrStatusOk;
}
