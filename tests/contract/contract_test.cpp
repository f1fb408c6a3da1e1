// Every declared function against the rules for bad arguments: which status, in which order, and nothing
// written.
// SPDX-License-Identifier: MIT
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/contract/arguments.h"
#include "tests/support/arena.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

bool isTestedLast(const Function& f, const Parameter& p) {
  return isAmong(allRows().lastPointers, f, p);
}

bool isOptional(const Function& f, const Parameter& p) {
  return isAmong(allRows().optionalPointers, f, p);
}

// Calls of one function.
class Call {
 public:
  explicit Call(const Function& f) : f_(f), arguments_(f) {}

  // Gives all arguments their valid values again.
  void reset() { ASSERT_TRUE(arguments_.reset()) << f_.name << " needs " << arguments_.missing(); }
  Values::Value& operator[](int i) { return arguments_[i]; }
  std::span<uint8_t> memory(int i) { return arguments_.memory(i); }
  KvrStatus run() { return arguments_.run(); }
  void releaseMade() { EXPECT_EQ(kvrStatusOk, arguments_.releaseMade()) << f_.name; }

  // What the function could write to: the memory of its pointers, with some bytes around it, and of records on the heap. A
  // record whose caller's memory is being filled by Init may have been begun.
  std::vector<std::span<uint8_t>> watched() {
    std::vector<std::span<uint8_t>> all;
    for (int i = 0; i < f_.parameterCount; ++i) {
      if (strcmp(f_.parameters[i].name, "specMem") == 0) continue;
      all.push_back(arguments_.memoryAndMargins(i));
      auto* const pointer = static_cast<uint8_t*>(arguments_[i].pointer);
      const bool isRecord = f_.parameters[i].kind == Kind::context && pointer != nullptr;
      if (isRecord && (pointer < all.back().data() || pointer >= all.back().data() + all.back().size())) {
        all.push_back({pointer, blockBytes(pointer)});
      }
    }
    return all;
  }

  // Runs a call that must fail and must write nothing.
  void expectNow(KvrStatus status, const std::string& what) {
    const auto watch = watched();
    std::vector<std::vector<uint8_t>> before;
    for (const auto& memory : watch) before.emplace_back(memory.begin(), memory.end());
    const KvrStatus got = run();
    EXPECT_EQ(status, got) << f_.name << ": " << what;
    if (got >= kvrStatusOk) return;
    for (size_t i = 0; i < watch.size(); ++i) {
      EXPECT_TRUE(std::equal(before[i].begin(), before[i].end(), watch[i].begin()))
          << f_.name << ": " << what << ": wrote to its arguments";
    }
  }

  // The same on fresh values changed by `change`.
  template <class Change>
  void expect(KvrStatus status, const std::string& what, Change change) {
    reset();
    if (testing::Test::HasFatalFailure()) return;
    change(*this);
    expectNow(status, what);
  }

 private:
  const Function& f_;
  Arguments arguments_;
};

// A Free leaves fewer blocks than there were, where its argument was on the heap.
bool releasesArgument(const Function& f) {
  return strstr(f.name, "Free") != nullptr;
}

// check(f, call) for all functions whose names match and that check anything.
template <class Check>
void forMatching(const char* pattern, Check check) {
  for (const Function& f : functions()) {
    if (!matches(pattern, f.name) || isAmong(allRows().unchecked, f)) continue;
    Call call(f);
    call.reset();
    if (testing::Test::HasFatalFailure()) return;
    check(f, call);
  }
}

template <class Check>
void forAll(Check check) {
  forMatching(".*", check);
}

// Every name of the export list that the module has is declared and stands in the table, once, and nothing else does.
TEST(Contract, TableIsComplete) {
  std::multiset<std::string> table;
  for (const Function& f : functions()) table.insert(f.name);
  for (const char* name : otherFunctions()) table.insert(name);
  std::multiset<std::string> defined;
  for (const char* name : exportNames()) {
    if (dlsym(RTLD_DEFAULT, name) != nullptr) defined.insert(name);
  }
  EXPECT_EQ(defined, table);
}

