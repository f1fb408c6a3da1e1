// SPDX-License-Identifier: MIT
#include "tests/fuzz/fuzz.h"

#include <fenv.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "kvrs.h"
#include "tests/contract/arguments.h"
#include "tests/fuzz/rules.h"
#include "tests/fuzz/table.h"
#include "tests/support/arena.h"
#include "tests/support/blocks.h"
#include "tests/support/core.h"
#include "tests/support/random.h"

namespace kvrs::test {
namespace {

constexpr int kMostChannels = 8;
constexpr int kWrongRecord = 16 + 2 * kMostChannels;  // behind arguments and the channels of two of them
constexpr int kSlots = kWrongRecord + 1;
constexpr int64_t kMostBytes = int64_t{1} << 25;  // of one array
constexpr size_t kMostBlock = size_t{1} << 26;    // of the library's memory; more is refused
constexpr size_t kPeriod = 4099;                  // bytes after which contents repeat
constexpr size_t kPointer = sizeof(void*);
constexpr unsigned kSecondsACall = 60;

// --- control words -----------------------------------------------------------------------------------------------

constexpr uint32_t kFlags = 0x3F;  // of MXCSR: raised by arithmetic, and nobody's promise
constexpr uint32_t kFlush = 0x8040;

uint32_t getMxcsr() {
  uint32_t word;
  asm volatile("stmxcsr %0" : "=m"(word));
  return word;
}
void setMxcsr(uint32_t word) {
  asm volatile("ldmxcsr %0" : : "m"(word));
}
struct X87 {
  uint16_t control, tags;
};
X87 getX87() {
  uint32_t environment[7];
  asm volatile("fnstenv %0\n\tfldenv %0" : "+m"(environment));
  return {static_cast<uint16_t>(environment[0]), static_cast<uint16_t>(environment[2])};
}

// --- reports -----------------------------------------------------------------------------------------------------

const char* running = "";  // the function that is being called

void fail(const std::string& function, const std::string& what) {
  Fuzzing& f = fuzzing();
  ++f.failures;
  if (!f.failed.insert(function + what).second) return;
  char module[sizeof(KvrLibraryVersion::targetCpu) + 1] = {};
  memcpy(module, kvrsGetLibVersion()->targetCpu, sizeof(KvrLibraryVersion::targetCpu));
  printf("%s: %s\n  ./kvrs fuzz --module %s --seed %llu --call %lld\n", function.c_str(), what.c_str(),
         module, static_cast<unsigned long long>(f.seed), static_cast<long long>(f.call));
  fflush(stdout);
  if (f.abortsOnFailure) abort();
}

// Only what is allowed in a handler that may have been entered anywhere.
void say(const char* text) {
  if (write(STDOUT_FILENO, text, strlen(text)) < 0) _exit(3);
}
void onSignal(int signal, siginfo_t* info, void*) {
  char line[256];
  char module[sizeof(KvrLibraryVersion::targetCpu) + 1] = {};
  memcpy(module, kvrsGetLibVersion()->targetCpu, sizeof(KvrLibraryVersion::targetCpu));
  snprintf(line, sizeof line, "%s: signal %d%s at %p\n  ./kvrs fuzz --module %s --seed %llu --call %lld\n",
           running, signal, signal == SIGALRM ? " (takes too long)" : "", info->si_addr, module,
           static_cast<unsigned long long>(fuzzing().seed), static_cast<long long>(fuzzing().call));
  fflush(fuzzing().results);
  say(line);
  if (fuzzing().abortsOnFailure) abort();
  _exit(2);
}

// --- functions and their rules -----------------------------------------------------------------------------------

struct Argument {
  const Extent* extent;
  const Number* number;
  const Contents* contents;
  const Displacement* displacement;
  bool isConstant, isReadToo, isScratch, isOptional, isLast;
};
struct Rules {
  std::vector<Argument> arguments;
  bool isUnchecked, isWordless, isFree, isInit;
  bool mayLeavePart;   // errors after which the contract allows that something has been written
  bool mayClear;       // a failed Init stores null
  bool mayMismatch;    // refuses records of its type that are of two rates, streams, or of another structure
  bool mayDivide;      // refuses taps by their values
  bool hasLast;        // tests pointers behind everything else
  bool isShortcut;     // some values lead to Zero, which does not look at sources
  bool countsThreads;  // what it makes or tells is made for a number of them
};

const Rules& rulesOf(size_t index) {
  static auto& all = *new std::vector<std::unique_ptr<Rules>>(functions().size());
  if (all[index] != nullptr) return *all[index];
  const Function& f = functions()[index];
  auto rules = std::make_unique<Rules>();
  for (int i = 0; i < f.parameterCount; ++i) {
    const Parameter& p = f.parameters[i];
    rules->arguments.push_back({.extent = extentOf(f, p),
                                .number = numberOf(f, p),
                                .contents = contentsOf(f, p),
                                .displacement = displacementOf(f, p),
                                .isConstant = (facts()[index].constants >> i & 1) != 0,
                                .isReadToo = isReadToo(f, p),
                                .isScratch = isScratch(f, p),
                                .isOptional = isAmong(allRows().optionalPointers, f, p),
                                .isLast = isAmong(allRows().lastPointers, f, p)});
  }
  rules->isUnchecked = isAmong(allRows().unchecked, f);
  rules->isWordless = isAmong(allRows().wordless, f);
  rules->isFree = strstr(f.name, "Free") != nullptr;
  rules->isInit = strstr(f.name, "Init") != nullptr;
  rules->isShortcut = matches("kvrs(AndC|[LR]ShiftC)_.*|kvrs(Add|Sub|Mul)C?_.*Sfs", f.name);
  rules->countsThreads = rules->isInit || strstr(f.name, "StateSize") != nullptr;
  rules->mayLeavePart = matches("kvrsFilterMedian_.*|kvrsIIRSetTaps.*|kvrsIIROne_BiQuadDirect.*", f.name);
  rules->mayClear = strncmp(f.name, "kvrsWT", 6) == 0;
  rules->mayMismatch = matches("kvrs(FIR|IIR)(One|Get|Set|_|32|64).*", f.name);
  rules->mayDivide = strncmp(f.name, "kvrsIIR", 7) == 0;
  rules->hasLast = std::any_of(rules->arguments.begin(), rules->arguments.end(),
                               [](const Argument& a) { return a.isLast; });
  all[index] = std::move(rules);
  return *all[index];
}

// Functions by what they do to a record of some struct.
struct Users {
  std::vector<size_t> makers, users, releasers;
};
const Users& usersOf(const char* record) {
  static auto& all = *[] {
    auto* users = new std::map<std::string_view, Users>;
    for (size_t i = 0; i < functions().size(); ++i) {
      const Function& f = functions()[i];
      if (facts()[i].record[0] == '\0') continue;
      Users& u = (*users)[facts()[i].record];
      const auto of = f.all();
      const bool takes = std::any_of(of.begin(), of.end(), [](const Parameter& p) {
        return p.kind == Kind::context || p.kind == Kind::contexts;
      });
      (!takes ? u.makers : strstr(f.name, "Free") != nullptr ? u.releasers : u.users).push_back(i);
    }
    return users;
  }();
  return all[record];
}

// --- one call ----------------------------------------------------------------------------------------------------

// A record, with how it was made.
struct Record {
  const Function* maker = nullptr;
  Values made;
  void* address = nullptr;
  std::span<uint8_t> memory = {};  // the caller's; empty for a record on the heap
  bool isWild = false;             // one of those numbers is any
  bool isExact = true;             // whether results have been the same in every module up to now
};

// What is wrong with a call.
enum class Fault { none, null, number, record, memory, many };

// Memory that outlives a sequence: mapping is what takes time.
struct Memory {
  Arena arrays[kSlots];
  Arena records[kMostChannels];
};
Memory& memory() {
  static auto& all = *new Memory;
  return all;
}

// Any memory of a call that may change, and what was there before.
struct Watched {
  std::span<uint8_t> now;
  std::vector<uint8_t> before;
  Watched(std::span<uint8_t> bytes) : now(bytes), before(bytes.begin(), bytes.end()) {}
  bool hasChanged() const { return memcmp(now.data(), before.data(), before.size()) != 0; }
  void restore() const { memcpy(now.data(), before.data(), before.size()); }
};

class Call {
 public:
  // A record that the call makes in memory lies in one of a few places.
  Call(size_t index, Choices& choices, std::vector<Record>& records, int place = 0)
      : f_(functions()[index]),
        facts_(facts()[index]),
        rules_(rulesOf(index)),
        choices_(choices),
        records_(records),
        place_(place) {}

