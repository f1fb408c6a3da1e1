// Logarithms of integers.
//
// Without a scale up the result is a small integer k, the number of points e^(k + 1/2), or 10^((k + 1/2) / 10), that are not
// above x. A single's bits, read as an integer, are a logarithm that is too low by at most 0.0861 (of base 2): it gives k or
// k - 1, and a comparison with the point between them decides. 16-bit integers are compared with all ten points.
// SPDX-License-Identifier: MIT
#include <cstdint>
#include <limits>

#include "frame/check.h"
#include "frame/logarithm.h"
#include "frame/loop.h"
#include "frame/note.h"
#include "frame/rounding.h"
#include "frame/scale.h"
#include "frame/shift.h"
#include "frame/tile.h"
#include "frame/to_integer.h"
#include "frame/unroll.h"
#include "kvrs/logarithm.h"

namespace kvrs {
namespace {

constexpr long double exponential(long double x) {
  long double term = 1, sum = 1;
  for (int k = 1; k < 40; ++k) sum += term *= x / k;
  return sum;
}

// The highest integer below each point, at most that of 32 bits.
template <int kPoints>
struct Points {
  int32_t below[kPoints];

  // From `first` on, each point `factor` times the one before.
  constexpr Points(long double first, long double factor) : below() {
    for (int32_t& b : below) {
      b = first < 2147483647.0L ? static_cast<int32_t>(first) : 2147483647;
      first *= factor;
    }
  }
};
constexpr long double kLn10 = 2.302585092994045684017991454684364208L;
constexpr Points<22> kNatural(exponential(0.5L), exponential(1));
constexpr Points<94> kDecibel(exponential(kLn10 / 20), exponential(kLn10 / 10));

struct Natural {
  static constexpr float kOctave = 0x1.62e43p-1f;  // ln 2
  static constexpr const int32_t* kBelow = kNatural.below;
};
struct Decibel {
  static constexpr float kOctave = 0x1.815182p+1f;  // 10 log10(2)
  static constexpr const int32_t* kBelow = kDecibel.below;
};

// Positive integers: k of the points of a Scale, shifted right.
template <class Scale>
struct Whole {
  int shift;

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V x) const {
    if constexpr (sizeof(hn::TFromV<V>) == 2) {
      V k = hn::Zero(d);
      unroll<10>([&](auto i) KVRS_UNROLLED {
        const auto isAbove = hn::Gt(x, hn::Set(d, static_cast<int16_t>(Scale::kBelow[i])));
        if constexpr (kMaskRegisters) {
          k = hn::IfThenElse(isAbove, hn::Add(k, hn::Set(d, int16_t{1})), k);
        } else {
          k = hn::Sub(k, hn::VecFromMask(d, isAbove));
        }
      });
      return shiftRightBy(d, k, shift);
    } else {
      const hn::DFromV<V> di;
      const hn::RebindToFloat<decltype(di)> df;
      const auto bits = hn::BitCast(di, hn::ConvertTo(df, x));
      const auto octaves = hn::ConvertTo(df, hn::Sub(bits, hn::Set(di, 127 << 23)));
      const V low = truncateInt32(di, hn::Mul(octaves, hn::Set(df, Scale::kOctave * 0x1p-23f)));
      const auto isAbove = hn::Gt(x, hn::GatherIndex(di, Scale::kBelow, low));
      const V k = shiftRightBy(di, hn::Sub(low, hn::VecFromMask(di, isAbove)), shift);
      if constexpr (sizeof(hn::TFromD<D>) == 2) {
        return hn::DemoteTo(d, k);
      } else {
        return k;
      }
    }
  }
};

// Positive integers as singles.
struct ToSingles {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V x) const {
    if constexpr (sizeof(hn::TFromV<V>) == 2) {
      return hn::ConvertTo(d, hn::PromoteTo(hn::RebindToSigned<D>(), x));
    } else {
      return hn::ConvertTo(d, x);
    }
  }
};

// Op on positive integers; on others what it makes of 1, and a note of them.
template <class Op>
struct OfPositive {
  static constexpr bool kIsHeavy = true;
  Op op;

