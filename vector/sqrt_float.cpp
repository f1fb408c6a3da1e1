// Square roots of floats.
// SPDX-License-Identifier: MIT
#include <cstdint>
#include <limits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/masked_control.h"
#include "frame/note.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"
#include "kvrs/roots.h"
#include "vector/sqrt.h"

namespace kvrs {
namespace {

// The correctly rounded root. -0.0 and NaN are not below 0.
struct Root {
  template <class D, class V>
  KVRS_INLINE auto isUsual(D d, V x) const {
    return hn::Not(hn::Lt(x, hn::Zero(d)));
  }
  template <class D, class V>
  KVRS_INLINE V quick(D, V x) const {
    return hn::Sqrt(x);
  }
  template <class D, class V>
  KVRS_INLINE V any(D d, Notes& notes, V x) const {
    notes.add(d, kvrStatusSqrtNegArg, hn::Lt(x, hn::Zero(d)));
    return hn::Sqrt(x);
  }
};

// Blocks of 16 singles from the estimate y of the reciprocal root: with t = x y, one Newton step gives
// (t y - 3) (-t / 2). The latter is minus infinity or NaN for zeros, negative numbers, infinities and NaN.
constexpr ptrdiff_t kBlock = 16;

using D32f = Lanes < float, kLanes<float><16 ? kLanes<float> : 16>;
// Four vectors are asked together.
constexpr ptrdiff_t kTogether = 4 * hn::MaxLanes(D32f());

// Roots of so many singles. Whether all of them were ordinary; else nothing is stored.
template <ptrdiff_t count>
KVRS_INLINE bool estimatedRoots(const Kvr32f* src, Kvr32f* dst) {
  const D32f d;
  constexpr int kVectors = static_cast<int>(count / hn::MaxLanes(d));
  hn::Vec<D32f> root[kVectors], sum = hn::Zero(d);
  unroll<kVectors>([&](auto k) KVRS_UNROLLED {
    const auto x = hn::LoadU(d, src + k * hn::MaxLanes(d));
    const auto y = hn::ApproximateReciprocalSqrt(x);
    const auto t = hn::Mul(x, y), half = hn::Mul(t, hn::Set(d, -0.5f));
    root[k] = hn::Mul(hn::MulSub(t, y, hn::Set(d, 3.0f)), half);
    sum = k == 0 ? half : hn::Add(sum, half);
  });
  // Minus infinity or NaN if one of its terms is; the others are finite, above -2^64.
  const auto areOrdinary = hn::Gt(sum, hn::Set(d, -std::numeric_limits<float>::infinity()));
  if (__builtin_expect(!hn::AllTrue(d, areOrdinary), false)) return false;
  unroll<kVectors>([&](auto k) KVRS_UNROLLED { hn::StoreU(root[k], d, dst + k * hn::MaxLanes(d)); });
  return true;
}

// The warning of a part, if there is none yet.
struct Warning {
  KvrStatus status = kvrStatusOk;
  void add(KvrStatus another) {
    if (status == kvrStatusOk) status = another;
  }
};

KvrStatus rootsInOne(const Kvr32f* src, Kvr32f* dst, ptrdiff_t len) {
  Warning warning;
  const auto exactly = [&](ptrdiff_t begin, ptrdiff_t count) {
    if (count > 0) warning.add(mapNoting(Root(), dst + begin, static_cast<size_t>(count), src + begin));
  };
  // Elements before dst is aligned to 16 bytes; where it never is, none.
  const uintptr_t address = reinterpret_cast<uintptr_t>(dst);
  const ptrdiff_t toAligned =
      address % sizeof *dst != 0 ? 0 : static_cast<ptrdiff_t>((0 - address) % 16 / sizeof *dst);
  const ptrdiff_t head = toAligned < len ? toAligned : len;
  exactly(0, head);
  ptrdiff_t i = head;
  const auto blockwise = [&](ptrdiff_t end) {
    for (; end - i >= kBlock; i += kBlock) {
      if (!estimatedRoots<kBlock>(src + i, dst + i)) exactly(i, kBlock);
    }
  };
  while (len - i >= kTogether) {
    if (__builtin_expect(estimatedRoots<kTogether>(src + i, dst + i), true)) {
      i += kTogether;
    } else {
      blockwise(i + kTogether);
    }
  }
  blockwise(len);
  // Of the rest the odd element at the end is asked for nothing but its sign, which NaN has too.
  if ((len - i) % 2 != 0) {
    const Kvr32f last = unaligned::get(src + (len - 1));
    exactly(i, len - i);
    if (__builtin_signbit(last) && last != 0) warning.add(kvrStatusSqrtNegArg);
  } else {
    exactly(i, len - i);
  }
  return warning.status;
}

KvrStatus roots(const Kvr32f* src, Kvr32f* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return slicedRoots<sizeof *src>(len, threadedLength(4096), [=](size_t begin, size_t count) {
    return underMaskedControl(
        [=] { return rootsInOne(src + begin, dst + begin, static_cast<ptrdiff_t>(count)) != kvrStatusOk; });
  });
}
KvrStatus roots(const Kvr64f* src, Kvr64f* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return slicedRoots<sizeof *src>(len, threadedLength(512), [=](size_t begin, size_t count) {
    return mapNoting(Root(), dst + begin, count, src + begin) != kvrStatusOk;
  });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSqrt_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return roots(src, dst, len);
}
KvrStatus kvrsSqrt_32f_I(Kvr32f* srcDst, int len) noexcept {
  return roots(srcDst, srcDst, len);
}
KvrStatus kvrsSqrt_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return roots(src, dst, len);
}
KvrStatus kvrsSqrt_64f_I(Kvr64f* srcDst, int len) noexcept {
  return roots(srcDst, srcDst, len);
}
