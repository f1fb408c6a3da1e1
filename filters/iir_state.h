// The state of a recursive filter: one block of memory, a record and its tables. One description lays out all fourteen
// types, which differ in the type W of their numbers, in their words and in their stated sizes.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_IIR_STATE_H
#define KVRS_FILTERS_IIR_STATE_H

#include <climits>
#include <cstring>

#include "filters/iir_number.h"
#include "frame/buffer.h"
#include "frame/check.h"
#include "frame/ref.h"
#include "kvrs/convert.h"
#include "kvrs/iir.h"

namespace kvrs::iir {

enum class Form : int32_t {
  direct,   // one section of any order
  cascade,  // sections of the second order
  df1,      // the same with inputs and outputs for a delay line
};

// Outputs that look-ahead computes at once: whole vectors of them, two where vectors are short.
inline constexpr size_t kBlockVectors = kVectorBytes == 16 ? 2 : 1;
template <class W>
inline constexpr size_t kBlock = kBlockVectors* kVectorBytes / sizeof(W);

// Higher orders run sample by sample.
inline constexpr size_t kMostBlockOrder = 127;

// Look-ahead multiplies rounding errors by about the growth of its table over that of the taps, and those of high orders by
// far more: with random poles, of order 13 in single precision, filters were 13 times less accurate at a growth of 8, 68
// times at 16 and unstable at 64. Sections have less than three times the error at any growth they can have when stable,
// which is at most 11, of two poles at 1. What grows more runs sample by sample.
inline constexpr double kMostGrowth = 8, kMostGrowthOfSection = 32;

// The normalised taps of a second-order section.
template <class W>
struct Section {
  W b0, b1, b2, a1, a2;
};

// The look-ahead table of a section, kBlock numbers each, with p the section's steadiness and e1 = b1 + c1 b0,
// e2 = b2 + c2 b0 the numerator of what the section does besides multiplying by b0:
//
//   steps of outputs    g[m], the impulse response of 1 / A(z), 0 in the place of the leading 1 telling that there is none
//   outputs             g[m+1] + p c2 g[m]
//   own inputs          e2 in the place of a leading 0, then the impulse response of the section from its second number on
//   inputs              e1 g[m] + e2 g[m-1] + p e2 g[m]
template <class W>
inline constexpr size_t kSectionTable = 4 * kBlock<W>;

// What a signal that goes on as it was is multiplied by from sample to sample: 1 where poles are near 1, -1 where they are
// near -1, 0 elsewhere. The last two numbers of a signal go into look-ahead as v1 and v2 - p * v1, of which the latter is
// small and exact. Otherwise their large products would leave errors in neighbouring outputs that do not fit to each
// other, which such filters take for a slope and follow.
template <class W>
constexpr Part<W> steadinessOf(const Section<W>& section) {
  Part<W> a1;
  if constexpr (kIsComplex<W>) {
    a1 = section.a1.re;
  } else {
    a1 = section.a1;
  }
  return static_cast<Part<W>>(a1 < -1 ? 1 : a1 > 1 ? -1 : 0);
}

template <class W>
struct State {
  using Working = W;

  uint32_t idWord;
  Form form;
  int32_t allocated;  // the block is ours to release
  int32_t dlyLen;     // numbers that GetDlyLine shows: the order of a direct form
  int32_t numBq;      // 0 in a direct form
  int32_t looksAhead;
  Ref<W> taps;     // b[0] .. b[N], a[1] .. a[N], or sections
  Ref<W> dlyLine;  // a spare zero behind that of a direct form
  // Of a direct form the impulse response of 1 / A(z) for kBlock samples, then for k = 1 .. N what an output does to the
  // kBlock samples that begin k behind it. Of a cascade kSectionTable numbers for each section. Null where there is no room:
  // in direct forms of high order, and in single-precision df1 forms.
  Ref<W> table;
  Ref<W>
      df1DlyLine;  // 4 numbers for each section of a df1 form that runs on the transposed one; null in others

