// Thresholds on real elements.
// SPDX-License-Identifier: MIT
#include "kvrs/threshold.h"
#include "frame/loop.h"
#include "vector/threshold.h"

namespace kvrs {
namespace {

// The processor's minimum and maximum return their second operand where both are equal or one is NaN: with the element
// there, it is kept.
template <class T>
struct AtMost {
  T level;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    return hn::Min(hn::Set(d, level), x);
  }
};
template <class T>
struct AtLeast {
  T level;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    return hn::Max(hn::Set(d, level), x);
  }
};

struct Greater {
  template <class V>
  static KVRS_INLINE auto compare(V a, V b) {
    return hn::Gt(a, b);
  }
};
struct Less {
  template <class V>
  static KVRS_INLINE auto compare(V a, V b) {
    return hn::Lt(a, b);
  }
};

template <class Relation, class T>
struct Replaced {
  T level, value;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    return hn::IfThenElse(Relation::compare(x, hn::Set(d, level)), hn::Set(d, value), x);
  }
};

template <class T>
struct ReplacedOutside {
  T levelLT, valueLT, levelGT, valueGT;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    const V above = hn::IfThenElse(hn::Gt(x, hn::Set(d, levelGT)), hn::Set(d, valueGT), x);
    return hn::IfThenElse(hn::Lt(x, hn::Set(d, levelLT)), hn::Set(d, valueLT), above);
  }
};

template <class Relation, class T>
struct LimitedMagnitude;

template <class T>
struct LimitedMagnitude<Greater, T> {
  T level;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    return hn::Max(hn::Set(d, static_cast<T>(-level)), hn::Min(hn::Set(d, level), x));
  }
};

template <class T>
struct LimitedMagnitude<Less, T> {
  T level;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    if constexpr (hwy::IsFloat<T>()) {
      const V l = hn::Set(d, level);
      return hn::IfThenElse(hn::Lt(hn::Abs(x), l), hn::CopySignToAbs(l, x), x);
    } else {
      const V positive = hn::Max(hn::Set(d, level), x),
              negative = hn::Min(hn::Set(d, static_cast<T>(-level)), x);
      return hn::IfThenElse(hn::Lt(x, hn::Zero(d)), negative, positive);
    }
  }
};

template <class T>
KvrStatus limit(const T* src, T* dst, int len, T level, KvrCmpOp relOp) {
  KVRS_CHECK(pointers(src, dst), length(len), comparison(relOp));
  const size_t n = static_cast<size_t>(len);
  return relOp == kvrCmpGreater ? mapElements(AtMost<T>{level}, dst, n, src)
                                : mapElements(AtLeast<T>{level}, dst, n, src);
}

template <class Relation, class T>
KvrStatus replace(const T* src, T* dst, int len, T level, T value) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(Replaced<Relation, T>{level, value}, dst, static_cast<size_t>(len), src);
}

template <class T>
KvrStatus replaceOutside(const T* src, T* dst, int len, T levelLT, T valueLT, T levelGT, T valueGT) {
  KVRS_CHECK(pointers(src, dst), length(len), require(!(levelLT > levelGT), kvrStatusThresholdOrder));
  return mapElements(ReplacedOutside<T>{levelLT, valueLT, levelGT, valueGT}, dst, static_cast<size_t>(len),
                     src);
}

