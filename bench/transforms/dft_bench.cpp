// Transforms of any length beside FFTW.
// SPDX-License-Identifier: MIT
#include "kvrs/dft.h"

#include "bench/transforms/fftw.h"

namespace kvrs::bench {
namespace {

void addPairs32(int n) {
  const std::string name = std::to_string(n);
  const size_t count = static_cast<size_t>(n);
  const auto a = zeros<Kvr32fc>(count), b = zeros<Kvr32fc>(count);
  const auto made =
      withWork<KvrsDFTSpec_C_32fc>(n, kvrsDFTInitAlloc_C_32fc, kvrsDFTGetBufSize_C_32fc, kvrsDFTFree_C_32fc);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("dft/Fwd_CToC_32fc/" + name, "kvrs",
      [=] { kvrsDFTFwd_CToC_32fc(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("dft/Fwd_CToC_32fc/" + name,
                  [=] { return Fftw<Kvr32f>::pairs(n, a.get(), b.get(), FFTW_FORWARD); });
}

void addReal32(int n) {
  const std::string name = std::to_string(n);
  const size_t count = static_cast<size_t>(n) + 2;
  const auto a = zeros<Kvr32f>(count), b = zeros<Kvr32f>(count);
  const auto made =
      withWork<KvrsDFTSpec_R_32f>(n, kvrsDFTInitAlloc_R_32f, kvrsDFTGetBufSize_R_32f, kvrsDFTFree_R_32f);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("dft/Fwd_RToPerm_32f/" + name, "kvrs",
      [=] { kvrsDFTFwd_RToPerm_32f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("dft/Fwd_RToPerm_32f/" + name, [=] { return Fftw<Kvr32f>::forward(n, a.get(), b.get()); });
  add("dft/Inv_PermToR_32f/" + name, "kvrs",
      [=] { kvrsDFTInv_PermToR_32f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("dft/Inv_PermToR_32f/" + name, [=] { return Fftw<Kvr32f>::inverse(n, a.get(), b.get()); });
}

void addPairs64(int n) {
  const std::string name = std::to_string(n);
  const size_t count = static_cast<size_t>(n);
  const auto a = zeros<Kvr64fc>(count), b = zeros<Kvr64fc>(count);
  const auto made =
      withWork<KvrsDFTSpec_C_64fc>(n, kvrsDFTInitAlloc_C_64fc, kvrsDFTGetBufSize_C_64fc, kvrsDFTFree_C_64fc);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("dft/Fwd_CToC_64fc/" + name, "kvrs",
      [=] { kvrsDFTFwd_CToC_64fc(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("dft/Fwd_CToC_64fc/" + name,
                  [=] { return Fftw<Kvr64f>::pairs(n, a.get(), b.get(), FFTW_FORWARD); });
}

void addReal64(int n) {
  const std::string name = std::to_string(n);
  const size_t count = static_cast<size_t>(n) + 2;
  const auto a = zeros<Kvr64f>(count), b = zeros<Kvr64f>(count);
  const auto made =
      withWork<KvrsDFTSpec_R_64f>(n, kvrsDFTInitAlloc_R_64f, kvrsDFTGetBufSize_R_64f, kvrsDFTFree_R_64f);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("dft/Fwd_RToPerm_64f/" + name, "kvrs",
      [=] { kvrsDFTFwd_RToPerm_64f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("dft/Fwd_RToPerm_64f/" + name, [=] { return Fftw<Kvr64f>::forward(n, a.get(), b.get()); });
  add("dft/Inv_PermToR_64f/" + name, "kvrs",
      [=] { kvrsDFTInv_PermToR_64f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("dft/Inv_PermToR_64f/" + name, [=] { return Fftw<Kvr64f>::inverse(n, a.get(), b.get()); });
}

void addPlanes32(int n) {
  const std::string name = std::to_string(n);
  const size_t count = static_cast<size_t>(n);
  const auto a = zeros<Kvr32f>(count), b = zeros<Kvr32f>(count), c = zeros<Kvr32f>(count),
             d = zeros<Kvr32f>(count);
  const auto made =
      withWork<KvrsDFTSpec_C_32f>(n, kvrsDFTInitAlloc_C_32f, kvrsDFTGetBufSize_C_32f, kvrsDFTFree_C_32f);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("dft/Fwd_CToC_32f/" + name, "kvrs",
      [=] { kvrsDFTFwd_CToC_32f(a.get(), b.get(), c.get(), d.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("dft/Fwd_CToC_32f/" + name,
                  [=] { return Fftw<Kvr32f>::planes(n, a.get(), b.get(), c.get(), d.get()); });
}

// Beside the library's own transform in order.
void addOutOfOrder(int n) {
  const std::string name = "dft/OutOrdFwd_CToC_32fc/" + std::to_string(n);
  const size_t count = static_cast<size_t>(n);
  const auto a = zeros<Kvr32fc>(count), b = zeros<Kvr32fc>(count);
  const auto other = withWork<KvrsDFTOutOrdSpec_C_32fc>(
      n, kvrsDFTOutOrdInitAlloc_C_32fc, kvrsDFTOutOrdGetBufSize_C_32fc, kvrsDFTOutOrdFree_C_32fc);
  const auto made =
      withWork<KvrsDFTSpec_C_32fc>(n, kvrsDFTInitAlloc_C_32fc, kvrsDFTGetBufSize_C_32fc, kvrsDFTFree_C_32fc);
  add(name, "kvrs",
      [=] { kvrsDFTOutOrdFwd_CToC_32fc(a.get(), b.get(), other.spec.get(), other.buffer.get()); });
  add(name, "in order", [=] { kvrsDFTFwd_CToC_32fc(a.get(), b.get(), made.spec.get(), made.buffer.get()); });
}

Register dft([] {
  for (int n : {60, 100, 120, 240, 360, 480, 720, 1000, 1500, 1920, 3840, 10000, 44100, 17, 101, 1009, 10007,
                65537}) {
    addPairs32(n);
    addPairs64(n);
    addPlanes32(n);
    addReal32(n);
    addReal64(n);
  }
  for (int n : {45, 105, 225, 1001, 11025}) {
    addReal32(n);
    addReal64(n);
  }
  for (int n : {2100, 3840, 10000, 44100}) addOutOfOrder(n);
});

}  // namespace
}  // namespace kvrs::bench