  Section<W>* sections() const { return reinterpret_cast<Section<W>*>(taps.get()); }
};

// Which words the contexts of a type have, in their low digits, by form; 0 where there is no such form. Contexts whose
// samples are converted are larger.
struct Words {
  int direct, cascade, df1;
  bool converts;
};
constexpr uint32_t word(int number) {
  return 0x49493030u + static_cast<uint32_t>(number / 10 * 256 + number % 10);
}

template <class S>
inline constexpr Words kWords{};
template <>
inline constexpr Words kWords<KvrsIIRState_32f>{1, 2, 29, false};
template <>
inline constexpr Words kWords<KvrsIIRState_32fc>{3, 4, 0, false};
template <>
inline constexpr Words kWords<KvrsIIRState32f_16s>{5, 6, 0, true};
template <>
inline constexpr Words kWords<KvrsIIRState32fc_16sc>{7, 8, 0, true};
template <>
inline constexpr Words kWords<KvrsIIRState32s_16s>{9, 10, 0, true};
template <>
inline constexpr Words kWords<KvrsIIRState32sc_16sc>{11, 12, 0, true};
template <>
inline constexpr Words kWords<KvrsIIRState_64f>{13, 14, 0, false};
template <>
inline constexpr Words kWords<KvrsIIRState_64fc>{15, 16, 0, false};
template <>
inline constexpr Words kWords<KvrsIIRState64f_32f>{17, 18, 0, true};
template <>
inline constexpr Words kWords<KvrsIIRState64fc_32fc>{19, 20, 0, true};
template <>
inline constexpr Words kWords<KvrsIIRState64f_32s>{21, 22, 30, true};
template <>
inline constexpr Words kWords<KvrsIIRState64fc_32sc>{23, 24, 0, true};
template <>
inline constexpr Words kWords<KvrsIIRState64f_16s>{25, 26, 0, true};
template <>
inline constexpr Words kWords<KvrsIIRState64fc_16sc>{27, 28, 0, true};

template <class S>
constexpr uint32_t wordOf(Form form) {
  constexpr Words words = kWords<S>;
  return word(form == Form::direct ? words.direct : form == Form::cascade ? words.cascade : words.df1);
}

// Part of the interface, as callers may keep what a GetStateSize told them: in bytes, with n the order or the number of
// sections.
template <class W>
uint64_t stateSize(Form form, bool converts, uint64_t n);

// Lays out a context without taps in `memory`, which has the stated size. `dlyLine` may be null.
template <class W>
State<W>* build(Form form, uint32_t idWord, int n, const void* dlyLine, Kvr8u* memory);

// The delay line as callers see it, as bytes: of type W or of integers that carry it bit for bit.
template <class W>
void setDelayLine(State<W>* state, const void* dlyLine);
template <class W>
void getDelayLine(const State<W>* state, void* dlyLine);

// From the layout that callers give taps in. kvrStatusDivByZeroError for an a0 of 0 and for a section's b0 of 0; the
// sections before it have been stored then.
template <class W>
KvrStatus loadTaps(State<W>* state, const W* taps);

template <class W>
void makeSectionTable(const Section<W>& section, W* table);

// One section that is normalised already, and the taps of a direct form that have been stored.
template <class W>
void storeSection(State<W>* state, size_t index, const Section<W>& section);
template <class W>
void makeDirectTable(State<W>* state);

#define KVRS_IIR_STATE_OF(W)                                                    \
  extern template uint64_t stateSize<W>(Form, bool, uint64_t);                  \
  extern template State<W>* build<W>(Form, uint32_t, int, const void*, Kvr8u*); \
  extern template void setDelayLine<W>(State<W>*, const void*);                 \
  extern template void getDelayLine<W>(const State<W>*, void*);                 \
  extern template KvrStatus loadTaps<W>(State<W>*, const W*);                   \
  extern template void makeSectionTable<W>(const Section<W>&, W*);              \
  extern template void storeSection<W>(State<W>*, size_t, const Section<W>&);   \
  extern template void makeDirectTable<W>(State<W>*)
KVRS_IIR_STATE_OF(Kvr32f);
KVRS_IIR_STATE_OF(Kvr32fc);
KVRS_IIR_STATE_OF(Kvr64f);
KVRS_IIR_STATE_OF(Kvr64fc);
#undef KVRS_IIR_STATE_OF

// What exports of all types share. Checks stand here, since they are the same for all.

inline KvrStatus filterOrder(int n) {
  return check::require(n >= 1, kvrStatusBadIirOrder);
}

// A context of type S: direct form or cascade, and the df1 form where it counts.
template <class S>
KVRS_INLINE KvrStatus contextOf(const S* state, bool df1 = true) {
  constexpr Words words = kWords<S>;
  if (words.df1 == 0 || !df1) return check::context(state, word(words.direct), word(words.cascade));
  return check::context(state, word(words.direct), word(words.cascade), word(words.df1));
}

template <class S>
KvrStatus sizeOf(Form form, int n, int* size) {
  if (n < 1) return kvrStatusBadIirOrder;
  const uint64_t bytes = stateSize<typename S::Working>(form, kWords<S>.converts, static_cast<uint64_t>(n));
  if (bytes > INT_MAX) return kvrStatusBadIirOrder;
  *size = static_cast<int>(bytes);
  return kvrStatusOk;
}

template <class S>
KvrStatus getStateSize(Form form, int n, int* size) {
  KVRS_CHECK(pointers(size));
  return sizeOf<S>(form, n, size);
}

template <class S, class W = typename S::Working>
KvrStatus init(Form form, S** state, const W* taps, int n, const void* dlyLine, Kvr8u* buffer) {
  KVRS_CHECK(pointers(taps, state, buffer), filterOrder(n));
  int size;
  KvrStatus status = sizeOf<S>(form, n, &size);
  if (status != kvrStatusOk) return status;
  State<W>* made = build<W>(form, wordOf<S>(form), n, dlyLine, alignUp(buffer));
  status = loadTaps(made, taps);
  if (status == kvrStatusOk) *state = static_cast<S*>(made);
  return status;
}

template <class S, class W = typename S::Working>
KvrStatus initAlloc(Form form, S** state, const W* taps, int n, const void* dlyLine) {
  KVRS_CHECK(pointers(taps, state), filterOrder(n));
  int size;
  KvrStatus status = sizeOf<S>(form, n, &size);
  if (status != kvrStatusOk) return status;
  auto* block = static_cast<Kvr8u*>(kvrMalloc(static_cast<size_t>(size)));
  if (block == nullptr) return kvrStatusOutOfMemory;
  State<W>* made = build<W>(form, wordOf<S>(form), n, dlyLine, block);
  made->allocated = 1;
  status = loadTaps(made, taps);
  if (status != kvrStatusOk) {
    kvrFree(block);
    return status;
  }
  *state = static_cast<S*>(made);
  return kvrStatusOk;
}

// So many integers, times 2^-tapsFactor, in temporary memory; null if there is none.
template <class W, class I>
W* convertTaps(const Scratch& memory, const I* taps, uint64_t count, int tapsFactor) {
  auto* floats = memory.as<W>();
  if (floats != nullptr) {
    kvrsConvert_32s32f_Sfs(reinterpret_cast<const Kvr32s*>(taps), reinterpret_cast<Kvr32f*>(floats),
                           static_cast<int>(count * kParts<W>), tapsFactor);
  }
  return floats;
}

// Taps that a caller gives for n: 2n + 2 of a direct form, 6 of each section.
constexpr uint64_t tapCount(Form form, int n) {
  return form == Form::direct ? 2 * static_cast<uint64_t>(n) + 2 : 6 * static_cast<uint64_t>(n);
}

template <class S, class I, class W = typename S::Working>
KvrStatus initInteger(Form form, S** state, const I* taps, int n, int tapsFactor, const void* dlyLine,
                      Kvr8u* buffer) {
  KVRS_CHECK(pointers(taps, state, buffer), filterOrder(n));
  int size;
  const KvrStatus status = sizeOf<S>(form, n, &size);
  if (status != kvrStatusOk) return status;
  const uint64_t count = tapCount(form, n);
  const Scratch memory(count * sizeof(W));
  const W* floats = convertTaps<W>(memory, taps, count, tapsFactor);
  return floats == nullptr ? kvrStatusOutOfMemory : init(form, state, floats, n, dlyLine, buffer);
}

template <class S, class I, class W = typename S::Working>
KvrStatus initAllocInteger(Form form, S** state, const I* taps, int n, int tapsFactor, const void* dlyLine) {
  KVRS_CHECK(pointers(taps, state), filterOrder(n));
  int size;
  const KvrStatus status = sizeOf<S>(form, n, &size);
  if (status != kvrStatusOk) return status;
  const uint64_t count = tapCount(form, n);
  const Scratch memory(count * sizeof(W));
  const W* floats = convertTaps<W>(memory, taps, count, tapsFactor);
  return floats == nullptr ? kvrStatusOutOfMemory : initAlloc(form, state, floats, n, dlyLine);
}

template <class S>
KvrStatus release(S* state) {
  KVRS_CHECK(contextOf(state));
  if (state->allocated == 1) kvrFree(state);
  return kvrStatusOk;
}

template <class S>
KvrStatus getDlyLine(const S* state, void* dlyLine) {
  KVRS_CHECK(pointers(state, dlyLine), contextOf(state));
  getDelayLine<typename S::Working>(state, dlyLine);
  return kvrStatusOk;
}

template <class S>
KvrStatus setDlyLine(S* state, const void* dlyLine) {
  KVRS_CHECK(contextOf(state));
  setDelayLine<typename S::Working>(state, dlyLine);
  return kvrStatusOk;
}

template <class S>
KvrStatus setTaps(const typename S::Working* taps, S* state) {
  KVRS_CHECK(pointers(taps, state), contextOf(state));
  return loadTaps<typename S::Working>(state, taps);
}

// Known to callers to report a mismatch whatever happened, with the taps changed.
template <class S, class I, class W = typename S::Working>
KvrStatus setTapsInteger(const I* taps, S* state, int tapsFactor) {
  KVRS_CHECK(pointers(taps, state), contextOf(state));
  const bool isDirect = state->form == Form::direct;
  const uint64_t count = tapCount(state->form, isDirect ? state->dlyLen : state->numBq);
  const Scratch memory(count * sizeof(W));
  const W* floats = convertTaps<W>(memory, taps, count, tapsFactor);
  if (floats == nullptr) return kvrStatusOutOfMemory;
  loadTaps<W>(state, floats);
  return kvrStatusContextMismatch;
}

}  // namespace kvrs::iir

