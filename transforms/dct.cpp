// The cosine transforms of floating-point numbers.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "transforms/dct_spec.h"
#include "transforms/fft_engine.h"
#include "transforms/kernels/dct-inl.h"

namespace kvrs::dct {
namespace {

// cos(k pi / 16).
template <class T>
inline constexpr T kCos[] = {
    static_cast<T>(1),
    static_cast<T>(0.98078528040323044913L),
    static_cast<T>(0.92387953251128675613L),
    static_cast<T>(0.83146961230254523708L),
    static_cast<T>(0.70710678118654752440L),
    static_cast<T>(0.55557023301960222474L),
    static_cast<T>(0.38268343236508977173L),
    static_cast<T>(0.19509032201612826785L),
};
template <class T>
constexpr T halfCos(int k) {
  return kCos<T>[k] / 2;
}

template <class T>
void smallForward(int n, const T* src, T* dst) {
  const auto x = [src](int i) { return get(src + i); };
  const auto y = [dst](int k, T value) { put(value, dst + k); };
  if (n == 1) return y(0, x(0));
  if (n == 2) {
    const T a = x(0), b = x(1);
    y(0, (a + b) * kCos<T>[4]);
    y(1, (a - b) * kCos<T>[4]);
  } else if (n == 4) {
    constexpr T c1 = kCos<T>[4] * kCos<T>[2], c3 = kCos<T>[4] * kCos<T>[6];
    const T e0 = x(0) + x(3), e1 = x(1) + x(2), d0 = x(0) - x(3), d1 = x(1) - x(2);
    y(0, (e0 + e1) * T(0.5));
    y(1, d0 * c1 + d1 * c3);
    y(2, (e0 - e1) * T(0.5));
    y(3, d0 * c3 - d1 * c1);
  } else {
    constexpr T c1 = halfCos<T>(1), c2 = halfCos<T>(2), c3 = halfCos<T>(3), c4 = halfCos<T>(4);
    constexpr T c5 = halfCos<T>(5), c6 = halfCos<T>(6), c7 = halfCos<T>(7);
    const T s0 = x(0) + x(7), s1 = x(1) + x(6), s2 = x(2) + x(5), s3 = x(3) + x(4);
    const T d0 = x(0) - x(7), d1 = x(1) - x(6), d2 = x(2) - x(5), d3 = x(3) - x(4);
    const T e0 = s0 + s3, e1 = s1 + s2, f0 = s0 - s3, f1 = s1 - s2;
    y(0, (e0 + e1) * c4);
    y(1, (d0 * c1 + d1 * c3) + (d2 * c5 + d3 * c7));
    y(2, f0 * c2 + f1 * c6);
    y(3, (d0 * c3 - d1 * c7) - (d2 * c1 + d3 * c5));
    y(4, (e0 - e1) * c4);
    y(5, (d0 * c5 - d1 * c1) + (d2 * c7 + d3 * c3));
    y(6, f0 * c6 - f1 * c2);
    y(7, (d0 * c7 - d1 * c5) + (d2 * c3 - d3 * c1));
  }
}

template <class T>
void smallInverse(int n, const T* src, T* dst) {
  const auto x = [src](int k) { return get(src + k); };
  const auto y = [dst](int i, T value) { put(value, dst + i); };
  if (n <= 2) return smallForward(n, src, dst);
  if (n == 4) {
    constexpr T c1 = kCos<T>[4] * kCos<T>[2], c3 = kCos<T>[4] * kCos<T>[6];
    const T e0 = (x(0) + x(2)) * T(0.5), e1 = (x(0) - x(2)) * T(0.5);
    const T d0 = x(1) * c1 + x(3) * c3, d1 = x(1) * c3 - x(3) * c1;
    y(0, e0 + d0);
    y(1, e1 + d1);
    y(2, e1 - d1);
    y(3, e0 - d0);
  } else {
    constexpr T c1 = halfCos<T>(1), c2 = halfCos<T>(2), c3 = halfCos<T>(3), c4 = halfCos<T>(4);
    constexpr T c5 = halfCos<T>(5), c6 = halfCos<T>(6), c7 = halfCos<T>(7);
    const T e0 = (x(0) + x(4)) * c4, e1 = (x(0) - x(4)) * c4;
    const T f0 = x(2) * c2 + x(6) * c6, f1 = x(2) * c6 - x(6) * c2;
    const T s0 = e0 + f0, s3 = e0 - f0, s1 = e1 + f1, s2 = e1 - f1;
    const T d0 = (x(1) * c1 + x(3) * c3) + (x(5) * c5 + x(7) * c7);
    const T d1 = (x(1) * c3 - x(3) * c7) - (x(5) * c1 + x(7) * c5);
    const T d2 = (x(1) * c5 - x(3) * c1) + (x(5) * c7 + x(7) * c3);
    const T d3 = (x(1) * c7 - x(3) * c5) + (x(5) * c3 - x(7) * c1);
    y(0, s0 + d0);
    y(1, s1 + d1);
    y(2, s2 + d2);
    y(3, s3 + d3);
    y(4, s3 - d3);
    y(5, s2 - d2);
    y(6, s1 - d1);
    y(7, s0 - d0);
  }
}

template <class T>
inline constexpr fft::Record<T> kNoTables{};

// Where the numbers lie while they are worked on: n of the signal and n of the spectrum, which may be one area, real and
// imaginary parts apart, and what the complex transform needs.
template <class T>
struct Areas {
  T *re, *im, *specRe, *specIm, *inner;

