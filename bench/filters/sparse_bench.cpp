// Sparse filters beside plain loops over outputs and over taps.
// SPDX-License-Identifier: MIT
#include "kvrs/sparse.h"

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLen = 4096;

// Both loops find the history in one piece with the new samples.
__attribute__((noinline)) void loopOverOutputs(const float* taps, const int* positions, int count,
                                               const float* __restrict in, float* __restrict out) {
  for (int n = 0; n < kLen; ++n) {
    float sum = 0;
    for (int i = 0; i < count; ++i) sum += taps[i] * in[n - positions[i]];
    out[n] = sum;
  }
}
__attribute__((noinline)) void loopOverTaps(const float* taps, const int* positions, int count,
                                            const float* __restrict in, float* __restrict out) {
  for (int n = 0; n < kLen; ++n) out[n] = 0;
  for (int i = 0; i < count; ++i) {
    for (int n = 0; n < kLen; ++n) out[n] += taps[i] * in[n - positions[i]];
  }
}
__attribute__((noinline)) void feedBack(float tap, int position, const float* in, float* out) {
  for (int n = 0; n < kLen; ++n) out[n] = in[n] + tap * out[n - position];
}

Register sparse([] {
  for (int count : {4, 16}) {
    const int order = 37 * count;
    std::vector<float> taps;
    std::vector<int> positions;
    for (int i = 1; i <= count; ++i) {
      taps.push_back(1.0f / static_cast<float>(i));
      positions.push_back(37 * i);
    }
    const auto in = array<float>(static_cast<size_t>(kLen + order)), out = array<float>(kLen);
    const float* src = in.get() + order;
    const auto memory = std::make_shared<std::vector<Kvr8u>>(16384);
    KvrsFIRSparseState_32f* state = nullptr;
    kvrsFIRSparseInit_32f(&state, taps.data(), positions.data(), count, nullptr, memory->data());
    const auto name = "sparse/fir/" + std::to_string(count);
    add(name, "kvrs", [=, keep = in, keepState = memory] { kvrsFIRSparse_32f(src, out.get(), kLen, state); });
    add(name, "loop_outputs",
        [=, keep = in] { loopOverOutputs(taps.data(), positions.data(), count, src, out.get()); });
    add(name, "loop_taps",
        [=, keep = in] { loopOverTaps(taps.data(), positions.data(), count, src, out.get()); });
  }
  for (int position : {1, 100}) {
    const auto in = array<float>(kLen), out = array<float>(static_cast<size_t>(kLen + position));
    float* dst = out.get() + position;
    const auto memory = std::make_shared<std::vector<Kvr8u>>(16384);
    const float taps[2] = {1, 0.5f};
    const int positions[2] = {0, position};
    KvrsIIRSparseState_32f* state = nullptr;
    kvrsIIRSparseInit_32f(&state, taps, positions, 1, 1, nullptr, memory->data());
    const auto name = "sparse/iir/" + std::to_string(position);
    add(name, "kvrs", [=, keep = out, keepState = memory] { kvrsIIRSparse_32f(in.get(), dst, kLen, state); });
    add(name, "loop", [=, keep = out] { feedBack(0.5f, position, in.get(), dst); });
  }
});

}  // namespace
}  // namespace kvrs::bench
