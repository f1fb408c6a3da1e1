// The state of a two-channel filter bank: one block of memory, a record and its tables.
//
// Each channel has a line of samples that only grows at its end: the delay line, then the samples of a call, piece by piece.
//
//   | before | delay line: dlyLen samples | samples of this piece |      room      |
//            at                           where they are put
//
// All windows of the line are contiguous. When a piece does not fit any more, the delay line moves to the front, so that a
// sample is moved once or twice in its life.
//
// A forward channel has the even and the odd samples of its line apart: outputs are at every second sample, and neighbouring
// outputs then find theirs side by side. An inverse channel's samples belong to every second output, and its taps come
// apart instead.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_WAVELET_STATE_H
#define KVRS_TRANSFORMS_WAVELET_STATE_H

#include <cstddef>
#include <cstdint>

#include "frame/check.h"
#include "frame/ref.h"
#include "kvrs/wavelet.h"

namespace kvrs::wavelet {

// Words, which tell the types of samples.
enum Word : uint32_t {
  kForward_32f = 41,
  kForward_8u32f,
  kForward_8s32f,
  kForward_16u32f,
  kForward_16s32f,
  kInverse_32f = 50,
  kInverse_32f8u,
  kInverse_32f8s,
  kInverse_32f16u,
  kInverse_32f16s,
};

// Outputs of a channel that are made in one go, of a forward bank from twice as many samples.
inline constexpr size_t kPiece = 512;

// Taps are in the order of the samples that they meet, the oldest first.
struct Filter {
  int32_t taps;
  int32_t from;  // the sample of the line that meets the first tap in output 0
  Ref<Kvr32f> reversed;
};

// `at` and `room` count places of a line, of which a forward channel has two. A place is free in front of `at`.
struct Line {
  int32_t dlyLen;
  int32_t at, room;
};

struct ForwardChannel {
  Line line;
  // Where the first sample of a call goes, from `at` on in samples: dlyLen, or -1 where taps are ahead.
  int32_t lead;
  Filter filter;
  Ref<Kvr32f> even, odd;

  int32_t places() const { return (line.dlyLen + 1) / 2; }  // of the delay line
  bool isSound() const {
    return filter.taps >= 1 && lead >= -1 && line.at >= 1 && line.at <= line.room - places();
  }
};

struct InverseChannel {
  Line line;
  Filter filter[2];  // of the first and of the second of a pair of outputs
  Ref<Kvr32f> samples;

  int32_t places() const { return line.dlyLen; }
  bool isSound() const {
    return filter[0].taps + filter[1].taps >= 1 && line.at >= 1 && line.at <= line.room - places();
  }
};

template <class Channel>
struct State {
  uint32_t idWord;
  Channel low, high;
};

// The taps, their number and the offset of a channel, as a caller gives them.
struct Given {
  const Kvr32f* taps;
  int len, offset;
};

// A state from kvrMalloc, or null.
template <class Channel>
State<Channel>* create(Word word, const Given& low, const Given& high);

// The line has places for `count` more.
void reserve(ForwardChannel* channel, size_t count);
void reserve(InverseChannel* channel, size_t count);

void getDlyLine(const ForwardChannel& channel, Kvr32f* to);
void getDlyLine(const InverseChannel& channel, Kvr32f* to);
void setDlyLine(ForwardChannel* channel, const Kvr32f* from);
void setDlyLine(InverseChannel* channel, const Kvr32f* from);

template <class Channel>
KvrStatus sound(const State<Channel>* state, Word word) {
  const KvrStatus status = check::context(state, word);
  if (status != kvrStatusOk) return status;
  return check::require(state->low.isSound() && state->high.isSound(), kvrStatusContextMismatch);
}

}  // namespace kvrs::wavelet

struct KvrsWTFwdState_32f : kvrs::wavelet::State<kvrs::wavelet::ForwardChannel> {};
struct KvrsWTFwdState_8u32f : kvrs::wavelet::State<kvrs::wavelet::ForwardChannel> {};
struct KvrsWTFwdState_8s32f : kvrs::wavelet::State<kvrs::wavelet::ForwardChannel> {};
struct KvrsWTFwdState_16u32f : kvrs::wavelet::State<kvrs::wavelet::ForwardChannel> {};
struct KvrsWTFwdState_16s32f : kvrs::wavelet::State<kvrs::wavelet::ForwardChannel> {};
struct KvrsWTInvState_32f : kvrs::wavelet::State<kvrs::wavelet::InverseChannel> {};
struct KvrsWTInvState_32f8u : kvrs::wavelet::State<kvrs::wavelet::InverseChannel> {};
struct KvrsWTInvState_32f8s : kvrs::wavelet::State<kvrs::wavelet::InverseChannel> {};
struct KvrsWTInvState_32f16u : kvrs::wavelet::State<kvrs::wavelet::InverseChannel> {};
struct KvrsWTInvState_32f16s : kvrs::wavelet::State<kvrs::wavelet::InverseChannel> {};

#endif
