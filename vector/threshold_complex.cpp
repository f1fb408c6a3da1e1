// Thresholds on the magnitude of complex elements.
// SPDX-License-Identifier: MIT
#include <cstdint>

#include "frame/complex.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/to_integer.h"
#include "frame/widen.h"
#include "kvrs/threshold.h"
#include "vector/threshold.h"

namespace kvrs {
namespace {

// Whether a squared magnitude is beyond level^2, and where magnitudes are limited, not 0 besides.
struct Greater {
  template <class D, class V>
  static KVRS_INLINE auto isBeyond(D, V square, V levelSquare) {
    return hn::Gt(square, levelSquare);
  }
  template <class D, class V>
  static KVRS_INLINE auto hasPhase(D d, V square, V levelSquare) {
    return isBeyond(d, square, levelSquare);
  }
};
struct Less {
  template <class D, class V>
  static KVRS_INLINE auto isBeyond(D, V square, V levelSquare) {
    return hn::Lt(square, levelSquare);
  }
  template <class D, class V>
  static KVRS_INLINE auto hasPhase(D d, V square, V levelSquare) {
    return hn::And(hn::Lt(square, levelSquare), hn::Gt(square, hn::Zero(d)));
  }
};

// 16-bit parts: the sum of their squares less 1, which is -1 of 0 and wraps to the highest integer from 2^31, so that it
// compares as it should with level^2 - 1.
template <class D32, class V16>
KVRS_INLINE hn::Vec<D32> squareLess1(D32 d, V16 pairs) {
  return hn::Sub(mulAddNeighbours(d, pairs, pairs), hn::Set(d, 1));
}
template <class Relation, class D32, class V>
KVRS_INLINE auto isBeyond16(D32 d, V squareLess1, int32_t levelSquare) {
  // Above level^2 - 1 is at least level^2 itself and so on: both relations are strict as they stand.
  return Relation::isBeyond(d, squareLess1, hn::Set(d, levelSquare - 1));
}

template <class Relation, class T, class C>
struct Replaced {
  T levelSquare;
  C value;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V pairs) const {
    const V squares = hn::Mul(pairs, pairs), sum = hn::Add(squares, swapParts(d, squares));
    return hn::IfThenElse(Relation::isBeyond(d, sum, hn::Set(d, levelSquare)),
                          setPairs(d, value.re, value.im), pairs);
  }
};

template <class Relation>
struct Replaced16 {
  int32_t levelSquare, value;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V pairs) const {
    const hn::RepartitionToWide<D> d32;
    const auto isBeyond = isBeyond16<Relation>(d32, squareLess1(d32, pairs), levelSquare);
    return hn::BitCast(d, hn::IfThenElse(isBeyond, hn::Set(d32, value), hn::BitCast(d32, pairs)));
  }
};

template <class Relation, class T>
struct Limited {
  T level;
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, Complex<V> z) const {
    const V l = hn::Set(d, level);
    const V square = hn::Add(hn::Mul(z.re, z.re), hn::Mul(z.im, z.im));
    const auto isBeyond = Relation::hasPhase(d, square, hn::Set(d, level * level));
    const V factor = hn::Div(l, hn::Sqrt(square));
    return {hn::IfThenElse(isBeyond, hn::Mul(z.re, factor), z.re),
            hn::IfThenElse(isBeyond, hn::Mul(z.im, factor), z.im)};
  }
};

template <class Relation>
struct Limited16 {
  int32_t level;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V pairs) const {
    const hn::RepartitionToWide<D> d32;
    const hn::RebindToFloat<decltype(d32)> df;
    const auto both = hn::BitCast(d32, pairs);
    const auto less1 = squareLess1(d32, pairs);
    const auto isBeyond = isBeyond16<Relation>(d32, less1, level * level);
    // 2^31 is the only sum with a sign to take away.
    const auto sum = hn::Abs(hn::ConvertTo(df, hn::Add(less1, hn::Set(d32, 1))));
    const auto factor = hn::Div(hn::Set(df, static_cast<float>(level)), hn::Sqrt(sum));
    const auto scaled = [&](auto part) {
      return nearestInt32(d32, hn::Mul(hn::ConvertTo(df, part), factor));
    };
    const auto re = scaled(hn::ShiftRight<16>(hn::ShiftLeft<16>(both)));
    const auto im = scaled(hn::ShiftRight<16>(both));
    const auto limited = hn::Or(hn::And(re, hn::Set(d32, 0xFFFF)), hn::ShiftLeft<16>(im));
    const auto isZero = hn::Lt(less1, hn::Zero(d32));
    return hn::BitCast(d, hn::IfThenElse(isBeyond, hn::IfThenElse(isZero, both, limited), both));
  }
};

