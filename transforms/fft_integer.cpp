// FFTs of integers. Up to 8 points, and unless accuracy is asked for, those of 16 bits are computed in 32-bit fixed point;
// all others in floating point, by a context of the library's own inside the block.
// SPDX-License-Identifier: MIT
#include "kvrs/fft_integer.h"

#include "frame/check.h"
#include "frame/ref.h"
#include "kvrs/fft.h"
#include "transforms/fft_spec.h"
#include "transforms/integer.h"
#include "transforms/packing.h"

namespace kvrs::fft {

// One record for all of them. Its size is that of the record that callers' sizes were stated for.
struct IntegerRecord {
  uint32_t idWord;
  int32_t order;
  int32_t hint;
  int32_t workSize;
  int32_t ownedByAlloc;
  Ref<uint8_t> floatSpec;     // null in fixed point, and of one point in 16 bits
  int8_t shiftFwd, shiftInv;  // fixed point: what the flag's factor shifts by
  int8_t halfShift;           // and whether it is also sqrt(1/2)
};
static_assert(sizeof(IntegerRecord) <= 32);

namespace {

using integer::Areas;
using integer::narrow;
using integer::widen;
using unaligned::get;
using unaligned::put;

enum IntegerWord : uint32_t {
  kWordC16sc = 1,
  kWordC16s,
  kWordR16s,
  kWordC32sc = 0x434d414c,
  kWordC32s,
  kWordR32s,
  kWordR16s32s,
};

// What tells the contexts apart: the floating-point context inside, and the numbers of data in a work area.
enum class Form { kPairs, kPlanes, kReal };

template <class I, class F, Form kFormOf>
struct Traits {
  using Integer = I;
  using Float = F;
  static constexpr Form kForm = kFormOf;
  static constexpr bool kSixteen = sizeof(I) == 2;  // may be in fixed point
  static constexpr Kind kKind = kFormOf == Form::kReal     ? Kind::kReal
                                : kFormOf == Form::kPlanes ? Kind::kPlanes
                                                           : Kind::kComplex;
  static constexpr int kRecordBytes = kSixteen ? 64 : 32;

