// The FFTs beside FFTW: plans made by measuring, one thread, the same arrays' alignment, and FFTW free to destroy its
// input, which ours never do.
// SPDX-License-Identifier: MIT
#include "kvrs/fft.h"

#include "bench/transforms/fftw.h"

namespace kvrs::bench {
namespace {

void addPairs32(int order) {
  const std::string name = std::to_string(order);
  const int n = 1 << order;
  const auto a = zeros<Kvr32fc>(n), b = zeros<Kvr32fc>(n);
  const auto plan = [=](bool inPlace, int sign) {
    return [=] { return Fftw<Kvr32f>::pairs(n, a.get(), inPlace ? a.get() : b.get(), sign); };
  };
  const auto made = withWork<KvrsFFTSpec_C_32fc>(order, kvrsFFTInitAlloc_C_32fc, kvrsFFTGetBufSize_C_32fc,
                                                 kvrsFFTFree_C_32fc);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("fft/Fwd_CToC_32fc/" + name, "kvrs",
      [=] { kvrsFFTFwd_CToC_32fc(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Fwd_CToC_32fc/" + name, plan(false, FFTW_FORWARD));
  add("fft/Fwd_CToC_32fc_I/" + name, "kvrs",
      [=] { kvrsFFTFwd_CToC_32fc_I(a.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Fwd_CToC_32fc_I/" + name, plan(true, FFTW_FORWARD));
  add("fft/Inv_CToC_32fc/" + name, "kvrs",
      [=] { kvrsFFTInv_CToC_32fc(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Inv_CToC_32fc/" + name, plan(false, FFTW_BACKWARD));
  add("fft/Inv_CToC_32fc_I/" + name, "kvrs",
      [=] { kvrsFFTInv_CToC_32fc_I(a.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Inv_CToC_32fc_I/" + name, plan(true, FFTW_BACKWARD));
}

void addPlanes32(int order) {
  const std::string name = std::to_string(order);
  const int n = 1 << order;
  const auto a = zeros<Kvr32f>(n), b = zeros<Kvr32f>(n), c = zeros<Kvr32f>(n), d = zeros<Kvr32f>(n);
  const auto made =
      withWork<KvrsFFTSpec_C_32f>(order, kvrsFFTInitAlloc_C_32f, kvrsFFTGetBufSize_C_32f, kvrsFFTFree_C_32f);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("fft/Fwd_CToC_32f/" + name, "kvrs",
      [=] { kvrsFFTFwd_CToC_32f(a.get(), b.get(), c.get(), d.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Fwd_CToC_32f/" + name,
                  [=] { return Fftw<Kvr32f>::planes(n, a.get(), b.get(), c.get(), d.get()); });
  add("fft/Inv_CToC_32f_I/" + name, "kvrs",
      [=] { kvrsFFTInv_CToC_32f_I(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Inv_CToC_32f_I/" + name,
                  [=] { return Fftw<Kvr32f>::planes(n, b.get(), a.get(), b.get(), a.get()); });
}

void addReal32(int order) {
  const std::string name = std::to_string(order);
  const int n = 1 << order;
  const auto a = zeros<Kvr32f>(n + 2), b = zeros<Kvr32f>(n + 2);
  const auto forward = [=](bool inPlace) {
    return [=] { return Fftw<Kvr32f>::forward(n, a.get(), inPlace ? a.get() : b.get()); };
  };
  const auto inverse = [=](bool inPlace) {
    return [=] { return Fftw<Kvr32f>::inverse(n, a.get(), inPlace ? a.get() : b.get()); };
  };
  const auto made =
      withWork<KvrsFFTSpec_R_32f>(order, kvrsFFTInitAlloc_R_32f, kvrsFFTGetBufSize_R_32f, kvrsFFTFree_R_32f);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("fft/Fwd_RToPerm_32f/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToPerm_32f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Fwd_RToPerm_32f/" + name, forward(false));
  add("fft/Inv_PermToR_32f/" + name, "kvrs",
      [=] { kvrsFFTInv_PermToR_32f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Inv_PermToR_32f/" + name, inverse(false));
  add("fft/Fwd_RToCCS_32f/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToCCS_32f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Fwd_RToCCS_32f/" + name, forward(false));
  add("fft/Inv_CCSToR_32f/" + name, "kvrs",
      [=] { kvrsFFTInv_CCSToR_32f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Inv_CCSToR_32f/" + name, inverse(false));
  add("fft/Fwd_RToPack_32f/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToPack_32f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Fwd_RToPack_32f/" + name, forward(false));
  add("fft/Inv_PackToR_32f/" + name, "kvrs",
      [=] { kvrsFFTInv_PackToR_32f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Inv_PackToR_32f/" + name, inverse(false));
  add("fft/Fwd_RToPerm_32f_I/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToPerm_32f_I(a.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Fwd_RToPerm_32f_I/" + name, forward(true));
  add("fft/Inv_PermToR_32f_I/" + name, "kvrs",
      [=] { kvrsFFTInv_PermToR_32f_I(a.get(), spec.get(), work.get()); });
  addFftw<Kvr32f>("fft/Inv_PermToR_32f_I/" + name, inverse(true));
}

void addPairs64(int order) {
  const std::string name = std::to_string(order);
  const int n = 1 << order;
  const auto a = zeros<Kvr64fc>(n), b = zeros<Kvr64fc>(n);
  const auto plan = [=](bool inPlace, int sign) {
    return [=] { return Fftw<Kvr64f>::pairs(n, a.get(), inPlace ? a.get() : b.get(), sign); };
  };
  const auto made = withWork<KvrsFFTSpec_C_64fc>(order, kvrsFFTInitAlloc_C_64fc, kvrsFFTGetBufSize_C_64fc,
                                                 kvrsFFTFree_C_64fc);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("fft/Fwd_CToC_64fc/" + name, "kvrs",
      [=] { kvrsFFTFwd_CToC_64fc(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Fwd_CToC_64fc/" + name, plan(false, FFTW_FORWARD));
  add("fft/Fwd_CToC_64fc_I/" + name, "kvrs",
      [=] { kvrsFFTFwd_CToC_64fc_I(a.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Fwd_CToC_64fc_I/" + name, plan(true, FFTW_FORWARD));
  add("fft/Inv_CToC_64fc/" + name, "kvrs",
      [=] { kvrsFFTInv_CToC_64fc(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Inv_CToC_64fc/" + name, plan(false, FFTW_BACKWARD));
  add("fft/Inv_CToC_64fc_I/" + name, "kvrs",
      [=] { kvrsFFTInv_CToC_64fc_I(a.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Inv_CToC_64fc_I/" + name, plan(true, FFTW_BACKWARD));
}

void addPlanes64(int order) {
  const std::string name = std::to_string(order);
  const int n = 1 << order;
  const auto a = zeros<Kvr64f>(n), b = zeros<Kvr64f>(n), c = zeros<Kvr64f>(n), d = zeros<Kvr64f>(n);
  const auto made =
      withWork<KvrsFFTSpec_C_64f>(order, kvrsFFTInitAlloc_C_64f, kvrsFFTGetBufSize_C_64f, kvrsFFTFree_C_64f);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("fft/Fwd_CToC_64f/" + name, "kvrs",
      [=] { kvrsFFTFwd_CToC_64f(a.get(), b.get(), c.get(), d.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Fwd_CToC_64f/" + name,
                  [=] { return Fftw<Kvr64f>::planes(n, a.get(), b.get(), c.get(), d.get()); });
  add("fft/Inv_CToC_64f_I/" + name, "kvrs",
      [=] { kvrsFFTInv_CToC_64f_I(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Inv_CToC_64f_I/" + name,
                  [=] { return Fftw<Kvr64f>::planes(n, b.get(), a.get(), b.get(), a.get()); });
}

void addReal64(int order) {
  const std::string name = std::to_string(order);
  const int n = 1 << order;
  const auto a = zeros<Kvr64f>(n + 2), b = zeros<Kvr64f>(n + 2);
  const auto forward = [=](bool inPlace) {
    return [=] { return Fftw<Kvr64f>::forward(n, a.get(), inPlace ? a.get() : b.get()); };
  };
  const auto inverse = [=](bool inPlace) {
    return [=] { return Fftw<Kvr64f>::inverse(n, a.get(), inPlace ? a.get() : b.get()); };
  };
  const auto made =
      withWork<KvrsFFTSpec_R_64f>(order, kvrsFFTInitAlloc_R_64f, kvrsFFTGetBufSize_R_64f, kvrsFFTFree_R_64f);
  const auto spec = made.spec;
  const auto work = made.buffer;
  add("fft/Fwd_RToPerm_64f/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToPerm_64f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Fwd_RToPerm_64f/" + name, forward(false));
  add("fft/Inv_PermToR_64f/" + name, "kvrs",
      [=] { kvrsFFTInv_PermToR_64f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Inv_PermToR_64f/" + name, inverse(false));
  add("fft/Fwd_RToCCS_64f/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToCCS_64f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Fwd_RToCCS_64f/" + name, forward(false));
  add("fft/Inv_CCSToR_64f/" + name, "kvrs",
      [=] { kvrsFFTInv_CCSToR_64f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Inv_CCSToR_64f/" + name, inverse(false));
  add("fft/Fwd_RToPack_64f/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToPack_64f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Fwd_RToPack_64f/" + name, forward(false));
  add("fft/Inv_PackToR_64f/" + name, "kvrs",
      [=] { kvrsFFTInv_PackToR_64f(a.get(), b.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Inv_PackToR_64f/" + name, inverse(false));
  add("fft/Fwd_RToPerm_64f_I/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToPerm_64f_I(a.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Fwd_RToPerm_64f_I/" + name, forward(true));
  add("fft/Inv_PermToR_64f_I/" + name, "kvrs",
      [=] { kvrsFFTInv_PermToR_64f_I(a.get(), spec.get(), work.get()); });
  addFftw<Kvr64f>("fft/Inv_PermToR_64f_I/" + name, inverse(true));
}

Register fft([] {
  for (int order = 4; order <= 20; ++order) {
    addPairs32(order);
    addPlanes32(order);
    addReal32(order);
    addPairs64(order);
    addPlanes64(order);
    addReal64(order);
  }
});

}  // namespace
}  // namespace kvrs::bench