template <class T, class C>
KvrStatus limit(const C* src, C* dst, int len, T level, KvrCmpOp relOp) {
  KVRS_CHECK(pointers(src, dst), length(len), comparison(relOp), magnitudeLevel(level));
  const size_t n = static_cast<size_t>(len);
  if constexpr (sizeof(T) == 2) {
    Pair<T>* const to = asPairs<T>(dst);
    const Pair<T>* const from = asPairs<T>(src);
    return underRounding(Rounding::nearest, [=] {
      return relOp == kvrCmpGreater ? mapElements(Limited16<Greater>{level}, to, n, from)
                                    : mapElements(Limited16<Less>{level}, to, n, from);
    });
  } else {
    return relOp == kvrCmpGreater ? mapElements(Limited<Greater, T>{level}, dst, n, src)
                                  : mapElements(Limited<Less, T>{level}, dst, n, src);
  }
}

template <class Relation, class T, class C>
KvrStatus replace(const C* src, C* dst, int len, T level, C value) {
  KVRS_CHECK(pointers(src, dst), length(len), magnitudeLevel(level));
  const size_t n = static_cast<size_t>(len);
  Pair<T>* const to = asPairs<T>(dst);
  const Pair<T>* const from = asPairs<T>(src);
  if constexpr (sizeof(T) == 2) {
    const uint32_t bits =
        static_cast<uint16_t>(value.re) | static_cast<uint32_t>(static_cast<uint16_t>(value.im)) << 16;
    return mapElements(Replaced16<Relation>{level * level, static_cast<int32_t>(bits)}, to, n, from);
  } else {
    return mapElements(Replaced<Relation, T, C>{level * level, value}, to, n, from);
  }
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsThreshold_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr16s level,
                             KvrCmpOp relOp) noexcept {
  return limit(src, dst, len, level, relOp);
}
KvrStatus kvrsThreshold_16sc_I(Kvr16sc* srcDst, int len, Kvr16s level, KvrCmpOp relOp) noexcept {
  return limit(srcDst, srcDst, len, level, relOp);
}
KvrStatus kvrsThreshold_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f level,
                             KvrCmpOp relOp) noexcept {
  return limit(src, dst, len, level, relOp);
}
KvrStatus kvrsThreshold_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level, KvrCmpOp relOp) noexcept {
  return limit(srcDst, srcDst, len, level, relOp);
}
KvrStatus kvrsThreshold_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64f level,
                             KvrCmpOp relOp) noexcept {
  return limit(src, dst, len, level, relOp);
}
KvrStatus kvrsThreshold_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level, KvrCmpOp relOp) noexcept {
  return limit(srcDst, srcDst, len, level, relOp);
}
KvrStatus kvrsThreshold_GT_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr16s level) noexcept {
  return limit(src, dst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_16sc_I(Kvr16sc* srcDst, int len, Kvr16s level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f level) noexcept {
  return limit(src, dst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64f level) noexcept {
  return limit(src, dst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_LT_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr16s level) noexcept {
  return limit(src, dst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_16sc_I(Kvr16sc* srcDst, int len, Kvr16s level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f level) noexcept {
  return limit(src, dst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64f level) noexcept {
  return limit(src, dst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_GTVal_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr16s level,
                                   Kvr16sc value) noexcept {
  return replace<Greater>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_GTVal_16sc_I(Kvr16sc* srcDst, int len, Kvr16s level, Kvr16sc value) noexcept {
  return replace<Greater>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_GTVal_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f level,
                                   Kvr32fc value) noexcept {
  return replace<Greater>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_GTVal_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level, Kvr32fc value) noexcept {
  return replace<Greater>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_GTVal_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64f level,
                                   Kvr64fc value) noexcept {
  return replace<Greater>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_GTVal_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level, Kvr64fc value) noexcept {
  return replace<Greater>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr16s level,
                                   Kvr16sc value) noexcept {
  return replace<Less>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_16sc_I(Kvr16sc* srcDst, int len, Kvr16s level, Kvr16sc value) noexcept {
  return replace<Less>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f level,
                                   Kvr32fc value) noexcept {
  return replace<Less>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level, Kvr32fc value) noexcept {
  return replace<Less>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64f level,
                                   Kvr64fc value) noexcept {
  return replace<Less>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level, Kvr64fc value) noexcept {
  return replace<Less>(srcDst, srcDst, len, level, value);
}
