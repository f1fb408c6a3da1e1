// The exponential of integers.
//
// A result that is neither 0 nor saturated has an argument of a window of few integers, wherever the scale factor puts it: 12
// of them for 16 bits, 23 for 32 bits and 45 for 64 bits. So a call makes the results of that window and looks them up. Their
// powers of e have 64 bits, made at compile time.
// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/byte_table.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/unaligned.h"
#include "kvrs/exponential.h"

namespace kvrs {
namespace {

// A number in [1/2, 1) of 192 bits, the first limb being the highest, times 2^exponent.
struct Long {
  static constexpr int kLimbs = 6;
  uint32_t limb[kLimbs] = {};
  int exponent = 0;

  constexpr void divideBy(uint32_t n) {
    uint64_t rest = 0;
    for (uint32_t& word : limb) {
      rest = rest << 32 | word;
      word = static_cast<uint32_t>(rest / n);
      rest %= n;
    }
  }
  // +-1, or 0 for nothing to do.
  constexpr void add(const Long& other, bool negative) {
    uint64_t carry = negative;
    for (int i = kLimbs - 1; i >= 0; --i) {
      carry += uint64_t{limb[i]} + (negative ? ~other.limb[i] : other.limb[i]);
      limb[i] = static_cast<uint32_t>(carry);
      carry >>= 32;
    }
  }
  constexpr void normalize() {
    while (limb[0] >> 31 == 0) {
      for (int i = 0; i < kLimbs; ++i) limb[i] = limb[i] << 1 | (i + 1 < kLimbs ? limb[i + 1] >> 31 : 0);
      --exponent;
    }
  }
  constexpr Long operator*(const Long& other) const {
    uint32_t product[2 * kLimbs] = {};
    for (int i = kLimbs - 1; i >= 0; --i) {
      uint64_t carry = 0;
      for (int j = kLimbs - 1; j >= 0; --j) {
        carry += uint64_t{limb[i]} * other.limb[j] + product[i + j + 1];
        product[i + j + 1] = static_cast<uint32_t>(carry);
        carry >>= 32;
      }
      product[i] = static_cast<uint32_t>(carry);
    }
    Long result;
    for (int i = 0; i < kLimbs; ++i) result.limb[i] = product[i];
    result.exponent = exponent + other.exponent;
    result.normalize();
    return result;
  }
};

// e or 1 / e: the sum of +-1 / k!, in quarters so that it is below 1.
constexpr Long baseOfPowers(bool inverse) {
  Long term, sum;
  term.limb[0] = uint32_t{1} << 30;
  sum.exponent = 2;
  for (uint32_t k = 1; k < 50; ++k) {
    sum.add(term, inverse && k % 2 == 0);
    term.divideBy(k);
  }
  sum.normalize();
  return sum;
}

// e^x = (fraction + less than 1) * 2^exponent for x from kLowest to kHighest; e^0 is exact.
struct Power {
  uint64_t fraction;
  int exponent;
};
struct Powers {
  static constexpr int kLowest = -46, kHighest = 88;
  Power at[kHighest - kLowest + 1];

  constexpr Powers() : at() {
    for (bool down : {false, true}) {
      const Long base = baseOfPowers(down);
      Long power;
      power.limb[0] = uint32_t{1} << 31;
      power.exponent = 1;
      for (int x = 0; x >= kLowest && x <= kHighest; x += down ? -1 : 1) {
        at[x - kLowest] = {uint64_t{power.limb[0]} << 32 | power.limb[1], power.exponent - 64};
        power = power * base;
      }
    }
  }
};
constexpr Powers kPowers;

// e^x * 2^(-scaleFactor) rounded to nearest, ties to even, and at most `highest`.
int64_t scaledPower(int64_t x, int scaleFactor, int64_t highest) {
  if (scaleFactor >= -63 && scaleFactor <= 63 && x >= Powers::kLowest && x <= Powers::kHighest) {
    const Power& power = kPowers.at[x - Powers::kLowest];
    const int shift = scaleFactor - power.exponent;
    if (shift <= 0) return highest;
    if (shift > 64) return 0;
    const uint64_t floor = shift == 64 ? 0 : power.fraction >> shift;
    const uint64_t rest = shift == 64 ? power.fraction : power.fraction << (64 - shift);
    constexpr uint64_t kHalf = uint64_t{1} << 63;
    const bool up = rest > kHalf || (rest == kHalf && (x != 0 || (floor & 1) != 0));
    const uint64_t rounded = floor + up;
    return rounded < static_cast<uint64_t>(highest) ? static_cast<int64_t>(rounded) : highest;
  }
  // x - scaleFactor * ln 2; the first product is exact.
  constexpr long double kLn2 = 0x1.62e42fefp-1L, kLn2Low = 0x1.473de6af278ece6p-34L;
  const long double scale = scaleFactor;
  const long double y = std::exp(static_cast<long double>(x) - scale * kLn2 - scale * kLn2Low);
  if (!(y < static_cast<long double>(highest))) return highest;
  const int64_t floor = static_cast<int64_t>(y);
  const long double rest = y - static_cast<long double>(floor);
  return floor + (rest > 0.5L || (rest == 0.5L && (floor & 1) != 0));
}

// Results for arguments from `first` on, 0 below and saturated above.
template <class T>
struct Window {
  static constexpr int kEntries = sizeof(T) == 2 ? 16 : sizeof(T) == 4 ? 26 : 48;
  T first;
  T at[kEntries];

