// Sliding sums product by product, on the multiply-adds of FIR filters. Taps are taken in pieces, whose table stays in the
// nearest cache. To a piece of M taps belong
//
//   outputs    0 ... no input ... | some inputs | all M inputs ............ | some inputs | ... no input ... count-1
//                                 |----M - 1----|                           |----M - 1----|
//
// Where all inputs are there they are read as they stand in the caller's array, at the ends from a copy with zeros around it,
// in blocks of a few outputs that leave out the taps that none of them meets.
// SPDX-License-Identifier: MIT
#include "filters/fir_kernel.h"
#include "filters/sliding_results-inl.h"
#include "frame/loop.h"

namespace kvrs::sliding {
namespace {

constexpr size_t kPieceBytes = 4096;

// Outputs of a block at the ends.
constexpr size_t kEndOutputs = 32;

// Up to so many outputs are sums along the taps; a tile would leave most of its lanes idle.
template <class T>
constexpr size_t kFew = kFirLanes<T> / 2;

// A piece of floating-point taps.
template <class T>
class FloatPiece {
 public:
  using Input = T;
  using Output = T;
  static constexpr size_t kTaps = kPieceBytes / sizeof(T);

  template <class D>
  void load(const Sums<D>& sums, size_t from, size_t count) {
    loadTaps(sums, from, count, taps_);
    if (kHasTapTable<T> && sums.count > kFew<T>) fillTapTable(taps_, table_, count);
    isFinite_ = std::is_same_v<D, Kvr16s> || finite(count);
  }

  // A product of 0 with an infinite tap would be a NaN where there is no input at all.
  size_t endOutputs() const { return isFinite_ ? kEndOutputs : 1; }

  // out[n], or what is added to it, for n in [0, count): taps from .. from+len-1 times inputs in[n] ... in[n+len-1].
  void run(const T* in, size_t from, size_t len, T* out, size_t count, bool adds) {
    if (!adds) return compute(in, from, len, out, count);
    for (size_t n = 0; n < count; n += kSums) {
      const size_t turn = count - n < kSums ? count - n : kSums;
      compute(in + n, from, len, sums_, turn);
      addTo(out + n, turn);
    }
  }

 private:
  static constexpr size_t kSums = kPieceBytes / sizeof(T);

  bool finite(size_t count) const {
    const auto* parts = reinterpret_cast<const FirLane<T>*>(taps_);
    const hn::ScalableTag<FirLane<T>> d;
    const size_t n = count * sizeof(T) / sizeof *parts;
    auto zeros = hn::Zero(d);
    size_t i = 0;
    for (; i + hn::Lanes(d) <= n; i += hn::Lanes(d)) {
      zeros = hn::MulAdd(hn::LoadU(d, parts + i), hn::Zero(d), zeros);
    }
    auto zero = hn::GetLane(hn::SumOfLanes(d, zeros));
    for (; i < n; ++i) zero += parts[i] * 0;
    return zero == 0;
  }

  void compute(const T* in, size_t from, size_t len, T* out, size_t count) const {
    if (count <= kFew<T>) {
      for (size_t n = 0; n < count; ++n) unaligned::put(firDot(in + n, taps_ + from, len), out + n);
    } else {
      firKernel(in, out, count, table() + from * kTapLanes<T>, len);
    }
  }

  const FirLane<T>* table() const {
    return kHasTapTable<T> ? table_ : reinterpret_cast<const FirLane<T>*>(taps_);
  }

  void addTo(T* out, size_t count) const {
    constexpr size_t kParts = sizeof(T) / sizeof(FirLane<T>);
    auto* const to = reinterpret_cast<FirLane<T>*>(out);
    const auto* const from = reinterpret_cast<const FirLane<T>*>(sums_);
    if constexpr (sizeof(FirLane<T>) == 4) {
      kvrsAdd_32f_I(from, to, static_cast<int>(count * kParts));
    } else {
      kvrsAdd_64f_I(from, to, static_cast<int>(count * kParts));
    }
  }

  alignas(64) T taps_[kTaps];
  alignas(64) FirLane<T> table_[kHasTapTable<T> ? kTaps * kTapLanes<T> : 1];
  alignas(64) T sums_[kSums];
  bool isFinite_;
};

// low + 256 * high, and a sum besides.
struct JoinBytes {
  template <class Dt, class V>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt d, V low, V high) const {
    return hn::Add(hn::PromoteTo(d, low), hn::ShiftLeft<8>(hn::PromoteTo(d, high)));
  }
  template <class Dt, class V, class Sum>
  KVRS_INLINE hn::Vec<Dt> operator()(Dt d, V low, V high, Sum sum) const {
    return hn::Add(sum, (*this)(d, low, high));
  }
};

// A piece of integer taps: their low bytes, from -128 to 127, and what is left of them over 256, from -128 to 128. So a
// product has a magnitude of up to 2^22, and the sum of a piece fits into 32 bits.
class BytePiece {
 public:
  using Input = Kvr16s;
  using Output = Kvr64s;
  static constexpr size_t kTaps = 496;
  static_assert(kTaps * (size_t{1} << 22) < size_t{1} << 31);

  void load(const Sums<Kvr16s>& sums, size_t from, size_t count) {
    loadTaps(sums, from, count, low_);
    for (size_t k = 0; k < count; ++k) {
      const int tap = low_[k], low = static_cast<Kvr8s>(tap & 0xFF);
      low_[k] = static_cast<Kvr16s>(low);
      high_[k] = static_cast<Kvr16s>((tap - low) / 256);
    }
  }

  size_t endOutputs() const { return kEndOutputs; }