// A parameter that rows are about: every row must be about one at least.
template <class Row>
void expectParameters(const std::vector<Row>& rows, const char* kind) {
  for (const Row& row : rows) {
    bool isFound = false;
    for (const Function& f : functions()) {
      for (const Parameter& p : f.all()) {
        isFound = isFound || (matches(row.parameter, p.name) && matches(row.functions, f.name));
      }
    }
    EXPECT_TRUE(isFound) << kind << ": there is no " << row.parameter << " of " << row.functions;
  }
}

void expectFunctions(const char* pattern, const char* kind, bool (*isRight)(const Function&)) {
  const auto all = functions();
  EXPECT_TRUE(std::any_of(all.begin(), all.end(),
                          [&](const Function& f) { return matches(pattern, f.name) && isRight(f); }))
      << kind << ": no function for " << pattern;
}

bool hasContext(const Function& f) {
  const auto all = f.all();
  return std::any_of(all.begin(), all.end(),
                     [](const Parameter& p) { return p.kind == Kind::context || p.kind == Kind::contexts; });
}

bool hasLength(const Function& f) {
  const auto all = f.all();
  return std::any_of(all.begin(), all.end(), [](const Parameter& p) { return p.kind == Kind::length; });
}

TEST(Contract, RowsAreAboutFunctions) {
  const FamilyRows& rows = allRows();
  expectParameters(rows.optionalPointers, "optionalPointers");
  expectParameters(rows.latePointers, "latePointers");
  expectParameters(rows.lastPointers, "lastPointers");
  expectParameters(rows.freeLengths, "freeLengths");
  expectParameters(rows.oneElement, "oneElement");
  expectParameters(rows.validValues, "validValues");
  expectParameters(rows.validContents, "validContents");
  expectParameters(rows.badValues, "badValues");
  expectParameters(rows.badContents, "badContents");
  for (const char* pattern : rows.lengthFirst) expectFunctions(pattern, "lengthFirst", hasLength);
  for (const char* pattern : rows.lengthAgainstZero) expectFunctions(pattern, "lengthAgainstZero", hasLength);
  for (const char* pattern : rows.unchecked) {
    expectFunctions(pattern, "unchecked", [](const Function&) { return true; });
  }
  for (const char* pattern : rows.wordless) expectFunctions(pattern, "wordless", hasContext);
  for (const ContextRank& row : rows.contextRanks) expectFunctions(row.functions, "contextRanks", hasContext);
  for (const MemoryStatus& row : rows.memoryStatuses)
    expectFunctions(row.functions, "memoryStatuses", [](const Function&) { return true; });
  for (const AcceptedWords& row : rows.acceptedWords)
    expectFunctions(row.functions, "acceptedWords", hasContext);
  for (const ContextMaker& row : rows.contexts) {
    // A record that no function takes may still be a wrong one, or be accepted in place of another.
    if (strcmp(row.functions, ".*") != 0) expectFunctions(row.functions, row.type, hasContext);
  }
}

TEST(Contract, ValidCallsSucceed) {
  forAll([](const Function& f, Call& call) {
    const int before = liveBlocks();
    EXPECT_GE(call.run(), kvrStatusOk) << f.name;
    call.releaseMade();
    if (!releasesArgument(f)) {
      EXPECT_EQ(before, liveBlocks()) << f.name << " leaks";
    }
  });
}

TEST(Contract, NullPointers) {
  forAll([](const Function& f, Call& call) {
    for (int i = 0; i < f.parameterCount; ++i) {
      const Parameter& p = f.parameters[i];
      if (!p.isPointer()) continue;
      if (isOptional(f, p)) {
        call.reset();
        call[i].pointer = nullptr;
        EXPECT_GE(call.run(), kvrStatusOk) << f.name << " with " << p.name << " null";
        call.releaseMade();
      } else if (isTestedLast(f, p)) {
        call.reset();
        call[i].pointer = nullptr;
        EXPECT_EQ(kvrStatusNullPointer, call.run()) << f.name << ": " << p.name << " null";
      } else {
        call.expect(kvrStatusNullPointer, std::string(p.name) + " null",
                    [&](Call& c) { c[i].pointer = nullptr; });
      }
    }
  });
}