struct KvrsIIRState_32f : kvrs::iir::State<Kvr32f> {};
struct KvrsIIRState32f_16s : kvrs::iir::State<Kvr32f> {};
struct KvrsIIRState32s_16s : kvrs::iir::State<Kvr32f> {};
struct KvrsIIRState_32fc : kvrs::iir::State<Kvr32fc> {};
struct KvrsIIRState32fc_16sc : kvrs::iir::State<Kvr32fc> {};
struct KvrsIIRState32sc_16sc : kvrs::iir::State<Kvr32fc> {};
struct KvrsIIRState_64f : kvrs::iir::State<Kvr64f> {};
struct KvrsIIRState64f_32f : kvrs::iir::State<Kvr64f> {};
struct KvrsIIRState64f_32s : kvrs::iir::State<Kvr64f> {};
struct KvrsIIRState64f_16s : kvrs::iir::State<Kvr64f> {};
struct KvrsIIRState_64fc : kvrs::iir::State<Kvr64fc> {};
struct KvrsIIRState64fc_32fc : kvrs::iir::State<Kvr64fc> {};
struct KvrsIIRState64fc_32sc : kvrs::iir::State<Kvr64fc> {};
struct KvrsIIRState64fc_16sc : kvrs::iir::State<Kvr64fc> {};

#endif