  // Draws a call. False if there is none that could be made.
  bool prepare(bool mayFault);
  // Makes it, and looks at all that it promises.
  KvrStatus run();
  // The record that a successful call has made; one without an address if it makes none.
  Record made() const;

 private:
  void drawFault(bool mayFault);
  void drawNumbers();
  void drawNull(const std::vector<int>& required, const std::vector<int>& optional);
  void place();
  void placeArray(int i);
  void placeRecords(int i);
  void breakRecord(int i);
  std::span<uint8_t> put(int slot, size_t bytes, size_t alignment, Side side, size_t offset);
  std::span<uint8_t> putAnywhere(int slot, size_t bytes, size_t elementBytes);
  void fill(int i, std::span<uint8_t> memory);
  void flip(int i);

  KvrStatus callOnce();
  void checkStatus(KvrStatus status, int refused);
  void checkUnchanged(KvrStatus status);
  void checkAgain(KvrStatus status);
  uint64_t hashOfResults() const;
  void fail(const std::string& what) const { test::fail(f_.name, what); }
  void print() const;
  // Nothing is wrong, and nothing was when the record was made.
  bool isTame() const { return fault_ == Fault::none && (records_.empty() || !records_[0].isWild); }

  const Function& f_;
  const Facts& facts_;
  const Rules& rules_;
  Choices& choices_;
  std::vector<Record>& records_;
  int place_;
  Values values_;
  Scope scope_ = {};
  Fault fault_ = Fault::none;
  int faulty_ = -1;  // the number that is any
  bool hasBrokenRecord_ = false;
  bool hasNull_ = false;
  bool isHuge_ =
      false;         // an array would be beyond what can be had, and in 32 bits perhaps beyond all addresses
  int failing_ = 0;  // which request for memory
  int rounding_ = FE_TONEAREST;
  bool flushes_ = false;
  std::vector<Watched> arrays_;       // by the place of the argument; channels behind
  std::vector<int> owner_;            // of each of them: the argument
  std::vector<const Arena*> arenas_;  // that hold them
  std::vector<Watched> blocks_;       // the library's memory, and records in the caller's
  std::vector<std::vector<void*>> pointers_;
};

// A number of a type for which there is no rule.
double anyNumber(Choices& c, std::string_view type) {
  if (type.ends_with('c')) type.remove_suffix(1);
  if (type.ends_with('f')) {
    static const double kSpecials[] = {0.0, -0.0, NAN, INFINITY, -INFINITY, 1e-40, 1e30, -1e30, 1e-310};
    if (c.oneIn(8)) return c.pick(kSpecials);
    const double number = (c.below(1u << 16) / 32768.0 - 1) * (c.oneIn(4) ? 1000 : 4);
    return c.oneIn(4) ? std::floor(number) : number;
  }
  const uint32_t word = c.oneIn(2) ? c.below(16) : c.word();
  if (type == "Kvr8u") return static_cast<uint8_t>(word);
  if (type == "Kvr8s") return static_cast<int8_t>(word);
  if (type == "Kvr16u") return static_cast<uint16_t>(word);
  if (type == "Kvr16s") return static_cast<int16_t>(word);
  if (type == "Kvr32u") return word;
  if (type == "Kvr64s") return static_cast<double>(static_cast<int32_t>(word)) * (c.oneIn(2) ? 1 : 0x1p21);
  return static_cast<int32_t>(word);
}

// Within the range of a type, so that it can be converted.
double wildNumber(Choices& c, std::string_view type) {
  static const double kWild[] = {0,  -1, -2,      1,         2,         -7,           3, 5, 16,
                                 28, 31, 1 << 27, INT32_MIN, INT32_MAX, INT32_MAX / 2};
  if (type.find("Kvr16") == 0 || type.find("Kvr8") == 0) return c.oneIn(2) ? 0 : anyNumber(c, type);
  if (type == "Kvr32u") return c.oneIn(2) ? c.below(4) : c.word();
  return c.oneIn(2)            ? c.pick(kWild)
         : type.ends_with('f') ? anyNumber(c, type)
                               : static_cast<int32_t>(c.word());
}

void Call::drawNumbers() {
  for (int i = 0; i < f_.parameterCount; ++i) {
    const Parameter& p = f_.parameters[i];
    Values::Value& value = values_.at[i];
    const Number* row = rules_.arguments[i].number;
    if (p.isPointer()) {
      if (row != nullptr) value.number = row->draw(choices_, scope_);
    } else if (i == faulty_) {
      value.number = wildNumber(choices_, p.type);
    } else if (row != nullptr) {
      value.number = row->draw(choices_, scope_);
    } else {
      value.number = anyNumber(choices_, p.type);
      if (std::string_view(p.type).ends_with('c')) value.imaginary = anyNumber(choices_, p.type);
    }
  }
}

std::span<uint8_t> Call::put(int slot, size_t bytes, size_t alignment, Side side, size_t offset) {
  if (side == Side::back && alignment > 1) {
    offset = offset / alignment * alignment + (alignment - bytes % alignment) % alignment;
  }
  Arena& arena = memory().arrays[slot];
  arenas_.push_back(&arena);
  return {arena.place<uint8_t>(bytes, side, offset), bytes};
}

std::span<uint8_t> Call::putAnywhere(int slot, size_t bytes, size_t elementBytes) {
  const Side side = choices_.oneIn(2) ? Side::front : Side::back;
  const uint32_t how = choices_.below(4);
  const size_t offset = how < 2    ? 0
                        : how == 2 ? choices_.below(64) / elementBytes * elementBytes
                                   : choices_.below(64);
  return put(slot, bytes, 1, side, offset);
}

template <class T>
void fillFloats(std::span<uint8_t> bytes, Random& random, int how) {
  static const double kSpecials[] = {NAN,
                                     INFINITY,
                                     -INFINITY,
                                     -0.0,
                                     0.0,
                                     std::numeric_limits<T>::denorm_min(),
                                     -NAN,
                                     std::numeric_limits<T>::max(),
                                     std::numeric_limits<T>::min()};
  const double scale = how == 1 ? std::ldexp(1.0, static_cast<int>(random.below(60)) - 30) : 1;
  for (size_t i = 0; i < bytes.size() / sizeof(T); ++i) {
    T value = static_cast<T>(random.unit() * scale);
    if (how == 2 && random.below(8) == 0)
      value = static_cast<T>(kSpecials[random.below(std::size(kSpecials))]);
    if (how == 3) value = static_cast<T>(static_cast<int>(random.below(9)) - 4);
    if (how == 4) value = i == 0 ? T{1} : T{0};
    if (how == 6) value = std::fabs(value) + std::numeric_limits<T>::epsilon();
    memcpy(bytes.data() + i * sizeof(T), &value, sizeof value);
  }
}
template <class T>
void fillIntegers(std::span<uint8_t> bytes, Random& random, int how) {
  for (size_t i = 0; i < bytes.size() / sizeof(T); ++i) {
    T value = random.value<T>();
    if (how == 1) value = static_cast<T>(random.below(7));
    if (how == 2)
      value = random.below(2) == 0 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
    if (how == 3) value = T{0};
    if (how == 6) value = static_cast<T>((value & std::numeric_limits<T>::max()) | 1);
    memcpy(bytes.data() + i * sizeof(T), &value, sizeof value);
  }
}

void fillRandomly(std::string_view type, std::span<uint8_t> bytes, Choices& choices) {
  Random random(choices.below(1u << 16) + 1);
  const int how = choices.oneIn(3) ? 0 : static_cast<int>(choices.below(8)) % 7;  // 6: above 0
  // Elements of any size repeat after a whole number of them.
  const auto period = bytes.first(std::min(bytes.size(), kPeriod * 16));
  if (type.ends_with('c')) type.remove_suffix(1);
  if (how == 5) {
    fillIntegers<uint8_t>(period, random, 0);  // any bits
  } else if (type == "Kvr32f") {
    fillFloats<float>(period, random, how);
  } else if (type == "Kvr64f") {
    fillFloats<double>(period, random, how);
  } else if (type == "Kvr16s" || type == "Kvr16u") {
    fillIntegers<int16_t>(period, random, how);
  } else if (type == "Kvr32s" || type == "Kvr32u" || type == "int") {
    fillIntegers<int32_t>(period, random, how);
  } else if (type == "Kvr64s" || type == "Kvr64u") {
    fillIntegers<int64_t>(period, random, how);
  } else {
    fillIntegers<uint8_t>(period, random, how);
  }
  for (size_t i = period.size(); i < bytes.size(); i += period.size()) {
    memcpy(bytes.data() + i, period.data(), std::min(period.size(), bytes.size() - i));
  }
}

void Call::fill(int i, std::span<uint8_t> memory) {
  const Parameter& p = f_.parameters[i];
  const Argument& a = rules_.arguments[i];
  if (!a.isConstant && !a.isReadToo) {
    // Something that no result is, and its complement in the second run: see flip().
    uint32_t word = choices_.below(1u << 16);
    for (uint8_t& byte : memory) byte = static_cast<uint8_t>((word = word * 1664525 + 1013904223) >> 24);
    return;
  }
  fillRandomly(p.type, memory, choices_);
  if (a.number != nullptr && memory.size() >= bytesOf(p.type)) {
    writeElements(p.type, {&values_.at[i].number, 1}, memory.first(bytesOf(p.type)));
  }
  if (a.contents != nullptr) a.contents->adapt(choices_, scope_, memory);
}

// An array that is too large is a null pointer.
void Call::placeArray(int i) {
  const Parameter& p = f_.parameters[i];
  const Argument& a = rules_.arguments[i];
  Values::Value& value = values_.at[i];
  const bool isChannels = p.kind == Kind::channels;
  int64_t elements = a.extent->elements(scope_);
  const size_t elementBytes = a.extent->isInBytes ? 1 : bytesOf(p.type);
  if (isChannels) elements = scope_.has("chanLen") ? scope_["chanLen"] : scope_["len"];
  const int64_t mostElements = kMostBytes / static_cast<int64_t>(elementBytes);
  // A wrong factor makes a number of elements negative, but its test may come after that of the length.
  isHuge_ = isHuge_ || (elements < -mostElements && scope_["len"] > 0);
  elements = std::max<int64_t>(elements, 0);
  const int64_t channels = isChannels ? scope_["nChannels"] : 1;
  if (elements > mostElements || channels > kMostChannels) {
    hasNull_ = hasNull_ || !a.isOptional;
    isHuge_ = true;
    return;
  }
  const size_t bytes = static_cast<size_t>(elements) * elementBytes;
  if (isChannels) {
    auto& pointers = pointers_.emplace_back();
    for (int64_t c = 0; c < channels; ++c) {
      const auto channel =
          putAnywhere(16 + static_cast<int>(pointers_.size() - 1) % 2 * kMostChannels + static_cast<int>(c),
                      bytes, elementBytes);
      fill(i, channel);
      arrays_.emplace_back(channel);
      owner_.push_back(i);
      pointers.push_back(channel.data());
    }
    const auto array = put(i, pointers.size() * kPointer, kPointer, Side::back, 0);
    memcpy(array.data(), pointers.data(), array.size());
    value.pointer = array.data();
    return;
  }
  // Addresses and records lie at multiples of their size.
  const bool isAligned =
      p.kind == Kind::newContext || p.kind == Kind::address || facts_.record == std::string_view(p.type);
  const size_t size = p.kind == Kind::newContext || p.kind == Kind::address ? kPointer : bytes;
  const bool isRecord = rules_.isInit && p.kind == Kind::output &&
                        (strcmp(p.name, "buffer") == 0 || strcmp(p.name, "specMem") == 0 || isAligned);
  std::span<uint8_t> array;
  if (isRecord) {
    const size_t offset = isAligned ? choices_.below(4) * 8 : choices_.below(64);
    const Side side = isAligned && size % 8 != 0 ? Side::front : choices_.oneIn(2) ? Side::front : Side::back;
    Arena& arena = memory().records[place_];
    arenas_.push_back(&arena);
    array = {arena.place<uint8_t>(size, side, offset), size};
  } else if (isAligned) {
    array = put(i, size, kPointer, choices_.oneIn(2) ? Side::front : Side::back, 0);
  } else {
    array = putAnywhere(i, size, elementBytes);
  }
  fill(i, array);
  if (p.kind == Kind::newContext || p.kind == Kind::address) memset(array.data(), 0, array.size());
  scope_.memory[i] = array;
  arrays_.emplace_back(array);
  owner_.push_back(i);
  value.pointer = array.data();
  if (a.displacement != nullptr) {
    value.pointer =
        reinterpret_cast<void*>(reinterpret_cast<uintptr_t>(array.data()) +
                                static_cast<uintptr_t>(a.displacement->elements(scope_)) * elementBytes);
  }
}

void Call::placeRecords(int i) {
  const Parameter& p = f_.parameters[i];
  if (p.kind == Kind::context) {
    values_.at[i].pointer = records_.at(0).address;
    return;
  }
  const auto count = static_cast<size_t>(std::clamp<int64_t>(scope_["nChannels"], 1, std::ssize(records_)));
  const auto array = put(i, count * kPointer, kPointer, Side::back, 0);
  for (size_t c = 0; c < count; ++c) {
    memcpy(array.data() + c * kPointer, &records_[c].address, kPointer);
  }
  values_.at[i].pointer = array.data();
}

// Null, no record at all, as many zeros, one of another kind, or only a word of one.
void Call::breakRecord(int i) {
  const bool isOneOfMany = f_.parameters[i].kind == Kind::contexts;
  void* const others = values_.at[i].pointer;
  if (isOneOfMany && (others == nullptr || scope_["nChannels"] < 1)) return;
  hasBrokenRecord_ = true;
  void* wrong = nullptr;
  const auto& makers = allRows().contexts;
  const uint32_t how = choices_.below(5);
  static auto& foreign = *new std::vector<uint8_t>(kContextBytes);
  if (how == 1) {
    wrong = put(kWrongRecord, sizeof(uint32_t), 1, Side::back, 0).data();  // a word at the end of a page
  } else if (how == 2) {
    wrong = put(kWrongRecord, 4096, 8, Side::back, 0).data();
    memset(wrong, 0, 4096);
  } else if (how >= 3) {
    // A record that its maker makes in memory, of another type.
    const ContextMaker& maker = makers[choices_.below(static_cast<uint32_t>(makers.size()))];
    if (maker.release == nullptr && strcmp(maker.type, f_.parameters[i].type) != 0) {
      std::fill(foreign.begin(), foreign.end(), 0);
      wrong = maker.make(foreign.data());
      uint32_t word = 0;
      memcpy(&word, wrong, sizeof word);
      for (const AcceptedWords& row : allRows().acceptedWords) {
        const bool isAccepted = std::find(row.words.begin(), row.words.end(), word) != row.words.end();
        if (isAccepted && matches(row.functions, f_.name)) wrong = nullptr;
      }
      if (wrong != nullptr && !records_.empty() && memcmp(wrong, records_[0].address, sizeof word) == 0)
        wrong = nullptr;
      if (strstr(maker.type, "Sparse") != nullptr) wrong = nullptr;  // begins with no word
    }
  }
  if (wrong == nullptr) hasNull_ = true;
  if (isOneOfMany) {
    memcpy(others, &wrong, kPointer);
  } else {
    values_.at[i].pointer = wrong;
  }
}

void Call::place() {
  // Inputs come first: the size of an output may depend on what they hold.
  for (const bool wantInputs : {true, false}) {
    for (int i = 0; i < f_.parameterCount; ++i) {
      const Parameter& p = f_.parameters[i];
      if (!p.isPointer()) continue;
      const bool isRecord = p.kind == Kind::context || p.kind == Kind::contexts;
      if ((isRecord || rules_.arguments[i].isConstant) != wantInputs) continue;
      if (isRecord) {
        placeRecords(i);
      } else {
        placeArray(i);
      }
    }
  }
}

// Half of all calls have nothing wrong.
void Call::drawFault(bool mayFault) {
  static constexpr Fault kFaults[] = {Fault::none,   Fault::none,   Fault::none,   Fault::none,
                                      Fault::none,   Fault::none,   Fault::null,   Fault::number,
                                      Fault::number, Fault::record, Fault::memory, Fault::many};
  const Fault drawn = choices_.pick(kFaults);
  if (mayFault && !rules_.isUnchecked) fault_ = drawn;
  static const int kRoundings[] = {FE_TONEAREST, FE_TONEAREST, FE_TONEAREST, FE_TONEAREST,
                                   FE_TONEAREST, FE_UPWARD,    FE_DOWNWARD,  FE_TOWARDZERO};
  rounding_ = choices_.pick(kRoundings);
  flushes_ = choices_.oneIn(32);
  if (fault_ == Fault::memory || (fault_ == Fault::many && choices_.oneIn(2)))
    failing_ = choices_.between(1, 4);
}

void Call::drawNull(const std::vector<int>& required, const std::vector<int>& optional) {
  const auto oneOf = [&](const std::vector<int>& from) {
    return from[choices_.below(static_cast<uint32_t>(from.size()))];
  };
  if (fault_ == Fault::null || (fault_ == Fault::many && choices_.oneIn(2))) {
    if (required.empty()) return;
    const int i = oneOf(required);
    values_.at[i].pointer = nullptr;
    // Some want no memory of no bytes.
    hasNull_ = strcmp(f_.parameters[i].name, "initBuf") != 0 || !scope_.memory[i].empty();
  } else if (!optional.empty() && choices_.oneIn(3)) {
    const int i = oneOf(optional);
    // An Init that needs this memory wants it.
    if (strcmp(f_.parameters[i].name, "initBuf") == 0 && !scope_.memory[i].empty()) return;
    values_.at[i].pointer = nullptr;
  }
}

bool Call::prepare(bool mayFault) {
  scope_.function = &f_;
  scope_.values = &values_;
  if (!records_.empty()) {
    scope_.maker = records_[0].maker;
    scope_.made = &records_[0].made;
  }
  drawFault(mayFault);
  std::vector<int> numbers, required, optional;
  int record = -1;
  for (int i = 0; i < f_.parameterCount; ++i) {
    const Parameter& p = f_.parameters[i];
    const Argument& a = rules_.arguments[i];
    if (!p.isPointer()) {
      numbers.push_back(i);
    } else if (a.isOptional) {
      optional.push_back(i);
    } else if (!a.isLast) {
      required.push_back(i);
    }
    if (p.kind == Kind::context || p.kind == Kind::contexts) record = i;
  }
  const bool isWildToo = fault_ == Fault::null && choices_.oneIn(3);
  if ((fault_ == Fault::number || fault_ == Fault::many || isWildToo) && !numbers.empty()) {
    faulty_ = numbers[choices_.below(static_cast<uint32_t>(numbers.size()))];
  }
  drawNumbers();
  place();
  // It would be a valid one.
  if (hasNull_ && faulty_ < 0) return false;
  drawNull(required, optional);
  if ((fault_ == Fault::record || fault_ == Fault::many) && record >= 0 && !rules_.isWordless)
    breakRecord(record);
  return true;
}

KvrStatus Call::callOnce() {
  const uint32_t mxcsr = getMxcsr();
  const X87 x87 = getX87();
  running = f_.name;
  alarm(kSecondsACall);
  fesetround(rounding_);
  if (flushes_) setMxcsr(getMxcsr() | kFlush);
  const uint32_t mxcsrBefore = getMxcsr() & ~kFlags;
  const X87 x87Before = getX87();
  KvrStatus status;
  if (failing_ > 0) {
    const FailingAllocator failing(failing_);
    status = f_.call(values_);
  } else {
    status = f_.call(values_);
  }
  const uint32_t mxcsrAfter = getMxcsr() & ~kFlags;
  const X87 x87After = getX87();
  setMxcsr(mxcsr);
  fesetround(FE_TONEAREST);
  alarm(0);
  running = "";
  if (mxcsrBefore != mxcsrAfter) fail("does not restore MXCSR");
  if (x87Before.control != x87After.control || x87.control != getX87().control) {
    fail("does not restore the x87 control word");
  }
  if (x87After.tags != x87Before.tags) fail("leaves something on the x87 stack");
  return status;
}

void Call::checkStatus(KvrStatus status, int refused) {
  const auto number = std::to_string(status);
  if (std::find(facts_.statuses.begin(), facts_.statuses.end(), status) == facts_.statuses.end()) {
    fail("status " + number + ", which its contract does not name");
  }
  const bool isAllowed = (status == kvrStatusContextMismatch && rules_.mayMismatch) ||
                         (status == kvrStatusDivByZeroError && rules_.mayDivide) || refused > 0;
  if (isTame() && status < kvrStatusOk && !isAllowed)
    fail("status " + number + " of a call that should succeed");
  if (status == kvrStatusNullPointer && !hasNull_ && refused == 0 && !(faulty_ >= 0))
    fail("NullPointer without one");
  if (status == kvrStatusOutOfMemory && refused == 0 && !(faulty_ >= 0))
    fail("OutOfMemory, though none was refused");
  if (hasNull_ && status >= kvrStatusOk && !rules_.isShortcut)
    fail("status " + number + " in spite of a null pointer");
  if (fault_ == Fault::record && hasBrokenRecord_ && status >= kvrStatusOk && !rules_.isWordless) {
    fail("status " + number + " on a record of another kind");
  }
  if (refused > 0 && status >= kvrStatusOk) fail("status " + number + ", though memory was refused");
}

void Call::checkUnchanged(KvrStatus status) {
  for (size_t k = 0; k < arrays_.size(); ++k) {
    const int i = owner_[k];
    if (!arrays_[k].hasChanged()) continue;
    if (rules_.arguments[i].isConstant) fail(std::string("changes ") + f_.parameters[i].name);
    const Kind kind = f_.parameters[i].kind;
    const bool mayChange = status >= kvrStatusOk || rules_.mayLeavePart || rules_.arguments[i].isScratch ||
                           (rules_.isInit && kind == Kind::output) ||
                           (rules_.mayClear && kind == Kind::newContext) || (rules_.hasLast && hasNull_);
    if (!mayChange)
      fail("status " + std::to_string(status) + ", but " + f_.parameters[i].name + " has changed");
  }
  const auto all = f_.all();
  for (int i = 0; i < f_.parameterCount; ++i) {
    const bool isRecord = all[i].kind == Kind::context || all[i].kind == Kind::contexts;
    if (!isRecord || rules_.isFree) continue;
    const bool mustStay = rules_.arguments[i].isConstant || (status < kvrStatusOk && !rules_.mayLeavePart);
    for (const Watched& block : blocks_) {
      if (mustStay && block.hasChanged()) {
        fail(status < kvrStatusOk ? "fails, but has changed its record" : "changes its record");
        break;
      }
    }
  }
  for (const Arena* arena : arenas_) {
    if (!arena->intact()) fail("writes beside an array");
  }
}

// Where results go that stay the first time gets its complement the second time, so that what stays is told from what
// is written, and what is read is found out.
void Call::flip(int i) {
  for (size_t k = 0; k < arrays_.size(); ++k) {
    if (owner_[k] != i) continue;
    for (uint8_t& byte : arrays_[k].now) byte = static_cast<uint8_t>(~byte);
  }
}

// Whether the element at a byte of an array is NaN.
bool isNanAt(std::string_view type, std::span<const uint8_t> memory, size_t at) {
  const auto isNan = [&]<class T>(T value) {
    memcpy(&value, memory.data() + at / sizeof value * sizeof value, sizeof value);
    return value != value;
  };
  return type.starts_with("Kvr32f") ? isNan(float{}) : type.starts_with("Kvr64f") && isNan(double{});
}

void Call::checkAgain(KvrStatus status) {
  std::vector<std::vector<uint8_t>> results;
  for (const Watched& array : arrays_) {
    results.emplace_back(array.now.begin(), array.now.end());
    array.restore();
  }
  std::vector<std::vector<uint8_t>> records;
  for (const Watched& block : blocks_) {
    records.emplace_back(block.now.begin(), block.now.end());
    block.restore();
  }
  const auto isPure = [&](int i) {
    const Kind kind = f_.parameters[i].kind;
    return !rules_.arguments[i].isConstant && !rules_.arguments[i].isReadToo && kind != Kind::newContext;
  };
  for (int i = 0; i < f_.parameterCount; ++i) {
    if (f_.parameters[i].isPointer() && isPure(i)) flip(i);
  }
  fillBlocks(0x5A);
  KvrStatus again;
  if (rules_.countsThreads) {
    again = callOnce();
  } else {
    const ThreadCount threads(3);
    again = callOnce();
  }
  fillBlocks(0xA5);
  if (again != status) fail("status " + std::to_string(status) + ", then " + std::to_string(again));
  for (size_t k = 0; k < arrays_.size(); ++k) {
    const int i = owner_[k];
    if (rules_.arguments[i].isScratch || f_.parameters[i].kind == Kind::newContext) continue;
    const auto& first = results[k];
    const auto& second = arrays_[k].now;
    for (size_t b = 0; b < first.size(); ++b) {
      if (first[b] == second[b]) continue;
      const bool isUnwritten = isPure(i) && first[b] == arrays_[k].before[b] &&
                               second[b] == static_cast<uint8_t>(~arrays_[k].before[b]);
      if (isUnwritten) continue;
      // Where two NaN meet, the place of the element in a thread's share may decide which one is passed on.
      const char* type = f_.parameters[i].type;
      if (isNanAt(type, first, b) && isNanAt(type, second, b)) continue;
      fail(std::string(f_.parameters[i].name) + " has other bytes when called again");
      break;
    }
    // What follows in the sequence goes on from the first call.
    memcpy(second.data(), first.data(), first.size());
  }
  for (size_t k = 0; k < blocks_.size(); ++k) {
    if (memcmp(records[k].data(), blocks_[k].now.data(), records[k].size()) != 0) {
      fail("its record has other bytes when called again");
      memcpy(blocks_[k].now.data(), records[k].data(), records[k].size());
    }
  }
}

// FNV-1a, of all results but records, addresses and work areas. NaN is one value.
uint64_t Call::hashOfResults() const {
  uint64_t hash = 0xCBF29CE484222325u;
  const auto add = [&](const uint8_t* bytes, size_t count) {
    for (size_t i = 0; i < count; ++i) hash = (hash ^ bytes[i]) * 0x100000001B3u;
  };
  const auto addFloats = [&]<class T>(std::span<const uint8_t> bytes, T) {
    for (size_t i = 0; i + sizeof(T) <= bytes.size(); i += sizeof(T)) {
      T value;
      memcpy(&value, bytes.data() + i, sizeof value);
      if (value != value) value = T{12345};
      add(reinterpret_cast<const uint8_t*>(&value), sizeof value);
    }
  };
  for (size_t k = 0; k < arrays_.size(); ++k) {
    const Parameter& p = f_.parameters[owner_[k]];
    const Argument& a = rules_.arguments[owner_[k]];
    if (a.isConstant || a.isScratch || p.kind == Kind::newContext || p.kind == Kind::address) continue;
    if (rules_.isInit) continue;
    const std::string_view type = p.type;
    if (type == "Kvr32f" || type == "Kvr32fc") {
      addFloats(arrays_[k].now, float{});
    } else if (type == "Kvr64f" || type == "Kvr64fc") {
      addFloats(arrays_[k].now, double{});
    } else {
      add(arrays_[k].now.data(), arrays_[k].now.size());
    }
  }
  return hash;
}

// For who looks into one input: what is called, and on what.
void Call::print() const {
  printf("%s(", f_.name);
  for (int i = 0; i < f_.parameterCount; ++i) {
    const Parameter& p = f_.parameters[i];
    const Values::Value& value = values_.at[i];
    printf("%s%s=", i == 0 ? "" : ", ", p.name);
    if (!p.isPointer()) {
      printf("%.9g", value.number);
      if (value.imaginary.has_value()) printf("%+.9gi", *value.imaginary);
    } else {
      printf("%p", value.pointer);
      if (!scope_.memory[i].empty()) printf("[%zu bytes]", scope_.memory[i].size());
    }
  }
  printf(")%s%s", rounding_ == FE_TONEAREST ? "" : " rounding otherwise", flushes_ ? " flushing" : "");
  if (failing_ > 0) printf(" without block %d", failing_);
  printf("\n");
  fflush(stdout);
}

Record Call::made() const {
  Record record{.maker = &f_, .made = values_, .isWild = faulty_ >= 0};
  for (int i = 0; i < f_.parameterCount; ++i) {
    const Parameter& p = f_.parameters[i];
    if (p.kind == Kind::newContext) memcpy(&record.address, values_.at[i].pointer, kPointer);
    if (!rules_.isInit || p.kind != Kind::output) continue;
    if (strcmp(p.name, "state") == 0) record.address = values_.at[i].pointer;
    if (p.kind == Kind::output && !rules_.arguments[i].isScratch) record.memory = scope_.memory[i];
  }
  return record;
}

KvrStatus Call::run() {
  Fuzzing& log = fuzzing();
  const int live = liveBlocks(), refusedBefore = refusedBlocks(), overruns = overrunBlocks();
  for (const auto& block : liveMemory()) blocks_.emplace_back(block);
  for (const Record& record : records_) {
    if (!record.memory.empty()) blocks_.emplace_back(record.memory);
  }
  if (log.isVerbose) print();
  const KvrStatus status = callOnce();
  if (log.isVerbose) printf("  = %d\n", status);
  const int refused = refusedBlocks() - refusedBefore;
  Seen& seen = log.seen[f_.name];
  ++log.calls;
  ++seen.calls;
  ++seen.statuses[status];
  checkStatus(status, refused);
  checkUnchanged(status);
  const bool makes = f_.release != nullptr && status >= kvrStatusOk;
  const bool releases = rules_.isFree && status >= kvrStatusOk;
  if (!makes && !releases && liveBlocks() != live) fail("leaks memory");
  if (log.results != nullptr) {
    const bool isExact =
        facts_.isExact && !flushes_ && status >= kvrStatusOk &&
        std::all_of(records_.begin(), records_.end(), [](const Record& r) { return r.isExact; });
    fprintf(log.results, "%lld %s %d %016llx\n", static_cast<long long>(log.call), f_.name,
            isHuge_ ? kvrStatusOk : status, static_cast<unsigned long long>(isExact ? hashOfResults() : 0));
  }
  if (!facts_.isExact || flushes_) {
    for (Record& record : records_) record.isExact = false;
  }
  if (!makes && !releases) {
    checkAgain(status);
    if (liveBlocks() != live) fail("leaks memory when called again");
  }
  if (overrunBlocks() != overruns) fail("writes behind a block of kvrMalloc");
  return status;
}

// --- sequences ---------------------------------------------------------------------------------------------------

// The calls that an input stands for.
class Sequence {
 public:
  explicit Sequence(Choices& choices) : choices_(choices) {}
  void run();

