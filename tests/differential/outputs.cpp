// Calls every declared function with the same data in whatever module is loaded and prints what it returns and stores, for
// compare_modules.py to compare between the modules: some lengths up to a few vectors, one beyond the loops' thresholds on
// one thread and on three, transforms of many sizes, filters long enough for block convolution.
// SPDX-License-Identifier: MIT
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kvrscore.h"
#include "tests/contract/arguments.h"
#include "tests/support/random.h"

using namespace kvrs::test;

namespace {

constexpr size_t kPeriod = 4099;               // elements after which data repeat
constexpr size_t kFarBytes = size_t{4} << 20;  // of all arrays together: what the loops take for far away
constexpr size_t kShown = 2048;                // bytes of each array, from all over it
constexpr size_t kPiece = 16;
constexpr size_t kPointBytes = 64;  // no array of a transform has more for a point, work areas included

template <class T>
void fillWith(std::span<uint8_t> memory, Random& random) {
  const size_t n = memory.size() / sizeof(T), drawn = std::min(n, kPeriod);
  std::vector<T> values(drawn);
  for (T& value : values) value = random.value<T>();
  for (size_t i = 0; i < n; i += drawn) {
    memcpy(memory.data() + i * sizeof(T), values.data(), std::min(drawn, n - i) * sizeof(T));
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

bool starts(std::string_view name, std::string_view with) {
  return name.starts_with(with);
}

// Bytes of an element of "Kvr16sc"; 4 for "int" and its like.
size_t elementBytes(std::string_view type) {
  if (!starts(type, "Kvr")) return 4;
  const size_t bits = strtoul(type.data() + 3, nullptr, 10);
  return bits == 0 ? 4 : bits / 8 * (type.ends_with('c') ? 2 : 1);
}

// Operands are other than 1 and differ by round: products by 1 and shifts by 0 do nothing.
void vary(const Parameter& p, int round, Values::Value& value) {
  const std::string_view name = p.name, type = p.type;
  const bool isFloat = type.ends_with("f") || type.ends_with("fc");
  if (name == "scaleFactor") value.number = (round % 5) - 2;
  if (name == "val" || name == "value" || name == "vDiv") value.number = isFloat ? 1.375 + round : 2 + round;
  if (name == "level" || name == "slope" || name == "offset" || name == "alpha") {
    value.number = isFloat ? 0.375 + 0.0625 * round : 3 + 2 * round;
  }
}

struct Case {
  int round = 0;
  int len = 0;  // of "len", if it is not 0
  size_t arrayBytes = size_t{1} << 13;
  std::string what = {};          // what else is particular, in one word
  const Parameter* context = {};  // this parameter is `record`
  void* record = nullptr;
};

void fail(const std::string& what) {
  fprintf(stderr, "%s\n", what.c_str());
  exit(1);
}

// Fills the arrays of a call and varies its numbers.
void prepare(const Function& f, const Case& c, Arguments& arguments) {
  if (!arguments.missing().empty()) fail(std::string(f.name) + " needs " + arguments.missing());
  Random random(static_cast<uint64_t>(c.round) * 1000 + 7);
  for (int i = 0; i < f.parameterCount; ++i) {
    const Parameter& p = f.parameters[i];
    const bool isArray = p.kind == Kind::input || p.kind == Kind::output || p.kind == Kind::channels;
    if (c.len != 0 && strcmp(p.name, "len") == 0) {
      arguments[i].number = c.len;
    } else if (!p.isPointer()) {
      vary(p, c.round, arguments[i]);
    } else if (&p == c.context) {
      arguments[i].pointer = c.record;
    } else if (isArray && arguments.contents(i) == nullptr) {
      fill(p.type, arguments.memory(i), random);
    }
  }
}

void printBytes(std::span<const uint8_t> memory) {
  const size_t pieces = kShown / kPiece;
  const size_t step = std::max(kPiece, memory.size() / pieces / kPiece * kPiece);
  std::string digits;
  for (size_t i = 0; i < pieces && i * step + kPiece <= memory.size(); ++i) {
    for (uint8_t byte : memory.subspan(i * step, kPiece)) {
      digits += "0123456789abcdef"[byte >> 4];
      digits += "0123456789abcdef"[byte & 15];
    }
  }
  fputs(digits.c_str(), stdout);
}

void show(const Function& f, const Case& c) {
  Arguments arguments(f, c.arrayBytes);
  prepare(f, c, arguments);
  const KvrStatus status = arguments.run();
  printf("%s %d %s%d %d\n", f.name, c.round, c.what.c_str(), c.len, status);
  if (f.release != nullptr) {
    if (status >= kvrStatusOk) arguments.releaseMade();
    return;
  }
  for (int i = 0; i < f.parameterCount; ++i) {
    const Parameter& p = f.parameters[i];
    // Records and work areas are each module's own business.
    if (p.kind != Kind::output || strcmp(p.name, "buffer") == 0 || strcmp(p.name, "specMem") == 0 ||
        strcmp(p.name, "initBuf") == 0)
      continue;
    printf("  %s %s ", p.name, p.type);
    const size_t used = c.len != 0 ? static_cast<size_t>(c.len) * elementBytes(p.type) : c.arrayBytes;
    printBytes(arguments.memory(i).first(std::min(std::max(used, kShown), arguments.memory(i).size())));
    printf("\n");
  }
}

// More elements than the loops take for near, and one that is no multiple of anything.
void showFar(const Function& f, int round) {
  size_t bytes = 0, widest = 4;  // arrays of bytes may hold packed elements of 3
  bool isPlain = f.find("len") >= 0;
  for (const Parameter& p : f.all()) {
    if (p.kind == Kind::input || p.kind == Kind::output) {
      bytes += elementBytes(p.type);
      widest = std::max(widest, elementBytes(p.type));
    } else if (p.isPointer()) {
      isPlain = false;
    }
  }
  if (!isPlain || bytes == 0) return;
  const int len = static_cast<int>(kFarBytes / bytes) + 77;
  for (int threads : {1, 3}) {
    ownSetNumThreads(threads);
    show(f, {.round = round,
             .len = len,
             .arrayBytes = static_cast<size_t>(len + 64) * widest,
             .what = "threads:" + std::to_string(threads) + ":"});
  }
  ownSetNumThreads(1);
}

// Numbers that a record is made with.
struct Size {
  const char* parameter;
  int value;
  int len;  // of the calls with it, or 0
};

// f with a record that the InitAlloc of its type makes in other sizes than that of the contract tests.
void showSizes(const Function& f, const Parameter& context, std::span<const Size> sizes) {
  const auto all = functions();
  const auto maker = std::find_if(all.begin(), all.end(), [&](const Function& g) {
    return g.release != nullptr && strcmp(g.parameters[0].type, context.type) == 0;
  });
  if (maker == all.end()) return;
  for (const Size& size : sizes) {
    Arguments making(*maker);
    prepare(*maker, {.round = size.value}, making);
    const int at = maker->find(size.parameter);
    if (at < 0) fail(std::string(maker->name) + " has no " + size.parameter);
    making[at].number = size.value;
    if (making.run() < kvrStatusOk) continue;
    void* record;
    memcpy(&record, making.memory(0).data(), sizeof record);
    const size_t points = size.len != 0                          ? static_cast<size_t>(size.len)
                          : strcmp(size.parameter, "order") == 0 ? size_t{1} << size.value
                                                                 : static_cast<size_t>(size.value);
    show(f, {.round = 0,
             .len = size.len,
             .arrayBytes = std::max(kShown, (points + 64) * kPointBytes),
             .what = std::string(size.parameter) + ":" + std::to_string(size.value) + ":",
             .context = &context,
             .record = record});
    making.releaseMade();
  }
}

constexpr Size kOrders[] = {{"order", 0, 0},  {"order", 1, 0},  {"order", 2, 0},  {"order", 3, 0},
                            {"order", 5, 0},  {"order", 6, 0},  {"order", 7, 0},  {"order", 9, 0},
                            {"order", 10, 0}, {"order", 11, 0}, {"order", 12, 0}, {"order", 13, 0},
                            {"order", 14, 0}, {"order", 15, 0}, {"order", 16, 0}};
constexpr Size kPoints[] = {{"len", 1, 0},    {"len", 2, 0},    {"len", 3, 0},    {"len", 5, 0},
                            {"len", 12, 0},   {"len", 60, 0},   {"len", 97, 0},   {"len", 360, 0},
                            {"len", 1000, 0}, {"len", 1009, 0}, {"len", 2048, 0}, {"len", 4620, 0}};
constexpr Size kTaps[] = {{"tapsLen", 1, 300}, {"tapsLen", 33, 1000}, {"tapsLen", 300, 6000}};

}  // namespace

int main() {
  // The long arrays of one call serve the next one: in 32 bits they would else be new pages each time.
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, 256 << 20);
  ownSetNumThreads(1);
  constexpr int kLengths[] = {1, 7, 16, 37, 100, 160};
  for (const Function& f : functions()) {
    int round = 0;
    for (int len : kLengths) show(f, {.round = round++, .len = len});
    showFar(f, round);
    const bool releases = strstr(f.name, "Free") != nullptr;
    for (const Parameter& p : f.all()) {
      if (p.kind != Kind::context || releases) continue;
      if (starts(p.type, "KvrsFFTSpec")) showSizes(f, p, kOrders);
      if (starts(p.type, "KvrsDFT") || starts(p.type, "KvrsDCT") || starts(p.type, "KvrsHilbert")) {
        showSizes(f, p, kPoints);
      }
      if (starts(p.type, "KvrsFIRState")) showSizes(f, p, kTaps);
    }
  }
}
