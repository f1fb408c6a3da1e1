// SPDX-License-Identifier: MIT
#include "kvrs/companding.h"

#include <memory>
#include <string>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384};

template <class T>
[[gnu::noinline]] void loopTable(const Kvr8u* src, T* dst, int len, const T* table) {
  for (int i = 0; i < len; ++i) dst[i] = table[src[i]];
}

// The steps of the laws.
Kvr8u encodeALaw(int sample) {
  int p = sample >> 3, mask = 0xD5;
  if (p < 0) {
    p = -p - 1;
    mask = 0x55;
  }
  int s = 0;
  while (p > ((0x100 << s) - 1) >> 3) ++s;
  return static_cast<Kvr8u>((((s < 2 ? p >> 1 : p >> s) & 15) | s << 4) ^ mask);
}
Kvr8u encodeMuLaw(int sample) {
  int p = sample >> 2;
  if (p < 0) p = -p - 1;
  p = p + 33 < 8191 ? p + 33 : 8191;
  const int s = p >> 6 == 0 ? 0 : 32 - __builtin_clz(static_cast<unsigned>(p >> 6));
  return static_cast<Kvr8u>((7 - s) << 4 | (15 - ((p >> (s + 1)) & 15)) | (sample < 0 ? 0 : 0x80));
}
int toSample(Kvr32f x) {
  const Kvr32f scaled = x * 32768;
  return scaled > 32767    ? 32767
         : scaled < -32768 ? -32768
                           : static_cast<int>(scaled + (x < 0 ? -0.5f : 0.5f));
}
int toSample(Kvr16s x) {
  return x;
}
template <class S>
[[gnu::noinline]] void loopALaw(const S* src, Kvr8u* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = encodeALaw(toSample(src[i]));
}
template <class S>
[[gnu::noinline]] void loopMuLaw(const S* src, Kvr8u* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = encodeMuLaw(toSample(src[i]));
}
// One by one: the compiler makes vectors of the steps of the mu-law where it can count leading zeros in them.
template <class S>
[[gnu::noinline]] void scalarMuLaw(const S* src, Kvr8u* dst, int len) {
  for (int i = 0; i < len; ++i) {
    int sample = toSample(src[i]);
    asm("" : "+r"(sample));
    dst[i] = encodeMuLaw(sample);
  }
}

template <class Ours, class Loop>
void pair(const std::string& name, Ours ours, Loop loop) {
  add(name, "kvrs", ours);
  add(name, "loop", loop);
}

Register companding([] {
  const auto samples = newArray<Kvr16s>(256);
  const auto floats = newArray<Kvr32f>(256);
  const auto codes = newArray<Kvr8u>(256);
  for (int len : kLengths) {
    const std::string n = "/" + std::to_string(len);
    const size_t count = static_cast<size_t>(len);
    const auto c = newArray<Kvr8u>(count), d = newArray<Kvr8u>(count);
    const auto s = newArray<Kvr16s>(count);
    const auto f = newArray<Kvr32f>(count);
    pair(
        "companding/ALawToLin_8u16s" + n, [=] { kvrsALawToLin_8u16s(c.get(), s.get(), len); },
        [=] { loopTable(c.get(), s.get(), len, samples.get()); });
    pair(
        "companding/MuLawToLin_8u16s" + n, [=] { kvrsMuLawToLin_8u16s(c.get(), s.get(), len); },
        [=] { loopTable(c.get(), s.get(), len, samples.get()); });
    pair(
        "companding/MuLawToLin_8u32f" + n, [=] { kvrsMuLawToLin_8u32f(c.get(), f.get(), len); },
        [=] { loopTable(c.get(), f.get(), len, floats.get()); });
    pair(
        "companding/ALawToMuLaw_8u" + n, [=] { kvrsALawToMuLaw_8u(c.get(), d.get(), len); },
        [=] { loopTable(c.get(), d.get(), len, codes.get()); });
  }
  for (int len : kLengths) {
    const std::string n = "/" + std::to_string(len);
    const size_t count = static_cast<size_t>(len);
    const auto d = newArray<Kvr8u>(count);
    const auto s = newArray<Kvr16s>(count);
    const auto f = newArray<Kvr32f>(count);
    pair(
        "companding/LinToALaw_16s8u" + n, [=] { kvrsLinToALaw_16s8u(s.get(), d.get(), len); },
        [=] { loopALaw(s.get(), d.get(), len); });
    pair(
        "companding/LinToMuLaw_16s8u" + n, [=] { kvrsLinToMuLaw_16s8u(s.get(), d.get(), len); },
        [=] { loopMuLaw(s.get(), d.get(), len); });
    add("companding/LinToMuLaw_16s8u" + n, "scalar", [=] { scalarMuLaw(s.get(), d.get(), len); });
    pair(
        "companding/LinToALaw_32f8u" + n, [=] { kvrsLinToALaw_32f8u(f.get(), d.get(), len); },
        [=] { loopALaw(f.get(), d.get(), len); });
    pair(
        "companding/LinToMuLaw_32f8u" + n, [=] { kvrsLinToMuLaw_32f8u(f.get(), d.get(), len); },
        [=] { loopMuLaw(f.get(), d.get(), len); });
    add("companding/LinToMuLaw_32f8u" + n, "scalar", [=] { scalarMuLaw(f.get(), d.get(), len); });
  }
});

}  // namespace
}  // namespace kvrs::bench