  explicit Window(int scaleFactor) {
    using L = std::numeric_limits<T>;
    // e^x is half of 2^scaleFactor.
    const double half = std::floor((scaleFactor - 1.0) * 0.6931471805599453) - 1;
    const double highest = static_cast<double>(L::max() - kEntries);
    first = half > highest                            ? static_cast<T>(L::max() - kEntries)
            : half < static_cast<double>(L::lowest()) ? L::lowest()
                                                      : static_cast<T>(half);
    for (int i = 0; i < kEntries; ++i)
      at[i] = static_cast<T>(scaledPower(int64_t{first} + i, scaleFactor, L::max()));
  }
};

template <class D, class V, class T>
KVRS_INLINE V indexIn(D d, V x, const Window<T>& window) {
  const V first = hn::Set(d, window.first);
  const V last = hn::Set(d, static_cast<T>(window.first + (Window<T>::kEntries - 1)));
  return hn::Sub(hn::Min(hn::Max(x, first), last), first);
}

template <class T>
struct InWindow {
  const Window<T>* window;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    return hn::GatherIndex(d, window->at, indexIn(d, x, *window));
  }
};

// 16 results in two registers.
template <>
struct InWindow<Kvr16s> {
  const Window<Kvr16s>* window;
  ByteTable low, high;

  explicit InWindow(const Window<Kvr16s>* w) : window(w) {
    for (int i = 0; i < 16; ++i) {
      low.at[i] = static_cast<uint8_t>(w->at[i]);
      high.at[i] = static_cast<uint8_t>(w->at[i] >> 8);
    }
  }

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    const V i = indexIn(d, x, *window);
    const V lowByte = lookUp(d, low, hn::Or(i, hn::Set(d, static_cast<int16_t>(0x8000))));
    return hn::Or(lowByte, lookUp(d, high, hn::Or(hn::ShiftLeft<8>(i), hn::Set(d, int16_t{0x80}))));
  }
};

template <class T>
KvrStatus exponential(const T* src, T* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return underExtendedRounding(Rounding::nearest, [=] {
    if (len < Window<T>::kEntries) {
      for (int i = 0; i < len; ++i) {
        const int64_t power =
            scaledPower(unaligned::get(src + i), scaleFactor, std::numeric_limits<T>::max());
        unaligned::put(static_cast<T>(power), dst + i);
      }
      return KvrStatus{kvrStatusOk};
    }
    const Window<T> window(scaleFactor);
    return mapElements(InWindow<T>{&window}, dst, static_cast<size_t>(len), src);
  });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsExp_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return exponential(src, dst, len, scaleFactor);
}
KvrStatus kvrsExp_16s_ISfs(Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return exponential(srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsExp_32s_Sfs(const Kvr32s* src, Kvr32s* dst, int len, int scaleFactor) noexcept {
  return exponential(src, dst, len, scaleFactor);
}
KvrStatus kvrsExp_32s_ISfs(Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return exponential(srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsExp_64s_Sfs(const Kvr64s* src, Kvr64s* dst, int len, int scaleFactor) noexcept {
  return exponential(src, dst, len, scaleFactor);
}
KvrStatus kvrsExp_64s_ISfs(Kvr64s* srcDst, int len, int scaleFactor) noexcept {
  return exponential(srcDst, srcDst, len, scaleFactor);
}
