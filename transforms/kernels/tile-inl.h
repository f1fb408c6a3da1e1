// Strips of columns: out of memory into a tile, transformed there, and out of it.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_TILE_INL_H
#define KVRS_TRANSFORMS_KERNELS_TILE_INL_H

#include <type_traits>
#include <utility>

#include "frame/element.h"
#include "transforms/dft_engine.h"
#include "transforms/kernels/stage-inl.h"

namespace kvrs::dft {

// Complex numbers i, i + 1, ... of pairs, in their order.
template <class D, class T>
KVRS_INLINE Complex<hn::Vec<D>> loadPairs(D d, const T* p) {
  if constexpr (hn::MaxLanes(D()) == 1) {
    return {hn::LoadU(d, p), hn::LoadU(d, p + 1)};
  } else {
    const auto a = hn::LoadU(d, p), b = hn::LoadU(d, p + hn::MaxLanes(d));
    return {hn::ConcatEven(d, b, a), hn::ConcatOdd(d, b, a)};
  }
}
template <class D, class T>
KVRS_INLINE void storePairs(D d, Complex<hn::Vec<D>> x, T* p) {
  if constexpr (hn::MaxLanes(D()) == 1) {
    hn::StoreU(x.re, d, p);
    hn::StoreU(x.im, d, p + 1);
  } else {
    storeInterleaved(x.re, x.im, d, p);
  }
}

template <class D, class P>
KVRS_INLINE Complex<hn::Vec<D>> loadPoints(D d, const Points<P>& x, size_t i) {
  if (!x.pairs) return {hn::LoadU(d, x.re + i), x.im == nullptr ? hn::Zero(d) : hn::LoadU(d, x.im + i)};
  const auto v = loadPairs(d, x.first() + 2 * i);
  return x.re < x.im ? v : Complex<hn::Vec<D>>{v.im, v.re};
}
template <class D, class T>
KVRS_INLINE void storePoints(D d, Complex<hn::Vec<D>> v, const Points<T>& x, size_t i) {
  if (!x.pairs) {
    hn::StoreU(v.re, d, x.re + i);
    hn::StoreU(v.im, d, x.im + i);
  } else {
    storePairs(d, x.re < x.im ? v : Complex<hn::Vec<D>>{v.im, v.re}, x.first() + 2 * i);
  }
}

template <class T>
using PairOf = std::conditional_t<sizeof(T) == 4, Kvr32fc, Kvr64fc>;

// Rows of up to kTileWidth numbers, one behind the other in whole vectors.
template <class T>
struct Tile {
  alignas(64) T re[kMostRows * kTileWidth<T>];
  alignas(64) T im[kMostRows * kTileWidth<T>];