  Areas(const Record<T>& r, size_t n, T* work) {
    T* spectrum;
    if (r.method == Method::kChirp) {
      // Before and after the convolution there is room: at the end of its area, and behind the numbers at the start. It
      // copies its input to the start and its output from there.
      const size_t length = static_cast<size_t>(r.chirpLength);
      re = work + 2 * length - 2 * n;
      spectrum = work + 2 * n;
      inner = work;
    } else {
      re = work;
      spectrum = r.isApart ? work + 2 * n : work;
      inner = spectrum + 2 * n;
    }
    im = re + n;
    specRe = spectrum;
    specIm = specRe + n;
  }
};

// The complex transform; real and imaginary parts exchanged make it the inverse one.
template <class T>
void transform(const Record<T>& r, size_t n, T* re, T* im, T* toRe, T* toIm, T* inner) {
  if (r.method == Method::kFft) {
    const fft::Record<T>* const tables = r.fft.get();
    const fft::Record<T>& f = tables != nullptr ? *tables : kNoTables<T>;
    T* const work = f.workSize > 0 ? inner : nullptr;
    return fft::transformPlanes(f, __builtin_ctzll(n), re, im, toRe, toIm, work, T(1));
  }
  const auto src = dft::Points<const T>::ofPlanes(re, im);
  const auto dst = dft::Points<T>::ofPlanes(toRe, toIm);
  dft::Core<T> core;
  if (r.mixed.get() != nullptr) loadMixed(*r.mixed.present(), &core.mixed);
  if (r.method == Method::kMixed) return dft::runMixed(core.mixed, src, dst, inner, T(1));
  core.n = static_cast<int>(n);
  core.method = dft::Method::kChirp;
  core.length = r.chirpLength;
  core.chirp = r.chirp.present();
  core.spectrum = r.spectrum.present();
  core.fft = r.fft.get();
  dft::runCore(core, src, dst, inner, T(1));
}

template <class T>
void forwardIn(const Record<T>& r, const T* src, T* dst, T* work) {
  const size_t len = static_cast<size_t>(r.len), n = static_cast<size_t>(pointsOf(r.len));
  const Areas<T> areas(r, n, work);
  const bool even = n != len;
  if (even) {
    sortEven(src, n, areas.re, areas.im);
  } else {
    sortOdd(src, n, areas.re);
    std::memset(static_cast<void*>(areas.im), 0, n * sizeof(T));
  }
  transform(r, n, areas.re, areas.im, areas.specRe, areas.specIm, areas.inner);
  even ? rotateEven(areas.specRe, areas.specIm, n, r.scale0, r.turns.present(), dst)
       : rotateOdd(areas.specRe, areas.specIm, n, r.scale0, r.turns.present(), dst);
}

template <class T>
void inverseIn(const Record<T>& r, const T* src, T* dst, T* work) {
  const size_t len = static_cast<size_t>(r.len), n = static_cast<size_t>(pointsOf(r.len));
  const Areas<T> areas(r, n, work);
  const bool even = n != len;
  even ? unrotateEven(src, n, r.scale0, r.turns.present(), areas.specRe, areas.specIm)
       : unrotateOdd(src, n, r.scale0, r.turns.present(), areas.specRe, areas.specIm);
  transform(r, n, areas.specIm, areas.specRe, areas.im, areas.re, areas.inner);
  even ? unsortEven(areas.re, areas.im, n, dst) : unsortOdd(areas.re, n, dst);
}

// Lengths that have room on the stack do not look at their work area.
template <class T>
bool isOnStack(const Record<T>& r) {
  return r.method == Method::kMixed && r.len <= kLastOnStack;
}

}  // namespace

template <class T>
void forward(const Record<T>& r, const T* src, T* dst, T* work) {
  if (r.method == Method::kSmall) return smallForward(r.len, src, dst);
  if (!isOnStack(r)) return forwardIn(r, src, dst, work);
  alignas(64) T area[6 * kLastOnStack];
  forwardIn(r, src, dst, area);
}

template <class T>
void inverse(const Record<T>& r, const T* src, T* dst, T* work) {
  if (r.method == Method::kSmall) return smallInverse(r.len, src, dst);
  if (!isOnStack(r)) return inverseIn(r, src, dst, work);
  alignas(64) T area[6 * kLastOnStack];
  inverseIn(r, src, dst, area);
}

template void forward(const Record<Kvr32f>&, const Kvr32f*, Kvr32f*, Kvr32f*);
template void inverse(const Record<Kvr32f>&, const Kvr32f*, Kvr32f*, Kvr32f*);

namespace {

// The arguments checked but for the allocation of a work area.
template <class T>
KvrStatus run(void (*transform)(const Record<T>&, const T*, T*, T*), const T* src, T* dst,
              const Record<T>* spec, Kvr8u* buffer) {
  const WorkArea work(spec->workSize, buffer);
  if (!work.ok()) return kvrStatusOutOfMemory;
  transform(*spec, src, dst, work.as<T>());
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::dct

using kvrs::dct::bufSize;
using kvrs::dct::release;
using kvrs::dct::run;
using kvrs::dct::sizesOf;

KvrStatus kvrsDCTFwdGetSize_32f(int len, KvrHintAlgorithm, int* specSize, int* initBufSize,
                                int* workSize) noexcept {
  return kvrs::dct::getSize(sizesOf<Kvr32f>, len, specSize, initBufSize, workSize);
}

KvrStatus kvrsDCTFwdInit_32f(KvrsDCTFwdSpec_32f** spec, int len, KvrHintAlgorithm hint, Kvr8u* specMem,
                             Kvr8u* initBuf) noexcept {
  return kvrs::dct::init<kvrs::dct::Record<Kvr32f>>(kvrs::dct::kWordFwd32f, spec, len, hint, specMem,
                                                    initBuf);
}

KvrStatus kvrsDCTFwdInitAlloc_32f(KvrsDCTFwdSpec_32f** spec, int len, KvrHintAlgorithm hint) noexcept {
  return kvrs::dct::initAlloc<kvrs::dct::Record<Kvr32f>>(sizesOf<Kvr32f>, kvrs::dct::kWordFwd32f, spec, len,
                                                         hint);
}

KvrStatus kvrsDCTFwdFree_32f(KvrsDCTFwdSpec_32f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordFwd32f));
  release(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTFwdGetBufSize_32f(const KvrsDCTFwdSpec_32f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dct::kWordFwd32f));
  *size = bufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTFwd_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDCTFwdSpec_32f* spec,
                         Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordFwd32f), pointers(src, dst));
  return run<Kvr32f>(kvrs::dct::forward, src, dst, spec, buffer);
}

