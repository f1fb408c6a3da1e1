// SPDX-License-Identifier: MIT
#include "kvrs/complex_parts.h"

#include <cmath>
#include <limits>

#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

// Any bits, so that NaNs, infinities and zeros of both signs are among the floats.
template <class T>
T anyBits(Random& random, size_t, T) {
  T value;
  const uint64_t bits[2] = {random.bits(), random.bits()};
  memcpy(&value, bits, sizeof value);
  return value;
}

template <class T>
auto drawing() {
  return [](Random& random, size_t source, auto like) {
    // Small integers are all but edges when drawn as bits alone.
    if constexpr (std::is_integral_v<T>) return random.value<decltype(like)>();
    return anyBits(random, source, like);
  };
}

template <class T>
T negated(T x) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<T>(x == std::numeric_limits<T>::min() ? std::numeric_limits<T>::max() : -x);
  } else {
    return -x;
  }
}

template <class C, class T>
struct Functions {
  KvrStatus (*real)(const C*, T*, int) noexcept;
  KvrStatus (*imag)(const C*, T*, int) noexcept;
  KvrStatus (*split)(const C*, T*, T*, int) noexcept;
  KvrStatus (*join)(const T*, const T*, C*, int) noexcept;
  KvrStatus (*conj)(const C*, C*, int) noexcept;
  KvrStatus (*conjI)(C*, int) noexcept;
  KvrStatus (*conjFlip)(const C*, C*, int) noexcept;
};
constexpr Functions<Kvr16sc, Kvr16s> k16{kvrsReal_16sc,      kvrsImag_16sc, kvrsCplxToReal_16sc,
                                         kvrsRealToCplx_16s, kvrsConj_16sc, kvrsConj_16sc_I,
                                         kvrsConjFlip_16sc};
constexpr Functions<Kvr32fc, Kvr32f> k32{kvrsReal_32fc,      kvrsImag_32fc, kvrsCplxToReal_32fc,
                                         kvrsRealToCplx_32f, kvrsConj_32fc, kvrsConj_32fc_I,
                                         kvrsConjFlip_32fc};
constexpr Functions<Kvr64fc, Kvr64f> k64{kvrsReal_64fc,      kvrsImag_64fc, kvrsCplxToReal_64fc,
                                         kvrsRealToCplx_64f, kvrsConj_64fc, kvrsConj_64fc_I,
                                         kvrsConjFlip_64fc};

template <class Check>
void forTypes(Check check) {
  check(k16);
  check(k32);
  check(k64);
}

TEST(ComplexParts, RealAndImag) {
  forTypes([]<class C, class T>(const Functions<C, T>& f) {
    sweepMapWith<T, C>(f.real, [](C z) { return z.re; }, sameBits<T>, drawing<T>(), {});
    sweepMapWith<T, C>(f.imag, [](C z) { return z.im; }, sameBits<T>, drawing<T>(), {});
  });
}

// Each of the two results is swept while the other one goes to an array between guards of its own.
TEST(ComplexParts, CplxToReal) {
  forTypes([]<class C, class T>(const Functions<C, T>& f) {
    Arena other(1100 * sizeof(T));
    for (bool second : {false, true}) {
      size_t offset = 0;
      sweepMapWith<T, C>(
          [&](const C* src, T* dst, int len) {
            const size_t n = static_cast<size_t>(len);
            T* rest = other.place<T>(n, offset % 2 ? Side::front : Side::back, offset % 32);
            ++offset;
            const KvrStatus status = second ? f.split(src, rest, dst, len) : f.split(src, dst, rest, len);
            EXPECT_TRUE(other.intact());
            for (size_t i = 0; i < n; ++i) {
              const C z = get(src, i);
              EXPECT_TRUE(sameBits(second ? z.re : z.im, get(rest, i)));
            }
            return status;
          },
          [&](C z) { return second ? z.im : z.re; }, sameBits<T>, drawing<T>(), {});
    }
  });
}

TEST(ComplexParts, RealToCplx) {
  forTypes([]<class C, class T>(const Functions<C, T>& f) {
    sweepMapWith<C, T, T>(f.join, [](T re, T im) { return C{re, im}; }, sameBits<C>, drawing<T>(), {});
    sweepMapWith<C, T>([&](const T* re, C* dst, int len) { return f.join(re, nullptr, dst, len); },
                       [](T re) {
                         return C{re, T{0}};
                       },
                       sameBits<C>, drawing<T>(), {});
    sweepMapWith<C, T>([&](const T* im, C* dst, int len) { return f.join(nullptr, im, dst, len); },
                       [](T im) {
                         return C{T{0}, im};
                       },
                       sameBits<C>, drawing<T>(), {});
  });
}

// dst, then len, then the sources.
TEST(ComplexParts, RealToCplxChecks) {
  forTypes([]<class C, class T>(const Functions<C, T>& f) {
    T part[4] = {};
    C dst[4];
    memset(static_cast<void*>(dst), 0x5A, sizeof dst);
    C before[4];
    memcpy(static_cast<void*>(before), dst, sizeof dst);
    EXPECT_EQ(kvrStatusNullPointer, f.join(part, part, nullptr, 4));
    EXPECT_EQ(kvrStatusNullPointer, f.join(nullptr, nullptr, nullptr, 0));
    EXPECT_EQ(kvrStatusBadLength, f.join(nullptr, nullptr, dst, 0));
    EXPECT_EQ(kvrStatusBadLength, f.join(part, nullptr, dst, -3));
    EXPECT_EQ(kvrStatusNullPointer, f.join(nullptr, nullptr, dst, 4));
    EXPECT_EQ(0, memcmp(before, dst, sizeof dst));
  });
}

TEST(ComplexParts, Conj) {
  forTypes([]<class C, class T>(const Functions<C, T>& f) {
    const auto oracle = [](C z) { return C{z.re, negated(z.im)}; };
    sweepMapWith<C, C>(f.conj, oracle, sameBits<C>, drawing<T>(), {});
    sweepInPlaceWith<C>(f.conjI, oracle, sameBits<C>, drawing<T>(), {});
    sweepInPlaceWith<C>([&](C* srcDst, int len) { return f.conj(srcDst, srcDst, len); }, oracle, sameBits<C>,
                        drawing<T>(), {});
  });
}

// The sweep is of maps, so the source is handed over backwards.
TEST(ComplexParts, ConjFlip) {
  forTypes([]<class C, class T>(const Functions<C, T>& f) {
    Arena backwards(1100 * sizeof(C));
    size_t offset = 0;
    sweepMapWith<C, C>(
        [&](const C* src, C* dst, int len) {
          const size_t n = static_cast<size_t>(len);
          C* reversed = backwards.place<C>(n, offset % 2 ? Side::front : Side::back, offset % 32);
          ++offset;
          for (size_t i = 0; i < n; ++i) put(reversed, n - 1 - i, get(src, i));
          return f.conjFlip(reversed, dst, len);
        },
        [](C z) {
          return C{z.re, negated(z.im)};
        },
        sameBits<C>, drawing<T>(), {});
  });
}

}  // namespace
