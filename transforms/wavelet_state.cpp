// States of two-channel filter banks: layout, delay lines.
// SPDX-License-Identifier: MIT
#include "transforms/wavelet_state.h"

#include <climits>
#include <cstring>

#include "frame/buffer.h"
#include "frame/simd.h"
#include "frame/unaligned.h"

namespace kvrs::wavelet {
namespace {

// Blocks of outputs read so many samples behind the last one that they need.
constexpr uint64_t kBehind = kLanes<Kvr32f> + 8;
constexpr size_t kCacheLine = 64;

constexpr int64_t atLeastZero(int64_t value) {
  return value > 0 ? value : 0;
}

// What a channel's tables hold, before anything is known to fit.
struct Plan {
  int64_t dlyLen;
  uint64_t room, places;  // of a line, and with what is read behind it

  Plan(int64_t dlyLenOf, int64_t kept) : dlyLen(dlyLenOf) {
    const uint64_t history = static_cast<uint64_t>(kept);
    room = 1 + history + (history > kPiece ? history : kPiece);
    places = room + kBehind;
  }
};

int64_t leadOf(const Given& given) {
  return int64_t{given.len} + given.offset - 1;
}
Plan planOf(const ForwardChannel*, const Given& given) {
  const int64_t dlyLen = atLeastZero(leadOf(given));
  return {dlyLen, (dlyLen + 1) / 2};
}
// How many samples before the newest one of a pair of outputs meet a tap, and by how many samples all are late.
int64_t reachOf(const Given& given) {
  return (int64_t{given.len} + (given.offset & 1) - 1) / 2;
}
Plan planOf(const InverseChannel*, const Given& given) {
  const int64_t dlyLen = reachOf(given) + given.offset / 2;
  return {dlyLen, dlyLen};
}

// Of the record, its gaps and all tables, in bytes.
template <class Channel>
uint64_t bytes(const Given& given) {
  constexpr uint64_t kLines = std::is_same_v<Channel, ForwardChannel> ? 2 : 1;
  const Plan plan = planOf(static_cast<const Channel*>(nullptr), given);
  return (static_cast<uint64_t>(given.len) + kLines * plan.places) * sizeof(Kvr32f) + 4 * kCacheLine;
}

// Every step-th tap from `first` on.
void fill(Filter* filter, Carver* carver, const Given& given, int first, int step) {
  const int count = (given.len - first + step - 1) / step;
  Kvr32f* const reversed = carver->take<Kvr32f>(static_cast<size_t>(count));
  for (int k = 0; k < count; ++k) reversed[count - 1 - k] = unaligned::get(given.taps + first + k * step);
  filter->taps = count;
  filter->reversed.set(reversed);
}

Kvr32f* takeLine(Carver* carver, Line* line, const Plan& plan) {
  Kvr32f* const samples = carver->take<Kvr32f>(plan.places, kCacheLine);
  memset(samples, 0, plan.places * sizeof(Kvr32f));
  *line = {static_cast<int32_t>(plan.dlyLen), 1, static_cast<int32_t>(plan.room)};
  return samples;
}

void build(ForwardChannel* channel, Carver* carver, const Given& given) {
  const Plan plan = planOf(channel, given);
  channel->lead = static_cast<int32_t>(leadOf(given));
  fill(&channel->filter, carver, given, 0, 1);
  channel->filter.from = 0;
  channel->even.set(takeLine(carver, &channel->line, plan));
  channel->odd.set(takeLine(carver, &channel->line, plan));
}

void build(InverseChannel* channel, Carver* carver, const Given& given) {
  const Plan plan = planOf(channel, given);
  const int32_t phase = given.offset & 1, newest = static_cast<int32_t>(reachOf(given));
  // Output 2i is that of the even taps, or with an odd delay that of the odd ones before the newest sample counts.
  Filter& even = channel->filter[phase];
  Filter& odd = channel->filter[1 - phase];
  fill(&even, carver, given, 0, 2);
  fill(&odd, carver, given, 1, 2);
  even.from = newest + 1 - even.taps;
  odd.from = newest + 1 - phase - odd.taps;
  channel->samples.set(takeLine(carver, &channel->line, plan));
}

// The delay line to the front, if there are no places for `count` more behind it.
template <class Channel, class... Samples>
void toFront(Channel* channel, size_t count, Samples*... samples) {
  Line& line = channel->line;
  const size_t kept = static_cast<size_t>(channel->places());
  if (static_cast<size_t>(line.at) + kept + count <= static_cast<size_t>(line.room)) return;
  (memmove(samples + 1, samples + line.at, kept * sizeof(Kvr32f)), ...);
  line.at = 1;
}

// Where sample k of the delay line is.
Kvr32f* place(const ForwardChannel& channel, int32_t k) {
  return (k % 2 == 0 ? channel.even : channel.odd).present() + channel.line.at + k / 2;
}
Kvr32f* place(const InverseChannel& channel, int32_t k) {
  return channel.samples.present() + channel.line.at + k;
}

template <class Channel>
void get(const Channel& channel, Kvr32f* to) {
  for (int32_t k = 0; k < channel.line.dlyLen; ++k) unaligned::put(*place(channel, k), to + k);
}
template <class Channel>
void set(Channel* channel, const Kvr32f* from) {
  for (int32_t k = 0; k < channel->line.dlyLen; ++k) *place(*channel, k) = unaligned::get(from + k);
}

}  // namespace

template <class Channel>
State<Channel>* create(Word word, const Given& low, const Given& high) {
  // References inside a block are 32-bit.
  const uint64_t size = sizeof(State<Channel>) + bytes<Channel>(low) + bytes<Channel>(high);
  if (size > INT_MAX) return nullptr;
  void* const block = kvrMalloc(static_cast<size_t>(size));
  if (block == nullptr) return nullptr;
  Carver carver(block);
  auto* const state = carver.take<State<Channel>>(1);
  state->idWord = word;
  build(&state->low, &carver, low);
  build(&state->high, &carver, high);
  return state;
}

template State<ForwardChannel>* create(Word word, const Given& low, const Given& high);
template State<InverseChannel>* create(Word word, const Given& low, const Given& high);

void reserve(ForwardChannel* channel, size_t count) {
  toFront(channel, count, channel->even.present(), channel->odd.present());
}
void reserve(InverseChannel* channel, size_t count) {
  toFront(channel, count, channel->samples.present());
}

void getDlyLine(const ForwardChannel& channel, Kvr32f* to) {
  get(channel, to);
}
void getDlyLine(const InverseChannel& channel, Kvr32f* to) {
  get(channel, to);
}
void setDlyLine(ForwardChannel* channel, const Kvr32f* from) {
  set(channel, from);
}
void setDlyLine(InverseChannel* channel, const Kvr32f* from) {
  set(channel, from);
}

}  // namespace kvrs::wavelet
