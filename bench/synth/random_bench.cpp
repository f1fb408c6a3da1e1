// SPDX-License-Identifier: MIT
#include "kvrs/random.h"

#include <random>
#include <utility>

#ifdef KVRS_BENCH_DSFMT
#define DSFMT_MEXP 19937
#include <dSFMT.h>
#endif
#if __has_include(<boost/random/normal_distribution.hpp>)
#include <boost/random/mersenne_twister.hpp>
#include <boost/random/normal_distribution.hpp>
#define KVRS_BENCH_BOOST 1
#endif

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 1 << 20};

template <class Engine, class Distribution>
void addPeer(const std::string& name, const char* who, Kvr32f* dst, int len, Distribution distribution) {
  const auto state = std::make_shared<std::pair<Engine, Distribution>>(Engine(7u), distribution);
  add(name, who, [=] {
    for (int i = 0; i < len; ++i) dst[i] = state->second(state->first);
  });
}

#ifdef KVRS_BENCH_DSFMT
// An array of doubles at a time, which it makes from 382 on and of even lengths only, brought to the range.
void addDoubles(const std::string& name, Kvr32f* dst, int len) {
  constexpr int kPiece = 4096;
  if (len < 382) return;
  struct State {
    dsfmt_t generator;
    alignas(16) double doubles[kPiece];
  };
  const auto state = std::make_shared<State>();
  dsfmt_init_gen_rand(&state->generator, 7);
  add(name, "dsfmt", [=] {
    for (int i = 0; i < len; i += kPiece) {
      const int count = len - i < kPiece ? len - i : kPiece;
      dsfmt_fill_array_close_open(&state->generator, state->doubles, count);
      for (int k = 0; k < count; ++k) dst[i + k] = static_cast<Kvr32f>(state->doubles[k] * 2 - 1);
    }
  });
}
#endif

Register random([] {
  for (int len : kLengths) {
    const std::string n = std::to_string(len);
    const auto dst = array<Kvr32f>(len);
    KvrsRandUniState_32f* uniform = nullptr;
    KvrsRandGaussState_32f* gauss = nullptr;
    kvrsRandUniformInitAlloc_32f(&uniform, -1, 1, 7);
    kvrsRandGaussInitAlloc_32f(&gauss, 0, 1, 7);
    add("random/RandUniform_32f/" + n, "kvrs", [=] { kvrsRandUniform_32f(dst.get(), len, uniform); });
    addPeer<std::mt19937>("random/RandUniform_32f/" + n, "mt19937", dst.get(), len,
                          std::uniform_real_distribution<float>(-1, 1));
#ifdef KVRS_BENCH_DSFMT
    addDoubles("random/RandUniform_32f/" + n, dst.get(), len);
#endif
    add("random/RandGauss_32f/" + n, "kvrs", [=] { kvrsRandGauss_32f(dst.get(), len, gauss); });
    addPeer<std::mt19937>("random/RandGauss_32f/" + n, "mt19937", dst.get(), len,
                          std::normal_distribution<float>(0, 1));
#ifdef KVRS_BENCH_BOOST
    addPeer<boost::random::mt19937>("random/RandGauss_32f/" + n, "boost", dst.get(), len,
                                    boost::random::normal_distribution<float>(0, 1));
#endif
  }
});

}  // namespace
}  // namespace kvrs::bench