  void run(const Kvr16s* in, size_t from, size_t len, Kvr64s* out, size_t count, bool adds) {
    for (size_t n = 0; n < count; n += kSums) {
      const size_t turn = count - n < kSums ? count - n : kSums;
      compute(in + n, low_ + from, len, lowSums_, turn);
      compute(in + n, high_ + from, len, highSums_, turn);
      if (adds) {
        mapElements(JoinBytes(), out + n, turn, lowSums_, highSums_, out + n);
      } else {
        mapElements(JoinBytes(), out + n, turn, lowSums_, highSums_);
      }
    }
  }

 private:
  static constexpr size_t kSums = 512;

  static void compute(const Kvr16s* in, const Kvr16s* taps, size_t len, Kvr32s* sums, size_t count) {
    if (count <= kFew<Kvr16s>) {
      for (size_t n = 0; n < count; ++n) sums[n] = firDot(in + n, taps, len);
    } else {
      firKernel(in, sums, count, taps, len);
    }
  }

  alignas(64) Kvr16s low_[kTaps], high_[kTaps];
  alignas(64) Kvr32s lowSums_[kSums], highSums_[kSums];
};

// `out` in the type that sums are of.
template <class Piece, class D>
void run(const Sums<D>& all, typename Piece::Output* out) {
  using T = typename Piece::Input;
  const Sums<D> sums = trimmed(all);
  const auto count = static_cast<int64_t>(sums.count), inLen = static_cast<int64_t>(sums.inLen);
  if (sums.tapsLen == 0 || sums.inLen == 0) {
    memset(static_cast<void*>(out), 0, sums.count * sizeof *out);
    return;
  }
  constexpr size_t kFrame = 3 * Piece::kTaps;
  alignas(64) T frame[kFrame];
  Piece piece;
  for (size_t k0 = 0; k0 < sums.tapsLen; k0 += Piece::kTaps) {
    const size_t taps = sums.tapsLen - k0 < Piece::kTaps ? sums.tapsLen - k0 : Piece::kTaps;
    const bool adds = k0 > 0;
    piece.load(sums, k0, taps);
    const auto tapsLen = static_cast<int64_t>(taps);
    const int64_t first = sums.first + static_cast<int64_t>(k0);  // the input of tap k0 in output 0
    const auto output = [=](int64_t n) { return n < 0 ? int64_t{0} : n < count ? n : count; };
    const int64_t some = output(1 - tapsLen - first), none = output(inLen - first);
    const int64_t whole = output(-first), part = output(inLen - tapsLen + 1 - first);
    if (!adds) {
      memset(static_cast<void*>(out), 0, static_cast<size_t>(some) * sizeof *out);
      memset(static_cast<void*>(out + none), 0, static_cast<size_t>(count - none) * sizeof *out);
    }
    const auto copied = [&](int64_t from, int64_t to) {
      for (int64_t n = from; n < to;) {
        const auto room = static_cast<int64_t>(kFrame) - (tapsLen - 1);
        const int64_t outputs = to - n < room ? to - n : room;
        loadInputs(sums, first + n, frame, static_cast<size_t>(outputs + tapsLen - 1));
        for (int64_t b = 0; b < outputs;) {
          const int64_t at = first + n + b;
          int64_t block = at < 0 || n + b >= part ? static_cast<int64_t>(piece.endOutputs()) : part - (n + b);
          if (block > outputs - b) block = outputs - b;
          const int64_t low = at + block > 0 ? 0 : 1 - block - at;
          const int64_t high = inLen - at < tapsLen ? inLen - at : tapsLen;
          piece.run(frame + (b + low), static_cast<size_t>(low), static_cast<size_t>(high - low),
                    out + (n + b), static_cast<size_t>(block), adds);
          b += block;
        }
        n += outputs;
      }
    };
    if constexpr (std::is_same_v<D, T> && !FirElement<T>::kInteger) {
      if (part > whole) {
        copied(some, whole);
        piece.run(sums.in + (first + whole), 0, taps, out + whole, static_cast<size_t>(part - whole), adds);
        copied(part, none);
        continue;
      }
    }
    copied(some, none);
  }
}

}  // namespace

template <class D>
void directly(const Sums<D>& sums, const Results<D>& results) {
  using T = Working<D>;
  if constexpr (std::is_same_v<D, T>) {
    run<FloatPiece<T>>(sums, results.dst);
    normalise(results, results.dst, 0, sums.count);
  } else {
    forTiles<T, 1024>(sums.count, [&](T* tile, size_t begin, size_t count) {
      Sums<D> some = sums;
      some.first += static_cast<int64_t>(begin);
      some.count = count;
      run<FloatPiece<T>>(some, tile);
      store(results, tile, begin, count);
    });
  }
  if (results.mirrored) mirror(results.dst, static_cast<int>(sums.count));
}

void exactly(const Sums<Kvr16s>& sums, Kvr64s* dst, bool mirrored) {
  run<BytePiece>(sums, dst);
  if (mirrored) mirror(dst, static_cast<int>(sums.count));
}

template void directly<Kvr32f>(const Sums<Kvr32f>&, const Results<Kvr32f>&);
template void directly<Kvr64f>(const Sums<Kvr64f>&, const Results<Kvr64f>&);
template void directly<Kvr32fc>(const Sums<Kvr32fc>&, const Results<Kvr32fc>&);
template void directly<Kvr64fc>(const Sums<Kvr64fc>&, const Results<Kvr64fc>&);
template void directly<Kvr16s>(const Sums<Kvr16s>&, const Results<Kvr16s>&);

}  // namespace kvrs::sliding
