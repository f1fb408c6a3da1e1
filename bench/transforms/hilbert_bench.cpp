// Hilbert transforms beside two transforms of FFTW and what is between them.
// SPDX-License-Identifier: MIT
#include "kvrs/hilbert.h"

#include "bench/transforms/fftw.h"

namespace kvrs::bench {
namespace {

// The half of the spectrum that FFTW gives, doubled, zeros behind it, and the scale.
__attribute__((noinline)) void makeAnalytic(Kvr32fc* z, int n) {
  const float one = 1.0f / static_cast<float>(n), two = 2.0f * one;
  const int middle = n / 2;
  z[0].re *= one;
  z[0].im *= one;
  for (int k = 1; 2 * k < n; ++k) {
    z[k].re *= two;
    z[k].im *= two;
  }
  if (n % 2 == 0) {
    z[middle].re *= one;
    z[middle].im *= one;
  }
  memset(z + middle + 1, 0, static_cast<size_t>(n - middle - 1) * sizeof *z);
}

void addFloats(int n) {
  const std::string name = "hilbert/32f32fc/" + std::to_string(n);
  const size_t count = static_cast<size_t>(n);
  const auto a = zeros<Kvr32f>(count);
  const auto b = zeros<Kvr32fc>(count);
  KvrsHilbertSpec_32f32fc* made;
  if (kvrsHilbertInitAlloc_32f32fc(&made, n, kvrHintNone) != kvrStatusOk) abort();
  const std::shared_ptr<KvrsHilbertSpec_32f32fc> spec(made, kvrsHilbertFree_32f32fc);
  add(name, "kvrs", [=] { kvrsHilbert_32f32fc(a.get(), b.get(), spec.get()); });
  addPrepared(name, "fftw", [=] {
    using Plan = std::shared_ptr<std::remove_pointer_t<Fftw<Kvr32f>::Plan>>;
    const Plan forward(Fftw<Kvr32f>::forward(n, a.get(), b.get()), Fftw<Kvr32f>::destroy);
    const Plan back(Fftw<Kvr32f>::pairs(n, b.get(), b.get(), FFTW_BACKWARD), Fftw<Kvr32f>::destroy);
    return [=](long calls) {
      for (; calls > 0; --calls) {
        Fftw<Kvr32f>::execute(forward.get());
        makeAnalytic(b.get(), n);
        Fftw<Kvr32f>::execute(back.get());
        writeMemory();
      }
    };
  });
}

Register hilbert([] {
  for (int n : {16, 100, 256, 1000, 1009, 1024, 1125, 4096, 65536}) addFloats(n);
});

}  // namespace
}  // namespace kvrs::bench