KvrStatus kvrsDCTFwd_32f_I(Kvr32f* srcDst, const KvrsDCTFwdSpec_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordFwd32f), pointers(srcDst));
  return run<Kvr32f>(kvrs::dct::forward, srcDst, srcDst, spec, buffer);
}

KvrStatus kvrsDCTInvInit_32f(KvrsDCTInvSpec_32f** spec, int len, KvrHintAlgorithm hint, Kvr8u* specMem,
                             Kvr8u* initBuf) noexcept {
  return kvrs::dct::init<kvrs::dct::Record<Kvr32f>>(kvrs::dct::kWordInv32f, spec, len, hint, specMem,
                                                    initBuf);
}

KvrStatus kvrsDCTInvInitAlloc_32f(KvrsDCTInvSpec_32f** spec, int len, KvrHintAlgorithm hint) noexcept {
  return kvrs::dct::initAlloc<kvrs::dct::Record<Kvr32f>>(sizesOf<Kvr32f>, kvrs::dct::kWordInv32f, spec, len,
                                                         hint);
}

KvrStatus kvrsDCTInvFree_32f(KvrsDCTInvSpec_32f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordInv32f));
  release(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTInvGetBufSize_32f(const KvrsDCTInvSpec_32f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dct::kWordInv32f));
  *size = bufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTInv_32f(const Kvr32f* src, Kvr32f* dst, const KvrsDCTInvSpec_32f* spec,
                         Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordInv32f), pointers(src, dst));
  return run<Kvr32f>(kvrs::dct::inverse, src, dst, spec, buffer);
}

