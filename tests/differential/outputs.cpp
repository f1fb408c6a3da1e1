// Calls every declared function with the same data in whatever module is loaded and prints what it returns
// and stores, for compare_modules.py to compare between the modules.
// SPDX-License-Identifier: MIT
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "kvrs.h"
#include "tests/contract/contract.h"
#include "tests/contract/exceptions.h"
#include "tests/support/random.h"

using namespace kvrs::test;

namespace {

constexpr size_t kBytes = kContextBytes;
constexpr size_t kShown = 2048;

template <class T>
void fillWith(void* memory, Random& random) {
  for (size_t i = 0; i < kBytes / sizeof(T); ++i) static_cast<T*>(memory)[i] = random.value<T>();
}

void fill(std::string_view type, void* memory, Random& random) {
  if (type == "Kvr32f" || type == "Kvr32fc") return fillWith<Kvr32f>(memory, random);
  if (type == "Kvr64f" || type == "Kvr64fc") return fillWith<Kvr64f>(memory, random);
  if (type == "Kvr16s" || type == "Kvr16sc") return fillWith<Kvr16s>(memory, random);
  if (type == "Kvr32s" || type == "Kvr32sc") return fillWith<Kvr32s>(memory, random);
  if (type == "Kvr64s" || type == "Kvr64sc") return fillWith<Kvr64s>(memory, random);
  if (type == "int") return static_cast<void>(memset(memory, 0, kBytes));
  return fillWith<Kvr8u>(memory, random);
}

bool ends(std::string_view name, std::string_view with) {
  return name.ends_with(with);
}

double valueFor(const Function& f, const Parameter& p, int round) {
  for (const ValidValue& row : kValidValues) {
    if (strcmp(row.parameter, p.name) != 0) continue;
    if (strcmp(p.name, "scaleFactor") == 0) return (round % 5) - 2;
    return row.value;
  }
  if (strcmp(p.name, "val") == 0 && !ends(f.name, "_I")) return 1 + round;
  return 1;
}

void show(const Function& f, int round, int len) {
  std::vector<std::unique_ptr<uint8_t[]>> memory(f.parameterCount);
  std::vector<void*> channels;
  Values values;
  Random random(static_cast<uint64_t>(round) * 1000 + 7);
  for (int i = 0; i < f.parameterCount; ++i) {
    const Parameter& p = f.parameters[i];
    if (p.kind == Kind::length) {
      values.at[i].number = len;
    } else if (p.kind == Kind::value) {
      values.at[i].number = valueFor(f, p, round);
    } else {
      memory[i] = std::make_unique<uint8_t[]>(kBytes);
      values.at[i].pointer = memory[i].get();
      if (p.kind == Kind::context) {
        values.at[i].pointer = makeContext(p.type, f.name, memory[i].get());
      } else if (p.kind == Kind::newContext) {
        memset(memory[i].get(), 0, sizeof(void*));
      } else if (p.kind == Kind::channels) {
        fill(p.type, memory[i].get(), random);
        for (size_t c = 0; c < 8; ++c) channels.push_back(memory[i].get() + c * 4096);
        values.at[i].pointer = channels.data();
      } else {
        fill(p.type, memory[i].get(), random);
      }
    }
  }
  const KvrStatus status = f.call(values);
  printf("%s %d %d %d\n", f.name, round, len, status);
  if (f.release != nullptr) {
    void* record;
    memcpy(&record, memory[0].get(), sizeof record);
    f.release(record);
    return;
  }
  for (int i = 0; i < f.parameterCount; ++i) {
    const Parameter& p = f.parameters[i];
    // Records and work areas are each module's own business.
    if (p.kind != Kind::output || strcmp(p.name, "buffer") == 0 || strcmp(p.name, "specMem") == 0 ||
        strcmp(p.name, "initBuf") == 0)
      continue;
    printf("  %s %s ", p.name, p.type);
    for (size_t b = 0; b < kShown; ++b) printf("%02x", memory[i][b]);
    printf("\n");
  }
}

}  // namespace

int main() {
  constexpr int kLengths[] = {1, 7, 16, 37, 100, 160};
  for (const Function& f : functions()) {
    bool known = true;
    for (const Parameter& p : f.all()) {
      auto memory = std::make_unique<uint8_t[]>(kContextBytes);
      if (p.kind == Kind::context) known = known && makeContext(p.type, f.name, memory.get()) != nullptr;
    }
    if (!known) {
      fprintf(stderr, "no record for %s\n", f.name);
      return 1;
    }
    int round = 0;
    for (int len : kLengths) show(f, round++, len);
  }
}
