// Fill, copy and move beside the C library and, for elements wider than a byte, the compiler's loop. The C library's
// functions are called with lengths that the compiler does not know, so that it cannot put its own code in their place.
// SPDX-License-Identifier: MIT
#include "kvrs/fill.h"

#include <cstring>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

template <class T>
__attribute__((noinline)) void loopSet(T val, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = val;
}

__attribute__((noinline)) void loopCopyBits(const Kvr8u* src, int from, Kvr8u* dst, int len) {
  for (int i = 0; i < len / 8; ++i) dst[i] = static_cast<Kvr8u>(src[i] << from | src[i + 1] >> (8 - from));
}

// Sizes in bytes: each power of two, and odd ones of each order of magnitude.
constexpr int kBytes[] = {16,      24,      32,      57,      64,      100,     128,     200,
                          256,     450,     512,     1000,    1024,    2048,    3333,    4096,
                          8192,    16384,   30001,   32768,   65536,   1 << 17, 1 << 18, 1 << 19,
                          1 << 20, 1 << 21, 1 << 22, 5555555, 1 << 23, 1 << 24, 1 << 25, 1 << 26};

void addBytes(const std::shared_ptr<Kvr8u>& a, const std::shared_ptr<Kvr8u>& b, int bytes, int misfit) {
  std::string n = std::to_string(bytes);
  if (misfit != 0) n.append("+").append(std::to_string(misfit));
  const size_t size = static_cast<size_t>(bytes);
  const auto src = [=] { return a.get() + 3 * misfit; };
  const auto dst = [=] { return b.get() + misfit; };
  add("fill/Copy_8u/" + n, "kvrs", [=] { kvrsCopy_8u(src(), dst(), bytes); });
  add("fill/Copy_8u/" + n, "memcpy", [=] { memcpy(dst(), src(), size); });
  add("fill/Move_8u/" + n, "kvrs", [=] { kvrsMove_8u(src(), dst(), bytes); });
  add("fill/Move_8u/" + n, "memmove", [=] { memmove(dst(), src(), size); });
  add("fill/MoveUp_8u/" + n, "kvrs", [=] { kvrsMove_8u(dst(), dst() + 1, bytes); });
  add("fill/MoveUp_8u/" + n, "memmove", [=] { memmove(dst() + 1, dst(), size); });
  add("fill/Zero_8u/" + n, "kvrs", [=] { kvrsZero_8u(dst(), bytes); });
  add("fill/Zero_8u/" + n, "memset", [=] { memset(dst(), 0, size); });
  add("fill/Set_8u/" + n, "kvrs", [=] { kvrsSet_8u(7, dst(), bytes); });
  add("fill/Set_8u/" + n, "memset", [=] { memset(dst(), 7, size); });
}

Register fill([] {
  // One pair of arrays for all sizes.
  const auto a = array<Kvr8u>((1 << 26) + 64), b = array<Kvr8u>((1 << 26) + 64);
  for (int bytes : kBytes) {
    addBytes(a, b, bytes, 0);
    if (bytes <= 1 << 20) addBytes(a, b, bytes, 1);
  }
  for (int len : {64, 1024, 16384, 4 << 20}) {
    const std::string n = std::to_string(len);
    const auto as = [=]<class T>(T*) { return reinterpret_cast<T*>(b.get()); };
    const auto contest = [&]<class T>(const char* name, KvrStatus (*f)(T, T*, int), T val) {
      add(std::string("fill/") + name + "/" + n, "kvrs", [=] { f(val, as(static_cast<T*>(nullptr)), len); });
      add(std::string("fill/") + name + "/" + n, "loop",
          [=] { loopSet(val, as(static_cast<T*>(nullptr)), len); });
    };
    contest(
        "Set_16s", +[](Kvr16s v, Kvr16s* p, int l) { return kvrsSet_16s(v, p, l); }, Kvr16s{5});
    contest(
        "Set_32f", +[](Kvr32f v, Kvr32f* p, int l) { return kvrsSet_32f(v, p, l); }, 5.0f);
    contest(
        "Set_64f", +[](Kvr64f v, Kvr64f* p, int l) { return kvrsSet_64f(v, p, l); }, 5.0);
    contest(
        "Set_64fc", +[](Kvr64fc v, Kvr64fc* p, int l) { return kvrsSet_64fc(v, p, l); }, Kvr64fc{5, 6});
    const auto src = array<Kvr8u>(static_cast<size_t>(len) + 8),
               to = array<Kvr8u>(static_cast<size_t>(len) + 8);
    add("fill/Copy_1u/" + n, "kvrs", [=] { kvrsCopy_1u(a.get(), 3, b.get(), 0, len); });
    add("fill/Copy_1u/" + n, "loop", [=] { loopCopyBits(a.get(), 3, b.get(), len); });
  }
});

}  // namespace
}  // namespace kvrs::bench