TEST(Contract, Lengths) {
  forAll([](const Function& f, Call& call) {
    const bool lengthFirst = isAmong(allRows().lengthFirst, f);
    for (int len = 0; len < f.parameterCount; ++len) {
      const Parameter& length = f.parameters[len];
      if (length.kind != Kind::length || isAmong(allRows().freeLengths, f, length)) continue;
      for (int bad : {0, -1, -7, INT_MIN}) {
        const KvrStatus status =
            bad < 0 && isAmong(allRows().lengthAgainstZero, f) ? kvrStatusOk : kvrStatusBadLength;
        const std::string what = std::string(length.name) + " " + std::to_string(bad);
        call.expect(status, what, [&](Call& c) { c[len].number = bad; });
        for (int i = 0; i < f.parameterCount; ++i) {
          if (!f.parameters[i].isPointer() || isOptional(f, f.parameters[i])) continue;
          const bool lengthWins = lengthFirst || isTestedLast(f, f.parameters[i]);
          call.expect(lengthWins ? kvrStatusBadLength : kvrStatusNullPointer,
                      what + ", " + f.parameters[i].name + " null", [&](Call& c) {
                        c[len].number = bad;
                        c[i].pointer = nullptr;
                      });
        }
      }
    }
  });
}

// Bytes of an element of an array, 0 where they are not known.
size_t elementBytes(const Function& f, const Parameter& p) {
  static const std::map<std::string, size_t> bytes = {
      {"Kvr8u", 1},   {"Kvr8s", 1},    {"Kvr16u", 2},  {"Kvr16s", 2},   {"Kvr16f", 2}, {"Kvr32u", 4},
      {"Kvr32s", 4},  {"Kvr32f", 4},   {"Kvr64u", 8},  {"Kvr64s", 8},   {"Kvr64f", 8}, {"Kvr16sc", 4},
      {"Kvr32sc", 8}, {"Kvr64sc", 16}, {"Kvr32fc", 8}, {"Kvr64fc", 16}, {"int", 4}};
  const bool isPacked =
      strcmp(p.type, "Kvr8u") == 0 && strstr(f.name, p.kind == Kind::input ? "_24" : "24") != nullptr;
  const auto found = bytes.find(p.type);
  return isPacked ? 3 : found == bytes.end() ? 0 : found->second;
}

// Whether one of the arrays of `len` elements, by the name src... or dst..., takes more bytes than an address can count.
bool isBeyondAddresses(const Function& f, int64_t len) {
  const auto all = f.all();
  return std::any_of(all.begin(), all.end(), [&](const Parameter& p) {
    const bool isArray = (strncmp(p.name, "src", 3) == 0 || strncmp(p.name, "dst", 3) == 0) &&
                         !isAmong(allRows().oneElement, f, p);
    return isArray && (p.kind == Kind::input || p.kind == Kind::output) &&
           static_cast<uint64_t>(len) * elementBytes(f, p) > SIZE_MAX;
  });
}

// Whether a call returns this status in a child of this process, where it may crash.
bool returnsInChild(KvrStatus status, Call& call) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(20);
    _exit(call.run() == status ? 0 : 1);
  }
  int how = 0;
  return child > 0 && waitpid(child, &how, 0) == child && WIFEXITED(how) && WEXITSTATUS(how) == 0;
}

// In a 32-bit process a vector of 2^31 - 1 elements of more than two bytes cannot exist. Such a length is refused before
// anything is read or written, on any number of threads.
TEST(Contract, LengthsBeyondTheAddressSpace) {
  if (sizeof(void*) > 4) GTEST_SKIP() << "every length fits";
  forAll([](const Function& f, Call& call) {
    const int len = f.find("len");
    if (len < 0 || isAmong(allRows().freeLengths, f, f.parameters[len]) || !isBeyondAddresses(f, INT_MAX))
      return;
    call.reset();
    call[len].number = INT_MAX;
    const ThreadCount threads(2);
    if (returnsInChild(kvrStatusBadLength, call)) {
      call.expectNow(kvrStatusBadLength, "len 2^31 - 1");
    } else {
      ADD_FAILURE() << f.name << " does not refuse a len of 2^31 - 1";
    }
  });
}

// The record of a context argument, or the first one of several.
void* record(const Function& f, Call& call, int i) {
  void* const pointer = call[i].pointer;
  return f.parameters[i].kind == Kind::contexts ? *static_cast<void**>(pointer) : pointer;
}

uint32_t wordOf(const void* record) {
  uint32_t word;
  memcpy(&word, record, sizeof word);
  return word;
}

// One record by every maker.
class Records {
 public:
  struct Record {
    const ContextMaker* maker;
    void* record;
  };

