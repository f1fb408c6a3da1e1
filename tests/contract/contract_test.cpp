// Every declared function against the rules for bad arguments: which status, in which order, and nothing
// written.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "tests/contract/arguments.h"
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

  void reset() { ASSERT_TRUE(arguments_.reset()) << f_.name << " needs " << arguments_.missing(); }
  Values::Value& operator[](int i) { return arguments_[i]; }
  std::span<uint8_t> memory(int i) { return arguments_.memory(i); }
  KvrStatus run() { return arguments_.run(); }
  void releaseMade() { EXPECT_EQ(kvrStatusOk, arguments_.releaseMade()) << f_.name; }

  // Runs a call that must fail, on fresh values changed by `change`, and must write nothing. A record whose caller's
  // memory is being filled by Init may have been begun.
  template <class Change>
  void expect(KvrStatus status, const std::string& what, Change change) {
    reset();
    if (testing::Test::HasFatalFailure()) return;
    change(*this);
    std::vector<std::vector<uint8_t>> before;
    for (int i = 0; i < f_.parameterCount; ++i) {
      before.emplace_back(memory(i).begin(), memory(i).end());
    }
    EXPECT_EQ(status, run()) << f_.name << ": " << what;
    for (int i = 0; i < f_.parameterCount; ++i) {
      if (memory(i).empty() || strcmp(f_.parameters[i].name, "specMem") == 0) continue;
      EXPECT_EQ(0, memcmp(before[i].data(), memory(i).data(), memory(i).size()))
          << f_.name << ": " << what << ": wrote to " << f_.parameters[i].name;
    }
  }

 private:
  const Function& f_;
  Arguments arguments_;
};

// A Free leaves fewer blocks than there were, where its argument was on the heap.
bool releasesArgument(const Function& f) {
  return strstr(f.name, "Free") != nullptr;
}

template <class Check>
void forAll(Check check) {
  for (const Function& f : functions()) {
    if (isAmong(allRows().unchecked, f)) continue;
    Call call(f);
    call.reset();
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

// The record of a context argument, or the first one of several.
void* record(const Function& f, Call& call, int i) {
  void* const pointer = call[i].pointer;
  return f.parameters[i].kind == Kind::contexts ? *static_cast<void**>(pointer) : pointer;
}

TEST(Contract, Contexts) {
  forAll([](const Function& f, Call& call) {
    for (int i = 0; i < f.parameterCount; ++i) {
      const Kind kind = f.parameters[i].kind;
      if (kind != Kind::context && kind != Kind::contexts) continue;
      for (uint32_t word : {0u, 1u, 3u, 0x46490000u, 0xFFFFFFFFu}) {
        uint32_t right = 0;
        const auto damage = [&](Call& c) {
          memcpy(&right, record(f, c, i), sizeof right);
          memcpy(record(f, c, i), &word, sizeof word);
        };
        call.expect(kvrStatusContextMismatch, "context word " + std::to_string(word), damage);
        memcpy(record(f, call, i), &right, sizeof right);  // so that it can be released
      }
    }
  });
}

// A row of values or contents that are refused: alone, and together with other faults.
template <class Row, class Change>
void refuses(const Row& row, const std::string& what, Change change) {
  forAll([&](const Function& f, Call& call) {
    if (!matches(row.functions, f.name)) return;
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

TEST(Contract, FailingMemory) {
  forAll([](const Function& f, Call& call) {
    for (int nth = 1; nth <= 16; ++nth) {
      call.reset();
      const int before = liveBlocks();
      const int calls = allocationCount();
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
      EXPECT_EQ(kvrStatusOutOfMemory, status) << f.name;
      EXPECT_EQ(before, liveBlocks()) << f.name << " leaks after a failed allocation";
    }
  });
}

}  // namespace
