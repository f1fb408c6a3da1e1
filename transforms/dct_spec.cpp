// Sizes, initialisation and tables of the contexts of cosine transforms.
// SPDX-License-Identifier: MIT
#include "transforms/dct_spec.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <iterator>

#include "transforms/dft_spec.h"
#include "transforms/dft_tables.h"
#include "transforms/fft_engine.h"
#include "transforms/kernels/dct-inl.h"

namespace kvrs::dct {
namespace {

constexpr bool isPowerOfTwo(int64_t n) {
  return (n & (n - 1)) == 0;
}
constexpr int orderOf(int64_t n) {
  return __builtin_ctzll(static_cast<uint64_t>(n));
}

// The length of a convolution for twice as many numbers, which the sizes are made for.
constexpr int64_t convolutionLength(int64_t len) {
  int64_t length = 1;
  while (length < 2 * len - 1) length *= 2;
  return length;
}

KvrStatus fitInInt(const Sizes& sizes) {
  const bool fit = sizes.spec <= INT_MAX && sizes.initBuf <= INT_MAX && sizes.work <= INT_MAX;
  return fit ? kvrStatusOk : kvrStatusBadLength;
}

// Tables in a block that is known to have room for them.
template <class T>
class Tables {
 public:
  explicit Tables(void* block) : carver_(block) {}

  template <class E>
  E* take(size_t count, size_t alignment) {
    return carver_.take<E>(count, alignment);
  }
  T* take(size_t numbers) { return carver_.take<T>(numbers); }
  fft::Root<T> root(int64_t k, int64_t n) const { return dft::rootOf<T>(k % n, n); }
  size_t used() const { return carver_.used(); }