  static constexpr int64_t dataBytes(int order) {
    const int64_t n = int64_t{1} << order;
    return static_cast<int64_t>(sizeof(F)) * (kFormOf == Form::kReal ? n + 2 : 2 * n);
  }
};

constexpr int kLastFixedOrder = 3;

constexpr bool isFixed(bool sixteen, int order, KvrHintAlgorithm hint) {
  return sixteen && order <= kLastFixedOrder && (hint == kvrHintNone || hint == kvrHintFast);
}

constexpr int64_t down32(int64_t bytes) {
  return bytes & ~int64_t{31};
}

// The sizes that are stated for fixed point: tables of factors of N (for real signals of N/2 as well), and of a reversal.
template <class X>
Sizes fixedSizes(int order) {
  const int64_t n = int64_t{1} << order;
  const auto tables = [](int64_t points) { return down32(8 * points + 31); };
  const auto reversal = [](int64_t points) { return down32(points / 4 * 4 + 35); };
  const int64_t initBuf = down32(2 * (n / 4) + 33) + 32;
  int64_t spec = tables(n) + reversal(n) + 96, work = 8 * n + 32;
  if (X::kForm == Form::kPlanes) work = 12 * n + 32;
  if (X::kForm == Form::kReal) {
    spec = tables(n / 2) + tables(n) + reversal(n / 2) + 96;
    work = 4 * n + 8 + 32;
  }
  return {static_cast<int>(spec), static_cast<int>(initBuf), static_cast<int>(work)};
}

template <class X>
Sizes integerSizes(int order, KvrHintAlgorithm hint) {
  if (X::kSixteen && order == 0) return {84, 0, 0};
  if (isFixed(X::kSixteen, order, hint)) return fixedSizes<X>(order);
  const Sizes inner = sizesOf<typename X::Float>(X::kKind, order);
  const int initBuf = X::kSixteen || inner.initBuf > 0 ? inner.initBuf + 32 : 0;
  return {inner.spec + X::kRecordBytes + 32, initBuf,
          static_cast<int>(inner.work + X::dataBytes(order) + static_cast<int64_t>(kBufferAlignment))};
}

template <class X>
KvrStatus getIntegerSize(int order, int flag, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                         int* workSize) {
  if (order < 0 || order > 30) return kvrStatusBadFftOrder;
  if (specSize == nullptr || initBufSize == nullptr || workSize == nullptr) return kvrStatusNullPointer;
  if (!knownFlag(flag)) return kvrStatusBadFftFlag;
  if (order > Family<typename X::Float>::kMaxOrder) return kvrStatusBadFftOrder;
  const Sizes sizes = integerSizes<X>(order, hint);
  *specSize = sizes.spec;
  *initBufSize = sizes.initBuf;
  *workSize = sizes.work;
  return kvrStatusOk;
}

template <class X>
KvrStatus initInteger(uint32_t word, IntegerRecord** record, int order, int flag, KvrHintAlgorithm hint,
                      Kvr8u* specMem, Kvr8u* initBuf) {
  using F = typename X::Float;
  if (order < 0 || order > Family<F>::kMaxOrder) return kvrStatusBadFftOrder;
  const Sizes sizes = integerSizes<X>(order, hint);
  if (specMem == nullptr || (sizes.initBuf > 0 && initBuf == nullptr)) return kvrStatusNullPointer;
  Kvr8u* const block = alignUp(specMem);
  IntegerRecord* const r = reinterpret_cast<IntegerRecord*>(block);
  __builtin_memset(static_cast<void*>(r), 0, sizeof *r);
  if (!knownFlag(flag)) return kvrStatusBadFftFlag;
  r->order = order;
  r->hint = hint;
  r->workSize = sizes.work > 0 ? sizes.work - static_cast<int>(kBufferAlignment) : 0;
  if (isFixed(X::kSixteen, order, hint)) {
    const int8_t whole = static_cast<int8_t>(order), root = static_cast<int8_t>(order / 2);
    const bool roots = flag == kvrFftDivBySqrtN;
    r->shiftFwd = flag == kvrFftDivFwdByN ? whole : roots ? root : int8_t{0};
    r->shiftInv = flag == kvrFftDivInvByN ? whole : roots ? root : int8_t{0};
    r->halfShift = roots && order % 2 != 0;
  } else if (!X::kSixteen || order > 0) {
    fft::Record<F>* inner;
    const IdWord innerWord = sizeof(F) == 4 ? (X::kForm == Form::kReal     ? kWordR32f
                                               : X::kForm == Form::kPlanes ? kWordC32f
                                                                           : kWordC32fc)
                                            : (X::kForm == Form::kReal     ? kWordR64f
                                               : X::kForm == Form::kPlanes ? kWordC64f
                                                                           : kWordC64fc);
    const KvrStatus status = initRecord<F>(X::kKind, innerWord, &inner, order, flag, kvrHintNone,
                                           block + X::kRecordBytes, initBuf);
    if (status != kvrStatusOk) return status;
    r->floatSpec.set(reinterpret_cast<uint8_t*>(inner));
  }
  r->idWord = word;
  *record = r;
  return kvrStatusOk;
}

template <class X, class Spec>
KvrStatus init(uint32_t word, Spec** spec, int order, int flag, KvrHintAlgorithm hint, Kvr8u* specMem,
               Kvr8u* initBuf) {
  if (spec == nullptr) return kvrStatusNullPointer;
  IntegerRecord* record;
  const KvrStatus status = initInteger<X>(word, &record, order, flag, hint, specMem, initBuf);
  if (status == kvrStatusOk) *spec = static_cast<Spec*>(record);
  return status;
}

template <class X, class Spec>
KvrStatus initAlloc(uint32_t word, Spec** spec, int order, int flag, KvrHintAlgorithm hint) {
  if (spec == nullptr) return kvrStatusNullPointer;
  int specSize, initBufSize, workSize;
  KvrStatus status = getIntegerSize<X>(order, flag, hint, &specSize, &initBufSize, &workSize);
  if (status != kvrStatusOk) return status;
  Scratch specMem(static_cast<uint64_t>(specSize));
  if (!specMem.ok()) return kvrStatusOutOfMemory;
  const Scratch initBuf(static_cast<uint64_t>(initBufSize));
  if (!initBuf.ok()) return kvrStatusOutOfMemory;
  IntegerRecord* record;
  status = initInteger<X>(word, &record, order, flag, hint, specMem.as<Kvr8u>(), initBuf.as<Kvr8u>());
  if (status != kvrStatusOk) return status;
  specMem.keep();
  record->ownedByAlloc = 1;
  *spec = static_cast<Spec*>(record);
  return kvrStatusOk;
}

void releaseInteger(IntegerRecord* record) {
  record->idWord = 0;
  if (record->ownedByAlloc == 1) kvrFree(record);
}

int integerBufSize(const IntegerRecord* record) {
  return record->workSize < 1 ? 0 : record->workSize + static_cast<int>(kBufferAlignment);
}

// --- fixed point ------------------------------------------------------------------------------------------------

// Values of 16 bits are brought up by 15 - order bits, so that the sums of 2^order of them fit 32. Everything but the
// factor sqrt(1/2) is exact.
struct FixedPoints {
  int64_t re[8], im[8];
};

int64_t timesRootHalf(int64_t v) {
  return (v * 1518500250 + (int64_t{1} << 30)) >> 31;
}

// In place, by two halves; the inverse has the parts exchanged.
void fixedTransform(int64_t* re, int64_t* im, size_t n, size_t stride, int64_t* outRe, int64_t* outIm) {
  if (n == 1) {
    outRe[0] = re[0];
    outIm[0] = im[0];
    return;
  }
  const size_t half = n / 2;
  fixedTransform(re, im, half, 2 * stride, outRe, outIm);
  fixedTransform(re + stride, im + stride, half, 2 * stride, outRe + half, outIm + half);
  for (size_t k = 0; k < half; ++k) {
    int64_t oddRe = outRe[k + half], oddIm = outIm[k + half];
    const size_t eighths = k * 8 / n;  // of a turn
    if (eighths >= 2) {
      const int64_t was = oddRe;
      oddRe = oddIm;
      oddIm = -was;
    }
    if (eighths % 2 != 0) {
      const int64_t sum = oddRe + oddIm, difference = oddIm - oddRe;
      oddRe = timesRootHalf(sum);
      oddIm = timesRootHalf(difference);
    }
    const int64_t evenRe = outRe[k], evenIm = outIm[k];
    outRe[k] = evenRe + oddRe;
    outIm[k] = evenIm + oddIm;
    outRe[k + half] = evenRe - oddRe;
    outIm[k + half] = evenIm - oddIm;
  }
}

// The transform, and by how much its results are still to be shifted right.
int runFixed(const IntegerRecord* spec, bool inverse, int scaleFactor, const FixedPoints& x, FixedPoints* y) {
  const size_t n = size_t{1} << spec->order;
  const int up = 15 - spec->order;
  FixedPoints in{};
  for (size_t i = 0; i < n; ++i) {
    in.re[i] = (inverse ? x.im : x.re)[i] * (int64_t{1} << up);
    in.im[i] = (inverse ? x.re : x.im)[i] * (int64_t{1} << up);
  }
  int64_t* const outRe = inverse ? y->im : y->re;
  int64_t* const outIm = inverse ? y->re : y->im;
  fixedTransform(in.re, in.im, n, 1, outRe, outIm);
  if (spec->halfShift) {
    for (size_t i = 0; i < n; ++i) {
      y->re[i] = y->re[i] * 23170 >> 15;
      y->im[i] = y->im[i] * 23170 >> 15;
    }
  }
  const int bounded = scaleFactor < -256 ? -256 : scaleFactor > 256 ? 256 : scaleFactor;
  return (inverse ? spec->shiftInv : spec->shiftFwd) + bounded + up;
}

Kvr16s stored(int64_t v, int shift) {
  return integer::shifted(static_cast<int32_t>(v), shift);
}

// Parts `step` apart: 2 in pairs, 1 in planes.
void fixedComplex(const IntegerRecord* spec, bool inverse, const Kvr16s* srcRe, const Kvr16s* srcIm,
                  Kvr16s* dstRe, Kvr16s* dstIm, size_t step, int scaleFactor) {
  const size_t n = size_t{1} << spec->order;
  FixedPoints x{}, y;
  for (size_t i = 0; i < n; ++i) {
    x.re[i] = get(srcRe + step * i);
    x.im[i] = get(srcIm + step * i);
  }
  const int shift = runFixed(spec, inverse, scaleFactor, x, &y);
  for (size_t i = 0; i < n; ++i) {
    put(stored(y.re[i], shift), dstRe + step * i);
    put(stored(y.im[i], shift), dstIm + step * i);
  }
}

// To Perm, and from it.
void fixedRealForward(const IntegerRecord* spec, const Kvr16s* src, Kvr16s* dst, int scaleFactor) {
  const size_t n = size_t{1} << spec->order;
  FixedPoints x{}, y;
  for (size_t i = 0; i < n; ++i) x.re[i] = get(src + i);
  const int shift = runFixed(spec, false, scaleFactor, x, &y);
  put(stored(y.re[0], shift), dst);
  put(stored(y.re[n / 2], shift), dst + 1);
  for (size_t k = 1; 2 * k < n; ++k) {
    put(stored(y.re[k], shift), dst + 2 * k);
    put(stored(y.im[k], shift), dst + 2 * k + 1);
  }
}
void fixedRealInverse(const IntegerRecord* spec, const Kvr16s* src, Kvr16s* dst, int scaleFactor) {
  const size_t n = size_t{1} << spec->order;
  FixedPoints x{}, y;
  x.re[0] = get(src);
  x.re[n / 2] = get(src + 1);
  for (size_t k = 1; 2 * k < n; ++k) {
    x.re[k] = x.re[n - k] = get(src + 2 * k);
    x.im[k] = get(src + 2 * k + 1);
    x.im[n - k] = -x.im[k];
  }
  const int shift = runFixed(spec, true, scaleFactor, x, &y);
  for (size_t i = 0; i < n; ++i) put(stored(y.re[i], shift), dst + i);
}

// --- floating point ---------------------------------------------------------------------------------------------

KvrStatus floatPairs(bool inverse, Kvr32f* data, const uint8_t* spec, Kvr8u* work) {
  auto* const x = reinterpret_cast<Kvr32fc*>(data);
  const auto* r = reinterpret_cast<const KvrsFFTSpec_C_32fc*>(spec);
  return inverse ? kvrsFFTInv_CToC_32fc_I(x, r, work) : kvrsFFTFwd_CToC_32fc_I(x, r, work);
}
KvrStatus floatPairs(bool inverse, Kvr64f* data, const uint8_t* spec, Kvr8u* work) {
  auto* const x = reinterpret_cast<Kvr64fc*>(data);
  const auto* r = reinterpret_cast<const KvrsFFTSpec_C_64fc*>(spec);
  return inverse ? kvrsFFTInv_CToC_64fc_I(x, r, work) : kvrsFFTFwd_CToC_64fc_I(x, r, work);
}
KvrStatus floatPlanes(bool inverse, Kvr32f* re, Kvr32f* im, const uint8_t* spec, Kvr8u* work) {
  const auto* r = reinterpret_cast<const KvrsFFTSpec_C_32f*>(spec);
  return inverse ? kvrsFFTInv_CToC_32f_I(re, im, r, work) : kvrsFFTFwd_CToC_32f_I(re, im, r, work);
}
KvrStatus floatPlanes(bool inverse, Kvr64f* re, Kvr64f* im, const uint8_t* spec, Kvr8u* work) {
  const auto* r = reinterpret_cast<const KvrsFFTSpec_C_64f*>(spec);
  return inverse ? kvrsFFTInv_CToC_64f_I(re, im, r, work) : kvrsFFTFwd_CToC_64f_I(re, im, r, work);
}
template <Packing kPacking>
KvrStatus floatReal(bool inverse, Kvr32f* x, const uint8_t* spec, Kvr8u* work) {
  const auto* r = reinterpret_cast<const KvrsFFTSpec_R_32f*>(spec);
  if constexpr (kPacking == Packing::kPerm) {
    return inverse ? kvrsFFTInv_PermToR_32f_I(x, r, work) : kvrsFFTFwd_RToPerm_32f_I(x, r, work);
  } else if constexpr (kPacking == Packing::kPack) {
    return inverse ? kvrsFFTInv_PackToR_32f_I(x, r, work) : kvrsFFTFwd_RToPack_32f_I(x, r, work);
  } else {
    return inverse ? kvrsFFTInv_CCSToR_32f_I(x, r, work) : kvrsFFTFwd_RToCCS_32f_I(x, r, work);
  }
}
template <Packing kPacking>
KvrStatus floatReal(bool inverse, Kvr64f* x, const uint8_t* spec, Kvr8u* work) {
  const auto* r = reinterpret_cast<const KvrsFFTSpec_R_64f*>(spec);
  if constexpr (kPacking == Packing::kPerm) {
    return inverse ? kvrsFFTInv_PermToR_64f_I(x, r, work) : kvrsFFTFwd_RToPerm_64f_I(x, r, work);
  } else if constexpr (kPacking == Packing::kPack) {
    return inverse ? kvrsFFTInv_PackToR_64f_I(x, r, work) : kvrsFFTFwd_RToPack_64f_I(x, r, work);
  } else {
    return inverse ? kvrsFFTInv_CCSToR_64f_I(x, r, work) : kvrsFFTFwd_RToCCS_64f_I(x, r, work);
  }
}

// The arguments checked but for the allocation of a work area.
template <class F, class Pair>
KvrStatus pairsTransform(const IntegerRecord* spec, bool inverse, const Pair* src, Pair* dst, int scaleFactor,
                         Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  if constexpr (sizeof(Pair) == 4) {
    if (spec->order == 0) return integer::onePoint(&src->re, &dst->re, 2, scaleFactor), kvrStatusOk;
    if (spec->floatSpec.get() == nullptr) {
      fixedComplex(spec, inverse, &src->re, &src->im, &dst->re, &dst->im, 2, scaleFactor);
      return kvrStatusOk;
    }
  }
  const int numbers = 2 << spec->order;
  const Areas<F> areas(work, static_cast<size_t>(numbers) * sizeof(F));
  widen(&src->re, areas.data, numbers);
  const KvrStatus status = floatPairs(inverse, areas.data, spec->floatSpec.get(), areas.inner);
  if (status != kvrStatusOk) return status;
  return narrow(areas.data, &dst->re, numbers, scaleFactor);
}

template <class F, class I>
KvrStatus planesTransform(const IntegerRecord* spec, bool inverse, const I* srcRe, const I* srcIm, I* dstRe,
                          I* dstIm, int scaleFactor, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  if constexpr (sizeof(I) == 2) {
    if (spec->order == 0) {
      integer::onePoint(srcRe, dstRe, 1, scaleFactor);
      integer::onePoint(srcIm, dstIm, 1, scaleFactor);
      return kvrStatusOk;
    }
    if (spec->floatSpec.get() == nullptr) {
      fixedComplex(spec, inverse, srcRe, srcIm, dstRe, dstIm, 1, scaleFactor);
      return kvrStatusOk;
    }
  }
  const int n = 1 << spec->order;
  const Areas<F> areas(work, 2 * static_cast<size_t>(n) * sizeof(F));
  F* const im = areas.data + n;
  widen(srcRe, areas.data, n);
  widen(srcIm, im, n);
  const KvrStatus status = floatPlanes(inverse, areas.data, im, spec->floatSpec.get(), areas.inner);
  if (status != kvrStatusOk) return status;
  narrow(areas.data, dstRe, n, scaleFactor);
  return narrow(im, dstIm, n, scaleFactor);
}

// Numbers of a packed spectrum of n points.
template <Packing kPacking>
constexpr int packedCount(int n) {
  return kPacking == Packing::kCcs ? (n == 1 ? 2 : n + 2) : n;
}

template <Packing kPacking, class F, class I, class O>
KvrStatus realForward(const IntegerRecord* spec, const I* src, O* dst, int scaleFactor, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const int n = 1 << spec->order;
  if constexpr (sizeof(O) == 2) {
    if (spec->floatSpec.get() == nullptr) {
      if (n == 1) {
        integer::onePoint(src, dst, 1, scaleFactor);
        if (kPacking == Packing::kCcs) put(O(0), dst + 1);
      } else {
        fixedRealForward(spec, src, dst, scaleFactor);
        packFromPerm<kPacking>(dst, static_cast<size_t>(n));
      }
      return kvrStatusOk;
    }
  }
  const Areas<F> areas(work, static_cast<size_t>(n + 2) * sizeof(F));
  widen(src, areas.data, n);
  const KvrStatus status = floatReal<kPacking>(false, areas.data, spec->floatSpec.get(), areas.inner);
  if (status != kvrStatusOk) return status;
  return narrow(areas.data, dst, packedCount<kPacking>(n), scaleFactor);
}

template <Packing kPacking, class F, class I, class O>
KvrStatus realInverse(const IntegerRecord* spec, const I* src, O* dst, int scaleFactor, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const int n = 1 << spec->order;
  if constexpr (sizeof(I) == 2) {
    if (spec->floatSpec.get() == nullptr) {
      if (n == 1) {
        integer::onePoint(src, dst, 1, scaleFactor);
      } else {
        I perm[8];
        permFromPack<kPacking>(src, perm, static_cast<size_t>(n));
        fixedRealInverse(spec, perm, dst, scaleFactor);
      }
      return kvrStatusOk;
    }
  }
  const Areas<F> areas(work, static_cast<size_t>(n + 2) * sizeof(F));
  // Of CCS the last number is a zero that is not looked at.
  widen(src, areas.data, kPacking == Packing::kCcs && n > 1 ? n + 1 : n);
  const KvrStatus status = floatReal<kPacking>(true, areas.data, spec->floatSpec.get(), areas.inner);
  if (status != kvrStatusOk) return status;
  return narrow(areas.data, dst, n, scaleFactor);
}

}  // namespace
}  // namespace kvrs::fft

