// Magnitudes and squared magnitudes of complex numbers, interleaved or in two planes.
// SPDX-License-Identifier: MIT
#include <limits>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/scale.h"
#include "frame/threads.h"
#include "frame/to_integer.h"
#include "frame/unroll.h"
#include "frame/widen.h"
#include "kvrs/fill.h"
#include "kvrs/polar.h"

namespace kvrs {
namespace {

// Two singles that are loaded as doubles: the conversion from memory takes no shuffle, that of half a register does.
struct WidenedPair {
  Kvr32f re, im;
};

}  // namespace

// As many doubles from the pairs' first half and from their second.
template <>
struct Element<WidenedPair> {
  using Lane = Kvr32f;
  static constexpr size_t kSpan = 2;

  template <class Dt>
  static KVRS_INLINE Both<hn::Vec<Lanes<double, hn::MaxLanes(Dt()) / 2>>> load(Dt, const WidenedPair* p) {
    constexpr size_t half = hn::MaxLanes(Dt()) / 2;
    const Lanes<float, half> d;
    const Lanes<double, half> wide;
    return {hn::PromoteTo(wide, hn::LoadU(d, &p->re)), hn::PromoteTo(wide, hn::LoadU(d, &p->re + half))};
  }
};

namespace {

// Floats: re * re + im * im, each operation rounded by itself.
template <class V>
KVRS_INLINE V squaredMagnitude(V re, V im) {
  return hn::Add(hn::Mul(re, re), hn::Mul(im, im));
}

// The sum of the squares of 16-bit parts is at most 2^31, and 2^31 only of (-32768, -32768): then its lane holds the
// lowest integer.
template <class D32, class V16>
KVRS_INLINE hn::Vec<D32> sumOfSquares(D32 d, V16 pairs) {
  return mulAddNeighbours(d, pairs, pairs);
}

// As a float, rounded in the current mode; 2^31 is the only one with a sign to take away.
template <class D32>
KVRS_INLINE auto sumAsFloat(D32, hn::Vec<D32> sum) {
  return hn::Abs(hn::ConvertTo(hn::Rebind<float, D32>(), sum));
}

struct SquaredMagnitude {
  template <class D, class V>
  KVRS_INLINE V operator()(D, Complex<V> z) const {
    return squaredMagnitude(z.re, z.im);
  }
  template <class D, class V>
  KVRS_INLINE V operator()(D, V re, V im) const {
    return squaredMagnitude(re, im);
  }
};

struct Magnitude {
  template <class D, class... V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V... parts) const {
    return hn::Sqrt(SquaredMagnitude()(d, parts...));
  }
};

// 16-bit parts to float.
template <bool root>
struct FloatOf16s {
  // Pairs.
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D, V pairs) const {
    const hn::RebindToSigned<D> di;
    const auto sum = sumAsFloat(di, sumOfSquares(di, pairs));
    if constexpr (root) return hn::Sqrt(sum);
    return sum;
  }
  // Planes: each 32-bit lane becomes the pair of its low and its high half.
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V re, V im) const {
    const hn::RebindToSigned<D> di;
    const hn::RebindToUnsigned<hn::DFromV<V>> du16;
    const hn::RebindToUnsigned<D> du;
    const auto low = hn::PromoteTo(du, hn::BitCast(du16, re));
    const auto high = hn::ShiftLeft<16>(hn::PromoteTo(du, hn::BitCast(du16, im)));
    return (*this)(d, hn::BitCast(hn::Repartition<int16_t, decltype(di)>(), hn::Or(low, high)));
  }
};

// An operation on the sums of squares of 16-bit parts, for 16-bit results: Op makes 32-bit integers of 32-bit sums.
template <class Op>
struct Of16s {
  Op op;

  // Pairs: as many sums as results.
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V pairs) const {
    const hn::Rebind<int32_t, D> d32;
    return hn::DemoteTo(d, op(d32, sumOfSquares(d32, pairs)));
  }
  // Planes. Interleaving and narrowing stay within blocks of 16 bytes, so that their orders undo each other.
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V re, V im) const {
    return inWholeBlocks(
        [&](auto dw, auto wholeRe, auto wholeIm) KVRS_UNROLLED {
          const hn::RepartitionToWide<decltype(dw)> d32;
          const auto lower = op(d32, sumOfSquares(d32, hn::InterleaveLower(dw, wholeRe, wholeIm)));
          const auto upper = op(d32, sumOfSquares(d32, hn::InterleaveUpper(dw, wholeRe, wholeIm)));
          return hn::ReorderDemote2To(dw, lower, upper);
        },
        d, re, im);
  }
};

// The root times a power of two, in the current rounding mode. Scaled up by more than 2^14 all but 0 saturate.
struct ScaledRoot {
  float scale;
  template <class D32, class V>
  KVRS_INLINE V operator()(D32 d, V sum) const {
    const hn::Rebind<float, D32> df;
    const auto scaled = hn::Mul(hn::Sqrt(sumAsFloat(d, sum)), hn::Set(df, scale));
    return nearestInt32(d, hn::Min(scaled, hn::Set(df, 32767.0f)));
  }
};