  Planes<T> planes() { return {re, im}; }
};

template <class T>
size_t pitchOf(size_t width) {
  return static_cast<size_t>(wholeVectors<T>(static_cast<int>(width)));
}

// Rows `distance` apart, from number `first` on. Parts exchanged go to the tile exchanged.
template <class T>
__attribute__((noinline)) void loadRows(const Points<const T>& in, size_t first, size_t distance, size_t rows,
                                        size_t width, T* toRe, T* toIm) {
  const Full<T> d;
  Planes<T> tile{toRe, toIm};
  constexpr size_t L = kLanes<T>;
  const size_t rest = width % L, whole = width - rest;
  if (in.pairs) {
    if (in.im < in.re) tile = {tile.im, tile.re};
    const T* p = in.first() + 2 * first;
    for (; rows > 0; --rows, p += 2 * distance) {
      for (size_t q = 0; q < whole; q += L, tile = tile.at(L)) tile.store(d, 0, loadPairs(d, p + 2 * q));
      if (rest == 0) continue;
      tile.store(d, 0, Element<PairOf<T>>::loadFirst(rest, d, reinterpret_cast<const PairOf<T>*>(p) + whole));
      tile = tile.at(L);
    }
  } else {
    const auto loadPlane = [&](const T* p, T* to) {
      for (size_t row = 0; row < rows; ++row, p += distance) {
        for (size_t q = 0; q < whole; q += L, to += L) hn::StoreU(hn::LoadU(d, p + q), d, to);
        if (rest == 0) continue;
        hn::StoreU(loadFirst(d, p + whole, rest), d, to);
        to += L;
      }
    };
    loadPlane(in.re + first, tile.re);
    if (in.im != nullptr) return loadPlane(in.im + first, tile.im);
    for (size_t i = 0; i < rows * pitchOf<T>(width); i += L) hn::StoreU(hn::Zero(d), d, tile.im + i);
  }
}

// Times `scale`.
template <class T>
__attribute__((noinline)) void storeRows(const T* re, const T* im, size_t rows, size_t width, T scale,
                                         const Points<T>& out, size_t first, size_t distance) {
  const Full<T> d;
  Planes<const T> tile{re, im};
  constexpr size_t L = kLanes<T>;
  const size_t rest = width % L, whole = width - rest;
  const auto factor = hn::Set(d, scale);
  if (out.pairs) {
    if (out.im < out.re) tile = {tile.im, tile.re};
    T* p = out.first() + 2 * first;
    for (; rows > 0; --rows, p += 2 * distance) {
      for (size_t q = 0; q < whole; q += L, tile = tile.at(L))
        storePairs(d, mul(tile.load(d, 0), factor), p + 2 * q);
      if (rest == 0) continue;
      Element<PairOf<T>>::storeFirst(rest, mul(tile.load(d, 0), factor), d,
                                     reinterpret_cast<PairOf<T>*>(p) + whole);
      tile = tile.at(L);
    }
  } else {
    const auto storePlane = [&](const T* from, T* p) {
      for (size_t row = 0; row < rows; ++row, p += distance) {
        for (size_t q = 0; q < whole; q += L, from += L)
          hn::StoreU(hn::Mul(hn::LoadU(d, from), factor), d, p + q);
        if (rest == 0) continue;
        storeFirst(hn::Mul(hn::LoadU(d, from), factor), d, p + whole, rest);
        from += L;
      }
    };
    storePlane(tile.re, out.re + first);
    storePlane(tile.im, out.im + first);
  }
}

// Whether stages load rows from memory and store them there by themselves, under masks.
inline constexpr bool kStagesReachMemory = kMaskRegisters;

// Rows of up to a vector of numbers in memory, in any form: two vectors under masks, and which of their lanes are real
// and which imaginary parts.
template <class P>
class MaskedRows {
  using T = std::remove_const_t<P>;
  using D = Full<T>;
  using Floats = Full<float>;
  using Places = hn::Vec<hn::RebindToSigned<Floats>>;

 public:
  MaskedRows(const Points<P>& x, size_t first, size_t width)
      : step_(x.pairs ? 2 : 1), a_((x.pairs ? x.first() : x.re) + step_ * first) {
    constexpr size_t L = kLanes<T>;
    const D d;
    b_ = x.pairs ? a_ + L : x.im != nullptr ? x.im + first : a_;
    const size_t lower = x.pairs ? 2 * width : width;
    const size_t upper = !x.pairs ? (x.im != nullptr ? width : 0) : lower > L ? lower - L : 0;
    maskA_ = firstLanes(d, lower < L ? lower : L);
    maskB_ = firstLanes(d, upper);
    const auto count = hn::ShiftRight<kShift>(hn::Iota(places, 0));
    const auto all = hn::Set(places, static_cast<int>(L));
    if (!x.pairs) {
      first_ = count;
      second_ = hn::Add(count, all);
    } else if constexpr (std::is_const_v<P>) {
      first_ = hn::Add(count, count);
      second_ = hn::Add(first_, hn::Set(places, 1));
    } else {
      // 0 L 1 L + 1 ...
      const auto isOdd = hn::Ne(hn::And(count, hn::Set(places, 1)), hn::Zero(places));
      first_ = hn::Add(hn::ShiftRight<1>(count), hn::IfThenElseZero(isOdd, all));
      second_ = hn::Add(first_, hn::Set(places, static_cast<int>(L / 2)));
    }
    if (x.pairs && x.im < x.re) {
      if constexpr (std::is_const_v<P>) {
        std::swap(first_, second_);
      } else {
        first_ = hn::Xor(first_, all);
        second_ = hn::Xor(second_, all);
      }
    }
    first_ = inFloats(first_);
    second_ = inFloats(second_);
  }