struct KvrsFFTSpec_C_16sc : kvrs::fft::IntegerRecord {};
struct KvrsFFTSpec_C_16s : kvrs::fft::IntegerRecord {};
struct KvrsFFTSpec_R_16s : kvrs::fft::IntegerRecord {};
struct KvrsFFTSpec_C_32sc : kvrs::fft::IntegerRecord {};
struct KvrsFFTSpec_C_32s : kvrs::fft::IntegerRecord {};
struct KvrsFFTSpec_R_32s : kvrs::fft::IntegerRecord {};
struct KvrsFFTSpec_R_16s32s : kvrs::fft::IntegerRecord {};

using kvrs::Packing;
using namespace kvrs::fft;

namespace {

using C16sc = Traits<Kvr16s, Kvr32f, Form::kPairs>;
using C16s = Traits<Kvr16s, Kvr32f, Form::kPlanes>;
using R16s = Traits<Kvr16s, Kvr32f, Form::kReal>;
using C32s = Traits<Kvr32s, Kvr64f, Form::kPlanes>;
using R32s = Traits<Kvr32s, Kvr64f, Form::kReal>;
using R16s32s = Traits<Kvr32s, Kvr32f, Form::kReal>;
using C32sc = Traits<Kvr32s, Kvr64f, Form::kPairs>;

}  // namespace