 private:
  void runOnRecords(size_t index);
  void makeRecords(size_t index, const Users& all);
  void releaseRecords(const Users& all);
  void call(size_t index);
  void allocate(const Allocation& allocation);
  size_t oneOf(const std::vector<size_t>& from) {
    return from[choices_.below(static_cast<uint32_t>(from.size()))];
  }

  Choices& choices_;
  std::vector<Record> records_;
};

bool takesChannels(size_t index) {
  const auto all = functions()[index].all();
  return std::any_of(all.begin(), all.end(), [](const Parameter& p) { return p.kind == Kind::contexts; });
}

void Sequence::call(size_t index) {
  Call call(index, choices_, records_);
  if (call.prepare(true)) call.run();
}

// By a function that makes them, if it is one, or by any.
void Sequence::makeRecords(size_t index, const Users& all) {
  const bool isMaker = std::find(all.makers.begin(), all.makers.end(), index) != all.makers.end();
  const size_t maker = isMaker ? index : oneOf(all.makers);
  const int count = takesChannels(index) ? kMostChannels : 1;
  std::vector<Record> none;
  for (int i = 0; i < count; ++i) {
    Call call(maker, choices_, none, i);
    if (!call.prepare(isMaker) || call.run() < kvrStatusOk) break;
    records_.push_back(call.made());
    if (records_.back().address == nullptr) {
      fail(functions()[maker].name, "succeeds without a record");
      records_.clear();
      break;
    }
  }
  if (takesChannels(index) && static_cast<int>(records_.size()) < count) releaseRecords(all);
}

void Sequence::releaseRecords(const Users& all) {
  while (!records_.empty()) {
    std::vector<Record> last = {records_.back()};
    records_.pop_back();
    const bool isOnHeap = last[0].memory.empty();
    const auto isLive = [&] {
      const auto blocks = liveMemory();
      return std::any_of(blocks.begin(), blocks.end(),
                         [&](const auto& block) { return block.data() == last[0].address; });
    };
    // Free takes records in the caller's memory too, but for those of random numbers.
    if (!all.releasers.empty() && (isOnHeap || strstr(last[0].maker->name, "Rand") == nullptr)) {
      Call call(oneOf(all.releasers), choices_, last);
      if (call.prepare(true)) call.run();
    }
    if (isOnHeap && isLive() && last[0].maker->release(last[0].address) != kvrStatusOk) {
      fail(last[0].maker->name, "its record cannot be released");
    }
  }
}

void Sequence::runOnRecords(size_t index) {
  const Users& all = usersOf(facts()[index].record);
  makeRecords(index, all);
  const bool isUser = std::find(all.users.begin(), all.users.end(), index) != all.users.end();
  if (!records_.empty() && isUser) call(index);
  for (int more = choices_.between(0, 6); more > 0 && !records_.empty() && !all.users.empty(); --more) {
    const size_t next = oneOf(all.users);
    if (!takesChannels(next) || records_.size() > 1) call(next);
  }
  releaseRecords(all);
}

// kvrsMalloc of a type, all of its bytes, and kvrsFree.
void Sequence::allocate(const Allocation& allocation) {
  static const int kLengths[] = {0, -1, INT32_MIN, INT32_MAX, 1, 3, 1000};
  const int len = choices_.oneIn(2) ? choices_.pick(kLengths) : choices_.between(1, 5000);
  const int64_t bytes = len * static_cast<int64_t>(allocation.elementBytes);
  running = allocation.name;
  auto* const block = static_cast<uint8_t*>(allocation.call(len));
  const bool isGranted = len > 0 && bytes <= static_cast<int64_t>(kMostBlock);
  if ((block != nullptr) != isGranted) fail(allocation.name, "grants or refuses what it should not");
  if (block != nullptr) {
    if (reinterpret_cast<uintptr_t>(block) % 32 != 0) fail(allocation.name, "block at no multiple of 32");
    memset(block, 1, static_cast<size_t>(bytes));
  }
  kvrsFree(block);
  running = "";
  Seen& seen = fuzzing().seen[allocation.name];
  ++fuzzing().calls;
  ++seen.calls;
  ++seen.statuses[kvrStatusOk];
  Seen& freed = fuzzing().seen["kvrsFree"];
  ++freed.calls;
  ++freed.statuses[kvrStatusOk];
}

void Sequence::run() {
  const auto all = functions();
  const ThreadCount threads(choices_.oneIn(4) ? 2 : 1);
  const auto others = static_cast<uint32_t>(allocations().size());
  const size_t index = choices_.below(static_cast<uint32_t>(all.size()) + others);
  const int live = liveBlocks();
  if (index >= all.size()) {
    allocate(allocations()[index - all.size()]);
  } else if (facts()[index].record[0] != '\0') {
    runOnRecords(index);
  } else {
    call(index);
  }
  if (liveBlocks() != live)
    fail(index < all.size() ? all[index].name : "kvrsMalloc", "its sequence leaks memory");
}

}  // namespace

Fuzzing& fuzzing() {
  static auto& one = *new Fuzzing;
  return one;
}

void startFuzzing() {
  guardBlocks(kMostBlock);
  fillBlocks(0xA5);
  static uint8_t stack[1 << 16];
  stack_t alternative = {};
  alternative.ss_sp = stack;
  alternative.ss_size = sizeof stack;
  sigaltstack(&alternative, nullptr);
  struct sigaction action = {};
  action.sa_sigaction = onSignal;
  action.sa_flags = SA_SIGINFO | SA_ONSTACK;
  for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGALRM}) sigaction(signal, &action, nullptr);
  const KvrLibraryVersion* const version = kvrsGetLibVersion();
  Seen& seen = fuzzing().seen["kvrsGetLibVersion"];
  ++seen.calls;
  ++seen.statuses[version == kvrsGetLibVersion() ? kvrStatusOk : kvrStatusBadArg];
}

void fuzz(const uint8_t* data, size_t size) {
  Choices choices(data, size);
  Sequence(choices).run();
}

}  // namespace kvrs::test