  KVRS_INLINE Cx<D> load(D d, size_t i) const {
    const auto a = hn::MaskedLoad(maskA_, d, a_ + step_ * i), b = hn::MaskedLoad(maskB_, d, b_ + step_ * i);
    return {lanesOfBoth(d, a, b, first_), lanesOfBoth(d, a, b, second_)};
  }
  KVRS_INLINE void store(D d, size_t i, Cx<D> x) const {
    hn::BlendedStore(lanesOfBoth(d, x.re, x.im, first_), maskA_, d, a_ + step_ * i);
    hn::BlendedStore(lanesOfBoth(d, x.re, x.im, second_), maskB_, d, b_ + step_ * i);
  }

 private:
  // Lanes are taken as those of floats, one or two of them.
  static constexpr int kShift = sizeof(T) == 4 ? 0 : 1;
  static constexpr hn::RebindToSigned<Floats> places{};

  static Places inFloats(Places x) {
    const auto within = hn::And(hn::Iota(places, 0), hn::Set(places, kShift));
    return hn::Add(hn::ShiftLeft<kShift>(x), within);
  }
  static KVRS_INLINE hn::Vec<D> lanesOfBoth(D d, hn::Vec<D> a, hn::Vec<D> b, Places from) {
    const Floats floats;
    return hn::BitCast(d, lanesOf(hn::BitCast(floats, b), hn::BitCast(floats, a), from));
  }

  size_t step_;
  P* a_;
  P* b_;
  hn::Mask<D> maskA_, maskB_;
  Places first_, second_;
};

// Times a factor.
template <class T>
struct ScaledRows {
  const MaskedRows<T>& rows;
  T scale;

