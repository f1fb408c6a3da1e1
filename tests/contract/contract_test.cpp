// Every declared function against the rules for bad arguments: which status, in which order, and nothing
// written.
// SPDX-License-Identifier: MIT
#include "tests/contract/contract.h"

#include <gtest/gtest.h>
#include <regex.h>

#include <climits>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/contract/exceptions.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

// Whether an extended regular expression is the whole of a name. Patterns are compiled once: 2,072 functions meet each of
// them.
bool matches(const char* pattern, const char* name) {
  static auto& compiled = *new std::map<const char*, regex_t>;  // to the end of the process
  const auto [at, isNew] = compiled.try_emplace(pattern);
  if (isNew && regcomp(&at->second, pattern, REG_EXTENDED) != 0)
    ADD_FAILURE() << "not an expression: " << pattern;
  regmatch_t all;
  return regexec(&at->second, name, 1, &all, 0) == 0 && all.rm_so == 0 && name[all.rm_eo] == '\0';
}

template <size_t n>
bool matchesAny(const char* const (&patterns)[n], const char* name) {
  for (const char* pattern : patterns) {
    if (matches(pattern, name)) return true;
  }
  return false;
}

template <size_t n>
bool isAmong(const OptionalPointer (&rows)[n], const Function& f, const Parameter& p) {
  for (const OptionalPointer& row : rows) {
    if (matches(row.parameter, p.name) && matches(row.functions, f.name)) return true;
  }
  return false;
}

bool isTestedLast(const Function& f, const Parameter& p) {
  return isAmong(kLastPointers, f, p);
}

bool isOptional(const Function& f, const Parameter& p) {
  return isAmong(kOptionalPointers, f, p);
}

// Memory and values for calls of one function.
class Call {
 public:
  explicit Call(const Function& f) : f_(f), memory_(f.parameterCount) {
    for (int i = 0; i < f.parameterCount; ++i) {
      const Parameter& p = f.parameters[i];
      Values::Value& value = valid_.at[i];
      switch (p.kind) {
        case Kind::length:
          value.number = 16;
          break;
        case Kind::value:
          value.number = validValue(p);
          break;
        default:
          memory_[i] = std::make_unique<uint8_t[]>(kBytes);
          value.pointer = memory_[i].get();
      }
    }
    reset();
  }

  // Gives all arguments their valid values again.
  void reset() {
    for (int i = 0; i < f_.parameterCount; ++i) {
      const Parameter& p = f_.parameters[i];
      if (!p.isPointer()) continue;
      memset(memory_[i].get(), strcmp(p.name, "dlyLineIndex") == 0 ? 0 : 1, kBytes);
      if (p.kind == Kind::context) {
        valid_.at[i].pointer = makeContext(p.type, f_.name, memory_[i].get());
        ASSERT_NE(nullptr, valid_.at[i].pointer) << "tests/contract/contexts.cpp makes no " << p.type;
      } else if (p.kind == Kind::newContext) {
        memset(memory_[i].get(), 0, sizeof(void*));
      } else if (p.kind == Kind::channels) {
        channels_.assign(64, memory_[i].get() + 1024);
        valid_.at[i].pointer = channels_.data();
      }
    }
    values_ = valid_;
  }

  Values::Value& operator[](int i) { return values_.at[i]; }
  int find(const char* name) const {
    for (int i = 0; i < f_.parameterCount; ++i) {
      if (strcmp(f_.parameters[i].name, name) == 0) return i;
    }
    return -1;
  }
  KvrStatus run() { return f_.call(values_); }

  // Runs a call that must fail, on fresh values changed by `change`, and must write nothing. A record whose
  // caller's memory is being filled by Init may have been begun.
  template <class Change>
  void expect(KvrStatus status, const std::string& what, Change change) {
    reset();
    if (testing::Test::HasFatalFailure()) return;
    change(*this);
    std::vector<std::vector<uint8_t>> before;
    for (const auto& memory : memory_) {
      before.emplace_back(memory.get(), memory ? memory.get() + kBytes : memory.get());
    }
    EXPECT_EQ(status, run()) << f_.name << ": " << what;
    for (int i = 0; i < f_.parameterCount; ++i) {
      if (!memory_[i] || strcmp(f_.parameters[i].name, "specMem") == 0) continue;
      EXPECT_EQ(0, memcmp(before[i].data(), memory_[i].get(), kBytes))
          << f_.name << ": " << what << ": wrote to " << f_.parameters[i].name;
    }
  }

  void release() {
    if (f_.release == nullptr) return;
    void* record;
    memcpy(&record, memory_[0].get(), sizeof record);
    EXPECT_EQ(kvrStatusOk, f_.release(record)) << f_.name;
  }

 private:
  static constexpr size_t kBytes = kContextBytes;

