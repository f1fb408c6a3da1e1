// SPDX-License-Identifier: MIT
#include "kvrs/logic.h"

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

__attribute__((noipa)) void loopAnd(const Kvr8u* a, const Kvr8u* b, Kvr8u* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = a[i] & b[i];
}

__attribute__((noipa)) void loopXorC(const Kvr32u* a, Kvr32u val, Kvr32u* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = a[i] ^ val;
}

__attribute__((noipa)) void loopNotInPlace(Kvr16u* srcDst, int len) {
  for (int i = 0; i < len; ++i) srcDst[i] = static_cast<Kvr16u>(~srcDst[i]);
}

Register logic([] {
  for (int len : kLengths) {
    const std::string n = std::to_string(len);
    const auto a = array<Kvr32u>(len), b = array<Kvr32u>(len), dst = array<Kvr32u>(len);
    const auto bytes = [](const auto& p) { return reinterpret_cast<Kvr8u*>(p.get()); };
    const auto words = [](const auto& p) { return reinterpret_cast<Kvr16u*>(p.get()); };
    add("logic/And_8u/" + n, "kvrs", [=] { kvrsAnd_8u(bytes(a), bytes(b), bytes(dst), len); });
    add("logic/And_8u/" + n, "loop", [=] { loopAnd(bytes(a), bytes(b), bytes(dst), len); });
    add("logic/XorC_32u/" + n, "kvrs", [=] { kvrsXorC_32u(a.get(), 0x12345678, dst.get(), len); });
    add("logic/XorC_32u/" + n, "loop", [=] { loopXorC(a.get(), 0x12345678, dst.get(), len); });
    add("logic/Not_16u_I/" + n, "kvrs", [=] { kvrsNot_16u_I(words(a), len); });
    add("logic/Not_16u_I/" + n, "loop", [=] { loopNotInPlace(words(a), len); });
  }
});

}  // namespace
}  // namespace kvrs::bench
