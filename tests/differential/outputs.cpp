// Calls every declared function with the same data in whatever module is loaded and prints what it returns
// and stores, for compare_modules.py to compare between the modules.
// SPDX-License-Identifier: MIT
#include <cstdio>
#include <cstring>
#include <span>
#include <string_view>

#include "tests/contract/arguments.h"
#include "tests/support/random.h"

using namespace kvrs::test;

namespace {

constexpr size_t kShown = 2048;

template <class T>
void fillWith(std::span<uint8_t> memory, Random& random) {
  for (size_t i = 0; i + sizeof(T) <= memory.size(); i += sizeof(T)) {
    const T value = random.value<T>();
    memcpy(memory.data() + i, &value, sizeof value);
  }
}

void fill(std::string_view type, std::span<uint8_t> memory, Random& random) {
  if (type == "Kvr32f" || type == "Kvr32fc") return fillWith<Kvr32f>(memory, random);
  if (type == "Kvr64f" || type == "Kvr64fc") return fillWith<Kvr64f>(memory, random);
  if (type == "Kvr16s" || type == "Kvr16sc") return fillWith<Kvr16s>(memory, random);
  if (type == "Kvr32s" || type == "Kvr32sc") return fillWith<Kvr32s>(memory, random);
  if (type == "Kvr64s" || type == "Kvr64sc") return fillWith<Kvr64s>(memory, random);
  if (type == "int") return static_cast<void>(memset(memory.data(), 0, memory.size()));
  return fillWith<Kvr8u>(memory, random);
}

bool ends(std::string_view name, std::string_view with) {
  return name.ends_with(with);
}

// What a number is in a round, if not what it is in every valid call.
void vary(const Function& f, const Parameter& p, int round, Values::Value& value) {
  const std::string_view name = p.name;
  if (name == "scaleFactor") value.number = (round % 5) - 2;
  if (name == "val" && !ends(f.name, "_I")) value.number = 1 + round;
}

bool show(const Function& f, int round, int len) {
  Arguments arguments(f);
  if (!arguments.missing().empty()) {
    fprintf(stderr, "%s needs %s\n", f.name, arguments.missing().c_str());
    return false;
  }
  Random random(static_cast<uint64_t>(round) * 1000 + 7);
  for (int i = 0; i < f.parameterCount; ++i) {
    const Parameter& p = f.parameters[i];
    const bool isArray = p.kind == Kind::input || p.kind == Kind::output || p.kind == Kind::channels;
    if (strcmp(p.name, "len") == 0) {
      arguments[i].number = len;
    } else if (!p.isPointer()) {
      vary(f, p, round, arguments[i]);
    } else if (isArray && arguments.contents(i) == nullptr) {
      fill(p.type, arguments.memory(i), random);
    }
  }
  const KvrStatus status = arguments.run();
  printf("%s %d %d %d\n", f.name, round, len, status);
  if (f.release != nullptr) {
    arguments.releaseMade();
    return true;
  }
  for (int i = 0; i < f.parameterCount; ++i) {
    const Parameter& p = f.parameters[i];
    // Records and work areas are each module's own business.
    if (p.kind != Kind::output || strcmp(p.name, "buffer") == 0 || strcmp(p.name, "specMem") == 0 ||
        strcmp(p.name, "initBuf") == 0)
      continue;
    printf("  %s %s ", p.name, p.type);
    for (size_t b = 0; b < kShown; ++b) printf("%02x", arguments.memory(i)[b]);
    printf("\n");
  }
  return true;
}

}  // namespace

int main() {
  constexpr int kLengths[] = {1, 7, 16, 37, 100, 160};
  for (const Function& f : functions()) {
    int round = 0;
    for (int len : kLengths) {
      if (!show(f, round++, len)) return 1;
    }
  }
}
