// A second of sound from one sampling rate to another, in a stream: the filter of the example beside programs' libraries of
// about its quality. What they say of theirs: soxr's HQ has 20 bits (120 dB) and passes 91.3 % of half the lower rate, as
// the example does; libsamplerate's medium sinc has 121 dB and passes 90 %.
// SPDX-License-Identifier: MIT
#include "resample/converter.h"

#ifdef KVRS_BENCH_RESAMPLERS
#include <samplerate.h>
#include <soxr.h>
#endif

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

void addCase(int inRate, int outRate) {
  const std::string name = "resample/" + std::to_string(inRate) + " to " + std::to_string(outRate);
  const size_t in = static_cast<size_t>(inRate), out = static_cast<size_t>(outRate);
  addPrepared(name, "kvrs", [=] {
    const resample::Converter converter(inRate, outRate, {});
    const std::shared_ptr<KvrsFIRMRState_32f> state = converter.makeState();
    const auto src = newArray<Kvr32f>(in), dst = newArray<Kvr32f>(out);
    const int iterations = inRate / converter.down();
    return [=](long calls) {
      for (; calls > 0; --calls) kvrsFIR_32f(src.get(), dst.get(), iterations, state.get());
    };
  });
#ifdef KVRS_BENCH_RESAMPLERS
  addPrepared(name, "soxr", [=] {
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
    const std::shared_ptr<soxr> state(soxr_create(inRate, outRate, 1, nullptr, nullptr, &quality, nullptr),
                                      soxr_delete);
    const auto src = newArray<Kvr32f>(in), dst = newArray<Kvr32f>(2 * out);
    return [=](long calls) {
      size_t taken, given;
      for (; calls > 0; --calls) soxr_process(state.get(), src.get(), in, &taken, dst.get(), 2 * out, &given);
    };
  });
  addPrepared(name, "samplerate", [=] {
    int error = 0;
    const std::shared_ptr<SRC_STATE> state(src_new(SRC_SINC_MEDIUM_QUALITY, 1, &error), src_delete);
    const auto src = newArray<Kvr32f>(in), dst = newArray<Kvr32f>(2 * out);
    return [=](long calls) {
      SRC_DATA data{};
      data.data_in = src.get();
      data.data_out = dst.get();
      data.input_frames = inRate;
      data.output_frames = 2 * outRate;
      data.src_ratio = static_cast<double>(outRate) / inRate;
      for (; calls > 0; --calls) src_process(state.get(), &data);
    };
  });
#endif
}

Register resampling([] {
  addCase(44100, 48000);
  addCase(48000, 44100);
  addCase(96000, 48000);
  addCase(48000, 16000);
  addCase(8000, 48000);
});

}  // namespace
}  // namespace kvrs::bench
