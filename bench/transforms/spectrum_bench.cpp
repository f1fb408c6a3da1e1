// SPDX-License-Identifier: MIT
#include "kvrs/spectrum.h"

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

// The complex terms of a product, which begin at `first`.
template <class T>
inline void loopTerms(const T* a, const T* b, T* dst, int first, int end) {
  for (int i = first; i + 1 < end; i += 2) {
    const T re = a[i] * b[i] - a[i + 1] * b[i + 1];
    const T im = a[i] * b[i + 1] + a[i + 1] * b[i];
    dst[i] = re;
    dst[i + 1] = im;
  }
}

template <class T>
__attribute__((noinline)) void loopMulPerm(const T* a, const T* b, T* dst, int len) {
  dst[0] = a[0] * b[0];
  dst[1] = a[1] * b[1];
  loopTerms(a, b, dst, 2, len);
}

template <class T>
__attribute__((noinline)) void loopMulPermInPlace(const T* a, T* srcDst, int len) {
  srcDst[0] = a[0] * srcDst[0];
  srcDst[1] = a[1] * srcDst[1];
  loopTerms(srcDst, a, srcDst, 2, len);
}

template <class T>
__attribute__((noinline)) void loopMulPack(const T* a, const T* b, T* dst, int len) {
  dst[0] = a[0] * b[0];
  dst[len - 1] = a[len - 1] * b[len - 1];
  loopTerms(a, b, dst, 1, len - 1);
}

template <class T>
__attribute__((noinline)) void loopMulPackConj(const T* a, T* srcDst, int len) {
  srcDst[0] = a[0] * srcDst[0];
  srcDst[len - 1] = a[len - 1] * srcDst[len - 1];
  for (int i = 1; i + 1 < len; i += 2) {
    const T re = a[i] * srcDst[i] + a[i + 1] * srcDst[i + 1];
    const T im = a[i + 1] * srcDst[i] - a[i] * srcDst[i + 1];
    srcDst[i] = re;
    srcDst[i + 1] = im;
  }
}

// In place the elements are small numbers times ones, so that they stay in range however often a case runs.
template <class T>
std::shared_ptr<T> ones(int len) {
  const auto p = array<T>(static_cast<size_t>(len));
  for (int i = 0; i < len; ++i) p.get()[i] = static_cast<T>(i % 2 == 0);
  return p;
}

Register spectrum([] {
  for (int len : kLengths) {
    const std::string n = std::to_string(len);
    const size_t count = static_cast<size_t>(len);
    const auto a = array<Kvr32f>(count), b = array<Kvr32f>(count), dst = array<Kvr32f>(count);
    add("spectrum/MulPerm_32f/" + n, "kvrs", [=] { kvrsMulPerm_32f(a.get(), b.get(), dst.get(), len); });
    add("spectrum/MulPerm_32f/" + n, "loop", [=] { loopMulPerm(a.get(), b.get(), dst.get(), len); });
    add("spectrum/MulPack_32f/" + n, "kvrs", [=] { kvrsMulPack_32f(a.get(), b.get(), dst.get(), len); });
    add("spectrum/MulPack_32f/" + n, "loop", [=] { loopMulPack(a.get(), b.get(), dst.get(), len); });
    const auto permOnes = ones<Kvr32f>(len);
    add("spectrum/MulPerm_32f_I/" + n, "kvrs", [=] { kvrsMulPerm_32f_I(permOnes.get(), b.get(), len); });
    add("spectrum/MulPerm_32f_I/" + n, "loop", [=] { loopMulPermInPlace(permOnes.get(), b.get(), len); });
    const auto packOnes = ones<Kvr32f>(len + 1);
    const Kvr32f* conjOnes = packOnes.get() + 1;
    add("spectrum/MulPackConj_32f_I/" + n, "kvrs",
        [=, keep = packOnes] { kvrsMulPackConj_32f_I(conjOnes, b.get(), len); });
    add("spectrum/MulPackConj_32f_I/" + n, "loop",
        [=, keep = packOnes] { loopMulPackConj(conjOnes, b.get(), len); });
    const auto c = array<Kvr64f>(count), d = array<Kvr64f>(count), e = array<Kvr64f>(count);
    add("spectrum/MulPerm_64f/" + n, "kvrs", [=] { kvrsMulPerm_64f(c.get(), d.get(), e.get(), len); });
    add("spectrum/MulPerm_64f/" + n, "loop", [=] { loopMulPerm(c.get(), d.get(), e.get(), len); });
  }
});

}  // namespace
}  // namespace kvrs::bench