 private:
  Carver carver_;
};

// exp(-i pi times k / (2 len)), times `scale`, or its conjugate.
template <class T>
fft::Root<T> turnOf(int64_t times, int64_t k, int64_t len, double scale, bool isForward) {
  const fft::Root<double> w = dft::rootOf<double>(times * k % (4 * len), 4 * len);
  return {static_cast<T>(w.re * scale), static_cast<T>((isForward ? w.im : -w.im) * scale)};
}

// The factors of the rotation, in the order in which it takes them (kernels/dct-inl.h).
template <class T>
void makeTurns(Record<T>* r, Tables<T>* tables, bool isForward) {
  const int len = r->len, n = pointsOf(len);
  const bool even = len % 2 == 0;
  const double scale = std::sqrt(2.0 / len) * (even || !isForward ? 0.5 : 1.0);
  const size_t rows = even ? 4 : 2;
  bool isFirst = true;
  forTurns<T>(static_cast<size_t>(n), even, [&](auto d, size_t k) {
    const size_t L = hn::MaxLanes(d);
    T* const to = tables->take(rows * L);
    if (isFirst) r->turns.set(to);
    isFirst = false;
    for (size_t lane = 0; lane < L; ++lane) {
      const int64_t at = static_cast<int64_t>(k + lane);
      const fft::Root<T> one = turnOf<T>(1, at, len, scale, isForward);
      to[lane] = one.re;
      to[L + lane] = one.im;
      if (!even) continue;
      const fft::Root<T> five = turnOf<T>(5, at, len, scale, isForward);
      to[2 * L + lane] = five.re;
      to[3 * L + lane] = five.im;
    }
  });
}

template <class T>
void makeFft(Record<T>* r, Tables<T>* tables, fft::Kind kind, int order, Kvr8u* initBuf) {
  constexpr bool kSingle = sizeof(T) == 4;
  const fft::IdWord word = kind == fft::Kind::kPlanes ? (kSingle ? fft::kWordC32f : fft::kWordC64f)
                                                      : (kSingle ? fft::kWordC32fc : fft::kWordC64fc);
  const size_t bytes = static_cast<size_t>(fft::sizesOf<T>(kind, order).spec);
  Kvr8u* const memory = tables->template take<Kvr8u>(bytes, kBufferAlignment);
  fft::Record<T>* made;
  // Its arguments are in order: the length has been checked, and what initBuf has to hold grows with the order.
  static_cast<void>(
      fft::initRecord(kind, word, &made, order, kvrFftNoDivByAny, kvrHintNone, memory, initBuf));
  r->fft.set(made);
}

template <class T>
void makeMixed(Record<T>* r, Tables<T>* tables, int n) {
  dft::Mixed<T> x{};
  bool isPrime = n > dft::kLastShort;
  for (int d = 2; d * d <= n && isPrime; ++d) isPrime = n % d != 0;
  if (isPrime) {  // one column
    x.plan = {.n = n, .levels = 1, .rows = {n}, .stages = {1}, .radix = {n}};
  } else {
    x.plan = dft::makePlan<T>(n);
  }
  MixedParts<T>* const parts = tables->template take<MixedParts<T>>(1, alignof(MixedParts<T>));
  dft::makeMixed(*tables, &x);
  parts->n = n;
  parts->levels = static_cast<uint8_t>(x.plan.levels);
  for (int i = 0; i < dft::kMostLevels; ++i) parts->stages[i] = static_cast<uint8_t>(x.plan.stages[i]);
  for (size_t i = 0; i < std::size(parts->radix); ++i)
    parts->radix[i] = static_cast<uint8_t>(x.plan.radix[i]);
  parts->numbers.set(x.numbers);
  parts->turns.set(x.turns);
  parts->odd.set(x.odd.count > 0 ? x.odd.table[0] : nullptr);
  r->mixed.set(parts);
}

// The numbers that a convolution of that length works on besides its own.
template <class T>
int64_t convolutionWork(int64_t length) {
  if (!isPowerOfTwo(length)) return 2 * length;
  const int bytes = fft::sizesOf<T>(fft::Kind::kComplex, orderOf(length)).work;
  return bytes / static_cast<int64_t>(sizeof(T));
}

// See dft::Core. `memory` has room for the work of the convolution.
template <class T>
void makeChirp(Record<T>* r, Tables<T>* tables, int n, int64_t length, Kvr8u* initBuf, const Kvr8u* end,
               int64_t initBytes) {
  r->chirpLength = static_cast<int32_t>(length);
  T* const chirp = tables->take(2 * static_cast<size_t>(n));
  T* const spectrum = tables->take(2 * static_cast<size_t>(length));
  std::memset(static_cast<void*>(spectrum), 0, 2 * static_cast<size_t>(length) * sizeof(T));
  const T over = T(1) / static_cast<T>(length);
  for (int64_t k = 0; k < n; ++k) {
    const fft::Root<T> w = tables->root(k * k, 2 * static_cast<int64_t>(n));
    chirp[2 * k] = w.re;
    chirp[2 * k + 1] = w.im;
    for (int64_t at : {k, (length - k) % length}) {
      spectrum[2 * at] = w.re * over;
      spectrum[2 * at + 1] = -w.im * over;
    }
  }
  r->chirp.set(chirp);
  r->spectrum.set(spectrum);
  if (isPowerOfTwo(length)) {
    makeFft(r, tables, fft::Kind::kComplex, orderOf(length), initBuf);
  } else {
    makeMixed(r, tables, static_cast<int>(length));
  }
  // For a while the convolution needs a work area: initBuf is one for the length that the sizes are made for; a shorter
  // one leaves enough of the block.
  T* work = tables->template take<T>(0, kBufferAlignment);
  const int64_t bytes = convolutionWork<T>(length) * static_cast<int64_t>(sizeof(T));
  if (reinterpret_cast<const Kvr8u*>(work) + bytes > end && bytes <= initBytes) {
    work = reinterpret_cast<T*>(alignUp(initBuf));
  }
  transformConvolution(*r, spectrum, bytes > 0 ? work : nullptr);
}

}  // namespace

template <class T>
KvrStatus sizesOf(int len, Sizes* sizes) {
  constexpr int64_t kPart = sizeof(T);
  const auto down32 = [](int64_t bytes) { return bytes & ~int64_t{31}; };
  const int64_t n = len;
  const bool isPower = isPowerOfTwo(n);
  if (isPower && n < 9) {
    *sizes = {kPart == 4 ? 116 : 128, 0, 0};
  } else if (isPower ? n < 64 : n <= kLastOnStack) {
    *sizes = {down32((isPower ? 1 : 4) * kPart * n + 31) + 128, 0, kPart * n + 32};
  } else {
    // Those of a real FFT of twice the length, or of a convolution.
    const int64_t points = isPower ? 2 * n : convolutionLength(n);
    const int order = orderOf(points);
    if (order > fft::Family<T>::kMaxOrder) return kvrStatusBadFftOrder;
    const fft::Sizes of = fft::sizesOf<T>(isPower ? fft::Kind::kReal : fft::Kind::kComplex, order);
    if (isPower) {
      *sizes = {of.spec + 2 * kPart * n + 128, of.initBuf > 0 ? int64_t{of.initBuf} + 32 : 0,
                of.work + 2 * kPart * n + 32};
    } else {
      *sizes = {of.spec + 6 * kPart * n + 2 * kPart * points + 128,
                (of.initBuf > of.work ? int64_t{of.initBuf} : int64_t{of.work}) + 32,
                of.work + 2 * kPart * points + 32};
    }
  }
  return fitInInt(*sizes);
}

KvrStatus integerSizesOf(int len, Sizes* sizes) {
  if (len == 1) {
    *sizes = {56, 0, 0};
    return kvrStatusOk;
  }
  const KvrStatus status = sizesOf<Kvr32f>(len, sizes);
  if (status != kvrStatusOk) return status;
  sizes->spec += 56;
  sizes->work += 4 * len + 32;
  return fitInInt(*sizes);
}

template <class T>
KvrStatus initRecord(IdWord word, Record<T>** record, int len, KvrHintAlgorithm hint, Kvr8u* specMem,
                     Kvr8u* initBuf) {
  constexpr int64_t kPart = sizeof(T);
  Sizes sizes;
  const KvrStatus status = sizesOf<T>(len, &sizes);
  if (status != kvrStatusOk) return status;
  if (sizes.initBuf > 0 && initBuf == nullptr) return kvrStatusNullPointer;
  Record<T>* const r = reinterpret_cast<Record<T>*>(alignUp(specMem));
  std::memset(static_cast<void*>(r), 0, sizeof *r);
  Tables<T> tables(r);
  tables.template take<Record<T>>(1, alignof(Record<T>));
  r->len = len;
  r->hint = hint;
  r->workSize =
      sizes.work > 0 ? static_cast<int32_t>(sizes.work - static_cast<int64_t>(kBufferAlignment)) : 0;
  r->scale0 = static_cast<T>(1.0 / std::sqrt(static_cast<double>(len)));

  const bool isForward = word == kWordFwd32f || word == kWordFwd64f;
  const int n = pointsOf(len);
  const int64_t room = r->workSize / kPart;
  if (isPowerOfTwo(len)) {
    r->method = len < 9 ? Method::kSmall : Method::kFft;
  } else {
    const bool isProduct = len <= kLastOnStack || n <= dft::kLastShort || dft::factorsOf(n).count > 0;
    r->method = isProduct ? Method::kMixed : Method::kChirp;
  }
  if (r->method != Method::kSmall) makeTurns(r, &tables, isForward);
  int64_t inner = 0;
  if (r->method == Method::kFft) {
    const int order = orderOf(n);
    if (order > kLastWithoutTables) {
      makeFft(r, &tables, fft::Kind::kPlanes, order, initBuf);
      inner = r->fft.present()->workSize / kPart;
    }
  } else if (r->method == Method::kMixed) {
    makeMixed(r, &tables, n);
    inner = 2 * int64_t{n};
  } else if (r->method == Method::kChirp) {
    int64_t length = dft::chirpLength(n);
    if (!isPowerOfTwo(length) && 4 * length > room) length = convolutionLength(n);
    makeChirp(r, &tables, n, length, initBuf, specMem + sizes.spec,
              sizes.initBuf - static_cast<int64_t>(kBufferAlignment));
  }
  r->isApart = 4 * int64_t{n} + inner <= room || r->method == Method::kChirp;
  r->idWord = word;
  *record = r;
  return kvrStatusOk;
}

KvrStatus initRecord(IdWord word, IntegerRecord** record, int len, KvrHintAlgorithm hint, Kvr8u* specMem,
                     Kvr8u* initBuf) {
  Sizes sizes;
  KvrStatus status = integerSizesOf(len, &sizes);
  if (status != kvrStatusOk) return status;
  IntegerRecord* const r = reinterpret_cast<IntegerRecord*>(alignUp(specMem));
  std::memset(static_cast<void*>(r), 0, sizeof *r);
  if (len > 1) {
    Record<Kvr32f>* floats;
    status = initRecord(word == kWordFwd16s ? kWordFwd32f : kWordInv32f, &floats, len, kvrHintFast,
                        reinterpret_cast<Kvr8u*>(r + 1), initBuf);
    if (status != kvrStatusOk) return status;
    r->floats.set(floats);
    r->workSize = static_cast<int32_t>(sizes.work - static_cast<int64_t>(kBufferAlignment));
  }
  r->len = len;
  r->hint = hint;
  r->idWord = word;
  *record = r;
  return kvrStatusOk;
}

template KvrStatus sizesOf<Kvr32f>(int, Sizes*);
template KvrStatus sizesOf<Kvr64f>(int, Sizes*);
template KvrStatus initRecord(IdWord, Record<Kvr32f>**, int, KvrHintAlgorithm, Kvr8u*, Kvr8u*);
template KvrStatus initRecord(IdWord, Record<Kvr64f>**, int, KvrHintAlgorithm, Kvr8u*, Kvr8u*);

}  // namespace kvrs::dct