  Records() {
    for (const ContextMaker& maker : allRows().contexts) {
      memory_.push_back(std::make_unique<uint8_t[]>(kContextBytes));
      all_.push_back({&maker, maker.make(memory_.back().get())});
      EXPECT_NE(nullptr, all_.back().record) << "no record of " << maker.type;
    }
  }
  ~Records() {
    for (const Record& r : all_) {
      if (r.maker->release != nullptr) r.maker->release(r.record);
    }
  }
  const std::vector<Record>& all() const { return all_; }

 private:
  std::vector<std::unique_ptr<uint8_t[]>> memory_;
  std::vector<Record> all_;
};

bool acceptsWord(const Function& f, uint32_t word) {
  for (const AcceptedWords& row : allRows().acceptedWords) {
    if (!matches(row.functions, f.name)) continue;
    if (std::find(row.words.begin(), row.words.end(), word) != row.words.end()) return true;
  }
  return false;
}

Rank contextRank(const Function& f) {
  for (const ContextRank& row : allRows().contextRanks) {
    if (matches(row.functions, f.name)) return row.rank;
  }
  return Rank::beforePointers;
}

// All contexts of functions that look at the word. `check(f, call, i)`
template <class Check>
void forAllContexts(Check check) {
  forAll([&](const Function& f, Call& call) {
    if (isAmong(allRows().wordless, f)) return;
    for (int i = 0; i < f.parameterCount; ++i) {
      const Kind kind = f.parameters[i].kind;
      if (kind == Kind::context || kind == Kind::contexts) check(f, call, i);
    }
  });
}

TEST(Contract, Contexts) {
  forAllContexts([](const Function& f, Call& call, int i) {
    for (uint32_t word : {0u, 60u, 99u, 0x46490000u, 0xFFFFFFFFu}) {  // none that a context has
      const std::string what = "context word " + std::to_string(word);
      // A bad word, perhaps beside another fault.
      const auto expect = [&](KvrStatus status, const std::string& more, auto change) {
        call.reset();
        void* const damaged = record(f, call, i);
        const uint32_t right = wordOf(damaged);
        memcpy(damaged, &word, sizeof word);
        change();
        call.expectNow(status, what + more);
        memcpy(damaged, &right, sizeof right);  // so that it can be released
      };
      expect(kvrStatusContextMismatch, "", [] {});
      if (word != 0) continue;
      const Rank rank = contextRank(f);
      for (int other = 0; other < f.parameterCount; ++other) {
        const Parameter& p = f.parameters[other];
        if (other == i || isOptional(f, p) || isTestedLast(f, p)) continue;
        if (p.isPointer()) {
          expect(rank == Rank::beforePointers ? kvrStatusContextMismatch : kvrStatusNullPointer,
                 std::string(", ") + p.name + " null", [&] { call[other].pointer = nullptr; });
        } else if (p.kind == Kind::length && !isAmong(allRows().freeLengths, f, p)) {
          expect(rank == Rank::afterLength ? kvrStatusBadLength : kvrStatusContextMismatch,
                 std::string(", ") + p.name + " 0", [&] { call[other].number = 0; });
        }
      }
    }
  });
}

// Nothing behind a wrong word is looked at.
TEST(Contract, WordsWithoutRecords) {
  Arena arena;
  forAllContexts([&](const Function& f, Call& call, int i) {
    if (f.parameters[i].kind == Kind::contexts) return;
    call.reset();
    call[i].pointer = arena.place<uint32_t>(1);
    EXPECT_EQ(kvrStatusContextMismatch, call.run()) << f.name;
  });
}

// Records of every other kind are refused, but for those that a function takes as well.
TEST(Contract, ContextsOfOtherKinds) {
  const Records records;
  forAllContexts([&](const Function& f, Call& call, int i) {
    const bool isArray = f.parameters[i].kind == Kind::contexts;
    const uint32_t right = wordOf(record(f, call, i));
    for (const Records::Record& other : records.all()) {
      const uint32_t word = wordOf(other.record);
      if (word == right || isArray) continue;
      if (!acceptsWord(f, word)) {
        call[i].pointer = other.record;
        EXPECT_EQ(kvrStatusContextMismatch, call.run())
            << f.name << " with a record of " << other.maker->type;
        continue;
      }
      const auto memory = std::make_unique<uint8_t[]>(kContextBytes);
      call.reset();
      call[i].pointer = other.maker->make(memory.get());
      EXPECT_GE(call.run(), kvrStatusOk) << f.name << " with a record of " << other.maker->type;
      if (other.maker->release != nullptr && !releasesArgument(f)) other.maker->release(call[i].pointer);
    }
  });
}