  // In lanes of D, which keep the sign and 0.
  template <class D, class V>
  static KVRS_INLINE auto isPositive(D d, V x) {
    using T = hn::TFromD<D>;
    using S = hn::TFromV<V>;
    const hn::RebindToSigned<D> di;
    if constexpr (sizeof(T) == sizeof(S)) {
      return hn::RebindMask(d, hn::Gt(x, hn::Zero(di)));
    } else if constexpr (sizeof(T) < sizeof(S)) {
      return hn::RebindMask(d, hn::Gt(hn::DemoteTo(di, x), hn::Zero(di)));
    } else {
      return hn::RebindMask(d, hn::Gt(hn::PromoteTo(di, x), hn::Zero(di)));
    }
  }

  template <class D, class V>
  KVRS_INLINE auto isUsual(D d, V x) const {
    return isPositive(d, x);
  }
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> quick(D d, V x) const {
    return op(d, x);
  }
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> any(D d, Notes& notes, V x) const {
    const hn::DFromV<V> dx;
    const V zero = hn::Zero(dx), one = hn::Set(dx, hn::TFromV<V>{1});
    notes.add(dx, kvrStatusLnZeroArg, hn::Eq(x, zero), kvrStatusLnNegArg, hn::Lt(x, zero));
    const auto result = op(d, hn::Max(x, one));
    if constexpr (hwy::IsFloat<hn::TFromD<D>>()) {
      return result;
    } else {
      return hn::IfThenElse(isPositive(d, x), result,
                            hn::Set(d, std::numeric_limits<hn::TFromD<D>>::lowest()));
    }
  }
};

struct LogarithmOfNormal {
  static constexpr bool kIsHeavy = true;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    return logarithmOfNormal(d, x);
  }
};

// Logarithms scaled to integers, the lowest ones where the argument is not positive.
struct ScaledToIntegers {
  float scale;

  template <class D, class V, class S>
  KVRS_INLINE hn::Vec<D> operator()(D d, V logarithm, S x) const {
    using L = std::numeric_limits<hn::TFromD<D>>;
    const hn::DFromV<V> df;
    const auto scaled = hn::Mul(logarithm, hn::Set(df, scale));
    const auto rounded = toInteger<false>(d, scaled, L::lowest(), L::max());
    return hn::IfThenElse(OfPositive<ToSingles>::isPositive(d, x), rounded, hn::Set(d, L::lowest()));
  }
};

// Scaled up: by way of singles.
template <class S, class D>
KvrStatus scaledUp(const S* src, D* dst, size_t len, float scale) {
  if (!loop_detail::fitsAddress(len, sizeof(S))) return kvrStatusBadLength;
  return underRounding(Rounding::nearest, [=] {
    KvrStatus status = kvrStatusOk;
    forTiles<Kvr32f>(len, [&](Kvr32f* tile, size_t begin, size_t count) {
      const KvrStatus met = mapNoting(OfPositive<ToSingles>(), tile, count, src + begin);
      if (status == kvrStatusOk) status = met;
      mapElements(LogarithmOfNormal(), tile, count, tile);
      mapElements(ScaledToIntegers{scale}, dst + begin, count, tile, src + begin);
    });
    return status;
  });
}

// All logarithms but 0 are saturated when scaled up by more than 2^40.
float powerOf(int scaleFactor) {
  return powerOfTwo<float>(scaleFactor < -40 ? 40 : -scaleFactor);
}

template <class S, class D>
KvrStatus logarithms(const S* src, D* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (scaleFactor < 0) return scaledUp(src, dst, n, powerOf(scaleFactor));
  const OfPositive<Whole<Natural>> op{{scaleFactor < 15 ? scaleFactor : 15}};
  return mapNoting(op, dst, n, src);
}

KvrStatus decibels(const Kvr32s* src, Kvr32s* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (scaleFactor < 0) return scaledUp(src, dst, n, 4.3429446f * powerOf(scaleFactor));
  return mapNoting(OfPositive<Whole<Decibel>>{{scaleFactor & 31}}, dst, n, src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsLn_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return logarithms(src, dst, len, scaleFactor);
}
KvrStatus kvrsLn_16s_ISfs(Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return logarithms(srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsLn_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, int scaleFactor) noexcept {
  return logarithms(src, dst, len, scaleFactor);
}
KvrStatus kvrsLn_32s_ISfs(Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return logarithms(srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsLn_32s16s_Sfs(const Kvr32s* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return logarithms(src, dst, len, scaleFactor);
}
KvrStatus kvrs10Log10_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, int scaleFactor) noexcept {
  return decibels(src, dst, len, scaleFactor);
}
KvrStatus kvrs10Log10_32s_ISfs(Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return decibels(srcDst, srcDst, len, scaleFactor);
}
