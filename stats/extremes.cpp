// Extreme values and where they stand.
// SPDX-License-Identifier: MIT
#include "kvrs/extremes.h"

#include "frame/check.h"
#include "frame/loop.h"
#include "stats/extremes-inl.h"

namespace kvrs {
namespace {

using Max = ExtremeOf<Largest, Itself>;
using Min = ExtremeOf<Smallest, Itself>;
using MaxAbs = ExtremeOf<Largest, Magnitude>;
using MinAbs = ExtremeOf<Smallest, Magnitude>;

template <class Op, class T>
KvrStatus value(const T* src, int len, T* extreme) {
  KVRS_CHECK(pointers(src, extreme), lengthOf<T>(len));
  *extreme = Op().best(src, static_cast<size_t>(len));
  return kvrStatusOk;
}

// Of zeros with both signs the one at the index, and a NaN that hides all else.
template <class T>
T asStored(Found<T> found, const T* src) {
  return std::is_floating_point_v<T> ? unaligned::get(src + found.index) : found.value;
}

// A null index asks for the value alone.
template <class Op, class T>
KvrStatus valueAndIndex(const T* src, int len, T* extreme, int* indx) {
  if (indx == nullptr) return value<Op>(src, len, extreme);
  KVRS_CHECK(pointers(src, extreme), lengthOf<T>(len));
  const Found<T> found = findExtreme(Op(), src, static_cast<size_t>(len));
  *extreme = asStored(found, src);
  *indx = static_cast<int>(found.index);
  return kvrStatusOk;
}

template <class T>
KvrStatus minMax(const T* src, int len, T* min, T* max) {
  KVRS_CHECK(pointers(src, min, max), lengthOf<T>(len));
  const MinAndMax<T> both = BothExtremes::best(src, static_cast<size_t>(len));
  *min = both.min;
  *max = both.max;
  return kvrStatusOk;
}

template <class T>
KvrStatus minMaxIndex(const T* src, int len, T* min, int* minIndx, T* max, int* maxIndx) {
  KVRS_CHECK(pointers(src, min, minIndx, max, maxIndx), lengthOf<T>(len));
  const MinAndMax<Found<T>> both = findBothExtremes(src, static_cast<size_t>(len));
  *min = asStored(both.min, src);
  *minIndx = static_cast<int>(both.min.index);
  *max = asStored(both.max, src);
  *maxIndx = static_cast<int>(both.max.index);
  return kvrStatusOk;
}

template <class Pick>
struct Every {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b) const {
    return Pick()(a, b);
  }
};

template <class Pick, class T>
KvrStatus every(const T* src, T* srcDst, int len) {
  KVRS_CHECK(pointers(src, srcDst), length(len));
  return mapElements(Every<Pick>(), srcDst, static_cast<size_t>(len), src, srcDst);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMax_16s(const Kvr16s* src, int len, Kvr16s* max) noexcept {
  return value<Max>(src, len, max);
}
KvrStatus kvrsMax_32s(const Kvr32s* src, int len, Kvr32s* max) noexcept {
  return value<Max>(src, len, max);
}
KvrStatus kvrsMax_32f(const Kvr32f* src, int len, Kvr32f* max) noexcept {
  return value<Max>(src, len, max);
}
KvrStatus kvrsMax_64f(const Kvr64f* src, int len, Kvr64f* max) noexcept {
  return value<Max>(src, len, max);
}
KvrStatus kvrsMin_16s(const Kvr16s* src, int len, Kvr16s* min) noexcept {
  return value<Min>(src, len, min);
}
KvrStatus kvrsMin_32s(const Kvr32s* src, int len, Kvr32s* min) noexcept {
  return value<Min>(src, len, min);
}
KvrStatus kvrsMin_32f(const Kvr32f* src, int len, Kvr32f* min) noexcept {
  return value<Min>(src, len, min);
}
KvrStatus kvrsMin_64f(const Kvr64f* src, int len, Kvr64f* min) noexcept {
  return value<Min>(src, len, min);
}
KvrStatus kvrsMaxIndx_16s(const Kvr16s* src, int len, Kvr16s* max, int* indx) noexcept {
  return valueAndIndex<Max>(src, len, max, indx);
}
KvrStatus kvrsMaxIndx_32s(const Kvr32s* src, int len, Kvr32s* max, int* indx) noexcept {
  return valueAndIndex<Max>(src, len, max, indx);
}
KvrStatus kvrsMaxIndx_32f(const Kvr32f* src, int len, Kvr32f* max, int* indx) noexcept {
  return valueAndIndex<Max>(src, len, max, indx);
}
KvrStatus kvrsMaxIndx_64f(const Kvr64f* src, int len, Kvr64f* max, int* indx) noexcept {
  return valueAndIndex<Max>(src, len, max, indx);
}
KvrStatus kvrsMinIndx_16s(const Kvr16s* src, int len, Kvr16s* min, int* indx) noexcept {
  return valueAndIndex<Min>(src, len, min, indx);
}
KvrStatus kvrsMinIndx_32s(const Kvr32s* src, int len, Kvr32s* min, int* indx) noexcept {
  return valueAndIndex<Min>(src, len, min, indx);
}
KvrStatus kvrsMinIndx_32f(const Kvr32f* src, int len, Kvr32f* min, int* indx) noexcept {
  return valueAndIndex<Min>(src, len, min, indx);
}
KvrStatus kvrsMinIndx_64f(const Kvr64f* src, int len, Kvr64f* min, int* indx) noexcept {
  return valueAndIndex<Min>(src, len, min, indx);
}
KvrStatus kvrsMaxAbs_16s(const Kvr16s* src, int len, Kvr16s* max) noexcept {
  return value<MaxAbs>(src, len, max);
}
KvrStatus kvrsMaxAbs_32s(const Kvr32s* src, int len, Kvr32s* max) noexcept {
  return value<MaxAbs>(src, len, max);
}
KvrStatus kvrsMinAbs_16s(const Kvr16s* src, int len, Kvr16s* min) noexcept {
  return value<MinAbs>(src, len, min);
}
KvrStatus kvrsMinAbs_32s(const Kvr32s* src, int len, Kvr32s* min) noexcept {
  return value<MinAbs>(src, len, min);
}
KvrStatus kvrsMaxAbsIndx_16s(const Kvr16s* src, int len, Kvr16s* max, int* indx) noexcept {
  return valueAndIndex<MaxAbs>(src, len, max, indx);
}
KvrStatus kvrsMaxAbsIndx_32s(const Kvr32s* src, int len, Kvr32s* max, int* indx) noexcept {
  return valueAndIndex<MaxAbs>(src, len, max, indx);
}
KvrStatus kvrsMinAbsIndx_16s(const Kvr16s* src, int len, Kvr16s* min, int* indx) noexcept {
  return valueAndIndex<MinAbs>(src, len, min, indx);
}
KvrStatus kvrsMinAbsIndx_32s(const Kvr32s* src, int len, Kvr32s* min, int* indx) noexcept {
  return valueAndIndex<MinAbs>(src, len, min, indx);
}
KvrStatus kvrsMinMax_8u(const Kvr8u* src, int len, Kvr8u* min, Kvr8u* max) noexcept {
  return minMax(src, len, min, max);
}
KvrStatus kvrsMinMax_16u(const Kvr16u* src, int len, Kvr16u* min, Kvr16u* max) noexcept {
  return minMax(src, len, min, max);
}
KvrStatus kvrsMinMax_16s(const Kvr16s* src, int len, Kvr16s* min, Kvr16s* max) noexcept {
  return minMax(src, len, min, max);
}
KvrStatus kvrsMinMax_32u(const Kvr32u* src, int len, Kvr32u* min, Kvr32u* max) noexcept {
  return minMax(src, len, min, max);
}
KvrStatus kvrsMinMax_32s(const Kvr32s* src, int len, Kvr32s* min, Kvr32s* max) noexcept {
  return minMax(src, len, min, max);
}
KvrStatus kvrsMinMax_32f(const Kvr32f* src, int len, Kvr32f* min, Kvr32f* max) noexcept {
  return minMax(src, len, min, max);
}
KvrStatus kvrsMinMax_64f(const Kvr64f* src, int len, Kvr64f* min, Kvr64f* max) noexcept {
  return minMax(src, len, min, max);
}
KvrStatus kvrsMinMaxIndx_8u(const Kvr8u* src, int len, Kvr8u* min, int* minIndx, Kvr8u* max,
                            int* maxIndx) noexcept {
  return minMaxIndex(src, len, min, minIndx, max, maxIndx);
}
KvrStatus kvrsMinMaxIndx_16u(const Kvr16u* src, int len, Kvr16u* min, int* minIndx, Kvr16u* max,
                             int* maxIndx) noexcept {
  return minMaxIndex(src, len, min, minIndx, max, maxIndx);
}
KvrStatus kvrsMinMaxIndx_16s(const Kvr16s* src, int len, Kvr16s* min, int* minIndx, Kvr16s* max,
                             int* maxIndx) noexcept {
  return minMaxIndex(src, len, min, minIndx, max, maxIndx);
}
KvrStatus kvrsMinMaxIndx_32u(const Kvr32u* src, int len, Kvr32u* min, int* minIndx, Kvr32u* max,
                             int* maxIndx) noexcept {
  return minMaxIndex(src, len, min, minIndx, max, maxIndx);
}
KvrStatus kvrsMinMaxIndx_32s(const Kvr32s* src, int len, Kvr32s* min, int* minIndx, Kvr32s* max,
                             int* maxIndx) noexcept {
  return minMaxIndex(src, len, min, minIndx, max, maxIndx);
}
KvrStatus kvrsMinMaxIndx_32f(const Kvr32f* src, int len, Kvr32f* min, int* minIndx, Kvr32f* max,
                             int* maxIndx) noexcept {
  return minMaxIndex(src, len, min, minIndx, max, maxIndx);
}
KvrStatus kvrsMinMaxIndx_64f(const Kvr64f* src, int len, Kvr64f* min, int* minIndx, Kvr64f* max,
                             int* maxIndx) noexcept {
  return minMaxIndex(src, len, min, minIndx, max, maxIndx);
}
KvrStatus kvrsMaxEvery_8u_I(const Kvr8u* src, Kvr8u* srcDst, int len) noexcept {
  return every<Largest>(src, srcDst, len);
}
KvrStatus kvrsMaxEvery_16u_I(const Kvr16u* src, Kvr16u* srcDst, int len) noexcept {
  return every<Largest>(src, srcDst, len);
}
KvrStatus kvrsMaxEvery_16s_I(const Kvr16s* src, Kvr16s* srcDst, int len) noexcept {
  return every<Largest>(src, srcDst, len);
}
KvrStatus kvrsMaxEvery_32s_I(const Kvr32s* src, Kvr32s* srcDst, int len) noexcept {
  return every<Largest>(src, srcDst, len);
}
KvrStatus kvrsMaxEvery_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return every<Largest>(src, srcDst, len);
}
KvrStatus kvrsMinEvery_8u_I(const Kvr8u* src, Kvr8u* srcDst, int len) noexcept {
  return every<Smallest>(src, srcDst, len);
}
KvrStatus kvrsMinEvery_16u_I(const Kvr16u* src, Kvr16u* srcDst, int len) noexcept {
  return every<Smallest>(src, srcDst, len);
}
KvrStatus kvrsMinEvery_16s_I(const Kvr16s* src, Kvr16s* srcDst, int len) noexcept {
  return every<Smallest>(src, srcDst, len);
}
KvrStatus kvrsMinEvery_32s_I(const Kvr32s* src, Kvr32s* srcDst, int len) noexcept {
  return every<Smallest>(src, srcDst, len);
}
KvrStatus kvrsMinEvery_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return every<Smallest>(src, srcDst, len);
}
// Without any checks, and always successful: that is its contract.
KvrStatus kvrsMinEvery_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  if (len > 0) (void)mapElements(Every<Smallest>(), srcDst, static_cast<size_t>(len), src, srcDst);
  return kvrStatusOk;
}