  double validValue(const Parameter& p) const {
    for (const ValidValue& row : kValidValues) {
      if (strcmp(row.parameter, p.name) == 0 && matches(row.functions, f_.name)) return row.value;
    }
    return 1;
  }

  const Function& f_;
  std::vector<std::unique_ptr<uint8_t[]>> memory_;
  std::vector<void*> channels_;
  Values valid_, values_;
};

template <class Check>
void forAll(Check check) {
  for (const Function& f : functions()) {
    if (matchesAny(kUnchecked, f.name)) continue;
    Call call(f);
    if (testing::Test::HasFatalFailure()) return;
    check(f, call);
  }
}

TEST(Contract, TableIsThere) {
  EXPECT_GT(functions().size(), 40u);
}

TEST(Contract, ValidCallsSucceed) {
  forAll([](const Function& f, Call& call) {
    const int before = liveBlocks();
    EXPECT_GE(call.run(), kvrStatusOk) << f.name;
    call.release();
    EXPECT_EQ(before, liveBlocks()) << f.name << " leaks";
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
        call.release();
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
    const int len = call.find("len");
    if (len < 0) return;
    const bool lengthFirst = matchesAny(kLengthFirst, f.name);
    for (int bad : {0, -1, -7, INT_MIN}) {
      const KvrStatus status =
          bad < 0 && matchesAny(kLengthAgainstZero, f.name) ? kvrStatusOk : kvrStatusBadLength;
      call.expect(status, "len " + std::to_string(bad), [&](Call& c) { c[len].number = bad; });
      for (int i = 0; i < f.parameterCount; ++i) {
        if (!f.parameters[i].isPointer() || isOptional(f, f.parameters[i])) continue;
        const bool lengthWins = lengthFirst || isTestedLast(f, f.parameters[i]);
        call.expect(lengthWins ? kvrStatusBadLength : kvrStatusNullPointer,
                    std::string(f.parameters[i].name) + " null, len " + std::to_string(bad), [&](Call& c) {
                      c[len].number = bad;
                      c[i].pointer = nullptr;
                    });
      }
    }
  });
}

TEST(Contract, Contexts) {
  forAll([](const Function& f, Call& call) {
    for (int i = 0; i < f.parameterCount; ++i) {
      if (f.parameters[i].kind != Kind::context) continue;
      for (uint32_t word : {0u, 1u, 3u, 0x46490000u, 0xFFFFFFFFu}) {
        const auto damage = [&](Call& c) { memcpy(c[i].pointer, &word, sizeof word); };
        call.expect(kvrStatusContextMismatch, "context word " + std::to_string(word), damage);
      }
    }
  });
}

TEST(Contract, Values) {
  for (const BadValue& row : kBadValues) {
    forAll([&row](const Function& f, Call& call) {
      if (!matches(row.functions, f.name)) return;
      const int at = call.find(row.parameter);
      ASSERT_GE(at, 0) << f.name << " has no " << row.parameter;
      const std::string what = std::string(row.parameter) + " " + std::to_string(row.value);
      call.expect(row.status, what, [&](Call& c) { c[at].number = row.value; });
      for (int i = 0; i < f.parameterCount; ++i) {
        if (!f.parameters[i].isPointer() || isOptional(f, f.parameters[i])) continue;
        const bool first = row.rank == Rank::beforePointers ||
                           (row.rank == Rank::afterPointers && isAmong(kLatePointers, f, f.parameters[i]));
        call.expect(first ? row.status : kvrStatusNullPointer, what + ", " + f.parameters[i].name + " null",
                    [&](Call& c) {
                      c[at].number = row.value;
                      c[i].pointer = nullptr;
                    });
      }
      if (const int len = call.find("len"); len >= 0) {
        call.expect(row.rank == Rank::afterLength ? kvrStatusBadLength : row.status, what + ", len 0",
                    [&](Call& c) {
                      c[at].number = row.value;
                      c[len].number = 0;
                    });
      }
    });
  }
}

TEST(Contract, FailingMemory) {
  forAll([](const Function& f, Call& call) {
    const int before = liveBlocks();
    for (int nth = 1; nth <= 16; ++nth) {
      call.reset();
      const int calls = allocationCount();
      KvrStatus status;
      {
        FailingAllocator failing(nth);
        status = call.run();
      }
      if (status >= kvrStatusOk) {
        EXPECT_LT(allocationCount() - calls, nth) << f.name << " hides a failed allocation";
        call.release();
        break;
      }
      EXPECT_EQ(kvrStatusOutOfMemory, status) << f.name;
      EXPECT_EQ(before, liveBlocks()) << f.name << " leaks after a failed allocation";
    }
    EXPECT_EQ(before, liveBlocks()) << f.name << " leaks";
  });
}

}  // namespace