KvrStatus kvrsFFTGetSize_C_16sc(int order, int flag, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                                int* workSize) noexcept {
  return getIntegerSize<C16sc>(order, flag, hint, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_C_16sc(KvrsFFTSpec_C_16sc** spec, int order, int flag, KvrHintAlgorithm hint,
                             Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return init<C16sc>(kWordC16sc, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_C_16sc(KvrsFFTSpec_C_16sc** spec, int order, int flag,
                                  KvrHintAlgorithm hint) noexcept {
  return initAlloc<C16sc>(kWordC16sc, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_C_16sc(KvrsFFTSpec_C_16sc* spec) noexcept {
  KVRS_CHECK(context(spec, kWordC16sc));
  releaseInteger(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_C_16sc(const KvrsFFTSpec_C_16sc* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kWordC16sc));
  *size = integerBufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_CToC_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, const KvrsFFTSpec_C_16sc* spec,
                                   int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16sc), pointers(src, dst));
  return pairsTransform<Kvr32f>(spec, false, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CToC_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, const KvrsFFTSpec_C_16sc* spec,
                                   int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16sc), pointers(src, dst));
  return pairsTransform<Kvr32f>(spec, true, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_CToC_16sc_ISfs(Kvr16sc* srcDst, const KvrsFFTSpec_C_16sc* spec, int scaleFactor,
                                    Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16sc), pointers(srcDst));
  return pairsTransform<Kvr32f>(spec, false, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CToC_16sc_ISfs(Kvr16sc* srcDst, const KvrsFFTSpec_C_16sc* spec, int scaleFactor,
                                    Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16sc), pointers(srcDst));
  return pairsTransform<Kvr32f>(spec, true, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTGetSize_C_16s(int order, int flag, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                               int* workSize) noexcept {
  return getIntegerSize<C16s>(order, flag, hint, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_C_16s(KvrsFFTSpec_C_16s** spec, int order, int flag, KvrHintAlgorithm hint,
                            Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return init<C16s>(kWordC16s, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_C_16s(KvrsFFTSpec_C_16s** spec, int order, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return initAlloc<C16s>(kWordC16s, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_C_16s(KvrsFFTSpec_C_16s* spec) noexcept {
  KVRS_CHECK(context(spec, kWordC16s));
  releaseInteger(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_C_16s(const KvrsFFTSpec_C_16s* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kWordC16s));
  *size = integerBufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_CToC_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dstRe, Kvr16s* dstIm,
                                  const KvrsFFTSpec_C_16s* spec, int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16s), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr32f>(spec, false, srcRe, srcIm, dstRe, dstIm, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CToC_16s_Sfs(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16s* dstRe, Kvr16s* dstIm,
                                  const KvrsFFTSpec_C_16s* spec, int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16s), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr32f>(spec, true, srcRe, srcIm, dstRe, dstIm, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_CToC_16s_ISfs(Kvr16s* srcDstRe, Kvr16s* srcDstIm, const KvrsFFTSpec_C_16s* spec,
                                   int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16s), pointers(srcDstRe, srcDstIm));
  return planesTransform<Kvr32f>(spec, false, srcDstRe, srcDstIm, srcDstRe, srcDstIm, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CToC_16s_ISfs(Kvr16s* srcDstRe, Kvr16s* srcDstIm, const KvrsFFTSpec_C_16s* spec,
                                   int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC16s), pointers(srcDstRe, srcDstIm));
  return planesTransform<Kvr32f>(spec, true, srcDstRe, srcDstIm, srcDstRe, srcDstIm, scaleFactor, buffer);
}

KvrStatus kvrsFFTGetSize_R_16s(int order, int flag, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                               int* workSize) noexcept {
  return getIntegerSize<R16s>(order, flag, hint, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_R_16s(KvrsFFTSpec_R_16s** spec, int order, int flag, KvrHintAlgorithm hint,
                            Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return init<R16s>(kWordR16s, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_R_16s(KvrsFFTSpec_R_16s** spec, int order, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return initAlloc<R16s>(kWordR16s, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_R_16s(KvrsFFTSpec_R_16s* spec) noexcept {
  KVRS_CHECK(context(spec, kWordR16s));
  releaseInteger(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_R_16s(const KvrsFFTSpec_R_16s* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kWordR16s));
  *size = integerBufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_RToPerm_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realForward<Packing::kPerm, Kvr32f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_RToPack_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realForward<Packing::kPack, Kvr32f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_RToCCS_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                    int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realForward<Packing::kCcs, Kvr32f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_RToPerm_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                      Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(srcDst));
  return realForward<Packing::kPerm, Kvr32f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_RToPack_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                      Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(srcDst));
  return realForward<Packing::kPack, Kvr32f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_RToCCS_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                     Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(srcDst));
  return realForward<Packing::kCcs, Kvr32f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_PermToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realInverse<Packing::kPerm, Kvr32f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_PackToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realInverse<Packing::kPack, Kvr32f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CCSToR_16s_Sfs(const Kvr16s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s* spec,
                                    int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(src, dst));
  return realInverse<Packing::kCcs, Kvr32f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_PermToR_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                      Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(srcDst));
  return realInverse<Packing::kPerm, Kvr32f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_PackToR_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                      Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(srcDst));
  return realInverse<Packing::kPack, Kvr32f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CCSToR_16s_ISfs(Kvr16s* srcDst, const KvrsFFTSpec_R_16s* spec, int scaleFactor,
                                     Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s), pointers(srcDst));
  return realInverse<Packing::kCcs, Kvr32f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInit_C_32sc(KvrsFFTSpec_C_32sc** spec, int order, int flag, KvrHintAlgorithm hint,
                             Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return init<C32sc>(kWordC32sc, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_C_32sc(KvrsFFTSpec_C_32sc** spec, int order, int flag,
                                  KvrHintAlgorithm hint) noexcept {
  return initAlloc<C32sc>(kWordC32sc, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_C_32sc(KvrsFFTSpec_C_32sc* spec) noexcept {
  KVRS_CHECK(context(spec, kWordC32sc));
  releaseInteger(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_C_32sc(const KvrsFFTSpec_C_32sc* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kWordC32sc));
  *size = integerBufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_CToC_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, const KvrsFFTSpec_C_32sc* spec,
                                   int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC32sc), pointers(src, dst));
  return pairsTransform<Kvr64f>(spec, false, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CToC_32sc_Sfs(const Kvr32sc* src, Kvr32sc* dst, const KvrsFFTSpec_C_32sc* spec,
                                   int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC32sc), pointers(src, dst));
  return pairsTransform<Kvr64f>(spec, true, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_CToC_32sc_ISfs(Kvr32sc* srcDst, const KvrsFFTSpec_C_32sc* spec, int scaleFactor,
                                    Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC32sc), pointers(srcDst));
  return pairsTransform<Kvr64f>(spec, false, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CToC_32sc_ISfs(Kvr32sc* srcDst, const KvrsFFTSpec_C_32sc* spec, int scaleFactor,
                                    Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC32sc), pointers(srcDst));
  return pairsTransform<Kvr64f>(spec, true, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTGetSize_C_32s(int order, int flag, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                               int* workSize) noexcept {
  return getIntegerSize<C32s>(order, flag, hint, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_C_32s(KvrsFFTSpec_C_32s** spec, int order, int flag, KvrHintAlgorithm hint,
                            Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return init<C32s>(kWordC32s, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_C_32s(KvrsFFTSpec_C_32s** spec, int order, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return initAlloc<C32s>(kWordC32s, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_C_32s(KvrsFFTSpec_C_32s* spec) noexcept {
  KVRS_CHECK(context(spec, kWordC32s));
  releaseInteger(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_C_32s(const KvrsFFTSpec_C_32s* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kWordC32s));
  *size = integerBufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_CToC_32s_Sfs(const Kvr32s* srcRe, const Kvr32s* srcIm, Kvr32s* dstRe, Kvr32s* dstIm,
                                  const KvrsFFTSpec_C_32s* spec, int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC32s), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr64f>(spec, false, srcRe, srcIm, dstRe, dstIm, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CToC_32s_Sfs(const Kvr32s* srcRe, const Kvr32s* srcIm, Kvr32s* dstRe, Kvr32s* dstIm,
                                  const KvrsFFTSpec_C_32s* spec, int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC32s), pointers(srcRe, srcIm, dstRe, dstIm));
  return planesTransform<Kvr64f>(spec, true, srcRe, srcIm, dstRe, dstIm, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_CToC_32s_ISfs(Kvr32s* srcDstRe, Kvr32s* srcDstIm, const KvrsFFTSpec_C_32s* spec,
                                   int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC32s), pointers(srcDstRe, srcDstIm));
  return planesTransform<Kvr64f>(spec, false, srcDstRe, srcDstIm, srcDstRe, srcDstIm, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CToC_32s_ISfs(Kvr32s* srcDstRe, Kvr32s* srcDstIm, const KvrsFFTSpec_C_32s* spec,
                                   int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordC32s), pointers(srcDstRe, srcDstIm));
  return planesTransform<Kvr64f>(spec, true, srcDstRe, srcDstIm, srcDstRe, srcDstIm, scaleFactor, buffer);
}

KvrStatus kvrsFFTGetSize_R_32s(int order, int flag, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                               int* workSize) noexcept {
  return getIntegerSize<R32s>(order, flag, hint, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_R_32s(KvrsFFTSpec_R_32s** spec, int order, int flag, KvrHintAlgorithm hint,
                            Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return init<R32s>(kWordR32s, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_R_32s(KvrsFFTSpec_R_32s** spec, int order, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return initAlloc<R32s>(kWordR32s, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_R_32s(KvrsFFTSpec_R_32s* spec) noexcept {
  KVRS_CHECK(context(spec, kWordR32s));
  releaseInteger(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_R_32s(const KvrsFFTSpec_R_32s* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kWordR32s));
  *size = integerBufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_RToPerm_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(src, dst));
  return realForward<Packing::kPerm, Kvr64f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_RToPack_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(src, dst));
  return realForward<Packing::kPack, Kvr64f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_RToCCS_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                    int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(src, dst));
  return realForward<Packing::kCcs, Kvr64f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_RToPerm_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                      Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(srcDst));
  return realForward<Packing::kPerm, Kvr64f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_RToPack_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                      Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(srcDst));
  return realForward<Packing::kPack, Kvr64f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTFwd_RToCCS_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                     Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(srcDst));
  return realForward<Packing::kCcs, Kvr64f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_PermToR_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(src, dst));
  return realInverse<Packing::kPerm, Kvr64f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_PackToR_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                     int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(src, dst));
  return realInverse<Packing::kPack, Kvr64f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CCSToR_32s_Sfs(const Kvr32s* src, Kvr32s* dst, const KvrsFFTSpec_R_32s* spec,
                                    int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(src, dst));
  return realInverse<Packing::kCcs, Kvr64f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_PermToR_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                      Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(srcDst));
  return realInverse<Packing::kPerm, Kvr64f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_PackToR_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                      Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(srcDst));
  return realInverse<Packing::kPack, Kvr64f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CCSToR_32s_ISfs(Kvr32s* srcDst, const KvrsFFTSpec_R_32s* spec, int scaleFactor,
                                     Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR32s), pointers(srcDst));
  return realInverse<Packing::kCcs, Kvr64f>(spec, srcDst, srcDst, scaleFactor, buffer);
}

KvrStatus kvrsFFTGetSize_R_16s32s(int order, int flag, KvrHintAlgorithm hint, int* specSize, int* initBufSize,
                                  int* workSize) noexcept {
  return getIntegerSize<R16s32s>(order, flag, hint, specSize, initBufSize, workSize);
}

KvrStatus kvrsFFTInit_R_16s32s(KvrsFFTSpec_R_16s32s** spec, int order, int flag, KvrHintAlgorithm hint,
                               Kvr8u* specMem, Kvr8u* initBuf) noexcept {
  return init<R16s32s>(kWordR16s32s, spec, order, flag, hint, specMem, initBuf);
}

KvrStatus kvrsFFTInitAlloc_R_16s32s(KvrsFFTSpec_R_16s32s** spec, int order, int flag,
                                    KvrHintAlgorithm hint) noexcept {
  return initAlloc<R16s32s>(kWordR16s32s, spec, order, flag, hint);
}

KvrStatus kvrsFFTFree_R_16s32s(KvrsFFTSpec_R_16s32s* spec) noexcept {
  KVRS_CHECK(context(spec, kWordR16s32s));
  releaseInteger(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTGetBufSize_R_16s32s(const KvrsFFTSpec_R_16s32s* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kWordR16s32s));
  *size = integerBufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsFFTFwd_RToCCS_16s32s_Sfs(const Kvr16s* src, Kvr32s* dst, const KvrsFFTSpec_R_16s32s* spec,
                                       int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s32s), pointers(src, dst));
  return realForward<Packing::kCcs, Kvr32f>(spec, src, dst, scaleFactor, buffer);
}

KvrStatus kvrsFFTInv_CCSToR_32s16s_Sfs(const Kvr32s* src, Kvr16s* dst, const KvrsFFTSpec_R_16s32s* spec,
                                       int scaleFactor, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kWordR16s32s), pointers(src, dst));
  return realInverse<Packing::kCcs, Kvr32f>(spec, src, dst, scaleFactor, buffer);
}