template <class Relation, class T>
KvrStatus limitMagnitude(const T* src, T* dst, int len, T level) {
  KVRS_CHECK(pointers(src, dst), length(len), magnitudeLevel(level));
  return mapElements(LimitedMagnitude<Relation, T>{level}, dst, static_cast<size_t>(len), src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsThreshold_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level, KvrCmpOp relOp) noexcept {
  return limit(src, dst, len, level, relOp);
}
KvrStatus kvrsThreshold_16s_I(Kvr16s* srcDst, int len, Kvr16s level, KvrCmpOp relOp) noexcept {
  return limit(srcDst, srcDst, len, level, relOp);
}
KvrStatus kvrsThreshold_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level, KvrCmpOp relOp) noexcept {
  return limit(src, dst, len, level, relOp);
}
KvrStatus kvrsThreshold_32f_I(Kvr32f* srcDst, int len, Kvr32f level, KvrCmpOp relOp) noexcept {
  return limit(srcDst, srcDst, len, level, relOp);
}
KvrStatus kvrsThreshold_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level, KvrCmpOp relOp) noexcept {
  return limit(src, dst, len, level, relOp);
}
KvrStatus kvrsThreshold_64f_I(Kvr64f* srcDst, int len, Kvr64f level, KvrCmpOp relOp) noexcept {
  return limit(srcDst, srcDst, len, level, relOp);
}
KvrStatus kvrsThreshold_GT_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level) noexcept {
  return limit(src, dst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_16s_I(Kvr16s* srcDst, int len, Kvr16s level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level) noexcept {
  return limit(src, dst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_32f_I(Kvr32f* srcDst, int len, Kvr32f level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_32s(const Kvr32s* src, Kvr32s* dst, int len, Kvr32s level) noexcept {
  return limit(src, dst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_32s_I(Kvr32s* srcDst, int len, Kvr32s level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level) noexcept {
  return limit(src, dst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_GT_64f_I(Kvr64f* srcDst, int len, Kvr64f level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpGreater);
}
KvrStatus kvrsThreshold_LT_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level) noexcept {
  return limit(src, dst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_16s_I(Kvr16s* srcDst, int len, Kvr16s level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level) noexcept {
  return limit(src, dst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_32f_I(Kvr32f* srcDst, int len, Kvr32f level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_32s(const Kvr32s* src, Kvr32s* dst, int len, Kvr32s level) noexcept {
  return limit(src, dst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_32s_I(Kvr32s* srcDst, int len, Kvr32s level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level) noexcept {
  return limit(src, dst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_LT_64f_I(Kvr64f* srcDst, int len, Kvr64f level) noexcept {
  return limit(srcDst, srcDst, len, level, kvrCmpLess);
}
KvrStatus kvrsThreshold_GTVal_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level,
                                  Kvr16s value) noexcept {
  return replace<Greater>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_GTVal_16s_I(Kvr16s* srcDst, int len, Kvr16s level, Kvr16s value) noexcept {
  return replace<Greater>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_GTVal_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level,
                                  Kvr32f value) noexcept {
  return replace<Greater>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_GTVal_32f_I(Kvr32f* srcDst, int len, Kvr32f level, Kvr32f value) noexcept {
  return replace<Greater>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_GTVal_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level,
                                  Kvr64f value) noexcept {
  return replace<Greater>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_GTVal_64f_I(Kvr64f* srcDst, int len, Kvr64f level, Kvr64f value) noexcept {
  return replace<Greater>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level,
                                  Kvr16s value) noexcept {
  return replace<Less>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_16s_I(Kvr16s* srcDst, int len, Kvr16s level, Kvr16s value) noexcept {
  return replace<Less>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level,
                                  Kvr32f value) noexcept {
  return replace<Less>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_32f_I(Kvr32f* srcDst, int len, Kvr32f level, Kvr32f value) noexcept {
  return replace<Less>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level,
                                  Kvr64f value) noexcept {
  return replace<Less>(src, dst, len, level, value);
}
KvrStatus kvrsThreshold_LTVal_64f_I(Kvr64f* srcDst, int len, Kvr64f level, Kvr64f value) noexcept {
  return replace<Less>(srcDst, srcDst, len, level, value);
}
KvrStatus kvrsThreshold_GTAbs_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level) noexcept {
  return limitMagnitude<Greater>(src, dst, len, level);
}
KvrStatus kvrsThreshold_GTAbs_16s_I(Kvr16s* srcDst, int len, Kvr16s level) noexcept {
  return limitMagnitude<Greater>(srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_GTAbs_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level) noexcept {
  return limitMagnitude<Greater>(src, dst, len, level);
}
KvrStatus kvrsThreshold_GTAbs_32f_I(Kvr32f* srcDst, int len, Kvr32f level) noexcept {
  return limitMagnitude<Greater>(srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_GTAbs_32s(const Kvr32s* src, Kvr32s* dst, int len, Kvr32s level) noexcept {
  return limitMagnitude<Greater>(src, dst, len, level);
}
KvrStatus kvrsThreshold_GTAbs_32s_I(Kvr32s* srcDst, int len, Kvr32s level) noexcept {
  return limitMagnitude<Greater>(srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_GTAbs_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level) noexcept {
  return limitMagnitude<Greater>(src, dst, len, level);
}
KvrStatus kvrsThreshold_GTAbs_64f_I(Kvr64f* srcDst, int len, Kvr64f level) noexcept {
  return limitMagnitude<Greater>(srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_LTAbs_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s level) noexcept {
  return limitMagnitude<Less>(src, dst, len, level);
}
KvrStatus kvrsThreshold_LTAbs_16s_I(Kvr16s* srcDst, int len, Kvr16s level) noexcept {
  return limitMagnitude<Less>(srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_LTAbs_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level) noexcept {
  return limitMagnitude<Less>(src, dst, len, level);
}
KvrStatus kvrsThreshold_LTAbs_32f_I(Kvr32f* srcDst, int len, Kvr32f level) noexcept {
  return limitMagnitude<Less>(srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_LTAbs_32s(const Kvr32s* src, Kvr32s* dst, int len, Kvr32s level) noexcept {
  return limitMagnitude<Less>(src, dst, len, level);
}
KvrStatus kvrsThreshold_LTAbs_32s_I(Kvr32s* srcDst, int len, Kvr32s level) noexcept {
  return limitMagnitude<Less>(srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_LTAbs_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level) noexcept {
  return limitMagnitude<Less>(src, dst, len, level);
}
KvrStatus kvrsThreshold_LTAbs_64f_I(Kvr64f* srcDst, int len, Kvr64f level) noexcept {
  return limitMagnitude<Less>(srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_LTValGTVal_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr16s levelLT,
                                       Kvr16s valueLT, Kvr16s levelGT, Kvr16s valueGT) noexcept {
  return replaceOutside(src, dst, len, levelLT, valueLT, levelGT, valueGT);
}
KvrStatus kvrsThreshold_LTValGTVal_16s_I(Kvr16s* srcDst, int len, Kvr16s levelLT, Kvr16s valueLT,
                                         Kvr16s levelGT, Kvr16s valueGT) noexcept {
  return replaceOutside(srcDst, srcDst, len, levelLT, valueLT, levelGT, valueGT);
}
KvrStatus kvrsThreshold_LTValGTVal_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f levelLT,
                                       Kvr32f valueLT, Kvr32f levelGT, Kvr32f valueGT) noexcept {
  return replaceOutside(src, dst, len, levelLT, valueLT, levelGT, valueGT);
}
KvrStatus kvrsThreshold_LTValGTVal_32f_I(Kvr32f* srcDst, int len, Kvr32f levelLT, Kvr32f valueLT,
                                         Kvr32f levelGT, Kvr32f valueGT) noexcept {
  return replaceOutside(srcDst, srcDst, len, levelLT, valueLT, levelGT, valueGT);
}
KvrStatus kvrsThreshold_LTValGTVal_32s(const Kvr32s* src, Kvr32s* dst, int len, Kvr32s levelLT,
                                       Kvr32s valueLT, Kvr32s levelGT, Kvr32s valueGT) noexcept {
  return replaceOutside(src, dst, len, levelLT, valueLT, levelGT, valueGT);
}
KvrStatus kvrsThreshold_LTValGTVal_32s_I(Kvr32s* srcDst, int len, Kvr32s levelLT, Kvr32s valueLT,
                                         Kvr32s levelGT, Kvr32s valueGT) noexcept {
  return replaceOutside(srcDst, srcDst, len, levelLT, valueLT, levelGT, valueGT);
}
KvrStatus kvrsThreshold_LTValGTVal_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f levelLT,
                                       Kvr64f valueLT, Kvr64f levelGT, Kvr64f valueGT) noexcept {
  return replaceOutside(src, dst, len, levelLT, valueLT, levelGT, valueGT);
}
KvrStatus kvrsThreshold_LTValGTVal_64f_I(Kvr64f* srcDst, int len, Kvr64f levelLT, Kvr64f valueLT,
                                         Kvr64f levelGT, Kvr64f valueGT) noexcept {
  return replaceOutside(srcDst, srcDst, len, levelLT, valueLT, levelGT, valueGT);
}