KvrStatus kvrsDCTInv_32f_I(Kvr32f* srcDst, const KvrsDCTInvSpec_32f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordInv32f), pointers(srcDst));
  return run<Kvr32f>(kvrs::dct::inverse, srcDst, srcDst, spec, buffer);
}

KvrStatus kvrsDCTFwdGetSize_64f(int len, KvrHintAlgorithm, int* specSize, int* initBufSize,
                                int* workSize) noexcept {
  return kvrs::dct::getSize(sizesOf<Kvr64f>, len, specSize, initBufSize, workSize);
}

KvrStatus kvrsDCTFwdInit_64f(KvrsDCTFwdSpec_64f** spec, int len, KvrHintAlgorithm hint, Kvr8u* specMem,
                             Kvr8u* initBuf) noexcept {
  return kvrs::dct::init<kvrs::dct::Record<Kvr64f>>(kvrs::dct::kWordFwd64f, spec, len, hint, specMem,
                                                    initBuf);
}

KvrStatus kvrsDCTFwdInitAlloc_64f(KvrsDCTFwdSpec_64f** spec, int len, KvrHintAlgorithm hint) noexcept {
  return kvrs::dct::initAlloc<kvrs::dct::Record<Kvr64f>>(sizesOf<Kvr64f>, kvrs::dct::kWordFwd64f, spec, len,
                                                         hint);
}

KvrStatus kvrsDCTFwdFree_64f(KvrsDCTFwdSpec_64f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordFwd64f));
  release(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTFwdGetBufSize_64f(const KvrsDCTFwdSpec_64f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dct::kWordFwd64f));
  *size = bufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTFwd_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDCTFwdSpec_64f* spec,
                         Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordFwd64f), pointers(src, dst));
  return run<Kvr64f>(kvrs::dct::forward, src, dst, spec, buffer);
}

KvrStatus kvrsDCTFwd_64f_I(Kvr64f* srcDst, const KvrsDCTFwdSpec_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordFwd64f), pointers(srcDst));
  return run<Kvr64f>(kvrs::dct::forward, srcDst, srcDst, spec, buffer);
}

KvrStatus kvrsDCTInvInit_64f(KvrsDCTInvSpec_64f** spec, int len, KvrHintAlgorithm hint, Kvr8u* specMem,
                             Kvr8u* initBuf) noexcept {
  return kvrs::dct::init<kvrs::dct::Record<Kvr64f>>(kvrs::dct::kWordInv64f, spec, len, hint, specMem,
                                                    initBuf);
}

KvrStatus kvrsDCTInvInitAlloc_64f(KvrsDCTInvSpec_64f** spec, int len, KvrHintAlgorithm hint) noexcept {
  return kvrs::dct::initAlloc<kvrs::dct::Record<Kvr64f>>(sizesOf<Kvr64f>, kvrs::dct::kWordInv64f, spec, len,
                                                         hint);
}

KvrStatus kvrsDCTInvFree_64f(KvrsDCTInvSpec_64f* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordInv64f));
  release(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTInvGetBufSize_64f(const KvrsDCTInvSpec_64f* spec, int* size) noexcept {
  KVRS_CHECK(pointers(spec, size), context(spec, kvrs::dct::kWordInv64f));
  *size = bufSize(spec);
  return kvrStatusOk;
}

KvrStatus kvrsDCTInv_64f(const Kvr64f* src, Kvr64f* dst, const KvrsDCTInvSpec_64f* spec,
                         Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordInv64f), pointers(src, dst));
  return run<Kvr64f>(kvrs::dct::inverse, src, dst, spec, buffer);
}

KvrStatus kvrsDCTInv_64f_I(Kvr64f* srcDst, const KvrsDCTInvSpec_64f* spec, Kvr8u* buffer) noexcept {
  KVRS_CHECK(context(spec, kvrs::dct::kWordInv64f), pointers(srcDst));
  return run<Kvr64f>(kvrs::dct::inverse, srcDst, srcDst, spec, buffer);
}