// Scale factor 16: only of a sum above 2^30 is the root, at most 2^15.5, above one half of 2^16.
struct IsAbove2To30 {
  template <class D32, class V>
  KVRS_INLINE V operator()(D32 d, V sum) const {
    const hn::RebindToUnsigned<D32> du;
    const auto raised = hn::Add(hn::BitCast(du, sum), hn::Set(du, (1u << 30) - 1));
    return hn::BitCast(d, hn::ShiftRight<31>(raised));
  }
};

// Sums as integers, scaled down and up.
struct SumShiftedRight {
  int shift;
  template <class D32, class V>
  KVRS_INLINE V operator()(D32 d, V sum) const {
    const hn::RebindToUnsigned<D32> du;
    return hn::BitCast(d, shiftRightEvenWithRoom(du, hn::BitCast(du, sum), shift));
  }
};
struct SumShiftedLeft {
  int shift;
  template <class D32, class V>
  KVRS_INLINE V operator()(D32 d, V sum) const {
    const hn::RebindToUnsigned<D32> du;
    const V belowSign = hn::Sub(sum, hn::BitCast(d, hn::ShiftRight<31>(hn::BitCast(du, sum))));
    return hn::ShiftLeftSame(hn::Min(belowSign, hn::Set(d, 32767)), shift);
  }
};

// 32-bit parts.
template <bool root>
struct ScaledOf32s {
  double scale;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, Complex<V> z) const {
    const hn::Rebind<double, D> df;
    const auto scaled = hn::Mul(value(df, z), hn::Set(df, scale));
    return nearestInt32(d, hn::Min(scaled, hn::Set(df, 2147483647.0)));
  }

 private:
  template <class Df, class V>
  static KVRS_INLINE hn::Vec<Df> value(Df df, Complex<V> z) {
    if constexpr (root) {
      // The sum is exact in integers, up to 2^63, and rounded once.
      const hn::Rebind<uint64_t, Df> du;
      return hn::Sqrt(hn::ConvertTo(df, hn::Add(square(du, z.re), square(du, z.im))));
    } else {
      return squaredMagnitude(hn::PromoteTo(df, z.re), hn::PromoteTo(df, z.im));
    }
  }
  template <class Du, class V>
  static KVRS_INLINE hn::Vec<Du> square(Du du, V part) {
    // 2^31, which has no positive counterpart among signed numbers, is right as an unsigned one.
    const hn::Rebind<uint32_t, Du> narrow;
    const auto magnitude =
        hn::BitCast(hn::Repartition<uint32_t, Du>(), hn::PromoteTo(du, hn::BitCast(narrow, hn::Abs(part))));
    return hn::MulEven(magnitude, magnitude);
  }
};

// Widened pairs: squares first, then they are taken apart.
struct DoubleOf32fc {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, Both<V> pairs) const {
    const V first = hn::Mul(pairs.first, pairs.first), second = hn::Mul(pairs.second, pairs.second);
    if constexpr (hn::MaxLanes(D()) == 1) {
      return hn::Add(first, second);
    } else {
      return hn::Add(hn::ConcatEven(d, second, first), hn::ConcatOdd(d, second, first));
    }
  }
};

// dst[i] = op(src[i]...), on a team of threads from a length on.
template <class D, class Op, class... S>
KvrStatus mapSliced(const Op& op, size_t threadedFrom, D* dst, int len, const S*... src) {
  KVRS_CHECK(length(len, dst, src...));
  runSliced(static_cast<size_t>(len), threadedFrom, kTwoThreads, [=](size_t begin, size_t count) {
    mapElements(op, dst + begin, count, src + begin...);
    return false;
  });
  return kvrStatusOk;
}

template <class Op, class D, class... S>
KvrStatus map(const Op& op, D* dst, int len, const S*... src) {
  KVRS_CHECK(pointers(src..., dst), length(len));
  return mapElements(op, dst, static_cast<size_t>(len), src...);
}

template <class Op, class D, class... S>
KvrStatus mapThreaded(const Op& op, size_t threadedFrom, D* dst, int len, const S*... src) {
  KVRS_CHECK(pointers(src..., dst), length(len));
  return mapSliced(op, threadedFrom, dst, len, src...);
}

// Magnitudes of 16-bit parts: `src` is an array of pairs or two planes.
template <class... S>
KvrStatus magnitude16s(Kvr16s* dst, int len, int scaleFactor, const S*... src) {
  KVRS_CHECK(pointers(src..., dst), length(len));
  constexpr size_t kThreadedFrom = threadedLength(2048);
  if (scaleFactor > 16) return kvrsZero_16s(dst, len);
  if (scaleFactor == 16) return mapSliced(Of16s<IsAbove2To30>{}, kThreadedFrom, dst, len, src...);
  const float scale = powerOfTwo<float>(scaleFactor < -15 ? 15 : -scaleFactor);
  return mapSliced(Of16s<ScaledRoot>{{scale}}, kThreadedFrom, dst, len, src...);
}

