// SPDX-License-Identifier: MIT
#include "tests/contract/arguments.h"

#include <regex.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string_view>

namespace kvrs::test {
namespace {

constexpr int kChannels = 8;  // that arrays of pointers hold

// Values and contents that many families share. A family's own rows come first.
const FamilyRows kCommon = {
    .validValues =
        {
            {.parameter = "scaleFactor", .value = 0},
            {.parameter = "order", .value = 4},
            {.parameter = "flag", .value = 8},  // no factor in either direction
            {.parameter = "tapsLen", .value = 4},
            {.parameter = "srcBitOffset", .value = 0},
            {.parameter = "dstBitOffset", .value = 0},
            {.parameter = "dlyLineIndex", .value = 0},
            {.parameter = "hint", .value = 0},
        },
    .validContents = {{.parameter = "dlyLineIndex", .elements = {0}}},
};

FamilyRows& registered() {
  static auto& rows = *new FamilyRows;  // to the end of the process
  return rows;
}

// The characters that every name begins with which a pattern matches, so that most names need no look at the rest.
std::string literalStart(std::string_view pattern) {
  int depth = 0;
  for (const char c : pattern) {
    depth += (c == '(') - (c == ')');
    if (c == '|' && depth == 0) return "";
  }
  size_t n = std::min(pattern.find_first_of("[(.*+?{|^$\\"), pattern.size());
  if (n > 0 && n < pattern.size() && strchr("*?{", pattern[n]) != nullptr) --n;
  return std::string(pattern.substr(0, n));
}

struct Pattern {
  std::string start;
  regex_t rest;
};

template <class Row>
const Row* find(const std::vector<Row>& rows, const Function& f, const Parameter& p) {
  for (const Row& row : rows) {
    if (matches(row.parameter, p.name) && matches(row.functions, f.name)) return &row;
  }
  return nullptr;
}

// The row of a family, or else the common one.
template <class Row>
const Row* findAny(std::vector<Row> FamilyRows::*rows, const Function& f, const Parameter& p) {
  const Row* row = find(allRows().*rows, f, p);
  return row != nullptr ? row : find(kCommon.*rows, f, p);
}

double validValue(const Function& f, const Parameter& p) {
  const ValidValue* row = findAny(&FamilyRows::validValues, f, p);
  if (row != nullptr) return row->value;
  return p.kind == Kind::length ? 16 : 1;
}

template <class Part>
void writeParts(std::span<const double> parts, std::span<uint8_t> memory) {
  for (size_t i = 0; i < parts.size() && (i + 1) * sizeof(Part) <= memory.size(); ++i) {
    const Part part = static_cast<Part>(parts[i]);
    memcpy(memory.data() + i * sizeof part, &part, sizeof part);
  }
}

}  // namespace

Family::Family(FamilyRows rows) {
  const auto add = [&](auto list) {
    auto& all = registered().*list;
    all.insert(all.end(), (rows.*list).begin(), (rows.*list).end());
  };
  add(&FamilyRows::optionalPointers);
  add(&FamilyRows::latePointers);
  add(&FamilyRows::lastPointers);
  add(&FamilyRows::lengthFirst);
  add(&FamilyRows::lengthAgainstZero);
  add(&FamilyRows::freeLengths);
  add(&FamilyRows::oneElement);
  add(&FamilyRows::unchecked);
  add(&FamilyRows::validValues);
  add(&FamilyRows::validContents);
  add(&FamilyRows::badValues);
  add(&FamilyRows::badContents);
  add(&FamilyRows::contexts);
  add(&FamilyRows::contextRanks);
  add(&FamilyRows::acceptedWords);
  add(&FamilyRows::memoryStatuses);
  add(&FamilyRows::wordless);
}

const FamilyRows& allRows() {
  return registered();
}

int Function::find(const char* parameter) const {
  for (int i = 0; i < parameterCount; ++i) {
    if (strcmp(parameters[i].name, parameter) == 0) return i;
  }
  return -1;
}

// Patterns are compiled once: 2,072 functions meet each of them.
bool matches(const char* pattern, const char* name) {
  static auto& compiled = *new std::map<std::string_view, Pattern>;
  const auto [at, isNew] = compiled.try_emplace(pattern);
  Pattern& p = at->second;
  if (isNew) {
    p.start = literalStart(pattern);
    if (regcomp(&p.rest, pattern, REG_EXTENDED) != 0) {
      fprintf(stderr, "not a regular expression: %s\n", pattern);
      exit(1);
    }
  }
  if (strncmp(name, p.start.c_str(), p.start.size()) != 0) return false;
  regmatch_t all;
  return regexec(&p.rest, name, 1, &all, 0) == 0 && all.rm_so == 0 && name[all.rm_eo] == '\0';
}

bool isAmong(const std::vector<const char*>& functions, const Function& f) {
  return std::any_of(functions.begin(), functions.end(),
                     [&](const char* pattern) { return matches(pattern, f.name); });
}

bool isAmong(const std::vector<ParameterRow>& rows, const Function& f, const Parameter& p) {
  return find(rows, f, p) != nullptr;
}

void writeElements(const char* type, std::span<const double> elements, std::span<uint8_t> memory) {
  memset(memory.data(), 0, memory.size());
  std::string_view t = type;
  if (t.ends_with('c')) t.remove_suffix(1);
  if (t == "Kvr8u") return writeParts<Kvr8u>(elements, memory);
  if (t == "Kvr8s") return writeParts<Kvr8s>(elements, memory);
  if (t == "Kvr16u") return writeParts<Kvr16u>(elements, memory);
  if (t == "Kvr16s") return writeParts<Kvr16s>(elements, memory);
  if (t == "Kvr32u") return writeParts<Kvr32u>(elements, memory);
  if (t == "Kvr32s" || t == "int") return writeParts<Kvr32s>(elements, memory);
  if (t == "Kvr64s") return writeParts<Kvr64s>(elements, memory);
  if (t == "Kvr32f") return writeParts<Kvr32f>(elements, memory);
  if (t == "Kvr64f") return writeParts<Kvr64f>(elements, memory);
  fprintf(stderr, "no elements of type %s\n", type);
  exit(1);
}

Arguments::Arguments(const Function& f, size_t arrayBytes)
    : f_(f), memory_(f.parameterCount), bytes_(f.parameterCount), pointers_(f.parameterCount) {
  for (int i = 0; i < f.parameterCount; ++i) {
    const Parameter& p = f.parameters[i];
    if (!p.isPointer()) continue;
    // Bytes may be the memory of a record or of work.
    const bool isLarge = p.kind == Kind::context || strcmp(p.type, "Kvr8u") == 0;
    bytes_[i] = p.kind == Kind::contexts   ? kChannels * kContextBytes
                : p.kind == Kind::channels ? kChannels * arrayBytes
                : isLarge                  ? std::max(kContextBytes, arrayBytes)
                                           : arrayBytes;
    memory_[i].resize(bytes_[i] + 2 * kMargin);
  }
  reset();
}

bool Arguments::reset() {
  releaseContexts();
  for (int i = 0; i < f_.parameterCount; ++i) {
    const Parameter& p = f_.parameters[i];
    Values::Value& value = values_.at[i];
    if (!p.isPointer()) {
      value.number = validValue(f_, p);
      continue;
    }
    uint8_t* memory = begin(i);
    value.pointer = memory;
    switch (p.kind) {
      case Kind::context:
        value.pointer = makeContext(i, memory);
        break;
      case Kind::contexts:
        pointers_[i].clear();
        for (int c = 0; c < kChannels; ++c)
          pointers_[i].push_back(makeContext(i, memory + c * kContextBytes));
        value.pointer = pointers_[i].data();
        break;
      case Kind::channels:
        memset(memory, 1, bytes_[i]);
        pointers_[i].clear();
        for (int c = 0; c < kChannels; ++c) pointers_[i].push_back(memory + c * bytes_[i] / kChannels);
        value.pointer = pointers_[i].data();
        break;
      case Kind::newContext:
      case Kind::address:
        memset(memory, 0, bytes_[i]);
        break;
      default:
        if (const ValidContents* row = contents(i); row != nullptr) {
          writeElements(p.type, row->elements, {memory, bytes_[i]});
        } else {
          memset(memory, 1, bytes_[i]);
        }
    }
  }
  return missing_.empty();
}

const ValidContents* Arguments::contents(int i) const {
  return findAny(&FamilyRows::validContents, f_, f_.parameters[i]);
}

void* Arguments::makeContext(int parameter, uint8_t* memory) {
  memset(memory, 0, kContextBytes);
  const char* type = f_.parameters[parameter].type;
  // A maker for some functions comes before one for all.
  for (const bool wantAll : {false, true}) {
    for (const ContextMaker& maker : allRows().contexts) {
      const bool isForAll = strcmp(maker.functions, ".*") == 0;
      if (isForAll != wantAll || strcmp(maker.type, type) != 0 || !matches(maker.functions, f_.name))
        continue;
      void* record = maker.make(memory);
      if (record != nullptr && maker.release != nullptr) {
        onHeap_.push_back({parameter, record, maker.release});
      }
      if (record == nullptr) missing_ = std::string("a maker that succeeds for ") + type;
      return record;
    }
  }
  missing_ = std::string("a maker of ") + type + " in tests/contract/families";
  return nullptr;
}

void Arguments::releaseContexts() {
  for (const Context& context : onHeap_) context.release(context.record);
  onHeap_.clear();
}

KvrStatus Arguments::run() {
  const KvrStatus status = f_.call(values_);
  // What Free has released is no longer ours.
  if (status >= kvrStatusOk && strstr(f_.name, "Free") != nullptr) onHeap_.clear();
  return status;
}

KvrStatus Arguments::releaseMade() {
  if (f_.release == nullptr) return kvrStatusOk;
  const auto isNew = [](const Parameter& p) { return p.kind == Kind::newContext; };
  const auto all = f_.all();
  const auto at = std::find_if(all.begin(), all.end(), isNew) - all.begin();
  void* record;
  memcpy(&record, begin(static_cast<int>(at)), sizeof record);
  return f_.release(record);
}

}  // namespace kvrs::test
