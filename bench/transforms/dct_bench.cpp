// Cosine transforms beside FFTW's.
// SPDX-License-Identifier: MIT
#include "kvrs/dct.h"

#include "bench/transforms/fftw.h"

namespace kvrs::bench {
namespace {

// A context without flags.
template <class Spec, class Init, class GetBufSize, class Free>
WithWork<Spec> dctContext(int n, Init init, GetBufSize getBufSize, Free free) {
  return withWork<Spec>(
      n, [=](Spec** spec, int len, int, KvrHintAlgorithm hint) { return init(spec, len, hint); }, getBufSize,
      free);
}

void add32(int n) {
  const std::string length = "_32f/" + std::to_string(n);
  const size_t count = static_cast<size_t>(n);
  const auto a = zeros<Kvr32f>(count), b = zeros<Kvr32f>(count);
  const auto forward = dctContext<KvrsDCTFwdSpec_32f>(n, kvrsDCTFwdInitAlloc_32f, kvrsDCTFwdGetBufSize_32f,
                                                      kvrsDCTFwdFree_32f);
  add("dct/Fwd" + length, "kvrs",
      [=] { kvrsDCTFwd_32f(a.get(), b.get(), forward.spec.get(), forward.buffer.get()); });
  addFftw<Kvr32f>("dct/Fwd" + length,
                  [=] { return Fftw<Kvr32f>::cosine(n, a.get(), b.get(), FFTW_REDFT10); });
  const auto inverse = dctContext<KvrsDCTInvSpec_32f>(n, kvrsDCTInvInitAlloc_32f, kvrsDCTInvGetBufSize_32f,
                                                      kvrsDCTInvFree_32f);
  add("dct/Inv" + length, "kvrs",
      [=] { kvrsDCTInv_32f(a.get(), b.get(), inverse.spec.get(), inverse.buffer.get()); });
  addFftw<Kvr32f>("dct/Inv" + length,
                  [=] { return Fftw<Kvr32f>::cosine(n, a.get(), b.get(), FFTW_REDFT01); });
}

void add64(int n) {
  const std::string length = "_64f/" + std::to_string(n);
  const size_t count = static_cast<size_t>(n);
  const auto a = zeros<Kvr64f>(count), b = zeros<Kvr64f>(count);
  const auto forward = dctContext<KvrsDCTFwdSpec_64f>(n, kvrsDCTFwdInitAlloc_64f, kvrsDCTFwdGetBufSize_64f,
                                                      kvrsDCTFwdFree_64f);
  add("dct/Fwd" + length, "kvrs",
      [=] { kvrsDCTFwd_64f(a.get(), b.get(), forward.spec.get(), forward.buffer.get()); });
  addFftw<Kvr64f>("dct/Fwd" + length,
                  [=] { return Fftw<Kvr64f>::cosine(n, a.get(), b.get(), FFTW_REDFT10); });
  const auto inverse = dctContext<KvrsDCTInvSpec_64f>(n, kvrsDCTInvInitAlloc_64f, kvrsDCTInvGetBufSize_64f,
                                                      kvrsDCTInvFree_64f);
  add("dct/Inv" + length, "kvrs",
      [=] { kvrsDCTInv_64f(a.get(), b.get(), inverse.spec.get(), inverse.buffer.get()); });
  addFftw<Kvr64f>("dct/Inv" + length,
                  [=] { return Fftw<Kvr64f>::cosine(n, a.get(), b.get(), FFTW_REDFT01); });
}

void add16(int n) {
  const std::string name = "dct/Fwd_16s_Sfs/" + std::to_string(n);
  const size_t count = static_cast<size_t>(n);
  const auto a = zeros<Kvr16s>(count), b = zeros<Kvr16s>(count);
  const auto x = zeros<Kvr32f>(count);
  const auto made = dctContext<KvrsDCTFwdSpec_16s>(n, kvrsDCTFwdInitAlloc_16s, kvrsDCTFwdGetBufSize_16s,
                                                   kvrsDCTFwdFree_16s);
  add(name, "kvrs", [=] { kvrsDCTFwd_16s_Sfs(a.get(), b.get(), made.spec.get(), 4, made.buffer.get()); });
  addFftw<Kvr32f>(name, [=] { return Fftw<Kvr32f>::cosine(n, x.get(), x.get(), FFTW_REDFT10); });
}

Register dct([] {
  for (int n : {8, 16, 26, 32, 40, 64, 80, 100, 127, 256, 480, 1000, 1009, 1024, 1125, 4096, 10000, 65536}) {
    add32(n);
    add64(n);
  }
  for (int n : {64, 1024}) add16(n);
});

}  // namespace
}  // namespace kvrs::bench