template <class... S>
KvrStatus power16s(Kvr16s* dst, int len, int scaleFactor, const S*... src) {
  KVRS_CHECK(pointers(src..., dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (scaleFactor > 31) return kvrsZero_16s(dst, len);
  if (scaleFactor > 0) {
    return mapElements(Of16s<SumShiftedRight>{{scaleFactor}}, dst, n, src...);
  }
  return mapElements(Of16s<SumShiftedLeft>{{scaleFactor < -15 ? 15 : -scaleFactor}}, dst, n, src...);
}

// Scaled up by more than 2^30 all but 0 saturate.
template <bool root>
KvrStatus of32sc(const Kvr32sc* src, Kvr32s* dst, int len, int scaleFactor, int zeroAbove,
                 size_t threadedFrom) {
  KVRS_CHECK(pointers(src, dst), length(len));
  if (scaleFactor > zeroAbove) return kvrsZero_32s(dst, len);
  KVRS_CHECK(length(len, dst, src));
  const ScaledOf32s<root> op{powerOfTwo<double>(scaleFactor < -31 ? 31 : -scaleFactor)};
  runSliced(static_cast<size_t>(len), threadedFrom, kTwoThreads, [=](size_t begin, size_t count) {
    return mapInLanesOf<double>(op, dst + begin, count, src + begin) != kvrStatusOk;
  });
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMagnitude_16sc_Sfs(const Kvr16sc* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return magnitude16s(dst, len, scaleFactor, asPairs<Kvr16s>(src));
}
KvrStatus kvrsMagnitude_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dst, int len,
                                int scaleFactor) noexcept {
  return magnitude16s(dst, len, scaleFactor, srcRe, srcIm);
}
KvrStatus kvrsMagnitude_32sc_Sfs(const Kvr32sc* src, Kvr32s* dst, int len, int scaleFactor) noexcept {
  return of32sc<true>(src, dst, len, scaleFactor, 32, threadedLength(256));
}
KvrStatus kvrsMagnitude_16sc32f(const Kvr16sc* src, Kvr32f* dst, int len) noexcept {
  return mapThreaded(FloatOf16s<true>(), threadedLength(4096), dst, len, asPairs<Kvr16s>(src));
}
KvrStatus kvrsMagnitude_16s32f(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr32f* dst, int len) noexcept {
  return mapThreaded(FloatOf16s<true>(), threadedLength(2048), dst, len, srcRe, srcIm);
}
KvrStatus kvrsMagnitude_32fc(const Kvr32fc* src, Kvr32f* dst, int len) noexcept {
  return mapThreaded(Magnitude(), threadedLength(2048), dst, len, src);
}
KvrStatus kvrsMagnitude_64fc(const Kvr64fc* src, Kvr64f* dst, int len) noexcept {
  return mapThreaded(Magnitude(), threadedLength(256), dst, len, src);
}
KvrStatus kvrsMagnitude_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dst, int len) noexcept {
  return mapThreaded(Magnitude(), threadedLength(4096), dst, len, srcRe, srcIm);
}
KvrStatus kvrsMagnitude_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dst, int len) noexcept {
  return mapThreaded(Magnitude(), threadedLength(256), dst, len, srcRe, srcIm);
}

KvrStatus kvrsMagSquared_32sc32s_Sfs(const Kvr32sc* src, Kvr32s* dst, int len, int scaleFactor) noexcept {
  return of32sc<false>(src, dst, len, scaleFactor, 63, kNeverThreaded);
}
KvrStatus kvrsMagSquared_32fc64f(const Kvr32fc* src, Kvr64f* dst, int len) noexcept {
  return map(DoubleOf32fc(), dst, len, reinterpret_cast<const WidenedPair*>(src));
}

KvrStatus kvrsPowerSpectr_16sc_Sfs(const Kvr16sc* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return power16s(dst, len, scaleFactor, asPairs<Kvr16s>(src));
}
KvrStatus kvrsPowerSpectr_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dst, int len,
                                  int scaleFactor) noexcept {
  return power16s(dst, len, scaleFactor, srcRe, srcIm);
}
KvrStatus kvrsPowerSpectr_16sc32f(const Kvr16sc* src, Kvr32f* dst, int len) noexcept {
  return map(FloatOf16s<false>(), dst, len, asPairs<Kvr16s>(src));
}
KvrStatus kvrsPowerSpectr_16s32f(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr32f* dst, int len) noexcept {
  return map(FloatOf16s<false>(), dst, len, srcRe, srcIm);
}
KvrStatus kvrsPowerSpectr_32fc(const Kvr32fc* src, Kvr32f* dst, int len) noexcept {
  return map(SquaredMagnitude(), dst, len, src);
}
KvrStatus kvrsPowerSpectr_64fc(const Kvr64fc* src, Kvr64f* dst, int len) noexcept {
  return map(SquaredMagnitude(), dst, len, src);
}
KvrStatus kvrsPowerSpectr_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32f* dst, int len) noexcept {
  return map(SquaredMagnitude(), dst, len, srcRe, srcIm);
}
KvrStatus kvrsPowerSpectr_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64f* dst, int len) noexcept {
  return map(SquaredMagnitude(), dst, len, srcRe, srcIm);
}