  KVRS_INLINE void store(Full<T> d, size_t i, Cx<Full<T>> x) const {
    rows.store(d, i, mul(x, hn::Set(d, scale)));
  }
};

// Rows turned. The factors of row j and columns of a strip stand together, width real parts and width imaginary ones, from
// j = 1 on.
template <class T>
void turnRows(Planes<const T> in, size_t distance, size_t rows, size_t width, const T* w, Planes<T> out,
              size_t outPitch) {
  const Full<T> d;
  for (size_t q = 0; q < width && out.re != in.re; q += kLanes<T>) out.store(d, q, in.load(d, q));
  for (; rows > 1; --rows, w += 2 * width) {
    in = in.at(distance);
    out = out.at(outPitch);
    for (size_t q = 0; q < width; q += kLanes<T>) {
      const Cx<Full<T>> turn{hn::LoadU(d, w + q), hn::LoadU(d, w + width + q)};
      out.store(d, q, mul(in.load(d, q), turn));
    }
  }
}

// Column q of `in` to row q of `out`, of which `room` numbers may be written: where columns are no multiple of a vector
// long, rows are filled up if there is room, else the last square of lanes lies over the one before. kFirst: nothing is read
// beyond `width` either, and there may be fewer than a vector of rows and no room.
template <bool kFirst, class T>
__attribute__((noinline)) void transposePlane(const T* in, size_t pitch, size_t rows, size_t width, T* out,
                                              size_t outPitch, size_t room) {
  const Full<T> d;
  constexpr int L = static_cast<int>(kLanes<T>);
  for (size_t q = 0; q < width; q += L) {
    for (size_t j = 0; j < rows; j += L) {
      if (j + L > room && (!kFirst || rows >= L)) j = rows - L;
      hn::Vec<Full<T>> x[L];
      const T* from = in + j * pitch + q;
      // Rows that there are not are copies of the last one: what memory happens to hold could be subnormal, and slow.
      const auto load = [&](auto take) KVRS_UNROLLED {
        unroll<L>([&](auto i) KVRS_UNROLLED {
          x[i] = take(from);
          from += j + i + 1 < rows ? pitch : 0;
        });
      };
      if (!kFirst || q + L <= width) {
        load([&](const T* p) KVRS_UNROLLED { return hn::LoadU(d, p); });
      } else {
        load([&](const T* p) KVRS_UNROLLED { return loadFirst(d, p, width - q); });
      }
      transpose(d, x);
      T* to = out + q * outPitch + j;
      const auto store = [&](auto put) KVRS_UNROLLED {
        unroll<L>([&](auto i) KVRS_UNROLLED {
          if (q + i >= width) return;
          put(x[i], to);
          to += outPitch;
        });
      };
      if (!kFirst || j + L <= room) {
        store([&](auto v, T* p) KVRS_UNROLLED { hn::StoreU(v, d, p); });
      } else {
        store([&](auto v, T* p) KVRS_UNROLLED { storeFirst(v, d, p, rows); });
      }
    }
  }
}

// Of so few rows that real and imaginary parts fill a square together; they become the halves of a vector.
template <class T>
__attribute__((noinline)) void transposeShared(const T* re, const T* im, size_t pitch, size_t rows,
                                               size_t width, T* out) {
  const Full<T> d;
  constexpr int L = static_cast<int>(kLanes<T>), kHalf = L / 2;
  for (size_t q = 0; q < width; q += L, out += L * L) {
    hn::Vec<Full<T>> x[L];
    unroll<kHalf>([&](auto i) KVRS_UNROLLED {
      const size_t row = i;
      const size_t at = (row < rows ? row : 0) * pitch + q;
      x[i] = hn::LoadU(d, re + at);
      x[kHalf + i] = hn::LoadU(d, im + at);
    });
    transpose(d, x);
    unroll<L>([&](auto i) KVRS_UNROLLED {
      if (q + i < width) hn::StoreU(x[i], d, out + i * L);
    });
  }
}

// Column q of the tile to row q of `out`.
template <class T>
void storeTransposed(Planes<T> tile, size_t rows, size_t width, Planes<T> out, size_t outPitch) {
  const size_t pitch = pitchOf<T>(width);
  if (shareVectors<T>(static_cast<int>(rows)) && outPitch > rows)
    return transposeShared(tile.re, tile.im, pitch, rows, width, out.re);
  transposePlane<false>(tile.re, pitch, rows, width, out.re, outPitch, outPitch);
  transposePlane<false>(tile.im, pitch, rows, width, out.im, outPitch, outPitch);
}

// The transform of rows of whole vectors, `distance` apart in `in`, in `count` stages by way of a and b. The first one
// writes to a, so that `in` may be b. The result is in the tile returned.
template <class T>
Planes<T> tileStages(const int* radix, int count, size_t rows, size_t width, const T* w,
                     const OddRoots<T>& odd, Planes<const T> in, size_t distance, Planes<T> a, Planes<T> b) {
  size_t side = width, n = rows;
  for (int i = 0; i < count; ++i) {
    const size_t r = static_cast<size_t>(radix[i]), m = n > r ? n / r : 1;
    stage(radix[i], Shape{m, side, distance * m, distance, side, side * r}, in, a, w, odd.of(radix[i]));
    w += 2 * (m - 1) * (r - 1);
    side *= r;
    distance = side;
    n = m;
    in = {a.re, a.im};
    const Planes<T> other = b;
    b = a;
    a = other;
  }
  return b;
}

}  // namespace kvrs::dft

#endif
