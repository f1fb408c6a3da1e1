// The real transforms of any length. Those of even length are complex ones of half as many numbers and a split; those of
// odd length are rows of real and complex numbers (RealRows), or complex where that is short or a convolution.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "kvrs/fft.h"
#include "transforms/dft_spec.h"
#include "transforms/kernels/real-inl.h"
#include "transforms/packing.h"

namespace kvrs::dft {
namespace {

using unaligned::get;
using unaligned::put;

// A real context of this library for a power of two.
template <Packing kPacking>
KvrStatus fftForward(const Kvr32f* src, Kvr32f* dst, const void* spec, Kvr8u* work) {
  const auto* r = static_cast<const KvrsFFTSpec_R_32f*>(spec);
  if constexpr (kPacking == Packing::kPerm) return kvrsFFTFwd_RToPerm_32f(src, dst, r, work);
  if constexpr (kPacking == Packing::kPack) return kvrsFFTFwd_RToPack_32f(src, dst, r, work);
  return kvrsFFTFwd_RToCCS_32f(src, dst, r, work);
}
template <Packing kPacking>
KvrStatus fftForward(const Kvr64f* src, Kvr64f* dst, const void* spec, Kvr8u* work) {
  const auto* r = static_cast<const KvrsFFTSpec_R_64f*>(spec);
  if constexpr (kPacking == Packing::kPerm) return kvrsFFTFwd_RToPerm_64f(src, dst, r, work);
  if constexpr (kPacking == Packing::kPack) return kvrsFFTFwd_RToPack_64f(src, dst, r, work);
  return kvrsFFTFwd_RToCCS_64f(src, dst, r, work);
}
template <Packing kPacking>
KvrStatus fftInverse(const Kvr32f* src, Kvr32f* dst, const void* spec, Kvr8u* work) {
  const auto* r = static_cast<const KvrsFFTSpec_R_32f*>(spec);
  if constexpr (kPacking == Packing::kPerm) return kvrsFFTInv_PermToR_32f(src, dst, r, work);
  if constexpr (kPacking == Packing::kPack) return kvrsFFTInv_PackToR_32f(src, dst, r, work);
  return kvrsFFTInv_CCSToR_32f(src, dst, r, work);
}
template <Packing kPacking>
KvrStatus fftInverse(const Kvr64f* src, Kvr64f* dst, const void* spec, Kvr8u* work) {
  const auto* r = static_cast<const KvrsFFTSpec_R_64f*>(spec);
  if constexpr (kPacking == Packing::kPerm) return kvrsFFTInv_PermToR_64f(src, dst, r, work);
  if constexpr (kPacking == Packing::kPack) return kvrsFFTInv_PackToR_64f(src, dst, r, work);
  return kvrsFFTInv_CCSToR_64f(src, dst, r, work);
}

template <class T>
void evenForward(const Record<T>* spec, const T* src, T* dst, T* work, T scale) {
  runCore(spec->core, Points<const T>::ofPairs(src), Points<T>::ofPairs(dst), work, scale);
  const T re = get(dst), im = get(dst + 1);
  put(re + im, dst);
  put(re - im, dst + 1);
  const size_t half = static_cast<size_t>(spec->len) / 2;
  if (half > 1) fft::splitSpectrumOfAny(fft::SplitForward(), dst, dst, half, spec->halves);
}

// From the first and the last term and the pairs in their places in src.
template <class T>
void evenInverse(const Record<T>* spec, T first, T last, const T* src, T* dst, T* work, T scale) {
  const size_t half = static_cast<size_t>(spec->len) / 2;
  if (half > 1) fft::splitSpectrumOfAny(fft::SplitInverse(), src, dst, half, spec->halves);
  put(first + last, dst);
  put(first - last, dst + 1);
  const auto points = Points<T>::ofPairs(dst).exchanged();
  runCore(spec->core, asSource(points), points, work, scale);
}

// All n numbers of the spectrum of an odd length out of Perm, exchanged.
template <class T>
void wholeExchanged(const T* src, size_t n, T* pairs) {
  pairs[0] = 0;
  pairs[1] = get(src);
  for (size_t k = 1; 2 * k < n; ++k) {
    const T re = get(src + 2 * k - 1), im = get(src + 2 * k);
    pairs[2 * k] = im;
    pairs[2 * k + 1] = re;
    pairs[2 * (n - k)] = -im;
    pairs[2 * (n - k) + 1] = re;
  }
}

inline constexpr size_t kMostOdd = 49;  // of a transform that needs no work area

// X[k] of the spectrum of n points in its place, whichever half k is of.
template <class T>
void putTerm(T* perm, size_t n, size_t k, T re, T im) {
  if (2 * k < n) {
    put(re, perm + 2 * k - 1);
    put(im, perm + 2 * k);
  } else {
    put(re, perm + 2 * (n - k) - 1);
    put(-im, perm + 2 * (n - k));
  }
}

// Perm, which is Pack.
template <class T>
void oddForward(const Record<T>* spec, const T* src, T* dst, T* work, T scale) {
  const size_t n = static_cast<size_t>(spec->len), pairs = (n - 1) / 2;
  const Core<T>& core = spec->core;
  if (spec->rows.r > 0) {
    // Rows of m numbers: the real one, those of the complex ones, and an imaginary one for the real one.
    const size_t m = static_cast<size_t>(spec->rows.m);
    T* const zeros = work + n;
    T* const inner = zeros + m;
    spec->rows.forward(src, work);
    for (size_t p = 0; p < m; ++p) zeros[p] = 0;
    const auto real = Points<T>::ofPlanes(work, zeros);
    runCore(core, asSource(real), real, inner, scale);
    put(work[0], dst);
    const size_t r = n / m;
    for (size_t q = 1; r * q <= pairs; ++q) putTerm(dst, n, r * q, work[q], zeros[q]);
    for (size_t j = 1; 2 * j < r; ++j) {
      T* const re = work + (2 * j - 1) * m;
      const auto row = Points<T>::ofPlanes(re, re + m);
      runCore(core, asSource(row), row, inner, scale);
      for (size_t q = 0; q < m; ++q) putTerm(dst, n, r * q + j, re[q], re[m + q]);
    }
  } else if (core.method == Method::kChirp) {
    movePoints(n, Points<const T>::ofPlanes(src, nullptr), Points<T>::ofPairs(work), scale);
    runChirp(core, work, work + 2 * static_cast<size_t>(core.length));
    put(work[0], dst);
    movePoints(pairs, Points<const T>::ofPairs(work + 2), Points<T>::ofPairs(dst + 1), T(1));
  } else {
    T whole[2 * kMostOdd];
    runCore(core, Points<const T>::ofPlanes(src, nullptr), Points<T>::ofPairs(whole), work, scale);
    put(whole[0], dst);
    movePoints(pairs, Points<const T>::ofPairs(whole + 2), Points<T>::ofPairs(dst + 1), T(1));
  }
}

template <class T>
void oddInverse(const Record<T>* spec, const T* src, T* dst, T* work, T scale) {
  const size_t n = static_cast<size_t>(spec->len);
  const Core<T>& core = spec->core;
  if (spec->rows.r > 0) {
    const size_t m = static_cast<size_t>(spec->rows.m), r = n / m;
    T* const other = work + n;
    T* const inner = other + m;
    // X[k] for any k but 0; conjugates exchange the halves.
    const auto getTerm = [&](size_t k, T* re, T* im) {
      const bool early = 2 * k < n;
      const size_t at = early ? k : n - k;
      *re = get(src + 2 * at - 1);
      *im = early ? get(src + 2 * at) : -get(src + 2 * at);
    };
    work[0] = get(src);
    other[0] = 0;
    for (size_t q = 1; q < m; ++q) getTerm(r * q, work + q, other + q);
    const auto real = Points<T>::ofPlanes(work, other).exchanged();
    runCore(core, asSource(real), real, inner, T(1));
    for (size_t j = 1; 2 * j < r; ++j) {
      T* const re = work + (2 * j - 1) * m;
      for (size_t q = 0; q < m; ++q) getTerm(r * q + j, re + q, re + m + q);
      const auto row = Points<T>::ofPlanes(re, re + m).exchanged();
      runCore(core, asSource(row), row, inner, T(1));
    }
    spec->rows.inverse(work, dst, scale);
  } else if (core.method == Method::kChirp) {
    wholeExchanged(src, n, work);
    runChirp(core, work, work + 2 * static_cast<size_t>(core.length));
    for (size_t i = 0; i < n; ++i) put(work[2 * i + 1] * scale, dst + i);
  } else {
    T whole[2 * kMostOdd];
    wholeExchanged(src, n, whole);
    const auto points = Points<T>::ofPairs(whole);
    runCore(core, asSource(points), points, work, scale);
    for (size_t i = 0; i < n; ++i) put(whole[2 * i + 1], dst + i);
  }
}

template <Packing kPacking, class T>
KvrStatus realForward(const Record<T>* spec, const T* src, T* dst, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  if (spec->fftSpec != nullptr) return fftForward<kPacking>(src, dst, spec->fftSpec, work.as<Kvr8u>());
  const T scale = spec->scaleFwd ? spec->scale : T(1);
  const size_t n = static_cast<size_t>(spec->len);
  n % 2 == 0 ? evenForward(spec, src, dst, work.as<T>(), scale)
             : oddForward(spec, src, dst, work.as<T>(), scale);
  packFromPerm<kPacking>(dst, n);
  return kvrStatusOk;
}

template <Packing kPacking, class T>
KvrStatus realInverse(const Record<T>* spec, const T* src, T* dst, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  if (spec->fftSpec != nullptr) return fftInverse<kPacking>(src, dst, spec->fftSpec, work.as<Kvr8u>());
  const T scale = spec->scaleInv ? spec->scale : T(1);
  const size_t n = static_cast<size_t>(spec->len);
  const bool even = n % 2 == 0;
  const T first = get(src), last = even ? get(src + lastTerm<kPacking>(n)) : first;
  // Of an odd length CCS has a zero before the pairs; of an even one they are in their places.
  if (even ? kPacking == Packing::kPack : kPacking == Packing::kCcs) {
    permFromPack<kPacking>(src, dst, n);
    src = dst;
  }
  even ? evenInverse(spec, first, last, src, dst, work.as<T>(), scale)
       : oddInverse(spec, src, dst, work.as<T>(), scale);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::dft

using kvrs::Packing;
using kvrs::dft::Kind;
using kvrs::dft::realForward;
using kvrs::dft::realInverse;
using kvrs::dft::release;

KvrStatus kvrsDFTInitAlloc_R_32f(KvrsDFTSpec_R_32f** spec, int len, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return kvrs::dft::initAlloc(Kind::kReal, kvrs::dft::kWordR32f, spec, len, flag, hint);
}

KvrStatus kvrsDFTFree_R_32f(KvrsDFTSpec_R_32f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR32f));
  release<Kvr32f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTGetBufSize_R_32f(const KvrsDFTSpec_R_32f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dft::kWordR32f));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTFwd_RToPerm_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR32f), pointers(src, dst));
  return realForward<Packing::kPerm, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTFwd_RToPack_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR32f), pointers(src, dst));
  return realForward<Packing::kPack, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTFwd_RToCCS_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR32f), pointers(src, dst));
  return realForward<Packing::kCcs, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTInv_PermToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR32f), pointers(src, dst));
  return realInverse<Packing::kPerm, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTInv_PackToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR32f), pointers(src, dst));
  return realInverse<Packing::kPack, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTInv_CCSToR_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDFTSpec_R_32f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR32f), pointers(src, dst));
  return realInverse<Packing::kCcs, Kvr32f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTInitAlloc_R_64f(KvrsDFTSpec_R_64f** spec, int len, int flag,
                                 KvrHintAlgorithm hint) noexcept {
  return kvrs::dft::initAlloc(Kind::kReal, kvrs::dft::kWordR64f, spec, len, flag, hint);
}

KvrStatus kvrsDFTFree_R_64f(KvrsDFTSpec_R_64f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR64f));
  release<Kvr64f>(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDFTGetBufSize_R_64f(const KvrsDFTSpec_R_64f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dft::kWordR64f));
  *size = spec->workSize;
  return kvrStatusOk;
}

KvrStatus kvrsDFTFwd_RToPerm_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR64f), pointers(src, dst));
  return realForward<Packing::kPerm, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTFwd_RToPack_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR64f), pointers(src, dst));
  return realForward<Packing::kPack, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTFwd_RToCCS_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR64f), pointers(src, dst));
  return realForward<Packing::kCcs, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTInv_PermToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR64f), pointers(src, dst));
  return realInverse<Packing::kPerm, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTInv_PackToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                 Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR64f), pointers(src, dst));
  return realInverse<Packing::kPack, Kvr64f>(spec, src, dst, buffer);
}

KvrStatus kvrsDFTInv_CCSToR_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDFTSpec_R_64f* spec,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dft::kWordR64f), pointers(src, dst));
  return realInverse<Packing::kCcs, Kvr64f>(spec, src, dst, buffer);
}