// A row of values or contents that are refused: alone, and together with other faults.
template <class Row, class Change>
void refuses(const Row& row, const std::string& what, Change change) {
  forMatching(row.functions, [&](const Function& f, Call& call) {
    const int at = f.find(row.parameter);
    ASSERT_GE(at, 0) << f.name << " has no " << row.parameter;
    call.expect(row.status, what, [&](Call& c) { change(f, c, at); });
    for (int i = 0; i < f.parameterCount; ++i) {
      if (!f.parameters[i].isPointer() || i == at || isOptional(f, f.parameters[i])) continue;
      const bool first =
          row.rank == Rank::beforePointers ||
          (row.rank == Rank::afterPointers && isAmong(allRows().latePointers, f, f.parameters[i])) ||
          isTestedLast(f, f.parameters[i]);
      call.expect(first ? row.status : kvrStatusNullPointer, what + ", " + f.parameters[i].name + " null",
                  [&](Call& c) {
                    change(f, c, at);
                    c[i].pointer = nullptr;
                  });
    }
    for (int len = 0; len < f.parameterCount; ++len) {
      const Parameter& length = f.parameters[len];
      if (length.kind != Kind::length || len == at || isAmong(allRows().freeLengths, f, length)) continue;
      call.expect(row.rank == Rank::afterLength ? kvrStatusBadLength : row.status,
                  what + ", " + length.name + " 0", [&](Call& c) {
                    change(f, c, at);
                    c[len].number = 0;
                  });
    }
  });
}

TEST(Contract, Values) {
  for (const BadValue& row : allRows().badValues) {
    refuses(row, std::string(row.parameter) + " " + std::to_string(row.value),
            [&](const Function&, Call& c, int at) { c[at].number = row.value; });
  }
}

TEST(Contract, Contents) {
  for (const BadContents& row : allRows().badContents) {
    std::string what = std::string("contents of ") + row.parameter + ":";
    for (const double element : row.elements) what += " " + std::to_string(element);
    refuses(row, what, [&](const Function& f, Call& c, int at) {
      writeElements(f.parameters[at].type, row.elements, c.memory(at));
    });
  }
}

// The first, second ... allocation fails, with all pointers given and with one of those null that may be.
KvrStatus statusOfFailingMemory(const Function& f) {
  for (const MemoryStatus& row : allRows().memoryStatuses) {
    if (matches(row.functions, f.name)) return row.status;
  }
  return kvrStatusOutOfMemory;
}

TEST(Contract, FailingMemory) {
  forAll([](const Function& f, Call& call) {
    for (int null = -1; null < f.parameterCount; ++null) {
      if (null >= 0 && !(f.parameters[null].isPointer() && isOptional(f, f.parameters[null]))) continue;
      for (int nth = 1; nth <= 16; ++nth) {
        call.reset();
        if (null >= 0) call[null].pointer = nullptr;
        const int before = liveBlocks(), calls = allocationCount();
        const auto watch = call.watched();
        std::vector<std::vector<uint8_t>> contents;
        for (const auto& memory : watch) contents.emplace_back(memory.begin(), memory.end());
        KvrStatus status;
        {
          FailingAllocator failing(nth);
          status = call.run();
        }
        if (status >= kvrStatusOk) {
          EXPECT_LT(allocationCount() - calls, nth) << f.name << " hides a failed allocation";
          call.releaseMade();
          if (!releasesArgument(f)) {
            EXPECT_EQ(before, liveBlocks()) << f.name << " leaks";
          }
          break;
        }
        EXPECT_EQ(statusOfFailingMemory(f), status) << f.name;
        EXPECT_EQ(before, liveBlocks()) << f.name << " leaks after a failed allocation";
        for (size_t i = 0; i < watch.size(); ++i) {
          EXPECT_TRUE(std::equal(contents[i].begin(), contents[i].end(), watch[i].begin()))
              << f.name << " wrote, though allocation " << nth << " failed";
        }
      }
    }
  });
}

}  // namespace
